#pragma once

#include "korvane_global.h"

#include <QString>
#include <QStringList>
#include <QVariant>

class QSqlDatabase;
class QSqlQuery;

namespace model {

/// One persisted setting of one plug-in: a row of the project database's table "t_plugin_params".
class KORVANE_EXPORT plugin_params
{
public:
    [[nodiscard]] QString getGuid() const { return m_sGuid; }
    void setGuid(const QString & guid) { m_sGuid = guid; }
    [[nodiscard]] QString getParamKey() const { return m_sKey; }
    void setParamKey(const QString & key) { m_sKey = key; }
    /// Integers, booleans (stored as 0 and 1) and texts are kept as such.
    [[nodiscard]] QVariant getParamValue() const { return m_value; }
    void setParamValue(const QVariant & value) { m_value = value; }

    static QString zkTable() { return QStringLiteral("t_plugin_params"); }
    static QStringList zkColumns();
    static QStringList zkFetchColumns() { return zkColumns(); }
    void zkRead(const QSqlQuery & row, const QSqlDatabase & database);
    [[nodiscard]] QVariantList zkBind() const;

private:
    QString m_sGuid;
    QString m_sKey;
    QVariant m_value;
};

} // namespace model
