#include "servers/sql_connection.h"
#include "servers/target_database.h"

#include <QMap>
#include <QSqlDatabase>

namespace servers {

namespace {

class sqlite_target : public target_database
{
public:
    bool reset(QString & error) override
    {
        m_connection = std::make_unique<sql_connection>(QStringLiteral("QSQLITE"), [](QSqlDatabase & db) {
            db.setDatabaseName(QStringLiteral(":memory:"));
        });
        error = m_connection->openError();
        return m_connection->isOpen();
    }
    bool execute(const QString & statement, QString & error) override
    {
        return m_connection->execute(statement, error);
    }
    QString typeAsStored(const QString & type) override { return type; }

    QStringList catalogue() override
    {
        QStringList lines;
        for (const QString & table : m_connection->firstColumn(QStringLiteral(
                 "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'"))) {
            lines.append(QStringLiteral("table ") + table);
            addColumns(table, lines);
            addIndexes(table, lines);
            addForeignKeys(table, lines);
        }
        lines.sort();
        return lines;
    }

private:
    void addColumns(const QString & table, QStringList & lines) const
    {
        QMap<int, QString> key;
        for (const QVariantList & c : m_connection->rows(
                 QStringLiteral("SELECT name, type, \"notnull\", pk FROM pragma_table_info(?)"), {table})) {
            lines.append(QStringLiteral("column %1.%2 %3%4")
                             .arg(table, c[0].toString(), c[1].toString(),
                                  c[2].toBool() ? QStringLiteral(" NOT NULL") : QString()));
            if (c[3].toInt() > 0) {
                key.insert(c[3].toInt(), c[0].toString());
            }
        }
        if (!key.isEmpty()) {
            lines.append(withColumns(QStringLiteral("key ") + table, key.values()));
        }
    }

    void addIndexes(const QString & table, QStringList & lines) const
    {
        for (const QVariantList & i :
             m_connection->rows(QStringLiteral("SELECT name, origin FROM pragma_index_list(?)"), {table})) {
            const QStringList columns = m_connection->firstColumn(
                QStringLiteral("SELECT name FROM pragma_index_info(?) ORDER BY seqno"), {i[0]});
            if (i[1].toString() == QStringLiteral("u")) {
                lines.append(withColumns(QStringLiteral("unique ") + table, columns));
            } else if (i[1].toString() == QStringLiteral("c")) {
                lines.append(withColumns(QStringLiteral("index %1 %2").arg(i[0].toString(), table), columns));
            }
        }
    }

    void addForeignKeys(const QString & table, QStringList & lines) const
    {
        struct foreign_key
        {
            QString target;
            QStringList from;
            QStringList to;
        };
        QMap<int, foreign_key> keys;
        for (const QVariantList & f :
             m_connection->rows(QStringLiteral("SELECT id, \"table\", \"from\", \"to\" FROM "
                                               "pragma_foreign_key_list(?) ORDER BY id, seq"),
                                {table})) {
            foreign_key & key = keys[f[0].toInt()];
            key.target = f[1].toString();
            key.from.append(f[2].toString());
            key.to.append(f[3].toString());
        }
        for (const foreign_key & key : keys) {
            lines.append(withColumns(QStringLiteral("foreign - ") + table, key.from) +
                         withColumns(QStringLiteral(" -> ") + key.target, key.to));
        }
    }

    std::unique_ptr<sql_connection> m_connection;
};

} // namespace

std::unique_ptr<target_database> startSqlite(QString & why)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"))) {
        why = QStringLiteral("Qt's SQLite driver is not installed");
        return nullptr;
    }
    return std::make_unique<sqlite_target>();
}

} // namespace servers
