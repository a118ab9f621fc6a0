// Keys and indexes of tables that are there, and columns that are changed in place: what no script of the
// export asks for, but people who repair what one left.

#include "database/simulation/changes.h"

#include "database/facts/known_types.h"
#include "database/simulation/column_keys.h"
#include "database/simulation/parts.h"
#include "database/simulation/sizes.h"

#include <algorithm>

namespace database {

namespace {

refusal syntaxOf(const identifier & table)
{
    return {refusal_cause::syntax, tableObject(table.text), false};
}

refusal readParts(const state & at, const table & owner, const add_key & asked, losses & lost,
                  std::vector<key_part> & parts)
{
    int bytes = 0;
    for (const named_part & each : asked.key.parts) {
        name_reader names(at.known, lost);
        const QString name = names.lookedFor(each.column);
        const column * const of = names.why() ? nullptr : at.findColumn(owner, name);
        if (of == nullptr) {
            return names.why()
                       ? names.why()
                       : refusal{refusal_cause::key_column_missing, columnObject(owner.name, name), false};
        }
        if (!hasOrder(at.types, of->type)) {
            return {refusal_cause::key_type_not_indexable, columnObject(owner.name, name), false};
        }
        const bool isUnbounded =
            at.known.keys.prefixes.value && each.prefix == 0 && isLarge(at.types, of->type);
        if (isUnbounded && (asked.isPrimary || !at.known.keys.hashesLong.value)) {
            return {refusal_cause::text_key_without_prefix, columnObject(owner.name, name), false};
        }
        bytes += isUnbounded ? 0 : bytesInKey(at.types, of->type, each.prefix);
        parts.push_back({of->name, keptPrefix(at.types, of->type, each.prefix)});
        const int longest = at.known.keys.longest.value;
        if (longest > 0 && bytes > longest && asked.isPrimary) {
            return {refusal_cause::key_too_long, tableObject(owner.name), false};
        }
    }
    return checkPartCount(at.known, tableObject(owner.name), parts.size());
}

QString nameOf(const state & at, const table & owner, const add_key & asked,
               const std::vector<key_part> & parts)
{
    if (!asked.key.name.text.isEmpty()) {
        return understood(at.known, asked.key.name, name_place::other).name;
    }
    if (!at.known.scopes.namesKeysAndSequences.value) {
        return at.known.scopes.uniqueNamedLikeColumn.value ? nameLikeColumn(at, owner, parts.front().column)
                                                           : QString();
    }
    const QString columns = asked.isPrimary ? QString() : columnsOf(parts).join(u'_');
    return at.freeName(owner.name, columns, QLatin1String(asked.isPrimary ? "pkey" : "key"));
}

// One without a name of its own came with a constraint.
bool isConstraintOn(const index & of, const QStringList & columns)
{
    return of.unique && (of.isConstraint || of.name.isEmpty()) && columnsOf(of.parts) == columns;
}

/// Whether the primary key of the table or a unique constraint has just these columns.
bool hasKeyOn(const table & owner, const QStringList & columns)
{
    return (owner.key && columnsOf(owner.key->parts) == columns) ||
           std::any_of(owner.indexes.begin(), owner.indexes.end(),
                       [&](const index & each) { return isConstraintOn(each, columns); });
}

void addPrimary(const state & at, table & owner, const QString & name, const std::vector<key_part> & parts)
{
    owner.key = primary_key{at.known.scopes.namesKeysAndSequences.value ? name : QString(), parts};
    for (column & each : owner.columns) {
        each.notNull = each.notNull || columnsOf(parts).contains(each.name);
    }
}

bool areAlike(const known_types & types, const QString & from, const QString & to)
{
    const type_word * const was = types.of(from).row;
    const type_word * const is = types.of(to).row;
    const auto isOf = [](const type_word * row, std::initializer_list<const char *> families) {
        return row != nullptr && std::any_of(families.begin(), families.end(), [row](const char * family) {
                   return QLatin1String(row->family) == QLatin1String(family);
               });
    };
    return isOf(is, {"string", "bpchar", "name"}) || mayRefer(types, from, to) ||
           (isOf(was, {"integer", "numeric", "real"}) && isOf(is, {"integer", "numeric", "real"}));
}

/// Whether values of a text or of bytes without a bound become such of the other type by themselves: only
/// those of bounded texts and bytes do.
bool areBothTexts(const known_types & types, const QString & from, const QString & to)
{
    const auto isText = [&types](const QString & type) {
        constexpr QLatin1String Families[] = {QLatin1String("varchar"), QLatin1String("char"),
                                              QLatin1String("nvarchar"), QLatin1String("nchar"),
                                              QLatin1String("binary")};
        return isLarge(types, type) ||
               std::find(std::begin(Families), std::end(Families), types.family(type)) != std::end(Families);
    };
    return (!isLarge(types, from) && !isLarge(types, to)) || (isText(from) && isText(to));
}

/// Whether something else is made of the column.
bool isFree(const state & at, const table & owner, const QString & column)
{
    return keyFrom(owner, column) == nullptr && keyTo(at, owner, column) == nullptr &&
           !isInKey(owner, column) &&
           std::none_of(owner.indexes.begin(), owner.indexes.end(),
                        [&](const index & each) { return columnsOf(each.parts).contains(column); });
}

refusal changeInPlace(state & at, const table & owner, const column & old, const alter_column & asked)
{
    const QString object = columnObject(owner.name, old.name);
    const QString name = old.name;
    const bool hasRows = at.rowsOf(owner) > 0;
    if (!asked.type.isEmpty()) {
        if (const refusal_cause cause = refusalOf(at.types, asked.type); cause != refusal_cause::none) {
            return {cause, object, false};
        }
        if (asked.isRestated && !areBothTexts(at.types, old.type, asked.type)) {
            return {refusal_cause::type_not_convertible, object, false};
        }
        if (!asked.isConverted && !areAlike(at.types, old.type, asked.type)) {
            return {refusal_cause::type_not_convertible, object, false};
        }
    }
    const bool isNarrowed = asked.notNull == true && !old.notNull;
    const bool isRetyped = !asked.type.isEmpty() && at.types.shown(asked.type) != at.types.shown(old.type);
    if (at.known.changes.alteredOnlyIfFree.value && (isNarrowed || isRetyped) && !isFree(at, owner, name)) {
        return {refusal_cause::column_bound, object, false};
    }
    if (asked.notNull == false && isInKey(owner, name)) {
        return {refusal_cause::column_of_key, object, false};
    }
    at.change(owner, [&](table & changed) {
        for (column & each : changed.columns) {
            if (each.name == name) {
                each.type = asked.type.isEmpty() ? each.type : asked.type;
                each.notNull = asked.notNull.value_or(each.notNull);
            }
        }
    });
    return isNarrowed && hasRows ? refusal{refusal_cause::nulls_lost, object, true} : refusal();
}

} // namespace

refusal apply(state & at, const add_key & asked, losses & lost)
{
    if (!at.known.foreignKeys.alterable.value || asked.key.parts.empty()) {
        return syntaxOf(asked.table);
    }
    name_reader names(at.known, lost);
    const QString on = names.table(asked.table);
    if (!asked.key.name.text.isEmpty()) {
        names.lookedFor(asked.key.name);
    }
    refusal why = names.why();
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    std::vector<key_part> parts;
    if (why = readParts(at, *owner, asked, lost, parts); why) {
        return why;
    }
    if (asked.isPrimary && owner->key) {
        return {refusal_cause::key_exists, tableObject(owner->name), false};
    }
    if (at.known.keys.indexedOnce.value && hasKeyOn(*owner, columnsOf(parts))) {
        return {refusal_cause::columns_keyed, columnObject(owner->name, parts.front().column), false};
    }
    const QString name = nameOf(at, *owner, asked, parts);
    const bool isNamed = !name.isEmpty() && (!asked.isPrimary || at.known.scopes.namesKeysAndSequences.value);
    if (isNamed && at.isIndexNameTaken(*owner, name)) {
        return {refusal_cause::index_exists, indexObject(name), false};
    }
    const bool hasRows = at.rowsOf(*owner) > 0;
    at.change(*owner, [&](table & changed) {
        if (asked.isPrimary) {
            addPrimary(at, changed, name, parts);
        } else {
            changed.indexes.push_back(
                {name, parts, true, false, at.known.scopes.namesKeysAndSequences.value});
        }
    });
    return hasRows ? refusal{refusal_cause::values_repeat, indexObject(name), true} : refusal();
}

refusal apply(state & at, const drop_key & asked, losses & lost)
{
    if (!at.known.changes.kindsNamed.value) {
        return syntaxOf(asked.table);
    }
    name_reader names(at.known, lost);
    const QString on = names.table(asked.table);
    refusal why = names.why();
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr || !owner->key) {
        return owner == nullptr ? why : refusal{refusal_cause::index_missing, tableObject(on), false};
    }
    const QStringList columns = columnsOf(owner->key->parts);
    const bool isCounted =
        std::any_of(owner->columns.begin(), owner->columns.end(),
                    [&](const column & each) { return each.counted && columns.contains(each.name); });
    if (isCounted && at.known.types.countedNeedsKey.value) {
        return {refusal_cause::counted_not_possible, tableObject(owner->name), false};
    }
    lost.push_back({loss_kind::key, tableObject(owner->name)});
    at.change(*owner, [](table & changed) { changed.key.reset(); });
    return {};
}

