#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/explained_script.h"
#include "app/export_findings.h"
#include "app/export_options.h"
#include "app/export_run.h"
#include "app/output.h"
#include "app/plugin_choice.h"
#include "app/project_work.h"
#include "app/script_guard.h"
#include "app/silent_step.h"
#include "app/source.h"
#include "app/unattended.h"

#include "context/ctx_global.h"
#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"
#include "plugin/export_details.h"
#include "plugin/export_interface.h"
#include "plugin/statement_source.h"
#include "view/main_wnd.h"
#include "zk/zk_sql_database.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace app {

namespace {

const char Help[] =
    "What is not given is what the project has stored. Relative paths are taken from the folder of the "
    "project file.\n"
    "--PLUGIN_OPTION=VALUE hands an option to the plugin whose name it begins with; 'korvane "
    "plugins' lists them.\n"
    "\n"
    "Example: korvane export shop.korv -y --db postgresql --path sql --schema both";

struct export_request
{
    QString projectFile;
    plugin_request plugin;
    export_options options; ///< by their friendly names
    bool answerYes = false;
    bool noCustomScript = false; ///< runs no custom script, whoever names one
    bool noCheck = false;
};

/// What a plug-in may ask of the host during an export: the current project, and a main window that is never
/// shown and knows the command line.
class export_context
{
public:
    export_context(const std::shared_ptr<model::project> & project, const plugin_request & request)
    {
        for (const auto & [option, value] : request.options) {
            m_wnd.addAppArg(option, value);
        }
        context::ctx_global::setMainWnd(&m_wnd);
        context::ctx_project::getSingleton().setProject(project);
    }
    ~export_context()
    {
        context::ctx_project::getSingleton().setProject(nullptr);
        context::ctx_global::setMainWnd(nullptr);
        zk::ZkSqlDatabase::clearAllDatabases();
    }
    export_context(const export_context &) = delete;
    export_context & operator=(const export_context &) = delete;

private:
    view::main_wnd m_wnd;
};

/// What to say about a dialog that cannot be shown.
QString helpAbout(const plugin::export_interface & plugin, const QString & title)
{
    const QString pathOption = QStringLiteral("--%1_path").arg(plugin.getName());
    return hasOption(plugin, pathOption)
               ? QStringLiteral("No export folder is set. "
                                "Give one with %1=FOLDER, or store one in the window (Export > Settings)")
                     .arg(pathOption)
               : QStringLiteral("The window '%1' wants a person. "
                                "Give the settings on the command line ('korvane plugins' lists the options)")
                     .arg(title);
}

/// A value that an option does not have is taken all the same, as ever; the person learns for what. True when
/// there was one.
bool tellStrangeValues(plugin::export_interface & plugin, const plugin_request & request)
{
    const auto * const details = qobject_cast<plugin::export_details *>(&plugin);
    if (!details) {
        return false;
    }
    bool isTold = false;
    for (const plugin::command_option & option : details->getCommandLineOptions()) {
        const auto given = std::find_if(request.options.cbegin(), request.options.cend(),
                                        [&option](const auto & pair) { return pair.first == option.name; });
        QStringList values;
        bool isKnown = given == request.options.cend();
        for (const plugin::option_value & value : option.values) {
            values << QStringLiteral("%1 (%2)").arg(value.value, value.name);
            isKnown = isKnown || given->second == value.value;
        }
        if (!isKnown) {
            isTold = true;
            printError(QStringLiteral("%1=%2: taken for %3; the values are %4")
                           .arg(option.name, given->second, details->getTakenFor(option.name, given->second),
                                values.join(QStringLiteral(", "))));
        }
    }
    return isTold;
}

/// Why an export wrote nothing, and what helps.
QString nothingWritten(const export_report & report, const QString & projectFile)
{
    return report.isVersionMissing
               ? report.reasonForNoFile + QStringLiteral("; make one with 'korvane tag %1'")
                                              .arg(QDir::toNativeSeparators(projectFile))
               : report.reasonForNoFile;
}

/// Says so when the last step of the scripts that were written says nothing though the model changed.
void tellSilentStep(plugin::export_interface & plugin, const export_report & report, const QString & file)
{
    auto * const statements = qobject_cast<plugin::statement_source *>(&plugin);
    script_name last;
    const bool isStep = statements && !report.files.isEmpty() &&
                        readScriptName(*statements, QFileInfo(report.files.constLast()).fileName(), last) &&
                        last.kind == script_kind::step;
    const QString silent = isStep ? silentStep(*statements, file, last.from, Now, last.database) : QString();
    if (!silent.isEmpty()) {
        printHint(silent);
    }
}

/// @param isStrange whether a strange value was told, which explains that nothing was written
/// @param files names of the scripts that were written
int runExport(plugin::export_interface & plugin, model::project & project, const export_request & request,
              bool isStrange, QStringList & files)
{
    bool hasError = false;
    export_listener listener;
    listener.message = [&hasError](const QString & text, int type) {
        hasError = hasError || type == plugin::ErrorMessage;
        if (type == plugin::ErrorMessage) {
            printError(text);
        } else {
            printNotice(text);
        }
    };
    const unattended watch(request.answerYes,
                           [&plugin](const QString & title) { return helpAbout(plugin, title); });
    const export_report report = runPlugin(plugin, project, listener);
    files = report.files;
    if (!watch.unanswered().isEmpty()) {
        // An error that was told says more than that a window came up because of it.
        if (!hasError) {
            printError(watch.unanswered());
        }
        return Failed;
    }
    if (!report.untoldReason.isEmpty()) {
        printError(report.untoldReason);
    } else if (!report.reasonForNoFile.isEmpty() && !isStrange) {
        printError(nothingWritten(report, request.projectFile));
    }
    tellSilentStep(plugin, report, request.projectFile);
    return report.ok ? Done : Failed;
}

/// Tells how many findings there are about scripts that were just written.
void tellFindings(plugin::export_interface & plugin, const std::shared_ptr<model::project> & project,
                  const export_request & request, const QStringList & files)
{
    auto * const source = qobject_cast<plugin::statement_source *>(&plugin);
    if (!source) {
        return;
    }
    sendOutput(); // what was done is told, whatever becomes of this
    const QString line = exportFindings(
        *source, {request.projectFile, project, friendlyOptions(request.plugin, *source),
                  request.options.database(), request.plugin.name, request.noCustomScript, files});
    if (!line.isEmpty()) {
        printHint(line);
    }
}

/// Takes the options of plug-ins, "--Plugin_option=VALUE" or "--Plugin_option VALUE", out of `arguments`; the
/// reason when one has no value.
QString takePluginOptions(QStringList & arguments, plugin_request & request)
{
    static const QRegularExpression form(QStringLiteral("^(--\\w*_\\w*)(?:=(.*))?$"),
                                         QRegularExpression::DotMatchesEverythingOption);
    QStringList others;
    while (!arguments.isEmpty()) {
        const QString argument = arguments.takeFirst();
        const QRegularExpressionMatch match = form.match(argument);
        if (!match.hasMatch()) {
            others << argument;
        } else if (match.capturedStart(2) >= 0) {
            request.options.append({match.captured(1), match.captured(2)});
        } else if (!arguments.isEmpty()) {
            request.options.append({match.captured(1), arguments.takeFirst()});
        } else {
            return QStringLiteral("The option %1 needs a value: %1=VALUE").arg(argument);
        }
    }
    arguments = others;
    return {};
}

/// Turns the friendly options of `request` into those of `plugin`; the reason when one is wrong.
QString takeFriendlyOptions(plugin::export_interface & plugin, export_request & request)
{
    if (request.options.isEmpty()) {
        return {};
    }
    auto * const source = qobject_cast<plugin::statement_source *>(&plugin);
    if (!source) {
        return QStringLiteral("The plugin %1 has no option --%2; 'korvane plugins' lists those that it has")
            .arg(plugin.getName(), request.options.given().firstKey());
    }
    const QString wrong = request.options.whyRefused(*source);
    return wrong.isEmpty() ? request.options.addTo(request.plugin, *source) : wrong;
}

/// Runs an export plug-in on a project.
class export_command : public command
{
public:
    export_command() : command("export", "Run an export plugin", surroundings::plugins) {}

