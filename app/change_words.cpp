#include "app/change_words.h"

#include "model/enumeration.h"
#include "model/project.h"
#include "model/property_type.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace app {

namespace {

using model::change_kind;
using model::object_kind;

/// How a field is called, and what it says when the text form leaves it out.
struct field_words
{
    object_kind kind;
    const char * field;
    const char * words;
    const char * absent = "(none)";
};

constexpr const char * ByName = "(by name)";

constexpr field_words FieldWords[] = {
    {object_kind::entity, "key", "key", ByName},
    {object_kind::entity, "tableName", "table", ByName},
    {object_kind::entity, "softDeleteColumn", "soft delete column"},
    {object_kind::entity, "order", "order of properties"},
    {object_kind::property, "key", "key", ByName},
    {object_kind::property, "columnName", "column", ByName},
    {object_kind::property, "forceSqlType", "SQL type", "(by type)"},
    {object_kind::property, "autoIncrement", "auto-increment", "(by type)"},
    {object_kind::property, "allowNull", "null allowed"},
    {object_kind::relationship, "type", "relationship type"},
    {object_kind::relationship, "target", "relationship target"},
    {object_kind::relationship, "inverse", "inverse property"},
    {object_kind::relationship, "extraTable", "link table"},
    {object_kind::relationship, "foreignKey", "link column"},
    {object_kind::relationship, "foreignKeyOwner", "link column of the target"},
};

const QString MetaData = QStringLiteral("metaData.");

const field_words * wordsOf(const model::model_change & change)
{
    const auto * const found =
        std::find_if(std::begin(FieldWords), std::end(FieldWords), [&](const field_words & f) {
            return f.kind == change.object.kind && change.field == QLatin1String(f.field);
        });
    return found == std::end(FieldWords) ? nullptr : found;
}

/// How the field is called; by its own name when that is a word already.
QString fieldOf(const model::model_change & change)
{
    if (const field_words * const words = wordsOf(change)) {
        return QString::fromLatin1(words->words);
    }
    return change.field.startsWith(MetaData)
               ? QStringLiteral("meta-data ") + change.field.mid(MetaData.size())
               : change.field;
}

/// What is told of a field that the text form leaves out.
QString absentValue(const model::model_change & change)
{
    const field_words * const words = wordsOf(change);
    return QString::fromLatin1(words ? words->absent : "(none)");
}

QString textOf(const QVariant & value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    case QMetaType::QVariantMap: {
        const QVariantMap entry = value.toMap();
        return QStringLiteral("%1 = %2").arg(entry.value(QStringLiteral("name")).toString(),
                                             entry.value(QStringLiteral("value")).toString());
    }
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        QStringList parts;
        for (const QVariant & part : value.toList()) {
            parts << textOf(part);
        }
        return parts.isEmpty() ? QStringLiteral("(none)") : parts.join(QStringLiteral(", "));
    }
    default:
        return value.toString().isEmpty() ? QStringLiteral("\"\"") : value.toString();
    }
}

/// An id whose object is not there.
QString unknown(long id)
{
    return QStringLiteral("(id %1)").arg(id);
}

QString typeOf(const model::property & property)
{
    const std::shared_ptr<model::property_type> type = property.getType();
    if (!type) {
        return QStringLiteral("without type");
    }
    const std::shared_ptr<model::enumeration> enumeration = type->getEnumeration();
    return enumeration ? QStringLiteral("enumeration ") + enumeration->getName()
                       : type->getCppTypes().join(QStringLiteral(", "));
}

} // namespace

QString change_words::state::entityName(long id) const
{
    const auto entity = m_project.getEntityById(id);
    return entity ? entity->getName() : unknown(id);
}

QString change_words::state::enumerationName(long id) const
{
    const auto enumeration = m_project.getEnumerationById(id);
    return enumeration ? enumeration->getName() : unknown(id);
}

QString change_words::state::propertyName(long id) const
{
    const auto found = property(id);
    return found ? found->getName() : unknown(id);
}

std::shared_ptr<model::property> change_words::state::property(long id) const
{
    if (!m_properties) {
        m_properties.emplace();
        for (const auto & entity : m_project.getListOfAllEntities()->values()) {
            for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
                m_properties->insert(property->getId(), property);
            }
        }
    }
    return m_properties->value(id);
}

change_words::change_words(const model::project & before, const model::project & after)
    : m_before(before), m_after(after)
{
}

