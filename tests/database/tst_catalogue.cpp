#include "database/catalogue/catalogue.h"
#include "database/facts/facts.h"
#include "database/facts/normal_form.h"

#include <QTest>

#include <functional>

using namespace database;

namespace {

using changing = std::function<void(table &)>;

/// A shop's orders on MariaDB, as the statements declare them.
catalogue orders()
{
    table customer;
    customer.name = QStringLiteral("customer");
    customer.columns = {{QStringLiteral("id"), QStringLiteral("INTEGER"), true, true},
                        {QStringLiteral("name"), QStringLiteral("VARCHAR(80)"), false, false}};
    customer.key = primary_key{{}, {{QStringLiteral("id"), 0}}};
    table placed;
    placed.name = QStringLiteral("placed");
    placed.columns = {{QStringLiteral("customer_id"), QStringLiteral("INTEGER"), false, false},
                      {QStringLiteral("note"), QStringLiteral("TEXT"), false, false}};
    placed.indexes = {{QStringLiteral("fk_customer"), {{QStringLiteral("customer_id"), 0}}, false, true},
                      {QStringLiteral("idx_note"), {{QStringLiteral("note"), 255}}, false, false},
                      {QStringLiteral("note"), {{QStringLiteral("note"), 0}}, true, false}};
    placed.foreignKeys = {{QStringLiteral("fk_customer"),
                           {QStringLiteral("customer_id")},
                           QStringLiteral("customer"),
                           {QStringLiteral("id")}}};
    catalogue held;
    held.tables[customer.name] = customer;
    held.tables[placed.name] = placed;
    return held;
}

const facts & mariadb()
{
    return *factsOf(u"mariadb");
}

} // namespace

