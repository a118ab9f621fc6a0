#include "database/server/private_server.h"

#include "os/stop_requests.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QStandardPaths>

#include <csignal>
#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace database::server {

namespace {

// Milliseconds that a step may take on a busy machine.
constexpr int StartTime = 60000;
constexpr int StopTime = 20000;
constexpr int SetUpTime = 60000;
constexpr int PollTime = 50;

/// Nothing a test stores has to survive a power cut: where eatmydata is installed, flushes to disk are left
/// out.
void startUnsynced(QProcess & process, const QString & program, const QStringList & arguments)
{
    const QString wrapper = findProgram(QStringLiteral("eatmydata"));
    if (wrapper.isEmpty()) {
        process.start(program, arguments);
    } else {
        process.start(wrapper, QStringList{program} + arguments);
    }
}

/// Of what a program wrote the line that says what is wrong: the first about an error, else the last one.
QString tellingLine(const QByteArray & words)
{
    constexpr qsizetype longest = 200;
    static const QRegularExpression error(QStringLiteral("fatal|error"),
                                          QRegularExpression::CaseInsensitiveOption);
    const QStringList lines = QString::fromLocal8Bit(words).split(QLatin1Char('\n'));
    QString told;
    for (const QString & each : lines) {
        const QString line = each.simplified();
        told = line.isEmpty() ? told : line;
        if (line.contains(error)) {
            break;
        }
    }
    return told.isEmpty()           ? QStringLiteral("it says nothing")
           : told.size() <= longest ? told
                                    : told.left(longest - 1) + QChar(u'…');
}

const QString FolderName = QStringLiteral("kv_");
const QString LockName = QStringLiteral("in_use");

/// Removes the folders of servers whose programs were killed.
void removeLeftFolders()
{
    for (const QFileInfo & folder :
         QDir(QDir::tempPath())
             .entryInfoList({FolderName + QLatin1Char('*')}, QDir::Dirs | QDir::NoSymLinks)) {
        const QString lockName = folder.filePath() + QLatin1Char('/') + LockName;
        if (!QFile::exists(lockName)) {
            continue; // it is being made, or nobody's
        }
        QLockFile lock(lockName);
        lock.setStaleLockTime(0);
        if (lock.tryLock()) {
            lock.unlock();
            QDir(folder.filePath()).removeRecursively();
        }
    }
}

} // namespace

private_server::private_server(const QString & user, int signalOfDeath)
    : m_folder(QDir::tempPath() + QLatin1Char('/') + FolderName + QStringLiteral("XXXXXX")),
      m_iSignalOfDeath(signalOfDeath), m_lock(m_folder.filePath(LockName))
{
    removeLeftFolders();
    m_lock.setStaleLockTime(0);
    m_lock.tryLock();
    const passwd * const entry = geteuid() == 0 ? getpwnam(user.toLocal8Bit().constData()) : nullptr;
    if (entry && chown(m_folder.path().toLocal8Bit().constData(), entry->pw_uid, entry->pw_gid) == 0) {
        m_account = account{entry->pw_uid, entry->pw_gid};
    }
}

private_server::~private_server()
{
    if (m_server.state() == QProcess::NotRunning) {
        return;
    }
    m_server.terminate();
    if (!m_server.waitForFinished(StopTime)) {
        m_server.kill();
        m_server.waitForFinished(StopTime);
    }
}

void private_server::becomeUser(QProcess & process) const
{
    process.setWorkingDirectory(folder());
    process.setProcessChannelMode(QProcess::MergedChannels);
    // The user may not write where this process puts its temporary files.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), folder());
    process.setProcessEnvironment(environment);
    process.setChildProcessModifier([who = m_account, signalOfDeath = m_iSignalOfDeath] {
        if (who && (setgroups(0, nullptr) != 0 || setgid(who->gid) != 0 || setuid(who->uid) != 0)) {
            _exit(126);
        }
        setpgid(0, 0); // what a terminal tells the program is not for the server
        prctl(PR_SET_PDEATHSIG, signalOfDeath);
    });
}

bool private_server::runToEnd(const QString & program, const QStringList & arguments, QString & error)
{
    QProcess process;
    becomeUser(process);
    startUnsynced(process, program, arguments);
    const bool ended = process.waitForFinished(SetUpTime);
    error = QStringLiteral("%1 fails: %2").arg(program, tellingLine(process.readAll()));
    return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool private_server::start(const QString & program, const QStringList & arguments,
                           const std::function<bool()> & answers, QString & why)
{
    becomeUser(m_server);
    // Into a file: a server that nobody listens to stops once a pipe is full of what it says.
    const QString log = m_folder.filePath(QStringLiteral("log"));
    m_server.setStandardOutputFile(log);
    startUnsynced(m_server, program, arguments);
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < StartTime && !os::stop_requests::isRequested() &&
           !m_server.waitForFinished(PollTime)) {
        if (answers()) {
            return true;
        }
    }
    QFile said(log);
    const QByteArray words = said.open(QIODevice::ReadOnly) ? said.readAll() : QByteArray();
    why = QStringLiteral("%1 does not start: %2").arg(program, tellingLine(words));
    return false;
}

QString findProgram(const QString & program, const QStringList & folders)
{
    const QString found = QStandardPaths::findExecutable(program);
    return found.isEmpty() ? QStandardPaths::findExecutable(program, folders) : found;
}

} // namespace database::server
