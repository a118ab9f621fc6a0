#include "export_bench.h"

#include "storage/text_form.h"

#include <QtTest>

using plugin::ddl_export;

namespace {

const QString GoldenFolder = QStringLiteral(KORVANE_SOURCE_DIR "/tests/plugin/builder/golden/");

} // namespace

/// Whole scripts of a model that touches every rule, compared byte by byte with the files beside this test.
///
/// KORVANE_UPDATE_GOLDENS=1 in the environment rewrites the files instead: review the difference.
class tst_golden_scripts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheScripts_data();
    void writesTheScripts();
};

namespace {

std::shared_ptr<model::project> readModel(const QString & name)
{
    QFile file(GoldenFolder + name);
    const auto project = std::make_shared<model::project>(1);
    if (!file.open(QIODevice::ReadOnly)) {
        return nullptr;
    }
    const zk::ZkBool result = storage::text_form::read(file.readAll(), name, nullptr, *project);
    if (!result) {
        qWarning("%s", qPrintable(result.getDesc()));
        return nullptr;
    }
    return project;
}

} // namespace

void tst_golden_scripts::writesTheScripts_data()
{
    QTest::addColumn<int>("db");
    QTest::addColumn<bool>("relationships");
    for (const plugin::database & db : plugin::allDatabases()) {
        QTest::newRow(db.shortName) << int(db.number) << true;
    }
    QTest::newRow("mysql without relationships") << int(ddl_export::db_mysql) << false;
}

void tst_golden_scripts::writesTheScripts()
{
    QFETCH(int, db);
    QFETCH(bool, relationships);
    const auto previous = readModel("shop_v1.json");
    const auto current = readModel("shop_v2.json");
    QVERIFY(previous && current);

    export_bench bench(static_cast<ddl_export::database_type>(db));
    bench.plugin.setExportRelationships(relationships);
    QVERIFY(bench.builder().builder().build(*current));
    QVERIFY(bench.builder().compare(previous, current, 2));
    QCOMPARE(bench.files().size(), 2);
    for (const QString & name : bench.files()) {
        const QString goldenName =
            relationships ? name : QString(name).replace("_db_schema", "_db_schema_without_relationships");
        QFile golden(GoldenFolder + goldenName);
        const QByteArray written = bench.content(name).toUtf8();
        if (qEnvironmentVariableIntValue("KORVANE_UPDATE_GOLDENS") == 1) {
            QVERIFY(golden.open(QIODevice::WriteOnly));
            QCOMPARE(golden.write(written), written.size());
            continue;
        }
        QVERIFY2(golden.open(QIODevice::ReadOnly), qPrintable(golden.fileName()));
        // Line by line first: the message then shows the difference.
        const QByteArray expected = golden.readAll();
        QCOMPARE(QString::fromUtf8(written).split(QChar(10)), QString::fromUtf8(expected).split(QChar(10)));
        QCOMPARE(written, expected);
    }
}

QTEST_GUILESS_MAIN(tst_golden_scripts)
#include "tst_golden_scripts.moc"
