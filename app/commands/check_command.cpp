#include "app/acceptance_file.h"
#include "app/check_run.h"
#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/database_choice.h"
#include "app/export_options.h"
#include "app/named_rows.h"
#include "app/output.h"
#include "app/script_guard.h"
#include "app/source.h"
#include "app/statement_plugin.h"
#include "app/whole_file.h"

#include "check/finding/acceptance.h"
#include "check/finding/rule.h"
#include "check/report/report.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>

#include <algorithm>
#include <iterator>

#include <unistd.h>

namespace app {

namespace {

const char Help[] =
    "Without --from, --to and --all the full script is judged, and the step from the newest version to now.\n"
    "\n"
    "Exit status: 0 nothing to object to; 1 it could not be done; 2 wrong usage; 3 there are findings "
    "of the severity\n"
    "of --fail-on, or worse.\n"
    "\n"
    "Examples:\n"
    "  korvane check shop.korv\n"
    "  korvane check shop.korv --db sqlite,postgresql --all\n"
    "  korvane check shop.korv --from v1 --to v3 --json -o findings.json";

/// A form in which findings are told.
struct report_format
{
    QLatin1String name;
    QByteArray (*write)(const check::report & of);
    bool hasPlaces; ///< tells where objects stand in a text form
};

bool isTerminal()
{
    return isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR");
}

const report_format Formats[] = {
    {QLatin1String("text"), [](const check::report & of) { return check::textReport(of, {isTerminal()}); },
     false},
    {QLatin1String("json"),
     [](const check::report & of) { return check::jsonReport(of, QCoreApplication::applicationVersion()); },
     true},
    {QLatin1String("sarif"),
     [](const check::report & of) { return check::sarifReport(of, QCoreApplication::applicationVersion()); },
     true},
    {QLatin1String("github"), &check::githubReport, true},
    {QLatin1String("gitlab"), &check::gitlabReport, true},
    {QLatin1String("markdown"), &check::markdownReport, true},
};

/// From which severity on there is something to object to.
struct objection
{
    QLatin1String name;
    std::optional<check::severity> least;
};

const objection Objections[] = {
    {check::wordOf(check::severity::error), check::severity::error},
    {check::wordOf(check::severity::warning), check::severity::warning},
    {check::wordOf(check::severity::note), check::severity::note},
    {QLatin1String("never"), {}},
};

/// Foretells, without a server, what the scripts of a project will do.
class check_command : public command
{
public:
    check_command()
        : command("check", "Foretell what a database will refuse, lose or never hear of",
                  surroundings::plugins)
    {
    }

    void declare(command_options & options) override;
    [[nodiscard]] QString whyWrong() const override;
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] int listRules() const;
    [[nodiscard]] int judge();
    [[nodiscard]] int tell(const check::report & found) const;
    [[nodiscard]] check_request request() const;
    [[nodiscard]] QString format() const { return m_json ? QStringLiteral("json") : m_format; }
    [[nodiscard]] zk::ZkBool openText(source & text) const;
    static void findPlaces(source & in, check::report & told);

