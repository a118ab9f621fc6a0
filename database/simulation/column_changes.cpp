#include "database/simulation/changes.h"

#include "database/facts/known_types.h"
#include "database/simulation/parts.h"

#include <QStringBuilder>

#include <algorithm>

namespace database {

namespace {

bool isIn(const state & at, const QStringList & columns, const QString & column)
{
    return std::any_of(columns.begin(), columns.end(), [&](const QString & each) {
        return foldedName(at.known, each) == foldedName(at.known, column);
    });
}

// A foreign key of the table that the column is part of.
const foreign_key * keyFrom(const table & owner, const QString & column)
{
    const auto found = std::find_if(owner.foreignKeys.begin(), owner.foreignKeys.end(),
                                    [&](const foreign_key & key) { return key.columns.contains(column); });
    return found == owner.foreignKeys.end() ? nullptr : &*found;
}

// A foreign key, of any table, that refers to the column.
const foreign_key * keyTo(const state & at, const table & owner, const QString & column)
{
    for (const table * other : at.referrersOf(owner)) {
        for (const foreign_key & key : other->foreignKeys) {
            if (at.refersTo(key, owner) && isIn(at, key.targetColumns, column)) {
                return &key;
            }
        }
    }
    return nullptr;
}

const key_part * partOfKey(const table & owner, const QString & column)
{
    if (!owner.key) {
        return nullptr;
    }
    const std::vector<key_part> & parts = owner.key->parts;
    const auto found = std::find_if(parts.begin(), parts.end(),
                                    [&](const key_part & each) { return each.column == column; });
    return found == parts.end() ? nullptr : &*found;
}

bool isInKey(const table & owner, const QString & column)
{
    return partOfKey(owner, column) != nullptr;
}

refusal addingRefusal(const state & at, const table & owner, const add_column & asked, const column & made)
{
    const int rows = at.rowsOf(owner);
    const QString object = columnObject(owner.name, made.name);
    if (asked.definition.unique && !at.known.changes.uniqueColumnAdded.value) {
        return {refusal_cause::unique_added, object, false};
    }
    if (asked.definition.unique && !hasOrder(at.known, made.type)) {
        return {refusal_cause::type_not_indexable, object, false};
    }
    const bool hasCounted = std::any_of(owner.columns.begin(), owner.columns.end(),
                                        [](const column & each) { return each.counted; });
    if (made.counted && hasCounted && at.known.types.onlyOneCounted.value) {
        return {refusal_cause::several_counted, tableObject(owner.name), false};
    }
    table with = owner;
    with.columns.push_back(made);
    if (at.known.keys.longestRow.value > 0 && bytesOfRow(at.known, with) > at.known.keys.longestRow.value) {
        return {refusal_cause::row_too_long, tableObject(owner.name), false};
    }
    const bool isFilled = at.known.changes.notNullFilled.value;
    const bool isGiven = made.counted || asked.definition.hasDefault;
    if (rows > 0 && made.notNull && !isFilled && !isGiven) {
        return {refusal_cause::not_null_added, object, false};
    }
    if (rows > 1 && made.notNull && isFilled && asked.definition.unique) {
        return {refusal_cause::values_repeat, object, false};
    }
    return {};
}

void makeColumn(state & at, const table & owner, const add_column & asked, const column & made)
{
    QSet<QString> taken;
    std::vector<sequence> sequences;
    if (made.counted && at.known.scopes.namesKeysAndSequences.value) {
        sequences.push_back({at.freeName(owner.name, made.name, QLatin1String("seq")), made.name});
        taken.insert(sequences.front().name);
    }
    std::vector<index> indexes;
    if (asked.definition.unique || isUniqueByType(at.known, asked.definition)) {
        table with = owner;
        with.columns.push_back(made);
        indexes.push_back(uniqueIndex(at, with, made.name, taken));
    }
    at.change(owner, [&](table & changed) {
        changed.columns.push_back(made);
        changed.sequences.insert(changed.sequences.end(), sequences.begin(), sequences.end());
        changed.indexes.insert(changed.indexes.end(), indexes.begin(), indexes.end());
    });
}

refusal droppingRefusal(const state & at, const table & owner, const QString & column)
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
    std::erase_if(owner.indexes, [](const index & each) { return each.parts.empty(); });
}

void takeColumn(table & owner, const QString & column, bool wholeIndex)
{
    std::erase_if(owner.columns, [&](const struct column & each) { return each.name == column; });
    std::erase_if(owner.sequences, [&](const sequence & each) { return each.column == column; });
    std::erase_if(owner.foreignKeys, [&](const foreign_key & each) { return each.columns.contains(column); });
    takeFromIndexes(owner, column, wholeIndex);
    if (isInKey(owner, column)) {
        owner.key.reset();
    }
}

// What carries a column's name follows it.
void renameIn(table & owner, const QString & from, const column & to)
{
    const auto rename = [&](QString & name) { name = name == from ? to.name : name; };
    for (column & each : owner.columns) {
        each = each.name == from ? to : each;
    }
    for (sequence & each : owner.sequences) {
        rename(each.column);
    }
    for (foreign_key & each : owner.foreignKeys) {
        std::for_each(each.columns.begin(), each.columns.end(), rename);
    }
    for (index & each : owner.indexes) {
        std::for_each(each.parts.begin(), each.parts.end(), [&](key_part & part) { rename(part.column); });
    }
    if (owner.key) {
        std::for_each(owner.key->parts.begin(), owner.key->parts.end(),
                      [&](key_part & part) { rename(part.column); });
    }
}

void renameColumn(state & at, const table & owner, const QString & from, const column & to)
{
    const std::vector<const table *> referrers = at.referrersOf(owner);
    const auto follow = [&](foreign_key & key) {
        if (!at.refersTo(key, owner)) {
            return;
        }
        for (QString & target : key.targetColumns) {
            target = foldedName(at.known, target) == foldedName(at.known, from) ? to.name : target;
        }
    };
    for (const table * other : referrers) {
        at.change(*other, [&](table & changed) {
            std::for_each(changed.foreignKeys.begin(), changed.foreignKeys.end(), follow);
        });
    }
    at.change(owner, [&](table & changed) { renameIn(changed, from, to); });
}

struct renamed_column
{
    const table * owner = nullptr;
    const column * old = nullptr;
    QString to;
};

// What renaming and changing a column have in common.
refusal findRenamed(const state & at, const identifier & tableName, const identifier & from,
                    const column_definition & to, losses & lost, renamed_column & found)
{
    name_reader names(at.known, lost);
    const QString on = names.table(tableName);
    const QString old = names.lookedFor(from);
    found.to = names.other(to.name);
    refusal why = names.why();
    if (!why && !to.type.isEmpty()) {
        why = readType(at.known, to, columnObject(on, found.to));
    }
    found.owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (found.owner == nullptr) {
        // A sequence or an index has columns as well, though others than are asked for.
        return why.cause == refusal_cause::not_a_table && to.type.isEmpty()
                   ? refusal{refusal_cause::changed_column_missing, columnObject(on, old), false}
                   : why;
    }
    if (isSystemColumn(at.known, old)) {
        return {refusal_cause::system_column_changed, columnObject(on, old), false};
    }
    found.old = at.findColumn(*found.owner, old);
    if (found.old == nullptr) {
        return {refusal_cause::changed_column_missing, columnObject(on, old), false};
    }
    if (isSystemColumn(at.known, found.to)) {
        return {refusal_cause::system_column_added, columnObject(on, found.to), false};
    }
    if (!at.known.names.mayEndInBlank.value && found.to.endsWith(u' ')) {
        return {refusal_cause::column_name_ends_blank, columnObject(on, found.to), false};
    }
    if (const refusal_cause cause = refusalOf(at.known, to.type);
        !to.type.isEmpty() && cause != refusal_cause::none) {
        return {cause, columnObject(on, found.to), false};
    }
    const column * const there = at.findColumn(*found.owner, found.to);
    const bool isItself = there == found.old && at.known.changes.columnRenamedToItself.value;
    return there != nullptr && !isItself
               ? refusal{refusal_cause::column_exists, columnObject(on, found.to), false}
               : refusal();
}

// Whether each value of the one type is one of the other.
bool keepsValues(const understood_type & was, const understood_type & is)
{
    if (was.row == nullptr || is.row == nullptr) {
        return false;
    }
    const bool areWhole = was.row->tooLarge == refusal_cause::width_too_large && was.row->countable &&
                          is.row->tooLarge == refusal_cause::width_too_large && is.row->countable;
    const bool isLonger = was.length() > 0 && is.length() >= was.length() && was.row->bytes <= is.row->bytes;
    return (areWhole && was.isUnsigned == is.isUnsigned && is.bytes() >= was.bytes()) || isLonger;
}

// Whether the primary key has no room for the column when it is of the type.
bool isKeyTooLong(const facts & known, const table & owner, const QString & column, const QString & type)
{
    if (!owner.key) {
        return false;
    }
    int bytes = 0;
    for (const key_part & part : owner.key->parts) {
        const auto of = std::find_if(owner.columns.begin(), owner.columns.end(),
                                     [&](const struct column & each) { return each.name == part.column; });
        const bool isBeginning =
            part.prefix > 0 && part.column == column && understoodType(known, type).length() > part.prefix;
        const int prefix = part.column != column || isBeginning ? part.prefix : 0;
        const QString & own = part.column == column ? type : of->type;
        bytes += isLarge(known, own) && part.prefix > 0 ? bytesInKey(known, own, part.prefix)
                                                        : bytesInKey(known, own, prefix);
    }
    return known.keys.longest.value > 0 && bytes > known.keys.longest.value;
}

refusal changingRefusal(const state & at, const renamed_column & found, const column & to)
{
    const table & owner = *found.owner;
    const QString object = columnObject(owner.name, found.old->name);
    const bool isOtherType = shownType(at.known, to.type) != shownType(at.known, found.old->type);
    const foreign_key * key = keyFrom(owner, found.old->name);
    key = key == nullptr ? keyTo(at, owner, found.old->name) : key;
    const key_part * const part = partOfKey(owner, found.old->name);
    if (part != nullptr && part->prefix == 0 && isLarge(at.known, to.type)) {
        return {refusal_cause::text_key_without_prefix, object, false};
    }
    if (part != nullptr && isKeyTooLong(at.known, owner, found.old->name, to.type)) {
        return {refusal_cause::key_too_long, tableObject(owner.name), false};
    }
    const bool hasOtherCounted =
        std::any_of(owner.columns.begin(), owner.columns.end(),
                    [&](const column & each) { return each.counted && each.name != found.old->name; });
    if (to.counted && hasOtherCounted && at.known.types.onlyOneCounted.value) {
        return {refusal_cause::several_counted, tableObject(owner.name), false};
    }
    if (key != nullptr && (isOtherType || at.isCopied(owner))) {
        return {isOtherType ? refusal_cause::type_change_forbidden : refusal_cause::copy_needed,
                foreignKeyObject(key->name), false};
    }
    if (at.rowsOf(owner) == 0) {
        return {};
    }
    const understood_type was = understoodType(at.known, found.old->type);
    const understood_type is = understoodType(at.known, to.type);
    if (isOtherType && !keepsValues(was, is)) {
        const bool wasText = was.isLarge() || was.length() > 0 || (is.row != nullptr && is.row->isTime);
        return {wasText ? refusal_cause::values_converted : refusal_cause::values_lost, object, true};
    }
    return to.notNull && !found.old->notNull ? refusal{refusal_cause::nulls_lost, object, true} : refusal();
}

// An index over the whole column is one over the whole of the new type, as far as that goes; one over its
// beginning stays that where there is more.
int fittedPrefix(const facts & known, int prefix, const column & to)
{
    const understood_type type = understoodType(known, to.type);
    const bool isText = type.isLarge() || type.length() > 0;
    const bool isBeginning = prefix > 0 && (type.isLarge() || prefix < type.length());
    const int whole = indexedPart(known, to.type, 0);
    if (!isText || !isBeginning) {
        return isText ? whole : 0;
    }
    return type.isLarge() && whole > 0 ? std::min(prefix, whole) : prefix;
}

void fitPrefixes(const facts & known, table & owner, const column & to)
{
    for (index & each : owner.indexes) {
        for (key_part & part : each.parts) {
            if (part.column == to.name) {
                part.prefix =
                    each.unique && isHashed(known, to.type) ? 0 : fittedPrefix(known, part.prefix, to);
            }
        }
    }
    if (owner.key) {
        for (key_part & part : owner.key->parts) {
            part.prefix = part.column == to.name ? fittedPrefix(known, part.prefix, to) : part.prefix;
        }
    }
}

} // namespace

