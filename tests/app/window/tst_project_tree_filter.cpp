// What the filter of the tree finds.

#include "watched_model.h"

#include <QSignalSpy>
#include <QTest>

using support::model_builder;
using support::treeShop;
using support::watched_model;

class tst_project_tree_filter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filter_data();
    void filter();
    void filterOfUnicode_data();
    void filterOfUnicode();
    void filterOfValues();
    void manyWords();
    void filterTellsWhatToOpen();
    void equalRowsAreNoReset();
    void filterWhileTextsAreCollected();
    void projectTakesTheFilter();
};

void tst_project_tree_filter::filter_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("expected");
    const QStringList country = {"country", " code", " title", " people", "  → customer"};
    QTest::newRow("only the entity matches: all below it") << "t_country" << country;
    QTest::newRow("name of an entity, any case") << "EMP" << QStringList{"empty"};
    QTest::newRow("property: only what matches") << "title" << QStringList{"country", " title"};
    QTest::newRow("column") << "customer_id" << QStringList{"customer", " id"};
    QTest::newRow("one of several columns") << ", lon" << QStringList{"customer", " place"};
    QTest::newRow("type") << "qstring" << QStringList{"country", " code", " title", "customer", " name"};
    QTest::newRow("enumeration") << "mood" << QStringList{"customer", " state"};
    QTest::newRow("target of a relationship")
        << "→ country"
        << QStringList{"country", " people", "  → customer", "customer", " home", "  → country"};
    QTest::newRow("link table, in the row below the property")
        << "customer_tag" << QStringList{"customer", " tags", "  → tag"};
    QTest::newRow("words in any order") << "QString title" << QStringList{"country", " title"};
    QTest::newRow("words with blanks around") << "  title \t qstr " << QStringList{"country", " title"};
    QTest::newRow("words of two entities") << "title lon" << QStringList();
    QTest::newRow("words of two properties") << "code title" << QStringList();
    QTest::newRow("words of entity and property") << "t_country title" << QStringList{"country", " title"};
    QTest::newRow("words of column and entity") << "lat CUST" << QStringList{"customer", " place"};
    QTest::newRow("words of entity, property and type")
        << "state customer mood" << QStringList{"customer", " state"};
    QTest::newRow("part of two texts") << "titleqstring" << QStringList();
    QTest::newRow("part of two rows") << "titlepeople" << QStringList();
    QTest::newRow("no wildcard") << "tit.e" << QStringList();
    QTest::newRow("bracket") << "(transient" << QStringList{"customer", " cache"};
    QTest::newRow("the first text of all") << "country t_" << country;
    QTest::newRow("last row of all") << "empty" << QStringList{"empty"};
    QTest::newRow("long word and short words")
        << "many-to-many a g"
        << QStringList{"customer", " tags", "  → tag", "tag", " owners", "  → customer"};
    QTest::newRow("only one missing")
        << "missing entity 99" << QStringList{"tag", " lost", "  → missing entity 99"};
}

void tst_project_tree_filter::filter()
{
    QFETCH(QString, filter);
    QFETCH(QStringList, expected);
    watched_model m(treeShop());
    QVERIFY(!m.rows.isFiltered());
    QVERIFY(m.rows.setFilter(filter));
    QVERIFY(m.rows.isFiltered());
    QCOMPARE(m.names(), expected);
    QCOMPARE(m.rows.entityCount(), 4);
    QVERIFY(m.rows.setFilter(QStringLiteral(" \t")));
    QVERIFY(!m.rows.isFiltered());
    QCOMPARE(m.names().size(), 24);
}

void tst_project_tree_filter::filterOfUnicode_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("found");
    QTest::newRow("as it is") << QString("Größe") << true;
    QTest::newRow("upper case") << QString("GRÖßE") << true;
    QTest::newRow("accent apart") << QString("Gro\u0308ße") << true;
    QTest::newRow("without accent") << QString("Große") << false;
    QTest::newRow("other script") << QString("ЦЕНА") << true;
    QTest::newRow("beyond the first plane") << QString("😀") << true;
    QTest::newRow("another of the same page") << QString("😁") << false;
}

void tst_project_tree_filter::filterOfUnicode()
{
    QFETCH(QString, filter);
    QFETCH(bool, found);
    model_builder b;
    b.entity(1, "Größe").property(11, "цена😀", "int");
    watched_model m(b.get());
    m.rows.setFilter(filter);
    QCOMPARE(m.rows.rowCount(), found ? 1 : 0);
}

