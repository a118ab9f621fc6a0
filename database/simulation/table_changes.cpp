#include "database/simulation/changes.h"
#include "database/simulation/parts.h"

#include <QStringBuilder>

#include <algorithm>

namespace database {

refusal apply(state & at, const drop_table & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString name = names.table(asked.table, name_place::table);
    refusal why = names.why();
    const table * const gone = why ? nullptr : at.need(name, refusal_cause::dropped_table_missing, why);
    if (gone == nullptr) {
        return asked.ifExists && why.cause == refusal_cause::dropped_table_missing ? refusal() : why;
    }
    bool hasRows = false;
    for (const table * other : at.referrersOf(*gone)) {
        if (other == gone) {
            // Its own rows go with it, but the database counts while they do.
            hasRows = hasRows || (!at.known.foreignKeys.keepsTarget.value && at.rowsOf(*gone) > 0);
            continue;
        }
        if (at.known.foreignKeys.keepsTarget.value) {
            const auto key = std::find_if(other->foreignKeys.begin(), other->foreignKeys.end(),
                                          [&](const foreign_key & each) { return at.refersTo(each, *gone); });
            return {refusal_cause::table_referred_to, foreignKeyObject(key->name), false};
        }
        hasRows = hasRows || at.rowsOf(*other) > 0;
    }
    lost.push_back({loss_kind::rows, tableObject(gone->name)});
    at.remove(*gone);
    return hasRows ? refusal{refusal_cause::rows_referred_to, tableObject(name), true} : refusal();
}

refusal apply(state & at, const rename_table & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString to = names.newTable(asked.to);
    const QString from = names.table(asked.from);
    refusal why = names.why();
    if (why) {
        return why;
    }
    if (at.known.changes.renamesAnyRelation.value && at.find(from) == nullptr && !at.isTaken(to) &&
        at.renameRelation(from, to)) {
        lost.push_back({loss_kind::other_renamed, from});
        return {};
    }
    if (at.known.changes.renamesAnyRelation.value && at.isTaken(from) && at.isTaken(to)) {
        return {refusal_cause::relation_exists, at.holderOf(to), false};
    }
    const table * const renamed = at.need(from, refusal_cause::table_missing, why);
    if (renamed == nullptr) {
        return why;
    }
    if (at.isTaken(to)) {
        return {refusal_cause::relation_exists, at.holderOf(to), false};
    }
    if (isKept(at.known, to)) {
        return {refusal_cause::name_kept, tableObject(to), false};
    }
    const auto follow = [&](foreign_key & key) { key.target = at.refersTo(key, *renamed) ? to : key.target; };
    for (const table * other : at.referrersOf(*renamed)) {
        if (other != renamed) {
            at.change(*other, [&](table & owner) {
                std::for_each(owner.foreignKeys.begin(), owner.foreignKeys.end(), follow);
            });
        }
    }
    at.change(*renamed, [&](table & owner) {
        std::for_each(owner.foreignKeys.begin(), owner.foreignKeys.end(), follow);
        owner.name = to;
    });
    return {};
}

refusal apply(state & at, const create_sequence & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString name = names.other(asked.sequence);
    if (names.why()) {
        return names.why();
    }
    if (at.isTaken(name)) {
        return {refusal_cause::relation_exists, u"sequence " % name, false};
    }
    at.addSequence({name, {}});
    return {};
}

refusal apply(state & at, const create_trigger & asked, losses & lost)
{
    name_reader names(at.known, lost);
    const QString name = names.other(asked.trigger);
    const QString on = names.table(asked.table);
    const QStringList counted =
        at.known.types.countedByTrigger.value ? names.others(asked.columns) : QStringList();
    refusal why = names.why();
    const table * const owner = why ? nullptr : at.need(on, refusal_cause::table_missing, why);
    if (owner == nullptr) {
        return why;
    }
    if (const table * const other = at.ownerOfTrigger(name); other != nullptr && other != owner) {
        return {refusal_cause::trigger_exists, u"trigger " % name, false};
    }
    at.change(*owner, [&](table & changed) {
        changed.triggers.removeIf([&](const trigger & each) { return each.name == name; });
        changed.triggers.push_back({name, counted});
        for (column & each : changed.columns) {
            each.counted = each.counted || counted.contains(each.name);
        }
    });
    return {};
}

} // namespace database
