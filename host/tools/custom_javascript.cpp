#include "tools/custom_javascript.h"

#include "context/ctx_project.h"
#include "plugin/base_interface.h"
#include "tools/line_debugger.h"
#include "tools/running_script.h"
#include "tools/scoped_in_event.h"
#include "tools/script_debugger.h"
#include "tools/script_file.h"
#include "tools/script_limits.h"
#include "tools/script_values.h"
#include "tools/texts.h"

#include <QFileInfo>
#include <QPointer>

#include <optional>

namespace tools {

namespace {

using zk::ZkBool; // where it is qualified, lupdate loses the namespace of the text

ZkBool noScript()
{
    return ZkBool::failure(texts::tr("No custom script is loaded"));
}

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

    void setTimeLimit(int milliseconds);
    [[nodiscard]] int getTimeLimit() const { return m_iTimeLimit; }

private:
    zk::ZkBool start(const std::function<void(QJSEngine &)> & prepare, bool forDebugger);

    QPointer<plugin::base_interface> m_pOwner;
    std::unique_ptr<running_script> m_pScript;
    // Holds values of the script, which must go before it.
    std::unique_ptr<script_debugger> m_pDebugger;
    script_source m_source;
    int m_iTimeLimit = timeLimitOfEnvironment().value_or(DefaultTimeLimit);
    bool m_bTimeLimitGiven = false;
    bool m_bRunning = false;
};

void custom_javascript::impl::setTimeLimit(int milliseconds)
{
    m_iTimeLimit = milliseconds;
    m_bTimeLimitGiven = true;
    if (m_pScript) {
        m_pScript->setTimeLimit(milliseconds);
    }
}

zk::ZkBool custom_javascript::impl::load(const QString & scriptFile, plugin::base_interface * owner)
{
    if (m_bRunning) {
        return zk::ZkBool::failure(texts::tr("The custom script cannot be reloaded while it is running"));
    }
    if (!m_bTimeLimitGiven && !timeLimitOfEnvironment()) {
        return zk::ZkBool::failure(badTimeLimit());
    }
    m_pDebugger.reset();
    m_pScript.reset();
    m_pOwner = owner;
    const QString file = context::ctx_project::getSingleton().getPathFromProjectFile(scriptFile);
    if (file.isEmpty()) {
        return zk::ZkBool::failure(texts::tr("No custom script file is given"));
    }
    m_source = {QFileInfo(file).absoluteFilePath(), QString()};
    QString reason;
    const std::optional<QString> code = readScript(m_source.fileName, reason);
    if (!code) {
        return m_source.failure(0, texts::tr("the custom script cannot be read: %1").arg(reason));
    }
    m_source.code = *code;
    return start(nullptr, false);
}

/// Runs the script in an engine of its own, after `prepare` was called for it if there is one.
zk::ZkBool custom_javascript::impl::start(const std::function<void(QJSEngine &)> & prepare, bool forDebugger)
{
    m_pScript = std::make_unique<running_script>(m_source, m_iTimeLimit, m_pOwner);
    if (prepare) {
        prepare(m_pScript->engine());
    }
    const scoped_in_event running(m_bRunning, true, 0);
    const zk::ZkBool compiled = m_pScript->compile(forDebugger);
    if (!compiled) {
        m_pScript.reset();
    }
    return compiled;
}

zk::ZkBool custom_javascript::impl::execute(model::project * project, model::entity * entity,
                                            model::property * property, model::enumeration * enumeration,
                                            const QHash<QString, QVariant> & parameters)
{
    if (!m_pScript) {
        return noScript();
    }
    if (m_bRunning) {
        return zk::ZkBool::failure(texts::tr("The custom script is running already"));
    }
    const scoped_in_event running(m_bRunning, true, 0);
    const QJSValueList arguments = m_pScript->beginStep(project, entity, property, enumeration, parameters);
    if (isDebugging()) {
        m_pDebugger->beforeStep(describeStep(project, entity, property, enumeration, parameters, arguments),
                                m_pScript->lineOfStep());
    }
    zk::ZkBool result = m_pScript->step(arguments, parameters);
    if (isDebugging()) {
        m_pDebugger->afterStep(result.getDesc(), !result, m_pScript->lineOfStep());
    }
    m_pScript->endStep();
    return result;
}

zk::ZkBool custom_javascript::impl::debug()
{
    if (!m_pScript) {
        return noScript();
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
            debugger->install(engine, m_source.fileName, access.lines);
        }
    };
    if (const zk::ZkBool started = start(stopAtLines, true); !started) {
        return started;
    }
    access.evaluate = [this](const QString & code, const QList<script_variable> & names) {
        return m_pScript->evaluate(code, names);
    };
    access.suspendTimeLimit = [this] { m_pScript->suspendTimeLimit(); };
    access.resumeTimeLimit = [this] { m_pScript->resumeTimeLimit(); };
    m_pDebugger = std::make_unique<script_debugger>(m_source.fileName, m_source.code, std::move(access));
    return zk::ZkBool::success();
}

custom_javascript::custom_javascript() : m_pImpl(std::make_shared<impl>()) {}

custom_javascript::~custom_javascript()
{
    // When a debugger holds a call, the call goes on to its end and only then is all gone.
    m_pImpl->detach();
}

void custom_javascript::setTimeLimit(int milliseconds)
{
    m_pImpl->setTimeLimit(milliseconds);
}

int custom_javascript::getTimeLimit() const
{
    return m_pImpl->getTimeLimit();
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
