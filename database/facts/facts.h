#pragma once

#include "database/facts/lock_facts.h"
#include "database/facts/refusal_cause.h"
#include "database/facts/statement_words.h"

#include <QLatin1String>
#include <QString>

#include <algorithm>
#include <span>
#include <string_view>

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
    fact<bool> digitMayLead;   ///< unquoted: `1st` is a name
    fact<bool> lowLineMayLead; ///< unquoted: `_x` is a name
    fact<bool> mayEndInBlank;
    fact<bool> basicPlaneOnly;         ///< letters beyond U+FFFF are refused
    fact<bool> databasesNamed;         ///< a table may be named with schema and database before it
    fact<bool> columnsNameTable;       ///< a column may be defined with its table's name before it
    fact<bool> indexedNameSchema;      ///< so do CREATE INDEX and REFERENCES
    fact<QLatin1String> keptBeginning; ///< no table can be made under a name that begins so; empty for none
    fact<bool> missingSchemaIsMissingTable; ///< except for a table that is made
    fact<bool> droppedIndexNamesTable;      ///< DROP INDEX has the table before the index, with a point
    fact<bool> likeCopiesTable;             ///< a column named `like` is read as the table to copy columns of
    fact<std::span<const QLatin1String>> functions; ///< reserved words that an index takes as functions
    fact<bool> literalsIndexed;                     ///< a number, or null, is what an index can be over
    fact<bool> hashIsComment;                       ///< from # to the end of the line
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

/// A type that the database knows. Some words stand in several rows, each for other numbers in brackets; the
/// first of them is what the word means without any. The order is that in which a row is read.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): a few hundred rows, written once
struct type_word
{
    const char * word;   ///< as declared, in capitals, one blank between its words
    const char * shown;  ///< as the catalogue shows it, with % for the brackets; empty for the declared text
                         ///< in small letters
    const char * family; ///< what a foreign key's column and its target must have in common; empty for those
                         ///< that cannot have one
    bool large = false;  ///< text or bytes without a length of their own
    int mostNumbers = 2; ///< in brackets
    int fewestNumbers = 0;  ///< else it is an error in the syntax
    int usual = -1;         ///< first number when there is none; -1 for none
    int usualScale = -1;    ///< second number when only one is there
    int largestScale = 0;   ///< second number, which is no more than the first then; 0 for no limit
    int smallest = 0;       ///< first number that the row is for
    int largest = 0;        ///< the same; 0 for no limit
    bool countable = false; ///< a key of the type may be marked as counted
    bool counts = false;    ///< it counts by itself
    bool isUnique = false;  ///< a column of the type is unique by itself
    const char * ifUnsigned =
        nullptr;              ///< family of the type without negative numbers; none: it cannot be unsigned
    int usualUnsigned = -1;   ///< first number of that one
    int bytes = 0;            ///< that a value takes in a key
    bool isBounded = false;   ///< a value has at most as many characters, of `bytes` each, as the number says
    bool hasPrefixes = false; ///< the beginning of a value can be in a key, though it is no text
    int bytesInRow = 0;       ///< that a text without a bound takes where the row stands
    bool isTime = false;      ///< a date or a time
    int mostIndexed = 0;      ///< of a text without a bound: how much an index takes; 0 for as much as it can
    bool takesTexts = false;  ///< in the brackets, in place of numbers
    refusal_cause miscounted = refusal_cause::syntax;         ///< told for too many numbers
    refusal_cause tooLarge = refusal_cause::length_too_large; ///< told for a first number that no row is for
};

/// Whether the rows stand in the order of their words, as whoever looks for a word expects it.
constexpr bool isSorted(std::span<const type_word> words)
{
    return std::is_sorted(words.begin(), words.end(), [](const type_word & a, const type_word & b) {
        return std::string_view(a.word) < std::string_view(b.word);
    });
}

/// A column of the one family may refer to a key of the other.
struct family_pair
{
    const char * from;
    const char * to;
};

/// A word that stands in the brackets of a type in the place of a number.
struct number_word
{
    const char * word; ///< in capitals
    const char * number;
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
    fact<std::span<const refusal_cause>> readFirst; ///< of a type, told before what is there is looked at,
                                                    ///< and before a quotation without end
    fact<bool> mayBeMissing;                        ///< a column needs no type
    fact<QLatin1String> countableType; ///< the one type that may be marked as counted; empty for any
    fact<bool> countedNeedsKey;        ///< a counted column has to be the first of a key or an index
    fact<bool> onlyOneCounted;         ///< a table has no more than one counted column
    fact<bool> countedByTrigger;       ///< a trigger that knows the column by its name counts it
    fact<bool> numbersOnlyInBrackets;  ///< of a type: one or two numbers and nothing else
    fact<bool> quotedWords;            ///< words of a type may stand in quotation marks, whatever is in them
    fact<std::span<const QLatin1String>> withoutOrder; ///< families of types that no index can be on
    fact<std::span<const family_pair>> references;     ///< besides those of one family
    fact<std::span<const number_word>> numberWords;    ///< MAX
    fact<std::span<const QLatin1String>> lengthUnits;  ///< that may follow a number in brackets
    fact<bool> arrays;                                 ///< brackets after a type make a type of many values
};

