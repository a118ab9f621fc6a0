#include "storage/new_project_file.h"

#include "os/file_status.h"
#include "storage/project_schema.h"
#include "storage/temporary_file.h"
#include "storage/texts.h"
#include "zk/sqlite_connection.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace storage::new_project_file {

namespace {

/// What a name leads to through links of which the last one leads nowhere.
QString targetOf(const QString & file, int & error)
{
    constexpr int longestChain = 40; // the system's own limit
    QString target = QFileInfo(file).absoluteFilePath();
    for (int i = 0; i < longestChain; ++i) {
        const os::file_status status = os::fileStatus(target, os::links::seen);
        if (status.kind != os::file_status::link) {
            error = status.kind == os::file_status::unknown ? status.error : 0;
            return target;
        }
        target = QFileInfo(QFileInfo(target).symLinkTarget()).absoluteFilePath();
    }
    error = ELOOP;
    return target;
}

QSqlError cannotCreate(const QString & file, const QString & reason)
{
    return zk::sqlite::failure(file, texts::tr("cannot be created (%1); check its folder").arg(reason));
}

/// @param told the file or folder that messages name, as nobody knows `name`
QSqlError fillFile(const QString & name, const QString & told, const filler & fill)
{
    zk::sqlite::connection file;
    QSqlError error = file.openUnseen(name, told);
    if (!error.isValid()) {
        // Nobody sees the file before it is whole, so nothing has to be rolled back from disk.
        error = file.execute(QStringLiteral("PRAGMA journal_mode = MEMORY"));
    }
    return error.isValid() ? error : file.inTransaction([&] {
        const QSqlError refused = project_schema::create(file);
        return refused.isValid() ? refused : fill(file);
    });
}

/// Gives `from` the name `to` unless that is taken. The errno, 0 when it worked. On a file system that has no
/// way to do so the name is taken by an empty file then, which whoever comes next may fill.
int renameToFree(const QByteArray & from, const QByteArray & to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    if (::link(from.constData(), to.constData()) == 0) {
        ::unlink(from.constData());
        return 0;
    }
    if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS) {
        return errno;
    }
    const int taken = ::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (taken < 0) {
        return errno;
    }
    ::close(taken);
    return EEXIST;
}

} // namespace

outcome create(const QString & file, const filler & fill)
{
    outcome result;
    int error = 0;
    const QString target = targetOf(file, error);
    if (error != 0) {
        result.error = cannotCreate(file, os::systemReason(error));
        return result;
    }
    const QString folder = QFileInfo(target).path();
    removeLeftovers(folder);
    if (result.error = zk::sqlite::checkNewName(target); result.error.isValid()) {
        // The journal of somebody who has made the project in the meantime and works on it.
        result.isTaken = QFileInfo::exists(target);
        return result;
    }
    temporary_file made;
    if (const QString reason = made.create(folder, temporary_file::readers::as_usual); !reason.isEmpty()) {
        result.error = cannotCreate(file, reason);
        return result;
    }
    if (result.error = fillFile(made.name(), file, fill); result.error.isValid()) {
        return result;
    }
    const os::ending_held held;
    error = renameToFree(QFile::encodeName(made.name()), QFile::encodeName(target));
    if (error == 0) {
        made.keep();
    } else {
        result.isTaken = error == EEXIST;
        result.error = cannotCreate(file, os::systemReason(error));
    }
    return result;
}

QSqlError bytesOf(const filler & fill, QByteArray & bytes)
{
    const QString folder = os::temporaryFolder();
    removeLeftovers(folder);
    temporary_file made;
    if (const QString reason = made.create(folder, temporary_file::readers::owner); !reason.isEmpty()) {
        return zk::sqlite::failure(folder, texts::tr("no temporary file can be made there (%1)").arg(reason));
    }
    if (const QSqlError error = fillFile(made.name(), folder, fill); error.isValid()) {
        return error;
    }
    QFile opened(made.name());
    if (opened.open(QIODevice::ReadOnly)) {
        bytes = opened.readAll();
    }
    return opened.error() == QFileDevice::NoError && bytes.size() == opened.size() && !bytes.isEmpty()
               ? QSqlError()
               : zk::sqlite::failure(made.name(),
                                     texts::tr("cannot be read back (%1)").arg(opened.errorString()));
}

} // namespace storage::new_project_file
