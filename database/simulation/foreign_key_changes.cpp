#include "database/simulation/changes.h"

#include "database/facts/known_types.h"
#include "database/simulation/parts.h"
#include "database/simulation/sizes.h"

#include <algorithm>
#include <optional>

namespace database {

namespace {

// Whether a foreign key, a key or a unique column of the table has the name.
bool isConstraint(const table & owner, const QString & name)
{
    return std::any_of(owner.foreignKeys.begin(), owner.foreignKeys.end(),
                       [&](const foreign_key & each) { return each.name == name; }) ||
           std::any_of(owner.indexes.begin(), owner.indexes.end(),
                       [&](const index & each) { return each.isConstraint && each.name == name; }) ||
           (owner.key && owner.key->name == name);
}

/// A foreign key while it is being added.
class new_foreign_key
{
public:
    new_foreign_key(state & at, const add_foreign_key & asked, losses & lost)
        : m_at(at), m_asked(asked), m_lost(lost)
    {
    }

    refusal make()
    {
        if (const refusal why = readNames(); why) {
            return why;
        }
        const bool targetFirst = m_at.known.foreignKeys.targetLookedForFirst.value;
        if (const refusal why = targetFirst ? checkName() : refusal(); why) {
            return why;
        }
        if (m_ofTarget) {
            return m_ofTarget;
        }
        refusal ofTarget;
        m_target = m_at.need(m_made.target, refusal_cause::target_missing, ofTarget);
        if (targetFirst && ofTarget) {
            return ofTarget;
        }
        if (const refusal why = findColumns(*m_owner, m_made.columns, refusal_cause::key_column_missing);
            why) {
            return why;
        }
        for (const auto step : {&new_foreign_key::checkIndexLength, &new_foreign_key::checkCount,
                                &new_foreign_key::checkNameLength, &new_foreign_key::checkIndexColumns,
                                &new_foreign_key::checkIndexPlace}) {
            if (const refusal why = (this->*step)(); why) {
                return why;
            }
        }
        if (ofTarget) {
            return ofTarget;
        }
        for (const auto step : {&new_foreign_key::checkTarget, &new_foreign_key::checkTypes,
                                &new_foreign_key::checkName, &new_foreign_key::checkFilled}) {
            if (const refusal why = (this->*step)(); why) {
                return why;
            }
        }
        return addToTable();
    }

private:
    /// Says what rows may have against it.
    refusal addToTable()
    {
        // A row without a value in one of the columns refers to nothing.
        const bool isEmpty = std::any_of(m_made.columns.begin(), m_made.columns.end(),
                                         [&](const QString & each) { return m_at.isEmpty(*m_owner, each); });
        const bool hasRows = m_at.rowsOf(*m_owner) > 0 && !isEmpty;
        add();
        return hasRows ? refusal{refusal_cause::rows_without_target, foreignKeyObject(m_made.name), true}
                       : refusal();
    }

    refusal readNames()
    {
        const reference_definition & asked = m_asked.reference;
        name_reader names(m_at.known, m_lost);
        const QString on = names.table(m_asked.table);
        const bool isEmpty = asked.columns.empty() || asked.targetColumns.empty();
        if (isEmpty || !m_at.known.foreignKeys.alterable.value) {
            return names.why() && !isLookedUp(names.why().cause)
                       ? names.why()
                       : refusal{refusal_cause::syntax, foreignKeyObject(asked.name.text), false};
        }
        m_made.name = names.lookedFor(asked.name);
        m_made.columns = names.allLookedFor(asked.columns);
        refusal why = names.why();
        if (why && !isLookedUp(why.cause)) {
            return why;
        }
        name_reader targets(m_at.known, m_lost);
        m_made.target = targets.table(asked.target);
        name_reader afterwards(m_at.known, m_lost);
        m_made.targetColumns = afterwards.allLookedFor(asked.targetColumns);
        for (const refusal & each : {targets.why(), afterwards.why()}) {
            if (each && isReadFirst(m_at.known, each.cause)) {
                return each;
            }
        }
        if (why) {
            return why;
        }
        why = targets.why();
        // The table itself is looked for before the name of the other is.
        m_ofTarget = why;
        m_owner = m_at.need(on, refusal_cause::table_missing, why);
        return m_owner == nullptr ? why : refusal();
    }

    // The index of the key's own, where one is made.
    [[nodiscard]] refusal checkIndexColumns()
    {
        const bool isRefused = m_at.known.foreignKeys.makesIndex.value && !areDifferent(m_made.columns);
        return isRefused ? refusal{refusal_cause::column_repeated,
                                   columnObject(m_owner->name, m_made.columns.constFirst()), false}
                         : refusal();
    }

