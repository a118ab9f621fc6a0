#include "database/simulation/changes.h"

#include "database/facts/known_types.h"
#include "database/simulation/column_keys.h"
#include "database/simulation/parts.h"
#include "database/simulation/sizes.h"

#include <algorithm>

namespace database {

namespace {

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
            target = isSameName(at.known, target, from) ? to.name : target;
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

// What there is against the new name and type of a column.
refusal checkNewName(const state & at, const renamed_column & found, const column_definition & to,
                     const QString & object)
{
    if (isSystemColumn(at.known, found.to)) {
        return {refusal_cause::system_column_added, object, false};
    }
    if (const refusal_cause cause = refusalOf(at.types, to.type);
        !to.type.isEmpty() && cause != refusal_cause::none) {
        return {cause, object, false};
    }
    if (endsInBlank(at.known, found.to)) {
        return {refusal_cause::column_name_ends_blank, object, false};
    }
    const column * const there = at.findColumn(*found.owner, found.to);
    const bool isItself = there == found.old && at.known.changes.columnRenamedToItself.value;
    return there != nullptr && !isItself ? refusal{refusal_cause::column_exists, object, false} : refusal();
}

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
        why = {readType(at.known, at.types.of(to.type), to), columnObject(on, found.to), false};
    }
    found.owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (found.owner == nullptr) {
        // An index has columns as well, though others than are asked for.
        const bool isIndex = why.cause == refusal_cause::not_a_table &&
                             !at.holderOf(on).startsWith(QLatin1String("sequence "));
        return isIndex && to.type.isEmpty()
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
    return checkNewName(at, found, to, columnObject(on, found.to));
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
bool isKeyTooLong(const known_types & types, const table & owner, const QString & column,
                  const QString & type)
{
    if (!owner.key) {
        return false;
    }
    int bytes = 0;
    for (const key_part & part : owner.key->parts) {
        const auto of = std::find_if(owner.columns.begin(), owner.columns.end(),
                                     [&](const struct column & each) { return each.name == part.column; });
        const bool isBeginning =
            part.prefix > 0 && part.column == column && types.of(type).length() > part.prefix;
        const int prefix = part.column != column || isBeginning ? part.prefix : 0;
        const QString & own = part.column == column ? type : of->type;
        bytes += isLarge(types, own) && part.prefix > 0 ? bytesInKey(types, own, part.prefix)
                                                        : bytesInKey(types, own, prefix);
    }
    const int longest = types.known().keys.longest.value;
    return longest > 0 && bytes > longest;
}

// What the values of a column come to when it changes.
refusal checkValues(const state & at, const column & old, const column & to, const QString & object)
{
    const bool isOtherType = at.types.shown(to.type) != at.types.shown(old.type);
    const understood_type & was = at.types.of(old.type);
    const understood_type & is = at.types.of(to.type);
    if (isOtherType && !keepsValues(was, is) && is.length() > 0) {
        return {was.row == is.row ? refusal_cause::values_cut : refusal_cause::values_cut_converted, object,
                true};
    }
    if (isOtherType && !keepsValues(was, is)) {
        const bool wasText = was.isLarge() || was.length() > 0 || (is.row != nullptr && is.row->isTime);
        return {wasText ? refusal_cause::values_converted : refusal_cause::values_lost, object, true};
    }
    return to.notNull && !old.notNull ? refusal{refusal_cause::nulls_lost, object, true} : refusal();
}

refusal checkChanged(const state & at, const renamed_column & found, const column & to)
{
    const table & owner = *found.owner;
    const QString object = columnObject(owner.name, found.old->name);
    const bool isOtherType = at.types.shown(to.type) != at.types.shown(found.old->type);
    const foreign_key * const from = keyFrom(owner, found.old->name);
    const foreign_key * const key = from == nullptr ? keyTo(at, owner, found.old->name) : from;
    const key_part * const part = partOfKey(owner, found.old->name);
    if (part != nullptr && part->prefix == 0 && isLarge(at.types, to.type)) {
        return {refusal_cause::text_key_without_prefix, object, false};
    }
    if (part != nullptr && isKeyTooLong(at.types, owner, found.old->name, to.type)) {
        return {refusal_cause::key_too_long, tableObject(owner.name), false};
    }
    const bool hasOtherCounted =
        std::any_of(owner.columns.begin(), owner.columns.end(),
                    [&](const column & each) { return each.counted && each.name != found.old->name; });
    if (to.counted && hasOtherCounted && at.known.types.onlyOneCounted.value) {
        return {refusal_cause::several_counted, tableObject(owner.name), false};
    }
    if (key != nullptr && isOtherType && isSameName(at.known, found.old->name, to.name)) {
        return {from != nullptr ? refusal_cause::own_key_needs_type : refusal_cause::other_key_needs_type,
                foreignKeyObject(key->name), false};
    }
    if (key != nullptr && (isOtherType || at.isCopied(owner))) {
        return {isOtherType ? refusal_cause::type_change_forbidden : refusal_cause::copy_needed,
                foreignKeyObject(key->name), false};
    }
    return at.rowsOf(owner) == 0 ? refusal() : checkValues(at, *found.old, to, object);
}

// An index over the whole column is one over the whole of the new type, as far as that goes; one over its
// beginning stays that where there is more.
int fittedPrefix(const known_types & types, int prefix, const column & to)
{
    const understood_type & type = types.of(to.type);
    const bool isText = type.isLarge() || type.length() > 0;
    const bool isBeginning = prefix > 0 && (type.isLarge() || prefix < type.length());
    const int whole = indexedPart(types, to.type, 0);
    if (!isText || !isBeginning) {
        return isText ? whole : 0;
    }
    return type.isLarge() && whole > 0 ? std::min(prefix, whole) : prefix;
}

void fitPrefixes(const known_types & types, table & owner, const column & to)
{
    for (index & each : owner.indexes) {
        for (key_part & part : each.parts) {
            if (part.column == to.name) {
                part.prefix =
                    each.unique && isHashed(types, to.type) ? 0 : fittedPrefix(types, part.prefix, to);
            }
        }
    }
    if (owner.key) {
        for (key_part & part : owner.key->parts) {
            part.prefix = part.column == to.name ? fittedPrefix(types, part.prefix, to) : part.prefix;
        }
    }
}

} // namespace

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
    const QList<trigger> & triggers = found.owner->triggers;
    if (std::any_of(triggers.begin(), triggers.end(),
                    [&](const trigger & each) { return each.counted.contains(old.name); })) {
        to.counted = false;
        lost.push_back({loss_kind::trigger, columnObject(found.owner->name, to.name)});
    }
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
    const bool counts = definition.counted || at.types.of(definition.type).counts();
    const column to{found.to, definition.type, definition.notNull || isKey, counts};
    why = checkChanged(at, found, to);
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
    at.change(*at.find(on), [&](table & changed) { fitPrefixes(at.types, changed, to); });
    return why;
}

} // namespace database
