#include "support/project_support.h"

#include "model/property_type.h"

#include <QTest>

using support::entityOf;
using support::errorOf;
using support::json;
using support::projectOf;
using support::propertyOf;
using support::textOf;

class tst_model : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnNames_data()
    {
        QTest::addColumn<QByteArray>("columnName");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("expected");
        QTest::newRow("first") << QByteArray("a|b") << 0 << "a";
        QTest::newRow("second") << QByteArray("a|b") << 1 << "b";
        QTest::newRow("whole text") << QByteArray("a|b") << -1 << "a|b";
        QTest::newRow("past the end") << QByteArray("a|b") << 2 << "";
        QTest::newRow("below -1") << QByteArray("a|b") << -2 << "";
        QTest::newRow("empty section") << QByteArray("a||c") << 1 << "";
        QTest::newRow("single") << QByteArray("a") << 0 << "a";
        QTest::newRow("none") << QByteArray("") << 0 << "";
        QTest::newRow("none, whole") << QByteArray("") << -1 << "";
    }
    void columnNames()
    {
        QFETCH(QByteArray, columnName);
        QFETCH(int, index);
        const auto p = single("\"type\": \"int\", \"columnName\": \"" + columnName + '"');
        QCOMPARE(propertyOf(*p, 0, 0)->getColumnName(), QString::fromUtf8(columnName));
        QTEST(propertyOf(*p, 0, 0)->getColumnName(index), "expected");
    }

    void columnCounts_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<int>("expected");
        QTest::newRow("no type") << QByteArray("\"columnName\": \"a|b\"") << 0;
        QTest::newRow("empty column name") << QByteArray("\"type\": \"int\"") << 1;
        QTest::newRow("two sections") << QByteArray("\"type\": \"int\", \"columnName\": \"a|b\"") << 2;
        QTest::newRow("enumeration") << QByteArray(json("'enumeration': 1")) << 1;
        QTest::newRow("one-to-one") << relation("one-to-one") << 1;
        QTest::newRow("one-to-many") << relation("one-to-many") << 0;
        QTest::newRow("many-to-one") << relation("many-to-one") << 1;
        QTest::newRow("many-to-one over two") << relation("many-to-one") + ", \"columnName\": \"a|b\"" << 2;
        QTest::newRow("many-to-many") << relation("many-to-many") + ", \"columnName\": \"a|b\"" << 0;
    }
    void columnCounts()
    {
        QFETCH(QByteArray, fields);
        const auto p = single(fields);
        QVERIFY(p);
        QTEST(propertyOf(*p, 0, 0)->getColumnNameCount(), "expected");
    }

    void typeIsNullWithoutAny()
    {
        QVERIFY(!propertyOf(*single("\"columnName\": \"a\""), 0, 0)->getType());
        QVERIFY(propertyOf(*single(json("'enumeration': 1")), 0, 0)->getType());
        QVERIFY(propertyOf(*single(relation("many-to-many")), 0, 0)->getType());
    }

    void primitiveTypes_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<QStringList>("expected"); // for -1, 0, 1 and 7
        QTest::newRow("one type for all")
            << QByteArray("\"type\": \"int\"") << QStringList{"int", "int", "int", "int"};
        QTest::newRow("a list") << QByteArray(json("'type': ['int', 'QString']"))
                                << QStringList{"int|QString", "int", "QString", ""};
        QTest::newRow("a list of one")
            << QByteArray(json("'type': ['int']")) << QStringList{"int", "int", "int", "int"};
        QTest::newRow("enumeration") << QByteArray(json("'enumeration': 1"))
                                     << QStringList{"state", "state", "state", "state"};
        QTest::newRow("relationship")
            << relation("many-to-one") << QStringList{"long|QString", "long", "QString", ""};
        QTest::newRow("relationship to an entity without identifier")
            << relation("many-to-one", 3) << QStringList{"", "", "", ""};
    }
    void primitiveTypes()
    {
        QFETCH(QByteArray, fields);
        const auto p = single(fields);
        const auto type = propertyOf(*p, 0, 0)->getType();
        QTEST((QStringList{type->getPrimitiveType(-1), type->getPrimitiveType(0), type->getPrimitiveType(1),
                           type->getPrimitiveType(7)}),
              "expected");
    }

    void chainsOfIdentifiersLeadToTheLastKey()
    {
        const auto p = projectOf(textOf(chain()));
        QVERIFY(p);
        const auto holder = propertyOf(*p, 0, 1);
        QCOMPARE(holder->getType()->getPrimitiveType(0), QString("QString"));
        QCOMPARE(holder->getForceSqlType(), QString("CHAR(3) BINARY"));
        QVERIFY(holder->isString(true, -1));
        QVERIFY(holder->isString(false, 0));
        QVERIFY(!holder->isNumber(true, -1));
        // A type that stands nearer wins.
        propertyOf(*p, 1, 0)->setForceSqlType("CHAR(9)");
        QCOMPARE(holder->getForceSqlType(), QString("CHAR(9)"));
        holder->setForceSqlType("CHAR(1)");
        QCOMPARE(holder->getForceSqlType(), QString("CHAR(1)"));
    }

    void circlesEnd()
    {
        const auto p = std::make_shared<model::project>(1);
        for (long id = 1; id <= 2; ++id) {
            const auto entity = std::make_shared<model::entity>(id, "e");
            const auto property = std::make_shared<model::property>(id, "p");
            const auto relation = std::make_shared<model::relationship>(id);
            relation->setEntityTargetId(3 - id);
            property->setRelation(relation);
            property->setIdentifier(true);
            entity->addProperty(property);
            p->addEntity(entity);
        }
        const auto property = propertyOf(*p, 0, 0);
        QCOMPARE(property->getType()->getPrimitiveType(0), QString());
        QCOMPARE(property->getForceSqlType(), QString());
        QVERIFY(!property->getType()->getEnumeration());
        QVERIFY(!property->isString(true, -1));
    }

    void enumerations()
    {
        const auto p = projectOf(
            textOf(json("{'id': 1, 'name': 'a', 'properties': [{'id': 1, 'name': 'k', 'identifier': true, "
                        "'enumeration': 1}]}, {'id': 2, 'name': 'b', 'properties': [") +
                       QByteArray(json("{'id': 2, 'name': 'r', ")) + relation("many-to-one", 1) +
                       json("}, {'id': 3, 'name': 't', 'type': 'int'}]}"),
                   json("{'id': 1, 'name': 'state', 'values': [{'name': 'open', 'value': -1}]}")));
        QVERIFY(p);
        const auto own = propertyOf(*p, 0, 0)->getType()->getEnumeration();
        QVERIFY(own);
        QCOMPARE(own->getName(), QString("state"));
        QCOMPARE(own->getValues().size(), 1);
        QCOMPARE(own->getValues().at(0).number, -1LL);
        QCOMPARE(propertyOf(*p, 1, 0)->getType()->getEnumeration(), own);
        QCOMPARE(propertyOf(*p, 1, 0)->getType()->getPrimitiveType(-1), QString("state"));
        QVERIFY(!propertyOf(*p, 1, 1)->getType()->getEnumeration());
        QVERIFY(!propertyOf(*p, 0, 0)->isNumber(true, -1));
        QVERIFY(!propertyOf(*p, 0, 0)->isNumber(true, 0));
        QVERIFY(!propertyOf(*p, 0, 0)->isString(true, -1));
    }

    void numbers_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<bool>("whole");
        QTest::addColumn<bool>("first");
        for (const char * type : {"short", "int", "long", "long long", "unsigned short", "unsigned int",
                                  "unsigned long", "unsigned long long", "qint8", "quint8", "qint16",
                                  "quint16", "qint32", "quint32", "qint64", "quint64"}) {
            QTest::newRow(type) << "\"type\": \"" + QByteArray(type) + '"' << true << true;
        }
        for (const char * type : {"bool", "zk_bool", "float", "double", "long double", "QString", "Int"}) {
            QTest::newRow(type) << "\"type\": \"" + QByteArray(type) + '"' << false << false;
        }
        QTest::newRow("two columns") << QByteArray("\"type\": \"int\", \"columnName\": \"a|b\"") << false
                                     << true;
        QTest::newRow("counted up, two columns")
            << QByteArray(json("'type': 'int', 'columnName': 'a|b', 'autoIncrement': true")) << true << true;
        QTest::newRow("not counted up")
            << QByteArray(json("'type': 'int', 'autoIncrement': false")) << false << true;
        QTest::newRow("no type") << QByteArray("\"columnName\": \"a\"") << false << false;
        QTest::newRow("relationship") << relation("many-to-one") << false << false;
    }
    void numbers()
    {
        QFETCH(QByteArray, fields);
        const auto p = single(fields);
        QVERIFY(p);
        const auto property = propertyOf(*p, 0, 0);
        QTEST(property->isNumber(true, -1), "whole");
        QTEST(property->isNumber(false, -1), "whole");
        QTEST(property->isNumber(true, 0), "first");
        QTEST(property->isNumber(false, 0), "first");
    }

    void strings_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<bool>("whole");
        QTest::addColumn<bool>("first");
        for (const char * type : {"std::string", "std::wstring", "QString", "QUuid", "zk::ZkDateNeutral",
                                  "zk::ZkTimeNeutral", "zk::ZkDateTimeNeutral"}) {
            QTest::newRow(type) << "\"type\": \"" + QByteArray(type) + '"' << true << true;
        }
        for (const char * type : {"int", "QDate", "QDateTime", "QByteArray", "char"}) {
            QTest::newRow(type) << "\"type\": \"" + QByteArray(type) + '"' << false << false;
        }
        QTest::newRow("mixed") << QByteArray("\"type\": [\"QString\", \"int\"], \"columnName\": \"a|b\"")
                               << false << true;
        QTest::newRow("all") << QByteArray("\"type\": [\"QString\", \"QUuid\"], \"columnName\": \"a|b\"")
                             << true << true;
        QTest::newRow("no type") << QByteArray("\"columnName\": \"a\"") << false << false;
        QTest::newRow("relationship to a mixed key") << relation("many-to-one") << false << false;
    }
    void strings()
    {
        QFETCH(QByteArray, fields);
        const auto p = single(fields);
        QVERIFY(p);
        const auto property = propertyOf(*p, 0, 0);
        QTEST(property->isString(true, -1), "whole");
        QTEST(property->isString(false, -1), "whole");
        QTEST(property->isString(true, 0), "first");
    }

    void identifierAndLists()
    {
        const auto p = projectOf(
            textOf(json("{'id': 1, 'name': 'a', 'properties': [ {'id': 1, 'name': 'x', 'type': 'int', "
                        "'transient': true}, {'id': 2, 'name': 'k', 'type': 'int', 'identifier': true}, "
                        "{'id': 3, 'name': 'r', 'relationship': {'id': 7, 'type': 'many-to-one', 'target': "
                        "1}}, {'id': 4, 'name': 's', 'transient': true, 'relationship': {'id': 5, 'type': "
                        "'many-to-one', 'target': 1}}, {'id': 5, 'name': 't', 'relationship': {'id': 6, "
                        "'type': 'one-to-many', 'target': 1, 'inverse': 3}}]}, {'id': 2, 'name': 'b'}")));
        QVERIFY(p);
        const auto a = entityOf(*p, 0);
        QCOMPARE(a->getPropertyId(true), propertyOf(*p, 0, 1));
        QVERIFY(!entityOf(*p, 1)->getPropertyId(true));
        const auto properties = a->getListOfProperty(true, true, false);
        QCOMPARE(properties->count(), 5L);
        QCOMPARE(properties->getKeyByIndex(0), 1L);
        QCOMPARE(properties->getKeyByIndex(4), 5L);
        QCOMPARE(a->getListOfProperty(false, true, false)->count(), 4L);
        QCOMPARE(a->getListOfProperty(true, false, false)->count(), 3L);
        const auto relations = a->getListOfRelation();
        QCOMPARE(relations->count(), 2L);
        QCOMPARE(relations->getKeyByIndex(0), 7L);
        QCOMPARE(relations->getKeyByIndex(1), 6L);
        QCOMPARE(relations->getByIndex(1)->getInverse(), propertyOf(*p, 0, 2));
        QVERIFY(!relations->getByIndex(0)->getInverse());
        QCOMPARE(relations->getByIndex(0)->getEntityTarget(), a);
        QCOMPARE(relations->getByIndex(0)->getProperty(), propertyOf(*p, 0, 2));
        QCOMPARE(propertyOf(*p, 0, 2)->getEntity(), a);
        QCOMPARE(propertyOf(*p, 0, 2)->getEntityId(), 1L);
    }

    void relationshipColumns()
    {
        const auto named = single(relation("many-to-one") + ", \"columnName\": \"x|y\"");
        const auto r = propertyOf(*named, 0, 0)->getRelation();
        QCOMPARE(r->getColumnNameCount(), 2);
        QCOMPARE(r->getColumnName(1), QString("y"));
        const auto plain = single(relation("one-to-one"));
        QCOMPARE(propertyOf(*plain, 0, 0)->getRelation()->getColumnNameCount(), 1);
        QCOMPARE(propertyOf(*plain, 0, 0)->getRelation()->getColumnName(0), QString("p"));
        for (const char * type : {"one-to-many", "many-to-many"}) {
            const auto none = single(relation(type) + ", \"columnName\": \"x|y\"");
            QCOMPARE(propertyOf(*none, 0, 0)->getRelation()->getColumnNameCount(), 0);
            QCOMPARE(propertyOf(*none, 0, 0)->getRelation()->getColumnName(0), QString());
        }
    }

    void keys()
    {
        const auto p = projectOf(textOf(json(
            "{'id': 1, 'name': 'a', 'properties': [{'id': 1, 'name': 'x'}, {'id': 2, 'key': 'kk', 'name': "
            "'y'}]}, {'id': 2, 'key': 'ek', 'name': 'b', 'properties': [{'id': 3, 'name': 'z'}]}")));
        QCOMPARE(entityOf(*p, 0)->getKey(), QString("a"));
        QCOMPARE(entityOf(*p, 1)->getKey(), QString("ek"));
        QCOMPARE(propertyOf(*p, 0, 0)->getKey(), QString("a.x"));
        QCOMPARE(propertyOf(*p, 0, 1)->getKey(), QString("kk"));
        QCOMPARE(propertyOf(*p, 1, 0)->getKey(), QString("ek.z"));
    }

    void releaseDropsTheContents()
    {
        const auto p = projectOf(textOf(chain()));
        const auto entity = entityOf(*p, 0);
        p->setLocation("/somewhere");
        p->release();
        QCOMPARE(p->getListOfAllEntities()->count(), 0L);
        QCOMPARE(p->getName(), QString("shop"));
        QCOMPARE(p->getLocation(), QString("/somewhere"));
        QVERIFY(!entity->getProject());
    }

