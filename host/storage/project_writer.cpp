#include "storage/project_writer.h"

#include "model/meta_value.h"
#include "model/project.h"
#include "model/property_type.h"
#include "storage/id_marks.h"
#include "storage/project_schema.h"
#include "zk/sqlite_statement.h"

#include <QHash>

#include <algorithm>
#include <optional>

namespace storage {

namespace {

using namespace project_schema;

std::optional<QString> orNull(const QString & text)
{
    return text.isEmpty() ? std::nullopt : std::optional<QString>(text);
}

std::optional<qint64> orNull(long id)
{
    return id == 0 ? std::nullopt : std::optional<qint64>(id);
}

long bit(bool set, long flag)
{
    return set ? flag : 0;
}

/// Fills one table through one prepared statement.
class table_filler
{
public:
    table_filler(const zk::sqlite::connection & file, const char * table, const char * columns)
        : m_statement(file, insertion(QString::fromLatin1(table), QString::fromLatin1(columns)))
    {
    }

    /// Adds a row of `values`, one for each column: numbers and texts, those that may be absent as optional.
    template <class... Values>
    bool add(const Values &... values)
    {
        int index = 0;
        (bind(index++, values), ...);
        return m_statement.run();
    }
    [[nodiscard]] const QSqlError & error() const { return m_statement.error(); }

private:
    static QString insertion(const QString & table, const QString & columns)
    {
        const QStringList marks(columns.count(QLatin1Char(',')) + 1, QStringLiteral("?"));
        return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
            .arg(table, columns, marks.join(QStringLiteral(", ")));
    }

    template <class Value>
    void bind(int index, const Value & value)
    {
        m_statement.bind(index, value);
    }
    void bind(int index, std::nullopt_t) { m_statement.bindNull(index); }
    template <class Value>
    void bind(int index, const std::optional<Value> & value)
    {
        if (value) {
            m_statement.bind(index, *value);
        } else {
            m_statement.bindNull(index);
        }
    }

    zk::sqlite::statement m_statement;
};

class model_writer
{
public:
    explicit model_writer(const zk::sqlite::connection & file)
        : m_project(file, "t_project",
                    "name, last_enumeration_id, last_entity_id, last_property_id, last_relationship_id"),
          m_enumeration(file, "t_enumeration", "id, name"),
          m_value(file, "t_enumeration_value", "enumeration_id, name, value"),
          m_entity(file, "t_entity", "id, name, entity_key, table_name, soft_delete_column, version"),
          m_metaData(file, "t_meta_data", "entity_id, meta_key, value_type, meta_value"),
          m_type(file, "t_property_type", "type_id, cpp_type, enumeration_id"),
          m_property(file, "t_property", "entity_id, id, name, column_name, type_id, flags"),
          m_detail(file, "t_property_detail", "property_id, property_key, force_sql_type"),
          m_relationship(file, "t_relationship",
                         "property_id, id, type, target_id, inverse_id, extra_table, foreign_key, "
                         "foreign_key_owner")
    {
    }

    QSqlError write(const model::project & project)
    {
        const id_marks marks = marksOf(project);
        bool ok = m_project.add(project.getName(), marks.enumeration, marks.entity, marks.property,
                                marks.relationship);
        for (const auto & enumeration : project.getListOfEnumeration()->values()) {
            ok = ok && addEnumeration(*enumeration);
        }
        for (const auto & entity : project.getListOfAllEntities()->values()) {
            ok = ok && addEntity(*entity);
        }
        for (const table_filler * filler : {&m_project, &m_enumeration, &m_value, &m_entity, &m_metaData,
                                            &m_type, &m_property, &m_detail, &m_relationship}) {
            if (const QSqlError error = filler->error(); error.isValid()) {
                return error;
            }
        }
        return {};
    }

private:
    bool addEnumeration(const model::enumeration & enumeration)
    {
        bool ok = m_enumeration.add(enumeration.getId(), enumeration.getName());
        for (const model::enumeration::value & value : enumeration.getValues()) {
            ok = ok && m_value.add(enumeration.getId(), value.name, value.number);
        }
        return ok;
    }

