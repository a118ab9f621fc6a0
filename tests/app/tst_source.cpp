// What commands read: a project file or a text form, and one of its versions.

#include "app/source.h"

#include "support/damaged_database.h"
#include "support/program.h"
#include "support/project_support.h"

#include "model/project.h"
#include "storage/history.h"
#include "zk/zk_sql_database.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using app::Now;
using app::source;
using support::projectOf;
using support::runProgram;
using support::textOf;

class tst_source : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_sProject = path("shop.korv");
        store("first");
        tag();
        store("second");
        tag();
        store("third");
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void versionsHaveWords_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("number"); // -1 for none
        QTest::newRow("now") << "now" << 0;
        QTest::newRow("first") << "v1" << 1;
        QTest::newRow("later") << "v120" << 120;
        for (const char * const word : {"", "v", "v0", "v-1", "v+1", "v01", "V1", "NOW", "1", "v1 ", " v1",
                                        "vv1", "v1.0", "v99999999999", "x1", "now1"}) {
            QTest::newRow(qPrintable(QStringLiteral("'%1'").arg(word))) << word << -1;
        }
    }
    void versionsHaveWords()
    {
        QFETCH(QString, word);
        QFETCH(int, number);
        QCOMPARE(app::versionNumber(word).value_or(-1), number);
        QCOMPARE(app::whyNoVersion(word).isEmpty(), number != -1 || word.isEmpty());
        if (number >= 0) {
            QCOMPARE(app::versionWord(number), word);
        }
    }

    void aProjectFile()
    {
        // The name says nothing.
        const QString file = path("shop.json");
        QVERIFY(QFile::rename(m_sProject, file));
        source opened;
        QCOMPARE(opened.open(file).getDesc(), QString());
        QVERIFY(!opened.isText());
        QCOMPARE(opened.text(), QByteArray());
        QCOMPARE(opened.newestVersion(), 2);
        QCOMPARE(opened.versions().at(1).message, QString("a tag"));
        QCOMPARE(nameIn(opened, Now), QString("third"));
        QCOMPARE(nameIn(opened, 1), QString("first"));
        QCOMPARE(nameIn(opened, 2), QString("second"));
        std::shared_ptr<model::project> state;
        std::shared_ptr<model::project> again;
        QVERIFY(opened.load(Now, state) && opened.load(Now, again));
        QCOMPARE(state, again);
        QCOMPARE(QFileInfo(state->getFileName()), QFileInfo(file));
        QVERIFY(!opened.find(model::object_kind::entity, 1));
    }
    void aText()
    {
        const QByteArray text = "\n \t" + textOf("\n{\"id\": 7, \"name\": \"a\"}");
        QVERIFY(support::writeBytes(path("text.korv"), text));
        source opened;
        QCOMPARE(opened.open(path("text.korv")).getDesc(), QString());
        QVERIFY(opened.isText());
        QCOMPARE(opened.text(), text);
        QCOMPARE(opened.newestVersion(), 0);
        QVERIFY(!opened.find(model::object_kind::entity, 7));
        QCOMPARE(nameIn(opened, Now), QString("a"));
        QCOMPARE(opened.find(model::object_kind::entity, 7), (storage::text_place{3, 1}));
        QVERIFY(!opened.find(model::object_kind::entity, 8));
        std::shared_ptr<model::project> state;
        QVERIFY(opened.load(Now, state));
        QCOMPARE(state->getFileName(), QString());
    }
    void aTextWithAMark()
    {
        QVERIFY(support::writeBytes(path("a.json"), "\xef\xbb\xbf" + textOf(R"({"id": 7, "name": "a"})")));
        source opened;
        QCOMPARE(opened.open(path("a.json")).getDesc(), QString());
        QCOMPARE(nameIn(opened, Now), QString("a"));
    }
    void aVersionThatIsNotThere()
    {
        source opened;
        QVERIFY(opened.open(m_sProject));
        QVERIFY(opened.checkVersion(2));
        QVERIFY(opened.checkVersion(Now));
        QCOMPARE(opened.checkVersion(7).getDesc(), m_sProject + ": v7: the project has 2 versions");
        std::shared_ptr<model::project> project;
        QCOMPARE(opened.load(3, project).getDesc(), m_sProject + ": v3: the project has 2 versions");
        QCOMPARE(project, std::shared_ptr<model::project>());
        QVERIFY(support::writeBytes(path("a.json"), textOf("")));
        QVERIFY(opened.open(path("a.json")));
        QCOMPARE(opened.checkVersion(1).getDesc(), path("a.json") + ": v1: a text form has no versions");
        const QString fresh = path("fresh.korv");
        QVERIFY(!storage::project_file::write(fresh, *projectOf(textOf(""))).isValid());
        QVERIFY(opened.open(fresh));
        QCOMPARE(opened.checkVersion(1).getDesc(),
                 fresh + ": v1: the project has no versions; 'korvane tag' makes one");
        int number = 0;
        QVERIFY(!storage::history::tag(fresh, "x", number).isValid());
        QVERIFY(opened.open(fresh));
        QCOMPARE(opened.checkVersion(2).getDesc(), fresh + ": v2: the project has 1 version");
    }
    void whatCannotBeOpened_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("reason");
        const QString neither = "is neither a project file nor the text form of a project";
        QTest::newRow("another text") << QByteArray("name: shop\n") << neither;
        QTest::newRow("a list") << QByteArray("[1]") << neither;
        QTest::newRow("nothing") << QByteArray() << neither;
        QTest::newRow("blanks") << QByteArray(5000, ' ') << neither;
        QTest::newRow("bytes") << QByteArray("\x7f"
                                             "ELF\x02\x01")
                               << neither;
        QTest::newRow("a wrong field")
            << textOf(R"({"name": "a", "colour": 1})") << "entities[0] 'a': unknown field 'colour'";
        QTest::newRow("no JSON") << QByteArray("{\n  \"format\": }")
                                 << "line 2, column 13: syntax error while parsing value - unexpected '}'; "
                                    "expected '[', '{', or a literal";
        QTest::newRow("in a wide encoding")
            << QByteArray("\xff\xfe{\0\n\0", 6) << "the text is in UTF-16; save it in UTF-8";
        QTest::newRow("in a wide encoding without a mark")
            << QByteArray("{\0\n\0\"\0", 6) << "the text is in UTF-16; save it in UTF-8";
    }
    void whatCannotBeOpened()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, reason);
        const QString file = path("thing");
        QVERIFY(support::writeBytes(file, bytes));
        source opened;
        std::shared_ptr<model::project> project;
        zk::ZkBool result = opened.open(file);
        // What is neither of both forms is refused at once.
        QCOMPARE(bool(result), !reason.startsWith("is neither"));
        if (result) {
            result = opened.load(Now, project);
        }
        QCOMPARE(result.getDesc(), file + ": " + reason);
        QVERIFY(!project);
    }
    void whatIsNoFile()
    {
        source opened;
        QCOMPARE(opened.open(path("none")).getDesc(), path("none") + ": does not exist; check the name");
        QCOMPARE(opened.open(m_folder->path()).getDesc(),
                 m_folder->path() + ": is a folder, not a project file");
        const QString other = path("other");
        QCOMPARE(support::run("sqlite3", {other, "CREATE TABLE bookmarks (url TEXT)"}).status, 0);
        QCOMPARE(opened.open(other).getDesc(), other + ": is a SQLite database, but not a Korvane project");
    }

    /// A text that gives neither ids nor versions follows another project by the names in it.
    void aTextAfterAnother()
    {
        const QByteArray former = textOf(R"({"name": "a"}, {"id": 8, "name": "b", "version": 4},
            {"id": 9, "name": "c", "version": 4}, {"name": "d"})");
        const QByteArray later = textOf(R"({"name": "d"}, {"name": "new"}, {"name": "a", "tableName": "t"},
            {"id": 8, "name": "B", "version": 4}, {"id": 9, "name": "c", "version": 6})");
        QVERIFY(support::writeBytes(path("a.json"), former) && support::writeBytes(path("b.json"), later));
        source a;
        source b;
        QVERIFY(a.open(path("a.json")) && b.open(path("b.json")));
        std::shared_ptr<model::project> previous;
        std::shared_ptr<model::project> next;
        QVERIFY(a.load(Now, previous) && b.loadAfter(*previous, next));
        QCOMPARE(told(*previous), QString("10 a 1, 8 b 4, 9 c 4, 11 d 1"));
        QCOMPARE(told(*next), QString("11 d 1, 12 new 1, 10 a 2, 8 B 5, 9 c 4"));
        std::shared_ptr<model::project> again;
        QVERIFY(b.loadAfter(*previous, again));
        QVERIFY(again != next);
    }
    void aProjectAfterAnother()
    {
        const auto former = projectOf(textOf(R"({"id": 1, "name": "else", "version": 1})"));
        source opened;
        QVERIFY(opened.open(m_sProject));
        std::shared_ptr<model::project> next;
        QVERIFY(opened.loadAfter(*former, next));
        QCOMPARE(told(*next), QString("1 third 2"));
        // The state itself is as it is stored.
        std::shared_ptr<model::project> state;
        QVERIFY(opened.load(Now, state));
        QCOMPARE(told(*state), QString("1 third 1"));
    }

    void dumpsAVersion()
    {
        const auto dumped = [this](const char * word) {
            return runProgram({QStringLiteral("dump"), m_sProject, QString::fromLatin1(word)});
        };
        const QByteArray state = runProgram({QStringLiteral("dump"), m_sProject}).output;
        QVERIFY(state.contains("\"name\": \"third\""));
        QCOMPARE(dumped("now").output, state);
        QByteArray first = state;
        QCOMPARE(dumped("v1").output, first.replace("third", "first"));
        QCOMPARE(dumped("v3").status, 1);
        QCOMPARE(dumped("v3").errors, m_sProject.toUtf8() + ": v3: the project has 2 versions\n");
        QCOMPARE(dumped("2").status, 2);
    }
    /// The state is there to be saved as long as it is whole itself.
    void dumpsTheStateBesideADamagedHistory()
    {
        const QByteArray state = runProgram({"dump", m_sProject}).output;
        zk::ZkSqlDatabase::clearAllDatabases();
        QVERIFY(support::spoilTable(m_sProject, "t_project_historic"));
        const auto dumped = runProgram({"dump", m_sProject});
        QCOMPARE(dumped.errors, QByteArray());
        QCOMPARE(dumped.output, state);
        const auto version = runProgram({"dump", m_sProject, "v1"});
        QCOMPARE(version.status, 1);
        QVERIFY2(version.errors.startsWith(m_sProject.toUtf8() + ": is damaged ("),
                 version.errors.constData());
    }
    void dumpsAText()
    {
        const QByteArray text = textOf(R"({"name": "a"})");
        QVERIFY(support::writeBytes(path("a.json"), text));
        const QByteArray expected = R"({
  "format": "korvane-project",
  "formatVersion": 1,
  "name": "shop",
  "enumerations": [],
  "entities": [
    {
      "id": 1,
      "name": "a",
      "version": 1,
      "properties": []
    }
  ]
}
)";
        QCOMPARE(runProgram({"dump", path("a.json")}).output, expected);
        QCOMPARE(runProgram({"dump", "-"}, {}, text).output, expected);
        const auto nothing = runProgram({"dump", "-"});
        QCOMPARE(nothing.status, 1);
        QCOMPARE(nothing.errors, QByteArray("standard input: is not the text form of a project\n"));
        const auto project = runProgram({"dump", "-"}, {}, support::bytesOf(m_sProject));
        QCOMPARE(project.errors, QByteArray("standard input: is a project file, not a model in text form; "
                                            "'korvane dump' writes one\n"));
    }

