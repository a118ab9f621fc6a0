#include "tools/custom_javascript.h"

#include "context/ctx_project.h"
#include "plugin/base_interface.h"
#include "tools/call_watchdog.h"
#include "tools/scoped_in_event.h"
#include "tools/script_console.h"
#include "tools/script_objects.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJSManagedValue>
#include <QRegularExpression>
#include <QStringDecoder>

#include <optional>

namespace tools {

namespace {

constexpr qint64 LargestScript = 16 * 1024 * 1024;
constexpr int LongestReason = 2000;
constexpr int DefaultTimeLimit = 10000;

int defaultTimeLimit()
{
    bool isNumber = false;
    const int given = qEnvironmentVariableIntValue("KORVANE_SCRIPT_TIMEOUT_MS", &isNumber);
    return isNumber ? given : DefaultTimeLimit;
}

/// The whole script as text; an empty optional and `reason` when it cannot be had.
std::optional<QString> readScript(const QString & fileName, QString & reason)
{
    const QFileInfo info(fileName);
    if (!info.exists()) {
        reason = QStringLiteral("the file does not exist");
        return {};
    }
    if (!info.isFile()) {
        reason = info.isDir() ? QStringLiteral("it is a folder, not a file")
                              : QStringLiteral("it is not a regular file");
        return {};
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        reason = file.errorString();
        return {};
    }
    const QByteArray bytes = file.read(LargestScript + 1);
    if (file.error() != QFileDevice::NoError) {
        reason = file.errorString();
        return {};
    }
    if (bytes.size() > LargestScript) {
        reason = QStringLiteral("it is larger than %1 MiB").arg(LargestScript / 1024 / 1024);
        return {};
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (decoder.hasError()) {
        reason = QStringLiteral("it is not UTF-8 text");
        return {};
    }
    return text;
}

/// Where `exportStep` first stands as something that is defined; what has no better place is reported there.
int lineOfFunction(const QString & source)
{
    static const QRegularExpression definition(
        QStringLiteral("function\\s+exportStep\\b|\\bexportStep\\s*="));
    const qsizetype at = source.indexOf(definition);
    return at < 0 ? 0 : static_cast<int>(QStringView(source).left(at).count(QLatin1Char('\n'))) + 1;
}

QString kindOf(const QJSValue & value)
{
    if (value.isBool()) {
        return QStringLiteral("a boolean");
    }
    if (value.isNumber()) {
        return QStringLiteral("a number");
    }
    if (value.isCallable()) {
        return QStringLiteral("a function");
    }
    return value.isArray() ? QStringLiteral("an array") : QStringLiteral("an object");
}

} // namespace

class custom_javascript::impl
{
public:
    zk::ZkBool load(const QString & scriptFile, plugin::base_interface * owner);
    zk::ZkBool execute(model::project * project, model::entity * entity, model::property * property,
                       model::enumeration * enumeration, const QHash<QString, QVariant> & parameters);

    int timeLimit = defaultTimeLimit();

private:
    // The order matters: the engine goes before what its objects point to, and after the thread that stops
    // it.
    struct running_script
    {
        explicit running_script(plugin::base_interface * owner)
            : console(owner), engine(std::make_unique<QJSEngine>()), model(*engine),
              watchdog([this] { engine->setInterrupted(true); })
        {
            console.install(*engine);
        }
        ~running_script() { engine.reset(); }

        script_console console;
        std::unique_ptr<QJSEngine> engine;
        script_model model;
        QJSValue function;
        call_watchdog watchdog;
    };

    zk::ZkBool compile(const QString & source);
    zk::ZkBool answer(const QJSValue & result, const QHash<QString, QVariant> & parameters) const;
    zk::ZkBool call(const QJSValueList & arguments, const QHash<QString, QVariant> & parameters);
    [[nodiscard]] zk::ZkBool failure(int line, const QString & reason) const;
    [[nodiscard]] zk::ZkBool exceptionFailure(const QJSValue & thrown, const QStringList & stack) const;
    void begin() { m_pScript->watchdog.begin(std::chrono::milliseconds(timeLimit)); }
    bool endedInTime();
    [[nodiscard]] zk::ZkBool overrun(const QString & what) const;

