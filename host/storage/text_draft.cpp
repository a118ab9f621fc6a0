#include "storage/text_draft.h"

#include "storage/id_marks.h"
#include "storage/text_tree.h"
#include "storage/texts.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace storage::text_draft {

namespace {

using json = nlohmann::json;
using text_tree::text_error;

constexpr unsigned FormatVersion = 1;
constexpr long MaxNumber = std::numeric_limits<long>::max();

/// An object's place in the text, put into words only when an error needs it.
struct place
{
    const place * parent;
    const char * list;
    std::size_t index;
    const json & object;

    [[nodiscard]] QString text() const
    {
        const QString own = model_check::placeOf(QString::fromLatin1(list), static_cast<qsizetype>(index),
                                                 text_tree::nameIn(object));
        return parent ? parent->text() + QStringLiteral(" / ") + own : own;
    }
};

/// Whose fields are read; a relationship has no place of its own, but that of its property.
enum class owner
{
    project,
    listed, ///< an entry of a list
    relationship
};

QString notAnObject(owner kind)
{
    switch (kind) {
    case owner::project:
        return texts::tr("the project must be an object");
    case owner::relationship:
        return texts::tr("relationship must be an object");
    case owner::listed:
        break;
    }
    return texts::tr("must be an object");
}

/// The fields of one object of the text. What was not asked for until finish() is unknown.
class fields
{
public:
    /// @param where place of the object, null for the project itself
    fields(const json & object, const place * where, owner kind = owner::listed)
        : m_object(object), m_where(where), m_kind(kind)
    {
        if (!object.is_object()) {
            fail(notAnObject(kind));
        }
    }

    [[noreturn]] void fail(const QString & reason) const
    {
        throw text_error{{m_where ? m_where->text() : QString(), reason}};
    }
    /// The field `name` as sentences call it.
    [[nodiscard]] QString called(const char * name) const
    {
        const QString field =
            m_kind == owner::relationship ? texts::tr("relationship field '%1'") : texts::tr("field '%1'");
        return field.arg(QString::fromLatin1(name));
    }
    /// @param reason a sentence about the field, which is its %1
    [[noreturn]] void failField(const char * name, const QString & reason) const
    {
        fail(reason.arg(called(name)));
    }

    const json * find(const char * name)
    {
        m_known.push_back(name);
        const auto it = m_object.find(name);
        return it == m_object.end() ? nullptr : &*it;
    }
    const json & require(const char * name)
    {
        const json * value = find(name);
        if (!value) {
            failField(name, texts::tr("%1 is missing"));
        }
        return *value;
    }

    QString textOf(const char * name, const json & value) const
    {
        if (!value.is_string()) {
            failField(name, texts::tr("%1 must be a string"));
        }
        return QString::fromStdString(value.get_ref<const std::string &>());
    }
    QString text(const char * name)
    {
        const json * value = find(name);
        return value ? textOf(name, *value) : QString();
    }
    QString requiredText(const char * name) { return textOf(name, require(name)); }
    QString nonEmptyText(const char * name)
    {
        const QString value = requiredText(name);
        if (value.isEmpty()) {
            failField(name, texts::tr("%1 must not be empty"));
        }
        return value;
    }

    long numberOf(const char * name, const json & value, long min, long max = MaxNumber) const
    {
        const bool tooLarge = value.is_number_unsigned()
                                  ? value.get<std::uint64_t>() > static_cast<std::uint64_t>(max)
                                  : value.is_number_integer() && value.get<std::int64_t>() > max;
        if (!value.is_number_integer() || tooLarge || value.get<std::int64_t>() < min) {
            fail(texts::tr("%1 must be an integer from %2 to %3")
                     .arg(called(name), QString::number(min), QString::number(max)));
        }
        return static_cast<long>(value.get<std::int64_t>());
    }
    long idOf(const char * name, const json & value) const { return numberOf(name, value, 1, LargestId); }
    /// An id, 0 when it is absent.
    long id(const char * name)
    {
        const json * value = find(name);
        return value ? idOf(name, *value) : 0;
    }

    bool flagOf(const char * name, const json & value) const
    {
        if (!value.is_boolean()) {
            failField(name, texts::tr("%1 must be true or false"));
        }
        return value.get<bool>();
    }
    bool flag(const char * name, bool whenAbsent)
    {
        const json * value = find(name);
        return value ? flagOf(name, *value) : whenAbsent;
    }

    /// A list, empty when it is absent.
    const json & list(const char * name)
    {
        static const json none = json::array();
        const json * value = find(name);
        if (value && !value->is_array()) {
            failField(name, texts::tr("%1 must be an array"));
        }
        return value ? *value : none;
    }

