#pragma once

#include "korvane_global.h"
#include "zk/zk_bool.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QPluginLoader;

namespace plugin {

class export_interface;

/// A plug-in that was loaded from a file. Destroying it tells the plug-in to terminate, deletes its object
/// and unloads its library.
class KORVANE_EXPORT loaded_plugin
{
public:
    /// Loads the plug-in file `file`. On failure the result is empty and `why` says what, where and why: the
    /// file is missing, is no plug-in, or was built for another interface.
    static std::unique_ptr<loaded_plugin> load(const QString & file, zk::ZkBool & why);
    ~loaded_plugin();
    loaded_plugin(const loaded_plugin &) = delete;
    loaded_plugin & operator=(const loaded_plugin &) = delete;

    [[nodiscard]] export_interface * getInterface() const { return m_pInterface; }
    [[nodiscard]] QString getFileName() const { return m_sFileName; }

private:
    loaded_plugin();
    std::unique_ptr<QPluginLoader> m_pLoader;
    export_interface * m_pInterface = nullptr;
    QString m_sFileName;
};

/// The folders that are searched for plug-ins, in order: those of the environment variable
/// KORVANE_PLUGIN_PATH (separated as in PATH), then the one that belongs to the program.
[[nodiscard]] KORVANE_EXPORT QStringList pluginFolders();

/// Absolute names of the files in `folders` that may be plug-ins, sorted within each; no code of them runs.
/// The script debugger's module lies there, too, and is left out.
[[nodiscard]] KORVANE_EXPORT QStringList findPluginFiles(const QStringList & folders = pluginFolders());

} // namespace plugin
