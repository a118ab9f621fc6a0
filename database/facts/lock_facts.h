#pragma once

namespace database {

/// What a statement does, as far as it matters to those who use the table meanwhile.
enum class lock_form
{
    add_column,
    add_counted_column,
    add_unique_column,
    drop_column,
    rename_column,
    change_column, ///< a rename that gives another type as well
    rename_table,
    create_index,
    drop_index,
    add_foreign_key,
    drop_foreign_key
};

/// What a database does for a statement on a table that has rows.
struct lock_cost
{
    lock_form form;
    bool rewrites;    ///< copies the whole table
    bool writersWait; ///< as long as it takes to read the whole table, or to copy it
};

} // namespace database
