// A command that finds its project in use waits, and says so on a terminal.

#include "support/program.h"
#include "support/project_support.h"

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

class tst_waiting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void untilTheOtherHasEnded_data();
    void untilTheOtherHasEnded();
    void onATerminalItSaysSo();
    void aShortWaitIsSilent();

private:
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    /// Runs `command` while this process has the project for `milliseconds`.
    template <class Run>
    support::program_result whileInUse(int milliseconds, const Run & run);

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sFile;
};

void tst_waiting::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_sFile = path("p.korv");
    QVERIFY(support::writeBytes(path("m.json"), support::textOf("{\"name\": \"a\"}")));
    QCOMPARE(support::runKorvane({"import", path("m.json"), m_sFile}).status, 0);
}

void tst_waiting::cleanup()
{
    m_folder.reset();
}

template <class Run>
support::program_result tst_waiting::whileInUse(int milliseconds, const Run & run)
{
    support::program_result result;
    // A process of its own: locks do not hold against the process that has them, and it must go on by itself.
    QProcess holder;
    holder.start("sqlite3", {m_sFile});
    holder.write("BEGIN EXCLUSIVE;\nSELECT 'held';\n");
    if (holder.waitForReadyRead(10000)) {
        holder.write(QString(".shell sleep %1\nCOMMIT;\n.quit\n").arg(milliseconds / 1000.0).toUtf8());
        holder.closeWriteChannel();
        holder.waitForBytesWritten();
        result = run();
    }
    holder.waitForFinished(60000);
    return result;
}

void tst_waiting::untilTheOtherHasEnded_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("import") << QStringList{"import", "m.json", "p.korv"};
    QTest::newRow("tag") << QStringList{"tag", "p.korv"};
    QTest::newRow("dump") << QStringList{"dump", "p.korv"};
    QTest::newRow("log") << QStringList{"log", "p.korv"};
    QTest::newRow("export") << QStringList{"export", "p.korv", "-y", "--no-check",
                                           "--KorvGenericDDLExport_path=sql"};
}

void tst_waiting::untilTheOtherHasEnded()
{
    QFETCH(QStringList, command);
    for (QString & argument : command) {
        if (argument.contains('.')) {
            argument = path(argument);
        }
    }
    command.replaceInStrings("=sql", "=" + path("sql"));
    QElapsedTimer timer;
    timer.start();
    const support::program_result result = whileInUse(2600, [&] { return support::runProgram(command); });
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QVERIFY2(timer.elapsed() > 2500 && timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
}

void tst_waiting::onATerminalItSaysSo()
{
    const support::program_result result = whileInUse(2600, [&] {
        return support::runInTerminal({"tag", m_sFile}, {}, {});
    });
    QCOMPARE(result.status, 0);
    QCOMPARE(result.output, "Waiting for another process that is using " + m_sFile.toUtf8() +
                                "\r\nVersion 1 of " + m_sFile.toUtf8() + " tagged\r\n");
}

void tst_waiting::aShortWaitIsSilent()
{
    const support::program_result result = whileInUse(300, [&] {
        return support::runInTerminal({"tag", m_sFile}, {}, {});
    });
    QCOMPARE(result.status, 0);
    QCOMPARE(result.output, "Version 1 of " + m_sFile.toUtf8() + " tagged\r\n");
}

QTEST_GUILESS_MAIN(tst_waiting)
#include "tst_waiting.moc"
