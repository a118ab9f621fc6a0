#include "app/import/scripted_schema.h"

#include "app/export_options.h"
#include "app/script_guard.h"

#include "check/import/table_draft.h"
#include "check/view/schema_difference.h"
#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "database/facts/facts.h"
#include "database/facts/normal_form.h"
#include "database/simulation/simulation.h"
#include "database/statement/reader.h"
#include "model/project.h"
#include "plugin/statement_source.h"

#include <algorithm>

namespace app {

namespace {

using check::difference_kind;
using check::schema_difference;
using zk::ZkBool;

/// What differs in words, for the list of a table.
QString wordsOf(const schema_difference & of)
{
    if (of.kind == difference_kind::table_missing) {
        return QStringLiteral("scripts cannot make the table (korvane check tells why)");
    }
    if (of.kind == difference_kind::table_left) {
        return QStringLiteral("scripts make this table, which the database has not");
    }
    const QString subject = check::subjectOf(of);
    if (of.found.isEmpty()) {
        return subject + QStringLiteral(", which scripts do not make");
    }
    return of.expected.isEmpty()
               ? QStringLiteral("%1, which scripts make").arg(subject)
               : QStringLiteral("%1: %2, which scripts make %3").arg(subject, of.expected, of.found);
}

/// A key of one INTEGER column is the number of the row, which is always there, whether or not it is said.
bool isOfRowNumber(const schema_difference & of, const held_schema & held)
{
    if (of.kind != difference_kind::null || !held.known->keys.nullable.value) {
        return false;
    }
    const auto table = std::find_if(held.found.tables.begin(), held.found.tables.end(),
                                    [&](const auto & each) { return each.second.name == of.table; });
    if (table == held.found.tables.end() || check::keyColumnsOf(table->second) != of.columns) {
        return false;
    }
    const auto & columns = table->second.columns;
    return std::any_of(columns.begin(), columns.end(), [&](const database::column & each) {
        return each.name == of.columns.constFirst() &&
               each.type.compare(QLatin1String("INTEGER"), Qt::CaseInsensitive) == 0;
    });
}

/// Gives the columns of `made` the letters, capital or small, that they have in `found`, where these do not
/// tell names apart.
void spellAsIn(const database::table & found, const database::facts & known, database::table & made)
{
    const auto spell = [&](QString & name) {
        const database::column * const same = check::columnOf(known, found, name);
        name = same ? same->name : name;
    };
    for (database::column & each : made.columns) {
        spell(each.name);
    }
    if (made.key) {
        for (database::key_part & each : made.key->parts) {
            spell(each.column);
        }
    }
    for (database::index & each : made.indexes) {
        for (database::key_part & part : each.parts) {
            spell(part.column);
        }
    }
    for (database::foreign_key & each : made.foreignKeys) {
        std::for_each(each.columns.begin(), each.columns.end(), spell);
    }
}

void spellAsIn(const database::catalogue & found, const database::facts & known, database::catalogue & made)
{
    for (auto & [key, table] : made.tables) {
        const auto same = found.tables.find(key);
        if (same != found.tables.end()) {
            spellAsIn(same->second, known, table);
        }
    }
}

} // namespace

ZkBool mappingOf(plugin::statement_source & statements, const std::shared_ptr<model::project> & project,
                 const QString & scripts, QList<std::pair<QString, QString>> & mapping)
{
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    context::ctx_project::getSingleton().setProject(project);
    QList<plugin::statement_database> databases;
    const ZkBool listed = statements.listDatabases(databases);
    for (const plugin::statement_database & each : databases) {
        if (each.key == scripts) {
            mapping = each.types;
        }
    }
    return listed;
}

ZkBool scriptedSchema(plugin::statement_source & statements, const std::shared_ptr<model::project> & project,
                      const database::facts & known, database::catalogue & made)
{
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    context::ctx_project::getSingleton().setProject(project);
    const tools::script_guard_scope guard(commandScriptGuard(true));
    const plugin::statement_list list = statements.fullStatements(
        *project, {{DatabaseOption, known.scripts}, {RelationshipsOption, QStringLiteral("yes")}});
    database::simulation simulated(known);
    for (const plugin::statement_record & record : list.records) {
        for (const database::statement & each :
             database::readStatements(record.text, database::writer::exporter)) {
            simulated.run(each);
        }
    }
    made = simulated.held();
    return list.outcome;
}

QList<database::left_out> madeOtherwise(const held_schema & held, const database::catalogue & made,
                                        const std::function<bool(const QString & table)> & isSelected)
{
    // Sequences of their own are told as such already; where columns stand is no matter of a model.
    database::catalogue found = held.found;
    found.sequences.clear();
    database::catalogue other = made;
    other.sequences.clear();
    spellAsIn(found, *held.known, other);
    other = database::normalForm(std::move(other), *held.known); // foreign keys lead to what is called so
    QList<database::left_out> list;
    for (const schema_difference & each : check::compareSchemas(found, other)) {
        if (each.kind != difference_kind::order && isSelected(each.table) && !isOfRowNumber(each, held)) {
            list.append({each.table, wordsOf(each), database::catalogue_part::none, QString()});
        }
    }
    return list;
}

} // namespace app
