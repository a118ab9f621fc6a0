#include "support/project_support.h"

#include "model/property_type.h"
#include "storage/model_check.h"

#include <QStringConverter>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

using support::entityOf;
using support::errorOf;
using support::json;
using support::projectOf;
using support::propertyOf;
using support::textOf;

namespace {

const QByteArray Max = "9223372036854775807";
const QByteArray MaxId = "9007199254740991"; // the largest number that JavaScript holds and counts on from

/// An entity "e" that has the property "p" with `fields`, beside the target entity 9 with property 90.
QByteArray withProperty(const QByteArray & fields)
{
    return textOf("{\"name\": \"e\", \"properties\": [{\"name\": \"p\"" +
                      (fields.isEmpty() ? "" : ", " + fields) +
                      json("}]}, {'id': 9, 'name': 'target', 'properties': [{'id': 90, 'name': 't'}]}"),
                  json("{'id': 1, 'name': 'state'}"));
}

QByteArray withRelation(const QByteArray & fields)
{
    return withProperty(json("'relationship': {") + fields + "}");
}

} // namespace

class tst_text_form : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyField()
    {
        const auto p = projectOf(textOf(
            json("{'id': 10, 'key': 'K', 'name': 'customer', 'tableName': 't_customer', 'version': 3, "
                 "'softDeleteColumn': 'deleted_at', 'metaData': {'t': 'true', 'b': true, 'i': -5, 'u': "
                 "18446744073709551615, 'd': 1.5}, 'properties': [ {'id': 100, 'key': 'PK', 'name': 'id', "
                 "'columnName': 'a|b', 'type': ['long', 'int'], 'identifier': true, 'autoIncrement': true, "
                 "'allowNull': false, 'unique': true, 'index': true, 'transient': true, 'forceSqlType': "
                 "'DECIMAL(12,2) NULL'}, {'id': 103, 'name': 'state', 'enumeration': 7}, {'id': 106, 'name': "
                 "'tags', 'relationship': {'id': 501, 'type': 'many-to-many', 'target': 10, 'inverse': 103, "
                 "'extraTable': 'link', 'foreignKey': 'c', 'foreignKeyOwner': 't'}}]}"),
            json("{'id': 7, 'name': 'order_state', 'values': [{'name': 'open', 'value': 0}, {'name': 'paid', "
                 "'value': -9223372036854775808}]}")));
        QVERIFY(p);
        QCOMPARE(p->getName(), QString("shop"));
        const auto e = entityOf(*p, 0);
        QCOMPARE(e->getId(), 10L);
        QCOMPARE(e->getKey(), QString("K"));
        QCOMPARE(e->getName(), QString("customer"));
        QCOMPARE(e->getTableName(), QString("t_customer"));
        QCOMPARE(e->getVersion(), 3L);
        QCOMPARE(e->getSoftDeleteColumn(), QString("deleted_at"));
        QCOMPARE(e->getMetaData("t"), QVariant("true"));
        QCOMPARE(e->getMetaData("b"), QVariant(true));
        QCOMPARE(e->getMetaData("i"), QVariant(-5LL));
        QCOMPARE(e->getMetaData("u"), QVariant(18446744073709551615ULL));
        QCOMPARE(e->getMetaData("d"), QVariant(1.5));
        const auto id = propertyOf(*p, 0, 0);
        QCOMPARE(id->getId(), 100L);
        QCOMPARE(id->getKey(), QString("PK"));
        QCOMPARE(id->getColumnName(), QString("a|b"));
        QCOMPARE(id->getType()->getCppTypes(), (QStringList{"long", "int"}));
        QCOMPARE(id->getForceSqlType(), QString("DECIMAL(12,2) NULL"));
        QVERIFY(id->isIdentifier() && id->getUnique() && id->isIndex() && id->isTransient());
        QVERIFY(!id->getAllowNull());
        QCOMPARE(id->getAutoIncrement(), std::optional<bool>(true));
        const auto values = propertyOf(*p, 0, 1)->getType()->getEnumeration()->getValues();
        QCOMPARE(values.size(), 2);
        QCOMPARE(values.at(0).name, QString("open"));
        QCOMPARE(values.at(1).number, std::numeric_limits<qint64>::min());
        const auto r = propertyOf(*p, 0, 2)->getRelation();
        QCOMPARE(r->getId(), 501L);
        QCOMPARE(r->getType(), model::relationship::many_to_many);
        QCOMPARE(r->getEntityTargetId(), 10L);
        QCOMPARE(r->getInverseId(), 103L);
        QCOMPARE(r->getExtraTable(), QString("link"));
        QCOMPARE(r->getForeignKey(), QString("c"));
        QCOMPARE(r->getForeignKeyOwner(), QString("t"));
    }
    void everyAbsentField()
    {
        const auto p = projectOf(json("{'format': 'korvane-project', 'formatVersion': 1, 'name': 'x'}"));
        QVERIFY(p);
        QCOMPARE(p->getListOfAllEntities()->count(), 0L);
        QCOMPARE(p->getListOfEnumeration()->count(), 0L);
        const auto q = projectOf(textOf(json("{'name': 'e', 'properties': [{'name': 'p'}]}, {'name': 'f'}"),
                                        json("{'name': 'n'}")));
        QVERIFY(q);
        const auto e = entityOf(*q, 0);
        QCOMPARE(e->getId(), 1L);
        QCOMPARE(entityOf(*q, 1)->getId(), 2L);
        QCOMPARE(e->getKey(), QString("e"));
        QCOMPARE(e->getVersion(), 1L);
        QCOMPARE(e->getTableName(), QString());
        QCOMPARE(e->getSoftDeleteColumn(), QString());
        QVERIFY(e->getAllMetaData().isEmpty());
        QCOMPARE(entityOf(*q, 1)->getListOfProperty(true, true, false)->count(), 0L);
        const auto property = propertyOf(*q, 0, 0);
        QCOMPARE(property->getId(), 1L);
        QVERIFY(!property->getType());
        QVERIFY(property->getAllowNull());
        QVERIFY(!property->isIdentifier() && !property->getUnique() && !property->isIndex() &&
                !property->isTransient() && !property->hasRelationship());
        QVERIFY(!property->getAutoIncrement());
        QVERIFY(q->getListOfEnumeration()->getByIndex(0)->getValues().isEmpty());
        QCOMPARE(q->getListOfEnumeration()->getByIndex(0)->getId(), 1L);
    }

    void errors_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");
        const QString head = "shop.json: ";
        const auto row = [&](const char * name, const QByteArray & text, const QString & expected) {
            QTest::newRow(name) << text << head + expected;
        };
        const auto root = [&](const char * name, const QByteArray & text, const QString & expected) {
            row(name, text, expected);
        };
        root("no object", "[]", "the project must be an object");
        root("no object but a number", "7", "the project must be an object");
        root("no format", json("{'formatVersion': 1, 'name': 'x'}"), "field 'format' is missing");
        root("other format", json("{'format': 'x', 'formatVersion': 1, 'name': 'x'}"),
             "field 'format' must be \"korvane-project\"");
        root("no version", json("{'format': 'korvane-project', 'name': 'x'}"),
             "field 'formatVersion' is missing");
        root("newer version",
             json("{'format': 'korvane-project', 'formatVersion': 2, 'name': 'x', 'new': 1}"),
             "field 'formatVersion': the text was written for a newer korvane (format 2; this one reads 1); "
             "update korvane");
        root("much newer version",
             json("{'format': 'korvane-project', 'formatVersion': 18446744073709551615, 'name': 'x'}"),
             "field 'formatVersion': the text was written for a newer korvane (format 18446744073709551615; "
             "this one reads 1); update korvane");
        root("older version", json("{'format': 'korvane-project', 'formatVersion': 0, 'name': 'x'}"),
             "field 'formatVersion' must be 1");
        root("version as text", json("{'format': 'korvane-project', 'formatVersion': '1', 'name': 'x'}"),
             "field 'formatVersion' must be 1");
        root("version 1.0", json("{'format': 'korvane-project', 'formatVersion': 1.0, 'name': 'x'}"),
             "field 'formatVersion' must be 1");
        root("no name", json("{'format': 'korvane-project', 'formatVersion': 1}"), "field 'name' is missing");
        root("name as number", json("{'format': 'korvane-project', 'formatVersion': 1, 'name': 5}"),
             "field 'name' must be a string");
        root("empty name", json("{'format': 'korvane-project', 'formatVersion': 1, 'name': ''}"),
             "field 'name' must not be empty");
        root("unknown field",
             json("{'format': 'korvane-project', 'formatVersion': 1, 'name': 'x', 'Name': 'y'}"),
             "unknown field 'Name'");
        root("entities no list",
             json("{'format': 'korvane-project', 'formatVersion': 1, 'name': 'x', 'entities': {}}"),
             "field 'entities' must be an array");
        root("field twice",
             json("{'format': 'korvane-project', 'name': 'a', 'formatVersion': 1, 'name': 'b'}"),
             "field 'name' is given twice");
        enumerationErrors(row);
        entityErrors(row);
        propertyErrors(row);
        relationshipErrors(row);
        idErrors(row);
    }
    void theFirstOfSeveralErrorsIsTold_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");
        // What is no JSON comes before what is no model, wherever it stands; then the fields of an object
        // before those of what lies in it, and the unknown ones last.
        const QByteArray properties = json("'properties': [{'name': 'p', 'index': 1}]");
        QTest::newRow("no JSON behind a wrong property")
            << textOf(json("{'name': 'e', ") + properties + json("}, {'name': nobody}"))
            << "shop.json: line 1, column 168: syntax error while parsing value - invalid literal; last "
               "read: '\"name\": no'";
        QTest::newRow("field twice behind a wrong property")
            << textOf(json("{'name': 'e', ") + properties + json(", 'id': 1, 'id': 1}"))
            << "shop.json: entities[0] 'e': field 'id' is given twice";
        QTest::newRow("entity's field behind its properties")
            << textOf(json("{'name': 'e', ") + properties + json(", 'version': -1}"))
            << "shop.json: entities[0] 'e': field 'version' must be an integer from 0 to " +
                   QString::fromLatin1(Max);
        QTest::newRow("name behind the properties")
            << textOf("{" + properties + json(", 'name': 'late'}"))
            << "shop.json: entities[0] 'late' / properties[0] 'p': field 'index' must be true or false";
        QTest::newRow("unknown field before a wrong property")
            << textOf(json("{'color': 1, 'name': 'e', ") + properties + "}")
            << "shop.json: entities[0] 'e' / properties[0] 'p': field 'index' must be true or false";
        QTest::newRow("a property that is none behind a good one")
            << textOf(json("{'name': 'e', 'properties': [{'name': 'p'}, 5, {'name': 'q', 'index': 1}]}"))
            << "shop.json: entities[0] 'e' / properties[1]: must be an object";
        QTest::newRow("of two unknown fields the first in the alphabet")
            << textOf(json("{'name': 'e', 'zone': 1, 'color': 1, 'width': 1}"))
            << "shop.json: entities[0] 'e': unknown field 'color'";
        QTest::newRow("of two wrong meta-data the first in the alphabet")
            << textOf(json("{'name': 'e', 'metaData': {'m': null, 'b': null, 'z': null, 'a': 1}}"))
            << "shop.json: entities[0] 'e': field 'metaData' 'b' must be a string, a number or a boolean";
        QTest::newRow("wrong format behind everything")
            << json("{'entities': [{'name': 'e', ") + properties +
                   json("}], 'formatVersion': 1, 'name': 'x', 'format': 'other'}")
            << "shop.json: field 'format' must be \"korvane-project\"";
    }
    void theFirstOfSeveralErrorsIsTold()
    {
        QFETCH(QByteArray, text);
        QTEST(errorOf(text), "expected");
    }
    void aFieldOfManyIsFoundTwice_data()
    {
        QTest::addColumn<int>("fields");
        for (const int fields : {1, 31, 32, 33, 100}) {
            QTest::addRow("%d", fields) << fields;
        }
    }
    void aFieldOfManyIsFoundTwice()
    {
        QFETCH(int, fields);
        QByteArray text;
        for (int i = 0; i < fields; ++i) {
            text += "\"k" + QByteArray::number(i) + "\": 1, ";
        }
        const auto withMeta = [](const QByteArray & meta) {
            return textOf(json("{'name': 'e', 'metaData': {") + meta + "}}");
        };
        const auto p = projectOf(withMeta(text.chopped(2)));
        QVERIFY(p);
        QCOMPARE(entityOf(*p, 0)->getAllMetaData().size(), fields);
        for (const int twice : {0, fields - 1}) {
            const QByteArray name = "k" + QByteArray::number(twice);
            QCOMPARE(errorOf(withMeta(text + "\"" + name + "\": 1")),
                     "shop.json: entities[0] 'e' / metaData: field '" + QString::fromLatin1(name) +
                         "' is given twice");
        }
    }
    void longNamesAreShortenedInMessages()
    {
        const QByteArray name(100, 'n');
        const QString told = "shop.json: entities[0] 'e': unknown field '" + QString(100, 'n');
        QCOMPARE(errorOf(textOf("{\"name\": \"e\", \"" + name + "\": 1}")), told + "'");
        QCOMPARE(errorOf(textOf("{\"name\": \"e\", \"" + name + "m\": 1}")), told + "...'");
    }
    void equalAndDifferentNamesAreKeptApart()
    {
        // More different names than are remembered, and each of them twice.
        constexpr int count = 10000;
        QByteArray properties;
        for (int i = 0; i < 2 * count; ++i) {
            properties += "{\"name\": \"p" + QByteArray::number(i % count) + "\", \"columnName\": \"\"},";
        }
        const auto p =
            projectOf(textOf(json("{'name': 'e', 'properties': [") + properties.chopped(1) + "]}"));
        QVERIFY(p);
        for (int i = 0; i < 2 * count; ++i) {
            QCOMPARE(propertyOf(*p, 0, i)->getName(), "p" + QString::number(i % count));
            QCOMPARE(propertyOf(*p, 0, i)->getColumnName(), QString());
        }
    }
    void errors()
    {
        QFETCH(QByteArray, text);
        QTEST(errorOf(text), "expected");
    }

    void syntaxErrors_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("place");
        QTest::newRow("empty") << QByteArray() << "line 1, column 1: ";
        QTest::newRow("no JSON") << QByteArray("hello") << "line 1, column 1: ";
        QTest::newRow("comma missing")
            << QByteArray("{\n  \"format\": \"x\"\n  \"name\": 1}") << "line 3, column ";
        QTest::newRow("comma too many") << QByteArray("{\"a\": [1,\n]}") << "line 2, column 1: ";
        QTest::newRow("cut") << QByteArray("{\"a\": [") << "line 1, column ";
        QTest::newRow("behind the end") << QByteArray("{}\n\n x") << "line 3, column 2: ";
        QTest::newRow("comment") << QByteArray("{} // x") << "line 1, column 4: ";
        QTest::newRow("NUL byte") << QByteArray("{\"a\":\n 1}\0 x", 12)
                                  << "line 2, column 4: contains a NUL byte, which JSON does not allow";
        QTest::newRow("NUL byte at the very beginning")
            << QByteArray(5, '\0') << "line 1, column 1: contains a NUL byte, which JSON does not allow";
        QTest::newRow("control character") << QByteArray("{\"a\": \"\n\"}") << "line 1, column ";
        QTest::newRow("no UTF-8") << QByteArray("{\"a\": \"\xff\"}") << "line 1, column ";
        QTest::newRow("half a surrogate pair") << QByteArray(json("{'a': '\\ud800'}")) << "line 1, column ";
        QTest::newRow("number beyond double") << QByteArray("{\"a\": 1e999}") << "line 1, column ";
        QTest::newRow("two-byte letters before")
            << QByteArray("{\"\u00e4\u00e4\": x}") << "line 1, column 8: ";
    }
    void syntaxErrors()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, place);
        const QString error = errorOf(text);
        QVERIFY2(error.startsWith("shop.json: " + place), qPrintable(error));
        QVERIFY2(!error.contains('\n') && !error.contains("json.exception"), qPrintable(error));
        // Of all but these the rest is the parser's.
        QCOMPARE(error.size() == 11 + place.size(), place.contains("NUL"));
    }
    void otherEncodingsAreNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("encoding");
        const QString text = QString::fromUtf8(textOf(""));
        const auto row = [&text](const char * name, QStringConverter::Encoding encoding, bool mark,
                                 const char * expected) {
            QStringEncoder encode(encoding,
                                  mark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
            QTest::newRow(name) << QByteArray(encode(text)) << expected;
        };
        for (const bool mark : {true, false}) {
            row(mark ? "UTF-16LE, mark" : "UTF-16LE", QStringConverter::Utf16LE, mark, "UTF-16");
            row(mark ? "UTF-16BE, mark" : "UTF-16BE", QStringConverter::Utf16BE, mark, "UTF-16");
            row(mark ? "UTF-32LE, mark" : "UTF-32LE", QStringConverter::Utf32LE, mark, "UTF-32");
            row(mark ? "UTF-32BE, mark" : "UTF-32BE", QStringConverter::Utf32BE, mark, "UTF-32");
        }
        QTest::newRow("mark alone") << QByteArray("\xff\xfe") << "UTF-16";
    }
    void bytesOfNoEncodingAreNotNamedOne_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("half of a mark") << QByteArray("\xff{", 2);
        QTest::newRow("other half of a mark") << QByteArray("{\xfe", 2);
        QTest::newRow("half of the other mark") << QByteArray("\xfe{", 2);
        QTest::newRow("other half of the other mark") << QByteArray("{\xff", 2);
        QTest::newRow("mark of four, cut") << QByteArray("{\0\xfe\xff", 4);
        QTest::newRow("mark of four, half") << QByteArray("\0\0\xfe{", 4);
        QTest::newRow("mark of four, other half") << QByteArray("\0\0{\xff", 4);
        QTest::newRow("one empty byte") << QByteArray("{\0ab", 4);
        QTest::newRow("one empty byte in front") << QByteArray("\0{ab", 4);
        QTest::newRow("an empty byte at the end") << QByteArray("{ab\0", 4);
        QTest::newRow("two empty bytes at the end") << QByteArray("{a\0\0", 4);
        QTest::newRow("two empty bytes in the middle") << QByteArray("{\0\0b", 4);
        QTest::newRow("all empty but the second") << QByteArray("\0{\0\0", 4);
        QTest::newRow("empty in the third place") << QByteArray("{a\0b", 4);
    }
    void bytesOfNoEncodingAreNotNamedOne()
    {
        QFETCH(QByteArray, text);
        const QString error = errorOf(text);
        QVERIFY(!error.isEmpty());
        QVERIFY2(!error.contains("the text is in UTF"), qPrintable(error));
    }
    void otherEncodingsAreNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, encoding);
        QCOMPARE(errorOf(text), "shop.json: the text is in " + encoding + "; save it in UTF-8");
    }
    void aProjectFileIsNoText()
    {
        QCOMPARE(
            errorOf(QByteArray("SQLite format 3\0\x10", 17)),
            QString("shop.json: is a project file, not a model in text form; 'korvane dump' writes one"));
    }
    void aByteOrderMarkIsTaken() { QVERIFY(projectOf("\xEF\xBB\xBF" + textOf(""))); }
    void deepNesting()
    {
        for (const QByteArray & open : {QByteArray("["), QByteArray("{\"a\":")}) {
            const QString error = errorOf(open.repeated(1000));
            QVERIFY2(error.contains("is nested deeper than 64 levels"), qPrintable(error));
            QVERIFY2(error.startsWith(open == "[" ? "shop.json: [0] / [0]" : "shop.json: a / a / a"),
                     qPrintable(error));
            QVERIFY(error.size() < 400);
            QVERIFY(errorOf(open.repeated(1000000)).contains("is nested deeper than 64 levels"));
        }
        QVERIFY(!errorOf(QByteArray("[").repeated(64) + QByteArray("]").repeated(64)).contains("nested"));
        QVERIFY(errorOf(QByteArray("[").repeated(65) + QByteArray("]").repeated(65)).contains("nested"));
    }
    void messagesStayOneLine()
    {
        const QString error = errorOf(textOf(json("{'name': 'a\\nb\\u0007\\u2028c', 'version': 'x'}")));
        QCOMPARE(
            error,
            QString("shop.json: entities[0] 'a?b?<U+2028>c': field 'version' must be an integer from 0 to ") +
                Max);
        QVERIFY(
            errorOf(textOf("{\"name\": \"" + QByteArray(100000, 'x') + json("', 'version': 'x'}"))).size() <
            300);
    }
    void bytesThatAreNoPatternStayAsTheyAre()
    {
        QCOMPARE(errorOf(textOf(json("{'name': '%1%2', '%3': 'x'}"))),
                 QString("shop.json: entities[0] '%1%2': unknown field '%3'"));
    }

    void projectNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("good");
        for (const char * name : {"shop", "a b", "\u00e4\u20ac", "CONSOLE", "COM", "COM10", "LPTX", "xCON",
                                  "a.b", "a:b", "nul_", "-", "..."}) {
            QTest::newRow(name) << QString::fromUtf8(name) << (name[0] != '.');
        }
        for (const char * name :
             {"a/b",     "/",       "a\\b", ":a",     ".a",        ".",      "a\tb",    "a\nb",
              "CON",     "con",     "Nul",  "PRN",    "aux",       "COM1",   "com9",    "LPT1",
              "NUL.txt", "con.a.b", "CON ", "aux .x", "COM\u00b9", "CONIN$", "a\u007f", "a\u0085"}) {
            QTest::newRow(name) << QString::fromUtf8(name) << false;
        }
        QTest::newRow("NUL character") << QString(QChar(0)) + "a" << false;
        for (const char16_t control : {u'\u061c', u'\u200e', u'\u200f', u'\u2028', u'\u2029', u'\u202a',
                                       u'\u202e', u'\u2066', u'\u2069'}) {
            QTest::newRow(qPrintable(QString("U+%1").arg(int(control), 4, 16, QChar('0'))))
                << QString("a") + QChar(control) + "b" << false;
        }
        // Neighbours of theirs, which letters need.
        QTest::newRow("joiner") << QString("a") + QChar(0x200d) + "b" << true;
        QTest::newRow("180 bytes") << QString(180, 'x') << true;
        QTest::newRow("181 bytes") << QString(181, 'x') << false;
        QTest::newRow("180 bytes of two-byte letters") << QString(90, QChar(0xe4)) << true;
        QTest::newRow("182 bytes of two-byte letters") << QString(91, QChar(0xe4)) << false;
    }
    void projectNames()
    {
        QFETCH(QString, name);
        QFETCH(bool, good);
        QString escaped;
        for (const QChar c : name) {
            escaped += QString("\\u%1").arg(c.unicode(), 4, 16, QChar('0'));
        }
        const QString error = errorOf("{\"format\": \"korvane-project\", \"formatVersion\": 1, \"name\": \"" +
                                      escaped.toUtf8() + "\"}");
        QCOMPARE(error.isEmpty(), good);
        QVERIFY2(good || error.startsWith("shop.json: field 'name'"), qPrintable(error));
    }
    void projectNameReasons()
    {
        using storage::model_check::projectNameProblem;
        QCOMPARE(projectNameProblem("a/b"),
                 QString("'a/b' must not contain '/', '\\' or control characters"));
        QCOMPARE(projectNameProblem("CON"), QString("'CON' is a reserved device name of Windows"));
        QCOMPARE(projectNameProblem("com0"), QString("'com0' is a reserved device name of Windows"));
        QCOMPARE(projectNameProblem(QString::fromUtf8("a\u202eb")),
                 QString("'a<U+202E>b' must not contain characters that turn the direction of text or "
                         "separate lines"));
        QCOMPARE(errorOf(json("{'format': 'korvane-project', 'formatVersion': 1, 'name': 'a/b'}")),
                 QString("shop.json: field 'name': 'a/b' must not contain '/', '\\' or control characters"));
    }
    void namesAreShownWithoutTheirControls()
    {
        QCOMPARE(errorOf(textOf(json("{'name': 'a\\u202eb\\u2066c\\u061c', 'x': 1}"))),
                 QString("shop.json: entities[0] 'a<U+202E>b<U+2066>c<U+061C>': unknown field 'x'"));
        // Two units of UTF-16 that are one character stay one.
        QCOMPARE(errorOf(textOf(json("{'name': '\\ud83d\\ude00', 'x': 1}"))),
                 QString::fromUtf8("shop.json: entities[0] '\U0001F600': unknown field 'x'"));
    }

    void warnings_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<QStringList>("expected");
        const QByteArray oneToOne = json("'relationship': {'type': 'one-to-one', 'target': 9}");
        const QString place = "entities[0] 'e' / properties[0] 'p': ";
        QTest::newRow("column is missing")
            << oneToOne
            << QStringList{
                   place +
                   "the foreign key needs a column 'p', which no property makes; name an existing one "
                   "in 'columnName'"};
        QTest::newRow("one of two is missing")
            << oneToOne + ", \"columnName\": \"own|other\""
            << QStringList{
                   place +
                   "the foreign key needs a column 'other', which no property makes; name an existing "
                   "one in 'columnName'"};
        QTest::newRow("column is there") << oneToOne + ", \"columnName\": \"own\"" << QStringList{};
        QTest::newRow("transient") << oneToOne + json(", 'transient': true") << QStringList{};
        QTest::newRow("it is the key") << oneToOne + json(", 'identifier': true") << QStringList{};
        QTest::newRow("other parts than columns")
            << QByteArray(json("'type': ['int', 'int']"))
            << QStringList{
                   place +
                   "'type' lists 2 types, but 'columnName' gives the number of columns as 1; they must be as "
                   "many"};
        QTest::newRow("nothing") << QByteArray("\"type\": \"int\", \"columnName\": \"a|b\"") << QStringList{};
    }
    void manyToManyWithoutItsFields_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<QStringList>("expected");
        const QString begin = "entities[0] 'e' / properties[0] 'p': a many-to-many needs relationship field ";
        const QString end = ", or the scripts make no usable link table or foreign key";
        QTest::newRow("all there") << QByteArray(json("'inverse': 90, 'extraTable': 'l', 'foreignKey': 'a', "
                                                      "'foreignKeyOwner': 'b'"))
                                   << QStringList{};
        QTest::newRow("no inverse") << QByteArray(json(
                                           "'extraTable': 'l', 'foreignKey': 'a', 'foreignKeyOwner': 'b'"))
                                    << QStringList{begin + "'inverse'" + end};
        QTest::newRow("no link table")
            << QByteArray(json("'inverse': 90, 'foreignKey': 'a', 'foreignKeyOwner': 'b'"))
            << QStringList{begin + "'extraTable'" + end};
        QTest::newRow("no own columns")
            << QByteArray(json("'inverse': 90, 'extraTable': 'l', 'foreignKeyOwner': 'b'"))
            << QStringList{begin + "'foreignKey'" + end};
        QTest::newRow("no columns of the target")
            << QByteArray(json("'inverse': 90, 'extraTable': 'l', 'foreignKey': 'a'"))
            << QStringList{begin + "'foreignKeyOwner'" + end};
        QTest::newRow("nothing") << QByteArray()
                                 << QStringList{begin +
                                                "'inverse', 'extraTable', 'foreignKey', 'foreignKeyOwner'" +
                                                end};
    }
    void manyToManyWithoutItsFields()
    {
        QFETCH(QByteArray, fields);
        const auto p = projectOf(withRelation(json("'type': 'many-to-many', 'target': 9") +
                                              (fields.isEmpty() ? "" : ", ") + fields));
        QVERIFY(p);
        QTEST(storage::model_check::warnings(*p), "expected");
    }
    void aTransientManyToManyNeedsNothing()
    {
        const auto p = projectOf(
            withProperty(json("'transient': true, 'relationship': {'type': 'many-to-many', 'target': 9}")));
        QVERIFY(p);
        QCOMPARE(storage::model_check::warnings(*p), QStringList());
    }
    void namesThatAreUsedTwice()
    {
        const auto p = projectOf(
            textOf(json("{'name': 'a'}, {'name': 'b', 'tableName': 'A'}, {'name': 'c', 'tableName': 't'}, "
                        "{'name': 'c', 'tableName': 'u'}, {'name': 'C', 'tableName': 'v'}")));
        QVERIFY(p);
        QCOMPARE(storage::model_check::warnings(*p),
                 (QStringList{"entities[1] 'b': its table 'A' is the table of entities[0] 'a' as well; give "
                              "one of them another 'tableName'",
                              "entities[3] 'c': entities[2] has the same name; give one of them another, "
                              "since an entity without 'id' is known by its name"}));
    }
    void aKeyOfARelationshipMakesItsColumn()
    {
        // The one-to-one is the key of its entity, so its column is there for the other one.
        const auto p = projectOf(textOf(
            json("{'name': 'e', 'properties': [{'name': 'k', 'columnName': 'c', 'identifier': true, "
                 "'relationship': {'type': 'one-to-one', 'target': 9}}, {'name': 'o', 'columnName': 'c', "
                 "'relationship': {'type': 'one-to-one', 'target': 9}}]}, {'id': 9, 'name': 't'}")));
        QVERIFY(p);
        QCOMPARE(storage::model_check::warnings(*p), QStringList());
    }
    void warnings()
    {
        QFETCH(QByteArray, fields);
        const auto p = projectOf(
            textOf(json("{'name': 'e', 'properties': [{'name': 'p', ") + fields +
                   json("}, {'name': 'o', 'columnName': 'own', 'type': 'int'}]}, {'id': 9, 'name': 't'}")));
        QVERIFY(p);
        QTEST(storage::model_check::warnings(*p), "expected");
    }

    void absentIdsFollowTheNames()
    {
        const auto old = stored();
        // Other order, a new property and a new entity in front, all without ids.
        const auto p =
            projectOf(textOf(json("{'name': 'new'}, {'name': 'b', 'properties': [{'name': 'x', "
                                  "'relationship': {'type': 'one-to-one', 'target': 10}}, {'name': 'n'}, "
                                  "{'name': 'y'}]}, {'name': 'a', 'properties': [{'name': 'x'}]}"),
                             json("{'name': 'other'}, {'name': 'state'}")),
                      old.get());
        QVERIFY(p);
        QCOMPARE(entityOf(*p, 0)->getId(), 21L);
        QCOMPARE(entityOf(*p, 1)->getId(), 20L);
        QCOMPARE(entityOf(*p, 2)->getId(), 10L);
        QCOMPARE(propertyOf(*p, 1, 0)->getId(), 200L);
        QCOMPARE(propertyOf(*p, 1, 1)->getId(), 202L);
        QCOMPARE(propertyOf(*p, 1, 2)->getId(), 201L);
        QCOMPARE(propertyOf(*p, 2, 0)->getId(), 100L);
        QCOMPARE(propertyOf(*p, 1, 0)->getRelation()->getId(), 500L);
        QCOMPARE(p->getListOfEnumeration()->getByIndex(0)->getId(), 8L);
        QCOMPARE(p->getListOfEnumeration()->getByIndex(1)->getId(), 7L);
    }
    void namesAreLookedUpWithinTheirEntity()
    {
        const auto old = stored();
        // The entity keeps its id and changes its name: its properties are still its own.
        const auto p =
            projectOf(textOf(json("{'id': 20, 'name': 'a', 'properties': [{'name': 'x'}, {'name': 'y'}]}, "
                                  "{'id': 10, 'name': 'b', 'properties': [{'name': 'y'}, {'name': 'x'}]}")),
                      old.get());
        QVERIFY(p);
        QCOMPARE(propertyOf(*p, 0, 0)->getId(), 200L);
        QCOMPARE(propertyOf(*p, 0, 1)->getId(), 201L);
        QCOMPARE(propertyOf(*p, 1, 0)->getId(), 202L);
        QCOMPARE(propertyOf(*p, 1, 1)->getId(), 100L);
    }
    void aGivenIdIsNotTakenByANamesake()
    {
        const auto old = stored();
        const auto p = projectOf(textOf(json("{'name': 'a', 'properties': [{'name': 'x'}]}, {'id': 10, "
                                             "'name': 'renamed', 'properties': [{'id': 100, 'name': 'x'}]}")),
                                 old.get());
        QVERIFY(p);
        QCOMPARE(entityOf(*p, 0)->getId(), 21L);
        QCOMPARE(propertyOf(*p, 0, 0)->getId(), 202L);
        QCOMPARE(entityOf(*p, 1)->getId(), 10L);
    }
    void newIdsAreLargerThanAny()
    {
        const auto p = projectOf(textOf(json("{'name': 'a', 'properties': [{'name': 'x'}, {'id': 70, 'name': "
                                             "'y'}]}, {'id': 30, 'name': 'b'}, {'name': 'c'}")));
        QVERIFY(p);
        QCOMPARE(entityOf(*p, 0)->getId(), 31L);
        QCOMPARE(entityOf(*p, 2)->getId(), 32L);
        QCOMPARE(propertyOf(*p, 0, 0)->getId(), 71L);
        // Namesakes get ids of their own, in order, and keep them.
        const QByteArray twice = textOf(json("{'name': 'a', 'properties': [{'name': 'x'}, {'name': 'x'}]}"));
        const auto first = projectOf(twice);
        const auto second = projectOf(twice, first.get());
        for (const auto & q : {first, second}) {
            QCOMPARE(propertyOf(*q, 0, 0)->getId(), 1L);
            QCOMPARE(propertyOf(*q, 0, 1)->getId(), 2L);
            QCOMPARE(entityOf(*q, 0)->getVersion(), 1L);
        }
    }
    void noIdIsLeft()
    {
        QCOMPARE(errorOf(textOf(json("{'id': ") + MaxId + json(", 'name': 'a'}, {'name': 'b'}"))),
                 QString("shop.json: entities[1] 'b': all entity ids are used up"));
        QVERIFY(projectOf(textOf(json("{'id': ") + MaxId + json(", 'name': 'a'}"))));
        QCOMPARE(errorOf(textOf("", json("{'id': ") + MaxId + json(", 'name': 'a'}, {'name': 'b'}"))),
                 QString("shop.json: enumerations[1] 'b': all enumeration ids are used up"));
        const QByteArray entity = json("{'id': 1, 'name': 'e', 'properties': [");
        QCOMPARE(errorOf(textOf(entity + json("{'id': ") + MaxId + json(", 'name': 'p'}, {'name': 'q'}]}"))),
                 QString("shop.json: entities[0] 'e' / properties[1] 'q': all property ids are used up"));
        const auto relation = [](const char * name, const QByteArray & id) {
            return json("{'name': '") + name + json("', 'relationship': {") + id +
                   json("'type': 'many-to-one', 'target': 1}}");
        };
        QCOMPARE(errorOf(textOf(entity + relation("p", "\"id\": " + MaxId + ", ") + ", " + relation("q", "") +
                                "]}")),
                 QString("shop.json: entities[0] 'e' / properties[1] 'q': all relationship ids are used up"));
    }

    void versions_data()
    {
        QTest::addColumn<QByteArray>("entity");
        QTest::addColumn<long>("expected");
        const QByteArray property = json(
            "{'id': 200, 'name': 'x', 'relationship': {'id': 500, 'type': 'one-to-one', 'target': 10}}, ");
        const QByteArray last = json("{'id': 201, 'name': 'y', 'type': 'int'}");
        const auto entity = [&](const QByteArray & fields, const QByteArray & properties) {
            return json("{'id': 20, 'name': 'b', 'metaData': {'m': 1}") + fields + json(", 'properties': [") +
                   properties + "]}";
        };
        QTest::newRow("nothing changed") << entity("", property + last) << 5L;
        QTest::newRow("written otherwise")
            << entity(", \"key\": \"\", \"tableName\": \"\"", property + last) << 5L;
        QTest::newRow("given") << entity(", \"version\": 0, \"tableName\": \"t\"", property + last) << 0L;
        QTest::newRow("given, not changed") << entity(json(", 'version': 9"), property + last) << 9L;
        QTest::newRow("tableName") << entity(", \"tableName\": \"t\"", property + last) << 6L;
        QTest::newRow("key") << entity(", \"key\": \"t\"", property + last) << 6L;
        QTest::newRow("softDeleteColumn") << entity(", \"softDeleteColumn\": \"t\"", property + last) << 6L;
        QTest::newRow("metaData, value")
            << QByteArray(json("{'id': 20, 'name': 'b', 'metaData': {'m': 2}, 'properties': [")) + property +
                   last + "]}"
            << 6L;
        QTest::newRow("metaData, type")
            << QByteArray(json("{'id': 20, 'name': 'b', 'metaData': {'m': '1'}, 'properties': [")) +
                   property + last + "]}"
            << 6L;
        QTest::newRow("name") << QByteArray(
                                     json("{'id': 20, 'name': 'B', 'metaData': {'m': 1}, 'properties': [")) +
                                     property + last + "]}"
                              << 6L;
        QTest::newRow("property gone") << entity("", last) << 6L;
        QTest::newRow("property new") << entity("", property + last + json(", {'name': 'z'}")) << 6L;
        QTest::newRow("order") << entity("", last + ", " + property.chopped(2)) << 6L;
        for (const char * field : {"'key': 'k'", "'columnName': 'c'", "'forceSqlType': 'f'",
                                   "'identifier': true", "'unique': true", "'index': true",
                                   "'transient': true", "'autoIncrement': true", "'allowNull': false"}) {
            QTest::newRow(field) << entity("", property + last.chopped(1) + ", " + json(field) + "}") << 6L;
        }
        QTest::newRow("type") << entity("", property + json("{'id': 201, 'name': 'y', 'type': 'long'}"))
                              << 6L;
        QTest::newRow("type gone") << entity("", property + json("{'id': 201, 'name': 'y'}")) << 6L;
        QTest::newRow("property id") << entity("", property + json("{'id': 209, 'name': 'y', 'type': 'int'}"))
                                     << 6L;
        for (const char * relation :
             {"'id': 501, 'type': 'one-to-one', 'target': 10",
              "'id': 500, 'type': 'many-to-one', 'target': 10",
              "'id': 500, 'type': 'one-to-one', 'target': 20",
              "'id': 500, 'type': 'one-to-one', 'target': 10, 'inverse': 100",
              "'id': 500, 'type': 'one-to-one', 'target': 10, 'extraTable': 'e'",
              "'id': 500, 'type': 'one-to-one', 'target': 10, 'foreignKey': 'e'",
              "'id': 500, 'type': 'one-to-one', 'target': 10, 'foreignKeyOwner': 'e'"}) {
            QTest::newRow(relation) << entity("", json("{'id': 200, 'name': 'x', 'relationship': {") +
                                                      json(relation) + "}}, " + last)
                                    << 6L;
        }
    }
    void versions()
    {
        QFETCH(QByteArray, entity);
        const auto old = stored();
        const auto p = projectOf(
            textOf(json("{'id': 10, 'name': 'a', 'properties': [{'id': 100, 'name': 'x'}]}, ") + entity),
            old.get());
        QVERIFY(p);
        QTEST(entityOf(*p, 1)->getVersion(), "expected");
        // The other entity did not change.
        QCOMPARE(entityOf(*p, 0)->getVersion(), 2L);
    }
    void aListOfOneTypeIsThatType()
    {
        const auto text = projectOf(withProperty("\"type\": \"long\""));
        const auto list = projectOf(withProperty(json("'type': ['long']")), text.get());
        QVERIFY(text && list);
        QCOMPARE(storage::text_form::write(*list), storage::text_form::write(*text));
        QVERIFY(storage::text_form::write(*list).contains(json("'type': 'long'")));
        QCOMPARE(entityOf(*list, 0)->getVersion(), 1L);
    }
    void numbersOfTheMetaDataStayTheSame_data()
    {
        QTest::addColumn<QByteArray>("number");
        for (const char * number : {"-0.0", "0.0", "-0", "0.1", "0.30000000000000004", "5e-324",
                                    "1.7976931348623157e308", "1e2", "9007199254740993"}) {
            QTest::newRow(number) << QByteArray(number);
        }
    }
    void numbersOfTheMetaDataStayTheSame()
    {
        QFETCH(QByteArray, number);
        const QTemporaryDir folder;
        const QString file = folder.filePath("x.korv");
        const QByteArray text = textOf(json("{'name': 'e', 'metaData': {'n': ") + number + json("}}"));
        const auto first = projectOf(text);
        QVERIFY(first);
        QVERIFY(!storage::project_file::write(file, *first).isValid());
        model::project stored(1);
        QVERIFY(!storage::project_file::read(file, stored).isValid());
        const auto again = projectOf(text, &stored);
        QVERIFY(again);
        QCOMPARE(entityOf(*again, 0)->getVersion(), 1L);
        QVERIFY(!storage::text_form::write(*again).contains("-0"));
    }
    void noVersionIsLeft()
    {
        const auto old = projectOf(textOf(json("{'id': 1, 'name': 'a', 'version': ") + Max + "}"));
        QVERIFY(projectOf(textOf(json("{'id': 1, 'name': 'a'}")), old.get()));
        QCOMPARE(errorOf(textOf(json("{'id': 1, 'name': 'b'}")), old.get()),
                 QString("shop.json: entities[0] 'b': the version cannot be raised any further"));
        QCOMPARE(errorOf(textOf(json("{'id': 2, 'name': 'c'}, {'id': 1, 'name': 'b'}")), old.get()),
                 QString("shop.json: entities[1] 'b': the version cannot be raised any further"));
    }

    void canonicalLayout()
    {
        const auto p = projectOf(
            textOf(json("{'name': 'customer', 'metaData': {'z': 1.0, 'a': '\\'x\\'', 'B': false}, "
                        "'properties': [ {'type': ['long'], 'name': 'id', 'identifier': true, 'allowNull': "
                        "true}, {'name': 'r', 'columnName': 'a|b', 'allowNull': false, 'relationship': "
                        "{'target': 1, 'type': 'many-to-one'}}]}, {'name': 'empty', 'key': 'k', 'tableName': "
                        "'t', 'softDeleteColumn': 's'}"),
                   json("{'name': 'state', 'values': [{'value': 1, 'name': 'open'}]}, {'name': 'none'}")));
        QVERIFY(p);
        QCOMPARE(
            QString::fromUtf8(storage::text_form::write(*p)),
            QString(
                "{\n"
                "  \"format\": \"korvane-project\",\n"
                "  \"formatVersion\": 1,\n"
                "  \"name\": \"shop\",\n"
                "  \"enumerations\": [\n"
                "    {\"id\": 1, \"name\": \"state\", \"values\": [{\"name\": \"open\", \"value\": 1}]},\n"
                "    {\"id\": 2, \"name\": \"none\", \"values\": []}\n"
                "  ],\n"
                "  \"entities\": [\n"
                "    {\n"
                "      \"id\": 1,\n"
                "      \"name\": \"customer\",\n"
                "      \"version\": 1,\n"
                "      \"metaData\": {\"B\": false, \"a\": \"\\\"x\\\"\", \"z\": 1.0},\n"
                "      \"properties\": [\n"
                "        {\"id\": 1, \"name\": \"id\", \"type\": \"long\", \"identifier\": true},\n"
                "        {\"id\": 2, \"name\": \"r\", \"columnName\": \"a|b\", \"allowNull\": false, "
                "\"relationship\": {\"id\": 1, \"type\": \"many-to-one\", \"target\": 1}}\n"
                "      ]\n"
                "    },\n"
                "    {\n"
                "      \"id\": 2,\n"
                "      \"key\": \"k\",\n"
                "      \"name\": \"empty\",\n"
                "      \"tableName\": \"t\",\n"
                "      \"version\": 1,\n"
                "      \"softDeleteColumn\": \"s\",\n"
                "      \"properties\": []\n"
                "    }\n"
                "  ]\n"
                "}\n"
                ""));
    }
    void dumpsComeBackTheSame()
    {
        const auto p = projectOf(textOf(
            everything(), json("{'id': 7, 'name': 's', 'values': [{'name': '\\u20ac\\n', 'value': -1}]}")));
        QVERIFY(p);
        const QByteArray dumped = storage::text_form::write(*p);
        const auto again = projectOf(dumped);
        QVERIFY(again);
        QCOMPARE(storage::text_form::write(*again), dumped);
        const auto over = projectOf(dumped, p.get());
        QVERIFY(over);
        QCOMPARE(storage::text_form::write(*over), dumped);
    }
    void publicModels()
    {
        const QString folder = support::modelsFolder();
        if (folder.isEmpty()) {
            QSKIP("The models of public databases are not here; KORVANE_MODELS names their folder");
        }
        const QStringList names = QDir(folder).entryList({"*.json"});
        QVERIFY(!names.isEmpty());
        for (const QString & name : names) {
            const auto p = projectOf(support::bytesOf(folder + "/" + name));
            QVERIFY2(p, qPrintable(name));
            const QByteArray dumped = storage::text_form::write(*p);
            QCOMPARE(storage::text_form::write(*projectOf(dumped)), dumped);
        }
    }
    void versionsAreSettled_data()
    {
        QTest::addColumn<QByteArray>("former");
        QTest::addColumn<QByteArray>("later");
        QTest::addColumn<long>("version");
        const auto entity = [](const char * version, const char * more) {
            return QByteArray("{\"id\": 1, \"name\": \"a\", \"version\": ") + version + more + "}";
        };
        const char * const changed = ", \"tableName\": \"t\"";
        QTest::newRow("the same") << entity("3", "") << entity("3", "") << 3L;
        QTest::newRow("the same, raised") << entity("3", "") << entity("4", "") << 3L;
        QTest::newRow("the same, lowered") << entity("3", "") << entity("0", "") << 3L;
        QTest::newRow("changed") << entity("3", "") << entity("3", changed) << 4L;
        QTest::newRow("changed and raised") << entity("3", "") << entity("9", changed) << 9L;
        QTest::newRow("changed and lowered") << entity("3", changed) << entity("1", "") << 1L;
        QTest::newRow("changed at the largest")
            << entity("9223372036854775807", "") << entity("9223372036854775807", changed)
            << 9223372036854775806L;
        QTest::newRow("new") << QByteArray("{\"id\": 2, \"name\": \"b\"}") << entity("6", "") << 6L;
    }
    void versionsAreSettled()
    {
        QFETCH(QByteArray, former);
        QFETCH(QByteArray, later);
        QFETCH(long, version);
        const auto previous = support::projectOf(support::textOf(former));
        const auto current = support::projectOf(support::textOf(later));
        const QByteArray before = storage::text_form::write(*previous);
        storage::text_form::settleVersions(*previous, *current);
        QCOMPARE(entityOf(*current, 0)->getVersion(), version);
        QCOMPARE(storage::text_form::write(*previous), before);
    }

