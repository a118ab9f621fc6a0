#include "app/window/check_controller.h"

#include "app/window/export/finding_target.h"
#include "app/window/export/message_panel.h"
#include "app/window/export_controller.h"
#include "app/window/project_session.h"
#include "app/window/window_dialogs.h"

#include "app/acceptance_file.h"
#include "app/check_run.h"
#include "app/source.h"

#include "check/finding/acceptance.h"
#include "model/project.h"
#include "plugin/export_interface.h"
#include "plugin/statement_source.h"
#include "tools/wait_cursor.h"

#include <QDate>
#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace app {

namespace {

/// What is said of a finding: what it is on the first line, which is all that a row shows, then why and what
/// to do.
QString textOf(const check::finding & finding)
{
    QStringList lines{QStringLiteral("%1: %2").arg(finding.code, finding.message)};
    if (finding.accepted) {
        lines[0] += check_controller::tr(" (accepted: %1)").arg(finding.accepted->why);
    }
    lines << finding.why << finding.way.text;
    if (finding.statement) {
        lines << QStringLiteral("%1:%2: %3")
                     .arg(finding.statement->script, QString::number(finding.statement->line),
                          finding.statement->text);
    }
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

} // namespace

check_controller::check_controller(project_session & session, message_panel & messages,
                                   export_controller & exports, QWidget * window)
    : QObject(window), m_session(session), m_messages(messages), m_exports(exports), m_pWindow(window)
{
}

void check_controller::checkProject(plugin::export_interface * plugin)
{
    if (m_session.isHeld() || !refreshProject(m_session, m_pWindow, tr("Korvane - Check"))) {
        return;
    }
    const tools::wait_cursor cursor;
    check::report report;
    QString reason;
    const bool isJudged = judge(*plugin, {}, report, reason);
    show(report, tr("Check of '%1' with %2").arg(m_session.project()->getName(), plugin->getName()), reason);
    Q_EMIT messagesWanted();
    Q_EMIT statusTold(isJudged ? countsOf(report) : tr("The check failed: see the messages"));
}

void check_controller::checkScripts(plugin::export_interface * plugin, const QStringList & files)
{
    if (!qobject_cast<plugin::statement_source *>(plugin)) {
        return;
    }
    const tools::wait_cursor cursor;
    check::report report;
    QString reason;
    judge(*plugin, files, report, reason);
    if (!report.findings.empty() || !reason.isEmpty()) {
        show(report, tr("Findings about the scripts"), reason);
    } else {
        Q_EMIT countsTold(countsOf(report));
    }
}

bool check_controller::judge(plugin::export_interface & plugin, const QStringList & scripts,
                             check::report & report, QString & reason)
{
    auto * const statements = qobject_cast<plugin::statement_source *>(&plugin);
    m_session.hold();
    source of;
    check::accepted_findings accepted;
    zk::ZkBool result = of.open(m_session.file());
    if (result) {
        result = readAccepted(of, {}, accepted);
    }
    if (result) {
        of.takeState(m_session.project());
        const tools::script_guard_scope guard(m_exports.scriptGuard());
        check_request asked;
        asked.scripts = scripts.isEmpty() ? judged_scripts::usual : judged_scripts::all;
        result = checkSource(*statements, of, asked, report);
    }
    m_session.letGo();
    check::accept(accepted, QDate::currentDate(), report);
    if (!scripts.isEmpty()) {
        std::erase_if(report.findings, [&scripts](const check::finding & each) {
            return std::none_of(scripts.begin(), scripts.end(), [&each](const QString & file) {
                return QFileInfo(file).fileName() == each.script;
            });
        });
    }
    reason = result ? QString() : result.getDesc();
    return result.getValue();
}

void check_controller::show(const check::report & report, const QString & title, const QString & reason)
{
    m_messages.begin(title);
    std::vector<const check::finding *> findings;
    findings.reserve(report.findings.size());
    for (const check::finding & each : report.findings) {
        findings.push_back(&each);
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const auto * a, const auto * b) { return check::isWorse(*a, *b); });
    for (const check::finding * const each : findings) {
        add(*each);
    }
    const QString counts = countsOf(report);
    m_messages.end(reason.isEmpty(), reason.isEmpty() ? counts : reason);
    Q_EMIT countsTold(counts);
}

void check_controller::add(const check::finding & finding)
{
    m_messages.addFinding(textOf(finding), kindOf(finding), QVariant::fromValue(targetOf(finding)));
}

} // namespace app
