#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/output.h"
#include "app/project_work.h"

#include "storage/text_form.h"

namespace app {

namespace {

/// Prints the text form of a project.
class dump_command : public command
{
public:
    dump_command() : command("dump", "Print the text form of a project") {}

    void declare(command_options & options) override { options.addProject(m_sProjectFile); }

    [[nodiscard]] int run() override
    {
        std::shared_ptr<model::project> project;
        if (const zk::ZkBool opened = openProject(m_sProjectFile, project); !opened) {
            return failed(opened.getDesc());
        }
        printBytes(storage::text_form::write(*project));
        return Done;
    }

private:
    QString m_sProjectFile;
};

} // namespace

std::unique_ptr<command> makeDumpCommand()
{
    return std::make_unique<dump_command>();
}

} // namespace app
