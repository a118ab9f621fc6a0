#pragma once

#include <QString>

#include <initializer_list>
#include <utility>
#include <vector>

namespace check {

/// What the names in a rule's texts stand for. A handful each, of which a large model has many: so a list.
class values
{
public:
    using entry = std::pair<QString, QString>;

    values() = default;
    /// Of several values for one name the last one counts.
    values(std::initializer_list<entry> of);

    /// Gives the name this value, whether it has one or not.
    void insert(const QString & name, const QString & value);
    void insert(const values & more);
    /// What the name stands for, to be changed; empty when that was not known.
    [[nodiscard]] QString & operator[](const QString & name);

    /// Null when it is not known what the name stands for.
    [[nodiscard]] const QString * find(QStringView name) const;
    /// The same; empty when it is not known.
    [[nodiscard]] QString value(QStringView name) const;

private:
    std::vector<entry> m_entries;
};

} // namespace check
