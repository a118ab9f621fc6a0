// Databases of somebody, which are read and nothing else.

#include "database/server/catalogue_readers.h"
#include "database/server/connected_target.h"
#include "database/server/connections.h"
#include "database/server/readable_database.h"
#include "database/server/server_url.h"

#include "database/facts/normal_form.h"
#include "zk/sqlite_connection.h"

#include <QFile>
#include <QFileInfo>

namespace database::server {

namespace {

/// A SQLite file that may come from anywhere.
class opened_sqlite : public readable_database
{
public:
    bool open(const server_url & place, QString & why)
    {
        QSqlError error = m_file.open(place.database);
        if (!error.isValid()) { // reads the whole schema, so that damage in it shows here
            error = m_file.execute(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        }
        if (error.isValid()) {
            // Not the words for a project, which such a file need not be.
            const QString reason = error.text().mid(place.database.size() + 2);
            why = isOther(place.database) ? QStringLiteral("is not a SQLite database") : reason;
            return false;
        }
        m_connection = std::make_unique<sql_connection>(m_file.database());
        server_error refused;
        const bool done = m_connection->execute(QStringLiteral("PRAGMA query_only = ON"), refused);
        why = refused.words;
        return done;
    }

    [[nodiscard]] const database::facts & known() const override { return *database::factsOf(u"sqlite"); }
    [[nodiscard]] QString version() override
    {
        return QStringLiteral("SQLite ") +
               m_connection->firstColumn(QStringLiteral("SELECT sqlite_version()")).constFirst();
    }
    [[nodiscard]] database::catalogue held() override
    {
        sqlite_tables read;
        return database::normalForm(readSqlite(*m_connection, read), known());
    }
    [[nodiscard]] QList<database::left_out> leftOut() override { return leftOutOfSqlite(*m_connection); }

private:
    /// Whether something is there that is no file, or one that begins as no database does.
    static bool isOther(const QString & name)
    {
        static const QByteArray beginning("SQLite format 3", 16);
        QFile file(name);
        const QFileInfo info(name);
        return info.exists() && (!info.isFile() || (info.size() > 0 && file.open(QIODevice::ReadOnly) &&
                                                    file.read(beginning.size()) != beginning));
    }

    zk::sqlite::connection m_file;
    std::unique_ptr<sql_connection> m_connection;
};

/// A database of a server, of which one state is read whatever others change meanwhile.
class opened_on_server : public readable_database
{
protected:
    bool begin(std::unique_ptr<sql_connection> connection, const QString & transaction, QString & why)
    {
        m_connection = std::move(connection);
        why = m_connection->openError();
        return m_connection->isOpen() && m_connection->execute(transaction, why);
    }

    std::unique_ptr<sql_connection> m_connection;
};

class opened_mysql : public opened_on_server
{
public:
    static constexpr sql_driver Driver = MySqlDriver;

    bool open(const server_url & place, const QString &, QString & why)
    {
        m_key = place.scheme;
        return begin(connectMySql(place, place.database), QStringLiteral("START TRANSACTION READ ONLY"), why);
    }

    [[nodiscard]] const database::facts & known() const override { return *database::factsOf(m_key); }
    [[nodiscard]] QString version() override
    {
        return m_connection->firstColumn(QStringLiteral("SELECT version()")).constFirst();
    }
    [[nodiscard]] database::catalogue held() override
    {
        return database::normalForm(readMySql(*m_connection, known()), known());
    }
    [[nodiscard]] QList<database::left_out> leftOut() override { return leftOutOfMySql(*m_connection); }

private:
    QString m_key;
};

class opened_postgresql : public opened_on_server
{
public:
    static constexpr sql_driver Driver = PostgreSqlDriver;

