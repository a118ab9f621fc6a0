#include "check/remedy/repair.h"

#include "check/remedy/mending.h"

#include "database/facts/names.h"
#include "database/facts/normal_form.h"
#include "database/simulation/simulation.h"
#include "database/statement/reader.h"

#include <algorithm>

namespace check {

namespace {

/// Whether what the finding is about can have kept its name because of it.
bool isOfKeptName(const finding & of, const QString & script)
{
    const bool isRename = of.statement && (of.statement->action == plugin::statement_action::rename_table ||
                                           of.statement->action == plugin::statement_action::rename_column);
    return of.script == script && (isRename || of.what == effect::silent);
}

/// The finding that another one follows from in the end, or the one itself.
std::size_t rootOf(const std::vector<finding> & findings, std::size_t at)
{
    while (findings[at].consequenceOf >= 0) {
        at = static_cast<std::size_t>(findings[at].consequenceOf);
    }
    return at;
}

/// Whether `one`, which is different now, belongs to what was found `before`.
bool isPartOf(const schema_difference & one, const schema_difference & before)
{
    const bool isWhole = before.kind == difference_kind::table_missing;
    const bool isColumn = before.kind == difference_kind::column_missing;
    const bool isSame =
        one.kind == before.kind && one.expected == before.expected && one.found == before.found;
    return one.kind != difference_kind::order &&
           (isWhole || ((isColumn || isSame) && one.columns == before.columns));
}

bool hasSequence(const database::catalogue & in, const QString & name)
{
    return std::any_of(in.sequences.begin(), in.sequences.end(),
                       [&](const database::sequence & one) { return one.name == name; });
}

} // namespace

repair::repair(const repair_ground & from, database::catalogue left)
    : m_from(from), m_known(from.step.known()), m_types(m_known), m_sql(m_known), m_state(std::move(left))
{
}

void repair::fillIn(std::vector<finding> & findings, const std::vector<told_difference> & differences)
{
    const bool hasKept =
        !m_from.step.made().keptTables().empty() || !m_from.step.made().keptColumns().empty();
    for (std::size_t i = 0; i < findings.size() && hasKept; ++i) {
        if (isOfKeptName(findings[i], m_from.step.of().name)) {
            for (const object & each : findings[i].objects) {
                const std::pair key(static_cast<int>(each.kind), each.id);
                m_about.insert(key, m_about.value(key, rootOf(findings, i)));
            }
        }
    }
    renameTables(findings);
    renameColumns(findings);
    std::map<std::size_t, std::vector<const difference_view *>> byFinding;
    for (const told_difference & each : differences) {
        byFinding[each.finding].push_back(&each.what);
    }
    for (const auto & [index, own] : byFinding) {
        findings[index].way.sql += mend(own);
    }
}

QString repair::storedTable(const QString & name) const
{
    return database::storedName(m_known, name, database::name_place::table);
}

QStringList repair::mend(const std::vector<const difference_view *> & asked)
{
    std::vector<const difference_view *> differences;
    // What one round makes can show what is still to be done.
    constexpr int Rounds = 4;
    QStringList tables;
    for (const difference_view * const each : asked) {
        // What the model has still is not to go because a new database cannot make it.
        const QString table = each->what().kind == difference_kind::table_left ? each->tableNow() : QString();
        if (table.isEmpty() || m_from.expected.tables.contains(table)) {
            differences.push_back(each);
            tables += each->what().table;
        }
    }
    if (differences.empty()) {
        return {};
    }
    const QSet<QString> keys = keysOf(tables);
    database::catalogue part = partOf(keys, m_state);
    const database::catalogue wanted = partOf(keys, m_from.expected);
    QStringList sql = movedAside(differences, part);
    std::vector<schema_difference> open = differencesOf(differences, wanted, part);
    for (int round = 0; round < Rounds && !open.empty(); ++round) {
        const QStringList next = mendingStatements({m_from, m_sql, part, wanted}, open);
        // A statement that the simulation does not know changes nothing in it.
        const bool isKnown =
            std::any_of(next.begin(), next.end(), [&](const QString & each) { return !sql.contains(each); });
        if (!isKnown) {
            break;
        }
        if (!run(next, part)) {
            return {};
        }
        sql += next;
        open = differencesOf(differences, wanted, part);
    }
    putBack(keys, part);
    return sql;
}

/// A link table whose name a new table is to have makes room for it, with its rows.
QStringList repair::movedAside(const std::vector<const difference_view *> & differences,
                               database::catalogue & part) const
{
    QStringList sql;
    QSet<QString> moved;
    for (const difference_view * const each : differences) {
        const QString name = each->what().table;
        const QString between = name + QStringLiteral("_before");
        const bool isLink =
            !m_state.tables.contains(database::nameKey(m_known, between, database::name_place::table)) &&
            each->entity(moment::now) && !each->entity(moment::before) &&
            m_from.step.made().isLinkTable(name) && !moved.contains(name);
        const QStringList next = isLink
                                     ? sql_writer::statements(m_sql.words().renameTable,
                                                              {{QStringLiteral("table"), m_sql.table(name)},
                                                               {QStringLiteral("new"), m_sql.table(between)}})
                                     : QStringList();
        if (!next.isEmpty() && run(next, part)) {
            moved.insert(name);
            sql += next;
        }
    }
    return sql;
}

std::vector<schema_difference> repair::differencesOf(const std::vector<const difference_view *> & like,
                                                     const database::catalogue & wanted,
                                                     const database::catalogue & in) const
{
    std::vector<schema_difference> open;
    QSet<QString> seen;
    for (const difference_view * const each : like) {
        const QString key = database::nameKey(m_known, each->what().table, database::name_place::table);
        const auto expected = wanted.tables.find(key);
        const auto found = in.tables.find(key);
        if (each->what().kind == difference_kind::sequence_left) {
            if (hasSequence(in, each->what().found)) {
                open.push_back(each->what());
            }
            continue;
        }
        if (expected == wanted.tables.end() || found == in.tables.end()) {
            if (!seen.contains(key) && (expected == wanted.tables.end()) != (found == in.tables.end())) {
                seen.insert(key);
                open.push_back(each->what());
                open.back().kind =
                    found == in.tables.end() ? difference_kind::table_missing : difference_kind::table_left;
            }
            continue;
        }
        std::vector<schema_difference> all;
        compareTables(expected->second, found->second, all);
        for (const schema_difference & one : all) {
            const QString print = key + QString::number(static_cast<int>(one.kind)) + one.expected +
                                  one.found + one.columns.join(u',');
            if (isPartOf(one, each->what()) && !seen.contains(print)) {
                seen.insert(print);
                open.push_back(one);
            }
        }
    }
    return open;
}

bool repair::run(const QStringList & statements, database::catalogue & on) const
{
    // A catalogue in normal form does not tell which index came with a constraint; all unique ones of scripts
    // do.
    for (auto & [key, table] : on.tables) {
        for (database::index & each : table.indexes) {
            each.isConstraint = each.unique && m_known.scopes.namesKeysAndSequences.value;
        }
    }
    database::simulation simulated(m_known, on);
    for (const QString & each : statements) {
        for (const database::statement & read : database::readStatements(each)) {
            if (simulated.run(read).what == database::outcome::refused) {
                return false;
            }
        }
    }
    on = simulated.held();
    return true;
}

QSet<QString> repair::keysOf(const QStringList & tables)
{
    if (!m_hasNeighbours) {
        findNeighbours();
    }
    QSet<QString> keys;
    for (const QString & each : tables) {
        const QString key = database::nameKey(m_known, each, database::name_place::table);
        keys.insert(key);
        for (const QString & other : m_neighbours.values(key)) {
            keys.insert(other);
        }
        addHolders(key, keys);
    }
    return keys;
}

/// Looks once which tables foreign keys connect, and which hold a name that others could want.
void repair::findNeighbours()
{
    m_hasNeighbours = true;
    for (const database::catalogue * const in : {&std::as_const(m_state), &m_from.expected}) {
        for (const auto & [key, table] : in->tables) {
            for (const database::foreign_key & each : table.foreignKeys) {
                const QString target = database::nameKey(m_known, each.target, database::name_place::table);
                m_neighbours.insert(target, key);
                m_neighbours.insert(key, target);
            }
        }
    }
    for (const auto & [key, table] : std::as_const(m_state).tables) {
        for (const database::index & each : table.indexes) {
            m_holders.insert(each.name, key);
        }
        for (const database::foreign_key & each : table.foreignKeys) {
            m_holders.insert(each.name, key);
        }
    }
    m_holders.remove(QString());
}

/// Adds the tables that hold names which the table is to get.
void repair::addHolders(const QString & of, QSet<QString> & keys) const
{
    const auto found = m_from.expected.tables.find(of);
    if (found == m_from.expected.tables.end()) {
        return;
    }
    const auto add = [&](const QString & name) {
        for (const QString & each : m_holders.values(name)) {
            keys.insert(each);
        }
    };
    for (const database::index & each : found->second.indexes) {
        add(each.name);
    }
    for (const database::foreign_key & each : found->second.foreignKeys) {
        add(each.name);
    }
}

database::catalogue repair::partOf(const QSet<QString> & keys, const database::catalogue & of) const
{
    database::catalogue part;
    part.sequences = of.sequences;
    for (const QString & key : keys) {
        if (const auto found = of.tables.find(key); found != of.tables.end()) {
            part.tables.insert(*found);
        }
    }
    return database::normalForm(std::move(part), m_types);
}

void repair::putBack(const QSet<QString> & keys, database::catalogue & part)
{
    for (const QString & key : keys) {
        m_state.tables.erase(key);
    }
    m_state.tables.merge(part.tables);
    m_state.sequences = part.sequences;
}

bool repair::runOnState(const QStringList & statements, const QStringList & tables)
{
    const QSet<QString> keys = keysOf(tables);
    database::catalogue part = partOf(keys, m_state);
    const bool isDone = run(statements, part);
    if (isDone) {
        putBack(keys, part);
    }
    return isDone;
}

} // namespace check
