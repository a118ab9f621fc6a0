#include "app/command_table.h"

#include "app/command.h"
#include "app/commands/commands.h"
#include "app/window/window_command.h"

namespace app {

std::vector<std::unique_ptr<command>> makeCommands()
{
    // A row a command.
    constexpr std::unique_ptr<command> (*makers[])() = {
        makeImportCommand, //
        makeDumpCommand,   //
        makeTagCommand,    //
        makeLogCommand,    //
        makeExportCommand, //
        makePluginsCommand,
    };
    std::vector<std::unique_ptr<command>> commands;
    for (const auto make : makers) {
        commands.push_back(make());
    }
    return commands;
}

std::unique_ptr<command> makeDefaultCommand()
{
    return makeWindowCommand();
}

} // namespace app
