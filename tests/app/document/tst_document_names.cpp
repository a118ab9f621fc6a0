// Names that are hard to put into pages and their scripts: mark-up, other alphabets, many letters, the same
// twice.

#include "page_text.h"

#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using page_text::rows;
using page_text::section;
using support::bytesOf;
using support::program_result;
using support::runProgram;

namespace {

const QString Hostile = QStringLiteral("</script><b>\"x\" & 'y'/../{{z}}");

QString entityText(int id, const QString & name, const QByteArray & others = {})
{
    return QStringLiteral(R"({"id": %1, "name": %2, "properties": [{"id": %1, "name": "id", "type": "long", )"
                          R"("identifier": true}%3]})")
        .arg(QString::number(id), name, QString::fromUtf8(others));
}

/// `text` as a string of JSON.
QString quoted(const QString & text)
{
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

} // namespace

class tst_document_names : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void markUp()
    {
        const QByteArray property = R"(, {"id": 8, "name": )" + quoted(Hostile).toUtf8() +
                                    R"(, "columnName": "<i>&", "type": "a<b&>"})";
        document({entityText(1, quoted(Hostile), property)},
                 QStringLiteral(R"({"id": 3, "name": %1, "values": [{"name": %1, "value": 1}]})")
                     .arg(quoted(Hostile)));
        const QString page = pageOf("entity-1.html");
        QVERIFY(page.contains("<h1>&lt;/script&gt;&lt;b&gt;&quot;x&quot; &amp; &apos;y&apos;/../{{z}}</h1>"));
        QCOMPARE(rows(section(page, "properties")).value(1), Hostile + " | <i>& | a<b&> | yes | – | – | –");
        QVERIFY(pageOf("index.html")
                    .contains("<a href=\"entity-1.html\">&lt;/script&gt;&lt;b&gt;&quot;x&quot; &amp; "
                              "&apos;y&apos;/../{{z}}</a>"));
        QCOMPARE(rows(section(pageOf("enumerations.html"), "enumeration-3")), QStringList(Hostile + " | 1"));
        for (const QString & name : QDir(site()).entryList({"*.html", "*.svg"})) {
            const QString html = pageOf(name);
            QVERIFY2(!html.contains("<b>") && !html.contains("<i>") && html.count("</script>") <= 1,
                     qPrintable(name));
        }
        const QByteArray index = bytesOf(site() + "/search-index.js");
        const QJsonArray found =
            QJsonDocument::fromJson(
                index.mid(index.indexOf('['), index.lastIndexOf(']') - index.indexOf('[') + 1))
                .array();
        QCOMPARE(found[0].toArray()[1].toString(), Hostile);
    }
    void picturesAreXml_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("mark-up") << Hostile;
        QTest::newRow("other alphabets") << QString::fromUtf8("Größe 顧客 עברית 🙂");
        QTest::newRow("control characters") << QString("a\u0001\u001b[31m\u202eb\n\uffff");
    }
    void picturesAreXml()
    {
        QFETCH(const QString, name);
        document({entityText(1, quoted(name)), entityText(2, "\"other\"")}, {});
        QXmlStreamReader reader(bytesOf(site() + "/diagram.svg"));
        while (!reader.atEnd()) {
            reader.readNext();
        }
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    }
    void controlCharacters()
    {
        document({entityText(1, quoted(QString("a\u0001\u001b[31m\u202eb\n\uffff")))}, {});
        QVERIFY(pageOf("entity-1.html").contains("<h1>a\ufffd\ufffd[31m&lt;U+202E&gt;b \ufffd</h1>"));
    }
    void otherAlphabets()
    {
        document({entityText(1, "\"Größe 顧客 🙂\"")}, {});
        QVERIFY(pageOf("entity-1.html").contains("<h1>Größe 顧客 🙂</h1>"));
        QVERIFY(pageOf("entity-1.html").contains("<meta charset=\"utf-8\">"));
        // In ASCII, whatever a browser takes a script for.
        QVERIFY(
            bytesOf(site() + "/search-index.js").contains("Gr\\u00f6\\u00dfe \\u9867\\u5ba2 \\ud83d\\ude42"));
    }
    void namesThatDifferInCaseOnly()
    {
        document({entityText(1, "\"order\""), entityText(2, "\"Order\""), entityText(3, "\"ORDER\"")}, {});
        QVERIFY(pageOf("entity-1.html").contains("<h1>order</h1>"));
        QVERIFY(pageOf("entity-2.html").contains("<h1>Order</h1>"));
        QVERIFY(pageOf("entity-3.html").contains("<h1>ORDER</h1>"));
    }
    void twoOfOneName()
    {
        document({entityText(1, "\"order\""), entityText(2, "\"order\"")}, {});
        QCOMPARE(rows(section(pageOf("index.html"), "entities")).size(), 2);
        QVERIFY(pageOf("entity-1.html").contains("<dd>1</dd>"));
        QVERIFY(pageOf("entity-2.html").contains("<dd>2</dd>"));
    }
    void namesThatBreakStatements()
    {
        const QByteArray others = R"(, {"id": 8, "name": "first name", "type": "QString"})";
        document({entityText(1, "\"my (own) table\"", others)}, {});
        const QString page = pageOf("entity-1.html");
        QVERIFY(page.contains("<dt>Table</dt><dd><code>my (own) table</code></dd>"));
        QCOMPARE(rows(section(page, "properties")).value(1),
                 QString("first name | first name | QString | yes | – | – | –"));
    }
    void longNames()
    {
        const QString name(3000, QLatin1Char('w'));
        document({entityText(1, quoted(name))}, {});
        QVERIFY(pageOf("entity-1.html").contains("<h1>" + name + "</h1>"));
        const QString picture = pageOf("diagram.svg");
        QVERIFY(picture.contains(">wwwwwwwwwwwwwwwwwwww…</text>"));
        QVERIFY(picture.contains("<title>" + name + "</title>"));
    }

private:
    QString site() const { return m_folder->filePath("site"); }
    QString pageOf(const QString & name) const { return QString::fromUtf8(bytesOf(site() + '/' + name)); }

    void document(const QStringList & entities, const QString & enumerations) const
    {
        const QByteArray text = support::textOf(entities.join(',').toUtf8(), enumerations.toUtf8());
        const program_result result = runProgram({"document", "-", "-o", site()}, {}, text);
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_document_names)
#include "tst_document_names.moc"
