#include "app/window/version_comparison.h"

#include "app/window/changes_controller.h"
#include "app/window/export_controller.h"
#include "app/window/project_session.h"

#include "app/plugin_choice.h"
#include "app/source.h"

#include "plugin/export_interface.h"
#include "tools/wait_cursor.h"

namespace app {

using zk::ZkBool;

version_comparison::version_comparison(project_session & session, const export_controller & exports,
                                       const found_plugins & found)
    : m_session(session), m_exports(exports), m_found(found)
{
}

ZkBool version_comparison::compareModels(int from, int to, diff_report & report) const
{
    const tools::wait_cursor cursor;
    const auto of = std::make_shared<source>();
    if (const ZkBool opened = of->open(m_session.file()); !opened) {
        return opened;
    }
    of->takeState(m_session.project());
    return compareVersions(of, from, to, report);
}

ZkBool version_comparison::compare(int from, int to, const QString & database, diff_report & report,
                                   QString & note)
{
    const tools::wait_cursor cursor;
    const session_hold hold(m_session);
    ZkBool result = compareModels(from, to, report);
    plugin::statement_source * const offered = firstStatementSource(m_found);
    if (!result || !offered) {
        return result;
    }
    bool isLeftOut = false;
    const tools::script_guard_scope guard(m_exports.quietScriptGuard(isLeftOut));
    script_request asked;
    asked.database = database;
    result = addScript(*offered, asked, report);
    if (result) {
        result = addFindings(*offered, {}, report);
    }
    if (isLeftOut) {
        note = changes_controller::tr(
            "Without the custom script of the project, which was not allowed to run yet.");
    } else if (!report.states.isForwards() && report.states.fromNumber != report.states.toNumber) {
        note = changes_controller::tr("A step backwards is not judged.");
    }
    return result;
}

ZkBool version_comparison::compareWithText(const QString & text, diff_report & report) const
{
    const tools::wait_cursor cursor;
    comparison_request asked;
    asked.source = m_session.file();
    asked.from = text;
    return compareStates(asked, report);
}

} // namespace app
