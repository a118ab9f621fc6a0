#include "tools/script_console.h"

#include "plugin/base_interface.h"

#include <QJSEngine>

namespace tools {

namespace {

// Plain objects are shown as JSON; everything else as JavaScript turns it into text.
const char ConsoleSource[] = R"js((function (sink, progress, error) {
    'use strict';
    function text(value) {
        try {
            const plain = String(value);
            return plain === '[object Object]' ? JSON.stringify(value) : plain;
        } catch (e) {
            return Object.prototype.toString.call(value);
        }
    }
    function writer(type) {
        return function (...values) { sink.write(type, values.map(text).join(' ')); };
    }
    return {
        log: writer(progress), info: writer(progress), debug: writer(progress), warn: writer(progress),
        error: writer(error)
    };
}))js";

} // namespace

script_console::script_console(plugin::base_interface * owner) : m_pOwner(owner) {}
script_console::~script_console() = default;

void script_console::install(QJSEngine & engine)
{
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    QJSValue makeConsole = engine.evaluate(QString::fromLatin1(ConsoleSource));
    engine.globalObject().setProperty(
        QStringLiteral("console"),
        makeConsole.call({engine.newQObject(this), plugin::ProgressMessage, plugin::ErrorMessage}));
}

void script_console::write(int type, const QString & text)
{
    if (m_pOwner) {
        Q_EMIT m_pOwner->onMessage(text, type, plugin::MessageTimeout);
    }
}

} // namespace tools
