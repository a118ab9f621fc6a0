// What forges and viewers are given, compared letter by letter.

#include "check/report/report.h"

#include <QTest>

using namespace check;

namespace {

finding refused()
{
    finding made;
    made.code = QLatin1String("KV203");
    made.name = QLatin1String("rename-onto-taken-table");
    made.weight = severity::error;
    made.what = effect::refused;
    made.database = "postgresql";
    made.error = QLatin1String("42P07");
    made.script = "shop v2.sql";
    made.step = "v1-v2";
    made.statement = statement_place{
        "shop v2.sql", 7, 2, plugin::statement_action::rename_table, "ALTER TABLE a\nRENAME TO b;",
        false,         {}};
    made.message = "50 % of a: b,\nrefused";
    made.why = "It is so.";
    made.way.text = "Rename | it.";
    made.fingerprint = "0123456789abcdef";
    return made;
}

finding note()
{
    finding made;
    made.code = QLatin1String("KV701");
    made.name = QLatin1String("table-without-key");
    made.weight = severity::note;
    made.database = "postgresql";
    made.script = "shop v2.sql";
    made.step = "full";
    made.message = "No key.";
    made.way.text = "Give one.";
    made.fingerprint = "fedcba9876543210";
    return made;
}

report of(std::vector<finding> findings)
{
    report made;
    made.project = "shop";
    made.runs = {{"postgresql", "run on PostgreSQL 15", "shop v2.sql", "v1", "now", "v1-v2", 12, 11}};
    made.findings = std::move(findings);
    return made;
}

} // namespace

