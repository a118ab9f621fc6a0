// The pages of the rules on a database: their examples are run, what they say that it answers is compared,
// and the statements that findings and pages give are run and do what they are for.

#include "check/judged_page.h"

#include "check/view/schema_difference.h"
#include "check/view/statement_place.h"
#include "database/server/table_rows.h"
#include "database/server/target_database.h"
#include "database/statement/reader.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <algorithm>

using check_pages::claim;
using check_pages::page;
using database::server::server_error;

namespace {

QDir pages()
{
    return QDir(KORVANE_SOURCE_DIR "/docs/rules", "KV*.md");
}

/// What the database said to a statement.
struct answer
{
    QString text;
    server_error error; ///< without a code when it ran
};

/// A server's words without what stands before them, and with the name that pages give the database.
QString bare(const QString & words)
{
    static const QRegularExpression scratch(QStringLiteral("scratch_\\d+"));
    const QString begin = QStringLiteral("ERROR:  ");
    return (words.startsWith(begin) ? words.mid(begin.size()) : QString(words))
        .replace(scratch, QStringLiteral("shop"));
}

/// Whether a claim about a refusal is what happened.
bool isTrue(const claim & of, const std::vector<answer> & answers, bool withRows)
{
    const bool isRefused =
        of.what == QLatin1String("refused") || (of.what == QLatin1String("refused with rows") && withRows);
    return std::any_of(answers.begin(), answers.end(), [&](const answer & each) {
        const bool isIt = each.text == of.statement;
        return isRefused ? isIt && each.error.code == of.error && bare(each.error.words).startsWith(of.words)
                         : isIt && each.error.code.isEmpty();
    });
}

/// Differences of two catalogues that a person would mend: the order of columns and names are not among them.
QStringList differencesBetween(const database::catalogue & expected, const database::catalogue & found)
{
    QStringList told;
    for (const check::schema_difference & each : check::compareSchemas(expected, found)) {
        // Copies that are made before a script are left where they are.
        const bool isCopy =
            each.kind == check::difference_kind::table_left && each.table.endsWith(QLatin1String("_before"));
        if (!isCopy && each.kind != check::difference_kind::order &&
            each.kind != check::difference_kind::names) {
            told += QStringLiteral("%1 %2.%3: %4 in the place of %5")
                        .arg(QString::number(static_cast<int>(each.kind)), each.table,
                             each.columns.join(u','), each.found, each.expected);
        }
    }
    return told;
}

QString told(const check::finding & of)
{
    return of.code + QLatin1Char(' ') + of.message + QStringLiteral("\n    ") +
           of.way.sql.join(QStringLiteral("\n    "));
}

} // namespace

