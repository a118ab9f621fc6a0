#pragma once

#include "app/described_command.h"

#include <QList>

#include <memory>
#include <vector>

namespace app {

class command;

/// The commands that are called by a name, in the order in which help lists them.
[[nodiscard]] std::vector<std::unique_ptr<command>> makeCommands();
/// What the program does without the name of a command: the window.
[[nodiscard]] std::unique_ptr<command> makeDefaultCommand();
/// What all of these take: what the program does without a command, and after it each command in that order.
[[nodiscard]] QList<described_command> describeCommands();

} // namespace app
