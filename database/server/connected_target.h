#pragma once

#include "database/server/connections.h"
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
        const bool done = m_connection->execute(statement, error);
        if (!done && m_connection->isLost(error)) {
            throw server_failure(QStringLiteral("the connection is lost (%1)").arg(error.words.simplified()));
        }
        return done;
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

    /// Drops what was made on a server of somebody; says so where that fails, since only a person can then.
    static void dropScratch(const sql_connection & by, const QString & statement)
    {
        QString why = by.openError();
        if (!by.isOpen() || !by.execute(statement, why)) {
            qWarning("A database of this run is still there (%s); run %s", qUtf8Printable(why.simplified()),
                     qUtf8Printable(statement));
        }
    }

    std::unique_ptr<sql_connection> m_connection; ///< null until reset()

private:
    QString m_sName;
    QString m_sVersionQuery;
};

/// That Qt's driver of `Target` is missing, and the package that brings it; empty when it is there.
template <class Target>
[[nodiscard]] QString whyNoDriver()
{
    return QSqlDatabase::isDriverAvailable(Target::Driver.name)
               ? QString()
               : QStringLiteral("Qt's driver %1 is not installed; the package %2 brings it")
                     .arg(Target::Driver.name, Target::Driver.package);
}

/// What is not installed of that which a private server of `Target` takes; empty when all is there.
template <class Target>
[[nodiscard]] QString whyNotInstalled()
{
    const QString driver = whyNoDriver<Target>();
    return driver.isEmpty() ? Target::programs().whyMissing : driver;
}

/// A target with a server of its own; null with the reason.
template <class Target>
[[nodiscard]] std::unique_ptr<target_database> startPrivate(QString & why)
{
    auto target = std::make_unique<Target>();
    why = whyNotInstalled<Target>();
    return why.isEmpty() && target->start(why) ? std::move(target) : nullptr;
}

/// A target on a server of somebody; null with the reason.
template <class Target>
[[nodiscard]] std::unique_ptr<target_database> openOn(const server_url & place, QString & why)
{
    auto target = std::make_unique<Target>();
    why = whyNoDriver<Target>();
    return why.isEmpty() && target->open(place, why) ? std::move(target) : nullptr;
}

} // namespace database::server
