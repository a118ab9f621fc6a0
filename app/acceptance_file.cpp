#include "app/acceptance_file.h"

#include "app/project_work.h"
#include "app/source.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace app {

zk::ZkBool readAccepted(const source & of, const QString & given, check::accepted_findings & accepted)
{
    const bool isInput = of.isText() && of.name() == StandardInput;
    const QString beside =
        isInput ? QString() : QFileInfo(of.name()).dir().filePath(QStringLiteral("korvane-check.json"));
    const QString name = given.isEmpty() ? beside : given;
    if (given.isEmpty() && (name.isEmpty() || !QFileInfo::exists(name))) {
        return zk::ZkBool::success();
    }
    QFile file(name);
    const QString shown = QDir::toNativeSeparators(name);
    return file.open(QIODevice::ReadOnly)
               ? check::readAcceptance(file.readAll(), shown, accepted)
               : zk::ZkBool::failure(
                     QStringLiteral("%1: cannot be read (%2)").arg(shown, file.errorString()));
}

} // namespace app
