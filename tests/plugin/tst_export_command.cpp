// The export command: settings, command line, export folder, custom script, and the hand-over to the builder.

#include "plugin/ddl_export.h"

#include "plugin/builder/ddl_export_builder.h"

#include "support/message_box_answerer.h"
#include "support/shop_text.h"
#include "support/stored_project.h"

#include "context/ctx_global.h"
#include "tools/custom_javascript.h"
#include "view/main_wnd.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

using plugin::ddl_export;
using support::ShopText;

namespace {

/// A plug-in whose settings dialog and loading are played by the test.
class probe : public ddl_export
{
public:
    bool showSettings() override
    {
        ++dialogs;
        presetPath = getDDLExportPath(false);
        if (!pathFromDialog.isNull()) {
            setDDLExportPath(pathFromDialog);
        }
        return accept;
    }
    QSqlError loadSettings() override { return loadError.isValid() ? loadError : ddl_export::loadSettings(); }

    int dialogs = 0;
    QString presetPath;
    QString pathFromDialog;
    bool accept = false;
    QSqlError loadError;
};

QStringList scripts(const QString & folder)
{
    return QDir(folder).entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name);
}

} // namespace

class tst_export_command : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void commandLineOverridesOnce();
    void settingsThatCannotBeLoaded();
    void projectWithoutName();
    void storedPathThatExists();
    void emptyPathOpensTheSettings();
    void missingFolderIsCreatedOnYes();
    void missingFolderAndNo();
    void acceptedDialogWithoutFolder();
    void acceptedDialogGoesOn();
    void scriptThatCannotBeLoaded();
    void withoutShiftAloneNoDebuggerIsAskedFor_data();
    void withoutShiftAloneNoDebuggerIsAskedFor();
    void scriptIsReleasedBeforeTheNextExport();
    void messagesReachTheHost();
    void builderOfEachDatabase_data();
    void builderOfEachDatabase();
};

void tst_export_command::init()
{
    context::ctx_global::setMainWnd(nullptr);
}

/// Runs first: the options count once in a process.
void tst_export_command::commandLineOverridesOnce()
{
    const support::stored_project stored(ShopText);
    QVERIFY(QDir(stored.path()).mkpath(QStringLiteral("stored")));
    QVERIFY(QDir(stored.path()).mkpath(QStringLiteral("given")));
    probe p;
    p.setDDLExportPath(QStringLiteral("stored"));
    p.setDatabaseType(ddl_export::db_default);
    p.setExportRelationships(true);
    QVERIFY(!p.saveSettings().isValid());

    // Without a main window there is no command line, and nothing is used up.
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(scripts(stored.path(QStringLiteral("stored"))),
             QStringList{QStringLiteral("shop_default_db_schema_full.sql")});
    QVERIFY(stored.content(QStringLiteral("stored/shop_default_db_schema_full.sql"))
                .contains(QStringLiteral("FOREIGN KEY")));

    view::main_wnd wnd;
    context::ctx_global::setMainWnd(&wnd);
    const QString prefix = QStringLiteral("--KorvGenericDDLExport_");
    wnd.addAppArg(prefix + QStringLiteral("path"), QStringLiteral("given"));
    wnd.addAppArg(prefix + QStringLiteral("path"), QStringLiteral("not the first"));
    wnd.addAppArg(prefix + QStringLiteral("db_type"), QStringLiteral("3"));
    wnd.addAppArg(prefix + QStringLiteral("relation_as_fk"), QStringLiteral("true"));
    wnd.addAppArg(prefix + QStringLiteral("custom_javacript"), QString());
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(scripts(stored.path(QStringLiteral("given"))),
             QStringList{QStringLiteral("shop_postgresql_db_schema_full.sql")});
    QVERIFY(!stored.content(QStringLiteral("given/shop_postgresql_db_schema_full.sql"))
                 .contains(QStringLiteral("FOREIGN KEY")));

    // The second export in the process uses what is stored, which the options did not change.
    QVERIFY(QFile::remove(stored.path(QStringLiteral("stored/shop_default_db_schema_full.sql"))));
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(scripts(stored.path(QStringLiteral("stored"))),
             QStringList{QStringLiteral("shop_default_db_schema_full.sql")});
    probe fresh;
    QVERIFY(!fresh.loadSettings().isValid());
    QCOMPARE(fresh.getDDLExportPath(false), QStringLiteral("stored"));
    QCOMPARE(static_cast<int>(fresh.getDatabaseType()), 0);
}

void tst_export_command::settingsThatCannotBeLoaded()
{
    const support::stored_project stored(ShopText);
    probe p;
    p.loadError =
        QSqlError(QStringLiteral("driver says"), QStringLiteral("database says"), QSqlError::ConnectionError);
    stored.project().setName(QString());
    const zk::ZkBool result = p.exportProject(stored.project());
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    QCOMPARE(result.getDesc(), QStringLiteral("Error loading plugin settings : ") + p.loadError.text());
}

