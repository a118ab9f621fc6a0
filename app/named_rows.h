#pragma once

#include <QLatin1String>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace app {

/// The row of `table` whose member `name` is `name`; null when there is none.
template <class Row, std::size_t Count>
[[nodiscard]] const Row * rowOf(const Row (&table)[Count], const QString & name)
{
    const auto * const found =
        std::find_if(std::begin(table), std::end(table), [&](const Row & row) { return row.name == name; });
    return found == std::end(table) ? nullptr : found;
}

/// The members `name` of the rows, in order.
template <class Row, std::size_t Count>
[[nodiscard]] QStringList namesOf(const Row (&table)[Count])
{
    QStringList names;
    for (const Row & row : table) {
        names << row.name;
    }
    return names;
}

} // namespace app
