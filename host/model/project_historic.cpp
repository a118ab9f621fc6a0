#include "model/project_historic.h"

#include "zk/sqlite_connection.h"
#include "zk/zk_sql_database.h"

#include <QCoreApplication>
#include <QSqlQuery>

namespace model {

namespace {

// Of fixed width and always UTC, so that the texts sort like the times.
const QString TimeFormat = QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ");

} // namespace

QByteArray project_historic::getProjectFile() const
{
    QByteArray compressed;
    return readProjectFile(compressed).isValid() ? QByteArray() : compressed;
}

QSqlError project_historic::readProjectFile(QByteArray & compressed) const
{
    if (m_sDatabaseFile.isEmpty()) {
        compressed = m_projectFile;
        return {};
    }
    return readProjectFile(zk::ZkSqlDatabase::getDatabase(m_sDatabaseFile), compressed);
}

QSqlError project_historic::readProjectFile(const QSqlDatabase & database, QByteArray & compressed) const
{
    if (const QSqlError error = zk::ZkSqlDatabase::openError(database); error.isValid()) {
        return error;
    }
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (query.prepare(QStringLiteral("SELECT project_file FROM t_project_historic WHERE rowid = ?"))) {
        query.addBindValue(m_iRow);
        if (query.exec() && query.next()) {
            compressed = query.value(0).toByteArray();
            return {};
        }
    }
    return query.lastError().isValid()
               ? zk::sqlite::describe(database, query.lastError())
               : zk::sqlite::failure(
                     m_sDatabaseFile,
                     QCoreApplication::translate("model", "the version tagged at %1 is not there any more")
                         .arg(m_dtCreation.toUTC().toString(TimeFormat)));
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
