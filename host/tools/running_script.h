#pragma once

#include "tools/call_watchdog.h"
#include "tools/script_console.h"
#include "tools/script_objects.h"
#include "tools/script_stop.h"

#include "zk/zk_bool.h"

#include <QHash>
#include <QJSEngine>
#include <QVariant>

#include <array>
#include <memory>

namespace tools {

/// A script as it was read from its file.
struct script_source
{
    QString fileName; ///< absolute
    QString code;

    /// One line that names the file and, from 1 on, the line.
    [[nodiscard]] zk::ZkBool failure(int line, const QString & reason) const;
};

/// A script in an engine of its own, each call of which ends within the limits of time and memory. One that
/// heeds no interrupt ends the program.
class running_script
{
public:
    /// @param timeLimit of each call, in milliseconds; 0 or less for none
    /// @param owner receives what the script writes to its console, and may be null
    running_script(const script_source & source, int timeLimit, plugin::base_interface * owner);
    ~running_script();
    running_script(const running_script &) = delete;
    running_script & operator=(const running_script &) = delete;

    void setTimeLimit(int milliseconds) { m_iTimeLimit = milliseconds; }
    [[nodiscard]] QJSEngine & engine() { return *m_pEngine; }
    [[nodiscard]] int lineOfStep() const { return m_iLineOfFunction; }

    /// Runs the script, once and before all else; with `forDebugger` it can evaluate() later. Fails when the
    /// script does, or defines no function exportStep.
    zk::ZkBool compile(bool forDebugger);

    /// The script's values of what a step is about, in the order in which exportStep takes them. They are its
    /// own until endStep().
    QJSValueList beginStep(model::project * project, model::entity * entity, model::property * property,
                           model::enumeration * enumeration, const QHash<QString, QVariant> & parameters);
    /// Calls exportStep; what the step shall write.
    zk::ZkBool step(const QJSValueList & arguments, const QHash<QString, QVariant> & parameters);
    void endStep() { m_model.endCall(); }

    /// Evaluates `code` where it sees `names`, which are all different, and what the script has defined.
    script_evaluation evaluate(const QString & code, const QList<script_variable> & names);
    /// Between the two the time limit of the running call stands still.
    void suspendTimeLimit() { m_held = m_watchdog.suspend(); }
    void resumeTimeLimit() { m_watchdog.resume(m_held); }

private:
    zk::ZkBool answer(const QJSValue & result, const QHash<QString, QVariant> & parameters) const;
    zk::ZkBool call(const QJSValueList & arguments, const QHash<QString, QVariant> & parameters);
    [[nodiscard]] zk::ZkBool exceptionFailure(const QJSValue & thrown, const QStringList & stack) const;
    void begin() { m_watchdog.begin(std::chrono::milliseconds(m_iTimeLimit)); }
    call_watchdog::overrun endWatch();
    [[nodiscard]] zk::ZkBool overrun(call_watchdog::overrun reason, const QString & late,
                                     const QString & large) const;
    void prepareLastWords();

    script_source m_source;
    int m_iTimeLimit;
    int m_iLineOfFunction;
    std::array<QByteArray, 3> m_lastWords; ///< by reason
    // The order matters: the engine goes before what its objects point to, and after the thread that stops
    // it.
    script_console m_console;
    std::unique_ptr<QJSEngine> m_pEngine;
    script_model m_model;
    QJSValue m_function;
    QJSValue m_evaluator; // undefined without a debugger
    call_watchdog::suspended m_held;
    call_watchdog m_watchdog;
};

} // namespace tools
