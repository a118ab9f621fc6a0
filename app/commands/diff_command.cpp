#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/database_choice.h"
#include "app/diff_report.h"
#include "app/export_options.h"
#include "app/named_rows.h"
#include "app/output.h"
#include "app/script_guard.h"
#include "app/statement_plugin.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace app {

namespace {

const char Help[] =
    "Compares the newest version with now, or what FROM and TO name. Objects are matched by their ids.\n"
    "\n"
    "Exit status: 0 done; 1 it could not be done; 2 wrong usage; 3 something changed, with --exit-code.\n"
    "\n"
    "Examples:\n"
    "  korvane diff shop.korv                      from the newest version to now\n"
    "  korvane diff shop.korv v1 v3                from one version to another\n"
    "  korvane diff shop.korv --db postgresql      with statements and findings below each change\n"
    "  git show main:shop.json | korvane diff - shop.json";

/// A form in which changes are told.
struct diff_format
{
    QLatin1String name;
    QByteArray (*write)(const diff_report & report);
};

constexpr diff_format Formats[] = {
    {QLatin1String("text"), &diffText},
    {QLatin1String("json"),
     [](const diff_report & report) { return diffJson(report, QCoreApplication::applicationVersion()); }},
    {QLatin1String("markdown"), &diffMarkdown},
};

/// Tells what changed in a model.
class diff_command : public command
{
public:
    diff_command() : command("diff", "Tell what changed between two states of a project") {}

    void declare(command_options & options) override;
    [[nodiscard]] QString whyWrong() const override;
    /// Statements are made by a plug-in.
    [[nodiscard]] surroundings needs() const override
    {
        return wantsStatements() ? surroundings::plugins : surroundings::console;
    }
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] bool wantsStatements() const { return m_isScript || !m_scriptRequest.database.isEmpty(); }
    [[nodiscard]] int tellScript(statement_plugin & plugin, diff_report & report);

    comparison_request m_request;
    script_request m_scriptRequest;
    export_options m_exportOptions;
    plugin_request m_plugin;
    QString m_sFormat;
    bool m_noCustomScript = false;
    bool m_isJson = false;
    bool m_isScript = false;
    bool m_hasExitCode = false;
};

void diff_command::declare(command_options & options)
{
    options.addSource(m_request.source);
    options.addVersion("FROM", "The version to begin with, v1, v2 ..., or another SOURCE to compare with",
                       m_request.from, value_kind::version_or_source);
    options.addVersion("TO", "The version to end with; now is the default", m_request.to);
    options.addText(
        "--db", "NAME",
        "Tell below each change its statements for this database, and what check finds about them",
        m_scriptRequest.database, value_kind::database);
    options.addFlag("--sql", "Print the script of the step alone, as an export writes it", m_isScript);
    m_exportOptions.declareContent(options);
    options.addFlag("--no-custom-script", "Leave the custom script out that the project names",
                    m_noCustomScript);
    options.addPlugin(m_plugin.name);
    options.addWords("--format", "FORMAT", namesOf(Formats), m_sFormat);
    options.addFlag("--json", "The same as --format json", m_isJson);
    options.addFlag("--exit-code", "End with status 3 when something changed", m_hasExitCode);
    options.setFooter(Help);
}

QString diff_command::whyWrong() const
{
    if (m_isScript && (m_isJson || !m_sFormat.isEmpty())) {
        return QStringLiteral(
            "--sql prints the script alone, which has no other format; leave one of both out");
    }
    const bool hasOptions = m_noCustomScript || !m_exportOptions.isEmpty() || !m_plugin.name.isEmpty();
    if (hasOptions && !wantsStatements()) {
        return QStringLiteral(
            "Without --db or --sql no statements are told, and the options of the export have "
            "no say; add one of both");
    }
    const QString & database = m_scriptRequest.database;
    const QString wrong = database.isEmpty() ? m_exportOptions.whyWrong() : whyNotOneDatabase(database);
    return wrong.isEmpty() ? m_request.whyWrong() : wrong;
}

/// Puts the script of the step into `report`, and what is found about it; the exit status.
int diff_command::tellScript(statement_plugin & plugin, diff_report & report)
{
    if (const int status = plugin.load(m_plugin, m_exportOptions); status != Done) {
        return status;
    }
    const tools::script_guard_scope guard(commandScriptGuard(m_noCustomScript));
    m_scriptRequest.options = m_exportOptions.given();
    zk::ZkBool made = addScript(plugin.statements(), m_scriptRequest, report);
    if (made && !m_isScript) {
        made = addFindings(plugin.statements(), m_scriptRequest.options, report);
    }
    return made ? Done : failed(made.getDesc());
}

int diff_command::run()
{
    statement_plugin plugin; // its texts belong to its module, so it stays as long as the report
    diff_report report;
    if (const zk::ZkBool compared = compareStates(m_request, report); !compared) {
        return failed(compared.getDesc());
    }
    if (wantsStatements()) {
        if (const int status = tellScript(plugin, report); status != Done) {
            return status;
        }
    }
    if (m_isScript && report.script) {
        printBytes(report.script->bytes);
    } else {
        const QString format = m_isJson ? QStringLiteral("json") : m_sFormat;
        printBytes((format.isEmpty() ? Formats : rowOf(Formats, format))->write(report));
    }
    return m_hasExitCode && !report.changes.empty() ? Objected : Done;
}

} // namespace

std::unique_ptr<command> makeDiffCommand()
{
    return std::make_unique<diff_command>();
}

} // namespace app
