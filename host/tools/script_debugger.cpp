#include "tools/script_debugger.h"

#include "tools/script_debugger_window.h"

#include "context/ctx_global.h"
#include "view/main_wnd.h"

#include <QApplication>
#include <QEventLoop>
#include <QScopedValueRollback>

namespace tools {

namespace {

constexpr int Released = 1;

/// Shows the usual cursors while an export, which is busy otherwise, waits for the user.
class usual_cursor
{
public:
    usual_cursor()
    {
        while (const QCursor * const cursor = QGuiApplication::overrideCursor()) {
            m_cursors.append(*cursor);
            QGuiApplication::restoreOverrideCursor();
        }
    }
    ~usual_cursor()
    {
        while (!m_cursors.isEmpty()) {
            QGuiApplication::setOverrideCursor(m_cursors.takeLast());
        }
    }
    usual_cursor(const usual_cursor &) = delete;
    usual_cursor & operator=(const usual_cursor &) = delete;

private:
    QList<QCursor> m_cursors;
};

/// Tells the main window, if there is one, who holds the export.
class told_holder
{
public:
    explicit told_holder(QWidget * holder) { tell(holder); }
    ~told_holder() { tell(nullptr); }
    told_holder(const told_holder &) = delete;
    told_holder & operator=(const told_holder &) = delete;

private:
    static void tell(QWidget * holder)
    {
        if (view::main_wnd * const window = context::ctx_global::getMainWnd()) {
            window->setHolder(holder);
        }
    }
};

/// Keeps the user from using other windows, where a held export could be started again or lose its project.
/// They are painted and can be closed; message boxes and other modal windows are free.
class input_gate : public QObject
{
public:
    explicit input_gate(QWidget * open) : m_pOpen(open) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject * watched, QEvent * event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::DragEnter:
            return isClosed(watched);
        case QEvent::ShortcutOverride:
            if (isClosed(watched)) {
                event->accept(); // so that it is no shortcut
                return true;
            }
            return false;
        default:
            return false;
        }
    }

private:
    [[nodiscard]] bool isClosed(const QObject * watched) const
    {
        while (watched && !watched->isWidgetType()) {
            watched = watched->parent();
        }
        const view::main_wnd * const main = context::ctx_global::getMainWnd();
        const QWidget * const usable = main ? main->usableWhileHeld() : nullptr;
        for (const auto * widget = static_cast<const QWidget *>(watched); widget;
             widget = widget->parentWidget()) {
            if (widget == m_pOpen || widget == usable || (widget->isWindow() && widget->isModal())) {
                return false;
            }
        }
        return watched && QApplication::activePopupWidget() != watched;
    }

    QPointer<QWidget> m_pOpen;
};

} // namespace

bool script_debugger::hasDisplay()
{
    return qobject_cast<QApplication *>(QCoreApplication::instance()) && !QCoreApplication::closingDown();
}

script_debugger::script_debugger(const QString & fileName, const QString & source, engine_access engine)
    : m_engine(std::move(engine)), m_pWindow(new script_debugger_window(*this, fileName, source))
{
    if (m_engine.lines) {
        m_engine.lines->onStop = [this](const QList<script_frame> & frames) { lineReached(frames); };
        m_engine.lines->isWatching = true;
    }
    // The export may be over, or only on its way to the next step: the event loop comes round when it is
    // over.
    m_idle.setSingleShot(true);
    m_idle.setInterval(0);
    connect(&m_idle, &QTimer::timeout, this, [this] {
        if (m_bAttached && !m_pHolding) {
            m_pWindow->showWaiting(m_bStopAtNext);
        }
    });
    m_pWindow->showWaiting(true);
    m_pWindow->show();
}

script_debugger::~script_debugger()
{
    detach();
    delete m_pWindow;
}

void script_debugger::showWindow()
{
    if (m_bAttached) {
        m_pWindow->show();
        if (!m_pWindow->isActiveWindow()) {
            m_pWindow->raise();
            m_pWindow->activateWindow();
        }
    }
}

