#include "database/server/connected_target.h"
#include "database/server/server_url.h"

#include "database/facts/names.h"
#include "database/facts/normal_form.h"

#include <QFile>
#include <QMap>
#include <QSqlDatabase>

namespace database::server {

namespace {

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
        for (const QVariantList & row : m_connection->rows(
                 QStringLiteral("SELECT name, sql FROM sqlite_master WHERE type = 'table' AND name NOT LIKE "
                                "'sqlite_%' UNION ALL "
                                "SELECT name, sql FROM sqlite_temp_master WHERE type = 'table' AND name NOT "
                                "LIKE 'sqlite_%'"))) {
            database::table owner;
            owner.name = row[0].toString();
            addColumns(owner, row[1].toString().contains(QLatin1String("AUTOINCREMENT")));
            addIndexes(owner);
            addForeignKeys(owner);
            found.tables.emplace(database::foldedTable(known(), owner.name), std::move(owner));
        }
        return database::normalForm(std::move(found), known());
    }

private:
    void removeFile() const
    {
        if (!m_sFile.isEmpty()) {
            QFile::remove(m_sFile);
        }
    }

    void addColumns(database::table & owner, bool hasCounter) const
    {
        QMap<int, QString> key;
        for (const QVariantList & c : m_connection->rows(
                 QStringLiteral("SELECT name, type, \"notnull\", pk FROM pragma_table_info(?)"),
                 {owner.name})) {
            const int place = c[3].toInt();
            owner.columns.push_back(
                {c[0].toString(), c[1].toString(), c[2].toBool(), place > 0 && hasCounter});
            if (place > 0) {
                key.insert(place, c[0].toString());
            }
        }
        if (!key.isEmpty()) {
            owner.key = database::primary_key{};
            for (const QString & column : key) {
                owner.key->parts.push_back({column, 0});
            }
        }
    }

    void addIndexes(database::table & owner) const
    {
        for (const QVariantList & i : m_connection->rows(
                 QStringLiteral("SELECT name, \"unique\" FROM pragma_index_list(?) WHERE origin <> 'pk'"),
                 {owner.name})) {
            database::index found{i[0].toString(), {}, i[1].toBool(), false};
            for (const QString & column : m_connection->firstColumn(
                     QStringLiteral("SELECT name FROM pragma_index_info(?) ORDER BY seqno"), {i[0]})) {
                found.parts.push_back({column, 0});
            }
            owner.indexes.push_back(std::move(found));
        }
    }

    void addForeignKeys(database::table & owner) const
    {
        QMap<int, database::foreign_key> keys;
        for (const QVariantList & f :
             m_connection->rows(QStringLiteral("SELECT id, \"table\", \"from\", \"to\" FROM "
                                               "pragma_foreign_key_list(?) ORDER BY id, seq"),
                                {owner.name})) {
            database::foreign_key & key = keys[f[0].toInt()];
            key.target = f[1].toString();
            key.columns.append(f[2].toString());
            key.targetColumns.append(f[3].toString());
        }
        for (const database::foreign_key & key : keys) {
            owner.foreignKeys.push_back(key);
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
