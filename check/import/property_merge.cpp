#include "check/import/property_merge.h"

#include "database/facts/names.h"
#include "model/column_list.h"
#include "model/property.h"
#include "model/property_type.h"

#include <QSet>

#include <algorithm>

namespace check {

QStringList property_merge::columnsOf(const model::property & property)
{
    QStringList columns;
    const int count = property.getColumnNameCount();
    if (count > 1 && !property.isIdentifier() && !property.hasRelationship()) {
        return {property.getColumnName()}; // scripts take the whole for one name
    }
    for (int i = 0; i < count; ++i) {
        columns += property.getColumnName().isEmpty() ? property.getName() : property.getColumnName(i);
    }
    return columns;
}

QStringList property_merge::storedColumnsOf(const model::property & property) const
{
    QStringList columns = columnsOf(property);
    for (QString & each : columns) {
        const database::column * const found = column(each);
        each = found ? found->name : each;
    }
    return columns;
}

bool property_merge::hasColumns(const QStringList & columns) const
{
    return !columns.isEmpty() && std::all_of(columns.begin(), columns.end(), [this](const QString & each) {
        return column(each) != nullptr;
    });
}

bool property_merge::isUnwritten(const QStringList & columns) const
{
    return m_meant != nullptr && std::none_of(columns.begin(), columns.end(), [this](const QString & each) {
               return meantColumn(each) != nullptr;
           });
}

void property_merge::name(model::property & property, const QString & name, const QStringList & columns)
{
    property.setName(name);
    property.setColumnName(columns == QStringList(name) ? QString() : columns.join(model::ColumnSeparator));
}

// That of a unique column is no matter of a script's, which gives it no more than the word.
bool property_merge::isInKey(const QString & column) const
{
    const QStringList key = keyColumnsOf(m_table);
    return isIndexed(m_known, m_table, column) ||
           std::any_of(key.begin(), key.end(),
                       [&](const QString & each) { return database::isSameName(m_known, each, column); });
}

bool property_merge::keepsType(const model::property & property, const QStringList & columns) const
{
    const std::shared_ptr<model::property_type> type = property.getType();
    if (!type) {
        return false;
    }
    for (int i = 0; i < columns.size(); ++i) {
        const QString found = column(columns[i])->type;
        const database::column * const meant = meantColumn(columns[i]);
        const QString forced = property.getForceSqlType();
        const QString shown = type->getEnumeration()
                                  ? m_import.types.shownOfEnumeration(forced)
                                  : m_import.types.shown({type->getPrimitiveType(i), forced});
        if (found != shown && (meant == nullptr || meant->type != found)) {
            return false;
        }
    }
    return true;
}

void property_merge::chooseType(model::property & property, const QStringList & columns) const
{
    // A forced type is that of all columns: where these have several, each takes the nearest one.
    QSet<QString> forced;
    for (const QString & each : columns) {
        forced += m_import.types.typeFor(column(each)->type, isInKey(each)).forced;
    }
    const bool canForce = forced.size() == 1;
    QStringList cppTypes;
    for (const QString & each : columns) {
        cppTypes += m_import.types.typeFor(column(each)->type, canForce && isInKey(each)).cppType;
    }
    const bool isOne = std::all_of(cppTypes.begin(), cppTypes.end(),
                                   [&](const QString & each) { return each == cppTypes.front(); });
    property.setType(std::make_shared<model::property_type>(isOne ? cppTypes.mid(0, 1) : cppTypes));
    property.setForceSqlType(canForce ? *forced.begin() : QString());
    property.setAutoIncrement({});
}

void property_merge::settleCounter(model::property & property, const QStringList & columns) const
{
    const bool isCounted = std::all_of(columns.begin(), columns.end(),
                                       [this](const QString & each) { return column(each)->counted; });
    if (!property.isIdentifier() || property.isNumber(true, -1) == isCounted) {
        return;
    }
    property.setAutoIncrement({});
    if (property.isNumber(true, -1) && !isCounted) {
        property.setAutoIncrement(false);
    }
}

void property_merge::settleFlags(model::property & property, const QString & name) const
{
    const database::column & found = *column(name);
    const database::column * const meant = meantColumn(name);
    if (!meant || meant->notNull != found.notNull) {
        property.setAllowNull(!found.notNull);
    }
    const bool isUniqueThere = isUnique(m_known, m_table, name);
    if (!meant || isUnique(m_known, *m_meant, name) != isUniqueThere) {
        property.setUnique(isUniqueThere);
    }
    const bool isIndexedThere = isIndexed(m_known, m_table, name);
    if (!meant || isIndexed(m_known, *m_meant, name) != isIndexedThere) {
        property.setIndex(isIndexedThere);
    }
}

void property_merge::settle(model::property & property, const QStringList & columns, bool isKey) const
{
    property.setIdentifier(isKey);
    if (!keepsType(property, columns)) {
        chooseType(property, columns);
    }
    settleCounter(property, columns);
    if (!isKey && columns.size() == 1) {
        settleFlags(property, columns.constFirst());
    }
}

// Scripts give such a column neither NOT NULL nor UNIQUE, so a column without them says nothing.
void property_merge::settleRelation(model::property & property) const
{
    const QStringList columns = storedColumnsOf(property);
    const bool isNotNull = std::all_of(columns.begin(), columns.end(), [this](const QString & each) {
        const database::column * const meant = meantColumn(each);
        return column(each)->notNull && (meant == nullptr || !meant->notNull);
    });
    property.setAllowNull(property.getAllowNull() && !isNotNull);
    if (columns.size() == 1 && property.getRelation()->getType() == model::relationship::many_to_one) {
        const QString & name = columns.constFirst();
        const bool isMeant = meantColumn(name) != nullptr;
        const bool isNewlyUnique =
            isUnique(m_known, m_table, name) && !(isMeant && isUnique(m_known, *m_meant, name));
        property.setUnique(property.getUnique() || isNewlyUnique);
        const bool isIndexedThere = isIndexed(m_known, m_table, name);
        if (!isMeant || isIndexed(m_known, *m_meant, name) != isIndexedThere) {
            property.setIndex(isIndexedThere);
        }
    }
}

} // namespace check
