#pragma once

#include "support/project_support.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

/// What a writer that was killed leaves beside a database, and what somebody else may make of it.
namespace support {

/// A database in the middle of a transaction, and the journal that takes it back.
struct interrupted_database
{
    QByteArray bytes;
    QByteArray journal;
};

/// What the files would be if a writer of the project `file` were killed now, after some of its new pages
/// have reached the disk. `file` stays as it is.
inline interrupted_database interruptedWriter(const QString & file)
{
    interrupted_database result;
    const QTemporaryDir folder;
    const QString copy = folder.filePath("copy.korv");
    QFile::copy(file, copy);
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "interrupted");
        database.setDatabaseName(copy);
        database.open();
        for (const char * const statement :
             {"PRAGMA cache_size = 1", "BEGIN IMMEDIATE", "DELETE FROM t_entity",
              "UPDATE t_project SET name = 'half'",
              "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
              "INSERT INTO t_plugin_params SELECT 'half', i, hex(randomblob(50)) FROM n"}) {
            QSqlQuery(QString(statement), database);
        }
        result = {bytesOf(copy), bytesOf(copy + "-journal")};
        database.close();
    }
    QSqlDatabase::removeDatabase("interrupted");
    return result;
}

/// The end of a journal that names another file: SQLite deletes it once the journal is played back.
inline QByteArray superJournalEnd(const QByteArray & name, bool isChecked = true)
{
    const auto number = [](quint32 n) {
        QByteArray bytes(4, '\0');
        for (int i = 0; i < 4; ++i) {
            bytes[i] = static_cast<char>(n >> (8 * (3 - i)));
        }
        return bytes;
    };
    quint32 sum = isChecked ? 0 : 1;
    for (const char c : name) {
        sum += static_cast<quint32>(static_cast<signed char>(c));
    }
    constexpr quint32 lockPage = 0x40000000 / 4096 + 1;
    return number(lockPage) + name + number(static_cast<quint32>(name.size())) + number(sum) +
           QByteArray::fromHex("d9d505f920a163d7");
}

} // namespace support
