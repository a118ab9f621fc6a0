#include "database/facts/postgresql_types.h"
#include "database/facts/rows.h"

namespace database {

namespace {

constexpr char Source[] = "tried on PostgreSQL 15.20";
constexpr char Documented[] = "documentation of PostgreSQL 15";

constexpr QLatin1String SystemColumns[] = {QLatin1String("ctid"), QLatin1String("xmin"),
                                           QLatin1String("xmax"), QLatin1String("cmin"),
                                           QLatin1String("cmax"), QLatin1String("tableoid")};
constexpr QLatin1String KnownSchemas[] = {QLatin1String("public")};
constexpr QLatin1String WithoutOrder[] = {QLatin1String("")};
constexpr QLatin1String Functions[] = {QLatin1String("current_catalog"), QLatin1String("current_date"),
                                       QLatin1String("current_role"),    QLatin1String("current_time"),
                                       QLatin1String("current_user"),    QLatin1String("current_timestamp"),
                                       QLatin1String("localtime"),       QLatin1String("session_user"),
                                       QLatin1String("localtimestamp"),  QLatin1String("user")};
constexpr QLatin1String SyntaxErrors[] = {QLatin1String("PRECISION"), QLatin1String("ROW"),
                                          QLatin1String("TABLE")};
constexpr refusal_cause ReadFirst[] = {refusal_cause::precision_too_large};
constexpr family_pair References[] = {{"integer", "numeric"}, {"integer", "real"},  {"integer", "oid"},
                                      {"numeric", "real"},    {"string", "bpchar"}, {"bpchar", "string"},
                                      {"string", "name"},     {"name", "string"},   {"bpchar", "name"},
                                      {"char", "string"},     {"time", "timetz"},   {"time", "interval"}};

constexpr lock_cost LockCosts[] = {
    {lock_form::add_counted_column, true, true},
    {lock_form::add_unique_column, false, true},
    {lock_form::create_index, false, true},
    {lock_form::add_foreign_key, false, true},
};

// clang-format off
constexpr error_code Errors[] = {
    {refusal_cause::syntax, QLatin1String("42601")},
    {refusal_cause::table_without_columns, QLatin1String("42601")},
    {refusal_cause::type_with_length, QLatin1String("42601")},
    {refusal_cause::length_too_large, QLatin1String("22023")},
    {refusal_cause::precision_too_large, QLatin1String("22023")},
    {refusal_cause::function_indexed, QLatin1String("42P17")},
    {refusal_cause::schema_missing, QLatin1String("3F000")},
    {refusal_cause::database_named, QLatin1String("0A000")},
    {refusal_cause::unknown_type, QLatin1String("42704")},
    {refusal_cause::relation_exists, QLatin1String("42P07")},
    {refusal_cause::table_missing, QLatin1String("42P01")},
    {refusal_cause::dropped_table_missing, QLatin1String("42P01")},
    {refusal_cause::not_a_table, QLatin1String("42809")},
    {refusal_cause::too_many_columns, QLatin1String("54011")},
    {refusal_cause::too_many_key_columns, QLatin1String("54011")},
    {refusal_cause::column_exists, QLatin1String("42701")},
    {refusal_cause::system_column_added, QLatin1String("42701")},
    {refusal_cause::system_column_changed, QLatin1String("0A000")},
    {refusal_cause::system_column_indexed, QLatin1String("42704")},
    {refusal_cause::changed_column_missing, QLatin1String("42703")},
    {refusal_cause::dropped_column_missing, QLatin1String("42703")},
    {refusal_cause::key_column_missing, QLatin1String("42703")},
    {refusal_cause::type_not_indexable, QLatin1String("42704")},
    {refusal_cause::key_type_not_indexable, QLatin1String("42704")},
    {refusal_cause::value_too_long_for_index, QLatin1String("54000")},
    {refusal_cause::index_exists, QLatin1String("42P07")},
    {refusal_cause::index_missing, QLatin1String("42704")},
    {refusal_cause::index_needed, QLatin1String("2BP01")},
    {refusal_cause::table_referred_to, QLatin1String("2BP01")},
    {refusal_cause::not_null_added, QLatin1String("23502")},
    {refusal_cause::key_exists, QLatin1String("42P16")},
    {refusal_cause::renamed_index_missing, QLatin1String("42P01")},
    {refusal_cause::type_not_convertible, QLatin1String("42804")},
    {refusal_cause::column_of_key, QLatin1String("42P16")},
    {refusal_cause::nulls_lost, QLatin1String("23502")},
    {refusal_cause::values_repeat, QLatin1String("23505")},
    {refusal_cause::column_referred_to, QLatin1String("2BP01")},
    {refusal_cause::foreign_key_exists, QLatin1String("42710")},
    {refusal_cause::foreign_key_missing, QLatin1String("42704")},
    {refusal_cause::target_missing, QLatin1String("42P01")},
    {refusal_cause::target_column_missing, QLatin1String("42703")},
    {refusal_cause::target_not_key, QLatin1String("42830")},
    {refusal_cause::target_type_differs, QLatin1String("42804")},
    {refusal_cause::rows_without_target, QLatin1String("23503")},
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
    .changeType = "ALTER TABLE {table} ALTER COLUMN {column} TYPE {type} USING {column}::{type};",
    .setNotNull = "ALTER TABLE {table} ALTER COLUMN {column} SET NOT NULL;",
    .dropNotNull = "ALTER TABLE {table} ALTER COLUMN {column} DROP NOT NULL;",
    .count = "CREATE SEQUENCE {name} OWNED BY {table}.{column};\nSELECT setval('{name}', COALESCE((SELECT max({column}) FROM {table}), 0) + 1, false);\nALTER TABLE {table} ALTER COLUMN {column} SET DEFAULT nextval('{name}');",
    .countNoMore = "ALTER TABLE {table} ALTER COLUMN {column} DROP DEFAULT;\nDROP SEQUENCE {name};",
    .addKey = "ALTER TABLE {table} ADD PRIMARY KEY ({columns});",
    .dropKey = "ALTER TABLE {table} DROP CONSTRAINT {name};",
    .addUnique = "ALTER TABLE {table} ADD CONSTRAINT {name} UNIQUE ({columns});",
    .dropUnique = "ALTER TABLE {table} DROP CONSTRAINT {name};",
    .dropNumberedUnique = nullptr,
    .dropIndex = "DROP INDEX {name};",
    .renameIndex = "ALTER INDEX {name} RENAME TO {new};",
    .renameConstraint = "ALTER TABLE {table} RENAME CONSTRAINT {name} TO {new};",
    .renameSequence = "ALTER SEQUENCE {name} RENAME TO {new};",
    .addForeignKey = "ALTER TABLE {table} ADD CONSTRAINT {name} FOREIGN KEY ({columns}) REFERENCES {target} ({target_columns});",
    .dropForeignKey = "ALTER TABLE {table} DROP CONSTRAINT {name};",
    .createSchema = "CREATE SCHEMA {name};",
    .beforeRebuild = nullptr,
    .copyRows = "CREATE TABLE {new} AS SELECT {columns} FROM {table};",
};
// clang-format on

} // namespace

constinit const facts PostgresqlFacts = {
    .key = QLatin1String("postgresql"),
    .scripts = QLatin1String("postgresql"),
    .isDatabase = true,
    .label = QLatin1String("PostgreSQL 15"),
    .isTried = true,
    .names =
        {
            .quotes = {QLatin1String("\""), Source},
            .tables = {name_equality::exact, Source},
            .others = {name_equality::stored_as_lower, Source},
            .longest = {63, Source},
            .unit = {name_unit::bytes, Source},
            .over = {name_over_length::cut, Source},
            .lengthReadFirst = {true, Source},
            .digitMayLead = {false, Source},
            .lowLineMayLead = {true, Source},
            .mayEndInBlank = {true, Source},
            .basicPlaneOnly = {false, Source},
            .databasesNamed = {true, Source},
            .columnsNameTable = {false, Source},
            .indexedNameSchema = {true, Source},
            .keptBeginning = {QLatin1String(""), Source},
            .missingSchemaIsMissingTable = {false, Source},
            .droppedIndexNamesTable = {false, Source},
            .likeCopiesTable = {true, Source},
            .functions = {Functions, Source},
            .literalsIndexed = {false, Source},
            .hashIsComment = {false, Source},
            .bareConstraintIsNoColumn = {false, Source},
            .system = {SystemColumns, Source},
            .knownSchemas = {KnownSchemas, Documented},
        },
    .scopes =
        {
            .indexes = {name_scope::database, Source},
            .foreignKeys = {name_scope::table, Source},
            .tablesShareWithIndexes = {true, Source},
            .namesKeysAndSequences = {true, Source},
            .uniqueNamedLikeColumn = {false, Source},
            .uniqueNumbered = {false, Source},
        },
    .types =
        {
            .words = {PostgresqlTypes, Source},
            .syntaxErrors = {SyntaxErrors, Source},
            .unknown = {unknown_type::refused, Source},
            .readFirst = {ReadFirst, Source},
            .mayBeMissing = {false, Source},
            .countableType = {QLatin1String(""), Source},
            .countedNeedsKey = {false, Source},
            .onlyOneCounted = {false, Source},
            .countedByTrigger = {false, Source},
            .numbersOnlyInBrackets = {false, Source},
            .quotedWords = {false, Source},
            .withoutOrder = {WithoutOrder, Source},
            .references = {References, Source},
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
            .nullable = {false, Source},
            .oneNull = {false, Source},
            .keepsNames = {false, Source},
            .indexedOnce = {false, Source},
        },
    .limits =
        {
            .columns = {1600, Source},
            .columnsCountedFirst = {true, Source},
            .columnsRead = {0, Source},
            .keyColumns = {32, Source},
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
            .targetLookedForFirst = {true, Source},
            .makesIndex = {false, Source},
            .keepsTarget = {true, Source},
            .hashMakesDropIdle = {false, Source},
        },
    .changes =
        {
            .emptyTables = {true, Source},
            .lastColumnStays = {false, Source},
            .uniqueColumnAdded = {true, Source},
            .kindsNamed = {false, Source},
            .uniqueDroppedByColumns = {false, Source},
            .columnsAltered = {true, Source},
            .columnsRestated = {false, Source},
            .indexesAltered = {true, Source},
            .addedNameFirst = {true, Source},
            .notNullFilled = {false, Source},
            .columnTakesItsObjects = {true, Source},
            .keptBySharedConstraint = {false, Source},
            .alteredOnlyIfFree = {false, Source},
            .columnBoundToObjects = {false, Source},
            .columnRenamedToItself = {false, Source},
            .renamesAnyRelation = {true, Source},
            .sequencesNamedFirst = {true, Source},
            .longValuesInIndex = {false, Source},
        },
    .locks =
        {
            .costs = {LockCosts, Source},
        },
    .words = {Words, Source},
    .errors = {Errors, Source},
};

} // namespace database
