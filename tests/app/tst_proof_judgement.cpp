// What is told of runs of scripts, given what databases did.

#include "app/foretold_statements.h"
#include "app/proof_judgement.h"

#include <QTest>

using namespace app;

namespace {

run_statement statementAt(int line)
{
    run_statement made;
    made.place.script = QStringLiteral("v1_to_v2.sql");
    made.place.line = line;
    return made;
}

/// A finding that the statement of that line is refused.
check::finding refusalAt(int line, const char * code, check::severity weight)
{
    check::finding made;
    made.code = QLatin1String(code);
    made.what = check::effect::refused;
    made.when = check::occasion::rows;
    made.weight = weight;
    made.statement = statementAt(line).place;
    return made;
}

} // namespace

class tst_proof_judgement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_versions = std::vector<version_scripts>(1);
        m_versions[0].word = QStringLiteral("now");
        for (int line = 1; line <= 3; ++line) {
            m_versions[0].step.push_back(statementAt(line));
        }
    }

    /// Whoever foretold that values refuse a statement foretold what follows from that.
    void whatFollowsFromValues()
    {
        const database_proof proof = judged({refused(0), refused(1, 0), refused(2, 1)},
                                            refusalAt(1, "KV307", check::severity::warning));
        QCOMPARE(codesIn(proof), QStringList({"KV307", "KV307", "KV307"}));
        QCOMPARE(proof.refused, 3);
        QCOMPARE(proof.foretold, 3);
    }
    /// What is refused for certain the check knows itself, so it has to foretell what follows as well.
    void whatFollowsFromWhatIsCertain()
    {
        const database_proof proof =
            judged({refused(0), refused(1, 0), done(2)}, refusalAt(1, "KV201", check::severity::error));
        QCOMPARE(codesIn(proof), QStringList({"KV201", ""}));
        QCOMPARE(proof.refused, 2);
        QCOMPARE(proof.foretold, 1);
    }
    void whatNobodyForetold()
    {
        const database_proof proof = judged({refused(0), refused(1, 0), done(2)}, std::nullopt);
        QCOMPARE(codesIn(proof), QStringList({"", ""}));
        QCOMPARE(proof.foretold, 0);
    }

    void falseAlarms_data()
    {
        QTest::addColumn<bool>("isOtherwise"); // values decided something before
        QTest::addColumn<bool>("isExpectedRefused");
        QTest::addColumn<int>("falseAlarms");
        QTest::newRow("as the check thought") << false << false << 1;
        QTest::newRow("though the simulation says so, too") << true << true << 1;
        QTest::newRow("since values decided otherwise") << true << false << 0;
    }
    void falseAlarms()
    {
        QFETCH(const bool, isOtherwise);
        QFETCH(const bool, isExpectedRefused);
        QFETCH(const int, falseAlarms);
        statement_result ran = done(1);
        ran.isExpectedRefused = isExpectedRefused;
        check::report report;
        report.findings = {refusalAt(1, "KV307", check::severity::warning),
                           refusalAt(2, "KV205", check::severity::error)};
        QCOMPARE(judged({isOtherwise ? refused(0) : done(0), ran, done(2)}, report).falseAlarms, falseAlarms);
    }

private:
    [[nodiscard]] statement_result done(std::size_t index) const
    {
        statement_result made;
        made.asked = &m_versions[0].step[index];
        made.isDone = true;
        return made;
    }
    [[nodiscard]] statement_result refused(std::size_t index, int consequenceOf = -1) const
    {
        statement_result made;
        made.asked = &m_versions[0].step[index];
        made.isExpectedRefused = consequenceOf >= 0;
        made.consequenceOf = consequenceOf;
        return made;
    }
    [[nodiscard]] database_proof judged(std::vector<statement_result> history,
                                        const check::report & report) const
    {
        proof_results results;
        results.full.resize(1);
        results.full[0].held.resize(1);
        results.full[0].differences.resize(1);
        results.values = results.full[0];
        results.values->statements = std::move(history);
        database_proof proof;
        judge(results, m_versions, foretold_statements(report), 1, proof);
        return proof;
    }
    [[nodiscard]] database_proof judged(std::vector<statement_result> history,
                                        const std::optional<check::finding> & foretold) const
    {
        check::report report;
        if (foretold) {
            report.findings.push_back(*foretold);
        }
        return judged(std::move(history), report);
    }
    static QStringList codesIn(const database_proof & of)
    {
        QStringList codes;
        for (const verified_refusal & each : of.chainRefused) {
            codes += each.foretoldBy;
        }
        return codes;
    }

    std::vector<version_scripts> m_versions;
};

QTEST_GUILESS_MAIN(tst_proof_judgement)

#include "tst_proof_judgement.moc"
