// Scripts that are judged while they are made: nothing is told otherwise than when they are judged as a
// whole.

#include "check/report/report.h"
#include "check/script_judge.h"

#include "database/facts/facts.h"
#include "model/project.h"
#include "plugin/ddl_export.h"
#include "support/project_support.h"

#include <QTest>

#include <stdexcept>

using check::checker;
using check::report;
using check::script;
using check::script_judge;

namespace {

constexpr int Entities = 700;

/// Entities with an index and a relationship each; every seventh table and every ninth column has a name that
/// databases keep for themselves, and each entity refers to the next.
QByteArray manyEntities()
{
    QByteArray entities;
    for (int i = 0; i < Entities; ++i) {
        const QByteArray number = QByteArray::number(i);
        const QByteArray id = QByteArray::number(i + 1);
        const QByteArray next = QByteArray::number((i + 1) % Entities + 1);
        const QByteArray table = i % 7 == 0 ? QByteArray("'tableName': 'select', ") : QByteArray();
        const QByteArray column = i % 9 == 0 ? QByteArray("from") : QByteArray("c");
        entities +=
            (i == 0 ? "" : ", ") +
            QByteArray("{'id': " + id + ", 'name': 'e" + number + "', " + table + "'properties': [{'id': " +
                       id + "1, 'name': 'id', 'type': 'long', 'identifier': true}, {'id': " + id +
                       "2, 'name': '" + column + "', 'type': 'QString', 'index': true}, {'id': " + id +
                       "3, 'name': 'next', 'relationship': {'id': " + id +
                       "4, 'type': 'many-to-one', 'target': " + next + "}}]}");
    }
    return QByteArray("{'format': 'korvane-project', 'formatVersion': 1, 'name': 'many', 'entities': [" +
                      entities + "]}")
        .replace('\'', '"');
}

script fullScript(const std::shared_ptr<model::project> & of)
{
    script full;
    full.now = of;
    full.to = QStringLiteral("now");
    full.step = QStringLiteral("full");
    full.isFull = true;
    full.isCurrent = true;
    return full;
}

plugin::friendly_settings optionsFor(const database::facts & known)
{
    return {{QStringLiteral("db"), known.scripts}, {QStringLiteral("relationships"), QStringLiteral("yes")}};
}

/// What the checker says of the script when it is there as a whole.
report judgedAsAWhole(const database::facts & known, const std::shared_ptr<model::project> & of,
                      database::catalogue & stored)
{
    plugin::ddl_export statements;
    script full = fullScript(of);
    full.records = statements.fullStatements(*of, optionsFor(known)).records;
    full.name = full.records.front().script;
    report told;
    checker whole(known, known.key);
    whole.run(full, &told);
    stored = whole.stored();
    return told;
}

plugin::statement_record recordOf(const QString & text, int line)
{
    plugin::statement_record record;
    record.script = QStringLiteral("v1.sql");
    record.line = line;
    record.lines = 1;
    record.action = plugin::statement_action::create_table;
    record.text = text;
    record.defaultText = text;
    return record;
}

} // namespace

