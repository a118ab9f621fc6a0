// The script that leads from one version of a project to the next.
//
// Versions of an object are matched by id, so that a new name is a rename and never a drop.

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

/// An entity in both versions; `previous` is null when it is new.
struct ddl_export_builder::entity_change
{
    std::shared_ptr<model::entity> previous;
    std::shared_ptr<model::entity> current;
};

/// A property in both versions; `previous` is null when it is new.
struct ddl_export_builder::property_change
{
    std::shared_ptr<model::property> previous;
    std::shared_ptr<model::property> current;
};

zk::ZkBool ddl_export_builder::buildSchemaEvolutionCompare(std::shared_ptr<model::project> previous,
                                                           std::shared_ptr<model::project> current,
                                                           int version)
{
    if (!m_pPlugin) {
        return noPluginFailure();
    }
    if (!previous) {
        return zk::ZkBool::failure(tr("Invalid previous project"));
    }
    if (!current) {
        return zk::ZkBool::failure(tr("Invalid current project"));
    }
    if (!previous->getListOfAllEntities()) {
        return zk::ZkBool::failure(tr("Previous project doesn't have a valid list of entities"));
    }
    if (!current->getListOfAllEntities()) {
        return zk::ZkBool::failure(tr("Current project doesn't have a valid list of entities"));
    }
    m_pCurrentProject = current.get();
    m_pPreviousProject = previous.get();
    m_lstExtraTable.clear();
    m_lstIndex.clear();
    const std::unique_ptr<ddl_export_script> script =
        newScript(current->getName(), QStringLiteral("_v%1_to_v%2").arg(version - 1).arg(version),
                  tr("Database schema evolution"));
    zk::ZkBool result = script->open();
    if (result) {
        result = writeBegin(*script);
    }
    if (result) {
        result = writeChanges(*script);
    }
    return result ? writeEnd(*script, current->getName()) : result;
}

std::vector<ddl_export_builder::entity_change> ddl_export_builder::changedEntities() const
{
    std::vector<entity_change> changes;
    for (const std::shared_ptr<model::entity> & entity :
         tablesOf(*m_pCurrentProject->getListOfAllEntities())) {
        const std::shared_ptr<model::entity> previous = m_pPreviousProject->getEntityById(entity->getId());
        // The version number of an entity is the only sign of a change.
        if (!previous || previous->getVersion() != entity->getVersion()) {
            changes.push_back({previous, entity});
        }
    }
    return changes;
}

zk::ZkBool ddl_export_builder::writeChanges(ddl_export_script & script)
{
    const std::vector<entity_change> changes = changedEntities();
    zk::ZkBool result = writeDroppedTables(script);
    if (result) {
        result = writeChangedTables(script, changes);
    }
    if (result) {
        result = writeLinkTables(script);
    }
    if (result) {
        result = writeIndexes(script);
    }
    if (result && m_pPlugin->getExportRelationships()) {
        result = writeChangedForeignKeys(script, changes);
    }
    return result;
}

