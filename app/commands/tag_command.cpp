#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/output.h"
#include "app/project_work.h"

#include <QDir>

namespace app {

namespace {

/// Stores the state of a project as a new version.
class tag_command : public command
{
public:
    tag_command() : command("tag", "Tag the current state of a project as a new version") {}

    void declare(command_options & options) override
    {
        options.addProject(m_sProjectFile);
        options.addText("-m,--message", "TEXT", "Description of the version", m_sMessage);
        options.addFlag("--if-changed", "Do nothing when the model has not changed since the newest version",
                        m_bIfChanged);
    }

    [[nodiscard]] int run() override
    {
        using namespace storage::history;
        tag_result tagged;
        if (const zk::ZkBool done = tagState(m_sProjectFile, m_sMessage,
                                             m_bIfChanged ? tag_when::if_changed : tag_when::always, tagged);
            !done) {
            return failed(done.getDesc());
        }
        const QString file = QDir::toNativeSeparators(m_sProjectFile);
        const QString newest = QStringLiteral("the model has not changed since v%1").arg(tagged.unchanged);
        if (tagged.number == 0) {
            printLine(oneLine(QStringLiteral("No version of %1 tagged: %2").arg(file, newest)));
            return Done;
        }
        const QString done =
            QStringLiteral("Version %1 of %2 tagged").arg(QString::number(tagged.number), file);
        printDone(tagged.unchanged == 0 ? done : done + QStringLiteral("; ") + newest);
        return Done;
    }

private:
    QString m_sProjectFile;
    QString m_sMessage;
    bool m_bIfChanged = false;
};

} // namespace

std::unique_ptr<command> makeTagCommand()
{
    return std::make_unique<tag_command>();
}

} // namespace app
