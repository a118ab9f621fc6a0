#pragma once

#include <memory>
#include <vector>

namespace app {

class command;

/// The commands that are called by a name, in the order in which help lists them.
[[nodiscard]] std::vector<std::unique_ptr<command>> makeCommands();
/// What the program does without the name of a command: the window.
[[nodiscard]] std::unique_ptr<command> makeDefaultCommand();

} // namespace app
