#pragma once

#include "zk/zk_collection.h"
#include "zk/zk_sql_database.h"
#include "zk/zk_sql_query.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

#include <memory>

/// Data access on records. A record class R offers
///   static QString zkTable(), static QStringList zkColumns() (what an insert binds),
///   static QStringList zkFetchColumns() (what a fetch reads),
///   void zkRead(const QSqlQuery &, const QSqlDatabase &), QVariantList zkBind() const.
/// An error names the file of the database and the reason.
namespace zk::dao {

/// Appends every record that `query` selects to `list`, keyed by its 0-based position. On an error the list
/// is left as it was.
template <class R>
QSqlError fetchByQuery(ZkCollection<long, std::shared_ptr<R>> & list, const ZkSqlQuery & query,
                       const QSqlDatabase & database)
{
    if (const QSqlError error = ZkSqlDatabase::openError(database); error.isValid()) {
        return error; // a query on a closed connection fails without an error of its own
    }
    QSqlQuery q(database);
    q.setForwardOnly(true);
    if (!q.prepare(QStringLiteral("SELECT ") + R::zkFetchColumns().join(QStringLiteral(", ")) +
                   QStringLiteral(" FROM ") + R::zkTable() + query.getSql())) {
        return ZkSqlDatabase::describe(database, q.lastError());
    }
    for (const QVariant & value : query.getBoundValues()) {
        q.addBindValue(value);
    }
    if (!q.exec()) {
        return ZkSqlDatabase::describe(database, q.lastError());
    }
    ZkCollection<long, std::shared_ptr<R>> fetched;
    while (q.next()) {
        const auto record = std::make_shared<R>();
        record->zkRead(q, database);
        fetched.insert(fetched.count(), record);
    }
    if (q.lastError().isValid()) {
        return ZkSqlDatabase::describe(database, q.lastError());
    }
    const std::lock_guard lock(list.mutex());
    for (const std::shared_ptr<R> & record : fetched.values()) {
        list.insert(list.count(), record);
    }
    return {};
}

/// Deletes every record that `query` selects.
template <class R>
QSqlError deleteByQuery(const ZkSqlQuery & query, const QSqlDatabase & database)
{
    if (const QSqlError error = ZkSqlDatabase::openError(database); error.isValid()) {
        return error;
    }
    QSqlQuery q(database);
    if (!q.prepare(QStringLiteral("DELETE FROM ") + R::zkTable() + query.getSql())) {
        return ZkSqlDatabase::describe(database, q.lastError());
    }
    for (const QVariant & value : query.getBoundValues()) {
        q.addBindValue(value);
    }
    return q.exec() ? QSqlError() : ZkSqlDatabase::describe(database, q.lastError());
}

/// Inserts all records of `list`, in order; stops at the first error.
template <class R>
QSqlError insert(const ZkCollection<long, std::shared_ptr<R>> & list, const QSqlDatabase & database)
{
    if (const QSqlError error = ZkSqlDatabase::openError(database); error.isValid()) {
        return error;
    }
    const QStringList columns = R::zkColumns();
    const QStringList marks(columns.size(), QStringLiteral("?"));
    QSqlQuery q(database);
    if (!q.prepare(QStringLiteral("INSERT INTO ") + R::zkTable() + QStringLiteral(" (") +
                   columns.join(QStringLiteral(", ")) + QStringLiteral(") VALUES (") +
                   marks.join(QStringLiteral(", ")) + QLatin1Char(')'))) {
        return ZkSqlDatabase::describe(database, q.lastError());
    }
    for (const std::shared_ptr<R> & record : list.values()) {
        const QVariantList values = record->zkBind();
        for (qsizetype i = 0; i < values.size(); ++i) {
            q.bindValue(static_cast<int>(i), values.at(i));
        }
        if (!q.exec()) {
            return ZkSqlDatabase::describe(database, q.lastError());
        }
    }
    return {};
}

} // namespace zk::dao
