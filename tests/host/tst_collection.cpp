#include "zk/zk_collection.h"

#include <QTest>

class tst_collection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheOrderOfInsertion()
    {
        const collection list = abc();
        QCOMPARE(list.count(), 3L);
        QCOMPARE(list.getKeyByIndex(0), QString("c"));
        QCOMPARE(list.getKeyByIndex(1), QString("a"));
        QCOMPARE(list.getKeyByIndex(2), QString("b"));
        QCOMPARE(list.getByIndex(1), 1);
        QCOMPARE(list.values(), (std::vector<int>{3, 1, 2}));
    }
    void findsByKey()
    {
        const collection list = abc();
        QVERIFY(list.exist("b"));
        QVERIFY(!list.exist("B"));
        QCOMPARE(list.getByKey("b"), 2);
        QCOMPARE(list.getByKey("z"), 0);
    }
    void refusesAKeyThatIsThere()
    {
        collection list = abc();
        QVERIFY(!list.insert("a", 9));
        QCOMPARE(list.getByKey("a"), 1);
        QCOMPARE(list.count(), 3L);
        QVERIFY(list.insert("d", 9));
        QCOMPARE(list.getKeyByIndex(3), QString("d"));
    }
    void answersDefaultsOutside()
    {
        const collection list = abc();
        QCOMPARE(list.getByIndex(-1), 0);
        QCOMPARE(list.getByIndex(3), 0);
        QCOMPARE(list.getKeyByIndex(-1), QString());
        QCOMPARE(list.getKeyByIndex(3), QString());
    }
    void removalKeepsTheOrderOfTheOthers()
    {
        collection list = abc();
        QVERIFY(list.removeByKey("a"));
        QVERIFY(!list.removeByKey("a"));
        QCOMPARE(list.values(), (std::vector<int>{3, 2}));
        QVERIFY(!list.exist("a"));
        QVERIFY(list.insert("a", 7));
        QCOMPARE(list.values(), (std::vector<int>{3, 2, 7}));
    }
    void clears()
    {
        collection list = abc();
        QVERIFY(!list.isEmpty());
        list.clear();
        QVERIFY(list.isEmpty());
        QCOMPARE(list.count(), 0L);
        QVERIFY(!list.exist("a"));
    }
    void copiesAreIndependent()
    {
        collection list = abc();
        const collection copy = list;
        collection assigned;
        assigned.insert("x", 1);
        assigned = list;
        list.removeByKey("c");
        QCOMPARE(copy.count(), 3L);
        QVERIFY(assigned == copy);
        QVERIFY(!(list == copy));
    }
    void comparesOrderAndValues()
    {
        collection other;
        other.insert("a", 1);
        other.insert("c", 3);
        other.insert("b", 2);
        QVERIFY(!(abc() == other));
        collection changed = abc();
        QVERIFY(abc() == changed);
        changed.removeByKey("b");
        changed.insert("b", 4);
        QVERIFY(!(abc() == changed));
        changed.removeByKey("b");
        changed.insert("x", 2);
        QVERIFY(!(abc() == changed));
    }
    void staysFastWithManyKeys()
    {
        zk::ZkCollection<long, long> list;
        constexpr long n = 200000;
        for (long i = 0; i < n; ++i) {
            QVERIFY(list.insert(i * 7, i));
        }
        long sum = 0;
        for (long i = 0; i < n; ++i) {
            sum += list.getByKey(i * 7) - list.getByIndex(i);
        }
        QCOMPARE(sum, 0L);
    }

private:
    using collection = zk::ZkCollection<QString, int>;
    static collection abc()
    {
        collection list;
        list.insert("c", 3);
        list.insert("a", 1);
        list.insert("b", 2);
        return list;
    }
};

QTEST_APPLESS_MAIN(tst_collection)
#include "tst_collection.moc"
