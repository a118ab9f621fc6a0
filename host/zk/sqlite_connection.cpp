#include "zk/sqlite_connection.h"

#include "tools/file_status.h"
#include "zk/sqlite_locks.h"
#include "zk/texts.h"

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

QString reasonOf(const QString & file, const QSqlError & error, const QSqlDatabase & database)
{
    const int system = systemError(database);
    QString own = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    own = own.trimmed();
    const QString reason = system == 0 ? own : tools::systemReason(system);
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
        if (const QString tooLong = tooLongName(file); !tooLong.isEmpty()) {
            return tooLong;
        }
        return texts::tr("cannot be opened (%1); check its permissions and those of its folder").arg(reason);
    case SQLITE_NOTADB:
        return texts::tr("is not a Korvane project file (.korv)");
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
    const tools::file_status status = tools::fileStatus(file);
    return status.kind == tools::file_status::regular
               ? QStringLiteral("%1:%2").arg(status.device).arg(status.inode)
               : QString();
}

QSqlError connect(const QString & file, const QString & name, QSqlDatabase & database, const QString & mode)
{
    database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    // Only a URI can say that a file which is not there must not be made.
    database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1;QSQLITE_OPEN_URI")
                                   .arg(static_cast<qint64>(lockPatience().count())));
    database.setDatabaseName(
        UriBegin + QString::fromLatin1(QUrl::toPercentEncoding(QFileInfo(file).absoluteFilePath(), "/")) +
        mode);
    QSqlError error;
    if (!database.open()) {
        error = database.lastError();
    } else {
        waitForLocks(database);
    }
    for (const QLatin1StringView pragma :
         {QLatin1StringView("PRAGMA trusted_schema = OFF"), QLatin1StringView("PRAGMA cell_size_check = ON"),
          QLatin1StringView("PRAGMA mmap_size = 0")}) {
        if (!error.isValid()) {
            error = execute(database, pragma);
        }
    }
    error = describe(file, error, database);
    openFiles().insert(name, identityOf(file));
    if (error.isValid()) {
        database = QSqlDatabase();
        close(name);
    }
    return error;
}

} // namespace

QSqlError failure(const QString & file, const QString & reason)
{
    return {QString(), QDir::toNativeSeparators(file) + QStringLiteral(": ") + reason,
            QSqlError::ConnectionError};
}

QSqlError describe(const QString & file, const QSqlError & error, const QSqlDatabase & database)
{
    // Without the engine's code it is one of our own failures, which name their file already.
    return error.nativeErrorCode().isEmpty() ? error : failure(file, reasonOf(file, error, database));
}

QSqlError open(const QString & file, const QString & name, QSqlDatabase & database, contents expected)
{
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
    return error.isValid() ? error : connect(file, name, database, isFinal ? FinalMode : SharedMode);
}

QSqlError openUnseen(const QString & file, const QString & name, QSqlDatabase & database)
{
    return connect(file, name, database, UnseenMode);
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

QSqlError refuseCode(const QString & file, const QSqlDatabase & database)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT type, name FROM sqlite_master WHERE type IN ('trigger', 'view')"));
    if (query.next()) {
        const QString reason =
            query.value(0).toString() == QStringLiteral("view")
                ? texts::tr("contains a view '%1', which does not belong in a project file; "
                            "remove it, or restore the file from a backup")
                : texts::tr("contains a trigger '%1', which does not belong in a project "
                            "file; remove it, or restore the file from a backup");
        return failure(file, reason.arg(query.value(1).toString()));
    }
    return describe(file, query.lastError(), database);
}

void close(const QString & name)
{
    openFiles().remove(name);
    if (QSqlDatabase::contains(name)) {
        QSqlDatabase::database(name, false).close();
        QSqlDatabase::removeDatabase(name);
    }
}

scoped_connection::scoped_connection()
{
    static std::atomic<quint64> counter = 0;
    m_sName = QStringLiteral("korvane/%1").arg(++counter);
}

scoped_connection::~scoped_connection()
{
    close();
}

QSqlError scoped_connection::open(const QString & file, contents expected)
{
    return sqlite::open(file, m_sName, m_database, expected);
}

QSqlError scoped_connection::openUnseen(const QString & file)
{
    return sqlite::openUnseen(file, m_sName, m_database);
}

void scoped_connection::close()
{
    m_database = QSqlDatabase();
    sqlite::close(m_sName);
}

} // namespace zk::sqlite
