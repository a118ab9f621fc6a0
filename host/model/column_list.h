#pragma once

#include <QLatin1Char>

namespace model {

/// Stands between columns, or between their types, where one text holds several.
inline constexpr QLatin1Char ColumnSeparator('|');

} // namespace model
