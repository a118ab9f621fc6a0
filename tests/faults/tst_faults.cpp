// One fault at each call that reads, writes, locks or names a file: the command either does its work and says
// so, or leaves what there was and says why; it never crashes, hangs, or touches what is not its own.
//
// KORVANE_FAULT_STEP=1 tries every call; by default every fifth is tried, or fewer where KORVANE_TEST_ROUNDS
// asks for that, begun at another one for each kind of fault.

#include "faults/command_runs.h"
#include "support/rounds.h"

class tst_faults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_runs.init()); }
    void atEveryCall_data();
    void atEveryCall();
    void cleanupTestCase()
    {
        qInfo("%d faults, after %d of them the command had done its work", m_iTried, m_iDone);
    }

private:
    [[nodiscard]] QStringList faultAt(int call, const QString & kind) const;
    [[nodiscard]] int countCalls(const QString & command) const;
    void tryFault(const QString & command, const QString & kind, int call);

    faults::command_runs m_runs;
    int m_iTried = 0;
    int m_iDone = 0;
};

void tst_faults::atEveryCall_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("kind");
    for (const QString & command : faults::Commands) {
        for (const char * kind : {"fail", "short", "full", "from"}) {
            QTest::addRow("%s, %s", qPrintable(command), kind) << command << QString(kind);
        }
    }
}

QStringList tst_faults::faultAt(int call, const QString & kind) const
{
    return {"LD_PRELOAD=" KORVANE_FAULT_LIBRARY, "KORVANE_FAULT_FOLDER=" + m_runs.workFolder(),
            "KORVANE_FAULT_COUNT=" + m_runs.path("count"), "KORVANE_FAULT_KIND=" + kind,
            "KORVANE_FAULT_AT=" + QString::number(call)};
}

int tst_faults::countCalls(const QString & command) const
{
    m_runs.prepare(command);
    const faults::ended done = m_runs.run(command, faultAt(0, "fail"));
    return done.status == 0 ? support::bytesOf(m_runs.path("count")).trimmed().toInt() : 0;
}

void tst_faults::atEveryCall()
{
    QFETCH(QString, command);
    QFETCH(QString, kind);
    const int calls = countCalls(command);
    QVERIFY2(calls > 20, "the calls of the command are counted");
    const int asked = qEnvironmentVariableIntValue("KORVANE_FAULT_STEP");
    const int step = asked > 0 ? asked : 500 / support::rounds(100);
    const int first = 1 + static_cast<int>(qHash(QString(command + kind), 7) % static_cast<unsigned>(step));
    for (int call = first; call <= calls; call += step) {
        tryFault(command, kind, call);
        if (QTest::currentTestFailed()) {
            qWarning("at call %d of %d", call, calls);
            return;
        }
    }
}

void tst_faults::tryFault(const QString & command, const QString & kind, int call)
{
    m_runs.prepare(command);
    ++m_iTried;
    const faults::ended done = m_runs.run(command, faultAt(call, kind));
    QVERIFY2(done.normally, done.err.constData());
    QVERIFY2(done.status == 0 || done.status == 1, qPrintable(QString::number(done.status)));
    QVERIFY(m_runs.usersFilesAreWhole());
    const QByteArray state = m_runs.state(command);
    if (done.status == 0) {
        ++m_iDone;
        QCOMPARE(state, m_runs.after(command));
    } else {
        QVERIFY2(done.err.trimmed().size() > 10 && done.err.endsWith('\n'), "a failure says why");
        // A script that could not be written whole is told, not kept.
        if (command != "export") {
            QVERIFY2(state == m_runs.before(command) || state == m_runs.after(command), state.constData());
        }
    }
    const QString wrong = m_runs.wrongAfterNextRun(command);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

QTEST_GUILESS_MAIN(tst_faults)
#include "tst_faults.moc"
