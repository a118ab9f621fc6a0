#pragma once

#include "korvane_global.h"

#include <QString>
#include <QVariantList>

namespace zk {

/// The conditions and the order of a fetch or a delete; values are always bound, never part of the text.
class KORVANE_EXPORT ZkSqlQuery
{
public:
    /// Adds the condition that `column` ("table.column") equals `value`; several are joined by AND.
    ZkSqlQuery & whereEqual(const QString & column, const QVariant & value);
    /// Sorts ascending by `column` ("table.column"); rows of equal value keep the order of their insertion.
    ZkSqlQuery & orderAsc(const QString & column);

    /// The SQL text behind "FROM table" / "DELETE FROM table", empty or beginning with a blank.
    [[nodiscard]] QString getSql() const;
    /// The values for the text's placeholders, in order.
    [[nodiscard]] const QVariantList & getBoundValues() const { return m_lstValue; }

private:
    QString m_sWhere;
    QString m_sOrder;
    QVariantList m_lstValue;
};

} // namespace zk
