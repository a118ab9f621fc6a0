// The pages of a document as a reader meets them, opened from files in a browser: links, search, diagram,
// colours, width.

#include "support/festival.h"
#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runProcess;
using support::runProgram;

class tst_document_pages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_browser = QStandardPaths::findExecutable("chromium");
        if (m_browser.isEmpty() || QStandardPaths::findExecutable("node").isEmpty() ||
            !QFile::exists(KORVANE_BROWSER_DRIVER "/installed.json")) {
            QSKIP("no browser: chromium, node, or what drives it is not installed");
        }
        const QString project = m_folder.filePath("festival.korv");
        QCOMPARE(support::makeFestival(project), QByteArray());
        QCOMPARE(runProgram({"document", project, "-o", site("festival")}).status, 0);
        // Names that mean something to a browser, or ask for more room than there is.
        QByteArray strange = support::bytesOf(KORVANE_SOURCE_DIR "/tests/browser/strange.json");
        strange.replace("LONG", QByteArray(400, 'w'));
        QCOMPARE(runProgram({"document", "-", "-o", site("strange")}, {}, strange).errors, QByteArray());
    }

    void everyLinkLeadsSomewhere()
    {
        QCOMPARE(check("festival", {"links"}), QByteArray("16 pages\n"));
        QCOMPARE(check("strange", {"links"}), QByteArray("5 pages\n"));
    }
    void searchFinds_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("found");
        const auto add = [](const char * word, const char * found) {
            QTest::newRow(word) << QString::fromLatin1(word) << QString::fromLatin1(found);
        };
        add("concert", "7 results, concert (entity, table t_concert, formerly gig) -> entity-14.html");
        add("T_CONCERT", "7 results, concert (entity, table t_concert, formerly gig) -> entity-14.html");
        add("t_artist_genre",
            "1 result, t_artist_genre (link table, genre_code, artist_id) -> index.html#link-502");
        add("length", "1 result, concert.length (property, column t_concert.length, formerly duration) -> "
                      "entity-14.html#property-142");
        add("duration", "1 result, concert.length (property, column t_concert.length, formerly duration) -> "
                        "entity-14.html#property-142");
        add("block_no", "2 results, ticket.key (property, columns t_ticket.block_no, serial_no) -> "
                        "entity-16.html#property-160");
        add("ticket_state", "1 result, ticket_state (enumeration, reserved, paid, used, refunded) -> "
                            "enumerations.html#enumeration-1");
        add("refunded", "1 result, ticket_state (enumeration, reserved, paid, used, refunded) -> "
                        "enumerations.html#enumeration-1");
        add("visitor mail", "1 result, visitor.mail (property, column t_visitor.mail) -> "
                            "entity-15.html#property-151");
        add("zzz", "Nothing found");
    }
    void searchFinds()
    {
        QFETCH(const QString, word);
        QFETCH(const QString, found);
        if (m_found.isEmpty()) { // one browser for all words
            const QStringList words{"concert",  "T_CONCERT",    "t_artist_genre", "length",       "duration",
                                    "block_no", "ticket_state", "refunded",       "visitor mail", "zzz"};
            m_found = QString::fromUtf8(check("festival", QStringList("search") + words)).split('\n');
        }
        QVERIFY2(m_found.contains(word + ": " + found), qPrintable(m_found.join('\n')));
        QVERIFY(!m_found.join('\n').contains("! "));
    }
    void searchFindsStrangeNames()
    {
        QCOMPARE(check("strange", {"search", "STATE/<B", "</script>"}),
                 QByteArray("STATE/<B: 1 result, stäte/<b> (enumeration, \"on\") -> "
                            "enumerations.html#enumeration-3\n"
                            "</script>: 3 results, </script><script>alert(1)</script> (entity, table "
                            "</script><script>alert(1)</script>) -> entity-11.html\n"));
    }
    void boxesOfTheDiagramAreLinks()
    {
        QCOMPARE(check("festival", {"diagram"}),
                 QByteArray("venue -> venue\nstage -> stage\ngenre -> genre\nartist -> artist\n"
                            "concert -> concert\nvisitor -> visitor\nticket -> ticket\nscan -> scan\n"
                            "draft_note -> draft_note\nvolunteer -> volunteer\nbadge -> badge\n"
                            "payment -> payment\n"));
    }
    void accessible_data()
    {
        QTest::addColumn<QString>("colours");
        QTest::addColumn<QByteArray>("ground");
        QTest::newRow("light") << "light" << QByteArray("rgb(255, 255, 255)");
        QTest::newRow("dark") << "dark" << QByteArray("rgb(21, 24, 28)");
    }
    void accessible()
    {
        QFETCH(const QString, colours);
        QFETCH(const QByteArray, ground);
        QCOMPARE(check("festival", {"accessible", colours}), ground + ", 16 pages\n");
        QCOMPARE(check("strange", {"accessible", colours}), ground + ", 5 pages\n");
    }
    void nothingIsToBeScrolledSideways()
    {
        QCOMPARE(check("festival", {"narrow"}), QByteArray("16 pages\n"));
        QCOMPARE(check("strange", {"narrow"}), QByteArray("5 pages\n"));
    }
    void withoutScripts()
    {
        QCOMPARE(check("festival", {"plain"}), QByteArray("search: false\nentity-10.html: venue\n"));
    }

private:
    QString site(const char * name) const { return m_folder.filePath(QLatin1String(name)); }

    /// What a check of site_check.mjs tells, errors included.
    QByteArray check(const char * name, const QStringList & what) const
    {
        const program_result result = runProcess(
            "node", QStringList{KORVANE_SITE_CHECK, KORVANE_BROWSER_DRIVER, m_browser, site(name)} + what, {},
            {});
        return result.status == 0 ? result.output : result.output + result.errors;
    }

    QTemporaryDir m_folder;
    QStringList m_found;
    QString m_browser;
};

QTEST_GUILESS_MAIN(tst_document_pages)
#include "tst_document_pages.moc"
