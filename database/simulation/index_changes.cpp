#include "database/simulation/changes.h"

#include "database/facts/known_types.h"
#include "database/simulation/parts.h"
#include "database/simulation/sizes.h"

#include <algorithm>

namespace database {

namespace {

// What is in the place of a column but has the same value for each row.
bool isIndexedLiteral(const facts & known, const identifier & written)
{
    return known.names.literalsIndexed.value && written.quote.isNull() && isLiteral(written.text);
}

bool isFunction(const facts & known, const identifier & written)
{
    const auto words = known.names.functions.value;
    return written.quote.isNull() &&
           std::find(words.begin(), words.end(), written.text.toLower()) != words.end();
}

refusal missingColumn(const facts & known, const table & owner, const QString & name)
{
    const bool isSystem = isSystemColumn(known, name);
    return {isSystem ? refusal_cause::system_column_indexed : refusal_cause::key_column_missing,
            columnObject(owner.name, name), false};
}

// What speaks against so many characters of the column in an index.
refusal_cause causeAgainst(const state & at, const column & of, int prefix)
{
    if (prefix > 0 && !at.known.keys.prefixes.value) {
        return refusal_cause::syntax;
    }
    if (prefix > 0 && !takesPrefix(at.types, of.type, prefix)) {
        return refusal_cause::prefix_not_possible;
    }
    const bool isTooMuch = prefix == 0 && isUnboundedInKey(at.types, of.type);
    return isTooMuch ? refusal_cause::text_key_without_prefix : refusal_cause::none;
}

refusal makeParts(const state & at, const table & owner, const create_index & asked, losses & lost,
                  index & made)
{
    for (const named_part & part : asked.parts) {
        if (isIndexedLiteral(at.known, part.column)) {
            made.parts.push_back({});
            continue;
        }
        name_reader names(at.known, lost);
        const QString name = names.lookedFor(part.column);
        const column * const of = at.findColumn(owner, name);
        if (names.why() || of == nullptr) {
            return names.why() ? names.why() : missingColumn(at.known, owner, name);
        }
        if (const refusal_cause cause = causeAgainst(at, *of, part.prefix); cause != refusal_cause::none) {
            return {cause, columnObject(owner.name, of->name), false};
        }
        made.parts.push_back(
            {of->name, asked.unique ? part.prefix : indexedPart(at.types, of->type, part.prefix)});
        if (part.prefix == 0 && made.parts.back().prefix > 0) {
            lost.push_back({loss_kind::index_cut, indexObject(made.name)});
        }
    }
    return {};
}

// Several columns have to fit together, each of which can be in the index by its beginning.
refusal checkLength(const state & at, const table & owner, const index & made)
{
    const int longest = at.known.keys.longest.value;
    if (longest == 0 || made.unique || made.parts.size() < 2) {
        return {};
    }
    int bytes = 0;
    for (const key_part & part : made.parts) {
        const column * const of = at.findColumn(owner, part.column);
        bytes += of == nullptr ? 0 : bytesInKey(at.types, of->type, part.prefix);
    }
    return bytes > longest ? refusal{refusal_cause::key_too_long, indexObject(made.name), false} : refusal();
}

/// Whether a key or an index of the table has just these columns.
bool hasIndexOn(const table & owner, const QStringList & columns)
{
    return (owner.key && columnsOf(owner.key->parts) == columns) ||
           std::any_of(owner.indexes.begin(), owner.indexes.end(),
                       [&](const index & each) { return columnsOf(each.parts) == columns; });
}

// What the table has against another index, whatever its name.
refusal checkIndexed(const state & at, const table & owner, const index & made)
{
    for (const key_part & part : made.parts) {
        if (!part.column.isEmpty() && !hasOrder(at.types, at.findColumn(owner, part.column)->type)) {
            return {refusal_cause::type_not_indexable, columnObject(owner.name, part.column), false};
        }
    }
    const bool isTwice = at.known.keys.indexedOnce.value && hasIndexOn(owner, columnsOf(made.parts));
    return isTwice ? refusal{refusal_cause::columns_indexed,
                             columnObject(owner.name, made.parts.front().column), false}
                   : checkIndexCount(at.known, owner, 1);
}

// Puts it in the place of one that a foreign key had made for itself.
void putIndex(state & at, const table & owner, const index & made)
{
    const auto givesWay = [&](const index & each) {
        return each.madeByForeignKey && columnsOf(each.parts) == columnsOf(made.parts);
    };
    if (std::none_of(owner.indexes.begin(), owner.indexes.end(), givesWay)) {
        at.addIndex(owner, made);
        return;
    }
    at.change(owner, [&](table & changed) {
        changed.indexes.removeIf(givesWay);
        changed.indexes.push_back(made);
    });
}

bool mayHoldLongValues(const state & at, const table & owner, const index & made)
{
    return !at.known.changes.longValuesInIndex.value && at.rowsOf(owner) > 0 &&
           std::any_of(made.parts.begin(), made.parts.end(), [&](const key_part & part) {
               const column * const of = at.findColumn(owner, part.column);
               return of != nullptr && isLarge(at.types, of->type) && !at.isEmpty(owner, part.column);
           });
}

// Whether a foreign key, of the table or to it, could do without the index.
bool isNeeded(const state & at, const table & owner, const index & asked)
{
    const QString first = asked.parts.front().column;
    const bool hasOther = (owner.key && owner.key->parts.front().column == first) ||
                          std::any_of(owner.indexes.begin(), owner.indexes.end(), [&](const index & each) {
                              return each.name != asked.name && each.parts.front().column == first;
                          });
    if (hasOther) {
        return false;
    }
    const bool isFrom = std::any_of(owner.foreignKeys.begin(), owner.foreignKeys.end(),
                                    [&](const foreign_key & key) { return key.columns.front() == first; });
    const auto referrers = at.referrersOf(owner);
    return isFrom || std::any_of(referrers.begin(), referrers.end(), [&](const table * other) {
               return std::any_of(other->foreignKeys.begin(), other->foreignKeys.end(),
                                  [&](const foreign_key & key) {
                                      return at.refersTo(key, owner) &&
                                             isSameName(at.known, key.targetColumns.front(), first);
                                  });
           });
}

/// Has `names` read the columns of the index; whether a part of it is a function.
bool readParts(const facts & known, const create_index & asked, name_reader & names)
{
    bool hasFunction = false;
    for (const named_part & part : asked.parts) {
        if (isIndexedLiteral(known, part.column)) {
            continue;
        }
        const bool isCall = isFunction(known, part.column);
        hasFunction = hasFunction || isCall;
        if (!isCall) {
            names.lookedFor(part.column);
        }
    }
    return hasFunction;
}

// Gives `made` its parts, and says what is wrong with them, its name or its length, whichever a database sees
// first.
refusal makeIndex(const state & at, const table & owner, const create_index & asked, losses & lost,
                  index & made)
{
    refusal why = makeParts(at, owner, asked, lost, made);
    if (!why) {
        why = checkNameLength(at.known, asked.index);
    }
    return why ? why : checkLength(at, owner, made);
}

// TABLE.INDEX, where that is how a dropped index is named.
drop_index partedAtPoint(const drop_index & written, const facts & known)
{
    const qsizetype point = written.index.text.lastIndexOf(u'.');
    if (!known.names.droppedIndexNamesTable.value || written.table || point < 0) {
        return written;
    }
    drop_index parted = written;
    parted.table = identifier{written.index.text.first(point), written.index.quote};
    parted.index.text = written.index.text.sliced(point + 1);
    return parted;
}

} // namespace

refusal apply(state & at, const create_index & asked, losses & lost)
{
    name_reader names(at.known, lost);
    index made;
    made.unique = asked.unique;
    made.name = names.lookedFor(asked.index, name_place::index);
    const QString on = names.table(asked.table);
    const bool isPlain = asked.table.quote.isNull() && isQualified(at.known, asked.table.text);
    if (isPlain && !at.known.names.indexedNameSchema.value) {
        return {refusal_cause::syntax, tableObject(asked.table.text), false};
    }
    const bool hasFunction = readParts(at.known, asked, names);
    refusal why = names.why();
    if (!why && asked.parts.empty()) {
        why = {refusal_cause::syntax, indexObject(made.name), false};
    }
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    if (hasFunction) {
        return {refusal_cause::function_indexed, indexObject(made.name), false};
    }
    if (why = makeIndex(at, *owner, asked, lost, made); why) {
        return why;
    }
    if (at.isIndexNameTaken(*owner, made.name)) {
        return asked.ifNotExists ? refusal()
                                 : refusal{refusal_cause::index_exists, indexObject(made.name), false};
    }
    if (why = checkIndexed(at, *owner, made); why) {
        return why;
    }
    const bool isMaybeRefused = mayHoldLongValues(at, *owner, made);
    putIndex(at, *owner, made);
    return isMaybeRefused ? refusal{refusal_cause::value_too_long_for_index, indexObject(made.name), true}
                          : refusal();
}

refusal apply(state & at, const drop_index & written, losses & lost)
{
    name_reader names(at.known, lost);
    const drop_index asked = partedAtPoint(written, at.known);
    const QString name = names.lookedFor(asked.index, name_place::index);
    const QString on = asked.table ? names.table(*asked.table) : QString();
    refusal why = names.why();
    if (why) {
        return why;
    }
    const table * const owner =
        asked.table ? at.need(on, refusal_cause::table_missing, why) : at.ownerOfIndex(name);
    if (why) {
        return why;
    }
    const index * const found = owner == nullptr ? nullptr : at.findIndex(*owner, name);
    if (found == nullptr) {
        return asked.ifExists ? refusal() : refusal{refusal_cause::index_missing, indexObject(name), false};
    }
    if (found->isConstraint || (at.known.foreignKeys.makesIndex.value && isNeeded(at, *owner, *found))) {
        return {at.isCopied(*owner) ? refusal_cause::index_needed_copied : refusal_cause::index_needed,
                indexObject(found->name), false};
    }
    const QString gone = found->name;
    at.change(*owner, [&](table & changed) {
        changed.indexes.removeIf([&](const index & each) { return each.name == gone; });
    });
    return {};
}

} // namespace database
