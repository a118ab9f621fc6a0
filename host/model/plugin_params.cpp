#include "model/plugin_params.h"

#include <QSqlQuery>

namespace model {

QStringList plugin_params::zkColumns()
{
    return {QStringLiteral("plugin_guid"), QStringLiteral("param_key"), QStringLiteral("param_value")};
}

void plugin_params::zkRead(const QSqlQuery & row, const QSqlDatabase &)
{
    m_sGuid = row.value(0).toString();
    m_sKey = row.value(1).toString();
    m_value = row.value(2);
}

QVariantList plugin_params::zkBind() const
{
    QVariant value = m_value;
    if (value.typeId() == QMetaType::Bool) {
        value = value.toInt();
    } else if (value.typeId() == QMetaType::QString && value.toString().isNull()) {
        value = QStringLiteral(""); // a text without characters is a text; a null one would be bound as NULL
    }
    return {m_sGuid, m_sKey, value};
}

} // namespace model
