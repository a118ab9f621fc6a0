#include "tools/running_script.h"

#include "os/program_end.h"
#include "tools/custom_javascript.h"
#include "tools/script_file.h"
#include "tools/script_limits.h"
#include "tools/script_values.h"
#include "tools/texts.h"
#include "zk/one_line.h"

#include <QDir>
#include <QJSManagedValue>
#include <QRegularExpression>

namespace tools {

namespace {

constexpr int LongestReason = 2000;

} // namespace

zk::ZkBool script_source::failure(int line, const QString & reason) const
{
    QString text = QDir::toNativeSeparators(fileName);
    if (line > 0) {
        const int lineCount = static_cast<int>(code.count(QLatin1Char('\n'))) + 1;
        text += QLatin1Char(':') + QString::number(qMin(line, lineCount));
    }
    return zk::ZkBool::failure(text + QStringLiteral(": ") + zk::oneLine(reason.left(LongestReason)));
}

running_script::running_script(const script_source & source, int timeLimit, plugin::base_interface * owner)
    : m_source(source), m_iTimeLimit(timeLimit), m_iLineOfFunction(lineOfFunction(source.code)),
      m_console(owner), m_pEngine(std::make_unique<QJSEngine>()), m_model(*m_pEngine),
      m_watchdog([this] { m_pEngine->setInterrupted(true); },
                 [this](call_watchdog::overrun reason) {
                     os::endProgram(m_lastWords[static_cast<size_t>(reason)].constData());
                 },
                 MostMemory)
{
    prepareLastWords();
}

running_script::~running_script()
{
    m_pEngine.reset();
}

/// The failure of a call that was stopped for `reason`: `late`, of which %1 is the time limit in
/// milliseconds, or `large`.
zk::ZkBool running_script::overrun(call_watchdog::overrun reason, const QString & late,
                                   const QString & large) const
{
    return m_source.failure(m_iLineOfFunction,
                            reason == call_watchdog::overrun::time ? late.arg(m_iTimeLimit) : large);
}

/// Ends the watch over a call that has returned; what it was stopped for.
call_watchdog::overrun running_script::endWatch()
{
    const call_watchdog::overrun reason = m_watchdog.end();
    if (reason != call_watchdog::overrun::none) {
        m_pEngine->setInterrupted(false);
        m_pEngine->catchError();
    }
    return reason;
}

/// What the program says when it has to end for a script that heeds no interrupt: in a want of memory there
/// may be no way to put it together.
void running_script::prepareLastWords()
{
    for (const auto reason : {call_watchdog::overrun::time, call_watchdog::overrun::memory}) {
        m_lastWords[static_cast<size_t>(reason)] =
            overrun(reason,
                    texts::tr("the custom script did not end within %1 ms and could not be stopped; "
                              "the program was ended"),
                    texts::tr("the custom script used more than 1 GiB of memory and could not be stopped; "
                              "the program was ended"))
                .getDesc()
                .toLocal8Bit();
    }
}

/// The failure of a value that was thrown; unlike an error's own "lineNumber" the stack is there for every
/// value.
zk::ZkBool running_script::exceptionFailure(const QJSValue & thrown, const QStringList & stack) const
{
    static const QRegularExpression frame(QStringLiteral("^.*?:([1-9]\\d*):-?\\d+:."));
    for (const QString & entry : stack) {
        if (const QRegularExpressionMatch match = frame.match(entry); match.hasMatch()) {
            return m_source.failure(match.captured(1).toInt(), thrown.toString());
        }
    }
    return m_source.failure(m_iLineOfFunction, thrown.toString());
}

zk::ZkBool running_script::compile(bool forDebugger)
{
    m_console.install(*m_pEngine);
    begin();
    QStringList stack;
    const QJSValue value =
        m_pEngine->evaluate(programOf(m_source.code, forDebugger), m_source.fileName, 1, &stack);
    const QJSValue function = forDebugger && stack.isEmpty() ? value.property(0) : value;
    zk::ZkBool result = zk::ZkBool::success();
    if (!stack.isEmpty()) {
        result = exceptionFailure(value, stack);
    } else if (!function.isCallable()) {
        result =
            m_source.failure(0, texts::tr("the custom script defines no function "
                                          "exportStep(project, entity, property, enumeration, parameters)"));
    }
    if (result) {
        m_function = withBoundedText(*m_pEngine, function);
    }
    m_evaluator = forDebugger && stack.isEmpty() ? value.property(1) : QJSValue();
    const call_watchdog::overrun reason = endWatch();
    return reason == call_watchdog::overrun::none
               ? result
               : overrun(reason, texts::tr("loading the custom script did not end within %1 ms"),
                         texts::tr("loading the custom script used more than 1 GiB of memory"));
}

QJSValueList running_script::beginStep(model::project * project, model::entity * entity,
                                       model::property * property, model::enumeration * enumeration,
                                       const QHash<QString, QVariant> & parameters)
{
    m_model.beginCall();
    QJSValue parametersObject = m_pEngine->newObject();
    for (auto it = parameters.constBegin(); it != parameters.constEnd(); ++it) {
        parametersObject.setProperty(it.key(), m_pEngine->toScriptValue(it.value()));
    }
    return {m_model.wrapCallers(project), m_model.wrapCallers(entity), m_model.wrapCallers(property),
            m_model.wrapCallers(enumeration), parametersObject};
}

zk::ZkBool running_script::step(const QJSValueList & arguments, const QHash<QString, QVariant> & parameters)
{
    begin();
    const zk::ZkBool result = call(arguments, parameters);
    const call_watchdog::overrun reason = endWatch();
    return reason == call_watchdog::overrun::none
               ? result
               : overrun(reason, texts::tr("exportStep did not end within %1 ms"),
                         texts::tr("exportStep used more than 1 GiB of memory"));
}

zk::ZkBool running_script::call(const QJSValueList & arguments, const QHash<QString, QVariant> & parameters)
{
    // QJSValue::call() would hand over what was thrown as if it had been returned.
    const QJSManagedValue function(m_function, m_pEngine.get());
    const QJSValue result = function.call(arguments);
    if (!m_pEngine->hasError()) {
        return answer(result, parameters);
    }
    // An evaluation ends with the exception that is pending, and tells its stack.
    QStringList stack;
    const QJSValue thrown = m_pEngine->evaluate(QStringLiteral("0"), QString(), 1, &stack);
    return exceptionFailure(thrown, stack);
}

/// What the step shall write, by what the script returned.
zk::ZkBool running_script::answer(const QJSValue & result, const QHash<QString, QVariant> & parameters) const
{
    if (result.isString()) {
        return zk::ZkBool::success(result.toString());
    }
    if (result.isUndefined() || result.isNull()) {
        return zk::ZkBool::success(parameters.value(step_parameter::DefaultValue).toString());
    }
    return m_source.failure(m_iLineOfFunction,
                            texts::tr("exportStep returned %1 for the action %2; "
                                      "expected a string, undefined or null")
                                .arg(kindOf(result), parameters.value(step_parameter::Action).toString()));
}

/// Evaluates `code` where it sees `names`, which are all different, and what the script has defined.
script_evaluation running_script::evaluate(const QString & code, const QList<script_variable> & names)
{
    static const QRegularExpression identifier(
        QStringLiteral("^(?!(?:arguments|eval|this)$)[\\p{L}_$][\\p{L}\\p{N}_$]*$"));
    QJSEngine & engine = *m_pEngine;
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
    const call_watchdog::suspended outer = m_watchdog.suspend();
    begin();
    const QJSManagedValue evaluator(m_evaluator, &engine);
    const QJSValue value = evaluator.call({nameArray, valueArray, code});
    script_evaluation result{!engine.hasError(), QString()};
    result.text = result.ok ? describe(value) : engine.catchError().toString();
    if (const call_watchdog::overrun reason = endWatch(); reason != call_watchdog::overrun::none) {
        result = {false, reason == call_watchdog::overrun::time
                             ? texts::tr("it did not end within %1 ms").arg(m_iTimeLimit)
                             : texts::tr("it used more than 1 GiB of memory")};
    }
    m_watchdog.resume(outer);
    return result;
}

} // namespace tools
