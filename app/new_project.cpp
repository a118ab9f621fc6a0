#include "app/new_project.h"

#include "app/project_work.h"
#include "app/whole_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace app {

namespace {

using zk::ZkBool;

class texts
{
    Q_DECLARE_TR_FUNCTIONS(app::new_project)
};

/// The model of a project that has just begun, as people write one: without ids and versions, which an import
/// gives.
const char FirstModel[] = R"({
  "format": "korvane-project", "formatVersion": 1, "name": "%1",
  "entities": [
    { "name": "customer", "tableName": "t_customer",
      "properties": [
        { "name": "id", "type": "long", "identifier": true },
        { "name": "email", "type": "QString", "allowNull": false } ] }
  ]
}
)";

QString named(const QString & file)
{
    return QDir::toNativeSeparators(file);
}

} // namespace

ZkBool beginProject(const QString & text, const QString & project)
{
    QString name = QFileInfo(project).completeBaseName();
    name.replace(QLatin1Char('\\'), QLatin1Char('_')).replace(QLatin1Char('"'), QLatin1Char('_'));
    const QByteArray model = QString::fromLatin1(FirstModel).arg(name).toUtf8();
    if (const ZkBool written = writeWholeFile(text, model); !written) {
        return ZkBool::failure(texts::tr("%1: cannot be written (%2)").arg(named(text), written.getDesc()));
    }
    return importText(text, project).result;
}

ZkBool copySample(const QString & project)
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QString sample = QDir::cleanPath(program.filePath(QStringLiteral(KORVANE_SAMPLE)));
    QFile file(sample);
    if (!file.copy(project)) {
        return ZkBool::failure(texts::tr("%1: cannot be copied to %2 (%3)")
                                   .arg(named(sample), named(project), file.errorString()));
    }
    // What was installed may be for reading only.
    QFile copy(project);
    copy.setPermissions(copy.permissions() | QFile::ReadOwner | QFile::WriteOwner);
    return ZkBool::success();
}

} // namespace app
