#include "database/facts/rows.h"

namespace database {

namespace {

constexpr char Source[] = "tried on MariaDB 10.11.19";

constexpr QLatin1String SyntaxErrors[] = {QLatin1String("VARCHAR2"), QLatin1String("NUMBER"),
                                          QLatin1String("CLOB")};

// clang-format off
constexpr type_word Types[] = {
    {"INTEGER", "int(11)", "int", false, true},
    {"INT", "int(11)", "int", false, true},
    {"INT4", "int(11)", "int", false, true},
    {"SMALLINT", "smallint(6)", "smallint", false, true},
    {"BIGINT", "bigint(20)", "bigint", false, true},
    {"INT8", "bigint(20)", "bigint", false, true},
    {"SERIAL", "bigint(20) unsigned", "bigint", false, true},
    {"TINYINT", "tinyint(4)", "tinyint", false, true},
    {"BOOLEAN", "tinyint(1)", "tinyint", false, true},
    {"VARCHAR", "", "string", false, true},
    {"NVARCHAR", "varchar", "string", false, true},
    {"CHAR", "", "string", false, true},
    {"TEXT", "text", "", true, true},
    {"TINYTEXT", "", "", true, true},
    {"MEDIUMTEXT", "", "", true, true},
    {"LONGTEXT", "", "", true, true},
    {"JSON", "longtext", "", true, true},
    {"BLOB", "", "", true, true},
    {"LONGBLOB", "", "", true, true},
    {"DOUBLE", "", "double", false, true},
    {"FLOAT", "", "float", false, true},
    {"DECIMAL", "", "decimal", false, true},
    {"DATE", "", "date", false, true},
    {"TIME", "", "time", false, true},
    {"TIMESTAMP", "", "timestamp", false, true},
    {"DATETIME", "", "datetime", false, true},
    {"VARBINARY", "", "varbinary", false, true},
    {"BINARY", "", "binary", false, true},
    {"ENUM", "", "enum", false, true},
    {"UUID", "", "uuid", false, true},
};

constexpr error_code Errors[] = {
    {refusal_cause::syntax, QLatin1String("1064")},
    {refusal_cause::schema_missing, QLatin1String("1049")},
    {refusal_cause::name_too_long, QLatin1String("1059")},
    {refusal_cause::table_name_too_long, QLatin1String("1103")},
    {refusal_cause::unknown_type, QLatin1String("4161")},
    {refusal_cause::relation_exists, QLatin1String("1050")},
    {refusal_cause::table_missing, QLatin1String("1146")},
    {refusal_cause::dropped_table_missing, QLatin1String("1051")},
    {refusal_cause::column_exists, QLatin1String("1060")},
    {refusal_cause::changed_column_missing, QLatin1String("1054")},
    {refusal_cause::dropped_column_missing, QLatin1String("1091")},
    {refusal_cause::key_column_missing, QLatin1String("1072")},
    {refusal_cause::several_counted, QLatin1String("1075")},
    {refusal_cause::counted_not_possible, QLatin1String("1075")},
    {refusal_cause::key_too_long, QLatin1String("1071")},
    {refusal_cause::row_too_long, QLatin1String("1118")},
    {refusal_cause::prefix_not_possible, QLatin1String("1089")},
    {refusal_cause::text_key_without_prefix, QLatin1String("1170")},
    {refusal_cause::too_many_indexes, QLatin1String("1069")},
    {refusal_cause::index_exists, QLatin1String("1061")},
    {refusal_cause::index_missing, QLatin1String("1091")},
    {refusal_cause::index_needed, QLatin1String("1553")},
    {refusal_cause::table_referred_to, QLatin1String("1451")},
    {refusal_cause::values_repeat, QLatin1String("1062")},
    {refusal_cause::last_column, QLatin1String("1090")},
    {refusal_cause::column_of_key, QLatin1String("1072")},
    {refusal_cause::column_of_foreign_key, QLatin1String("1553")},
    {refusal_cause::column_of_foreign_key_copied, QLatin1String("1828")},
    {refusal_cause::column_referred_to, QLatin1String("1829")},
    {refusal_cause::copy_needed, QLatin1String("1846")},
    {refusal_cause::values_lost, QLatin1String("1264")},
    {refusal_cause::values_converted, QLatin1String("1292")},
    {refusal_cause::nulls_lost, QLatin1String("1265")},
    {refusal_cause::foreign_key_exists, QLatin1String("1005")},
    {refusal_cause::foreign_key_missing, QLatin1String("1091")},
    {refusal_cause::target_missing, QLatin1String("1005")},
    {refusal_cause::target_column_missing, QLatin1String("1005")},
    {refusal_cause::target_not_key, QLatin1String("1005")},
    {refusal_cause::target_type_differs, QLatin1String("1005")},
    {refusal_cause::rows_without_target, QLatin1String("1452")},
};
// clang-format on

} // namespace

constinit const facts MysqlFacts = {
    .key = QLatin1String("mysql"),
    .label = QLatin1String("MariaDB 10.11"),
    .names =
        {
            .quotes = {QLatin1String("`"), Source},
            .tables = {name_equality::exact, Source},
            .others = {name_equality::case_ignored, Source},
            .longest = {64, Source},
            .unit = {name_unit::characters, Source},
            .over = {name_over_length::refused, Source},
            .lengthReadFirst = {false, Source},
            .digitMayLead = {true, Source},
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
            .uniqueNamedLikeColumn = {true, Source},
            .uniqueNumbered = {false, Source},
        },
    .types =
        {
            .words = {Types, Source},
            .syntaxErrors = {SyntaxErrors, Source},
            .unknown = {unknown_type::refused, Source},
            .unknownReadFirst = {true, Source},
            .mayBeMissing = {false, Source},
            .countedType = {QLatin1String(""), Source},
            .countableType = {QLatin1String(""), Source},
            .onlyOneCounted = {true, Source},
            .numbersOnlyInBrackets = {false, Source},
            .withoutOrder = {{}, Source},
            .widerTargets = {false, Source},
        },
    .keys =
        {
            .longest = {3072, Source},
            .longestRow = {65535, Source},
            .bytesPerCharacter = {4, Source},
            .mostIndexes = {64, Source},
            .prefixes = {true, Source},
            .longestHashFree = {768, Source},
            .nullable = {false, Source},
        },
    .foreignKeys =
        {
            .alterable = {true, Source},
            .targetMustExist = {true, Source},
            .targetMustBeWholeKey = {false, Source},
            .targetLookedForFirst = {false, Source},
            .makesIndex = {true, Source},
            .keepsTarget = {true, Source},
            .hashMakesDropIdle = {true, Source},
        },
    .changes =
        {
            .emptyTables = {false, Source},
            .lastColumnStays = {true, Source},
            .uniqueColumnAdded = {true, Source},
            .notNullFilled = {true, Source},
            .columnTakesItsObjects = {false, Source},
            .columnBoundToObjects = {false, Source},
            .columnRenamedToItself = {true, Source},
            .renamesAnyRelation = {false, Source},
            .sequencesNamedFirst = {false, Source},
            .longValuesInIndex = {true, Source},
        },
    .errors = {Errors, Source},
};

} // namespace database