private:
    static QByteArray relation(const char * type, long target = 2)
    {
        return "\"relationship\": {\"type\": \"" + QByteArray(type) + json("', 'target': ") +
               QByteArray::number(qlonglong(target)) + "}";
    }
    /// A property "p" with `fields`, beside an entity 2 with a key of two columns and one without key.
    static std::shared_ptr<model::project> single(const QByteArray & fields)
    {
        return projectOf(
            textOf(json("{'id': 1, 'name': 'e', 'properties': [{'name': 'p', ") + fields +
                       json("}]}, {'id': 2, 'name': 'f', 'properties': [{'name': 'k', 'identifier': true, "
                            "'columnName': 'a|b', 'type': ['long', 'QString']}]}, {'id': 3, 'name': 'g'}"),
                   json("{'id': 1, 'name': 'state'}")));
    }
    static QByteArray chain()
    {
        return json("{'id': 1, 'name': 'a', 'properties': [ {'name': 'id', 'type': 'int', 'identifier': "
                    "true}, {'name': 'r', 'relationship': {'type': 'many-to-one', 'target': 2}}]}, {'id': 2, "
                    "'name': 'b', 'properties': [ {'name': 'k', 'identifier': true, 'relationship': {'type': "
                    "'one-to-one', 'target': 3}}]}, {'id': 3, 'name': 'c', 'properties': [ {'name': 'code', "
                    "'identifier': true, 'type': 'QString', 'forceSqlType': 'CHAR(3) BINARY'}] }");
    }
};

QTEST_APPLESS_MAIN(tst_model)
#include "tst_model.moc"
