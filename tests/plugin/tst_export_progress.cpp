// What an export tells besides its messages: how far it is, and which files are complete.

#include "plugin/builder/ddl_export_builder.h"
#include "plugin/ddl_export.h"

#include "support/shop_text.h"
#include "support/stored_project.h"

#include "storage/history.h"

#include <QDir>
#include <QTest>

#include <utility>

using plugin::ddl_export;
using support::ShopText;

namespace {

/// ShopText after every kind of change: "country" is dropped, "person" renamed and without its relationship,
/// "tag" is new, with an index and a link table.
const QByteArray NextShopText = R"x({
  "format": "korvane-project", "formatVersion": 1, "name": "shop",
  "entities": [
    { "id": 2, "name": "person", "tableName": "people", "properties": [
      { "id": 20, "name": "id", "type": "long", "identifier": true } ] },
    { "id": 3, "name": "tag", "properties": [
      { "id": 31, "name": "id", "type": "long", "identifier": true },
      { "id": 32, "name": "label", "type": "QString", "index": true },
      { "id": 33, "name": "people", "relationship": { "id": 40, "type": "many-to-many", "target": 2,
          "extraTable": "l", "foreignKey": "a", "foreignKeyOwner": "b" } } ] } ] })x";

} // namespace

class tst_export_progress : public QObject
{
    Q_OBJECT

private slots:
    void oneScript();
    void scriptWithoutForeignKeys();
    void everyScriptCounts_data();
    void everyScriptCounts();
    void evolutionWithoutTags();
    void filesAreToldWhenTheyAreComplete();
    void failedScriptIsNoFile();
    void aSecondBuildTellsTheSameAgain();
    void endsWithTheFirstFailure_data();
    void endsWithTheFirstFailure();

private:
    /// Exports the project with the settings that `prepare` makes; keeps what was told.
    zk::ZkBool run(support::stored_project & stored, const std::function<void(ddl_export &)> & prepare);

    QList<int> m_done;
    QList<int> m_totals;
    QStringList m_files;
    QStringList m_missing; ///< files that were told of before they were there, whole
};

zk::ZkBool tst_export_progress::run(support::stored_project & stored,
                                    const std::function<void(ddl_export &)> & prepare)
{
    m_done.clear();
    m_totals.clear();
    m_files.clear();
    m_missing.clear();
    ddl_export plugin;
    plugin.setDDLExportPath(stored.path());
    plugin.setDatabaseType(ddl_export::db_postgresql);
    plugin.setExportRelationships(true);
    prepare(plugin);
    if (plugin.saveSettings().isValid()) {
        return zk::ZkBool::failure(QStringLiteral("the settings cannot be stored"));
    }
    connect(&plugin, &plugin::base_interface::onProgress, this, [this](int done, int total) {
        m_done << done;
        m_totals << total;
    });
    connect(&plugin, &plugin::base_interface::onFileWritten, this, [this](const QString & file) {
        m_files << QFileInfo(file).fileName();
        QFile script(file);
        if (!script.open(QIODevice::ReadOnly) || !script.readAll().contains("TABLE")) {
            m_missing << file;
        }
    });
    return plugin.exportProject(stored.project());
}

void tst_export_progress::oneScript()
{
    support::stored_project stored(ShopText);
    QVERIFY(run(stored, [](ddl_export &) {}));
    // Two tables are 600 units, link tables and indexes 100 each, two rounds of foreign keys 200.
    QCOMPARE(m_done, (QList<int>{0, 300, 600, 700, 800, 900, 1000}));
    QCOMPARE(m_totals, QList<int>(7, 1000));
}

void tst_export_progress::scriptWithoutForeignKeys()
{
    support::stored_project stored(ShopText);
    QVERIFY(run(stored, [](ddl_export & plugin) { plugin.setExportRelationships(false); }));
    QCOMPARE(m_done, (QList<int>{0, 300, 600, 700, 1000}));
}

void tst_export_progress::everyScriptCounts_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("total");
    // Two tags: the first version whole, two steps.
    QTest::newRow("full") << 0 << 1000;
    QTest::newRow("evolution") << 1 << 3000;
    QTest::newRow("both") << 2 << 4000;
}

void tst_export_progress::everyScriptCounts()
{
    QFETCH(int, mode);
    QFETCH(int, total);
    support::stored_project stored(ShopText);
    int number = 0;
    QVERIFY(!storage::history::tag(stored.file(), QStringLiteral("one"), number).isValid());
    stored.replaceModel(QByteArray(ShopText).replace("\"country\", \"properties\"",
                                                     "\"country\", \"tableName\": \"t\", \"properties\""));
    QVERIFY(!storage::history::tag(stored.file(), QStringLiteral("two"), number).isValid());
    QVERIFY(run(stored, [mode](ddl_export & plugin) {
        plugin.setExportDatabaseSchema(static_cast<ddl_export::export_db_schema>(mode));
    }));
    QCOMPARE(m_totals, QList<int>(m_totals.size(), total));
    QCOMPARE(m_done.constFirst(), 0);
    QCOMPARE(m_done.constLast(), total);
    for (qsizetype i = 1; i < m_done.size(); ++i) {
        QVERIFY2(m_done[i - 1] < m_done[i], qPrintable(QString::number(i)));
    }
    for (int script = 1; script <= total / 1000; ++script) {
        QVERIFY2(m_done.contains(script * 1000), qPrintable(QString::number(script)));
    }
    QCOMPARE(m_files.size(), total / 1000);
}

