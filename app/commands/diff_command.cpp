#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/diff_report.h"
#include "app/output.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace app {

namespace {

const char Help[] =
    "Compares the newest version with now, or what FROM and TO name. Objects are matched by their ids.\n"
    "\n"
    "Exit status: 0 done; 1 it could not be done; 2 wrong usage; 3 something changed, with "
    "--exit-code.\n"
    "\n"
    "Examples:\n"
    "  korvane diff shop.korv                      from the newest version to now\n"
    "  korvane diff shop.korv v1 v3                from one version to another\n"
    "  git show main:shop.json | korvane diff - shop.json";

/// A form in which changes are told.
struct diff_format
{
    const char * name;
    QByteArray (*write)(const diff_report & report);
};

constexpr diff_format Formats[] = {
    {"text", &diffText},
    {"json",
     [](const diff_report & report) { return diffJson(report, QCoreApplication::applicationVersion()); }},
    {"markdown", &diffMarkdown},
};

const diff_format * formatOf(const QString & name)
{
    const auto * const found =
        std::find_if(std::begin(Formats), std::end(Formats),
                     [&name](const diff_format & f) { return name == QLatin1String(f.name); });
    return found == std::end(Formats) ? nullptr : found;
}

/// Tells what changed in a model.
class diff_command : public command
{
public:
    diff_command() : command("diff", "Tell what changed between two states of a project") {}

    void declare(command_options & options) override
    {
        options.addSource(m_request.source);
        options.addVersion("FROM", "The version to begin with, v1, v2 ..., or another SOURCE to compare with",
                           m_request.from);
        options.addVersion("TO", "The version to end with; now is the default", m_request.to);
        options.addText("--format", "FORMAT", "text (the default), json or markdown", m_sFormat);
        options.addFlag("--json", "The same as --format json", m_isJson);
        options.addFlag("--exit-code", "End with status 3 when something changed", m_hasExitCode);
        options.setFooter(Help);
    }

    [[nodiscard]] QString whyWrong() const override
    {
        if (!formatOf(m_sFormat)) {
            return QStringLiteral("'%1' is not a format; they are text, json and markdown").arg(m_sFormat);
        }
        return m_request.whyWrong();
    }

    [[nodiscard]] int run() override
    {
        diff_report report;
        report.hasTwoSources = m_request.hasTwoSources();
        if (const zk::ZkBool loaded = loadStates(m_request, report.states); !loaded) {
            return failed(loaded.getDesc());
        }
        report.changes = model::difference(*report.states.before, *report.states.after);
        printBytes(formatOf(m_isJson ? QStringLiteral("json") : m_sFormat)->write(report));
        return m_hasExitCode && !report.changes.empty() ? Objected : Done;
    }

private:
    comparison_request m_request;
    QString m_sFormat = QStringLiteral("text");
    bool m_isJson = false;
    bool m_hasExitCode = false;
};

} // namespace

std::unique_ptr<command> makeDiffCommand()
{
    return std::make_unique<diff_command>();
}

} // namespace app
