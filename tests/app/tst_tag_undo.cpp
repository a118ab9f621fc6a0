// A wrong tag is taken away again.

#include "support/damaged_database.h"
#include "support/program.h"
#include "support/project_support.h"

#include "storage/history.h"
#include "zk/zk_sql_database.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runInTerminal;
using support::runProgram;
using support::textOf;

namespace {

const char * const One = R"({"id": 1, "name": "customer"})";
const char * const Two = R"({"id": 1, "name": "client"})";

} // namespace

class tst_tag_undo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        import(One);
        QCOMPARE(runProgram({"tag", m_project, "-m", "first"}).status, 0);
        import(Two);
        QCOMPARE(runProgram({"tag", m_project, "-m", "second"}).status, 0);
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void takesTheNewestAway()
    {
        const program_result result = runProgram({"tag", m_project, "--undo", "-y"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(withoutTime(result.output),
                 QString("Taken away: version 2 of %1 (TIME, second); the newest is v1\n").arg(m_project));
        QCOMPARE(result.status, 0);
        QCOMPARE(messages(), QStringList{"first"});
        // The model is that of before, and the next version gets the number again, with its own message.
        QVERIFY(runProgram({"dump", m_project}).output.contains("\"client\""));
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
        QCOMPARE(messages(), QStringList({"first", ""}));
    }
    void untilNoneIsLeft()
    {
        QCOMPARE(runProgram({"tag", m_project, "--undo", "-y"}).status, 0);
        const program_result last = runProgram({"tag", m_project, "--undo", "-y"});
        QCOMPARE(
            withoutTime(last.output),
            QString("Taken away: version 1 of %1 (TIME, first); there is no version now\n").arg(m_project));
        const program_result none = runProgram({"tag", m_project, "--undo", "-y"});
        QCOMPARE(none.status, 1);
        QCOMPARE(none.output, QByteArray());
        QCOMPARE(QString::fromUtf8(none.errors), m_project + ": has no version that could be taken away\n");
    }
    void nobodyToAsk()
    {
        const program_result result = runProgram({"tag", m_project, "--undo"}, {}, "y\n");
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(withoutTime(result.errors),
                 QString("Nothing was taken away: version 2 of %1 (TIME, second) needs a Yes (-y answers "
                         "Yes)\n")
                     .arg(m_project));
        QCOMPARE(messages(), QStringList({"first", "second"}));
    }
    void asksAPerson()
    {
        // Of what is still the state nothing is lost.
        const program_result no = runInTerminal({"tag", m_project, "--undo"}, {}, "\n");
        QVERIFY2(withoutTime(no.output).contains(
                     QString("Take version 2 of %1 (TIME, second) away? [y/N] ").arg(m_project)),
                 no.output.constData());
        QCOMPARE(no.status, 1);
        QCOMPARE(messages(), QStringList({"first", "second"}));
        import(One);
        const program_result yes = runInTerminal({"tag", m_project, "--undo"}, {}, "yes\n");
        QVERIFY2(
            withoutTime(yes.output)
                .contains(
                    QString("Take version 2 of %1 (TIME, second) away? The model has changed since; what it "
                            "held is lost. [y/N] ")
                        .arg(m_project)),
            yes.output.constData());
        QCOMPARE(yes.status, 0);
        QCOMPARE(messages(), QStringList{"first"});
    }
    void aHistoryThatCannotBeRead()
    {
        QVERIFY(support::spoilTable(m_project, "t_project_tag"));
        const QByteArray before = support::bytesOf(m_project);
        const program_result result = runProgram({"tag", m_project, "--undo", "-y"});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QVERIFY2(result.errors.startsWith(m_project.toUtf8() + ": is damaged (table t_project_tag: "),
                 result.errors.constData());
        QCOMPARE(result.errors.count('\n'), 1);
        QCOMPARE(support::bytesOf(m_project), before);
    }
    void wrongTogether_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("message") << QStringList{"--undo", "-m", "x"}
                                 << QByteArray("--undo takes a version away, --message belongs to a new one: "
                                               "give one of both\n");
        QTest::newRow("if changed")
            << QStringList{"--undo", "--if-changed"}
            << QByteArray("--undo takes a version away, --if-changed belongs to a new one: give one of "
                          "both\n");
        QTest::newRow("yes") << QStringList{"-y"}
                             << QByteArray("-y answers the question of --undo, which is missing\n");
    }
    void wrongTogether()
    {
        QFETCH(const QStringList, options);
        QFETCH(const QByteArray, reason);
        const program_result result = runProgram(QStringList{"tag", m_project} + options);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.errors, reason);
        QCOMPARE(messages(), QStringList({"first", "second"}));
    }
    void onlyTheOneThatWasShown()
    {
        using namespace storage::history;
        newest_version newest;
        QVERIFY(!readNewest(m_project, newest).isValid());
        QCOMPARE(newest.what.number, 2);
        QVERIFY(newest.isState);
        // Another one has taken its place meanwhile.
        QVERIFY(!removeNewest(m_project, newest.what).isValid());
        QTest::qWait(2); // ms; versions are told apart by theirs
        QCOMPARE(runProgram({"tag", m_project, "-m", "third"}).status, 0);
        QCOMPARE(removeNewest(m_project, newest.what).text(),
                 m_project + ": version 2 is not the newest one any more; nothing was taken away");
        QCOMPARE(messages(), QStringList({"first", "third"}));
    }

private:
    void import(const QByteArray & entities)
    {
        m_project = m_folder->filePath("shop.korv");
        const QString text = m_folder->filePath("shop.json");
        QVERIFY(support::writeBytes(text, textOf(entities)));
        QCOMPARE(runProgram({"import", text, m_project}).status, 0);
    }
    [[nodiscard]] QStringList messages() const
    {
        QList<storage::history::version> versions;
        QStringList result;
        if (storage::history::list(m_project, versions).isValid()) {
            return {"unreadable"};
        }
        for (const storage::history::version & version : versions) {
            result << version.message;
        }
        return result;
    }
    static QString withoutTime(const QByteArray & told)
    {
        return QString::fromUtf8(told).replace(QRegularExpression(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)"),
                                               "TIME");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_tag_undo)

#include "tst_tag_undo.moc"
