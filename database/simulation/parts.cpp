#include "database/simulation/parts.h"

#include "database/facts/known_types.h"
#include "database/simulation/sizes.h"

#include <QStringBuilder>

#include <algorithm>

namespace database {

bool isLookedUp(refusal_cause cause)
{
    return cause == refusal_cause::schema_missing || cause == refusal_cause::database_named ||
           cause == refusal_cause::table_missing;
}

QString name_reader::read(const identifier & written, name_place place)
{
    const understood_name found = understood(m_known, written, place);
    // What is wrong with the text is told before what its names stand for is looked at.
    const bool isReplaced = isLookedUp(m_why.cause) && isReadFirst(m_known, found.refused);
    if ((!m_why || isReplaced) && found.refused != refusal_cause::none) {
        const bool isTable = isOfTable(place);
        m_why = {found.refused, isTable ? tableObject(written.text) : written.text, false};
    }
    if (found.isCut) {
        m_lost.push_back({loss_kind::name_cut, written.text});
    }
    return found.name;
}

QString name_reader::table(const identifier & written, name_place place)
{
    const bool hadNone = !m_why;
    const QString name = read(written, place);
    if (hadNone && m_why.cause == refusal_cause::schema_missing &&
        m_known.names.missingSchemaIsMissingTable.value) {
        m_why.cause = refusal_cause::table_missing;
    }
    return name;
}

QString name_reader::newTable(const identifier & written)
{
    const QString name = read(written, name_place::named_table);
    const bool isQualifiedName = written.quote.isNull() && isQualified(m_known, written.text);
    if (isQualifiedName && (!m_why || m_why.object == tableObject(written.text))) {
        m_why = {refusal_cause::syntax, tableObject(written.text), false};
    }
    return name;
}

QString name_reader::newColumn(const identifier & written)
{
    const bool hadNone = !m_why;
    const QString name = other(written);
    const bool namesTable =
        m_known.names.columnsNameTable.value && written.quote.isNull() && isQualified(m_known, written.text);
    if (hadNone && m_why && namesTable) {
        m_why.cause = written.text.count(u'.') == 1 ? refusal_cause::table_name_in_column
                                                    : refusal_cause::database_name_in_column;
    }
    return name;
}

QString name_reader::lookedFor(const identifier & written, name_place place)
{
    const bool isAfterwards = !m_known.names.lengthReadFirst.value && checkNameLength(m_known, written);
    return isAfterwards ? written.text : read(written, place);
}

QStringList name_reader::allLookedFor(const std::vector<identifier> & written)
{
    QStringList names;
    for (const identifier & each : written) {
        names += lookedFor(each);
    }
    return names;
}

QStringList name_reader::others(const std::vector<identifier> & written)
{
    QStringList names;
    for (const identifier & each : written) {
        names += other(each);
    }
    return names;
}

refusal checkNameLength(const facts & known, const identifier & written)
{
    if (isShort(known, written.text)) {
        return {};
    }
    const bool isTooLong =
        understood(known, written, name_place::other).refused == refusal_cause::name_too_long;
    return isTooLong ? refusal{refusal_cause::name_too_long, written.text, false} : refusal();
}

bool isKept(const facts & known, const QString & table)
{
    const QLatin1String kept = known.names.keptBeginning.value;
    return !kept.isEmpty() && table.startsWith(kept, Qt::CaseInsensitive);
}

bool endsInBlank(const facts & known, const QString & name)
{
    return !known.names.mayEndInBlank.value && name.endsWith(u' ');
}

bool isSystemColumn(const facts & known, const QString & name)
{
    const auto system = known.names.system.value;
    return std::any_of(system.begin(), system.end(),
                       [&name](QLatin1String each) { return each.size() == name.size() && each == name; });
}

refusal_cause readType(const facts & known, const understood_type & type, const column_definition & asked)
{
    if (type.refused != refusal_cause::none && isReadFirst(known, type.refused)) {
        return type.refused;
    }
    const bool cannotCount = asked.counted && type.row != nullptr && type.counts();
    if (cannotCount || (asked.counted && isReadFirst(known, refusal_cause::specifier_impossible) &&
                        (type.row == nullptr || !type.row->countable))) {
        return cannotCount ? refusal_cause::syntax : refusal_cause::specifier_impossible;
    }
    return refusal_cause::none;
}

refusal checkColumnName(const state & at, const table & owner, const QString & name)
{
    refusal_cause cause = refusal_cause::none;
    if (endsInBlank(at.known, name)) {
        cause = refusal_cause::column_name_ends_blank;
    } else if (at.findColumn(owner, name) != nullptr) {
        cause = refusal_cause::column_exists;
    } else if (isSystemColumn(at.known, name)) {
        cause = refusal_cause::system_column_added;
    }
    return cause == refusal_cause::none ? refusal() : refusal{cause, columnObject(owner.name, name), false};
}

refusal checkColumnType(const state & at, const table & owner, const understood_type & type,
                        const column_definition & asked, const QString & name)
{
    if (type.refused != refusal_cause::none) {
        return {type.refused, columnObject(owner.name, name), false};
    }
    const QLatin1String countable = at.known.types.countableType.value;
    const auto isOfOtherType = [&] { return asked.type.compare(countable, Qt::CaseInsensitive) != 0; };
    if (asked.counted && !countable.isEmpty() && (!asked.primaryKey || isOfOtherType())) {
        return {refusal_cause::counted_not_possible, columnObject(owner.name, name), false};
    }
    return {};
}

column columnOf(const known_types & types, const understood_type & type, const column_definition & asked,
                const QString & name)
{
    const bool isCounted = type.counts();
    return {name, types.shared(asked.type), asked.notNull || isCounted, asked.counted || isCounted};
}

QString nameLikeColumn(const state & at, const table & owner, const QString & column)
{
    // That of the primary key, which no other index has.
    const auto isKept = [](const QString & name) {
        return name.compare(u"primary", Qt::CaseInsensitive) == 0;
    };
    QString name = column;
    for (int number = 2; isKept(name) || at.findIndex(owner, name) != nullptr; ++number) {
        name = column % u'_' % QString::number(number);
    }
    return name;
}

index uniqueIndex(const state & at, const table & owner, const QString & name, const QSet<QString> & taken)
{
    index made;
    made.unique = true;
    made.isConstraint = at.known.scopes.namesKeysAndSequences.value;
    const column * const of = at.findColumn(owner, name);
    const bool isPart = of != nullptr && !isHashed(at.types, of->type);
    made.parts = {{name, isPart ? indexedPart(at.types, of->type, 0) : 0}};
    if (at.known.scopes.namesKeysAndSequences.value) {
        made.name = at.freeName(owner.name, name, QLatin1String("key"), taken);
    } else if (at.known.scopes.uniqueNamedLikeColumn.value) {
        made.name = nameLikeColumn(at, owner, name);
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

bool beginsWith(const std::vector<key_part> & parts, const QStringList & columns)
{
    return parts.size() >= static_cast<std::size_t>(columns.size()) &&
           std::equal(columns.begin(), columns.end(), parts.begin(),
                      [](const QString & column, const key_part & part) { return column == part.column; });
}

} // namespace database
