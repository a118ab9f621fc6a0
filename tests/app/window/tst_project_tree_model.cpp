// What the tree says about a model.

#include "watched_model.h"

#include <QFont>
#include <QIcon>
#include <QImage>
#include <QTest>

using app::project_tree_model;
using support::model_builder;
using support::rowsOf;
using support::treeShop;
using support::watched_model;

namespace {

QImage iconAt(const QModelIndex & index)
{
    return index.data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
}

} // namespace

class tst_project_tree_model : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsInModelOrder();
    void headers();
    void textsForScreenReaders();
    void toolTipOfEntity();
    void toolTipOfProperty_data();
    void toolTipOfProperty();
    void toolTipOfRelationship();
    void namesAreNoMarkUp();
    void longNamesAreWholeInToolTips();
    void icons();
    void whatIsNotStoredIsQuiet();
    void nothingToShow();
    void missingObjectsInLists();
    void flagsOfRows();
    void placesAreFoundAgain();
    void nearestRowOfHiddenPlace();
    void objectsOfRows();
};

void tst_project_tree_model::rowsInModelOrder()
{
    const watched_model m(treeShop());
    QCOMPARE(rowsOf(m.rows), (QStringList{
                                 "country |  | t_country",
                                 " code | QString | code",
                                 " title | QString | title",
                                 " people | one-to-many → customer | (no column)",
                                 "  → customer | one-to-many, inverse of home | ",
                                 "customer |  | customer",
                                 " id | long long | customer_id",
                                 " name | QString | name",
                                 " place | double|float | lat, lon",
                                 " home | many-to-one → country | country_code",
                                 "  → country | many-to-one | ",
                                 " tags | many-to-many → tag | (no column)",
                                 "  → tag | many-to-many, inverse of owners | link table customer_tag",
                                 " cache | QVariant | (transient)",
                                 " state | mood | state",
                                 " bare | (no type) | (no column)",
                                 "tag |  | t_tag",
                                 " owners | many-to-many → customer | (no column)",
                                 "  → customer | many-to-many | ",
                                 " twin | one-to-one → tag | twin",
                                 "  → tag | one-to-one | ",
                                 " lost | many-to-one → missing entity 99 | lost",
                                 "  → missing entity 99 | many-to-one | ",
                                 "empty |  | empty",
                             }));
    QCOMPARE(m.rows.entityCount(), 4);
}

void tst_project_tree_model::headers()
{
    const watched_model m(treeShop());
    QCOMPARE(m.rows.columnCount(), 3);
    const QStringList expected = {"Name", "Type", "In the database", ""};
    for (int column = 0; column < 4; ++column) {
        QCOMPARE(m.rows.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(), expected.at(column));
    }
    QCOMPARE(m.rows.headerData(2, Qt::Horizontal, Qt::ToolTipRole).toString(), "In the database");
    QCOMPARE(m.rows.headerData(0, Qt::Vertical, Qt::DisplayRole), QVariant());
}

void tst_project_tree_model::textsForScreenReaders()
{
    const watched_model m(treeShop());
    QCOMPARE(rowsOf(m.rows, Qt::AccessibleTextRole),
             (QStringList{
                 "entity country |  | t_country",
                 " code, primary key, not null | QString | code",
                 " title, unique | QString | title",
                 " people | one-to-many to customer | (no column)",
                 "  relationship to customer | one-to-many, inverse of home | ",
                 "entity customer |  | customer",
                 " id, primary key | long long | customer_id",
                 " name, indexed, not null | QString | name",
                 " place | double|float | lat, lon",
                 " home | many-to-one to country | country_code",
                 "  relationship to country | many-to-one | ",
                 " tags | many-to-many to tag | (no column)",
                 "  relationship to tag | many-to-many, inverse of owners | link table customer_tag",
                 " cache, transient | QVariant | (transient)",
                 " state | mood | state",
                 " bare | (no type) | (no column)",
                 "entity tag |  | t_tag",
                 " owners | many-to-many to customer | (no column)",
                 "  relationship to customer | many-to-many | ",
                 " twin | one-to-one to tag | twin",
                 "  relationship to tag | one-to-one | ",
                 " lost | many-to-one to missing entity 99 | lost",
                 "  relationship to missing entity 99 | many-to-one | ",
                 "entity empty |  | empty",
             }));
}

