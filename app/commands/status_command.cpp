#include "app/acceptance_file.h"
#include "app/check_run.h"
#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/output.h"
#include "app/project_work.h"
#include "app/script_guard.h"
#include "app/source.h"
#include "app/statement_plugin.h"
#include "app/written_scripts.h"

#include "check/report/json_parts.h"
#include "model/model_difference.h"
#include "model/project.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>

#include <algorithm>
#include <iterator>

namespace app {

namespace {

const char Help[] =
    "Scripts are compared with those that an export would write now with the stored settings. Nothing is "
    "written.\n"
    "\n"
    "Exit status: 0 done; 1 it could not be done; 2 wrong usage; with --exit-code also 3: a change is not "
    "tagged yet,\n"
    "a script is missing or differs, or there is an error that is not accepted.";

/// Where a project stands.
struct project_status
{
    source of;
    std::shared_ptr<model::project> now;
    std::vector<model::model_change> pending; ///< since the newest version
    written_scripts scripts;
    check::summary findings;
    QString database; ///< that the findings are for, in words of a run
};

/// "3 changes (1 added, 2 renamed)".
QString pendingWords(const std::vector<model::model_change> & pending)
{
    QStringList kinds;
    using model::change_kind;
    for (const change_kind kind : {change_kind::added, change_kind::removed, change_kind::renamed,
                                   change_kind::changed, change_kind::moved}) {
        const auto count = std::count_if(pending.begin(), pending.end(),
                                         [kind](const model::model_change & c) { return c.change == kind; });
        if (count > 0) {
            kinds << QStringLiteral("%1 %2").arg(QString::number(count), model::changeName(kind));
        }
    }
    return kinds.isEmpty()
               ? QStringLiteral("no changes")
               : QStringLiteral("%1 (%2)").arg(check::counted(std::ssize(pending), QLatin1String("change")),
                                               kinds.join(QStringLiteral(", ")));
}

/// Tells where a project stands.
class status_command : public command
{
public:
    status_command()
        : command("status", "Tell where a project stands: version, changes, scripts, findings",
                  surroundings::plugins)
    {
    }

    void declare(command_options & options) override;
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] zk::ZkBool collect(plugin::statement_source & statements, project_status & found) const;
    [[nodiscard]] zk::ZkBool compareWithNewest(project_status & found) const;
    [[nodiscard]] zk::ZkBool check(plugin::statement_source & statements, project_status & found) const;
    void print(const project_status & found) const;
    void printScripts(const written_scripts & scripts) const;
    static void printJson(const project_status & found);
    [[nodiscard]] static bool isObjected(const project_status & found);

