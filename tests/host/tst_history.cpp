#include "support/damaged_database.h"
#include "support/project_support.h"

#include "context/ctx_project.h"
#include "model/project_historic.h"
#include "storage/history.h"
#include "tools/bounded_uncompress.h"
#include "zk/zk_dao.h"

#include <QRegularExpression>
#include <QScopeGuard>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>

using storage::history::version;
using support::json;
using support::projectOf;
using support::textOf;
using list_of_versions = zk::ZkCollection<long, std::shared_ptr<model::project_historic>>;

class tst_history : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_sFile = m_folder->filePath("shop.korv");
        QVERIFY(store("first"));
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void versionsAreNumbered()
    {
        QCOMPARE(versions().size(), 0);
        const QDateTime before = QDateTime::currentDateTimeUtc();
        QCOMPARE(tag("one"), 1);
        QCOMPARE(tag(QString()), 2);
        QCOMPARE(tag("it's \"three\"; \u20ac"), 3);
        const QList<version> list = versions();
        QCOMPARE(list.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(list.at(i).number, i + 1);
            QVERIFY(list.at(i).created >= before && list.at(i).created <= QDateTime::currentDateTimeUtc());
        }
        QCOMPARE(list.at(0).message, QString("one"));
        QCOMPARE(list.at(1).message, QString());
        QCOMPARE(list.at(2).message, QString("it's \"three\"; \u20ac"));
    }
    void aVersionHoldsItsState()
    {
        execute("INSERT INTO t_plugin_params VALUES ('g', 'k', 5)");
        const QByteArray first = support::storedText(m_sFile);
        tag("one");
        QVERIFY(store("second"));
        const QByteArray second = support::storedText(m_sFile);
        QVERIFY(first != second);
        tag("two");
        QCOMPARE(support::storedText(extract(0)), first);
        QCOMPARE(support::storedText(extract(1)), second);
        QCOMPARE(support::storedText(m_sFile), second);
        // A version is a project file with its settings, without its history.
        QCOMPARE(ask(extract(1), "SELECT param_value FROM t_plugin_params"), QString("5"));
        QCOMPARE(ask(extract(1), "SELECT count(*) FROM t_project_historic"), QString("0"));
        QCOMPARE(ask(extract(1), "SELECT count(*) FROM t_project_tag"), QString("0"));
    }
    void settingsOfEveryKindAreKept()
    {
        execute("INSERT INTO t_plugin_params VALUES ('g', 'k', 'it''s \u20ac'), ('g', '', NULL), (NULL, 'r', "
                "0.1), ('g', 'b', x'00ff'), ('g', 'e', x''), ('g', 'n', 9007199254740993)");
        tag("one");
        const QString all =
            "SELECT group_concat(quote(plugin_guid) || quote(param_key) || quote(param_value) || "
            "typeof(param_value), ' ') FROM t_plugin_params";
        QCOMPARE(ask(extract(0), all), QString("'g''k''it''s \u20ac'text 'g'''NULLnull NULL'r'0.1real "
                                               "'g''b'X'00FF'blob 'g''e'X''blob "
                                               "'g''n'9007199254740993integer"));
    }
    void equalStatesGiveEqualVersions()
    {
        tag("one");
        tag("two");
        QVERIFY(!record(0)->getProjectFile().isEmpty());
        QCOMPARE(record(0)->getProjectFile(), record(1)->getProjectFile());
    }
    void laterVersionsHaveLaterTimes()
    {
        tag("one");
        QTest::qWait(5);
        tag("two");
        QVERIFY(versions().at(0).created < versions().at(1).created);
    }
    void aListIsFilledAnew()
    {
        tag("one");
        QList<version> list{{7, {}, "of another project"}};
        QVERIFY(!storage::history::list(m_sFile, list).isValid());
        QCOMPARE(list.size(), 1);
        QCOMPARE(list.at(0).message, QString("one"));
    }
    void theClockMayGoBack()
    {
        tag("one");
        execute("UPDATE t_project_historic SET dt_creation = '2999-01-01T00:00:00.000Z'");
        QCOMPARE(tag("two"), 2);
        QCOMPARE(tag("three"), 3);
        const QList<version> list = versions();
        QCOMPARE(list.at(0).message, QString("one"));
        QCOMPARE(list.at(1).message, QString("two"));
        QCOMPARE(list.at(2).message, QString("three"));
        QCOMPARE(list.at(2).created, list.at(0).created);
    }
    void aTimeThatIsNoneIsNotFollowed()
    {
        tag("one");
        execute("UPDATE t_project_historic SET dt_creation = 'a|b|'");
        const QByteArray before = support::bytesOf(m_sFile);
        int number = 0;
        QCOMPARE(storage::history::tag(m_sFile, "two", number).text(),
                 m_sFile +
                     ": is damaged (the time of a version is not a time, and a new version would come before "
                     "it); restore it from a copy");
        QCOMPARE(number, 0);
        QCOMPARE(versions().size(), 1);
        QCOMPARE(support::bytesOf(m_sFile), before);
    }
    void timesAreTextThatSorts()
    {
        tag("one");
        const QString time = ask(m_sFile, "SELECT dt_creation FROM t_project_historic");
        QVERIFY2(QRegularExpression("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z$")
                     .match(time)
                     .hasMatch(),
                 qPrintable(time));
    }
    void timesAreStoredInUtc()
    {
        qputenv("TZ", "Asia/Tokyo");
        tzset();
        const auto back = qScopeGuard([] {
            qunsetenv("TZ");
            tzset();
        });
        model::project_historic record;
        record.setCreationTime(QDateTime(QDate(2026, 3, 1), QTime(8, 30), Qt::LocalTime));
        QCOMPARE(record.zkBind().at(0).toString(), QString("2026-02-28T23:30:00.000Z"));
    }
    void aDamagedHistoryIsNotAddedTo()
    {
        tag("one");
        tag("two");
        zk::ZkSqlDatabase::clearAllDatabases();
        QVERIFY(support::swapRows(m_sFile, "t_project_historic"));
        const QByteArray before = support::bytesOf(m_sFile);
        const QString expected = m_sFile + ": is damaged (table t_project_historic: ";
        int number = 0;
        const QString told = storage::history::tag(m_sFile, "three", number).text();
        QVERIFY2(told.startsWith(expected), qPrintable(told));
        const auto p = projectOf(textOf("{\"id\": 1, \"name\": \"other\"}"));
        QVERIFY(storage::project_file::write(m_sFile, *p).text().startsWith(expected));
        QCOMPARE(support::bytesOf(m_sFile), before);
        // What the versions are is still told, and the model itself is whole and may be saved elsewhere.
        QCOMPARE(versions().size(), 2);
        QVERIFY(!support::storedText(m_sFile).isEmpty());
    }
    void damagedMessagesAreNoticed()
    {
        tag("one");
        tag("two");
        zk::ZkSqlDatabase::clearAllDatabases();
        QVERIFY(support::swapRows(m_sFile, "t_project_tag"));
        QList<version> list;
        const QString told = storage::history::list(m_sFile, list).text();
        QVERIFY2(told.startsWith(m_sFile + ": is damaged (table t_project_tag: "), qPrintable(told));
        QVERIFY(list.isEmpty());
    }
    void whatCouldNotBeRestoredIsNotStored()
    {
        const QByteArray before = support::bytesOf(m_sFile);
        storage::history::tag_result result;
        const QString told =
            storage::history::tag(m_sFile, "x", storage::history::tag_when::always, result, 10000).text();
        const QRegularExpression expected(QRegularExpression::anchoredPattern(
            QRegularExpression::escape(m_sFile) +
            ": cannot be tagged: its state of \\d{5} bytes is larger than the 10000 bytes that a version may "
            "have"));
        QVERIFY2(expected.match(told).hasMatch(), qPrintable(told));
        QCOMPARE(result.number, 0);
        QCOMPARE(support::bytesOf(m_sFile), before);
        QCOMPARE(
            storage::history::tag(m_sFile, "x", storage::history::tag_when::always, result, 1000000).text(),
            QString());
        QCOMPARE(result.number, 1);
    }
    void aStateMayBeAsLargeAsTheLimit()
    {
        using storage::history::tag_when;
        tag("one");
        const qsizetype size = tools::boundedUncompress(record(0)->getProjectFile()).size();
        storage::history::tag_result result;
        QVERIFY(storage::history::tag(m_sFile, "x", tag_when::always, result, size - 1).isValid());
        QCOMPARE(result.number, 0);
        QCOMPARE(storage::history::tag(m_sFile, "x", tag_when::always, result, size).text(), QString());
        QCOMPARE(result.number, 2);
    }
    void aTagNeedsATemporaryFolder()
    {
        const QByteArray before = support::bytesOf(m_sFile);
        const QString folder = m_folder->filePath("nowhere");
        qputenv("TMPDIR", folder.toLocal8Bit());
        const auto back = qScopeGuard([] { qunsetenv("TMPDIR"); });
        int number = 0;
        QCOMPARE(storage::history::tag(m_sFile, "one", number).text(),
                 folder + ": no temporary file can be made there (No such file or directory)");
        QCOMPARE(number, 0);
        QCOMPARE(support::bytesOf(m_sFile), before);
    }
    void aTagLeavesNoTemporaryFiles()
    {
        const QString folder = m_folder->filePath("tmp");
        QVERIFY(QDir().mkpath(folder));
        qputenv("TMPDIR", folder.toLocal8Bit());
        const auto back = qScopeGuard([] { qunsetenv("TMPDIR"); });
        tag("one");
        QVERIFY(store("second"));
        tag("two");
        execute("DELETE FROM t_project");
        int number = 0;
        QVERIFY(storage::history::tag(m_sFile, "x", number).isValid());
        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList());
    }
    void aVersionIsLoaded()
    {
        tag("one");
        const QByteArray first = support::storedText(m_sFile);
        QVERIFY(store("second"));
        execute("UPDATE t_project SET name = 'store'");
        tag("two");
        const QByteArray second = support::storedText(m_sFile);
        QVERIFY(store("third"));
        const auto current = std::make_shared<model::project>(7);
        context::ctx_project::getSingleton().setProject(current);
        const auto back = qScopeGuard([] { context::ctx_project::getSingleton().setProject(nullptr); });
        QCOMPARE(storage::text_form::write(*loaded(1)), first);
        const auto newest = loaded(2);
        QCOMPARE(storage::text_form::write(*newest), second);
        QCOMPARE(newest->getName(), QString("store"));
        // The file that it was read from is gone.
        QCOMPARE(newest->getFileName(), QString());
        QCOMPARE(context::ctx_project::getSingleton().getProject(), current);
    }
    void aVersionThatIsNotThere_data()
    {
        QTest::addColumn<int>("versions");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("reason");
        QTest::newRow("none") << 0 << 1 << "has no versions; 'korvane tag' makes one";
        QTest::newRow("beyond") << 2 << 3 << "has no version 3; the newest one is version 2";
        QTest::newRow("zero") << 2 << 0 << "has no version 0; the newest one is version 2";
        QTest::newRow("negative") << 1 << -1 << "has no version -1; the newest one is version 1";
    }
    void aVersionThatIsNotThere()
    {
        QFETCH(int, versions);
        QFETCH(int, number);
        QFETCH(QString, reason);
        for (int i = 0; i < versions; ++i) {
            tag("x");
        }
        QCOMPARE(loadError(number), m_sFile + ": " + reason);
    }
    void aVersionThatCannotBeLoaded()
    {
        tag("one");
        tag("two");
        tag("three");
        execute("UPDATE t_project_historic SET project_file = x'00000004' WHERE rowid = 1");
        const QString empty = m_folder->filePath("empty.sqlite");
        QCOMPARE(support::run("sqlite3", {empty, "CREATE TABLE bookmarks (url TEXT)"}).status, 0);
        execute("UPDATE t_project_historic SET project_file = x'" +
                qCompress(support::bytesOf(empty)).toHex() + "' WHERE rowid = 2");
        QCOMPARE(loadError(1), m_sFile + ": is damaged (version 1: it cannot be uncompressed); restore it "
                                         "from a copy");
        QCOMPARE(loadError(2), m_sFile + ": is damaged (version 2: is a SQLite database, but not a Korvane "
                                         "project); restore it from a copy");
        QCOMPARE(loadError(3), QString());
        const QString missing = m_folder->filePath("missing.korv");
        std::shared_ptr<model::project> project;
        QCOMPARE(storage::history::load(missing, 1, project).text(),
                 missing + ": does not exist; check the name");
    }
    void loadingLeavesNoFiles()
    {
        tag("one");
        execute("INSERT INTO t_project_historic VALUES ('2999-01-01T00:00:00.000Z', x'" +
                qCompress("no project").toHex() + "')");
        const QString folder = m_folder->filePath("tmp");
        QVERIFY(QDir().mkpath(folder));
        qputenv("TMPDIR", folder.toLocal8Bit());
        const auto back = qScopeGuard([] { qunsetenv("TMPDIR"); });
        QCOMPARE(loadError(1), QString());
        QCOMPARE(loadError(2), m_sFile + ": is damaged (version 2: is not a Korvane project file (.korv)); "
                                         "restore it from a copy");
        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList());
    }
    void loadingNeedsATemporaryFolder()
    {
        tag("one");
        const QString folder = m_folder->filePath("nowhere");
        qputenv("TMPDIR", folder.toLocal8Bit());
        const auto back = qScopeGuard([] { qunsetenv("TMPDIR"); });
        const QRegularExpression expected(
            QRegularExpression::anchoredPattern(QRegularExpression::escape(folder) +
                                                "/korvane_v1_\\d{17}\\.korv: cannot be written, so version 1 "
                                                "of " +
                                                QRegularExpression::escape(m_sFile) +
                                                " cannot be restored; check the folder for temporary files"));
        const QString told = loadError(1);
        QVERIFY2(expected.match(told).hasMatch(), qPrintable(told));
    }
    void theLogOfAnotherDatabase()
    {
        const QString other = m_folder->filePath("other.sqlite");
        QCOMPARE(support::run("sqlite3", {other, "CREATE TABLE bookmarks (url TEXT)"}).status, 0);
        const support::run_result log = support::runKorvane({"log", other});
        QCOMPARE(log.status, 1);
        QCOMPARE(log.err, other.toUtf8() + ": is a SQLite database, but not a Korvane project\n");
    }
    void aTextThatIsTooLarge()
    {
        const QString text = m_folder->filePath("huge.json");
        {
            // Takes no room on the disk.
            QFile file(text);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64(512) * 1024 * 1024 + 1));
        }
        const support::run_result imported = support::runKorvane({"import", text, m_sFile});
        QCOMPARE(imported.status, 1);
        QCOMPARE(imported.err, text.toUtf8() + ": is too large for the text form of a project\n");
    }
    void aHistoryThatWasEmptied()
    {
        tag("one");
        execute("DELETE FROM t_project_historic");
        QCOMPARE(versions().size(), 0);
        QCOMPARE(tag("new"), 1);
        QCOMPARE(versions().at(0).message, QString("new"));
    }
    void failures()
    {
        int number = 77;
        const QString missing = m_folder->filePath("missing.korv");
        QCOMPARE(storage::history::tag(missing, "x", number).text(),
                 missing + ": does not exist; check the name");
        QVERIFY(!QFile::exists(missing));
        QList<version> list;
        QCOMPARE(storage::history::list(missing, list).text(), missing + ": does not exist; check the name");
        execute("DELETE FROM t_project");
        const QByteArray before = support::bytesOf(m_sFile);
        QVERIFY(storage::history::tag(m_sFile, "x", number).text().contains("table t_project has 0 rows"));
        QCOMPARE(number, 77);
        QCOMPARE(support::bytesOf(m_sFile), before);
    }
    void theNewestOfAFileThatIsNone_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("why");
        QTest::newRow("no file") << QString() << QStringLiteral("does not exist; check the name");
        QTest::newRow("no table of versions")
            << QStringLiteral("DROP TABLE t_project_historic")
            << QStringLiteral("is damaged (table t_project_historic is missing); restore it from a copy");
    }
    /// Neither looking for it nor taking it away gives anything, and the file stays what it was.
    void theNewestOfAFileThatIsNone()
    {
        QFETCH(const QString, statement);
        QFETCH(const QString, why);
        tag("one");
        if (statement.isEmpty()) {
            QVERIFY(QFile::rename(m_sFile, m_folder->filePath("elsewhere.korv")));
        } else {
            execute(statement);
        }
        const QByteArray before = support::bytesOf(m_sFile);
        storage::history::newest_version newest;
        newest.what.number = 77;
        newest.isState = true;
        const QString told = m_sFile + QStringLiteral(": ") + why;
        QCOMPARE(storage::history::readNewest(m_sFile, newest).text(), told);
        QCOMPARE(newest.what.number, 77);
        QVERIFY(newest.isState);
        QCOMPARE(storage::history::removeNewest(m_sFile, newest.what).text(), told);
        QCOMPARE(support::bytesOf(m_sFile), before);
        QCOMPARE(QFile::exists(m_sFile), !statement.isEmpty());
    }
    void aNewestVersionThatHoldsNoModel_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("what is not compressed") << QByteArray("shop");
        QTest::newRow("what is no project") << qCompress(QByteArray("shop"));
        const QTemporaryDir folder;
        const QString other = folder.filePath("other.sqlite");
        QCOMPARE(support::run("sqlite3", {other, "CREATE TABLE bookmarks (url TEXT)"}).status, 0);
        QTest::newRow("the database of another program") << qCompress(support::bytesOf(other));
    }
    /// It is not the state, so that it keeps nobody from tagging that.
    void aNewestVersionThatHoldsNoModel()
    {
        QFETCH(const QByteArray, file);
        tag("one");
        storage::history::newest_version newest;
        QCOMPARE(storage::history::readNewest(m_sFile, newest).text(), QString());
        QVERIFY(newest.isState);
        execute("UPDATE t_project_historic SET project_file = X'" + QString::fromLatin1(file.toHex()) + "'");
        QCOMPARE(storage::history::readNewest(m_sFile, newest).text(), QString());
        QCOMPARE(newest.what.message, QString("one"));
        QVERIFY(!newest.isState);
        storage::history::tag_result result;
        QCOMPARE(storage::history::tag(m_sFile, "two", storage::history::tag_when::if_changed, result).text(),
                 QString());
        QCOMPARE(result.number, 2);
        QCOMPARE(
            storage::history::tag(m_sFile, "three", storage::history::tag_when::if_changed, result).text(),
            QString());
        QCOMPARE(versions().size(), 2);
    }
    void aNewestVersionThatIsAnotherByNow()
    {
        tag("one");
        storage::history::newest_version newest;
        QCOMPARE(storage::history::readNewest(m_sFile, newest).text(), QString());
        tag("two");
        const QString told = m_sFile + ": version 1 is not the newest one any more; nothing was taken away";
        QCOMPARE(storage::history::removeNewest(m_sFile, newest.what).text(), told);
        QCOMPARE(versions().size(), 2);
        execute("DELETE FROM t_project_historic");
        QCOMPARE(storage::history::removeNewest(m_sFile, newest.what).text(), told);
    }
    void commands()
    {
        const support::run_result tagged = support::runKorvane({"tag", m_sFile, "-m", "a message"});
        QCOMPARE(tagged.status, 0);
        QCOMPARE(tagged.err, QByteArray());
        QCOMPARE(tagged.out, "Version 1 of " + m_sFile.toUtf8() + " tagged\n");
        QCOMPARE(support::runKorvane({"tag", m_sFile}).status, 0);
        const support::run_result log = support::runKorvane({"log", m_sFile});
        QCOMPARE(log.status, 0);
        const QList<QByteArray> lines = log.out.split('\n');
        QCOMPARE(lines.size(), 3);
        QVERIFY2(QRegularExpression("^v1  \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d  a message$")
                     .match(QString::fromUtf8(lines.at(0)))
                     .hasMatch(),
                 log.out.constData());
        QVERIFY(QRegularExpression("^v2  \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d$")
                    .match(QString::fromUtf8(lines.at(1)))
                    .hasMatch());
        const support::run_result failed = support::runKorvane({"log", "/nowhere/x.korv"});
        QCOMPARE(failed.status, 1);
        QCOMPARE(failed.out, QByteArray());
        QCOMPARE(failed.err, QByteArray("/nowhere/x.korv: does not exist; check the name\n"));
        QCOMPARE(support::runKorvane({"tag", "/nowhere/x.korv"}).status, 1);
    }
    void anUnchangedModelIsNoticed()
    {
        using storage::history::tag_result;
        using storage::history::tag_when;
        const auto tagged = [this](tag_when when) {
            tag_result result;
            const QSqlError error = storage::history::tag(m_sFile, "x", when, result);
            return error.isValid() ? error.text() : QString("%1 %2").arg(result.number).arg(result.unchanged);
        };
        QCOMPARE(tagged(tag_when::if_changed), QString("1 0"));
        QCOMPARE(tagged(tag_when::if_changed), QString("0 1"));
        QCOMPARE(versions().size(), 1);
        QCOMPARE(tagged(tag_when::always), QString("2 1"));
        QCOMPARE(versions().size(), 2);
        // What is stored beside the model does not count.
        execute("INSERT INTO t_plugin_params VALUES ('guid', 'key', 5)");
        QCOMPARE(tagged(tag_when::if_changed), QString("0 2"));
        execute("UPDATE t_project SET last_entity_id = 500");
        QCOMPARE(tagged(tag_when::if_changed), QString("0 2"));
        // Each of these is a change of the model, and the former state is one again.
        QVERIFY(store("renamed"));
        QCOMPARE(tagged(tag_when::if_changed), QString("3 0"));
        execute("UPDATE t_project SET name = 'other'");
        QCOMPARE(tagged(tag_when::if_changed), QString("4 0"));
        execute("INSERT INTO t_meta_data VALUES (1, 'k', 'QString', 'v')");
        QCOMPARE(tagged(tag_when::if_changed), QString("5 0"));
        execute("DELETE FROM t_meta_data");
        QCOMPARE(tagged(tag_when::if_changed), QString("6 0"));
        QCOMPARE(tagged(tag_when::if_changed), QString("0 6"));
        // A newest version that cannot be read is no reason to keep no other.
        execute("UPDATE t_project_historic SET project_file = x'00' WHERE rowid = 6");
        QCOMPARE(tagged(tag_when::if_changed), QString("7 0"));
    }
    void aTagTellsThatNothingChanged()
    {
        const QByteArray file = m_sFile.toUtf8();
        QCOMPARE(support::runKorvane({"tag", m_sFile, "--if-changed"}).out,
                 "Version 1 of " + file + " tagged\n");
        const support::run_result again = support::runKorvane({"tag", m_sFile});
        QCOMPARE(again.status, 0);
        QCOMPARE(again.out, "Version 2 of " + file + " tagged; the model has not changed since v1\n");
        const support::run_result nothing = support::runKorvane({"tag", m_sFile, "--if-changed"});
        QCOMPARE(nothing.status, 0);
        QCOMPARE(nothing.err, QByteArray());
        QCOMPARE(nothing.out, "No version of " + file + " tagged: the model has not changed since v2\n");
        QCOMPARE(versions().size(), 2);
    }
    void importAndDump()
    {
        const QString text = m_folder->filePath("shop.json");
        const QString file = m_folder->filePath("new.korv");
        QVERIFY(support::writeBytes(text,
                                    textOf(json("{'name': 'a', 'properties': [{'name': 'x',"
                                                " 'relationship': {'type': 'one-to-one', 'target': 1}}]}"))));
        const support::run_result imported = support::runKorvane({"import", text, file});
        QCOMPARE(imported.status, 0);
        QCOMPARE(imported.err, text.toUtf8() +
                                   ": warning: entities[0] 'a' / properties[0] 'x': the foreign key needs a "
                                   "column 'x', which no property makes; name an existing one in "
                                   "'columnName'\n");
        const support::run_result dumped = support::runKorvane({"dump", file});
        QCOMPARE(dumped.status, 0);
        QCOMPARE(dumped.out, support::storedText(file));
        // Imported again without ids: everything keeps its own.
        QCOMPARE(support::runKorvane({"import", text, file}).status, 0);
        QCOMPARE(support::runKorvane({"dump", file}).out, dumped.out);
        // After an error the file is as it was.
        const QByteArray before = support::bytesOf(file);
        QVERIFY(support::writeBytes(text, textOf("{}")));
        const support::run_result failed = support::runKorvane({"import", text, file});
        QCOMPARE(failed.status, 1);
        QCOMPARE(failed.err, text.toUtf8() + ": entities[0]: field 'name' is missing\n");
        QCOMPARE(support::bytesOf(file), before);
        for (const QString & bad : {m_folder->filePath("no.json"), m_folder->path(), QString("/dev/zero")}) {
            QCOMPARE(support::runKorvane({"import", bad, file}).status, 1);
        }
        QVERIFY(support::writeBytes(m_folder->filePath("other.db"), "no project"));
        QVERIFY(support::writeBytes(text, textOf("")));
        QCOMPARE(support::runKorvane({"import", text, m_folder->filePath("other.db")}).status, 1);
        QCOMPARE(support::bytesOf(m_folder->filePath("other.db")), QByteArray("no project"));
    }
    void aChangeUnderItsOldVersionIsWarnedOf()
    {
        const QString text = m_folder->filePath("shop.json");
        const QString file = m_folder->filePath("new.korv");
        QVERIFY(support::writeBytes(text, textOf(json("{'name': 'a'}, {'name': 'b'}"))));
        QCOMPARE(support::runKorvane({"import", text, file}).status, 0);
        // A dumped text gives every version.
        const QByteArray dumped = support::runKorvane({"dump", file}).out;
        QVERIFY(support::writeBytes(text, dumped));
        QCOMPARE(support::runKorvane({"import", text, file}).err, QByteArray());
        const QByteArray renamed = QByteArray(dumped).replace("\"name\": \"b\"", "\"name\": \"c\"");
        QVERIFY(support::writeBytes(text, renamed));
        const support::run_result kept = support::runKorvane({"import", text, file});
        QCOMPARE(kept.status, 0);
        QCOMPARE(kept.err, text.toUtf8() +
                               ": warning: entities[1] 'c': changed, but its \"version\" is still 1, so no "
                               "evolution script will contain the change; delete the \"version\" field or "
                               "raise it\n");
        QCOMPARE(support::runKorvane({"dump", file}).out, renamed);
        QVERIFY(support::writeBytes(text, QByteArray(dumped).replace("\"version\": 1", "\"version\": 2")));
        QCOMPARE(support::runKorvane({"import", text, file}).err, QByteArray());
    }
    void aDumpThatCannotBeWrittenFails()
    {
        const support::run_result result =
            support::run("/bin/sh", {"-c", "exec \"$0\" dump \"$1\" > /dev/full", KORVANE_PROGRAM, m_sFile});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.err.count('\n'), 1);
    }

