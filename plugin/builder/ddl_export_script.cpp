#include "plugin/builder/ddl_export_script.h"

#include "plugin/builder/ddl_export_builder.h"

#include "tools/custom_javascript.h"
#include "tools/program_end.h"
#include "tools/string_helper.h"

#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace plugin {

namespace {

constexpr int MessageProgress = 1;
constexpr int MessageError = 3;
constexpr int MessageTimeout = 10000;

/// The file that the script `name` goes into: the one that a link leads to, but only within the folder of the
/// scripts, as the folder may be anybody's. Empty, with the reason, when there is none.
QString targetOf(const QString & name, QString & reason)
{
    const QFileInfo info(name);
    if (!info.isSymLink()) {
        return name;
    }
    const QFileInfo target(info.canonicalFilePath());
    if (!info.exists()) {
        reason = ddl_export_builder::tr("it is a symbolic link that leads nowhere; remove it");
        return {};
    }
    if (target.path() != QFileInfo(info.path()).canonicalFilePath()) {
        reason = ddl_export_builder::tr(
                     "it is a symbolic link that leads out of the export folder, to %1; remove it")
                     .arg(target.filePath());
        return {};
    }
    return target.filePath();
}

/// Opens `name` for writing, without a wait for whoever reads a FIFO and without following a link; -1, with
/// the reason, when that fails or it is no regular file.
int openRegular(const QString & name, QString & reason)
{
    if (const QFileInfo info(name); info.exists() && !info.isFile()) {
        // Merely opening a device may do something.
        reason = ddl_export_builder::tr("it exists, but is not a file");
        return -1;
    }
    constexpr mode_t Mode = 0666;
    const int file = ::open(QFile::encodeName(name).constData(),
                            O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, Mode);
    struct stat info = {};
    if (file >= 0 && ::fstat(file, &info) == 0 && S_ISREG(info.st_mode) && ::ftruncate(file, 0) == 0) {
        return file;
    }
    reason = qt_error_string(errno);
    if (file >= 0) {
        ::close(file);
    }
    return -1;
}

} // namespace

ddl_export_script::ddl_export_script(ddl_export_builder & builder, const QString & fileName,
                                     const QString & title, const origin & from)
    : m_builder(builder), m_sFileName(fileName), m_sTitle(title), m_origin(from)
{
}

zk::ZkBool ddl_export_script::open()
{
    QString reason;
    if (!openFile(reason)) {
        return failure(ddl_export_builder::tr("An error occurred opening SQL file : %1").arg(m_sFileName),
                       reason);
    }
    m_bOpened = true;
    m_stream.setDevice(&m_file);
    tools::string_helper::initTextStream(&m_stream);
    m_parameters.insert(QStringLiteral("plugin_name"), m_origin.pluginName);
    m_parameters.insert(QStringLiteral("current_file"), m_sFileName);
    m_parameters.insert(QStringLiteral("output_location"), m_origin.outputLocation);
    return zk::ZkBool::success();
}

/// Empties the file that the script goes into, or makes it; the rights of one that is there stay.
bool ddl_export_script::openFile(QString & reason)
{
    const QString target = targetOf(m_sFileName, reason);
    if (target.isEmpty()) {
        return false;
    }
    const tools::ending_held hold;
    const bool isNew = !QFileInfo::exists(target);
    const int file = openRegular(target, reason);
    if (file < 0) {
        return false;
    }
    if (isNew) {
        m_new.note(target);
    } else {
        tools::noteLossAtEnd(incompleteText());
    }
    return m_file.open(file, QIODevice::WriteOnly | QIODevice::Text, QFileDevice::AutoCloseHandle);
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
            return failure(replaced.getDesc(), {});
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
    if (!isWritten || m_file.error() != QFileDevice::NoError) {
        return writeFailure();
    }
    m_new.keep();
    tools::noteLossAtEnd({});
    return zk::ZkBool::success();
}

QString ddl_export_script::incompleteText() const
{
    return ddl_export_builder::tr("The SQL file is incomplete : %1").arg(m_sFileName);
}

zk::ZkBool ddl_export_script::writeFailure()
{
    return failure(ddl_export_builder::tr("An error occurred writing SQL file : %1").arg(m_sFileName),
                   m_file.errorString());
}

/// Ends the script, and tells what that leaves on disk: what the file held before is gone.
zk::ZkBool ddl_export_script::failure(const QString & text, const QString & reason)
{
    Q_EMIT m_builder.onMessage(reason.isEmpty() ? text : text + QStringLiteral(" (%1)").arg(reason),
                               MessageError, MessageTimeout);
    if (m_bOpened) {
        Q_EMIT m_builder.onMessage(incompleteText(), MessageError, MessageTimeout);
    }
    m_new.keep();
    tools::noteLossAtEnd({});
    return zk::ZkBool::failure(text);
}

} // namespace plugin
