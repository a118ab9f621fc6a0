#include "database/server/target_database.h"

#include "database/server/server_url.h"

#include <algorithm>
#include <iterator>

namespace database::server {

namespace {

/// A database that can be run here.
struct runnable
{
    QLatin1String key;
    std::unique_ptr<target_database> (*start)(QString & why);
    QString (*whyMissing)();
};

/// What opens a database by its URL.
struct openable
{
    QLatin1String scheme;
    std::unique_ptr<target_database> (*open)(const server_url & place, QString & why);
};

constexpr openable Openables[] = {
    {QLatin1String("sqlite"), &openSqlite},
    {QLatin1String("mysql"), &openMySql},
    {QLatin1String("mariadb"), &openMySql},
    {QLatin1String("postgresql"), &openPostgreSql},
};

constexpr runnable Runnables[] = {
    {QLatin1String("sqlite"), &startSqlite, [] { return QString(); }},
    {QLatin1String("mariadb"), &startMariaDb, &whyNoMariaDb},
    {QLatin1String("postgresql"), &startPostgreSql, &whyNoPostgreSql},
};

const runnable * runnableOf(const QString & key)
{
    const auto * const found = std::find_if(std::begin(Runnables), std::end(Runnables),
                                            [&key](const runnable & each) { return each.key == key; });
    return found == std::end(Runnables) ? nullptr : found;
}

} // namespace

QStringList runnableKeys()
{
    QStringList keys;
    for (const runnable & each : Runnables) {
        keys << each.key;
    }
    return keys;
}

QString whyMissing(const QString & key)
{
    const runnable * const found = runnableOf(key);
    return found == nullptr ? QStringLiteral("it cannot be run here; sqlite, mariadb and postgresql can")
                            : found->whyMissing();
}

std::unique_ptr<target_database> start(const QString & key, QString & why)
{
    why = whyMissing(key);
    return why.isEmpty() ? runnableOf(key)->start(why) : nullptr;
}

std::unique_ptr<target_database> open(const server_url & place, QString & why)
{
    const auto * const found =
        std::find_if(std::begin(Openables), std::end(Openables),
                     [&place](const openable & each) { return each.scheme == place.scheme; });
    std::unique_ptr<target_database> opened;
    if (found != std::end(Openables)) {
        opened = found->open(place, why);
    }
    why = withoutPassword(why, place);
    return opened;
}

} // namespace database::server
