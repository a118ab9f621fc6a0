// A new project takes its name without replacing anything, also where the file system has no way of its own.

#include "support/program.h"
#include "support/project_support.h"

#include <QTemporaryDir>
#include <QTest>

class tst_plain_file_systems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewProject_data() { lacks(); }
    void aNewProject();
    void twoAtOnce_data() { lacks(); }
    void twoAtOnce();

private:
    static void lacks()
    {
        QTest::addColumn<QString>("lack");
        QTest::newRow("no rename that replaces nothing") << "rename";
        QTest::newRow("and no second names") << "links";
    }
    [[nodiscard]] QString path(const QString & name) const { return m_folder.filePath(name); }
    [[nodiscard]] QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    }

    QTemporaryDir m_folder;
};

void tst_plain_file_systems::aNewProject()
{
    QFETCH(QString, lack);
    QFile::remove(path("p.korv"));
    QVERIFY(support::writeBytes(path("a.json"), support::textOf("{\"name\": \"a\"}")));
    const support::program_result result =
        support::runProgram({"import", path("a.json"), path("p.korv")},
                            {{"LD_PRELOAD", KORVANE_PLAIN_FILE_SYSTEM}, {"KORVANE_TAKEN_AWAY", lack}});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QVERIFY(support::storedText(path("p.korv")).contains("\"name\": \"a\""));
    QCOMPARE(files(), (QStringList{"a.json", "p.korv"}));
}

void tst_plain_file_systems::twoAtOnce()
{
    QFETCH(QString, lack);
    QVERIFY(support::writeBytes(path("a.json"), support::textOf("{\"name\": \"a\"}, {\"name\": \"c\"}")));
    QVERIFY(support::writeBytes(path("b.json"), support::textOf("{\"name\": \"b\"}, {\"name\": \"c\"}")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LD_PRELOAD", KORVANE_PLAIN_FILE_SYSTEM);
    environment.insert("KORVANE_TAKEN_AWAY", lack);
    int lastA = 0;
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        QFile::remove(path("p.korv"));
        QProcess a;
        QProcess b;
        for (QProcess * process : {&a, &b}) {
            process->setProcessEnvironment(environment);
            process->start(KORVANE_PROGRAM,
                           {"import", path(process == &a ? "a.json" : "b.json"), path("p.korv")});
        }
        QVERIFY(a.waitForFinished() && b.waitForFinished());
        QVERIFY2(a.exitCode() == 0 && b.exitCode() == 0,
                 (a.readAllStandardError() + b.readAllStandardError()).constData());
        // The one that came second found the other's project: the ids go on, and "c" keeps its own.
        model::project project(1);
        QVERIFY(!storage::project_file::read(path("p.korv"), project).isValid());
        const bool isA = support::entityOf(project, 0)->getName() == "a";
        QCOMPARE(support::entityOf(project, 0)->getId(), 3L);
        QCOMPARE(support::entityOf(project, 1)->getName(), QString("c"));
        QCOMPARE(support::entityOf(project, 1)->getId(), 2L);
        QCOMPARE(files(), (QStringList{"a.json", "b.json", "p.korv"}));
        lastA += isA ? 1 : 0;
    }
    qInfo("%d of %d times the first was the last", lastA, rounds);
}

QTEST_GUILESS_MAIN(tst_plain_file_systems)
#include "tst_plain_file_systems.moc"
