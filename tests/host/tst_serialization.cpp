#include "zk/zk_serialization.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

using collection = zk::ZkCollection<QString, QString>;

const QString Begin = R"(<zk.ZkCollection-QString_QString- class_id="0" tracking_level="0" version="0">)";
const QString End = "</zk.ZkCollection-QString_QString->";

collection listOf(std::initializer_list<std::pair<QString, QString>> pairs)
{
    collection list;
    for (const auto & [first, second] : pairs) {
        list.insert(first, second);
    }
    return list;
}

QString itemOf(const QString & first, const QString & second)
{
    return "<item><first>" + first + "</first><second>" + second + "</second></item>";
}

/// What is logged while it lives.
class log_catcher
{
public:
    log_catcher()
    {
        lines().clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString & text) { lines().append(text); });
    }
    ~log_catcher() { qInstallMessageHandler(m_previous); }
    static QStringList & lines()
    {
        static QStringList all;
        return all;
    }

private:
    QtMessageHandler m_previous;
};

} // namespace

class tst_serialization : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exactXml()
    {
        QCOMPARE(
            zk::serialization::toXml(listOf({{"int", "INTEGER"}, {"a<b>", "\"x\" & 'y'"}})),
            QString("<zk.ZkCollection-QString_QString- class_id=\"0\" tracking_level=\"0\" version=\"0\">\n"
                    "\t<count>2</count>\n"
                    "\t<item class_id=\"1\" tracking_level=\"0\" version=\"0\">\n"
                    "\t\t<first>int</first>\n"
                    "\t\t<second>INTEGER</second>\n"
                    "\t</item>\n"
                    "\t<item>\n"
                    "\t\t<first>a&lt;b&gt;</first>\n"
                    "\t\t<second>&quot;x&quot; &amp; &apos;y&apos;</second>\n"
                    "\t</item>\n"
                    "</zk.ZkCollection-QString_QString->\n\n"));
        QCOMPARE(
            zk::serialization::toXml(collection()),
            QString("<zk.ZkCollection-QString_QString- class_id=\"0\" tracking_level=\"0\" version=\"0\">\n"
                    "\t<count>0</count>\n"
                    "</zk.ZkCollection-QString_QString->\n\n"));
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::newRow("plain") << "std::vector<int>"
                               << "VARCHAR(255)";
        QTest::newRow("empty value") << "int"
                                     << "";
        QTest::newRow("empty key") << ""
                                   << "INTEGER";
        QTest::newRow("only blanks") << " "
                                     << "   ";
        QTest::newRow("blanks around") << "  int "
                                       << "\tINTEGER\n";
        QTest::newRow("markup") << "<default type>"
                                << "&amp; ]]> <!-- \"'";
        QTest::newRow("other writing") << "\u00e4\u20ac\u4e2d"
                                       << "\U0001F600";
        QTest::newRow("lines") << "a\nb"
                               << "c\td";
        QTest::newRow("closing tag") << "</first>"
                                     << "</zk.ZkCollection-QString_QString->";
    }
    void roundTrip()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        const collection list = listOf({{"x", "y"}, {first, second}, {"z", "w"}});
        collection back = listOf({{"old", "gone"}});
        QVERIFY(zk::serialization::fromXml(zk::serialization::toXml(list), back));
        QVERIFY(back == list);
    }
    void emptyAndLongLists()
    {
        collection back = listOf({{"old", "gone"}});
        QVERIFY(zk::serialization::fromXml(zk::serialization::toXml(collection()), back));
        QVERIFY(back.isEmpty());
        collection many;
        for (int i = 0; i < 1000; ++i) {
            many.insert("type " + QString::number(i), "SQL " + QString::number(i));
        }
        QVERIFY(zk::serialization::fromXml(zk::serialization::toXml(many), back));
        QVERIFY(back == many);
    }
    void whatXmlCannotHoldIsLeftOut()
    {
        const QChar high(0xD83D);
        const QString bad = QString("a") + QChar(0) + "b" + QChar(1) + "c" + high + "d" + QChar(0xDE00) +
                            "e" + QChar(0xFFFE) + "f" + QChar(0xFFFF);
        collection back;
        QVERIFY(zk::serialization::fromXml(zk::serialization::toXml(listOf({{bad, bad}})), back));
        QVERIFY(back == listOf({{"abcdef", "abcdef"}}));
    }

    void aCutTextGivesThePairsBeforeIt()
    {
        const collection list = listOf({{"int", "INTEGER"}, {"a<b", "\u20ac"}, {"QString", "TEXT"}});
        const QString xml = zk::serialization::toXml(list);
        QList<qsizetype> ends;
        for (qsizetype at = 0; (at = xml.indexOf("</item>", at)) >= 0;) {
            ends.append(at += 7);
        }
        QCOMPARE(ends.size(), 3);
        const qsizetype whole = xml.trimmed().size();
        for (qsizetype length = 0; length < whole; ++length) {
            const log_catcher log;
            collection back = listOf({{"old", "gone"}});
            QVERIFY(!zk::serialization::fromXml(xml.left(length), back));
            const auto complete =
                std::count_if(ends.begin(), ends.end(), [=](qsizetype e) { return e <= length; });
            QCOMPARE(back.count(), long(complete));
            for (long i = 0; i < complete; ++i) {
                QCOMPARE(back.getKeyByIndex(i), list.getKeyByIndex(i));
                QCOMPARE(back.getByIndex(i), list.getByIndex(i));
            }
            QCOMPARE(log_catcher::lines().size(), 1);
        }
        collection back;
        QVERIFY(zk::serialization::fromXml(xml.left(whole), back));
        QVERIFY(back == list);
    }

    void damagedTexts_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<int>("pairs");
        const QString two = itemOf("a", "b") + itemOf("c", "d");
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("garbage") << "garbage" << 0;
        QTest::newRow("other root") << "<list><count>1</count>" + itemOf("a", "b") + "</list>" << 0;
        QTest::newRow("no count") << Begin + two + End << 0;
        QTest::newRow("enormous count") << Begin + "<count>4000000000</count>" + two + End << 2;
        QTest::newRow("count beyond 64 bit")
            << Begin + "<count>99999999999999999999</count>" + two + End << 0;
        QTest::newRow("negative count") << Begin + "<count>-1</count>" + two + End << 0;
        QTest::newRow("count of letters") << Begin + "<count>two</count>" + two + End << 0;
        QTest::newRow("count too small") << Begin + "<count>1</count>" + two + End << 1;
        QTest::newRow("wrong item") << Begin + "<count>2</count>" + itemOf("a", "b") + "<thing/>" + End << 1;
        QTest::newRow("wrong member")
            << Begin + "<count>1</count><item><first>a</first><third>b</third></item>" + End << 0;
        QTest::newRow("member missing") << Begin + "<count>1</count><item><first>a</first></item>" + End << 0;
        QTest::newRow("member too many")
            << Begin + "<count>1</count><item><first>a</first><second>b</second><third>c</third></item>" + End
            << 0;
        QTest::newRow("element in a text")
            << Begin + "<count>1</count><item><first><b>a</b></first><second>b</second></item>" + End << 0;
        QTest::newRow("text between")
            << Begin + "<count>2</count>" + itemOf("a", "b") + "x" + itemOf("c", "d") + End << 1;
        QTest::newRow("comment") << Begin + "<count>2</count>" + itemOf("a", "b") + "<!-- x -->" +
                                        itemOf("c", "d") + End
                                 << 1;
        QTest::newRow("DTD") << "<!DOCTYPE x [<!ENTITY e \"eeee\">]>" + Begin + "<count>1</count>" +
                                    itemOf("&e;", "b") + End
                             << 0;
        QTest::newRow("unknown entity") << Begin + "<count>1</count>" + itemOf("&e;", "b") + End << 0;
        QTest::newRow("text behind") << Begin + "<count>1</count>" + itemOf("a", "b") + End + "x" << 1;
        QTest::newRow("second root") << Begin + "<count>1</count>" + itemOf("a", "b") + End + "<x/>" << 1;
        QTest::newRow("control character")
            << Begin + "<count>2</count>" + itemOf("a", "b") + itemOf(QString(QChar(1)), "d") + End << 1;
        QTest::newRow("NUL") << Begin + "<count>2</count>" + itemOf("a", "b") +
                                    itemOf(QString(QChar(0)), "d") + End
                             << 1;
        QTest::newRow("deep nesting") << QString("<a>").repeated(50000) << 0;
        QTest::newRow("too long") << Begin + "<count>1</count>" + itemOf(QString(9 * 1024 * 1024, 'x'), "b") +
                                         End
                                  << 0;
    }
    void damagedTexts()
    {
        QFETCH(QString, xml);
        const log_catcher log;
        collection back = listOf({{"old", "gone"}});
        QVERIFY(!zk::serialization::fromXml(xml, back));
        QTEST(int(back.count()), "pairs");
        if (back.count() > 0) {
            QCOMPARE(back.getKeyByIndex(0), QString("a"));
            QCOMPARE(back.getByIndex(0), QString("b"));
        }
        QCOMPARE(log_catcher::lines().size(), 1);
        const QString line = log_catcher::lines().constFirst();
        QVERIFY2(line.startsWith("[Zelkon] Deserialization error : '"), qPrintable(line));
        QVERIFY(line.endsWith('\'') && !line.contains("%ERR%"));
    }

    void mutationsNeverCrash()
    {
        const QString xml = zk::serialization::toXml(
            listOf({{"int", "INTEGER"}, {"a<b>", "\u20ac & 'y'"}, {"QString", "TEXT"}}));
        const QString letters =
            "<>/&;\"'=-.! \n\t09az%\u20ac" + QString(QChar(0)) + QChar(0xD800) + QChar(0xFFFF);
        QRandomGenerator random(20261121);
        const log_catcher log;
        int taken = 0;
        for (int i = 0; i < 20000; ++i) {
            QString text = xml;
            for (int n = random.bounded(1, 4); n > 0 && !text.isEmpty(); --n) {
                const qsizetype at = random.bounded(int(text.size()));
                switch (random.bounded(4)) {
                case 0:
                    text[at] = letters.at(random.bounded(int(letters.size())));
                    break;
                case 1:
                    text.remove(at, random.bounded(1, 12));
                    break;
                case 2:
                    text.insert(at, xml.mid(random.bounded(int(xml.size())), random.bounded(1, 40)));
                    break;
                default:
                    text.insert(at, letters.at(random.bounded(int(letters.size()))));
                }
            }
            collection back;
            taken += zk::serialization::fromXml(text, back) ? 1 : 0;
            QVERIFY(back.count() <= 10);
        }
        QVERIFY(taken > 0 && taken < 20000);
    }
};

QTEST_APPLESS_MAIN(tst_serialization)
#include "tst_serialization.moc"
