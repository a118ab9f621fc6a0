// What changed between two states of a project, object by object.

#include "support/project_support.h"
#include "support/random_models.h"

#include "model/model_difference.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QTest>

#include <algorithm>
#include <ctime>
#include <limits>
#include <map>
#include <set>

using model::change_kind;
using model::model_change;
using model::object_kind;
using support::json;
using support::projectOf;
using support::textOf;

namespace {

QString told(const QVariant & value)
{
    const QByteArray list = QJsonDocument::fromVariant(QVariantList{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

/// "renamed property 101 mail of entity 10 customer: columnName null -> "m"".
QString told(const model_change & change)
{
    QString line = model::changeName(change.change);
    line += QStringLiteral(" %1 %2 %3")
                .arg(model::kindName(change.object.kind))
                .arg(change.object.id)
                .arg(change.object.name);
    for (const model::named_object & owner : change.owners) {
        line += QStringLiteral(" of %1 %2 %3").arg(model::kindName(owner.kind)).arg(owner.id).arg(owner.name);
    }
    return change.field.isEmpty() ? line
                                  : line + QStringLiteral(": %1 %2 -> %3")
                                               .arg(change.field, told(change.before), told(change.after));
}

QStringList told(const model::project & before, const model::project & after)
{
    QStringList lines;
    for (const model_change & change : model::difference(before, after)) {
        lines << told(change);
    }
    return lines;
}

QStringList toldOf(const QByteArray & before, const QByteArray & after)
{
    const auto a = projectOf(before);
    const auto b = projectOf(after);
    return a && b ? told(*a, *b) : QStringList{QStringLiteral("a text was refused")};
}

const char * const Shop =
    "{'id': 10, 'key': 'k', 'name': 'customer', 'tableName': 't_customer', 'version': 3,"
    " 'softDeleteColumn': 'gone', 'metaData': {'a': 'x', 'b': true, 'c': 7}, 'properties': ["
    "{'id': 100, 'name': 'id', 'columnName': 'a|b', 'type': ['int', 'long'], "
    "'identifier': true},"
    "{'id': 101, 'key': 'm', 'name': 'mail', 'type': 'QString', 'forceSqlType': 'CITEXT'},"
    "{'id': 102, 'name': 'state', 'enumeration': 4},"
    "{'id': 103, 'name': 'bare'},"
    "{'id': 104, 'name': 'tags', 'relationship': {'id': 3, 'type': 'many-to-many', "
    "'target': 11, 'inverse': 112, 'extraTable': 'x', 'foreignKey': 'c', "
    "'foreignKeyOwner': 't'}}]},"
    "{'id': 11, 'name': 'tag', 'version': 1, 'properties': ["
    "{'id': 110, 'name': 'number', 'type': 'int', 'identifier': true, 'autoIncrement': "
    "false},"
    "{'id': 111, 'name': 'rank', 'type': 'int'},"
    "{'id': 112, 'name': 'owners', 'relationship': {'id': 4, 'type': 'many-to-many', "
    "'target': 10, 'inverse': 104}}]}";
const char * const States = "{'id': 4, 'name': 'state', 'values': [{'name': 'open', 'value': 1}]},"
                            "{'id': 5, 'name': 'kind', 'values': []}";

QByteArray shop()
{
    return textOf(json(Shop), json(States));
}

/// What a dump says of each object, by its kind and id, without what it holds.
std::map<QString, QJsonObject> objectsOf(const model::project & project)
{
    const auto named = [](const char * kind, const QJsonObject & object) {
        return QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(object["id"].toInteger());
    };
    std::map<QString, QJsonObject> objects;
    const QJsonObject root = QJsonDocument::fromJson(storage::text_form::write(project)).object();
    const QJsonArray enumerationList = root["enumerations"].toArray();
    for (const QJsonValue & enumeration : enumerationList) {
        objects[named("enumeration", enumeration.toObject())] = enumeration.toObject();
    }
    const QJsonArray valueList = root["entities"].toArray();
    for (const QJsonValue & value : valueList) {
        QJsonObject entity = value.toObject();
        const QJsonArray heldList = entity["properties"].toArray();
        for (const QJsonValue & held : heldList) {
            QJsonObject property = held.toObject();
            const QJsonObject relationship = property["relationship"].toObject();
            if (!relationship.isEmpty()) {
                objects[named("relationship", relationship)] = relationship;
            }
            property.remove("relationship");
            objects[named("property", property)] = property;
        }
        entity.remove("properties");
        entity.remove("version");
        objects[named("entity", entity)] = entity;
    }
    return objects;
}

} // namespace

class tst_model_difference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothing()
    {
        QCOMPARE(toldOf(shop(), shop()), QStringList());
        QCOMPARE(toldOf(textOf(""), textOf("")), QStringList());
        const QByteArray all =
            support::bytesOf(QStringLiteral(KORVANE_SOURCE_DIR "/tests/host/every_field.json"));
        QCOMPARE(toldOf(all, all), QStringList());
        QVERIFY(projectOf(all));
    }
    void whatIsNoChange()
    {
        QCOMPARE(toldOf(shop(), shop().replace("\"version\": 3", "\"version\": 4")), QStringList());
        QCOMPARE(toldOf(shop(), shop().replace("\"shop\"", "\"store\"")), QStringList());
        QCOMPARE(toldOf(textOf(R"({"id": 1, "name": "a"}, {"id": 2, "name": "b"})"),
                        textOf(R"({"id": 2, "name": "b"}, {"id": 1, "name": "a"})")),
                 QStringList());
        const QByteArray metaData = textOf(json("{'id': 1, 'name': 'a', 'metaData': {'x': 1, 'y': 2}}"));
        QCOMPARE(toldOf(metaData, textOf(json("{'id': 1, 'name': 'a', 'metaData': {'y': 2, 'x': 1}}"))),
                 QStringList());
    }

    void fields_data()
    {
        QTest::addColumn<QByteArray>("part");
        QTest::addColumn<QByteArray>("other");
        QTest::addColumn<QStringList>("changes");
        const auto row = [](const char * name, const char * part, const char * other,
                            const QStringList & changes) {
            QTest::newRow(name) << json(part) << json(other) << changes;
        };
        row("entity key", "'key': 'k', ", "", {"changed entity 10 customer: key \"k\" -> null"});
        row("entity name", "'customer'", "'client'",
            {"renamed entity 10 client: name \"customer\" -> \"client\""});
        row("entity table", "'t_customer'", "'t_client'",
            {"renamed entity 10 customer: tableName \"t_customer\" -> \"t_client\""});
        row("soft delete", "'softDeleteColumn': 'gone',", "",
            {"changed entity 10 customer: softDeleteColumn \"gone\" -> null"});
        row("meta-data, another text", "'a': 'x'", "'a': 'y'",
            {"changed entity 10 customer: metaData.a \"x\" -> \"y\""});
        row("meta-data, another type", "'b': true", "'b': 1",
            {"changed entity 10 customer: metaData.b true -> 1"});
        row("meta-data, another number", "'c': 7", "'c': 7.5",
            {"changed entity 10 customer: metaData.c 7 -> 7.5"});
        row("meta-data, gone and new", "'b': true", "'d': true",
            {"changed entity 10 customer: metaData.b true -> null",
             "changed entity 10 customer: metaData.d null -> true"});
        row("meta-data, empty text", "'a': 'x'", "'a': ''",
            {"changed entity 10 customer: metaData.a \"x\" -> \"\""});

        const QString mail = "property 101 mail of entity 10 customer: ";
        row("property key", "'key': 'm'", "'key': 'n'", {"changed " + mail + "key \"m\" -> \"n\""});
        row("property name", "'mail'", "'post'",
            {"renamed property 101 post of entity 10 customer: name \"mail\" -> \"post\""});
        row("column", "'name': 'mail',", "'name': 'mail', 'columnName': 'e_mail',",
            {"renamed " + mail + "columnName null -> \"e_mail\""});
        row("type", "'type': 'QString'", "'type': 'int'",
            {"changed " + mail + "type \"QString\" -> \"int\""});
        row("types", "['int', 'long']", "['int', 'int']",
            {"changed property 100 id of entity 10 customer: type [\"int\",\"long\"] -> [\"int\",\"int\"]"});
        row("no type", "'type': 'QString',", "", {"changed " + mail + "type \"QString\" -> null"});
        row("enumeration", "'enumeration': 4", "'enumeration': 5",
            {"changed property 102 state of entity 10 customer: enumeration 4 -> 5"});
        row("enumeration for a type", "'type': 'QString'", "'enumeration': 4",
            {"changed " + mail + "type \"QString\" -> null", "changed " + mail + "enumeration null -> 4"});
        row("forced type", "CITEXT", "TEXT", {"changed " + mail + "forceSqlType \"CITEXT\" -> \"TEXT\""});
        row("identifier", "'type': 'int', 'identifier': true", "'type': 'int'",
            {"changed property 110 number of entity 11 tag: identifier true -> false"});
        row("counted", "'autoIncrement': false", "'autoIncrement': true",
            {"changed property 110 number of entity 11 tag: autoIncrement false -> true"});
        row("counted by default", ", 'autoIncrement': false", "",
            {"changed property 110 number of entity 11 tag: autoIncrement false -> null"});
        row("null", "'name': 'mail',", "'name': 'mail', 'allowNull': false,",
            {"changed " + mail + "allowNull true -> false"});
        row("unique", "'name': 'mail',", "'name': 'mail', 'unique': true,",
            {"changed " + mail + "unique false -> true"});
        row("index", "'name': 'mail',", "'name': 'mail', 'index': true,",
            {"changed " + mail + "index false -> true"});
        row("transient", "'name': 'mail',", "'name': 'mail', 'transient': true,",
            {"changed " + mail + "transient false -> true"});

        const QString tags = "relationship 3 tags of property 104 tags of entity 10 customer: ";
        row("relationship type", "'many-to-many', 'target': 11", "'one-to-many', 'target': 11",
            {"changed " + tags + "type \"many-to-many\" -> \"one-to-many\""});
        row("target and inverse", "'target': 11, 'inverse': 112", "'target': 10",
            {"changed " + tags + "target 11 -> 10", "changed " + tags + "inverse 112 -> null"});
        row("link table", "'extraTable': 'x'", "'extraTable': 'y'",
            {"renamed " + tags + "extraTable \"x\" -> \"y\""});
        row("link column", "'foreignKey': 'c'", "'foreignKey': 'd'",
            {"renamed " + tags + "foreignKey \"c\" -> \"d\""});
        row("other link column", "'foreignKeyOwner': 't'", "'foreignKeyOwner': 'u'",
            {"renamed " + tags + "foreignKeyOwner \"t\" -> \"u\""});
        row("another relationship", "'relationship': {'id': 3", "'relationship': {'id': 9",
            {"removed relationship 3 tags of property 104 tags of entity 10 customer",
             "added relationship 9 tags of property 104 tags of entity 10 customer"});

        row("enumeration name", "'id': 4, 'name': 'state'", "'id': 4, 'name': 'status'",
            {"renamed enumeration 4 status: name \"state\" -> \"status\""});
        row("value", "'value': 1", "'value': 2",
            {"changed enumeration 4 state: values [{\"name\":\"open\",\"value\":1}] -> "
             "[{\"name\":\"open\",\"value\":2}]"});
        row("name of a value", "'open'", "'new'",
            {"changed enumeration 4 state: values [{\"name\":\"open\",\"value\":1}] -> "
             "[{\"name\":\"new\",\"value\":1}]"});
        row("first value", "'kind', 'values': []", "'kind', 'values': [{'name': 'a', 'value': 0}]",
            {"changed enumeration 5 kind: values [] -> [{\"name\":\"a\",\"value\":0}]"});

        row("property added", "{'id': 111,", "{'id': 119, 'name': 'new', 'type': 'int'}, {'id': 111,",
            {"added property 119 new of entity 11 tag"});
        row("property with a relationship added", "{'id': 111,",
            "{'id': 119, 'name': 'new', 'relationship': {'id': 8, 'type': 'many-to-one', 'target': 10}}, "
            "{'id': 111,",
            {"added property 119 new of entity 11 tag"});
        row("property removed", "{'id': 111, 'name': 'rank', 'type': 'int'},", "",
            {"removed property 111 rank of entity 11 tag"});
        row("relationship removed",
            ", 'relationship': {'id': 3, 'type': 'many-to-many', 'target': 11, 'inverse': 112, 'extraTable': "
            "'x', 'foreignKey': 'c', 'foreignKeyOwner': 't'}",
            ", 'type': 'int'",
            {"changed property 104 tags of entity 10 customer: type null -> \"int\"",
             "removed relationship 3 tags of property 104 tags of entity 10 customer"});
        row("relationship added", "'name': 'bare'",
            "'name': 'bare', 'relationship': {'id': 8, 'type': 'many-to-one', 'target': 11}",
            {"added relationship 8 bare of property 103 bare of entity 10 customer"});
        row("entity added", "{'id': 11,",
            "{'id': 12, 'name': 'new', 'properties': [{'id': 120, 'name': 'p'}]}, {'id': 11,",
            {"added entity 12 new"});
        row("enumeration added", ",{'id': 5, 'name': 'kind', 'values': []}",
            ",{'id': 5, 'name': 'kind', 'values': []},{'id': 6, 'name': 'e'}", {"added enumeration 6 e"});
        row("enumeration removed", ",{'id': 5, 'name': 'kind', 'values': []}", "",
            {"removed enumeration 5 kind"});
    }
    void fields()
    {
        QFETCH(QByteArray, part);
        QFETCH(QByteArray, other);
        QFETCH(QStringList, changes);
        QCOMPARE(shop().count(part), 1);
        QByteArray changed = shop();
        changed.replace(part, other);
        QCOMPARE(toldOf(shop(), changed), changes);
        // What an import counts versions up by is the same.
        const auto before = projectOf(shop());
        const auto after = projectOf(changed);
        bool isSame = true;
        for (const auto & e : after->getListOfAllEntities()->values()) {
            const auto former = before->getEntityById(e->getId());
            isSame = isSame && former && model::isSame(*former, *e);
        }
        QCOMPARE(isSame,
                 changes.constFirst().section(QLatin1Char(' '), 1, 1) == QLatin1String("enumeration"));
    }

    void swappedNames()
    {
        QCOMPARE(toldOf(textOf(json("{'id': 1, 'name': 'a'}, {'id': 2, 'name': 'b'}")),
                        textOf(json("{'id': 1, 'name': 'b'}, {'id': 2, 'name': 'a'}"))),
                 QStringList(
                     {"renamed entity 1 b: name \"a\" -> \"b\"", "renamed entity 2 a: name \"b\" -> \"a\""}));
    }
    void anOtherOrder()
    {
        const auto entity = [](const char * properties) {
            return textOf(json("{'id': 1, 'name': 'e', 'properties': [") + json(properties) + "]}");
        };
        const QByteArray abc =
            entity("{'id': 1, 'name': 'a'}, {'id': 2, 'name': 'b'}, {'id': 3, 'name': 'c'}");
        QCOMPARE(
            toldOf(abc, entity("{'id': 3, 'name': 'c'}, {'id': 1, 'name': 'a'}, {'id': 2, 'name': 'b'}")),
            QStringList("changed entity 1 e: order [\"a\",\"b\",\"c\"] -> [\"c\",\"a\",\"b\"]"));
        // Those at the end may be in their places.
        QCOMPARE(
            toldOf(abc, entity("{'id': 2, 'name': 'b'}, {'id': 1, 'name': 'a'}, {'id': 3, 'name': 'c'}")),
            QStringList("changed entity 1 e: order [\"a\",\"b\",\"c\"] -> [\"b\",\"a\",\"c\"]"));
        // One more and one less between them is no other order.
        QCOMPARE(
            toldOf(abc, entity("{'id': 4, 'name': 'd'}, {'id': 1, 'name': 'a'}, {'id': 3, 'name': 'c'}")),
            QStringList({"added property 4 d of entity 1 e", "removed property 2 b of entity 1 e"}));
        QCOMPARE(
            toldOf(abc, entity("{'id': 3, 'name': 'c'}, {'id': 4, 'name': 'd'}, {'id': 1, 'name': 'x'}")),
            QStringList({"changed entity 1 e: order [\"a\",\"c\"] -> [\"c\",\"x\"]",
                         "added property 4 d of entity 1 e",
                         "renamed property 1 x of entity 1 e: name \"a\" -> \"x\"",
                         "removed property 2 b of entity 1 e"}));
    }
    void aMovedProperty()
    {
        const auto model = [](const char * first, const char * second) {
            return textOf(json("{'id': 1, 'name': 'a', 'properties': [") + json(first) +
                          json("]}, {'id': 2, 'name': 'b', 'properties': [") + json(second) + "]}");
        };
        const char * const moved = "{'id': 5, 'name': 'p', 'relationship': {'id': 6, 'type': 'many-to-one', "
                                   "'target': 1}}";
        QCOMPARE(toldOf(model(moved, ""), model("", moved)),
                 QStringList("moved property 5 p of entity 2 b: entity 1 -> 2"));
        QCOMPARE(toldOf(model(moved, ""),
                        model("", "{'id': 5, 'name': 'q', 'relationship': {'id': 6, 'type': 'many-to-one', "
                                  "'target': 2}}")),
                 QStringList({"moved property 5 q of entity 2 b: entity 1 -> 2",
                              "renamed property 5 q of entity 2 b: name \"p\" -> \"q\"",
                              "changed relationship 6 q of property 5 q of entity 2 b: target 1 -> 2"}));
        // Properties that change places.
        QCOMPARE(toldOf(model("{'id': 5, 'name': 'p'}", "{'id': 6, 'name': 'q'}"),
                        model("{'id': 6, 'name': 'q'}", "{'id': 5, 'name': 'p'}")),
                 QStringList({"moved property 6 q of entity 1 a: entity 2 -> 1",
                              "moved property 5 p of entity 2 b: entity 1 -> 2"}));
    }
    void movedIntoANewEntityAndOutOfOneThatGoes()
    {
        const QByteArray before = textOf(json("{'id': 1, 'name': 'a', 'properties': [{'id': 5, 'name': 'p'}, "
                                              "{'id': 6, 'name': 'q'}]}"));
        const QByteArray after = textOf(json("{'id': 2, 'name': 'b', 'properties': [{'id': 7, 'name': 'r'}, "
                                             "{'id': 5, 'name': 'p', 'type': 'int'}]}"));
        QCOMPARE(
            toldOf(before, after),
            QStringList({"added entity 2 b", "moved property 5 p of entity 2 b: entity 1 -> 2",
                         "changed property 5 p of entity 2 b: type null -> \"int\"", "removed entity 1 a"}));
    }
    void aMovedRelationship()
    {
        const auto model = [](const char * p, const char * q) {
            return textOf(json("{'id': 1, 'name': 'a', 'properties': [{'id': 5, 'name': 'p'") + json(p) +
                          json("}, {'id': 6, 'name': 'q'") + json(q) + "}]}");
        };
        const char * const one = ", 'relationship': {'id': 6, 'type': 'many-to-one', 'target': 1}";
        QCOMPARE(toldOf(model(one, ""), model("", one)),
                 QStringList("moved relationship 6 q of property 6 q of entity 1 a: property 5 -> 6"));
        // To a property that is new, from one that goes.
        QCOMPARE(toldOf(textOf(json("{'id': 1, 'name': 'a', 'properties': [{'id': 5, 'name': 'p'") +
                               json(one) + "}]}"),
                        textOf(json("{'id': 1, 'name': 'a', 'properties': [{'id': 7, 'name': 'r'") +
                               json(one) + "}]}")),
                 QStringList({"added property 7 r of entity 1 a",
                              "moved relationship 6 r of property 7 r of entity 1 a: property 5 -> 7",
                              "removed property 5 p of entity 1 a"}));
    }
    /// An id stands for an object of its kind, whatever else has become of it.
    void anIdUsedAgain()
    {
        QCOMPARE(
            toldOf(
                textOf(json("{'id': 1, 'name': 'a', 'properties': [{'id': 1, 'name': 'p', 'type': 'int'}]}")),
                textOf(json("{'id': 1, 'name': 'z', 'properties': [{'id': 2, 'name': 'p', 'type': 'int'}]},"
                            "{'id': 2, 'name': 'b', 'properties': [{'id': 1, 'name': 'x'}]}"))),
            QStringList({"renamed entity 1 z: name \"a\" -> \"z\"", "added property 2 p of entity 1 z",
                         "added entity 2 b", "moved property 1 x of entity 2 b: entity 1 -> 2",
                         "renamed property 1 x of entity 2 b: name \"p\" -> \"x\"",
                         "changed property 1 x of entity 2 b: type \"int\" -> null"}));
    }
    void theOrderOfChanges()
    {
        const QByteArray before = textOf(json("{'id': 1, 'name': 'a'}, {'id': 2, 'name': 'b', 'properties': "
                                              "[{'id': 20, 'name': 'p'}, {'id': "
                                              "21, 'name': 'q'}]}, {'id': 3, 'name': 'c'}"),
                                         json("{'id': 1, 'name': 'd'}, {'id': 2, 'name': 'e'}"));
        const QByteArray after = textOf(json("{'id': 4, 'name': 'n'}, {'id': 3, 'name': 'c2'}, {'id': 2, "
                                             "'name': 'b2', 'properties': [{'id': "
                                             "22, 'name': 'r'}, {'id': 21, 'name': 'q2'}]}"),
                                        json("{'id': 3, 'name': 'f'}, {'id': 2, 'name': 'e2'}"));
        QCOMPARE(
            toldOf(before, after),
            QStringList({"added entity 4 n", "renamed entity 3 c2: name \"c\" -> \"c2\"",
                         "renamed entity 2 b2: name \"b\" -> \"b2\"", "added property 22 r of entity 2 b2",
                         "renamed property 21 q2 of entity 2 b2: name \"q\" -> \"q2\"",
                         "removed property 20 p of entity 2 b", "added enumeration 3 f",
                         "renamed enumeration 2 e2: name \"e\" -> \"e2\"", "removed entity 1 a",
                         "removed enumeration 1 d"}));
    }
    void metaDataInTheOrderOfTheKeys()
    {
        QByteArray values;
        QStringList expected;
        for (char key = 'a'; key < 'n'; ++key) {
            values += QByteArray(values.isEmpty() ? "" : ", ") + "\"" + key + "\": 1";
            expected << QString("changed entity 1 e: metaData.%1 null -> 1").arg(QLatin1Char(key));
        }
        QCOMPARE(toldOf(textOf(json("{'id': 1, 'name': 'e'}")),
                        textOf(json("{'id': 1, 'name': 'e', 'metaData': {") + values + "}}")),
                 expected);
    }
    void whatIsLeftOutIsNotAnEmptyText()
    {
        const auto changes =
            model::difference(*projectOf(textOf(json("{'id': 1, 'name': 'e', 'metaData': {'a': ''}}"))),
                              *projectOf(textOf(json("{'id': 1, 'name': 'e', 'tableName': 't'}"))));
        QCOMPARE(changes.size(), std::size_t(2));
        QVERIFY(!changes.at(0).before.isValid());
        QCOMPARE(changes.at(0).after, QVariant("t"));
        QCOMPARE(changes.at(1).before, QVariant(""));
        QVERIFY(!changes.at(1).after.isValid());
    }
    void otherPropertiesThatSayTheSame()
    {
        support::model_builder a;
        a.entity(1, "e").property(1, "p", "int");
        support::model_builder b;
        b.entity(1, "e").property(2, "p", "int");
        QVERIFY(!model::isSame(*a.entity(1), *b.entity(1)));
        QVERIFY(model::isSame(*a.entity(1), *a.entity(1)));
        b.entity(2, "e");
        a.entity(3, "e");
        QVERIFY(!model::isSame(*a.entity(3), *b.entity(2)));
    }
    void aListThatIsNotThere()
    {
        model::project empty(1);
        empty.setListOfAllEntities(nullptr);
        QCOMPARE(told(empty, *projectOf(textOf(json("{'id': 1, 'name': 'a'}")))),
                 QStringList("added entity 1 a"));
        const auto list = std::make_shared<model::project::list_of_entity>();
        list->insert(1, nullptr);
        model::project without(1);
        without.setListOfAllEntities(list);
        QCOMPARE(told(empty, without), QStringList());
        QCOMPARE(told(*projectOf(textOf(json("{'id': 1, 'name': 'a'}"))), empty),
                 QStringList("removed entity 1 a"));
    }

    /// The same by another way: objects whose text differs are those with changed or renamed fields.
    void whatIsToldIsWhatDiffersInTheText()
    {
        std::size_t changes = 0;
        for (unsigned seed = 1; seed <= 200; ++seed) {
            support::random_model model(seed);
            const auto before = model.project();
            QVERIFY(model::difference(*before, *model.project()).empty());
            model.change();
            const auto after = model.project();
            std::set<QString> expected;
            const auto former = objectsOf(*before);
            for (const auto & [name, object] : objectsOf(*after)) {
                const auto it = former.find(name);
                if (it != former.end() && it->second != object) {
                    expected.insert(name);
                }
            }
            std::set<QString> found;
            for (const model_change & change : model::difference(*before, *after)) {
                if (!change.field.isEmpty() && change.field != QLatin1String("order")) {
                    found.insert(QStringLiteral("%1 %2")
                                     .arg(model::kindName(change.object.kind))
                                     .arg(change.object.id));
                }
            }
            QCOMPARE(found, expected);
            changes += found.size();
        }
        QVERIFY(changes > 300);
    }

    void growsWithTheModel()
    {
        const auto large = [](int entities, bool isChanged) {
            support::model_builder model;
            for (int e = 1; e <= entities; ++e) {
                support::entity_builder entity = model.entity(e, QStringLiteral("e%1").arg(e));
                for (int p = 1; p <= 20; ++p) {
                    const long id = 20L * e + p;
                    entity.property(id, QStringLiteral("p%1").arg(p), p % 2 ? "int" : "QString")
                        .indexed(isChanged && e % 100 == 0 && p == 7);
                }
            }
            return model.get();
        };
        const auto timeOf = [&](int entities) {
            const auto before = large(entities, false);
            const auto after = large(entities, true);
            // Of the processor, not of the day: other work goes on beside this.
            double best = std::numeric_limits<double>::max();
            for (int i = 0; i < 3; ++i) {
                const std::clock_t begin = std::clock();
                const std::size_t found = model::difference(*before, *after).size();
                const double time = 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
                best = found == static_cast<std::size_t>(entities / 100) ? std::min(best, time) : -1;
            }
            return best;
        };
        const double small = timeOf(2500);
        const double fourTimes = timeOf(10000);
        QVERIFY(small >= 0 && fourTimes >= 0);
        qInfo("2,500 entities %.0f ms, 10,000 entities %.0f ms", small, fourTimes);
        // A look at every pair would take sixteen times as long.
        QVERIFY2(fourTimes < 10 * small + 50, "it takes too long");
    }
};

QTEST_GUILESS_MAIN(tst_model_difference)
#include "tst_model_difference.moc"
