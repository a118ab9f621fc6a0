#include "tools/script_debugger_window.h"

#include "tools/script_debugger.h"
#include "tools/script_debugger_tables.h"
#include "tools/script_source_view.h"
#include "zk/visible_text.h"

#include <QAction>
#include <QFontDatabase>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tools {

namespace {

QWidget * labelled(const QString & text, QWidget * field, QLabel ** label = nullptr)
{
    auto * const pane = new QWidget;
    auto * const layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto * const title = new QLabel(text);
    title->setBuddy(field);
    layout->addWidget(title);
    layout->addWidget(field);
    if (label) {
        *label = title;
    }
    return pane;
}

} // namespace

QAction * script_debugger_window::addCommand(const QString & name, const QString & text,
                                             const QKeySequence & key, const QString & tip,
                                             void (script_debugger::*command)())
{
    auto * const action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(tip, key.toString(QKeySequence::NativeText)));
    action->setStatusTip(tip);
    connect(action, &QAction::triggered, this, [this, command] {
        if (m_pDebugger) {
            (m_pDebugger->*command)();
        }
    });
    return action;
}

void script_debugger_window::createCommands()
{
    m_whileHeld = {addCommand(QStringLiteral("m_actContinue"), tr("&Continue"), QKeySequence(Qt::Key_F5),
                              tr("Run to the next breakpoint"), &script_debugger::goOn),
                   addCommand(QStringLiteral("m_actStep"), tr("&Step"), QKeySequence(Qt::Key_F10),
                              tr("Run this step of the export, or this line of the script"),
                              &script_debugger::step),
                   addCommand(QStringLiteral("m_actStepInto"), tr("Step &into"), QKeySequence(Qt::Key_F11),
                              tr("Go to the next line, entering functions"), &script_debugger::stepInto)};
    m_whileHeld.constLast()->setEnabled(m_pDebugger->canStopAtLines());
    m_pRunToAction = new QMenu(tr("&Run to action…"), this);
    m_pRunToAction->menuAction()->setObjectName(QStringLiteral("m_actRunToAction"));
    m_pToggle = new QAction(tr("Toggle &breakpoint"), this);
    m_pToggle->setObjectName(QStringLiteral("m_actToggleBreakpoint"));
    m_pToggle->setShortcut(QKeySequence(Qt::Key_F9));
    m_pToggle->setToolTip(tr("Set or remove a breakpoint on the current line (F9)"));
    m_pToggle->setEnabled(m_pDebugger->canStopAtLines());
    connect(m_pToggle, &QAction::triggered, this,
            [this] { m_txtSource->toggleBreakpoint(m_txtSource->cursorLine()); });
    m_pDetach = addCommand(QStringLiteral("m_actDetach"), tr("&Detach"), QKeySequence(Qt::SHIFT | Qt::Key_F5),
                           tr("Let the export go on without the debugger, and close this window"),
                           &script_debugger::detach);
}

