// What a dump writes, to the letter. The file holds every field that the text form has, in the form in which
// a dump writes it.

#include "support/project_support.h"

#include "model/entity.h"
#include "model/enumeration.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include "storage/model_check.h"

#include <QTemporaryDir>
#include <QTest>

using support::entityOf;
using support::propertyOf;

class tst_text_dump : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_text = support::bytesOf(QStringLiteral(KORVANE_SOURCE_DIR "/tests/host/every_field.json"));
        QVERIFY(!m_text.isEmpty());
        m_project = support::projectOf(m_text);
        QVERIFY(m_project);
    }

    void givesTheTextAsItWasRead() { QCOMPARE(storage::text_form::write(*m_project), m_text); }
    void givesTheTextAsItWasStored()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("shop.korv");
        QVERIFY(!storage::project_file::write(file, *m_project).isValid());
        QCOMPARE(support::storedText(file), m_text);
    }
    void readsEveryRelationship()
    {
        const auto typeOf = [this](long entity, long property) {
            return propertyOf(*m_project, entity, property)->getRelation()->getType();
        };
        QCOMPARE(typeOf(0, 6), model::relationship::one_to_one);
        QCOMPARE(typeOf(0, 7), model::relationship::one_to_many);
        QCOMPARE(typeOf(0, 8), model::relationship::many_to_many);
        QCOMPARE(typeOf(1, 0), model::relationship::many_to_one);
    }
    void readsEveryProperty()
    {
        QVERIFY(propertyOf(*m_project, 0, 0)->isIdentifier());
        QCOMPARE(propertyOf(*m_project, 0, 0)->getColumnNameCount(), 2);
        const auto mail = propertyOf(*m_project, 0, 1);
        QCOMPARE(mail->getForceSqlType(), QString("CITEXT"));
        QVERIFY(!mail->getAllowNull() && mail->getUnique() && mail->isIndex() && !mail->isTransient());
        QCOMPARE(propertyOf(*m_project, 0, 2)->getType()->getEnumeration()->getId(), 4L);
        QVERIFY(propertyOf(*m_project, 0, 3)->isTransient());
        QVERIFY(!propertyOf(*m_project, 0, 4)->getType());
        QCOMPARE(entityOf(*m_project, 0)->getSoftDeleteColumn(), QString("gone"));
        QCOMPARE(entityOf(*m_project, 0)->getKey(), QString("k"));
        QCOMPARE(entityOf(*m_project, 2)->getKey(), QString("empty"));
    }
    void warnsOfAManyToManyThatLeavesItsFieldsToTheOtherSide()
    {
        // 's' is the other side of 'q', which describes the link table: the table is made, but the foreign
        // key of 's' would have no table and no columns.
        QCOMPARE(
            storage::model_check::warnings(*m_project),
            (QStringList{
                "entities[0] 'customer' / properties[6] 'o': the foreign key needs a column 'o', which no "
                "property makes; name an existing one in 'columnName'",
                "entities[1] 'tag' / properties[1] 's': a many-to-many needs relationship field "
                "'extraTable', "
                "'foreignKey', 'foreignKeyOwner', or the scripts make no usable link table or foreign key"}));
        QByteArray undescribed = m_text;
        undescribed.replace("\"extraTable\": \"x\", \"foreignKey\": \"c\", \"foreignKeyOwner\": \"t\"",
                            "\"extraTable\": \"\"");
        const auto project = support::projectOf(undescribed);
        QVERIFY(project);
        QCOMPARE(storage::model_check::warnings(*project).size(), 3);
        QByteArray half = m_text;
        half.replace("\"target\": 10, \"inverse\": 112",
                     "\"target\": 10, \"inverse\": 112, \"foreignKey\": \"own\"");
        const auto halfProject = support::projectOf(half);
        QVERIFY(halfProject);
        QCOMPARE(storage::model_check::warnings(*halfProject).constLast(),
                 QString("entities[1] 'tag' / properties[1] 's': a many-to-many needs relationship field "
                         "'extraTable', "
                         "'foreignKeyOwner', or the scripts make no usable link table or foreign key"));
    }

    void namesThePlaceOfAMissingEnumeration()
    {
        QByteArray text = m_text;
        text.replace("\"name\": \"n\", \"type\": \"int\", \"identifier\": true, \"autoIncrement\": true",
                     "\"name\": \"n\", \"enumeration\": 99");
        QCOMPARE(support::errorOf(text),
                 QString("shop.json: entities[1] 'tag' / properties[2] 'n': enumeration 99 does not exist"));
    }
    void warnsOfAVersionThatIsStillTheSame_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("warning");
        const QString rest =
            ", so no evolution script will contain the change; delete the \"version\" field or raise it";
        QTest::newRow("first") << QByteArray("t_customer") << QByteArray("t_client")
                               << "entities[0] 'customer': changed, but its \"version\" is still 3" + rest;
        QTest::newRow("second") << QByteArray("\"name\": \"n\"") << QByteArray("\"name\": \"m\"")
                                << "entities[1] 'tag': changed, but its \"version\" is still 0" + rest;
    }
    void warnsOfAVersionThatIsStillTheSame()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(QString, warning);
        const auto changed = support::projectOf(QByteArray(m_text).replace(before, after), m_project.get());
        QVERIFY(changed);
        QCOMPARE(storage::text_form::versionWarnings(*changed, *m_project), QStringList{warning});
    }
    void givesNoIdTwiceToRelationships()
    {
        QByteArray text = m_text;
        text.replace("{\"id\": 3, \"type\": \"many-to-many\"", "{\"id\": 1, \"type\": \"many-to-many\"");
        QCOMPARE(
            support::errorOf(text),
            QString(
                "shop.json: entities[0] 'customer' / properties[8] 'q': relationship id 1 is used twice"));
        // One without an id does not get one that the text gives to another.
        text = m_text;
        text.replace("{\"id\": 1, \"type\": \"one-to-one\"", "{\"type\": \"one-to-one\"");
        const auto project = support::projectOf(text);
        QVERIFY(project);
        QCOMPARE(propertyOf(*project, 0, 6)->getRelation()->getId(), 8L);
    }
    void tellsHowDeepATextMayBe()
    {
        const QString error = support::errorOf(QByteArray(2000, '['));
        QVERIFY2(error.endsWith(": is nested deeper than 64 levels"), qPrintable(error));
    }
    void tellsHowLongANameMayBe()
    {
        QCOMPARE(storage::model_check::projectNameProblem(QString(180, 'n')), QString());
        QCOMPARE(storage::model_check::projectNameProblem(QString(181, 'n')),
                 QString("is longer than 180 bytes"));
    }
    void namesThePlaceOfANamelessEnumeration()
    {
        const auto project = support::projectOf(m_text);
        QVERIFY(project);
        project->getListOfEnumeration()->getByIndex(1)->setName(QString());
        const QTemporaryDir folder;
        const QSqlError error = storage::project_file::write(folder.filePath("shop.korv"), *project);
        QVERIFY2(error.text().endsWith("shop.korv: enumerations[1]: field 'name' must not be empty"),
                 qPrintable(error.text()));
    }
    void namesThePlaceOfANamelessProperty()
    {
        const auto project = support::projectOf(m_text);
        QVERIFY(project);
        propertyOf(*project, 1, 2)->setName(QString());
        const QTemporaryDir folder;
        const QSqlError error = storage::project_file::write(folder.filePath("shop.korv"), *project);
        QVERIFY2(error.text().endsWith(
                     "shop.korv: entities[1] 'tag' / properties[2]: field 'name' must not be empty"),
                 qPrintable(error.text()));
    }
    void showsTheEndsOfALongCircle_data()
    {
        QTest::addColumn<int>("entities");
        QTest::addColumn<QString>("circle");
        QTest::newRow("all") << 5 << "'e1' -> 'e2' -> 'e3' -> 'e4' -> 'e5' -> 'e1'";
        QTest::newRow("cut") << 6 << "'e1' -> 'e2' -> 'e3' -> 'e4' -> 'e5' -> ... -> 'e1'";
        QTest::newRow("long") << 9 << "'e1' -> 'e2' -> 'e3' -> 'e4' -> 'e5' -> ... -> 'e1'";
    }
    void showsTheEndsOfALongCircle()
    {
        QFETCH(int, entities);
        QFETCH(QString, circle);
        QByteArray text;
        for (int e = 1; e <= entities; ++e) {
            const QByteArray number = QByteArray::number(e);
            const QByteArray next = QByteArray::number(e % entities + 1);
            text += (e > 1 ? ", " : "") + QByteArray("{\"id\": ") + number + ", \"name\": \"e" + number +
                    "\", \"properties\": [{\"name\": \"k\", \"identifier\": true, \"relationship\": "
                    "{\"type\": \"many-to-one\", \"target\": " +
                    next + "}}]}";
        }
        QCOMPARE(support::errorOf(support::textOf(text)),
                 "shop.json: entities[0] 'e1': identifiers refer to each other in a circle: " + circle +
                     "; give one of them a plain type");
    }

private:
    QByteArray m_text;
    std::shared_ptr<model::project> m_project;
};

QTEST_GUILESS_MAIN(tst_text_dump)
#include "tst_text_dump.moc"
