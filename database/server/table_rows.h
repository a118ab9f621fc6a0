#pragma once

#include "database/server/target_database.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <vector>

namespace database::server {

/// A row of a table, with its values as the database shows them.
struct put_row
{
    QString table;
    std::vector<std::pair<QString, QVariant>> values; ///< by column
};

/// All rows of a table.
[[nodiscard]] std::vector<put_row> rowsOf(target_database & target, const database::table & owner);

/// What the columns of a row are given.
enum class row_content
{
    values, ///< a value each
    nulls   ///< nothing, in those that allow it and belong to no primary key
};

/// Puts a row into each table that has none: 7 in every column of a key, of a foreign key or with a name that
/// ends in "_id", so that rows belong together, and elsewhere a value that no other column has, as far as the
/// type has enough values. Where a table does not take them the types that have no values here are left null,
/// then all that may be; one that takes no row stays empty. Foreign keys should have no
/// say meanwhile; see target_database::foreignKeyChecks().
/// @param held what is in the database
/// @param number from which values are made; it goes on with each of them
/// @param added receives the rows, when it is given
/// @return the tables that have rows now, with the number of these
QMap<QString, int> putRowIntoEach(target_database & target, const database::catalogue & held,
                                  row_content content, int & number, std::vector<put_row> * added = nullptr);

} // namespace database::server