    QString m_source;
    QString m_databases;
    QString m_from;
    QString m_to;
    QString m_failOn = check::wordOf(check::severity::error);
    QString m_format = QStringLiteral("text");
    QString m_file;
    QString m_text;
    QString m_accept;
    QString m_explain;
    export_options m_exportOptions;
    plugin_request m_plugin;
    bool m_all = false;
    bool m_json = false;
    bool m_list = false;
    bool m_noCustomScript = false;
};

void check_command::declare(command_options & options)
{
    options.addOptionalSource(m_source);
    options.addText("--db", "LIST", "Databases to judge for, with commas between; all is every one",
                    m_databases, value_kind::databases);
    options.addText("--from", "VERSION", "Judge the step from this version", m_from, value_kind::version);
    options.addText("--to", "VERSION", "Judge the step to this version; now is the state of the project",
                    m_to, value_kind::version);
    options.addFlag("--all", "Judge the full script, v1 and each step", m_all);
    options.addWords("--fail-on", "SEVERITY", namesOf(Objections), m_failOn);
    options.addWords("--format", "FORMAT", namesOf(Formats), m_format);
    options.addFlag("--json", "The same as --format json", m_json);
    options.addText("-o,--output", "FILE", "Write to FILE in the place of standard output", m_file,
                    value_kind::file);
    m_exportOptions.declareContent(options);
    options.addFlag("--no-custom-script", "Leave the custom script out that the project names",
                    m_noCustomScript);
    options.addPlugin(m_plugin.name);
    options.addText("--text", "FILE", "Tell places of SARIF and forges in this model in text form", m_text,
                    value_kind::file);
    options.addText("--accept", "FILE", "Accepted findings; by default korvane-check.json beside the project",
                    m_accept, value_kind::file);
    options.addText("--explain", "CODE", "Print the page of a rule and do nothing else", m_explain,
                    value_kind::rule);
    options.addFlag("--list", "List all rules and do nothing else", m_list);
    options.setFooter(Help);
}

QString check_command::whyWrong() const
{
    if (m_list) {
        return {};
    }
    if (!m_explain.isEmpty()) {
        return check::ruleOf(m_explain) == nullptr
                   ? QStringLiteral("There is no rule %1; 'korvane check --list' lists them").arg(m_explain)
                   : QString();
    }
    if (m_source.isEmpty()) {
        return QStringLiteral("SOURCE is missing: give a project file or a model in text form");
    }
    for (const QString & version : {m_from, m_to}) {
        if (const QString why = whyNoVersion(version); !why.isEmpty()) {
            return why;
        }
    }
    if (m_all && !(m_from.isEmpty() && m_to.isEmpty())) {
        return QStringLiteral("--all judges the whole history, --from and --to one step: give one of both");
    }
    const int from = versionNumber(m_from).value_or(Now);
    const int to = versionNumber(m_to).value_or(Now);
    if (!m_from.isEmpty() && (from == Now || (to != Now && to <= from))) {
        return QStringLiteral("%1 to %2 is not a step forwards")
            .arg(m_from, m_to.isEmpty() ? versionWord(Now) : m_to);
    }
    const QString wrong = m_databases.isEmpty() ? QString() : whyNoDatabase(databaseKeys(m_databases));
    return wrong.isEmpty() ? m_exportOptions.whyWrong() : wrong;
}

int check_command::listRules() const
{
    for (const check::rule & each : check::allRules()) {
        printLine(QStringLiteral("%1  %2  %3")
                      .arg(each.code, QString(check::wordOf(each.weight)).leftJustified(7),
                           QString::fromUtf8(each.title)));
    }
    return Done;
}

int check_command::run()
{
    if (!m_explain.isEmpty()) {
        const check::rule & rule = *check::ruleOf(m_explain);
        const QByteArray page = check::rulePage(m_explain);
        const QString title =
            QStringLiteral("# %1 %2\n\n%3.\n").arg(rule.code, rule.name, QString::fromUtf8(rule.title));
        printBytes(page.isEmpty() ? title.toUtf8() : page);
        return Done;
    }
    return m_list ? listRules() : judge();
}

check_request check_command::request() const
{
    check_request asked;
    asked.databases = m_databases.isEmpty() ? QStringList() : databaseKeys(m_databases);
    asked.scripts = m_all ? judged_scripts::all : judged_scripts::usual;
    asked.from = versionNumber(m_from);
    asked.to = versionNumber(m_to);
    asked.options = m_exportOptions.given();
    return asked;
}

int check_command::judge()
{
    statement_plugin plugin;
    if (const int status = plugin.load(m_plugin, m_exportOptions); status != Done) {
        return status;
    }
    // The process ends with this command: taking a large model and report apart, object by object, is left to
    // the system.
    struct large
    {
        source of;
        check::report told;
    };
    static auto * const untilTheEnd = new large;
    auto & [of, told] = *untilTheEnd;
    if (const zk::ZkBool opened = of.open(m_source); !opened) {
        return failed(opened.getDesc());
    }
    check::accepted_findings accepted;
    source text;
    zk::ZkBool read = readAccepted(of, m_accept, accepted);
    if (read && !m_text.isEmpty()) {
        read = openText(text);
    }
    if (!read) {
        return failed(read.getDesc());
    }
    const tools::script_guard_scope guard(commandScriptGuard(m_noCustomScript));
    const zk::ZkBool judged = checkSource(plugin.statements(), of, request(), told);
    check::accept(accepted, QDate::currentDate(), told);
    if (rowOf(Formats, format())->hasPlaces) {
        findPlaces(m_text.isEmpty() ? of : text, told);
    }
    // What was judged until a failure is told as well.
    const int result = judged || !told.runs.empty() ? tell(told) : Done;
    return judged ? result : failed(judged.getDesc());
}

/// Opens the text form whose places are told.
zk::ZkBool check_command::openText(source & text) const
{
    zk::ZkBool read = text.open(m_text);
    if (read && !text.isText()) {
        return zk::ZkBool::failure(m_text + QStringLiteral(": is not a text form"));
    }
    std::shared_ptr<model::project> state;
    return read ? text.load(Now, state) : read;
}

/// Fills in where the objects of findings stand in the text form `in`; a project file has no such places.
void check_command::findPlaces(source & in, check::report & told)
{
    for (check::finding & each : told.findings) {
        // The nearest object is the last one that has a place.
        for (auto object = each.objects.rbegin(); object != each.objects.rend() && !each.location; ++object) {
            if (const auto place = in.find(object->kind, object->id)) {
                each.location = check::source_place{in.name(), place->line, place->column};
            }
        }
    }
}

int check_command::tell(const check::report & found) const
{
    const QByteArray bytes = rowOf(Formats, format())->write(found);
    if (m_file.isEmpty()) {
        printBytes(bytes);
    } else if (const zk::ZkBool written = writeWholeFile(m_file, bytes); !written) {
        return failed(QStringLiteral("%1: cannot be written (%2)")
                          .arg(QDir::toNativeSeparators(m_file), written.getDesc()));
    }
    const std::optional<check::severity> least = rowOf(Objections, m_failOn)->least;
    const bool hasObjection =
        least && std::any_of(found.findings.begin(), found.findings.end(), [&](const check::finding & each) {
            return !each.accepted && each.weight >= *least;
        });
    return hasObjection ? Objected : Done;
}

} // namespace

std::unique_ptr<command> makeCheckCommand()
{
    return std::make_unique<check_command>();
}

} // namespace app
