#include "database/simulation/changes.h"

#include "database/facts/known_types.h"
#include "database/simulation/parts.h"

#include <algorithm>

namespace database {

namespace {

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
        m_target = m_at.find(m_made.target);
        const bool targetFirst = m_at.known.foreignKeys.targetLookedForFirst.value;
        if (targetFirst && m_target == nullptr) {
            return missingTarget();
        }
        if (const refusal why = findColumns(*m_owner, m_made.columns, refusal_cause::key_column_missing);
            why) {
            return why;
        }
        if (const refusal why = tooLong(m_at.known, m_asked.reference.name); why) {
            return why;
        }
        if (m_target == nullptr) {
            return missingTarget();
        }
        for (const auto step : {&new_foreign_key::checkTarget, &new_foreign_key::checkTypes,
                                &new_foreign_key::checkName, &new_foreign_key::checkFilled}) {
            if (const refusal why = (this->*step)(); why) {
                return why;
            }
        }
        const QString object = foreignKeyObject(m_made.name);
        const bool hasRows = m_at.rowsOf(*m_owner) > 0;
        add();
        return hasRows ? refusal{refusal_cause::rows_without_target, object, true} : refusal();
    }

private:
    refusal readNames()
    {
        const reference_definition & asked = m_asked.reference;
        if (asked.columns.empty() || asked.targetColumns.empty() || !m_at.known.foreignKeys.alterable.value) {
            return {refusal_cause::syntax, foreignKeyObject(asked.name.text), false};
        }
        name_reader names(m_at.known, m_lost);
        m_made.columns = names.others(asked.columns);
        m_made.targetColumns = names.others(asked.targetColumns);
        m_made.name = names.lookedFor(asked.name);
        const QString on = names.table(m_asked.table);
        refusal why = names.why();
        if (why) {
            return why;
        }
        name_reader targets(m_at.known, m_lost);
        m_made.target = targets.table(asked.target);
        why = targets.why();
        const bool isSchema = why.cause == refusal_cause::schema_missing;
        if (why && !isSchema) {
            return why;
        }
        // The table itself is looked for before the schema of the other.
        refusal ofOwner;
        m_owner = m_at.need(on, refusal_cause::table_missing, ofOwner);
        return ofOwner ? ofOwner : why;
    }

    [[nodiscard]] refusal missingTarget() const
    {
        return {refusal_cause::target_missing, tableObject(m_made.target), false};
    }

    // Puts the names that the columns have in the place of those that the statement writes.
    refusal findColumns(const table & in, QStringList & columns, refusal_cause ifMissing) const
    {
        for (QString & each : columns) {
            const column * const found = m_at.findColumn(in, each);
            if (found == nullptr) {
                return {ifMissing, columnObject(in.name, each), false};
            }
            each = found->name;
        }
        return {};
    }

    [[nodiscard]] bool isKey(const QStringList & columns) const
    {
        QStringList there = columns;
        QStringList asked = m_made.targetColumns;
        if (!m_at.known.foreignKeys.targetMustBeWholeKey.value) {
            return there.mid(0, asked.size()) == asked;
        }
        there.sort();
        asked.sort();
        return there == asked;
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
            (m_target->key && isKey(columnsOf(m_target->key->parts))) ||
            std::any_of(m_target->indexes.begin(), m_target->indexes.end(), [&](const index & each) {
                return (each.unique || !onlyUnique) && isKey(columnsOf(each.parts));
            });
        QStringList once = m_made.targetColumns;
        once.removeDuplicates();
        const bool isFitting =
            once.size() == m_made.columns.size() && once.size() == m_made.targetColumns.size();
        return isFound && isFitting
                   ? refusal()
                   : refusal{refusal_cause::target_not_key, tableObject(m_target->name), false};
    }

    refusal checkTypes()
    {
        for (qsizetype i = 0; i < m_made.columns.size(); ++i) {
            const column * const from = m_at.findColumn(*m_owner, m_made.columns.at(i));
            const column * const to = m_at.findColumn(*m_target, m_made.targetColumns.at(i));
            if (!mayRefer(m_at.known, from->type, to->type)) {
                return {refusal_cause::target_type_differs, columnObject(m_owner->name, from->name), false};
            }
        }
        return {};
    }

    refusal checkName()
    {
        const bool isOfDatabase = m_at.known.scopes.foreignKeys.value == name_scope::database;
        const bool isTaken =
            isOfDatabase ? m_at.hasForeignKey(m_made.name)
                         : std::any_of(m_owner->foreignKeys.begin(), m_owner->foreignKeys.end(),
                                       [&](const foreign_key & each) { return each.name == m_made.name; });
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
        m_at.change(*m_owner, [&](table & changed) {
            if (m_at.known.foreignKeys.makesIndex.value) {
                addIndex(changed);
            }
            changed.foreignKeys.push_back(m_made);
        });
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
        const auto begins = [&](const std::vector<key_part> & parts) {
            return columnsOf(parts).mid(0, m_made.columns.size()) == m_made.columns &&
                   parts.front().prefix == 0;
        };
        const bool isThere = (changed.key && begins(changed.key->parts)) ||
                             std::any_of(changed.indexes.begin(), changed.indexes.end(),
                                         [&](const index & each) { return begins(each.parts); });
        if (!isThere) {
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
    foreign_key m_made;
};

} // namespace

refusal apply(state & at, const add_foreign_key & asked, losses & lost)
{
    return new_foreign_key(at, asked, lost).make();
}

refusal apply(state & at, const drop_constraint & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString name = names.lookedFor(asked.constraint);
    const QString on = names.table(asked.table);
    refusal why = names.why();
    if (!why && !at.known.foreignKeys.alterable.value) {
        why = {refusal_cause::syntax, foreignKeyObject(name), false};
    }
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    const auto isNamed = [&](const foreign_key & each) {
        return foldedName(at.known, each.name) == foldedName(at.known, name);
    };
    const bool isThere = std::any_of(owner->foreignKeys.begin(), owner->foreignKeys.end(), isNamed);
    if (!isThere) {
        return asked.ifExists ? refusal()
                              : refusal{refusal_cause::foreign_key_missing, foreignKeyObject(name), false};
    }
    if (!asked.asForeignKey && at.known.foreignKeys.hashMakesDropIdle.value && at.isCopied(*owner)) {
        lost.push_back({loss_kind::nothing_done, foreignKeyObject(name)});
        return {};
    }
    at.change(*owner, [&](table & changed) { std::erase_if(changed.foreignKeys, isNamed); });
    return {};
}

} // namespace database
