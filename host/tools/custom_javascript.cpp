#include "tools/custom_javascript.h"

#include "context/ctx_project.h"
#include "plugin/base_interface.h"
#include "tools/call_watchdog.h"
#include "tools/line_debugger.h"
#include "tools/program_end.h"
#include "tools/scoped_in_event.h"
#include "tools/script_console.h"
#include "tools/script_debugger.h"
#include "tools/script_file.h"
#include "tools/script_limits.h"
#include "tools/script_objects.h"
#include "tools/script_values.h"
#include "tools/texts.h"

#include <QDir>
#include <QFileInfo>
#include <QJSManagedValue>
#include <QPointer>
#include <QRegularExpression>

#include <array>
#include <optional>

namespace tools {

namespace {

constexpr int LongestReason = 2000;

} // namespace

class custom_javascript::impl
{
public:
    zk::ZkBool load(const QString & scriptFile, plugin::base_interface * owner);
    zk::ZkBool execute(model::project * project, model::entity * entity, model::property * property,
                       model::enumeration * enumeration, const QHash<QString, QVariant> & parameters);
    zk::ZkBool debug();
    [[nodiscard]] bool isDebugging() const { return m_pDebugger && m_pDebugger->isAttached(); }
    void detach()
    {
        if (m_pDebugger) {
            m_pDebugger->detach();
        }
    }

    int timeLimit = timeLimitOfEnvironment().value_or(DefaultTimeLimit);
    bool isTimeLimitGiven = false;

private:
    // The order matters: the engine goes before what its objects point to, and after the thread that stops
    // it.
    struct running_script
    {
        running_script(plugin::base_interface * owner,
                       const std::function<void(call_watchdog::overrun)> & onDeaf)
            : console(owner), engine(std::make_unique<QJSEngine>()), model(*engine),
              watchdog([this] { engine->setInterrupted(true); }, onDeaf, MostMemory)
        {
        }
        ~running_script() { engine.reset(); }

        script_console console;
        std::unique_ptr<QJSEngine> engine;
        script_model model;
        QJSValue function;
        QJSValue evaluator; // undefined without a debugger
        call_watchdog::suspended held;
        call_watchdog watchdog;
    };

    zk::ZkBool start(const std::function<void(QJSEngine &)> & prepare, bool forDebugger);
    zk::ZkBool compile(bool forDebugger);
    script_evaluation evaluate(const QString & code, const QList<script_variable> & names);
    zk::ZkBool answer(const QJSValue & result, const QHash<QString, QVariant> & parameters) const;
    zk::ZkBool call(const QJSValueList & arguments, const QHash<QString, QVariant> & parameters);
    [[nodiscard]] zk::ZkBool failure(int line, const QString & reason) const;
    [[nodiscard]] zk::ZkBool exceptionFailure(const QJSValue & thrown, const QStringList & stack) const;
    void begin() { m_pScript->watchdog.begin(std::chrono::milliseconds(timeLimit)); }
    call_watchdog::overrun endWatch();
    [[nodiscard]] zk::ZkBool overrun(call_watchdog::overrun reason, const QString & late,
                                     const QString & large) const;
    void prepareLastWords();

