#pragma once

#include <QWidget>

class QVBoxLayout;

namespace app {

/// What the window shows while no project is open: the ways to get one.
class welcome_page : public QWidget
{
    Q_OBJECT

public:
    explicit welcome_page(QWidget * parent = nullptr);

    /// The project files to offer, the newest first.
    void setRecentFiles(const QStringList & files);

Q_SIGNALS:
    void openRequested();
    void importRequested();
    void databaseRequested();
    void newRequested();
    void sampleRequested();
    void manualRequested();
    void fileRequested(const QString & file);

private:
    /// Adds the commands that lead to a first project.
    void addWays(QVBoxLayout & column);

    QVBoxLayout * m_pRecent;
};

} // namespace app
