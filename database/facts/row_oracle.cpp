#include "database/facts/rows.h"

namespace database {

namespace {

constexpr char Source[] = "documentation of Oracle";

constexpr QLatin1String WithoutOrder[] = {QLatin1String("")};

constexpr number_word NumberWords[] = {{"*", "38"}};

constexpr QLatin1String LengthUnits[] = {QLatin1String("BYTE"), QLatin1String("CHAR")};

// clang-format off
constexpr type_word Types[] = {
    {.word = "BFILE", .shown = "", .family = "", .large = true, .mostNumbers = 0},
    {.word = "BINARY_DOUBLE", .shown = "", .family = "double", .mostNumbers = 0},
    {.word = "BINARY_FLOAT", .shown = "", .family = "float", .mostNumbers = 0},
    {.word = "BLOB", .shown = "", .family = "", .large = true, .mostNumbers = 0},
    {.word = "CHAR", .shown = "", .family = "char", .mostNumbers = 1, .usual = 1, .bytes = 1, .isBounded = true},
    {.word = "CHAR VARYING", .shown = "varchar2%", .family = "string", .mostNumbers = 1, .fewestNumbers = 1, .bytes = 1, .isBounded = true},
    {.word = "CHARACTER", .shown = "char%", .family = "char", .mostNumbers = 1, .usual = 1, .bytes = 1, .isBounded = true},
    {.word = "CHARACTER VARYING", .shown = "varchar2%", .family = "string", .mostNumbers = 1, .fewestNumbers = 1, .bytes = 1, .isBounded = true},
    {.word = "CLOB", .shown = "", .family = "", .large = true, .mostNumbers = 0},
    {.word = "DATE", .shown = "", .family = "date", .mostNumbers = 0},
    {.word = "DEC", .shown = "decimal%", .family = "number"},
    {.word = "DECIMAL", .shown = "", .family = "number"},
    {.word = "DOUBLE PRECISION", .shown = "", .family = "number", .mostNumbers = 0},
    {.word = "FLOAT", .shown = "", .family = "number", .mostNumbers = 1},
    {.word = "INT", .shown = "integer", .family = "number", .mostNumbers = 0},
    {.word = "INTEGER", .shown = "", .family = "number", .mostNumbers = 0},
    {.word = "INTERVAL DAY TO SECOND", .shown = "", .family = "interval", .mostNumbers = 1},
    {.word = "INTERVAL YEAR TO MONTH", .shown = "", .family = "months", .mostNumbers = 1},
    {.word = "LONG", .shown = "", .family = "", .large = true, .mostNumbers = 0},
    {.word = "LONG RAW", .shown = "", .family = "", .large = true, .mostNumbers = 0},
    {.word = "NCHAR", .shown = "", .family = "nchar", .mostNumbers = 1, .usual = 1, .bytes = 2, .isBounded = true},
    {.word = "NCLOB", .shown = "", .family = "", .large = true, .mostNumbers = 0},
    {.word = "NUMBER", .shown = "", .family = "number"},
    {.word = "NUMERIC", .shown = "decimal%", .family = "number"},
    {.word = "NVARCHAR2", .shown = "", .family = "nstring", .mostNumbers = 1, .fewestNumbers = 1, .bytes = 2, .isBounded = true},
    {.word = "RAW", .shown = "", .family = "raw", .mostNumbers = 1, .fewestNumbers = 1, .bytes = 1, .isBounded = true},
    {.word = "REAL", .shown = "", .family = "number", .mostNumbers = 0},
    {.word = "ROWID", .shown = "", .family = "rowid", .mostNumbers = 0},
    {.word = "SMALLINT", .shown = "", .family = "number", .mostNumbers = 0},
    {.word = "TIMESTAMP", .shown = "", .family = "timestamp", .mostNumbers = 1},
    {.word = "TIMESTAMP WITH LOCAL TIME ZONE", .shown = "timestamp% with local time zone", .family = "local timestamp", .mostNumbers = 1},
    {.word = "TIMESTAMP WITH TIME ZONE", .shown = "timestamp% with time zone", .family = "timestamp with zone", .mostNumbers = 1},
    {.word = "UROWID", .shown = "", .family = "rowid", .mostNumbers = 1},
    {.word = "VARCHAR", .shown = "varchar2%", .family = "string", .mostNumbers = 1, .fewestNumbers = 1, .bytes = 1, .isBounded = true},
    {.word = "VARCHAR2", .shown = "", .family = "string", .mostNumbers = 1, .fewestNumbers = 1, .bytes = 1, .isBounded = true},
    {.word = "XMLTYPE", .shown = "", .family = "", .large = true, .mostNumbers = 0},
};
static_assert(isSorted(Types));

constexpr error_code Errors[] = {
    {refusal_cause::syntax, QLatin1String("ORA-00904")},
    {refusal_cause::schema_missing, QLatin1String("ORA-01918"), error_form::create_table},
    {refusal_cause::schema_missing, QLatin1String("ORA-00942")},
    {refusal_cause::table_without_columns, QLatin1String("ORA-00904")},
    {refusal_cause::name_too_long, QLatin1String("ORA-00972")},
    {refusal_cause::table_name_too_long, QLatin1String("ORA-00972")},
    {refusal_cause::unknown_type, QLatin1String("ORA-00902")},
    {refusal_cause::relation_exists, QLatin1String("ORA-00955")},
    {refusal_cause::table_missing, QLatin1String("ORA-00942")},
    {refusal_cause::dropped_table_missing, QLatin1String("ORA-00942")},
    {refusal_cause::too_many_columns, QLatin1String("ORA-01792")},
    {refusal_cause::too_many_key_columns, QLatin1String("ORA-02257")},
    {refusal_cause::column_exists, QLatin1String("ORA-00957"), error_form::create_table},
    {refusal_cause::column_exists, QLatin1String("ORA-00957"), error_form::rename},
    {refusal_cause::column_exists, QLatin1String("ORA-01430")},
    {refusal_cause::changed_column_missing, QLatin1String("ORA-00904")},
    {refusal_cause::dropped_column_missing, QLatin1String("ORA-00904")},
    {refusal_cause::key_column_missing, QLatin1String("ORA-00904")},
    {refusal_cause::columns_keyed, QLatin1String("ORA-02261")},
    {refusal_cause::columns_indexed, QLatin1String("ORA-01408")},
    {refusal_cause::key_too_long, QLatin1String("ORA-01450")},
    {refusal_cause::type_not_indexable, QLatin1String("ORA-02327")},
    {refusal_cause::key_type_not_indexable, QLatin1String("ORA-02329")},
    {refusal_cause::index_exists, QLatin1String("ORA-00955")},
    {refusal_cause::trigger_exists, QLatin1String("ORA-04095")},
    {refusal_cause::index_missing, QLatin1String("ORA-01418")},
    {refusal_cause::table_referred_to, QLatin1String("ORA-02449")},
    {refusal_cause::not_null_added, QLatin1String("ORA-01758")},
    {refusal_cause::last_column, QLatin1String("ORA-12983")},
    {refusal_cause::column_of_key, QLatin1String("ORA-12991")},
    {refusal_cause::column_of_foreign_key, QLatin1String("ORA-12991")},
    {refusal_cause::key_exists, QLatin1String("ORA-02260")},
    {refusal_cause::column_referred_to, QLatin1String("ORA-12992")},
    {refusal_cause::foreign_key_exists, QLatin1String("ORA-02264")},
    {refusal_cause::unique_missing, QLatin1String("ORA-02442")},
    {refusal_cause::foreign_key_missing, QLatin1String("ORA-02443")},
    {refusal_cause::target_missing, QLatin1String("ORA-00942")},
    {refusal_cause::target_column_missing, QLatin1String("ORA-00904")},
    {refusal_cause::target_not_key, QLatin1String("ORA-02270")},
    {refusal_cause::target_type_differs, QLatin1String("ORA-02267")},
    {refusal_cause::rows_without_target, QLatin1String("ORA-02298")},
};
// clang-format on

// clang-format off
constexpr statement_words Words = {
    .counted = "",
    .nullable = "",
    .renameTable = "ALTER TABLE {table} RENAME TO {new};",
    .renameColumn = "ALTER TABLE {table} RENAME COLUMN {column} TO {new};",
    .addColumn = "ALTER TABLE {table} ADD {column} {definition};",
    .dropColumn = "ALTER TABLE {table} DROP COLUMN {column};",
    .changeType = "ALTER TABLE {table} MODIFY {column} {type};",
    .setNotNull = "ALTER TABLE {table} MODIFY {column} NOT NULL;",
    .dropNotNull = "ALTER TABLE {table} MODIFY {column} NULL;",
    .count = nullptr,
    .countNoMore = nullptr,
    .addKey = "ALTER TABLE {table} ADD PRIMARY KEY ({columns});",
    .dropKey = "ALTER TABLE {table} DROP PRIMARY KEY;",
    .addUnique = "ALTER TABLE {table} ADD UNIQUE ({columns});",
    .dropUnique = nullptr,
    .dropNumberedUnique = "ALTER TABLE {table} DROP UNIQUE ({columns});",
    .dropIndex = "DROP INDEX {name};",
    .renameIndex = "ALTER INDEX {name} RENAME TO {new};",
    .renameConstraint = "ALTER TABLE {table} RENAME CONSTRAINT {name} TO {new};",
    .renameSequence = "RENAME {name} TO {new};",
    .addForeignKey = "ALTER TABLE {table} ADD CONSTRAINT {name} FOREIGN KEY ({columns}) REFERENCES {target} ({target_columns});",
    .dropForeignKey = "ALTER TABLE {table} DROP CONSTRAINT {name};",
    .createSchema = nullptr,
    .beforeRebuild = nullptr,
    .copyRows = "CREATE TABLE {new} AS SELECT {columns} FROM {table};",
};
// clang-format on

} // namespace

constinit const facts OracleFacts = {
    .key = QLatin1String("oracle"),
    .scripts = QLatin1String("oracle"),
    .isDatabase = true,
    .label = QLatin1String("Oracle"),
    .isTried = false,
    .names =
        {
            .quotes = {QLatin1String("\""), Source},
            .tables = {name_equality::stored_as_upper, Source},
            .others = {name_equality::stored_as_upper, Source},
            .longest = {30, Source},
            .unit = {name_unit::bytes, Source},
            .over = {name_over_length::refused, Source},
            .lengthReadFirst = {true, Source},
            .digitMayLead = {false, Source},
            .lowLineMayLead = {false, Source},
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
            .onlyOneCounted = {false, Source},
            .countedByTrigger = {true, Source},
            .numbersOnlyInBrackets = {false, Source},
            .quotedWords = {false, Source},
            .withoutOrder = {WithoutOrder, Source},
            .references = {{}, Source},
            .numberWords = {NumberWords, Source},
            .lengthUnits = {LengthUnits, Source},
            .arrays = {false, Source},
        },
    .keys =
        {
            // Of a block of eight kilobytes.
            .longest = {6398, Source},
            .prefixes = {false, Source},
            .bytesOfHash = {0, Source},
            .hashesLong = {false, Source},
            .nullable = {false, Source},
            .oneNull = {false, Source},
            .keepsNames = {true, Source},
            .indexedOnce = {true, Source},
        },
    .limits =
        {
            .columns = {1000, Source},
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
            .uniqueDroppedByColumns = {true, Source},
            .columnsAltered = {false, Source},
            .columnsRestated = {false, Source},
            .indexesAltered = {true, Source},
            .addedNameFirst = {false, Source},
            .notNullFilled = {false, Source},
            .columnTakesItsObjects = {true, Source},
            .keptBySharedConstraint = {true, Source},
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