void tst_project_tree_filter::filterOfValues()
{
    const auto mood = std::make_shared<model::enumeration>(5);
    mood->setName("mood");
    mood->setValues({{"merry", 1}, {"gloomy", 2}});
    model_builder b;
    auto guest = b.entity(1, "guest");
    guest.property(11, "state", "").enumeration(mood);
    guest.property(12, "name", "QString");
    watched_model m(b.get());
    m.rows.setFilter("gloomy");
    QCOMPARE(m.names(), (QStringList{"guest", " state"}));
    m.rows.setFilter("merry guest");
    QCOMPARE(m.names(), (QStringList{"guest", " state"}));
    m.rows.setFilter("sad");
    QCOMPARE(m.names(), QStringList());
}

void tst_project_tree_filter::manyWords()
{
    watched_model m(treeShop());
    m.rows.setFilter(QStringList(31, "t").join(' ') + " title");
    QCOMPARE(m.names(), (QStringList{"country", " title"}));
    // Beyond what is looked for a word has no say.
    m.rows.setFilter(QStringList(31, "t").join(' ') + " title nowhere");
    QCOMPARE(m.names(), (QStringList{"country", " title"}));
    m.rows.setFilter(QStringList(30, "t").join(' ') + " title nowhere");
    QCOMPARE(m.names(), QStringList());
}

void tst_project_tree_filter::filterTellsWhatToOpen()
{
    watched_model m(treeShop());
    QVERIFY(!m.rows.isMatchBelow({}));
    QVERIFY(!m.rows.isMatchBelow(m.at({1})));
    QVERIFY(!m.rows.isMatchBelow(m.at({1, 4})));
    m.rows.setFilter("customer_tag");
    QVERIFY(m.rows.isMatchBelow(m.at({0})));
    QVERIFY(m.rows.isMatchBelow(m.at({0, 0})));
    QVERIFY(!m.rows.isMatchBelow(m.at({0, 0, 0})));
    m.rows.setFilter("lat tag");
    QCOMPARE(m.rows.rowCount(), 0);
    m.rows.setFilter("people");
    QVERIFY(m.rows.isMatchBelow(m.at({0})));
    QVERIFY(!m.rows.isMatchBelow(m.at({0, 0}))); // it is the property that matches
    m.rows.setFilter("t_country");
    QVERIFY(!m.rows.isMatchBelow(m.at({0})));
    QVERIFY(!m.rows.isMatchBelow(m.at({0, 2})));
}

void tst_project_tree_filter::equalRowsAreNoReset()
{
    watched_model m(treeShop());
    const QSignalSpy resets(&m.rows, &QAbstractItemModel::modelReset);
    QVERIFY(m.rows.setFilter("titl"));
    QVERIFY(!m.rows.setFilter("title"));
    QCOMPARE(resets.count(), 1);
    QVERIFY(m.rows.setFilter("t"));
    QVERIFY(m.rows.setFilter(""));
    QCOMPARE(resets.count(), 3);
}

void tst_project_tree_filter::filterWhileTextsAreCollected()
{
    model_builder b;
    for (long i = 1; i <= 1000; ++i) {
        b.entity(i, QStringLiteral("e%1").arg(i));
    }
    for (int turns = 0; turns < 15; ++turns) { // none, some, all are collected
        watched_model m(b.get());
        for (int i = 0; i < turns; ++i) {
            QCoreApplication::processEvents();
        }
        m.rows.setFilter("00");
        QCOMPARE(m.rows.rowCount(), 10);
        QCOMPARE(m.at({9}).data().toString(), "e1000");
    }
}

void tst_project_tree_filter::projectTakesTheFilter()
{
    watched_model m(treeShop(), QStringLiteral("title"));
    QCOMPARE(m.names(), (QStringList{"country", " title"}));
    QVERIFY(m.rows.isFiltered());
    model_builder b;
    b.entity(8, "subtitle");
    m.rows.setProject(b.get(), QStringLiteral("title"));
    QCOMPARE(m.names(), QStringList{"subtitle"});
    m.rows.setProject(b.get(), {});
    QVERIFY(!m.rows.isFiltered());
}

QTEST_MAIN(tst_project_tree_filter)
#include "tst_project_tree_filter.moc"
