#pragma once

#include "database/server/target_database.h"

#include <memory>

namespace database::server {

/// A database that is spoken to through a connection of Qt.
class connected_target : public target_database
{
public:
    [[nodiscard]] QString version() override
    {
        QString error;
        if (!m_connection && !reset(error)) {
            throw server_failure(error);
        }
        return m_sName + QLatin1Char(' ') + m_connection->firstColumn(m_sVersionQuery).constFirst();
    }
    bool execute(const QString & statement, server_error & error) override
    {
        return m_connection->execute(statement, error);
    }
    [[nodiscard]] QList<QVariantList> rows(const QString & query) override
    {
        return m_connection->rows(query);
    }

protected:
    /// @param name of the product
    /// @param versionQuery gives its version
    connected_target(const QString & name, const QString & versionQuery)
        : m_sName(name), m_sVersionQuery(versionQuery)
    {
    }

    std::unique_ptr<sql_connection> m_connection; ///< null until reset()

private:
    QString m_sName;
    QString m_sVersionQuery;
};

} // namespace database::server
