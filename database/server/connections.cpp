#include "database/server/connections.h"

#include <QSqlDatabase>

namespace database::server {

namespace {

// Seconds; a server that is there answers at once.
constexpr QLatin1String MySqlPatience("MYSQL_OPT_CONNECT_TIMEOUT=15");
constexpr QLatin1String PostgreSqlPatience("connect_timeout=15");

void fill(QSqlDatabase & db, const server_url & place, const QString & database)
{
    db.setUserName(place.user);
    db.setPassword(place.password);
    db.setDatabaseName(database);
    db.setPort(place.port == 0 ? -1 : place.port);
}

} // namespace

std::unique_ptr<sql_connection> connectMySql(const server_url & place, const QString & database)
{
    return std::make_unique<sql_connection>(MySqlDriver.name, [&](QSqlDatabase & db) {
        fill(db, place, database);
        if (place.password.isEmpty()) { // the client library leaves that to its programs
            db.setPassword(qEnvironmentVariable("MYSQL_PWD"));
        }
        QString options = MySqlPatience;
        if (place.host.startsWith(QLatin1Char('/'))) {
            options += QStringLiteral(";UNIX_SOCKET=") + place.host;
        } else {
            // The client library takes this name for the socket of the machine, whatever the port.
            const bool isOtherwise = place.host == QLatin1String("localhost") && place.port != 0;
            db.setHostName(isOtherwise ? QStringLiteral("127.0.0.1") : place.host);
        }
        db.setConnectOptions(options);
    });
}

std::unique_ptr<sql_connection> connectPostgreSql(const server_url & place, const QString & database)
{
    return std::make_unique<sql_connection>(PostgreSqlDriver.name, [&](QSqlDatabase & db) {
        fill(db, place, database);
        db.setHostName(place.host);
        db.setConnectOptions(PostgreSqlPatience);
    });
}

} // namespace database::server
