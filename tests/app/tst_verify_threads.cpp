// The command verify in two threads: what it tells does not depend on which of them did what, and both end.

#include "app/shared_work.h"
#include "app/verify_bench.h"

#include "database/server/target_database.h"

#include <QDir>
#include <QProcess>

#include <atomic>
#include <csignal>
#include <memory>
#include <stdexcept>
#include <thread>

#include <sys/resource.h>

using app::shared_work;
using database::server::target_database;
using support::program_result;
using support::runProgram;

namespace {

/// Twelve entities, each with a column more in each third version; the last of these is refused.
QByteArray entitiesOf(int version)
{
    QByteArray text;
    for (int e = 1; e <= 12; ++e) {
        const QByteArray number = QByteArray::number(e);
        text +=
            (e == 1 ? "" : ", ") + QByteArray("{'id': %1, 'name': 'e%1', 'properties': [{'id': %100, 'name': "
                                              "'id', ID}, {'id': %101, 'name': 'a', 'type': 'int'}")
                                       .replace("%1", number);
        for (int v = 1; v <= version; ++v) {
            text += v % 3 != e % 3
                        ? QByteArray()
                        : QByteArray(", {'id': %11%2, 'name': 'c%2', 'type': 'QString', 'unique': %3}")
                              .replace("%1", number)
                              .replace("%2", QByteArray::number(v))
                              .replace("%3", v == 4 ? "true" : "false");
        }
        text += "]}";
    }
    return text;
}

std::unique_ptr<target_database> anyTarget()
{
    QString why;
    return database::server::start(QStringLiteral("sqlite"), why);
}

} // namespace

class tst_verify_threads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // First what has threads of its own: after a process the thread sanitizer wants none any more.

    void eachPartIsDoneOnce()
    {
        std::vector<std::atomic<int>> done(200);
        std::vector<shared_work::part> parts;
        parts.reserve(done.size());
        for (std::atomic<int> & each : done) {
            parts.emplace_back([&each](target_database &) { ++each; });
        }
        shared_work work(std::move(parts));
        inTwoThreads(work);
        work.rethrow();
        for (const std::atomic<int> & each : done) {
            QCOMPARE(each.load(), 1);
        }
    }

    /// The other thread is told, takes no part any more, and its own complaint is not the one that is heard.
    void aFailureEndsBoth()
    {
        std::atomic<bool> isWaiting = false;
        bool isLastDone = false;
        std::unique_ptr<shared_work> work;
        const shared_work::part waiting = [&](target_database &) {
            isWaiting = true;
            while (!work->isEnded()) {
                std::this_thread::yield();
            }
            throw std::runtime_error("stopped");
        };
        const shared_work::part failing = [&](target_database &) {
            while (!isWaiting) {
                std::this_thread::yield();
            }
            throw std::runtime_error("the disk is full");
        };
        work = std::make_unique<shared_work>(
            std::vector<shared_work::part>{waiting, failing, [&](target_database &) { isLastDone = true; }});
        inTwoThreads(*work);
        QVERIFY(!isLastDone);
        try {
            work->rethrow();
            QFAIL("nothing is told");
        } catch (const std::runtime_error & failure) {
            QCOMPARE(failure.what(), "the disk is full");
        }
    }

    void whatIsEndedBeginsNoPart()
    {
        bool isDone = false;
        shared_work work({[&isDone](target_database &) { isDone = true; }});
        work.end();
        work.doParts(*anyTarget());
        QVERIFY(!isDone);
        work.rethrow();
    }

    void theSameAsInOneThread()
    {
        const verify_bench bench;
        QList<QByteArray> texts;
        QList<const char *> versions;
        for (int version = 0; version < 6; ++version) {
            texts << entitiesOf(version);
        }
        for (const QByteArray & each : std::as_const(texts)) {
            versions << each.constData();
        }
        bench.history(versions);
        // A file holds one database, so one thread does all of it.
        const program_result alone =
            runProgram({"verify", bench.project(), "--json", "--url", "sqlite:" + bench.path("scratch.db")});
        QCOMPARE(alone.errors, QByteArray());
        QCOMPARE(alone.status, 0);
        QVERIFY2(alone.output.contains("\"foretoldBy\": \"KV202\""), alone.output.constData());
        for (int i = 0; i < 3; ++i) {
            const program_result shared = runProgram({"verify", bench.project(), "--json"});
            QCOMPARE(shared.errors, QByteArray());
            QCOMPARE(shared.status, 0);
            QCOMPARE(QString::fromUtf8(shared.output), QString::fromUtf8(alone.output));
        }
    }

    void interrupted()
    {
        const verify_bench bench;
        QByteArray entities;
        for (int i = 1; i <= 800; ++i) {
            entities += (i == 1 ? "" : ", ") +
                        QByteArray("{'id': %1, 'name': 'e%1', 'properties': [{'id': %1, 'name': 'id', ID},"
                                   "{'id': 1%1, 'name': 'a', 'type': 'int', 'index': true}]}")
                            .replace("%1", QByteArray::number(10000 + i));
        }
        bench.history({entities.constData(), entities.constData(), entities.constData()});
        const double before = secondsOfChildren();
        QCOMPARE(runProgram({"verify", bench.project()}).status, 0);
        const double whole = secondsOfChildren() - before;
        QProcess process;
        process.start(KORVANE_PROGRAM, {"verify", bench.project()});
        QVERIFY(process.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(threadsOf(process.processId()) >= 2, 30000);
        QCOMPARE(::kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(process.exitCode(), SIGINT);
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
        QCOMPARE(process.readAllStandardError(), QByteArray());
        const double interrupted = secondsOfChildren() - before - whole;
        QVERIFY2(interrupted < whole * 0.7,
                 qPrintable(QStringLiteral("%1 of %2 seconds").arg(interrupted).arg(whole)));
    }

private:
    /// Time of the processor, which does not depend on what else the machine does.
    static double secondsOfChildren()
    {
        rusage used{};
        getrusage(RUSAGE_CHILDREN, &used);
        return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
               static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
    }
    static int threadsOf(qint64 process)
    {
        return static_cast<int>(QDir(QStringLiteral("/proc/%1/task").arg(process))
                                    .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
                                    .size());
    }
    static void inTwoThreads(shared_work & work)
    {
        std::thread other([&work] { work.doParts(*anyTarget()); });
        work.doParts(*anyTarget());
        other.join();
    }
};

QTEST_GUILESS_MAIN(tst_verify_threads)

#include "tst_verify_threads.moc"
