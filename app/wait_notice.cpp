#include "app/wait_notice.h"

#include "app/output.h"

#include "zk/sqlite_locks.h"

#include <QDir>

#include <unistd.h>

namespace app {

void tellWaiting()
{
    // In a log of a job the line would only be taken for a failure.
    if (::isatty(STDERR_FILENO) == 0) {
        return;
    }
    zk::sqlite::setWaitListener([isTold = false](const QString & file) mutable {
        if (!isTold) {
            printError(QStringLiteral("Waiting for another process that is using %1")
                           .arg(QDir::toNativeSeparators(file)));
        }
        isTold = true;
    });
}

} // namespace app
