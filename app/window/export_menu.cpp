#include "app/window/export_menu.h"

#include "app/shown_text.h"

#include "plugin/export_interface.h"

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
    if (!plugin->hasSettings()) {
        return;
    }
    QAction * const settings =
        addAction(plugin->getIconSettings(), tr("Settings of %1…").arg(withoutMnemonic(plugin->getName())));
    settings->setObjectName(QStringLiteral("m_actSettings_") + plugin->getName());
    settings->setToolTip(tr("Edit the settings that are stored in the project"));
    settings->setStatusTip(tr("Edit the settings that are stored in the project"));
    connect(settings, &QAction::triggered, this, [this, plugin] { Q_EMIT settingsRequested(plugin); });
    m_commands.append(settings);
}

} // namespace app
