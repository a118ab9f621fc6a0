#pragma once

#include "database/catalogue/catalogue.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace database {
struct facts;
}

namespace check {

/// In what the database that a history leaves differs from a new one.
enum class difference_kind
{
    table_missing,
    table_left, ///< there though a new database has it not; so are the others
    column_missing,
    column_left,
    type,
    null,
    counter,
    key,
    index_missing,
    index_left,
    unique_missing,
    unique_left,
    foreign_key_missing,
    foreign_key_left,
    foreign_key_target,
    names, ///< of indexes, keys, sequences and foreign keys that are otherwise the same
    order, ///< of columns
    sequence_left
};

struct schema_difference
{
    difference_kind kind = difference_kind::names;
    QString table;        ///< empty for a sequence of its own
    QStringList columns;  ///< of the index, the key or the foreign key; the column
    QString expected;     ///< what a new database has; empty for nothing
    QString found;        ///< what the history left; empty for nothing
    QString expectedName; ///< of the index or the foreign key that a new database has
    QString foundName;    ///< of the one that the history left, of a sequence
};

/// What it is that differs: "column t_gig.length", "index t_gig (length)", "names of t_gig".
[[nodiscard]] QString subjectOf(const schema_difference & of);

/// The same of one table, whose differences are added.
void compareTables(const database::table & expected, const database::table & found,
                   std::vector<schema_difference> & told);

/// What the catalogue `found` has otherwise than `expected`, table by table. Both are in normal form. The
/// words of both sides are those of database::linesOf().
[[nodiscard]] std::vector<schema_difference> compareSchemas(const database::catalogue & expected,
                                                            const database::catalogue & found);

} // namespace check
