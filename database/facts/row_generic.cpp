#include "database/facts/rows.h"

namespace database {

namespace {

constexpr char Source[] = "assumed, as no database is behind it";

// clang-format off
constexpr type_word Types[] = {
    {"INTEGER", "INTEGER%", "integer", false, 2},
    {"TEXT", "TEXT%", "", false, 2},
};
static_assert(isSorted(Types));

constexpr error_code Errors[] = {
    {refusal_cause::syntax, QLatin1String("42000")},
    {refusal_cause::table_without_columns, QLatin1String("42000")},
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
    .addUnique = nullptr,
    .dropUnique = nullptr,
    .dropNumberedUnique = nullptr,
    .dropIndex = nullptr,
    .renameIndex = nullptr,
    .renameConstraint = nullptr,
    .renameSequence = nullptr,
    .addForeignKey = "ALTER TABLE {table} ADD CONSTRAINT {name} FOREIGN KEY ({columns}) REFERENCES {target} ({target_columns});",
    .dropForeignKey = nullptr,
    .createSchema = nullptr,
    .beforeRebuild = nullptr,
    .copyRows = "CREATE TABLE {new} AS SELECT {columns} FROM {table};",
};
// clang-format on

} // namespace

constinit const facts GenericFacts = {
    .key = QLatin1String("generic"),
    .scripts = QLatin1String("generic"),
    .isDatabase = false,
    .label = QLatin1String("no database in particular"),
    .isTried = false,
    .names =
        {
            .quotes = {QLatin1String("\""), Source},
            .tables = {name_equality::exact, Source},
            .others = {name_equality::stored_as_upper, Source},
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
            .indexedNameSchema = {true, Source},
            .keptBeginning = {QLatin1String(""), Source},
            .missingSchemaIsMissingTable = {false, Source},
            .droppedIndexNamesTable = {false, Source},
            .likeCopiesTable = {false, Source},
            .functions = {{}, Source},
            .literalsIndexed = {false, Source},
            .hashIsComment = {false, Source},
            .bareConstraintIsNoColumn = {false, Source},
            .system = {{}, Source},
            .knownSchemas = {{}, Source},
        },
    .scopes =
        {
            .indexes = {name_scope::database, Source},
            .foreignKeys = {name_scope::table, Source},
            .tablesShareWithIndexes = {false, Source},
            .namesKeysAndSequences = {false, Source},
            .uniqueNamedLikeColumn = {false, Source},
            .uniqueNumbered = {false, Source},
        },
    .types =
        {
            .words = {Types, Source},
            .syntaxErrors = {{}, Source},
            .unknown = {unknown_type::taken, Source},
            .readFirst = {{}, Source},
            .mayBeMissing = {false, Source},
            .countableType = {QLatin1String(""), Source},
            .countedNeedsKey = {false, Source},
            .onlyOneCounted = {false, Source},
            .countedByTrigger = {false, Source},
            .numbersOnlyInBrackets = {false, Source},
            .quotedWords = {false, Source},
            .withoutOrder = {{}, Source},
            .references = {{}, Source},
            .numberWords = {{}, Source},
            .lengthUnits = {{}, Source},
            .arrays = {false, Source},
        },
    .keys =
        {
            .longest = {0, Source},
            .prefixes = {false, Source},
            .bytesOfHash = {0, Source},
            .hashesLong = {false, Source},
            .nullable = {false, Source},
            .oneNull = {false, Source},
            .keepsNames = {false, Source},
            .indexedOnce = {false, Source},
        },
    .limits =
        {
            .columns = {0, Source},
            .columnsCountedFirst = {false, Source},
            .columnsRead = {0, Source},
            .keyColumns = {0, Source},
            .indexes = {0, Source},
            .row = {0, Source},
            .page = {0, Source},
        },
    .foreignKeys =
        {
            .alterable = {true, Source},
            .targetMustExist = {true, Source},
            .targetMustBeWholeKey = {true, Source},
            .lengthsCompared = {false, Source},
            .targetLookedForFirst = {false, Source},
            .makesIndex = {false, Source},
            .keepsTarget = {true, Source},
            .hashMakesDropIdle = {false, Source},
        },
    .changes =
        {
            .emptyTables = {false, Source},
            .lastColumnStays = {true, Source},
            .uniqueColumnAdded = {true, Source},
            .kindsNamed = {true, Source},
            .uniqueDroppedByColumns = {false, Source},
            .columnsAltered = {true, Source},
            .columnsRestated = {false, Source},
            .indexesAltered = {true, Source},
            .addedNameFirst = {false, Source},
            .notNullFilled = {false, Source},
            .columnTakesItsObjects = {false, Source},
            .keptBySharedConstraint = {false, Source},
            .alteredOnlyIfFree = {false, Source},
            .columnBoundToObjects = {false, Source},
            .columnRenamedToItself = {false, Source},
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
