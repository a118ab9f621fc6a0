#include "tools/script_debugger_window.h"

#include "plugin/statement_source.h"
#include "tools/script_debugger.h"
#include "tools/script_debugger_tables.h"
#include "tools/script_source_view.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tools {

namespace {

/// Windows must be gone before the application object, while plug-ins and their scripts may outlive it.
QSet<script_debugger_window *> & allWindows()
{
    static QSet<script_debugger_window *> windows;
    return windows;
}

void deleteAllWindows()
{
    const QSet<script_debugger_window *> windows = allWindows();
    qDeleteAll(windows);
}

} // namespace

script_debugger_window::script_debugger_window(script_debugger & debugger, const QString & fileName,
                                               const QString & source)
    : m_pDebugger(&debugger)
{
    if (allWindows().isEmpty()) {
        qAddPostRoutine(deleteAllWindows);
    }
    allWindows().insert(this);
    setObjectName(QStringLiteral("wnd_script_debugger"));
    setWindowTitle(tr("%1 - Script debugger").arg(QFileInfo(fileName).fileName()));
    // The program ends with its own last window, not with this one.
    setAttribute(Qt::WA_QuitOnClose, false);

    createCommands();
    setCentralWidget(createPanes(source));
    createMenus();
    // Others are added as they come up.
    for (int i = 0; i <= static_cast<int>(plugin::statement_action::end); ++i) {
        addAction(plugin::actionName(static_cast<plugin::statement_action>(i)));
    }
    resize(1120, 800);
    m_txtSource->setFocus();
}

script_debugger_window::~script_debugger_window()
{
    allWindows().remove(this);
    if (allWindows().isEmpty()) {
        qRemovePostRoutine(deleteAllWindows);
    }
    if (m_pDebugger) {
        m_pDebugger->detach();
    }
}

void script_debugger_window::closeEvent(QCloseEvent * event)
{
    event->accept();
    if (m_pDebugger) {
        m_pDebugger->detach();
    }
}

void script_debugger_window::addAction(const QString & action)
{
    if (action.isEmpty() || !m_lstActions->findItems(action, Qt::MatchExactly).isEmpty()) {
        return;
    }
    auto * const item = new QListWidgetItem(action);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
    m_lstActions->addItem(item);
    m_pRunToAction->addAction(action, this, [this, action] {
        if (m_pDebugger) {
            m_pDebugger->runToAction(action);
        }
    });
}

void script_debugger_window::showStep(const script_step & step)
{
    addAction(step.action);
    debugger_tables::show(*m_lstStep,
                          QList{debugger_tables::detail(tr("Action"), step.action)} + step.details);
    m_txtDefault->setPlainText(step.defaultText);
    m_txtAnswer->clear();
    m_txtAnswer->setPlaceholderText(tr("The script has not answered yet"));
    m_lblAnswer->setText(m_txtAnswer->accessibleName());
}

void script_debugger_window::showAnswer(const QString & answer, bool failed)
{
    m_lblAnswer->setText(failed ? tr("The script failed") : m_txtAnswer->accessibleName());
    m_txtAnswer->setPlaceholderText(answer.isEmpty() ? tr("An empty text") : QString());
    m_txtAnswer->setPlainText(answer);
}

void script_debugger_window::showPlace(const QString & title, const QList<script_frame> & frames)
{
    m_lblPlace->setText(title);
    m_frames = frames;
    debugger_tables::show(*m_lstStack, frames);
    if (m_lstStack->topLevelItemCount() > 0) {
        m_lstStack->setCurrentItem(m_lstStack->topLevelItem(0));
    }
    setHeld(true);
}

void script_debugger_window::showFrame(int row)
{
    m_lstVariables->clear();
    if (row < 0 || row >= m_frames.size()) {
        return;
    }
    m_txtSource->setCurrentLine(m_frames[row].line);
    debugger_tables::show(*m_lstVariables, m_frames[row].variables);
}

void script_debugger_window::showRunning()
{
    // The commands stay as they are: the next stop may be near, and the button in use would lose the focus.
    m_bHeld = false;
    m_frames.clear(); // the engine may go at any time now
    m_lblPlace->setText(tr("The script is running"));
}

void script_debugger_window::showWaiting(bool willStop)
{
    m_lblPlace->setText(willStop ? tr("Attached: the next export stops at its first step")
                                 : tr("Attached: the next export stops at the breakpoints"));
    m_lstStack->clear();
    m_lstVariables->clear();
    m_txtSource->setCurrentLine(0);
    setHeld(false);
}

void script_debugger_window::setHeld(bool held)
{
    m_bHeld = held;
    for (QAction * const action : std::as_const(m_whileHeld)) {
        action->setEnabled(held);
    }
    if (!m_pDebugger || !m_pDebugger->canStopAtLines()) {
        m_whileHeld.constLast()->setEnabled(false);
    }
    m_pRunToAction->menuAction()->setEnabled(held);
    m_txtInput->setEnabled(held);
}

void script_debugger_window::evaluateInput()
{
    const QString expression = m_txtInput->text().trimmed();
    if (!m_pDebugger || !m_bHeld || expression.isEmpty()) {
        return;
    }
    const int row = m_lstStack->currentIndex().row();
    const script_evaluation result = m_pDebugger->evaluate(expression, row);
    m_txtOutput->appendPlainText(QStringLiteral("> ") + expression);
    m_txtOutput->appendPlainText(result.ok ? result.text : tr("failed: %1").arg(result.text));
    m_txtInput->selectAll();
    // An expression may change what is shown.
    showFrame(row);
}

} // namespace tools
