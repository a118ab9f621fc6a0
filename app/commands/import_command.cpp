#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/output.h"
#include "app/plugin_choice.h"
#include "app/project_work.h"

#include <QDir>

namespace app {

namespace {

/// Creates a project file from a text form, or replaces its model.
class import_command : public command
{
public:
    import_command()
        : command("import", "Create a project from a model in text form, or replace a project's model",
                  surroundings::plugins)
    {
    }

    void declare(command_options & options) override
    {
        options.addFile("MODEL.json", "The model in text form; - reads it from standard input", m_sModelFile,
                        value_kind::source);
        options.addProject(m_sProjectFile);
    }

    [[nodiscard]] QString whyWrong() const override
    {
        return m_sProjectFile == QLatin1String("-")
                   ? QStringLiteral(
                         "PROJECT.korv is '-', but a project cannot be written to standard output; "
                         "give a file name ('./-' for a file of that name)")
                   : QString();
    }

    [[nodiscard]] int run() override
    {
        const import_result done = importText(m_sModelFile, m_sProjectFile);
        if (!done.result) {
            return failed(done.result.getDesc());
        }
        for (const QString & warning : done.warnings) {
            printError(warning);
        }
        tellUnknownTypes(done.types);
        printDone(QStringLiteral("Project '%1' imported into %2 (entities: %3)")
                      .arg(done.projectName, QDir::toNativeSeparators(m_sProjectFile),
                           QString::number(done.entities)));
        return Done;
    }

private:
    /// Types that an export will not know are told by whoever knows the type mapping, if that is there.
    void tellUnknownTypes(const QList<column_type> & types) const
    {
        const found_plugins found = found_plugins::inFolders();
        int status = Failed;
        QString reason;
        plugin::statement_source * const statements = chooseStatementSource(found, {}, status, reason);
        for (const QString & line :
             statements ? unknownTypes(*statements, m_sProjectFile, types) : QStringList()) {
            printError(QStringLiteral("%1: warning: %2").arg(shownName(m_sModelFile), line));
        }
    }

    QString m_sModelFile;
    QString m_sProjectFile;
};

} // namespace

std::unique_ptr<command> makeImportCommand()
{
    return std::make_unique<import_command>();
}

} // namespace app
