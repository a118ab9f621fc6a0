// The settings of the export: in memory, and as records in the project's parameter store.

#include "plugin/ddl_export.h"

#include "plugin/builder/databases.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/plugin_params.h"
#include "model/project.h"
#include "tools/wait_cursor.h"
#include "zk/zk_dao.h"
#include "zk/zk_serialization.h"
#include "zk/zk_session.h"

#include <QFile>
#include <QTextStream>

namespace plugin {

namespace {

using list_of_params = zk::ZkCollection<long, std::shared_ptr<model::plugin_params>>;

const QString KeyPath = QStringLiteral("DDL_EXPORT_PATH");
const QString KeyDatabaseType = QStringLiteral("DDL_EXPORT_DATABASE_TYPE");
const QString KeyTypeMapping = QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_");
const QString KeySchema = QStringLiteral("DDL_EXPORT_DATABASE_SCHEMA");
const QString KeyCustomScript = QStringLiteral("DDL_EXPORT_CUSTOM_JAVASCRIPT");
const QString KeyRelationships = QStringLiteral("DDL_EXPORT_RELATIONSHIPS");

zk::ZkSqlQuery paramsOf(const QString & guid)
{
    return zk::ZkSqlQuery().whereEqual(QStringLiteral("t_plugin_params.plugin_guid"), guid);
}

} // namespace

QString ddl_export::getDDLExportPath(bool resolve) const
{
    return resolve ? context::ctx_project::getSingleton().getPathFromProjectFile(m_settings.path)
                   : m_settings.path;
}

ddl_export::type_mapping ddl_export::getListTypeMappingByDb(database_type db)
{
    if (const type_mapping stored = m_settings.mappings.value(db); !stored.isEmpty()) {
        return stored;
    }
    m_settings.mappings.remove(db);
    return *m_settings.mappings.insert(db, defaultTypeMapping(databaseOf(db).types));
}

void ddl_export::setListTypeMappingByDb(database_type db, const type_mapping & list)
{
    m_settings.mappings.insert(db, list);
}

void ddl_export::clearSettings()
{
    m_settings = settings();
}

QSqlError ddl_export::loadSettings()
{
    const tools::wait_cursor cursor;
    context::ctx_project & context = context::ctx_project::getSingleton();
    if (!context.getProject()) {
        return {};
    }
    const context::ctx_scoped scope(context);
    list_of_params params;
    if (const QSqlError error = zk::dao::fetchByQuery(params, paramsOf(getGuid()), scope.database());
        error.isValid()) {
        return error;
    }
    m_settings.mappings.clear();
    for (const std::shared_ptr<model::plugin_params> & param : params.values()) {
        applyStoredParam(param->getParamKey(), param->getParamValue());
    }
    return {};
}

void ddl_export::applyStoredParam(const QString & key, const QVariant & value)
{
    if (key == KeyPath) {
        m_settings.path = value.toString();
    } else if (key == KeyDatabaseType) {
        m_settings.databaseType = static_cast<database_type>(value.toInt());
    } else if (key == KeySchema) {
        m_settings.schema = static_cast<export_db_schema>(value.toInt());
    } else if (key.startsWith(KeyTypeMapping)) {
        const QString xml = value.toString();
        if (xml.isEmpty()) {
            return;
        }
        const int db = QString(key).remove(KeyTypeMapping).toInt();
        type_mapping list;
        zk::serialization::fromXml(xml, list);
        m_settings.mappings.remove(db);
        if (!list.isEmpty()) {
            m_settings.mappings.insert(db, list);
        }
    } else if (key == KeyCustomScript) {
        m_settings.customScript = value.toString();
    } else if (key == KeyRelationships) {
        m_settings.relationships = value.toBool();
    }
}

QSqlError ddl_export::saveSettings()
{
    const tools::wait_cursor cursor;
    const context::ctx_project & context = context::ctx_project::getSingleton();
    if (!context.getProject()) {
        return {};
    }
    zk::ZkSession session(context.getDatabase());
    list_of_params params;
    const auto append = [this, &params](const QString & key, const QVariant & value) {
        const auto param = std::make_shared<model::plugin_params>();
        param->setGuid(getGuid());
        param->setParamKey(key);
        param->setParamValue(value);
        params.insert(params.count(), param);
    };
    append(KeyPath, m_settings.path);
    append(KeyDatabaseType, static_cast<int>(m_settings.databaseType));
    for (auto it = m_settings.mappings.constBegin(); it != m_settings.mappings.constEnd(); ++it) {
        if (!it.value().isEmpty()) {
            append(KeyTypeMapping + QString::number(it.key()), zk::serialization::toXml(it.value()));
        }
    }
    append(KeySchema, static_cast<int>(m_settings.schema));
    append(KeyCustomScript, m_settings.customScript);
    append(KeyRelationships, m_settings.relationships);

    // Without a transaction of its own it would delete what it cannot write anew.
    if (session.isValid()) {
        session.addError(
            zk::dao::deleteByQuery<model::plugin_params>(paramsOf(getGuid()), session.database()));
    }
    if (session.isValid()) {
        session.addError(zk::dao::insert(params, session.database()));
    }
    return session.end();
}

void ddl_export::readFile(const QString & fileName, QString & content) const
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return;
    }
    if (const QString text = QTextStream(&file).readAll(); !text.isEmpty()) {
        content = text;
    }
}

} // namespace plugin
