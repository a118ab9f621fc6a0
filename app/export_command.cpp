#include "app/commands.h"
#include "app/plugin_choice.h"
#include "app/unattended.h"

#include "context/ctx_global.h"
#include "context/ctx_project.h"
#include "model/project.h"
#include "plugin/export_interface.h"
#include "view/main_wnd.h"
#include "zk/zk_sql_database.h"

#include <QSet>

namespace app {

namespace {

constexpr int ErrorMessage = 3;

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
    QSet<QString> shownErrors;
    const auto connection = QObject::connect(&plugin, &plugin::base_interface::onMessage, &plugin,
                                             [&shownErrors](const QString & text, int type, int) {
                                                 if (type == ErrorMessage) {
                                                     shownErrors.insert(oneLine(text));
                                                     printError(text);
                                                 } else {
                                                     printLine(oneLine(text));
                                                 }
                                             });
    const unattended watch(answerYes, helpAbout(plugin));
    const zk::ZkBool result = plugin.exportProject(project);
    QObject::disconnect(connection);
    if (!watch.unanswered().isEmpty()) {
        printError(watch.unanswered());
        return 1;
    }
    if (result) {
        return 0;
    }
    const QString reason = result.getDesc().isEmpty() ? QStringLiteral("The export failed without a reason")
                                                      : oneLine(result.getDesc());
    if (!shownErrors.contains(reason)) {
        printError(reason);
    }
    return 1;
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
    const auto project = std::make_shared<model::project>(1);
    // The process ends with this command: taking a large model apart, object by object, is left to the
    // system.
    static auto * const untilTheEnd = new std::shared_ptr<model::project>;
    *untilTheEnd = project;
    project->setFileName(request.projectFile);
    if (const QSqlError error = project->load(); error.isValid()) {
        printError(error.text());
        return 1;
    }
    const export_context context(project, request);
    const int result = runExport(*plugin, *project, request.answerYes);
    // What the plug-in holds of the project goes before the project does.
    plugin->setCustomScript(nullptr);
    return result;
}

} // namespace app
