#include "tools/line_debugger.h"

#include "plugin/plugin_finder.h"
#include "tools/texts.h"
#include "zk/one_line.h"

#include <QDir>
#include <QJsonObject>
#include <QPluginLoader>

namespace tools {

namespace {

/// The module of one folder, or null with the reason, which is empty when the folder has none.
line_debugger * loadFrom(const QString & folder, QString & reason)
{
    // Without the ending, which is the system's.
    QPluginLoader loader(QDir(folder).filePath(QStringLiteral("KorvaneLineDebugger")));
    const QString file = QDir::toNativeSeparators(loader.fileName());
    if (file.isEmpty()) {
        return nullptr;
    }
    const auto failed = [&](const QString & why) -> line_debugger * {
        reason = texts::tr("%1 cannot be loaded (%2); install it again").arg(file, zk::oneLine(why));
        return nullptr;
    };
    // Asked for before anything is loaded: with another Qt the module may not find what it calls.
    const QJsonObject about = loader.metaData();
    if (about.isEmpty()) {
        return failed(texts::tr("it is not a plugin"));
    }
    if (about.value(QLatin1String("IID")).toString() != QLatin1String(KORVANE_LINE_DEBUGGER_IID)) {
        return failed(texts::tr("it was built for another interface"));
    }
    const QString builtFor =
        about.value(QLatin1String("MetaData")).toObject().value(QLatin1String("qtVersion")).toString();
    if (builtFor != QLatin1String(qVersion())) {
        reason = texts::tr("%1 was built for Qt %2, but this is Qt %3; install the one for this Qt")
                     .arg(file, builtFor, QLatin1String(qVersion()));
        return nullptr;
    }
    // What the engine holds of it may outlive the loader.
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    auto * const module = qobject_cast<line_debugger *>(loader.instance());
    return module ? module : failed(loader.errorString());
}

} // namespace

line_debugger * loadLineDebugger(QString & reason)
{
    const QStringList folders = plugin::pluginFolders();
    QString firstReason;
    for (const QString & folder : folders) {
        QString why;
        if (line_debugger * const found = loadFrom(folder, why)) {
            return found;
        }
        firstReason = firstReason.isEmpty() ? why : firstReason;
    }
    reason = firstReason.isEmpty()
                 ? texts::tr("KorvaneLineDebugger was not found in %1; install it to stop at lines")
                       .arg(folders.join(QStringLiteral(", ")))
                 : firstReason;
    return nullptr;
}

} // namespace tools
