// Finding and loading plug-ins: which files are candidates, and how each kind of bad file is told.

#include "plugin/export_interface.h"
#include "plugin/plugin_finder.h"

#include <QDir>
#include <QFile>
#include <QPluginLoader>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

using plugin::loaded_plugin;

namespace {

const QString AskingPlugin = QStringLiteral(KORVANE_BUILD_DIR "/tests/plugins/asking/asking_plugin.so");
const QString OtherInterface = QStringLiteral(KORVANE_BUILD_DIR "/tests/plugins/other/other_interface.so");

QString writeFile(const QString & name, const QByteArray & content)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(name));
    }
    return name;
}

} // namespace

class tst_plugin_finder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsAPlugin()
    {
        zk::ZkBool why(false);
        const std::unique_ptr<loaded_plugin> loaded = loaded_plugin::load(AskingPlugin, why);
        QVERIFY2(loaded, qPrintable(why.getDesc()));
        QVERIFY(why.getValue());
        QCOMPARE(why.getDesc(), QString());
        QVERIFY(loaded->getInterface());
        QCOMPARE(loaded->getInterface()->getName(), QStringLiteral("AskingPlugin"));
        QCOMPARE(loaded->getFileName(), AskingPlugin);
    }

    void destructionDeletesAndUnloads()
    {
        zk::ZkBool why(false);
        std::unique_ptr<loaded_plugin> loaded = loaded_plugin::load(AskingPlugin, why);
        QVERIFY(loaded);
        const QPointer<plugin::export_interface> object = loaded->getInterface();
        QPluginLoader watcher(AskingPlugin);
        QVERIFY(watcher.isLoaded());
        loaded.reset();
        QVERIFY(!object);
        QVERIFY(!watcher.isLoaded());
    }

    void badFiles()
    {
        QTemporaryDir dir;
        zk::ZkBool why(true);
        const QString missing = dir.filePath(QStringLiteral("missing.so"));
        QVERIFY(!loaded_plugin::load(missing, why));
        QVERIFY(!why.getValue());
        QCOMPARE(why.getDesc(), missing + ": the plugin file does not exist");

        QVERIFY(!loaded_plugin::load(dir.path(), why));
        QCOMPARE(why.getDesc(), dir.path() + ": is not a plugin: it is not a file");

        const QString text = writeFile(dir.filePath(QStringLiteral("text.so")), "just text");
        QVERIFY(!loaded_plugin::load(text, why));
        QVERIFY(!why.getValue());
        QVERIFY2(why.getDesc().startsWith(text + ": is not a plugin: "), qPrintable(why.getDesc()));
        QVERIFY(!why.getDesc().contains(QLatin1Char('\n')));

        const QString empty = writeFile(dir.filePath(QStringLiteral("empty.so")), "");
        QVERIFY(!loaded_plugin::load(empty, why));
        QCOMPARE(why.getDesc(), empty + ": is not a plugin: it is empty");

        QFile whole(AskingPlugin);
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QByteArray bytes = whole.readAll();
        const QString cut = writeFile(dir.filePath(QStringLiteral("cut.so")), bytes.left(2000));
        QVERIFY(!loaded_plugin::load(cut, why));
        QVERIFY(!why.getValue());
        QVERIFY2(why.getDesc().startsWith(cut + ": "), qPrintable(why.getDesc()));
    }

    void aPluginThatLacksALibrary()
    {
        QTemporaryDir dir;
        QFile whole(AskingPlugin);
        QVERIFY(whole.open(QIODevice::ReadOnly));
        QByteArray bytes = whole.readAll();
        QVERIFY(bytes.contains("libKorvaneCore.so.1"));
        bytes.replace("libKorvaneCore.so.1", "libKorvaneLost.so.1");
        const QString lost = writeFile(dir.filePath(QStringLiteral("lost.so")), bytes);
        zk::ZkBool why(true);
        QVERIFY(!loaded_plugin::load(lost, why));
        QVERIFY(!why.getValue());
        QVERIFY2(why.getDesc().startsWith(lost + ": the plugin cannot be loaded: "),
                 qPrintable(why.getDesc()));
        QVERIFY2(why.getDesc().contains("libKorvaneLost.so.1"), qPrintable(why.getDesc()));
        QVERIFY(!why.getDesc().contains(QLatin1Char('\n')));
    }

    void aLibraryThatIsNoPlugin()
    {
        zk::ZkBool why(true);
        const QString library = QStringLiteral(KORVANE_BUILD_DIR "/lib/libKorvaneCore.so.1");
        QVERIFY(!loaded_plugin::load(library, why));
        QVERIFY2(why.getDesc().startsWith(library + ": is not a plugin: "), qPrintable(why.getDesc()));
    }

    void aPluginOfAnotherInterface()
    {
        zk::ZkBool why(true);
        QVERIFY(!loaded_plugin::load(OtherInterface, why));
        QVERIFY(!why.getValue());
        QCOMPARE(why.getDesc(), OtherInterface + ": the plugin was built for another interface");
        QVERIFY(!QPluginLoader(OtherInterface).isLoaded());
    }

    void foldersAreThoseOfTheEnvironmentThenTheProgrammes()
    {
        const QString own =
            QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../lib/korvane/plugins");
        qunsetenv("KORVANE_PLUGIN_PATH");
        QCOMPARE(plugin::pluginFolders(), QStringList({own}));
        qputenv("KORVANE_PLUGIN_PATH", "/b::/a");
        QCOMPARE(plugin::pluginFolders(), QStringList({"/b", "/a", own}));
        qunsetenv("KORVANE_PLUGIN_PATH");
    }

    void filesAreSortedWithinTheirFolderAndTakenOnce()
    {
        QTemporaryDir first;
        QTemporaryDir second;
        writeFile(first.filePath(QStringLiteral("b.so")), "x");
        writeFile(first.filePath(QStringLiteral("a.so")), "x");
        writeFile(first.filePath(QStringLiteral("readme.txt")), "x");
        QVERIFY(QDir(first.path()).mkdir(QStringLiteral("folder.so")));
        writeFile(second.filePath(QStringLiteral("a.so")), "x");
        QVERIFY(QFile::link(first.filePath(QStringLiteral("a.so")), second.filePath(QStringLiteral("0.so"))));
        QCOMPARE(
            plugin::findPluginFiles(
                {second.path(), first.path(), QStringLiteral("/no/such/folder"), first.path()}),
            QStringList({second.filePath(QStringLiteral("0.so")), second.filePath(QStringLiteral("a.so")),
                         first.filePath(QStringLiteral("b.so"))}));
        QCOMPARE(plugin::findPluginFiles({}), QStringList());
    }

    void theModuleOfTheDebuggerIsNoPlugin()
    {
        QTemporaryDir dir;
        const QString module = dir.filePath(QStringLiteral("KorvaneLineDebugger.so"));
        QVERIFY(QFile::copy(
            QStringLiteral(KORVANE_BUILD_DIR "/tests/plugins/another_qt/KorvaneLineDebugger.so"), module));
        const QString other = dir.filePath(QStringLiteral("other.so"));
        QVERIFY(QFile::copy(OtherInterface, other));
        QCOMPARE(plugin::findPluginFiles({dir.path()}), QStringList({other}));
    }
};

QTEST_MAIN(tst_plugin_finder)
#include "tst_plugin_finder.moc"