class tst_script_judge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aScriptIsJudgedTheSame_data()
    {
        QTest::addColumn<QString>("database");
        for (const char * const key : {"sqlite", "mysql", "postgresql", "oracle", "mssqlserver"}) {
            QTest::newRow(key) << QString::fromLatin1(key);
        }
    }
    void aScriptIsJudgedTheSame()
    {
        QFETCH(QString, database);
        const database::facts & known = *database::factsOf(database);
        const std::shared_ptr<model::project> project = support::projectOf(manyEntities());
        QVERIFY(project);
        database::catalogue expectedTables;
        const report expected = judgedAsAWhole(known, project, expectedTables);
        QCOMPARE(expected.runs.size(), std::size_t(1));
        QVERIFY(expected.runs.front().statements >= 2 * Entities);
        QVERIFY(expected.findings.size() >= Entities / 7);

        plugin::ddl_export statements;
        script full = fullScript(project);
        report told;
        checker whole(known, known.key);
        {
            script_judge judge(whole, full, &told);
            QVERIFY(!judge.isBegun());
            const plugin::statement_list list =
                statements.fullStatements(*project, optionsFor(known), [&](plugin::statement_record record) {
                    judge.take(std::move(record));
                });
            QVERIFY(list.outcome);
            QVERIFY(list.records.empty());
            QVERIFY(judge.isBegun());
            judge.end();
        }
        QVERIFY(full.name.startsWith("many_"));
        QCOMPARE(told.runs.size(), std::size_t(1));
        QCOMPARE(told.runs.front().script, full.name);
        QCOMPARE(told.runs.front().statements, expected.runs.front().statements);
        QCOMPARE(check::jsonReport(told, "1"), check::jsonReport(expected, "1"));
        QVERIFY(whole.stored() == expectedTables);
    }
    void whatNobodyIsToldIsMadeTheSame()
    {
        const database::facts & known = *database::factsOf(u"postgresql");
        const std::shared_ptr<model::project> project = support::projectOf(manyEntities());
        database::catalogue expected;
        judgedAsAWhole(known, project, expected);
        database::table_memory memory;
        // The second time tables are made again without being read.
        for (int i = 0; i < 2; ++i) {
            plugin::ddl_export statements;
            script full = fullScript(project);
            checker whole(known, known.key, &memory);
            script_judge judge(whole, full, nullptr);
            QVERIFY(
                statements
                    .fullStatements(*project, optionsFor(known),
                                    [&](plugin::statement_record record) { judge.take(std::move(record)); })
                    .outcome);
            judge.end();
            QVERIFY(whole.stored() == expected);
        }
    }
    void theModelIsToldInItsOrder()
    {
        const database::facts & known = *database::factsOf(u"postgresql");
        const std::shared_ptr<model::project> project = support::projectOf(manyEntities());
        plugin::ddl_export statements;
        script full = fullScript(project);
        full.records = statements.fullStatements(*project, optionsFor(known)).records;
        checker whole(known, known.key);
        report told;
        whole.run(full, &told);
        const std::size_t before = told.findings.size();
        whole.lookAtModel(full, whole.stored(), {}, told);
        std::vector<long> withoutIndex;
        for (std::size_t i = before; i < told.findings.size(); ++i) {
            if (told.findings[i].code == QLatin1String("KV702")) {
                withoutIndex.push_back(told.findings[i].objects.front().id);
            }
        }
        // Neither the table nor the next one has a name that is kept: the remainder by seven is 1 to 5, the
        // one by nine 1 to 7.
        std::vector<long> expected;
        for (int i = 0; i < Entities; ++i) {
            if (i % 7 >= 1 && i % 7 <= 5 && i % 9 >= 1 && i % 9 <= 7) {
                expected.push_back(i + 1);
            }
        }
        QCOMPARE(expected.size(), std::size_t(390));
        QCOMPARE(withoutIndex, expected);
    }
    void statementsAreJudgedInTheirOrder()
    {
        report told;
        checker all(*database::factsOf(u"sqlite"), "sqlite");
        script first;
        first.now = std::make_shared<model::project>(1);
        script_judge judge(all, first, &told);
        constexpr int Tables = 500;
        for (int i = 0; i < Tables; ++i) {
            judge.take(recordOf(QStringLiteral("CREATE TABLE t%1 (id INTEGER);").arg(i), 2 * i + 1));
            judge.take(
                recordOf(QStringLiteral("ALTER TABLE t%1 RENAME TO t%2;").arg(i).arg(i + Tables), 2 * i + 2));
        }
        judge.take(recordOf(QStringLiteral("DROP TABLE t0;"), 2 * Tables + 1));
        judge.end();
        QCOMPARE(told.runs.front().statements, 2 * Tables + 1);
        QCOMPARE(told.findings.size(), std::size_t(1));
        QCOMPARE(told.findings.front().statement->line, 1001);
        QCOMPARE(all.stored().tables.size(), std::size_t(500));
    }
    void aScriptOfNoStatementIsOneThatWasRun()
    {
        report told;
        checker all(*database::factsOf(u"sqlite"), "sqlite");
        script none;
        none.now = std::make_shared<model::project>(1);
        script_judge judge(all, none, &told);
        judge.end();
        QCOMPARE(told.runs.size(), std::size_t(1));
        QCOMPARE(told.runs.front().statements, 0);
    }
    void whatIsNotEndedTellsNothing()
    {
        for (const int statements : {0, 10, 100, 5000}) {
            report told;
            checker all(*database::factsOf(u"sqlite"), "sqlite");
            script first;
            first.now = std::make_shared<model::project>(1);
            try {
                script_judge judge(all, first, &told);
                for (int i = 0; i < statements; ++i) {
                    judge.take(recordOf(QStringLiteral("CREATE TABLE t%1 (id INTEGER);").arg(i), i + 1));
                }
                throw std::runtime_error("the maker of the statements");
            } catch (const std::runtime_error &) {
            }
            QVERIFY(told.runs.empty());
            QVERIFY(all.stored().tables.size() <= static_cast<std::size_t>(statements));
        }
    }
    void workIsDoneInOrderAndOnce_data()
    {
        QTest::addColumn<int>("items");
        for (const int items : {0, 1, 63, 64, 65, 5000}) {
            QTest::newRow(qPrintable(QString::number(items))) << items;
        }
    }
    void workIsDoneInOrderAndOnce()
    {
        QFETCH(int, items);
        std::vector<int> done;
        check::work_beside<int> work([&done](int & item) { done.push_back(item); });
        std::vector<int> expected;
        for (int i = 0; i < items; ++i) {
            work.take(i);
            expected.push_back(i);
        }
        work.end();
        QCOMPARE(done, expected);
    }
    void whatWorkThrowsEndsIt_data()
    {
        QTest::addColumn<int>("items");
        QTest::addColumn<int>("bad");
        QTest::newRow("without a thread") << 10 << 3;
        QTest::newRow("at once") << 5000 << 0;
        QTest::newRow("in the middle") << 5000 << 1000;
        QTest::newRow("last") << 5000 << 4999;
    }
    void whatWorkThrowsEndsIt()
    {
        QFETCH(int, items);
        QFETCH(int, bad);
        int done = 0;
        check::work_beside<int> work([&](int & item) {
            if (item == bad) {
                throw std::runtime_error("not this one");
            }
            ++done;
        });
        for (int i = 0; i < items; ++i) {
            work.take(i);
        }
        QVERIFY_EXCEPTION_THROWN(work.end(), std::runtime_error);
        QCOMPARE(done, bad);
    }
};

QTEST_GUILESS_MAIN(tst_script_judge)
#include "tst_script_judge.moc"
