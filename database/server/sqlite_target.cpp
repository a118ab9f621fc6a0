#include "database/server/catalogue_readers.h"
#include "database/server/connected_target.h"
#include "database/server/server_url.h"

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
        if (!m_bKept) {
            removeFile();
        }
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
    [[nodiscard]] QString foreignKeyChecks(bool on) const override
    {
        return QStringLiteral("PRAGMA foreign_keys = ") + QLatin1String(on ? "ON" : "OFF");
    }

    [[nodiscard]] bool enforcesForeignKeys() const override { return false; }
    [[nodiscard]] QString keep() override
    {
        m_bKept = true;
        return m_sFile;
    }
    [[nodiscard]] std::unique_ptr<target_database> another() const override
    {
        return m_sFile.isEmpty() ? std::make_unique<sqlite_target>() : nullptr;
    }

    [[nodiscard]] database::catalogue held() override
    {
        return database::normalForm(readSqlite(*m_connection, m_tables), known());
    }
    [[nodiscard]] QList<database::left_out> leftOut() override { return leftOutOfSqlite(*m_connection); }

private:
    void removeFile() const
    {
        if (!m_sFile.isEmpty()) {
            QFile::remove(m_sFile);
        }
    }

    QString m_sFile; ///< empty for memory
    bool m_bKept = false;
    sqlite_tables m_tables; ///< stays with a reset: what the same statements make is the same
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
        why = QStringLiteral("Qt's SQLite driver is not installed; the package libqt6sql6-sqlite brings it");
        return nullptr;
    }
    return std::make_unique<sqlite_target>();
}

} // namespace database::server
