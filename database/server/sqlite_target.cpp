#include "database/server/connected_target.h"
#include "database/server/server_url.h"

#include "database/facts/names.h"
#include "database/facts/normal_form.h"

#include <QFile>
#include <QMap>
#include <QSet>
#include <QSqlDatabase>

namespace database::server {

namespace {

/// All tables, also temporary ones, with their statements and their order.
const QString Tables = QStringLiteral(
    "(SELECT name, sql, rowid AS place FROM sqlite_master WHERE type = 'table' AND name NOT LIKE "
    "'sqlite_%' UNION ALL SELECT name, sql, rowid FROM sqlite_temp_master WHERE type = 'table' "
    "AND name NOT LIKE 'sqlite_%')");

class sqlite_target : public connected_target
{
public:
    sqlite_target() : connected_target(QStringLiteral("SQLite"), QStringLiteral("SELECT sqlite_version()")) {}

    [[nodiscard]] const database::facts & known() const override { return *database::factsOf(u"sqlite"); }
    ~sqlite_target() override
    {
        m_connection.reset();
        removeFile();
    }
    sqlite_target(const sqlite_target &) = delete;
    sqlite_target & operator=(const sqlite_target &) = delete;

    /// Uses the file in the place of memory; it goes with this.
    void setFile(const QString & file) { m_sFile = file; }

    bool reset(QString & error) override
    {
        m_connection.reset();
        removeFile();
        m_connection = std::make_unique<sql_connection>(QStringLiteral("QSQLITE"), [this](QSqlDatabase & db) {
            db.setDatabaseName(m_sFile.isEmpty() ? QStringLiteral(":memory:") : m_sFile);
        });
        error = m_connection->openError();
        return m_connection->isOpen();
    }
    bool execute(const QString & statement, server_error & error) override
    {
        const bool done = connected_target::execute(statement, error);
        // The driver has the numbers that SQLite's names stand for.
        static const QMap<QString, QString> names = {
            {QStringLiteral("1"), QStringLiteral("SQLITE_ERROR")},
            {QStringLiteral("787"), QStringLiteral("SQLITE_CONSTRAINT_FOREIGNKEY")}};
        error.code = names.value(error.code, error.code);
        return done;
    }
    QString typeAsStored(const QString & type) override { return type; }
    [[nodiscard]] QString quoted(const QString & name) const override
    {
        return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QLatin1String("\"\"")) +
               QLatin1Char('"');
    }
    [[nodiscard]] QString checkForeignKeys(bool on) const override
    {
        return QStringLiteral("PRAGMA foreign_keys = ") + QLatin1String(on ? "ON" : "OFF");
    }

    [[nodiscard]] bool enforcesForeignKeys() const override { return false; }

    [[nodiscard]] database::catalogue held() override
    {
        database::catalogue found;
        QSet<QString> counted;
        for (const QVariantList & row :
             m_connection->rows(QStringLiteral("SELECT name, sql FROM ") + Tables)) {
            const QString name = row[0].toString();
            tableOf(found, name).name = name;
            if (row[1].toString().contains(QLatin1String("AUTOINCREMENT"))) {
                counted.insert(name);
            }
        }
        addColumns(found, counted);
        addIndexes(found);
        addForeignKeys(found);
        return database::normalForm(std::move(found), known());
    }

private:
    void removeFile() const
    {
        if (!m_sFile.isEmpty()) {
            QFile::remove(m_sFile);
        }
    }

    /// One query for all tables: a statement a table would take most of the time.
    [[nodiscard]] QList<QVariantList> ofTables(const char * columns, const char * from,
                                               const char * order) const
    {
        return m_connection->rows(
            QStringLiteral("SELECT t.name, %1 FROM %2 AS t, %3 ORDER BY t.place, %4")
                .arg(QLatin1String(columns), Tables, QLatin1String(from), QLatin1String(order)));
    }

    [[nodiscard]] database::table & tableOf(database::catalogue & found, const QVariant & name) const
    {
        return found.tables[database::foldedTable(known(), name.toString())];
    }

    void addColumns(database::catalogue & found, const QSet<QString> & counted) const
    {
        QMap<QString, QMap<int, QString>> keys;
        for (const QVariantList & c :
             ofTables("c.name, c.type, c.\"notnull\", c.pk", "pragma_table_info(t.name) AS c", "c.cid")) {
            const int place = c[4].toInt();
            tableOf(found, c[0])
                .columns.push_back({c[1].toString(), c[2].toString(), c[3].toBool(),
                                    place > 0 && counted.contains(c[0].toString())});
            if (place > 0) {
                keys[c[0].toString()].insert(place, c[1].toString());
            }
        }
        for (auto key = keys.constBegin(); key != keys.constEnd(); ++key) {
            database::table & owner = tableOf(found, key.key());
            owner.key = database::primary_key{};
            for (const QString & column : *key) {
                owner.key->parts.push_back({column, 0});
            }
        }
    }

    void addIndexes(database::catalogue & found) const
    {
        for (const QVariantList & i :
             ofTables("i.name, i.\"unique\", p.name",
                      "pragma_index_list(t.name) AS i, pragma_index_info(i.name) AS p WHERE i.origin <> 'pk'",
                      "i.seq, p.seqno")) {
            auto & indexes = tableOf(found, i[0]).indexes;
            const QString name = i[1].toString();
            if (indexes.empty() || indexes.back().name != name) {
                indexes.push_back({name, {}, i[2].toBool(), false});
            }
            indexes.back().parts.push_back({i[3].toString(), 0});
        }
    }

    void addForeignKeys(database::catalogue & found) const
    {
        QMap<std::pair<QString, int>, database::foreign_key> keys;
        for (const QVariantList & f : ofTables("f.id, f.\"table\", f.\"from\", f.\"to\"",
                                               "pragma_foreign_key_list(t.name) AS f", "f.id, f.seq")) {
            database::foreign_key & key = keys[{f[0].toString(), f[1].toInt()}];
            key.target = f[2].toString();
            key.columns.append(f[3].toString());
            key.targetColumns.append(f[4].toString());
        }
        for (auto key = keys.constBegin(); key != keys.constEnd(); ++key) {
            tableOf(found, key.key().first).foreignKeys.push_back(*key);
        }
    }

    QString m_sFile; ///< empty for memory
};

} // namespace

std::unique_ptr<target_database> openSqlite(const server_url & place, QString & why)
{
    if (QFile::exists(place.database)) {
        why = QStringLiteral(
            "the file is there already, and nothing of others is touched; name one that is not");
        return nullptr;
    }
    auto target = std::make_unique<sqlite_target>();
    target->setFile(place.database);
    if (!target->reset(why)) {
        return nullptr;
    }
    return target;
}

std::unique_ptr<target_database> startSqlite(QString & why)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"))) {
        why = QStringLiteral("Qt's SQLite driver is not installed");
        return nullptr;
    }
    return std::make_unique<sqlite_target>();
}

} // namespace database::server