    // As does the index of its own.
    [[nodiscard]] refusal checkIndexPlace()
    {
        const bool isMade = m_at.known.foreignKeys.makesIndex.value && !isIndexed(*m_owner);
        return checkIndexCount(m_at.known, *m_owner, isMade ? 1 : 0);
    }

    [[nodiscard]] refusal checkCount()
    {
        if (const refusal why = checkPartCount(m_at.known, foreignKeyObject(m_made.name),
                                               static_cast<std::size_t>(m_made.columns.size()));
            why) {
            return why;
        }
        const bool isRefused =
            m_at.known.foreignKeys.makesIndex.value && m_made.columns.size() != m_made.targetColumns.size();
        return isRefused ? refusal{refusal_cause::target_column_count, foreignKeyObject(m_made.name), false}
                         : refusal();
    }

    [[nodiscard]] refusal checkNameLength()
    {
        return database::checkNameLength(m_at.known, m_asked.reference.name);
    }

    [[nodiscard]] refusal checkIndexLength()
    {
        if (!m_at.known.foreignKeys.makesIndex.value || m_made.columns.size() < 2) {
            return {};
        }
        int bytes = 0;
        for (const QString & each : m_made.columns) {
            bytes += bytesInKey(m_at.types, m_at.findColumn(*m_owner, each)->type, 0);
        }
        const int longest = m_at.known.keys.longest.value;
        return longest > 0 && bytes > longest
                   ? refusal{refusal_cause::key_too_long, foreignKeyObject(m_made.name), false}
                   : refusal();
    }

    // Puts the names that the columns have in the place of those that the statement writes.
    refusal findColumns(const table & in, QStringList & columns, refusal_cause ifMissing) const
    {
        for (QString & each : columns) {
            const column * const found = m_at.findColumn(in, each);
            if (found == nullptr) {
                const bool isSystem = isSystemColumn(m_at.known, each);
                return {isSystem ? refusal_cause::system_column_changed : ifMissing,
                        columnObject(in.name, each), false};
            }
            each = found->name;
        }
        return {};
    }

    [[nodiscard]] bool isKey(const std::vector<key_part> & parts) const
    {
        QStringList asked = m_made.targetColumns;
        const bool isWhole = m_at.known.foreignKeys.targetMustBeWholeKey.value;
        // In what order the columns of a whole key are named says nothing.
        if (isWhole && asked.size() > 1) {
            QStringList there = columnsOf(parts);
            there.sort();
            asked.sort();
            return there == asked;
        }
        const bool hasLength = !isWhole || parts.size() == static_cast<std::size_t>(asked.size());
        return hasLength && beginsWith(parts, asked);
    }

    static bool areDifferent(const QStringList & names)
    {
        QStringList once = names;
        return names.size() < 2 || once.removeDuplicates() == 0;
    }

    refusal checkTarget()
    {
        if (const refusal why =
                findColumns(*m_target, m_made.targetColumns, refusal_cause::target_column_missing);
            why) {
            return why;
        }
        const bool onlyUnique = m_at.known.foreignKeys.targetMustBeWholeKey.value;
        const bool isFound =
            (m_target->key && isKey(m_target->key->parts)) ||
            std::any_of(m_target->indexes.begin(), m_target->indexes.end(), [&](const index & each) {
                return (each.unique || !onlyUnique) && isKey(each.parts);
            });
        const bool isFitting =
            m_made.columns.size() == m_made.targetColumns.size() && areDifferent(m_made.targetColumns);
        return isFound && isFitting
                   ? refusal()
                   : refusal{refusal_cause::target_not_key, tableObject(m_target->name), false};
    }

    refusal checkTypes()
    {
        for (qsizetype i = 0; i < m_made.columns.size(); ++i) {
            const column * const from = m_at.findColumn(*m_owner, m_made.columns.at(i));
            const column * const to = m_at.findColumn(*m_target, m_made.targetColumns.at(i));
            if (!mayRefer(m_at.types, from->type, to->type)) {
                return {refusal_cause::target_type_differs, columnObject(m_owner->name, from->name), false};
            }
            const int longest = m_at.known.keys.longest.value;
            if (m_at.known.foreignKeys.makesIndex.value && longest > 0 &&
                bytesInKey(m_at.types, from->type, 0) > longest) {
                return {refusal_cause::column_too_long, columnObject(m_owner->name, from->name), false};
            }
        }
        return {};
    }

    refusal checkName()
    {
        const bool isOfDatabase = m_at.known.scopes.foreignKeys.value == name_scope::database;
        const bool isTaken =
            isOfDatabase ? m_at.hasForeignKey(m_made.name) : isConstraint(*m_owner, m_made.name);
        return isTaken ? refusal{refusal_cause::foreign_key_exists, foreignKeyObject(m_made.name), false}
                       : refusal();
    }

