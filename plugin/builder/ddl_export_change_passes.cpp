// The walks over what two versions of a model differ in.
//
// Versions of an object are matched by id, so that a new name is a rename and never a drop.

#include "plugin/builder/ddl_export_passes.h"

#include "plugin/builder/ddl_export_builder.h"
#include "plugin/builder/ddl_export_script.h"
#include "plugin/ddl_export.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

namespace plugin {

namespace {

// Of the units of a script, besides link tables and indexes.
constexpr int ChangeShare = 600;
constexpr int ForeignKeyShare = 200;

/// A transient property has no column, as if it were not there.
bool hasColumn(const std::shared_ptr<model::property> & property)
{
    return property && !property->isTransient();
}

std::shared_ptr<model::entity::list_of_property> propertiesOf(const std::shared_ptr<model::entity> & entity)
{
    const auto properties = entity ? entity->getListOfProperty(true, true, false) : nullptr;
    return properties ? properties : std::make_shared<model::entity::list_of_property>();
}

/// The properties that take part in a comparison, in order.
std::vector<std::shared_ptr<model::property>> columnsOf(const model::entity::list_of_property & properties)
{
    std::vector<std::shared_ptr<model::property>> columns = properties.values();
    std::erase_if(
        columns, [](const std::shared_ptr<model::property> & p) { return !hasColumn(p) || p->getId() == 0; });
    return columns;
}

std::shared_ptr<model::entity::list_of_relation>
relationshipsOf(const std::shared_ptr<model::entity> & entity)
{
    const auto relationships = entity ? entity->getListOfRelation() : nullptr;
    return relationships ? relationships : std::make_shared<model::entity::list_of_relation>();
}

} // namespace

std::vector<ddl_export_passes::entity_change> ddl_export_passes::changedEntities() const
{
    std::vector<entity_change> changes;
    for (const std::shared_ptr<model::entity> & entity :
         tablesOf(*m_builder.m_pCurrentProject->getListOfAllEntities())) {
        const std::shared_ptr<model::entity> previous =
            m_builder.m_pPreviousProject->getEntityById(entity->getId());
        // The version number of an entity is the only sign of a change.
        if (!previous || previous->getVersion() != entity->getVersion()) {
            changes.push_back({previous, entity});
        }
    }
    return changes;
}

zk::ZkBool ddl_export_passes::writeChanges()
{
    const std::vector<entity_change> changes = changedEntities();
    zk::ZkBool result = writeDroppedTables();
    if (result) {
        result = writeChangedTables(changes);
    }
    if (result) {
        result = writeLinkTables();
    }
    if (result) {
        result = writeIndexes();
    }
    if (result && m_builder.m_pPlugin->getExportRelationships()) {
        result = writeChangedForeignKeys(changes);
    }
    return result;
}

zk::ZkBool ddl_export_passes::writeChangedTables(const std::vector<entity_change> & changes)
{
    m_progress.pass(static_cast<int>(changes.size()), ChangeShare);
    for (const entity_change & change : changes) {
        m_progress.step();
        if (const zk::ZkBool result =
                change.previous ? writeTableChanges(change) : writeTable(change.current);
            !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeChangedForeignKeys(const std::vector<entity_change> & changes)
{
    m_progress.pass(static_cast<int>(changes.size()), ForeignKeyShare);
    for (const entity_change & change : changes) {
        m_progress.step();
        if (const zk::ZkBool result = writeForeignKeyChanges(change); !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeDroppedTables()
{
    for (const std::shared_ptr<model::entity> & entity :
         tablesOf(*m_builder.m_pPreviousProject->getListOfAllEntities())) {
        if (m_builder.canCreateTable(m_builder.m_pCurrentProject->getEntityById(entity->getId()))) {
            continue;
        }
        const zk::ZkBool result = write(statement_action::drop_table, m_builder.dropTable(entity),
                                        entity->getKey(), {entity.get()});
        if (!result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeTableChanges(const entity_change & change)
{
    const std::shared_ptr<list_of_property> before = propertiesOf(change.previous);
    const std::shared_ptr<list_of_property> after = propertiesOf(change.current);
    zk::ZkBool result = zk::ZkBool::success();
    if (m_builder.getSqlTableName(change.previous, true) != m_builder.getSqlTableName(change.current, true)) {
        result = write(statement_action::rename_table, m_builder.renameTable(change.previous, change.current),
                       change.current->getKey(), {change.current.get()});
    }
    if (result) {
        result = writeDroppedColumns(change.current, *before, *after);
    }
    const std::vector<std::shared_ptr<model::property>> columns = columnsOf(*after);
    for (auto it = columns.begin(); result && it != columns.end(); ++it) {
        result = writeColumnChanges(change.current, {before->getByKey((*it)->getId()), *it});
    }
    return result;
}

zk::ZkBool ddl_export_passes::writeDroppedColumns(const std::shared_ptr<model::entity> & entity,
                                                  const list_of_property & before,
                                                  const list_of_property & after)
{
    for (const std::shared_ptr<model::property> & property : columnsOf(before)) {
        if (hasColumn(after.getByKey(property->getId()))) {
            continue;
        }
        const zk::ZkBool result = write(statement_action::drop_column, m_builder.dropColumn(property),
                                        property->getKey(), {entity.get(), property.get()});
        if (!result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeColumnChanges(const std::shared_ptr<model::entity> & entity,
                                                 const property_change & property)
{
    zk::ZkBool result = writeColumnStep(entity, property);
    if (!result || !property.previous) {
        return result;
    }
    const bool hadIndex = hasColumn(property.previous) && property.previous->isIndex();
    if (!hadIndex && property.current->isIndex()) {
        result = writeIndex(property.current, entity.get());
    } else if (hadIndex && !property.current->isIndex()) {
        // The index bears the name that the older version gave it.
        result = write(statement_action::drop_index, m_builder.dropIndex(property.previous),
                       property.previous->getKey(), {entity.get(), property.previous.get()});
    }
    return result;
}

zk::ZkBool ddl_export_passes::writeColumnStep(const std::shared_ptr<model::entity> & entity,
                                              const property_change & property)
{
    const ddl_export_script::subject about{entity.get(), property.current.get()};
    if (!hasColumn(property.previous)) {
        return write(statement_action::add_column, m_builder.addColumn(property.current),
                     property.current->getKey(), about);
    }
    if (m_builder.getSqlColumnName(property.previous, -1, true) !=
        m_builder.getSqlColumnName(property.current, -1, true)) {
        return write(statement_action::rename_column,
                     m_builder.renameColumn(property.previous, property.current), property.current->getKey(),
                     about);
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeForeignKeyChanges(const entity_change & change)
{
    const auto previous = relationshipsOf(change.previous);
    const auto current = relationshipsOf(change.current);
    const zk::ZkBool dropped = writeDroppedForeignKeys(change.current, *previous, *current);
    if (!dropped || !m_builder.m_bAlterTableForeignKey) {
        return dropped;
    }
    for (const std::shared_ptr<model::relationship> & relationship : current->values()) {
        if (!relationship || previous->exist(relationship->getId())) {
            continue;
        }
        if (const zk::ZkBool result = writeForeignKey(change.current, relationship); !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeDroppedForeignKeys(const std::shared_ptr<model::entity> & entity,
                                                      const list_of_relation & before,
                                                      const list_of_relation & after)
{
    for (const std::shared_ptr<model::relationship> & relationship : before.values()) {
        const std::shared_ptr<model::property> property =
            relationship ? relationship->getProperty() : nullptr;
        if (!property || after.exist(relationship->getId()) ||
            relationship->getType() == model::relationship::one_to_many ||
            relationship->getEntityTargetId() == entity->getId()) {
            continue;
        }
        const zk::ZkBool result =
            write(statement_action::drop_foreign_key, m_builder.dropForeignKey(relationship),
                  property->getKey(), {entity.get(), property.get(), relationship.get()});
        if (!result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

} // namespace plugin
