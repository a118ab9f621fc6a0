#include "support/damaged_database.h"
#include "support/project_support.h"
#include "support/rounds.h"

#include "model/plugin_params.h"
#include "model/property_type.h"
#include "storage/history.h"
#include "zk/sqlite_locks.h"
#include "zk/zk_dao.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QSet>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

/// There in a program that counts the branches it takes.
extern "C" [[gnu::weak]] void __gcov_init(void *);

using storage::project_file::read;
using storage::project_file::write;
using support::entityOf;
using support::json;
using support::projectOf;
using support::storedText;
using support::textOf;

class tst_project_file : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_sFile = path("shop.korv");
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void everythingComesBack()
    {
        const auto p = everything();
        QVERIFY(!write(m_sFile, *p).isValid());
        QCOMPARE(storedText(m_sFile), storage::text_form::write(*p));
        model::project project(1);
        project.setFileName(m_sFile);
        QCOMPARE(project.load().text(), QString());
        QCOMPARE(project.getName(), QString("shop"));
        QCOMPARE(project.getLocation(), m_folder->path());
        QCOMPARE(project.getFileName(), m_sFile);
        // Equal types are one object.
        QCOMPARE(support::propertyOf(project, 0, 3)->getType(),
                 support::propertyOf(project, 0, 4)->getType());
        QVERIFY(!support::propertyOf(project, 0, 5)->getType());
    }
    void publicModels()
    {
        const QString folder = support::modelsFolder();
        if (folder.isEmpty()) {
            QSKIP("The models of public databases are not here; KORVANE_MODELS names their folder");
        }
        for (const QString & name : QDir(folder).entryList({"*.json"})) {
            const auto p = projectOf(support::bytesOf(folder + "/" + name));
            QVERIFY(!write(path(name), *p).isValid());
            QCOMPARE(storedText(path(name)), storage::text_form::write(*p));
        }
    }
    void aProjectWithoutAnything()
    {
        const auto p = projectOf(textOf(""));
        QVERIFY(!write(m_sFile, *p).isValid());
        QCOMPARE(storedText(m_sFile), storage::text_form::write(*p));
    }
    void aFileThatIsNamedOtherwise()
    {
        QVERIFY(!write(path("other name.db"), *everything()).isValid());
        model::project project(1);
        project.setFileName(path("other name.db"));
        QVERIFY(!project.load().isValid());
        QCOMPARE(project.getName(), QString("shop"));
        QVERIFY(QFile::rename(path("other name.db"), m_sFile));
        model::project byName(1);
        byName.setLocation(m_folder->path());
        byName.setName("shop");
        QVERIFY(!byName.load().isValid());
        QCOMPARE(byName.getListOfAllEntities()->count(), 2L);
    }
    void aFailedLoadKeepsTheContents()
    {
        const auto p = everything();
        p->setFileName(m_sFile);
        QVERIFY(p->load().isValid());
        QCOMPARE(p->getListOfAllEntities()->count(), 2L);
        QCOMPARE(p->getName(), QString("shop"));
    }

    void equalModelsGiveEqualFiles()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QVERIFY(!write(path("second.korv"), *everything()).isValid());
        QCOMPARE(support::bytesOf(m_sFile), support::bytesOf(path("second.korv")));
        QVERIFY(!support::bytesOf(m_sFile).isEmpty());
    }
    void nothingElseIsLeftInTheFolder()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"shop.korv"});
        QVERIFY(write(path("missing/shop.korv"), *everything()).isValid());
        QVERIFY(write(m_sFile, model::project(1)).isValid());
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"shop.korv"});
    }
    void anEmptyFileCountsAsNotThere()
    {
        QVERIFY(support::writeBytes(m_sFile, ""));
        const QFile::Permissions permissions =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::WriteGroup;
        QVERIFY(QFile::setPermissions(m_sFile, permissions));
        struct stat before = {};
        QCOMPARE(stat(QFile::encodeName(m_sFile).constData(), &before), 0);
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QCOMPARE(storedText(m_sFile), storage::text_form::write(*everything()));
        struct stat after = {};
        QCOMPARE(stat(QFile::encodeName(m_sFile).constData(), &after), 0);
        QCOMPARE(after.st_mode, before.st_mode);
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"shop.korv"});
    }
    void anEmptyFileStaysEmptyAfterAFailure()
    {
        QVERIFY(support::writeBytes(m_sFile, ""));
        QVERIFY(write(m_sFile, model::project(1)).isValid());
        QCOMPARE(QFileInfo(m_sFile).size(), qint64(0));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"shop.korv"});
    }
    void whatIsRefusedLeavesAnEmptyFile()
    {
        QVERIFY(support::writeBytes(m_sFile, ""));
        const auto refuse = [](const model::project * existing, model::project &) {
            return QSqlError({}, existing == nullptr ? QStringLiteral("not this one") : QString(),
                             QSqlError::UnknownError);
        };
        QCOMPARE(storage::project_file::replace(m_sFile, refuse).text(), QString("not this one"));
        QCOMPARE(support::bytesOf(m_sFile), QByteArray());
        QCOMPARE(storage::project_file::replace(path("other.korv"), refuse).text(), QString("not this one"));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"shop.korv"});
    }
    void aChainOfLinks()
    {
        QVERIFY(QFile::link("second.korv", path("first.korv")));
        QVERIFY(QFile::link("real.korv", path("second.korv")));
        QVERIFY(!write(path("first.korv"), *everything()).isValid());
        QVERIFY(QFileInfo(path("second.korv")).isSymLink());
        QCOMPARE(storedText(path("real.korv")), storage::text_form::write(*everything()));
        QVERIFY(QFile::link("round.korv", m_sFile));
        QVERIFY(QFile::link("shop.korv", path("round.korv")));
        const QString expected =
            m_sFile + ": cannot be opened (Too many levels of symbolic links); check the name";
        QCOMPARE(write(m_sFile, *everything()).text(), expected);
        model::project project(1);
        QCOMPARE(read(m_sFile, project).text(), expected);
    }
    void longNames()
    {
        // SQLite's journal beside the file has a name of eight bytes more.
        const QString longest = path(QString(242, 'a') + ".korv");
        QVERIFY(!write(longest, *everything()).isValid());
        int number = 0;
        QCOMPARE(storage::history::tag(longest, "x", number).text(), QString());
        const QString tooLong = path(QString(243, 'a') + ".korv");
        const QString expected =
            tooLong + ": cannot be changed: its name of 248 bytes is too long, as the name of its journal is "
                      "8 bytes longer and the limit is 255; choose a shorter one";
        QCOMPARE(write(tooLong, *everything()).text(), expected);
        QVERIFY(!QFile::exists(tooLong));
        // One that is there can still be read.
        QVERIFY(QFile::copy(longest, tooLong));
        QCOMPARE(storedText(tooLong), storage::text_form::write(*everything()));
        QCOMPARE(storage::history::tag(tooLong, "x", number).text(), expected);
        QCOMPARE(write(tooLong, *everything()).text(), expected);
        const QString noName = path(QString(256, 'a'));
        QCOMPARE(write(noName, *everything()).text(),
                 noName + ": cannot be opened (File name too long); check the name");
    }
    void longPaths()
    {
        // SQLite knows paths of less than 512 bytes.
        QString folder = m_folder->path();
        while (folder.size() < 400) {
            folder += "/" + QString(50, 'b');
        }
        QVERIFY(QDir().mkpath(folder));
        const qsizetype room = 503 - folder.size() - 1;
        const QString longest = folder + "/" + QString(room - 5, 'a') + ".korv";
        QCOMPARE(write(longest, *everything()).text(), QString());
        QCOMPARE(write(longest, *everything()).text(), QString());
        const QString tooLong = folder + "/" + QString(room - 4, 'a') + ".korv";
        QCOMPARE(write(tooLong, *everything()).text(),
                 tooLong + ": cannot be changed: its path of 504 bytes is too long, as the name of its "
                           "journal is 8 bytes longer and the limit is 511; choose a shorter one");
    }
    void aFailedRead()
    {
        // A regular file whose first bytes the system refuses to read.
        model::project project(1);
        QCOMPARE(read("/proc/self/mem", project).text(),
                 QString("/proc/self/mem: cannot be read (Input/output error); check the disk"));
    }
    void aLinkStaysALink()
    {
        QVERIFY(QFile::link("real.korv", m_sFile));
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QVERIFY(QFileInfo(m_sFile).isSymLink());
        QVERIFY(!QFileInfo(path("real.korv")).isSymLink());
        QVERIFY(!write(m_sFile, *projectOf(textOf(""))).isValid());
        QCOMPARE(storedText(path("real.korv")), storage::text_form::write(*projectOf(textOf(""))));
    }
    void aForeignJournalIsNotPlayedBack_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::newRow("journal") << "-journal";
        QTest::newRow("log") << "-wal";
    }
    void aForeignJournalIsNotPlayedBack()
    {
        QFETCH(QString, suffix);
        // It may be all that is left to mend a database that somebody has moved away.
        QVERIFY(support::writeBytes(m_sFile + suffix, "of another database"));
        QCOMPARE(write(m_sFile, *everything()).text(),
                 m_sFile + suffix +
                     ": belongs to a database that is not there, and would be taken for a part of the new "
                     "project; move it away and try again");
        QCOMPARE(support::bytesOf(m_sFile + suffix), QByteArray("of another database"));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{"shop.korv" + suffix});
    }
    void parametersAndHistoryStay()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        execute(m_sFile, {"INSERT INTO t_plugin_params VALUES ('g', 'k', 'v')", "CREATE TABLE own (a)",
                          "INSERT INTO own VALUES (7)"});
        int number = 0;
        QVERIFY(!storage::history::tag(m_sFile, "first", number).isValid());
        QVERIFY(!write(m_sFile, *projectOf(textOf(""))).isValid());
        QCOMPARE(storedText(m_sFile), storage::text_form::write(*projectOf(textOf(""))));
        QCOMPARE(query(m_sFile, "SELECT plugin_guid || param_key || param_value FROM t_plugin_params"),
                 QString("gkv"));
        QCOMPARE(query(m_sFile, "SELECT a FROM own"), QString("7"));
        QList<storage::history::version> versions;
        QVERIFY(!storage::history::list(m_sFile, versions).isValid());
        QCOMPARE(versions.size(), 1);
        QCOMPARE(versions.at(0).message, QString("first"));
    }
    void theTwoTablesOfOthers()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        const QString columns = "SELECT group_concat(name, ' ') FROM pragma_table_info('%1')";
        QCOMPARE(query(m_sFile, columns.arg("t_plugin_params")),
                 QString("plugin_guid param_key param_value"));
        QCOMPARE(query(m_sFile, columns.arg("t_project_historic")), QString("dt_creation project_file"));
    }
    void idsOfGoneObjectsAreNotGivenAgain()
    {
        const auto import = [this](const QByteArray & text) {
            model::project existing(1);
            existing.setFileName(m_sFile);
            const bool replaces = QFile::exists(m_sFile);
            QVERIFY(!replaces || !existing.load().isValid());
            const auto p = projectOf(text, replaces ? &existing : nullptr);
            QVERIFY(p);
            QVERIFY(!write(m_sFile, *p).isValid());
        };
        const QByteArray first = json("{'id': 1, 'name': 'a', 'properties': [{'id': 1, 'name': 'x'}]}");
        import(textOf(
            first + json(", {'id': 20, 'name': 'b', 'properties': [{'id': 300, 'name': 'x', 'relationship':"
                         " {'id': 4000, 'type': 'many-to-one', 'target': 1}}]}"),
            json("{'id': 50000, 'name': 'e'}")));
        import(textOf(first));
        import(textOf(first));
        import(textOf(first + json(", {'name': 'c', 'properties': [{'name': 'x', 'relationship':"
                                   " {'type': 'many-to-one', 'target': 1}}]}"),
                      json("{'name': 'f'}")));
        model::project project(1);
        QVERIFY(!read(m_sFile, project).isValid());
        QCOMPARE(support::entityOf(project, 1)->getId(), 21L);
        QCOMPARE(support::propertyOf(project, 1, 0)->getId(), 301L);
        QCOMPARE(support::propertyOf(project, 1, 0)->getRelation()->getId(), 4001L);
        QCOMPARE(project.getListOfEnumeration()->getByIndex(0)->getId(), 50001L);
    }
    void valuesAreBound()
    {
        const QString text = "it's \"q\"; DROP TABLE t_entity; --";
        const auto p = projectOf(textOf(json("{'name': 'e'}")));
        support::entityOf(*p, 0)->setName(text);
        support::entityOf(*p, 0)->setMetaData(text, text);
        QVERIFY(!write(m_sFile, *p).isValid());
        model::project project(1);
        QVERIFY(!read(m_sFile, project).isValid());
        QCOMPARE(support::entityOf(project, 0)->getName(), text);
        QCOMPARE(support::entityOf(project, 0)->getMetaData(text).toString(), text);
    }
    void metaDataOfEveryType()
    {
        const auto p = projectOf(textOf(json("{'name': 'e'}")));
        const auto e = support::entityOf(*p, 0);
        e->setMetaData("int", 5);
        e->setMetaData("uint", 6U);
        e->setMetaData("float", 0.5F);
        e->setMetaData("ulong", qulonglong(7));
        QVERIFY(!write(m_sFile, *p).isValid());
        model::project project(1);
        QVERIFY(!read(m_sFile, project).isValid());
        const auto back = support::entityOf(project, 0);
        QCOMPARE(back->getMetaData("int"), QVariant(5LL));
        QCOMPARE(back->getMetaData("uint"), QVariant(6LL));
        QCOMPARE(back->getMetaData("float"), QVariant(0.5));
        QCOMPARE(back->getMetaData("ulong"), QVariant(7LL));
    }
    void aBrokenModelIsNotWritten()
    {
        const auto p = everything();
        support::propertyOf(*p, 0, 2)->getRelation()->setEntityTargetId(99);
        QVERIFY(!write(m_sFile, *everything()).isValid());
        const QByteArray before = support::bytesOf(m_sFile);
        const QString error = write(m_sFile, *p).text();
        QCOMPARE(error,
                 m_sFile +
                     ": entities[0] 'customer' / properties[2] 'r': relationship target 99 does not exist");
        QCOMPARE(support::bytesOf(m_sFile), before);
        p->setName("a/b");
        QVERIFY(write(m_sFile, *p).text().startsWith(m_sFile + ": project name: 'a/b' must not contain "));
    }

    void badFiles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << QByteArray("") << "is empty, not a Korvane project";
        QTest::newRow("text") << QByteArray("{\"format\": \"korvane-project\"}")
                              << "is a model in text form, not a project; import it first (korvane import "
                                 "MODEL.json PROJECT.korv)";
        QTest::newRow("zeros") << QByteArray(8192, '\0') << "is not a Korvane project file (.korv)";
        QTest::newRow("only the magic")
            << QByteArray("SQLite format 3\0", 16) << "is not a Korvane project file (.korv)";
    }
    void badFiles()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        QVERIFY(support::writeBytes(m_sFile, bytes));
        refused(expected);
        if (!bytes.isEmpty()) {
            QCOMPARE(write(m_sFile, *everything()).text(), m_sFile + ": " + expected);
            QCOMPARE(support::bytesOf(m_sFile), bytes);
        }
    }
    void noFile()
    {
        refused("does not exist; check the name");
        m_sFile = m_folder->path();
        refused("is a folder, not a project file");
        QCOMPARE(write(m_sFile, *everything()).text(), m_sFile + ": is a folder, not a project file");
        m_sFile = "/dev/null";
        refused("is a device, not a project file");
        QVERIFY(write(m_sFile, *everything()).isValid());
        model::project project(1);
        QCOMPARE(read("", project).text(), QString("no project file is named"));
        QCOMPARE(write("", *everything()).text(), QString("no project file is named"));
    }

    void hostileContents_data()
    {
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char * name, const QStringList & statements, const QString & expected) {
            QTest::newRow(name) << statements << expected;
        };
        const auto damaged = [&row](const char * name, const QString & statement, const QString & where) {
            row(name, {statement}, "is damaged (" + where + "); restore it from a copy");
        };
        row("something else", {"PRAGMA application_id = 1"},
            "is a SQLite database, but not a Korvane project");
        row("newer", {"PRAGMA user_version = 2"},
            "was written by a newer korvane (format 2; this one reads up to 1); update korvane");
        row("older", {"PRAGMA user_version = 0"}, "is damaged (format 0); restore it from a copy");
        row("trigger", {"CREATE TRIGGER tr AFTER INSERT ON t_entity BEGIN SELECT 1; END"},
            "contains a trigger 'tr', which does not belong in a project file; remove it, or restore the "
            "file from a backup");
        row("view", {"CREATE VIEW v AS SELECT 1"},
            "contains a view 'v', which does not belong in a project file; remove it, or restore the file "
            "from a backup");
        row("view for a table", {"DROP TABLE t_entity", "CREATE VIEW t_entity AS SELECT 1"},
            "contains a view 't_entity', which does not belong in a project file; remove it, or restore the "
            "file from a backup");
        damaged("index", "CREATE INDEX i ON t_entity (name)", "table t_entity is not as it was created");
        damaged("table gone", "DROP TABLE t_relationship", "table t_relationship is missing");
        damaged("column too many", "ALTER TABLE t_property ADD COLUMN x",
                "table t_property is not as it was created");
        row("checked column",
            {"DROP TABLE t_project", "CREATE TABLE t_project (name TEXT CHECK (length(zeroblob(10)) > 0))"},
            "is damaged (table t_project is not as it was created); restore it from a copy");
        row("other case", {"DROP TABLE t_project", "CREATE TABLE T_PROJECT (name TEXT NOT NULL)"},
            "is damaged (table t_project is not as it was created); restore it from a copy");
        damaged("no project", "DELETE FROM t_project", "table t_project has 0 rows");
        damaged("id too large for a text", "UPDATE t_enumeration SET id = 9007199254740992",
                "table t_enumeration, row 1: column 1 is not a number of the expected range");
        damaged("two projects", "INSERT INTO t_project SELECT * FROM t_project",
                "table t_project has 2 rows");
        const QString number = "column %1 is not a number of the expected range";
        damaged("entity id 0", "UPDATE t_entity SET id = 0 WHERE id = 2",
                "table t_entity, row 2: " + number.arg(1));
        damaged("entity id as text", "UPDATE t_entity SET id = 'x' WHERE id = 2",
                "table t_entity, row 2: " + number.arg(1));
        damaged("entity id as real", "UPDATE t_entity SET id = 1.5 WHERE id = 2",
                "table t_entity, row 2: " + number.arg(1));
        damaged("negative version", "UPDATE t_entity SET version = -1 WHERE id = 2",
                "table t_entity, row 2: " + number.arg(6));
        damaged("name as bytes", "UPDATE t_entity SET name = x'00ff' WHERE id = 2",
                "table t_entity, row 2: column 2 is not a text");
        damaged("entity id twice", "UPDATE t_entity SET id = 1",
                "table t_entity, row 2: entity id 1 is used twice");
        row("empty name", {"UPDATE t_entity SET name = '' WHERE id = 2"},
            "entities[1]: field 'name' must not be empty");
        row("project name", {"UPDATE t_project SET name = 'a/b'"},
            "project name: 'a/b' must not contain '/', '\\' or control characters");
        row("project name that leaves the folder", {"UPDATE t_project SET name = '..'"},
            "project name: '..' must not begin with ':' or '.'");
        row("project name with a control", {"UPDATE t_project SET name = 'a' || char(10) || 'b'"},
            "project name: 'a?b' must not contain '/', '\\' or control characters");
        row("project name that turns direction", {"UPDATE t_project SET name = 'a' || char(8238) || 'b'"},
            "project name: 'a<U+202E>b' must not contain characters that turn the direction of text or "
            "separate lines");
        row("project name of two lines", {"UPDATE t_project SET name = 'a' || char(8232) || 'b'"},
            "project name: 'a<U+2028>b' must not contain characters that turn the direction of text or "
            "separate lines");
        row("empty project name", {"UPDATE t_project SET name = ''"}, "project name must not be empty");
        row("device name", {"UPDATE t_project SET name = 'NUL'"},
            "project name: 'NUL' is a reserved device name of Windows");
        row("enumeration without a name", {"UPDATE t_enumeration SET name = ''"},
            "enumerations[0]: field 'name' must not be empty");
        damaged("enumeration twice", "INSERT INTO t_enumeration VALUES (7, 'x')",
                "table t_enumeration, row 2: enumeration id 7 is used twice");
        damaged("value of nothing", "UPDATE t_enumeration_value SET enumeration_id = 8",
                "table t_enumeration_value, row 1: enumeration 8 does not exist");
        damaged("meta-data of nothing", "UPDATE t_meta_data SET entity_id = 8",
                "table t_meta_data, row 1: the entity does not exist");
        damaged("meta-data twice", "INSERT INTO t_meta_data SELECT * FROM t_meta_data",
                "table t_meta_data, row 6: the key is used twice");
        damaged("meta-data type", "UPDATE t_meta_data SET value_type = 'QImage'",
                "table t_meta_data, row 1: the value is not of its type");
        damaged("meta-data no number", "UPDATE t_meta_data SET value_type = 'double', meta_value = 'nan'",
                "table t_meta_data, row 1: the value is not of its type");
        damaged("meta-data no whole number",
                "UPDATE t_meta_data SET value_type = 'qlonglong', meta_value = 'many'",
                "table t_meta_data, row 1: the value is not of its type");
        damaged("type of an enumeration that is not there",
                "UPDATE t_property_type SET enumeration_id = 8 WHERE cpp_type IS NULL",
                "table t_property_type, row 3: the type is neither a C++ type nor an enumeration");
        damaged("type of both kinds", "UPDATE t_property_type SET enumeration_id = 7",
                "table t_property_type, row 1: the type is neither a C++ type nor an enumeration");
        damaged("type that becomes another kind", "UPDATE t_property_type SET type_id = 1 WHERE rowid = 3",
                "table t_property_type, row 3: the type is neither a C++ type nor an enumeration");
        damaged("type of neither kind", "UPDATE t_property_type SET cpp_type = ''",
                "table t_property_type, row 1: the type is neither a C++ type nor an enumeration");
        damaged("type twice", "UPDATE t_property_type SET type_id = 1 WHERE rowid = 4",
                "table t_property_type, row 4: type id 1 is used twice");
        damaged("property of nothing", "UPDATE t_property SET entity_id = 8 WHERE rowid = 2",
                "table t_property, row 2: entity 8 does not exist");
        damaged("property twice in an entity", "UPDATE t_property SET id = 103 WHERE rowid = 5",
                "table t_property, row 5: property id 103 is used twice");
        row("property twice", {"UPDATE t_property SET id = 103, entity_id = 2 WHERE rowid = 5"},
            "entities[1] 'f' / properties[0] 's': property id 103 is used twice");
        damaged("type of nothing", "UPDATE t_property SET type_id = 99 WHERE rowid = 4",
                "table t_property, row 4: type 99 does not exist or is one too many");
        damaged("type beside a relationship", "UPDATE t_property SET type_id = 1 WHERE rowid = 3",
                "table t_property, row 3: type 1 does not exist or is one too many");
        damaged("unknown flag", "UPDATE t_property SET flags = 512 WHERE rowid = 4",
                "table t_property, row 4: " + number.arg(6));
        damaged("relationship missing", "DELETE FROM t_relationship",
                "table t_property, row 3: the details of the property are missing");
        damaged("detail missing", "DELETE FROM t_property_detail",
                "table t_property, row 1: the details of the property are missing");
        damaged("detail twice", "INSERT INTO t_property_detail SELECT * FROM t_property_detail",
                "table t_property_detail, row 2: property id 100 is used twice");
        damaged("detail of nothing", "INSERT INTO t_property_detail VALUES (999, 'key', NULL)",
                "details of a property that does not exist");
        damaged("relationship of nothing",
                "INSERT INTO t_relationship SELECT 999, 999, type, target_id, NULL, NULL, NULL, NULL FROM "
                "t_relationship LIMIT 1",
                "details of a property that does not exist");
        damaged("relationship twice",
                "INSERT INTO t_relationship SELECT * FROM t_relationship WHERE id = 501",
                "table t_relationship, row 3: the property has a second relationship");
        damaged("relationship type", "UPDATE t_relationship SET type = 4 WHERE id = 501",
                "table t_relationship, row 1: " + number.arg(3));
        row("relationship id twice", {"UPDATE t_relationship SET id = 501"},
            "entities[1] 'f' / properties[0] 'k': relationship id 501 is used twice");
        row("dangling target", {"UPDATE t_relationship SET target_id = 9 WHERE id = 501"},
            "entities[0] 'customer' / properties[2] 'r': relationship target 9 does not exist");
        row("dangling inverse", {"UPDATE t_relationship SET inverse_id = 9 WHERE id = 501"},
            "entities[0] 'customer' / properties[2] 'r': relationship inverse 9 does not exist in the target "
            "'customer'");
        row("circle", {"UPDATE t_relationship SET target_id = 2 WHERE id = 502"},
            "entities[1] 'f': identifiers refer to each other in a circle: 'f' -> 'f'; give one of them a "
            "plain type");
        row("two identifiers", {"UPDATE t_property SET flags = 1 WHERE rowid = 4"},
            "entities[0] 'customer' / properties[3] 'q': only one property of an entity can be the "
            "identifier; for a composite key give that one several columns, such as \"columnName\": \"a|b\"");
        row("counted up without type", {"UPDATE t_property SET flags = 96 WHERE rowid = 6"},
            "entities[0] 'customer' / properties[5] 'n': field 'autoIncrement' works only with integer "
            "types such as \"long\"");
    }
    void hostileContents()
    {
        QFETCH(QStringList, statements);
        QFETCH(QString, expected);
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QVERIFY(execute(m_sFile, statements));
        refused(expected);
    }
    void aNewFileHasTheUsualRights()
    {
        const mode_t former = ::umask(027);
        const QSqlError error = write(m_sFile, *everything());
        ::umask(former);
        QVERIFY(!error.isValid());
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(m_sFile).constData(), &status), 0);
        QCOMPARE(status.st_mode & 07777, mode_t(0640));
    }
    void aDamagedModelIsNotReplaced()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QVERIFY(execute(m_sFile, {"UPDATE t_enumeration SET id = 9007199254740992"}));
        const QByteArray before = support::bytesOf(m_sFile);
        bool isAsked = false;
        const QSqlError error = storage::project_file::replace(
            m_sFile, [&isAsked](const model::project *, model::project & next) {
                isAsked = true;
                next.setName("shop");
                return QSqlError();
            });
        QVERIFY2(error.text().contains("is damaged (table t_enumeration, row 1"), qPrintable(error.text()));
        QVERIFY(!isAsked);
        QCOMPARE(support::bytesOf(m_sFile), before);
    }
    void nothingRunsUnasked()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QVERIFY(execute(
            m_sFile, {"CREATE TABLE seen (a)",
                      "CREATE TRIGGER tr AFTER DELETE ON t_entity BEGIN INSERT INTO seen VALUES (1); END"}));
        QVERIFY(write(m_sFile, *everything()).text().contains("contains a trigger 'tr'"));
        int number = 0;
        QVERIFY(storage::history::tag(m_sFile, "x", number).text().contains("contains a trigger 'tr'"));
        QCOMPARE(query(m_sFile, "SELECT count(*) FROM seen"), QString("0"));
    }

    void lockedByAnotherProcess()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "other");
        other.setDatabaseName(m_sFile);
        QVERIFY(other.open());
        QVERIFY(!QSqlQuery("BEGIN EXCLUSIVE", other).lastError().isValid());
        const QString expected = m_sFile + ": is in use by another process (waited 1.5 s for it); wait until "
                                           "that one has ended, or end it, and try again";
        const auto patience = zk::sqlite::lockPatience();
        QCOMPARE(patience.count(), std::chrono::milliseconds(30000).count());
        const auto restored = qScopeGuard([patience] { zk::sqlite::setLockPatience(patience); });
        zk::sqlite::setLockPatience(std::chrono::milliseconds(1500));
        QStringList waitedFor;
        zk::sqlite::setWaitListener([&waitedFor](const QString & file) { waitedFor << file; });
        const auto silent = qScopeGuard([] { zk::sqlite::setWaitListener(nullptr); });
        QElapsedTimer timer;
        timer.start();
        model::project project(1);
        QCOMPARE(read(m_sFile, project).text(), expected);
        QVERIFY(timer.elapsed() > 1400 && timer.elapsed() < 5000);
        QCOMPARE(waitedFor, QStringList{m_sFile});
        QCOMPARE(write(m_sFile, *everything()).text(), expected);
        int number = 0;
        QCOMPARE(storage::history::tag(m_sFile, "x", number).text(), expected);
        QList<storage::history::version> versions;
        QCOMPARE(storage::history::list(m_sFile, versions).text(), expected);
        QCOMPARE(waitedFor, QStringList(4, m_sFile));
        other.close();
        other = QSqlDatabase();
        QSqlDatabase::removeDatabase("other");
        QVERIFY(!read(m_sFile, project).isValid());
    }
    void rightsStay()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        const QByteArray name = QFile::encodeName(m_sFile);
        QCOMPARE(chmod(name.constData(), 0640), 0);
        if (geteuid() == 0) {
            QCOMPARE(chown(name.constData(), 65534, 65533), 0);
        }
        struct stat before = {};
        QCOMPARE(stat(name.constData(), &before), 0);
        QVERIFY(!write(m_sFile, *projectOf(textOf(""))).isValid());
        int number = 0;
        QVERIFY(!storage::history::tag(m_sFile, "x", number).isValid());
        struct stat after = {};
        QCOMPARE(stat(name.constData(), &after), 0);
        QCOMPARE(after.st_mode, before.st_mode);
        QCOMPARE(after.st_uid, before.st_uid);
        QCOMPARE(after.st_gid, before.st_gid);
    }
    void readOnly()
    {
        // Permissions do not bind the super-user, who lets somebody else try.
        QStringList command{KORVANE_PROGRAM};
        if (geteuid() == 0) {
            command = QStringList{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"} + command;
        }
        const auto korvane = [&command](const QStringList & arguments) {
            return support::run(command.at(0), command.mid(1) + arguments);
        };
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner |
                                                            QFile::WriteOwner | QFile::ReadOther |
                                                            QFile::ExeOther));
        QVERIFY(support::writeBytes(path("shop.json"), textOf("")));
        QVERIFY(!write(m_sFile, *everything()).isValid());
        const QFile::Permissions readable = QFile::ReadOwner | QFile::ReadOther;
        QVERIFY(QFile::setPermissions(m_sFile, readable));
        const support::run_result dumped = korvane({"dump", m_sFile});
        if (dumped.status != 0 && geteuid() == 0 && !dumped.err.startsWith(m_sFile.toUtf8())) {
            QSKIP("The program cannot be run as somebody else here");
        }
        QCOMPARE(dumped.status, 0);
        QCOMPARE(dumped.out, storage::text_form::write(*everything()));
        for (const QStringList & arguments :
             {QStringList{"import", path("shop.json"), m_sFile}, {"tag", m_sFile}}) {
            const support::run_result result = korvane(arguments);
            QCOMPARE(result.status, 1);
            QVERIFY2(result.err.startsWith(m_sFile.toUtf8() + ": cannot be written ("),
                     result.err.constData());
        }
        QVERIFY(QFile::setPermissions(m_sFile, QFile::Permissions()));
        QVERIFY(korvane({"dump", m_sFile}).err.startsWith(m_sFile.toUtf8() + ": cannot be opened ("));
        const QFile::Permissions former = QFile::permissions(m_folder->path());
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner |
                                                            QFile::ReadOther | QFile::ExeOther));
        const support::run_result imported = korvane({"import", path("shop.json"), path("new.korv")});
        QVERIFY(QFile::setPermissions(m_folder->path(), former));
        QCOMPARE(imported.err,
                 path("new.korv").toUtf8() + ": cannot be created (Permission denied); check its folder\n");
        // What is there cannot be told from what is not.
        QVERIFY(
            QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner));
        QCOMPARE(korvane({"dump", m_sFile}).err, m_sFile.toUtf8() + ": cannot be opened (Permission denied); "
                                                                    "check the permissions of its folder\n");
    }
    void aFullDisk()
    {
        if (&__gcov_init) {
            QSKIP("The files of counts meet the limit as well, and the program says so");
        }
        // A limit on the size of files stands for the disk's.
        QByteArray entities;
        for (int i = 0; i < 3000; ++i) {
            entities += (i > 0 ? ", " : "") + QByteArray("{\"name\": \"entity number ") +
                        QByteArray::number(i) + "\"}";
        }
        QVERIFY(support::writeBytes(path("big.json"), textOf(entities)));
        QVERIFY(!write(m_sFile, *everything()).isValid());
        const QByteArray before = support::bytesOf(m_sFile);
        for (const QString & target : {m_sFile, path("new.korv")}) {
            const support::run_result result = support::run(
                "/bin/sh", {"-c", "ulimit -f 128; trap '' XFSZ; exec \"$0\" import \"$1\" \"$2\"",
                            KORVANE_PROGRAM, path("big.json"), target});
            QCOMPARE(result.status, 1);
            QVERIFY2(result.err.startsWith(target.toUtf8() + ": cannot be "), result.err.constData());
            QCOMPARE(result.err.count('\n'), 1);
            QCOMPARE(result.out, QByteArray());
        }
        QCOMPARE(support::bytesOf(m_sFile), before);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{"big.json", "shop.korv"}));
    }

    void flippedBytes()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        const QByteArray good = support::bytesOf(m_sFile);
        const QByteArray text = storedText(m_sFile);
        QRandomGenerator random(20261121);
        int refusals = 0;
        const int damages = support::rounds(800);
        for (int i = 0; i < damages; ++i) {
            QByteArray bad = good;
            // Every second time in the first pages, where schema and headers are.
            const int range = i % 2 == 0 ? 8192 : int(bad.size());
            for (int n = random.bounded(1, 5); n > 0; --n) {
                const int at = random.bounded(range);
                bad[at] = static_cast<char>(bad.at(at) ^ (1 << random.bounded(8)));
            }
            QVERIFY(support::writeBytes(m_sFile, bad));
            model::project project(1);
            const QSqlError error = read(m_sFile, project);
            if (error.isValid()) {
                ++refusals;
                QVERIFY2(error.text().startsWith(m_sFile + ": ") && !error.text().contains('\n'),
                         qPrintable(error.text()));
            } else {
                QVERIFY(!storage::text_form::write(project).isEmpty());
            }
            QFile::remove(m_sFile + "-journal");
        }
        QVERIFY2(refusals > damages / 16, qPrintable(QString::number(refusals)));
    }
    void swappedRows()
    {
        QVERIFY(!write(m_sFile, *projectOf(textOf("{\"name\": \"a\"}, {\"name\": \"b\"}"))).isValid());
        QVERIFY(support::swapRows(m_sFile, "t_entity"));
        model::project project(1);
        const QString told = read(m_sFile, project).text();
        QVERIFY2(told.startsWith(m_sFile + ": is damaged (table t_entity: ") &&
                     told.endsWith("); restore it from a copy"),
                 qPrintable(told));
    }
    void numbersKeepEveryDigit()
    {
        const auto p = projectOf(textOf("{\"name\": \"a\"}"));
        entityOf(*p, 0)->setMetaData("sum", 0.1 + 0.2);
        QVERIFY(!write(m_sFile, *p).isValid());
        model::project project(1);
        QVERIFY(!read(m_sFile, project).isValid());
        QVERIFY(entityOf(project, 0)->getMetaData("sum").toDouble() == 0.30000000000000004);
    }
    void aNewLocationIsWhatCounts()
    {
        QVERIFY(QDir().mkpath(path("elsewhere")));
        QVERIFY(!write(m_sFile, *projectOf(textOf("{\"name\": \"here\"}"))).isValid());
        QVERIFY(!write(path("elsewhere/shop.korv"), *projectOf(textOf("{\"name\": \"there\"}"))).isValid());
        model::project project(1);
        project.setFileName(m_sFile);
        QVERIFY(!project.load().isValid());
        project.setLocation(path("elsewhere"));
        QCOMPARE(project.getFileName(), path("elsewhere/shop.korv"));
        QVERIFY(!project.load().isValid());
        QCOMPARE(entityOf(project, 0)->getName(), QString("there"));
    }
    void oneStateIsRead()
    {
        // A reader never meets the enumerations of one state with the entities of another.
        QByteArray entities;
        QByteArray enumerations;
        for (int i = 0; i < 1500; ++i) {
            const QByteArray next = (i > 0 ? ", " : "") + QByteArray("{\"name\": \"a");
            enumerations += next + QByteArray::number(i) + "\"}";
            entities += next + QByteArray::number(i) + "\"}";
        }
        QVERIFY(!write(m_sFile, *projectOf(textOf(entities, enumerations))).isValid());
        QProcess writer;
        writer.start("sqlite3", {m_sFile});
        writer.write("PRAGMA busy_timeout = 10000; PRAGMA synchronous = OFF;\n");
        for (int i = 0; i < 5000; ++i) {
            const QByteArray name = i % 2 == 0 ? "'b'" : "'a'";
            writer.write("BEGIN IMMEDIATE; UPDATE t_enumeration SET name = " + name +
                         " || id; UPDATE t_entity SET name = " + name + " || id; COMMIT;\n");
        }
        writer.closeWriteChannel();
        const auto ended = qScopeGuard([&writer] {
            writer.kill();
            writer.waitForFinished();
        });
        QElapsedTimer timer;
        timer.start();
        QSet<QString> states;
        while (timer.elapsed() < 2000) {
            QCoreApplication::processEvents(); // feeds the writer
            model::project project(1);
            const QSqlError error = read(m_sFile, project);
            QVERIFY2(!error.isValid(), qPrintable(error.text()));
            const QString state = project.getListOfEnumeration()->getByIndex(0)->getName().left(1);
            states.insert(state);
            for (const auto & entity : project.getListOfAllEntities()->values()) {
                QVERIFY2(entity->getName().startsWith(state), qPrintable(entity->getName()));
            }
        }
        QCOMPARE(states.size(), 2);
    }
    void cutFiles()
    {
        QVERIFY(!write(m_sFile, *everything()).isValid());
        const QByteArray good = support::bytesOf(m_sFile);
        // Within the last page it may be that only unused bytes are gone.
        for (qsizetype length = 1; length <= good.size() - 4096; length += 509) {
            QVERIFY(support::writeBytes(m_sFile, good.left(length)));
            model::project project(1);
            const QString error = read(m_sFile, project).text();
            QVERIFY2(error.startsWith(m_sFile + ": is ") && !error.contains('\n'), qPrintable(error));
        }
    }

    void largeProjects()
    {
        QByteArray entities;
        for (int e = 1; e <= 2000; ++e) {
            const QByteArray id = QByteArray::number(e);
            entities += (e > 1 ? ", " : "") + QByteArray("{\"id\": ") + id + ", \"name\": \"e" + id +
                        "\", \"properties\": [";
            for (int p = 0; p < 22; ++p) {
                entities += (p > 0 ? ", " : "") + QByteArray("{\"name\": \"p") + QByteArray::number(p) +
                            "\", \"type\": \"int\"}";
            }
            entities += "]}";
        }
        const auto p = projectOf(textOf(entities));
        QVERIFY(p);
        QVERIFY(!write(m_sFile, *p).isValid());
        QElapsedTimer timer;
        timer.start();
        model::project project(1);
        QVERIFY(!read(m_sFile, project).isValid());
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(storage::text_form::write(project), storage::text_form::write(*p));
    }