    bool addEntity(const model::entity & entity)
    {
        bool ok = m_entity.add(entity.getId(), entity.getName(), orNull(entity.getExplicitKey()),
                               orNull(entity.getTableName()), orNull(entity.getSoftDeleteColumn()),
                               entity.getVersion());
        QStringList keys = entity.getAllMetaData().keys();
        std::sort(keys.begin(), keys.end()); // equal models give equal files
        for (const QString & key : keys) {
            const QVariant value = model::metaValue(entity.getMetaData(key));
            const QString text = value.typeId() == QMetaType::Double
                                     ? QString::number(value.toDouble(), 'g', 17)
                                     : value.toString();
            ok =
                ok && m_metaData.add(entity.getId(), key, QString::fromLatin1(value.metaType().name()), text);
        }
        for (const auto & property : entity.getListOfProperty(true, true, false)->values()) {
            ok = ok && addProperty(entity.getId(), *property);
        }
        return ok;
    }

    bool addProperty(long entityId, const model::property & property)
    {
        const bool hasDetail =
            !property.getExplicitKey().isEmpty() || !property.getExplicitForceSqlType().isEmpty();
        const std::shared_ptr<model::relationship> relation = property.getRelation();
        long typeId = 0;
        if (property.getType() && !relation && !idOfType(*property.getType(), typeId)) {
            return false;
        }
        const long id = property.getId();
        const long flags =
            flagsOf(property) | bit(hasDetail, flag_detail) | bit(relation != nullptr, flag_relationship);
        return m_property.add(entityId, id, property.getName(), orNull(property.getColumnName()),
                              orNull(typeId), flags) &&
               (!hasDetail || m_detail.add(id, orNull(property.getExplicitKey()),
                                           orNull(property.getExplicitForceSqlType()))) &&
               (!relation || addRelationship(id, *relation));
    }

    bool addRelationship(long propertyId, const model::relationship & relation)
    {
        return m_relationship.add(propertyId, relation.getId(), static_cast<qint64>(relation.getType()),
                                  relation.getEntityTargetId(), orNull(relation.getInverseId()),
                                  orNull(relation.getExtraTable()), orNull(relation.getForeignKey()),
                                  orNull(relation.getForeignKeyOwner()));
    }

    /// Number of an equal type that was written before, else of a new one.
    bool idOfType(const model::property_type & type, long & id)
    {
        const auto enumeration = type.getCppTypes().isEmpty() ? type.getEnumeration() : nullptr;
        const auto key = qMakePair(type.getCppTypes(), enumeration ? enumeration->getId() : 0L);
        if (const auto known = m_typeIds.constFind(key); known != m_typeIds.constEnd()) {
            id = *known;
            return true;
        }
        id = static_cast<long>(m_typeIds.size()) + 1;
        m_typeIds.insert(key, id);
        if (enumeration) {
            return m_type.add(id, std::nullopt, enumeration->getId());
        }
        bool ok = true;
        for (const QString & cppType : type.getCppTypes()) {
            ok = ok && m_type.add(id, cppType, std::nullopt);
        }
        return ok;
    }

    static long flagsOf(const model::property & property)
    {
        return bit(property.isIdentifier(), flag_identifier) | bit(!property.getAllowNull(), flag_not_null) |
               bit(property.getUnique(), flag_unique) | bit(property.isIndex(), flag_index) |
               bit(property.isTransient(), flag_transient) |
               bit(property.getAutoIncrement().has_value(), flag_auto_increment_given) |
               bit(property.getAutoIncrement().value_or(false), flag_auto_increment);
    }

    QHash<QPair<QStringList, long>, long> m_typeIds;
    table_filler m_project;
    table_filler m_enumeration;
    table_filler m_value;
    table_filler m_entity;
    table_filler m_metaData;
    table_filler m_type;
    table_filler m_property;
    table_filler m_detail;
    table_filler m_relationship;
};

} // namespace

QSqlError writeModel(const zk::sqlite::connection & file, const model::project & project)
{
    return model_writer(file).write(project);
}

} // namespace storage
