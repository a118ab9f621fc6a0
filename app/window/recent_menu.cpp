#include "app/window/recent_menu.h"

#include "app/shown_text.h"

#include "zk/visible_text.h"

#include <QDir>
#include <QFileInfo>

namespace app {

recent_menu::recent_menu(QWidget * parent) : QMenu(tr("Open &recent"), parent)
{
    setObjectName(QStringLiteral("m_mnuRecent"));
    setToolTipsVisible(true);
}

void recent_menu::setFiles(const QStringList & files)
{
    clear();
    for (const QString & file : files) {
        const QString name = zk::visibleText(QFileInfo(file).fileName());
        const QString path = zk::visibleText(QDir::toNativeSeparators(file));
        QAction * const action = addAction(withoutMnemonic(name));
        action->setToolTip(plainToolTipLine(path));
        action->setStatusTip(path);
        connect(action, &QAction::triggered, this, [this, file] { Q_EMIT fileRequested(file); });
    }
    if (files.isEmpty()) {
        addAction(tr("No recent projects"))->setEnabled(false);
        return;
    }
    addSeparator();
    QAction * const clearAction = addAction(tr("&Clear this list"));
    clearAction->setObjectName(QStringLiteral("m_actClearRecent"));
    connect(clearAction, &QAction::triggered, this, &recent_menu::clearRequested);
}

} // namespace app
