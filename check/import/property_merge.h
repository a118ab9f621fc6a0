#pragma once

#include "check/import/model_merge.h"
#include "check/import/table_draft.h"

#include <QStringList>

#include <memory>

namespace model {
class property;
}

namespace check {

/// Gives properties what the columns of one table say.
class property_merge
{
public:
    /// @param meant what the scripts of the former model make of the table; null for a new one
    property_merge(const schema_import & import, const database::table & table, const database::table * meant)
        : m_import(import), m_known(import.known), m_table(table), m_meant(meant)
    {
    }

    /// The columns of a property, by the names that scripts give them; none for one that has none.
    [[nodiscard]] static QStringList columnsOf(const model::property & property);
    /// The same by the names that the table has for them; those that it has not stay as they are.
    [[nodiscard]] QStringList storedColumnsOf(const model::property & property) const;
    /// Whether the table has all of them.
    [[nodiscard]] bool hasColumns(const QStringList & columns) const;

    /// Whether scripts of the former model make the table and none of the columns: then a database that has
    /// them not says nothing of the property.
    [[nodiscard]] bool isUnwritten(const QStringList & columns) const;

    /// Makes a property without relationship that of its columns: type, key, null, unique, index.
    /// @param columns of the table, that the property stands for
    /// @param isKey whether they are the primary key
    void settle(model::property & property, const QStringList & columns, bool isKey) const;
    /// Makes a relationship's property say what its columns do, as far as it has a say in that.
    void settleRelation(model::property & property) const;
    /// Gives a new property name and columns.
    static void name(model::property & property, const QString & name, const QStringList & columns);

private:
    [[nodiscard]] const database::column * column(const QString & name) const
    {
        return columnOf(m_known, m_table, name);
    }
    [[nodiscard]] const database::column * meantColumn(const QString & name) const
    {
        return m_meant == nullptr ? nullptr : columnOf(m_known, *m_meant, name);
    }
    [[nodiscard]] bool isInKey(const QString & column) const;
    [[nodiscard]] bool keepsType(const model::property & property, const QStringList & columns) const;
    void chooseType(model::property & property, const QStringList & columns) const;
    void settleCounter(model::property & property, const QStringList & columns) const;
    void settleFlags(model::property & property, const QString & column) const;

    const schema_import & m_import;
    const database::facts & m_known;
    const database::table & m_table;
    const database::table * m_meant;
};

} // namespace check
