#include "model/project_historic.h"

#include "zk/sqlite_connection.h"
#include "zk/zk_sql_database.h"

#include <QSqlQuery>

namespace model {

namespace {

// Of fixed width and always UTC, so that the texts sort like the times.
const QString TimeFormat = QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ");

} // namespace

QByteArray project_historic::getProjectFile() const
{
    if (m_sDatabaseFile.isEmpty()) {
        return m_projectFile;
    }
    const QSqlDatabase database = zk::ZkSqlDatabase::getDatabase(m_sDatabaseFile);
    if (!database.isOpen()) {
        return {};
    }
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.prepare(QStringLiteral("SELECT project_file FROM t_project_historic WHERE rowid = ?"))) {
        return {};
    }
    query.addBindValue(m_iRow);
    return query.exec() && query.next() ? query.value(0).toByteArray() : QByteArray();
}

QStringList project_historic::zkColumns()
{
    return {QStringLiteral("dt_creation"), QStringLiteral("project_file")};
}

QStringList project_historic::zkFetchColumns()
{
    return {QStringLiteral("dt_creation"), QStringLiteral("rowid")};
}

void project_historic::zkRead(const QSqlQuery & row, const QSqlDatabase & database)
{
    m_dtCreation = QDateTime::fromString(row.value(0).toString(), Qt::ISODateWithMs);
    m_iRow = row.value(1).toLongLong();
    m_sDatabaseFile = zk::sqlite::fileOf(database);
}

QVariantList project_historic::zkBind() const
{
    return {m_dtCreation.toUTC().toString(TimeFormat), getProjectFile()};
}

} // namespace model