refusal apply(state & at, const drop_unique & asked, losses & lost)
{
    if (!at.known.changes.uniqueDroppedByColumns.value || asked.columns.empty()) {
        return syntaxOf(asked.table);
    }
    name_reader names(at.known, lost);
    const QString on = names.table(asked.table);
    QStringList columns;
    for (const named_part & each : asked.columns) {
        columns += names.lookedFor(each.column);
    }
    refusal why = names.why();
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    const auto isIt = [&](const index & each) { return isConstraintOn(each, columns); };
    if (std::none_of(owner->indexes.begin(), owner->indexes.end(), isIt)) {
        return {refusal_cause::unique_missing, columnObject(owner->name, columns.join(u',')), false};
    }
    at.change(*owner, [&](table & changed) { changed.indexes.removeIf(isIt); });
    return {};
}

refusal apply(state & at, const rename_index & asked, losses & lost)
{
    const bool isKnown =
        asked.table ? at.known.changes.kindsNamed.value : at.known.changes.indexesAltered.value;
    if (!isKnown) {
        return {refusal_cause::syntax, indexObject(asked.from.text), false};
    }
    name_reader names(at.known, lost);
    const QString on = asked.table ? names.table(*asked.table) : QString();
    const QString from = names.lookedFor(asked.from);
    const QString to = names.other(asked.to);
    refusal why = names.why();
    const table * owner = nullptr;
    if (!why) {
        owner = asked.table ? at.need(on, refusal_cause::table_missing, why) : at.ownerOfIndex(from);
    }
    const index * const found = owner == nullptr ? nullptr : at.findIndex(*owner, from);
    // A key is called an index as well.
    const bool isKey = !why && found == nullptr && !asked.table && at.known.changes.renamesAnyRelation.value;
    if (isKey && at.isTaken(from) && at.isTaken(to)) {
        return {refusal_cause::relation_exists, at.holderOf(to), false};
    }
    if (isKey && at.renameRelation(from, to)) {
        return {};
    }
    if (why || found == nullptr) {
        return why ? why : refusal{refusal_cause::renamed_index_missing, indexObject(from), false};
    }
    if (at.isIndexNameTaken(*owner, to)) {
        return {refusal_cause::index_exists, indexObject(to), false};
    }
    const QString old = found->name;
    at.change(*owner, [&](table & changed) {
        for (index & each : changed.indexes) {
            each.name = each.name == old ? to : each.name;
        }
    });
    return {};
}

refusal apply(state & at, const alter_column & asked, losses & lost)
{
    const bool isOfDefault = asked.type.isEmpty() && !asked.notNull;
    const change_facts & changes = at.known.changes;
    const bool isKnown = isOfDefault        ? at.known.foreignKeys.alterable.value
                         : asked.isRestated ? changes.columnsRestated.value
                                            : changes.columnsAltered.value;
    if (!isKnown) {
        return syntaxOf(asked.table);
    }
    name_reader names(at.known, lost);
    const QString on = names.table(asked.table);
    const QString name = names.lookedFor(asked.column);
    refusal why = names.why();
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    const column * const old = at.findColumn(*owner, name);
    return old == nullptr ? refusal{refusal_cause::changed_column_missing, columnObject(on, name), false}
                          : changeInPlace(at, *owner, *old, asked);
}

} // namespace database