class tst_reports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void githubEscapes()
    {
        QCOMPARE(
            githubReport(of({note(), refused()})),
            QByteArray(
                "::error file=shop v2.sql,line=7,title=KV203 rename-onto-taken-table::50 %25 of a: "
                "b,%0Arefused%0ARename | it.\n"
                "::notice file=shop v2.sql,line=1,title=KV701 table-without-key::No key.%0AGive one.\n"));
    }
    void githubEscapesProperties()
    {
        finding odd = refused();
        odd.script = "C:\\a,b%.sql";
        QVERIFY(githubReport(of({odd})).startsWith("::error file=C%3A\\a%2Cb%25.sql,line=7,"));
    }
    void githubSaysHowManyMore()
    {
        QCOMPARE(githubReport(of(std::vector<finding>(9, refused()))).count('\n'), 9);
        const QByteArray twelve = githubReport(of(std::vector<finding>(12, refused())));
        QCOMPARE(twelve.count('\n'), 10);
        QVERIFY(twelve.endsWith("\n::error title=korvane check::3 more of this severity\n"));
    }
    void githubPointsToTheText()
    {
        finding placed = refused();
        placed.location = source_place{"shop.json", 12, 7};
        QVERIFY(githubReport(of({placed})).startsWith("::error file=shop.json,line=12,"));
    }
    void acceptedOnesAreLeftOut()
    {
        finding accepted = refused();
        accepted.accepted = acceptance{"known", {}};
        QCOMPARE(githubReport(of({accepted})), QByteArray());
        QCOMPARE(gitlabReport(of({accepted})), QByteArray("[]\n"));
    }
    void gitlab()
    {
        QCOMPARE(gitlabReport(of({refused()})), QByteArray(R"([
  {
    "description": "50 % of a: b,\nrefused Rename | it.",
    "check_name": "KV203",
    "fingerprint": "0123456789abcdef-v1-v2",
    "severity": "major",
    "location": {
      "path": "shop v2.sql",
      "lines": {
        "begin": 7
      }
    }
  }
]
)"));
    }
    void linesAreWrapped()
    {
        const auto textOf = [](const QString & why) {
            finding long_ = note();
            long_.why = why;
            const auto text = QString::fromUtf8(textReport(of({long_}), {}));
            const qsizetype begin = text.indexOf("No key.\n") + 8;
            return text.sliced(begin, text.indexOf("    What to do", begin) - begin);
        };
        const QString ninety(90, u'x');
        QCOMPARE(textOf("short"), QString("    Why: short\n"));
        QCOMPARE(textOf(" two  words "), QString("    Why: two words\n"));
        QCOMPARE(textOf(ninety + " 2"), "    Why: " + ninety + "\n    2\n");
        QCOMPARE(textOf(ninety + "1"), "    Why: " + ninety + "1\n");
        QCOMPARE(textOf(ninety + "12 3"), "    Why:\n    " + ninety + "12 3\n");
        QCOMPARE(textOf(ninety + ninety + " z " + ninety),
                 "    Why:\n    " + ninety + ninety + "\n    z " + ninety + "\n");
        QCOMPARE(textOf(""), QString("    Why:\n"));
    }
    /// Statements that are to be run one after another are read from top to bottom.
    void whatIsAboutNoStatementStaysInOrder()
    {
        finding first = note();
        first.message = "First.";
        first.fingerprint = "ffffffffffffffff";
        finding second = note();
        second.message = "Second.";
        second.fingerprint = "0000000000000000";
        finding worse = second;
        worse.message = "Worse.";
        worse.weight = severity::warning;
        const QByteArray text = textReport(of({first, second, worse}), {});
        QVERIFY(text.contains("First."));
        QVERIFY(text.indexOf("Worse.") < text.indexOf("First."));
        QVERIFY(text.indexOf("First.") < text.indexOf("Second."));
    }
    void oddNamesKeepTheirLines()
    {
        finding odd = refused();
        odd.message = "a\nb\x1b[31m c\u202Ed";
        odd.why = "It\tis\r\nso.";
        odd.way.sql = {"CREATE TABLE a (\n  b\x1b INT\n);"};
        odd.script = "shop\nv2.sql";
        odd.statement->text = "  DROP\x07 TABLE\n  a;";
        report told = of({odd});
        told.runs.front().script = odd.script;
        QCOMPARE(QString::fromUtf8(textReport(told, {})),
                 QString("shop v2.sql  run on PostgreSQL 15, v1 to now, 12 statements, 1 not judged\n\n"
                         "error KV203 line 7\n"
                         "    a b [31m c<U+202E>d\n"
                         "    Why: It is so.\n"
                         "    What to do: Rename | it.\n"
                         "    After the script:\n"
                         "        CREATE TABLE a (\n"
                         "          b  INT\n"
                         "        );\n"
                         "    |   DROP  TABLE\n"
                         "    |   a;\n\n"
                         "1 error, 0 warnings, 0 notes\n"));
    }
    void remediesAreShown()
    {
        finding mended = refused();
        mended.way.sql = {"CREATE TABLE a_before AS SELECT * FROM a;", "DROP TABLE a;",
                          "ALTER TABLE b RENAME TO a;"};
        mended.way.before = 1;
        using kind = patch_operation::kind;
        mended.way.model = {{kind::test, "/entities/2/id", 7, {}},
                            {kind::remove, "/entities/2/version", {}, {}},
                            {kind::add, "/entities/2/tableName", "a_2", {}},
                            {kind::replace, "/entities/2/version", 3, {}},
                            {kind::remove, "/entities/2/softDeleteColumn", {}, {}},
                            {kind::move, "/entities/1", {}, "/entities/2"}};
        QCOMPARE(QByteArray::fromStdString(jsonOf(mended.way.model).dump()),
                 QByteArray(R"([{"op":"test","path":"/entities/2/id","value":7},)"
                            R"({"op":"remove","path":"/entities/2/version"},)"
                            R"({"op":"add","path":"/entities/2/tableName","value":"a_2"},)"
                            R"({"op":"replace","path":"/entities/2/version","value":3},)"
                            R"({"op":"remove","path":"/entities/2/softDeleteColumn"},)"
                            R"({"op":"move","from":"/entities/2","path":"/entities/1"}])"));
        QVERIFY(jsonOf({}).is_null());
        const auto text = QString::fromUtf8(textReport(of({mended}), {}));
        QVERIFY2(text.contains("    What to do: Rename | it.\n"
                               "    In the model:\n"
                               "        /entities/2/tableName: \"a_2\"\n"
                               "        /entities/2/version: 3\n"
                               "        /entities/2/softDeleteColumn is left out\n"
                               "        /entities/2 goes before /entities/1\n"
                               "    Before the script:\n"
                               "        CREATE TABLE a_before AS SELECT * FROM a;\n"
                               "    After the script:\n"
                               "        DROP TABLE a;\n"
                               "        ALTER TABLE b RENAME TO a;\n"),
                 qPrintable(text));
        mended.way.model = {};
        QVERIFY(
            markdownReport(of({mended}))
                .contains(
                    "| Rename \\| it.<br>Before the script:<br>`CREATE TABLE a_before AS SELECT * FROM a;`"
                    "<br>After the script:<br>`DROP TABLE a;`<br>`ALTER TABLE b RENAME TO a;` |\n"));
        const auto sarif = nlohmann::json::parse(sarifReport(of({mended, note()}), "1.2").toStdString());
        const auto & results = sarif["runs"][0]["results"];
        QCOMPARE(results[0]["properties"]["remedy"]["sql"].size(), std::size_t(3));
        QCOMPARE(results[0]["properties"]["remedy"]["before"].get<int>(), 1);
        QVERIFY(!results[1].contains("properties"));
        const auto whole = nlohmann::json::parse(jsonReport(of({mended}), "1.2").toStdString());
        QCOMPARE(whole["findings"][0]["remedy"]["before"].get<int>(), 1);
        QCOMPARE(whole["findings"][0]["remedy"]["sql"][2].get<std::string>(),
                 std::string("ALTER TABLE b RENAME TO a;"));
    }
    void markdown()
    {
        QCOMPARE(markdownReport(of({note(), refused()})), QByteArray(R"(## korvane check: shop

- `shop v2.sql` (run on PostgreSQL 15): 12 statements

| | rule | where | what | what to do |
| --- | --- | --- | --- | --- |
| error | KV203 | shop v2.sql:7 | 50 % of a: b, refused | Rename \| it. |
| note | KV701 | shop v2.sql:1 | No key. | Give one. |

Errors: 1, warnings: 0, notes: 1, accepted: 0
)"));
    }
    void markdownShowsOddNamesAsTheyAre()
    {
        finding odd = note();
        odd.message = QStringLiteral("'a|b<i>`*_x_y' & c\\d\ne.");
        odd.way.sql = {QStringLiteral("DROP TABLE `a|b<i>`;"), QStringLiteral("DROP TABLE `a``b`;"),
                       QStringLiteral("DROP TABLE a_b;")};
        const QByteArray text = markdownReport(of({odd}));
        QVERIFY2(text.contains("| 'a\\|b&lt;i>\\`\\*\\_x_y' &amp; c\\\\d e. |"), text.constData());
        QVERIFY2(text.contains("<br>`` DROP TABLE `a\\|b<i>`; ``<br>``` DROP TABLE `a``b`; ```"
                               "<br>`DROP TABLE a_b;` |"),
                 text.constData());
    }
    void sarif()
    {
        finding accepted = note();
        accepted.accepted = acceptance{"known", {}};
        accepted.location = source_place{"models/shop.json", 12, 7};
        const auto report =
            nlohmann::json::parse(sarifReport(of({refused(), accepted, refused()}), "1.2").toStdString());
        QCOMPARE(report["version"].get<std::string>(), std::string("2.1.0"));
        const auto & run = report["runs"][0];
        QCOMPARE(run["tool"]["driver"]["name"].get<std::string>(), std::string("korvane"));
        const auto & rules = run["tool"]["driver"]["rules"];
        QCOMPARE(rules.size(), std::size_t(2)); // one for each code
        QCOMPARE(rules[0]["id"].get<std::string>(), std::string("KV203"));
        QCOMPARE(rules[0]["name"].get<std::string>(), std::string("RenameOntoTakenTable"));
        QVERIFY(
            rules[0]["help"]["markdown"].get<std::string>().starts_with("# KV203 rename-onto-taken-table\n"));
        const auto & results = run["results"];
        QCOMPARE(results.size(), std::size_t(3));
        QCOMPARE(results[1]["ruleIndex"].get<int>(), 1);
        QCOMPARE(results[2]["ruleIndex"].get<int>(), 0);
        const auto & place = results[0]["locations"][0]["physicalLocation"];
        QCOMPARE(place["artifactLocation"]["uri"].get<std::string>(), std::string("shop%20v2.sql"));
        QCOMPARE(place["region"]["startLine"].get<int>(), 7);
        QCOMPARE(place["region"]["endLine"].get<int>(), 8);
        QVERIFY(!results[0].contains("suppressions"));
        QCOMPARE(results[1]["suppressions"][0]["justification"].get<std::string>(), std::string("known"));
        const auto & inText = results[1]["locations"][0]["physicalLocation"];
        QCOMPARE(inText["artifactLocation"]["uri"].get<std::string>(), std::string("models/shop.json"));
        QCOMPARE(inText["region"]["startColumn"].get<int>(), 7);
        QCOMPARE(results[0]["partialFingerprints"]["korvane/v1"].get<std::string>(),
                 std::string("0123456789abcdef"));
    }
};

QTEST_APPLESS_MAIN(tst_reports)
#include "tst_reports.moc"
