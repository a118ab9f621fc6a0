// Placeholders that let the layers above link while the services below them are written.

#include "model/plugin_params.h"
#include "model/project.h"
#include "storage/project_file.h"
#include "tools/bounded_uncompress.h"
#include "zk/zk_serialization.h"
#include "zk/zk_session.h"
#include "zk/zk_sql_database.h"
#include "zk/zk_sql_query.h"

// --- storage
QSqlError storage::project_file::read(const QString &, model::project &)
{
    return QSqlError(QStringLiteral("not there yet"));
}
QSqlDatabase zk::ZkSqlDatabase::getDatabase(const QString &)
{
    return {};
}
void zk::ZkSqlDatabase::clearAllDatabases() {}
zk::ZkSqlQuery & zk::ZkSqlQuery::whereEqual(const QString &, const QVariant &)
{
    return *this;
}
QString zk::ZkSqlQuery::getSql() const
{
    return {};
}
zk::ZkSession::ZkSession(const QSqlDatabase & database) : m_database(database) {}
zk::ZkSession::~ZkSession() = default;
void zk::ZkSession::addError(const QSqlError &) {}
QSqlError zk::ZkSession::end()
{
    return {};
}
QString zk::serialization::toXml(const ZkCollection<QString, QString> &)
{
    return {};
}
bool zk::serialization::fromXml(const QString &, ZkCollection<QString, QString> &)
{
    return false;
}
QStringList model::plugin_params::zkColumns()
{
    return {};
}
void model::plugin_params::zkRead(const QSqlQuery &, const QSqlDatabase &) {}
QVariantList model::plugin_params::zkBind() const
{
    return {};
}
QByteArray tools::boundedUncompress(const QByteArray &, qsizetype)
{
    return {};
}
