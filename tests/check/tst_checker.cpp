// What the checker makes of scripts, given as statements alone.

#include "check/checker.h"

#include "database/facts/facts.h"
#include "model/project.h"

#include <QTest>

using namespace check;
using plugin::statement_action;

namespace {

plugin::statement_record recordOf(const char * script, int line, const char * text,
                                  statement_action action = statement_action::create_table)
{
    plugin::statement_record made;
    made.script = QLatin1String(script);
    made.line = line;
    made.lines = 1 + static_cast<int>(QByteArray(text).count('\n'));
    made.action = action;
    made.text = QString::fromUtf8(text);
    made.defaultText = made.text;
    return made;
}

script scriptOf(const char * name, const std::vector<const char *> & texts, bool isStep = false)
{
    script made;
    made.name = QLatin1String(name);
    made.from = isStep ? QStringLiteral("v1") : QString();
    made.to = isStep ? QStringLiteral("v2") : QStringLiteral("v1");
    made.step = isStep ? QStringLiteral("v1-v2") : QStringLiteral("v1");
    made.now = std::make_shared<model::project>(1);
    made.before = isStep ? std::make_shared<model::project>(1) : nullptr;
    int line = 1;
    for (const char * const text : texts) {
        made.records.push_back(recordOf(name, line, text));
        line += made.records.back().lines;
    }
    return made;
}

checker checkerOf(const char * database)
{
    return checker(*database::factsOf(QString::fromLatin1(database)), QString::fromLatin1(database));
}

QStringList told(const report & of)
{
    QStringList lines;
    for (const finding & each : of.findings) {
        lines += QStringLiteral("%1 %2 %3 %4 line %5")
                     .arg(each.code, wordOf(each.weight), wordOf(each.what), wordOf(each.when),
                          QString::number(each.statement ? each.statement->line : 0));
    }
    return lines;
}

} // namespace