void tst_project_tree_model::toolTipOfEntity()
{
    const watched_model m(treeShop());
    QCOMPARE(m.toolTip({0}), "<qt><b>country</b><br/>Table: t_country<br/>Id: 1<br/>Version: 7<br/>"
                             "Soft-delete column: gone_at<br/>Primary key: code (QString)</qt>");
    QCOMPARE(m.toolTip({3}),
             "<qt><b>empty</b><br/>Table: empty<br/>Id: 4<br/>Version: 1<br/>Primary key: none</qt>");
    QCOMPARE(m.at({3}, 2).data(Qt::ToolTipRole).toString(), m.toolTip({3}));
}

void tst_project_tree_model::toolTipOfProperty_data()
{
    QTest::addColumn<QList<int>>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("key") << QList<int>{1, 0}
                         << "Type: long long<br/>In the database: customer_id<br/>primary key<br/>Id: 21";
    QTest::newRow("unique") << QList<int>{0, 1}
                            << "Type: QString<br/>In the database: title<br/>unique<br/>Id: 12";
    QTest::newRow("index") << QList<int>{1, 1}
                           << "Type: QString<br/>In the database: name<br/>SQL type: VARCHAR(80)<br/>"
                              "indexed, not null<br/>Id: 22";
    QTest::newRow("columns") << QList<int>{1, 2}
                             << "Type: double|float<br/>In the database: lat, lon<br/>Id: 23";
    QTest::newRow("no column") << QList<int>{1, 4}
                               << "Type: many-to-many → tag<br/>In the database: no column<br/>Id: 25";
    QTest::newRow("transient") << QList<int>{1, 5}
                               << "Type: QVariant<br/>Transient: it is not stored in the database<br/>"
                                  "transient<br/>Id: 26";
    QTest::newRow("no type") << QList<int>{1, 7}
                             << "Type: (no type)<br/>In the database: no column<br/>Id: 28";
}

void tst_project_tree_model::toolTipOfProperty()
{
    QFETCH(QList<int>, path);
    QFETCH(QString, expected);
    const watched_model m(treeShop());
    const QString name = m.at(path).data().toString();
    QVERIFY(!name.isEmpty());
    QCOMPARE(m.toolTip(path), QStringLiteral("<qt><b>%1</b><br/>%2</qt>").arg(name, expected));
}

void tst_project_tree_model::toolTipOfRelationship()
{
    const watched_model m(treeShop());
    QCOMPARE(m.toolTip({1, 4, 0}),
             "<qt><b>→ tag</b><br/>Relationship: many-to-many<br/>Inverse of: owners<br/>"
             "Link table: customer_tag</qt>");
    QCOMPARE(m.toolTip({2, 2, 0}), "<qt><b>→ missing entity 99</b><br/>Relationship: many-to-one</qt>");
}

void tst_project_tree_model::namesAreNoMarkUp()
{
    model_builder b;
    b.entity(1, "<img src='x'> & %1 %2").table("<b>").property(11, "%1<i>", "QList<int>");
    const watched_model m(b.get());
    QCOMPARE(m.at({0}).data().toString(), "<img src='x'> & %1 %2");
    QCOMPARE(m.toolTip({0}), "<qt><b>&lt;img src='x'&gt; &amp; %1 %2</b><br/>Table: &lt;b&gt;<br/>Id: 1<br/>"
                             "Version: 1<br/>Primary key: none</qt>");
    QCOMPARE(m.toolTip({0, 0}), "<qt><b>%1&lt;i&gt;</b><br/>Type: QList&lt;int&gt;<br/>"
                                "In the database: %1&lt;i&gt;<br/>Id: 11</qt>");
}