void script_debugger::detach()
{
    if (!m_bAttached) {
        return;
    }
    m_bAttached = false;
    m_idle.stop();
    if (m_engine.lines) {
        m_engine.lines->isWatching = false;
        m_engine.lines->onStop = nullptr;
    }
    if (m_pWindow) {
        m_pWindow->forgetDebugger();
        m_pWindow->hide();
        m_pWindow->deleteLater(); // this may come from one of its events
    }
    release();
}

void script_debugger::release()
{
    if (m_pHolding) {
        m_pHolding->exit(Released);
    }
}

void script_debugger::hold(place where)
{
    if (!m_bAttached || m_pHolding) {
        return;
    }
    m_place = where;
    m_idle.stop();
    showWindow();
    {
        const usual_cursor cursor;
        const input_gate gate(m_pWindow);
        const told_holder told(m_pWindow);
        QEventLoop loop;
        const QScopedValueRollback holding(m_pHolding, &loop);
        if (loop.exec() != Released) {
            detach(); // the program ends
        }
    }
    m_place = place::nowhere;
    m_frames.clear();
    if (m_bAttached) {
        m_pWindow->showRunning();
        m_idle.start();
    }
}

void script_debugger::beforeStep(const script_step & step, int line)
{
    if (!m_bAttached) {
        return;
    }
    m_step = step;
    const bool stop =
        m_bStopAtNext || m_actionBreakpoints.contains(step.action) || m_sRunToAction == step.action;
    if (stop) {
        m_bStopAtNext = false;
        m_sRunToAction.clear();
        m_pWindow->showStep(m_step);
        m_pWindow->showPlace(tr("Before the step %1").arg(step.action),
                             {{QStringLiteral("exportStep"), line, step.arguments}});
        hold(place::before_step);
    }
}

void script_debugger::lineReached(const QList<script_frame> & frames)
{
    if (!m_bAttached || frames.isEmpty()) {
        return;
    }
    m_engine.suspendTimeLimit();
    m_bStopAtNext = false;
    m_sRunToAction.clear();
    m_frames = frames;
    m_pWindow->showStep(m_step);
    m_pWindow->showPlace(tr("%1 in line %2").arg(frames.constFirst().function).arg(frames.constFirst().line),
                         frames);
    hold(place::at_line);
    m_engine.resumeTimeLimit();
}

void script_debugger::afterStep(const QString & answer, bool failed, int line)
{
    if (m_engine.lines) {
        // A step that ran out of the script's last line ends here.
        m_bStopAtNext = m_bStopAtNext || m_engine.lines->step != line_stops::run;
        m_engine.lines->step = line_stops::run;
    }
    if (m_bAttached) {
        if (m_bStopAtNext || failed) {
            m_bStopAtNext = false;
            m_pWindow->showStep(m_step);
            m_pWindow->showAnswer(answer, failed);
            m_pWindow->showPlace(failed ? tr("The step %1 failed").arg(m_step.action)
                                        : tr("After the step %1").arg(m_step.action),
                                 {{QStringLiteral("exportStep"), line, m_step.arguments}});
            hold(place::after_step);
        }
    }
    m_step = {};
}

void script_debugger::step()
{
    if (m_place == place::at_line) {
        m_engine.lines->step = line_stops::over;
    } else {
        m_bStopAtNext = true;
    }
    release();
}

void script_debugger::stepInto()
{
    if (!m_engine.lines || m_place == place::after_step) {
        step();
        return;
    }
    m_engine.lines->step = line_stops::into;
    release();
}

void script_debugger::goOn()
{
    release();
}

void script_debugger::runToAction(const QString & action)
{
    m_sRunToAction = action;
    release();
}

void script_debugger::setLineBreakpoints(const QSet<int> & lines)
{
    if (m_engine.lines) {
        m_engine.lines->breakpoints = lines;
    }
}

script_evaluation script_debugger::evaluate(const QString & expression, qsizetype frame)
{
    const bool atLine = frame >= 0 && frame < m_frames.size();
    const QList<script_variable> names =
        atLine ? m_frames[frame].variables + m_step.arguments : m_step.arguments;
    if (!m_engine.lines) {
        return m_engine.evaluate(expression, names);
    }
    const QScopedValueRollback busy(m_engine.lines->isBusy, true);
    return m_engine.evaluate(expression, names);
}

} // namespace tools
