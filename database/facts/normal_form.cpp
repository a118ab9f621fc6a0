#include "database/facts/normal_form.h"

#include "database/facts/names.h"

#include <QStringBuilder>

#include <algorithm>
#include <set>

namespace database {

namespace {

// SQLite keeps a key of one INTEGER column without an index, so that takes no number; one of several columns
// stands after all columns, so it takes the last.
bool keyTakesNumber(const table & owner)
{
    if (!owner.key) {
        return false;
    }
    const auto & parts = owner.key->parts;
    const auto only = std::find_if(owner.columns.begin(), owner.columns.end(), [&parts](const column & held) {
        return held.name == parts.front().column;
    });
    return parts.size() == 1 && only != owner.columns.end() &&
           only->type.compare(u"INTEGER", Qt::CaseInsensitive) != 0;
}

void numberIndexes(table & owner)
{
    int number = keyTakesNumber(owner) ? 1 : 0;
    for (index & held : owner.indexes) {
        if (held.unique && held.name.isEmpty()) {
            held.name = u"sqlite_autoindex_" % owner.name % u'_' % QString::number(++number);
        }
    }
}

void nameTargets(const catalogue & held, table & owner, const facts & known)
{
    for (foreign_key & key : owner.foreignKeys) {
        const auto found = held.tables.find(foldedTable(known, key.target));
        if (found == held.tables.end()) {
            continue;
        }
        for (QString & target : key.targetColumns) {
            for (const column & there : found->second.columns) {
                target = isSameName(known, there.name, target) ? there.name : target;
            }
        }
    }
}

/// Brings a table into normal form that is one of those, or of the same names as one of those, in `held`.
void normalise(table & owner, const catalogue & held, const known_types & types)
{
    if (types.known().scopes.uniqueNumbered.value) {
        numberIndexes(owner);
    }
    nameTargets(held, owner, types.known());
    for (column & each : owner.columns) {
        each.type = types.shown(each.type);
    }
    // No server tells it.
    for (index & each : owner.indexes) {
        each.madeByForeignKey = false;
        each.isConstraint = false;
    }
}

bool isAlikeIn(const catalogue & other, const QString & key, const table & owner)
{
    const auto found = other.tables.find(key);
    return found != other.tables.end() && found->second == owner;
}

// Those that are not the same in both. What a foreign key refers to has a say in how it is shown.
std::set<QString> keysOfDiffering(const catalogue & one, const catalogue & other, const facts & known)
{
    std::set<QString> keys;
    for (const auto & [key, owner] : one.tables) {
        if (!isAlikeIn(other, key, owner)) {
            keys.insert(key);
        }
    }
    for (const auto & [key, owner] : other.tables) {
        if (!one.tables.contains(key)) {
            keys.insert(key);
        }
    }
    const std::set<QString> others = keys;
    for (const auto & [key, owner] : one.tables) {
        const QList<foreign_key> & references = owner.foreignKeys;
        if (std::any_of(references.begin(), references.end(), [&](const foreign_key & each) {
                return others.contains(foldedTable(known, each.target));
            })) {
            keys.insert(key);
        }
    }
    return keys;
}

catalogue partOf(const catalogue & whole, const std::set<QString> & keys, const known_types & types)
{
    catalogue part;
    part.sequences = whole.sequences;
    for (const QString & key : keys) {
        const auto found = whole.tables.find(key);
        if (found != whole.tables.end()) {
            normalise(part.tables[key] = found->second, whole, types);
        }
    }
    return part;
}

} // namespace

catalogue normalForm(catalogue held, const known_types & types)
{
    for (auto & [key, owner] : held.tables) {
        normalise(owner, held, types);
    }
    return held;
}

catalogue_parts differingParts(const catalogue & first, const catalogue & second, const known_types & types)
{
    const std::set<QString> keys = keysOfDiffering(first, second, types.known());
    return {partOf(first, keys, types), partOf(second, keys, types)};
}

} // namespace database
