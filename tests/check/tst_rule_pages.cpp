// The pages of the rules: each shows the smallest model that its rule is about, and what databases say to it.

#include "check/judged_page.h"

#include "check/finding/rule.h"

#include <QDir>
#include <QSet>
#include <QTest>

#include <algorithm>

using check_pages::claim;
using check_pages::page;
using check_pages::setting;

namespace {

/// What follows from the refusal that a page is about is told under a code of its own.
constexpr QLatin1String Consequence("KV200");

QDir pages()
{
    return QDir(KORVANE_SOURCE_DIR "/docs/rules", "KV*.md");
}

/// Whether the finding is what the page claims.
bool isClaimed(const check::finding & found, const claim & by)
{
    if (by.what == QLatin1String("told")) {
        return found.message == by.words &&
               (found.statement ? found.statement->text : QString()) == by.statement;
    }
    if (!found.statement) {
        return by.statement.isEmpty() && by.what == QLatin1String("silent");
    }
    const bool isRefused = by.what.startsWith(QLatin1String("refused"));
    const bool withRows = by.what == QLatin1String("refused with rows");
    return found.statement->text == by.statement && isRefused == (found.what == check::effect::refused) &&
           (!isRefused || (found.error == by.error && withRows == (found.when == check::occasion::rows)));
}

QString told(const check::report & report)
{
    QString text;
    for (const check::finding & each : report.findings) {
        text += QStringLiteral("\n%1 %2 %3 %4 | %5 | %6")
                    .arg(each.code, each.database, check::wordOf(each.what), each.error,
                         each.statement ? each.statement->text : QStringLiteral("-"), each.message);
    }
    return text;
}

} // namespace

class tst_rule_pages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCOMPARE(m_judge.load(), QString()); }

    void everyRuleHasAPage()
    {
        QStringList without;
        for (const check::rule & each : check::allRules()) {
            if (check::rulePage(each.code).isEmpty()) {
                without += each.code;
            }
        }
        QCOMPARE(without, QStringList());
        QCOMPARE(static_cast<std::size_t>(pages().count()), check::allRules().size());
    }

    void pageIsTrue_data()
    {
        QTest::addColumn<QString>("file");
        for (const QFileInfo & each : pages().entryInfoList()) {
            QTest::newRow(qPrintable(each.completeBaseName())) << each.filePath();
        }
    }
    void pageIsTrue()
    {
        QFETCH(QString, file);
        const page read = check_pages::readPage(file);
        QCOMPARE(read.wrong, QString());
        const check::rule * const rule = check::ruleOf(read.code);
        QVERIFY(rule);
        QCOMPARE(QFileInfo(file).completeBaseName(), read.code);
        QCOMPARE(read.name, QString(rule->name));
        QCOMPARE(read.title, QString::fromUtf8(rule->title) + u'.');
        QVERIFY(!read.claims.empty());
        const setting example = check_pages::exampleOf(read);
        for (const claim & each : read.claims) {
            for (const QString & database : each.databases) {
                const check::report report = judge(example, database);
                QVERIFY2(hasClaim(report, read.code, each), qPrintable(database + told(report)));
            }
        }
    }

    void remedyHelps_data() { pageIsTrue_data(); }
    void remedyHelps()
    {
        QFETCH(QString, file);
        const page read = check_pages::readPage(file);
        if (read.remedies.empty() && read.remedyScript.isEmpty() && read.remedyAcceptance.isEmpty() &&
            read.remedySettings.isEmpty()) {
            return;
        }
        const setting mended = check_pages::mendedOf(read);
        for (const claim & each : read.claims) {
            for (const QString & database : each.databases) {
                const check::report report = judge(mended, database);
                const bool isStill =
                    std::any_of(report.findings.begin(), report.findings.end(),
                                [&](const check::finding & f) { return f.code == read.code; });
                QVERIFY2(!isStill, qPrintable(database + told(report)));
            }
        }
    }

    void patchHelps_data() { pageIsTrue_data(); }
    /// Applies what a finding says of the model to the model's text form: the finding is gone then.
    void patchHelps()
    {
        QFETCH(QString, file);
        const page read = check_pages::readPage(file);
        QSet<QString> databases;
        for (const claim & each : read.claims) {
            databases += QSet<QString>(each.databases.begin(), each.databases.end());
        }
        for (const QString & database : std::as_const(databases)) {
            const check::report report = judge(check_pages::exampleOf(read), database);
            for (const check::finding & each : report.findings) {
                if (each.code == read.code && !each.way.model.empty()) {
                    applyPatch(read, database, each);
                }
            }
        }
    }
    void patchesAreThere()
    {
        QStringList codes(m_patched.begin(), m_patched.end());
        codes.sort();
        QCOMPARE(
            codes.join(u' '),
            QString(
                "KV101 KV102 KV103 KV104 KV105 KV106 KV107 KV108 KV109 KV110 KV111 KV113 KV114 KV115 KV116 "
                "KV117 KV118 KV119 KV120 KV122 KV123 KV124 KV125 KV126 KV128 KV130 KV131 KV132 KV134 KV135 "
                "KV136 KV137 KV140 KV201 KV202 KV203 KV204 KV205 KV206 KV210 KV222 KV303 KV304 KV311 KV405 "
                "KV406 "
                "KV410 KV418 KV603 KV701 KV702 KV703"));
    }

private:
    void applyPatch(const page & of, const QString & database, const check::finding & finding)
    {
        check_pages::judged_page judged(m_judge, check_pages::exampleOf(of));
        const std::string dumped = judged.dump().toStdString();
        const std::string patch = check::jsonOf(finding.way.model).dump();
        nlohmann::json changed;
        try {
            changed = nlohmann::json::parse(dumped).patch(nlohmann::json::parse(patch));
        } catch (const nlohmann::json::exception & error) {
            QFAIL(qPrintable(database + u' ' + QString::fromStdString(patch) + u' ' +
                             QString::fromUtf8(error.what()) + QString::fromStdString(dumped)));
        }
        judged.import(QByteArray::fromStdString(changed.dump()));
        const check::report report = judged.report(database);
        QCOMPARE(judged.error(), QString());
        const bool isStill =
            std::any_of(report.findings.begin(), report.findings.end(), [&](const check::finding & each) {
                return each.fingerprint == finding.fingerprint && each.script == finding.script;
            });
        QVERIFY2(!isStill, qPrintable(database + u' ' + QString::fromStdString(patch) + told(report)));
        m_patched.insert(of.code);
    }

    QSet<QString> m_patched; ///< codes of rules whose patch did what it is for

    static bool hasClaim(const check::report & report, const QString & code, const claim & wanted)
    {
        return std::any_of(report.findings.begin(), report.findings.end(), [&](const check::finding & each) {
            return (each.code == code || each.code == Consequence) && isClaimed(each, wanted);
        });
    }

    /// Judges the whole history of the versions.
    check::report judge(const setting & of, const QString & database)
    {
        check_pages::judged_page judged(m_judge, of);
        const check::report report = judged.report(database);
        if (!judged.error().isEmpty()) {
            qWarning("%s", qUtf8Printable(judged.error()));
        }
        return report;
    }

    check_pages::judge m_judge;
};

QTEST_MAIN(tst_rule_pages)
#include "tst_rule_pages.moc"
