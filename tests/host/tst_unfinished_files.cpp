#include "os/program_end.h"
#include "os/unfinished_files.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <functional>
#include <memory>
#include <new>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using os::ending_held;
using os::unfinished_file;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool MemoryCanBeLimited = false; // the sanitizer's own use of addresses is beyond any limit
#else
constexpr bool MemoryCanBeLimited = true;
#endif

struct end_of_child
{
    int signal = 0; ///< that ended it; 0 when it ended by itself
    int status = -1;
    QByteArray errors;
};

/// Runs `work` in a process of its own, which ends with status 99 when `work` returns.
end_of_child inChild(const std::function<void()> & work)
{
    end_of_child end;
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        return end;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDERR_FILENO);
        // Qt Test's own handlers would report the end that is wanted here.
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGABRT, SIGSEGV}) {
            std::signal(signal, SIG_DFL);
        }
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        work();
        ::_exit(99);
    }
    ::close(ends[1]);
    QFile reader;
    if (reader.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        end.errors = reader.readAll();
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    end.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return end;
}

void makeFile(const QString & name)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::NewOnly));
    file.write("x");
}

void missMemory()
{
    throw std::bad_alloc();
}

void withoutWayOut() noexcept
{
    missMemory();
}

} // namespace

class tst_unfinished_files : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void goWithTheirObjects()
    {
        {
            unfinished_file folder;
            unfinished_file gone;
            unfinished_file kept;
            QVERIFY(QDir().mkdir(path("f")));
            folder.note(path("f"), unfinished_file::folder);
            makeFile(path("f/gone"));
            gone.note(path("f/gone"));
            makeFile(path("kept"));
            kept.note(path("kept"));
            kept.keep();
        }
        QCOMPARE(names(), QStringList("kept"));
    }
    void aFolderWithForeignFilesStays()
    {
        {
            unfinished_file folder;
            QVERIFY(QDir().mkdir(path("f")));
            folder.note(path("f"), unfinished_file::folder);
            makeFile(path("f/foreign"));
        }
        QVERIFY(QFile::exists(path("f/foreign")));
    }
    void removedAtOnce()
    {
        {
            unfinished_file nothing;
            QVERIFY(nothing.remove());
            makeFile(path("a"));
            unfinished_file file;
            file.note(path("a"));
            QVERIFY(file.remove());
            QCOMPARE(names(), QStringList());
            // Somebody else's by now.
            makeFile(path("a"));
            QVERIFY(file.remove());
            unfinished_file gone;
            gone.note(path("b"));
            QVERIFY(gone.remove());
            QVERIFY(QDir().mkdir(path("f")));
            makeFile(path("f/theirs"));
            unfinished_file folder;
            folder.note(path("f"), unfinished_file::folder);
            QVERIFY(!folder.remove());
            QVERIFY(QFile::remove(path("f/theirs")));
        }
        QCOMPARE(names(), QStringList("a"));
    }
    void moreThanASignalFindsAndLongerOnes()
    {
        {
            std::vector<std::unique_ptr<unfinished_file>> many;
            for (int i = 0; i < 200; ++i) {
                makeFile(path(QString::number(i)));
                many.push_back(std::make_unique<unfinished_file>());
                many.back()->note(path(QString::number(i)));
            }
            unfinished_file tooLong;
            tooLong.note(path(QString(5000, 'x')));
        }
        QCOMPARE(names(), QStringList());
    }

    void signalRemovesThem_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
    }
    void signalRemovesThem()
    {
        QFETCH(int, signal);
        const end_of_child end = inChild([&] {
            os::removeUnfinishedOnSignals();
            makeThree();
            raise(signal);
        });
        QCOMPARE(end.signal, signal);
        QCOMPARE(names(), QStringList("kept"));
    }
    void ignoredSignalStaysIgnored()
    {
        const end_of_child end = inChild([&] {
            std::signal(SIGHUP, SIG_IGN);
            os::removeUnfinishedOnSignals();
            makeFile(path("a"));
            unfinished_file a;
            a.note(path("a"));
            raise(SIGHUP);
            makeFile(path("after"));
        });
        QCOMPARE(end.status, 99);
        QVERIFY(QFile::exists(path("after")));
    }
    void signalWaitsWhileAFileIsMade()
    {
        const end_of_child end = inChild([&] {
            os::removeUnfinishedOnSignals();
            unfinished_file a;
            {
                const ending_held outer;
                raise(SIGTERM);
                const ending_held inner;
                makeFile(path("a"));
                a.note(path("a"));
                makeFile(path("held"));
            }
            makeFile(path("after"));
        });
        QCOMPARE(end.signal, SIGTERM);
        QCOMPARE(names(), QStringList("held"));
    }

    void programEndsWithALine()
    {
        const end_of_child end = inChild([&] {
            makeThree();
            os::endProgram("what happened");
        });
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, QByteArray("what happened\n"));
        QCOMPARE(names(), QStringList("kept"));
    }
    void programEndsWithWhatIsLost()
    {
        end_of_child end = inChild([&] {
            os::noteLossAtEnd("one thing");
            os::noteLossAtEnd("another");
            os::endProgram("what happened");
        });
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, QByteArray("what happened\nanother\n"));
        end = inChild([&] {
            os::noteLossAtEnd("one thing");
            os::noteLossAtEnd({});
            os::endProgram("what happened");
        });
        QCOMPARE(end.errors, QByteArray("what happened\n"));
        end = inChild([&] {
            os::noteLossAtEnd(QString(10000, 'x'));
            os::endProgram("what happened");
        });
        QCOMPARE(end.errors, "what happened\n" + QByteArray(8191, 'x') + "\n");
    }
    void memoryThatNobodyMissedIsALine()
    {
        const end_of_child end = inChild([&] {
            os::endOrderlyWithoutMemory();
            makeThree();
            withoutWayOut();
        });
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, outOfMemory);
        QCOMPARE(names(), QStringList("kept"));
    }
    void crashWithoutMemoryIsALine()
    {
        if (!MemoryCanBeLimited) {
            QSKIP("a program under the address sanitizer has no limit of memory");
        }
        const end_of_child end = inChild([&] {
            os::endOrderlyWithoutMemory();
            makeThree();
            const rlimit little{1024 * 1024, 1024 * 1024};
            setrlimit(RLIMIT_AS, &little);
            raise(SIGSEGV);
        });
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, outOfMemory);
        QCOMPARE(names(), QStringList("kept"));
    }
    void otherCrashStaysOne_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGSEGV") << SIGSEGV;
        QTest::newRow("SIGABRT") << SIGABRT;
    }
    void otherCrashStaysOne()
    {
        QFETCH(int, signal);
        const end_of_child end = inChild([&] {
            os::endOrderlyWithoutMemory();
            makeThree();
            raise(signal);
        });
        QCOMPARE(end.signal, signal);
        QCOMPARE(end.errors, QByteArray());
        QCOMPARE(names(), QStringList("kept"));
    }

private:
    QString path(const QString & name) const { return m_folder->filePath(name); }
    QStringList names() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    }
    /// A noted folder with a noted file in it, and a file that is kept. Their objects never go.
    void makeThree() const
    {
        QDir().mkdir(path("folder"));
        (new unfinished_file)->note(path("folder"), unfinished_file::folder);
        makeFile(path("folder/file"));
        (new unfinished_file)->note(path("folder/file"));
        makeFile(path("kept"));
        auto * const kept = new unfinished_file;
        kept->note(path("kept"));
        kept->keep();
    }

    const QByteArray outOfMemory =
        "Out of memory; the command was not completed. Close other programs or raise the "
        "limit of memory (ulimit -v), and try again\n";
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_unfinished_files)
#include "tst_unfinished_files.moc"
