#include "database/server/connected_target.h"
#include "database/server/private_server.h"
#include "database/server/server_url.h"

#include "database/facts/names.h"
#include "database/facts/normal_form.h"

#include <QDir>
#include <QSqlDatabase>

#include <optional>

namespace database::server {

namespace {

class postgresql_target : public connected_target
{
public:
    static constexpr const char * Driver = "QPSQL";

    postgresql_target()
        : connected_target(QStringLiteral("PostgreSQL"),
                           QStringLiteral("SELECT current_setting('server_version')"))
    {
    }

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
        m_server.emplace(QStringLiteral("postgres"));
        m_place.host = m_server->folder();
        m_place.user = QStringLiteral("test");
        const QString data = m_server->folder() + QStringLiteral("/data");
        return m_server->runToEnd(initdb,
                                  {QStringLiteral("-D"), data, QStringLiteral("-U"), QStringLiteral("test"),
                                   QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-E"),
                                   QStringLiteral("UTF8"), QStringLiteral("--locale=C.UTF-8"),
                                   QStringLiteral("--no-sync")},
                                  why) &&
               m_server->start(
                   daemon,
                   {QStringLiteral("-D"), data, QStringLiteral("-k"), m_server->folder(),
                    QStringLiteral("-c"), QStringLiteral("listen_addresses="), QStringLiteral("-F")},
                   [this] { return connect(QStringLiteral("postgres"))->isOpen(); }, why);
    }

    ~postgresql_target() override
    {
        m_connection.reset(); // a server waits for it before it ends
        if (!m_sScratch.isEmpty()) {
            server_error error;
            connect(m_place.database)->execute(QStringLiteral("DROP DATABASE ") + m_sScratch, error);
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
        database::catalogue found;
        addTablesAndColumns(found);
        addForeignKeys(found);
        addIndexes(found);
        addSequences(found);
        return database::normalForm(std::move(found), known());
    }
    [[nodiscard]] QString quoted(const QString & name) const override
    {
        return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QLatin1String("\"\"")) +
               QLatin1Char('"');
    }
    [[nodiscard]] QString checkForeignKeys(bool on) const override
    {
        return QStringLiteral("SET session_replication_role = ") + QLatin1String(on ? "DEFAULT" : "replica");
    }
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
        return std::make_unique<sql_connection>(QStringLiteral("QPSQL"), [this, database](QSqlDatabase & db) {
            db.setHostName(m_place.host);
            db.setPort(m_place.port == 0 ? -1 : m_place.port);
            db.setUserName(m_place.user);
            db.setPassword(m_place.password);
            db.setDatabaseName(database);
        });
    }
    /// SQL for the names of the columns `numbers` (an array of attribute numbers) of `relation`, by line.
    [[nodiscard]] static QString columnNames(const QString & relation, const QString & numbers)
    {
        return QStringLiteral(
                   "(SELECT string_agg(attname, E'\\n' ORDER BY n) FROM unnest(%2) WITH ORDINALITY AS "
                   "k(num, n) JOIN pg_attribute ON attrelid = %1 AND attnum = num)")
            .arg(relation, numbers);
    }
    [[nodiscard]] static std::vector<database::key_part> partsOf(const QVariant & names)
    {
        std::vector<database::key_part> parts;
        for (const QString & name : names.toString().split(QLatin1Char('\n'))) {
            parts.push_back({name, 0});
        }
        return parts;
    }
    void addTablesAndColumns(database::catalogue & found) const;
    void addForeignKeys(database::catalogue & found) const;
    void addIndexes(database::catalogue & found) const;
    void addSequences(database::catalogue & found) const;

    std::optional<private_server> m_server;
    server_url m_place;
    QString m_sScratch; ///< database that goes with this; empty for a server of its own
};

