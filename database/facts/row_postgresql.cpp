#include "database/facts/rows.h"

namespace database {

namespace {

constexpr char Source[] = "tried on PostgreSQL 15.20";
constexpr char Documented[] = "documentation of PostgreSQL 15";

constexpr QLatin1String SystemColumns[] = {QLatin1String("ctid"), QLatin1String("xmin"),
                                           QLatin1String("xmax"), QLatin1String("cmin"),
                                           QLatin1String("cmax"), QLatin1String("tableoid")};
constexpr QLatin1String KnownSchemas[] = {QLatin1String("public")};
constexpr QLatin1String WithoutOrder[] = {QLatin1String("JSON"), QLatin1String("XML"),
                                          QLatin1String("POINT")};

// clang-format off
constexpr type_word Types[] = {
    {"INTEGER", "integer", "integer", false, false},
    {"INT", "integer", "integer", false, false},
    {"SMALLINT", "smallint", "integer", false, false},
    {"BIGINT", "bigint", "integer", false, false},
    {"BIGSERIAL", "bigint", "integer", false, false},
    {"SERIAL", "integer", "integer", false, false},
    {"BOOLEAN", "boolean", "boolean", false, false},
    {"TEXT", "text", "string", true, false},
    {"VARCHAR", "character varying", "string", false, true},
    {"CHAR", "character", "string", false, true},
    {"CHARACTER", "character", "string", false, true},
    {"FLOAT", "double precision", "real", false, true},
    {"REAL", "real", "real", false, false},
    {"NUMERIC", "numeric", "numeric", false, true},
    {"DECIMAL", "numeric", "numeric", false, true},
    {"DATE", "date", "time of day and date", false, false},
    {"TIMESTAMP", "timestamp without time zone", "time of day and date", false, true},
    {"TIMESTAMPTZ", "timestamp with time zone", "time of day and date", false, true},
    {"TIME", "time", "time", false, true},
    {"BYTEA", "bytea", "bytea", false, false},
    {"JSON", "json", "", false, false},
    {"JSONB", "jsonb", "jsonb", false, false},
    {"UUID", "uuid", "uuid", false, false},
    {"XML", "xml", "", false, false},
    {"POINT", "point", "", false, false},
};

constexpr error_code Errors[] = {
    {refusal_cause::syntax, QLatin1String("42601")},
    {refusal_cause::type_with_length, QLatin1String("42601")},
    {refusal_cause::schema_missing, QLatin1String("3F000")},
    {refusal_cause::unknown_type, QLatin1String("42704")},
    {refusal_cause::relation_exists, QLatin1String("42P07")},
    {refusal_cause::table_missing, QLatin1String("42P01")},
    {refusal_cause::dropped_table_missing, QLatin1String("42P01")},
    {refusal_cause::not_a_table, QLatin1String("42809")},
    {refusal_cause::column_exists, QLatin1String("42701")},
    {refusal_cause::system_column_added, QLatin1String("42701")},
    {refusal_cause::system_column_changed, QLatin1String("0A000")},
    {refusal_cause::system_column_indexed, QLatin1String("42704")},
    {refusal_cause::changed_column_missing, QLatin1String("42703")},
    {refusal_cause::dropped_column_missing, QLatin1String("42703")},
    {refusal_cause::key_column_missing, QLatin1String("42703")},
    {refusal_cause::type_not_indexable, QLatin1String("42704")},
    {refusal_cause::value_too_long_for_index, QLatin1String("54000")},
    {refusal_cause::index_exists, QLatin1String("42P07")},
    {refusal_cause::index_missing, QLatin1String("42704")},
    {refusal_cause::index_needed, QLatin1String("2BP01")},
    {refusal_cause::table_referred_to, QLatin1String("2BP01")},
    {refusal_cause::not_null_added, QLatin1String("23502")},
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

} // namespace

constinit const facts PostgresqlFacts = {
    .key = QLatin1String("postgresql"),
    .label = QLatin1String("PostgreSQL 15"),
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
            .words = {Types, Source},
            .syntaxErrors = {{}, Source},
            .unknown = {unknown_type::refused, Source},
            .unknownReadFirst = {false, Source},
            .mayBeMissing = {false, Source},
            .countedType = {QLatin1String("BIGSERIAL"), Source},
            .countableType = {QLatin1String(""), Source},
            .onlyOneCounted = {false, Source},
            .numbersOnlyInBrackets = {false, Source},
            .withoutOrder = {WithoutOrder, Source},
            .widerTargets = {true, Source},
        },
    .keys =
        {
            .longest = {0, Source},
            .longestRow = {0, Source},
            .bytesPerCharacter = {1, Source},
            .mostIndexes = {0, Source},
            .prefixes = {false, Source},
            .longestHashFree = {0, Source},
            .nullable = {false, Source},
        },
    .foreignKeys =
        {
            .alterable = {true, Source},
            .targetMustExist = {true, Source},
            .targetMustBeWholeKey = {true, Source},
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
            .notNullFilled = {false, Source},
            .columnTakesItsObjects = {true, Source},
            .columnBoundToObjects = {false, Source},
            .columnRenamedToItself = {false, Source},
            .renamesAnyRelation = {true, Source},
            .sequencesNamedFirst = {true, Source},
            .longValuesInIndex = {false, Source},
        },
    .errors = {Errors, Source},
};

} // namespace database