    bool open(const server_url & place, const QString & schema, QString & why)
    {
        m_schema = schema.isEmpty() ? QStringLiteral("public") : schema;
        return begin(connectPostgreSql(place, place.database),
                     QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"), why) &&
               hasSchema(why);
    }

    [[nodiscard]] const database::facts & known() const override { return *database::factsOf(u"postgresql"); }
    [[nodiscard]] QString version() override
    {
        return QStringLiteral("PostgreSQL ") +
               m_connection->firstColumn(QStringLiteral("SELECT current_setting('server_version')"))
                   .constFirst();
    }
    [[nodiscard]] database::catalogue held() override
    {
        // Types of the schema are told without its name, which scripts do not write, either.
        QString refused;
        if (!m_connection->execute(
                QStringLiteral("SET LOCAL search_path TO \"%1\"")
                    .arg(QString(m_schema).replace(QLatin1Char('"'), QLatin1String("\"\""))),
                refused)) {
            throw server_failure(refused);
        }
        return database::normalForm(readPostgreSql(*m_connection, m_schema), known());
    }
    [[nodiscard]] QList<database::left_out> leftOut() override
    {
        return leftOutOfPostgreSql(*m_connection, m_schema);
    }

private:
    /// Whether it is there and has a table, or no other has one; else the reason names those that have.
    bool hasSchema(QString & why)
    {
        const QStringList filled = m_connection->firstColumn(
            QStringLiteral("SELECT DISTINCT nspname FROM pg_class c JOIN pg_namespace n ON n.oid = "
                           "c.relnamespace WHERE relkind IN ('r', 'p') AND nspname NOT LIKE 'pg\\_%' AND "
                           "nspname <> 'information_schema' ORDER BY 1"));
        const QStringList there = m_connection->firstColumn(
            QStringLiteral("SELECT nspname FROM pg_namespace WHERE nspname = ?"), {m_schema});
        if (!there.isEmpty() && (filled.isEmpty() || filled.contains(m_schema))) {
            return true;
        }
        why = QStringLiteral("%1 '%2'; %3")
                  .arg(there.isEmpty() ? QStringLiteral("there is no schema")
                                       : QStringLiteral("there is no table in schema"),
                       m_schema,
                       filled.isEmpty() ? QStringLiteral("no other has tables")
                                        : QStringLiteral("--schema takes one with tables: ") +
                                              filled.join(QStringLiteral(", ")));
        return false;
    }

    QString m_schema;
};

template <class Database>
std::unique_ptr<readable_database> opened(const server_url & place, const QString & schema, QString & why)
{
    auto made = std::make_unique<Database>();
    why = whyNoDriver<Database>();
    return why.isEmpty() && made->open(place, schema, why) ? std::move(made) : nullptr;
}

std::unique_ptr<readable_database> openedSqlite(const server_url & place, const QString &, QString & why)
{
    auto made = std::make_unique<opened_sqlite>();
    return made->open(place, why) ? std::move(made) : nullptr;
}

/// What opens a database of one scheme.
struct opener
{
    QLatin1String scheme;
    std::unique_ptr<readable_database> (*open)(const server_url & place, const QString & schema,
                                               QString & why);
    bool hasSchemas; ///< within a database
};

constexpr opener Openers[] = {
    {QLatin1String("sqlite"), &openedSqlite, false},
    {QLatin1String("mysql"), &opened<opened_mysql>, false},
    {QLatin1String("mariadb"), &opened<opened_mysql>, false},
    {QLatin1String("postgresql"), &opened<opened_postgresql>, true},
};

} // namespace

std::unique_ptr<readable_database> openToRead(const server_url & place, const QString & schema, QString & why)
{
    std::unique_ptr<readable_database> made;
    for (const opener & each : Openers) {
        if (each.scheme == place.scheme && !schema.isEmpty() && !each.hasSchemas) {
            why = QStringLiteral("it has no schemas within a database; leave --schema out");
        } else if (each.scheme == place.scheme) {
            try {
                made = each.open(place, schema, why);
            } catch (const server_failure & failure) {
                why = failure.reason();
            }
        }
    }
    why = withoutPassword(why, place).simplified();
    return made;
}

} // namespace database::server
