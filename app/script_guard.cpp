#include "app/script_guard.h"

#include "app/output.h"

#include <QDir>

namespace app {

tools::script_guard commandScriptGuard(bool leaveOut)
{
    return [leaveOut](const QString & file, bool isStored) {
        if (leaveOut) {
            return tools::script_permission::leave_out;
        }
        if (isStored) {
            printError(QStringLiteral("Custom script of the project: %1 ('--no-custom-script' leaves it out)")
                           .arg(QDir::toNativeSeparators(file)));
        }
        return tools::script_permission::run;
    };
}

} // namespace app
