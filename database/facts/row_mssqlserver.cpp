#include "database/facts/rows.h"

namespace database {

namespace {

constexpr char Source[] = "documentation of SQL Server";

constexpr QLatin1String WithoutOrder[] = {QLatin1String("")};

// clang-format off
constexpr type_word Types[] = {
    {"BIGINT", "", "bigint", false, 2},
    {"CHAR", "", "char", false, 2},
    {"DATE", "", "date", false, 2},
    {"DATETIME", "", "datetime", false, 2},
    {"DECIMAL", "", "decimal", false, 2},
    {"FLOAT", "", "float", false, 2},
    {"IMAGE", "", "", true, 2},
    {"INT", "", "int", false, 2},
    {"INTEGER", "int%", "int", false, 2},
    {"NUMERIC", "", "decimal", false, 2},
    {"NVARCHAR", "", "nvarchar", false, 2},
    {"REAL", "", "real", false, 2},
    {"SMALLINT", "", "smallint", false, 2},
    {"TEXT", "", "", true, 2},
    {"TIME", "", "time", false, 2},
    {"TINYINT", "", "tinyint", false, 2},
    {"VARCHAR", "", "varchar", false, 2},
};
static_assert(isSorted(Types));

constexpr error_code Errors[] = {
    {refusal_cause::syntax, QLatin1String("102")},
    {refusal_cause::table_without_columns, QLatin1String("102")},
    {refusal_cause::name_too_long, QLatin1String("103")},
    {refusal_cause::table_name_too_long, QLatin1String("103")},
    {refusal_cause::unknown_type, QLatin1String("2715")},
    {refusal_cause::relation_exists, QLatin1String("2714")},
    {refusal_cause::table_missing, QLatin1String("4902")},
    {refusal_cause::dropped_table_missing, QLatin1String("3701")},
    {refusal_cause::too_many_columns, QLatin1String("1702")},
    {refusal_cause::too_many_key_columns, QLatin1String("1904")},
    {refusal_cause::column_exists, QLatin1String("2705")},
    {refusal_cause::changed_column_missing, QLatin1String("15248")},
    {refusal_cause::dropped_column_missing, QLatin1String("4924")},
    {refusal_cause::key_column_missing, QLatin1String("1911")},
    {refusal_cause::type_not_indexable, QLatin1String("1919")},
    {refusal_cause::key_type_not_indexable, QLatin1String("1919")},
    {refusal_cause::index_exists, QLatin1String("1913")},
    {refusal_cause::index_missing, QLatin1String("3701")},
    {refusal_cause::table_referred_to, QLatin1String("3726")},
    {refusal_cause::not_null_added, QLatin1String("4901")},
    {refusal_cause::last_column, QLatin1String("4923")},
    {refusal_cause::column_bound, QLatin1String("5074")},
    {refusal_cause::foreign_key_exists, QLatin1String("2714")},
    {refusal_cause::foreign_key_missing, QLatin1String("3728")},
    {refusal_cause::target_missing, QLatin1String("1767")},
    {refusal_cause::target_column_missing, QLatin1String("1770")},
    {refusal_cause::target_not_key, QLatin1String("1776")},
    {refusal_cause::target_type_differs, QLatin1String("1778")},
    {refusal_cause::rows_without_target, QLatin1String("547")},
};
// clang-format on

// clang-format off
constexpr statement_words Words = {
    .counted = " IDENTITY(1,1)",
    .nullable = " NULL",
    .renameTable = "EXEC sp_rename '{table}', '{new}';",
    .renameColumn = "EXEC sp_rename '{table}.{column}', '{new}', 'COLUMN';",
    .addColumn = "ALTER TABLE {table} ADD {column} {definition};",
    .dropColumn = "ALTER TABLE {table} DROP COLUMN {column};",
    .changeType = "ALTER TABLE {table} ALTER COLUMN {column} {definition};",
    .setNotNull = "ALTER TABLE {table} ALTER COLUMN {column} {definition};",
    .dropNotNull = "ALTER TABLE {table} ALTER COLUMN {column} {definition};",
    .count = nullptr,
    .countNoMore = nullptr,
    .addKey = "ALTER TABLE {table} ADD PRIMARY KEY ({columns});",
    .dropKey = nullptr,
    .addUnique = "ALTER TABLE {table} ADD UNIQUE ({columns});",
    .dropUnique = nullptr,
    .dropIndex = "DROP INDEX {name} ON {table};",
    .renameIndex = "EXEC sp_rename '{table}.{name}', '{new}', 'INDEX';",
    .renameConstraint = "EXEC sp_rename '{name}', '{new}', 'OBJECT';",
    .renameSequence = nullptr,
    .addForeignKey = "ALTER TABLE {table} ADD CONSTRAINT {name} FOREIGN KEY ({columns}) REFERENCES {target} ({target_columns});",
    .dropForeignKey = "ALTER TABLE {table} DROP CONSTRAINT {name};",
    .createSchema = "CREATE SCHEMA {name};",
    .beforeRebuild = nullptr,
    .copyRows = "SELECT {columns} INTO {new} FROM {table};",
};
// clang-format on

} // namespace

constinit const facts MssqlserverFacts = {
    .key = QLatin1String("mssqlserver"),
    .scripts = QLatin1String("mssqlserver"),
    .isDatabase = true,
    .label = QLatin1String("SQL Server"),
    .isTried = false,
    .names =
        {
            .quotes = {QLatin1String("\"["), Source},
            .tables = {name_equality::case_ignored, Source},
            .others = {name_equality::case_ignored, Source},
            .longest = {128, Source},
            .unit = {name_unit::characters, Source},
            .over = {name_over_length::refused, Source},
            .lengthReadFirst = {true, Source},
            .digitMayLead = {false, Source},
            .mayEndInBlank = {true, Source},
            .basicPlaneOnly = {false, Source},
            .databasesNamed = {false, Source},
            .columnsNameTable = {false, Source},
            .indexedNameSchema = {true, Source},
            .keptBeginning = {QLatin1String(""), Source},
            .missingSchemaIsMissingTable = {false, Source},
            .droppedIndexNamesTable = {true, Source},
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
            .indexes = {name_scope::table, Source},
            .foreignKeys = {name_scope::database, Source},
            .tablesShareWithIndexes = {false, Source},
            .namesKeysAndSequences = {false, Source},
            .uniqueNamedLikeColumn = {false, Source},
            .uniqueNumbered = {false, Source},
        },
    .types =
        {
            .words = {Types, Source},
            .syntaxErrors = {{}, Source},
            .unknown = {unknown_type::refused, Source},
            .readFirst = {{}, Source},
            .mayBeMissing = {false, Source},
            .countableType = {QLatin1String(""), Source},
            .countedNeedsKey = {false, Source},
            .onlyOneCounted = {true, Source},
            .countedByTrigger = {false, Source},
            .numbersOnlyInBrackets = {false, Source},
            .withoutOrder = {WithoutOrder, Source},
            .references = {{}, Source},
            .arrays = {false, Source},
        },
    .keys =
        {
            .longest = {0, Source},
            .prefixes = {false, Source},
            .bytesOfHash = {0, Source},
            .hashesLong = {false, Source},
            .nullable = {false, Source},
            .oneNull = {true, Source},
            .keepsNames = {true, Source},
        },
    .limits =
        {
            .columns = {1024, Source},
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
            .kindsNamed = {false, Source},
            .columnsAltered = {true, Source},
            .indexesAltered = {false, Source},
            .addedNameFirst = {false, Source},
            .notNullFilled = {false, Source},
            .columnTakesItsObjects = {false, Source},
            .columnBoundToObjects = {true, Source},
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
