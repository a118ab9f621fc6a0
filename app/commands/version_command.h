#pragma once

#include <memory>

namespace app {

class command;

/// What "korvane --version" does, which is an option and no command for a person: prints the version, and on
/// further lines those of library, plug-ins, Qt and SQLite.
[[nodiscard]] std::unique_ptr<command> makeVersionCommand();

} // namespace app
