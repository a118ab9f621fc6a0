// Acceptance files: which findings they accept, and what is wrong with them.

#include "check/finding/acceptance.h"

#include <QTest>

using namespace check;

namespace {

const QDate Today(2026, 11, 22);

finding findingOf(const char * code, const char * database, const char * step,
                  std::vector<object> objects = {})
{
    finding made;
    made.code = QLatin1String(code);
    made.weight = severity::error;
    made.database = QLatin1String(database);
    made.step = QLatin1String(step);
    made.objects = std::move(objects);
    return made;
}

run runOf(const char * database, const char * step)
{
    run made;
    made.database = QLatin1String(database);
    made.step = QLatin1String(step);
    return made;
}

report twoFindings()
{
    report made;
    made.runs = {runOf("sqlite", "full"), runOf("sqlite", "v2-v3")};
    made.findings = {
        findingOf("KV302", "sqlite", "v2-v3",
                  {{model::object_kind::entity, 1, "gig"}, {model::object_kind::property, 14, "gig.length"}}),
        findingOf("KV301", "sqlite", "v2-v3", {{model::object_kind::entity, 2, "tour"}})};
    return made;
}

accepted_findings read(const QByteArray & text)
{
    accepted_findings found;
    const zk::ZkBool is = readAcceptance(text, "korvane-check.json", found);
    if (!is) {
        qWarning("%s", qUtf8Printable(is.getDesc()));
    }
    return found;
}

QStringList codesOf(const report & of)
{
    QStringList codes;
    for (const finding & each : of.findings) {
        codes += each.code + (each.accepted ? QStringLiteral(" accepted") : QString());
    }
    return codes;
}

} // namespace

