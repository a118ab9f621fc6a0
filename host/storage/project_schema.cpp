#include "storage/project_schema.h"

#include "storage/model_check.h"
#include "storage/texts.h"
#include "zk/sqlite_connection.h"
#include "zk/sqlite_statement.h"

#include <QHash>

namespace storage::project_schema {

namespace {

constexpr int ApplicationId = 0x4B6F7276; // "Korv"
constexpr int FormatVersion = 1;
const QString HistoryTable = QStringLiteral("t_project_historic");

QString createStatement(const table & t)
{
    return QStringLiteral("CREATE TABLE %1 (%2)").arg(t.name, t.columns);
}

/// The number that the pragma `name` answers.
QSqlError readPragma(const zk::sqlite::connection & file, const QString & name, qint64 & value)
{
    zk::sqlite::statement query(file, QStringLiteral("PRAGMA ") + name);
    if (query.next()) {
        value = query.at(0).number();
    }
    return query.error();
}

QSqlError checkMarks(const zk::sqlite::connection & file)
{
    qint64 id = 0;
    qint64 version = 0;
    if (const QSqlError e = readPragma(file, QStringLiteral("application_id"), id); e.isValid()) {
        return e;
    }
    if (const QSqlError e = readPragma(file, QStringLiteral("user_version"), version); e.isValid()) {
        return e;
    }
    if (id != ApplicationId) {
        return file.failure(texts::tr("is a SQLite database, but not a Korvane project"));
    }
    if (version > FormatVersion) {
        return file.failure(texts::tr("was written by a newer korvane (format %1; this one reads up to %2); "
                                      "update korvane")
                                .arg(QString::number(version), QString::number(FormatVersion)));
    }
    if (version != FormatVersion) {
        return file.failure(
            texts::tr("is damaged (format %1); restore it from a copy").arg(QString::number(version)));
    }
    return {};
}

/// Our tables must be the very ones that we create: no column that computes, no check that runs code, no
/// index that could disagree with its table.
QSqlError checkTables(const zk::sqlite::connection & file)
{
    QHash<QString, QString> missing;
    for (const table & t : tables()) {
        missing.insert(t.name, createStatement(t));
    }
    zk::sqlite::statement query(file, QStringLiteral("SELECT type, tbl_name, sql FROM sqlite_master"));
    while (query.next()) {
        const QString name = query.at(1).text();
        const bool isOurs = missing.contains(name);
        if (isOurs && query.at(0).text() == QStringLiteral("table") &&
            query.at(2).text() == missing.value(name)) {
            missing.remove(name);
            continue;
        }
        for (const table & t : tables()) {
            if (t.name.compare(name, Qt::CaseInsensitive) == 0) {
                return file.failure(texts::tr("is damaged (table %1 is not as it was created); "
                                              "restore it from a copy")
                                        .arg(t.name));
            }
        }
    }
    if (query.error().isValid()) {
        return query.error();
    }
    for (const table & t : tables()) {
        if (missing.contains(t.name)) {
            return file.failure(
                texts::tr("is damaged (table %1 is missing); restore it from a copy").arg(t.name));
        }
    }
    return {};
}

QSqlError quickCheck(const zk::sqlite::connection & file, const QString & tableName)
{
    zk::sqlite::statement query(file, QStringLiteral("PRAGMA quick_check(%1)").arg(tableName));
    const QString answer = query.next() ? query.at(0).text() : QString();
    if (!query.error().isValid() && answer != QStringLiteral("ok")) {
        return file.failure(texts::tr("is damaged (table %1: %2); restore it from a copy")
                                .arg(tableName, model_check::printable(answer)));
    }
    return query.error();
}

} // namespace

const QList<table> & tables()
{
    static const QList<table> all = {
        {QStringLiteral("t_project"),
         QStringLiteral(
             "name TEXT NOT NULL, last_enumeration_id INTEGER NOT NULL, last_entity_id INTEGER NOT NULL, "
             "last_property_id INTEGER NOT NULL, last_relationship_id INTEGER NOT NULL"),
         of_model},
        {QStringLiteral("t_enumeration"), QStringLiteral("id INTEGER NOT NULL, name TEXT NOT NULL"),
         of_model},
        {QStringLiteral("t_enumeration_value"),
         QStringLiteral("enumeration_id INTEGER NOT NULL, name TEXT NOT NULL, value INTEGER NOT NULL"),
         of_model},
        {QStringLiteral("t_entity"),
         QStringLiteral("id INTEGER NOT NULL, name TEXT NOT NULL, entity_key TEXT, table_name TEXT, "
                        "soft_delete_column TEXT, version INTEGER NOT NULL"),
         of_model},
        {QStringLiteral("t_meta_data"),
         QStringLiteral("entity_id INTEGER NOT NULL, meta_key TEXT NOT NULL, value_type TEXT NOT NULL, "
                        "meta_value TEXT NOT NULL"),
         of_model},
        {QStringLiteral("t_property_type"),
         QStringLiteral("type_id INTEGER NOT NULL, cpp_type TEXT, enumeration_id INTEGER"), of_model},
        {QStringLiteral("t_property"),
         QStringLiteral("entity_id INTEGER NOT NULL, id INTEGER NOT NULL, name TEXT NOT NULL, "
                        "column_name TEXT, type_id INTEGER, flags INTEGER NOT NULL"),
         of_model},
        {QStringLiteral("t_property_detail"),
         QStringLiteral("property_id INTEGER NOT NULL, property_key TEXT, force_sql_type TEXT"), of_model},
        {QStringLiteral("t_relationship"),
         QStringLiteral("property_id INTEGER NOT NULL, id INTEGER NOT NULL, type INTEGER NOT NULL, "
                        "target_id INTEGER NOT NULL, inverse_id INTEGER, extra_table TEXT, "
                        "foreign_key TEXT, foreign_key_owner TEXT"),
         of_model},
        {QStringLiteral("t_plugin_params"), QStringLiteral("plugin_guid, param_key, param_value"),
         of_settings},
        {HistoryTable, QStringLiteral("dt_creation, project_file"), of_history},
        {QStringLiteral("t_project_tag"),
         QStringLiteral("version INTEGER PRIMARY KEY, message TEXT NOT NULL"), of_history}};
    return all;
}

QSqlError create(const zk::sqlite::connection & file)
{
    QStringList statements;
    for (const table & t : tables()) {
        statements.append(createStatement(t));
    }
    statements.append(QStringLiteral("PRAGMA application_id = %1").arg(ApplicationId));
    statements.append(QStringLiteral("PRAGMA user_version = %1").arg(FormatVersion));
    for (const QString & statement : statements) {
        if (const QSqlError error = file.execute(statement); error.isValid()) {
            return error;
        }
    }
    return {};
}

QSqlError check(const zk::sqlite::connection & file, examined extent)
{
    if (const QSqlError error = checkMarks(file); error.isValid()) {
        return error;
    }
    if (const QSqlError error = file.refuseCode(); error.isValid()) {
        return error;
    }
    if (const QSqlError error = checkTables(file); error.isValid()) {
        return error;
    }
    for (const table & t : tables()) {
        const bool isRead = extent == examined::state || t.holds == of_history;
        const bool isExamined = extent == examined::everything || (isRead && t.name != HistoryTable);
        if (const QSqlError error = isExamined ? quickCheck(file, t.name) : QSqlError(); error.isValid()) {
            return error;
        }
    }
    return {};
}

} // namespace storage::project_schema
