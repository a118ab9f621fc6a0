#include "support/project_support.h"

#include "storage/restored_version.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using outcome = storage::restored_version::outcome;

const QString Version = "shop_v1_20260101000000000.korv";
const QString OtherClaim = ".korvane-abcdefghijkl0i6q.tag";
const QString Claim = ".korvane-000000000000CHECK.tag";

QByteArray identityOf(const QString & file)
{
    struct stat found = {};
    lstat(QFile::encodeName(file).constData(), &found);
    return QByteArray::number(qulonglong(found.st_dev)) + ':' + QByteArray::number(qulonglong(found.st_ino));
}

int openFiles()
{
    return static_cast<int>(QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size());
}

} // namespace

/// What the next run removes of what a killed one has left: restored versions that a claim names.
class tst_claims : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void whatIsRemoved_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("claim"); // ID is the file's identity
        QTest::addColumn<bool>("goes");
        const QByteArray line = Version.toLatin1() + '\n';
        QTest::newRow("whole") << QByteArray("bytes") << Version << line + "ID\n" << true;
        QTest::newRow("whole, nothing written yet") << QByteArray() << Version << line + "ID\n" << true;
        QTest::newRow("of another file") << QByteArray("bytes") << Version << line + "1:2\n" << false;
        QTest::newRow("of another empty file") << QByteArray() << Version << line + "1:2\n" << false;
        QTest::newRow("without identity, empty") << QByteArray() << Version << line << true;
        QTest::newRow("without identity, one byte") << QByteArray("x") << Version << line << false;
        QTest::newRow("without identity, more bytes") << QByteArray("bytes") << Version << line << false;
        QTest::newRow("cut within the name") << QByteArray() << Version << Version.toLatin1() << false;
        QTest::newRow("cut within the identity") << QByteArray("bytes") << Version << line + "1" << false;
        QTest::newRow("empty") << QByteArray("bytes") << Version << QByteArray() << false;
        for (const char * const name :
             {"precious.korv", "shop_v1_2026010100000000.korv", "shop_v_20260101000000000.korv",
              "shop_v1_20260101000000000.json", "shop_v1_20260101000000000.korv.bak"}) {
            QTest::newRow(name) << QByteArray("bytes") << QString(name) << QByteArray(name) + "\nID\n"
                                << false;
        }
    }
    void whatIsRemoved()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, name);
        QFETCH(QByteArray, claim);
        QVERIFY(support::writeBytes(path(name), contents));
        writeClaim(claim.replace("ID", identityOf(path(name))));
        storage::removeLeftVersions(m_folder->path());
        QTEST(!QFile::exists(path(name)), "goes");
        QVERIFY(!QFile::exists(path(Claim)));
    }
    void aClaimDoesNotLeaveItsFolder()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("inner"));
        QVERIFY(support::writeBytes(path(Version), "bytes"));
        const QByteArray text = "../" + Version.toLatin1() + '\n' + identityOf(path(Version)) + '\n';
        QVERIFY(support::writeBytes(path("inner/" + Claim), text));
        storage::removeLeftVersions(path("inner"));
        QVERIFY(QFile::exists(path(Version)));
    }
    void onlyRegularFilesAreClaimed()
    {
        QVERIFY(support::writeBytes(path("target"), "bytes"));
        QVERIFY(QFile::link(path("target"), path(Version)));
        writeClaim(Version.toLatin1() + '\n' + identityOf(path(Version)) + '\n');
        storage::removeLeftVersions(m_folder->path());
        QVERIFY(QFileInfo(path(Version)).isSymLink());
        QVERIFY(QFile::exists(path("target")));
    }
    void filesOfOthersStay()
    {
        if (geteuid() != 0) {
            QSKIP("only root can give a file to somebody else");
        }
        constexpr uid_t somebody = 65534;
        QVERIFY(support::writeBytes(path(Version), "bytes"));
        writeClaim(Version.toLatin1() + '\n' + identityOf(path(Version)) + '\n');
        QCOMPARE(chown(QFile::encodeName(path(Version)).constData(), somebody, somebody), 0);
        storage::removeLeftVersions(m_folder->path());
        QVERIFY(QFile::exists(path(Version)));
        // A claim of somebody else is no claim.
        QVERIFY(support::writeBytes(path("a" + Version), "bytes"));
        writeClaim("a" + Version.toLatin1() + '\n' + identityOf(path("a" + Version)) + '\n');
        QCOMPARE(chown(QFile::encodeName(path(Claim)).constData(), somebody, somebody), 0);
        storage::removeLeftVersions(m_folder->path());
        QVERIFY(QFile::exists(path("a" + Version)));
        QVERIFY(QFile::exists(path(Claim)));
    }
    void whatALivingProgramUsesStays()
    {
        QVERIFY(support::writeBytes(path(Version), "bytes"));
        writeClaim(Version.toLatin1() + '\n' + identityOf(path(Version)) + '\n');
        const int descriptor = open(QFile::encodeName(path(Claim)).constData(), O_RDONLY | O_CLOEXEC);
        QCOMPARE(flock(descriptor, LOCK_EX), 0);
        QVERIFY(support::writeBytes(path(OtherClaim), ""));
        storage::removeLeftVersions(m_folder->path());
        QVERIFY(QFile::exists(path(Version)) && QFile::exists(path(Claim)));
        QVERIFY(!QFile::exists(path(OtherClaim)));
        close(descriptor);
        storage::removeLeftVersions(m_folder->path());
        QVERIFY(!QFile::exists(path(Version)) && !QFile::exists(path(Claim)));
    }
    void namesThatOthersMadeUpStay()
    {
        const QStringList names = {".korvane-000000000001CHECK.tag", ".korvane-000000000000CHECX.tag",
                                   ".korvane-000000000000CHECK0.tag", ".korvane-.tag",
                                   ".korvane-000000000000CHECK.new.tag"};
        for (QString name : names) {
            name.replace("CHECK", Check).replace("CHECX", "zzzz");
            QVERIFY(support::writeBytes(path(name), ""));
            storage::removeLeftVersions(m_folder->path());
            QVERIFY2(QFile::exists(path(name)), qPrintable(name));
        }
    }
    void contentsAreNoClaim()
    {
        QVERIFY(support::writeBytes(path(Version), "bytes"));
        const QString contents = ".korvane-000000000000CHECK.new";
        QVERIFY(support::writeBytes(path(contents),
                                    Version.toLatin1() + '\n' + identityOf(path(Version)) + '\n'));
        storage::removeLeftVersions(m_folder->path());
        QVERIFY(QFile::exists(path(Version)));
        QVERIFY(!QFile::exists(path(contents)));
    }
    void noFolderIsNotTheCurrentOne()
    {
        writeClaim(QByteArray());
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        const auto back = qScopeGuard([&before] { QDir::setCurrent(before); });
        storage::removeLeftVersions(QString());
        QVERIFY(QFile::exists(path(Claim)));
    }
    void nothingStaysOpen()
    {
        const int before = openFiles();
        for (int i = 0; i < 3; ++i) {
            storage::restored_version restored;
            QCOMPARE(restored.restore(m_folder->path(), "shop_v1_", qCompress("bytes")), outcome::restored);
            QCOMPARE(support::bytesOf(restored.fileName()), QByteArray("bytes"));
            storage::removeLeftVersions(m_folder->path());
            QVERIFY(QFile::exists(restored.fileName()));
        }
        writeClaim(QByteArray());
        storage::removeLeftVersions(m_folder->path());
        QCOMPARE(openFiles(), before);
        QCOMPARE(left(), QStringList());
    }
    void aVersionThatCannotBeWrittenIsGoneAtOnce()
    {
        rlimit former = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &former), 0);
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small = {1000, former.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        const auto back = qScopeGuard([&former] {
            setrlimit(RLIMIT_FSIZE, &former);
            std::signal(SIGXFSZ, SIG_DFL);
        });
        storage::restored_version restored;
        QCOMPARE(restored.restore(m_folder->path(), "shop_v1_", qCompress(QByteArray(5000, 'x'))),
                 outcome::unwritten);
        QCOMPARE(left(), QStringList());
        QVERIFY(restored.fileName().startsWith(m_folder->filePath("shop_v1_")));
        QCOMPARE(restored.restore(m_folder->path(), "shop_v1_", qCompress(QByteArray(1000, 'x'))),
                 outcome::restored);
    }
    /// A name that another process has when it is asked for may be free when it is looked at.
    void programsOfOneMomentRestoreTheSame()
    {
        const QByteArray bytes = qCompress("bytes");
        const auto failures = [&] {
            constexpr int rounds = 10000;
            int count = 0;
            for (int i = 0; i < rounds; ++i) {
                storage::restored_version restored;
                const bool isRestored =
                    restored.restore(m_folder->path(), "shop_v1_", bytes) == outcome::restored;
                count += isRestored ? 0 : 1;
            }
            return count;
        };
        QList<pid_t> children;
        for (int i = 0; i < 3; ++i) {
            children += ::fork();
            if (children.constLast() == 0) {
                ::_exit(failures() == 0 ? 0 : 1);
            }
        }
        QCOMPARE(failures(), 0);
        for (const pid_t child : children) {
            int status = -1;
            QCOMPARE(::waitpid(child, &status, 0), child);
            QCOMPARE(status, 0);
        }
        QCOMPARE(left(), QStringList());
    }
    void aDamagedVersionMakesNoFile()
    {
        storage::restored_version restored;
        QCOMPARE(restored.restore(m_folder->path(), "shop_v1_", qCompress("bytes").chopped(1)),
                 outcome::damaged);
        QVERIFY(restored.fileName().startsWith(m_folder->filePath("shop_v1_")));
        QCOMPARE(left(), QStringList());
    }

private:
    /// What the digits 000000000000 are tied together by.
    static inline const QString Check = "17yl";

    [[nodiscard]] QString path(QString name) const
    {
        return m_folder->filePath(name.replace("CHECK", Check));
    }
    void writeClaim(const QByteArray & text) const { QVERIFY(support::writeBytes(path(Claim), text)); }
    [[nodiscard]] QStringList left() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_claims)
#include "tst_claims.moc"
