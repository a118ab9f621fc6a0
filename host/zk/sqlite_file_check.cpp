#include "zk/sqlite_file_check.h"

#include "os/file_status.h"
#include "zk/sqlite_connection.h"
#include "zk/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace zk::sqlite {

namespace {

using os::file_status;

constexpr std::array<char, 16> DatabaseMagic = {'S', 'Q', 'L', 'i', 't', 'e', ' ', 'f',
                                                'o', 'r', 'm', 'a', 't', ' ', '3', '\0'};
constexpr int HeaderSize = 100;
constexpr int ReadVersionAt = 19; // 2 in a database with a write-ahead log

constexpr std::array<unsigned char, 8> JournalMagic = {0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};
constexpr int FormerPagesAt = 16; // how many pages the database had before

const QString JournalSuffix = QStringLiteral("-journal");
const QString LogSuffix = QStringLiteral("-wal");
const QString IndexSuffix = QStringLiteral("-shm");

constexpr int SqlitePathLimit = 512; // bytes, the end of the text included

/// The first bytes of the regular file `name`, at most `size`. Empty, with the reason, on a failure.
QByteArray firstBytes(const QString & name, qint64 size, QString & reason)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        reason = texts::tr("cannot be opened (%1); check its permissions").arg(file.errorString());
        return {};
    }
    const QByteArray bytes = file.read(size);
    if (file.error() != QFileDevice::NoError) {
        reason = texts::tr("cannot be read (%1); check the disk").arg(file.errorString());
        return {};
    }
    return bytes;
}

QString missingReason(const file_status & status)
{
    if (status.kind == file_status::missing) {
        return texts::tr("does not exist; check the name");
    }
    const QString reason = status.error == EACCES
                               ? texts::tr("cannot be opened (%1); check the permissions of its folder")
                               : texts::tr("cannot be opened (%1); check the name");
    return reason.arg(os::systemReason(status.error));
}

QString noDatabaseReason(const QByteArray & begin)
{
    if (begin.isEmpty()) {
        return texts::tr("is empty, not a Korvane project");
    }
    return begin.trimmed().startsWith('{')
               ? texts::tr("is a model in text form, not a project; import it first "
                           "(korvane import MODEL.json PROJECT.korv)")
               : noProjectReason();
}

/// SQLite finds journals beside the file that a link leads to.
QString realName(const QString & file)
{
    const QString real = QFileInfo(file).canonicalFilePath();
    return real.isEmpty() ? QFileInfo(file).absoluteFilePath() : real;
}

/// What is known of a journal that may be opened.
struct journal
{
    bool isThere = false;
    bool namesAFile = false;
    quint32 formerPages = 0;
};

QSqlError oddJournal(const QString & name, const QString & what)
{
    return failure(name, texts::tr("is %1, where only a journal of the project may be; move it away "
                                   "and try again")
                             .arg(what));
}

/// Reads what tells a journal. One that goes while it is looked at belonged to a save that has ended.
QSqlError examine(const QString & name, journal & found)
{
    // Neither through a link nor waiting for somebody at the other end of a pipe.
    const int descriptor =
        ::open(QFile::encodeName(name).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0) {
        return errno == ENOENT ? QSqlError()
                               : failure(name, texts::tr("cannot be read (%1); check its permissions")
                                                   .arg(os::systemReason(errno)));
    }
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return failure(name, texts::tr("cannot be read (%1)").arg(file.errorString()));
    }
    const QByteArray magic(reinterpret_cast<const char *>(JournalMagic.data()), JournalMagic.size());
    const QByteArray begin = file.read(FormerPagesAt + 4);
    // Whether SQLite would heed the name depends on a checksum; none of our journals has any.
    found.namesAFile = file.size() >= 2 * magic.size() && file.seek(file.size() - magic.size()) &&
                       file.read(magic.size()) == magic;
    if (file.error() != QFileDevice::NoError) {
        return failure(name, texts::tr("cannot be read (%1); check the disk").arg(file.errorString()));
    }
    found.isThere = true;
    if (begin.startsWith(magic) && begin.size() == FormerPagesAt + 4) {
        found.formerPages = qFromBigEndian<quint32>(begin.constData() + FormerPagesAt);
    }
    return {};
}

/// What lies at `name`, where nothing or a regular file may be.
QSqlError onlyRegular(const QString & name, bool & isThere)
{
    const file_status status = os::fileStatus(name, os::links::seen);
    isThere = status.kind == file_status::regular;
    if (isThere || status.kind == file_status::missing || status.error == ENAMETOOLONG) {
        return {};
    }
    return status.kind == file_status::unknown
               ? failure(name, texts::tr("cannot be looked at (%1)").arg(os::systemReason(status.error)))
               : oddJournal(name, status.kindName);
}