void tst_project_tree_model::longNamesAreWholeInToolTips()
{
    const QString name = QString("ab") + QString("😀é").repeated(400) + QString("word ").repeated(40);
    model_builder b;
    b.entity(1, name);
    const watched_model m(b.get());
    QCOMPARE(m.at({0}).data().toString(), name);
    QString shown = m.toolTip({0}).section(QStringLiteral("</b>"), 0, 0).mid(7);
    const QChar mayBreak(0x200b);
    for (const QString & part : shown.split(mayBreak)) {
        QVERIFY(part.section(' ', 0, 0).size() <= 61); // one more where a pair of surrogates stays together
        QVERIFY(part.isValidUtf16());
    }
    QCOMPARE(shown.count(mayBreak), 20);
    QCOMPARE(shown.remove(mayBreak), name);
}

void tst_project_tree_model::icons()
{
    Q_INIT_RESOURCE(tree);
    const watched_model m(treeShop());
    const QList<QImage> images = {iconAt(m.at({0})), iconAt(m.at({0, 0})), iconAt(m.at({0, 1})),
                                  iconAt(m.at({0, 2, 0}))};
    for (const QImage & image : images) {
        QVERIFY(!image.isNull());
        QCOMPARE(images.count(image), 1);
    }
    QCOMPARE(iconAt(m.at({0, 2})), images.at(2)); // a property, whatever lies below it
    for (const QList<int> & path : {QList<int>{0}, {0, 0}, {0, 1}, {0, 2, 0}}) {
        QCOMPARE(m.at(path, 1).data(Qt::DecorationRole), QVariant());
        QCOMPARE(m.at(path, 2).data(Qt::DecorationRole), QVariant());
    }
}

void tst_project_tree_model::whatIsNotStoredIsQuiet()
{
    const watched_model m(treeShop());
    const auto isQuiet = [&m](const QList<int> & path, int column) {
        return m.at(path, column).data(project_tree_model::quiet_role).toBool();
    };
    for (int column = 0; column < 3; ++column) {
        QVERIFY(isQuiet({1, 5}, column));
        QVERIFY(m.at({1, 5}, column).data(Qt::FontRole).value<QFont>().italic());
        QVERIFY(!isQuiet({1, 1}, column));
        QVERIFY(!m.at({1, 1}, column).data(Qt::FontRole).isValid());
        QCOMPARE(isQuiet({1, 4}, column), column == 2); // many-to-many: no column
        QVERIFY(!isQuiet({1, 4, 0}, column));           // its link table
        QVERIFY(!isQuiet({1}, column));
    }
}

void tst_project_tree_model::nothingToShow()
{
    watched_model m(nullptr);
    QVERIFY(!m.rows.hasProject());
    QCOMPARE(m.rows.rowCount(), 0);
    m.rows.setProject(treeShop(), {});
    QVERIFY(m.rows.hasProject());
    QCOMPARE(m.rows.rowCount(), 4);
    const auto withoutList = std::make_shared<model::project>(1);
    withoutList->setListOfAllEntities(nullptr);
    m.rows.setProject(withoutList, {});
    QVERIFY(m.rows.hasProject());
    QCOMPARE(m.rows.rowCount(), 0);
    m.rows.setProject(treeShop(), {});
    m.rows.setProject(nullptr, {});
    QCOMPARE(m.rows.rowCount(), 0);
    QVERIFY(!m.rows.hasEntity(1));
}

void tst_project_tree_model::missingObjectsInLists()
{
    const std::shared_ptr<model::project> shop = treeShop();
    shop->getListOfAllEntities()->insert(50, nullptr);
    shop->getEntityById(4)->getListOfProperty(true, true, false)->insert(60, nullptr);
    const std::shared_ptr<model::property> last = std::make_shared<model::property>(61, "last");
    last->setType(QStringLiteral("int"));
    shop->getEntityById(4)->addProperty(last);
    watched_model m(shop);
    QCOMPARE(m.names().mid(23), (QStringList{"empty", " ", " last"}));
    QCOMPARE(m.at({3, 0}).data(Qt::ToolTipRole), QVariant());
    QVERIFY(m.rows.setFilter("last"));
    QCOMPARE(m.names(), (QStringList{"empty", " last"}));
}