private:
    QString path(const QString & name) const { return m_folder->filePath(name); }
    void refused(const QString & expected)
    {
        model::project project(1);
        QCOMPARE(read(m_sFile, project).text(), m_sFile + ": " + expected);
    }
    static bool execute(const QString & file, const QStringList & statements)
    {
        bool ok = true;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "test");
            db.setDatabaseName(file);
            ok = db.open();
            for (const QString & statement : statements) {
                const QSqlError error = QSqlQuery(statement, db).lastError();
                if (error.isValid()) {
                    qWarning("%s: %s", qUtf8Printable(statement), qUtf8Printable(error.text()));
                    ok = false;
                }
            }
        }
        QSqlDatabase::removeDatabase("test");
        return ok;
    }
    static QString query(const QString & file, const QString & statement)
    {
        QString result;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "test");
            db.setDatabaseName(file);
            db.open();
            QSqlQuery q(statement, db);
            result = q.next() ? q.value(0).toString() : q.lastError().text();
        }
        QSqlDatabase::removeDatabase("test");
        return result;
    }
    static std::shared_ptr<model::project> everything()
    {
        return projectOf(textOf(
            json("{'id': 1, 'key': 'K', 'name': 'customer', 'tableName': 't \u00e4', 'version': 3, "
                 "'softDeleteColumn': 'd',"
                 " 'metaData': {'a': 1.5, 'b': true, 'c': 18446744073709551615, 'd': -5, 'e': 'x'},"
                 " 'properties': ["
                 "  {'id': 100, 'key': 'PK', 'name': 'id', 'columnName': 'a|b', 'type': ['long', 'int'],"
                 "   'identifier': true, 'autoIncrement': true, 'allowNull': false, 'unique': true, 'index': "
                 "true,"
                 "   'transient': true, 'forceSqlType': 'DECIMAL(12,2)'},"
                 "  {'id': 101, 'name': 'e', 'enumeration': 7},"
                 "  {'id': 102, 'name': 'r', 'relationship': {'id': 501, 'type': 'many-to-many', 'target': 1,"
                 "   'inverse': 101, 'extraTable': 'link', 'foreignKey': 'c', 'foreignKeyOwner': 't'}},"
                 "  {'id': 103, 'name': 'q', 'type': 'QString'},"
                 "  {'id': 104, 'name': 's', 'type': 'QString'},"
                 "  {'id': 105, 'name': 'n'}]},"
                 "{'id': 2, 'name': 'f', 'version': 0, 'properties': ["
                 "  {'id': 106, 'name': 'k', 'identifier': true, 'relationship': {'id': 502, 'type': "
                 "'one-to-one', 'target': 1}}]}"),
            json("{'id': 7, 'name': 'state', 'values': [{'name': 'open', 'value': -9223372036854775808}]}")));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sFile;
};

QTEST_GUILESS_MAIN(tst_project_file)
#include "tst_project_file.moc"
