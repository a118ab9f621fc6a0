#pragma once

#include "database/facts/names.h"

#include <QString>

#include <optional>
#include <variant>
#include <vector>

/// What a statement asks a database for, without any knowledge of what a database makes of it.
namespace database {

struct named_part
{
    identifier column;
    int prefix = 0;

    bool operator==(const named_part &) const = default;
};

struct column_definition
{
    identifier name;
    QString type; ///< as written; empty when there is none
    bool notNull = false;
    bool primaryKey = false;
    bool counted = false; ///< by a word of its own, not by its type
    bool unique = false;
    bool hasDefault = false; ///< a value for rows that bring none

    bool operator==(const column_definition &) const = default;
};

struct key_definition
{
    identifier name; ///< empty when the statement gives none
    std::vector<named_part> parts;

    bool operator==(const key_definition &) const = default;
};

struct reference_definition
{
    identifier name; ///< empty when the statement gives none
    std::vector<identifier> columns;
    identifier target;
    std::vector<identifier> targetColumns;

    bool operator==(const reference_definition &) const = default;
};

struct create_table
{
    identifier table;
    bool ifNotExists = false;
    std::vector<column_definition> columns;
    std::optional<key_definition> key;
    std::vector<reference_definition> references;
};

struct drop_table
{
    identifier table;
    bool ifExists = false;
};

struct rename_table
{
    identifier from;
    identifier to;
};

struct add_column
{
    identifier table;
    bool ifNotExists = false;
    column_definition definition;
};

struct drop_column
{
    identifier table;
    bool ifExists = false;
    identifier column;
};

struct rename_column
{
    identifier table;
    identifier from;
    identifier to;
};

/// Renames a column and states its type and null anew.
struct change_column
{
    identifier table;
    identifier from;
    column_definition definition;
};

struct create_index
{
    identifier index;
    bool ifNotExists = false;
    bool unique = false;
    identifier table;
    std::vector<named_part> parts;
};

struct drop_index
{
    identifier index;
    bool ifExists = false;
    std::optional<identifier> table; ///< none when the statement names the index alone
};

struct add_foreign_key
{
    identifier table;
    reference_definition reference;
};

struct drop_constraint
{
    identifier table;
    bool ifExists = false;
    bool asForeignKey = false; ///< DROP FOREIGN KEY, not DROP CONSTRAINT
    identifier constraint;
};

/// Adds a primary key or a unique constraint.
struct add_key
{
    identifier table;
    bool isPrimary = false;
    key_definition key;
};

/// Drops the primary key, whatever its name.
struct drop_key
{
    identifier table;
};

/// Drops the unique constraint over just these columns, whatever its name.
struct drop_unique
{
    identifier table;
    std::vector<named_part> columns;
};

struct rename_index
{
    std::optional<identifier> table; ///< none when the statement names the index alone
    identifier from;
    identifier to;
};

/// Changes the type of a column, or whether it may hold no value; or neither, but the value that rows get.
struct alter_column
{
    identifier table;
    identifier column;
    QString type;             ///< empty to leave it
    bool isConverted = false; ///< the statement says how values become those of the type
    std::optional<bool> notNull;
    bool isRestated = false; ///< type and null stand behind the name as where a column is defined
};

struct create_sequence
{
    identifier sequence;
};

struct create_trigger
{
    identifier trigger;
    identifier table;
    std::vector<identifier> columns; ///< of BEFORE INSERT OR UPDATE OF, which it gives their values
};

/// Leaves the catalogue as it is: transactions, settings, rows. Whether rows fit is not looked at.
struct no_change
{
};

/// None of the forms above. What it does is not known.
struct unknown_statement
{
    QString beginning;               ///< its first words
    std::optional<identifier> table; ///< of ALTER TABLE, of which the rest is unknown
};

using change = std::variant<create_table, drop_table, rename_table, add_column, drop_column, rename_column,
                            change_column, alter_column, create_index, drop_index, rename_index,
                            add_foreign_key, add_key, drop_constraint, drop_key, drop_unique, create_sequence,
                            create_trigger, no_change, unknown_statement>;

} // namespace database
