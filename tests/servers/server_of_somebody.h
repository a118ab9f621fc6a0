#pragma once

#include "database/server/private_server.h"
#include "database/server/sql_connection.h"

#include <QString>

#include <memory>

namespace servers {

/// A server that is somebody's as far as the program knows: it is reached by a URL.
class server_of_somebody
{
public:
    server_of_somebody(const QString & account, int signalOfDeath) : m_server(account, signalOfDeath) {}
    virtual ~server_of_somebody() = default;

    /// The key of its database, which URLs begin with.
    [[nodiscard]] virtual QString key() const = 0;
    /// The user who may do everything.
    [[nodiscard]] virtual QString owner() const = 0;
    /// A database that is there from the beginning.
    [[nodiscard]] virtual QString firstDatabase() const = 0;
    /// Speaks to a database as its owner.
    [[nodiscard]] virtual std::unique_ptr<database::server::sql_connection>
    connect(const QString & database) const = 0;

    /// @param who the user, with a password after a colon if there is one
    [[nodiscard]] QString url(const QString & who, const QString & database) const;

    /// What messages call the place of the server.
    [[nodiscard]] QString socketShown() const { return socket(); }

protected:
    /// The folder or the file of its socket.
    [[nodiscard]] virtual QString socket() const = 0;

    database::server::private_server m_server;
};

/// PostgreSQL, which lets its owner "ann" in without a password and nobody else. Null, with the reason, when
/// it is not installed.
[[nodiscard]] std::unique_ptr<server_of_somebody> startPostgreSqlOfSomebody(QString & why);
/// MariaDB, whose owner is "root". Null, with the reason, when it is not installed.
[[nodiscard]] std::unique_ptr<server_of_somebody> startMariaDbOfSomebody(QString & why);

} // namespace servers
