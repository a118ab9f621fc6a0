// The chain of tagged versions: each one is restored into a file of its own, loaded and compared.

#include "plugin/builder/ddl_export_builder.h"

#include "plugin/ddl_export.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"
#include "model/project_historic.h"
#include "tools/bounded_uncompress.h"
#include "zk/zk_dao.h"
#include "zk/zk_sql_database.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

namespace plugin {

namespace {

using list_of_historic = zk::ZkCollection<long, std::shared_ptr<model::project_historic>>;

const QString ProjectSuffix = QStringLiteral(".korv");

QSqlError fetchTags(list_of_historic & tags)
{
    const context::ctx_scoped scope(context::ctx_project::getSingleton());
    return zk::dao::fetchByQuery(
        tags, zk::ZkSqlQuery().orderAsc(QStringLiteral("t_project_historic.dt_creation")), scope.database());
}

QString momentName(const QString & folder, const QString & start)
{
    return QDir(folder).absoluteFilePath(
        start + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmsszzz")) + ProjectSuffix);
}

/// Opens a new file that only this user can read. What is there already, a link included, is not touched: an
/// export that meets the name of another one at the same moment takes a later moment's.
bool openNewFile(QFile & file, const QString & folder, const QString & start)
{
    constexpr int attempts = 300;
    for (int i = 0; i < attempts; ++i) {
        file.setFileName(momentName(folder, start));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                      QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
            return true;
        }
        if (const QFileInfo taken(file.fileName()); !taken.exists() && !taken.isSymLink()) {
            return false;
        }
        QThread::msleep(1);
    }
    return false;
}

/// Writes the open file; one that could not be written whole is removed.
bool writeWhole(QFile & file, const QByteArray & data)
{
    const bool isWritten = file.write(data) == data.size() && file.flush();
    file.close();
    if (isWritten && file.error() == QFileDevice::NoError) {
        return true;
    }
    file.remove();
    return false;
}

} // namespace

int ddl_export_builder::countScripts() const
{
    const ddl_export::export_db_schema mode = m_pPlugin->getExportDatabaseSchema();
    const int full = mode == ddl_export::full || mode == ddl_export::full_and_evolution ? 1 : 0;
    list_of_historic tags;
    // What is wrong with the tags is told when they are used.
    if ((mode != ddl_export::evolution && mode != ddl_export::full_and_evolution) ||
        fetchTags(tags).isValid() || tags.isEmpty()) {
        return full;
    }
    return full + static_cast<int>(tags.count()) + 1;
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
    list_of_historic tags;
    if (const QSqlError error = fetchTags(tags); error.isValid()) {
        return zk::ZkBool::failure(tr("Error loading all project historics :\n%1").arg(error.text()));
    }
    if (tags.isEmpty()) {
        return zk::ZkBool::success();
    }
    const QString temp = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    if (temp.isEmpty()) {
        return zk::ZkBool::failure(tr("Cannot get temp directory to extract tag project state"));
    }
    int version = 0;
    std::shared_ptr<model::project> previous;
    for (const std::shared_ptr<model::project_historic> & tag : tags.values()) {
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
    QString fileName;
    if (const zk::ZkBool restored =
            restoreTag(tag, temp, project.getName() + QStringLiteral("_v%1_").arg(version), fileName);
        !restored) {
        return restored;
    }
    zk::ZkSqlDatabase::clearAllDatabases();
    const auto loaded = std::make_shared<model::project>(project.getId());
    loaded->setLocation(temp);
    loaded->setName(QFileInfo(fileName).completeBaseName());
    context::ctx_project::getSingleton().setProject(loaded);
    if (const QSqlError error = loaded->load(); error.isValid()) {
        return zk::ZkBool::failure(
            tr("An error occurred loading project tag '%1' :\n%2").arg(fileName, error.text()));
    }
    loaded->setName(project.getName());
    const zk::ZkBool result = version == 1 ? buildSchemaFull(*loaded, true)
                                           : buildSchemaEvolutionCompare(previous, loaded, version);
    zk::ZkSqlDatabase::clearAllDatabases();
    QFile::remove(fileName);
    // Only the newest version is compared with what follows; two are in memory at most.
    m_pPreviousProject = nullptr;
    if (previous) {
        previous->release();
    }
    previous = loaded;
    return result;
}

zk::ZkBool ddl_export_builder::restoreTag(const model::project_historic & tag, const QString & temp,
                                          const QString & start, QString & fileName)
{
    const QByteArray data = tools::boundedUncompress(tag.getProjectFile());
    if (data.isEmpty()) {
        return zk::ZkBool::failure(tr("Cannot uncompress project file : %1").arg(momentName(temp, start)));
    }
    QFile file;
    const bool isRestored = openNewFile(file, temp, start) && writeWhole(file, data);
    fileName = file.fileName();
    return isRestored ? zk::ZkBool::success()
                      : zk::ZkBool::failure(tr("An error occurred opening project file : %1").arg(fileName));
}

} // namespace plugin
