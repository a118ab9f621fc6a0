#include "servers/server_of_somebody.h"

#include <csignal>

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QUrl>

namespace servers {

namespace {

using database::server::findProgram;
using database::server::sql_connection;

class postgresql_of_somebody : public server_of_somebody
{
public:
    postgresql_of_somebody() : server_of_somebody(QStringLiteral("postgres"), SIGTERM) {}

    bool start(QString & why)
    {
        QStringList folders;
        const QDir versions("/usr/lib/postgresql");
        for (const QString & version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            folders << versions.filePath(version + "/bin");
        }
        const QString initdb = findProgram("initdb", folders);
        if (initdb.isEmpty()) {
            why = "PostgreSQL is not installed";
            return false;
        }
        const QString data = socket() + "/data";
        QFile rules(data + "/pg_hba.conf");
        return m_server.runToEnd(
                   initdb,
                   {"-D", data, "-U", owner(), "-A", "trust", "-E", "UTF8", "--locale=C.UTF-8", "--no-sync"},
                   why) &&
               rules.open(QIODevice::WriteOnly) &&
               rules.write("local all ann trust\nlocal all all scram-sha-256\n") > 0 && rules.flush() &&
               m_server.start(
                   findProgram("postgres", folders),
                   {"-D", data, "-k", socket(), "-c", "listen_addresses=", "-F"},
                   [this] { return connect(firstDatabase())->isOpen(); }, why);
    }

    [[nodiscard]] QString key() const override { return "postgresql"; }
    [[nodiscard]] QString owner() const override { return "ann"; }
    [[nodiscard]] QString firstDatabase() const override { return "postgres"; }
    [[nodiscard]] std::unique_ptr<sql_connection> connect(const QString & database) const override
    {
        return std::make_unique<sql_connection>("QPSQL", [&](QSqlDatabase & db) {
            db.setHostName(socket());
            db.setUserName(owner());
            db.setDatabaseName(database);
        });
    }

protected:
    [[nodiscard]] QString socket() const override { return m_server.folder(); }
};

class mariadb_of_somebody : public server_of_somebody
{
public:
    mariadb_of_somebody() : server_of_somebody(QStringLiteral("mysql"), SIGKILL) {}

    bool start(QString & why)
    {
        const QString install = findProgram("mariadb-install-db");
        if (install.isEmpty()) {
            why = "MariaDB is not installed";
            return false;
        }
        const QString data = "--datadir=" + m_server.folder() + "/data";
        return m_server.runToEnd(
                   install,
                   {"--no-defaults", data, "--auth-root-authentication-method=normal", "--skip-test-db"},
                   why) &&
               m_server.start(
                   findProgram("mariadbd", {"/usr/sbin"}),
                   {"--no-defaults", data, "--skip-networking", "--socket=" + socket(),
                    "--pid-file=" + m_server.folder() + "/pid"},
                   [this] { return QFile::exists(socket()) && connect(firstDatabase())->isOpen(); }, why);
    }

    [[nodiscard]] QString key() const override { return "mariadb"; }
    [[nodiscard]] QString owner() const override { return "root"; }
    [[nodiscard]] QString firstDatabase() const override { return "mysql"; }
    [[nodiscard]] std::unique_ptr<sql_connection> connect(const QString & database) const override
    {
        return std::make_unique<sql_connection>("QMYSQL", [&](QSqlDatabase & db) {
            db.setConnectOptions("UNIX_SOCKET=" + socket());
            db.setUserName(owner());
            db.setDatabaseName(database);
        });
    }

protected:
    [[nodiscard]] QString socket() const override { return m_server.folder() + "/s"; }
};

template <class Server>
std::unique_ptr<server_of_somebody> started(QString & why)
{
    auto server = std::make_unique<Server>();
    return server->start(why) ? std::move(server) : nullptr;
}

} // namespace

QString server_of_somebody::url(const QString & who, const QString & database) const
{
    return QStringLiteral("%1://%2@%3/%4")
        .arg(key(), who, QString::fromLatin1(QUrl::toPercentEncoding(socket())),
             QString::fromLatin1(QUrl::toPercentEncoding(database)));
}

std::unique_ptr<server_of_somebody> startPostgreSqlOfSomebody(QString & why)
{
    return started<postgresql_of_somebody>(why);
}

std::unique_ptr<server_of_somebody> startMariaDbOfSomebody(QString & why)
{
    return started<mariadb_of_somebody>(why);
}

} // namespace servers