    // A value that the database made up leads nowhere.
    refusal checkFilled()
    {
        const bool isFilled =
            std::any_of(m_made.columns.begin(), m_made.columns.end(),
                        [&](const QString & each) { return m_at.isFilled(*m_owner, each); });
        return isFilled ? refusal{refusal_cause::rows_without_target, foreignKeyObject(m_made.name), false}
                        : refusal();
    }

    void add()
    {
        m_made.target = m_target->name;
        if (m_at.known.foreignKeys.makesIndex.value) {
            m_at.change(*m_owner, [&](table & changed) { addIndex(changed); });
        }
        m_at.addForeignKey(*m_owner, m_made);
    }

    // Whether a key or an index begins with the columns.
    [[nodiscard]] bool isIndexed(const table & owner) const
    {
        const auto begins = [&](const std::vector<key_part> & parts) {
            return beginsWith(parts, m_made.columns) && parts.front().prefix == 0;
        };
        return (owner.key && begins(owner.key->parts)) ||
               std::any_of(owner.indexes.begin(), owner.indexes.end(),
                           [&](const index & each) { return begins(each.parts); });
    }

    void addIndex(table & changed) const
    {
        const auto own =
            std::find_if(changed.indexes.begin(), changed.indexes.end(), [&](const index & each) {
                return each.madeByForeignKey && columnsOf(each.parts) == m_made.columns;
            });
        if (own != changed.indexes.end()) {
            own->name = m_made.name;
            return;
        }
        if (!isIndexed(changed)) {
            index made{m_made.name, {}, false, true};
            for (const QString & each : m_made.columns) {
                made.parts.push_back({each, 0});
            }
            changed.indexes.push_back(std::move(made));
        }
    }

    state & m_at;
    const add_foreign_key & m_asked;
    losses & m_lost;
    const table * m_owner = nullptr;
    const table * m_target = nullptr;
    refusal m_ofTarget; ///< of how it is named
    foreign_key m_made;
};

// A foreign key, of any table, that refers to just these columns.
const foreign_key * keyTo(const state & at, const table & owner, const std::vector<key_part> & parts)
{
    for (const table * other : at.referrersOf(owner)) {
        for (const foreign_key & each : other->foreignKeys) {
            QStringList asked = each.targetColumns;
            QStringList there = columnsOf(parts);
            asked.sort();
            there.sort();
            if (at.refersTo(each, owner) && asked == there) {
                return &each;
            }
        }
    }
    return nullptr;
}

// Drops the key or the unique constraint of that name; none when there is no such one.
std::optional<refusal> dropKey(state & at, const table & owner, const QString & name)
{
    const index * const unique = at.findIndex(owner, name);
    const bool isUnique = unique != nullptr && unique->unique &&
                          (unique->isConstraint || at.known.scopes.indexes.value == name_scope::table);
    const bool isKey = owner.key && !owner.key->name.isEmpty() && owner.key->name == name;
    if (!isUnique && !isKey) {
        return std::nullopt;
    }
    const foreign_key * const needs = keyTo(at, owner, isKey ? owner.key->parts : unique->parts);
    if (needs != nullptr && at.known.foreignKeys.targetMustBeWholeKey.value) {
        return refusal{refusal_cause::index_needed, foreignKeyObject(needs->name), false};
    }
    at.change(owner, [&](table & changed) {
        changed.indexes.removeIf([&](const index & each) { return isUnique && each.name == name; });
        if (isKey) {
            changed.key.reset();
        }
    });
    return refusal();
}

} // namespace

refusal apply(state & at, const add_foreign_key & asked, losses & lost)
{
    return new_foreign_key(at, asked, lost).make();
}

refusal apply(state & at, const drop_constraint & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString on = names.table(asked.table);
    const QString name = names.lookedFor(asked.constraint);
    refusal why = names.why();
    const bool isUnknown = asked.asForeignKey && !at.known.changes.kindsNamed.value;
    if (!why && (isUnknown || !at.known.foreignKeys.alterable.value)) {
        why = {refusal_cause::syntax, foreignKeyObject(name), false};
    }
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    const auto isNamed = [&](const foreign_key & each) { return isSameName(at.known, each.name, name); };
    const bool isThere = std::any_of(owner->foreignKeys.begin(), owner->foreignKeys.end(), isNamed);
    if (!isThere && !asked.asForeignKey) {
        if (const auto done = dropKey(at, *owner, name)) {
            return *done;
        }
    }
    if (!isThere) {
        return asked.ifExists ? refusal()
                              : refusal{refusal_cause::foreign_key_missing, foreignKeyObject(name), false};
    }
    if (!asked.asForeignKey && at.known.foreignKeys.hashMakesDropIdle.value && at.isCopied(*owner)) {
        lost.push_back({loss_kind::nothing_done, foreignKeyObject(name)});
        return {};
    }
    at.change(*owner, [&](table & changed) { changed.foreignKeys.removeIf(isNamed); });
    return {};
}

} // namespace database
