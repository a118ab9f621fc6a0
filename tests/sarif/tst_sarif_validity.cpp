// SARIF as its validator reads it: the schema, the style, and what GitHub's code scanning wants.

#include "check/judged_page.h"

#include "check/report/report.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

const char * const Validator = KORVANE_SARIF_VALIDATOR;

/// Adds what was found in one project to what was found in others.
void add(check::report & to, check::report from)
{
    const auto first = static_cast<int>(to.findings.size());
    for (check::finding & each : from.findings) {
        each.consequenceOf += each.consequenceOf < 0 ? 0 : first;
        to.findings.push_back(std::move(each));
    }
    to.runs.insert(to.runs.end(), from.runs.begin(), from.runs.end());
}

} // namespace

class tst_sarif_validity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!QFile::exists(Validator)) {
            QSKIP("the validator is not installed: npm could not be reached");
        }
        // The package makes itself executable in a script of its own, which is not run.
        QFile program(Validator);
        QVERIFY(program.setPermissions(program.permissions() | QFile::ExeOwner));
        QCOMPARE(m_judge.load(), QString());
    }

    /// Every rule that the pages know, on the databases that they name.
    void allRulesAreValid()
    {
        check::report all;
        for (const QFileInfo & each : QDir(KORVANE_SOURCE_DIR "/docs/rules", "KV*.md").entryInfoList()) {
            const check_pages::page read = check_pages::readPage(each.filePath());
            check_pages::judged_page judged(m_judge, check_pages::exampleOf(read));
            for (const QString & database : read.claims.front().databases) {
                add(all, judged.report(database));
            }
        }
        all.findings.front().location = check::source_place{"models/shop.json", 12, 7};
        all.findings.back().accepted = check::acceptance{"known", "2027-01-01"};
        QVERIFY(all.findings.size() > 300);
        // The tool has no page in the web.
        QCOMPARE(complaints(check::sarifReport(all, "1.2.0")), QStringList("SARIF2005"));
    }
    void whatIsWrongIsFound()
    {
        check::report all;
        QByteArray text = check::sarifReport(all, "1.2.0");
        QVERIFY(complaints(text).size() <= 1);
        text.replace("\"results\": []", "\"results\": [ { \"ruleId\": 7 } ]");
        QVERIFY(complaints(text).size() > 1);
    }

private:
    /// The rules of the validator that have something against the text.
    static QStringList complaints(const QByteArray & text)
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("report.sarif"));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            return {file.errorString()};
        }
        file.close();
        QProcess run;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DOTNET_SYSTEM_GLOBALIZATION_INVARIANT", "1");
        run.setProcessEnvironment(environment);
        run.setProcessChannelMode(QProcess::MergedChannels);
        run.start(Validator, {"validate", file.fileName(), "--rule-kind", "Sarif;Ghas"});
        if (!run.waitForFinished(120000)) {
            return {run.errorString()};
        }
        static const QRegularExpression line(QStringLiteral("(?:error|warning|note) ([A-Z]+[0-9.]+)"));
        QStringList rules;
        const QString said = QString::fromUtf8(run.readAll());
        for (auto found = line.globalMatch(said); found.hasNext();) {
            rules += found.next().captured(1);
        }
        rules.removeDuplicates();
        rules.sort();
        if (!said.contains(QLatin1String("Analysis completed"))) {
            rules += said;
        }
        return rules;
    }

    check_pages::judge m_judge;
};

QTEST_MAIN(tst_sarif_validity)
#include "tst_sarif_validity.moc"
