#pragma once

#include <QSqlError>
#include <QString>

/// What is looked at before SQLite may open a file: some of what lies there makes it hang, or change files
/// that nobody named.
namespace zk::sqlite {

/// What a file may hold when it is opened.
enum class contents
{
    database,         ///< a SQLite database
    database_or_none, ///< the same, or nothing at all: an empty file
};

/// How far a database file is looked at.
enum class look
{
    into_it,
    at_its_status ///< without opening it
};

/// Why `file` is not to be opened as a SQLite database file, as far as its name, kind and first bytes tell.
[[nodiscard]] QSqlError checkFile(const QString & file, contents expected = contents::database,
                                  look depth = look::into_it);

/// Why SQLite must not open `file` together with the journals that lie beside it.
///
/// A journal of an interrupted writer is fine: it is played back. But SQLite also deletes the file whose name
/// stands at the end of a journal, follows a link in its place, waits for ever at a named pipe, and takes
/// what a write-ahead log holds for the newest contents of any database.
[[nodiscard]] QSqlError checkJournals(const QString & file, look depth = look::into_it);

/// Why a database cannot be made under the name `file`, where none is: journals that would be played back
/// into it, or a name that leaves no room for that of a journal.
[[nodiscard]] QSqlError checkNewName(const QString & file);

/// Why the name of `file` is too long for the name of its journal; empty when it is not.
[[nodiscard]] QString tooLongName(const QString & file);
/// The reason for a file that is something else.
[[nodiscard]] QString noProjectReason();

} // namespace zk::sqlite
