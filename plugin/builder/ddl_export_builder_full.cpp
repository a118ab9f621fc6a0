// The script that creates a whole schema.

#include "plugin/builder/ddl_export_builder.h"

#include "plugin/builder/ddl_export_script.h"
#include "plugin/ddl_export.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/relationship.h"

namespace plugin {

namespace {

// Of the units of a script, besides link tables and indexes.
constexpr int TableShare = 600;
constexpr int ForeignKeyShare = 200;

} // namespace

zk::ZkBool ddl_export_builder::buildSchemaFull(model::project & project, bool firstVersion)
{
    if (!m_pPlugin) {
        return noPluginFailure();
    }
    const ddl_export::export_db_schema mode = m_pPlugin->getExportDatabaseSchema();
    if (!firstVersion && mode != ddl_export::full && mode != ddl_export::full_and_evolution) {
        return zk::ZkBool::success();
    }
    m_lstExtraTable.clear();
    m_lstIndex.clear();
    m_pCurrentProject = &project;
    const std::shared_ptr<model::project::list_of_entity> entities = project.getListOfAllEntities();
    if (!entities) {
        return zk::ZkBool::failure(tr("This project doesn't have a valid list of entities"));
    }
    const std::unique_ptr<ddl_export_script> script =
        newScript(project.getName(), firstVersion ? QStringLiteral("_v1") : QStringLiteral("_full"),
                  tr("Full database schema"));
    zk::ZkBool result = script->open();
    if (result) {
        result = writeBegin(*script);
    }
    const list_of_tables tables = tablesOf(*entities);
    if (result) {
        result = writeTables(*script, tables);
    }
    if (result) {
        result = writeLinkTables(*script);
    }
    if (result) {
        result = writeIndexes(*script);
    }
    if (result && m_pPlugin->getExportRelationships() && m_bAlterTableForeignKey) {
        result = writeForeignKeys(*script, tables);
    }
    return result ? writeEnd(*script, project.getName()) : result;
}

zk::ZkBool ddl_export_builder::writeTables(ddl_export_script & script, const list_of_tables & tables)
{
    m_progress.pass(static_cast<int>(tables.size()), TableShare);
    for (const std::shared_ptr<model::entity> & entity : tables) {
        m_progress.step();
        if (const zk::ZkBool result = writeTable(script, entity); !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_builder::writeForeignKeys(ddl_export_script & script, const list_of_tables & tables)
{
    m_progress.pass(static_cast<int>(tables.size()), ForeignKeyShare);
    for (const std::shared_ptr<model::entity> & entity : tables) {
        m_progress.step();
        const std::shared_ptr<model::entity::list_of_relation> relationships = entity->getListOfRelation();
        if (!relationships) {
            continue;
        }
        for (const std::shared_ptr<model::relationship> & relationship : relationships->values()) {
            if (const zk::ZkBool result = writeForeignKey(script, entity, relationship); !result) {
                return result;
            }
        }
    }
    return zk::ZkBool::success();
}

} // namespace plugin
