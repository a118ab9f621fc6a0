// -q: a command prints what it was asked for, and what went wrong.

#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runInTerminal;
using support::runProgram;

class tst_quiet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = m_folder->filePath("shop.korv");
        QCOMPARE(storeModel("INTEGER").status, 0);
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
        QCOMPARE(storeModel("BIGINT").status, 0);
    }

    void whatIsDoneIsNotTold_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("import") << QStringList{"import", "shop.json", "other.korv"};
        QTest::newRow("tag, with a hint") << QStringList{"tag", "shop.korv", "-m", "next"};
        QTest::newRow("nothing to tag") << QStringList{"tag", "tagged.korv", "--if-changed"};
        QTest::newRow("a tag that is taken away") << QStringList{"tag", "tagged.korv", "--undo", "-y"};
        QTest::newRow("settings") << QStringList{"settings", "shop.korv", "--db", "mysql"};
        QTest::newRow("export, with a hint") << QStringList{
            "export", "shop.korv", "-y", "--path", "sql", "--schema", "both", "--db", "postgresql"};
        QTest::newRow("document") << QStringList{"document", "shop.korv", "-o", "site"};
    }
    void whatIsDoneIsNotTold()
    {
        QFETCH(const QStringList, arguments);
        QVERIFY(QFile::copy(m_project, m_folder->filePath("tagged.korv")));
        QCOMPARE(runProgram({"tag", m_folder->filePath("tagged.korv")}).status, 0);
        QStringList whole;
        for (const QString & each : arguments) {
            const bool isFile = each.contains(QLatin1Char('.')) || each == QLatin1String("sql") ||
                                each == QLatin1String("site");
            whole << (isFile ? m_folder->filePath(each) : each);
        }
        const QString before = m_folder->filePath("before");
        QVERIFY(copyAll(before));
        const program_result told = runProgram(whole);
        QCOMPARE(told.status, 0);
        QVERIFY(!told.output.isEmpty());
        const bool hasHint = QByteArray(QTest::currentDataTag()).endsWith("with a hint");
        QCOMPARE(!told.errors.isEmpty(), hasHint);
        const QStringList made = files();
        QVERIFY(restore(before));
        const program_result quiet = runProgram(whole << "-q");
        QCOMPARE(quiet.output, QByteArray());
        QCOMPARE(quiet.errors, QByteArray());
        QCOMPARE(quiet.status, 0);
        QCOMPARE(files(), made);
    }

    void resultsAreTheSame_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("dump") << QStringList{"dump"};
        QTest::newRow("log") << QStringList{"log"};
        QTest::newRow("diff") << QStringList{"diff"};
        QTest::newRow("check") << QStringList{"check"};
        QTest::newRow("status") << QStringList{"status"};
        QTest::newRow("settings") << QStringList{"settings"};
        QTest::newRow("verify") << QStringList{"verify"};
    }
    void resultsAreTheSame()
    {
        QFETCH(QStringList, arguments);
        arguments << m_project;
        const program_result told = runProgram(arguments);
        QVERIFY(!told.output.isEmpty());
        const program_result quiet = runProgram(arguments << "--quiet");
        QCOMPARE(quiet.output, told.output);
        QCOMPARE(quiet.status, told.status);
    }

    void errorsAndWarningsAreTold()
    {
        const QString missing = m_folder->filePath("missing.korv");
        const program_result failed = runProgram({"tag", missing, "-q"});
        QCOMPARE(failed.status, 1);
        QCOMPARE(failed.errors, missing.toUtf8() + ": does not exist; check the name\n");
        QVERIFY(support::writeBytes(m_folder->filePath("shop.json"),
                                    support::textOf(support::json("{'name': 'customer', 'properties': "
                                                                  "[{'name': 'fee', 'type': 'Money'}]}"))));
        const program_result warned =
            runProgram({"import", m_folder->filePath("shop.json"), m_project, "-q"});
        QCOMPARE(warned.status, 0);
        QCOMPARE(warned.output, QByteArray());
        QVERIFY2(warned.errors.contains(": warning: type 'Money' of customer.fee is not in the type mapping"),
                 warned.errors.constData());
    }
    void progressIsNotShown()
    {
        const QByteArray told = runInTerminal({"verify", m_project}, {}, {}).output;
        QVERIFY2(told.contains("\r\033[Ksqlite: 1 of "), told.constData());
        const QByteArray quiet = runInTerminal({"verify", m_project, "-q"}, {}, {}).output;
        QVERIFY2(!quiet.contains("\033[K"), quiet.constData());
    }

private:
    program_result storeModel(const char * type)
    {
        const QString text = m_folder->filePath("shop.json");
        const QByteArray model =
            QByteArray("{'id': 1, 'name': 'customer', 'properties': [{'id': 10, 'name': 'age', 'type': "
                       "'int', 'forceSqlType': '") +
            type + "'}]}";
        support::writeBytes(text, support::textOf(support::json(model.constData())));
        return runProgram({"import", text, m_project});
    }
    [[nodiscard]] QStringList files() const
    {
        QStringList names = QDir(m_folder->path()).entryList(QDir::Files);
        for (const char * const folder : {"sql", "site"}) {
            names += QDir(m_folder->filePath(QLatin1String(folder))).entryList(QDir::Files);
        }
        return names;
    }
    [[nodiscard]] bool copyAll(const QString & to) const
    {
        return QDir().mkpath(to) && support::run("cp", {"-a", m_project, m_folder->filePath("tagged.korv"),
                                                        m_folder->filePath("shop.json"), to})
                                            .status == 0;
    }
    /// What was there when copyAll() was called, and nothing else.
    [[nodiscard]] bool restore(const QString & from) const
    {
        for (const QFileInfo & each :
             QDir(m_folder->path()).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
            const bool isGone =
                each.filePath() == from ||
                (each.isDir() ? QDir(each.filePath()).removeRecursively() : QFile::remove(each.filePath()));
            if (!isGone) {
                return false;
            }
        }
        return support::run("sh", {"-c", "cp -a \"$0\"/* \"$1\"", from, m_folder->path()}).status == 0;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_quiet)
#include "tst_quiet.moc"
