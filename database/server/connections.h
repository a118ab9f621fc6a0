#pragma once

#include "database/server/server_url.h"
#include "database/server/sql_connection.h"

#include <memory>

namespace database::server {

/// A driver of Qt, and the package of Debian that brings it.
struct sql_driver
{
    QLatin1String name;
    QLatin1String package;
};
constexpr sql_driver MySqlDriver{QLatin1String("QMYSQL"), QLatin1String("libqt6sql6-mysql")};
constexpr sql_driver PostgreSqlDriver{QLatin1String("QPSQL"), QLatin1String("libqt6sql6-psql")};

/// Connects to the server of `place`, to the database `database` of it; empty for none in particular. Whether
/// that came about the connection tells.
[[nodiscard]] std::unique_ptr<sql_connection> connectMySql(const server_url & place,
                                                           const QString & database);
[[nodiscard]] std::unique_ptr<sql_connection> connectPostgreSql(const server_url & place,
                                                                const QString & database);

} // namespace database::server
