// The driver: which scripts there are, what each is called, and what surrounds its statements.

#include "plugin/builder/ddl_export_builder.h"

#include "plugin/builder/ddl_export_history.h"
#include "plugin/builder/ddl_export_passes.h"
#include "plugin/builder/ddl_export_script.h"
#include "plugin/builder/statement_file.h"
#include "plugin/ddl_export.h"

#include "context/ctx_project.h"
#include "model/project.h"
#include "tools/custom_javascript.h"
#include "tools/wait_cursor.h"
#include "zk/zk_sql_database.h"

#include <QDir>

#include <utility>

namespace plugin {

ddl_export_builder::ddl_export_builder(ddl_export * plugin)
    : m_pPlugin(plugin), m_progress([this](int done, int total) { Q_EMIT onProgress(done, total); }),
      m_sinks(
          [](const script_identity & script) { return std::make_unique<statement_file>(script.fileName); })
{
}
ddl_export_builder::~ddl_export_builder() = default;

void ddl_export_builder::setSinks(const sink_maker & sinks)
{
    m_sinks = sinks;
}

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
    return buildScripts(project);
}

zk::ZkBool ddl_export_builder::buildScripts(model::project & project)
{
    if (!m_pPlugin) {
        return noPluginFailure();
    }
    // Evolution makes other projects current, and the context may be all that keeps this one alive.
    const std::shared_ptr<model::project> self = project.getThis();
    takeSettings();
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
    releaseSettings();
    return result;
}

zk::ZkBool ddl_export_builder::buildStep(const std::shared_ptr<model::project> & previous,
                                         const std::shared_ptr<model::project> & current, int from, int to)
{
    if (!m_pPlugin) {
        return noPluginFailure();
    }
    takeSettings();
    m_progress.begin(1);
    const bool isFirst = !previous && current && from == 0;
    zk::ZkBool result = isFirst ? buildSchemaFull(*current, true) : compare(previous, current, from, to);
    m_pPreviousProject = nullptr;
    m_pCurrentProject = nullptr;
    releaseSettings();
    return result;
}

/// Settings that count for all scripts of one build are asked for once.
void ddl_export_builder::takeSettings()
{
    m_sExportPath = m_pPlugin->getDDLExportPath(true);
    m_lstTypeMapping = m_pPlugin->getListTypeMappingByDb(m_pPlugin->getDatabaseType());
    m_pCustomScript = m_pPlugin->getCustomScript();
    m_pHistory.reset();
}

void ddl_export_builder::releaseSettings()
{
    m_pCustomScript.reset();
    m_sExportPath.clear();
}

zk::ZkBool ddl_export_builder::noPluginFailure()
{
    return zk::ZkBool::failure(tr("There is no plugin associated to the DDL builder class"));
}

const ddl_export_history & ddl_export_builder::history()
{
    if (!m_pHistory) {
        m_pHistory = std::make_shared<ddl_export_history>();
    }
    return *m_pHistory;
}

int ddl_export_builder::countScripts()
{
    const ddl_export::export_db_schema mode = m_pPlugin->getExportDatabaseSchema();
    const int full = mode == ddl_export::full || mode == ddl_export::full_and_evolution ? 1 : 0;
    // What is wrong with the tags is told when they are used.
    if ((mode != ddl_export::evolution && mode != ddl_export::full_and_evolution) ||
        history().getError().isValid() || history().getTags().isEmpty()) {
        return full;
    }
    return full + static_cast<int>(history().getTags().count()) + 1;
}

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
    return writeScript(project.getName(), 0, firstVersion ? 1 : 0, tr("Full database schema"),
                       [&entities](ddl_export_passes & passes) { return passes.writeSchema(*entities); });
}

