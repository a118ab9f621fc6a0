#include "database/facts/normal_form.h"

#include "database/facts/known_types.h"
#include "database/facts/names.h"

#include <QStringBuilder>

#include <algorithm>

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

void nameTargets(catalogue & held, table & owner, const facts & known)
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

} // namespace

catalogue normalForm(catalogue held, const facts & known)
{
    const known_types types(known);
    for (auto & [key, owner] : held.tables) {
        if (known.scopes.uniqueNumbered.value) {
            numberIndexes(owner);
        }
        nameTargets(held, owner, known);
        for (column & each : owner.columns) {
            each.type = types.shown(each.type);
        }
        // No server tells it.
        for (index & each : owner.indexes) {
            each.madeByForeignKey = false;
            each.isConstraint = false;
        }
    }
    return held;
}

} // namespace database
