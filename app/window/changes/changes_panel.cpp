#include "app/window/changes/changes_panel.h"

#include "app/window/changes/changes_view.h"

#include "app/diff_report.h"
#include "app/source.h"

#include "database/facts/facts.h"
#include "zk/visible_text.h"

#include <QComboBox>
#include <QLabel>
#include <QLocale>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int LongestMessage = 40; ///< characters of what a version is about

QString labelOf(const storage::history::version & version)
{
    const QString message = zk::visibleText(version.message);
    const QString shown =
        message.size() > LongestMessage ? message.left(LongestMessage) + QChar(0x2026) : message;
    return shown.isEmpty() ? versionWord(version.number)
                           : QStringLiteral("%1: %2").arg(versionWord(version.number), shown);
}

void chooseData(QComboBox & box, const QVariant & data)
{
    if (const int index = box.findData(data); index >= 0) {
        box.setCurrentIndex(index);
    }
}

} // namespace

changes_panel::changes_panel(QWidget * parent)
    : QWidget(parent), m_lblNote(new QLabel), m_lblProblem(new QLabel), m_view(new changes_view),
      m_stkContent(new QStackedWidget)
{
    m_lblNote->setObjectName(QStringLiteral("m_lblNote"));
    m_lblProblem->setObjectName(QStringLiteral("m_lblProblem"));
    for (QLabel * const label : {m_lblNote, m_lblProblem}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    m_lblProblem->setAlignment(Qt::AlignCenter);
    m_lblNote->hide();
    m_stkContent->addWidget(m_lblProblem);
    m_stkContent->addWidget(m_view);
    auto * const layout = new QVBoxLayout(this);
    layout->addLayout(createBar());
    layout->addWidget(m_lblNote);
    layout->addWidget(m_stkContent, 1);
    connect(m_view, &changes_view::objectReached, this, &changes_panel::objectReached);
    connect(m_view, &changes_view::targetWanted, this, &changes_panel::targetWanted);
}

/// What the panel itself chooses is not told: signals are blocked then.
QComboBox * changes_panel::addChoice(QBoxLayout & bar, const char * name, const QString & label,
                                     bool & isChosen)
{
    auto * const box = new QComboBox;
    box->setObjectName(QLatin1String(name));
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto * const text = new QLabel(label);
    text->setBuddy(box);
    bar.addWidget(text);
    bar.addWidget(box);
    connect(box, &QComboBox::currentIndexChanged, this, [this, &isChosen] {
        isChosen = true;
        Q_EMIT comparisonWanted();
    });
    return box;
}

QBoxLayout * changes_panel::createBar()
{
    auto * const bar = new QHBoxLayout;
    m_cboFrom = addChoice(*bar, "m_cboFrom", tr("F&rom:"), m_isChosen);
    m_cboTo = addChoice(*bar, "m_cboTo", tr("T&o:"), m_isChosen);
    m_cboDatabase = addChoice(*bar, "m_cboDatabase", tr("Data&base:"), m_isDatabaseChosen);
    bar->addStretch();
    const QSignalBlocker quiet(m_cboDatabase);
    for (const database::facts * const known : database::allFacts()) {
        m_cboDatabase->addItem(known->label, QString(known->key));
    }
    return bar;
}

void changes_panel::setVersions(const QList<storage::history::version> & versions)
{
    const QVariant from = m_cboFrom->currentData();
    const QVariant to = m_cboTo->currentData();
    const QSignalBlocker quietFrom(m_cboFrom);
    const QSignalBlocker quietTo(m_cboTo);
    for (QComboBox * const box : {m_cboFrom, m_cboTo}) {
        box->clear();
        box->addItem(tr("now"), Now);
        for (auto version = versions.crbegin(); version != versions.crend(); ++version) {
            box->addItem(labelOf(*version), version->number);
        }
    }
    m_cboFrom->setCurrentIndex(versions.isEmpty() ? 0 : 1);
    if (m_isChosen) {
        chooseData(*m_cboFrom, from);
        chooseData(*m_cboTo, to);
    }
}

void changes_panel::choose(int from, int to)
{
    {
        const QSignalBlocker quietFrom(m_cboFrom);
        const QSignalBlocker quietTo(m_cboTo);
        chooseData(*m_cboFrom, from);
        chooseData(*m_cboTo, to);
    }
    m_isChosen = true;
    Q_EMIT comparisonWanted();
}

void changes_panel::forgetChoice()
{
    m_isChosen = false;
    m_isDatabaseChosen = false;
}

QString changes_panel::database() const
{
    return m_isDatabaseChosen ? m_cboDatabase->currentData().toString() : QString();
}

int changes_panel::from() const
{
    return m_cboFrom->currentData().toInt();
}

int changes_panel::to() const
{
    return m_cboTo->currentData().toInt();
}

void changes_panel::showReport(const diff_report & report, const QString & note)
{
    if (report.script) {
        const QSignalBlocker quiet(m_cboDatabase);
        chooseData(*m_cboDatabase, report.script->database);
    }
    m_lblNote->setText(note);
    m_lblNote->setVisible(!note.isEmpty());
    m_view->setReport(report);
    m_stkContent->setCurrentWidget(m_view);
}

void changes_panel::showProblem(const QString & text)
{
    m_lblNote->hide();
    m_lblProblem->setText(zk::visibleText(text));
    m_stkContent->setCurrentWidget(m_lblProblem);
}

void changes_panel::showEvent(QShowEvent * event)
{
    QWidget::showEvent(event);
    Q_EMIT comparisonWanted();
}

} // namespace app