QString change_words::valueIn(const state & in, const QString & field, const QVariant & value)
{
    if (field == QLatin1String("enumeration")) {
        return in.enumerationName(value.toLongLong());
    }
    if (field == QLatin1String("target") || field == QLatin1String("entity")) {
        return in.entityName(value.toLongLong());
    }
    if (field == QLatin1String("inverse") || field == QLatin1String("property")) {
        return in.propertyName(value.toLongLong());
    }
    return textOf(value);
}

QString change_words::describedRelation(const state & in, const model::property & property)
{
    const std::shared_ptr<model::relationship> relation = property.getRelation();
    return QStringLiteral("%1 to %2")
        .arg(model::typeName(relation->getType()), in.entityName(relation->getEntityTargetId()));
}

QString change_words::describedProperty(const state & in, const model::property & property)
{
    QStringList words{property.hasRelationship() ? describedRelation(in, property) : typeOf(property)};
    const auto add = [&words](bool isSo, const char * word) {
        if (isSo) {
            words << QString::fromLatin1(word);
        }
    };
    add(property.isIdentifier(), "identifier");
    add(!property.getAllowNull(), "not null");
    add(property.getUnique(), "unique");
    add(property.isIndex(), "index");
    add(property.isTransient(), "transient");
    return words.join(QStringLiteral(", "));
}

QString change_words::described(const state & in, const model::named_object & object)
{
    switch (object.kind) {
    case object_kind::entity: {
        const auto entity = in.project().getEntityById(object.id);
        const long count = entity ? entity->getListOfProperty(true, true, false)->count() : 0;
        return count == 1 ? QStringLiteral("1 property") : QStringLiteral("%1 properties").arg(count);
    }
    case object_kind::property: {
        const auto property = in.property(object.id);
        return property ? describedProperty(in, *property) : QString();
    }
    case object_kind::enumeration: {
        const auto enumeration = in.project().getEnumerationById(object.id);
        const qsizetype count = enumeration ? enumeration->getValues().size() : 0;
        return count == 1 ? QStringLiteral("1 value") : QStringLiteral("%1 values").arg(count);
    }
    case object_kind::relationship:
        break;
    }
    return {};
}

QString change_words::lineOf(const model::model_change & change) const
{
    const bool isRemoved = change.change == change_kind::removed;
    const state & in = isRemoved ? m_before : m_after;
    const QLatin1String kind = model::kindName(change.object.kind);
    switch (change.change) {
    case change_kind::added:
    case change_kind::removed: {
        const QLatin1String sign(isRemoved ? "-" : "+");
        if (change.object.kind == object_kind::relationship) {
            const auto holder = in.property(change.owners.front().id);
            return QStringLiteral("%1 relationship: %2")
                .arg(sign, holder ? describedRelation(in, *holder) : QString());
        }
        return QStringLiteral("%1 %2 %3: %4")
            .arg(sign, kind, change.object.name, described(in, change.object));
    }
    case change_kind::moved:
        return QStringLiteral("> %1 %2, which was in %3 %4")
            .arg(kind, change.object.name, change.field, valueIn(m_before, change.field, change.before));
    case change_kind::renamed:
    case change_kind::changed:
        break;
    }
    return QStringLiteral("%1: %2 -> %3").arg(fieldOf(change), formerValue(change), laterValue(change));
}

QString change_words::formerValue(const model::model_change & change) const
{
    return change.before.isValid() ? valueIn(m_before, change.field, change.before) : absentValue(change);
}

QString change_words::laterValue(const model::model_change & change) const
{
    return change.after.isValid() ? valueIn(m_after, change.field, change.after) : absentValue(change);
}

QString change_words::reasonOf(const model::model_change & change, const QString & from) const
{
    const QString object = model::idName(change.object);
    switch (change.change) {
    case change_kind::added:
        return QStringLiteral("because %1 came after %2").arg(object, from);
    case change_kind::removed:
        return QStringLiteral("because %1 was there until %2").arg(object, from);
    case change_kind::moved:
        return QStringLiteral("because %1 was in %2 '%3' until %4")
            .arg(object, change.field, formerValue(change), from);
    case change_kind::renamed:
    case change_kind::changed:
        break;
    }
    if (change.field == QLatin1String("name")) {
        return QStringLiteral("because %1 was '%2' until %3").arg(object, formerValue(change), from);
    }
    const bool isFlag = change.before.typeId() == QMetaType::Bool;
    return QStringLiteral("because %1 of %2 was %3 until %4")
        .arg(isFlag ? QStringLiteral("'%1'").arg(fieldOf(change)) : QStringLiteral("the ") + fieldOf(change),
             object, formerValue(change), from);
}

} // namespace app
