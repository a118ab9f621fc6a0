#pragma once

#include <QStringView>

namespace database {

struct facts;

/// Where a name stands.
enum class name_place
{
    table,       ///< right after CREATE TABLE or DROP TABLE, where IF (NOT) EXISTS may stand
    named_table, ///< anywhere else
    other,       ///< a column, a constraint …
    index        ///< right after CREATE INDEX or DROP INDEX
};

/// Whether a table is named there.
[[nodiscard]] constexpr bool isOfTable(name_place place)
{
    return place == name_place::table || place == name_place::named_table;
}

/// Whether the database refuses the word as an unquoted name at that place, in any case.
[[nodiscard]] bool isReserved(const facts & known, QStringView word, name_place place);

} // namespace database
