#include "database/catalogue/catalogue.h"
#include "database/facts/facts.h"
#include "database/facts/normal_form.h"

#include <QTest>

using namespace database;

namespace {

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
        held.tables["a"].triggers = {{QStringLiteral("count_a")}};
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
