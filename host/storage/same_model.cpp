#include "storage/same_model.h"

#include "os/file_status.h"
#include "storage/project_schema.h"
#include "storage/temporary_file.h"
#include "zk/sqlite_connection.h"
#include "zk/sqlite_statement.h"

namespace storage {

namespace {

/// The rows of a model's table in model order.
QString selection(const project_schema::table & table)
{
    // Which ids were used by objects that are gone is no part of the model.
    const QString columns =
        table.name == QLatin1String("t_project") ? QStringLiteral("name") : QStringLiteral("*");
    return QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid").arg(columns, table.name);
}

bool sameRows(zk::sqlite::statement & a, zk::sqlite::statement & b)
{
    const int columns = a.columnCount();
    for (;;) {
        const bool more = a.next();
        if (more != b.next()) {
            return false;
        }
        if (!more) {
            return !a.error().isValid() && !b.error().isValid();
        }
        for (int i = 0; i < columns; ++i) {
            if (!(a.at(i) == b.at(i))) {
                return false;
            }
        }
    }
}

bool sameTables(const zk::sqlite::connection & a, const zk::sqlite::connection & b)
{
    for (const project_schema::table & table : project_schema::tables()) {
        if (table.holds != project_schema::of_model) {
            continue;
        }
        zk::sqlite::statement rowsOfA(a, selection(table));
        zk::sqlite::statement rowsOfB(b, selection(table));
        if (!sameRows(rowsOfA, rowsOfB)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool holdsModelOf(const zk::sqlite::connection & file, const QByteArray & other)
{
    temporary_file copy;
    if (!copy.create(os::temporaryFolder(), temporary_file::readers::owner).isEmpty() ||
        !copy.append(other)) {
        return false;
    }
    const zk::sqlite::final_file final(copy.name());
    zk::sqlite::connection opened;
    return !opened.open(copy.name()).isValid() &&
           !project_schema::check(opened, project_schema::examined::state).isValid() &&
           sameTables(file, opened);
}

} // namespace storage
