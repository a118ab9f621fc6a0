// What an export at the command line says before it does something that a person may not expect.

#include "support/program.h"
#include "support/shop_text.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runProgram;

class tst_export_decisions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void strangeValues_data();
    void strangeValues();
    void knownValuesNeedNoWord();
    void storedSettingsHoldWithoutOptions();
    void storedScriptIsTold();
    void storedScriptIsLeftOut();
    void givenScriptNeedsNoWord();
    void badTimeLimit_data();
    void badTimeLimit();
    void nothingWithoutAVersion();
    void nothingInAnUnknownMode();
    void noFolder();
    void folderThatCannotBeMade();
    void whoSaysNoIsToldEnough();

private:
    QString path(const QString & name) const { return m_folder->filePath(name); }
    void write(const QString & name, const QByteArray & bytes) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }
    QStringList arguments(const QStringList & options) const
    {
        QStringList all = {"export", path("shop.korv")};
        for (const QString & option : options) {
            all << (option.startsWith('-') ? option : "--KorvGenericDDLExport_" + option);
        }
        return all;
    }
    program_result run(const QStringList & options, const QHash<QString, QString> & environment = {}) const
    {
        return runProgram(arguments(options), environment);
    }
    QStringList scripts() const { return QDir(m_folder->path()).entryList({"*.sql"}); }
    /// Stores a setting in the project, as the window does.
    void store(const QString & key, const QString & value) const;
    QByteArray script() const
    {
        QFile file(path("shop_sqlite_db_schema_full.sql"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_export_decisions::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    write("shop.json", support::ShopText);
    QCOMPARE(runProgram({"import", path("shop.json"), path("shop.korv")}).status, 0);
    write("hook.js", "console.log('it runs'); function exportStep() { return '-- mine'; }");
}

void tst_export_decisions::store(const QString & key, const QString & value) const
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "setting");
        database.setDatabaseName(path("shop.korv"));
        QVERIFY(database.open());
        QSqlQuery query(database);
        QVERIFY(query.prepare(
            "INSERT INTO t_plugin_params (plugin_guid, param_key, param_value) VALUES (?, ?, ?)"));
        query.addBindValue("713A034E-3F7A-422A-BC81-22132DA57110");
        query.addBindValue(key);
        query.addBindValue(value);
        QVERIFY2(query.exec(), qPrintable(query.lastError().text()));
    }
    QSqlDatabase::removeDatabase("setting");
}

void tst_export_decisions::strangeValues_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("takenFor");
    QTest::addColumn<QStringList>("files");
    const QStringList generic = {"shop_default_db_schema_full.sql"};
    const QStringList sqlite = {"shop_sqlite_db_schema_full.sql"};
    QTest::newRow("database in words") << "db_type=postgresql"
                                       << "0 (default)" << generic;
    QTest::newRow("no such database") << "db_type=9"
                                      << "0 (default)" << generic;
    QTest::newRow("negative database") << "db_type=-1"
                                       << "0 (default)" << generic;
    QTest::newRow("database with a zero before")
        << "db_type=03"
        << "3 (postgresql)" << QStringList{"shop_postgresql_db_schema_full.sql"};
    QTest::newRow("empty database") << "db_type="
                                    << "no value, so the stored setting counts" << sqlite;
    QTest::newRow("relationships in words") << "relation_as_fk=yes"
                                            << "0 (no)" << sqlite;
    QTest::newRow("schema in words") << "schema_type=evolution"
                                     << "0 (full)" << sqlite;
    QTest::newRow("no such schema") << "schema_type=5"
                                    << "none of them, so nothing is written" << QStringList();
}

void tst_export_decisions::strangeValues()
{
    QFETCH(QString, option);
    QFETCH(QString, takenFor);
    QFETCH(QStringList, files);
    const QString values =
        option.startsWith("db")
            ? "0 (default), 1 (sqlite), 2 (mysql), 3 (postgresql), 4 (oracle), 5 (mssqlserver)"
        : option.startsWith("relation") ? "0 (no), 1 (yes)"
                                        : "0 (full), 1 (evolution), 2 (full_and_evolution)";
    const program_result result = run({"path=.", option});
    QCOMPARE(QString::fromUtf8(result.errors), "--KorvGenericDDLExport_" + option + ": taken for " +
                                                   takenFor + "; the values are " + values + "\n");
    QCOMPARE(result.status, 0);
    QCOMPARE(scripts(), files);
}

void tst_export_decisions::knownValuesNeedNoWord()
{
    const program_result result =
        runProgram(arguments({"path=.", "db_type=3", "relation_as_fk=1", "schema_type=0"}) << "--no-check");
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
}