private:
    [[nodiscard]] QString path(const char * name) const
    {
        return m_folder->filePath(QString::fromLatin1(name));
    }
    void store(const QByteArray & entity) const
    {
        const auto project = projectOf(textOf("{\"id\": 1, \"name\": \"" + entity + "\"}"));
        const QSqlError error = storage::project_file::write(m_sProject, *project);
        QVERIFY2(!error.isValid(), qPrintable(error.text()));
    }
    void tag() const
    {
        int number = 0;
        const QSqlError error = storage::history::tag(m_sProject, QStringLiteral("a tag"), number);
        QVERIFY2(!error.isValid(), qPrintable(error.text()));
    }
    /// The name of the first entity of a version; the reason when it cannot be loaded.
    static QString nameIn(source & opened, int version)
    {
        std::shared_ptr<model::project> project;
        const zk::ZkBool loaded = opened.load(version, project);
        return loaded ? support::entityOf(*project, 0)->getName() : loaded.getDesc();
    }
    /// Each entity as "id name version".
    static QString told(const model::project & project)
    {
        QStringList entities;
        for (const auto & e : project.getListOfAllEntities()->values()) {
            entities << QStringLiteral("%1 %2 %3")
                            .arg(QString::number(e->getId()), e->getName(), QString::number(e->getVersion()));
        }
        return entities.join(QStringLiteral(", "));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sProject;
};

QTEST_GUILESS_MAIN(tst_source)
#include "tst_source.moc"