void tst_project_tree_model::flagsOfRows()
{
    const watched_model m(treeShop());
    const Qt::ItemFlags row = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    QCOMPARE(m.rows.flags(m.at({0})), row);
    QCOMPARE(m.rows.flags(m.at({0, 0})), row | Qt::ItemNeverHasChildren);
    QCOMPARE(m.rows.flags(m.at({0, 2})), row);
    QCOMPARE(m.rows.flags(m.at({0, 2, 0})), row | Qt::ItemNeverHasChildren);
    QCOMPARE(m.rows.flags({}), Qt::ItemFlags(Qt::NoItemFlags));
}

void tst_project_tree_model::placesAreFoundAgain()
{
    watched_model m(treeShop());
    const QList<QList<int>> paths = {{0}, {3}, {1, 0}, {1, 7}, {2, 0, 0}, {2, 2}, {2, 2, 0}};
    QList<project_tree_model::place> places;
    for (const QList<int> & path : paths) {
        places << m.rows.placeOf(m.at(path, 2));
        QCOMPARE(m.rows.indexOf(places.constLast()), m.at(path));
    }
    QCOMPARE(places.at(0), (project_tree_model::place{1, 0, false}));
    QCOMPARE(places.at(3), (project_tree_model::place{2, 28, false}));
    QCOMPARE(places.at(4), (project_tree_model::place{3, 32, true}));
    QCOMPARE(m.rows.placeOf({}), project_tree_model::place());
    m.rows.setFilter("lost");
    QCOMPARE(m.rows.indexOf(places.at(6)), m.at({0, 0, 0}));
}

void tst_project_tree_model::nearestRowOfHiddenPlace()
{
    watched_model m(treeShop());
    QCOMPARE(m.rows.indexOf({1, 12, true}), m.at({0, 1})); // it has no relationship
    QCOMPARE(m.rows.indexOf({1, 999, false}), m.at({0}));
    QCOMPARE(m.rows.indexOf({999, 12, false}), QModelIndex());
    QCOMPARE(m.rows.indexOf({}), QModelIndex());
    model_builder b;
    b.entity(0, "without an id");
    QCOMPARE(watched_model(b.get()).rows.indexOf({}), QModelIndex());
    m.rows.setFilter("title");
    QCOMPARE(m.rows.indexOf({1, 13, true}), m.at({0}));
    QCOMPARE(m.rows.indexOf({2, 0, false}), QModelIndex());
    QVERIFY(m.rows.hasEntity(2));
    QVERIFY(!m.rows.hasEntity(999));
}

void tst_project_tree_model::objectsOfRows()
{
    const std::shared_ptr<model::project> shop = treeShop();
    const watched_model m(shop);
    const std::shared_ptr<model::entity> customer = shop->getEntityById(2);
    const std::shared_ptr<model::property> home = customer->getPropertyById(24);
    for (const QList<int> & path : {QList<int>{1}, {1, 3}, {1, 3, 0}}) {
        QCOMPARE(m.rows.entityAt(m.at(path)), customer);
        QCOMPARE(m.rows.propertyAt(m.at(path)), path.size() > 1 ? home : nullptr);
        QCOMPARE(m.rows.relationAt(m.at(path)), path.size() > 1 ? home->getRelation() : nullptr);
    }
    QCOMPARE(m.rows.relationAt(m.at({1, 1})), nullptr);
    QCOMPARE(m.rows.entityAt({}), nullptr);
    QCOMPARE(m.rows.propertyAt({}), nullptr);
}

QTEST_MAIN(tst_project_tree_model)
#include "tst_project_tree_model.moc"
