#pragma once

#include "database/server/target_database.h"

#include <QRandomGenerator>
#include <QSqlDatabase>

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
    /// A name that no database has yet.
    [[nodiscard]] static QString scratchName()
    {
        return QStringLiteral("korvane_verify_%1").arg(QRandomGenerator::system()->generate64(), 0, 36);
    }

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

/// A target that `prepare` has made ready; null when it could not.
template <class Target, class Prepare>
[[nodiscard]] std::unique_ptr<target_database> prepared(const Prepare & prepare)
{
    auto target = std::make_unique<Target>();
    return prepare(*target) ? std::move(target) : nullptr;
}

/// Whether Qt's driver is there; else the reason.
[[nodiscard]] inline bool hasDriver(const QString & driver, const char * product, QString & why)
{
    const bool isThere = QSqlDatabase::isDriverAvailable(driver);
    if (!isThere) {
        why = QStringLiteral("Qt's %1 driver is not installed").arg(QLatin1String(product));
    }
    return isThere;
}

} // namespace database::server
