#include "database/server/catalogue_readers.h"
#include "database/server/connected_target.h"
#include "database/server/connections.h"
#include "database/server/private_server.h"
#include "database/server/server_url.h"

#include "database/facts/normal_form.h"

#include <QFile>

#include <csignal>
#include <optional>
#include <utility>

namespace database::server {

namespace {

class mariadb_target : public connected_target
{
public:
    static constexpr sql_driver Driver = MySqlDriver;

    mariadb_target()
        : connected_target(QStringLiteral("MariaDB"),
                           QStringLiteral("SELECT substring_index(version(), '-', 1)"))
    {
    }

    [[nodiscard]] static server_programs programs()
    {
        server_programs found{findProgram(QStringLiteral("mariadb-install-db")),
                              findProgram(QStringLiteral("mariadbd"), {QStringLiteral("/usr/sbin")}),
                              {}};
        if (found.maker.isEmpty() || found.daemon.isEmpty()) {
            found.whyMissing =
                QStringLiteral("MariaDB is not installed; the package mariadb-server brings it");
        }
        return found;
    }

    bool start(QString & why)
    {
        const server_programs by = programs();
        // While it starts it can miss a SIGTERM and stay for ever; nothing of it is worth an orderly end.
        m_server.emplace(QStringLiteral("mysql"), SIGKILL);
        m_place.host = m_server->folder() + QStringLiteral("/s");
        m_place.user = QStringLiteral("root");
        const QString data = QStringLiteral("--datadir=") + m_server->folder() + QStringLiteral("/data");
        return m_server->runToEnd(by.maker,
                                  {QStringLiteral("--no-defaults"), data,
                                   QStringLiteral("--auth-root-authentication-method=normal"),
                                   QStringLiteral("--skip-test-db")},
                                  why) &&
               m_server->start(
                   by.daemon,
                   {QStringLiteral("--no-defaults"), data, QStringLiteral("--skip-networking"),
                    QStringLiteral("--socket=") + m_place.host,
                    QStringLiteral("--tmpdir=") + m_server->folder(),
                    QStringLiteral("--pid-file=") + m_server->folder() + QStringLiteral("/pid"),
                    QStringLiteral("--innodb-flush-log-at-trx-commit=0")},
                   [this] { return QFile::exists(m_place.host) && connect(QString())->isOpen(); }, why);
    }

    ~mariadb_target() override
    {
        m_connection.reset(); // a server waits for it before it ends
        if (!m_server && !m_sScratch.isEmpty()) {
            // Over another connection, since the first may be lost.
            dropScratch(*connect(m_place.database), dropping());
        }
    }
    mariadb_target(const mariadb_target &) = delete;
    mariadb_target & operator=(const mariadb_target &) = delete;

    /// Makes databases of its own on a server of somebody.
    bool open(const server_url & place, QString & why)
    {
        m_place = place;
        m_sPrefix = scratchName();
        m_connection = connect(place.database);
        why = m_connection->openError();
        return m_connection->isOpen();
    }

    [[nodiscard]] const database::facts & known() const override
    {
        return *database::factsOf(m_place.scheme);
    }
    bool reset(QString & error) override
    {
        if (!m_connection) {
            m_connection = connect(QString());
            error = m_connection->openError();
        }
        if (!m_connection->isOpen() || (!m_sScratch.isEmpty() && !m_connection->execute(dropping(), error))) {
            return false;
        }
        m_sScratch = QStringLiteral("%1_%2").arg(m_sPrefix).arg(++m_iDatabases);
        server_error refused;
        if (!m_connection->execute(QStringLiteral("CREATE DATABASE %1 CHARACTER SET utf8mb4").arg(m_sScratch),
                                   refused)) {
            error = refused.words;
            if (!m_connection->isLost(refused)) { // else nobody knows whether it was made
                m_sScratch.clear();
            }
            return false;
        }
        return m_connection->execute(QStringLiteral("USE ") + m_sScratch, error);
    }
    [[nodiscard]] database::catalogue held() override
    {
        return database::normalForm(readMySql(*m_connection, known()), known());
    }
    [[nodiscard]] QList<database::left_out> leftOut() override { return leftOutOfMySql(*m_connection); }
    [[nodiscard]] QString quoted(const QString & name) const override
    {
        return QLatin1Char('`') + QString(name).replace(QLatin1Char('`'), QLatin1String("``")) +
               QLatin1Char('`');
    }
    [[nodiscard]] QString foreignKeyChecks(bool on) const override
    {
        return QStringLiteral("SET foreign_key_checks = %1").arg(on ? 1 : 0);
    }
    [[nodiscard]] QString keep() override
    {
        return m_server ? QString() : std::exchange(m_sScratch, QString());
    }
    QString typeAsStored(const QString & type) override;

private:
    [[nodiscard]] QString dropping() const { return QStringLiteral("DROP DATABASE IF EXISTS ") + m_sScratch; }
    [[nodiscard]] std::unique_ptr<sql_connection> connect(const QString & database) const
    {
        return connectMySql(m_place, database);
    }

    std::optional<private_server> m_server;
    server_url m_place{QStringLiteral("mariadb"), {}, 0, {}, {}, {}};
    QString m_sPrefix = QStringLiteral("scratch"); ///< of the names of databases
    int m_iDatabases = 0;
    QString m_sScratch; ///< the database in use, which goes with this; empty when none does
};

QString mariadb_target::typeAsStored(const QString & type)
{
    QString error;
    if (!m_connection->execute(QStringLiteral("CREATE TABLE scratch_type (c %1)").arg(type), error)) {
        throw server_failure(QStringLiteral("%1: %2").arg(type, error));
    }
    const QString stored =
        m_connection
            ->firstColumn(QStringLiteral("SELECT column_type FROM information_schema.columns "
                                         "WHERE table_schema = DATABASE() AND table_name = 'scratch_type'"))
            .constFirst();
    m_connection->execute(QStringLiteral("DROP TABLE scratch_type"), error);
    return stored;
}

} // namespace

std::unique_ptr<target_database> openMySql(const server_url & place, QString & why)
{
    return openOn<mariadb_target>(place, why);
}

QString whyNoMariaDb()
{
    return whyNotInstalled<mariadb_target>();
}

std::unique_ptr<target_database> startMariaDb(QString & why)
{
    return startPrivate<mariadb_target>(why);
}

} // namespace database::server
