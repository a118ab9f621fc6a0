#include "app/commands.h"
#include "app/manual.h"
#include "app/window/project_window.h"

#include "context/ctx_global.h"

#include <QApplication>
#include <QTimer>

namespace app {

int showWindow(const QString & projectFile)
{
    context::ctx_global::setAppHelpManualUrl(manualUrl());
    project_window window;
    window.show();
    if (!projectFile.isEmpty()) {
        // What is wrong with the file is told over the window that goes on.
        QTimer::singleShot(0, &window, [&window, projectFile] { window.openFile(projectFile); });
    }
    return QApplication::exec();
}

} // namespace app
