// The chain of tagged versions: each one is restored into a file of its own, loaded and handed on.

#include "plugin/builder/ddl_export_history.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"
#include "storage/restored_version.h"
#include "zk/zk_dao.h"
#include "zk/zk_sql_database.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace plugin {

ddl_export_history::ddl_export_history()
{
    const context::ctx_scoped scope(context::ctx_project::getSingleton());
    m_error = zk::dao::fetchByQuery(
        m_tags, zk::ZkSqlQuery().orderAsc(QStringLiteral("t_project_historic.dt_creation")),
        scope.database());
}

zk::ZkBool ddl_export_history::forEach(const model::project & project, const visitor & visit) const
{
    const QString temp = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    if (temp.isEmpty()) {
        return zk::ZkBool::failure(tr("Cannot get temp directory to extract tag project state"));
    }
    storage::removeLeftVersions(temp);
    int number = 0;
    for (const std::shared_ptr<model::project_historic> & tag : m_tags.values()) {
        ++number;
        storage::restored_version file;
        zk::ZkBool result =
            restore(*tag, temp, project.getName() + QStringLiteral("_v%1_").arg(number), file);
        const auto version = std::make_shared<model::project>(project.getId());
        if (result) {
            result = load(temp, file.fileName(), *version);
        }
        if (result) {
            version->setName(project.getName());
            result = visit(version, number);
        }
        if (!result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_history::restore(const model::project_historic & tag, const QString & temp,
                                       const QString & start, storage::restored_version & file)
{
    QByteArray compressed;
    if (const QSqlError error = tag.readProjectFile(compressed); error.isValid()) {
        return tagsFailure(error);
    }
    switch (file.restore(temp, start, compressed)) {
    case storage::restored_version::outcome::damaged:
        return zk::ZkBool::failure(tr("Cannot uncompress project file : %1").arg(file.fileName()));
    case storage::restored_version::outcome::unwritten:
        return zk::ZkBool::failure(tr("An error occurred opening project file : %1").arg(file.fileName()));
    case storage::restored_version::outcome::restored:
        break;
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_history::load(const QString & temp, const QString & name, model::project & version)
{
    zk::ZkSqlDatabase::clearAllDatabases();
    version.setLocation(temp);
    version.setName(QFileInfo(name).completeBaseName());
    context::ctx_project::getSingleton().setProject(version.getThis());
    const QSqlError error = version.load();
    return error.isValid()
               ? zk::ZkBool::failure(
                     tr("An error occurred loading project tag '%1' :\n%2").arg(name, error.text()))
               : zk::ZkBool::success();
}

zk::ZkBool ddl_export_history::tagsFailure(const QSqlError & error)
{
    return zk::ZkBool::failure(tr("Error loading all project historics :\n%1").arg(error.text()));
}

} // namespace plugin
