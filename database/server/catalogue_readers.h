#pragma once

#include "database/catalogue/catalogue.h"
#include "database/catalogue/left_out.h"
#include "database/server/sql_connection.h"

#include <QHash>

#include <QList>
#include <QSet>
#include <QString>

namespace database {
struct facts;
}

/// Catalogues as the databases tell them, in a few queries for all tables: a query a table would take most of
/// the time. What is read is not in normal form yet. All of them throw server_failure.
namespace database::server {

/// Tables of SQLite databases that were read, by the statements that made them and their indexes: these say
/// all that a catalogue has of them.
using sqlite_tables = QHash<QString, database::table>;

/// What is in the SQLite database of the connection, temporary tables included.
/// @param known is asked for tables that were read before, and receives the others
[[nodiscard]] database::catalogue readSqlite(const sql_connection & from, sqlite_tables & known);
[[nodiscard]] QList<database::left_out> leftOutOfSqlite(const sql_connection & from);

/// What is in the database that the connection uses.
[[nodiscard]] database::catalogue readMySql(const sql_connection & from, const database::facts & known);
[[nodiscard]] QList<database::left_out> leftOutOfMySql(const sql_connection & from);

/// What is in the schema of that name.
[[nodiscard]] database::catalogue readPostgreSql(const sql_connection & from, const QString & schema);
[[nodiscard]] QList<database::left_out> leftOutOfPostgreSql(const sql_connection & from,
                                                            const QString & schema);

/// Adds one column of a foreign key to the last key of `owner`, or to a new one when that has another name.
/// @param row the table, name of the key, table that it leads to, column, column there
void addForeignKeyColumn(database::table & owner, const QVariantList & row);

/// What a query of left-out parts says: its rows have the table, the words and the name of the part.
struct left_out_query
{
    const char * sql;
    database::catalogue_part standIn = database::catalogue_part::none;
};

/// Puts the rows of the query at the end of `list`.
void addLeftOut(QList<database::left_out> & list, const sql_connection & from, const left_out_query & asked,
                const QVariantList & values = {});

} // namespace database::server
