#pragma once

#include <QLatin1String>

namespace model {

/// What the name of a project file ends with, behind the dot.
inline constexpr QLatin1String ProjectFileSuffix("korv");

} // namespace model
