#include "plugin/builder/ddl_export_script.h"

#include "plugin/builder/ddl_export_builder.h"

#include "tools/custom_javascript.h"
#include "tools/string_helper.h"

#include <QFileInfo>

namespace plugin {

namespace {

constexpr int MessageProgress = 1;
constexpr int MessageError = 3;
constexpr int MessageTimeout = 10000;

} // namespace

ddl_export_script::ddl_export_script(ddl_export_builder & builder, const QString & fileName,
                                     const QString & title, const origin & from)
    : m_builder(builder), m_sTitle(title), m_origin(from), m_file(fileName)
{
}

zk::ZkBool ddl_export_script::open()
{
    // Opening a FIFO would wait for a reader, and a device swallows whatever is written.
    const QFileInfo target(m_file.fileName());
    if ((target.exists() && !target.isFile()) ||
        !m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        return zk::ZkBool::failure(
            ddl_export_builder::tr("An error occurred opening SQL file : %1").arg(m_file.fileName()));
    }
    m_stream.setDevice(&m_file);
    tools::string_helper::initTextStream(&m_stream);
    m_parameters.insert(QStringLiteral("plugin_name"), m_origin.pluginName);
    m_parameters.insert(QStringLiteral("current_file"), m_file.fileName());
    m_parameters.insert(QStringLiteral("output_location"), m_origin.outputLocation);
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_script::write(QLatin1String action, const QString & sql, const QString & message,
                                    const subject & about)
{
    QString text = sql;
    if (m_origin.customScript) {
        m_parameters.insert(QStringLiteral("default_value"), sql);
        m_parameters.insert(QStringLiteral("action"), QString(action));
        const zk::ZkBool replaced = m_origin.customScript->executeScript(
            m_origin.project, about.entity, about.property, nullptr, m_parameters);
        if (!replaced) {
            Q_EMIT m_builder.onMessage(replaced.getDesc(), MessageError, MessageTimeout);
            return replaced;
        }
        text = replaced.getDesc();
    }
    m_stream << text << '\n';
    if (m_stream.status() != QTextStream::Ok) {
        return writeFailure();
    }
    report(message);
    return zk::ZkBool::success();
}

void ddl_export_script::report(const QString & message)
{
    Q_EMIT m_builder.onMessage(message, MessageProgress, MessageTimeout);
}

zk::ZkBool ddl_export_script::close()
{
    m_stream.flush();
    const bool isWritten = m_stream.status() == QTextStream::Ok && m_file.flush();
    m_file.close();
    return isWritten && m_file.error() == QFileDevice::NoError ? zk::ZkBool::success() : writeFailure();
}

zk::ZkBool ddl_export_script::writeFailure() const
{
    return zk::ZkBool::failure(
        ddl_export_builder::tr("An error occurred writing SQL file : %1").arg(m_file.fileName()));
}

} // namespace plugin
