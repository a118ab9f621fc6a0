#pragma once

#include "database/server/target_database.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <vector>

namespace model {
class project;
} // namespace model

namespace app {

/// What became of the values that were put into a database.
struct verified_values
{
    struct value
    {
        QString version; ///< before which it was put in
        QString name;    ///< "property concert.length"
        QString text;
        long entity = 0;
        long property = 0;
    };

    int values = 0; ///< of properties that the model still has where they were
    std::vector<value> lost;
};

/// Puts rows into the tables of a history, and looks whether each property that is still in its entity has
/// its value: a rename is proven with data.
class verified_rows
{
public:
    /// `target` has to outlive it.
    explicit verified_rows(database::server::target_database & target) : m_target(target) {}

    /// Puts a row into each table that has none.
    /// @param version word for the version that was made last, whose model is `model`
    /// @return the tables that have rows now, with the number of these
    QMap<QString, int> put(const QString & version, const model::project & model);

    /// Looks for the values under the names of the model `now`.
    [[nodiscard]] verified_values compare(const model::project & now) const;

private:
    struct put_value
    {
        QString version;
        long entity = 0;
        long property = 0;
        qsizetype column = 0; ///< of a property with several
        QVariant value;
    };

    database::server::target_database & m_target;
    int m_number = 1000; ///< of the next value; four digits, as a UUID wants them
    std::vector<put_value> m_values;
};

} // namespace app
