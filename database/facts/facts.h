#pragma once

#include "database/facts/refusal_cause.h"

#include <QLatin1String>
#include <QString>

#include <span>

/// What is known about each database: one row a database, each fact with where it is known from.
namespace database {

/// Something known, and where from: "tried on PostgreSQL 15", "documentation of Oracle".
template <class T>
struct fact
{
    T value;
    const char * source;
};

/// When two names are one.
enum class name_equality
{
    exact,
    ascii_ignored,   ///< the case of A to Z does not count
    case_ignored,    ///< no letter's case counts; accents do
    stored_as_lower, ///< A to Z become small when a name is read, then exact
    stored_as_upper, ///< letters become capital when a name is read, then exact
};

enum class name_unit
{
    characters,
    bytes
};

/// How far a name has to differ from others of its kind.
enum class name_scope
{
    none, ///< nothing is named so, or names may repeat
    table,
    database
};

/// What becomes of something that the database could refuse, or do by itself.
enum class name_over_length
{
    refused,
    cut
};

struct name_facts
{
    fact<QLatin1String> quotes; ///< characters that may open a quoted name
    fact<name_equality> tables; ///< when two table names are one
    fact<name_equality> others; ///< the same for columns, indexes, constraints
    fact<int> longest;          ///< 0 for no limit found
    fact<name_unit> unit;
    fact<name_over_length> over;
    fact<bool>
        lengthReadFirst; ///< of any name, before what is there is looked at; else only of those that are made
    fact<bool> digitMayLead; ///< unquoted: `1st` is a name
    fact<bool>
        bareConstraintIsNoColumn; ///< a last column named `constraint` is read as a constraint without any
    fact<std::span<const QLatin1String>> system;       ///< column names that the database keeps for itself
    fact<std::span<const QLatin1String>> knownSchemas; ///< that a table name may be qualified with anywhere
};

struct scope_facts
{
    fact<name_scope> indexes;
    fact<name_scope> foreignKeys;
    fact<bool> tablesShareWithIndexes; ///< a table and an index must not have one name
    fact<bool> namesKeysAndSequences;  ///< implied ones have names of their own, which share that space
    fact<bool>
        uniqueNamedLikeColumn; ///< the index of a unique column takes its name, numbered when that is taken
    fact<bool> uniqueNumbered; ///< the indexes of keys and unique columns are numbered table by table
};

/// A word that the database knows as a type.
struct type_word
{
    const char * word;  ///< as declared, in capitals
    const char * shown; ///< as the catalogue shows it; empty for the word in small letters
    const char *
        family; ///< a foreign key's column and its target must be of one; empty for those that cannot be
    bool large = false;      ///< text or bytes without a length of their own
    bool takesLength = true; ///< may be followed by numbers in brackets
};

enum class unknown_type
{
    taken,
    refused
};

struct type_facts
{
    fact<std::span<const type_word>> words;
    fact<std::span<const QLatin1String>> syntaxErrors; ///< words that are no type but of another kind
    fact<unknown_type> unknown;
    fact<bool> unknownReadFirst;     ///< an unknown type is told before what is there, and before a quotation
                                     ///< without end
    fact<bool> mayBeMissing;         ///< a column needs no type
    fact<QLatin1String> countedType; ///< the type that counts by itself; empty for none
    fact<QLatin1String> countableType; ///< the one type that may be marked as counted; empty for any
    fact<bool> onlyOneCounted;         ///< a table has no more than one counted column
    fact<bool> numbersOnlyInBrackets;  ///< of a type: one or two numbers and nothing else
    fact<std::span<const QLatin1String>> withoutOrder; ///< words of types that no index can be on
    fact<bool> widerTargets; ///< a column of the family "integer" may refer to a key of "real" or "numeric"
};

struct key_facts
{
    fact<int> longest;    ///< bytes of a key; 0 for no limit
    fact<int> longestRow; ///< bytes of the bounded texts of a row; 0 for no limit
    fact<int> bytesPerCharacter;
    fact<int> mostIndexes;     ///< of a table, keys included; 0 for no limit
    fact<bool> prefixes;       ///< a part of a key can be the beginning of a text
    fact<int> longestHashFree; ///< characters of a bounded text that a unique index takes without a hash; 0:
                               ///< no hashes
    fact<bool> nullable;       ///< a column of a primary key may hold no value
};

struct foreign_key_facts
{
    fact<bool> alterable;            ///< they can be added to and dropped from a table
    fact<bool> targetMustExist;      ///< when the key is made
    fact<bool> targetMustBeWholeKey; ///< else the columns need only begin a key or an index
    fact<bool> targetLookedForFirst; ///< before the columns of the table itself
    fact<bool> makesIndex;           ///< under its own name, where none begins with its columns
    fact<bool> keepsTarget;          ///< a table that others refer to is not dropped
    fact<bool> hashMakesDropIdle;    ///< DROP CONSTRAINT does nothing in a table with a hash index
};

struct change_facts
{
    fact<bool> emptyTables;           ///< a table may have no column
    fact<bool> lastColumnStays;       ///< the last column of a table cannot be dropped
    fact<bool> uniqueColumnAdded;     ///< ADD COLUMN … UNIQUE runs
    fact<bool> notNullFilled;         ///< ADD COLUMN … NOT NULL puts a value of its own into rows
    fact<bool> columnTakesItsObjects; ///< DROP COLUMN drops indexes, keys and foreign keys with it
    fact<bool>
        columnBoundToObjects; ///< DROP COLUMN is refused for a column of an index, a key or a foreign key
    fact<bool> columnRenamedToItself; ///< in other case
    fact<bool> renamesAnyRelation;    ///< ALTER TABLE … RENAME renames a sequence or an index as willingly
    fact<bool> sequencesNamedFirst;   ///< of a new table, before its columns and its own name are looked at
    fact<bool> longValuesInIndex;     ///< any value of a text can be in an index
};

struct facts
{
    QLatin1String key;   ///< word for a command line, such as "postgresql"
    QLatin1String label; ///< what the facts were tried on, or what documentation they are of
    name_facts names;
    scope_facts scopes;
    type_facts types;
    key_facts keys;
    foreign_key_facts foreignKeys;
    change_facts changes;
    fact<std::span<const error_code>> errors;
};

/// All rows, in the order in which the databases are numbered.
[[nodiscard]] std::span<const facts * const> allFacts();

/// The row of the database with that key; none for a key that no database has.
[[nodiscard]] const facts * factsOf(QStringView key);

/// The database's own code of an error; empty where none is known.
[[nodiscard]] QLatin1String codeOf(const facts & known, refusal_cause cause);

} // namespace database
