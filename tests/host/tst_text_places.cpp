#include "support/project_support.h"

#include "storage/text_places.h"

#include <QTest>

#include <algorithm>

using model::object_kind;
using storage::text_places;

namespace {

QString placeOf(const text_places & places, object_kind kind, long id)
{
    const auto place = places.find(kind, id);
    return place ? QStringLiteral("%1:%2").arg(place->line).arg(place->column) : QStringLiteral("nowhere");
}

} // namespace

/// Where objects begin in the text that they were read from.
class tst_text_places : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKind()
    {
        const QByteArray text =
            support::bytesOf(QStringLiteral(KORVANE_SOURCE_DIR "/tests/host/every_field.json"));
        const auto project = support::projectOf(text);
        const text_places places(text, *project);
        QCOMPARE(placeOf(places, object_kind::enumeration, 4), QString("6:5"));
        QCOMPARE(placeOf(places, object_kind::enumeration, 5), QString("7:5"));
        QCOMPARE(placeOf(places, object_kind::entity, 10), QString("10:5"));
        QCOMPARE(placeOf(places, object_kind::entity, 11), QString("30:5"));
        QCOMPARE(placeOf(places, object_kind::entity, 12), QString("40:5"));
        QCOMPARE(placeOf(places, object_kind::property, 100), QString("19:9"));
        QCOMPARE(placeOf(places, object_kind::property, 103), QString("22:9"));
        QCOMPARE(placeOf(places, object_kind::property, 122), QString("37:9"));
        QCOMPARE(placeOf(places, object_kind::relationship, 1), QString("25:50"));
        QCOMPARE(placeOf(places, object_kind::relationship, 7), QString("36:50"));
    }
    void whatIsNotThere()
    {
        const QByteArray text = support::textOf(R"({"id": 3, "name": "a"})");
        const auto project = support::projectOf(text);
        const text_places places(text, *project);
        QCOMPARE(placeOf(places, object_kind::entity, 4), QString("nowhere"));
        QCOMPARE(placeOf(places, object_kind::property, 3), QString("nowhere"));
        QVERIFY(placeOf(places, object_kind::entity, 3) != "nowhere");
    }
    /// Ids that the text leaves open, fields in another order, and lists of other things between.
    void asSomebodyWroteIt()
    {
        const QByteArray text =
            "{\"entities\":[{\"properties\":[{\"relationship\":{\"target\":1,\n"
            "\"type\":\"many-to-one\"},\"name\":\"b\"}, {\"type\": [\"int\", \"long\"],\r\n"
            "\"columnName\":\"x|y\",\"name\":\"c\"}],\"metaData\":{\"properties\":1},"
            "\"name\":\"a\"}], \"name\":\"shop\",\n"
            "  \"enumerations\":[{\"name\":\"e\",\"values\":[{\"name\":\"v\",\"value\":1}]},\n"
            "\t{\"name\":\"f\"}],\"format\":\"korvane-project\",\"formatVersion\":1}";
        const auto project = support::projectOf(text);
        QVERIFY(project);
        const text_places places(text, *project);
        QCOMPARE(placeOf(places, object_kind::entity, 1), QString("1:14"));
        QCOMPARE(placeOf(places, object_kind::property, 1), QString("1:29"));
        QCOMPARE(placeOf(places, object_kind::relationship, 1), QString("1:45"));
        QCOMPARE(placeOf(places, object_kind::property, 2), QString("2:36"));
        QCOMPARE(placeOf(places, object_kind::enumeration, 1), QString("4:19"));
        QCOMPARE(placeOf(places, object_kind::enumeration, 2), QString("5:2"));
    }
    /// A column counts what an editor counts: a letter of two bytes once, one beyond the first plane twice.
    void columnsAreCharacters()
    {
        const QByteArray text =
            QByteArray(R"({"format": "korvane-project", "formatVersion": 1, "name": "shop",)") +
            "\n\"entities\": [{\"name\": \"\xc3\xa9\xf0\x9f\x98\x80\"}, {\"name\": \"b\"}]}";
        const auto project = support::projectOf(text);
        QVERIFY(project);
        QCOMPARE(placeOf(text_places(text, *project), object_kind::entity, 2), QString("2:31"));
    }
    void aTextWithAMark()
    {
        const QByteArray text = "\xef\xbb\xbf" + support::textOf("\n{\"name\": \"a\"}");
        const auto project = support::projectOf(text);
        QVERIFY(project);
        QCOMPARE(placeOf(text_places(text, *project), object_kind::entity, 1), QString("2:1"));
    }
    /// The same by another way: each object of a dump has a line that begins with its id.
    void everyObjectOfADump()
    {
        const QByteArray text =
            support::bytesOf(QStringLiteral(KORVANE_SOURCE_DIR "/samples/festival_v3.json"));
        QVERIFY(!text.isEmpty());
        const auto project = support::projectOf(text);
        const QByteArray dumped = storage::text_form::write(*project);
        const text_places places(dumped, *project);
        const QList<QByteArray> lines = dumped.split('\n');
        int found = 0;
        for (const auto & entity : project->getListOfAllEntities()->values()) {
            for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
                const auto place = places.find(object_kind::property, property->getId());
                QVERIFY(place);
                const QByteArray begin = "{\"id\": " + QByteArray::number(qlonglong(property->getId())) + ",";
                QVERIFY(lines.at(place->line - 1).mid(place->column - 1).startsWith(begin));
                ++found;
            }
        }
        QVERIFY(found > 20);
    }
};

QTEST_GUILESS_MAIN(tst_text_places)
#include "tst_text_places.moc"
