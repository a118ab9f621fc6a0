#pragma once

#include <memory>

namespace app {

class command;

/// Shows the main window, with a project open if one is given, until it is closed.
[[nodiscard]] std::unique_ptr<command> makeWindowCommand();

} // namespace app