void tst_export_command::projectWithoutName()
{
    const support::stored_project stored(ShopText);
    stored.project().setName(QString());
    probe p;
    const zk::ZkBool result = p.exportProject(stored.project());
    QVERIFY(!result);
    QCOMPARE(result.getDesc(), QStringLiteral("Cannot export project to DDL file : project name is empty"));
    QCOMPARE(p.dialogs, 0);
}

void tst_export_command::storedPathThatExists()
{
    const support::stored_project stored(ShopText);
    probe p;
    p.setDDLExportPath(stored.path());
    QVERIFY(!p.saveSettings().isValid());
    const support::message_box_answerer answerer(QMessageBox::No);
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(answerer.asked, 0);
    QCOMPARE(p.dialogs, 0);
    QCOMPARE(scripts(stored.path()), QStringList{QStringLiteral("shop_sqlite_db_schema_full.sql")});
}

void tst_export_command::emptyPathOpensTheSettings()
{
    const support::stored_project stored(ShopText);
    probe p;
    const support::message_box_answerer answerer(QMessageBox::Yes);
    const zk::ZkBool result = p.exportProject(stored.project());
    QVERIFY(result);
    QCOMPARE(result.getDesc(), QString());
    QCOMPARE(result.getCode(), 0L);
    QCOMPARE(answerer.asked, 0);
    QCOMPARE(p.dialogs, 1);
    QCOMPARE(p.presetPath, stored.path());
    QCOMPARE(p.getDDLExportPath(false), QString());
    QCOMPARE(scripts(stored.path()), QStringList());
}

void tst_export_command::missingFolderIsCreatedOnYes()
{
    const support::stored_project stored(ShopText);
    probe p;
    p.setDDLExportPath(QStringLiteral("deep/er"));
    const support::message_box_answerer answerer(QMessageBox::Yes);
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(answerer.asked, 1);
    QCOMPARE(answerer.title, QStringLiteral("Korvane - KorvGenericDDLExport"));
    QCOMPARE(answerer.text,
             QStringLiteral("Export directory '") + stored.path(QStringLiteral("deep/er")) +
                 QStringLiteral("' doesn't exist.\nDo you want to create it and start the export process ?"));
    QCOMPARE(answerer.buttons, QMessageBox::Yes | QMessageBox::No);
    QVERIFY(answerer.defaultIsYes);
    QVERIFY(!answerer.hadParent);
    QCOMPARE(p.dialogs, 0);
    QCOMPARE(scripts(stored.path(QStringLiteral("deep/er"))).size(), 1);
}

void tst_export_command::missingFolderAndNo()
{
    const support::stored_project stored(ShopText);
    probe p;
    p.setDDLExportPath(QStringLiteral("missing"));
    const support::message_box_answerer answerer(QMessageBox::No);
    const zk::ZkBool result = p.exportProject(stored.project());
    QVERIFY(result);
    QCOMPARE(result.getDesc(), QString());
    QCOMPARE(answerer.asked, 1);
    QCOMPARE(p.dialogs, 1);
    QCOMPARE(p.presetPath, stored.path());
    QCOMPARE(p.getDDLExportPath(false), QString());
    QVERIFY(!QDir(stored.path(QStringLiteral("missing"))).exists());
}

void tst_export_command::acceptedDialogWithoutFolder()
{
    const support::stored_project stored(ShopText);
    probe p;
    p.accept = true;
    p.pathFromDialog = QStringLiteral("not/there");
    const zk::ZkBool result = p.exportProject(stored.project());
    QVERIFY(!result);
    QCOMPARE(result.getDesc(),
             QStringLiteral("Export path to create DDL SQL script doesn't exist : 'not/there'"));
    p.setDDLExportPath(QString());
    p.pathFromDialog = QStringLiteral("");
    QCOMPARE(p.exportProject(stored.project()).getDesc(),
             QStringLiteral("Export path to create DDL SQL script doesn't exist : ''"));
}

void tst_export_command::acceptedDialogGoesOn()
{
    const support::stored_project stored(ShopText);
    probe p;
    p.accept = true;
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(p.dialogs, 1);
    QCOMPARE(scripts(stored.path()), QStringList{QStringLiteral("shop_sqlite_db_schema_full.sql")});
}

void tst_export_command::scriptThatCannotBeLoaded()
{
    const support::stored_project stored(ShopText);
    probe p;
    p.setDDLExportPath(stored.path());
    p.setCustomScriptFile(QStringLiteral("no_such_script.js"));
    const zk::ZkBool result = p.exportProject(stored.project());
    QVERIFY(!result);
    QVERIFY2(result.getDesc().contains(QStringLiteral("no_such_script.js")), qPrintable(result.getDesc()));
    tools::custom_javascript engine;
    QCOMPARE(result.getDesc(), engine.initEngine(QStringLiteral("no_such_script.js"), &p).getDesc());
    QCOMPARE(scripts(stored.path()), QStringList());
}