    void finish() const
    {
        for (const auto & [name, value] : m_object.items()) {
            if (std::find(m_known.begin(), m_known.end(), name) == m_known.end()) {
                const QString unknown = m_kind == owner::relationship
                                            ? texts::tr("unknown relationship field '%1'")
                                            : texts::tr("unknown field '%1'");
                fail(unknown.arg(model_check::printable(QString::fromStdString(name))));
            }
        }
    }

private:
    const json & m_object;
    const place * m_where;
    owner m_kind;
    std::vector<const char *> m_known;
};

class draft_reader
{
public:
    project read(const json & root)
    {
        fields f(root, nullptr, owner::project);
        checkFormat(f);
        project result;
        result.name = f.requiredText("name");
        if (const QString problem = model_check::projectNameProblem(result.name); !problem.isEmpty()) {
            f.fail(model_check::namedProblem(f.called("name"), problem));
        }
        const json & enumerations = f.list("enumerations");
        for (std::size_t i = 0; i < enumerations.size(); ++i) {
            result.enumerations.push_back(
                readEnumeration(enumerations[i], {nullptr, "enumerations", i, enumerations[i]}));
        }
        const json & entities = f.list("entities");
        for (std::size_t i = 0; i < entities.size(); ++i) {
            result.entities.push_back(readEntity(entities[i], {nullptr, "entities", i, entities[i]}));
        }
        f.finish();
        return result;
    }

private:
    static void checkFormat(fields & f)
    {
        if (f.requiredText("format") != QStringLiteral("korvane-project")) {
            f.failField("format", texts::tr("%1 must be \"korvane-project\""));
        }
        const json & version = f.require("formatVersion");
        if (version.is_number_unsigned() && version.get<std::uint64_t>() > FormatVersion) {
            f.fail(texts::tr("field 'formatVersion': the text was written for a newer korvane (format %1; "
                             "this one reads %2); update korvane")
                       .arg(version.get<std::uint64_t>())
                       .arg(FormatVersion));
        }
        if (!version.is_number_integer() || version != json(FormatVersion)) {
            f.fail(texts::tr("%1 must be %2").arg(f.called("formatVersion"), QString::number(FormatVersion)));
        }
    }

    static std::shared_ptr<model::enumeration> readEnumeration(const json & object, const place & where)
    {
        fields f(object, &where);
        const auto result = std::make_shared<model::enumeration>(f.id("id"));
        result->setName(f.nonEmptyText("name"));
        QList<model::enumeration::value> values;
        const json & list = f.list("values");
        for (std::size_t i = 0; i < list.size(); ++i) {
            const place at{&where, "values", i, list[i]};
            fields v(list[i], &at);
            const QString name = v.requiredText("name");
            values.append({name, v.numberOf("value", v.require("value"), std::numeric_limits<long>::min())});
            v.finish();
        }
        result->setValues(values);
        f.finish();
        return result;
    }

    entity readEntity(const json & object, const place & where)
    {
        fields f(object, &where);
        entity result;
        const long id = f.id("id");
        result.object = std::make_shared<model::entity>(id, f.nonEmptyText("name"));
        result.object->setKey(f.text("key"));
        result.object->setTableName(f.text("tableName"));
        result.object->setSoftDeleteColumn(f.text("softDeleteColumn"));
        if (const json * version = f.find("version")) {
            result.version = f.numberOf("version", *version, 0);
        }
        if (const json * metaData = f.find("metaData")) {
            readMetaData(f, *metaData, *result.object);
        }
        const json & properties = f.list("properties");
        for (std::size_t i = 0; i < properties.size(); ++i) {
            result.properties.push_back(
                readProperty(properties[i], {&where, "properties", i, properties[i]}));
        }
        f.finish();
        return result;
    }

    static void readMetaData(const fields & f, const json & metaData, model::entity & entity)
    {
        if (!metaData.is_object()) {
            f.failField("metaData", texts::tr("%1 must be an object"));
        }
        for (const auto & [name, value] : metaData.items()) {
            const QString key = QString::fromStdString(name);
            if (value.is_string()) {
                entity.setMetaData(key, QString::fromStdString(value.get_ref<const std::string &>()));
            } else if (value.is_boolean()) {
                entity.setMetaData(key, value.get<bool>());
            } else if (value.is_number_float()) {
                entity.setMetaData(key, value.get<double>());
            } else if (value.is_number_unsigned() && value.get<std::int64_t>() < 0) {
                entity.setMetaData(key, qulonglong(value.get<std::uint64_t>()));
            } else if (value.is_number_integer()) {
                entity.setMetaData(key, qlonglong(value.get<std::int64_t>()));
            } else {
                f.fail(texts::tr("field 'metaData' '%1' must be a string, a number or a boolean")
                           .arg(model_check::printable(key)));
            }
        }
    }

    property readProperty(const json & object, const place & where)
    {
        fields f(object, &where);
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
        if (const json * autoIncrement = f.find("autoIncrement")) {
            p.setAutoIncrement(f.flagOf("autoIncrement", *autoIncrement));
        }
        result.enumerationId = f.id("enumeration");
        const json * type = f.find("type");
        const json * relationship = f.find("relationship");
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

    std::shared_ptr<model::property_type> readType(const fields & f, const json & type)
    {
        QStringList cppTypes;
        if (type.is_array()) {
            for (const json & part : type) {
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

    static std::shared_ptr<model::relationship> readRelationship(const json & object, const place & where)
    {
        static const QHash<QString, model::relationship::type_relation> types = {
            {QStringLiteral("one-to-one"), model::relationship::one_to_one},
            {QStringLiteral("one-to-many"), model::relationship::one_to_many},
            {QStringLiteral("many-to-one"), model::relationship::many_to_one},
            {QStringLiteral("many-to-many"), model::relationship::many_to_many}};
        fields f(object, &where, owner::relationship);
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

    QHash<QStringList, std::shared_ptr<model::property_type>> m_types;
};

} // namespace

project read(const QByteArray & text)
{
    return draft_reader().read(text_tree::parse(text));
}

} // namespace storage::text_draft
