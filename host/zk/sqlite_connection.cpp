#include "zk/sqlite_connection.h"

#include "os/file_status.h"
#include "zk/sqlite_locks.h"
#include "zk/sqlite_statement.h"
#include "zk/texts.h"
#include "zk/zk_session.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSqlQuery>
#include <QUrl>

#include <algorithm>
#include <atomic>
#include <mutex>

#include <sqlite3.h>

namespace zk::sqlite {

namespace {

const QString UriBegin = QStringLiteral("file:");
const QString SharedMode = QStringLiteral("?mode=rw");
// Without locks: a lock of ours that tells the file from a left one is enough.
const QString UnseenMode = QStringLiteral("?mode=rw&nolock=1");
// No journal is looked for, however it is named.
const QString FinalMode = QStringLiteral("?mode=ro&immutable=1");

QString reasonOf(const QSqlError & error, const QSqlDatabase & database)
{
    const int system = systemError(database);
    QString own = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    own = own.trimmed();
    const QString reason = system == 0 ? own : os::systemReason(system);
    switch (error.nativeErrorCode().toInt() & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return texts::tr("is in use by another process (waited %1 s for it); wait until that one has "
                         "ended, or end it, and try again")
            .arg(static_cast<double>(lockPatience().count()) / 1000);
    case SQLITE_NOMEM:
        return texts::tr("cannot be read or written: there is not enough memory");
    case SQLITE_READONLY:
        return texts::tr("cannot be written (%1); check its permissions and those of its folder").arg(own);
    case SQLITE_IOERR:
        return texts::tr("cannot be read or written (%1); check the disk").arg(reason);
    case SQLITE_CORRUPT:
        return texts::tr("is damaged (%1); restore it from a copy").arg(own);
    case SQLITE_FULL:
        return texts::tr("cannot be written: the disk is full; make room and try again");
    case SQLITE_CANTOPEN:
        if (const QString tooLong = tooLongName(fileOf(database)); !tooLong.isEmpty()) {
            return tooLong;
        }
        return texts::tr("cannot be opened (%1); check its permissions and those of its folder").arg(reason);
    case SQLITE_NOTADB:
        return noProjectReason();
    default:
        return own;
    }
}

/// Texts under names, for all threads.
class shared_texts
{
public:
    void insert(const QString & name, const QString & text)
    {
        const std::lock_guard lock(m_mutex);
        m_texts.insert(name, text);
    }
    void remove(const QString & name)
    {
        const std::lock_guard lock(m_mutex);
        m_texts.remove(name);
    }
    [[nodiscard]] bool holds(const QString & text)
    {
        const std::lock_guard lock(m_mutex);
        return std::any_of(m_texts.cbegin(), m_texts.cend(),
                           [&text](const QString & one) { return one == text; });
    }

private:
    std::mutex m_mutex;
    QHash<QString, QString> m_texts;
};

/// Which files the connections of this process have open, by the names of the connections.
shared_texts & openFiles()
{
    static shared_texts files;
    return files;
}

/// The files that are only read, and lie where anybody may put a journal beside them.
shared_texts & finalFiles()
{
    static shared_texts files;
    return files;
}

/// What tells a file from all others, whatever its name; empty when there is none.
QString identityOf(const QString & file)
{
    const os::file_status status = os::fileStatus(file);
    return status.kind == os::file_status::regular
               ? QStringLiteral("%1:%2").arg(status.device).arg(status.inode)
               : QString();
}

// Without the engine's code it is one of our own failures, which name their file already.
bool isOurs(const QSqlError & error)
{
    return error.nativeErrorCode().isEmpty();
}

} // namespace

void countNoMemory()
{
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

QSqlError failure(const QString & file, const QString & reason)
{
    return {QString(), QDir::toNativeSeparators(file) + QStringLiteral(": ") + reason,
            QSqlError::ConnectionError};
}

QSqlError describe(const QSqlDatabase & database, const QSqlError & error)
{
    return isOurs(error) ? error : failure(fileOf(database), reasonOf(error, database));
}

QString fileOf(const QSqlDatabase & database)
{
    const QString uri = database.databaseName();
    return QUrl::fromPercentEncoding(
        uri.mid(UriBegin.size(), uri.lastIndexOf(QLatin1Char('?')) - UriBegin.size()).toLatin1());
}

final_file::final_file(const QString & file) : m_sFile(file)
{
    finalFiles().insert(m_sFile, identityOf(m_sFile));
}

final_file::~final_file()
{
    finalFiles().remove(m_sFile);
}

QSqlError execute(const QSqlDatabase & database, const QString & statement)
{
    QSqlQuery query(database);
    query.exec(statement);
    return query.lastError();
}

connection::connection()
{
    static std::atomic<quint64> counter = 0;
    m_sName = QStringLiteral("korvane/%1").arg(++counter);
}

connection::~connection()
{
    close();
}

QSqlError connection::open(const QString & file, contents expected)
{
    m_sFile = file;
    const QString identity = identityOf(file);
    const bool isFinal = !identity.isEmpty() && finalFiles().holds(identity);
    // Closing a file takes away all locks that this process has on it: one that is open already, perhaps in
    // the middle of a transaction, is not opened once more just to look at it.
    const look depth =
        !identity.isEmpty() && openFiles().holds(identity) ? look::at_its_status : look::into_it;
    QSqlError error = checkFile(file, expected, depth);
    if (!error.isValid() && !isFinal) {
        error = checkJournals(file, depth);
    }
    return error.isValid() ? error : connect(file, isFinal ? FinalMode : SharedMode);
}

QSqlError connection::openUnseen(const QString & file, const QString & told)
{
    m_sFile = told;
    return connect(file, UnseenMode);
}

QSqlError connection::connect(const QString & file, const QString & mode)
{
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_sName);
    // Only a URI can say that a file which is not there must not be made.
    m_database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1;QSQLITE_OPEN_URI")
                                     .arg(static_cast<qint64>(lockPatience().count())));
    m_database.setDatabaseName(
        UriBegin + QString::fromLatin1(QUrl::toPercentEncoding(QFileInfo(file).absoluteFilePath(), "/")) +
        mode);
    const QSqlError error = start();
    openFiles().insert(m_sName, identityOf(file));
    if (error.isValid()) {
        close();
    }
    return error;
}

