#pragma once

#include "korvane_global.h"
#include "zk/sqlite_file_check.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

/// Opening SQLite files that may come from anywhere, and saying in one line what is wrong with one.
namespace zk::sqlite {

/// A failure whose text is "file: reason".
[[nodiscard]] QSqlError failure(const QString & file, const QString & reason);

/// `error` of the database engine as a failure on `file` that says what to do; an invalid one stays so.
/// @param database the connection on which it happened, which knows the system's own reason
[[nodiscard]] QSqlError describe(const QString & file, const QSqlError & error,
                                 const QSqlDatabase & database = QSqlDatabase());

/// Adds the connection `name` and opens the existing `file` through it; never creates a file. This is the one
/// way to a SQLite file that others can have touched.
///
/// Nothing that the file brings along (functions in its schema, cells that leave their page) is trusted, and
/// neither are the journals beside it; see sqlite_file_check.h. Who finds the file locked waits; see
/// sqlite_locks.h. On a failure `database` is not open and its name is free again.
[[nodiscard]] QSqlError open(const QString & file, const QString & name, QSqlDatabase & database,
                             contents expected = contents::database);

/// The same for an empty `file` that this program has just made under a name that nobody else knows.
[[nodiscard]] QSqlError openUnseen(const QString & file, const QString & name, QSqlDatabase & database);

/// As long as one lives, `file` is opened for reading only, and without looking at journals beside it: nobody
/// changes it, but it lies where anybody could put one.
class KORVANE_EXPORT final_file
{
public:
    explicit final_file(const QString & file);
    ~final_file();
    final_file(const final_file &) = delete;
    final_file & operator=(const final_file &) = delete;

private:
    QString m_sFile;
};

/// The file that open() opened as `database`.
[[nodiscard]] QString fileOf(const QSqlDatabase & database);

/// Executes one statement without values.
[[nodiscard]] QSqlError execute(const QSqlDatabase & database, const QString & statement);

/// A failure when the database `file` holds triggers or views: code of the file that would run unasked.
[[nodiscard]] QSqlError refuseCode(const QString & file, const QSqlDatabase & database);

/// Closes the connection `name` and forgets it; handles that somebody still holds become invalid.
void close(const QString & name);

/// A connection of its own for a scope. Queries on it must end before it does.
class scoped_connection
{
public:
    scoped_connection();
    ~scoped_connection();
    scoped_connection(const scoped_connection &) = delete;
    scoped_connection & operator=(const scoped_connection &) = delete;

    [[nodiscard]] QSqlError open(const QString & file, contents expected = contents::database);
    [[nodiscard]] QSqlError openUnseen(const QString & file);
    void close();
    [[nodiscard]] const QSqlDatabase & database() const { return m_database; }

private:
    QString m_sName;
    QSqlDatabase m_database;
};

} // namespace zk::sqlite
