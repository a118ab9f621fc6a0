// The files that scripts go into: what a script's name leads to, whose they are, and how many folders there
// are.

#include "export_bench.h"

#include "context/ctx_project.h"

#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using support::model_builder;

namespace {

const QString ScriptName = QStringLiteral("shop_default_db_schema_full.sql");

QByteArray bytesOf(const QString & name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
}

void write(const QString & name, const QByteArray & bytes)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

struct stat statusOf(const QString & name)
{
    struct stat status = {};
    ::stat(QFile::encodeName(name).constData(), &status);
    return status;
}

} // namespace

class tst_script_target : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<export_bench>(); }
    void cleanup() { m_bench.reset(); }
    void refusesLinks_data();
    void refusesLinks();
    void followsALinkWithinTheFolder();
    void aLinkedExportFolderIsUsed();
    void keepsTheRightsOfTheFile_data();
    void keepsTheRightsOfTheFile();
    void keepsTheOwnerOfTheFile();
    void aNewFileHasTheUsualRights();
    void allScriptsLieInOneFolder();

private:
    zk::ZkBool build()
    {
        const model_builder model;
        return m_bench->builder().builder().build(model.project());
    }

    std::unique_ptr<export_bench> m_bench;
};

void tst_script_target::refusesLinks_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("reason");
    const QString out = "it is a symbolic link that leads out of the export folder, to WHERE; remove it";
    const QString nowhere = "it is a symbolic link that leads nowhere; remove it";
    QTest::newRow("a file elsewhere")
        << "ELSEWHERE/precious" << QString(out).replace("WHERE", "ELSEWHERE/precious");
    QTest::newRow("a chain that leads elsewhere")
        << "HERE/chain" << QString(out).replace("WHERE", "ELSEWHERE/precious");
    QTest::newRow("a file in a folder below")
        << "HERE/below/file" << QString(out).replace("WHERE", "HERE/below/file");
    QTest::newRow("nothing") << "HERE/nothing" << nowhere;
    QTest::newRow("nothing elsewhere") << "ELSEWHERE/nothing" << nowhere;
    QTest::newRow("itself") << "HERE/" + ScriptName << nowhere;
    QTest::newRow("a loop") << "HERE/loop" << nowhere;
}

void tst_script_target::refusesLinks()
{
    QFETCH(QString, target);
    QFETCH(QString, reason);
    const QTemporaryDir elsewhere;
    for (QString * const text : {&target, &reason}) {
        text->replace("ELSEWHERE", elsewhere.path()).replace("HERE", m_bench->folder());
    }
    write(elsewhere.filePath("precious"), "mine");
    QVERIFY(QDir(m_bench->folder()).mkdir("below"));
    write(m_bench->path("below/file"), "mine");
    QVERIFY(QFile::link(elsewhere.filePath("precious"), m_bench->path("chain")));
    QVERIFY(QFile::link(m_bench->path(ScriptName), m_bench->path("loop")));
    QVERIFY(QFile::link(target, m_bench->path(ScriptName)));

    const zk::ZkBool result = build();
    QVERIFY(!result);
    QCOMPARE(result.getDesc(), "An error occurred opening SQL file : " + m_bench->path(ScriptName));
    QCOMPARE(m_bench->messages(), QStringList("3/10000/" + result.getDesc() + " (" + reason + ")"));
    QCOMPARE(bytesOf(elsewhere.filePath("precious")), QByteArray("mine"));
    QCOMPARE(bytesOf(m_bench->path("below/file")), QByteArray("mine"));
    QVERIFY(!QFile::exists(elsewhere.filePath("nothing")));
    QVERIFY(!QFile::exists(m_bench->path("nothing")));
}

void tst_script_target::followsALinkWithinTheFolder()
{
    write(m_bench->path("latest.sql"), "old");
    QVERIFY(QFile::link("latest.sql", m_bench->path(ScriptName)));
    QVERIFY(build());
    QCOMPARE(bytesOf(m_bench->path("latest.sql")), QByteArray("\n\n"));
    QVERIFY(QFileInfo(m_bench->path(ScriptName)).isSymLink());
}

void tst_script_target::aLinkedExportFolderIsUsed()
{
    QVERIFY(QDir(m_bench->folder()).mkdir("real"));
    QVERIFY(QFile::link(m_bench->path("real"), m_bench->path("linked")));
    write(m_bench->path("real/latest.sql"), "old");
    QVERIFY(QFile::link("latest.sql", m_bench->path("real/" + ScriptName)));
    m_bench->plugin.setDDLExportPath(m_bench->path("linked"));
    QVERIFY(build());
    QCOMPARE(bytesOf(m_bench->path("real/latest.sql")), QByteArray("\n\n"));
}

void tst_script_target::keepsTheRightsOfTheFile_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {0600, 0640, 0755, 0666}) {
        QTest::newRow(qPrintable(QString::number(mode, 8))) << mode;
    }
}

void tst_script_target::keepsTheRightsOfTheFile()
{
    QFETCH(int, mode);
    write(m_bench->path(ScriptName), "old");
    QCOMPARE(::chmod(QFile::encodeName(m_bench->path(ScriptName)).constData(), static_cast<mode_t>(mode)), 0);
    QVERIFY(build());
    QCOMPARE(bytesOf(m_bench->path(ScriptName)), QByteArray("\n\n"));
    QCOMPARE(static_cast<int>(statusOf(m_bench->path(ScriptName)).st_mode & 07777), mode);
}

void tst_script_target::keepsTheOwnerOfTheFile()
{
    write(m_bench->path(ScriptName), "old");
    if (::geteuid() != 0) {
        QSKIP("only root can give a file away");
    }
    QCOMPARE(::chown(QFile::encodeName(m_bench->path(ScriptName)).constData(), 12345, 23456), 0);
    QVERIFY(build());
    QCOMPARE(statusOf(m_bench->path(ScriptName)).st_uid, 12345U);
    QCOMPARE(statusOf(m_bench->path(ScriptName)).st_gid, 23456U);
}

void tst_script_target::aNewFileHasTheUsualRights()
{
    const mode_t former = ::umask(027);
    const zk::ZkBool result = build();
    ::umask(former);
    QVERIFY(result);
    QCOMPARE(static_cast<int>(statusOf(m_bench->path(ScriptName)).st_mode & 07777), 0640);
}

void tst_script_target::allScriptsLieInOneFolder()
{
    const model_builder model;
    model.project().setLocation(m_bench->folder());
    context::ctx_project::getSingleton().setProject(model.get());
    QVERIFY(QDir(m_bench->folder()).mkpath("out"));
    QVERIFY(QDir(m_bench->folder()).mkpath("moved/out"));
    m_bench->plugin.setDDLExportPath("out");
    // What a relative path is taken from changes while the export runs.
    connect(&m_bench->builder().builder(), &plugin::ddl_export_builder::onProgress, this,
            [&] { model.project().setLocation(m_bench->path("moved")); });
    QVERIFY(m_bench->builder().builder().build(model.project()));
    QCOMPARE(QDir(m_bench->path("out")).entryList(QDir::Files), QStringList(ScriptName));
    QCOMPARE(QDir(m_bench->path("moved/out")).entryList(QDir::Files), QStringList());
}

QTEST_MAIN(tst_script_target)
#include "tst_script_target.moc"
