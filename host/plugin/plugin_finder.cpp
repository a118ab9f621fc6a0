#include "plugin/plugin_finder.h"

#include "plugin/export_interface.h"
#include "plugin/module_ids.h"
#include "plugin/texts.h"
#include "zk/one_line.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QSet>

namespace plugin {

namespace {

std::unique_ptr<loaded_plugin> refuse(zk::ZkBool & why, const QString & file, const QString & reason)
{
    why = zk::ZkBool::failure(QDir::toNativeSeparators(file) + QStringLiteral(": ") + zk::oneLine(reason));
    return nullptr;
}

/// Why a plug-in with that IID cannot be used: it names another interface than this one's. Empty when it can,
/// and for a plug-in whose IID is a name of its own, which shows only once it is loaded.
QString otherInterface(const QString & iid)
{
    const QString own = QStringLiteral(KORVANE_PLUGIN_IID);
    const qsizetype number = own.indexOf(QLatin1Char('/')) + 1;
    return iid == own || !iid.startsWith(own.left(number))
               ? QString()
               : texts::tr(
                     "the plugin was built for version %1 of the plugin interface, and this program has "
                     "version %2; take the plugin that belongs to this program, or build it anew")
                     .arg(iid.mid(number), own.mid(number));
}

/// Whether `file` is the module of the script debugger, which lies beside the plug-ins and is none.
bool isLineDebugger(const QString & file)
{
    return QPluginLoader(file).metaData().value(QLatin1String("IID")).toString() ==
           QLatin1String(KORVANE_LINE_DEBUGGER_IID);
}

} // namespace

loaded_plugin::loaded_plugin() = default;

loaded_plugin::~loaded_plugin()
{
    if (m_pInterface) {
        m_pInterface->terminate();
        delete m_pInterface;
    }
    if (m_pLoader) {
        m_pLoader->unload();
    }
}

std::unique_ptr<loaded_plugin> loaded_plugin::load(const QString & file, zk::ZkBool & why)
{
    const QFileInfo info(file);
    if (!info.exists()) {
        return refuse(why, file, texts::tr("the plugin file does not exist"));
    }
    if (!info.isFile()) {
        return refuse(why, file, texts::tr("is not a plugin: it is not a file"));
    }
    if (info.size() == 0) {
        return refuse(why, file, texts::tr("is not a plugin: it is empty"));
    }
    std::unique_ptr<loaded_plugin> result(new loaded_plugin);
    result->m_sFileName = info.absoluteFilePath();
    result->m_pLoader = std::make_unique<QPluginLoader>(result->m_sFileName);
    // Asked for before anything is loaded, so that no code of a file without metadata ever runs.
    if (result->m_pLoader->metaData().isEmpty()) {
        return refuse(why, file, texts::tr("is not a plugin: %1").arg(result->m_pLoader->errorString()));
    }
    const QString iid = result->m_pLoader->metaData().value(QLatin1String("IID")).toString();
    if (const QString other = otherInterface(iid); !other.isEmpty()) {
        return refuse(why, file, other);
    }
    if (!result->m_pLoader->load()) {
        return refuse(why, file,
                      texts::tr("the plugin cannot be loaded: %1").arg(result->m_pLoader->errorString()));
    }
    result->m_pInterface = qobject_cast<export_interface *>(result->m_pLoader->instance());
    if (!result->m_pInterface) {
        return refuse(why, file, texts::tr("the plugin was built for another interface"));
    }
    why = zk::ZkBool::success();
    return result;
}

QStringList pluginFolders()
{
    QStringList folders =
        qEnvironmentVariable("KORVANE_PLUGIN_PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts);
    folders << QDir::cleanPath(QDir(QCoreApplication::applicationDirPath())
                                   .absoluteFilePath(QStringLiteral("../" KORVANE_PLUGIN_SUBDIR)));
    return folders;
}

QStringList findPluginFiles(const QStringList & folders)
{
    QStringList files;
    QSet<QString> seen;
    for (const QString & folder : folders) {
        const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo & entry : entries) {
            const QString file = entry.canonicalFilePath();
            if (QLibrary::isLibrary(entry.fileName()) && !seen.contains(file) && !isLineDebugger(file)) {
                seen.insert(file);
                files << entry.absoluteFilePath();
            }
        }
    }
    return files;
}

} // namespace plugin
