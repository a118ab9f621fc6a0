#pragma once

#include "app/plugin_choice.h"

#include "plugin/export_interface.h"

#include <QMenu>

namespace app {

/// The menu of the export plug-ins: for each one an entry that exports and, where it has settings, one that
/// edits them.
class export_menu : public QMenu
{
    Q_OBJECT

public:
    /// @param found the plug-ins, which outlive the menu
    export_menu(const found_plugins & found, QWidget * parent);

    /// The entries that need a project, and no export under way.
    [[nodiscard]] QList<QAction *> commands() const { return m_commands; }
    /// The entry of the first plug-in that exports; null without a plug-in.
    [[nodiscard]] QAction * mainCommand() const { return m_commands.value(0); }

Q_SIGNALS:
    void exportRequested(plugin::export_interface * plugin);
    void settingsRequested(plugin::export_interface * plugin);
    void checkRequested(plugin::export_interface * plugin);

private:
    void addPlugin(plugin::export_interface * plugin);
    void addCheck(plugin::export_interface * plugin);

    QList<QAction *> m_commands;
};

} // namespace app
