#pragma once

#include "database/server/table_rows.h"
#include "database/server/target_database.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <vector>

namespace model {
class entity;
class project;
} // namespace model

namespace app {

/// What became of the values that were put into a database.
struct verified_values
{
    struct value
    {
        QString version; ///< after which it was put in
        QString name;    ///< "property concert.length"
        QString text;
        long entity = 0;
        long property = 0;
    };

    int values = 0;          ///< of properties that the model still has where they were
    QStringList emptyTables; ///< that took no row
    std::vector<value> lost;
};

/// Puts rows into the tables of a history, and looks whether each property that is still in its entity has
/// its value: a rename is proven with data.
class verified_rows
{
public:
    /// `target` has to outlive it.
    /// @param content of the rows; which of values and nulls is looked for at the end
    verified_rows(database::server::target_database & target, database::server::row_content content)
        : m_target(target), m_content(content)
    {
    }

    /// Puts a row into each table that has none.
    /// @param held what is in the database
    /// @param version word for the version that was made last, whose model is `model`
    /// @return the tables that have rows now, with the number of these
    QMap<QString, int> put(const database::catalogue & held, const QString & version,
                           const model::project & model);

    /// Whether anything was put in that is looked for.
    [[nodiscard]] bool isAny() const { return !m_values.empty(); }

    /// Looks for the values under the names of the model `now`.
    /// @param held what is in the database
    [[nodiscard]] verified_values compare(const database::catalogue & held, const model::project & now) const;

private:
    struct put_value
    {
        QString version;
        long entity = 0;
        long property = 0;
        qsizetype column = 0; ///< of a property with several
        QVariant value;
    };

    void remember(const QString & version, const model::entity & entity,
                  const database::server::put_row & row);

    database::server::target_database & m_target;
    database::server::row_content m_content;
    int m_number = 1000; ///< of the next value
    std::vector<put_value> m_values;
    QStringList m_emptyTables;
};

} // namespace app
