#include "storage/restored_version.h"

#include "model/file_suffix.h"
#include "storage/temporary_file.h"
#include "tools/bounded_uncompress.h"
#include "zk/sqlite_connection.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <optional>

namespace storage {

namespace {

/// The name of a file that is made now.
QString momentName(const QString & folder, const QString & start)
{
    return QDir(folder).absoluteFilePath(
        start + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmsszzz")) +
        QLatin1Char('.') + model::ProjectFileSuffix);
}

bool writeWhole(QFile & file, const QByteArray & bytes)
{
    const bool isWritten = file.write(bytes) == bytes.size() && file.flush();
    file.close();
    return isWritten && file.error() == QFileDevice::NoError;
}

} // namespace

struct restored_version::data
{
    data() = default;
    data(const data &) = delete;
    data & operator=(const data &) = delete;

    QString fileName;
    std::optional<temporary_file> claim;
    std::optional<os::unfinished_file> file;
    std::optional<zk::sqlite::final_file> isFinal;
    bool isNameRefused = false; ///< there is something of that name, as a rule

    /// Claims the name of this moment and makes the file; false when that did not work.
    bool open(QFile & opened, const QString & folder, const QString & start)
    {
        fileName = momentName(folder, start);
        claim.emplace();
        if (!claim->create(folder, temporary_file::readers::owner, temporary_file::purpose::claim)
                 .isEmpty() ||
            !claim->append(claim_text::begin(QFileInfo(fileName).fileName()))) {
            return false;
        }
        opened.setFileName(fileName);
        const os::ending_held held;
        if (!opened.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                         QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
            isNameRefused = true;
            return false;
        }
        file.emplace().note(fileName);
        isFinal.emplace(fileName);
        return claim->append(claim_text::identity(fileName));
    }
    ~data() { removeAll(); }
    void removeAll()
    {
        isFinal.reset();
        // Another program may have a file of that name by now.
        const bool isLeft = file && !file->remove();
        file.reset();
        if (claim && isLeft) {
            // Without the claim the next run would not know whose file it is.
            claim->keep();
        }
        claim.reset();
    }
};

restored_version::restored_version() = default;
restored_version::~restored_version() = default;

restored_version::outcome restored_version::restore(const QString & folder, const QString & start,
                                                    const QByteArray & compressed)
{
    const QByteArray bytes = tools::boundedUncompress(compressed);
    if (bytes.isEmpty()) {
        m_sFileName = momentName(folder, start);
        return outcome::damaged;
    }
    return create(folder, start, bytes) ? outcome::restored : outcome::unwritten;
}

bool restored_version::create(const QString & folder, const QString & start, const QByteArray & bytes)
{
    constexpr int attempts = 300;
    for (int i = 0; i < attempts; ++i) {
        m_data = std::make_unique<data>();
        QFile file;
        const bool isOpen = m_data->open(file, folder, start);
        m_sFileName = m_data->fileName;
        if (isOpen) {
            if (writeWhole(file, bytes)) {
                return true;
            }
            break;
        }
        // Whoever had the name may have given it back since, so that it says nothing whether it is free now.
        if (!m_data->isNameRefused) {
            break;
        }
        QThread::msleep(1);
    }
    m_data->removeAll();
    return false;
}

void removeLeftVersions(const QString & folder)
{
    removeLeftovers(folder);
}

} // namespace storage
