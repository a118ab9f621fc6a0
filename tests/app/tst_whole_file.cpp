// A file that is replaced as a whole: what stays of the former one, and what becomes of other things of its
// name.

#include "app/whole_file.h"

#include "os/unfinished_files.h"
#include "support/project_support.h"

#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" [[gnu::weak]] void __gcov_dump();

using support::bytesOf;
using support::writeBytes;

class tst_whole_file : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void keepsTheMode_data()
    {
        QTest::addColumn<int>("mode");
        for (const int mode : {0600, 0640, 0755, 0666}) {
            QTest::newRow(qPrintable(QString::number(mode, 8))) << mode;
        }
    }
    void keepsTheMode()
    {
        QFETCH(int, mode);
        QVERIFY(writeBytes(path("a"), "old"));
        QCOMPARE(::chmod(QFile::encodeName(path("a")).constData(), static_cast<mode_t>(mode)), 0);
        QVERIFY(app::writeWholeFile(path("a"), "new"));
        QCOMPARE(bytesOf(path("a")), QByteArray("new"));
        QCOMPARE(static_cast<int>(statusOf("a").st_mode & 07777), mode);
        QCOMPARE(names(), QStringList("a"));
    }
    void keepsTheOwner()
    {
        if (::geteuid() != 0) {
            QSKIP("only root can give a file away");
        }
        QVERIFY(writeBytes(path("a"), "old"));
        QCOMPARE(::chown(QFile::encodeName(path("a")).constData(), 12345, 23456), 0);
        QCOMPARE(::chmod(QFile::encodeName(path("a")).constData(), 0640), 0);
        QVERIFY(app::writeWholeFile(path("a"), "new"));
        QCOMPARE(statusOf("a").st_uid, 12345U);
        QCOMPARE(statusOf("a").st_gid, 23456U);
        QCOMPARE(static_cast<int>(statusOf("a").st_mode & 07777), 0640);
    }
    void grantsNothingToAnotherGroup()
    {
        if (::geteuid() != 0) {
            QSKIP("only root can give a file away");
        }
        QVERIFY(writeBytes(path("a"), "old"));
        QCOMPARE(::chown(QFile::encodeName(path("a")).constData(), 12345, 23456), 0);
        QCOMPARE(::chmod(QFile::encodeName(path("a")).constData(), 04666), 0);
        QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0777), 0);
        QCOMPARE(inChild([this] {
                     if (::setgid(54321) == 0 && ::setuid(54320) == 0) {
                         (void)app::writeWholeFile(path("a"), "new");
                     }
                 }),
                 0);
        QCOMPARE(bytesOf(path("a")), QByteArray("new"));
        QCOMPARE(statusOf("a").st_uid, 54320U);
        QCOMPARE(static_cast<int>(statusOf("a").st_mode & 07777), 0606);
    }
    void aNewFileHasTheUsualRights()
    {
        const mode_t former = ::umask(027);
        const zk::ZkBool written = app::writeWholeFile(path("a"), "new");
        ::umask(former);
        QVERIFY(written);
        QCOMPARE(static_cast<int>(statusOf("a").st_mode & 07777), 0640);
    }
    void followsALink()
    {
        QVERIFY(writeBytes(path("real"), "old"));
        QVERIFY(QFile::link("real", path("between")));
        QVERIFY(QFile::link("between", path("a")));
        QVERIFY(app::writeWholeFile(path("a"), "new"));
        QCOMPARE(bytesOf(path("real")), QByteArray("new"));
        QVERIFY(QFileInfo(path("a")).isSymLink() && QFileInfo(path("between")).isSymLink());
    }
    void leavesOtherThingsAlone_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("reason");
        QTest::newRow("folder") << "folder"
                                << "it exists, but is not a file";
        QTest::newRow("FIFO") << "fifo"
                              << "it exists, but is not a file";
        QTest::newRow("device") << "device"
                                << "it exists, but is not a file";
        QTest::newRow("loop of links") << "loop"
                                       << "Too many levels of symbolic links";
    }
    void leavesOtherThingsAlone()
    {
        QFETCH(QString, kind);
        QFETCH(QString, reason);
        if (kind == "folder") {
            QVERIFY(QDir().mkdir(path("a")));
        } else if (kind == "fifo") {
            QCOMPARE(::mkfifo(QFile::encodeName(path("a")).constData(), 0600), 0);
        } else if (kind == "device") {
            QVERIFY(QFile::link("/dev/null", path("a")));
        } else {
            QVERIFY(QFile::link("b", path("a")));
            QVERIFY(QFile::link("a", path("b")));
        }
        const QStringList before = names();
        const zk::ZkBool written = app::writeWholeFile(path("a"), "new");
        QVERIFY(!written);
        QCOMPARE(written.getDesc(), reason);
        QCOMPARE(names(), before);
        QCOMPARE(QFileInfo(path("a")).isSymLink(), kind == "device" || kind == "loop");
    }
    void leavesNothingBehindWhenASignalEndsIt()
    {
        QVERIFY(writeBytes(path("a"), "old"));
        const int status = inChild([this] {
            const rlimit little{1000, RLIM_INFINITY};
            setrlimit(RLIMIT_FSIZE, &little);
            std::signal(SIGTERM, SIG_DFL);
            os::removeUnfinishedOnSignals();
            // In the midst of the writing.
            std::signal(SIGXFSZ, [](int) { raise(SIGTERM); });
            (void)app::writeWholeFile(path("a"), QByteArray(5000, 'x'));
        });
        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(WTERMSIG(status), SIGTERM);
        QCOMPARE(bytesOf(path("a")), QByteArray("old"));
        QCOMPARE(names(), QStringList("a"));
    }

private:
    QString path(const QString & name) const { return m_folder->filePath(name); }
    QStringList names() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
    struct stat statusOf(const QString & name) const
    {
        struct stat status = {};
        ::stat(QFile::encodeName(path(name)).constData(), &status);
        return status;
    }
    /// Does `work` in a process of its own; how that ended, as waitpid() tells.
    static int inChild(const std::function<void()> & work)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            work();
            if (&__gcov_dump) {
                __gcov_dump(); // else what was done here would not be counted
            }
            ::_exit(0);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return status;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_whole_file)
#include "tst_whole_file.moc"