refusal apply(state & at, const add_column & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString on = names.table(asked.table);
    const QString name = names.other(asked.definition.name);
    refusal why = names.why();
    if (!why) {
        why = readType(at.known, asked.definition, columnObject(on, name));
    }
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    if (asked.ifNotExists && at.findColumn(*owner, name) != nullptr) {
        return {};
    }
    const bool nameFirst = at.known.changes.addedNameFirst.value;
    const refusal ofName = checkColumnName(at, *owner, name);
    const refusal ofType = checkColumnType(at, *owner, asked.definition, name);
    if (ofName || ofType) {
        return (nameFirst && ofName) || !ofType ? ofName : ofType;
    }
    const column made = columnOf(at.known, asked.definition, name);
    if (why = addingRefusal(at, *owner, asked, made); why) {
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
    if (why = droppingRefusal(at, *owner, found->name); why) {
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

refusal apply(state & at, const rename_column & asked, losses & lost)
{
    renamed_column found;
    column_definition renamed;
    renamed.name = asked.to;
    if (const refusal why = findRenamed(at, asked.table, asked.from, renamed, lost, found);
        why || found.owner == nullptr || found.old == nullptr) {
        return why;
    }
    const column old = *found.old;
    column to = old;
    to.name = found.to;
    renameColumn(at, *found.owner, old.name, to);
    return {};
}

refusal apply(state & at, const change_column & asked, losses & lost)
{
    if (!at.known.changes.kindsNamed.value) {
        return {refusal_cause::syntax, tableObject(asked.table.text), false};
    }
    renamed_column found;
    const column_definition & definition = asked.definition;
    refusal why = findRenamed(at, asked.table, asked.from, definition, lost, found);
    if (why || found.owner == nullptr || found.old == nullptr) {
        return why;
    }
    const column old = *found.old;
    const bool isKey = isInKey(*found.owner, old.name);
    const bool counts = definition.counted || understoodType(at.known, definition.type).counts();
    const column to{found.to, definition.type, definition.notNull || isKey, counts};
    why = changingRefusal(at, found, to);
    if (why && !why.dependsOnValues) {
        return why;
    }
    const QString object = columnObject(found.owner->name, to.name);
    if (old.counted && !to.counted) {
        lost.push_back({loss_kind::counter, object});
    }
    if (old.notNull && !to.notNull) {
        lost.push_back({loss_kind::not_null, object});
    }
    const QString on = found.owner->name;
    renameColumn(at, *found.owner, old.name, to);
    at.change(*at.find(on), [&](table & changed) { fitPrefixes(at.known, changed, to); });
    return why;
}

} // namespace database
