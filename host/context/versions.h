#pragma once

#include "korvane_global.h"

#include <QString>

namespace context {

/// The versions of what a program runs with, such as "1.0.0".
struct library_versions
{
    QString core; ///< of this library
    QString qt;
    QString sqlite;
};

/// Those that are loaded, which may be others than the program was built with.
[[nodiscard]] KORVANE_EXPORT library_versions libraryVersions();

} // namespace context
