#pragma once

#include "tools/line_stops.h"
#include "tools/script_stop.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

class QEventLoop;

namespace tools {

class script_debugger_window;

/// The interactive debugger of one loaded script: holds its caller at the steps and lines where the user
/// wants to stop, while events go on being handled.
class script_debugger : public QObject
{
    Q_OBJECT

public:
    /// What the debugger asks of the engine that it debugs.
    struct engine_access
    {
        std::function<script_evaluation(const QString & code, const QList<script_variable> & names)> evaluate;
        /// Between the two the time limit of the running call stands still.
        std::function<void()> suspendTimeLimit;
        std::function<void()> resumeTimeLimit;
        /// Null when the script cannot stop at lines.
        std::shared_ptr<line_stops> lines;
        QString whyNoLines; ///< one line, for the user
    };

    /// Opens the window; needs hasDisplay().
    script_debugger(const QString & fileName, const QString & source, engine_access engine);
    ~script_debugger() override;

    /// Whether windows can be shown at all.
    [[nodiscard]] static bool hasDisplay();

    [[nodiscard]] bool isAttached() const { return m_bAttached; }
    /// Brings the window to the front.
    void showWindow();

    /// To be called before and after each call of exportStep; return when the script shall go on.
    void beforeStep(const script_step & step, int line);
    void afterStep(const QString & answer, bool failed, int line);

    // What the user can do, in the window.
    void step();
    void stepInto();
    void goOn();
    void runToAction(const QString & action);
    /// Lets the script run on by itself, for good, and closes the window.
    void detach();
    [[nodiscard]] script_evaluation evaluate(const QString & expression, qsizetype frame);
    void setLineBreakpoints(const QSet<int> & lines);
    void setActionBreakpoints(const QSet<QString> & actions) { m_actionBreakpoints = actions; }
    [[nodiscard]] bool canStopAtLines() const { return m_engine.lines != nullptr; }
    /// Why not; empty when it can.
    [[nodiscard]] QString whyNoLines() const { return m_engine.whyNoLines; }

private:
    enum class place
    {
        nowhere,
        before_step,
        at_line,
        after_step
    };

    void lineReached(const QList<script_frame> & frames);
    void hold(place where);
    void release();

    engine_access m_engine;
    QPointer<script_debugger_window> m_pWindow;
    QSet<QString> m_actionBreakpoints;
    QString m_sRunToAction;
    script_step m_step;
    QList<script_frame> m_frames;
    QEventLoop * m_pHolding = nullptr;
    QTimer m_idle;
    place m_place = place::nowhere;
    bool m_bAttached = true;
    bool m_bStopAtNext = true;
};

} // namespace tools
