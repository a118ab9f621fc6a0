#include "app/document/site_folder.h"

#include "app/whole_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <filesystem>
#include <system_error>

namespace app {

namespace {

using zk::ZkBool;

constexpr QByteArrayView ListHead(
    "Written by 'korvane document', which replaces and removes these files when it writes the pages again.");

ZkBool failure(const QString & file, const QString & why)
{
    return ZkBool::failure(QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(file), why));
}

/// A list can come from anywhere: a name on it leads out of the folder, or to what no page is called.
bool isPageName(const QString & name)
{
    static const QRegularExpression form(QStringLiteral(R"(\A[a-z][a-z0-9-]*\.(html|css|js|svg)\z)"));
    return form.match(name).hasMatch();
}

/// The folder with what was written into it before.
class site_folder
{
public:
    explicit site_folder(const QString & folder) : m_folder(folder) {}

    [[nodiscard]] ZkBool prepare()
    {
        std::error_code error;
        std::filesystem::create_directories(QFile::encodeName(m_folder.path()).toStdString(), error);
        if (error) {
            return failure(
                m_folder.path(),
                QStringLiteral("the folder cannot be made (%1)").arg(qt_error_string(error.value())));
        }
        return readList();
    }

    /// Whether all of `files` can be put there without taking the place of what is not ours.
    [[nodiscard]] ZkBool checkPlaces(const std::vector<site_file> & files) const
    {
        for (const site_file & file : files) {
            const QFileInfo info(pathOf(file.name));
            const bool isThere = info.exists() || info.isSymLink();
            if (isThere && (!m_names.contains(file.name) || info.isSymLink() || !info.isFile())) {
                return failure(pathOf(file.name),
                               QStringLiteral("is no page that this command wrote, so nothing was written; "
                                              "choose another folder, or take the file away"));
            }
        }
        return ZkBool::success();
    }

    /// Notes on the list, beside what is there, that `names` are written.
    [[nodiscard]] ZkBool note(const QStringList & names)
    {
        m_names += names;
        return writeList(m_names);
    }

    [[nodiscard]] ZkBool write(const site_file & file) const
    {
        const QString path = pathOf(file.name);
        const QByteArray bytes = file.make();
        QFile there(path);
        if (there.open(QIODevice::ReadOnly) && there.size() == bytes.size() && there.readAll() == bytes) {
            return ZkBool::success();
        }
        const ZkBool written = writeWholeFile(path, bytes);
        return written ? written : cannotWrite(path, written.getDesc());
    }

    /// Takes away what is on the list and not among `names`.
    [[nodiscard]] ZkBool keepOnly(const QStringList & names)
    {
        for (const QString & old : std::as_const(m_names)) {
            const QFileInfo info(pathOf(old));
            if (names.contains(old) || info.isSymLink() || !info.isFile()) {
                continue;
            }
            QFile file(pathOf(old));
            if (!file.remove()) {
                return failure(file.fileName(),
                               QStringLiteral("cannot be removed (%1)").arg(file.errorString()));
            }
        }
        return writeList(names);
    }

private:
    [[nodiscard]] QString pathOf(const QString & name) const { return m_folder.filePath(name); }

    static ZkBool cannotWrite(const QString & path, const QString & why)
    {
        return failure(path, QStringLiteral("cannot be written (%1)").arg(why));
    }

    ZkBool readList()
    {
        QFile list(pathOf(SiteList));
        if (!list.exists()) {
            return ZkBool::success();
        }
        const bool isFile = QFileInfo(list).isFile();
        if (isFile && !list.open(QIODevice::ReadOnly)) {
            return failure(list.fileName(), QStringLiteral("cannot be read (%1)").arg(list.errorString()));
        }
        if (!isFile || list.readLine().trimmed() != ListHead) {
            return failure(list.fileName(),
                           QStringLiteral("is not the list of pages that this command keeps; choose "
                                          "another folder, or take the file away"));
        }
        while (!list.atEnd()) {
            const QString name = QString::fromUtf8(list.readLine().trimmed());
            m_names += isPageName(name) ? QStringList(name) : QStringList();
        }
        return ZkBool::success();
    }

    [[nodiscard]] ZkBool writeList(QStringList names) const
    {
        names.sort();
        names.removeDuplicates();
        const QString text =
            QString::fromLatin1(ListHead) + QLatin1Char('\n') + names.join(QLatin1Char('\n'));
        const QString path = pathOf(SiteList);
        const ZkBool written = writeWholeFile(path, text.toUtf8() + '\n');
        return written ? written : cannotWrite(path, written.getDesc());
    }

    QDir m_folder;
    QStringList m_names;
};

} // namespace

ZkBool writeSite(const QString & folder, const std::vector<site_file> & files)
{
    site_folder into(folder);
    ZkBool result = into.prepare();
    if (result) {
        result = into.checkPlaces(files);
    }
    QStringList names;
    for (const site_file & file : files) {
        names << file.name;
    }
    // Noted before it is written: what an end in the middle leaves is ours at the next try.
    if (result) {
        result = into.note(names);
    }
    for (const site_file & file : files) {
        if (!result) {
            return result;
        }
        result = into.write(file);
    }
    return result ? into.keepOnly(names) : result;
}

} // namespace app