zk::ZkBool ddl_export_builder::writeChangedTables(ddl_export_script & script,
                                                  const std::vector<entity_change> & changes)
{
    m_progress.pass(static_cast<int>(changes.size()), ChangeShare);
    for (const entity_change & change : changes) {
        m_progress.step();
        if (const zk::ZkBool result =
                change.previous ? writeTableChanges(script, change) : writeTable(script, change.current);
            !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_builder::writeChangedForeignKeys(ddl_export_script & script,
                                                       const std::vector<entity_change> & changes)
{
    m_progress.pass(static_cast<int>(changes.size()), ForeignKeyShare);
    for (const entity_change & change : changes) {
        m_progress.step();
        if (const zk::ZkBool result = writeForeignKeyChanges(script, change); !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_builder::writeDroppedTables(ddl_export_script & script)
{
    for (const std::shared_ptr<model::entity> & entity :
         tablesOf(*m_pPreviousProject->getListOfAllEntities())) {
        if (canCreateTable(m_pCurrentProject->getEntityById(entity->getId()))) {
            continue;
        }
        const zk::ZkBool result = script.write(ddl_action::DropTable, dropTable(entity),
                                               tr("%1 : drop table DDL SQL script for entity '%2' (%3)")
                                                   .arg(script.title(), entity->getKey(), script.fileName()),
                                               {entity.get()});
        if (!result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_builder::writeTableChanges(ddl_export_script & script, const entity_change & change)
{
    const std::shared_ptr<list_of_property> before = propertiesOf(change.previous);
    const std::shared_ptr<list_of_property> after = propertiesOf(change.current);
    zk::ZkBool result = zk::ZkBool::success();
    if (getSqlTableName(change.previous, true) != getSqlTableName(change.current, true)) {
        result = script.write(ddl_action::RenameTable, renameTable(change.previous, change.current),
                              tr("%1 : rename table DDL SQL script for entity '%2' (%3)")
                                  .arg(script.title(), change.current->getKey(), script.fileName()),
                              {change.current.get()});
    }
    if (result) {
        result = writeDroppedColumns(script, change.current, *before, *after);
    }
    const std::vector<std::shared_ptr<model::property>> columns = columnsOf(*after);
    for (auto it = columns.begin(); result && it != columns.end(); ++it) {
        result = writeColumnChanges(script, change.current, {before->getByKey((*it)->getId()), *it});
    }
    return result;
}

zk::ZkBool ddl_export_builder::writeDroppedColumns(ddl_export_script & script,
                                                   const std::shared_ptr<model::entity> & entity,
                                                   const list_of_property & before,
                                                   const list_of_property & after)
{
    for (const std::shared_ptr<model::property> & property : columnsOf(before)) {
        if (hasColumn(after.getByKey(property->getId()))) {
            continue;
        }
        const zk::ZkBool result =
            script.write(ddl_action::DropColumn, dropColumn(property),
                         tr("%1 : drop column DDL SQL script for property '%2' (%3)")
                             .arg(script.title(), property->getKey(), script.fileName()),
                         {entity.get(), property.get()});
        if (!result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_builder::writeColumnChanges(ddl_export_script & script,
                                                  const std::shared_ptr<model::entity> & entity,
                                                  const property_change & property)
{
    zk::ZkBool result = writeColumnStep(script, entity, property);
    if (!result || !property.previous) {
        return result;
    }
    const bool hadIndex = hasColumn(property.previous) && property.previous->isIndex();
    if (!hadIndex && property.current->isIndex()) {
        result = writeIndex(script, property.current, entity.get());
    } else if (hadIndex && !property.current->isIndex()) {
        // The index bears the name that the older version gave it.
        result = script.write(ddl_action::DropIndex, dropIndex(property.previous),
                              tr("%1 : drop index DDL SQL script for property '%2' (%3)")
                                  .arg(script.title(), property.previous->getKey(), script.fileName()),
                              {entity.get(), property.previous.get()});
    }
    return result;
}

zk::ZkBool ddl_export_builder::writeColumnStep(ddl_export_script & script,
                                               const std::shared_ptr<model::entity> & entity,
                                               const property_change & property)
{
    const ddl_export_script::subject about{entity.get(), property.current.get()};
    if (!hasColumn(property.previous)) {
        return script.write(ddl_action::AddColumn, addColumn(property.current),
                            tr("%1 : add column DDL SQL script for property '%2' (%3)")
                                .arg(script.title(), property.current->getKey(), script.fileName()),
                            about);
    }
    if (getSqlColumnName(property.previous, -1, true) != getSqlColumnName(property.current, -1, true)) {
        return script.write(ddl_action::RenameColumn, renameColumn(property.previous, property.current),
                            tr("%1 : rename column DDL SQL script for property '%2' (%3)")
                                .arg(script.title(), property.current->getKey(), script.fileName()),
                            about);
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_builder::writeForeignKeyChanges(ddl_export_script & script,
                                                      const entity_change & change)
{
    const auto previous = relationshipsOf(change.previous);
    const auto current = relationshipsOf(change.current);
    for (const std::shared_ptr<model::relationship> & relationship : previous->values()) {
        const std::shared_ptr<model::property> property =
            relationship ? relationship->getProperty() : nullptr;
        if (!property || current->exist(relationship->getId()) ||
            relationship->getType() == model::relationship::one_to_many ||
            relationship->getEntityTargetId() == change.current->getId()) {
            continue;
        }
        const zk::ZkBool result =
            script.write(ddl_action::DropForeignKey, dropForeignKey(relationship),
                         tr("%1 : drop foreign key DDL SQL script for relationship '%2' (%3)")
                             .arg(script.title(), property->getKey(), script.fileName()),
                         {change.current.get(), property.get()});
        if (!result) {
            return result;
        }
    }
    if (!m_bAlterTableForeignKey) {
        return zk::ZkBool::success();
    }
    for (const std::shared_ptr<model::relationship> & relationship : current->values()) {
        if (!relationship || previous->exist(relationship->getId())) {
            continue;
        }
        if (const zk::ZkBool result = writeForeignKey(script, change.current, relationship); !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

} // namespace plugin
