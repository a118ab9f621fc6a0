#include "database/simulation/state.h"

#include "database/facts/known_types.h"

#include <QStringBuilder>

#include <algorithm>

namespace database {

QString tableObject(const QString & table)
{
    return u"table " % table;
}

QString columnObject(const QString & table, const QString & column)
{
    return u"column " % table % u'.' % column;
}

QString indexObject(const QString & name)
{
    return u"index " % name;
}

QString foreignKeyObject(const QString & name)
{
    return u"foreign key " % name;
}

state::state(const facts & rules, catalogue begin) : known(rules), types(rules), m_held(std::move(begin))
{
    for (const auto & [key, owner] : m_held.tables) {
        enter(owner);
    }
    for (const sequence & alone : m_held.sequences) {
        m_relations.insert(foldedName(known, alone.name), {});
    }
}

const table * state::find(const QString & name) const
{
    const auto found = m_held.tables.find(keyOf(name));
    return found == m_held.tables.end() ? nullptr : &found->second;
}

const table * state::need(const QString & name, refusal_cause ifMissing, refusal & why) const
{
    const table * const found = find(name);
    if (found == nullptr) {
        const bool isOther = known.changes.renamesAnyRelation.value && isTaken(name);
        why = {isOther ? refusal_cause::not_a_table : ifMissing, tableObject(name), false};
    }
    return found;
}

const column * state::findColumn(const table & owner, const QString & name) const
{
    const auto found = std::find_if(owner.columns.begin(), owner.columns.end(),
                                    [&](const column & each) { return isSameName(known, each.name, name); });
    return found == owner.columns.end() ? nullptr : &*found;
}

const index * state::findIndex(const table & owner, const QString & name) const
{
    const auto found = std::find_if(owner.indexes.begin(), owner.indexes.end(), [&](const index & each) {
        return !each.name.isEmpty() && isSameName(known, each.name, name);
    });
    return found == owner.indexes.end() ? nullptr : &*found;
}

const table * state::ownerOfIndex(const QString & name) const
{
    const auto found = m_indexes.constFind(foldedName(known, name));
    return found == m_indexes.constEnd() ? nullptr : &m_held.tables.at(*found);
}

const table * state::ownerOfTrigger(const QString & name) const
{
    const auto found = m_triggers.constFind(foldedName(known, name));
    return found == m_triggers.constEnd() ? nullptr : &m_held.tables.at(*found);
}

bool state::refersTo(const foreign_key & key, const table & target) const
{
    return keyOf(key.target) == keyOf(target.name);
}

std::vector<const table *> state::referrersOf(const table & target) const
{
    std::vector<const table *> found;
    for (const QString & key : m_referrers.value(keyOf(target.name))) {
        found.push_back(&m_held.tables.at(key));
    }
    return found;
}

bool state::hasForeignKey(const QString & name) const
{
    return m_foreignKeys.contains(foldedName(known, name));
}

bool state::isTaken(const QString & name) const
{
    return m_relations.contains(keyOf(name));
}

bool state::isIndexNameTaken(const table & owner, const QString & name) const
{
    if (known.scopes.indexes.value == name_scope::table) {
        return findIndex(owner, name) != nullptr;
    }
    return m_indexes.contains(foldedName(known, name)) ||
           (known.scopes.tablesShareWithIndexes.value && isTaken(name));
}

QString state::freeName(const QString & table, const QString & column, QLatin1String label,
                        const QSet<QString> & also) const
{
    QString free = impliedName(known, table, column, label);
    for (int number = 1; isTaken(free) || also.contains(free); ++number) {
        free = impliedName(known, table, column, label % QString::number(number));
    }
    return free;
}

bool state::isCopied(const table & owner) const
{
    return std::any_of(owner.indexes.begin(), owner.indexes.end(), [&](const index & each) {
        return each.unique && std::any_of(each.parts.begin(), each.parts.end(), [&](const key_part & part) {
                   const column * const of = findColumn(owner, part.column);
                   return of != nullptr && isHashed(types, of->type);
               });
    });
}

int state::rowsOf(const table & owner) const
{
    return m_rows.value(keyOf(owner.name));
}

void state::setRows(const QString & name, int count)
{
    m_rows[keyOf(name)] = count;
}

void state::add(table made, int rows)
{
    const QString key = keyOf(made.name);
    m_rows[key] = rows;
    enter(m_held.tables[key] = std::move(made));
}

void state::remove(const table & gone)
{
    const QString key = keyOf(gone.name);
    leave(gone);
    m_rows.remove(key);
    m_held.tables.erase(key);
}

void state::change(const table & owner, const std::function<void(table &)> & how)
{
    leave(owner);
    auto node = m_held.tables.extract(keyOf(owner.name));
    const int rows = m_rows.take(node.key());
    how(node.mapped());
    node.key() = keyOf(node.mapped().name);
    m_rows[node.key()] = rows;
    enter(m_held.tables.insert(std::move(node)).position->second);
}

void state::addIndex(const table & owner, index made)
{
    const auto found = m_held.tables.find(keyOf(owner.name));
    enter(found->first, made);
    found->second.indexes.push_back(std::move(made));
}

void state::addForeignKey(const table & owner, foreign_key made)
{
    const auto found = m_held.tables.find(keyOf(owner.name));
    enter(found->first, made);
    found->second.foreignKeys.push_back(std::move(made));
}

QString state::shared(const QString & columnName)
{
    return *m_columnNames.insert(columnName);
}

void state::addSequence(const sequence & made)
{
    m_relations.insert(foldedName(known, made.name), {});
    m_held.sequences.push_back(made);
}

bool state::renameRelation(const QString & from, const QString & to)
{
    const QString key = m_relations.value(foldedName(known, from));
    if (key.isEmpty()) {
        return false;
    }
    change(m_held.tables.at(key), [&](table & owner) {
        for (sequence & each : owner.sequences) {
            each.name = each.name == from ? to : each.name;
        }
        for (index & each : owner.indexes) {
            each.name = each.name == from ? to : each.name;
        }
        if (owner.key && owner.key->name == from) {
            owner.key->name = to;
        }
    });
    return true;
}

void state::markEmpty(const table & owner, const QString & column)
{
    m_empty.insert(columnObject(keyOf(owner.name), column));
}

bool state::isEmpty(const table & owner, const QString & column) const
{
    return m_empty.contains(columnObject(keyOf(owner.name), column));
}

void state::markFilled(const table & owner, const QString & column)
{
    m_filled.insert(columnObject(keyOf(owner.name), column));
}

bool state::isFilled(const table & owner, const QString & column) const
{
    return m_filled.contains(columnObject(keyOf(owner.name), column));
}

QString state::holderOf(const QString & name) const
{
    const auto owner = m_held.tables.find(m_relations.value(keyOf(name)));
    if (owner == m_held.tables.end() || keyOf(owner->second.name) == keyOf(name)) {
        return tableObject(name);
    }
    const table & of = owner->second;
    const auto isIt = [&](const auto & each) { return foldedName(known, each.name) == keyOf(name); };
    if (std::any_of(of.indexes.begin(), of.indexes.end(), isIt)) {
        return indexObject(name);
    }
    return (of.key && isIt(*of.key) ? QLatin1String("key ") : QLatin1String("sequence ")) + name;
}

std::vector<QString> state::sharedNamesOf(const table & owner) const
{
    std::vector<QString> names = {keyOf(owner.name)};
    if (known.scopes.tablesShareWithIndexes.value) {
        for (const index & each : owner.indexes) {
            names.push_back(foldedName(known, each.name));
        }
    }
    if (known.scopes.namesKeysAndSequences.value) {
        for (const sequence & each : owner.sequences) {
            names.push_back(foldedName(known, each.name));
        }
        if (owner.key) {
            names.push_back(foldedName(known, owner.key->name));
        }
    }
    std::erase_if(names, [](const QString & name) { return name.isEmpty(); });
    return names;
}

void state::enter(const table & owner)
{
    const QString key = keyOf(owner.name);
    for (const QString & name : sharedNamesOf(owner)) {
        m_relations.insert(name, key);
    }
    for (const index & each : owner.indexes) {
        enter(key, each);
    }
    for (const foreign_key & each : owner.foreignKeys) {
        enter(key, each);
    }
    for (const trigger & each : known.types.countedByTrigger.value ? owner.triggers : QList<trigger>()) {
        m_triggers.insert(foldedName(known, each.name), key);
    }
}

void state::enter(const QString & key, const index & made)
{
    if (made.name.isEmpty()) {
        return;
    }
    const QString folded = foldedName(known, made.name);
    m_indexes.insert(folded, key);
    if (known.scopes.tablesShareWithIndexes.value) {
        m_relations.insert(folded, key);
    }
}

void state::enter(const QString & key, const foreign_key & made)
{
    ++m_foreignKeys[foldedName(known, made.name)];
    m_referrers[keyOf(made.target)].insert(key);
}

void state::leave(const table & owner)
{
    const QString key = keyOf(owner.name);
    for (const QString & name : sharedNamesOf(owner)) {
        m_relations.remove(name);
    }
    for (const index & each : owner.indexes) {
        m_indexes.remove(foldedName(known, each.name));
    }
    for (const trigger & each : owner.triggers) {
        m_triggers.remove(foldedName(known, each.name));
    }
    for (const foreign_key & each : owner.foreignKeys) {
        int & count = m_foreignKeys[foldedName(known, each.name)];
        if (--count == 0) {
            m_foreignKeys.remove(foldedName(known, each.name));
        }
        m_referrers[keyOf(each.target)].erase(key);
    }
}

} // namespace database
