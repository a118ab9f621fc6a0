// The driver: which scripts are written, and the passes that every script is made of.

#include "plugin/builder/ddl_export_builder.h"

#include "plugin/builder/ddl_export_script.h"
#include "plugin/ddl_export.h"

#include "context/ctx_project.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"
#include "tools/custom_javascript.h"
#include "tools/wait_cursor.h"
#include "zk/zk_sql_database.h"

#include <QDir>

namespace plugin {

namespace {

// Of the units of a script; tables and foreign keys take the rest.
constexpr int LinkTableShare = 100;
constexpr int IndexShare = 100;

} // namespace

ddl_export_builder::ddl_export_builder(ddl_export * plugin)
    : m_pPlugin(plugin), m_progress([this](int done, int total) { Q_EMIT onProgress(done, total); })
{
}
ddl_export_builder::~ddl_export_builder() = default;

zk::ZkBool ddl_export_builder::build(model::project & project)
{
    const tools::wait_cursor cursor;
    if (!m_pPlugin) {
        return noPluginFailure();
    }
    const QString path = m_pPlugin->getDDLExportPath(true);
    if (path.isEmpty() || !QDir().exists(path)) {
        return zk::ZkBool::failure(tr("Directory to create DDL SQL script doesn't exist : %1").arg(path));
    }
    // Evolution makes other projects current, and the context may be all that keeps this one alive.
    const std::shared_ptr<model::project> self = project.getThis();
    m_sExportPath = path;
    m_lstTypeMapping = m_pPlugin->getListTypeMappingByDb(m_pPlugin->getDatabaseType());
    m_pCustomScript = m_pPlugin->getCustomScript();
    m_pPreviousProject = nullptr;
    m_pCurrentProject = &project;

    m_progress.begin(countScripts());
    zk::ZkBool result = buildSchemaFull(project, false);
    if (result) {
        result = buildSchemaEvolution(project);
    }

    zk::ZkSqlDatabase::clearAllDatabases();
    context::ctx_project::getSingleton().setProject(self);
    m_pPreviousProject = nullptr;
    m_pCurrentProject = &project;
    m_pCustomScript.reset();
    m_sExportPath.clear();
    return result;
}

zk::ZkBool ddl_export_builder::noPluginFailure()
{
    return zk::ZkBool::failure(tr("There is no plugin associated to the DDL builder class"));
}

std::unique_ptr<ddl_export_script>
ddl_export_builder::newScript(const QString & projectName, const QString & suffix, const QString & title)
{
    const QString path = m_sExportPath.isEmpty() ? m_pPlugin->getDDLExportPath(true) : m_sExportPath;
    const QString fileName = QDir(path).absoluteFilePath(projectName) + QLatin1Char('_') + getBuilderName() +
                             QStringLiteral("_db_schema") + suffix + QStringLiteral(".sql");
    return std::make_unique<ddl_export_script>(
        *this, fileName, title,
        ddl_export_script::origin{m_pCurrentProject, m_pPlugin->getName(), path, m_pCustomScript});
}

zk::ZkBool ddl_export_builder::writeBegin(ddl_export_script & script)
{
    return script.write(ddl_action::Begin, exportBegin(),
                        tr("%1 : DDL export begin (%2)").arg(script.title(), script.fileName()), {});
}

zk::ZkBool ddl_export_builder::writeEnd(ddl_export_script & script, const QString & projectName)
{
    zk::ZkBool result =
        script.write(ddl_action::End, exportEnd(),
                     tr("%1 : DDL export end (%2)").arg(script.title(), script.fileName()), {});
    if (result) {
        result = script.close();
    }
    if (result) {
        script.report(tr("%1 DDL SQL script created for project '%2' : '%3'")
                          .arg(script.title(), projectName, script.fileName()));
        m_progress.scriptDone();
        Q_EMIT onFileWritten(script.fileName());
    }
    return result;
}

zk::ZkBool ddl_export_builder::writeTable(ddl_export_script & script,
                                          const std::shared_ptr<model::entity> & entity)
{
    return script.write(ddl_action::CreateTable, createTable(entity),
                        tr("%1 : create table DDL SQL script for entity '%2' (%3)")
                            .arg(script.title(), entity->getKey(), script.fileName()),
                        {entity.get()});
}

zk::ZkBool ddl_export_builder::writeIndex(ddl_export_script & script,
                                          const std::shared_ptr<model::property> & property,
                                          model::entity * entity)
{
    return script.write(ddl_action::CreateIndex, createIndex(property),
                        tr("%1 : create index DDL SQL script for property '%2' (%3)")
                            .arg(script.title(), property->getKey(), script.fileName()),
                        {entity, property.get()});
}

zk::ZkBool ddl_export_builder::writeLinkTables(ddl_export_script & script)
{
    m_progress.pass(static_cast<int>(m_lstExtraTable.count()), LinkTableShare);
    for (const std::shared_ptr<model::relationship> & relationship : m_lstExtraTable.values()) {
        m_progress.step();
        if (!relationship) {
            continue;
        }
        const std::shared_ptr<model::property> property = relationship->getProperty();
        const std::shared_ptr<model::entity> owner =
            property ? m_pCurrentProject->getEntityById(property->getEntityId()) : nullptr;
        const zk::ZkBool result =
            script.write(ddl_action::CreateExtraTable, createExtraTable(relationship),
                         tr("%1 : create extra-table DDL SQL script for relationship n-n '%2' (%3)")
                             .arg(script.title(), relationship->getExtraTable(), script.fileName()),
                         {owner.get(), property.get()});
        if (!result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_builder::writeIndexes(ddl_export_script & script)
{
    m_progress.pass(static_cast<int>(m_lstIndex.count()), IndexShare);
    for (const std::shared_ptr<model::property> & property : m_lstIndex.values()) {
        m_progress.step();
        if (!property) {
            continue;
        }
        const std::shared_ptr<model::entity> owner =
            m_pCurrentProject->getEntityById(property->getEntityId());
        if (const zk::ZkBool result = writeIndex(script, property, owner.get()); !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_builder::writeForeignKey(ddl_export_script & script,
                                               const std::shared_ptr<model::entity> & entity,
                                               const std::shared_ptr<model::relationship> & relationship)
{
    if (!relationship || relationship->getType() == model::relationship::one_to_many) {
        return zk::ZkBool::success();
    }
    const std::shared_ptr<model::property> property = relationship->getProperty();
    const std::shared_ptr<model::entity> target = relationship->getEntityTarget();
    if (!property || !target || target->getId() == entity->getId()) {
        return zk::ZkBool::success();
    }
    return script.write(
        ddl_action::AddForeignKey, addForeignKey(relationship),
        tr("%1 : add foreign key DDL SQL script for entity '%2' : property '%3', target "
           "entity '%4' (%5)")
            .arg(script.title(), entity->getKey(), property->getName(), target->getKey(), script.fileName()),
        {entity.get(), property.get()});
}

ddl_export_builder::list_of_tables
ddl_export_builder::tablesOf(const zk::ZkCollection<long, std::shared_ptr<model::entity>> & entities) const
{
    list_of_tables tables = entities.values();
    std::erase_if(tables, [this](const std::shared_ptr<model::entity> & e) {
        return !e || e->getId() == 0 || !canCreateTable(e);
    });
    return tables;
}

} // namespace plugin
