#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/output.h"

#include "storage/history.h"

namespace app {

namespace {

/// Lists the versions of a project.
class log_command : public command
{
public:
    log_command() : command("log", "List the versions of a project") {}

    void declare(command_options & options) override { options.addProject(m_sProjectFile); }

    [[nodiscard]] int run() override
    {
        QList<storage::history::version> versions;
        if (const QSqlError error = storage::history::list(m_sProjectFile, versions); error.isValid()) {
            return failed(error.text());
        }
        for (const storage::history::version & version : versions) {
            printLine(QStringLiteral("v%1  %2  %3")
                          .arg(QString::number(version.number),
                               version.created.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                               oneLine(version.message))
                          .trimmed());
        }
        return Done;
    }

private:
    QString m_sProjectFile;
};

} // namespace

std::unique_ptr<command> makeLogCommand()
{
    return std::make_unique<log_command>();
}

} // namespace app
