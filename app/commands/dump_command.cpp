#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/output.h"
#include "app/source.h"

#include "storage/text_form.h"

namespace app {

namespace {

/// Prints the text form of a project, or of one of its versions.
class dump_command : public command
{
public:
    dump_command() : command("dump", "Print the text form of a project") {}

    void declare(command_options & options) override
    {
        options.addSource(m_sSource);
        options.addVersion("VERSION", "v1, v2 ... of a project file, or now, which is the default",
                           m_sVersion);
    }

    [[nodiscard]] QString whyWrong() const override { return whyNoVersion(m_sVersion); }

    [[nodiscard]] int run() override
    {
        source opened;
        std::shared_ptr<model::project> project;
        const int version = versionNumber(m_sVersion).value_or(Now);
        zk::ZkBool result = version == Now ? opened.openState(m_sSource) : opened.open(m_sSource);
        if (result) {
            result = opened.load(version, project);
        }
        if (!result) {
            return failed(result.getDesc());
        }
        printBytes(storage::text_form::write(*project));
        return Done;
    }

private:
    QString m_sSource;
    QString m_sVersion;
};

} // namespace

std::unique_ptr<command> makeDumpCommand()
{
    return std::make_unique<dump_command>();
}

} // namespace app
