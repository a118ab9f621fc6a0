#include "storage/project_reader.h"

#include "model/project.h"
#include "model/property_type.h"
#include "storage/id_marks.h"
#include "storage/model_check.h"
#include "storage/project_schema.h"
#include "storage/stored_rows.h"
#include "storage/text_cache.h"
#include "storage/texts.h"
#include "zk/sqlite_connection.h"

#include <QHash>

#include <cmath>
#include <functional>
#include <limits>

namespace storage {

namespace {

using namespace project_schema;

constexpr qlonglong MaxNumber = std::numeric_limits<long>::max();

struct property_detail
{
    QString key;
    QString forceSqlType;
};

class model_reader
{
public:
    model_reader(const zk::sqlite::connection & file, model::project & project)
        : m_file(file), m_project(project)
    {
    }

    QSqlError read()
    {
        const auto steps = {
            &model_reader::readProject,  &model_reader::readEnumerations,  &model_reader::readValues,
            &model_reader::readEntities, &model_reader::readMetaData,      &model_reader::readTypes,
            &model_reader::readDetails,  &model_reader::readRelationships, &model_reader::readProperties};
        for (const auto step : steps) {
            if (const QSqlError error = std::invoke(step, this); error.isValid()) {
                return error;
            }
        }
        if (!m_details.isEmpty() || !m_relationships.isEmpty()) {
            return m_file.failure(texts::tr("is damaged (details of a property that does "
                                            "not exist); restore it from a copy"));
        }
        const auto finding = model_check::firstError(m_project);
        return finding ? QSqlError(QString(), finding->text(m_file.file()), QSqlError::StatementError)
                       : QSqlError();
    }

private:
    stored_rows rowsOf(const char * table, const char * columns) { return {m_file, m_texts, table, columns}; }

    QSqlError readProject()
    {
        stored_rows rows = rowsOf(
            "t_project", "name, last_enumeration_id, last_entity_id, last_property_id, last_relationship_id");
        int count = 0;
        for (; rows.next(); ++count) {
            m_project.setName(rows.text(0));
            const auto mark = [&rows](int column) {
                return static_cast<long>(rows.number(column, 0, MaxNumber));
            };
            remember(m_project, {mark(1), mark(2), mark(3), mark(4)});
        }
        if (const QSqlError error = rows.error(); error.isValid() || count == 1) {
            return error;
        }
        return m_file.failure(
            texts::tr("is damaged (table t_project has %1 rows); restore it from a copy").arg(count));
    }

    QSqlError readEnumerations()
    {
        stored_rows rows = rowsOf("t_enumeration", "id, name");
        while (rows.next()) {
            const auto enumeration = std::make_shared<model::enumeration>(rows.id(0));
            enumeration->setName(rows.text(1));
            if (!m_project.addEnumeration(enumeration)) {
                rows.fail(model_check::usedTwice(model_check::id_kind::enumeration, enumeration->getId()));
            }
        }
        return rows.error();
    }

    QSqlError readValues()
    {
        stored_rows rows = rowsOf("t_enumeration_value", "enumeration_id, name, value");
        QHash<long, QList<model::enumeration::value>> values;
        while (rows.next()) {
            const long id = rows.id(0);
            values[id].append({rows.text(1), rows.number(2, std::numeric_limits<qlonglong>::min(),
                                                         std::numeric_limits<qlonglong>::max())});
            if (!m_project.getEnumerationById(id)) {
                rows.fail(texts::tr("enumeration %1 does not exist").arg(id));
            }
        }
        for (auto it = values.constBegin(); it != values.constEnd(); ++it) {
            if (const auto enumeration = m_project.getEnumerationById(it.key())) {
                enumeration->setValues(it.value());
            }
        }
        return rows.error();
    }

    QSqlError readEntities()
    {
        stored_rows rows =
            rowsOf("t_entity", "id, name, entity_key, table_name, soft_delete_column, version");
        while (rows.next()) {
            const auto entity = std::make_shared<model::entity>(rows.id(0), rows.text(1));
            entity->setKey(rows.optionalText(2));
            entity->setTableName(rows.optionalText(3));
            entity->setSoftDeleteColumn(rows.optionalText(4));
            entity->setVersion(static_cast<long>(rows.number(5, 0, MaxNumber)));
            if (!m_project.addEntity(entity)) {
                rows.fail(model_check::usedTwice(model_check::id_kind::entity, entity->getId()));
            }
        }
        return rows.error();
    }

    QSqlError readMetaData()
    {
        stored_rows rows = rowsOf("t_meta_data", "entity_id, meta_key, value_type, meta_value");
        while (rows.next()) {
            const std::shared_ptr<model::entity> entity = m_project.getEntityById(rows.id(0));
            const QString key = rows.text(1);
            const QMetaType type = QMetaType::fromName(rows.text(2).toLatin1());
            QVariant value(rows.text(3));
            const bool known = type.id() == QMetaType::QString || type.id() == QMetaType::Bool ||
                               type.id() == QMetaType::LongLong || type.id() == QMetaType::ULongLong ||
                               type.id() == QMetaType::Double;
            if (!known || !value.convert(type) ||
                (type.id() == QMetaType::Double && !std::isfinite(value.toDouble()))) {
                rows.fail(texts::tr("the value is not of its type"));
            } else if (!entity) {
                rows.fail(texts::tr("the entity does not exist"));
            } else if (entity->getAllMetaData().contains(key)) {
                rows.fail(texts::tr("the key is used twice"));
            } else {
                entity->setMetaData(key, value);
            }
        }
        return rows.error();
    }

