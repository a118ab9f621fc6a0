#pragma once

namespace database {

/// How a database words the statements that change what is there, beside those that scripts have. Names in
/// braces stand for what a statement is about: {table}, {column}, {columns}, {name}, {new}, {target},
/// {target_columns}, {type}, and {definition}, which is a type with its constraints. Several statements stand
/// on a line each. Null where the database has no statement for it.
struct statement_words
{
    const char * counted;      ///< after the type of a column that is counted; empty when the type says it
    const char * nullable;     ///< after the type of a column that may hold no value
    const char * renameTable;  ///< {table} {new}
    const char * renameColumn; ///< {table} {column} {new} {definition}
    const char * addColumn;    ///< {table} {column} {definition}
    const char * dropColumn;   ///< {table} {column}
    const char * changeType;   ///< {table} {column} {type} {definition}
    const char * setNotNull;   ///< the same
    const char * dropNotNull;  ///< the same
    const char * count;        ///< the same, of a column that is to be counted
    const char * countNoMore;  ///< the same
    const char * addKey;       ///< {table} {columns} {name}
    const char * dropKey;      ///< {table} {name}
    const char * addUnique;    ///< {table} {columns} {name}
    const char * dropUnique;   ///< {table} {name}
    const char * dropNumberedUnique; ///< the same where the database made up the name: {table} {columns}
    const char * dropIndex;          ///< {table} {name}
    const char * renameIndex;        ///< {table} {name} {new}
    const char * renameConstraint;   ///< of a key or a foreign key: {table} {name} {new}
    const char * renameSequence;     ///< {name} {new}
    const char * addForeignKey;      ///< {table} {name} {columns} {target} {target_columns}
    const char * dropForeignKey;     ///< {table} {name}
    const char * createSchema;       ///< {name}
    const char * beforeRebuild; ///< before a table is made anew under another name, its rows copied, the old
                                ///< one dropped and the new one renamed; null where that is not the way
    const char * copyRows;      ///< into a table that it makes: {table} {columns} {new}
};

} // namespace database
