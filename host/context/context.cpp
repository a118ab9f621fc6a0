#include "context/ctx_global.h"
#include "context/ctx_project.h"

#include "model/project.h"
#include "view/main_wnd.h"
#include "zk/zk_sql_database.h"

#include <QDir>

namespace context {

namespace {

struct global_state
{
    QPointer<view::main_wnd> mainWnd;
    QString helpManualUrl;
};

global_state & globalState()
{
    static global_state state;
    return state;
}

} // namespace

view::main_wnd * ctx_global::getMainWnd()
{
    return globalState().mainWnd;
}

void ctx_global::setMainWnd(view::main_wnd * wnd)
{
    globalState().mainWnd = wnd;
}

QString ctx_global::getAppHelpManualUrl()
{
    return globalState().helpManualUrl;
}

void ctx_global::setAppHelpManualUrl(const QString & url)
{
    globalState().helpManualUrl = url;
}

ctx_project & ctx_project::getSingleton()
{
    static ctx_project context;
    return context;
}

QString ctx_project::getPathFromProjectFile(const QString & path) const
{
    if (path.isEmpty() || !m_pProject || m_pProject->getLocation().isEmpty() || QDir::isAbsolutePath(path)) {
        return path;
    }
    return QDir::cleanPath(QDir(m_pProject->getLocation()).absoluteFilePath(path));
}

QSqlDatabase ctx_project::getDatabase() const
{
    return zk::ZkSqlDatabase::getDatabase(m_pProject ? m_pProject->getFileName() : QString());
}

} // namespace context
