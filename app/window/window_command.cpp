#include "app/window/window_command.h"

#include "app/command.h"
#include "app/command_options.h"
#include "app/manual.h"
#include "app/window/legible_colours.h"
#include "app/window/project_window.h"

#include "context/ctx_global.h"

#include <QApplication>
#include <QTimer>

namespace app {

namespace {

const char Help[] =
    "Without a command the main window opens.\n"
    "\n"
    "Examples:\n"
    "  korvane shop.korv                           open a project in the main window\n"
    "  korvane import shop.json shop.korv          create a project from a model in text form\n"
    "  korvane tag shop.korv -m \"first release\"    tag its current state as a new version\n"
    "  korvane diff shop.korv                      what changed since the newest version\n"
    "  korvane export shop.korv -y --db postgresql --path sql\n"
    "                                              write the PostgreSQL scripts to the folder sql\n"
    "  korvane plugins                             list the plugins and their options\n"
    "\n"
    "Exit status: 0 success; 1 failure (one line on standard error says why); 2 wrong usage; 3 done, and "
    "there is\n"
    "something to object to.";

class window_command : public command
{
public:
    window_command()
        : command(
              "korvane",
              "Import models of persistent classes, tag their versions and export them as DDL SQL scripts",
              surroundings::window)
    {
    }

    void declare(command_options & options) override
    {
        options.addOptionalFile("PROJECT.korv", "A project file to open in the main window", m_sProjectFile,
                                value_kind::project);
        options.setFooter(Help);
    }

    [[nodiscard]] int run() override
    {
        context::ctx_global::setAppHelpManualUrl(manualUrl());
        const legible_colours colours;
        project_window window;
        window.show();
        if (!m_sProjectFile.isEmpty()) {
            // What is wrong with the file is told over the window that goes on.
            QTimer::singleShot(0, &window, [&window, this] { window.openFile(m_sProjectFile); });
        }
        return QApplication::exec();
    }

private:
    QString m_sProjectFile;
};

} // namespace

std::unique_ptr<command> makeWindowCommand()
{
    return std::make_unique<window_command>();
}

} // namespace app
