#include "database/simulation/parts.h"

#include "database/facts/known_types.h"

#include <QStringBuilder>

#include <algorithm>

namespace database {

QString name_reader::read(const identifier & written, name_place place)
{
    const understood_name found = understood(m_known, written, place);
    if (!m_why && found.refused != refusal_cause::none) {
        const bool isTable = place == name_place::table;
        m_why = {found.refused, isTable ? tableObject(written.text) : written.text, false};
    }
    if (found.isCut) {
        m_lost.push_back({loss_kind::name_cut, written.text});
    }
    return found.name;
}

QString name_reader::newTable(const identifier & written)
{
    const QString name = table(written);
    if (m_why.cause == refusal_cause::schema_missing) {
        m_why.cause = refusal_cause::syntax;
    }
    return name;
}

QString name_reader::lookedFor(const identifier & written)
{
    const bool isAfterwards = !m_known.names.lengthReadFirst.value && tooLong(m_known, written);
    return isAfterwards ? written.text : other(written);
}

QStringList name_reader::others(const std::vector<identifier> & written)
{
    QStringList names;
    for (const identifier & each : written) {
        names += other(each);
    }
    return names;
}

refusal tooLong(const facts & known, const identifier & written)
{
    const bool isTooLong =
        understood(known, written, name_place::other).refused == refusal_cause::name_too_long;
    return isTooLong ? refusal{refusal_cause::name_too_long, written.text, false} : refusal();
}

bool isSystemColumn(const facts & known, const QString & name)
{
    const auto system = known.names.system.value;
    return std::find(system.begin(), system.end(), name) != system.end();
}

bool countsByType(const facts & known, const column_definition & asked)
{
    const QLatin1String counted = known.types.countedType.value;
    return !counted.isEmpty() && partsOf(asked.type).word == counted;
}

refusal checkColumn(const state & at, const table & owner, const column_definition & asked,
                    const QString & name)
{
    if (const refusal_cause cause = refusalOf(at.known, asked.type); cause != refusal_cause::none) {
        return {cause, columnObject(owner.name, name), false};
    }
    if (at.findColumn(owner, name) != nullptr) {
        return {refusal_cause::column_exists, columnObject(owner.name, name), false};
    }
    if (isSystemColumn(at.known, name)) {
        return {refusal_cause::system_column_added, columnObject(owner.name, name), false};
    }
    const QLatin1String countable = at.known.types.countableType.value;
    const bool isOfOtherType = asked.type.compare(countable, Qt::CaseInsensitive) != 0;
    if (asked.counted && !countable.isEmpty() && (!asked.primaryKey || isOfOtherType)) {
        return {refusal_cause::counted_not_possible, columnObject(owner.name, name), false};
    }
    return {};
}

column columnOf(const facts & known, const column_definition & asked, const QString & name)
{
    const bool isCounted = countsByType(known, asked);
    return {name, asked.type, asked.notNull || isCounted, asked.counted || isCounted};
}

index uniqueIndex(const state & at, const table & owner, const QString & column, const QSet<QString> & taken)
{
    index made;
    made.unique = true;
    made.parts = {{column, 0}};
    if (at.known.scopes.namesKeysAndSequences.value) {
        made.name = at.freeName(impliedName(at.known, owner.name, column, QLatin1String("key")), taken);
    } else if (at.known.scopes.uniqueNamedLikeColumn.value) {
        made.name = column;
        for (int number = 2; at.findIndex(owner, made.name) != nullptr; ++number) {
            made.name = column % u'_' % QString::number(number);
        }
    }
    return made;
}

QStringList columnsOf(const std::vector<key_part> & parts)
{
    QStringList names;
    for (const key_part & part : parts) {
        names += part.column;
    }
    return names;
}

int keptPrefix(const QString & type, int prefix)
{
    const declared_type parts = partsOf(type);
    return parts.word == QLatin1String("VARCHAR") && parts.length() == prefix ? 0 : prefix;
}

} // namespace database