class tst_rule_remedies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QString why;
        m_target = database::server::KORVANE_TARGET(why);
        if (!m_target) {
            QSKIP(qPrintable(why));
        }
        QCOMPARE(m_judge.load(), QString());
    }

    void findingsHelp_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("withRows");
        for (const QFileInfo & each : pages().entryInfoList()) {
            for (const bool withRows : {false, true}) {
                QTest::addRow("%s%s", qPrintable(each.completeBaseName()), withRows ? " with rows" : "")
                    << each.filePath() << withRows;
            }
        }
    }
    /// Runs the example of a page and then the statements of its findings: the database is like a new one.
    void findingsHelp()
    {
        QFETCH(QString, file);
        QFETCH(bool, withRows);
        const page read = check_pages::readPage(file);
        check_pages::judged_page judged(m_judge, check_pages::exampleOf(read));
        const QString key = m_target->known().key;
        const check::report report = judged.report(key);
        const auto scripts = judged.scripts(key);
        QCOMPARE(judged.error(), QString());
        m_hasOddValues = false;
        for (const check::finding & each : report.findings) {
            if (each.code == read.code && !each.way.sql.isEmpty()) {
                m_withStatements.insert(read.code);
            }
        }
        begin();
        for (std::size_t i = 0; i + 1 < scripts.size(); ++i) {
            run(scripts[i]);
        }
        if (withRows && scripts.size() > 1) {
            putRows(read, key);
        }
        const QString last = scripts.back().empty() ? QString() : scripts.back().front().script;
        runOf(report, last, true, {}, false);
        const std::vector<answer> answers = run(scripts.back());
        for (const claim & each : read.claims) {
            const bool isHere = each.databases.contains(key) && !each.statement.isEmpty() &&
                                each.what != QLatin1String("told");
            if (isHere && !isTrue(each, answers, withRows)) {
                QFAIL(qPrintable(each.statement + QStringLiteral(": not ") + each.what + u' ' + each.error +
                                 u' ' + each.words + toldAnswers(answers)));
            }
        }
        runOf(report, last, false, answers, true);
        if (!isWhole(report, last) || m_hasOddValues) {
            return;
        }
        ++m_compared;
        const database::catalogue found = m_target->held();
        begin();
        run(judged.full(key));
        QCOMPARE(differencesBetween(m_target->held(), found), QStringList());
    }

    /// What a finding wants to be run before the script lets its statement run.
    void whatComesBeforeHelps_data() { findingsHelp_data(); }
    void whatComesBeforeHelps()
    {
        QFETCH(QString, file);
        QFETCH(bool, withRows);
        const page read = check_pages::readPage(file);
        check_pages::judged_page judged(m_judge, check_pages::exampleOf(read));
        const check::report report = judged.report(m_target->known().key);
        for (const check::finding & each : report.findings) {
            if (each.what != check::effect::refused || each.way.before == 0 || withRows) {
                continue;
            }
            begin();
            const QString undo = QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE")
                                     .arg(each.way.sql.constFirst().section(u' ', 2).remove(u';'));
            server_error error;
            m_target->execute(undo, error);
            for (const QString & statement : each.way.sql) {
                QVERIFY2(m_target->execute(statement, error), qPrintable(told(each) + error.words));
            }
            const std::vector<answer> answers = run(judged.scripts(m_target->known().key).back());
            const bool isRun = std::any_of(answers.begin(), answers.end(), [&](const answer & one) {
                return one.text == each.statement->text && one.error.code.isEmpty();
            });
            m_target->execute(undo, error);
            QVERIFY2(isRun, qPrintable(told(each) + toldAnswers(answers)));
            ++m_letRun;
        }
    }
    /// The statements that a page shows run where it says that they do.
    void pageStatementsRun_data() { findingsHelp_data(); }
    void pageStatementsRun()
    {
        QFETCH(QString, file);
        QFETCH(bool, withRows);
        const page read = check_pages::readPage(file);
        const QString key = m_target->known().key;
        const auto own = [&](const char * when) {
            QStringList statements;
            for (const check_pages::own_statements & each : read.statements) {
                if (each.database == key && each.when == QLatin1String(when)) {
                    statements += each.statements.join(u'\n').split(
                        QRegularExpression(QStringLiteral(";\n?")), Qt::SkipEmptyParts);
                }
            }
            return statements;
        };
        const bool hasOwn = !own("before").isEmpty() || !own("after").isEmpty() || !own("instead").isEmpty();
        if (!hasOwn || withRows) {
            return;
        }
        // They are meant for the example, or for what its remedy makes of it.
        QString wrong;
        for (const check_pages::setting & each :
             {check_pages::exampleOf(read), check_pages::mendedOf(read)}) {
            check_pages::judged_page judged(m_judge, each);
            const auto scripts = judged.scripts(key);
            QCOMPARE(judged.error(), QString());
            begin();
            for (std::size_t i = 0; i + 1 < scripts.size(); ++i) {
                run(scripts[i]);
            }
            wrong = runAll(own("before"));
            if (own("instead").isEmpty()) {
                run(scripts.back());
            }
            wrong += runAll(own("instead")) + runAll(own("after"));
            if (wrong.isEmpty()) {
                break;
            }
        }
        QCOMPARE(wrong, QString());
        ++m_pagesRun;
    }
    void manyWereCompared()
    {
        const QString key = m_target->known().key;
        QStringList codes(m_withStatements.begin(), m_withStatements.end());
        codes.sort();
        QCOMPARE(codes.join(u' '), expectedCodes(key));
        // Each page once with rows and once without.
        QCOMPARE(m_compared, key == QLatin1String("sqlite") || key == QLatin1String("mariadb") ? 90 : 89);
        QVERIFY2(m_pagesRun > (key == QLatin1String("sqlite") ? 5 : 15),
                 qPrintable(QString::number(m_pagesRun)));
        QCOMPARE(m_letRun, key == QLatin1String("postgresql") ? 1 : 0);
    }