zk::ZkBool ddl_export_builder::buildSchemaEvolution(model::project & project)
{
    if (!m_pPlugin) {
        return noPluginFailure();
    }
    const ddl_export::export_db_schema mode = m_pPlugin->getExportDatabaseSchema();
    if (mode != ddl_export::evolution && mode != ddl_export::full_and_evolution) {
        return zk::ZkBool::success();
    }
    if (const QSqlError error = history().getError(); error.isValid()) {
        return ddl_export_history::tagsFailure(error);
    }
    if (history().getTags().isEmpty()) {
        return zk::ZkBool::success();
    }
    std::shared_ptr<model::project> previous;
    const zk::ZkBool versions =
        history().forEach(project, [&](const std::shared_ptr<model::project> & version, int number) {
            const zk::ZkBool result = number == 1 ? buildSchemaFull(*version, true)
                                                  : buildSchemaEvolutionCompare(previous, version, number);
            zk::ZkSqlDatabase::clearAllDatabases();
            releasePrevious(previous);
            previous = version;
            return result;
        });
    if (!versions) {
        return versions;
    }
    zk::ZkSqlDatabase::clearAllDatabases();
    const std::shared_ptr<model::project> self = project.getThis();
    context::ctx_project::getSingleton().setProject(self);
    const zk::ZkBool result =
        buildSchemaEvolutionCompare(previous, self, static_cast<int>(history().getTags().count()) + 1);
    releasePrevious(previous);
    return result;
}

/// Only the newest version is compared with what follows; two are in memory at most.
void ddl_export_builder::releasePrevious(const std::shared_ptr<model::project> & previous)
{
    m_pPreviousProject = nullptr;
    if (previous) {
        previous->release();
    }
}

zk::ZkBool ddl_export_builder::buildSchemaEvolutionCompare(std::shared_ptr<model::project> previous,
                                                           std::shared_ptr<model::project> current,
                                                           int version)
{
    if (!m_pPlugin) {
        return noPluginFailure();
    }
    return compare(previous, current, version - 1, version);
}

zk::ZkBool ddl_export_builder::compare(const std::shared_ptr<model::project> & previous,
                                       const std::shared_ptr<model::project> & current, int from, int to)
{
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
    return writeScript(current->getName(), from, to, tr("Database schema evolution"),
                       [](ddl_export_passes & passes) { return passes.writeChanges(); });
}

QString ddl_export_builder::scriptName(const QString & projectName, int from, int to) const
{
    QString suffix = QStringLiteral("_full");
    if (from > 0) {
        suffix = QStringLiteral("_v%1_to_v%2").arg(from).arg(to);
    } else if (to > 0) {
        suffix = QStringLiteral("_v%1").arg(to);
    }
    return projectName + QLatin1Char('_') + getBuilderName() + QStringLiteral("_db_schema") + suffix +
           QStringLiteral(".sql");
}

zk::ZkBool ddl_export_builder::writeScript(const QString & projectName, int from, int to,
                                           const QString & title, const script_body & body)
{
    const QString path = m_sExportPath.isEmpty() ? m_pPlugin->getDDLExportPath(true) : m_sExportPath;
    const QString fileName = QDir(path).absoluteFilePath(scriptName(projectName, from, to));
    ddl_export_script script(*this, m_sinks({fileName, from, to}), fileName, title,
                             ddl_export_script::origin{m_pCurrentProject, m_pPlugin->getName(), path,
                                                       m_pCustomScript,
                                                       [this] { return m_pPlugin->isStopWanted(); }});
    ddl_export_passes passes(*this, script);
    zk::ZkBool result = script.open();
    if (result) {
        result = script.write(statement_action::begin, exportBegin(),
                              tr("%1 : DDL export begin (%2)").arg(title, fileName), {});
    }
    if (result) {
        result = body(passes);
    }
    return result ? endScript(script, projectName) : result;
}

zk::ZkBool ddl_export_builder::endScript(ddl_export_script & script, const QString & projectName)
{
    zk::ZkBool result =
        script.write(statement_action::end, exportEnd(),
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

} // namespace plugin