class tst_acceptance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void narrows_data()
    {
        QTest::addColumn<QByteArray>("entry"); // after the code
        QTest::addColumn<bool>("isAccepted");
        QTest::newRow("code alone") << QByteArray() << true;
        QTest::newRow("entity") << QByteArray(R"(, "entity": 1)") << true;
        QTest::newRow("other entity") << QByteArray(R"(, "entity": 2)") << false;
        QTest::newRow("property") << QByteArray(R"(, "property": 14)") << true;
        QTest::newRow("other property") << QByteArray(R"(, "property": 1)") << false;
        QTest::newRow("relationship that it has not") << QByteArray(R"(, "relationship": 14)") << false;
        QTest::newRow("database") << QByteArray(R"(, "database": "sqlite")") << true;
        QTest::newRow("other database") << QByteArray(R"(, "database": "oracle")") << false;
        QTest::newRow("step") << QByteArray(R"(, "step": "v2-v3")") << true;
        QTest::newRow("other step") << QByteArray(R"(, "step": "v1-v2")") << false;
        QTest::newRow("until today") << QByteArray(R"(, "until": "2026-11-22")") << true;
        QTest::newRow("until yesterday") << QByteArray(R"(, "until": "2026-11-21")") << false;
    }
    void narrows()
    {
        QFETCH(QByteArray, entry);
        QFETCH(bool, isAccepted);
        report report = twoFindings();
        accept(read(R"({"accept": [{"code": "KV302", "why": "nobody needs it")" + entry + "}]}"), Today,
               report);
        QCOMPARE(report.findings.at(0).accepted.has_value(), isAccepted);
        QVERIFY(!report.findings.at(1).accepted);
        if (isAccepted) {
            QCOMPARE(report.findings.at(0).accepted->why, QString("nobody needs it"));
        }
    }
    void keepsTheDate()
    {
        report report = twoFindings();
        accept(read(R"({"accept": [{"code": "KV302", "why": "x", "until": "2027-01-31"}]})"), Today, report);
        QCOMPARE(report.findings.at(0).accepted->until, QString("2027-01-31"));
    }
    void tellsWhatMatchesNothing()
    {
        report report = twoFindings();
        accept(read(R"({"accept": [{"code": "KV101", "why": "was there once"}]})"), Today, report);
        QCOMPARE(codesOf(report), QStringList({"KV302", "KV301", "KV806"}));
        QCOMPARE(report.findings.at(2).message,
                 QString("korvane-check.json: an entry about KV101 matches no finding (was there once)."));
        QCOMPARE(report.findings.at(2).weight, severity::warning);
    }
    void isSilentAboutWhatWasNotJudged()
    {
        report report = twoFindings();
        accept(read(R"({"accept": [{"code": "KV101", "why": "x", "step": "v1-v2"},
                                   {"code": "KV101", "why": "x", "database": "oracle"}]})"),
               Today, report);
        QCOMPARE(codesOf(report), QStringList({"KV302", "KV301"}));
    }
    void tellsWhatIsPastItsDate()
    {
        report report = twoFindings();
        accept(read(R"({"accept": [{"code": "KV301", "why": "until the move", "until": "2026-01-01"}]})"),
               Today, report);
        QCOMPARE(codesOf(report), QStringList({"KV302", "KV301", "KV807"}));
        QCOMPARE(report.findings.at(2).message,
                 QString("korvane-check.json: the entry about KV301 ended on 2026-01-01 (until the move)."));
    }
    void givesSeverities()
    {
        report report = twoFindings();
        accept(
            read(
                R"({"severity": {"KV301": "note", "KV806": "error"}, "accept": [{"code": "KV101", "why": "x"}]})"),
            Today, report);
        QCOMPARE(report.findings.at(0).weight, severity::error);
        QCOMPARE(report.findings.at(1).weight, severity::note);
        QCOMPARE(report.findings.at(2).weight, severity::error);
        const summary counted = summaryOf(report);
        QCOMPARE(counted.errors, 2);
        QCOMPARE(counted.notes, 1);
    }
    void acceptsWhatFollows()
    {
        report report = twoFindings();
        report.findings.push_back(findingOf("KV200", "sqlite", "v2-v3"));
        report.findings.back().consequenceOf = 1;
        accept(read(R"({"accept": [{"code": "KV301", "why": "x"}]})"), Today, report);
        QCOMPARE(codesOf(report), QStringList({"KV302", "KV301 accepted", "KV200 accepted"}));
        QCOMPARE(summaryOf(report).accepted, 2);
        QCOMPARE(summaryOf(report).errors, 1);
    }

    void wrongFiles_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("error");
        const auto row = [](const char * name, const char * text, const char * error) {
            QTest::newRow(name) << QByteArray(text)
                                << QStringLiteral("korvane-check.json: ") + QString::fromUtf8(error);
        };
        row("nothing", "", "line 1: is not JSON");
        row("broken", "{\n\"accept\": [\n", "line 3: is not JSON");
        row("a list", "[]", R"(it has to be an object with "accept" and "severity")");
        row("field", R"({"accepted": []})", R"(unknown field "accepted"; there are accept, severity)");
        row("a list twice", R"({"accept": [], "accept": []})", R"(the field "accept" is given twice)");
        row("a field of an entry twice", R"({"accept": [{"code": "KV101", "code": "KV102", "why": "w"}]})",
            R"(the field "code" is given twice)");
        row("accept is no list", R"({"accept": {}})", R"("accept" has to be a list)");
        row("entry is no object", R"({"accept": ["KV101"]})",
            R"(entry 1 of "accept": it has to be an object)");
        row("no code", R"({"accept": [{"why": "x"}]})", R"(entry 1 of "accept": "code" is missing)");
        row("no why", R"({"accept": [{"code": "KV101"}]})", R"(entry 1 of "accept": "why" is missing)");
        row("blank why", R"({"accept": [{"code": "KV101", "why": " "}]})",
            R"(entry 1 of "accept": "why" is missing)");
        row("no rule", R"({"accept": [{"code": "KV101", "why": "x"}, {"code": "KV998", "why": "x"}]})",
            R"(entry 2 of "accept": there is no rule KV998; 'korvane check --list' lists them)");
        row("unknown field of an entry", R"({"accept": [{"code": "KV101", "why": "x", "column": 1}]})",
            R"(entry 1 of "accept": unknown field "column"; there are code, entity, property, relationship, database, )"
            "step, why, until");
        row("no date", R"({"accept": [{"code": "KV101", "why": "x", "until": "soon"}]})",
            R"(entry 1 of "accept": "until" has to be a date such as 2027-01-31)");
        row("day that is none", R"({"accept": [{"code": "KV101", "why": "x", "until": "2027-02-30"}]})",
            R"(entry 1 of "accept": "until" has to be a date such as 2027-01-31)");
        row("id is a text", R"({"accept": [{"code": "KV101", "why": "x", "entity": "1"}]})",
            R"(entry 1 of "accept": "entity" has to be an id)");
        row("id is zero", R"({"accept": [{"code": "KV101", "why": "x", "property": 0}]})",
            R"(entry 1 of "accept": "property" has to be an id)");
        row("database is a number", R"({"accept": [{"code": "KV101", "why": "x", "database": 3}]})",
            R"(entry 1 of "accept": "database" has to be a text)");
        row("severity of no rule", R"({"severity": {"KV998": "note"}})",
            R"("severity": there is no rule KV998; 'korvane check --list' lists them)");
        row("no severity", R"({"severity": {"KV101": "fatal"}})",
            R"("severity": KV101 is error, warning or note)");
        row("severities are a list", R"({"severity": []})",
            R"("severity" has to be an object of codes and severities)");
    }
    void wrongFiles()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, error);
        accepted_findings found;
        found.file = "untouched";
        QCOMPARE(readAcceptance(text, "korvane-check.json", found).getDesc(), error);
        QCOMPARE(found.file, QString("untouched"));
    }
};

QTEST_APPLESS_MAIN(tst_acceptance)
#include "tst_acceptance.moc"
