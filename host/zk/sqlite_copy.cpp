#include "zk/sqlite_copy.h"

#include "zk/sqlite_locks.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QVariant>

#include <memory>

#include <sqlite3.h>

namespace zk::sqlite {

namespace {

using statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)>;

QString selection(const QString & table)
{
    return QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(table);
}

QString insertion(const QString & table, int columns)
{
    const QStringList marks(columns, QStringLiteral("?"));
    return QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(table, marks.join(QStringLiteral(", ")));
}

QSqlError errorOf(sqlite3 * handle)
{
    return {QString(), QString::fromUtf8(sqlite3_errmsg(handle)), QSqlError::StatementError,
            QString::number(sqlite3_extended_errcode(handle))};
}

statement prepare(sqlite3 * handle, const QString & text)
{
    sqlite3_stmt * prepared = nullptr;
    sqlite3_prepare_v2(handle, text.toUtf8().constData(), -1, &prepared, nullptr);
    return {prepared, sqlite3_finalize};
}

/// Values go from one engine to the other as they are; through the driver each would become a QVariant.
QSqlError copyDirectly(const QString & table, sqlite3 * from, sqlite3 * to)
{
    const statement rows = prepare(from, selection(table));
    if (!rows) {
        return errorOf(from);
    }
    const int columns = sqlite3_column_count(rows.get());
    const statement copy = prepare(to, insertion(table, columns));
    if (!copy) {
        return errorOf(to);
    }
    int state = sqlite3_step(rows.get());
    for (; state == SQLITE_ROW; state = sqlite3_step(rows.get())) {
        for (int i = 0; i < columns; ++i) {
            if (sqlite3_bind_value(copy.get(), i + 1, sqlite3_column_value(rows.get(), i)) != SQLITE_OK) {
                return errorOf(to);
            }
        }
        if (sqlite3_step(copy.get()) != SQLITE_DONE || sqlite3_reset(copy.get()) != SQLITE_OK) {
            return errorOf(to);
        }
    }
    return state == SQLITE_DONE ? QSqlError() : errorOf(from);
}

QSqlError copyThroughDriver(const QString & table, const QSqlDatabase & from, const QSqlDatabase & to)
{
    QSqlQuery rows(from);
    rows.setForwardOnly(true);
    if (!rows.exec(selection(table))) {
        return rows.lastError();
    }
    const int columns = rows.record().count();
    QSqlQuery copy(to);
    if (!copy.prepare(insertion(table, columns))) {
        return copy.lastError();
    }
    while (rows.next()) {
        for (int i = 0; i < columns; ++i) {
            copy.bindValue(i, rows.value(i));
        }
        if (!copy.exec()) {
            return copy.lastError();
        }
    }
    return rows.lastError();
}

} // namespace

QSqlError copyRows(const QString & table, const QSqlDatabase & from, const QSqlDatabase & to)
{
    sqlite3 * const source = handleOf(from);
    sqlite3 * const target = handleOf(to);
    return source && target ? copyDirectly(table, source, target) : copyThroughDriver(table, from, to);
}

} // namespace zk::sqlite
