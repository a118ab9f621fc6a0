#include "database/server/target_database.h"

#include <algorithm>
#include <iterator>

namespace database::server {

namespace {

/// A database that can be run here.
struct runnable
{
    QLatin1String key;
    std::unique_ptr<target_database> (*start)(QString & why);
    const char * packages; ///< of Debian, that bring it
};

constexpr runnable Runnables[] = {
    {QLatin1String("sqlite"), &startSqlite, "libqt6sql6-sqlite"},
    {QLatin1String("mariadb"), &startMariaDb, "mariadb-server and libqt6sql6-mysql"},
    {QLatin1String("postgresql"), &startPostgreSql, "postgresql and libqt6sql6-psql"},
};

} // namespace

std::unique_ptr<target_database> start(const QString & key, QString & why)
{
    const auto * const found = std::find_if(std::begin(Runnables), std::end(Runnables),
                                            [&key](const runnable & each) { return each.key == key; });
    if (found == std::end(Runnables)) {
        why = QStringLiteral("it cannot be run here; sqlite, mariadb and postgresql can");
        return nullptr;
    }
    std::unique_ptr<target_database> started = found->start(why);
    if (!started) {
        why += QStringLiteral("; the packages %1 bring it").arg(QLatin1String(found->packages));
    }
    return started;
}

} // namespace database::server
