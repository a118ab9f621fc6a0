// What the pages about a model tell, as the command document writes them.

#include "page_text.h"

#include "support/festival.h"
#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using page_text::changes;
using page_text::rows;
using page_text::section;
using support::json;
using support::program_result;
using support::runProgram;
using support::textOf;

namespace {

QString pageOf(const QDir & folder, const QString & name)
{
    return QString::fromUtf8(support::bytesOf(folder.filePath(name)));
}

/// The pages that `html` leads to, without places in them.
QSet<QString> linksOf(const QString & html)
{
    QSet<QString> found;
    for (const QString & link : page_text::pieces(html, "(?:href|src)=\"", "\"")) {
        if (const QString page = link.section(QLatin1Char('#'), 0, 0); !page.isEmpty()) {
            found << page;
        }
    }
    return found;
}

/// The kinds, names and pages that are found in the index of the search.
QJsonArray searchRows(const QDir & folder)
{
    const QByteArray script = support::bytesOf(folder.filePath(QStringLiteral("search-index.js")));
    const qsizetype begin = script.indexOf('[');
    return QJsonDocument::fromJson(script.mid(begin, script.lastIndexOf(']') + 1 - begin)).array();
}

} // namespace

class tst_document : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        m_project = path("festival.korv");
        QCOMPARE(support::makeFestival(m_project), QByteArray());
        m_site = QDir(path("site"));
        const program_result result = runProgram({"document", m_project, "-o", m_site.path()});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.output, (m_site.path() + "/index.html: 12 entities written\n").toUtf8());
        QCOMPARE(result.status, 0);
    }

    void files()
    {
        QCOMPARE(m_site.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name),
                 QStringList({"diagram.html",   "diagram.svg",       "entity-10.html",    "entity-11.html",
                              "entity-12.html", "entity-13.html",    "entity-14.html",    "entity-15.html",
                              "entity-16.html", "entity-17.html",    "entity-18.html",    "entity-20.html",
                              "entity-21.html", "entity-22.html",    "enumerations.html", "history.html",
                              "index.html",     "korvane-pages.txt", "search-index.js",   "search.js",
                              "style.css"}));
    }
    void everyLinkLeadsToAPage()
    {
        for (const QString & page : m_site.entryList({"*.html", "*.svg"}, QDir::Files)) {
            const QSet<QString> links = linksOf(pageOf(m_site, page));
            for (const QString & link : links) {
                QVERIFY2(m_site.exists(link), qPrintable(page + " leads to " + link));
            }
        }
    }

    void theFirstPage()
    {
        const QString page = pageOf(m_site, "index.html");
        QVERIFY(page.contains("<p class=\"lead\">12 entities with 52 properties, 2 link tables, 1 "
                              "enumeration.</p>"));
        QVERIFY(
            page.contains("<p>The newest version is v3, “gigs are called concerts”. The model has changed "
                          "since then. <a href=\"history.html\">All changes</a></p>"));
        const QStringList entities = rows(section(page, "entities"));
        QCOMPARE(entities.size(), 12);
        QCOMPARE(entities[0], QString("venue | t_venue | 6 | –"));
        QCOMPARE(entities[1], QString("stage | t_stage | 4 | venue, volunteer"));
        QCOMPARE(entities[4], QString("concert | t_concert | 6 | stage, artist, concert"));
        QCOMPARE(entities[8], QString("draft_note | none | 2 | –")); // scripts leave it out
        const QString links = section(page, "links");
        QVERIFY(links.contains("<h3 id=\"link-502\"><code>t_artist_genre</code></h3>\n"
                               "<p>Between <a href=\"entity-12.html\">genre</a> and "
                               "<a href=\"entity-13.html\">artist</a></p>"));
        QCOMPARE(rows(links.mid(links.indexOf("link-502"))),
                 QStringList({"genre_code | VARCHAR(255) | VARCHAR(255) | VARCHAR(255) | VARCHAR2(4000) | "
                              "VARCHAR(255)",
                              "artist_id | INTEGER | INTEGER | BIGSERIAL | INTEGER | INT"}));
    }
    void propertiesAndTypes()
    {
        const QString page = pageOf(m_site, "entity-14.html");
        QVERIFY(page.contains("<title>concert - festival</title>"));
        QVERIFY(page.contains("<h1>concert</h1>"));
        QVERIFY(page.contains("<dt>Table</dt><dd><code>t_concert</code></dd>"));
        QVERIFY(page.contains("<dt>Since</dt><dd>v1</dd>"));
        QVERIFY(page.contains("<dt>Formerly</dt><dd>gig</dd>"));
        QCOMPARE(rows(section(page, "properties")),
                 QStringList({"id | gig_id | long long | no | primary, auto-increment | – | –",
                              "starts_at | starts_at | QDateTime | no | – | – | yes",
                              "length formerly duration | length | QTime | yes | – | – | –",
                              "stage | stage_id | stage | yes | foreign | – | –",
                              "artist | artist_id | artist | yes | foreign | – | yes",
                              "support_for | main_gig_id | concert | yes | foreign | – | –"}));
        QVERIFY(section(page, "types")
                    .contains("<th role=\"columnheader\" scope=\"col\">Column</th>"
                              "<th role=\"columnheader\" scope=\"col\">SQLite</th>"
                              "<th role=\"columnheader\" scope=\"col\">MySQL</th>"
                              "<th role=\"columnheader\" scope=\"col\">PostgreSQL</th>"
                              "<th role=\"columnheader\" scope=\"col\">Oracle</th>"
                              "<th role=\"columnheader\" scope=\"col\">MS SQL Server</th></tr>"));
        QCOMPARE(rows(section(page, "types")),
                 QStringList({"gig_id | INTEGER | BIGINT | BIGSERIAL | INTEGER | BIGINT",
                              "starts_at | TIMESTAMP | TIMESTAMP | TIMESTAMP | TIMESTAMP | DATETIME",
                              "length | TIME | TIME | TIME | DATE | TIME",
                              "stage_id | INTEGER | INTEGER | INTEGER | INTEGER | INT",
                              "artist_id | INTEGER | INTEGER | INTEGER | INTEGER | INT",
                              "main_gig_id | INTEGER | BIGINT | BIGINT | INTEGER | BIGINT"}));
    }
    void whatIsNoPlainColumn()
    {
        const QString artist = pageOf(m_site, "entity-13.html");
        QVERIFY(artist.contains("<dt>Soft delete</dt><dd><code>deleted_at</code></dd>"));
        QVERIFY(artist.contains("<dt>Key</dt><dd><code>festival.artist</code></dd>"));
        const QStringList properties = rows(section(artist, "properties"));
        QCOMPARE(properties[5], QString("genres | – | genre | – | – | – | –"));
        QCOMPARE(properties[6], QString("display_cache | transient | QVariant | – | – | – | –"));
        QCOMPARE(rows(section(artist, "types")).constLast(),
                 QString("deleted_at | TEXT | TEXT | TEXT | TEXT | TEXT"));
        const QString ticket = pageOf(m_site, "entity-16.html");
        QCOMPARE(rows(section(ticket, "properties")).value(0),
                 QString("key | block_no + serial_no | short + int | no | primary | – | –"));
        QVERIFY(ticket.contains("<a href=\"enumerations.html#enumeration-1\">ticket_state</a>"));
        const QString note = pageOf(m_site, "entity-18.html");
        QVERIFY(note.contains("<dd>none: scripts leave this entity out</dd>"));
        QVERIFY(section(note, "types").isEmpty());
        QVERIFY(!note.contains("<figure>"));
    }
    void relationshipsBothWays()
    {
        const QString page = pageOf(m_site, "entity-11.html");
        QCOMPARE(rows(section(page, "relationships")),
                 QStringList({"venue | many-to-one | venue | – | column venue_id",
                              "crew | many-to-many | volunteer | stages | link table t_volunteer_stage"}));
        QCOMPARE(rows(section(page, "referrers")),
                 QStringList({"venue.stages | one-to-many | column venue_id",
                              "concert.stage | many-to-one | column stage_id",
                              "volunteer.stages | many-to-many | link table t_volunteer_stage"}));
        QVERIFY(section(page, "referrers").contains("<a href=\"entity-14.html#property-143\">"));
        QVERIFY(section(page, "relationships").contains("<a href=\"index.html#link-511\">"));
    }
    void historyOfAnEntity()
    {
        const QString history = section(pageOf(m_site, "entity-14.html"), "history");
        QCOMPARE(page_text::pieces(history, "<h3>", "</h3>").size(), 2);
        QVERIFY(history.contains("<h3><a href=\"history.html#v3\">v3</a> <span class=\"quiet\">"));
        QCOMPARE(changes(history),
                 QStringList({"name: gig -> concert", "table: t_gig -> t_concert", "property length",
                              "name: duration -> length", "+ entity gig: 6 properties"}));
        const QString payment = pageOf(m_site, "entity-22.html");
        QVERIFY(!payment.contains("<dt>Since</dt>"));
        QVERIFY(section(payment, "history").contains("<a href=\"history.html#now\">Not tagged yet</a>"));
    }
    void historyOfTheModel()
    {
        const QString page = pageOf(m_site, "history.html");
        const QStringList steps = page_text::pieces(page, "<section aria-labelledby=\"", "\">");
        QCOMPARE(steps, QStringList({"now", "v3", "v2", "v1"}));
        QCOMPARE(changes(section(page, "now")),
                 QStringList({"entity visitor", "property full_name", "index: yes -> no",
                              "+ property language: QString", "- property newsletter: bool",
                              "+ entity payment: 4 properties", "- entity flyer: 2 properties"}));
        QVERIFY(section(page, "v3").contains("<p>gigs are called concerts</p>"));
        QVERIFY(!page.contains("entity-19.html")); // of what is gone
    }
    void enumerations()
    {
        const QString page = pageOf(m_site, "enumerations.html");
        QCOMPARE(rows(section(page, "enumeration-1")),
                 QStringList({"reserved | 0", "paid | 1", "used | 2", "refunded | -1"}));
        QVERIFY(page.contains("<p>Used by <a href=\"entity-16.html#property-161\">ticket.state</a></p>"));
    }
    void diagram()
    {
        for (const char * const name : {"diagram.svg", "diagram.html"}) {
            const QString page = pageOf(m_site, name);
            const QStringList boxes = page_text::pieces(page, "</g><a href=\"", "\"");
            QCOMPARE(QSet<QString>(boxes.begin(), boxes.end()).size(), 12);
            QCOMPARE(page_text::pieces(page, "<g class=\"line\">", "</g>").size(), 11);
            QVERIFY(page.contains("<text class=\"mark reference\" "));
            QCOMPARE(page.count(">support_for</text>"), 2); // a row, and a line
            QVERIFY(page.contains(">display_cache</text>"));
            QVERIFY(page.contains("<text class=\"table\" "));
        }
        const QString neighbours = pageOf(m_site, "entity-14.html");
        QCOMPARE(page_text::pieces(neighbours, "</g><a href=\"", "\""),
                 QStringList({"entity-14.html", "entity-11.html", "entity-13.html", "entity-16.html"}));
        QCOMPARE(neighbours.count("<g class=\"box here\">"), 1);
    }
    void searchIndex()
    {
        const QJsonArray found = searchRows(m_site);
        QCOMPARE(found.size(), 12 + 2 + 1 + 52);
        QCOMPARE(found[4],
                 QJsonArray({"entity", "concert", "table t_concert, formerly gig", "entity-14.html"}));
        QCOMPARE(found[13], QJsonArray({"link table", "t_artist_genre", "genre_code, artist_id",
                                        "index.html#link-502"}));
        QCOMPARE(found[14], QJsonArray({"enumeration", "ticket_state", "reserved, paid, used, refunded",
                                        "enumerations.html#enumeration-1"}));
        QVERIFY(found.contains(QJsonArray({"property", "ticket.key", "columns t_ticket.block_no, serial_no",
                                           "entity-16.html#property-160"})));
    }

    void sameWhereverItIsMade()
    {
        QHash<QString, QString> environment{{"LC_ALL", "de_DE.UTF-8"}, {"LANGUAGE", "de"}};
        // It is another day in one of the two.
        for (const char * const zone : {"Pacific/Kiritimati", "Pacific/Midway"}) {
            environment.insert("TZ", zone);
            const QDir site(path("again"));
            QCOMPARE(runProgram({"document", m_project, "-o", site.path()}, environment).status, 0);
            for (const QString & name : m_site.entryList(QDir::Files)) {
                QCOMPARE(support::bytesOf(site.filePath(name)), support::bytesOf(m_site.filePath(name)));
            }
        }
    }
    void someDatabases()
    {
        const QDir site(path("two"));
        QCOMPARE(runProgram({"document", m_project, "-o", site.path(), "--db", "mariadb,sqlite"}).status, 0);
        QCOMPARE(rows(section(pageOf(site, "entity-14.html"), "types")).value(0),
                 QString("gig_id | INTEGER | BIGINT"));
    }
    void textWithoutHistory()
    {
        const QByteArray text = textOf(json(
            "{'id': 1, 'name': 'note', 'properties': [{'id': 10, 'name': 'id', 'type': 'long', 'identifier': "
            "true}]}"));
        const QDir site(path("text"));
        const program_result result = runProgram({"document", "-", "-o", site.path()}, {}, text);
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.output, (site.path() + "/index.html: 1 entity written\n").toUtf8());
        QVERIFY(!site.exists("history.html"));
        QVERIFY(!site.exists("enumerations.html"));
        const QString page = pageOf(site, "entity-1.html");
        QVERIFY(!page.contains("istory"));
        QVERIFY(!page.contains("Enumerations"));
        QCOMPARE(rows(section(page, "properties")),
                 QStringList("id | id | long | no | primary, auto-increment | – | –"));
    }
    void whereRelationshipsAreStored_data()
    {
        QTest::addColumn<QByteArray>("inverseOfLines");
        QTest::addColumn<QByteArray>("inverseOfOrder");
        QTest::addColumn<QString>("lines");
        QTest::newRow("pair") << QByteArray(", 'inverse': 5") << QByteArray(", 'inverse': 2")
                              << "lines | one-to-many | line | order | column order_id";
        QTest::newRow("alone") << QByteArray() << QByteArray()
                               << "lines | one-to-many | line | – | not stored";
    }
    void whereRelationshipsAreStored()
    {
        QFETCH(const QByteArray, inverseOfLines);
        QFETCH(const QByteArray, inverseOfOrder);
        QFETCH(const QString, lines);
        const QByteArray entities =
            "{'id': 1, 'name': 'order', 'properties': ["
            "{'id': 1, 'name': 'id', 'type': 'long', 'identifier': true},"
            "{'id': 2, 'name': 'lines', 'relationship': {'id': 1, 'type': 'one-to-many', 'target': 2" +
            inverseOfLines +
            "}},"
            "{'id': 3, 'name': 'cache', 'transient': true, 'relationship': {'id': 2, 'type': 'many-to-one', "
            "'target': 2}}]},"
            "{'id': 2, 'name': 'line', 'properties': ["
            "{'id': 4, 'name': 'id', 'type': 'long', 'identifier': true},"
            "{'id': 5, 'name': 'order', 'columnName': 'order_id', 'relationship': {'id': 3, 'type': "
            "'many-to-one', 'target': 1" +
            inverseOfOrder + "}}]}";
        const QDir site(path("stored"));
        QCOMPARE(
            runProgram({"document", "-", "-o", site.path()}, {}, textOf(json(entities.constData()))).errors,
            QByteArray());
        const QString page = pageOf(site, "entity-1.html");
        QCOMPARE(rows(section(page, "relationships")),
                 QStringList({lines, "cache | many-to-one | line | – | not stored"}));
        QCOMPARE(rows(section(page, "referrers")), QStringList("line.order | many-to-one | column order_id"));
    }
    void manyNeighbours()
    {
        QByteArrayList entities{
            "{'id': 1, 'name': 'hub', 'properties': [{'id': 1, 'name': 'id', 'type': 'long', "
            "'identifier': true}]}"};
        for (int i = 2; i <= 21; ++i) {
            const QByteArray id = QByteArray::number(i);
            entities << "{'id': " + id + ", 'name': 'spoke', 'properties': [{'id': " + id +
                            ", 'name': 'id', 'type': 'long', 'identifier': true}, {'id': 10" + id +
                            ", 'name': 'hub', 'relationship': {'id': " + id +
                            ", 'type': 'many-to-one', 'target': 1}}]}";
        }
        const QDir site(path("hub"));
        const QByteArray text = textOf(entities.join(',').replace('\'', '"'));
        QCOMPARE(runProgram({"document", "-", "-o", site.path()}, {}, text).status, 0);
        const QString page = pageOf(site, "entity-1.html");
        QCOMPARE(page.count("<g class=\"box\">"), 16);
        QCOMPARE(page.count("<g class=\"line\">"), 16);
        QVERIFY(page.contains(
            "<figcaption>hub and what it is related to; 4 more are in the lists below</figcaption>"));
        QCOMPARE(rows(section(page, "referrers")).size(), 20);
    }
    void emptyModel()
    {
        const QDir site(path("empty"));
        QCOMPARE(runProgram({"document", "-", "-o", site.path()}, {}, textOf("")).status, 0);
        QCOMPARE(
            site.entryList(QDir::Files, QDir::Name),
            QStringList({"index.html", "korvane-pages.txt", "search-index.js", "search.js", "style.css"}));
        const QString page = pageOf(site, "index.html");
        QVERIFY(page.contains("<p class=\"lead\">0 entities with 0 properties.</p>"));
        QVERIFY(page.contains("<p>The model has no entities.</p>"));
    }

private:
    QString path(const char * name) const { return m_folder.filePath(QLatin1String(name)); }

    QTemporaryDir m_folder;
    QString m_project;
    QDir m_site;
};

QTEST_GUILESS_MAIN(tst_document)
#include "tst_document.moc"
