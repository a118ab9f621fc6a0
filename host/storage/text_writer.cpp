#include "storage/text_writer.h"

#include "model/meta_value.h"
#include "model/project.h"
#include "model/property_type.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace storage::text_writer {

namespace {

using json = nlohmann::ordered_json;

std::string utf8(const QString & text)
{
    return text.toStdString();
}

void set(json & object, const char * name, const QString & text)
{
    if (!text.isEmpty()) {
        object[name] = utf8(text);
    }
}

void set(json & object, const char * name, bool value, bool whenAbsent)
{
    if (value != whenAbsent) {
        object[name] = value;
    }
}

/// `value` on one line.
std::string inLine(const json & value)
{
    if (!value.is_structured() || value.empty()) {
        return value.dump(-1, ' ', false, json::error_handler_t::replace);
    }
    std::string result;
    for (const auto & [name, part] : value.items()) {
        result += result.empty() ? "" : ", ";
        result += value.is_object() ? inLine(json(name)) + ": " : "";
        result += inLine(part);
    }
    return value.is_object() ? "{" + result + "}" : "[" + result + "]";
}

/// The fields of `object`, one a line, each but the last followed by a comma.
std::string fieldLines(const json & object, const std::string & indent)
{
    std::string result;
    for (const auto & [name, value] : object.items()) {
        result += result.empty() ? "" : ",\n";
        result += indent + inLine(json(name)) + ": " + inLine(value);
    }
    return result;
}

/// A list of lines that are ready as they are.
std::string listOf(const std::vector<std::string> & entries, const std::string & indent)
{
    std::string result;
    for (const std::string & entry : entries) {
        result += (result.empty() ? "\n" : ",\n") + entry;
    }
    return result.empty() ? "[]" : "[" + result + "\n" + indent + "]";
}

json enumerationJson(const model::enumeration & enumeration)
{
    json result = {{"id", enumeration.getId()}, {"name", utf8(enumeration.getName())}};
    json values = json::array();
    for (const model::enumeration::value & value : enumeration.getValues()) {
        values.push_back({{"name", utf8(value.name)}, {"value", value.number}});
    }
    result["values"] = std::move(values);
    return result;
}

json relationshipJson(const model::relationship & relation)
{
    json result = {{"id", relation.getId()},
                   {"type", model::typeName(relation.getType()).data()},
                   {"target", relation.getEntityTargetId()}};
    if (relation.getInverseId() != 0) {
        result["inverse"] = relation.getInverseId();
    }
    set(result, "extraTable", relation.getExtraTable());
    set(result, "foreignKey", relation.getForeignKey());
    set(result, "foreignKeyOwner", relation.getForeignKeyOwner());
    return result;
}

void setType(json & object, const model::property & property)
{
    const std::shared_ptr<model::property_type> type = property.getType();
    if (property.hasRelationship() || !type) {
        return;
    }
    const QStringList & cppTypes = type->getCppTypes();
    if (cppTypes.size() == 1) {
        object["type"] = utf8(cppTypes.constFirst());
    } else if (!cppTypes.isEmpty()) {
        json list = json::array();
        for (const QString & cppType : cppTypes) {
            list.push_back(utf8(cppType));
        }
        object["type"] = std::move(list);
    } else if (const auto enumeration = type->getEnumeration()) {
        object["enumeration"] = enumeration->getId();
    }
}

json propertyJson(const model::property & property)
{
    json result = {{"id", property.getId()}};
    set(result, "key", property.getExplicitKey());
    result["name"] = utf8(property.getName());
    set(result, "columnName", property.getColumnName());
    setType(result, property);
    set(result, "forceSqlType", property.getExplicitForceSqlType());
    set(result, "identifier", property.isIdentifier(), false);
    if (const std::optional<bool> autoIncrement = property.getAutoIncrement()) {
        result["autoIncrement"] = *autoIncrement;
    }
    set(result, "allowNull", property.getAllowNull(), true);
    set(result, "unique", property.getUnique(), false);
    set(result, "index", property.isIndex(), false);
    set(result, "transient", property.isTransient(), false);
    if (property.hasRelationship()) {
        result["relationship"] = relationshipJson(*property.getRelation());
    }
    return result;
}

json metaValueJson(const QVariant & value)
{
    switch (const QVariant kept = model::metaValue(value); kept.typeId()) {
    case QMetaType::Bool:
        return kept.toBool();
    case QMetaType::Double:
        return kept.toDouble();
    case QMetaType::LongLong:
        return kept.toLongLong();
    case QMetaType::ULongLong:
        return kept.toULongLong();
    default:
        return utf8(kept.toString());
    }
}

std::string entityText(const model::entity & entity)
{
    json fields = {{"id", entity.getId()}};
    set(fields, "key", entity.getExplicitKey());
    fields["name"] = utf8(entity.getName());
    set(fields, "tableName", entity.getTableName());
    fields["version"] = entity.getVersion();
    set(fields, "softDeleteColumn", entity.getSoftDeleteColumn());
    QStringList keys = entity.getAllMetaData().keys();
    std::sort(keys.begin(), keys.end()); // their order means nothing, so it must not make a difference
    json metaData = json::object();
    for (const QString & key : keys) {
        metaData[utf8(key)] = metaValueJson(entity.getMetaData(key));
    }
    if (!metaData.empty()) {
        fields["metaData"] = std::move(metaData);
    }
    std::vector<std::string> properties;
    for (const auto & property : entity.getListOfProperty(true, true, false)->values()) {
        properties.push_back("        " + inLine(propertyJson(*property)));
    }
    const std::string indent = "      ";
    return "    {\n" + fieldLines(fields, indent) + ",\n" + indent +
           "\"properties\": " + listOf(properties, indent) + "\n    }";
}

} // namespace

QByteArray projectText(const model::project & project)
{
    const json head = {
        {"format", "korvane-project"}, {"formatVersion", 1}, {"name", utf8(project.getName())}};
    const std::string indent = "  ";
    QByteArray text = QByteArray::fromStdString("{\n" + fieldLines(head, indent));
    const auto append = [&text, &indent](const char * list, const auto & objects, const auto & write) {
        text.append(QByteArrayView(",\n" + indent + "\"" + list + "\": ["));
        const char * separator = "\n";
        for (const auto & object : objects) {
            text.append(separator).append(QByteArrayView(write(*object)));
            separator = ",\n";
        }
        text.append(QByteArrayView(objects.empty() ? "]" : "\n" + indent + "]"));
    };
    append("enumerations", project.getListOfEnumeration()->values(),
           [](const model::enumeration & e) { return "    " + inLine(enumerationJson(e)); });
    append("entities", project.getListOfAllEntities()->values(),
           [](const model::entity & e) { return entityText(e); });
    return text.append("\n}\n");
}

} // namespace storage::text_writer