private:
    /// The rules whose findings come with statements.
    static QString expectedCodes(const QString & database)
    {
        return database == QLatin1String("sqlite")
                   ? QStringLiteral("KV201 KV202 KV203 KV205 KV211 KV212 KV220 KV221 KV301 KV303 KV304 KV401 "
                                    "KV402 KV403 KV404 KV405 KV406 KV407 KV408 KV410 KV413 KV415 KV419")
               : database == QLatin1String("mariadb")
                   ? QStringLiteral("KV112 KV138 KV203 KV204 KV205 KV207 KV209 KV210 KV212 KV213 KV216 KV217 "
                                    "KV218 KV221 KV222 KV225 KV301 KV302 KV303 KV304 KV305 KV308 KV401 KV402 "
                                    "KV403 KV404 KV405 KV406 KV407 KV410 KV411 KV412 KV413 KV414 KV415")
                   : QStringLiteral("KV112 KV121 KV124 KV138 KV201 KV203 KV204 KV205 KV207 KV212 KV213 KV220 "
                                    "KV221 KV301 KV302 KV303 KV304 KV305 KV306 KV310 KV401 KV402 KV403 KV404 "
                                    "KV405 KV406 KV407 KV410 KV412 KV413 KV414 KV415 KV419");
    }

    /// What the database says to those that it refuses.
    QString runAll(const QStringList & statements)
    {
        QString wrong;
        for (const QString & statement : statements) {
            server_error error;
            if (!m_target->execute(statement, error)) {
                wrong += statement + u' ' + error.code + u' ' + error.words;
            }
        }
        return wrong;
    }

    void begin()
    {
        QString why;
        if (!m_target->reset(why)) {
            qFatal("%s", qPrintable(why));
        }
    }

    /// The rows of the page, or one in each table.
    void putRows(const page & of, const QString & database)
    {
        for (const check_pages::own_statements & each : of.statements) {
            if (each.when == QLatin1String("rows") && each.database == database) {
                for (const QString & statement : each.statements) {
                    server_error error;
                    QVERIFY2(m_target->execute(statement, error), qPrintable(statement + u' ' + error.words));
                }
                return;
            }
        }
        // Four digits, as a UUID wants them.
        int number = 1000;
        server_error error;
        m_target->execute(m_target->foreignKeyChecks(false), error);
        putRowIntoEach(*m_target, m_target->held(), database::server::row_content::values, number);
        m_target->execute(m_target->foreignKeyChecks(true), error);
    }

    std::vector<answer> run(const std::vector<plugin::statement_record> & script)
    {
        std::vector<answer> answers;
        for (const plugin::statement_record & record : script) {
            for (const database::statement & each : database::readStatements(record.text)) {
                answers.push_back({check::placeOf(record, each).text, {}});
                m_target->execute(each.text, answers.back().error);
            }
        }
        return answers;
    }

    /// Runs the statements of the findings about a script; each has to run. Those of a refused statement are
    /// for when it was refused.
    void runOf(const check::report & report, const QString & script, bool isBefore,
               const std::vector<answer> & answers, bool withRefused)
    {
        for (const check::finding & each : report.findings) {
            const bool isRefused = each.what == check::effect::refused;
            const bool isDone =
                isRefused && std::any_of(answers.begin(), answers.end(), [&](const answer & one) {
                    return one.text == each.statement->text && one.error.code.isEmpty();
                });
            if (each.script != script || isDone || (isRefused && !withRefused)) {
                continue;
            }
            for (const QString & statement :
                 isBefore ? each.way.sql.mid(0, each.way.before) : each.way.sql.mid(each.way.before)) {
                server_error error;
                const bool isRun = m_target->execute(statement, error);
                // Values that are none of the new type are for a person to look at.
                const bool isOfValues = error.code.startsWith(QLatin1String("22"));
                m_hasOddValues = m_hasOddValues || isOfValues;
                QVERIFY2(isRun || isOfValues, qPrintable(told(each) + QStringLiteral("\nrefused: ") +
                                                         statement + u' ' + error.code + u' ' + error.words));
            }
        }
    }

    /// Whether the findings about a script promise that it ends like a new database.
    static bool isWhole(const check::report & report, const QString & script)
    {
        const bool isStep = std::any_of(report.runs.begin(), report.runs.end(), [&](const check::run & each) {
            return each.script == script && !each.from.isEmpty();
        });
        return isStep &&
               std::all_of(report.findings.begin(), report.findings.end(), [&](const check::finding & each) {
                   const bool isOther =
                       each.script != script || each.consequenceOf >= 0 ||
                       each.what == check::effect::blocks || each.what == check::effect::advice ||
                       each.what == check::effect::loss || each.code == QLatin1String("KV503");
                   return isOther || !each.way.sql.isEmpty();
               });
    }

    static QString toldAnswers(const std::vector<answer> & answers)
    {
        QString text;
        for (const answer & each : answers) {
            text += QStringLiteral("\n%1: %2 %3").arg(each.text, each.error.code, each.error.words);
        }
        return text;
    }

    bool m_hasOddValues = false;
    int m_pagesRun = 0; ///< pages of which statements were run
    int m_letRun = 0;   ///< findings whose statement ran after what came before
    QSet<QString> m_withStatements;
    int m_compared = 0; ///< examples whose database was found to be like a new one
    check_pages::judge m_judge;
    std::unique_ptr<database::server::target_database> m_target;
};

QTEST_MAIN(tst_rule_remedies)
#include "tst_rule_remedies.moc"
