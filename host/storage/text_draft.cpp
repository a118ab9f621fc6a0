#include "storage/text_draft.h"

#include "storage/text_fields.h"
#include "storage/texts.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace storage::text_draft {

namespace {

using text_tree::fields;
using text_tree::integerOf;
using text_tree::owner;
using text_tree::place;
using text_tree::text_error;
using text_tree::value;

constexpr unsigned FormatVersion = 1;

const char EntitiesField[] = "entities";
const char PropertiesField[] = "properties";

void checkFormat(fields & f)
{
    if (f.requiredText("format") != QStringLiteral("korvane-project")) {
        f.failField("format", texts::tr("%1 must be \"korvane-project\""));
    }
    const value & version = f.require("formatVersion");
    const auto * const number = version.as<std::uint64_t>();
    if (number && *number > FormatVersion) {
        f.fail(texts::tr("field 'formatVersion': the text was written for a newer korvane (format %1; "
                         "this one reads %2); update korvane")
                   .arg(*number)
                   .arg(FormatVersion));
    }
    if (integerOf(version) != FormatVersion) {
        f.fail(texts::tr("%1 must be %2").arg(f.called("formatVersion"), QString::number(FormatVersion)));
    }
}

/// The value of meta-data that `v` stands for; an invalid one when it is neither text, number nor boolean.
QVariant metaDataOf(const value & v)
{
    if (const auto * const text = v.as<std::string>()) {
        return QString::fromStdString(*text);
    }
    if (const bool * const flag = v.as<bool>()) {
        return *flag;
    }
    if (const double * const number = v.as<double>()) {
        return *number;
    }
    if (const auto number = integerOf(v)) {
        return qlonglong(*number);
    }
    const auto * const large = v.as<std::uint64_t>();
    return large ? QVariant(qulonglong(*large)) : QVariant();
}

void readMetaData(const fields & f, const value & metaData, model::entity & entity)
{
    const auto * const object = metaData.as<value::object>();
    if (!object) {
        f.failField("metaData", texts::tr("%1 must be an object"));
    }
    const text_tree::member * wrong = nullptr;
    for (const text_tree::member & m : *object) {
        const QVariant meta = metaDataOf(m.content);
        if (meta.isValid()) {
            entity.setMetaData(QString::fromStdString(m.name), meta);
        } else if (!wrong || m.name < wrong->name) {
            wrong = &m; // of several the same one is told however they are arranged
        }
    }
    if (wrong) {
        f.fail(texts::tr("field 'metaData' '%1' must be a string, a number or a boolean")
                   .arg(model_check::printable(QString::fromStdString(wrong->name))));
    }
}

class draft_reader
{
public:
    /// @param taken the properties that are not in the tree, by the index of their entity
    project read(const value & root, std::vector<std::vector<property>> & taken)
    {
        fields f(root, nullptr, m_texts, owner::project);
        checkFormat(f);
        (void)f.text("$schema"); // for editors
        project result;
        result.name = f.requiredText("name");
        if (const QString problem = model_check::projectNameProblem(result.name); !problem.isEmpty()) {
            f.fail(model_check::namedProblem(f.called("name"), problem));
        }
        const value::list & enumerations = f.list("enumerations");
        for (std::size_t i = 0; i < enumerations.size(); ++i) {
            result.enumerations.push_back(
                readEnumeration(enumerations[i], {nullptr, "enumerations", i, enumerations[i]}));
        }
        const value::list & entities = f.list(EntitiesField);
        taken.resize(entities.size());
        for (std::size_t i = 0; i < entities.size(); ++i) {
            result.entities.push_back(
                readEntity(entities[i], {nullptr, EntitiesField, i, entities[i]}, std::move(taken[i])));
        }
        f.finish();
        return result;
    }

    property readProperty(const value & object, const place & where)
    {
        fields f(object, &where, m_texts);
        property result;
        const long id = f.id("id");
        result.object = std::make_shared<model::property>(id, f.nonEmptyText("name"));
        model::property & p = *result.object;
        p.setKey(f.text("key"));
        p.setColumnName(f.text("columnName"));
        p.setForceSqlType(f.text("forceSqlType"));
        p.setIdentifier(f.flag("identifier", false));
        p.setUnique(f.flag("unique", false));
        p.setIndex(f.flag("index", false));
        p.setTransient(f.flag("transient", false));
        p.setAllowNull(f.flag("allowNull", true));
        if (const value * autoIncrement = f.find("autoIncrement")) {
            p.setAutoIncrement(f.flagOf("autoIncrement", *autoIncrement));
        }
        result.enumerationId = f.id("enumeration");
        const value * type = f.find("type");
        const value * relationship = f.find("relationship");
        if (type && result.enumerationId != 0) {
            f.fail(texts::tr("fields 'type' and 'enumeration' exclude each other"));
        }
        if (relationship && (type || result.enumerationId != 0)) {
            f.fail(texts::tr("field 'relationship' excludes 'type' and 'enumeration'"));
        }
        if (type) {
            p.setType(readType(f, *type));
        }
        if (relationship) {
            p.setRelation(readRelationship(*relationship, where));
        }
        f.finish();
        return result;
    }

private:
    std::shared_ptr<model::enumeration> readEnumeration(const value & object, const place & where)
    {
        fields f(object, &where, m_texts);
        const auto result = std::make_shared<model::enumeration>(f.id("id"));
        result->setName(f.nonEmptyText("name"));
        QList<model::enumeration::value> values;
        const value::list & list = f.list("values");
        for (std::size_t i = 0; i < list.size(); ++i) {
            const place at{&where, "values", i, list[i]};
            fields v(list[i], &at, m_texts);
            const QString name = v.requiredText("name");
            values.append({name, v.numberOf("value", v.require("value"), std::numeric_limits<long>::min())});
            v.finish();
        }
        result->setValues(values);
        f.finish();
        return result;
    }