class tst_catalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyObjectHasALine()
    {
        QCOMPARE(linesOf(orders()), (QStringList{
                                        "column customer.id INTEGER NOT NULL counted",
                                        "column customer.name VARCHAR(80)",
                                        "column placed.customer_id INTEGER",
                                        "column placed.note TEXT",
                                        "foreign placed (customer_id) -> customer (id) fk_customer",
                                        "index placed (customer_id) fk_customer",
                                        "index placed (note(255)) idx_note",
                                        "key customer (id)",
                                        "table customer",
                                        "table placed",
                                        "unique placed (note) note",
                                    }));
    }
    void sequencesAndTriggersHaveLines()
    {
        catalogue held;
        held.tables["a"].name = QStringLiteral("a");
        held.tables["a"].sequences = {{QStringLiteral("a_id_seq"), QStringLiteral("id")}};
        held.tables["a"].triggers = {{QStringLiteral("count_a"), {}}};
        held.sequences = {{QStringLiteral("alone"), {}}};
        QCOMPARE(linesOf(held),
                 (QStringList{"sequence a_id_seq", "sequence alone", "table a", "trigger count_a"}));
    }
    void nothingHasNoLines() { QCOMPARE(linesOf({}), QStringList()); }
    void copiesAreIndependent()
    {
        const catalogue first = orders();
        catalogue second = first;
        QVERIFY(first == second);
        second.tables["placed"].columns.pop_back();
        QVERIFY(first != second);
        QCOMPARE(first.tables.at("placed").columns.size(), 2U);
    }
    void tellsWhatOneHasMore()
    {
        const catalogue first = orders();
        catalogue second = first;
        second.tables["customer"].columns[1].notNull = true;
        second.tables["placed"].indexes.pop_back();
        const catalogue_difference found = difference(first, second);
        QCOMPARE(found.onlyFirst,
                 (QStringList{"column customer.name VARCHAR(80)", "unique placed (note) note"}));
        QCOMPARE(found.onlySecond, QStringList{"column customer.name VARCHAR(80) NOT NULL"});
        QVERIFY(!found.isEmpty());
    }
    void theOrderOfIndexesIsNoDifference()
    {
        const catalogue first = orders();
        catalogue second = first;
        std::swap(second.tables["placed"].indexes[0], second.tables["placed"].indexes[2]);
        QVERIFY(difference(first, second).isEmpty());
    }
    void normalFormHasTheTypesOfTheServer()
    {
        const catalogue shown = normalForm(orders(), mariadb());
        QCOMPARE(shown.tables.at("customer").columns[0].type, QString("int(11)"));
        QCOMPARE(shown.tables.at("customer").columns[1].type, QString("varchar(80)"));
        QCOMPARE(shown.tables.at("placed").columns[1].type, QString("text"));
    }
    void normalFormOfNormalFormIsTheSame()
    {
        const catalogue once = normalForm(orders(), mariadb());
        QVERIFY(normalForm(once, mariadb()) == once);
    }
    void sqliteNumbersWhatHasNoName()
    {
        catalogue held;
        table & owner = held.tables["a"];
        owner.name = QStringLiteral("a");
        owner.columns = {{QStringLiteral("code"), QStringLiteral("TEXT"), true, false},
                         {QStringLiteral("x"), QStringLiteral("TEXT"), false, false}};
        owner.key = primary_key{{}, {{QStringLiteral("code"), 0}}};
        owner.indexes = {{{}, {{QStringLiteral("x"), 0}}, true, false}};
        const facts & sqlite = *factsOf(u"sqlite");
        QVERIFY(linesOf(normalForm(held, sqlite)).contains("unique a (x) sqlite_autoindex_a_2"));
        owner.columns[0].type = QStringLiteral("integer");
        QVERIFY(linesOf(normalForm(held, sqlite)).contains("unique a (x) sqlite_autoindex_a_1"));
    }
    void normalFormHidesNoDifference_data()
    {
        QTest::addColumn<QString>("database");
        QTest::addColumn<changing>("same");  // what is said in another way
        QTest::addColumn<changing>("other"); // what is something else, though it looks much like that
        const auto row = [](const char * name, const char * key, const changing & same,
                            const changing & other) { QTest::newRow(name) << QString(key) << same << other; };
        const auto type = [](const char * words) {
            return [words](table & of) { of.columns[0].type = QString::fromLatin1(words); };
        };
        const auto indexes = [](const QList<database::index> & of) {
            return [of](table & owner) { owner.indexes = of; };
        };
        const auto target = [](const char * column) {
            return [column](table & of) { of.foreignKeys[0].targetColumns[0] = QString::fromLatin1(column); };
        };
        const changing nothing = [](table &) {};
        row("another number", "mariadb", type("int(11)"), type("BIGINT"));
        row("a sign", "mariadb", type("int(11)"), type("INTEGER UNSIGNED"));
        row("a length, MariaDB", "mariadb", nothing, type("VARCHAR(81)"));
        row("a length, PostgreSQL", "postgresql", type("integer"), type("VARCHAR(81)"));
        row("digits", "postgresql", type("int4"), type("NUMERIC(10, 3)"));
        row("a type of its own", "sqlite", nothing, type("INT"));
        row("a null", "postgresql", nothing, [](table & of) { of.columns[0].notNull = true; });
        row("a counter", "postgresql", nothing, [](table & of) { of.columns[0].counted = true; });
        row("an index more", "sqlite", indexes({{"sqlite_autoindex_a_1", {{"x", 0}}, true}}),
            indexes({{{}, {{"x", 0}}, true}, {{}, {{"x", 0}}, true}}));
        row("a unique of another column", "sqlite", indexes({{"sqlite_autoindex_a_1", {{"x", 0}}, true}}),
            indexes({{{}, {{"y", 0}}, true}}));
        row("an index that is not unique", "mariadb", indexes({{{}, {{"x", 0}}, true, true}}),
            indexes({{{}, {{"x", 0}}, false}}));
        row("an index of a beginning", "mariadb", indexes({{{}, {{"x", 0}}, true, true}}),
            indexes({{{}, {{"x", 10}}, true}}));
        row("another target", "sqlite", target("X"), target("y"));
        row("another table", "sqlite", nothing,
            [](table & of) { of.foreignKeys[0].target = QStringLiteral("b"); });
    }
    /// What brings two ways of saying the same together keeps apart what is not the same.
    void normalFormHidesNoDifference()
    {
        QFETCH(const QString, database);
        QFETCH(const changing, same);
        QFETCH(const changing, other);
        const auto changed = [&database](const changing & change) {
            catalogue held;
            table & owner = held.tables["a"];
            owner.name = QStringLiteral("a");
            owner.columns = {{QStringLiteral("x"), QStringLiteral("INTEGER"), false, false},
                             {QStringLiteral("y"), QStringLiteral("INTEGER"), false, false}};
            owner.indexes = {{QString(), {{QStringLiteral("x"), 0}}, true}};
            owner.foreignKeys = {{{}, {QStringLiteral("y")}, QStringLiteral("a"), {QStringLiteral("x")}}};
            change(owner);
            return normalForm(held, *factsOf(database));
        };
        const catalogue usual = changed([](table &) {});
        QVERIFY(changed(same) == usual);
        QVERIFY(!(changed(other) == usual));
        QVERIFY(linesOf(changed(other)) != linesOf(usual));
    }
    void normalFormNamesTargetsAsTheyAre()
    {
        catalogue held;
        table & owner = held.tables["a"];
        owner.name = QStringLiteral("a");
        owner.columns = {{QStringLiteral("Id"), QStringLiteral("INTEGER"), true, false}};
        owner.foreignKeys = {{{}, {QStringLiteral("Id")}, QStringLiteral("A"), {QStringLiteral("id")}}};
        QVERIFY(linesOf(normalForm(held, *factsOf(u"sqlite"))).contains("foreign a (Id) -> A (Id)"));
    }
};

QTEST_APPLESS_MAIN(tst_catalogue)
#include "tst_catalogue.moc"
