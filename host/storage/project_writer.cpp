#include "storage/project_writer.h"

#include "model/project.h"
#include "model/property_type.h"
#include "storage/id_marks.h"
#include "storage/meta_value.h"
#include "storage/project_schema.h"

#include <QHash>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace storage {

namespace {

using namespace project_schema;

QVariant orNull(const QString & text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

QVariant orNull(long id)
{
    return id == 0 ? QVariant() : QVariant(qlonglong(id));
}

long bit(bool set, long flag)
{
    return set ? flag : 0;
}

QVariant number(long n)
{
    return QVariant(qlonglong(n));
}

/// Fills one table through one prepared statement.
class table_filler
{
public:
    table_filler(const QSqlDatabase & database, const QString & table, const QString & columns)
        : m_query(database)
    {
        const QStringList marks(columns.count(QLatin1Char(',')) + 1, QStringLiteral("?"));
        m_bOk = m_query.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                    .arg(table, columns, marks.join(QStringLiteral(", "))));
    }
    bool add(const QVariantList & values)
    {
        for (qsizetype i = 0; m_bOk && i < values.size(); ++i) {
            m_query.bindValue(static_cast<int>(i), values.at(i));
        }
        m_bOk = m_bOk && m_query.exec();
        return m_bOk;
    }
    [[nodiscard]] QSqlError error() const { return m_bOk ? QSqlError() : m_query.lastError(); }

private:
    QSqlQuery m_query;
    bool m_bOk = false;
};

class model_writer
{
public:
    explicit model_writer(const QSqlDatabase & database)
        : m_project(database, QStringLiteral("t_project"),
                    QStringLiteral(
                        "name, last_enumeration_id, last_entity_id, last_property_id, last_relationship_id")),
          m_enumeration(database, QStringLiteral("t_enumeration"), QStringLiteral("id, name")),
          m_value(database, QStringLiteral("t_enumeration_value"),
                  QStringLiteral("enumeration_id, name, value")),
          m_entity(database, QStringLiteral("t_entity"),
                   QStringLiteral("id, name, entity_key, table_name, soft_delete_column, version")),
          m_metaData(database, QStringLiteral("t_meta_data"),
                     QStringLiteral("entity_id, meta_key, value_type, meta_value")),
          m_type(database, QStringLiteral("t_property_type"),
                 QStringLiteral("type_id, cpp_type, enumeration_id")),
          m_property(database, QStringLiteral("t_property"),
                     QStringLiteral("entity_id, id, name, column_name, type_id, flags")),
          m_detail(database, QStringLiteral("t_property_detail"),
                   QStringLiteral("property_id, property_key, force_sql_type")),
          m_relationship(database, QStringLiteral("t_relationship"),
                         QStringLiteral("property_id, id, type, target_id, inverse_id, extra_table, "
                                        "foreign_key, foreign_key_owner"))
    {
    }

    QSqlError write(const model::project & project)
    {
        const id_marks marks = marksOf(project);
        bool ok = m_project.add({project.getName(), number(marks.enumeration), number(marks.entity),
                                 number(marks.property), number(marks.relationship)});
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
        bool ok = m_enumeration.add({number(enumeration.getId()), enumeration.getName()});
        for (const model::enumeration::value & value : enumeration.getValues()) {
            ok = ok && m_value.add({number(enumeration.getId()), value.name, value.number});
        }
        return ok;
    }

    bool addEntity(const model::entity & entity)
    {
        bool ok = m_entity.add({number(entity.getId()), entity.getName(), orNull(entity.getExplicitKey()),
                                orNull(entity.getTableName()), orNull(entity.getSoftDeleteColumn()),
                                number(entity.getVersion())});
        QStringList keys = entity.getAllMetaData().keys();
        std::sort(keys.begin(), keys.end()); // equal models give equal files
        for (const QString & key : keys) {
            const QVariant value = metaValue(entity.getMetaData(key));
            const QString text = value.typeId() == QMetaType::Double
                                     ? QString::number(value.toDouble(), 'g', 17)
                                     : value.toString();
            ok = ok && m_metaData.add(
                           {number(entity.getId()), key, QString::fromLatin1(value.metaType().name()), text});
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
        const QVariant flags = number(flagsOf(property) | bit(hasDetail, flag_detail) |
                                      bit(relation != nullptr, flag_relationship));
        return m_property.add({number(entityId), number(id), property.getName(),
                               orNull(property.getColumnName()), orNull(typeId), flags}) &&
               (!hasDetail || m_detail.add({number(id), orNull(property.getExplicitKey()),
                                            orNull(property.getExplicitForceSqlType())})) &&
               (!relation || addRelationship(id, *relation));
    }

    bool addRelationship(long propertyId, const model::relationship & relation)
    {
        return m_relationship.add({number(propertyId), number(relation.getId()), number(relation.getType()),
                                   number(relation.getEntityTargetId()), orNull(relation.getInverseId()),
                                   orNull(relation.getExtraTable()), orNull(relation.getForeignKey()),
                                   orNull(relation.getForeignKeyOwner())});
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
            return m_type.add({number(id), QVariant(), number(enumeration->getId())});
        }
        bool ok = true;
        for (const QString & cppType : type.getCppTypes()) {
            ok = ok && m_type.add({number(id), cppType, QVariant()});
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

QSqlError writeModel(const QSqlDatabase & database, const model::project & project)
{
    return model_writer(database).write(project);
}

} // namespace storage
