#include "servers/private_server.h"
#include "servers/sql_connection.h"
#include "servers/target_database.h"

#include <QFile>
#include <QSqlDatabase>

namespace servers {

namespace {

class mariadb_target : public target_database
{
public:
    bool start(QString & why)
    {
        const QString install = findProgram(QStringLiteral("mariadb-install-db"));
        const QString daemon = findProgram(QStringLiteral("mariadbd"), {QStringLiteral("/usr/sbin")});
        if (install.isEmpty() || daemon.isEmpty()) {
            why = QStringLiteral("MariaDB is not installed");
            return false;
        }
        const QString data = QStringLiteral("--datadir=") + m_server.folder() + QStringLiteral("/data");
        return m_server.runToEnd(install,
                                 {QStringLiteral("--no-defaults"), data,
                                  QStringLiteral("--auth-root-authentication-method=normal"),
                                  QStringLiteral("--skip-test-db")},
                                 why) &&
               m_server.start(
                   daemon,
                   {QStringLiteral("--no-defaults"), data, QStringLiteral("--skip-networking"),
                    QStringLiteral("--socket=") + socket(),
                    QStringLiteral("--pid-file=") + m_server.folder() + QStringLiteral("/pid")},
                   [this] { return QFile::exists(socket()) && connect(QString())->isOpen(); }, why);
    }

    bool reset(QString & error) override
    {
        m_connection.reset();
        const QString name = QStringLiteral("scratch_%1").arg(++m_iDatabases);
        if (!connect(QString())->execute(QStringLiteral("CREATE DATABASE %1 CHARACTER SET utf8mb4").arg(name),
                                         error)) {
            return false;
        }
        m_connection = connect(name);
        error = m_connection->openError();
        return m_connection->isOpen();
    }
    bool execute(const QString & statement, QString & error) override
    {
        return m_connection->execute(statement, error);
    }
    QStringList catalogue() override
    {
        QStringList lines;
        addTablesAndColumns(lines);
        addIndexes(lines);
        addForeignKeys(lines);
        lines.sort();
        return lines;
    }
    QString typeAsStored(const QString & type) override;

private:
    [[nodiscard]] QString socket() const { return m_server.folder() + QStringLiteral("/s"); }
    [[nodiscard]] std::unique_ptr<sql_connection> connect(const QString & database) const
    {
        return std::make_unique<sql_connection>(
            QStringLiteral("QMYSQL"), [this, database](QSqlDatabase & db) {
                db.setConnectOptions(QStringLiteral("UNIX_SOCKET=") + socket());
                db.setUserName(QStringLiteral("root"));
                db.setDatabaseName(database);
            });
    }
    void addTablesAndColumns(QStringList & lines) const;
    void addIndexes(QStringList & lines) const;
    void addForeignKeys(QStringList & lines) const;

    private_server m_server{QStringLiteral("mysql")};
    int m_iDatabases = 0;
    std::unique_ptr<sql_connection> m_connection;
};

void mariadb_target::addTablesAndColumns(QStringList & lines) const
{
    for (const QString & table : m_connection->firstColumn(QStringLiteral(
             "SELECT table_name FROM information_schema.tables WHERE table_schema = DATABASE()"))) {
        lines.append(QStringLiteral("table ") + table);
    }
    for (const QVariantList & c : m_connection->rows(QStringLiteral(
             "SELECT table_name, column_name, column_type, is_nullable FROM information_schema.columns "
             "WHERE table_schema = DATABASE()"))) {
        lines.append(
            QStringLiteral("column %1.%2 %3%4")
                .arg(c[0].toString(), c[1].toString(), c[2].toString(),
                     c[3].toString() == QStringLiteral("NO") ? QStringLiteral(" NOT NULL") : QString()));
    }
}

void mariadb_target::addIndexes(QStringList & lines) const
{
    const QStringList foreignKeys = m_connection->firstColumn(
        QStringLiteral("SELECT constraint_name FROM information_schema.table_constraints "
                       "WHERE table_schema = DATABASE() AND constraint_type = 'FOREIGN KEY'"));
    for (const QVariantList & i : m_connection->rows(
             QStringLiteral("SELECT table_name, index_name, MAX(non_unique), "
                            "GROUP_CONCAT(column_name ORDER BY seq_in_index SEPARATOR ', ') FROM "
                            "information_schema.statistics "
                            "WHERE table_schema = DATABASE() GROUP BY table_name, index_name"))) {
        const QString table = i[0].toString();
        const QString name = i[1].toString();
        const QStringList columns(i[3].toString());
        if (name == QStringLiteral("PRIMARY")) {
            lines.append(withColumns(QStringLiteral("key ") + table, columns));
        } else if (!i[2].toBool()) {
            lines.append(withColumns(QStringLiteral("unique ") + table, columns));
        } else if (!foreignKeys.contains(name)) {
            // The server makes an index of its own for a foreign key that has none; it bears the key's name.
            lines.append(withColumns(QStringLiteral("index %1 %2").arg(name, table), columns));
        }
    }
}

void mariadb_target::addForeignKeys(QStringList & lines) const
{
    for (const QVariantList & f : m_connection->rows(QStringLiteral(
             "SELECT constraint_name, table_name, "
             "GROUP_CONCAT(column_name ORDER BY ordinal_position SEPARATOR ', '), referenced_table_name, "
             "GROUP_CONCAT(referenced_column_name ORDER BY ordinal_position SEPARATOR ', ') "
             "FROM information_schema.key_column_usage "
             "WHERE table_schema = DATABASE() AND referenced_table_name IS NOT NULL "
             "GROUP BY constraint_name, table_name, referenced_table_name"))) {
        lines.append(withColumns(QStringLiteral("foreign %1 %2").arg(f[0].toString(), f[1].toString()),
                                 QStringList(f[2].toString())) +
                     withColumns(QStringLiteral(" -> ") + f[3].toString(), QStringList(f[4].toString())));
    }
}

QString mariadb_target::typeAsStored(const QString & type)
{
    QString error;
    if (!m_connection->execute(QStringLiteral("CREATE TABLE scratch_type (c %1)").arg(type), error)) {
        qFatal("%s: %s", qPrintable(type), qPrintable(error));
    }
    const QString stored =
        m_connection
            ->firstColumn(QStringLiteral("SELECT column_type FROM information_schema.columns "
                                         "WHERE table_schema = DATABASE() AND table_name = "
                                         "'scratch_type'"))
            .constFirst();
    m_connection->execute(QStringLiteral("DROP TABLE scratch_type"), error);
    return stored;
}

} // namespace

std::unique_ptr<target_database> startMariaDb(QString & why)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QMYSQL"))) {
        why = QStringLiteral("Qt's MySQL driver is not installed");
        return nullptr;
    }
    auto target = std::make_unique<mariadb_target>();
    if (!target->start(why)) {
        return nullptr;
    }
    return target;
}

} // namespace servers