struct key_facts
{
    fact<int> longest;      ///< bytes of a key; 0 for no limit
    fact<bool> prefixes;    ///< a part of a key can be the beginning of a text
    fact<int> bytesOfHash;  ///< that such a hash takes of a row
    fact<bool> hashesLong;  ///< a unique index over more than the longest key is kept as a hash
    fact<bool> nullable;    ///< a column of a primary key may hold no value
    fact<bool> oneNull;     ///< a unique column may hold no value in one row only
    fact<bool> keepsNames;  ///< that statements give to primary keys, where none are made up
    fact<bool> indexedOnce; ///< no index, key or unique constraint has the columns of another one
};

/// How much of each a table can have; 0 for no limit.
struct limit_facts
{
    fact<int> columns;
    fact<bool> columnsCountedFirst; ///< before the names of columns are compared; else when all else fits
    fact<int> columnsRead;          ///< above which a table is not even tried
    fact<int> keyColumns;           ///< of a key, an index or a foreign key
    fact<int> indexes;              ///< keys included
    fact<int> row;                  ///< bytes of the bounded texts of a row
    fact<int> page;                 ///< bytes that a row takes of a page has to be fewer than
};

struct foreign_key_facts
{
    fact<bool> alterable;            ///< they can be added to and dropped from a table
    fact<bool> targetMustExist;      ///< when the key is made
    fact<bool> targetMustBeWholeKey; ///< else the columns need only begin a key or an index
    fact<bool> lengthsCompared;      ///< a column and its target are of one length, not only of one kind
    fact<bool> targetLookedForFirst; ///< before the columns of the table itself
    fact<bool> makesIndex;           ///< under its own name, where none begins with its columns
    fact<bool> keepsTarget;          ///< a table that others refer to is not dropped
    fact<bool> hashMakesDropIdle;    ///< DROP CONSTRAINT does nothing in a table with a hash index
};

struct change_facts
{
    fact<bool> emptyTables;       ///< a table may have no column
    fact<bool> lastColumnStays;   ///< the last column of a table cannot be dropped
    fact<bool> uniqueColumnAdded; ///< ADD COLUMN … UNIQUE runs
    fact<bool>
        kindsNamed; ///< ALTER TABLE has CHANGE, MODIFY, DROP PRIMARY KEY, DROP FOREIGN KEY, RENAME INDEX
    fact<bool> uniqueDroppedByColumns; ///< ALTER TABLE has DROP UNIQUE with columns
    fact<bool> columnsAltered;         ///< ALTER TABLE has ALTER COLUMN … TYPE and SET NOT NULL
    fact<bool> columnsRestated;        ///< ALTER TABLE has ALTER COLUMN with a type and NULL or NOT NULL
    fact<bool> indexesAltered;         ///< there is ALTER INDEX … RENAME
    fact<bool> addedNameFirst;         ///< of an added column, before its type is looked at
    fact<bool> notNullFilled;          ///< ADD COLUMN … NOT NULL puts a value of its own into rows
    fact<bool> columnTakesItsObjects;  ///< DROP COLUMN drops indexes, keys and foreign keys with it
    fact<bool> keptBySharedConstraint; ///< but not those constraints that have other columns as well
    fact<bool> alteredOnlyIfFree; ///< of a column of an index, a key or a foreign key, neither the type nor
                                  ///< whether it may hold no value can be changed
    fact<bool>
        columnBoundToObjects; ///< DROP COLUMN is refused for a column of an index, a key or a foreign key
    fact<bool> columnRenamedToItself; ///< in other case
    fact<bool> renamesAnyRelation;    ///< ALTER TABLE … RENAME renames a sequence or an index as willingly
    fact<bool> sequencesNamedFirst;   ///< of a new table, before its columns and its own name are looked at
    fact<bool> longValuesInIndex;     ///< any value of a text can be in an index
};

struct lock_facts
{
    fact<std::span<const lock_cost>> costs; ///< of the forms that cost more than a moment
};

struct facts
{
    QLatin1String key;     ///< word for a command line, such as "postgresql"
    QLatin1String scripts; ///< key of the database that the scripts are made for
    bool isDatabase;       ///< false for the dialect of none in particular
    QLatin1String label;   ///< what the facts were tried on, or what documentation they are of
    bool isTried;          ///< on the database itself; else all is known from documentation
    name_facts names;
    scope_facts scopes;
    type_facts types;
    key_facts keys;
    limit_facts limits;
    foreign_key_facts foreignKeys;
    change_facts changes;
    lock_facts locks;
    fact<statement_words> words;
    fact<std::span<const error_code>> errors;
};

/// All rows, in the order in which the databases are numbered; MariaDB, which runs the scripts of MySQL and
/// has no number of its own, comes after it.
[[nodiscard]] std::span<const facts * const> allFacts();

/// The row of the database with that key; none for a key that no database has.
[[nodiscard]] const facts * factsOf(QStringView key);

/// The database's own code of an error of such a statement; empty where none is known.
[[nodiscard]] QLatin1String codeOf(const facts & known, refusal_cause cause, error_form form);

} // namespace database
