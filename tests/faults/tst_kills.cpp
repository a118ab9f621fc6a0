// Commands that are ended at any moment: the project is as it was before or as it is afterwards, the user's
// files are as they were, and the next run leaves nothing of the former one behind.
//
// KORVANE_KILLS is how many runs are ended, 120 by default.

#include "faults/command_runs.h"
#include "support/rounds.h"

#include <QRandomGenerator>
#include <QThread>

#include <csignal>

class tst_kills : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_runs.init()); }
    void atAnyMoment();

private:
    void endOne(const QString & command, int signal);

    faults::command_runs m_runs;
    QRandomGenerator m_random{20261121};
    int m_iEnded = 0;
    int m_iDone = 0;
};

void tst_kills::atAnyMoment()
{
    const int asked = qEnvironmentVariableIntValue("KORVANE_KILLS");
    const int count = asked > 0 ? asked : support::rounds(120);
    for (int i = 0; i < count; ++i) {
        const QString & command = faults::Commands.at(i % faults::Commands.size());
        const int signal = QList<int>{SIGKILL, SIGTERM, SIGKILL, SIGINT}.at(i / faults::Commands.size() % 4);
        endOne(command, signal);
        if (QTest::currentTestFailed()) {
            qWarning("%s, signal %d, run %d", qPrintable(command), signal, i);
            return;
        }
    }
    qInfo("%d runs: %d were ended by their signal, in %d the work was done", count, m_iEnded, m_iDone);
    QVERIFY(m_iEnded > count / 4);
}

void tst_kills::endOne(const QString & command, int signal)
{
    m_runs.prepare(command);
    QProcess process;
    m_runs.start(process, command);
    QVERIFY(process.waitForStarted());
    QThread::usleep(
        static_cast<unsigned long>(m_random.bounded(static_cast<int>(m_runs.duration(command) * 11 / 10))));
    ::kill(static_cast<pid_t>(process.processId()), signal);
    QVERIFY(process.waitForFinished());
    const bool wasEnded = process.exitStatus() == QProcess::CrashExit;
    QVERIFY2(wasEnded || process.exitCode() == 0, process.readAllStandardError().constData());
    if (wasEnded) {
        ++m_iEnded;
        QCOMPARE(process.exitCode(), signal);
    }
    QVERIFY(m_runs.usersFilesAreWhole());
    const QByteArray state = m_runs.state(command);
    m_iDone += state == m_runs.after(command) ? 1 : 0;
    if (!wasEnded) {
        QCOMPARE(state, m_runs.after(command));
    } else if (command != "export") {
        QVERIFY2(state == m_runs.before(command) || state == m_runs.after(command), state.constData());
    }
    const QString wrong = m_runs.wrongAfterNextRun(command);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

QTEST_GUILESS_MAIN(tst_kills)
#include "tst_kills.moc"
