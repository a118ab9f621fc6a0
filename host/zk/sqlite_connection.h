#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

/// Opening SQLite files that may come from anywhere, and saying in one line what is wrong with one.
namespace zk::sqlite {

/// A failure whose text is "file: reason".
[[nodiscard]] QSqlError failure(const QString & file, const QString & reason);

/// `error` of the database engine as a failure on `file` that says what to do; an invalid one stays so.
[[nodiscard]] QSqlError describe(const QString & file, const QSqlError & error);

/// Why `file` is no existing SQLite database file, as far as its name, kind and first bytes tell.
[[nodiscard]] QSqlError checkFile(const QString & file);

/// Adds the connection `name` and opens the existing `file` through it; never creates a file.
///
/// Nothing that the file brings along (functions in its schema, cells that leave their page) is trusted.
/// On a failure `database` is not open and its name is free again.
[[nodiscard]] QSqlError open(const QString & file, const QString & name, QSqlDatabase & database);

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

    [[nodiscard]] QSqlError open(const QString & file);
    void close();
    [[nodiscard]] const QSqlDatabase & database() const { return m_database; }

private:
    QString m_sName;
    QSqlDatabase m_database;
};

} // namespace zk::sqlite
