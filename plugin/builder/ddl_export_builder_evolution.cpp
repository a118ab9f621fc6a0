// The chain of tagged versions: each one is restored into a file of its own, loaded and compared.

#include "plugin/builder/ddl_export_builder.h"

#include "plugin/ddl_export.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"
#include "model/project_historic.h"
#include "storage/restored_version.h"
#include "tools/bounded_uncompress.h"
#include "zk/zk_dao.h"
#include "zk/zk_sql_database.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace plugin {

namespace {

using list_of_historic = zk::ZkCollection<long, std::shared_ptr<model::project_historic>>;

QSqlError fetchTags(list_of_historic & tags)
{
    const context::ctx_scoped scope(context::ctx_project::getSingleton());
    return zk::dao::fetchByQuery(
        tags, zk::ZkSqlQuery().orderAsc(QStringLiteral("t_project_historic.dt_creation")), scope.database());
}

} // namespace

struct ddl_export_builder::fetched_tags
{
    list_of_historic list;
    QSqlError error;
};

const ddl_export_builder::fetched_tags & ddl_export_builder::tags()
{
    if (!m_tags) {
        m_tags = std::make_shared<fetched_tags>();
        m_tags->error = fetchTags(m_tags->list);
    }
    return *m_tags;
}

int ddl_export_builder::countScripts()
{
    m_tags.reset();
    const ddl_export::export_db_schema mode = m_pPlugin->getExportDatabaseSchema();
    const int full = mode == ddl_export::full || mode == ddl_export::full_and_evolution ? 1 : 0;
    // What is wrong with the tags is told when they are used.
    if ((mode != ddl_export::evolution && mode != ddl_export::full_and_evolution) || tags().error.isValid() ||
        tags().list.isEmpty()) {
        return full;
    }
    return full + static_cast<int>(tags().list.count()) + 1;
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
    if (const QSqlError error = tags().error; error.isValid()) {
        return tagsFailure(error);
    }
    if (tags().list.isEmpty()) {
        return zk::ZkBool::success();
    }
    const QString temp = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    if (temp.isEmpty()) {
        return zk::ZkBool::failure(tr("Cannot get temp directory to extract tag project state"));
    }
    storage::removeLeftVersions(temp);
    int version = 0;
    std::shared_ptr<model::project> previous;
    for (const std::shared_ptr<model::project_historic> & tag : tags().list.values()) {
        if (!tag) {
            continue;
        }
        ++version;
        if (const zk::ZkBool result = buildTaggedVersion(*tag, temp, project, version, previous); !result) {
            return result;
        }
    }
    zk::ZkSqlDatabase::clearAllDatabases();
    const std::shared_ptr<model::project> self = project.getThis();
    context::ctx_project::getSingleton().setProject(self);
    const zk::ZkBool result = buildSchemaEvolutionCompare(previous, self, version + 1);
    m_pPreviousProject = nullptr;
    if (previous) {
        previous->release();
    }
    return result;
}

zk::ZkBool ddl_export_builder::buildTaggedVersion(const model::project_historic & tag, const QString & temp,
                                                  const model::project & project, int version,
                                                  std::shared_ptr<model::project> & previous)
{
    storage::restored_version file;
    if (const zk::ZkBool restored =
            restoreTag(tag, temp, project.getName() + QStringLiteral("_v%1_").arg(version), file);
        !restored) {
        return restored;
    }
    zk::ZkSqlDatabase::clearAllDatabases();
    const auto loaded = std::make_shared<model::project>(project.getId());
    loaded->setLocation(temp);
    loaded->setName(QFileInfo(file.fileName()).completeBaseName());
    context::ctx_project::getSingleton().setProject(loaded);
    if (const QSqlError error = loaded->load(); error.isValid()) {
        return zk::ZkBool::failure(
            tr("An error occurred loading project tag '%1' :\n%2").arg(file.fileName(), error.text()));
    }
    loaded->setName(project.getName());
    const zk::ZkBool result = version == 1 ? buildSchemaFull(*loaded, true)
                                           : buildSchemaEvolutionCompare(previous, loaded, version);
    zk::ZkSqlDatabase::clearAllDatabases();
    // Only the newest version is compared with what follows; two are in memory at most.
    m_pPreviousProject = nullptr;
    if (previous) {
        previous->release();
    }
    previous = loaded;
    return result;
}

zk::ZkBool ddl_export_builder::restoreTag(const model::project_historic & tag, const QString & temp,
                                          const QString & start, storage::restored_version & file)
{
    QByteArray compressed;
    if (const QSqlError error = tag.readProjectFile(compressed); error.isValid()) {
        return tagsFailure(error);
    }
    const QByteArray data = tools::boundedUncompress(compressed);
    if (data.isEmpty()) {
        return zk::ZkBool::failure(tr("Cannot uncompress project file : %1")
                                       .arg(storage::restored_version::momentName(temp, start)));
    }
    return file.create(temp, start, data)
               ? zk::ZkBool::success()
               : zk::ZkBool::failure(tr("An error occurred opening project file : %1").arg(file.fileName()));
}

zk::ZkBool ddl_export_builder::tagsFailure(const QSqlError & error)
{
    return zk::ZkBool::failure(tr("Error loading all project historics :\n%1").arg(error.text()));
}

} // namespace plugin
