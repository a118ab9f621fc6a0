#include "database/simulation/changes.h"

#include "database/facts/known_types.h"
#include "database/simulation/column_keys.h"
#include "database/simulation/parts.h"
#include "database/simulation/sizes.h"

#include <algorithm>

namespace database {

namespace {

refusal checkAdded(const state & at, const table & owner, const add_column & asked, const column & made)
{
    const int rows = at.rowsOf(owner);
    const QString object = columnObject(owner.name, made.name);
    if (asked.definition.unique && !at.known.changes.uniqueColumnAdded.value) {
        return {refusal_cause::unique_added, object, false};
    }
    if (asked.definition.unique && !hasOrder(at.types, made.type)) {
        return {refusal_cause::key_type_not_indexable, object, false};
    }
    if (asked.definition.unique && isUnboundedInKey(at.types, made.type)) {
        return {refusal_cause::text_key_without_prefix, object, false};
    }
    const bool hasCounted = std::any_of(owner.columns.begin(), owner.columns.end(),
                                        [](const column & each) { return each.counted; });
    if (made.counted && hasCounted && at.known.types.onlyOneCounted.value) {
        return {refusal_cause::several_counted, tableObject(owner.name), false};
    }
    table with = owner;
    with.columns.push_back(made);
    const bool isHash = asked.definition.unique && isHashed(at.types, made.type);
    const refusal ofIndexes = checkIndexCount(at.known, owner, asked.definition.unique ? 1 : 0);
    if (const refusal why = ofIndexes ? ofIndexes : checkStorage(at.types, with, isHash ? 1 : 0); why) {
        return why;
    }
    const bool isFilled = at.known.changes.notNullFilled.value;
    const bool isGiven = made.counted || asked.definition.hasDefault;
    if (rows > 0 && made.notNull && !isFilled && !isGiven) {
        return {refusal_cause::not_null_added, object, false};
    }
    // Rows that are there would all have the same value, or none where no two rows may be without one.
    const bool isAlike = made.notNull ? isFilled : at.known.keys.oneNull.value && !isGiven;
    if (rows > 1 && isAlike && asked.definition.unique) {
        return {refusal_cause::values_repeat, object, false};
    }
    return {};
}

void makeColumn(state & at, const table & owner, const add_column & asked, const column & made)
{
    QSet<QString> taken;
    QList<sequence> sequences;
    if (made.counted && at.known.scopes.namesKeysAndSequences.value) {
        sequences.push_back({at.freeName(owner.name, made.name, QLatin1String("seq")), made.name});
        taken.insert(sequences.front().name);
    }
    QList<index> indexes;
    if (asked.definition.unique || at.types.of(asked.definition.type).isUnique()) {
        table with = owner;
        with.columns.push_back(made);
        indexes.push_back(uniqueIndex(at, with, made.name, taken));
    }
    at.change(owner, [&](table & changed) {
        changed.columns.push_back(made);
        changed.sequences += sequences;
        changed.indexes += indexes;
    });
}

// What keys and foreign keys have against it that it is not the only column of.
refusal checkShared(const table & owner, const QString & column, const QString & object)
{
    if (owner.key && owner.key->parts.size() > 1 && isInKey(owner, column)) {
        return {refusal_cause::column_of_key, object, false};
    }
    const auto shared =
        std::find_if(owner.foreignKeys.begin(), owner.foreignKeys.end(), [&](const foreign_key & each) {
            return each.columns.size() > 1 && each.columns.contains(column);
        });
    return shared == owner.foreignKeys.end()
               ? refusal()
               : refusal{refusal_cause::column_of_foreign_key, foreignKeyObject(shared->name), false};
}

refusal checkDropped(const state & at, const table & owner, const QString & column)
{
    const facts & known = at.known;
    const QString object = columnObject(owner.name, column);
    const foreign_key * const from = keyFrom(owner, column);
    const foreign_key * const to = keyTo(at, owner, column);
    const bool isIndexed = std::any_of(owner.indexes.begin(), owner.indexes.end(), [&](const index & each) {
        return columnsOf(each.parts).contains(column);
    });
    if (known.changes.columnBoundToObjects.value &&
        (from != nullptr || isInKey(owner, column) || isIndexed)) {
        return {refusal_cause::column_bound, object, false};
    }
    if (known.changes.lastColumnStays.value && owner.columns.size() == 1) {
        return {refusal_cause::last_column, object, false};
    }
    if (known.changes.keptBySharedConstraint.value) {
        if (const refusal why = checkShared(owner, column, object); why) {
            return why;
        }
    }
    if (!known.changes.columnTakesItsObjects.value) {
        if (owner.key && owner.key->parts.size() > 1 && isInKey(owner, column)) {
            return {refusal_cause::column_of_key, object, false};
        }
        if (from != nullptr) {
            const bool isCopied = at.isCopied(owner);
            return {isCopied ? refusal_cause::column_of_foreign_key_copied
                             : refusal_cause::column_of_foreign_key,
                    foreignKeyObject(from->name), false};
        }
    }
    if (to != nullptr && known.foreignKeys.keepsTarget.value) {
        return {refusal_cause::column_referred_to, foreignKeyObject(to->name), false};
    }
    return {};
}

void takeFromIndexes(table & owner, const QString & column, bool wholeIndex)
{
    for (index & each : owner.indexes) {
        if (!columnsOf(each.parts).contains(column)) {
            continue;
        }
        if (wholeIndex) {
            each.parts.clear();
        } else {
            std::erase_if(each.parts, [&](const key_part & part) { return part.column == column; });
        }
    }
    owner.indexes.removeIf([](const index & each) { return each.parts.empty(); });
}

void takeColumn(table & owner, const QString & column, bool wholeIndex)
{
    owner.columns.removeIf([&](const struct column & each) { return each.name == column; });
    owner.sequences.removeIf([&](const sequence & each) { return each.column == column; });
    owner.foreignKeys.removeIf([&](const foreign_key & each) { return each.columns.contains(column); });
    takeFromIndexes(owner, column, wholeIndex);
    if (isInKey(owner, column)) {
        owner.key.reset();
    }
}

} // namespace

refusal apply(state & at, const add_column & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString on = names.table(asked.table);
    const QString name = names.other(asked.definition.name);
    refusal why = names.why();
    const understood_type & type = at.types.of(asked.definition.type);
    if (!why) {
        why = {readType(at.known, type, asked.definition), columnObject(on, name), false};
    }
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    if (asked.ifNotExists && at.findColumn(*owner, name) != nullptr) {
        return {};
    }
    const bool nameFirst = at.known.changes.addedNameFirst.value;
    const refusal ofCount = checkColumnCount(at.known, owner->name, owner->columns.size() + 1);
    const refusal ofOwnName = checkColumnName(at, *owner, name);
    const refusal ofName = ofOwnName ? ofOwnName : ofCount;
    const refusal ofType = checkColumnType(at, *owner, type, asked.definition, name);
    if (ofName || ofType) {
        return (nameFirst && ofName) || !ofType ? ofName : ofType;
    }
    const column made = columnOf(at.types, type, asked.definition, name);
    if (why = checkAdded(at, *owner, asked, made); why) {
        return why;
    }
    if (at.rowsOf(*owner) > 0 && made.notNull && !asked.definition.hasDefault &&
        at.known.changes.notNullFilled.value) {
        lost.push_back({loss_kind::filled, columnObject(owner->name, name)});
        at.markFilled(*owner, name);
    }
    if (!made.notNull && !made.counted && !asked.definition.hasDefault) {
        at.markEmpty(*owner, name);
    }
    makeColumn(at, *owner, asked, made);
    return {};
}

refusal apply(state & at, const drop_column & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString name = names.lookedFor(asked.column);
    const QString on = names.table(asked.table);
    refusal why = names.why();
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    if (isSystemColumn(at.known, name)) {
        return {refusal_cause::system_column_changed, columnObject(on, name), false};
    }
    const column * const found = at.findColumn(*owner, name);
    if (found == nullptr) {
        return asked.ifExists ? refusal()
                              : refusal{refusal_cause::dropped_column_missing, columnObject(on, name), false};
    }
    if (why = checkDropped(at, *owner, found->name); why) {
        return why;
    }
    lost.push_back({loss_kind::values, columnObject(owner->name, found->name)});
    if (isInKey(*owner, found->name)) {
        lost.push_back({loss_kind::key, tableObject(owner->name)});
    }
    const QString gone = found->name;
    at.change(*owner, [&](table & changed) {
        takeColumn(changed, gone, at.known.changes.columnTakesItsObjects.value);
    });
    return {};
}

} // namespace database
