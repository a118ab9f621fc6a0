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

held_catalogue::held_catalogue(catalogue begin) : m_held(std::move(begin))
{
    m_tables.reserve(static_cast<qsizetype>(m_held.tables.size()));
    for (auto & [key, each] : m_held.tables) {
        m_tables.insert(key, &each);
    }
}

table & held_catalogue::put(const QString & key, table made)
{
    table & place = m_held.tables[key];
    place = std::move(made);
    m_tables.insert(key, &place);
    return place;
}

void held_catalogue::remove(const QString & key)
{
    m_tables.remove(key);
    m_held.tables.erase(key);
}

void held_catalogue::rename(const QString & from, const QString & to)
{
    auto node = m_held.tables.extract(from);
    node.key() = to;
    m_held.tables.insert(std::move(node));
    m_tables.insert(to, m_tables.take(from));
}

state::state(const facts & rules, catalogue begin) : known(rules), types(rules), m_held(std::move(begin))
{
    for (const auto & [key, owner] : held().tables) {
        enter(owner);
    }
    for (const sequence & alone : held().sequences) {
        m_relations.insert(foldedName(known, alone.name), {});
    }
}

const table * state::find(const QString & name) const
{
    return m_held.find(keyOf(name));
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
    const bool isLetterByLetter = areComparedByLetters(known);
    // Where letters are compared with letters most names differ at a glance.
    const auto mayBeIt = [&](const QString & other) {
        return other.size() == name.size() &&
               (name.isEmpty() || ((other.back().unicode() ^ name.back().unicode()) & ~0x20) == 0);
    };
    const auto found = std::find_if(owner.columns.begin(), owner.columns.end(), [&](const column & each) {
        return (!isLetterByLetter || mayBeIt(each.name)) && isSameName(known, each.name, name);
    });
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
    return found == m_indexes.constEnd() ? nullptr : m_held.find(*found);
}

const table * state::ownerOfTrigger(const QString & name) const
{
    const auto found = m_triggers.constFind(foldedName(known, name));
    return found == m_triggers.constEnd() ? nullptr : m_held.find(*found);
}

bool state::refersTo(const foreign_key & key, const table & target) const
{
    return keyOf(key.target) == keyOf(target.name);
}

std::vector<const table *> state::referrersOf(const table & target) const
{
    std::vector<const table *> found;
    for (const QString & key : m_referrers.value(keyOf(target.name))) {
        found.push_back(m_held.find(key));
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
    enter(m_held.put(key, std::move(made)));
}

bool state::isMadeByItself(const table & made) const
{
    // Only these names are made up so that they differ from all others; numbers stand at their ends.
    if (!known.scopes.namesKeysAndSequences.value) {
        return true;
    }
    const auto isNumbered = [](const auto & each) {
        return !each.name.isEmpty() && each.name.back().isDigit();
    };
    return !(made.key && isNumbered(*made.key)) &&
           std::none_of(made.sequences.begin(), made.sequences.end(), isNumbered) &&
           std::none_of(made.indexes.begin(), made.indexes.end(), isNumbered);
}

bool state::hasRoomFor(const table & made) const
{
    const auto isFree = [this](const auto & each) { return each.name.isEmpty() || !isTaken(each.name); };
    return isFree(made) && (!made.key || isFree(*made.key)) &&
           std::all_of(made.sequences.begin(), made.sequences.end(), isFree) &&
           std::all_of(made.indexes.begin(), made.indexes.end(), isFree);
}

void state::remove(const table & gone)
{
    const QString key = keyOf(gone.name);
    leave(gone);
    m_rows.remove(key);
    m_held.remove(key);
}

void state::change(const table & owner, const std::function<void(table &)> & how)
{
    leave(owner);
    const QString key = keyOf(owner.name);
    table & changed = *m_held.find(key);
    how(changed);
    if (const QString now = keyOf(changed.name); now != key) {
        m_held.rename(key, now);
        m_rows[now] = m_rows.take(key);
    }
    enter(changed);
}

void state::addIndex(const table & owner, index made)
{
    const QString key = keyOf(owner.name);
    enter(key, made);
    m_held.find(key)->indexes.push_back(std::move(made));
}

void state::addForeignKey(const table & owner, foreign_key made)
{
    const QString key = keyOf(owner.name);
    enter(key, made);
    m_held.find(key)->foreignKeys.push_back(std::move(made));
}

QString state::shared(const QString & columnName)
{
    const auto found = m_columnNames.constFind(columnName);
    return found != m_columnNames.constEnd() ? *found : *m_columnNames.insert(columnName);
}

void state::addSequence(const sequence & made)
{
    m_relations.insert(foldedName(known, made.name), {});
    m_held.addSequence(made);
}

bool state::renameRelation(const QString & from, const QString & to)
{
    const QString key = m_relations.value(foldedName(known, from));
    if (key.isEmpty()) {
        return false;
    }
    change(*m_held.find(key), [&](table & owner) {
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
    return !m_empty.isEmpty() && m_empty.contains(columnObject(keyOf(owner.name), column));
}

void state::markFilled(const table & owner, const QString & column)
{
    m_filled.insert(columnObject(keyOf(owner.name), column));
}

bool state::isFilled(const table & owner, const QString & column) const
{
    return !m_filled.isEmpty() && m_filled.contains(columnObject(keyOf(owner.name), column));
}

QString state::holderOf(const QString & name) const
{
    const table * const owner = m_held.find(m_relations.value(keyOf(name)));
    if (owner == nullptr || keyOf(owner->name) == keyOf(name)) {
        return tableObject(name);
    }
    const table & of = *owner;
    const auto isIt = [&](const auto & each) { return foldedName(known, each.name) == keyOf(name); };
    if (std::any_of(of.indexes.begin(), of.indexes.end(), isIt)) {
        return indexObject(name);
    }
    return (of.key && isIt(*of.key) ? QLatin1String("key ") : QLatin1String("sequence ")) + name;
}

template <class Taker>
void state::takeSharedNames(const table & owner, const Taker & take) const
{
    const auto takeName = [&](const QString & name) {
        if (!name.isEmpty()) {
            take(foldedName(known, name));
        }
    };
    if (!owner.name.isEmpty()) {
        take(keyOf(owner.name));
    }
    if (known.scopes.tablesShareWithIndexes.value) {
        for (const index & each : owner.indexes) {
            takeName(each.name);
        }
    }
    if (known.scopes.namesKeysAndSequences.value) {
        for (const sequence & each : owner.sequences) {
            takeName(each.name);
        }
        if (owner.key) {
            takeName(owner.key->name);
        }
    }
}

void state::enter(const table & owner)
{
    const QString key = keyOf(owner.name);
    takeSharedNames(owner, [&](const QString & name) { m_relations.insert(name, key); });
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
    takeSharedNames(owner, [&](const QString & name) { m_relations.remove(name); });
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
