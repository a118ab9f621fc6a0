#include "app/whole_file.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

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

} // namespace

zk::ZkBool writeWholeFile(const QString & file, const QByteArray & bytes)
{
    if (const QFileInfo former(file); former.exists() && !former.isFile()) {
        // A folder, or a device, in whose place a file would be put.
        return zk::ZkBool::failure(
            QCoreApplication::translate("app::whole_file", "it is there, but it is no file"));
    }
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(out, bytes) && out.commit()) {
        return zk::ZkBool::success();
    }
    return zk::ZkBool::failure(out.errorString());
}

} // namespace app
