#include "database/facts/rows.h"

namespace database {

namespace {

constexpr char Source[] = "tried on SQLite 3.40.1";

constexpr QLatin1String KnownSchemas[] = {QLatin1String("main"), QLatin1String("temp")};

// clang-format off
constexpr type_word Types[] = {
    {"INTEGER", "INTEGER%", "", false, 2},
    {"TEXT", "TEXT%", "", false, 2},
};
static_assert(isSorted(Types));

constexpr error_code Errors[] = {
    {refusal_cause::syntax, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::table_without_columns, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::schema_missing, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::name_kept, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::relation_exists, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::table_missing, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::dropped_table_missing, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::too_many_columns, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::column_exists, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::changed_column_missing, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::dropped_column_missing, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::key_column_missing, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::counted_not_possible, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::index_exists, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::index_missing, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::unique_added, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::not_null_added, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::last_column, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::column_bound, QLatin1String("SQLITE_ERROR")},
    {refusal_cause::rows_referred_to, QLatin1String("SQLITE_CONSTRAINT_FOREIGNKEY")},
};
// clang-format on

// clang-format off
constexpr statement_words Words = {
    .counted = "",
    .nullable = "",
    .renameTable = "ALTER TABLE {table} RENAME TO {new};",
    .renameColumn = "ALTER TABLE {table} RENAME COLUMN {column} TO {new};",
    .addColumn = "ALTER TABLE {table} ADD COLUMN {column} {definition};",
    .dropColumn = "ALTER TABLE {table} DROP COLUMN {column};",
    .changeType = nullptr,
    .setNotNull = nullptr,
    .dropNotNull = nullptr,
    .count = nullptr,
    .countNoMore = nullptr,
    .addKey = nullptr,
    .dropKey = nullptr,
    .addUnique = "CREATE UNIQUE INDEX {name} ON {table} ({columns});",
    .dropUnique = nullptr,
    .dropNumberedUnique = nullptr,
    .dropIndex = "DROP INDEX {name};",
    .renameIndex = nullptr,
    .renameConstraint = nullptr,
    .renameSequence = nullptr,
    .addForeignKey = nullptr,
    .dropForeignKey = nullptr,
    .createSchema = nullptr,
    .beforeRebuild = "PRAGMA foreign_keys = OFF;",
    .copyRows = "CREATE TABLE {new} AS SELECT {columns} FROM {table};",
};
// clang-format on

} // namespace

constinit const facts SqliteFacts = {
    .key = QLatin1String("sqlite"),
    .scripts = QLatin1String("sqlite"),
    .isDatabase = true,
    .label = QLatin1String("SQLite 3.40"),
    .isTried = true,
    .names =
        {
            .quotes = {QLatin1String("\"`["), Source},
            .tables = {name_equality::ascii_ignored, Source},
            .others = {name_equality::ascii_ignored, Source},
            .longest = {0, Source},
            .unit = {name_unit::characters, Source},
            .over = {name_over_length::refused, Source},
            .lengthReadFirst = {true, Source},
            .digitMayLead = {false, Source},
            .lowLineMayLead = {true, Source},
            .mayEndInBlank = {true, Source},
            .basicPlaneOnly = {false, Source},
            .databasesNamed = {false, Source},
            .columnsNameTable = {false, Source},
            .indexedNameSchema = {false, Source},
            .keptBeginning = {QLatin1String("sqlite_"), Source},
            .missingSchemaIsMissingTable = {false, Source},
            .droppedIndexNamesTable = {false, Source},
            .likeCopiesTable = {false, Source},
            .functions = {{}, Source},
            .literalsIndexed = {true, Source},
            .hashIsComment = {false, Source},
            .bareConstraintIsNoColumn = {true, Source},
            .system = {{}, Source},
            .knownSchemas = {KnownSchemas, Source},
        },
    .scopes =
        {
            .indexes = {name_scope::database, Source},
            .foreignKeys = {name_scope::none, Source},
            .tablesShareWithIndexes = {true, Source},
            .namesKeysAndSequences = {false, Source},
            .uniqueNamedLikeColumn = {false, Source},
            .uniqueNumbered = {true, Source},
        },
    .types =
        {
            .words = {Types, Source},
            .syntaxErrors = {{}, Source},
            .unknown = {unknown_type::taken, Source},
            .readFirst = {{}, Source},
            .mayBeMissing = {true, Source},
            .countableType = {QLatin1String("INTEGER"), Source},
            .countedNeedsKey = {false, Source},
            .onlyOneCounted = {true, Source},
            .countedByTrigger = {false, Source},
            .numbersOnlyInBrackets = {true, Source},
            .quotedWords = {true, Source},
            .withoutOrder = {{}, Source},
            .references = {{}, Source},
            .numberWords = {{}, Source},
            .lengthUnits = {{}, Source},
            .arrays = {true, Source},
        },
    .keys =
        {
            .longest = {0, Source},
            .prefixes = {false, Source},
            .bytesOfHash = {0, Source},
            .hashesLong = {false, Source},
            .nullable = {true, Source},
            .oneNull = {false, Source},
            .keepsNames = {false, Source},
            .indexedOnce = {false, Source},
        },
    .limits =
        {
            .columns = {2000, Source},
            .columnsCountedFirst = {true, Source},
            .columnsRead = {0, Source},
            .keyColumns = {0, Source},
            .indexes = {0, Source},
            .row = {0, Source},
            .page = {0, Source},
        },
    .foreignKeys =
        {
            .alterable = {false, Source},
            .targetMustExist = {false, Source},
            .targetMustBeWholeKey = {false, Source},
            .lengthsCompared = {false, Source},
            .targetLookedForFirst = {false, Source},
            .makesIndex = {false, Source},
            .keepsTarget = {false, Source},
            .hashMakesDropIdle = {false, Source},
        },
    .changes =
        {
            .emptyTables = {false, Source},
            .lastColumnStays = {true, Source},
            .uniqueColumnAdded = {false, Source},
            .kindsNamed = {false, Source},
            .uniqueDroppedByColumns = {false, Source},
            .columnsAltered = {false, Source},
            .columnsRestated = {false, Source},
            .indexesAltered = {false, Source},
            .addedNameFirst = {false, Source},
            .notNullFilled = {false, Source},
            .columnTakesItsObjects = {false, Source},
            .keptBySharedConstraint = {false, Source},
            .alteredOnlyIfFree = {false, Source},
            .columnBoundToObjects = {true, Source},
            .columnRenamedToItself = {true, Source},
            .renamesAnyRelation = {false, Source},
            .sequencesNamedFirst = {false, Source},
            .longValuesInIndex = {true, Source},
        },
    .locks =
        {
            .costs = {{}, Source},
        },
    .words = {Words, Source},
    .errors = {Errors, Source},
};

} // namespace database
