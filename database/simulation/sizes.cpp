#include "database/simulation/sizes.h"

#include "database/facts/known_types.h"

#include <algorithm>

namespace database {

namespace {

bool isLimited(const fact<int> & most, std::size_t count)
{
    return most.value > 0 && count > static_cast<std::size_t>(most.value);
}

bool hasLength(const understood_type & type)
{
    return type.row->fewestNumbers == 1 && type.row->isBounded;
}

constexpr int ShortText = 255; // longer ones take a second byte for their length

// Bytes that the values of a row take where they stand together.
int bytesOfRow(const known_types & types, const table & owner)
{
    int bytes = 0;
    int nullable = 0;
    for (const column & each : owner.columns) {
        const understood_type & type = types.of(each.type);
        nullable += each.notNull ? 0 : 1;
        if (type.row == nullptr) {
            continue;
        }
        const int ofLength = type.bytes() > ShortText ? 2 : 1;
        bytes += type.row->large ? type.row->bytesInRow : type.bytes() + (hasLength(type) ? ofLength : 0);
    }
    return bytes + (nullable + 7) / 8;
}

bool isHashedColumn(const known_types & types, const table & owner, const QString & name)
{
    return std::any_of(owner.columns.begin(), owner.columns.end(),
                       [&](const column & each) { return each.name == name && isHashed(types, each.type); });
}

// Bytes that a row takes of a page at most. Texts that may be long leave no more there than where they are.
int bytesOfPage(const known_types & types, const table & owner)
{
    constexpr int Header = 5;
    constexpr int Transaction = 13;
    constexpr int RowNumber = 6;
    constexpr int Elsewhere = 21;
    int bytes = Header + Transaction + (owner.key ? 0 : RowNumber);
    int nullable = 0;
    for (const column & each : owner.columns) {
        const understood_type & type = types.of(each.type);
        nullable += each.notNull ? 0 : 1;
        if (type.row == nullptr) {
            continue;
        }
        // What can differ in its length has a byte for that.
        const bool isLong = type.row->large || (type.row->isBounded && type.bytes() > ShortText);
        const bool differs = hasLength(type) || (type.row->isBounded && type.row->bytes > 1);
        bytes += isLong ? Elsewhere : type.bytes() + (differs ? 1 : 0);
    }
    return bytes + (nullable + 7) / 8;
}

} // namespace

int keptPrefix(const known_types & types, const QString & type, int prefix)
{
    return types.of(type).length() == prefix ? 0 : prefix;
}

int indexedPart(const known_types & types, const QString & type, int asked)
{
    const understood_type & found = types.of(type);
    const bool isWhole = asked == 0 && found.row != nullptr && found.row->mostIndexed == 0;
    if (isWhole && !isHashed(types, type)) {
        return 0;
    }
    const int most = found.row == nullptr ? 0
                     : found.row->mostIndexed > 0
                         ? found.row->mostIndexed
                         : types.known().keys.longest.value / std::max(found.row->bytes, 1);
    return asked == 0 || (found.row != nullptr && found.row->hasPrefixes) ? most
                                                                          : keptPrefix(types, type, asked);
}

int bytesInKey(const known_types & types, const QString & type, int prefix)
{
    const understood_type & found = types.of(type);
    if (prefix == 0) {
        const bool isTooLong = found.isLarge() && types.known().keys.prefixes.value;
        return isTooLong ? types.known().keys.longest.value + 1 : found.bytes();
    }
    return found.row == nullptr ? 0 : prefix * found.row->bytes;
}

bool isUnboundedInKey(const known_types & types, const QString & type)
{
    return types.known().keys.prefixes.value && !types.known().keys.hashesLong.value && isLarge(types, type);
}

refusal checkColumnCount(const facts & known, const QString & table, std::size_t columns)
{
    return known.limits.columnsCountedFirst.value && isLimited(known.limits.columns, columns)
               ? refusal{refusal_cause::too_many_columns, tableObject(table), false}
               : refusal();
}

refusal checkPartCount(const facts & known, const QString & object, std::size_t parts)
{
    return isLimited(known.limits.keyColumns, parts)
               ? refusal{refusal_cause::too_many_key_columns, object, false}
               : refusal();
}

refusal checkIndexCount(const facts & known, const table & owner, std::size_t more)
{
    return isLimited(known.limits.indexes, owner.indexes.size() + (owner.key ? 1 : 0) + more)
               ? refusal{refusal_cause::too_many_indexes, tableObject(owner.name), false}
               : refusal();
}

refusal checkStorage(const known_types & types, const table & owner, int newHashes)
{
    const limit_facts & limits = types.known().limits;
    const auto ofTable = std::count_if(owner.indexes.begin(), owner.indexes.end(), [&](const index & each) {
        return each.unique && isHashedColumn(types, owner, each.parts.front().column);
    });
    const QString object = tableObject(owner.name);
    if (isLimited(limits.columnsRead, owner.columns.size())) {
        return {refusal_cause::too_many_columns_read, object, false};
    }
    const int ofHashes = (static_cast<int>(ofTable) + newHashes) * types.known().keys.bytesOfHash.value;
    if (limits.row.value > 0 && bytesOfRow(types, owner) + ofHashes > limits.row.value) {
        return {refusal_cause::row_too_long, object, false};
    }
    if (!limits.columnsCountedFirst.value && isLimited(limits.columns, owner.columns.size())) {
        return {refusal_cause::too_many_columns, object, false};
    }
    return {};
}

refusal checkPage(const known_types & types, const table & owner)
{
    const int page = types.known().limits.page.value;
    return page > 0 && bytesOfPage(types, owner) >= page
               ? refusal{refusal_cause::row_over_page, tableObject(owner.name), false}
               : refusal();
}

} // namespace database
