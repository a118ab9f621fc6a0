// Commands that come to an early end: by a signal, or because memory runs out.

#include "support/program.h"
#include "support/rounds.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using support::program_result;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool MemoryCanBeLimited = false; // the sanitizer's own use of addresses is beyond any limit
#else
constexpr bool MemoryCanBeLimited = true;
#endif

/// A model whose work needs some tens of megabytes.
QByteArray largeModel()
{
    QByteArray entities;
    for (int e = 1; e <= 400; ++e) {
        entities += e > 1 ? ",\n" : "";
        entities += "{\"id\": " + QByteArray::number(e) + ", \"name\": \"e" + QByteArray::number(e) +
                    "\", \"properties\": [";
        for (int p = 0; p < 20; ++p) {
            entities += (p > 0 ? ", " : "") + QByteArray("{\"name\": \"p") + QByteArray::number(p) +
                        "\", \"type\": \"QString\"}";
        }
        entities += "]}";
    }
    return R"({"format": "korvane-project", "formatVersion": 1, "name": "large", "entities": [)" + entities +
           "]}";
}

} // namespace

class tst_program_end : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QFile model(path("large.json"));
        QVERIFY(model.open(QIODevice::WriteOnly));
        model.write(largeModel());
        model.close();
        QCOMPARE(support::runProgram({"import", model.fileName(), path("large.korv")}).status, 0);
        QCOMPARE(support::runProgram({"tag", path("large.korv")}).status, 0);
        m_stored = support::runProgram({"dump", path("large.korv")}).output;
        QVERIFY(!m_stored.isEmpty());
    }

    void memoryRunsOut_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("import into a new file") << "import large.json new.korv";
        QTest::newRow("import over a project") << "import large.json large.korv";
        QTest::newRow("tag") << "tag tagged.korv";
        QTest::newRow("dump") << "dump large.korv";
        QTest::newRow("export") << "export large.korv -y --no-check --KorvGenericDDLExport_path=sql "
                                   "--KorvGenericDDLExport_schema_type=2";
    }
    void memoryRunsOut()
    {
        if (!MemoryCanBeLimited) {
            QSKIP("a program under the address sanitizer has no limit of memory");
        }
        QFETCH(QString, command);
        QVERIFY(QDir(m_dir.path()).mkpath("sql"));
        const QStringList before = names();
        int missed = 0;
        // With the greatest of these every command succeeds.
        const int step = 70000 / support::rounds(35);
        for (int kilobytes = leastToStart(); kilobytes <= 170000; kilobytes += step) {
            QFile::remove(path("tagged.korv"));
            QVERIFY(QFile::copy(path("large.korv"), path("tagged.korv")));
            const program_result result = runWithin(kilobytes, command);
            QVERIFY2(result.status == 0 || result.status == 1,
                     qPrintable(QString("%1 kB: status %2").arg(kilobytes).arg(result.status)));
            // What is done is done, even when there is no room any more for the plug-in that remarks on it.
            const bool isSilent = result.errors.isEmpty() || result.errors.contains(KORVANE_PLUGIN_FILE);
            QVERIFY2(result.status == 0 ? isSilent : !result.errors.isEmpty(),
                     qPrintable(QString("%1 kB: ").arg(kilobytes) + result.errors));
            missed += result.status;
            QCOMPARE(QFile::exists(path("new.korv")), result.status == 0 && command.contains("new.korv"));
            QFile::remove(path("new.korv"));
            QFile::remove(path("tagged.korv"));
            QCOMPARE(names(), before);
        }
        QVERIFY2(missed > 0, "no limit was the right one to be noticed");
        QCOMPARE(support::runProgram({"dump", path("large.korv")}).output, m_stored);
    }

    void aCheckWithoutMemoryFailsNoExport()
    {
        if (!MemoryCanBeLimited) {
            QSKIP("a program under the address sanitizer has no limit of memory");
        }
        QVERIFY(QDir(m_dir.path()).mkpath("sql"));
        const QString command = QStringLiteral("export large.korv -y --path sql --db sqlite");
        int counted = 0;
        for (int kilobytes = 50000; kilobytes <= 170000; kilobytes += 8000) {
            const bool isExported = runWithin(kilobytes, command + " --no-check").status == 0;
            const program_result result = runWithin(kilobytes, command);
            const QByteArray line = result.errors.trimmed();
            QVERIFY2(!isExported || result.status == 0,
                     qPrintable(QString("%1 kB: %2").arg(kilobytes).arg(QString::fromUtf8(line))));
            const bool isCounted = line.startsWith("Findings about these scripts: ");
            const bool isKnown = isCounted || line.isEmpty() || line.endsWith("out of memory");
            QVERIFY2(!isExported || isKnown, line.constData());
            counted += isCounted ? 1 : 0;
        }
        QVERIFY(counted > 0);
    }

    void signalEndsAnExport_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
    }
    void signalEndsAnExport()
    {
        QFETCH(int, signal);
        const QTemporaryDir scripts;
        const QTemporaryDir temp;
        // The call that waits comes in the second script: the first one is whole, and a version is restored.
        QFile hook(scripts.filePath("hook.js"));
        QVERIFY(hook.open(QIODevice::WriteOnly));
        hook.write("function exportStep(project, entity, property, enumeration, p) {"
                   " if (p.current_file.endsWith('_v1.sql') && p.action === 'CREATE_TABLE') {"
                   " console.log('now'); for (;;) {} } }");
        hook.close();
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", temp.path());
        environment.insert("KORVANE_SCRIPT_TIMEOUT_MS", "60000");
        // What was held back of the output would be lost with the program. "stdbuf" loads a library before
        // all others, which the address sanitizer takes amiss.
        environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":verify_asan_link_order=0");
        process.setProcessEnvironment(environment);
        process.start("stdbuf", {"-oL", KORVANE_PROGRAM, "export", path("large.korv"),
                                 "--KorvGenericDDLExport_path=" + scripts.path(),
                                 "--KorvGenericDDLExport_schema_type=2",
                                 "--KorvGenericDDLExport_custom_javacript=" + hook.fileName()});
        QVERIFY(process.waitForStarted());
        QByteArray output;
        while (!output.contains("now") && process.waitForReadyRead(30000)) {
            output += process.readAllStandardOutput();
        }
        QVERIFY(output.contains("now"));
        QVERIFY(QFile::exists(scripts.filePath("large_sqlite_db_schema_v1.sql")));
        QVERIFY(!QDir(temp.path()).isEmpty());
        QCOMPARE(::kill(static_cast<pid_t>(process.processId()), signal), 0);
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(process.exitCode(), signal);
        QCOMPARE(process.readAllStandardError(), QByteArray());
        QCOMPARE(QDir(scripts.path()).entryList(QDir::Files, QDir::Name),
                 (QStringList{"hook.js", "large_sqlite_db_schema_full.sql"}));
        QCOMPARE(support::runProgram({"dump", path("large.korv")}).output, m_stored);
    }

    void scriptThatHeedsNothing_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("what");
        QTest::addColumn<int>("leastSeconds");
        QTest::newRow("time") << QByteArray("const a = []; a.length = 4294967295; a.includes(1)")
                              << "the custom script did not end within 200 ms" << 5;
        QTest::newRow("memory") << QByteArray("new Array(4294967295).fill(0)")
                                << "the custom script used more than 1 GiB of memory" << 0;
    }
    void scriptThatHeedsNothing()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, what);
        QFETCH(int, leastSeconds);
        const QTemporaryDir scripts;
        QFile hook(scripts.filePath("hook.js"));
        QVERIFY(hook.open(QIODevice::WriteOnly));
        hook.write("function exportStep() { " + body + "; }");
        hook.close();
        QElapsedTimer timer;
        timer.start();
        const program_result result = support::runProgram(
            {"export", path("large.korv"), "--KorvGenericDDLExport_path=" + scripts.path(),
             "--KorvGenericDDLExport_custom_javacript=" + hook.fileName()},
            {{"KORVANE_SCRIPT_TIMEOUT_MS", what.contains("memory") ? "60000" : "200"}});
        QCOMPARE(result.errors,
                 (hook.fileName() + ":1: " + what + " and could not be stopped; the program was ended\n")
                     .toUtf8());
        QCOMPARE(result.status, 1);
        QVERIFY(timer.elapsed() >= leastSeconds * 1000);
        QVERIFY(timer.elapsed() < 30000);
        QCOMPARE(QDir(scripts.path()).entryList(QDir::Files), QStringList("hook.js"));
    }
    /// The first script is complete by then, the second one was there before, and is lost.
    void scriptThatHeedsNothingOverAnEarlierExport()
    {
        const QTemporaryDir scripts;
        QFile hook(scripts.filePath("hook.js"));
        QVERIFY(hook.open(QIODevice::WriteOnly));
        hook.write(
            "function exportStep(project, entity, property, enumeration, p) {"
            " if (p.current_file.endsWith('_v1.sql')) { new Array(4294967295).fill(0); } return p.action; }");
        hook.close();
        const QString first = scripts.filePath("large_sqlite_db_schema_full.sql");
        const QString second = scripts.filePath("large_sqlite_db_schema_v1.sql");
        for (const QString & name : {first, second}) {
            QFile earlier(name);
            QVERIFY(earlier.open(QIODevice::WriteOnly));
            earlier.write("-- of an earlier export\n");
        }
        const program_result result = support::runProgram(
            {"export", path("large.korv"), "--KorvGenericDDLExport_path=" + scripts.path(),
             "--KorvGenericDDLExport_schema_type=2",
             "--KorvGenericDDLExport_custom_javacript=" + hook.fileName()},
            {{"KORVANE_SCRIPT_TIMEOUT_MS", "60000"}});
        QCOMPARE(result.errors, (hook.fileName() +
                                 ":1: the custom script used more than 1 GiB of memory and could not be "
                                 "stopped; the program was ended\nThe SQL file is incomplete : " +
                                 second + "\n")
                                    .toUtf8());
        QCOMPARE(result.status, 1);
        QFile whole(first);
        QVERIFY(whole.open(QIODevice::ReadOnly));
        QVERIFY(whole.readAll().endsWith("DDL_EXPORT_END\n"));
        QCOMPARE(QFileInfo(second).size(), 0);
    }
    void scriptUnderALimitOfMemory_data()
    {
        QTest::addColumn<int>("kilobytes");
        for (const int kilobytes : {300000, 900000}) {
            QTest::newRow(qPrintable(QString::number(kilobytes))) << kilobytes;
        }
    }
    void scriptUnderALimitOfMemory()
    {
        if (!MemoryCanBeLimited) {
            QSKIP("a program under the address sanitizer has no limit of memory");
        }
        QFETCH(int, kilobytes);
        const QTemporaryDir scripts;
        for (const char * const body : {"let t = 'x'; for (;;) t = t + t;",
                                        "const a = []; for (;;) a.push('x'.repeat(1000) + a.length);",
                                        "const a = []; for (;;) a.push({});"}) {
            QFile hook(scripts.filePath("hook.js"));
            QVERIFY(hook.open(QIODevice::WriteOnly));
            hook.write("function exportStep() { " + QByteArray(body) + " }");
            hook.close();
            const program_result result = runWithin(
                kilobytes, "export large.korv --KorvGenericDDLExport_path='" + scripts.path() +
                               "' --KorvGenericDDLExport_custom_javacript='" + hook.fileName() + "'");
            QVERIFY2(result.status == 1, body);
            QVERIFY2(result.errors.contains("emory"), result.errors.constData());
        }
    }

private:
    QString path(const QString & name) const { return m_dir.filePath(name); }
    QStringList names() const
    {
        return QDir(m_dir.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    /// The least limit at which the loader and the initialization of libraries find room.
    int leastToStart() const
    {
        int kilobytes = 50000;
        while (kilobytes < 170000 && runWithin(kilobytes, "--version").status != 0) {
            kilobytes += 500;
        }
        return kilobytes;
    }
    program_result runWithin(int kilobytes, const QString & command) const
    {
        return support::runShell(QString("cd '%1' && ulimit -c 0 && ulimit -v %2 && exec '%3' %4")
                                     .arg(m_dir.path(), QString::number(kilobytes), KORVANE_PROGRAM, command),
                                 // A busy machine must not let a script meet its limit of time first.
                                 {{"KORVANE_SCRIPT_TIMEOUT_MS", "60000"}});
    }

    QTemporaryDir m_dir;
    QByteArray m_stored;
};

QTEST_GUILESS_MAIN(tst_program_end)
#include "tst_program_end.moc"
