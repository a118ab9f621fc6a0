#pragma once

#include "database/facts/facts.h"
#include "database/facts/mariadb_types.h"

namespace database {

inline constexpr QLatin1String MariadbSyntaxErrors[] = {
    QLatin1String("VARCHAR2"), QLatin1String("NUMBER"), QLatin1String("CLOB"), QLatin1String("RAW"),
    QLatin1String("UNSIGNED"), QLatin1String("SIGNED"), QLatin1String("ROW")};

inline constexpr lock_cost MariadbLockCosts[] = {
    {lock_form::change_column, true, true},
    {lock_form::add_foreign_key, true, true},
};

// What the type of a column is told with before the table is looked for.
inline constexpr refusal_cause MariadbReadFirst[] = {
    refusal_cause::unknown_type,        refusal_cause::length_too_large,     refusal_cause::width_too_large,
    refusal_cause::precision_too_large, refusal_cause::specifier_impossible, refusal_cause::scale_too_large,
    refusal_cause::scale_over_precision};

// clang-format off
inline constexpr error_code MariadbErrors[] = {
    {refusal_cause::syntax, QLatin1String("1064")},
    {refusal_cause::schema_missing, QLatin1String("1049")},
    {refusal_cause::name_too_long, QLatin1String("1059")},
    {refusal_cause::table_name_too_long, QLatin1String("1103")},
    {refusal_cause::table_name_ends_blank, QLatin1String("1103")},
    {refusal_cause::column_name_ends_blank, QLatin1String("1166")},
    {refusal_cause::table_name_in_column, QLatin1String("1103")},
    {refusal_cause::database_name_in_column, QLatin1String("1102")},
    {refusal_cause::name_not_encodable, QLatin1String("1300")},
    {refusal_cause::unknown_type, QLatin1String("4161")},
    {refusal_cause::length_too_large, QLatin1String("1074")},
    {refusal_cause::text_too_long, QLatin1String("1074")},
    {refusal_cause::width_too_large, QLatin1String("1439")},
    {refusal_cause::precision_too_large, QLatin1String("1426")},
    {refusal_cause::scale_too_large, QLatin1String("1425")},
    {refusal_cause::scale_over_precision, QLatin1String("1427")},
    {refusal_cause::specifier_impossible, QLatin1String("1063")},
    {refusal_cause::too_many_columns, QLatin1String("1005")},
    {refusal_cause::too_many_columns_read, QLatin1String("1117")},
    {refusal_cause::too_many_key_columns, QLatin1String("1070")},
    {refusal_cause::target_column_count, QLatin1String("1239")},
    {refusal_cause::column_repeated, QLatin1String("1060")},
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
    {refusal_cause::row_over_page, QLatin1String("1118")},
    {refusal_cause::prefix_not_possible, QLatin1String("1089")},
    {refusal_cause::text_key_without_prefix, QLatin1String("1170")},
    {refusal_cause::too_many_indexes, QLatin1String("1069")},
    {refusal_cause::index_exists, QLatin1String("1061")},
    {refusal_cause::index_missing, QLatin1String("1091")},
    {refusal_cause::index_needed, QLatin1String("1553")},
    {refusal_cause::index_needed_copied, QLatin1String("1025")},
    {refusal_cause::table_referred_to, QLatin1String("1451")},
    {refusal_cause::values_repeat, QLatin1String("1062")},
    {refusal_cause::key_exists, QLatin1String("1068")},
    {refusal_cause::renamed_index_missing, QLatin1String("1176")},
    {refusal_cause::last_column, QLatin1String("1090")},
    {refusal_cause::column_of_key, QLatin1String("1072")},
    {refusal_cause::column_of_foreign_key, QLatin1String("1553")},
    {refusal_cause::column_of_foreign_key_copied, QLatin1String("1828")},
    {refusal_cause::column_referred_to, QLatin1String("1829")},
    {refusal_cause::copy_needed, QLatin1String("1846")},
    {refusal_cause::type_change_forbidden, QLatin1String("1846")},
    {refusal_cause::own_key_needs_type, QLatin1String("1832")},
    {refusal_cause::other_key_needs_type, QLatin1String("1833")},
    {refusal_cause::table_without_columns, QLatin1String("1113")},
    {refusal_cause::values_cut, QLatin1String("1265")},
    {refusal_cause::values_cut_converted, QLatin1String("1406")},
    {refusal_cause::values_lost, QLatin1String("1264")},
    {refusal_cause::values_converted, QLatin1String("1292")},
    {refusal_cause::nulls_lost, QLatin1String("1265")},
    {refusal_cause::foreign_key_exists, QLatin1String("1005")},
    {refusal_cause::foreign_key_missing, QLatin1String("1091")},
    {refusal_cause::target_missing, QLatin1String("1005")},
    {refusal_cause::target_column_missing, QLatin1String("1005")},
    {refusal_cause::target_not_key, QLatin1String("1005")},
    {refusal_cause::target_type_differs, QLatin1String("1005")},
    {refusal_cause::column_too_long, QLatin1String("1005")},
    {refusal_cause::rows_without_target, QLatin1String("1452")},
};
// clang-format on

// clang-format off
inline constexpr statement_words MariadbWords = {
    .counted = " AUTO_INCREMENT",
    .nullable = "",
    .renameTable = "RENAME TABLE {table} TO {new};",
    .renameColumn = "ALTER TABLE {table} CHANGE {column} {new} {definition};",
    .addColumn = "ALTER TABLE {table} ADD COLUMN {column} {definition};",
    .dropColumn = "ALTER TABLE {table} DROP COLUMN {column};",
    .changeType = "ALTER TABLE {table} MODIFY {column} {definition};",
    .setNotNull = "ALTER TABLE {table} MODIFY {column} {definition};",
    .dropNotNull = "ALTER TABLE {table} MODIFY {column} {definition};",
    .count = "ALTER TABLE {table} MODIFY {column} {definition};",
    .countNoMore = "ALTER TABLE {table} MODIFY {column} {definition};",
    .addKey = "ALTER TABLE {table} ADD PRIMARY KEY ({columns});",
    .dropKey = "ALTER TABLE {table} DROP PRIMARY KEY;",
    .addUnique = "ALTER TABLE {table} ADD UNIQUE {name} ({columns});",
    .dropUnique = "DROP INDEX {name} ON {table};",
    .dropNumberedUnique = nullptr,
    .dropIndex = "DROP INDEX {name} ON {table};",
    .renameIndex = "ALTER TABLE {table} RENAME INDEX {name} TO {new};",
    .renameConstraint = nullptr,
    .renameSequence = nullptr,
    .addForeignKey = "ALTER TABLE {table} ADD CONSTRAINT {name} FOREIGN KEY ({columns}) REFERENCES {target} ({target_columns});",
    .dropForeignKey = "ALTER TABLE {table} DROP FOREIGN KEY {name};",
    .createSchema = nullptr,
    .beforeRebuild = nullptr,
    .copyRows = "CREATE TABLE {new} AS SELECT {columns} FROM {table};",
};
// clang-format on

/// What MariaDB does, and MySQL as far as nothing else is known of it.
/// @param source where that is known from
// NOLINTNEXTLINE(readability-function-size): nothing but a table
constexpr facts mariadbFamily(QLatin1String key, QLatin1String label, bool isTried, const char * source)
{
    return {
        .key = key,
        .scripts = QLatin1String("mysql"),
        .isDatabase = true,
        .label = label,
        .isTried = isTried,
        .names =
            {
                .quotes = {QLatin1String("`"), source},
                .tables = {name_equality::exact, source},
                .others = {name_equality::case_ignored, source},
                .longest = {64, source},
                .unit = {name_unit::characters, source},
                .over = {name_over_length::refused, source},
                .lengthReadFirst = {false, source},
                .digitMayLead = {true, source},
                .lowLineMayLead = {true, source},
                .mayEndInBlank = {false, source},
                .basicPlaneOnly = {true, source},
                .databasesNamed = {false, source},
                .columnsNameTable = {true, source},
                .indexedNameSchema = {true, source},
                .keptBeginning = {QLatin1String(""), source},
                .missingSchemaIsMissingTable = {true, source},
                .droppedIndexNamesTable = {false, source},
                .likeCopiesTable = {false, source},
                .functions = {{}, source},
                .literalsIndexed = {false, source},
                .hashIsComment = {true, source},
                .bareConstraintIsNoColumn = {false, source},
                .system = {{}, source},
                .knownSchemas = {{}, source},
            },
        .scopes =
            {
                .indexes = {name_scope::table, source},
                .foreignKeys = {name_scope::database, source},
                .tablesShareWithIndexes = {false, source},
                .namesKeysAndSequences = {false, source},
                .uniqueNamedLikeColumn = {true, source},
                .uniqueNumbered = {false, source},
            },
        .types =
            {
                .words = {MariadbTypes, source},
                .syntaxErrors = {MariadbSyntaxErrors, source},
                .unknown = {unknown_type::refused, source},
                .readFirst = {MariadbReadFirst, source},
                .mayBeMissing = {false, source},
                .countableType = {QLatin1String(""), source},
                .countedNeedsKey = {true, source},
                .onlyOneCounted = {true, source},
                .countedByTrigger = {false, source},
                .numbersOnlyInBrackets = {false, source},
                .quotedWords = {false, source},
                .withoutOrder = {{}, source},
                .references = {{}, source},
                .numberWords = {{}, source},
                .lengthUnits = {{}, source},
                .arrays = {false, source},
            },
        .keys =
            {
                .longest = {3072, source},
                .prefixes = {true, source},
                .bytesOfHash = {8, source},
                .hashesLong = {true, source},
                .nullable = {false, source},
                .oneNull = {false, source},
                .keepsNames = {false, source},
                .indexedOnce = {false, source},
            },
        .limits =
            {
                .columns = {1017, source},
                .columnsCountedFirst = {false, source},
                .columnsRead = {4096, source},
                .keyColumns = {32, source},
                .indexes = {64, source},
                .row = {65535, source},
                .page = {8126, source},
            },
        .foreignKeys =
            {
                .alterable = {true, source},
                .targetMustExist = {true, source},
                .targetMustBeWholeKey = {false, source},
                .lengthsCompared = {false, source},
                .targetLookedForFirst = {false, source},
                .makesIndex = {true, source},
                .keepsTarget = {true, source},
                .hashMakesDropIdle = {true, source},
            },
        .changes =
            {
                .emptyTables = {false, source},
                .lastColumnStays = {true, source},
                .uniqueColumnAdded = {true, source},
                .kindsNamed = {true, source},
                .uniqueDroppedByColumns = {false, source},
                .columnsAltered = {false, source},
                .columnsRestated = {false, source},
                .indexesAltered = {false, source},
                .addedNameFirst = {false, source},
                .notNullFilled = {true, source},
                .columnTakesItsObjects = {false, source},
                .keptBySharedConstraint = {false, source},
                .alteredOnlyIfFree = {false, source},
                .columnBoundToObjects = {false, source},
                .columnRenamedToItself = {true, source},
                .renamesAnyRelation = {false, source},
                .sequencesNamedFirst = {false, source},
                .longValuesInIndex = {true, source},
            },
        .locks =
            {
                .costs = {MariadbLockCosts, source},
            },
        .words = {MariadbWords, source},
        .errors = {MariadbErrors, source},
    };
}

} // namespace database
