#include "database/server/catalogue_readers.h"
#include "database/server/connected_target.h"
#include "database/server/connections.h"
#include "database/server/private_server.h"
#include "database/server/server_url.h"

#include "database/facts/normal_form.h"

#include <QDir>

#include <csignal>
#include <optional>
#include <utility>

namespace database::server {

namespace {

/// The one that scripts write into.
const QString Schema = QStringLiteral("public");

class postgresql_target : public connected_target
{
public:
    static constexpr sql_driver Driver = PostgreSqlDriver;

    postgresql_target()
        : connected_target(QStringLiteral("PostgreSQL"),
                           QStringLiteral("SELECT current_setting('server_version')"))
    {
    }

    [[nodiscard]] static server_programs programs()
    {
        QStringList folders;
        const QDir versions(QStringLiteral("/usr/lib/postgresql"));
        for (const QString & version :
             versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed)) {
            folders.append(versions.filePath(version + QStringLiteral("/bin")));
        }
        server_programs found{findProgram(QStringLiteral("initdb"), folders),
                              findProgram(QStringLiteral("postgres"), folders),
                              {}};
        if (found.maker.isEmpty() || found.daemon.isEmpty()) {
            found.whyMissing =
                QStringLiteral("PostgreSQL is not installed; the package postgresql brings it");
        }
        return found;
    }

    bool start(QString & why)
    {
        const server_programs by = programs();
        m_server.emplace(QStringLiteral("postgres"), SIGTERM);
        m_place.host = m_server->folder();
        m_place.user = QStringLiteral("test");
        const QString data = m_server->folder() + QStringLiteral("/data");
        return m_server->runToEnd(by.maker,
                                  {QStringLiteral("-D"), data, QStringLiteral("-U"), QStringLiteral("test"),
                                   QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-E"),
                                   QStringLiteral("UTF8"), QStringLiteral("--locale=C.UTF-8"),
                                   QStringLiteral("--no-sync")},
                                  why) &&
               m_server->start(
                   by.daemon,
                   {QStringLiteral("-D"), data, QStringLiteral("-k"), m_server->folder(),
                    QStringLiteral("-c"), QStringLiteral("listen_addresses="), QStringLiteral("-F")},
                   [this] { return connect(QStringLiteral("postgres"))->isOpen(); }, why);
    }

    ~postgresql_target() override
    {
        m_connection.reset(); // a server waits for it before it ends
        if (!m_sScratch.isEmpty()) {
            dropScratch(*connect(m_place.database), QStringLiteral("DROP DATABASE ") + m_sScratch);
        }
    }
    postgresql_target(const postgresql_target &) = delete;
    postgresql_target & operator=(const postgresql_target &) = delete;

    /// Makes a database of its own on a server of somebody.
    bool open(const server_url & place, QString & why)
    {
        m_place = place;
        const std::unique_ptr<sql_connection> first = connect(place.database);
        const QString name = scratchName();
        if (!first->isOpen() || !first->execute(QStringLiteral("CREATE DATABASE ") + name, why)) {
            why = first->isOpen() ? why : first->openError();
            return false;
        }
        m_sScratch = name;
        m_connection = connect(name);
        why = m_connection->openError();
        return m_connection->isOpen();
    }

    [[nodiscard]] const database::facts & known() const override { return *database::factsOf(u"postgresql"); }
    bool reset(QString & error) override
    {
        if (!m_connection) {
            m_connection = connect(QStringLiteral("postgres"));
            error = m_connection->openError();
        }
        return m_connection->isOpen() &&
               m_connection->execute(QStringLiteral("SET client_min_messages = warning"), error) &&
               m_connection->execute(QStringLiteral("DROP SCHEMA public CASCADE"), error) &&
               m_connection->execute(QStringLiteral("CREATE SCHEMA public"), error);
    }
    [[nodiscard]] database::catalogue held() override
    {
        return database::normalForm(readPostgreSql(*m_connection, Schema), known());
    }
    [[nodiscard]] QList<database::left_out> leftOut() override
    {
        return leftOutOfPostgreSql(*m_connection, Schema);
    }
    [[nodiscard]] QString quoted(const QString & name) const override
    {
        return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QLatin1String("\"\"")) +
               QLatin1Char('"');
    }
    [[nodiscard]] QString foreignKeyChecks(bool on) const override
    {
        return QStringLiteral("SET session_replication_role = ") + QLatin1String(on ? "DEFAULT" : "replica");
    }
    [[nodiscard]] QString keep() override { return std::exchange(m_sScratch, QString()); }
    QString typeAsStored(const QString & type) override
    {
        QString error;
        if (!m_connection->execute(QStringLiteral("CREATE TABLE scratch_type (c %1)").arg(type), error)) {
            throw server_failure(QStringLiteral("%1: %2").arg(type, error));
        }
        const QString stored =
            m_connection
                ->firstColumn(QStringLiteral("SELECT format_type(atttypid, atttypmod) FROM "
                                             "pg_attribute WHERE attrelid = "
                                             "'scratch_type'::regclass AND attnum = 1"))
                .constFirst();
        m_connection->execute(QStringLiteral("DROP TABLE scratch_type"), error);
        return stored;
    }

private:
    [[nodiscard]] std::unique_ptr<sql_connection> connect(const QString & database) const
    {
        return connectPostgreSql(m_place, database);
    }

    std::optional<private_server> m_server;
    server_url m_place;
    QString m_sScratch; ///< database that goes with this; empty when none does
};

} // namespace

std::unique_ptr<target_database> openPostgreSql(const server_url & place, QString & why)
{
    return openOn<postgresql_target>(place, why);
}

QString whyNoPostgreSql()
{
    return whyNotInstalled<postgresql_target>();
}

std::unique_ptr<target_database> startPostgreSql(QString & why)
{
    return startPrivate<postgresql_target>(why);
}

} // namespace database::server
