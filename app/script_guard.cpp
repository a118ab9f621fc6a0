#include "app/script_guard.h"

#include "app/output.h"

#include <QDir>
#include <QSet>

#include <memory>

namespace app {

tools::script_guard commandScriptGuard(bool leaveOut)
{
    return [leaveOut, told = std::make_shared<QSet<QString>>()](const QString & file, bool isStored) {
        if (leaveOut) {
            return tools::script_permission::leave_out;
        }
        if (isStored && !told->contains(file)) {
            told->insert(file);
            printError(QStringLiteral("Custom script of the project: %1 ('--no-custom-script' leaves it out)")
                           .arg(QDir::toNativeSeparators(file)));
        }
        return tools::script_permission::run;
    };
}

} // namespace app