void tst_export_progress::evolutionWithoutTags()
{
    support::stored_project stored(ShopText);
    QVERIFY(run(stored, [](ddl_export & plugin) { plugin.setExportDatabaseSchema(ddl_export::evolution); }));
    QVERIFY(m_done.isEmpty());
    QVERIFY(m_files.isEmpty());
}

void tst_export_progress::filesAreToldWhenTheyAreComplete()
{
    support::stored_project stored(ShopText);
    int number = 0;
    QVERIFY(!storage::history::tag(stored.file(), QString(), number).isValid());
    stored.replaceModel(QByteArray(ShopText).replace("\"country\", \"properties\"",
                                                     "\"country\", \"tableName\": \"t\", \"properties\""));
    QVERIFY(run(stored,
                [](ddl_export & plugin) { plugin.setExportDatabaseSchema(ddl_export::full_and_evolution); }));
    QCOMPARE(m_files, (QStringList{"shop_postgresql_db_schema_full.sql", "shop_postgresql_db_schema_v1.sql",
                                   "shop_postgresql_db_schema_v1_to_v2.sql"}));
    QCOMPARE(m_missing, QStringList());
}

void tst_export_progress::failedScriptIsNoFile()
{
    support::stored_project stored(ShopText);
    QDir(stored.path()).mkdir(QStringLiteral("shop_postgresql_db_schema_full.sql"));
    QVERIFY(!run(stored, [](ddl_export &) {}));
    QVERIFY(m_files.isEmpty());
    QCOMPARE(m_done, QList<int>{0});
}

void tst_export_progress::aSecondBuildTellsTheSameAgain()
{
    support::stored_project stored(ShopText);
    ddl_export plugin;
    plugin.setDDLExportPath(stored.path());
    plugin.setExportRelationships(true);
    const auto builder = plugin.getBuilder(ddl_export::db_postgresql);
    QList<int> told;
    connect(builder.get(), &plugin::ddl_export_builder::onProgress, this,
            [&told](int done, int) { told << done; });
    QVERIFY(builder->build(stored.project()));
    const QList<int> first = std::exchange(told, {});
    QCOMPARE(first.constFirst(), 0);
    QCOMPARE(first.constLast(), 1000);
    QVERIFY(builder->build(stored.project()));
    QCOMPARE(told, first);
}

void tst_export_progress::endsWithTheFirstFailure_data()
{
    QTest::addColumn<int>("schema");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QList<int>>("done");
    // 1000 units a script: of a full one 600 for tables, 100 for link tables, 100 for indexes, 200 for
    // foreign keys; of a comparison 600 for changed entities, the rest alike.
    const QList<int> firstScript = {0, 300, 600, 700, 800, 900, 1000};
    QTest::newRow("begin") << 0 << "DDL_EXPORT_BEGIN" << QList<int>{0};
    QTest::newRow("table") << 0 << "CREATE_TABLE" << QList<int>{0, 300};
    QTest::newRow("foreign key") << 0 << "ADD_FOREIGN_KEY" << QList<int>{0, 300, 600, 700, 800, 900, 1000};
    QTest::newRow("dropped table") << 1 << "DROP_TABLE" << firstScript;
    QTest::newRow("renamed table") << 1 << "RENAME_TABLE" << firstScript + QList<int>{1300};
    QTest::newRow("link table") << 1 << "CREATE_EXTRA_TABLE" << firstScript + QList<int>{1300, 1600, 1700};
    QTest::newRow("index") << 1 << "CREATE_INDEX" << firstScript + QList<int>{1300, 1600, 1700, 1800};
    QTest::newRow("dropped foreign key")
        << 1 << "DROP_FOREIGN_KEY" << firstScript + QList<int>{1300, 1600, 1700, 1800, 1900};
}

void tst_export_progress::endsWithTheFirstFailure()
{
    QFETCH(int, schema);
    QFETCH(QString, action);
    QFETCH(QList<int>, done);
    support::stored_project stored(ShopText);
    int number = 0;
    QVERIFY(!storage::history::tag(stored.file(), QString(), number).isValid());
    if (schema == ddl_export::evolution) {
        stored.replaceModel(NextShopText);
    }
    QFile script(stored.path() + QStringLiteral("/hook.js"));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("function exportStep(a, b, c, d, p) { if (p.action === '" + action.toUtf8() +
                 "') throw new Error('stop'); }");
    script.close();
    const zk::ZkBool result = run(stored, [&](ddl_export & plugin) {
        plugin.setExportDatabaseSchema(static_cast<ddl_export::export_db_schema>(schema));
        plugin.setCustomScriptFile(script.fileName());
    });
    QVERIFY2(result.getDesc().contains("Error: stop"), qPrintable(result.getDesc()));
    QCOMPARE(m_done, done);
}

QTEST_MAIN(tst_export_progress)
#include "tst_export_progress.moc"
