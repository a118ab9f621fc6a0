#include "storage/temporary_file.h"

#include "model/file_suffix.h"
#include "os/file_status.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace storage {

namespace {

const QString NameBegin = QStringLiteral(".korvane-");
const QString ContentsEnd = QStringLiteral(".new");
const QString ClaimEnd = QStringLiteral(".tag");
constexpr int RandomLength = 12; // of the digits 0-9 and a-z
constexpr int CheckLength = 4;
constexpr int DigitBase = 36;

/// What ties the digits of a name together: a name that somebody else made up does not fit.
QString checkDigits(const QString & digits)
{
    return QStringLiteral("%1").arg(qChecksum(digits.toLatin1()), CheckLength, DigitBase, QLatin1Char('0'));
}

QString newName(temporary_file::purpose use)
{
    const QString digits =
        QStringLiteral("%1")
            .arg(QRandomGenerator::system()->generate64(), RandomLength, DigitBase, QLatin1Char('0'))
            .right(RandomLength);
    return NameBegin + digits + checkDigits(digits) +
           (use == temporary_file::purpose::contents ? ContentsEnd : ClaimEnd);
}

bool isOurName(const QString & name)
{
    const qsizetype digits = NameBegin.size();
    return name.size() == digits + RandomLength + CheckLength + ContentsEnd.size() &&
           name.mid(digits + RandomLength, CheckLength) == checkDigits(name.mid(digits, RandomLength));
}

/// Locks the open file against removeLeftovers(); false when that is about to remove it, or has.
bool lock(int descriptor)
{
    struct stat found = {};
    // A file system without such locks gives another error, and removeLeftovers() gets the same.
    return (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) &&
           ::fstat(descriptor, &found) == 0 && found.st_nlink > 0;
}

/// An open file of this user that no living program has locked; none when there is none of that kind.
class left_file
{
public:
    explicit left_file(const QString & name)
        : m_path(QFile::encodeName(name)),
          m_iDescriptor(::open(m_path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK))
    {
    }
    ~left_file()
    {
        if (m_iDescriptor >= 0) {
            ::close(m_iDescriptor);
        }
    }
    left_file(const left_file &) = delete;
    left_file & operator=(const left_file &) = delete;

    [[nodiscard]] bool isOurs() const
    {
        struct stat found = {};
        return m_iDescriptor >= 0 && ::fstat(m_iDescriptor, &found) == 0 && S_ISREG(found.st_mode) &&
               found.st_uid == ::geteuid() && ::flock(m_iDescriptor, LOCK_EX | LOCK_NB) == 0;
    }
    [[nodiscard]] QByteArray text() const
    {
        QByteArray bytes(4096, '\0');
        const ssize_t size = ::pread(m_iDescriptor, bytes.data(), static_cast<size_t>(bytes.size()), 0);
        bytes.truncate(size < 0 ? 0 : static_cast<qsizetype>(size));
        return bytes;
    }
    void remove() const { ::unlink(m_path.constData()); }

private:
    QByteArray m_path;
    int m_iDescriptor;
};

/// Removes the file that a claim names, if it is still the one that was claimed.
void removeClaimed(const QString & folder, const QByteArray & claim)
{
    static const QRegularExpression restored(QRegularExpression::anchoredPattern(
        QStringLiteral("[^/]*_v[0-9]+_[0-9]{17}\\.") + model::ProjectFileSuffix));
    const QList<QByteArray> lines = claim.split('\n');
    const QString name = QFile::decodeName(lines.constFirst());
    if (lines.size() < 2 || !restored.match(name).hasMatch()) {
        return;
    }
    const QString file = QDir(folder).absoluteFilePath(name);
    const os::file_status status = os::fileStatus(file, os::links::seen);
    if (status.kind != os::file_status::regular || status.owner != ::geteuid()) {
        return;
    }
    // Killed before it could write the identity down, the program had not written the file either.
    const bool isClaimed =
        lines.size() < 3 ? status.size == 0 : lines.at(1) + '\n' == claim_text::identity(file);
    if (isClaimed) {
        ::unlink(QFile::encodeName(file).constData());
    }
}

} // namespace

temporary_file::~temporary_file()
{
    if (m_iDescriptor >= 0) {
        ::close(m_iDescriptor);
    }
}

QString temporary_file::create(const QString & folder, readers mayRead, purpose use)
{
    constexpr int attempts = 16;
    const mode_t mode = mayRead == readers::owner ? 0600 : 0666;
    int error = 0;
    for (int i = 0; i < attempts; ++i) {
        const QString name = QDir(folder).absoluteFilePath(newName(use));
        const os::ending_held held;
        const int descriptor =
            ::open(QFile::encodeName(name).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor < 0) {
            error = errno;
            if (error == EEXIST) {
                continue;
            }
            return os::systemReason(error);
        }
        if (lock(descriptor)) {
            m_unfinished.note(name);
            m_sName = name;
            m_iDescriptor = descriptor;
            return {};
        }
        ::unlink(QFile::encodeName(name).constData());
        ::close(descriptor);
        error = EEXIST;
    }
    return os::systemReason(error);
}

bool temporary_file::append(const QByteArray & bytes) const
{
    return ::write(m_iDescriptor, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
}

void temporary_file::keep()
{
    m_unfinished.keep();
}

void removeLeftovers(const QString & folder)
{
    if (folder.isEmpty()) {
        return; // of a file that is not there
    }
    const QStringList names = QDir(folder).entryList(
        {NameBegin + QLatin1Char('*') + ContentsEnd, NameBegin + QLatin1Char('*') + ClaimEnd},
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString & name : names) {
        if (!isOurName(name)) {
            continue;
        }
        const left_file left(QDir(folder).absoluteFilePath(name));
        if (!left.isOurs()) {
            continue;
        }
        if (name.endsWith(ClaimEnd)) {
            removeClaimed(folder, left.text());
        }
        left.remove();
    }
}

QByteArray claim_text::begin(const QString & name)
{
    return QFile::encodeName(name) + '\n';
}

QByteArray claim_text::identity(const QString & file)
{
    const os::file_status status = os::fileStatus(file, os::links::seen);
    return QByteArray::number(status.device) + ':' + QByteArray::number(status.inode) + '\n';
}

} // namespace storage