void postgresql_target::addTablesAndColumns(database::catalogue & found) const
{
    for (const QString & table : m_connection->firstColumn(QStringLiteral(
             "SELECT relname FROM pg_class WHERE relkind = 'r' AND relnamespace = 'public'::regnamespace"))) {
        found.tables[table].name = table;
    }
    for (const QVariantList & c : m_connection->rows(QStringLiteral(
             "SELECT t.relname, a.attname, format_type(a.atttypid, a.atttypmod), a.attnotnull, "
             "coalesce(pg_get_expr(d.adbin, d.adrelid), '') "
             "FROM pg_attribute a JOIN pg_class t ON t.oid = a.attrelid "
             "LEFT JOIN pg_attrdef d ON d.adrelid = t.oid AND d.adnum = a.attnum WHERE t.relkind = 'r' AND "
             "t.relnamespace = 'public'::regnamespace AND a.attnum > 0 AND NOT a.attisdropped "
             "ORDER BY t.relname, a.attnum"))) {
        found.tables[c[0].toString()].columns.push_back({c[1].toString(), c[2].toString(), c[3].toBool(),
                                                         c[4].toString().contains(QLatin1String("nextval"))});
    }
}

void postgresql_target::addForeignKeys(database::catalogue & found) const
{
    for (const QVariantList & c : m_connection->rows(
             QStringLiteral("SELECT conname, t.relname, %1, f.relname, %2 FROM pg_constraint c "
                            "JOIN pg_class t ON t.oid = conrelid JOIN pg_class f ON f.oid = confrelid "
                            "WHERE connamespace = 'public'::regnamespace AND contype = 'f'")
                 .arg(columnNames(QStringLiteral("conrelid"), QStringLiteral("conkey")),
                      columnNames(QStringLiteral("confrelid"), QStringLiteral("confkey"))))) {
        found.tables[c[1].toString()].foreignKeys.push_back(
            {c[0].toString(), c[2].toString().split(QLatin1Char('\n')), c[3].toString(),
             c[4].toString().split(QLatin1Char('\n'))});
    }
}

void postgresql_target::addIndexes(database::catalogue & found) const
{
    for (const QVariantList & i : m_connection->rows(
             QStringLiteral("SELECT n.relname, t.relname, indisunique, indisprimary, %1 FROM pg_index x "
                            "JOIN pg_class n ON n.oid = indexrelid JOIN pg_class t ON t.oid = indrelid "
                            "WHERE t.relnamespace = 'public'::regnamespace")
                 .arg(columnNames(QStringLiteral("indrelid"), QStringLiteral("indkey::int2[]"))))) {
        database::table & owner = found.tables[i[1].toString()];
        if (i[3].toBool()) {
            owner.key = database::primary_key{i[0].toString(), partsOf(i[4])};
        } else {
            owner.indexes.push_back({i[0].toString(), partsOf(i[4]), i[2].toBool(), false});
        }
    }
}

void postgresql_target::addSequences(database::catalogue & found) const
{
    for (const QVariantList & s : m_connection->rows(QStringLiteral(
             "SELECT s.relname, t.relname, a.attname FROM pg_class s "
             "LEFT JOIN pg_depend d ON d.objid = s.oid AND d.classid = 'pg_class'::regclass AND "
             "d.deptype IN ('a', 'i') "
             "LEFT JOIN pg_class t ON t.oid = d.refobjid "
             "LEFT JOIN pg_attribute a ON a.attrelid = t.oid AND a.attnum = d.refobjsubid "
             "WHERE s.relkind = 'S' AND s.relnamespace = 'public'::regnamespace"))) {
        const database::sequence sequence{s[0].toString(), s[2].toString()};
        auto & owner = s[1].isNull() ? found.sequences : found.tables[s[1].toString()].sequences;
        owner.push_back(sequence);
    }
}

} // namespace

std::unique_ptr<target_database> openPostgreSql(const server_url & place, QString & why)
{
    return openOn<postgresql_target>(place, why);
}

std::unique_ptr<target_database> startPostgreSql(QString & why)
{
    return startPrivate<postgresql_target>(why);
}

} // namespace database::server