void script_debugger_window::createMenus()
{
    QMenu * const menu = menuBar()->addMenu(tr("&Debug"));
    QToolBar * const bar = addToolBar(tr("Debug"));
    bar->setObjectName(QStringLiteral("m_toolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    QList<QAction *> commands = m_whileHeld;
    commands << m_pRunToAction->menuAction() << m_pToggle << m_pDetach;
    for (QAction * const command : std::as_const(commands)) {
        menu->addAction(command);
        bar->addAction(command);
        if (QWidget * const button = bar->widgetForAction(command)) {
            button->setFocusPolicy(Qt::TabFocus);
            button->setAccessibleName(command->text().remove(QLatin1Char('&')));
            button->setAccessibleDescription(command->toolTip());
        }
    }
    // A click on the button, and not only on its arrow, is to show the actions.
    if (QWidget * const button = bar->widgetForAction(m_pRunToAction->menuAction())) {
        button->setProperty("popupMode", 2); // QToolButton::InstantPopup
    }
}

QPlainTextEdit * script_debugger_window::createText(const QString & name, const QString & label)
{
    auto * const text = new QPlainTextEdit;
    text->setObjectName(name);
    text->setAccessibleName(label);
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setTabChangesFocus(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return text;
}

QWidget * script_debugger_window::createPanes(const QString & source)
{
    auto * const upper = new QSplitter(Qt::Horizontal);
    upper->addWidget(createSourcePane(source));
    auto * const right = new QSplitter(Qt::Vertical);
    right->addWidget(createStepPane());
    right->addWidget(createPlacePane());
    upper->addWidget(right);
    upper->setSizes({650, 430});
    auto * const all = new QSplitter(Qt::Vertical);
    all->addWidget(upper);
    all->addWidget(createConsole());
    all->setSizes({630, 130});
    all->setChildrenCollapsible(false);
    m_lblPlace = new QLabel;
    m_lblPlace->setObjectName(QStringLiteral("m_lblPlace"));
    m_lblPlace->setTextFormat(Qt::PlainText);
    m_lblPlace->setMargin(4);
    QFont bold = m_lblPlace->font();
    bold.setBold(true);
    m_lblPlace->setFont(bold);
    auto * const central = new QWidget;
    auto * const layout = new QVBoxLayout(central);
    layout->setContentsMargins(6, 0, 6, 6);
    layout->setSpacing(2);
    layout->addWidget(m_lblPlace);
    layout->addWidget(all, 1);
    return central;
}

QWidget * script_debugger_window::createSourcePane(const QString & source)
{
    m_txtSource = new script_source_view;
    m_txtSource->setObjectName(QStringLiteral("m_txtSource"));
    m_txtSource->setAccessibleName(tr("Source of the script"));
    m_txtSource->setTabChangesFocus(true);
    m_txtSource->setPlainText(source);
    const bool lines = m_pDebugger->canStopAtLines();
    m_txtSource->setBreakpointsPossible(lines);
    connect(m_txtSource, &script_source_view::breakpointsChanged, this, [this] {
        if (m_pDebugger) {
            m_pDebugger->setLineBreakpoints(m_txtSource->breakpoints());
        }
    });
    QWidget * const pane =
        labelled(lines ? tr("Script (a click on a line number sets a breakpoint)")
                       : tr("Script (this build cannot stop at lines, only at steps and actions)"),
                 m_txtSource);
    pane->findChild<QLabel *>()->setObjectName(QStringLiteral("m_lblSource"));
    return pane;
}

QWidget * script_debugger_window::createStepPane()
{
    m_lstStep = debugger_tables::createStep();
    m_lstStep->setObjectName(QStringLiteral("m_lstStep"));
    m_lstStep->setAccessibleName(tr("What the step is about"));
    m_txtDefault = createText(QStringLiteral("m_txtDefault"), tr("Default text"));
    m_txtAnswer = createText(QStringLiteral("m_txtAnswer"), tr("Answer of the script"));
    auto * const split = new QSplitter(Qt::Vertical);
    split->addWidget(m_lstStep);
    split->addWidget(labelled(m_txtDefault->accessibleName(), m_txtDefault));
    split->addWidget(labelled(m_txtAnswer->accessibleName(), m_txtAnswer, &m_lblAnswer));
    m_lblAnswer->setObjectName(QStringLiteral("m_lblAnswer"));
    split->setSizes({230, 90, 80});
    split->setChildrenCollapsible(false);
    return split;
}

QWidget * script_debugger_window::createPlacePane()
{
    m_lstStack = debugger_tables::createStack();
    m_lstStack->setObjectName(QStringLiteral("m_lstStack"));
    m_lstStack->setAccessibleName(tr("Call stack"));
    m_lstVariables = debugger_tables::createVariables();
    m_lstVariables->setObjectName(QStringLiteral("m_lstVariables"));
    m_lstVariables->setAccessibleName(tr("Variables"));
    connect(m_lstStack, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem * item) {
        if (item) {
            showFrame(m_lstStack->indexOfTopLevelItem(item));
        }
    });
    auto * const place = new QSplitter(Qt::Vertical);
    place->addWidget(m_lstVariables);
    place->addWidget(m_lstStack);
    place->setSizes({120, 60});
    m_lstActions = new QListWidget;
    m_lstActions->setObjectName(QStringLiteral("m_lstActions"));
    m_lstActions->setAccessibleName(tr("Actions to stop at"));
    connect(m_lstActions, &QListWidget::itemChanged, this, [this] {
        QSet<QString> checked;
        for (int row = 0; row < m_lstActions->count(); ++row) {
            if (m_lstActions->item(row)->checkState() == Qt::Checked) {
                checked.insert(m_lstActions->item(row)->text());
            }
        }
        if (m_pDebugger) {
            m_pDebugger->setActionBreakpoints(checked);
        }
    });
    auto * const tabs = new QTabWidget;
    tabs->setDocumentMode(true);
    tabs->addTab(place, tr("&Variables"));
    tabs->addTab(m_lstActions, tr("Stop at &actions"));
    return tabs;
}

QWidget * script_debugger_window::createConsole()
{
    m_txtOutput = createText(QStringLiteral("m_txtOutput"), tr("Evaluated expressions"));
    if (const QString why = m_pDebugger->whyNoLines(); !why.isEmpty()) {
        m_txtOutput->appendPlainText(zk::visibleText(why));
    }
    m_txtInput = new QLineEdit;
    m_txtInput->setObjectName(QStringLiteral("m_txtInput"));
    m_txtInput->setAccessibleName(tr("Expression to evaluate"));
    m_txtInput->setPlaceholderText(tr("for example entity.getName() or parameters.default_value.length"));
    m_txtInput->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_txtInput->setClearButtonEnabled(true);
    connect(m_txtInput, &QLineEdit::returnPressed, this, &script_debugger_window::evaluateInput);
    auto * const pane = new QWidget;
    auto * const form = new QFormLayout(pane);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(m_txtOutput);
    form->addRow(tr("&Evaluate:"), m_txtInput);
    return pane;
}

} // namespace tools