private:
    bool store(const QByteArray & entity)
    {
        const auto p = projectOf(textOf("{\"id\": 1, \"name\": \"" + entity + "\"}"));
        return !storage::project_file::write(m_sFile, *p).isValid();
    }
    int tag(const QString & message)
    {
        int number = 0;
        const QSqlError error = storage::history::tag(m_sFile, message, number);
        if (error.isValid()) {
            qWarning("%s", qUtf8Printable(error.text()));
        }
        return number;
    }
    QList<version> versions()
    {
        QList<version> list;
        const QSqlError error = storage::history::list(m_sFile, list);
        return error.isValid() ? QList<version>{{-1, {}, error.text()}} : list;
    }
    std::shared_ptr<model::project> loaded(int number)
    {
        std::shared_ptr<model::project> project;
        const QSqlError error = storage::history::load(m_sFile, number, project);
        if (error.isValid()) {
            qWarning("%s", qUtf8Printable(error.text()));
        }
        return project ? project : std::make_shared<model::project>(0);
    }
    /// What keeps the version from being loaded; then the project that was there stays.
    QString loadError(int number)
    {
        const auto before = std::make_shared<model::project>(7);
        std::shared_ptr<model::project> project = before;
        const QSqlError error = storage::history::load(m_sFile, number, project);
        return error.isValid() && project != before ? QStringLiteral("another project") : error.text();
    }
    std::shared_ptr<model::project_historic> record(long index)
    {
        list_of_versions list;
        zk::dao::fetchByQuery(list, zk::ZkSqlQuery().orderAsc("t_project_historic.dt_creation"),
                              zk::ZkSqlDatabase::getDatabase(m_sFile));
        return list.getByIndex(index);
    }
    /// The project file of a version, unpacked.
    QString extract(long index)
    {
        const QString name = m_folder->filePath(QString("version%1.korv").arg(index));
        const QByteArray compressed = record(index)->getProjectFile();
        support::writeBytes(name, tools::boundedUncompress(compressed));
        return qUncompress(compressed) == support::bytesOf(name) ? name : QString();
    }
    void execute(const QString & statement) { ask(m_sFile, statement); }
    static QString ask(const QString & file, const QString & statement)
    {
        QSqlQuery q(statement, zk::ZkSqlDatabase::getDatabase(file));
        return q.next() ? q.value(0).toString() : q.lastError().text();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sFile;
};

QTEST_GUILESS_MAIN(tst_history)
#include "tst_history.moc"