void tst_export_command::withoutShiftAloneNoDebuggerIsAskedFor_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::addColumn<bool>("hasScript");
    QTest::newRow("nothing") << Qt::KeyboardModifiers() << true;
    QTest::newRow("Ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier) << true;
    QTest::newRow("Shift and Ctrl") << (Qt::ShiftModifier | Qt::ControlModifier) << true;
    QTest::newRow("Shift without a script") << Qt::KeyboardModifiers(Qt::ShiftModifier) << false;
}

void tst_export_command::withoutShiftAloneNoDebuggerIsAskedFor()
{
    QFETCH(Qt::KeyboardModifiers, held);
    QFETCH(bool, hasScript);
    const support::stored_project stored(ShopText);
    QFile script(stored.path(QStringLiteral("hook.js")));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("function exportStep() {}");
    script.close();
    probe p;
    p.setDDLExportPath(stored.path());
    p.setCustomScriptFile(hasScript ? QStringLiteral("hook.js") : QString());
    QWidget window;
    QTest::keyPress(&window, Qt::Key_A, held);
    QCOMPARE(QGuiApplication::keyboardModifiers(), held);
    const zk::ZkBool result = p.exportProject(stored.project());
    QTest::keyRelease(&window, Qt::Key_A);
    QVERIFY2(result, qPrintable(result.getDesc()));
    QVERIFY(!p.getCustomScript() || !p.getCustomScript()->isDebugging());
    QCOMPARE(scripts(stored.path()).size(), 1);
}

void tst_export_command::scriptIsReleasedBeforeTheNextExport()
{
    const support::stored_project stored(ShopText);
    QFile script(stored.path(QStringLiteral("hook.js")));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("function exportStep(p, e, q, n, parameters) { return parameters.action; }");
    script.close();
    probe p;
    p.setDDLExportPath(stored.path());
    p.setCustomScriptFile(QStringLiteral("hook.js"));
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(stored.content(QStringLiteral("shop_sqlite_db_schema_full.sql")),
             QStringLiteral("DDL_EXPORT_BEGIN\nCREATE_TABLE\nCREATE_TABLE\nDDL_EXPORT_END\n"));
    QVERIFY(p.getCustomScript());

    p.setCustomScriptFile(QString());
    QVERIFY(p.exportProject(stored.project()));
    QVERIFY(!p.getCustomScript());
    QVERIFY(stored.content(QStringLiteral("shop_sqlite_db_schema_full.sql"))
                .startsWith(QStringLiteral("BEGIN TRANSACTION;")));
}

void tst_export_command::messagesReachTheHost()
{
    const support::stored_project stored(ShopText);
    probe p;
    p.setDDLExportPath(stored.path());
    const QSignalSpy spy(&p, &plugin::export_interface::onMessage);
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(spy.size(), 5);
    const QString file = stored.path(QStringLiteral("shop_sqlite_db_schema_full.sql"));
    QCOMPARE(spy.at(0).at(0).toString(),
             QStringLiteral("Full database schema : DDL export begin (") + file + QStringLiteral(")"));
    QCOMPARE(spy.at(0).at(1).toInt(), 1);
    QCOMPARE(spy.at(0).at(2).toInt(), 10000);
    QVERIFY(p.exportProject(stored.project()));
    QCOMPARE(spy.size(), 10);
}

void tst_export_command::builderOfEachDatabase_data()
{
    QTest::addColumn<int>("db");
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("0") << 0 << QByteArray("plugin::ddl_export_builder_default");
    QTest::newRow("1") << 1 << QByteArray("plugin::ddl_export_builder_sqlite");
    QTest::newRow("2") << 2 << QByteArray("plugin::ddl_export_builder_mysql");
    QTest::newRow("3") << 3 << QByteArray("plugin::ddl_export_builder_postgresql");
    QTest::newRow("4") << 4 << QByteArray("plugin::ddl_export_builder_oracle");
    QTest::newRow("5") << 5 << QByteArray("plugin::ddl_export_builder_mssqlserver");
    QTest::newRow("7") << 7 << QByteArray("plugin::ddl_export_builder_default");
    QTest::newRow("-1") << -1 << QByteArray("plugin::ddl_export_builder_default");
}

void tst_export_command::builderOfEachDatabase()
{
    QFETCH(int, db);
    QFETCH(QByteArray, className);
    ddl_export p;
    const auto first = p.getBuilder(static_cast<ddl_export::database_type>(db));
    const auto second = p.getBuilder(static_cast<ddl_export::database_type>(db));
    QVERIFY(first);
    QCOMPARE(QByteArray(first->metaObject()->className()), className);
    QVERIFY(first != second);
}

QTEST_MAIN(tst_export_command)
#include "tst_export_command.moc"
