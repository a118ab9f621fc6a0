#pragma once

#include "database/server/server_url.h"
#include "database/server/sql_connection.h"

#include <memory>

namespace database::server {

/// Connects to the server of `place`, to the database `database` of it; empty for none in particular. Whether
/// that came about the connection tells.
[[nodiscard]] std::unique_ptr<sql_connection> connectMySql(const server_url & place,
                                                           const QString & database);
[[nodiscard]] std::unique_ptr<sql_connection> connectPostgreSql(const server_url & place,
                                                                const QString & database);

} // namespace database::server
