#pragma once

#include "tools/script_permission.h"

namespace app {

/// What the commands say to a custom script: one that only the project names runs code of whoever made the
/// project, so it is named on standard error before it runs first.
/// @param leaveOut runs no script, whoever names one
[[nodiscard]] tools::script_guard commandScriptGuard(bool leaveOut);

} // namespace app
