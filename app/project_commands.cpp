#include "app/commands.h"

namespace app {

int importModel(const QString &, const QString &)
{
    return 1;
}
int dumpProject(const QString &)
{
    return 1;
}
int tagProject(const QString &, const QString &)
{
    return 1;
}
int logVersions(const QString &)
{
    return 1;
}

} // namespace app