    QSqlError readTypes()
    {
        stored_rows rows = rowsOf("t_property_type", "type_id, cpp_type, enumeration_id");
        long current = 0;
        QStringList cppTypes;
        const auto finish = [&] {
            if (!cppTypes.isEmpty()) {
                m_types.insert(current, std::make_shared<model::property_type>(cppTypes));
                cppTypes.clear();
            }
        };
        while (rows.next()) {
            const long id = rows.id(0);
            const long enumerationId = rows.optionalId(2);
            const QString cppType = rows.optionalText(1);
            if (id != current) {
                finish();
                current = id;
                if (m_types.contains(id)) {
                    rows.fail(model_check::usedTwice(model_check::id_kind::type, id));
                }
            }
            const auto enumeration = m_project.getEnumerationById(enumerationId);
            if (cppType.isEmpty() == (enumeration == nullptr) || m_types.contains(id) ||
                (enumeration && !cppTypes.isEmpty())) {
                rows.fail(texts::tr("the type is neither a C++ type nor an enumeration"));
            } else if (enumeration) {
                m_types.insert(id, std::make_shared<model::property_type>(enumeration));
            } else {
                cppTypes.append(cppType);
            }
        }
        finish();
        return rows.error();
    }

    QSqlError readDetails()
    {
        stored_rows rows = rowsOf("t_property_detail", "property_id, property_key, force_sql_type");
        while (rows.next()) {
            const long id = rows.id(0);
            if (m_details.contains(id)) {
                rows.fail(model_check::usedTwice(model_check::id_kind::property, id));
            }
            m_details.insert(id, {rows.optionalText(1), rows.optionalText(2)});
        }
        return rows.error();
    }

    QSqlError readRelationships()
    {
        stored_rows rows =
            rowsOf("t_relationship", "property_id, id, type, target_id, inverse_id, extra_table, "
                                     "foreign_key, foreign_key_owner");
        while (rows.next()) {
            const long propertyId = rows.id(0);
            if (m_relationships.contains(propertyId)) {
                rows.fail(texts::tr("the property has a second relationship"));
            }
            const auto relation = std::make_shared<model::relationship>(
                rows.id(1), static_cast<model::relationship::type_relation>(rows.number(
                                2, model::relationship::one_to_one, model::relationship::many_to_many)));
            relation->setEntityTargetId(rows.id(3));
            relation->setInverseId(rows.optionalId(4));
            relation->setExtraTable(rows.optionalText(5));
            relation->setForeignKey(rows.optionalText(6));
            relation->setForeignKeyOwner(rows.optionalText(7));
            m_relationships.insert(propertyId, relation);
        }
        return rows.error();
    }

    QSqlError readProperties()
    {
        stored_rows rows = rowsOf("t_property", "entity_id, id, name, column_name, type_id, flags");
        std::shared_ptr<model::entity> entity;
        while (rows.next()) {
            const long entityId = rows.id(0);
            if (!entity || entity->getId() != entityId) {
                entity = m_project.getEntityById(entityId);
            }
            const auto property = std::make_shared<model::property>(rows.id(1), rows.text(2));
            property->setColumnName(rows.optionalText(3));
            const long typeId = rows.optionalId(4);
            const long flags = static_cast<long>(rows.number(5, 0, all_flags));
            if (typeId != 0) {
                property->setType(m_types.value(typeId));
            }
            setFlags(*property, flags);
            if (!entity) {
                rows.fail(texts::tr("entity %1 does not exist").arg(entityId));
            } else if (typeId != 0 && (!property->getType() || (flags & flag_relationship) != 0)) {
                rows.fail(texts::tr("type %1 does not exist or is one too many").arg(typeId));
            } else if (!attach(*property, flags)) {
                rows.fail(texts::tr("the details of the property are missing"));
            } else if (!entity->addProperty(property)) {
                rows.fail(model_check::usedTwice(model_check::id_kind::property, property->getId()));
            }
        }
        return rows.error();
    }

    static void setFlags(model::property & property, long flags)
    {
        property.setIdentifier((flags & flag_identifier) != 0);
        property.setAllowNull((flags & flag_not_null) == 0);
        property.setUnique((flags & flag_unique) != 0);
        property.setIndex((flags & flag_index) != 0);
        property.setTransient((flags & flag_transient) != 0);
        if ((flags & flag_auto_increment_given) != 0) {
            property.setAutoIncrement((flags & flag_auto_increment) != 0);
        }
    }

    /// Gives the property what stands in other tables; false when it is not there.
    bool attach(model::property & property, long flags)
    {
        if ((flags & flag_detail) != 0) {
            const auto detail = m_details.constFind(property.getId());
            if (detail == m_details.constEnd()) {
                return false;
            }
            property.setKey(detail->key);
            property.setForceSqlType(detail->forceSqlType);
            m_details.erase(detail);
        }
        if ((flags & flag_relationship) != 0) {
            const std::shared_ptr<model::relationship> relation = m_relationships.take(property.getId());
            if (!relation) {
                return false;
            }
            property.setRelation(relation);
        }
        return true;
    }

    const zk::sqlite::connection & m_file;
    model::project & m_project;
    text_cache m_texts;
    QHash<long, std::shared_ptr<model::property_type>> m_types;
    QHash<long, property_detail> m_details;
    QHash<long, std::shared_ptr<model::relationship>> m_relationships;
};

} // namespace

QSqlError readModel(const zk::sqlite::connection & file, model::project & project)
{
    return model_reader(file, project).read();
}

} // namespace storage
