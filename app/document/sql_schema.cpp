#include "app/document/sql_schema.h"

#include "app/export_options.h"
#include "app/script_guard.h"

#include "check/view/model_names.h"
#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "database/facts/facts.h"
#include "database/statement/reader.h"
#include "model/project.h"
#include "plugin/statement_source.h"

#include <algorithm>

namespace app {

namespace {

using plugin::statement_action;
using plugin::statement_record;
using zk::ZkBool;

/// The databases of `all` that scripts are made for when the databases of `keys` are meant.
QList<plugin::statement_database> chosenOf(const QList<plugin::statement_database> & all,
                                           const QStringList & keys)
{
    QStringList scripts;
    for (const QString & key : keys) {
        const database::facts * const known = database::factsOf(key);
        scripts << (known ? QString(known->scripts) : key);
    }
    QList<plugin::statement_database> chosen;
    std::copy_if(all.begin(), all.end(), std::back_inserter(chosen),
                 [&](const plugin::statement_database & each) { return scripts.contains(each.key); });
    return chosen;
}

/// Adds the columns `made` to `table`, with their types in the database of that index.
void addColumns(const std::vector<database::column_definition> & made, qsizetype index, sql_table & table)
{
    for (const database::column_definition & column : made) {
        const auto same =
            std::find_if(table.columns.begin(), table.columns.end(), [&](const sql_column & each) {
                return each.name == column.name.text && each.types.size() <= index;
            });
        const bool isNew = same == table.columns.end();
        if (isNew) {
            table.columns.append({column.name.text, {}});
        }
        sql_column & told = isNew ? table.columns.last() : *same;
        told.types.resize(index);
        told.types << column.type;
    }
}

bool makesTable(const statement_record & record)
{
    return record.action == statement_action::create_table ||
           record.action == statement_action::create_extra_table;
}

/// The columns of the table that `record` makes; none when its names make the statement one that nobody can
/// read.
std::vector<database::column_definition> columnsOf(const statement_record & record)
{
    for (const database::statement & each :
         database::readStatements(record.text, database::writer::exporter)) {
        if (const auto * const made = std::get_if<database::create_table>(&each.asked)) {
            return made->columns;
        }
    }
    return {};
}

/// The link tables of a model by the ids of their relationships.
using link_names = QHash<long, QString>;

link_names linkNamesOf(const model::project & project)
{
    link_names names;
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        for (const auto & relationship : entity->getListOfRelation()->values()) {
            names.insert(relationship->getId(), relationship->getExtraTable());
        }
    }
    return names;
}

sql_table & tableFor(const statement_record & record, const link_names & names, sql_schema & schema)
{
    if (record.action == statement_action::create_table) {
        return schema.tables[record.entity];
    }
    for (auto & [relationship, table] : schema.linkTables) {
        if (relationship == record.relationship) {
            return table;
        }
    }
    schema.linkTables.append({record.relationship, {names.value(record.relationship), {}}});
    return schema.linkTables.last().second;
}

/// Gives each column a type for each of `count` databases.
void evenOut(sql_table & table, qsizetype count)
{
    for (sql_column & column : table.columns) {
        column.types.resize(count);
    }
}

} // namespace

bool sql_table::hasColumn(const QString & column) const
{
    return std::any_of(columns.begin(), columns.end(),
                       [&](const sql_column & each) { return each.name == column; });
}

ZkBool readSqlSchema(plugin::statement_source & statements, const std::shared_ptr<model::project> & project,
                     const QStringList & keys, sql_schema & schema)
{
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    context::ctx_project::getSingleton().setProject(project);
    const tools::script_guard_scope guard(commandScriptGuard(true));
    QList<plugin::statement_database> all;
    if (const ZkBool listed = statements.listDatabases(all); !listed) {
        return listed;
    }
    const link_names links = linkNamesOf(*project);
    for (const plugin::statement_database & each : chosenOf(all, keys)) {
        const plugin::statement_list list = statements.fullStatements(
            *project, {{DatabaseOption, each.key}, {RelationshipsOption, QStringLiteral("yes")}});
        if (!list.outcome) {
            return list.outcome;
        }
        for (const statement_record & record : list.records) {
            if (makesTable(record)) {
                addColumns(columnsOf(record), schema.databases.size(), tableFor(record, links, schema));
            }
        }
        schema.databases << each.label;
    }
    for (auto table = schema.tables.begin(); table != schema.tables.end(); ++table) {
        const auto entity = project->getEntityById(table.key());
        table->name = entity ? check::tableNameOf(*entity) : QString();
        evenOut(*table, schema.databases.size());
    }
    for (auto & [relationship, table] : schema.linkTables) {
        evenOut(table, schema.databases.size());
    }
    return ZkBool::success();
}

} // namespace app