    /// @param properties those that are not in `object`
    entity readEntity(const value & object, const place & where, std::vector<property> && properties)
    {
        fields f(object, &where, m_texts);
        entity result;
        const long id = f.id("id");
        result.object = std::make_shared<model::entity>(id, f.nonEmptyText("name"));
        result.object->setKey(f.text("key"));
        result.object->setTableName(f.text("tableName"));
        result.object->setSoftDeleteColumn(f.text("softDeleteColumn"));
        if (const value * version = f.find("version")) {
            result.version = f.numberOf("version", *version, 0);
        }
        if (const value * metaData = f.find("metaData")) {
            readMetaData(f, *metaData, *result.object);
        }
        result.properties = std::move(properties);
        const value::list & list = f.list(PropertiesField);
        for (std::size_t i = 0; i < list.size(); ++i) {
            result.properties.push_back(readProperty(list[i], {&where, PropertiesField, i, list[i]}));
        }
        f.finish();
        return result;
    }

    std::shared_ptr<model::property_type> readType(const fields & f, const value & type)
    {
        QStringList cppTypes;
        if (const auto * const list = type.as<value::list>()) {
            for (const value & part : *list) {
                cppTypes.append(f.textOf("type", part));
            }
        } else {
            cppTypes.append(f.textOf("type", type));
        }
        if (cppTypes.isEmpty() || cppTypes.contains(QString())) {
            f.failField("type", texts::tr("%1 must not be empty"));
        }
        std::shared_ptr<model::property_type> & shared = m_types[cppTypes];
        if (!shared) {
            shared = std::make_shared<model::property_type>(cppTypes);
        }
        return shared;
    }

    std::shared_ptr<model::relationship> readRelationship(const value & object, const place & where)
    {
        using model::relationship;
        static const QHash<QString, relationship::type_relation> types = [] {
            QHash<QString, relationship::type_relation> byName;
            for (const auto type : {relationship::one_to_one, relationship::one_to_many,
                                    relationship::many_to_one, relationship::many_to_many}) {
                byName.insert(model::typeName(type), type);
            }
            return byName;
        }();
        fields f(object, &where, m_texts, owner::relationship);
        const long id = f.id("id");
        const auto type = types.constFind(f.requiredText("type"));
        if (type == types.constEnd()) {
            f.failField("type", texts::tr("%1 must be one-to-one, one-to-many, many-to-one or many-to-many"));
        }
        const auto result = std::make_shared<model::relationship>(id, *type);
        result->setEntityTargetId(f.idOf("target", f.require("target")));
        result->setInverseId(f.id("inverse"));
        result->setExtraTable(f.text("extraTable"));
        result->setForeignKey(f.text("foreignKey"));
        result->setForeignKeyOwner(f.text("foreignKeyOwner"));
        f.finish();
        return result;
    }

    text_cache m_texts;
    QHash<QStringList, std::shared_ptr<model::property_type>> m_types;
};

/// Reads each property as soon as the parser has seen its end, so that there is never a tree of them all.
project readAtOnce(const QByteArray & text)
{
    draft_reader reader;
    std::vector<std::vector<property>> properties;
    const text_tree::given_away entries{
        EntitiesField, PropertiesField, [&](std::size_t entity, const value & object) {
            properties.resize(std::max(properties.size(), entity + 1));
            properties[entity].push_back(reader.readProperty(object, {nullptr, PropertiesField, 0, object}));
        }};
    return reader.read(text_tree::parse(text, &entries), properties);
}

} // namespace

project read(const QByteArray & text)
{
    try {
        return readAtOnce(text);
    } catch (const text_error &) {
        // Which of several errors is told, and how its place is called, takes the whole tree.
        std::vector<std::vector<property>> none;
        return draft_reader().read(text_tree::parse(text), none);
    }
}

} // namespace storage::text_draft