QSqlError checkRollbackJournal(const QString & name, bool isEmptyDatabase)
{
    bool isThere = false;
    if (const QSqlError error = onlyRegular(name, isThere); error.isValid() || !isThere) {
        return error;
    }
    journal found;
    if (const QSqlError error = examine(name, found); error.isValid()) {
        return error;
    }
    if (found.namesAFile) {
        return failure(name,
                       texts::tr("is a journal that names another file, which opening the project would "
                                 "delete; korvane makes no such journal. Remove it if you do not know "
                                 "where it comes from, and try again"));
    }
    if (isEmptyDatabase && found.formerPages > 0) {
        return failure(name, texts::tr("is the journal of another database, which the project would "
                                       "destroy; move it away and try again"));
    }
    return {};
}

QSqlError checkLog(const QString & real, bool isUsed)
{
    bool isThere = false;
    if (const QSqlError error = onlyRegular(real + LogSuffix, isThere); error.isValid()) {
        return error;
    }
    if (isThere && !isUsed) {
        return failure(real + LogSuffix,
                       texts::tr("is a write-ahead log, which this project does not use but would take "
                                 "for its newest contents; move it away and try again"));
    }
    return onlyRegular(real + IndexSuffix, isThere);
}

} // namespace

QSqlError checkFile(const QString & file, contents expected, look depth)
{
    if (file.isEmpty()) {
        return {QString(), texts::tr("no project file is named"), QSqlError::ConnectionError};
    }
    const file_status status = os::fileStatus(file);
    if (status.kind == file_status::missing || status.kind == file_status::unknown) {
        return failure(file, missingReason(status));
    }
    if (status.kind != file_status::regular) {
        return failure(file, texts::tr("is %1, not a project file").arg(status.kindName));
    }
    if (depth == look::at_its_status) {
        return {};
    }
    QString reason;
    const QByteArray begin = firstBytes(file, DatabaseMagic.size(), reason);
    if (!reason.isEmpty()) {
        return failure(file, reason);
    }
    if (begin == QByteArray(DatabaseMagic.data(), DatabaseMagic.size()) ||
        (begin.isEmpty() && expected == contents::database_or_none)) {
        return {};
    }
    return failure(file, noDatabaseReason(begin));
}

QSqlError checkJournals(const QString & file, look depth)
{
    const QString real = realName(file);
    bool isEmpty = false;
    bool usesLog = true; // as whoever opened it first has seen
    if (depth == look::into_it) {
        QString reason;
        const QByteArray header = firstBytes(real, HeaderSize, reason);
        if (!reason.isEmpty()) {
            return failure(file, reason);
        }
        isEmpty = header.isEmpty();
        usesLog = header.size() > ReadVersionAt && header.at(ReadVersionAt) == 2;
    }
    if (const QSqlError error = checkRollbackJournal(real + JournalSuffix, isEmpty); error.isValid()) {
        return error;
    }
    return checkLog(real, usesLog);
}

QSqlError checkNewName(const QString & file)
{
    if (const QString reason = tooLongName(file); !reason.isEmpty()) {
        return failure(file, reason);
    }
    for (const QString & suffix : {JournalSuffix, LogSuffix}) {
        const file_status status = os::fileStatus(file + suffix, os::links::seen);
        if (status.kind != file_status::missing) {
            return failure(file + suffix,
                           texts::tr("belongs to a database that is not there, and would be taken for a "
                                     "part of the new project; move it away and try again"));
        }
    }
    return {};
}

QString noProjectReason()
{
    return texts::tr("is not a Korvane project file (.korv)");
}

QString tooLongName(const QString & file)
{
    const QFileInfo info(realName(file));
    const auto suffix = static_cast<long>(JournalSuffix.size());
    const long folderLimit = ::pathconf(QFile::encodeName(info.path()).constData(), _PC_NAME_MAX);
    const auto nameSize = static_cast<long>(QFile::encodeName(info.fileName()).size());
    if (folderLimit > 0 && nameSize + suffix > folderLimit) {
        return texts::tr(
                   "cannot be changed: its name of %1 bytes is too long, as the name of its journal is %2 "
                   "bytes longer and the limit is %3; choose a shorter one")
            .arg(nameSize)
            .arg(suffix)
            .arg(folderLimit);
    }
    const auto pathSize = static_cast<long>(QFile::encodeName(info.filePath()).size());
    if (pathSize + suffix >= SqlitePathLimit) {
        return texts::tr(
                   "cannot be changed: its path of %1 bytes is too long, as the name of its journal is %2 "
                   "bytes longer and the limit is %3; choose a shorter one")
            .arg(pathSize)
            .arg(suffix)
            .arg(SqlitePathLimit - 1);
    }
    return {};
}

} // namespace zk::sqlite
