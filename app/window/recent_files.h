#pragma once

#include <QString>
#include <QStringList>

namespace app {

/// The project files that were opened last, the newest first, kept in the user's settings.
class recent_files
{
public:
    static constexpr int Limit = 10;

    recent_files();

    [[nodiscard]] QStringList files() const { return m_files; }
    /// Puts the absolute name `file` first.
    void add(const QString & file);
    void remove(const QString & file);
    void clear();

private:
    void read();
    void store() const;

    QStringList m_files;
};

} // namespace app
