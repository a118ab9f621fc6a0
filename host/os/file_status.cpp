#include "os/file_status.h"

#include "os/texts.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <system_error>

#include <sys/stat.h>

namespace os {

namespace {

file_status::kind_type kindOf(mode_t mode)
{
    return S_ISREG(mode)   ? file_status::regular
           : S_ISDIR(mode) ? file_status::folder
           : S_ISLNK(mode) ? file_status::link
                           : file_status::special;
}

QString nameOf(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFREG:
        return texts::tr("a file");
    case S_IFDIR:
        return texts::tr("a folder");
    case S_IFLNK:
        return texts::tr("a symbolic link");
    case S_IFIFO:
        return texts::tr("a named pipe");
    case S_IFSOCK:
        return texts::tr("a socket");
    default:
        return texts::tr("a device");
    }
}

} // namespace

file_status fileStatus(const QString & name, links treatment)
{
    const QByteArray path = QFile::encodeName(name);
    struct stat found = {};
    const int failed =
        treatment == links::followed ? ::stat(path.constData(), &found) : ::lstat(path.constData(), &found);
    file_status status;
    if (failed != 0) {
        status.error = errno;
        status.kind =
            status.error == ENOENT || status.error == ENOTDIR ? file_status::missing : file_status::unknown;
        return status;
    }
    status.kind = kindOf(found.st_mode);
    status.kindName = nameOf(found.st_mode);
    status.size = found.st_size;
    status.device = found.st_dev;
    status.inode = found.st_ino;
    status.owner = found.st_uid;
    return status;
}

QString temporaryFolder()
{
    const QString folder = QDir::tempPath();
    // An empty name would stand for the current folder.
    return folder.isEmpty() ? QString::fromLocal8Bit(qgetenv("TMPDIR")) : folder;
}

QString systemReason(int error)
{
    return QString::fromLocal8Bit(std::generic_category().message(error).c_str());
}

} // namespace os
