// What the plug-in says of itself.

#include "plugin/builder/databases.h"
#include "plugin/builder/ddl_export_builder.h"
#include "plugin/ddl_export.h"
#include "plugin/export_interface.h"
#include "support/virtual_places.h"

#include "tools/custom_javascript.h"

#include <QApplication>
#include <QMetaMethod>
#include <QTest>

class tst_identity : public QObject
{
    Q_OBJECT

private slots:
    void names();
    void commandLineHelp();
    void icons();
    void iconImagesExist_data();
    void iconImagesExist();
    void signalsKeepTheirOrder();
    void operationsKeepTheirOrder();
    void fixedAnswers();
    void defaults();
    void terminateReleasesTheScriptEngine();
    void databases_data();
    void databases();
    void everyDatabaseIsInTheTable();
    void showsNoSettingsWithoutADialog();
    void asksTheDialogThatWasHandedIn();
};

void tst_identity::names()
{
    const plugin::ddl_export p;
    QCOMPARE(p.getGuid(), QStringLiteral("713A034E-3F7A-422A-BC81-22132DA57110"));
    QCOMPARE(p.getName(), QStringLiteral("KorvGenericDDLExport"));
    QCOMPARE(p.getShortDesc(), QStringLiteral("Export to DDL SQL script file"));
    QCOMPARE(p.getDescription(),
             QStringLiteral("This plugin exports current opened project to a DDL SQL script file."));
    QCOMPARE(p.getVersion(), QStringLiteral("1.1.7"));
}

void tst_identity::commandLineHelp()
{
    const plugin::ddl_export p;
    const QString expected = QStringLiteral(
        "\n  !!! Note : this plugin loads automatically previous parameters values before starting the "
        "export process, but you can use following parameters to override them !!!"
        "\n  --KorvGenericDDLExport_path=\"<Export Path>\" : [Optional] DDL export path parameter"
        "\n  --KorvGenericDDLExport_db_type=<numeric value> : [Optional] Database type (0=default, 1=sqlite, "
        "2=mysql, 3=postgresql, 4=oracle, 5=mssqlserver)"
        "\n  --KorvGenericDDLExport_relation_as_fk=0/1 : [Optional] Export relationships as foreign keys in "
        "database"
        "\n  --KorvGenericDDLExport_schema_type=<numeric value> : [Optional] Way to export database schema "
        "(0=full, 1=evolution, 2=full_and_evolution)"
        "\n  --KorvGenericDDLExport_custom_javacript=\"<Custom JS>\" : [Optional] Custom script (javascript "
        "file) to change the default behaviour of the export process");
    QCOMPARE(p.getCommandLineInfos(), expected);
    QCOMPARE(p.getCommandLineInfos().count(QLatin1Char('\n')), 6);
    QVERIFY(p.getCommandLineInfos().startsWith(QLatin1Char('\n')));
    QVERIFY(!p.getCommandLineInfos().endsWith(QLatin1Char('\n')));
}

void tst_identity::icons()
{
    const plugin::ddl_export p;
    const QImage file(QStringLiteral(":/ddl_export/images/ddl_export.png"));
    QVERIFY(!file.isNull());
    const auto imageOf = [&file](const QIcon & icon) { return icon.pixmap(file.size()).toImage(); };
    const QImage expected = imageOf(QIcon(QStringLiteral(":/ddl_export/images/ddl_export.png")));
    QVERIFY(expected != imageOf(QIcon(QStringLiteral(":/ddl_export/images/ok.png"))));
    QCOMPARE(imageOf(p.getIcon()), expected);
    QCOMPARE(imageOf(p.getIconSettings()), expected);
}

