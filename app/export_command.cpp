#include "app/commands.h"
#include "app/export_run.h"
#include "app/plugin_choice.h"
#include "app/project_work.h"
#include "app/unattended.h"

#include "context/ctx_global.h"
#include "context/ctx_project.h"
#include "model/project.h"
#include "plugin/export_interface.h"
#include "view/main_wnd.h"
#include "zk/zk_sql_database.h"

namespace app {

namespace {

/// What a plug-in may ask of the host during an export: the current project, and a main window that is never
/// shown and knows the command line.
class export_context
{
public:
    export_context(const std::shared_ptr<model::project> & project, const export_request & request)
    {
        for (const auto & [option, value] : request.pluginOptions) {
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

/// What to do about a window that cannot be shown.
QString helpAbout(const plugin::export_interface & plugin)
{
    const QString pathOption = QStringLiteral("--%1_path").arg(plugin.getName());
    return hasOption(plugin, pathOption)
               ? QStringLiteral("Give the export folder with %1=DIR").arg(pathOption)
               : QStringLiteral(
                     "Give the settings on the command line ('korvane plugins' lists the options)");
}

int runExport(plugin::export_interface & plugin, model::project & project, bool answerYes)
{
    export_listener listener;
    listener.message = [](const QString & text, int type) {
        if (type == ErrorMessage) {
            printError(text);
        } else {
            printLine(oneLine(text));
        }
    };
    const unattended watch(answerYes, helpAbout(plugin));
    const export_report report = runPlugin(plugin, project, listener);
    if (!watch.unanswered().isEmpty()) {
        printError(watch.unanswered());
        return 1;
    }
    if (!report.untoldReason.isEmpty()) {
        printError(report.untoldReason);
    }
    return report.ok ? 0 : 1;
}

} // namespace

int exportProject(const export_request & request)
{
    const found_plugins found = found_plugins::forRequest(request);
    int status = 1;
    QString reason;
    plugin::export_interface * const plugin = choosePlugin(found, request, status, reason);
    if (!plugin) {
        printError(reason);
        return status;
    }
    std::shared_ptr<model::project> project;
    if (const zk::ZkBool opened = openProject(request.projectFile, project); !opened) {
        printError(opened.getDesc());
        return 1;
    }
    // The process ends with this command: taking a large model apart, object by object, is left to the
    // system.
    static auto * const untilTheEnd = new std::shared_ptr<model::project>;
    *untilTheEnd = project;
    const export_context context(project, request);
    const int result = runExport(*plugin, *project, request.answerYes);
    // What the plug-in holds of the project goes before the project does.
    plugin->setCustomScript(nullptr);
    return result;
}

} // namespace app
