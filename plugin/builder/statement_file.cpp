#include "plugin/builder/statement_file.h"

#include "plugin/builder/ddl_export_builder.h"

#include "os/program_end.h"
#include "tools/string_helper.h"

#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace plugin {

namespace {

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

statement_file::statement_file(const QString & fileName) : m_sFileName(fileName) {}

bool statement_file::open()
{
    if (!openFile()) {
        return false;
    }
    m_bOpened = true;
    m_stream.setDevice(&m_file);
    tools::string_helper::initTextStream(&m_stream);
    return true;
}

/// Empties the file that the script goes into, or makes it; the rights of one that is there stay.
bool statement_file::openFile()
{
    const QString target = targetOf(m_sFileName, m_sReason);
    if (target.isEmpty()) {
        return false;
    }
    const os::ending_held hold;
    const bool isNew = !QFileInfo::exists(target);
    const int file = openRegular(target, m_sReason);
    if (file < 0) {
        return false;
    }
    if (isNew) {
        m_new.note(target);
    } else {
        os::noteLossAtEnd(incompleteText());
    }
    return m_file.open(file, QIODevice::WriteOnly | QIODevice::Text, QFileDevice::AutoCloseHandle);
}

bool statement_file::take(const script_statement & statement)
{
    m_stream << statement.text << '\n';
    if (m_stream.status() == QTextStream::Ok) {
        return true;
    }
    m_sReason = m_file.errorString();
    return false;
}

bool statement_file::close()
{
    m_stream.flush();
    const bool isWritten = m_stream.status() == QTextStream::Ok && m_file.flush();
    m_file.close();
    if (!isWritten || m_file.error() != QFileDevice::NoError) {
        m_sReason = m_file.errorString();
        return false;
    }
    settle();
    return true;
}

QString statement_file::incompleteText() const
{
    return ddl_export_builder::tr("The SQL file is incomplete : %1").arg(m_sFileName);
}

QString statement_file::lossText() const
{
    return m_bOpened ? incompleteText() : QString();
}

void statement_file::abandon()
{
    settle();
}

/// Lets the file stay as it is from now on.
void statement_file::settle()
{
    m_new.keep();
    os::noteLossAtEnd({});
}

} // namespace plugin
