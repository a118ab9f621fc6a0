#include "zk/sqlite_copy.h"

#include "zk/sqlite_statement.h"

#include <QStringList>

namespace zk::sqlite {

QSqlError copyRows(const QString & table, const connection & from, const connection & to)
{
    statement rows(from, QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(table));
    const int columns = rows.columnCount();
    const QStringList marks(columns, QStringLiteral("?"));
    statement copy(to,
                   QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(table, marks.join(QStringLiteral(", "))));
    bool isCopied = true;
    while (isCopied && rows.next()) {
        for (int i = 0; i < columns; ++i) {
            copy.bind(i, rows.at(i));
        }
        isCopied = copy.run();
    }
    return rows.error().isValid() ? rows.error() : copy.error();
}

} // namespace zk::sqlite
