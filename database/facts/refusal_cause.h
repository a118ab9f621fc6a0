#pragma once

#include <QLatin1String>

namespace database {

/// Why a database does not do a statement. What one database tells apart, all tell apart.
enum class refusal_cause
{
    none,
    syntax,
    schema_missing,
    name_too_long,
    table_name_too_long,
    table_name_ends_blank,
    column_name_ends_blank,
    table_name_in_column,    ///< a column named with a table before it, which is not its own
    database_name_in_column, ///< the same with a database before that
    name_kept,               ///< the database keeps names that begin so to itself
    function_indexed,        ///< the word is that of a function whose value changes
    name_not_encodable,      ///< it has a letter that names cannot have
    database_named,          ///< a name with the database before schema and table
    unknown_type,
    type_with_length,     ///< a length where the type takes none
    length_too_large,     ///< of a type of fixed length, or of any where nothing else is told apart
    text_too_long,        ///< the length of a text that has a bound
    width_too_large,      ///< the number of digits to show
    precision_too_large,  ///< the number of digits
    scale_too_large,      ///< the number of those after the point
    scale_over_precision, ///< more of them than digits
    specifier_impossible, ///< a number or a mark that the type cannot have
    relation_exists,      ///< a table, or what shares its names, has the name
    table_missing,
    dropped_table_missing,
    not_a_table, ///< the name is that of an index or a sequence
    column_exists,
    too_many_columns,
    too_many_columns_read, ///< so many that what they are is not looked at
    too_many_key_columns,  ///< of a key, an index or a foreign key
    system_column_added,
    system_column_changed,
    system_column_indexed,
    changed_column_missing,
    dropped_column_missing,
    key_column_missing,   ///< of a key, an index or a foreign key
    counted_not_possible, ///< the type cannot count, or the column is no key of its own
    several_counted,
    key_too_long,
    row_too_long,
    row_over_page, ///< what a row takes of a page, with long texts elsewhere
    prefix_not_possible,
    text_key_without_prefix,
    too_many_indexes,
    columns_indexed, ///< by another index, a key or a unique constraint
    columns_keyed,   ///< the same of a key or a unique constraint
    type_not_indexable,
    key_type_not_indexable, ///< the same of a unique column or one of a key
    value_too_long_for_index,
    index_exists,
    trigger_exists, ///< on another table
    index_missing,
    index_needed,        ///< by a foreign key
    index_needed_copied, ///< the same where the change would copy the table
    table_referred_to,
    rows_referred_to,
    unique_added,
    unique_missing, ///< over just these columns
    not_null_added,
    values_repeat,
    last_column,
    key_exists, ///< a table has no more than one primary key
    renamed_index_missing,
    type_not_convertible, ///< values of the old type do not become those of the new one by themselves
    column_of_key,
    column_of_foreign_key,
    column_of_foreign_key_copied, ///< the same where the change would copy the table
    column_referred_to,
    column_bound,          ///< by an index, a key or a foreign key
    copy_needed,           ///< the change would copy a table, which a foreign key of its column forbids
    type_change_forbidden, ///< the same, since the column would get another type
    own_key_needs_type,    ///< a column that keeps its name would get another type than its foreign key has
    other_key_needs_type,  ///< the same, of a foreign key that refers to it
    table_without_columns, ///< though it has keys
    values_cut,            ///< rows hold longer texts than the new type has room for
    values_cut_converted,  ///< the same, where the new type is another one than the old
    values_lost,           ///< rows hold values that the new type cannot
    values_converted,      ///< rows hold texts that are no value of the new type
    nulls_lost,            ///< rows have no value where one is asked for now
    foreign_key_exists,
    foreign_key_missing,
    target_missing,
    target_column_missing,
    target_not_key,
    target_column_count, ///< as many columns on both sides, or it is no foreign key
    column_repeated,     ///< in a foreign key
    target_type_differs,
    column_too_long, ///< of a foreign key: the index that goes with it cannot hold the whole of it
    rows_without_target
};

/// What kind of statement a cause is told of, where answers differ.
enum class error_form
{
    any,
    create_table,
    rename,
    create_index,
    foreign_key ///< one that is added
};

/// What a server answers for a cause. An answer for one form of statements stands before that for any.
struct error_code
{
    constexpr error_code() = default; ///< a place that an answer is put into
    constexpr error_code(refusal_cause why, QLatin1String answer, error_form of = error_form::any)
        : cause(why), form(of), code(answer)
    {
    }

    refusal_cause cause = {};
    error_form form = error_form::any;
    QLatin1String code;
};

} // namespace database