    std::unique_ptr<running_script> m_pScript;
    QString m_sFileName;
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

zk::ZkBool custom_javascript::impl::overrun(const QString & what) const
{
    return failure(m_iLineOfFunction, QStringLiteral("%1 did not end within %2 ms").arg(what).arg(timeLimit));
}

/// Ends the watch over a call that has returned; false when it was stopped for its time.
bool custom_javascript::impl::endedInTime()
{
    const bool overran = m_pScript->watchdog.end();
    if (overran) {
        m_pScript->engine->setInterrupted(false);
        m_pScript->engine->catchError();
    }
    return !overran;
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
        return zk::ZkBool::failure(QStringLiteral("The custom script cannot be loaded anew while it runs"));
    }
    m_pScript.reset();
    m_sFileName = context::ctx_project::getSingleton().getPathFromProjectFile(scriptFile);
    if (m_sFileName.isEmpty()) {
        return zk::ZkBool::failure(QStringLiteral("No custom script file is given"));
    }
    m_sFileName = QFileInfo(m_sFileName).absoluteFilePath();
    QString reason;
    const std::optional<QString> source = readScript(m_sFileName, reason);
    if (!source) {
        return failure(0, QStringLiteral("the custom script cannot be read: ") + reason);
    }
    m_pScript = std::make_unique<running_script>(owner);
    const scoped_in_event running(m_bRunning, true, 0);
    const zk::ZkBool compiled = compile(*source);
    if (!compiled) {
        m_pScript.reset();
    }
    return compiled;
}

zk::ZkBool custom_javascript::impl::compile(const QString & source)
{
    m_iLineOfFunction = lineOfFunction(source);
    m_iLineCount = static_cast<int>(source.count(QLatin1Char('\n'))) + 1;
    // The look-up belongs to the same program: a function bound by const or let is visible nowhere else.
    const QString program =
        source + QStringLiteral("\n;typeof exportStep === 'function' ? exportStep : undefined");
    begin();
    QStringList stack;
    const QJSValue function = m_pScript->engine->evaluate(program, m_sFileName, 1, &stack);
    zk::ZkBool result = zk::ZkBool::success();
    if (!stack.isEmpty()) {
        result = exceptionFailure(function, stack);
    } else if (!function.isCallable()) {
        result =
            failure(0, QStringLiteral("the custom script defines no function exportStep(project, entity, "
                                      "property, enumeration, parameters)"));
    }
    m_pScript->function = function;
    return endedInTime() ? result : overrun(QStringLiteral("loading the custom script"));
}

zk::ZkBool custom_javascript::impl::execute(model::project * project, model::entity * entity,
                                            model::property * property, model::enumeration * enumeration,
                                            const QHash<QString, QVariant> & parameters)
{
    if (!m_pScript) {
        return zk::ZkBool::failure(QStringLiteral("No custom script is loaded"));
    }
    if (m_bRunning) {
        return zk::ZkBool::failure(QStringLiteral("The custom script is running already"));
    }
    const scoped_in_event running(m_bRunning, true, 0);
    script_model & objects = m_pScript->model;
    objects.beginCall();
    QJSValue parametersObject = m_pScript->engine->newObject();
    for (auto it = parameters.constBegin(); it != parameters.constEnd(); ++it) {
        parametersObject.setProperty(it.key(), m_pScript->engine->toScriptValue(it.value()));
    }
    begin();
    zk::ZkBool result =
        call({objects.wrapCallers(project), objects.wrapCallers(entity), objects.wrapCallers(property),
              objects.wrapCallers(enumeration), parametersObject},
             parameters);
    const bool inTime = endedInTime();
    objects.endCall();
    return inTime ? result : overrun(QStringLiteral("exportStep"));
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
        return zk::ZkBool::success(parameters.value(QStringLiteral("default_value")).toString());
    }
    return failure(m_iLineOfFunction,
                   QStringLiteral("exportStep returned %1 for the action %2; a text, undefined or null was "
                                  "expected")
                       .arg(kindOf(result), parameters.value(QStringLiteral("action")).toString()));
}

custom_javascript::custom_javascript() : m_pImpl(std::make_unique<impl>()) {}
custom_javascript::~custom_javascript() = default;

void custom_javascript::setTimeLimit(int milliseconds)
{
    m_pImpl->timeLimit = milliseconds;
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
    return zk::ZkBool::failure(QStringLiteral("The script debugger is not part of this build"));
}

bool custom_javascript::isDebugging() const
{
    return false;
}

zk::ZkBool custom_javascript::executeScript(model::project * project, model::entity * entity,
                                            model::property * property, model::enumeration * enumeration,
                                            const QHash<QString, QVariant> & parameters)
{
    return m_pImpl->execute(project, entity, property, enumeration, parameters);
}

} // namespace tools
