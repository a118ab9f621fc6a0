#include "servers/private_server.h"
#include "servers/sql_connection.h"
#include "servers/target_database.h"

#include <QDir>
#include <QSqlDatabase>

namespace servers {

namespace {

class postgresql_target : public target_database
{
public:
    bool start(QString & why)
    {
        QStringList folders;
        const QDir versions(QStringLiteral("/usr/lib/postgresql"));
        for (const QString & version :
             versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed)) {
            folders.append(versions.filePath(version + QStringLiteral("/bin")));
        }
        const QString initdb = findProgram(QStringLiteral("initdb"), folders);
        const QString daemon = findProgram(QStringLiteral("postgres"), folders);
        if (initdb.isEmpty() || daemon.isEmpty()) {
            why = QStringLiteral("PostgreSQL is not installed");
            return false;
        }
        const QString data = m_server.folder() + QStringLiteral("/data");
        return m_server.runToEnd(initdb,
                                 {QStringLiteral("-D"), data, QStringLiteral("-U"), QStringLiteral("test"),
                                  QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-E"),
                                  QStringLiteral("UTF8"), QStringLiteral("--locale=C.UTF-8"),
                                  QStringLiteral("--no-sync")},
                                 why) &&
               m_server.start(
                   daemon,
                   {QStringLiteral("-D"), data, QStringLiteral("-k"), m_server.folder(), QStringLiteral("-c"),
                    QStringLiteral("listen_addresses="), QStringLiteral("-F")},
                   [this] { return connect(QStringLiteral("postgres"))->isOpen(); }, why);
    }

    bool reset(QString & error) override
    {
        m_connection.reset();
        const QString name = QStringLiteral("scratch_%1").arg(++m_iDatabases);
        if (!connect(QStringLiteral("postgres"))->execute(QStringLiteral("CREATE DATABASE ") + name, error)) {
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
        addConstraints(lines);
        addIndexes(lines);
        lines.sort();
        return lines;
    }
    QString typeAsStored(const QString & type) override
    {
        QString error;
        if (!m_connection->execute(QStringLiteral("CREATE TABLE scratch_type (c %1)").arg(type), error)) {
            qFatal("%s: %s", qPrintable(type), qPrintable(error));
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
        return std::make_unique<sql_connection>(QStringLiteral("QPSQL"), [this, database](QSqlDatabase & db) {
            db.setHostName(m_server.folder());
            db.setUserName(QStringLiteral("test"));
            db.setDatabaseName(database);
        });
    }
    /// SQL for the names of the columns `numbers` (an array of attribute numbers) of `relation`.
    [[nodiscard]] static QString columnNames(const QString & relation, const QString & numbers)
    {
        return QStringLiteral(
                   "(SELECT string_agg(attname, ', ' ORDER BY n) FROM unnest(%2) WITH ORDINALITY AS "
                   "k(num, n) JOIN pg_attribute ON attrelid = %1 AND attnum = num)")
            .arg(relation, numbers);
    }
    void addTablesAndColumns(QStringList & lines) const;
    void addConstraints(QStringList & lines) const;
    void addIndexes(QStringList & lines) const;

    private_server m_server{QStringLiteral("postgres")};
    int m_iDatabases = 0;
    std::unique_ptr<sql_connection> m_connection;
};

void postgresql_target::addTablesAndColumns(QStringList & lines) const
{
    for (const QString & table : m_connection->firstColumn(QStringLiteral(
             "SELECT relname FROM pg_class WHERE relkind = 'r' AND relnamespace = 'public'::regnamespace"))) {
        lines.append(QStringLiteral("table ") + table);
    }
    for (const QVariantList & c : m_connection->rows(QStringLiteral(
             "SELECT t.relname, a.attname, format_type(a.atttypid, a.atttypmod), a.attnotnull "
             "FROM pg_attribute a JOIN pg_class t ON t.oid = a.attrelid WHERE t.relkind = 'r' AND "
             "t.relnamespace = 'public'::regnamespace AND a.attnum > 0 AND NOT a.attisdropped"))) {
        lines.append(QStringLiteral("column %1.%2 %3%4")
                         .arg(c[0].toString(), c[1].toString(), c[2].toString(),
                              c[3].toBool() ? QStringLiteral(" NOT NULL") : QString()));
    }
}

void postgresql_target::addConstraints(QStringList & lines) const
{
    for (const QVariantList & c : m_connection->rows(
             QStringLiteral(
                 "SELECT contype::text, conname, t.relname, %1, f.relname, %2 FROM pg_constraint c "
                 "JOIN pg_class t ON t.oid = conrelid LEFT JOIN pg_class f ON f.oid = confrelid "
                 "WHERE connamespace = 'public'::regnamespace")
                 .arg(columnNames(QStringLiteral("conrelid"), QStringLiteral("conkey")),
                      columnNames(QStringLiteral("confrelid"), QStringLiteral("confkey"))))) {
        const QString kind = c[0].toString();
        const QString table = c[2].toString();
        const QStringList columns(c[3].toString());
        if (kind == QStringLiteral("p")) {
            lines.append(withColumns(QStringLiteral("key ") + table, columns));
        } else if (kind == QStringLiteral("u")) {
            lines.append(withColumns(QStringLiteral("unique ") + table, columns));
        } else if (kind == QStringLiteral("f")) {
            lines.append(withColumns(QStringLiteral("foreign %1 %2").arg(c[1].toString(), table), columns) +
                         withColumns(QStringLiteral(" -> ") + c[4].toString(), QStringList(c[5].toString())));
        }
    }
}

void postgresql_target::addIndexes(QStringList & lines) const
{
    for (const QVariantList & i : m_connection->rows(
             QStringLiteral("SELECT n.relname, t.relname, %1 FROM pg_index x "
                            "JOIN pg_class n ON n.oid = indexrelid JOIN pg_class t ON t.oid = indrelid "
                            "WHERE t.relnamespace = 'public'::regnamespace AND NOT indisunique")
                 .arg(columnNames(QStringLiteral("indrelid"), QStringLiteral("indkey::int2[]"))))) {
        lines.append(withColumns(QStringLiteral("index %1 %2").arg(i[0].toString(), i[1].toString()),
                                 QStringList(i[2].toString())));
    }
}

} // namespace

std::unique_ptr<target_database> startPostgreSql(QString & why)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"))) {
        why = QStringLiteral("Qt's PostgreSQL driver is not installed");
        return nullptr;
    }
    auto target = std::make_unique<postgresql_target>();
    if (!target->start(why)) {
        return nullptr;
    }
    return target;
}

} // namespace servers
