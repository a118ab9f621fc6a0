// The sample plug-in in the main window, built as somebody else would build it.

#include "app/window/window_bench.h"
#include "installed/installed_tree.h"

#include <QMenu>

class tst_sample_plugin_window : public QObject
{
    Q_OBJECT

private slots:
    void exportsFromTheMenu();
};

void tst_sample_plugin_window::exportsFromTheMenu()
{
    const support::installed_tree tree;
    const support::program_result installed = tree.install();
    QVERIFY2(installed.status == 0, installed.errors.constData());
    support::window_bench bench(
        R"({"format": "korvane-project", "formatVersion": 1, "name": "shop", "entities": [
            {"id": 1, "name": "client", "tableName": "t_client", "properties": [
                {"id": 2, "name": "id", "type": "long", "identifier": true} ]} ]})");
    const support::program_result built = tree.buildSamplePlugin(bench.path(QStringLiteral("plugins")));
    QVERIFY2(built.status == 0, (built.output + built.errors).constData());
    qputenv("KORVANE_PLUGIN_PATH", QFile::encodeName(bench.path(QStringLiteral("plugins"))));
    bench.open();

    QAction * entry = nullptr;
    for (QAction * const action : bench.window().findChildren<QAction *>()) {
        if (action->text() == QLatin1String("Export a data dictionary")) {
            entry = action;
        }
    }
    QVERIFY(entry);
    QTRY_VERIFY(entry->isEnabled());
    entry->trigger();
    const QString file = bench.path(QStringLiteral("shop.md"));
    QTRY_VERIFY2(bench.told().contains(QStringLiteral("Data dictionary written: ") + file),
                 qPrintable(bench.told()));
    QCOMPARE(bench.content(QStringLiteral("shop.md")),
             QByteArray("# shop\n\n## client\n\nTable `t_client`\n\n| property | column | type | |\n"
                        "| --- | --- | --- | --- |\n| id | id | long | key |\n"));
    bench.closeWindow();
}

QTEST_MAIN(tst_sample_plugin_window)
#include "tst_sample_plugin_window.moc"
