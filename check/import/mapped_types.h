#pragma once

#include "database/facts/known_types.h"

#include <QHash>
#include <QList>
#include <QString>

#include <utility>

namespace check {

/// What a property says of the type of a column.
struct mapped_type
{
    QString cppType;
    QString forced; ///< SQL type; empty where the type mapping gives it
};

/// Which C++ types the columns of a database get, so that its scripts make them of the same SQL type again.
class mapped_types
{
public:
    /// @param known has to outlive it
    /// @param mapping C++ type to SQL type, as the scripts of that database have them
    mapped_types(const database::facts & known, const QList<std::pair<QString, QString>> & mapping);

    /// The type for a column that the catalogue shows as `sqlType`: the one whose mapping gives just that, of
    /// several the most usual one; else the nearest with the SQL type forced.
    /// @param isInKey whether the column is in the primary key, or scripts make an index over it
    [[nodiscard]] mapped_type typeFor(const QString & sqlType, bool isInKey) const;
    /// How the catalogue shows a column of that type; empty for a C++ type that the mapping does not know.
    [[nodiscard]] QString shown(const mapped_type & type) const;
    /// The same for a property of an enumeration.
    [[nodiscard]] QString shownOfEnumeration(const QString & forced) const;

private:
    database::known_types m_types;
    QHash<QString, QString> m_shown; ///< by C++ type
    QHash<QString, QString> m_exact; ///< C++ type by what the catalogue shows
};

} // namespace check
