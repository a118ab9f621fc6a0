#pragma once

#include "model/entity.h"
#include "model/enumeration.h"
#include "model/project.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include <QString>
#include <QStringList>

#include <memory>

/// Models written down in a few words. Every call gives the object it changed, so that calls can be chained.
namespace support {

class property_builder
{
public:
    explicit property_builder(const std::shared_ptr<model::property> & property) : m_property(property) {}

    property_builder & columns(const QString & names)
    {
        m_property->setColumnName(names);
        return *this;
    }
    /// One C++ type a column.
    property_builder & types(const QStringList & cppTypes)
    {
        m_property->setType(std::make_shared<model::property_type>(cppTypes));
        return *this;
    }
    property_builder & enumeration(const std::shared_ptr<model::enumeration> & type)
    {
        m_property->setType(std::make_shared<model::property_type>(type));
        return *this;
    }
    property_builder & withoutType()
    {
        m_property->setType(std::shared_ptr<model::property_type>());
        return *this;
    }
    property_builder & forced(const QString & sqlType)
    {
        m_property->setForceSqlType(sqlType);
        return *this;
    }
    property_builder & counted(bool b)
    {
        m_property->setAutoIncrement(b);
        return *this;
    }
    property_builder & notNull()
    {
        m_property->setAllowNull(false);
        return *this;
    }
    property_builder & unique()
    {
        m_property->setUnique(true);
        return *this;
    }
    property_builder & indexed(bool b = true)
    {
        m_property->setIndex(b);
        return *this;
    }
    property_builder & transient(bool b = true)
    {
        m_property->setTransient(b);
        return *this;
    }
    /// The link table of a many-to-many relationship, with the columns that refer to this side and to the
    /// other side, and the property there.
    property_builder & linkTable(const QString & table, const QString & own, const QString & others,
                                 long inverseId)
    {
        const std::shared_ptr<model::relationship> relation = m_property->getRelation();
        relation->setExtraTable(table);
        relation->setForeignKey(own);
        relation->setForeignKeyOwner(others);
        relation->setInverseId(inverseId);
        return *this;
    }

    [[nodiscard]] std::shared_ptr<model::property> get() const { return m_property; }
    [[nodiscard]] std::shared_ptr<model::relationship> relation() const { return m_property->getRelation(); }

private:
    std::shared_ptr<model::property> m_property;
};

class entity_builder
{
public:
    explicit entity_builder(const std::shared_ptr<model::entity> & entity) : m_entity(entity) {}

    entity_builder & table(const QString & name)
    {
        m_entity->setTableName(name);
        return *this;
    }
    entity_builder & version(long number)
    {
        m_entity->setVersion(number);
        return *this;
    }
    entity_builder & softDelete(const QString & column)
    {
        m_entity->setSoftDeleteColumn(column);
        return *this;
    }
    entity_builder & createTable(const QVariant & value)
    {
        m_entity->setMetaData(QStringLiteral("DDL_EXPORT_CREATE_TABLE"), value);
        return *this;
    }

    property_builder property(long id, const QString & name, const QString & cppType)
    {
        const auto p = std::make_shared<model::property>(id, name);
        p->setType(cppType);
        m_entity->addProperty(p);
        return property_builder(p);
    }
    property_builder identifier(long id, const QString & name, const QString & cppType)
    {
        const property_builder key = property(id, name, cppType);
        key.get()->setIdentifier(true);
        return key;
    }
    property_builder relation(long id, const QString & name, long relationId,
                              model::relationship::type_relation type, long targetId)
    {
        const auto p = std::make_shared<model::property>(id, name);
        const auto relation = std::make_shared<model::relationship>(relationId, type);
        relation->setEntityTargetId(targetId);
        p->setRelation(relation);
        m_entity->addProperty(p);
        return property_builder(p);
    }

    [[nodiscard]] std::shared_ptr<model::entity> get() const { return m_entity; }

private:
    std::shared_ptr<model::entity> m_entity;
};

class model_builder
{
public:
    explicit model_builder(const QString & name = QStringLiteral("shop"))
        : m_project(std::make_shared<model::project>(1))
    {
        m_project->setName(name);
    }

    entity_builder entity(long id, const QString & name)
    {
        const auto e = std::make_shared<model::entity>(id, name);
        m_project->addEntity(e);
        return entity_builder(e);
    }

    [[nodiscard]] std::shared_ptr<model::project> get() const { return m_project; }
    [[nodiscard]] model::project & project() const { return *m_project; }
    [[nodiscard]] std::shared_ptr<model::entity> entity(long id) const
    {
        return m_project->getEntityById(id);
    }
    [[nodiscard]] std::shared_ptr<model::property> property(long entityId, long id) const
    {
        return m_project->getEntityById(entityId)->getPropertyById(id);
    }
    [[nodiscard]] std::shared_ptr<model::relationship> relation(long entityId, long propertyId) const
    {
        return property(entityId, propertyId)->getRelation();
    }

private:
    std::shared_ptr<model::project> m_project;
};

} // namespace support
