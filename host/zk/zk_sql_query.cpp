#include "zk/zk_sql_query.h"

#include <QStringList>

namespace zk {

namespace {

/// "table.column" as a quoted SQL identifier.
QString quoted(const QString & name)
{
    QStringList parts = name.split(QLatin1Char('.'));
    for (QString & part : parts) {
        part = QLatin1Char('"') + part.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
    }
    return parts.join(QLatin1Char('.'));
}

} // namespace

ZkSqlQuery & ZkSqlQuery::whereEqual(const QString & column, const QVariant & value)
{
    m_sWhere += (m_sWhere.isEmpty() ? QStringLiteral(" WHERE ") : QStringLiteral(" AND ")) + quoted(column) +
                QStringLiteral(" = ?");
    m_lstValue.append(value);
    return *this;
}

ZkSqlQuery & ZkSqlQuery::orderAsc(const QString & column)
{
    m_sOrder += (m_sOrder.isEmpty() ? QStringLiteral(" ORDER BY ") : QStringLiteral(", ")) + quoted(column) +
                QStringLiteral(" ASC");
    return *this;
}

QString ZkSqlQuery::getSql() const
{
    return m_sOrder.isEmpty() ? m_sWhere : m_sWhere + m_sOrder + QStringLiteral(", rowid ASC");
}

} // namespace zk
