#include "app/commands/version_command.h"

#include "app/command.h"
#include "app/output.h"
#include "app/plugin_choice.h"

#include "context/versions.h"
#include "plugin/export_interface.h"

namespace app {

namespace {

class version_command : public command
{
public:
    version_command() : command("version", "Print the versions", surroundings::plugins) {}

    void declare(command_options &) override {}

    [[nodiscard]] int run() override
    {
        const context::library_versions versions = context::libraryVersions();
        printLine(QStringLiteral("korvane " KORVANE_VERSION));
        printLine(QStringLiteral("KorvaneCore ") + versions.core);
        const found_plugins found = found_plugins::inFolders();
        for (const auto & loaded : found.plugins) {
            const plugin::export_interface & each = *loaded->getInterface();
            printLine(oneLine(each.getName() + QLatin1Char(' ') + each.getVersion()));
        }
        printLine(QStringLiteral("Qt ") + versions.qt);
        printLine(QStringLiteral("SQLite ") + versions.sqlite);
        for (const QString & problem : found.problems) {
            printError(problem);
        }
        return Done;
    }
};

} // namespace

std::unique_ptr<command> makeVersionCommand()
{
    return std::make_unique<version_command>();
}

} // namespace app
