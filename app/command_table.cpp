#include "app/command_table.h"

#include "app/command.h"
#include "app/commands/commands.h"
#include "app/window/window_command.h"

namespace app {

std::vector<std::unique_ptr<command>> makeCommands()
{
    std::vector<std::unique_ptr<command>> commands;
#define KORVANE_MAKE_COMMAND(MAKE) commands.push_back(MAKE());
    KORVANE_COMMANDS(KORVANE_MAKE_COMMAND)
#undef KORVANE_MAKE_COMMAND
    return commands;
}

std::unique_ptr<command> makeDefaultCommand()
{
    return makeWindowCommand();
}

} // namespace app
