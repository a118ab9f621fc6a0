// The step that every statement takes: its text, the user's script, the sink, the message.

#include "plugin/builder/ddl_export_script.h"

#include "plugin/base_interface.h"
#include "plugin/builder/ddl_export_builder.h"

#include "model/entity.h"
#include "model/property.h"
#include "model/relationship.h"
#include "tools/custom_javascript.h"

namespace plugin {

namespace {

long idOf(const model::persistable * object)
{
    return object ? object->getId() : 0;
}

} // namespace

ddl_export_script::ddl_export_script(ddl_export_builder & builder, std::unique_ptr<statement_sink> sink,
                                     const QString & fileName, const QString & title, const origin & from)
    : m_builder(builder), m_pSink(std::move(sink)), m_sFileName(fileName), m_sTitle(title), m_origin(from)
{
}

zk::ZkBool ddl_export_script::open()
{
    if (!m_pSink->open()) {
        return failure(ddl_export_builder::tr("An error occurred opening SQL file : %1").arg(m_sFileName),
                       m_pSink->reason());
    }
    m_parameters.insert(tools::step_parameter::PluginName, m_origin.pluginName);
    m_parameters.insert(tools::step_parameter::CurrentFile, m_sFileName);
    m_parameters.insert(tools::step_parameter::OutputLocation, m_origin.outputLocation);
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_script::write(statement_action action, const QString & sql, const QString & message,
                                    const subject & about)
{
    if (m_origin.isStopWanted()) {
        return stopped();
    }
    QString text = sql;
    if (m_origin.customScript) {
        m_parameters.insert(tools::step_parameter::DefaultValue, sql);
        m_parameters.insert(tools::step_parameter::Action, QString(actionName(action)));
        const zk::ZkBool replaced = m_origin.customScript->executeScript(
            m_origin.project, about.entity, about.property, nullptr, m_parameters);
        if (!replaced) {
            return failure(replaced.getDesc(), {});
        }
        text = replaced.getDesc();
    }
    if (!m_pSink->take(
            {action, text, sql, idOf(about.entity), idOf(about.property), idOf(about.relationship)})) {
        return writeFailure();
    }
    report(message);
    return zk::ZkBool::success();
}

void ddl_export_script::report(const QString & message)
{
    Q_EMIT m_builder.onMessage(message, ProgressMessage, MessageTimeout);
}

zk::ZkBool ddl_export_script::close()
{
    return m_pSink->close() ? zk::ZkBool::success() : writeFailure();
}

zk::ZkBool ddl_export_script::writeFailure()
{
    return failure(ddl_export_builder::tr("An error occurred writing SQL file : %1").arg(m_sFileName),
                   m_pSink->reason());
}

/// Ends the script because the user wants it to, and tells what that leaves behind.
zk::ZkBool ddl_export_script::stopped()
{
    if (const QString loss = m_pSink->lossText(); !loss.isEmpty()) {
        Q_EMIT m_builder.onMessage(loss, WarningMessage, MessageTimeout);
    }
    m_pSink->abandon();
    return zk::ZkBool::failure(ddl_export_builder::tr("The export was cancelled"));
}

/// Ends the script, and tells what that leaves behind: what the file held before is gone.
zk::ZkBool ddl_export_script::failure(const QString & text, const QString & reason)
{
    Q_EMIT m_builder.onMessage(reason.isEmpty() ? text : text + QStringLiteral(" (%1)").arg(reason),
                               ErrorMessage, MessageTimeout);
    if (const QString loss = m_pSink->lossText(); !loss.isEmpty()) {
        Q_EMIT m_builder.onMessage(loss, ErrorMessage, MessageTimeout);
    }
    m_pSink->abandon();
    return zk::ZkBool::failure(text);
}

} // namespace plugin
