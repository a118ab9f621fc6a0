// The one file that uses what Qt keeps to itself.

#include "tools/line_debugger.h"

#include <QJSEngine>
#include <QObject>
#include <QScopedValueRollback>
#include <QUrl>

#include <private/qjsvalue_p.h>
#include <private/qv4context_p.h>
#include <private/qv4debugging_p.h>
#include <private/qv4engine_p.h>
#include <private/qv4function_p.h>
#include <private/qv4stackframe_p.h>

namespace tools {

namespace {

constexpr int MostFrames = 64;

class engine_debugger final : public QV4::Debugging::Debugger
{
public:
    engine_debugger(QV4::ExecutionEngine & engine, const QString & fileName,
                    const std::shared_ptr<line_stops> & stops)
        : m_engine(engine), m_sSource(QUrl::fromLocalFile(fileName).toString()), m_pStops(stops)
    {
    }

    [[nodiscard]] bool pauseAtNextOpportunity() const override
    {
        return m_pStops->isWatching && !m_pStops->isBusy &&
               (m_pStops->step != line_stops::run || !m_pStops->breakpoints.isEmpty());
    }
    void enteringFunction() override {}
    void leavingFunction(const QV4::ReturnedValue &) override {}
    void aboutToThrow() override {}
    void maybeBreakAtInstruction() override;

private:
    [[nodiscard]] bool isStop(int line) const;
    [[nodiscard]] qsizetype depth() const;
    [[nodiscard]] QList<script_frame> frames() const;
    [[nodiscard]] QList<script_variable> variablesOf(const QV4::CppStackFrame & frame) const;

    QV4::ExecutionEngine & m_engine;
    // How the engine names the file.
    QString m_sSource;
    std::shared_ptr<line_stops> m_pStops;
};

void engine_debugger::maybeBreakAtInstruction()
{
    const QV4::CppStackFrame * const frame = m_engine.currentStackFrame;
    // A negative line stands for the return from a function.
    const int line = frame ? frame->lineNumber() : 0;
    if (line <= 0 || frame->source() != m_sSource) {
        return;
    }
    if (isStop(line)) {
        m_pStops->step = line_stops::run;
        m_pStops->depth = depth();
        // The user may detach, which takes the function away, while it runs.
        const auto onStop = m_pStops->onStop;
        const QScopedValueRollback busy(m_pStops->isBusy, true);
        onStop(frames());
    }
}

bool engine_debugger::isStop(int line) const
{
    switch (m_pStops->step) {
    case line_stops::into:
        return true;
    case line_stops::over:
        if (depth() <= m_pStops->depth) {
            return true;
        }
        break;
    case line_stops::run:
        break;
    }
    return m_pStops->breakpoints.contains(line);
}

qsizetype engine_debugger::depth() const
{
    qsizetype result = 0;
    for (const QV4::CppStackFrame * frame = m_engine.currentStackFrame; frame; frame = frame->parentFrame()) {
        ++result;
    }
    return result;
}

QList<script_frame> engine_debugger::frames() const
{
    QList<script_frame> result;
    for (const QV4::CppStackFrame * frame = m_engine.currentStackFrame; frame && result.size() < MostFrames;
         frame = frame->parentFrame()) {
        if (frame->isJSTypesFrame() && frame->source() == m_sSource) {
            result.append({frame->function(), qAbs(frame->lineNumber()), variablesOf(*frame)});
        }
    }
    return result;
}

QList<script_variable> engine_debugger::variablesOf(const QV4::CppStackFrame & frame) const
{
    QList<script_variable> result;
    QSet<QString> known; // an inner name hides an outer one
    for (const QV4::Heap::ExecutionContext * context = frame.context()->d(); context;
         context = context->outer) {
        const bool hasNames = context->type == QV4::Heap::ExecutionContext::Type_CallContext ||
                              context->type == QV4::Heap::ExecutionContext::Type_BlockContext;
        if (!hasNames) {
            continue;
        }
        const auto * const call = static_cast<const QV4::Heap::CallContext *>(context);
        QV4::Heap::InternalClass * const names = context->internalClass;
        for (uint i = 0; i < names->size && i < call->locals.alloc; ++i) {
            const QString name = names->keyAt(i);
            const QV4::Value & value = call->locals.data()[i]; // a function's arguments follow its variables
            // An empty value belongs to a let or const that is not reached yet.
            if (!value.isEmpty() && !name.isEmpty() && !known.contains(name)) {
                known.insert(name);
                result.append({name, QJSValuePrivate::fromReturnedValue(value.asReturnedValue())});
            }
        }
        if (context->type == QV4::Heap::ExecutionContext::Type_CallContext) {
            break; // what lies outside of the function is the script's, not local
        }
    }
    return result;
}

} // namespace

class line_debugger_module : public QObject, public line_debugger
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KORVANE_LINE_DEBUGGER_IID FILE "line_debugger.json")
    Q_INTERFACES(tools::line_debugger)

public:
    void install(QJSEngine & engine, const QString & fileName,
                 const std::shared_ptr<line_stops> & stops) override
    {
        QV4::ExecutionEngine * const internals = engine.handle();
        internals->setDebugger(new engine_debugger(*internals, fileName, stops));
    }
};

} // namespace tools

#include "line_debugger_module.moc"
