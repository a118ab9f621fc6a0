// The pages of the rules: each shows the smallest model that its rule is about, and what databases say to it.

#include "check/rule_page.h"

#include "app/check_run.h"
#include "app/project_work.h"
#include "app/source.h"

#include "check/finding/acceptance.h"
#include "check/finding/rule.h"
#include "plugin/export_interface.h"
#include "plugin/plugin_finder.h"
#include "storage/history.h"
#include "zk/zk_sql_database.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using check_pages::claim;
using check_pages::page;

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

/// What is judged.
struct setting
{
    std::map<QString, QByteArray> versions;
    QByteArray script; ///< custom script; empty for none
    QByteArray acceptance;
    bool relationships = true;
};

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
    void initTestCase()
    {
        zk::ZkBool why;
        m_plugin = plugin::loaded_plugin::load(KORVANE_PLUGIN_FILE, why);
        QVERIFY2(m_plugin, qPrintable(why.getDesc()));
        m_statements = dynamic_cast<plugin::statement_source *>(m_plugin->getInterface());
        QVERIFY(m_statements);
    }

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
        const setting example{read.versions, read.script, read.acceptance, read.relationships};
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
        if (read.remedies.empty() && read.remedyScript.isEmpty() && read.remedyAcceptance.isEmpty()) {
            return;
        }
        setting mended{read.versions, read.remedyScript.isEmpty() ? read.script : read.remedyScript,
                       read.remedyAcceptance.isEmpty() ? read.acceptance : read.remedyAcceptance,
                       read.relationships};
        for (const auto & [name, text] : read.remedies) {
            mended.versions[name] = text;
        }
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

private:
    static bool hasClaim(const check::report & report, const QString & code, const claim & wanted)
    {
        return std::any_of(report.findings.begin(), report.findings.end(), [&](const check::finding & each) {
            return (each.code == code || each.code == Consequence) && isClaimed(each, wanted);
        });
    }

    /// Judges the whole history of the versions.
    check::report judge(const setting & of, const QString & database)
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("shop.korv");
        int number = 0;
        for (const auto & [name, text] : of.versions) {
            if (number++ > 0) {
                int tagged = 0;
                storage::history::tag(file, QString(), tagged);
            }
            const QString model = folder.filePath(name + ".json");
            writeFile(model, text);
            const app::import_result imported = app::importText(model, file);
            if (!imported.result) {
                qWarning("%s", qUtf8Printable(imported.result.getDesc()));
            }
        }
        app::source opened;
        check::report report;
        if (const zk::ZkBool is = opened.open(file); !is) {
            qWarning("%s", qUtf8Printable(is.getDesc()));
        }
        app::check_request asked;
        asked.databases = {database};
        asked.scripts = app::judged_scripts::all;
        asked.options.insert("relationships", of.relationships ? "yes" : "no");
        if (!of.script.isEmpty()) {
            const QString custom = folder.filePath("custom.js");
            writeFile(custom, of.script);
            asked.options.insert("custom-script", custom);
        }
        if (const zk::ZkBool judged = app::checkSource(*m_statements, opened, asked, report); !judged) {
            qWarning("%s", qUtf8Printable(judged.getDesc()));
        }
        check::accepted_findings accepted;
        const zk::ZkBool read = of.acceptance.isEmpty()
                                    ? zk::ZkBool::success()
                                    : check::readAcceptance(of.acceptance, "korvane-check.json", accepted);
        if (!read) {
            qWarning("%s", qUtf8Printable(read.getDesc()));
        }
        check::accept(accepted, QDate(2026, 11, 22), report);
        zk::ZkSqlDatabase::clearAllDatabases();
        return report;
    }

    static void writeFile(const QString & name, const QByteArray & bytes)
    {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qWarning("%s", qUtf8Printable(file.errorString()));
        }
    }

    std::unique_ptr<plugin::loaded_plugin> m_plugin;
    plugin::statement_source * m_statements = nullptr;
};

QTEST_MAIN(tst_rule_pages)
#include "tst_rule_pages.moc"
