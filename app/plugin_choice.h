#pragma once

#include "plugin/plugin_finder.h"

#include <QList>
#include <QPair>
#include <QStringList>

#include <memory>
#include <vector>

namespace plugin {
class statement_source;
}

namespace app {

/// The plug-in that a command line asks for, and what it hands to it.
struct plugin_request
{
    QString name; ///< name of the plug-in, or a path of its file; empty for the only one found
    QList<QPair<QString, QString>> options; ///< "--Plugin_option" and its value
};

/// The plug-ins that are there: those of the plug-in folders, of two with one name the first.
struct found_plugins
{
    std::vector<std::unique_ptr<plugin::loaded_plugin>> plugins;
    /// One line for each file that is no usable plug-in, and for each that an earlier one hides.
    QStringList problems;

    /// Loads what `request` may mean: the one file that it names, else the plug-ins of the folders.
    static found_plugins forRequest(const plugin_request & request);
    /// Loads the plug-ins of the plug-in folders.
    static found_plugins inFolders();
    /// Loads one file.
    static found_plugins inFile(const QString & file);
};

/// The plug-in that `request` means, or null with the exit status and one line of reason: no such plug-in
/// (Failed), or a command line that does not tell which one, or with an option that no plug-in has
/// (WrongUsage).
plugin::export_interface * choosePlugin(const found_plugins & found, const plugin_request & request,
                                        int & status, QString & reason);

/// The same for a plug-in that tells the statements of its scripts.
plugin::statement_source * chooseStatementSource(const found_plugins & found, const plugin_request & request,
                                                 int & status, QString & reason);

/// The first plug-in that tells the statements of its scripts; null when none does.
[[nodiscard]] plugin::statement_source * firstStatementSource(const found_plugins & found);

/// Says that the plug-in folders have none, and what to do.
[[nodiscard]] QString noPluginText();

/// Whether the plug-in tells of `option` ("--Plugin_option") in its command-line help.
[[nodiscard]] bool hasOption(const plugin::export_interface & plugin, const QString & option);

} // namespace app
