#include "app/window/project_session.h"

#include "app/project_work.h"

#include "context/ctx_project.h"
#include "model/project.h"
#include "storage/text_form.h"
#include "tools/wait_cursor.h"
#include "zk/zk_sql_database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace app {

namespace {

constexpr int SettleTime = 300; // milliseconds without a change after which a file is looked at
constexpr qint64 HeaderSize = 100;

} // namespace

project_session::project_session(QObject * parent) : QObject(parent)
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(SettleTime);
    connect(&m_settle, &QTimer::timeout, this, &project_session::lookAtFile);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_settle, qOverload<>(&QTimer::start));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_settle, qOverload<>(&QTimer::start));
}

project_session::~project_session()
{
    context::ctx_project::getSingleton().setProject(nullptr);
    zk::ZkSqlDatabase::clearAllDatabases();
}

project_session::stamp project_session::stampOf(const QString & file)
{
    stamp now;
    const QFileInfo info(file);
    if (info.isFile()) {
        now.changed = info.lastModified();
        now.size = info.size();
        QFile opened(file);
        if (opened.open(QIODevice::ReadOnly)) {
            now.header = opened.read(HeaderSize);
        }
    }
    return now;
}

zk::ZkBool project_session::open(const QString & file)
{
    const tools::wait_cursor cursor;
    // A cached connection would go on reading a file that was replaced by another of its name.
    zk::ZkSqlDatabase::clearAllDatabases();
    const QString absolute = QFileInfo(file).absoluteFilePath();
    const stamp read = stampOf(absolute);
    std::shared_ptr<model::project> opened;
    zk::ZkBool result = openProject(absolute, opened);
    if (result) {
        m_sFile = absolute;
        adopt(opened, read);
    }
    return result;
}

void project_session::close()
{
    m_sFile.clear();
    adopt(nullptr, {});
}

zk::ZkBool project_session::refresh()
{
    if (!m_pProject) {
        return zk::ZkBool::success();
    }
    const stamp now = stampOf(m_sFile);
    if (now == m_stamp && !m_bLost) {
        return zk::ZkBool::success();
    }
    const tools::wait_cursor cursor;
    zk::ZkSqlDatabase::clearAllDatabases();
    std::shared_ptr<model::project> read;
    zk::ZkBool result = openProject(m_sFile, read);
    if (!result) {
        m_stamp = now;
        setLost(true);
        watch();
        return result;
    }
    // A new version or other settings leave the model as it is, and then the views stay as they are, too.
    if (storage::text_form::write(*read) == storage::text_form::write(*m_pProject)) {
        m_stamp = now;
        watch();
        setLost(false);
        Q_EMIT historyChanged();
    } else {
        adopt(read, now);
    }
    return result;
}

void project_session::keepOwnChange()
{
    if (m_pProject) {
        m_stamp = stampOf(m_sFile);
        watch();
    }
}

void project_session::hold()
{
    if (++m_iHolds == 1) {
        Q_EMIT heldChanged();
    }
}

void project_session::letGo()
{
    if (--m_iHolds > 0) {
        return;
    }
    if (m_pProject) {
        m_settle.start();
    }
    Q_EMIT heldChanged();
}

void project_session::setLost(bool isLost)
{
    if (std::exchange(m_bLost, isLost) != isLost) {
        Q_EMIT lostChanged();
    }
}

void project_session::adopt(const std::shared_ptr<model::project> & project, const stamp & read)
{
    m_pProject = project;
    m_stamp = read;
    m_bLost = false;
    context::ctx_project::getSingleton().setProject(project);
    watch();
    Q_EMIT projectChanged();
}

/// A file that is replaced by another of its name drops out of the watch; its folder tells of the new one.
/// When the folder is gone as well, the nearest one above tells that it is back.
void project_session::watch()
{
    const QStringList former = m_watcher.files() + m_watcher.directories();
    if (!former.isEmpty()) {
        m_watcher.removePaths(former);
    }
    if (m_sFile.isEmpty()) {
        return;
    }
    QString folder = QFileInfo(m_sFile).absolutePath();
    while (!QFileInfo::exists(folder) && folder != QFileInfo(folder).absolutePath()) {
        folder = QFileInfo(folder).absolutePath();
    }
    for (const QString & path : {m_sFile, folder}) {
        if (QFileInfo::exists(path)) {
            m_watcher.addPath(path);
        }
    }
}

void project_session::lookAtFile()
{
    if (m_iHolds > 0 || !m_pProject) {
        return;
    }
    const bool wasLost = m_bLost;
    if (const zk::ZkBool result = refresh(); !result && !wasLost) {
        Q_EMIT fileLost(result.getDesc());
    }
}

} // namespace app
