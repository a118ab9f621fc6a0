#pragma once

#include <QLockFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <optional>

namespace database::server {

/// A server process of this program's own: its data in a temporary folder, reached through a socket there
/// only, run by an unprivileged user. It ends with this object, and with this process should that die first.
class private_server
{
public:
    /// @param user who runs the server when this process is root
    /// @param signalOfDeath ends the server when this process dies first
    private_server(const QString & user, int signalOfDeath);
    ~private_server();
    private_server(const private_server &) = delete;
    private_server & operator=(const private_server &) = delete;

    /// The server's folder; its name is short, since a socket's path is limited to 107 bytes.
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    /// Runs a set-up program to its end; false, with what it printed, when it fails.
    bool runToEnd(const QString & program, const QStringList & arguments, QString & error);
    /// Starts the server and waits until `answers` is true; false, with the reason, when that never happens.
    bool start(const QString & program, const QStringList & arguments, const std::function<bool()> & answers,
               QString & why);

private:
    struct account
    {
        unsigned int uid;
        unsigned int gid;
    };
    void becomeUser(QProcess & process) const;

    QTemporaryDir m_folder;
    int m_iSignalOfDeath;
    QLockFile m_lock; ///< by which others see that the folder is in use
    std::optional<account> m_account;
    QProcess m_server;
};

/// What makes the files of a server, and what serves them.
struct server_programs
{
    QString maker;
    QString daemon;
    QString whyMissing; ///< that they are not installed, and the package that brings them; else empty
};

/// Absolute name of `program`, looked for in the PATH and in `folders`; empty when it is not installed.
[[nodiscard]] QString findProgram(const QString & program, const QStringList & folders = {});

} // namespace database::server