    QString m_source;
    QString m_format;
    plugin_request m_plugin;
    bool m_json = false;
    bool m_exitCode = false;
    bool m_noCustomScript = false;
};

void status_command::declare(command_options & options)
{
    options.addSource(m_source);
    options.addFlag("--exit-code", "End with status 3 when something is left to do", m_exitCode);
    options.addWords("--format", "FORMAT", {QStringLiteral("text"), QStringLiteral("json")}, m_format);
    options.addFlag("--json", "The same as --format json", m_json);
    options.addFlag("--no-custom-script", "Leave the custom script out that the project names",
                    m_noCustomScript);
    options.addPlugin(m_plugin.name);
    options.setFooter(Help);
}

int status_command::run()
{
    statement_plugin plugin;
    if (const int status = plugin.load(m_plugin); status != Done) {
        return status;
    }
    project_status told;
    const zk::ZkBool collected = collect(plugin.statements(), told);
    if (!told.now) {
        return failed(collected.getDesc());
    }
    // What was found until a failure is told as well.
    if (m_json || m_format == QLatin1String("json")) {
        if (collected) {
            printJson(told);
        }
    } else {
        print(told);
    }
    if (!collected) {
        return failed(collected.getDesc());
    }
    return m_exitCode && isObjected(told) ? Objected : Done;
}

zk::ZkBool status_command::collect(plugin::statement_source & statements, project_status & found) const
{
    const tools::script_guard_scope guard(commandScriptGuard(m_noCustomScript));
    zk::ZkBool result = found.of.open(m_source);
    if (result) {
        result = found.of.load(Now, found.now);
    }
    if (result) {
        result = compareWithNewest(found);
    }
    if (result) {
        result = compareScripts(statements, found.of, m_noCustomScript, found.scripts);
    }
    return result ? check(statements, found) : result;
}

/// Without a version all that there is waits for the first one; a text form has none to wait for.
zk::ZkBool status_command::compareWithNewest(project_status & found) const
{
    if (found.of.isText()) {
        return zk::ZkBool::success();
    }
    auto newest = std::make_shared<model::project>(1);
    if (const int number = found.of.newestVersion(); number > 0) {
        if (const zk::ZkBool loaded = found.of.load(number, newest); !loaded) {
            return loaded;
        }
    }
    found.pending = model::difference(*newest, *found.now);
    return zk::ZkBool::success();
}

zk::ZkBool status_command::check(plugin::statement_source & statements, project_status & found) const
{
    check::accepted_findings accepted;
    if (const zk::ZkBool read = readAccepted(found.of, {}, accepted); !read) {
        return read;
    }
    check::report report;
    const zk::ZkBool judged = checkSource(statements, found.of, {}, report);
    check::accept(accepted, QDate::currentDate(), report);
    found.findings = check::summaryOf(report);
    found.database = report.runs.empty() ? QString() : report.runs.front().basis;
    return judged;
}

void status_command::print(const project_status & found) const
{
    const QString file = shownName(m_source);
    printLine(oneLine(QStringLiteral("%1: project '%2'").arg(file, found.now->getName())));
    if (found.of.isText()) {
        printLine(QStringLiteral("newest version: a text form has none, and no settings for scripts"));
    } else if (found.of.versions().isEmpty()) {
        printLine(QStringLiteral("newest version: none; 'korvane tag %1' makes the first").arg(file));
    } else {
        const storage::history::version & newest = found.of.versions().constLast();
        const QString when = newest.created.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        printLine(
            oneLine(QStringLiteral("newest version: v%1, %2%3")
                        .arg(QString::number(newest.number), when,
                             newest.message.isEmpty() ? QString() : QStringLiteral(", ") + newest.message)));
    }
    if (!found.of.isText()) {
        const bool isShown = !found.pending.empty() && !found.of.versions().isEmpty();
        printLine(QStringLiteral("pending: ") + pendingWords(found.pending) +
                  (isShown ? QStringLiteral("; 'korvane diff %1' shows them").arg(file) : QString()));
        printScripts(found.scripts);
    }
    const check::summary & sum = found.findings;
    if (!found.database.isEmpty()) {
        const bool hasAny = sum.errors + sum.warnings + sum.notes > 0;
        printLine(QStringLiteral("findings, %1: %2%3")
                      .arg(found.database, check::wordsOf(sum),
                           hasAny ? QStringLiteral("; 'korvane check %1' lists them").arg(file) : QString()));
    }
}

void status_command::printScripts(const written_scripts & scripts) const
{
    if (scripts.folder.isEmpty()) {
        printLine(
            QStringLiteral("scripts: no export folder is stored; 'korvane settings %1 --path DIR' stores one")
                .arg(shownName(m_source)));
        return;
    }
    printLine(oneLine(QStringLiteral("scripts for %1 in %2:")
                          .arg(scripts.label, QDir::toNativeSeparators(scripts.folder))));
    for (const written_script & each : scripts.scripts) {
        const QString line =
            QStringLiteral("  %1 %2").arg(QString(wordOf(each.state)).leftJustified(8), each.script);
        printLine(QStringLiteral("  ") +
                  oneLine(each.why.isEmpty() ? line : line + QStringLiteral(": ") + each.why));
    }
    if (scripts.scripts.empty()) {
        printLine(QStringLiteral("  none: the stored settings want evolution scripts, which need a version"));
    }
}

void status_command::printJson(const project_status & found)
{
    using check::textOf;
    check::json newest = nullptr;
    if (!found.of.versions().isEmpty()) {
        const storage::history::version & version = found.of.versions().constLast();
        newest = {{"version", version.number},
                  {"date", textOf(version.created.toUTC().toString(Qt::ISODate))},
                  {"message", textOf(version.message)}};
    }
    check::json scripts = check::json::array();
    for (const written_script & each : found.scripts.scripts) {
        scripts.push_back({{"script", textOf(each.script)},
                           {"state", textOf(wordOf(each.state))},
                           {"why", each.why.isEmpty() ? check::json(nullptr) : textOf(each.why)}});
    }
    const check::json whole = {
        {"format", "korvane.status"},
        {"formatVersion", 1},
        {"program", textOf(QCoreApplication::applicationVersion())},
        {"project", textOf(found.now->getName())},
        {"newest", std::move(newest)},
        {"pending", found.pending.size()},
        {"folder", found.scripts.folder.isEmpty() ? check::json(nullptr) : textOf(found.scripts.folder)},
        {"scripts", std::move(scripts)},
        {"findings", check::countsOf(found.findings)}};
    printBytes(check::written(whole));
}

bool status_command::isObjected(const project_status & found)
{
    const std::vector<written_script> & scripts = found.scripts.scripts;
    return !found.pending.empty() || found.findings.errors > 0 ||
           std::any_of(scripts.begin(), scripts.end(), [](const written_script & each) {
               return each.state == script_state::missing || each.state == script_state::differs;
           });
}

} // namespace

std::unique_ptr<command> makeStatusCommand()
{
    return std::make_unique<status_command>();
}

} // namespace app