void tst_export_decisions::storedSettingsHoldWithoutOptions()
{
    store("DDL_EXPORT_PATH", m_folder->path());
    store("DDL_EXPORT_DATABASE_TYPE", "3");
    store("DDL_EXPORT_RELATIONSHIPS", "1");
    const program_result stored = run({});
    QCOMPARE(stored.status, 0);
    QCOMPARE(scripts(), QStringList{"shop_postgresql_db_schema_full.sql"});
    QFile file(path("shop_postgresql_db_schema_full.sql"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray withKeys = file.readAll();
    QVERIFY2(withKeys.contains("FOREIGN KEY"), withKeys.constData());
    file.close();
    // Only what an option names is another.
    QCOMPARE(run({"relation_as_fk=0"}).status, 0);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(!file.readAll().contains("FOREIGN KEY"));
}

void tst_export_decisions::storedScriptIsTold()
{
    store("DDL_EXPORT_CUSTOM_JAVASCRIPT", "hook.js");
    const program_result result = run({"path=."});
    QCOMPARE(QString::fromUtf8(result.errors),
             "Custom script of the project: " + path("hook.js") + " ('--no-custom-script' leaves it out)\n");
    QVERIFY(result.output.startsWith("it runs\n"));
    QCOMPARE(result.status, 0);
    QCOMPARE(script(), QByteArray("-- mine\n").repeated(4));
}

void tst_export_decisions::storedScriptIsLeftOut()
{
    store("DDL_EXPORT_CUSTOM_JAVASCRIPT", "hook.js");
    const program_result result = run({"path=.", "--no-custom-script"});
    QCOMPARE(result.errors, QByteArray());
    QVERIFY(!result.output.contains("it runs"));
    QCOMPARE(result.status, 0);
    QVERIFY(script().contains("CREATE TABLE person"));
}

void tst_export_decisions::givenScriptNeedsNoWord()
{
    store("DDL_EXPORT_CUSTOM_JAVASCRIPT", "other.js");
    const program_result given = run({"path=.", "custom_javacript=hook.js"});
    QCOMPARE(given.errors, QByteArray());
    QVERIFY(given.output.startsWith("it runs\n"));
    QCOMPARE(given.status, 0);
    const program_result none = run({"path=.", "custom_javacript=hook.js", "--no-custom-script"});
    QCOMPARE(none.errors, QByteArray());
    QVERIFY(!none.output.contains("it runs"));
}

void tst_export_decisions::badTimeLimit_data()
{
    QTest::addColumn<QString>("given");
    for (const char * const given : {"abc", "-1", "", "99999999999999999999"}) {
        QTest::newRow(given) << given;
    }
}

void tst_export_decisions::badTimeLimit()
{
    QFETCH(QString, given);
    const program_result result =
        run({"path=.", "custom_javacript=hook.js"}, {{"KORVANE_SCRIPT_TIMEOUT_MS", given}});
    QCOMPARE(
        QString::fromUtf8(result.errors),
        "KORVANE_SCRIPT_TIMEOUT_MS: '" + given +
            "' is not a time limit; give a number of milliseconds from 1 to 2147483647, or 0 for none\n");
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.status, 1);
    QCOMPARE(scripts(), QStringList());
}

void tst_export_decisions::nothingWithoutAVersion()
{
    const program_result result = run({"path=.", "schema_type=1"});
    QCOMPARE(QString::fromUtf8(result.errors),
             "Nothing was written: evolution scripts need a tagged version; make one with 'korvane tag " +
                 path("shop.korv") + "'\n");
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.status, 0);
    QCOMPARE(runProgram({"tag", path("shop.korv")}).status, 0);
    QCOMPARE(run({"path=.", "schema_type=1"}).errors, QByteArray());
}

void tst_export_decisions::nothingInAnUnknownMode()
{
    QCOMPARE(run({"path=.", "schema_type=5"}).errors.count('\n'), 1);
    store("DDL_EXPORT_DATABASE_SCHEMA", "5");
    const program_result stored = run({"path=."});
    QCOMPARE(stored.errors,
             QByteArray("Nothing was written: the setting for the schema has no such value\n"));
    QCOMPARE(stored.status, 0);
}

void tst_export_decisions::noFolder()
{
    for (const QStringList & options : {QStringList(), QStringList{"-y"}}) {
        const program_result result = run(options);
        QCOMPARE(result.errors,
                 QByteArray("No export folder is set. Give one with --KorvGenericDDLExport_path=FOLDER, or "
                            "store one in the window (Export > Settings)\n"));
        QCOMPARE(result.status, 1);
    }
}

void tst_export_decisions::folderThatCannotBeMade()
{
    write("file", "no folder");
    const program_result result = run({"path=file/sql", "-y"});
    QCOMPARE(QString::fromUtf8(result.errors),
             "Export directory '" + path("file/sql") + "' cannot be created (Not a directory)\n");
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.status, 1);
}

void tst_export_decisions::whoSaysNoIsToldEnough()
{
    const program_result result = support::runInTerminal(arguments({"path=none"}), {}, "n\n");
    QCOMPARE(result.status, 1);
    QVERIFY2(result.output.contains("[Y/n] "), result.output.constData());
    QVERIFY2(result.output.endsWith("Not exported.\r\n"), result.output.constData());
    QVERIFY2(!result.output.contains("path=FOLDER"), result.output.constData());
    QVERIFY(!QFile::exists(path("none")));
}

QTEST_GUILESS_MAIN(tst_export_decisions)
#include "tst_export_decisions.moc"