    void declare(command_options & options) override
    {
        options.addProject(m_request.projectFile);
        m_request.options.declareAll(options);
        options.addPlugin(m_request.plugin.name);
        options.addFlag("-y,--yes", "Answer every question with Yes", m_request.answerYes);
        options.addFlag("--no-custom-script", "Leave the custom script out that the project names",
                        m_request.noCustomScript);
        options.addFlag("--no-check", "Do not count what 'korvane check' finds about the scripts",
                        m_request.noCheck);
        options.setFooter(Help);
    }

    QString takeOthers(QStringList & arguments) override
    {
        return takePluginOptions(arguments, m_request.plugin);
    }

    [[nodiscard]] QString aboutOthers() const override
    {
        return QStringLiteral("the options of the plugins ('korvane plugins' lists them)");
    }

    [[nodiscard]] QString whyWrong() const override { return m_request.options.whyWrong(); }
    [[nodiscard]] QString moreHelp() override;
    [[nodiscard]] int run() override;

private:
    export_request m_request;
};

/// The values of the options, which the plug-in knows, and what the project has stored when one is named.
QString export_command::moreHelp()
{
    const found_plugins found = found_plugins::forRequest(m_request.plugin);
    int status = Failed;
    QString reason;
    plugin::statement_source * const source = chooseStatementSource(found, m_request.plugin, status, reason);
    if (!source) {
        return {};
    }
    std::shared_ptr<model::project> project;
    const bool isStored = !m_request.projectFile.isEmpty() && openProject(m_request.projectFile, project);
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    context::ctx_project::getSingleton().setProject(project);
    const QString values = describeOptions(*source, isStored);
    return values.isEmpty() ? values
                            : (isStored ? QStringLiteral("Values, and what %1 has stored:\n")
                                              .arg(QDir::toNativeSeparators(m_request.projectFile))
                                        : QStringLiteral("Values, and what counts for a project without "
                                                         "stored settings:\n")) +
                                  values;
}

int export_command::run()
{
    const found_plugins found = found_plugins::forRequest(m_request.plugin);
    int status = Failed;
    QString reason;
    plugin::export_interface * const plugin = choosePlugin(found, m_request.plugin, status, reason);
    if (!plugin) {
        printError(reason);
        return status;
    }
    if (const QString wrong = takeFriendlyOptions(*plugin, m_request); !wrong.isEmpty()) {
        printError(wrong);
        return WrongUsage;
    }
    std::shared_ptr<model::project> project;
    if (const zk::ZkBool opened = openProject(m_request.projectFile, project); !opened) {
        return failed(opened.getDesc());
    }
    // The process ends with this command: taking a large model apart, object by object, is left to the
    // system.
    static auto * const untilTheEnd = new std::shared_ptr<model::project>;
    *untilTheEnd = project;
    const export_context context(project, m_request.plugin);
    const bool isStrange = tellStrangeValues(*plugin, m_request.plugin);
    const tools::script_guard_scope guard(commandScriptGuard(m_request.noCustomScript));
    QStringList files;
    const int result = runExport(*plugin, *project, m_request, isStrange, files);
    const bool isCounted = !m_request.noCheck && !areResultsPrintedAlone();
    if (result == Done && !files.isEmpty() && !isStrange && isCounted) {
        tellFindings(*plugin, project, m_request, files);
    }
    // What the plug-in holds of the project goes before the project does.
    plugin->setCustomScript(nullptr);
    return result;
}

} // namespace

std::unique_ptr<command> makeExportCommand()
{
    return std::make_unique<export_command>();
}

} // namespace app
