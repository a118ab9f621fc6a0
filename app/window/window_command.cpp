#include "app/window/window_command.h"

#include "app/command.h"
#include "app/command_options.h"
#include "app/manual.h"
#include "app/window/project_window.h"

#include "context/ctx_global.h"

#include <QApplication>
#include <QTimer>

namespace app {

namespace {

class window_command : public command
{
public:
    window_command()
        : command("korvane",
                  "Imports models of persistent classes, tags their versions "
                  "and exports them as DDL SQL scripts.",
                  surroundings::window)
    {
    }

    void declare(command_options & options) override
    {
        options.addOptionalFile("PROJECT.korv", "A project file to open in the main window", m_sProjectFile);
    }

    [[nodiscard]] int run() override
    {
        context::ctx_global::setAppHelpManualUrl(manualUrl());
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
