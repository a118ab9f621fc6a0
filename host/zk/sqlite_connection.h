#pragma once

#include "korvane_global.h"
#include "zk/sqlite_file_check.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

#include <functional>

/// Opening SQLite files that may come from anywhere, and saying in one line what is wrong with one.
namespace zk::sqlite {

/// Has the engine keep no count of its memory, for which its threads wait for each other at every piece:
/// nobody asks for it. To be called before any database is opened; later it does nothing.
KORVANE_EXPORT void countNoMemory();

/// A failure whose text is "file: reason".
[[nodiscard]] QSqlError failure(const QString & file, const QString & reason);

/// `error` of the engine on `database` as a failure on its file that says what to do; an invalid one stays
/// so, and so does one of our own.
[[nodiscard]] QSqlError describe(const QSqlDatabase & database, const QSqlError & error);

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

/// The absolute name of the file of `database`.
[[nodiscard]] QString fileOf(const QSqlDatabase & database);

/// Executes one statement without values. An error is the engine's.
[[nodiscard]] KORVANE_EXPORT QSqlError execute(const QSqlDatabase & database, const QString & statement);

/// A connection to a file. It knows its file: what it tells is "file: reason". Statements and
/// queries on it must end before it does.
class KORVANE_EXPORT connection
{
public:
    connection();
    ~connection();
    connection(const connection &) = delete;
    connection & operator=(const connection &) = delete;

    /// Opens the existing `file`; never creates one. This is the one way to a SQLite file that others can
    /// have touched.
    ///
    /// Nothing that the file brings along (functions in its schema, cells that leave their page) is trusted,
    /// and neither are the journals beside it; see sqlite_file_check.h. Who finds the file locked waits; see
    /// sqlite_locks.h.
    [[nodiscard]] QSqlError open(const QString & file, contents expected = contents::database);
    /// Opens the empty `file` that this program has just made under a name that nobody else knows.
    /// @param told the file or folder that messages name in its place
    [[nodiscard]] QSqlError openUnseen(const QString & file, const QString & told);
    /// Closes the file; handles that somebody still holds become invalid.
    void close();

    /// A failure when the file holds triggers or views: code of the file that would run unasked.
    [[nodiscard]] QSqlError refuseCode() const;

    /// The file as messages call it: the name that was given.
    [[nodiscard]] const QString & file() const { return m_sFile; }
    /// The connection for what speaks to it through Qt.
    [[nodiscard]] const QSqlDatabase & database() const { return m_database; }
    [[nodiscard]] QSqlError failure(const QString & reason) const { return sqlite::failure(m_sFile, reason); }
    /// `error` of the engine as a failure on the file that says what to do; an invalid one stays so, and so
    /// does one of our own.
    [[nodiscard]] QSqlError describe(const QSqlError & error) const;
    /// Executes one statement without values.
    [[nodiscard]] QSqlError execute(const QString & statement) const
    {
        return describe(sqlite::execute(m_database, statement));
    }

    /// Runs `work` while nobody else can write. What it wrote is kept when it gives no error, and only then.
    [[nodiscard]] QSqlError inTransaction(const std::function<QSqlError()> & work) const;
    /// Runs `work`, which reads one state of the file whatever others write meanwhile.
    [[nodiscard]] QSqlError inSnapshot(const std::function<QSqlError()> & work) const;

private:
    [[nodiscard]] QSqlError connect(const QString & file, const QString & mode);
    [[nodiscard]] QSqlError start();

    QString m_sName;
    QString m_sFile;
    QSqlDatabase m_database;
};

} // namespace zk::sqlite
