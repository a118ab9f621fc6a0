#include "app/whole_file.h"

#include "os/unfinished_files.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace app {

namespace {

/// Writes all of `bytes`. A write that finds too little room takes what fits and says nothing; the next one
/// says why.
bool writeAll(QSaveFile & out, const QByteArray & bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 taken = out.write(bytes.constData() + done, bytes.size() - done);
        if (taken <= 0) {
            return false;
        }
        done += taken;
    }
    // commit() alone does not notice that the last bytes found no room.
    return out.flush();
}

/// The file that `out` writes until it is whole, which Qt does not tell.
QString temporaryName(const QSaveFile & out)
{
    return QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(out.handle()));
}

/// Gives the open file the owner, the group and the mode that `former` tells, as far as this user may.
void keepRights(const struct stat & former, int open)
{
    mode_t mode = former.st_mode;
    constexpr uid_t Unchanged = static_cast<uid_t>(-1);
    constexpr mode_t AllBits = 07777;
    // What was granted to an owner or a group that the file cannot be given to is granted to nobody else; the
    // owner's own rights become this user's.
    if (::fchown(open, former.st_uid, former.st_gid) != 0) {
        mode &= ~static_cast<mode_t>(S_ISUID);
        if (::fchown(open, Unchanged, former.st_gid) != 0) {
            mode &= ~static_cast<mode_t>(S_IRWXG | S_ISGID);
        }
    }
    // After the owner, as a change of that takes some bits away.
    if (::fchmod(open, mode & AllBits) != 0) {
        return; // a file system without rights has none to keep
    }
}

} // namespace

zk::ZkBool writeWholeFile(const QString & file, const QByteArray & bytes)
{
    struct stat former = {};
    const bool exists = ::stat(QFile::encodeName(file).constData(), &former) == 0;
    if (!exists && errno != ENOENT) {
        // A loop of links, say, in whose place a file would be put.
        return zk::ZkBool::failure(qt_error_string(errno));
    }
    if (exists && !S_ISREG(former.st_mode)) {
        return zk::ZkBool::failure(
            QCoreApplication::translate("app::whole_file", "it exists, but is not a file"));
    }
    QSaveFile out(file);
    os::unfinished_file unfinished;
    {
        const os::ending_held hold;
        if (!out.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            return zk::ZkBool::failure(out.errorString());
        }
        unfinished.note(temporaryName(out));
    }
    // Before anything is written that not everybody may read.
    if (exists) {
        keepRights(former, out.handle());
    }
    if (!writeAll(out, bytes) || !out.commit()) {
        return zk::ZkBool::failure(out.errorString());
    }
    unfinished.keep();
    return zk::ZkBool::success();
}

} // namespace app