void tst_identity::iconImagesExist_data()
{
    QTest::addColumn<QString>("name");
    for (const char * name :
         {"ddl_export", "default_list", "debug", "help_manual", "ok", "cancel", "delete"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_identity::iconImagesExist()
{
    QFETCH(QString, name);
    const QString path = QStringLiteral(":/ddl_export/images/") + name;
    const QImage single(path + QStringLiteral(".png"));
    const QImage twice(path + QStringLiteral("@2x.png"));
    QVERIFY(!single.isNull());
    QCOMPARE(twice.size(), single.size() * 2);
    QVERIFY2(single.hasAlphaChannel(), "an icon has to stand on light and on dark ground");
}

void tst_identity::signalsKeepTheirOrder()
{
    for (const QMetaObject * const type :
         {&plugin::base_interface::staticMetaObject, &plugin::ddl_export_builder::staticMetaObject}) {
        QByteArrayList names;
        for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
            if (type->method(i).methodType() == QMetaMethod::Signal) {
                names.append(type->method(i).methodSignature());
            }
        }
        QCOMPARE(names, QByteArrayList(
                            {"onMessage(QString,int,int)", "onProgress(int,int)", "onFileWritten(QString)"}));
    }
}

/// A plug-in of another build finds the operations by their places.
void tst_identity::operationsKeepTheirOrder()
{
    using plugin::export_interface;
    const std::vector<std::size_t> places = support::virtualPlaces(
        &export_interface::getGuid, &export_interface::getName, &export_interface::getShortDesc,
        &export_interface::getDescription, &export_interface::getVersion,
        &export_interface::getCommandLineInfos, &export_interface::getIcon,
        &export_interface::getIconSettings, &export_interface::hasSettings, &export_interface::showSettings,
        &export_interface::saveSettings, &export_interface::loadSettings, &export_interface::clearSettings,
        &export_interface::getPreviewWidget, &export_interface::terminate, &export_interface::exportProject);
    QCOMPARE(places, support::inARow(places, 16));
}

void tst_identity::fixedAnswers()
{
    plugin::ddl_export p;
    QVERIFY(p.hasSettings());
    QCOMPARE(p.getPreviewWidget(), nullptr);
    const plugin::export_interface * const host = qobject_cast<plugin::export_interface *>(&p);
    QVERIFY(host);
    QCOMPARE(host->metaObject()->className(), "plugin::ddl_export");
}

void tst_identity::defaults()
{
    const plugin::ddl_export p;
    QCOMPARE(p.getDDLExportPath(false), QString());
    QCOMPARE(static_cast<int>(p.getDatabaseType()), 1);
    QCOMPARE(static_cast<int>(p.getExportDatabaseSchema()), 0);
    QCOMPARE(p.getCustomScriptFile(), QString());
    QVERIFY(!p.getExportRelationships());
    QVERIFY(!p.getCustomScript());
}

void tst_identity::terminateReleasesTheScriptEngine()
{
    plugin::ddl_export p;
    p.setCustomScript(std::make_shared<tools::custom_javascript>());
    QVERIFY(p.getCustomScript());
    p.terminate();
    QVERIFY(!p.getCustomScript());
}

void tst_identity::databases_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("names");
    QTest::newRow("generic") << 0 << "generic, Generic SQL, default";
    QTest::newRow("SQLite") << 1 << "sqlite, SQLite, sqlite";
    QTest::newRow("MySQL") << 2 << "mysql, MySQL, mysql";
    QTest::newRow("PostgreSQL") << 3 << "postgresql, PostgreSQL, postgresql";
    QTest::newRow("Oracle") << 4 << "oracle, Oracle, oracle";
    QTest::newRow("SQL Server") << 5 << "mssqlserver, MS SQL Server, mssqlserver";
    QTest::newRow("below them") << -1 << "generic, Generic SQL, default";
    QTest::newRow("above them") << 6 << "generic, Generic SQL, default";
}

void tst_identity::databases()
{
    QFETCH(int, number);
    const plugin::database & db = plugin::databaseOf(static_cast<plugin::ddl_export::database_type>(number));
    QTEST(QStringLiteral("%1, %2, %3").arg(db.key, db.label, db.shortName), "names");
}

void tst_identity::everyDatabaseIsInTheTable()
{
    QList<int> numbers;
    for (const plugin::database & db : plugin::allDatabases()) {
        numbers.append(db.number);
    }
    QCOMPARE(numbers, QList<int>({0, 1, 2, 3, 4, 5}));
}

void tst_identity::showsNoSettingsWithoutADialog()
{
    plugin::ddl_export p;
    QVERIFY(!p.showSettings());
}

void tst_identity::asksTheDialogThatWasHandedIn()
{
    // A dialog that is told by the path whether it was accepted.
    plugin::ddl_export::setSettingsDialog(
        [](plugin::ddl_export & shown) { return shown.getDDLExportPath(false) == QLatin1String("accept"); });
    plugin::ddl_export p;
    p.setDDLExportPath(QStringLiteral("accept"));
    QVERIFY(p.showSettings());
    p.setDDLExportPath(QStringLiteral("cancel"));
    QVERIFY(!p.showSettings());
    plugin::ddl_export::setSettingsDialog(nullptr);
    p.setDDLExportPath(QStringLiteral("accept"));
    QVERIFY(!p.showSettings());
}

QTEST_MAIN(tst_identity)
#include "tst_identity.moc"
