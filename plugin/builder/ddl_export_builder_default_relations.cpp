// The generic dialect's link tables, foreign keys and indexes.

#include "plugin/builder/ddl_export_builder_default.h"
#include "plugin/builder/sql_text.h"

#include "model/column_list.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <QStringBuilder>

namespace plugin {

namespace {

/// Between the names of several columns that the model gives as one text.

} // namespace

QString ddl_export_builder_default::addConstraintFKInCreateTable(std::shared_ptr<model::entity>)
{
    return {};
}

QString ddl_export_builder_default::createExtraTable(std::shared_ptr<model::relationship> relationship)
{
    if (!relationship || relationship->getExtraTable().isEmpty() ||
        relationship->getType() != model::relationship::many_to_many) {
        return {};
    }
    const std::shared_ptr<model::property> property = relationship->getProperty();
    const std::shared_ptr<model::property> inverse = relationship->getInverse();
    if (!property || !inverse || !inverse->hasRelationship() || !inverse->getRelation()) {
        return {};
    }
    const std::shared_ptr<model::entity> owner = currentEntityOf(property);
    const std::shared_ptr<model::entity> target = relationship->getEntityTarget();
    const std::shared_ptr<model::property> ownerKey = owner ? owner->getPropertyId(true) : nullptr;
    const std::shared_ptr<model::property> targetKey = target ? target->getPropertyId(true) : nullptr;
    if (!ownerKey || !targetKey) {
        return {};
    }
    return u"CREATE TABLE " % relationship->getExtraTable() % u" (" %
           linkColumns(relationship->getForeignKey(), ownerKey) % ListSeparator %
           linkColumns(relationship->getForeignKeyOwner(), targetKey) % tableTail();
}

QString ddl_export_builder_default::linkColumns(const QString & names,
                                                const std::shared_ptr<model::property> & key) const
{
    const int columns = static_cast<int>(names.count(model::ColumnSeparator)) + 1;
    return joined(columns, ListSeparator, [&](int i) -> QString {
        return names.section(model::ColumnSeparator, i, i) % u" " % keyColumnType(key, i);
    });
}

std::shared_ptr<model::entity>
ddl_export_builder_default::entityWithIdentifier(const std::shared_ptr<model::entity> & entity) const
{
    if (!entity) {
        return nullptr;
    }
    if (const std::shared_ptr<model::property> key = entity->getPropertyId(true);
        key && key->getId() != 0 && !key->getName().isEmpty()) {
        return entity;
    }
    const std::shared_ptr<model::entity> counterpart =
        m_pCurrentProject ? m_pCurrentProject->getEntityById(entity->getId()) : nullptr;
    const std::shared_ptr<model::property> key = counterpart ? counterpart->getPropertyId(true) : nullptr;
    return key && key->getId() != 0 ? counterpart : nullptr;
}

QString ddl_export_builder_default::foreignKeyClause(const std::shared_ptr<model::property> & property,
                                                     const std::shared_ptr<model::entity> & target) const
{
    const std::shared_ptr<model::property> targetKey = target->getPropertyId(true);
    const int columns = property->getColumnNameCount();
    const auto columnsOf = [&](const std::shared_ptr<model::property> & p) {
        return joined(columns, ListSeparator, [&](int i) { return getSqlColumnName(p, i, true); });
    };
    return u"FOREIGN KEY (" % columnsOf(property) % u") REFERENCES " % getSqlTableName(target, true) % u" (" %
           columnsOf(targetKey) % u")";
}

QString ddl_export_builder_default::addForeignKey(std::shared_ptr<model::relationship> relationship)
{
    if (!relationship || relationship->getType() == model::relationship::one_to_many) {
        return {};
    }
    const std::shared_ptr<model::property> property = relationship->getProperty();
    const std::shared_ptr<model::entity> target = relationship->getEntityTarget();
    std::shared_ptr<model::entity> owner = property ? property->getEntity() : nullptr;
    if (!target || !owner) {
        return {};
    }
    const bool isManyToMany = relationship->getType() == model::relationship::many_to_many;
    if (isManyToMany || relationship->getType() == model::relationship::one_to_one) {
        owner = entityWithIdentifier(owner);
        if (!owner) {
            return {};
        }
    }
    const QString constraint = u" ADD CONSTRAINT " % getSqlForeignKeyName(relationship) % u" ";
    if (!isManyToMany) {
        return u"ALTER TABLE " % getSqlTableName(owner, true) % constraint %
               foreignKeyClause(property, target) % u";";
    }
    const std::shared_ptr<model::property> ownerKey = owner->getPropertyId(true);
    const int columns = ownerKey->getColumnNameCount();
    const QString names = relationship->getForeignKey();
    return u"ALTER TABLE " % relationship->getExtraTable() % constraint % u"FOREIGN KEY (" %
           joined(columns, ListSeparator,
                  [&](int i) { return names.section(model::ColumnSeparator, i, i); }) %
           u") REFERENCES " % getSqlTableName(owner, true) % u" (" %
           joined(columns, ListSeparator, [&](int i) { return getSqlColumnName(ownerKey, i, true); }) % u");";
}

QString ddl_export_builder_default::dropForeignKey(std::shared_ptr<model::relationship> relationship)
{
    if (!relationship || relationship->getType() == model::relationship::one_to_many) {
        return {};
    }
    const std::shared_ptr<model::property> property = relationship->getProperty();
    const std::shared_ptr<model::entity> owner = property ? property->getEntity() : nullptr;
    if (!owner || !relationship->getEntityTarget()) {
        return {};
    }
    const QString table = relationship->getType() == model::relationship::many_to_many
                              ? relationship->getExtraTable()
                              : getSqlTableName(owner, true);
    return u"ALTER TABLE " % table % u" DROP CONSTRAINT " % getSqlForeignKeyName(relationship) % u";";
}

QString ddl_export_builder_default::createIndex(std::shared_ptr<model::property> property)
{
    const std::shared_ptr<model::entity> entity = currentEntityOf(property);
    if (!entity || getSqlColumnName(property, -1, true).isEmpty()) {
        return {};
    }
    const QString table = getSqlTableName(entity, true);
    return joined(property->getColumnNameCount(), StatementSeparator, [&](int i) -> QString {
        return u"CREATE INDEX " % getSqlIndexName(property, true, i) % u" ON " % table % u" (" %
               indexColumn(property, i) % u");";
    });
}

QString ddl_export_builder_default::indexColumn(const std::shared_ptr<model::property> & property,
                                                int index) const
{
    return getSqlColumnName(property, index, true);
}

QString ddl_export_builder_default::existingIndexName(const std::shared_ptr<model::property> & property,
                                                      int index) const
{
    const bool isInPrevious =
        m_pPreviousProject && m_pPreviousProject->getEntityById(property->getEntityId());
    return getSqlIndexName(property, !isInPrevious, index);
}

QString ddl_export_builder_default::dropIndex(std::shared_ptr<model::property> property)
{
    const std::shared_ptr<model::entity> entity = currentEntityOf(property);
    if (!entity) {
        return {};
    }
    const QString table = getSqlTableName(entity, true);
    return joined(property->getColumnNameCount(), StatementSeparator,
                  [&](int i) { return dropIndexStatement(existingIndexName(property, i), table); });
}

QString ddl_export_builder_default::dropIndexStatement(const QString & index, const QString & table) const
{
    return u"DROP INDEX " % index % u" ON " % table % u";";
}

QString ddl_export_builder_default::dropIndexByName(const std::shared_ptr<model::property> & property) const
{
    if (!property) {
        return {};
    }
    return joined(property->getColumnNameCount(), StatementSeparator,
                  [&](int i) -> QString { return u"DROP INDEX " % existingIndexName(property, i) % u";"; });
}

} // namespace plugin