class tst_checker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnsThatBecomeATypeAreTold()
    {
        checker sqlite = checkerOf("sqlite");
        report found;
        sqlite.run(scriptOf("v1.sql", {"CREATE TABLE person (a`x TEXT, b`y INTEGER NOT NULL)"}), &found);
        QCOMPARE(told(found), QStringList{"KV102 warning differs always line 1"});
        QCOMPARE(found.findings.at(0).message,
                 QString("Table 'person' gets a column 'a' whose type is made of the columns after it."));
    }
    void textsSayWhatTheyAreAbout_data()
    {
        QTest::addColumn<QString>("database");
        for (const char * const key : {"sqlite", "mysql", "mariadb", "postgresql", "oracle", "mssqlserver"}) {
            QTest::newRow(key) << QString::fromLatin1(key);
        }
    }
    /// Whatever form a custom script gives a statement, no text about it has a word left open.
    void textsSayWhatTheyAreAbout()
    {
        QFETCH(const QString, database);
        const char * const forms[] = {
            "ALTER TABLE a ALTER COLUMN x SET NOT NULL;",
            "ALTER TABLE a ALTER COLUMN x TYPE INTEGER;",
            "ALTER TABLE a ALTER COLUMN gone TYPE INTEGER;",
            "ALTER TABLE a ALTER COLUMN gone SET NOT NULL;",
            "ALTER TABLE a MODIFY x INTEGER NOT NULL;",
            "ALTER TABLE a MODIFY gone INTEGER;",
            "ALTER TABLE a CHANGE gone x INTEGER;",
            "ALTER TABLE a RENAME COLUMN gone TO y;",
            "ALTER TABLE a DROP COLUMN gone;",
            "ALTER TABLE a ADD COLUMN x INTEGER;",
            "ALTER TABLE a ADD PRIMARY KEY (gone);",
            "ALTER TABLE a ADD UNIQUE (gone);",
            "ALTER TABLE a DROP PRIMARY KEY;",
            "ALTER TABLE gone DROP PRIMARY KEY;",
            "ALTER TABLE a RENAME INDEX gone TO i;",
            "ALTER INDEX gone RENAME TO i;",
            "ALTER TABLE a DROP CONSTRAINT gone;",
            "ALTER TABLE a ADD CONSTRAINT f FOREIGN KEY (gone) REFERENCES b (x);",
            "ALTER TABLE gone RENAME TO a;",
            "CREATE INDEX i ON gone (x);",
            "DROP INDEX gone;",
            "DROP TABLE gone;",
            "CREATE TRIGGER t BEFORE INSERT OR UPDATE OF x ON gone BEGIN NULL; END;",
            "ALTER TABLE a RENAME COLUMN x TO y;",
            "ALTER TABLE a CHANGE x y INTEGER;",
            "ALTER TABLE a ADD COLUMN z INTEGER NOT NULL;",
            "ALTER TABLE a ADD COLUMN gone;",
            "CREATE INDEX i ON a (y);",
            "ALTER TABLE a RENAME TO c;",
            "ALTER TABLE c DROP COLUMN y;",
            "DROP TABLE c;",
            "GRANT ALL ON c TO public;",
        };
        report found;
        checker all = checkerOf(qPrintable(database));
        script first = scriptOf("v1.sql", {"CREATE TABLE a (id INTEGER, x VARCHAR(9));"});
        all.run(first, nullptr);
        const script step = scriptOf("v1_to_v2.sql", {std::begin(forms), std::end(forms)}, true);
        all.run(step, &found);
        QVERIFY(found.findings.size() > 15);
        for (const finding & each : found.findings) {
            const QString text = each.message + each.why + each.way.text + each.way.sql.join(u' ');
            const bool isWhole = !text.contains(u'{') && !text.contains(u'}') &&
                                 !text.contains(QLatin1String("  ")) && !text.contains(QLatin1String("''"));
            QVERIFY2(isWhole, qPrintable(each.code + u' ' + text));
        }
    }
    void aRefusedStatementChangesNothing()
    {
        report found;
        checker check = checkerOf("postgresql");
        check.run(scriptOf("v1.sql", {"CREATE TABLE order (id INTEGER);", "CREATE TABLE a (id INTEGER);",
                                      "CREATE INDEX i ON order (id);"}),
                  &found);
        QCOMPARE(told(found),
                 QStringList({"KV101 error refused always line 1", "KV101 error refused always line 3"}));
        QCOMPARE(found.findings.at(0).error, QLatin1String("42601"));
        QCOMPARE(check.held().tables.size(), std::size_t(1));
        QCOMPARE(found.runs.at(0).statements, 3);
        QCOMPARE(found.runs.at(0).judged, 3);
    }
    void whatFollowsNamesItsCause()
    {
        report found;
        checker check = checkerOf("postgresql");
        check.run(scriptOf("v1.sql", {"CREATE TABLE a (id SMALLTEXT);", "CREATE INDEX i ON a (id);"}),
                  &found);
        QCOMPARE(told(found),
                 QStringList({"KV113 error refused always line 1", "KV200 error refused always line 2"}));
        QCOMPARE(found.findings.at(1).consequenceOf, 0);
        QVERIFY2(found.findings.at(1).message.endsWith("as well, since line 1 was refused."),
                 qPrintable(found.findings.at(1).message));
    }
    void theCauseCanLieInAnEarlierScript()
    {
        checker check = checkerOf("postgresql");
        check.run(scriptOf("v1.sql", {"CREATE TABLE a (id SMALLTEXT);"}), nullptr);
        report found;
        check.run(scriptOf("v2.sql", {"ALTER TABLE a ADD COLUMN x INTEGER;"}, true), &found);
        QCOMPARE(told(found), QStringList({"KV200 error refused always line 1"}));
        QCOMPARE(found.findings.at(0).consequenceOf, -1);
        QVERIFY2(found.findings.at(0).message.endsWith("since line 1 of v1.sql was refused."),
                 qPrintable(found.findings.at(0).message));
        QCOMPARE(found.runs.size(), std::size_t(1));
    }
    void aForeignKeyIsToldByItsName()
    {
        report found;
        checkerOf("postgresql")
            .run(scriptOf("v1.sql",
                          {"CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY);",
                           "CREATE TABLE b (id INTEGER, a_id INTEGER);",
                           "ALTER TABLE b ADD CONSTRAINT fk_b_a FOREIGN KEY (a_id) REFERENCES a (id);",
                           "DROP TABLE a;"}),
                 &found);
        QCOMPARE(told(found), QStringList("KV209 error refused always line 4"));
        QCOMPARE(found.findings.at(0).message,
                 QString("PostgreSQL 15 refuses to drop table 'a': the foreign key 'fk_b_a' of another table "
                         "refers to it."));
    }
    void rowsComeWithTheFirstStep()
    {
        const char * const add = "ALTER TABLE a ADD COLUMN x INTEGER NOT NULL;";
        report first;
        checkerOf("postgresql").run(scriptOf("v1.sql", {"CREATE TABLE a (id INTEGER);", add}), &first);
        QCOMPARE(told(first), QStringList());
        checker check = checkerOf("postgresql");
        check.run(scriptOf("v1.sql", {"CREATE TABLE a (id INTEGER);"}), nullptr);
        report step;
        check.run(scriptOf("v2.sql", {add}, true), &step);
        QCOMPARE(told(step),
                 QStringList({"KV201 error refused rows line 1", "KV603 note advice always line 1"}));
        // With empty tables it ran, and what follows is judged so.
        QCOMPARE(check.held().tables.begin()->second.columns.size(), std::size_t(2));
    }
    void tablesOfTheSameStepAreEmpty()
    {
        checker check = checkerOf("postgresql");
        check.run(scriptOf("v1.sql", {}), nullptr);
        report step;
        check.run(scriptOf("v2.sql",
                           {"CREATE TABLE a (id INTEGER);", "ALTER TABLE a ADD COLUMN x INTEGER NOT NULL;"},
                           true),
                  &step);
        QCOMPARE(told(step), QStringList({"KV603 note advice always line 2"}));
    }
    void unknownFormsAreNotJudged()
    {
        report found;
        script odd = scriptOf("v1.sql", {"FROBNICATE everything;", "CREATE TABLE a (id INTEGER);"});
        odd.records.at(0).defaultText = "CREATE TABLE b (id INTEGER);";
        checker check = checkerOf("postgresql");
        check.run(odd, &found);
        QCOMPARE(told(found), QStringList({"KV805 note advice always line 1"}));
        QVERIFY(found.findings.at(0).statement->isCustom);
        QCOMPARE(found.runs.at(0).statements, 2);
        QCOMPARE(found.runs.at(0).judged, 1);
        QCOMPARE(check.held().tables.size(), std::size_t(1));
    }
    void eachStatementHasItsLine()
    {
        report found;
        checkerOf("postgresql")
            .run(
                scriptOf("v1.sql", {"-- first\nCREATE TABLE a (id INTEGER);\nCREATE TABLE a\n(id INTEGER);"}),
                &found);
        QCOMPARE(found.findings.size(), std::size_t(1));
        const statement_place & place = *found.findings.at(0).statement;
        QCOMPARE(place.line, 3);
        QCOMPARE(place.lines, 2);
        QCOMPARE(place.text, QString("CREATE TABLE a\n(id INTEGER);"));
        QCOMPARE(found.runs.at(0).statements, 2);
    }
    void documentationIsWorthAWarning()
    {
        report found;
        checkerOf("oracle").run(scriptOf("v1.sql", {"CREATE TABLE a (id NOTYPE);"}), &found);
        QCOMPARE(told(found), QStringList({"KV113 warning refused always line 1"}));
        QCOMPARE(found.runs.at(0).basis, QString("documentation of Oracle"));
    }
    void aStepInPartsIsTold()
    {
        checker check = checkerOf("postgresql");
        check.run(scriptOf("v1.sql", {"CREATE TABLE a (id INTEGER);"}), nullptr);
        report found;
        check.run(scriptOf("v2.sql",
                           {"CREATE TABLE order (id INTEGER);", "CREATE TABLE b (id INTEGER);",
                            "CREATE TABLE c (id INTEGER);"},
                           true),
                  &found);
        QCOMPARE(told(found),
                 QStringList({"KV101 error refused always line 1", "KV503 note differs always line 0"}));
        QCOMPARE(found.findings.at(1).message,
                 QString("PostgreSQL 15 does this script in part: of its statements 2 run and 1 do not."));
    }
    void tablesOfAnotherVersionAreMadeAgain()
    {
        const std::vector<const char *> first = {"CREATE TABLE a (id SERIAL NOT NULL PRIMARY KEY);",
                                                 "CREATE TABLE b (id INTEGER, x SMALLTEXT);",
                                                 "CREATE TABLE c (id INTEGER);", "CREATE INDEX i ON a (id);"};
        const std::vector<const char *> second = {"CREATE TABLE a_pkey (id INTEGER);", first[0], first[1],
                                                  first[2], "CREATE TABLE d (id INTEGER);"};
        database::table_memory memory;
        report found;
        const database::facts & known = *database::factsOf(u"postgresql");
        checker before(known, "postgresql", &memory);
        before.run(scriptOf("v1.sql", first), &found);
        QCOMPARE(told(found), QStringList("KV113 error refused always line 2"));
        QVERIFY(memory.find(first[0]) != nullptr);
        QCOMPARE(memory.find(first[0])->written, QString("a"));
        QVERIFY(memory.find(first[1]) == nullptr);

        checker now(known, "postgresql", &memory);
        script full = scriptOf("v2.sql", second);
        full.records[3].entity = 7;
        now.run(full, nullptr);
        QCOMPARE(database::linesOf(now.held()),
                 (QStringList{"column a.id integer NOT NULL counted", "column a_pkey.id integer",
                              "column c.id integer", "column d.id integer", "key a (id) a_pkey1",
                              "sequence a_id_seq", "table a", "table a_pkey", "table c", "table d"}));
        QCOMPARE(now.made().makerOf(7), QString("v2.sql"));
        report after;
        now.run(scriptOf("v3.sql", {"DROP TABLE b;"}, true), &after);
        QCOMPARE(told(after), QStringList("KV200 error refused always line 1"));
        QVERIFY2(after.findings.at(0).message.endsWith("since line 3 of v2.sql was refused."),
                 qPrintable(after.findings.at(0).message));

        memory.beginScript();
        QVERIFY(memory.find(first[2]) != nullptr);
        memory.beginScript();
        QVERIFY(memory.find(first[2]) != nullptr);
        QVERIFY(memory.find(second[4]) == nullptr);
    }
    void replacedTextsAreReadAnew()
    {
        database::table_memory memory;
        checker check(*database::factsOf(u"postgresql"), "postgresql", &memory);
        script full = scriptOf("v1.sql", {"CREATE TABLE a (id INTEGER);"});
        full.records[0].defaultText = QStringLiteral("CREATE TABLE b (id INTEGER);");
        check.run(full, nullptr);
        QCOMPARE(check.held().tables.size(), std::size_t(1));
        QVERIFY(memory.find(QStringLiteral("CREATE TABLE a (id INTEGER);")) == nullptr);
    }
    void fingerprintsSurviveNamesAndLines()
    {
        finding first;
        first.code = QLatin1String("KV203");
        first.database = "sqlite";
        first.objects = {{model::object_kind::entity, 3, "gig"}};
        finding second = first;
        second.objects[0].name = "concert";
        QCOMPARE(fingerprintOf(first), fingerprintOf(second));
        second.objects[0].id = 4;
        QVERIFY(fingerprintOf(first) != fingerprintOf(second));
        second = first;
        second.objects[0].kind = model::object_kind::property;
        QVERIFY(fingerprintOf(first) != fingerprintOf(second));
        second = first;
        second.database = "oracle";
        QVERIFY(fingerprintOf(first) != fingerprintOf(second));
        second = first;
        second.code = QLatin1String("KV204");
        QVERIFY(fingerprintOf(first) != fingerprintOf(second));
    }
};

QTEST_APPLESS_MAIN(tst_checker)
#include "tst_checker.moc"
