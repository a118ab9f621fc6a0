#include "app/window/changes_controller.h"

#include "app/window/changes/changes_panel.h"
#include "app/window/project_session.h"
#include "app/window/version_comparison.h"

#include "model/project.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QWidget>

namespace app {

changes_controller::changes_controller(project_session & session, changes_panel & panel,
                                       version_comparison & comparison, QWidget * window)
    : QObject(window), m_session(session), m_panel(panel), m_comparison(comparison)
{
    connect(&m_session, &project_session::projectChanged, this, &changes_controller::projectChanged);
    connect(&m_session, &project_session::heldChanged, this, &changes_controller::refresh);
    connect(&m_panel, &changes_panel::comparisonWanted, this, &changes_controller::refresh);
}

void changes_controller::projectChanged()
{
    if (m_session.file() != m_sShownFile) {
        m_sShownFile = m_session.file();
        m_panel.forgetChoice();
    }
    m_sShown.clear();
    refresh();
}

QString changes_controller::stateOfAll() const
{
    const QFileInfo file(m_session.file());
    const QFileInfo accepted(file.dir().filePath(QStringLiteral("korvane-check.json")));
    const auto timeOf = [](const QFileInfo & of) {
        return QString::number(of.lastModified().toMSecsSinceEpoch());
    };
    return QStringList{m_session.file(),
                       timeOf(file),
                       QString::number(file.size()),
                       timeOf(accepted),
                       QString::number(m_panel.from()),
                       QString::number(m_panel.to()),
                       m_panel.database()}
        .join(u'\n');
}

void changes_controller::refresh()
{
    if (!m_session.project() || m_session.isHeld() || !m_panel.isVisible() || m_sShown == stateOfAll()) {
        return;
    }
    QList<storage::history::version> versions;
    if (const QSqlError error = storage::history::list(m_session.file(), versions); error.isValid()) {
        m_panel.showProblem(error.text());
        return;
    }
    m_panel.setVersions(versions);
    m_sShown = stateOfAll();
    if (versions.isEmpty()) {
        m_panel.showProblem(tr("'%1' has no version yet, so there is nothing to compare it with.\n"
                               "\"Actions > Tag project state…\" makes one.")
                                .arg(m_session.project()->getName()));
        return;
    }
    compare();
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

} // namespace app