private:
    static std::shared_ptr<model::project> stored()
    {
        return projectOf(
            textOf(json("{'id': 10, 'name': 'a', 'version': 2, 'properties': [{'id': 100, 'name': 'x'}]}, "
                        "{'id': 20, 'name': 'b', 'version': 5, 'metaData': {'m': 1}, 'properties': [ {'id': "
                        "200, 'name': 'x', 'relationship': {'id': 500, 'type': 'one-to-one', 'target': 10}}, "
                        "{'id': 201, 'name': 'y', 'type': 'int'}]}"),
                   json("{'id': 7, 'name': 'state'}")));
    }
    static QByteArray everything()
    {
        return json(
            "{'id': 10, 'key': 'K', 'name': 'c\\u0000\\u00e4', 'tableName': 't \\'c\\'', 'version': 3, "
            "'softDeleteColumn': 'd', 'metaData': {'u': 18446744073709551615, 'd': 0.1, 'e': 1e300, 'i': -5, "
            "'': 'x'}, 'properties': [ {'id': 100, 'key': 'PK', 'name': 'id', 'columnName': 'a|b', 'type': "
            "['long', 'int'], 'identifier': true, 'autoIncrement': false, 'allowNull': false, 'unique': "
            "true, 'index': true, 'transient': true, 'forceSqlType': 'DECIMAL(12,2) NULL'}, {'id': 99, "
            "'name': 'e', 'enumeration': 7}, {'id': 101, 'name': 'r', 'forceSqlType': 'INT', 'relationship': "
            "{'id': 501, 'type': 'many-to-many', 'target': 10, 'inverse': 99, 'extraTable': 'link', "
            "'foreignKey': 'c', 'foreignKeyOwner': 't'}}] }, {'id': 3, 'name': 'second', 'version': 0}");
    }

    template <class Row>
    static void enumerationErrors(const Row & row)
    {
        const auto enumeration = [](const QByteArray & fields) { return textOf("", "{" + fields + "}"); };
        row("enumeration without name", enumeration(json("'id': 1")),
            "enumerations[0]: field 'name' is missing");
        row("enumeration name", enumeration(json("'name': 1")),
            "enumerations[0]: field 'name' must be a string");
        row("enumeration id", enumeration("\"id\": \"1\", \"name\": \"n\""),
            "enumerations[0] 'n': field 'id' must be an integer from 1 to " + MaxId);
        row("enumeration values", enumeration("\"name\": \"n\", \"values\": \"x\""),
            "enumerations[0] 'n': field 'values' must be an array");
        row("enumeration unknown", enumeration(json("'name': 'n', 'x': 1")),
            "enumerations[0] 'n': unknown field 'x'");
        row("enumeration empty name", enumeration(json("'name': ''")),
            "enumerations[0]: field 'name' must not be empty");
        row("value no object", enumeration(json("'name': 'n', 'values': [5]")),
            "enumerations[0] 'n' / values[0]: must be an object");
        row("value without name", enumeration(json("'name': 'n', 'values': [{'value': 1}]")),
            "enumerations[0] 'n' / values[0]: field 'name' is missing");
        row("value without value", enumeration(json("'name': 'n', 'values': [{'name': 'v'}]")),
            "enumerations[0] 'n' / values[0] 'v': field 'value' is missing");
        row("value no integer", enumeration(json("'name': 'n', 'values': [{'name': 'v', 'value': 1.5}]")),
            "enumerations[0] 'n' / values[0] 'v': field 'value' must be an integer from -9223372036854775808 "
            "to " +
                Max);
        row("value too large",
            enumeration(json("'name': 'n', 'values': [{'name': 'v', 'value': 9223372036854775808}]")),
            "enumerations[0] 'n' / values[0] 'v': field 'value' must be an integer from -9223372036854775808 "
            "to " +
                Max);
        row("value unknown", enumeration(json("'name': 'n', 'values': [{'name': 'v', 'value': 1, 'id': 1}]")),
            "enumerations[0] 'n' / values[0] 'v': unknown field 'id'");
    }
    template <class Row>
    static void entityErrors(const Row & row)
    {
        const auto entity = [](const QByteArray & fields) { return textOf("{" + fields + "}"); };
        const QString place = "entities[0] 'e': ";
        row("entity no object", textOf("7"), "entities[0]: must be an object");
        row("entity without name", entity(json("'id': 1")), "entities[0]: field 'name' is missing");
        row("entity empty name", entity("\"name\": \"\""), "entities[0]: field 'name' must not be empty");
        row("entity name", entity(json("'name': ['x']")), "entities[0]: field 'name' must be a string");
        for (const char * field : {"key", "tableName", "softDeleteColumn"}) {
            for (const char * value : {"5", "null", "[]"}) {
                row(qPrintable(QString("entity %1 %2").arg(field, value)),
                    entity("\"name\": \"e\", \"" + QByteArray(field) + "\": " + value),
                    place + "field '" + field + "' must be a string");
            }
        }
        for (const char * id : {"0", "-1", "1.0", "\"1\"", "null", "9007199254740992", "9223372036854775807",
                                "9223372036854775808", "18446744073709551616", "true"}) {
            row(qPrintable(QString("entity id ") + id), entity(json("'name': 'e', 'id': ") + QByteArray(id)),
                place + "field 'id' must be an integer from 1 to " + MaxId);
        }
        for (const char * version : {"-1", "0.5", "\"1\""}) {
            row(qPrintable(QString("entity version ") + version),
                entity(json("'name': 'e', 'version': ") + QByteArray(version)),
                place + "field 'version' must be an integer from 0 to " + Max);
        }
        row("metaData no object", entity(json("'name': 'e', 'metaData': []")),
            place + "field 'metaData' must be an object");
        for (const char * value : {"null", "{}", "[1]"}) {
            row(qPrintable(QString("metaData of ") + value),
                entity(json("'name': 'e', 'metaData': {'k': ") + QByteArray(value) + "}"),
                place + "field 'metaData' 'k' must be a string, a number or a boolean");
        }
        row("metaData twice", entity(json("'name': 'e', 'metaData': {'k': 1, 'k': 1}")),
            "entities[0] 'e' / metaData: field 'k' is given twice");
        row("properties no list", entity(json("'name': 'e', 'properties': {}")),
            place + "field 'properties' must be an array");
        row("entity unknown", entity("\"name\": \"e\", \"table_name\": \"x\""),
            place + "unknown field 'table_name'");
        row("entity field twice", entity(json("'name': 'e', 'id': 1, 'id': 1")),
            place + "field 'id' is given twice");
        row("second entity", textOf(json("{'name': 'e'}, {'name': 'f', 'id': 0}")),
            "entities[1] 'f': field 'id' must be an integer from 1 to " + MaxId);
    }
    template <class Row>
    static void propertyErrors(const Row & row)
    {
        const QString place = "entities[0] 'e' / properties[0] 'p': ";
        const auto property = [](const QByteArray & p) {
            return textOf(json("{'name': 'e', 'properties': [") + p + "]}");
        };
        row("property no object", property("null"), "entities[0] 'e' / properties[0]: must be an object");
        row("property without name", property("{}"),
            "entities[0] 'e' / properties[0]: field 'name' is missing");
        row("property empty name", property(json("{'name': ''}")),
            "entities[0] 'e' / properties[0]: field 'name' must not be empty");
        for (const char * field : {"key", "columnName", "forceSqlType"}) {
            row(qPrintable(QString("property ") + field), withProperty('"' + QByteArray(field) + "\": 1"),
                place + "field '" + field + "' must be a string");
        }
        for (const char * field :
             {"identifier", "unique", "index", "transient", "allowNull", "autoIncrement"}) {
            for (const char * value : {"1", "\"true\"", "null"}) {
                row(qPrintable(QString("property %1 %2").arg(field, value)),
                    withProperty("\"type\": \"int\", \"" + QByteArray(field) + "\": " + value),
                    place + "field '" + field + "' must be true or false");
            }
        }
        row("property id", withProperty(json("'id': 0")),
            place + "field 'id' must be an integer from 1 to " + MaxId);
        row("type number", withProperty(json("'type': 1")), place + "field 'type' must be a string");
        row("type null", withProperty(json("'type': null")), place + "field 'type' must be a string");
        row("type empty", withProperty("\"type\": \"\""), place + "field 'type' must not be empty");
        row("type empty list", withProperty(json("'type': []")), place + "field 'type' must not be empty");
        row("type empty in list", withProperty(json("'type': ['int', '']")),
            place + "field 'type' must not be empty");
        row("type number in list", withProperty(json("'type': ['int', 5]")),
            place + "field 'type' must be a string");
        row("type and enumeration", withProperty(json("'type': 'int', 'enumeration': 1")),
            place + "fields 'type' and 'enumeration' exclude each other");
        row("enumeration as text", withProperty("\"enumeration\": \"state\""),
            place + "field 'enumeration' must be an integer from 1 to " + MaxId);
        row("enumeration missing", withProperty(json("'enumeration': 2")),
            place + "enumeration 2 does not exist");
        row("two identifiers",
            textOf(json("{'name': 'e', 'properties': [{'name': 'p', 'identifier': true}, {'name': 'q', "
                        "'identifier': true}]}")),
            "entities[0] 'e' / properties[1] 'q': only one property of an entity can be the identifier; for "
            "a composite key give that one several columns, such as \"columnName\": \"a|b\"");
        const QString integers =
            place + "field 'autoIncrement' works only with integer types such as \"long\"";
        row("autoIncrement without type", withProperty(json("'autoIncrement': true")), integers);
        row("autoIncrement false without type", withProperty(json("'autoIncrement': false")), integers);
        row("autoIncrement of a text", withProperty(json("'type': 'QString', 'autoIncrement': true")),
            integers);
        row("autoIncrement of a mixture",
            withProperty(json("'type': ['int', 'QString'], 'autoIncrement': true")), integers);
        row("autoIncrement of an enumeration", withProperty(json("'enumeration': 1, 'autoIncrement': true")),
            integers);
        row("property unknown", withProperty(json("'nullable': true")), place + "unknown field 'nullable'");
        row("property twice", withProperty("\"type\": \"int\", \"type\": \"int\""),
            place + "field 'type' is given twice");
    }
    template <class Row>
    static void relationshipErrors(const Row & row)
    {
        const QString place = "entities[0] 'e' / properties[0] 'p': ";
        const QByteArray good = json("'type': 'many-to-one', 'target': 9");
        row("relationship no object", withProperty(json("'relationship': 5")),
            place + "relationship must be an object");
        row("relationship and type", withProperty(json("'type': 'int', 'relationship': {") + good + "}"),
            place + "field 'relationship' excludes 'type' and 'enumeration'");
        row("relationship and enumeration",
            withProperty(json("'enumeration': 1, 'relationship': {") + good + "}"),
            place + "field 'relationship' excludes 'type' and 'enumeration'");
        row("relationship without type", withRelation(json("'target': 9")),
            place + "relationship field 'type' is missing");
        for (const char * type : {"\"many to one\"", "\"\"", "\"Many-To-One\""}) {
            row(qPrintable(QString("relationship type ") + type),
                withRelation(json("'target': 9, 'type': ") + QByteArray(type)),
                place +
                    "relationship field 'type' must be one-to-one, one-to-many, many-to-one or many-to-many");
        }
        row("relationship type 2", withRelation(json("'target': 9, 'type': 2")),
            place + "relationship field 'type' must be a string");
        row("relationship without target", withRelation("\"type\": \"many-to-one\""),
            place + "relationship field 'target' is missing");
        row("target as text", withRelation("\"type\": \"many-to-one\", \"target\": \"target\""),
            place + "relationship field 'target' must be an integer from 1 to " + MaxId);
        row("relationship id", withRelation(good + json(", 'id': -5")),
            place + "relationship field 'id' must be an integer from 1 to " + MaxId);
        row("inverse as text", withRelation(good + ", \"inverse\": \"t\""),
            place + "relationship field 'inverse' must be an integer from 1 to " + MaxId);
        row("inverse missing", withRelation(good + json(", 'inverse': 91")),
            place + "relationship inverse 91 does not exist in the target 'target'");
        row("inverse of another entity",
            textOf(json("{'name': 'e', 'properties': [{'id': 5, 'name': 'p', 'relationship': {'type': "
                        "'many-to-one', 'target': 9, 'inverse': 5}}]}, {'id': 9, 'name': 'target'}")),
            place + "relationship inverse 5 does not exist in the target 'target'");
        for (const char * field : {"extraTable", "foreignKey", "foreignKeyOwner"}) {
            row(qPrintable(QString("relationship ") + field), withRelation(good + ", \"" + field + "\": 1"),
                place + "relationship field '" + field + "' must be a string");
        }
        row("relationship unknown", withRelation(good + json(", 'cascade': true")),
            place + "unknown relationship field 'cascade'");
        row("relationship twice", withRelation(good + json(", 'target': 9")),
            "entities[0] 'e' / properties[0] 'p' / relationship: field 'target' is given twice");
        row("target missing",
            textOf(json("{'id': 10, 'name': 'customer', 'properties': [{'name': 'a'}, {'name': 'b'}, "
                        "{'name': 'c'}, {'name': 'd'}, {'name': 'e'}, {'id': 105, 'name': 'country', "
                        "'relationship': {'id': 500, 'type': 'many-to-one', 'target': 11}}]}")),
            "entities[0] 'customer' / properties[5] 'country': relationship target 11 does not exist");
    }
    template <class Row>
    static void idErrors(const Row & row)
    {
        row("enumeration id twice", textOf("", json("{'id': 1, 'name': 'a'}, {'id': 1, 'name': 'b'}")),
            "enumerations[1] 'b': enumeration id 1 is used twice");
        row("entity id twice", textOf(json("{'id': 1, 'name': 'a'}, {'id': 1, 'name': 'b'}")),
            "entities[1] 'b': entity id 1 is used twice");
        row("property id twice in an entity",
            textOf(json("{'name': 'a', 'properties': [{'id': 4, 'name': 'x'}, {'id': 4, 'name': 'y'}]}")),
            "entities[0] 'a' / properties[1] 'y': property id 4 is used twice");
        row("property id twice in the project",
            textOf(json("{'name': 'a', 'properties': [{'id': 4, 'name': 'x'}]}, {'name': 'b', 'properties': "
                        "[{'id': 4, 'name': 'y'}]}")),
            "entities[1] 'b' / properties[0] 'y': property id 4 is used twice");
        row("relationship id twice",
            textOf(json("{'id': 1, 'name': 'a', 'properties': [{'name': 'x', 'relationship': {'id': 3, "
                        "'type': 'one-to-one', 'target': 1}}, {'name': 'y', 'relationship': {'id': 3, "
                        "'type': 'one-to-one', 'target': 1}}]}")),
            "entities[0] 'a' / properties[1] 'y': relationship id 3 is used twice");
        const auto key = [](int id, const char * name, int target) {
            return QString(json("{'id': %1, 'name': '%2', 'properties': [{'name': 'k', 'identifier': true, "
                                "'relationship': {'type': 'one-to-one', 'target': %3}}]}"))
                .arg(id)
                .arg(name)
                .arg(target)
                .toUtf8();
        };
        row("circle of one", textOf(key(1, "a", 1)),
            "entities[0] 'a': identifiers refer to each other in a circle: 'a' -> 'a'; give one of them a "
            "plain type");
        row("circle of two", textOf(key(1, "a", 2) + "," + key(2, "b", 1)),
            "entities[0] 'a': identifiers refer to each other in a circle: 'a' -> 'b' -> 'a'; give one of "
            "them a plain type");
        row("way into a circle",
            textOf(json("{'id': 4, 'name': 'x'},") + key(1, "a", 2) + "," + key(2, "b", 3) + "," +
                   key(3, "c", 2)),
            "entities[1] 'a': identifiers refer to each other in a circle: 'a' -> 'b' -> 'c' -> 'b'; give "
            "one of them a plain type");
    }
};

QTEST_APPLESS_MAIN(tst_text_form)
#include "tst_text_form.moc"
