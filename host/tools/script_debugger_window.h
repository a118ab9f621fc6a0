#pragma once

#include "tools/script_stop.h"

#include <QMainWindow>
#include <QSet>

class QAction;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QTreeWidget;

namespace tools {

class script_debugger;
class script_source_view;

/// What the user sees of a script that is debugged. It shows what it is told and passes on what is wanted.
class script_debugger_window : public QMainWindow
{
    Q_OBJECT

public:
    script_debugger_window(script_debugger & debugger, const QString & fileName, const QString & source);
    ~script_debugger_window() override;

    /// After this the window asks for nothing any more, and keeps no value of the script.
    void forgetDebugger()
    {
        m_pDebugger = nullptr;
        m_frames.clear();
    }

    void showStep(const script_step & step);
    /// The place where the script is held: what to call it, and the call stack, innermost first.
    void showPlace(const QString & title, const QList<script_frame> & frames);
    void showAnswer(const QString & answer, bool failed);
    void showRunning();
    /// No export is under way; whether the next one stops at its first step.
    void showWaiting(bool willStop);

protected:
    void closeEvent(QCloseEvent * event) override;

private:
    QAction * addCommand(const QString & name, const QString & text, const QKeySequence & key,
                         const QString & tip, void (script_debugger::*command)());
    void createCommands();
    void createMenus();
    QWidget * createPanes(const QString & source);
    QWidget * createSourcePane(const QString & source);
    QWidget * createStepPane();
    QWidget * createPlacePane();
    QWidget * createConsole();
    QPlainTextEdit * createText(const QString & name, const QString & label);
    void addAction(const QString & action);
    void showFrame(int row);
    void evaluateInput();
    void setHeld(bool held);

    script_debugger * m_pDebugger;
    QLabel * m_lblPlace = nullptr;
    script_source_view * m_txtSource = nullptr;
    QTreeWidget * m_lstStep = nullptr;
    QPlainTextEdit * m_txtDefault = nullptr;
    QPlainTextEdit * m_txtAnswer = nullptr;
    QLabel * m_lblAnswer = nullptr;
    QTreeWidget * m_lstStack = nullptr;
    QTreeWidget * m_lstVariables = nullptr;
    QListWidget * m_lstActions = nullptr;
    QPlainTextEdit * m_txtOutput = nullptr;
    QLineEdit * m_txtInput = nullptr;
    QMenu * m_pRunToAction = nullptr;
    QList<QAction *> m_whileHeld;
    QAction * m_pDetach = nullptr;
    QAction * m_pToggle = nullptr;
    QList<script_frame> m_frames;
    bool m_bHeld = false;
};

} // namespace tools
