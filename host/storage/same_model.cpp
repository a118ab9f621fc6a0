#include "storage/same_model.h"

#include "storage/project_schema.h"
#include "storage/temporary_file.h"
#include "zk/sqlite_connection.h"

#include <QDir>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

namespace storage {

namespace {

/// Opens the rows of a model's table in model order.
bool select(QSqlQuery & query, const project_schema::table & table)
{
    // Which ids were used by objects that are gone is no part of the model.
    const QString columns =
        table.name == QLatin1String("t_project") ? QStringLiteral("name") : QStringLiteral("*");
    query.setForwardOnly(true);
    return query.exec(QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid").arg(columns, table.name));
}

bool sameRows(QSqlQuery & a, QSqlQuery & b)
{
    const int columns = a.record().count();
    for (;;) {
        const bool more = a.next();
        if (more != b.next()) {
            return false;
        }
        if (!more) {
            return !a.lastError().isValid() && !b.lastError().isValid();
        }
        for (int i = 0; i < columns; ++i) {
            if (a.value(i) != b.value(i)) {
                return false;
            }
        }
    }
}

bool sameTables(const QSqlDatabase & a, const QSqlDatabase & b)
{
    for (const project_schema::table & table : project_schema::tables()) {
        QSqlQuery rowsOfA(a);
        QSqlQuery rowsOfB(b);
        if (table.holds == project_schema::of_model &&
            !(select(rowsOfA, table) && select(rowsOfB, table) && sameRows(rowsOfA, rowsOfB))) {
            return false;
        }
    }
    return true;
}

} // namespace

bool holdsModelOf(const QSqlDatabase & database, const QByteArray & other)
{
    temporary_file file;
    if (!file.create(QDir::tempPath(), temporary_file::readers::owner).isEmpty() || !file.append(other)) {
        return false;
    }
    const zk::sqlite::final_file final(file.name());
    zk::sqlite::scoped_connection connection;
    return !connection.open(file.name()).isValid() &&
           !project_schema::check(file.name(), connection.database(), false).isValid() &&
           sameTables(database, connection.database());
}

} // namespace storage
