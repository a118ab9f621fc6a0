// Renames that take place after the script, of what kept its former name.

#include "check/remedy/repair.h"

#include "database/facts/names.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <algorithm>

namespace check {

void repair::renameTables(std::vector<finding> & findings)
{
    std::vector<pending_rename> pending;
    const model::project * const now = m_from.step.project(moment::now);
    for (const auto & [entity, kept] : m_from.step.made().keptTables()) {
        const auto is = now->getEntityById(entity);
        const auto about = m_about.constFind({static_cast<int>(model::object_kind::entity), entity});
        if (is && about != m_about.constEnd()) {
            pending.push_back({*about, {}, storedTable(kept), storedTable(tableNameOf(*is))});
        }
    }
    rename(findings, std::move(pending));
}

void repair::renameColumns(std::vector<finding> & findings)
{
    std::vector<pending_rename> pending;
    const model::project * const now = m_from.step.project(moment::now);
    for (const auto & [id, kept] : m_from.step.made().keptColumns()) {
        const auto about = m_about.constFind({static_cast<int>(model::object_kind::property), id});
        const auto is = about != m_about.constEnd() ? findProperty(*now, 0, id) : nullptr;
        const auto owner = is ? is->getEntity() : nullptr;
        const QStringList columns = owner ? columnNamesOf(*is) : QStringList();
        if (columns.size() == 1) {
            const auto stored = [&](const QString & name) {
                return database::storedName(m_known, name, database::name_place::other);
            };
            pending.push_back(
                {*about, storedTable(tableNameOf(*owner)), stored(kept), stored(columns.front())});
        }
    }
    rename(findings, std::move(pending));
}

bool repair::isTaken(const pending_rename & of, const QString & name) const
{
    const auto key = [&](const QString & each, database::name_place place) {
        return database::nameKey(m_known, each, place);
    };
    if (of.table.isEmpty()) {
        return m_state.tables.contains(key(name, database::name_place::table));
    }
    const auto owner = m_state.tables.find(key(of.table, database::name_place::table));
    return owner != m_state.tables.end() &&
           std::any_of(owner->second.columns.begin(), owner->second.columns.end(),
                       [&](const database::column & each) {
                           return key(each.name, database::name_place::other) ==
                                  key(name, database::name_place::other);
                       });
}

QStringList repair::tablesOf(const pending_rename & of, const QString & to)
{
    return of.table.isEmpty() ? QStringList{of.from, to} : QStringList(of.table);
}

/// Takes renames one after another whose new name is free; where they wait for each other one gets a name
/// for the time between.
void repair::rename(std::vector<finding> & findings, std::vector<pending_rename> pending)
{
    std::erase_if(pending, [&](const pending_rename & each) { return !isTaken(each, each.from); });
    while (!pending.empty()) {
        auto next = std::find_if(pending.begin(), pending.end(),
                                 [&](const pending_rename & each) { return !isTaken(each, each.to); });
        if (next == pending.end()) {
            next = pending.begin();
            const auto holder =
                std::find_if(pending.begin(), pending.end(), [&](const pending_rename & each) {
                    return each.from == next->to && each.table == next->table;
                });
            if (holder == pending.end() || holder == next) {
                pending.erase(next);
                continue;
            }
            const QString between = holder->from + QStringLiteral("_before");
            const QStringList sql = renaming(*holder, between);
            if (isTaken(*holder, between) || !runOnState(sql, tablesOf(*holder, between))) {
                return;
            }
            findings[next->finding].way.sql += sql;
            holder->from = between;
        }
        const QStringList sql = renaming(*next, next->to);
        if (runOnState(sql, tablesOf(*next, next->to))) {
            findings[next->finding].way.sql += sql;
        }
        pending.erase(next);
    }
}

QStringList repair::renaming(const pending_rename & of, const QString & to) const
{
    values words{{QStringLiteral("new"), of.table.isEmpty() ? m_sql.table(to) : m_sql.name(to)}};
    if (of.table.isEmpty()) {
        words.insert(QStringLiteral("table"), m_sql.table(of.from));
        return sql_writer::statements(m_sql.words().renameTable, words);
    }
    const auto owner = m_state.tables.find(database::nameKey(m_known, of.table, database::name_place::table));
    const auto & columns = owner->second.columns;
    const QString wanted = database::nameKey(m_known, of.from, database::name_place::other);
    const auto column = std::find_if(columns.begin(), columns.end(), [&](const database::column & each) {
        return database::nameKey(m_known, each.name, database::name_place::other) == wanted;
    });
    words.insert(QStringLiteral("table"), m_sql.table(of.table));
    words.insert(QStringLiteral("column"), m_sql.name(column->name));
    words.insert(QStringLiteral("definition"), m_sql.definition(*column));
    return sql_writer::statements(m_sql.words().renameColumn, words);
}

} // namespace check
