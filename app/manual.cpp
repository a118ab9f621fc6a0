#include "app/manual.h"

#include <QCoreApplication>
#include <QDir>
#include <QUrl>

namespace app {

QString manualUrl()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return QUrl::fromLocalFile(QDir::cleanPath(program.filePath(QStringLiteral(KORVANE_MANUAL)))).toString();
}

} // namespace app