    QPointer<plugin::base_interface> m_pOwner;
    std::unique_ptr<running_script> m_pScript;
    // Holds values of the script, which must go before it.
    std::unique_ptr<script_debugger> m_pDebugger;
    QString m_sFileName;
    QString m_sSource;
    std::array<QByteArray, 3> m_lastWords; ///< by reason
    int m_iLineOfFunction = 0;
    int m_iLineCount = 0;
    bool m_bRunning = false;
};

zk::ZkBool custom_javascript::impl::failure(int line, const QString & reason) const
{
    QString text = QDir::toNativeSeparators(m_sFileName);
    if (line > 0) {
        text += QLatin1Char(':') + QString::number(qMin(line, m_iLineCount));
    }
    return zk::ZkBool::failure(text + QStringLiteral(": ") + reason.left(LongestReason).simplified());
}

/// The failure of a call that was stopped for `reason`: `late`, of which %1 is the time limit in
/// milliseconds, or `large`.
zk::ZkBool custom_javascript::impl::overrun(call_watchdog::overrun reason, const QString & late,
                                            const QString & large) const
{
    return failure(m_iLineOfFunction, reason == call_watchdog::overrun::time ? late.arg(timeLimit) : large);
}

/// Ends the watch over a call that has returned; what it was stopped for.
call_watchdog::overrun custom_javascript::impl::endWatch()
{
    const call_watchdog::overrun reason = m_pScript->watchdog.end();
    if (reason != call_watchdog::overrun::none) {
        m_pScript->engine->setInterrupted(false);
        m_pScript->engine->catchError();
    }
    return reason;
}

/// What the program says when it has to end for a script that heeds no interrupt: in a want of memory there
/// may be no way to put it together.
void custom_javascript::impl::prepareLastWords()
{
    for (const auto reason : {call_watchdog::overrun::time, call_watchdog::overrun::memory}) {
        m_lastWords[static_cast<size_t>(reason)] =
            overrun(reason,
                    texts::tr("the custom script did not end within %1 ms and could not be stopped; the "
                              "program was ended"),
                    texts::tr("the custom script used more than 1 GiB of memory and could not be stopped; "
                              "the program was ended"))
                .getDesc()
                .toLocal8Bit();
    }
}

/// The failure of a value that was thrown; unlike an error's own "lineNumber" the stack is there for every
/// value.
zk::ZkBool custom_javascript::impl::exceptionFailure(const QJSValue & thrown, const QStringList & stack) const
{
    static const QRegularExpression frame(QStringLiteral("^.*?:([1-9]\\d*):-?\\d+:."));
    for (const QString & entry : stack) {
        if (const QRegularExpressionMatch match = frame.match(entry); match.hasMatch()) {
            return failure(match.captured(1).toInt(), thrown.toString());
        }
    }
    return failure(m_iLineOfFunction, thrown.toString());
}

zk::ZkBool custom_javascript::impl::load(const QString & scriptFile, plugin::base_interface * owner)
{
    if (m_bRunning) {
        return zk::ZkBool::failure(texts::tr("The custom script cannot be reloaded while it is running"));
    }
    if (!isTimeLimitGiven && !timeLimitOfEnvironment()) {
        return zk::ZkBool::failure(badTimeLimit());
    }
    m_pDebugger.reset();
    m_pScript.reset();
    m_pOwner = owner;
    m_sFileName = context::ctx_project::getSingleton().getPathFromProjectFile(scriptFile);
    if (m_sFileName.isEmpty()) {
        return zk::ZkBool::failure(texts::tr("No custom script file is given"));
    }
    m_sFileName = QFileInfo(m_sFileName).absoluteFilePath();
    QString reason;
    const std::optional<QString> source = readScript(m_sFileName, reason);
    if (!source) {
        return failure(0, texts::tr("the custom script cannot be read: %1").arg(reason));
    }
    m_sSource = *source;
    return start(nullptr, false);
}

/// Runs the script in an engine of its own, after `prepare` was called for it if there is one.
zk::ZkBool custom_javascript::impl::start(const std::function<void(QJSEngine &)> & prepare, bool forDebugger)
{
    m_pScript = std::make_unique<running_script>(m_pOwner, [this](call_watchdog::overrun reason) {
        endProgram(m_lastWords[static_cast<size_t>(reason)].constData());
    });
    if (prepare) {
        prepare(*m_pScript->engine);
    }
    m_pScript->console.install(*m_pScript->engine);
    const scoped_in_event running(m_bRunning, true, 0);
    const zk::ZkBool compiled = compile(forDebugger);
    if (!compiled) {
        m_pScript.reset();
    }
    return compiled;
}

zk::ZkBool custom_javascript::impl::compile(bool forDebugger)
{
    m_iLineOfFunction = lineOfFunction(m_sSource);
    m_iLineCount = static_cast<int>(m_sSource.count(QLatin1Char('\n'))) + 1;
    prepareLastWords();
    begin();
    QStringList stack;
    const QJSValue value =
        m_pScript->engine->evaluate(programOf(m_sSource, forDebugger), m_sFileName, 1, &stack);
    const QJSValue function = forDebugger && stack.isEmpty() ? value.property(0) : value;
    zk::ZkBool result = zk::ZkBool::success();
    if (!stack.isEmpty()) {
        result = exceptionFailure(value, stack);
    } else if (!function.isCallable()) {
        result = failure(0, texts::tr("the custom script defines no function exportStep(project, entity, "
                                      "property, enumeration, parameters)"));
    }
    if (result) {
        m_pScript->function = withBoundedText(*m_pScript->engine, function);
    }
    m_pScript->evaluator = forDebugger && stack.isEmpty() ? value.property(1) : QJSValue();
    const call_watchdog::overrun reason = endWatch();
    return reason == call_watchdog::overrun::none
               ? result
               : overrun(reason, texts::tr("loading the custom script did not end within %1 ms"),
                         texts::tr("loading the custom script used more than 1 GiB of memory"));
}

zk::ZkBool custom_javascript::impl::execute(model::project * project, model::entity * entity,
                                            model::property * property, model::enumeration * enumeration,
                                            const QHash<QString, QVariant> & parameters)
{
    if (!m_pScript) {
        return zk::ZkBool::failure(texts::tr("No custom script is loaded"));
    }
    if (m_bRunning) {
        return zk::ZkBool::failure(texts::tr("The custom script is running already"));
    }
    const scoped_in_event running(m_bRunning, true, 0);
    script_model & objects = m_pScript->model;
    objects.beginCall();
    QJSValue parametersObject = m_pScript->engine->newObject();
    for (auto it = parameters.constBegin(); it != parameters.constEnd(); ++it) {
        parametersObject.setProperty(it.key(), m_pScript->engine->toScriptValue(it.value()));
    }
    const QJSValueList arguments = {objects.wrapCallers(project), objects.wrapCallers(entity),
                                    objects.wrapCallers(property), objects.wrapCallers(enumeration),
                                    parametersObject};
    if (isDebugging()) {
        m_pDebugger->beforeStep(describeStep(project, entity, property, enumeration, parameters, arguments),
                                m_iLineOfFunction);
    }
    begin();
    zk::ZkBool result = call(arguments, parameters);
    if (const call_watchdog::overrun reason = endWatch(); reason != call_watchdog::overrun::none) {
        result = overrun(reason, texts::tr("exportStep did not end within %1 ms"),
                         texts::tr("exportStep used more than 1 GiB of memory"));
    }
    if (isDebugging()) {
        m_pDebugger->afterStep(result.getDesc(), !result, m_iLineOfFunction);
    }
    objects.endCall();
    return result;
}

zk::ZkBool custom_javascript::impl::call(const QJSValueList & arguments,
                                         const QHash<QString, QVariant> & parameters)
{
    // QJSValue::call() would hand over what was thrown as if it had been returned.
    const QJSManagedValue function(m_pScript->function, m_pScript->engine.get());
    const QJSValue result = function.call(arguments);
    if (!m_pScript->engine->hasError()) {
        return answer(result, parameters);
    }
    // An evaluation ends with the exception that is pending, and tells its stack.
    QStringList stack;
    const QJSValue thrown = m_pScript->engine->evaluate(QStringLiteral("0"), QString(), 1, &stack);
    return exceptionFailure(thrown, stack);
}

/// What the step shall write, by what the script returned.
zk::ZkBool custom_javascript::impl::answer(const QJSValue & result,
                                           const QHash<QString, QVariant> & parameters) const
{
    if (result.isString()) {
        return zk::ZkBool::success(result.toString());
    }
    if (result.isUndefined() || result.isNull()) {
        return zk::ZkBool::success(parameters.value(step_parameter::DefaultValue).toString());
    }
    return failure(m_iLineOfFunction,
                   texts::tr("exportStep returned %1 for the action %2; expected a string, "
                             "undefined or null")
                       .arg(kindOf(result), parameters.value(step_parameter::Action).toString()));
}

zk::ZkBool custom_javascript::impl::debug()
{
    if (!m_pScript) {
        return zk::ZkBool::failure(texts::tr("No custom script is loaded"));
    }
    if (isDebugging()) {
        m_pDebugger->showWindow();
        return zk::ZkBool::success();
    }
    if (m_bRunning) {
        return zk::ZkBool::failure(texts::tr("The script debugger cannot be attached to a running script"));
    }
    if (!script_debugger::hasDisplay()) {
        return zk::ZkBool::failure(
            texts::tr("The script debugger needs a display, and the program has none"));
    }
    m_pDebugger.reset();
    script_debugger::engine_access access;
    line_debugger * const debugger = loadLineDebugger(access.whyNoLines);
    access.lines = debugger ? std::make_shared<line_stops>() : nullptr;
    const auto stopAtLines = [&](QJSEngine & engine) {
        if (debugger) {
            debugger->install(engine, m_sFileName, access.lines);
        }
    };
    if (const zk::ZkBool started = start(stopAtLines, true); !started) {
        return started;
    }
    access.evaluate = [this](const QString & code, const QList<script_variable> & names) {
        return evaluate(code, names);
    };
    access.suspendTimeLimit = [this] { m_pScript->held = m_pScript->watchdog.suspend(); };
    access.resumeTimeLimit = [this] { m_pScript->watchdog.resume(m_pScript->held); };
    m_pDebugger = std::make_unique<script_debugger>(m_sFileName, m_sSource, std::move(access));
    return zk::ZkBool::success();
}

/// Evaluates `code` where it sees `names`, which are all different, and what the script has defined.
script_evaluation custom_javascript::impl::evaluate(const QString & code,
                                                    const QList<script_variable> & names)
{
    static const QRegularExpression identifier(
        QStringLiteral("^(?!(?:arguments|eval|this)$)[\\p{L}_$][\\p{L}\\p{N}_$]*$"));
    QJSEngine & engine = *m_pScript->engine;
    QJSValue nameArray = engine.newArray();
    QJSValue valueArray = engine.newArray();
    quint32 count = 0;
    for (const script_variable & variable : names) {
        if (identifier.match(variable.name).hasMatch()) {
            nameArray.setProperty(count, variable.name);
            valueArray.setProperty(count, variable.value);
            ++count;
        }
    }
    const call_watchdog::suspended outer = m_pScript->watchdog.suspend();
    begin();
    const QJSManagedValue evaluator(m_pScript->evaluator, &engine);
    const QJSValue value = evaluator.call({nameArray, valueArray, code});
    script_evaluation result{!engine.hasError(), QString()};
    result.text = result.ok ? describe(value) : engine.catchError().toString();
    if (const call_watchdog::overrun reason = endWatch(); reason != call_watchdog::overrun::none) {
        result = {false, reason == call_watchdog::overrun::time
                             ? texts::tr("it did not end within %1 ms").arg(timeLimit)
                             : texts::tr("it used more than 1 GiB of memory")};
    }
    m_pScript->watchdog.resume(outer);
    return result;
}

custom_javascript::custom_javascript() : m_pImpl(std::make_shared<impl>()) {}

custom_javascript::~custom_javascript()
{
    // When a debugger holds a call, the call goes on to its end and only then is all gone.
    m_pImpl->detach();
}

void custom_javascript::setTimeLimit(int milliseconds)
{
    m_pImpl->timeLimit = milliseconds;
    m_pImpl->isTimeLimitGiven = true;
}

int custom_javascript::getTimeLimit() const
{
    return m_pImpl->timeLimit;
}

zk::ZkBool custom_javascript::initEngine(const QString & scriptFile, plugin::base_interface * owner)
{
    return m_pImpl->load(scriptFile, owner);
}

zk::ZkBool custom_javascript::runDebugger()
{
    return m_pImpl->debug();
}

bool custom_javascript::isDebugging() const
{
    return m_pImpl->isDebugging();
}

zk::ZkBool custom_javascript::executeScript(model::project * project, model::entity * entity,
                                            model::property * property, model::enumeration * enumeration,
                                            const QHash<QString, QVariant> & parameters)
{
    const std::shared_ptr<impl> untilEnd = m_pImpl;
    return untilEnd->execute(project, entity, property, enumeration, parameters);
}

} // namespace tools
