#pragma once

#include "zk/zk_bool.h"

#include <QByteArray>
#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

namespace model {
class project;
}

namespace app {

/// The project that a window has open: read from its file, current for plug-ins, and read again when the file
/// changes, for the command line and other programs work on project files as well.
class project_session : public QObject
{
    Q_OBJECT

public:
    explicit project_session(QObject * parent = nullptr);
    ~project_session() override;

    /// The open project; null when none is open.
    [[nodiscard]] std::shared_ptr<model::project> project() const { return m_pProject; }
    /// Absolute name of its file; empty when none is open.
    [[nodiscard]] QString file() const { return m_sFile; }
    /// Whether the file could not be read any more when it was last looked at.
    [[nodiscard]] bool isLost() const { return m_bLost; }

    /// Opens `file`. On failure, one line that says what, where and why, what was open stays open.
    zk::ZkBool open(const QString & file);
    void close();
    /// Reads the project again when its file is not the one that was read. On failure the project stays as it
    /// was read last.
    zk::ZkBool refresh();
    /// Takes the file as it is for the one that was read: to be called after an operation of this program
    /// that changes the file, but not the model.
    void keepOwnChange();

    /// While it is held nothing is read again by itself: an export is under way, and what would meddle with
    /// it has to wait.
    void hold();
    void letGo();
    [[nodiscard]] bool isHeld() const { return m_iHolds > 0; }

Q_SIGNALS:
    /// Another project is open, or its model is another one, or none is open.
    void projectChanged();
    /// The file of the open project has other versions or settings; its model is as it was.
    void historyChanged();
    /// The file of the open project went away or cannot be read any more: told once, until it can be read
    /// again.
    void fileLost(const QString & reason);
    /// isLost() changed, while the project stays as it was read last.
    void lostChanged();
    void heldChanged();

private:
    /// What tells one state of a project file from another.
    struct stamp
    {
        QDateTime changed;
        qint64 size = -1;
        QByteArray header; ///< a SQLite file counts its changes there
        bool operator==(const stamp &) const = default;
    };
    static stamp stampOf(const QString & file);

    void adopt(const std::shared_ptr<model::project> & project, const stamp & read);
    void setLost(bool isLost);
    void watch();
    void lookAtFile();

    std::shared_ptr<model::project> m_pProject;
    QString m_sFile;
    stamp m_stamp;
    QFileSystemWatcher m_watcher;
    QTimer m_settle;
    int m_iHolds = 0;
    bool m_bLost = false;
};

/// Holds a session while it lives.
class session_hold
{
public:
    explicit session_hold(project_session & session) : m_session(session) { m_session.hold(); }
    ~session_hold() { m_session.letGo(); }
    session_hold(const session_hold &) = delete;
    session_hold & operator=(const session_hold &) = delete;

private:
    project_session & m_session;
};

} // namespace app
