#include "app/window/changes_controller.h"

#include "app/diagram/diagram_changes.h"
#include "app/window/changes/changes_panel.h"
#include "app/window/diagram/diagram_panel.h"
#include "app/window/project_session.h"
#include "app/window/version_comparison.h"

#include "model/project.h"
#include "tools/wait_cursor.h"
#include "zk/visible_text.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QWidget>

namespace app {

changes_controller::changes_controller(project_session & session, changes_panel & panel,
                                       diagram_panel & diagram, version_comparison & comparison,
                                       QWidget * window)
    : QObject(window), m_session(session), m_panel(panel), m_diagram(diagram), m_comparison(comparison)
{
    connect(&m_session, &project_session::heldChanged, this, &changes_controller::refresh);
    connect(&m_session, &project_session::historyChanged, this, &changes_controller::refresh);
    connect(&m_panel, &changes_panel::comparisonWanted, this, &changes_controller::refresh);
    connect(&m_diagram, &diagram_panel::changesWanted, this, &changes_controller::setMarked);
}

void changes_controller::projectChanged()
{
    if (m_session.file() != m_sShownFile) {
        m_sShownFile = m_session.file();
        m_panel.forgetChoice();
    }
    m_sShown.clear();
    m_sMarked.clear();
    refresh();
}

QString changes_controller::stateOfVersions() const
{
    const QFileInfo file(m_session.file());
    return QStringList{m_session.file(), QString::number(file.lastModified().toMSecsSinceEpoch()),
                       QString::number(file.size()), QString::number(m_panel.from()),
                       QString::number(m_panel.to())}
        .join(u'\n');
}

QString changes_controller::stateOfAll() const
{
    const QFileInfo accepted(
        QFileInfo(m_session.file()).dir().filePath(QStringLiteral("korvane-check.json")));
    return QStringList{stateOfVersions(), QString::number(accepted.lastModified().toMSecsSinceEpoch()),
                       m_panel.database()}
        .join(u'\n');
}

void changes_controller::refresh()
{
    if (!m_session.project() || m_session.isHeld()) {
        return;
    }
    const bool isShown = m_panel.isVisible() && m_sShown != stateOfAll();
    const bool isMarked = m_diagram.wantsChanges() && m_sMarked != stateOfVersions();
    if (!isShown && !isMarked) {
        return;
    }
    const tools::wait_cursor cursor;
    if (!listVersions()) {
        return;
    }
    if (isShown) {
        m_sShown = stateOfAll();
        compare();
    }
    if (isMarked) {
        m_sMarked = stateOfVersions();
        markChanges();
    }
}

bool changes_controller::listVersions()
{
    QList<storage::history::version> versions;
    if (const QSqlError error = storage::history::list(m_session.file(), versions); error.isValid()) {
        m_panel.showProblem(error.text());
        m_diagram.hideChanges(zk::visibleText(error.text()));
        return false;
    }
    m_panel.setVersions(versions);
    if (!versions.isEmpty()) {
        return true;
    }
    m_sShown = stateOfAll();
    m_sMarked = stateOfVersions();
    m_panel.showProblem(tr("'%1' has no version yet, so there is nothing to compare it with.\n"
                           "\"Actions > Tag project state…\" makes one.")
                            .arg(m_session.project()->getName()));
    if (m_diagram.wantsChanges()) {
        m_diagram.hideChanges(tr("no version yet to compare it with"));
    }
    return false;
}

void changes_controller::compare()
{
    diff_report report;
    QString note;
    if (const zk::ZkBool compared =
            m_comparison.compare(m_panel.from(), m_panel.to(), m_panel.database(), report, note);
        !compared) {
        m_panel.showProblem(compared.getDesc());
        return;
    }
    m_panel.showReport(report, note);
}

void changes_controller::markChanges()
{
    diff_report report;
    if (const zk::ZkBool compared = m_comparison.compareModels(m_panel.from(), m_panel.to(), report);
        !compared) {
        m_diagram.hideChanges(zk::visibleText(compared.getDesc()));
        return;
    }
    const model::project & before = *report.states.before;
    const model::project & after = *report.states.after;
    m_diagram.showChanges(after, diagram_changes(before, after, report.changes),
                          tr("changes from %1 to %2").arg(report.states.from, report.states.to));
}

void changes_controller::setMarked(bool isWanted)
{
    if (!isWanted) {
        m_sMarked.clear();
        m_diagram.hideChanges();
        return;
    }
    refresh();
}

} // namespace app
