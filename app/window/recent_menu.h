#pragma once

#include <QMenu>

namespace app {

/// The menu of the project files that were opened last.
class recent_menu : public QMenu
{
    Q_OBJECT

public:
    explicit recent_menu(QWidget * parent = nullptr);

    /// The files to offer, the newest first.
    void setFiles(const QStringList & files);

Q_SIGNALS:
    void fileRequested(const QString & file);
    void clearRequested();
};

} // namespace app
