#pragma once

#include <memory>

namespace app {

class command;

/// The commands, each made by a file of its own: importing is in import_command.cpp, and so on.
[[nodiscard]] std::unique_ptr<command> makeImportCommand();
[[nodiscard]] std::unique_ptr<command> makeDumpCommand();
[[nodiscard]] std::unique_ptr<command> makeTagCommand();
[[nodiscard]] std::unique_ptr<command> makeLogCommand();
[[nodiscard]] std::unique_ptr<command> makeExportCommand();
[[nodiscard]] std::unique_ptr<command> makePluginsCommand();

} // namespace app