/// Makes the engine work as it has to.
QSqlError connection::start()
{
    if (!m_database.open()) {
        return describe(m_database.lastError());
    }
    if (!handleOf(m_database)) {
        return failure(
            texts::tr("cannot be opened: Qt's SQLite driver brings an SQLite of its own along; use a "
                      "Qt whose driver is built with the system's one"));
    }
    waitForLocks(m_database);
    for (const QLatin1StringView pragma :
         {QLatin1StringView("PRAGMA trusted_schema = OFF"), QLatin1StringView("PRAGMA cell_size_check = ON"),
          QLatin1StringView("PRAGMA mmap_size = 0")}) {
        if (const QSqlError error = execute(pragma); error.isValid()) {
            return error;
        }
    }
    return {};
}

void connection::close()
{
    openFiles().remove(m_sName);
    m_database = QSqlDatabase();
    if (QSqlDatabase::contains(m_sName)) {
        QSqlDatabase::database(m_sName, false).close();
        QSqlDatabase::removeDatabase(m_sName);
    }
}

QSqlError connection::refuseCode() const
{
    statement code(*this,
                   QStringLiteral("SELECT type, name FROM sqlite_master WHERE type IN ('trigger', 'view')"));
    if (!code.next()) {
        return code.error();
    }
    const QString reason = code.at(0).text() == QStringLiteral("view")
                               ? texts::tr("contains a view '%1', which does not belong in a project file; "
                                           "remove it, or restore the file from a backup")
                               : texts::tr("contains a trigger '%1', which does not belong in a project "
                                           "file; remove it, or restore the file from a backup");
    return failure(reason.arg(code.at(1).text()));
}

QSqlError connection::describe(const QSqlError & error) const
{
    return isOurs(error) ? error : failure(reasonOf(error, m_database));
}

QSqlError connection::inTransaction(const std::function<QSqlError()> & work) const
{
    ZkSession session(m_database);
    if (session.isValid()) {
        session.addError(work());
    }
    return describe(session.end());
}

QSqlError connection::inSnapshot(const std::function<QSqlError()> & work) const
{
    const QSqlError error = execute(QStringLiteral("BEGIN"));
    return error.isValid() ? error : describe(work());
}

} // namespace zk::sqlite
