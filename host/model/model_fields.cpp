#include "model/model_fields.h"

#include "model/entity.h"
#include "model/enumeration.h"
#include "model/meta_value.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>

namespace model {

namespace {

QVariant toldOf(bool flag)
{
    return flag;
}

QVariant toldOf(const std::optional<bool> & flag)
{
    return flag ? QVariant(*flag) : QVariant();
}

QVariant toldOf(const QString & text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

/// Of an id.
QVariant toldOf(long id)
{
    return id == 0 ? QVariant() : QVariant(qlonglong(id));
}

QVariant toldOf(relationship::type_relation type)
{
    return QString(typeName(type));
}

/// Of C++ types: one for all columns, or a list.
QVariant toldOf(const QStringList & types)
{
    if (types.size() > 1) {
        return types;
    }
    return types.isEmpty() ? QVariant() : QVariant(types.constFirst());
}

QVariant toldOf(const QList<enumeration::value> & values)
{
    QVariantList list;
    for (const enumeration::value & value : values) {
        list.append(
            QVariantMap{{QStringLiteral("name"), value.name}, {QStringLiteral("value"), value.number}});
    }
    return list;
}

bool isEqual(const QList<enumeration::value> & a, const QList<enumeration::value> & b)
{
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(),
                      [](const enumeration::value & x, const enumeration::value & y) {
                          return x.name == y.name && x.number == y.number;
                      });
}

template <class Value>
bool isEqual(const Value & a, const Value & b)
{
    return a == b;
}

// A relationship's type is that of its target, which is no field of the property.

const QStringList & cppTypes(const property & p)
{
    static const QStringList none;
    return p.hasRelationship() || !p.getType() ? none : p.getType()->getCppTypes();
}

long enumerationId(const property & p)
{
    if (p.hasRelationship() || !p.getType()) {
        return 0;
    }
    const std::shared_ptr<enumeration> type = p.getType()->getEnumeration();
    return type ? type->getId() : 0;
}

/// Values of different types are different ones: 1 and true are equal to QVariant.
bool isSameValue(const QVariant & a, const QVariant & b)
{
    return a.typeId() == b.typeId() && a == b;
}

template <class Object, auto Get>
constexpr object_field<Object> field(const char * name, change_kind change = change_kind::changed)
{
    return {
        name, change,
        [](const Object & a, const Object & b) { return isEqual(std::invoke(Get, a), std::invoke(Get, b)); },
        [](const Object & object) { return toldOf(std::invoke(Get, object)); }};
}

constexpr auto Renamed = change_kind::renamed;

/// One of several overloads.
constexpr QString (property::*ColumnName)() const = &property::getColumnName;

constexpr std::array EntityFields = {
    field<entity, &entity::getExplicitKey>("key"),
    field<entity, &entity::getName>("name", Renamed),
    field<entity, &entity::getTableName>("tableName", Renamed),
    field<entity, &entity::getSoftDeleteColumn>("softDeleteColumn"),
};

constexpr std::array PropertyFields = {
    field<property, &property::getExplicitKey>("key"),
    field<property, &property::getName>("name", Renamed),
    field<property, ColumnName>("columnName", Renamed),
    field<property, &cppTypes>("type"),
    field<property, &enumerationId>("enumeration"),
    field<property, &property::getExplicitForceSqlType>("forceSqlType"),
    field<property, &property::isIdentifier>("identifier"),
    field<property, &property::getAutoIncrement>("autoIncrement"),
    field<property, &property::getAllowNull>("allowNull"),
    field<property, &property::getUnique>("unique"),
    field<property, &property::isIndex>("index"),
    field<property, &property::isTransient>("transient"),
};

constexpr std::array RelationshipFields = {
    field<relationship, &relationship::getType>("type"),
    field<relationship, &relationship::getEntityTargetId>("target"),
    field<relationship, &relationship::getInverseId>("inverse"),
    field<relationship, &relationship::getExtraTable>("extraTable", Renamed),
    field<relationship, &relationship::getForeignKey>("foreignKey", Renamed),
    field<relationship, &relationship::getForeignKeyOwner>("foreignKeyOwner", Renamed),
};

constexpr std::array EnumerationFields = {
    field<enumeration, &enumeration::getName>("name", Renamed),
    field<enumeration, &enumeration::getValues>("values"),
};

} // namespace

QLatin1String changeName(change_kind change)
{
    static constexpr std::array names = {"added", "removed", "renamed", "changed", "moved"};
    return QLatin1String(names[static_cast<std::size_t>(change)]);
}

QLatin1String kindName(object_kind kind)
{
    static constexpr std::array names = {"entity", "property", "relationship", "enumeration"};
    return QLatin1String(names[static_cast<std::size_t>(kind)]);
}

QString idName(const named_object & object)
{
    return QStringLiteral("%1 %2 '%3'").arg(kindName(object.kind), QString::number(object.id), object.name);
}

std::span<const object_field<entity>> entityFields()
{
    return EntityFields;
}

std::span<const object_field<property>> propertyFields()
{
    return PropertyFields;
}

std::span<const object_field<relationship>> relationshipFields()
{
    return RelationshipFields;
}

std::span<const object_field<enumeration>> enumerationFields()
{
    return EnumerationFields;
}

QVariant toldMetaData(const entity & e, const QString & key)
{
    const QVariant value = e.getMetaData(key);
    return value.isValid() ? metaValue(value) : value;
}

QStringList differentKeys(const entity & a, const entity & b)
{
    if (a.getAllMetaData().isEmpty() && b.getAllMetaData().isEmpty()) {
        return {};
    }
    QStringList keys = a.getAllMetaData().keys() + b.getAllMetaData().keys();
    std::sort(keys.begin(), keys.end());
    keys.removeDuplicates();
    keys.removeIf(
        [&](const QString & key) { return isSameValue(toldMetaData(a, key), toldMetaData(b, key)); });
    return keys;
}

} // namespace model
