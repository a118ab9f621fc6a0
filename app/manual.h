#pragma once

#include <QString>

namespace app {

/// Address of the manual that belongs to this program.
[[nodiscard]] QString manualUrl();

} // namespace app
