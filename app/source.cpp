#include "app/source.h"

#include "app/project_work.h"

#include "model/project.h"
#include "os/file_status.h"
#include "storage/text_form.h"

#include <QFile>

namespace app {

namespace {

using zk::ZkBool;

constexpr qint64 EnoughBytes = 4096; // to tell the forms apart; a text may begin with blanks

enum class content
{
    project,
    text,
    neither,
    unknown ///< not a file that can be read
};

/// What bytes that begin with `begin` look like.
content contentOf(QByteArray begin)
{
    if (begin.startsWith("SQLite format 3")) {
        return content::project;
    }
    // In a wide encoding the brace has empty bytes around it; that it is one is for the reader to say.
    if (begin.startsWith("\xff\xfe") || begin.startsWith("\xfe\xff")) {
        return content::text;
    }
    begin.replace("\xef\xbb\xbf", "").replace('\0', "");
    return begin.trimmed().startsWith('{') ? content::text : content::neither;
}

content contentOfFile(const QString & name)
{
    QFile file(name);
    if (os::fileStatus(name).kind != os::file_status::regular ||
        !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return content::unknown;
    }
    const QByteArray begin = file.read(EnoughBytes);
    return file.error() == QFileDevice::NoError ? contentOf(begin) : content::unknown;
}

ZkBool failure(const QString & name, const QString & reason)
{
    return ZkBool::failure(QStringLiteral("%1: %2").arg(shownName(name), reason));
}

QString howMany(qsizetype versions)
{
    switch (versions) {
    case 0:
        return QStringLiteral("the project has no versions; 'korvane tag' makes one");
    case 1:
        return QStringLiteral("the project has 1 version");
    default:
        return QStringLiteral("the project has %1 versions").arg(versions);
    }
}

} // namespace

std::optional<int> versionNumber(const QString & word)
{
    if (word == QLatin1String("now")) {
        return Now;
    }
    bool isNumber = false;
    const int number = word.mid(1).toInt(&isNumber);
    // A sign or a leading zero would make two words for one version.
    return isNumber && number > 0 && word == versionWord(number) ? std::optional(number) : std::nullopt;
}

QString versionWord(int number)
{
    return number == Now ? QStringLiteral("now") : QStringLiteral("v%1").arg(number);
}

QString whyNoVersion(const QString & word)
{
    return word.isEmpty() || versionNumber(word)
               ? QString()
               : QStringLiteral(
                     "'%1' is not a version; versions are v1, v2 … as 'korvane log' lists them, and "
                     "now for the state of the project")
                     .arg(word);
}

ZkBool source::open(const QString & name)
{
    const ZkBool opened = openState(name);
    if (!opened || m_isText) {
        return opened;
    }
    const QSqlError error = storage::history::list(name, m_versions);
    return error.isValid() ? ZkBool::failure(error.text()) : ZkBool::success();
}

ZkBool source::openState(const QString & name)
{
    *this = source();
    m_sName = name;
    const bool isInput = name == StandardInput;
    const content found = isInput ? content::text : contentOfFile(name);
    if (found == content::neither) {
        return failure(name, QStringLiteral("is neither a project file nor the text form of a project"));
    }
    m_isText = found == content::text;
    if (!m_isText) {
        return ZkBool::success();
    }
    const ZkBool read = app::readText(name, m_text);
    return read && isInput && contentOf(m_text.left(EnoughBytes)) == content::neither
               ? failure(name, QStringLiteral("is not the text form of a project"))
               : read;
}

ZkBool source::checkVersion(int number) const
{
    if (number == Now || (number > 0 && number <= m_versions.size())) {
        return ZkBool::success();
    }
    return failure(m_sName, QStringLiteral("%1: %2").arg(
                                versionWord(number), m_isText ? QStringLiteral("a text form has no versions")
                                                              : howMany(m_versions.size())));
}

ZkBool source::load(int number, std::shared_ptr<model::project> & project,
                    const std::function<void(const std::shared_ptr<model::project> &)> & look)
{
    if (const ZkBool there = checkVersion(number); !there) {
        return there;
    }
    if (number == Now) {
        ZkBool read = ZkBool::success();
        if (!m_state) {
            read = m_isText ? readText(nullptr, m_state) : openProject(m_sName, m_state);
        }
        if (read) {
            project = m_state;
        }
        return read;
    }
    if (m_before) {
        project = m_before;
        return ZkBool::success();
    }
    const QSqlError error = storage::history::load(m_sName, number, project, look);
    return error.isValid() ? ZkBool::failure(error.text()) : ZkBool::success();
}

ZkBool source::loadAfter(const model::project & previous, std::shared_ptr<model::project> & project) const
{
    std::shared_ptr<model::project> next;
    const ZkBool read = m_isText ? readText(&previous, next) : openProject(m_sName, next);
    if (read) {
        storage::text_form::settleVersions(previous, *next);
        project = next;
    }
    return read;
}

void source::takeStates(const std::shared_ptr<model::project> & before,
                        const std::shared_ptr<model::project> & state)
{
    m_versions = {storage::history::version()};
    m_before = before;
    m_state = state;
}

std::optional<storage::text_place> source::find(model::object_kind kind, long id)
{
    if (!m_isText || !m_state) {
        return std::nullopt;
    }
    if (!m_places) {
        m_places.emplace(m_text, *m_state);
    }
    return m_places->find(kind, id);
}

ZkBool source::readText(const model::project * previous, std::shared_ptr<model::project> & project) const
{
    const auto next = std::make_shared<model::project>(1);
    const ZkBool read = storage::text_form::read(m_text, shownName(m_sName), previous, *next);
    if (read) {
        project = next;
    }
    return read;
}

} // namespace app
