#include "app/window/export_menu.h"

#include "app/shown_text.h"

#include "plugin/export_interface.h"
#include "plugin/statement_source.h"

namespace app {

export_menu::export_menu(const found_plugins & found, QWidget * parent) : QMenu(tr("&Export"), parent)
{
    setObjectName(QStringLiteral("m_mnuExport"));
    setToolTipsVisible(true);
    for (const auto & loaded : found.plugins) {
        addPlugin(loaded->getInterface());
    }
    if (found.plugins.empty()) {
        QAction * const none = addAction(tr("No plugin was found"));
        none->setEnabled(false);
        none->setToolTip(QStringLiteral("<p style='white-space:pre'>%1</p>")
                             .arg(plugin::pluginFolders().join(QLatin1Char('\n')).toHtmlEscaped()));
    }
}

void export_menu::addPlugin(plugin::export_interface * plugin)
{
    const QString about =
        tr("%1 %2: %3").arg(plugin->getName(), plugin->getVersion(), plugin->getDescription());
    addSection(withoutMnemonic(plugin->getName()));
    QAction * const run = addAction(plugin->getIcon(), withoutMnemonic(plugin->getShortDesc()));
    run->setObjectName(QStringLiteral("m_actExport_") + plugin->getName());
    if (m_commands.isEmpty()) {
        run->setShortcut(Qt::CTRL | Qt::Key_E);
    }
    const QString debuggerHint = tr("Hold Shift to start the script debugger.");
    run->setToolTip(
        QStringLiteral("<p>%1</p><p>%2</p>").arg(about.toHtmlEscaped(), debuggerHint.toHtmlEscaped()));
    run->setStatusTip(about);
    connect(run, &QAction::triggered, this, [this, plugin] { Q_EMIT exportRequested(plugin); });
    m_commands.append(run);
    addCheck(plugin);
    if (!plugin->hasSettings()) {
        return;
    }
    QAction * const settings = addAction(plugin->getIconSettings(), tr("&Settings…"));
    settings->setObjectName(QStringLiteral("m_actSettings_") + plugin->getName());
    settings->setToolTip(tr("Edit the settings of the export that are stored in the project"));
    settings->setStatusTip(settings->toolTip());
    connect(settings, &QAction::triggered, this, [this, plugin] { Q_EMIT settingsRequested(plugin); });
    m_commands.append(settings);
}

/// What is told of the scripts can be foretold only for a plug-in that tells their statements.
void export_menu::addCheck(plugin::export_interface * plugin)
{
    if (!qobject_cast<plugin::statement_source *>(plugin)) {
        return;
    }
    QAction * const check = addAction(tr("&Check"));
    check->setObjectName(QStringLiteral("m_actCheck_") + plugin->getName());
    check->setToolTip(tr("Foretell what the database will do with the scripts; nothing is written"));
    check->setStatusTip(check->toolTip());
    connect(check, &QAction::triggered, this, [this, plugin] { Q_EMIT checkRequested(plugin); });
    m_commands.append(check);
}

} // namespace app
