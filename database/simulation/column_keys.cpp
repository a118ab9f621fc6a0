#include "database/simulation/column_keys.h"

#include <algorithm>

namespace database {

namespace {

bool isIn(const state & at, const QStringList & columns, const QString & column)
{
    return std::any_of(columns.begin(), columns.end(),
                       [&](const QString & each) { return isSameName(at.known, each, column); });
}

} // namespace

const foreign_key * keyFrom(const table & owner, const QString & column)
{
    const auto found = std::find_if(owner.foreignKeys.begin(), owner.foreignKeys.end(),
                                    [&](const foreign_key & key) { return key.columns.contains(column); });
    return found == owner.foreignKeys.end() ? nullptr : &*found;
}

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

} // namespace database
