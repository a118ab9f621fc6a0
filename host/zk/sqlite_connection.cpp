#include "zk/sqlite_connection.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QUrl>

#include <array>
#include <atomic>

namespace zk::sqlite {

namespace {

// Primary result codes of SQLite.
enum result_code
{
    code_busy = 5,
    code_locked = 6,
    code_read_only = 8,
    code_io_error = 10,
    code_corrupt = 11,
    code_full = 13,
    code_cannot_open = 14,
    code_no_database = 26
};

const QString UriBegin = QStringLiteral("file:");
const QString UriEnd = QStringLiteral("?mode=rw");

QString reasonOf(const QSqlError & error)
{
    const QString own = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    switch (error.nativeErrorCode().toInt() & 0xff) {
    case code_busy:
    case code_locked:
        return QStringLiteral("is locked by another process; close it there and try again");
    case code_read_only:
        return QStringLiteral("cannot be written (%1); check its permissions and those of its folder")
            .arg(own);
    case code_io_error:
        return QStringLiteral("cannot be read or written (%1); check the disk").arg(own);
    case code_corrupt:
        return QStringLiteral("is damaged (%1); restore it from a copy").arg(own);
    case code_full:
        return QStringLiteral("cannot be written: the disk is full; make room and try again");
    case code_cannot_open:
        return QStringLiteral("cannot be opened; check its permissions and those of its folder");
    case code_no_database:
        return QStringLiteral("is no SQLite file; give a project file");
    default:
        return own;
    }
}

} // namespace

QSqlError failure(const QString & file, const QString & reason)
{
    return {QString(), QDir::toNativeSeparators(file) + QStringLiteral(": ") + reason,
            QSqlError::ConnectionError};
}

QSqlError describe(const QString & file, const QSqlError & error)
{
    // Without the engine's code it is one of our own failures, which name their file already.
    return error.nativeErrorCode().isEmpty() ? error : failure(file, reasonOf(error));
}

QSqlError checkFile(const QString & file)
{
    if (file.isEmpty()) {
        return {QString(), QStringLiteral("no project file is named"), QSqlError::ConnectionError};
    }
    const QFileInfo info(file);
    if (!info.exists()) {
        return failure(file, QStringLiteral("does not exist; check the name"));
    }
    if (!info.isFile()) {
        return failure(file, info.isDir() ? QStringLiteral("is a folder; give a project file")
                                          : QStringLiteral("is no regular file; give a project file"));
    }
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly)) {
        return failure(
            file, QStringLiteral("cannot be opened (%1); check its permissions").arg(opened.errorString()));
    }
    static constexpr std::array<char, 16> magic = {'S', 'Q', 'L', 'i', 't', 'e', ' ', 'f',
                                                   'o', 'r', 'm', 'a', 't', ' ', '3', '\0'};
    if (opened.read(magic.size()) != QByteArray(magic.data(), magic.size())) {
        return failure(file, info.size() == 0 ? QStringLiteral("is empty; give a project file")
                                              : QStringLiteral("is no SQLite file; give a project file"));
    }
    return {};
}

QSqlError open(const QString & file, const QString & name, QSqlDatabase & database)
{
    database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    // Only a URI can say that a file which is not there must not be made.
    database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=2000;QSQLITE_OPEN_URI"));
    database.setDatabaseName(
        UriBegin + QString::fromLatin1(QUrl::toPercentEncoding(QFileInfo(file).absoluteFilePath(), "/")) +
        UriEnd);
    QSqlError error;
    if (!database.open()) {
        error = database.lastError();
    }
    for (const QLatin1StringView pragma :
         {QLatin1StringView("PRAGMA trusted_schema = OFF"), QLatin1StringView("PRAGMA cell_size_check = ON"),
          QLatin1StringView("PRAGMA mmap_size = 0")}) {
        if (!error.isValid()) {
            error = execute(database, pragma);
        }
    }
    if (error.isValid()) {
        database = QSqlDatabase();
        close(name);
    }
    return describe(file, error);
}

QString fileOf(const QSqlDatabase & database)
{
    const QString uri = database.databaseName();
    return QUrl::fromPercentEncoding(
        uri.mid(UriBegin.size(), uri.size() - UriBegin.size() - UriEnd.size()).toLatin1());
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
        return failure(file,
                       QStringLiteral("holds the %1 '%2', which a project file does not have; remove it")
                           .arg(query.value(0).toString(), query.value(1).toString()));
    }
    return describe(file, query.lastError());
}

void close(const QString & name)
{
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

QSqlError scoped_connection::open(const QString & file)
{
    return sqlite::open(file, m_sName, m_database);
}

void scoped_connection::close()
{
    m_database = QSqlDatabase();
    sqlite::close(m_sName);
}

} // namespace zk::sqlite
