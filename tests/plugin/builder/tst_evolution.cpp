#include "export_bench.h"
#include "support/full_disk.h"
#include "support/project_support.h"

#include "context/ctx_project.h"
#include "model/project_historic.h"
#include "storage/history.h"
#include "storage/project_file.h"
#include "zk/zk_dao.h"
#include "zk/zk_sql_database.h"

#include <QRegularExpression>
#include <QSet>
#include <QSqlQuery>
#include <QtTest>

#include <functional>
#include <utility>

#include <sys/stat.h>

using plugin::ddl_export;
using support::entity_builder;
using support::model_builder;

namespace {

QSqlDatabase databaseOf(const QString & file)
{
    return zk::ZkSqlDatabase::getDatabase(file);
}

QByteArray contentOf(const QString & fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Scripts from the tagged versions of a project in a real project file.
class tst_evolution : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void writesNothingWithoutTags();
    void writesTwoScriptsForOneTag();
    void writesAScriptForEachVersion();
    void writesTheFullSchemaAsWell();
    void ordersTagsByTheirTime();
    void makesEachVersionCurrent();
    void namesScriptsAfterTheExportedProject();
    void makesTheProjectCurrentAgain();
    void survivesWhenOnlyTheContextOwnsTheProject();
    void writesIntoTheFolderOfTheExportedProject();
    void keepsTwoVersionsAliveAtMost();
    void cannotLoadTheTags_data();
    void cannotLoadTheTags();
    void cannotUncompressATag_data();
    void cannotUncompressATag();
    void cannotLoadATag_data();
    void cannotLoadATag();
    void cannotWriteTemporaryFiles_data();
    void cannotWriteTemporaryFiles();
    void leavesTakenNamesAlone_data();
    void leavesTakenNamesAlone();
    void doesNotLookAtWhatLiesBesideAVersion();
    void keepsVersionsFromOthers();
    void asksForTheTagsOnce();
    void endsWhenAVersionCannotBeRead_data();
    void endsWhenAVersionCannotBeRead();
    void needsATemporaryFolder();
    void stopsAtTheFirstFailure_data();
    void stopsAtTheFirstFailure();

private:
    /// Stores version `number` of the project, 1 to 4, and tags it unless it is the current state.
    void store(int number, const QString & name = "shop");
    void tag();
    void addHistoric(const QByteArray & projectFile, const QDateTime & time = QDateTime::currentDateTime());
    std::shared_ptr<model::project> load() const;
    zk::ZkBool build();
    /// Puts something under every name that version 1 could get within the next moments, each with `suffix`,
    /// and returns when the first of them has come.
    QStringList plant(const QString & suffix, const std::function<bool(const QString &)> & put);
    /// Does something when the first message of the coming build is there.
    void atTheFirstMessage(const std::function<void()> & act);
    QStringList temporaryFiles() const
    {
        return QDir(m_temp->path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
    QString script(const QString & suffix) const
    {
        return m_bench->content("shop_default_db_schema" + suffix + ".sql");
    }

    std::unique_ptr<QTemporaryDir> m_temp;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<export_bench> m_bench;
    QString m_file;
    std::shared_ptr<model::project> m_project;
};

void tst_evolution::init()
{
    m_temp = std::make_unique<QTemporaryDir>();
    m_folder = std::make_unique<QTemporaryDir>();
    m_bench = std::make_unique<export_bench>(ddl_export::db_default, ddl_export::evolution);
    m_file = m_folder->filePath("stored.korv");
    qputenv("TMPDIR", m_temp->path().toLocal8Bit());
}

void tst_evolution::cleanup()
{
    m_project.reset();
    m_bench.reset();
    zk::ZkSqlDatabase::clearAllDatabases();
    qunsetenv("TMPDIR");
}

void tst_evolution::store(int number, const QString & name)
{
    model_builder model(name);
    entity_builder person = model.entity(1, "person");
    person.version(number);
    person.identifier(10, "id", "long");
    person.property(11, number < 3 ? "name" : "full_name", "QString");
    if (number >= 2) {
        person.property(12, "email", "QString");
    }
    if (number >= 4) {
        person.property(13, "age", "int");
    }
    const QSqlError error = storage::project_file::write(m_file, model.project());
    QVERIFY2(!error.isValid(), qPrintable(error.text()));
}

void tst_evolution::tag()
{
    int number = 0;
    const QSqlError error = storage::history::tag(m_file, "a version", number);
    QVERIFY2(!error.isValid(), qPrintable(error.text()));
}

void tst_evolution::addHistoric(const QByteArray & projectFile, const QDateTime & time)
{
    const auto record = std::make_shared<model::project_historic>();
    record->setCreationTime(time);
    record->setProjectFile(projectFile);
    zk::ZkCollection<long, std::shared_ptr<model::project_historic>> list;
    list.insert(0, record);
    const QSqlError error = zk::dao::insert(list, databaseOf(m_file));
    QVERIFY2(!error.isValid(), qPrintable(error.text()));
}

std::shared_ptr<model::project> tst_evolution::load() const
{
    const auto project = std::make_shared<model::project>(1);
    project->setFileName(m_file);
    return project->load().isValid() ? nullptr : project;
}

zk::ZkBool tst_evolution::build()
{
    m_project = load();
    if (!m_project) {
        return zk::ZkBool::failure("the test's project cannot be loaded");
    }
    context::ctx_project::getSingleton().setProject(m_project);
    return m_bench->builder().builder().build(*m_project);
}

void tst_evolution::writesNothingWithoutTags()
{
    store(1);
    const zk::ZkBool result = build();
    QVERIFY2(result, qPrintable(result.getDesc()));
    QCOMPARE(m_bench->files(), QStringList());
    QCOMPARE(m_bench->messages(), QStringList());
}

void tst_evolution::writesTwoScriptsForOneTag()
{
    store(1);
    tag();
    store(2);
    const zk::ZkBool result = build();
    QVERIFY2(result, qPrintable(result.getDesc()));
    QCOMPARE(m_bench->files(),
             (QStringList{"shop_default_db_schema_v1.sql", "shop_default_db_schema_v1_to_v2.sql"}));
    QCOMPARE(
        script("_v1"),
        QString("\nCREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, name TEXT);\n\n"));
    QCOMPARE(script("_v1_to_v2"), QString("\nALTER TABLE person ADD COLUMN email TEXT;\n\n"));
    QCOMPARE(temporaryFiles(), QStringList());
    const QString v1 = m_bench->path("shop_default_db_schema_v1.sql");
    QCOMPARE(m_bench->messages().mid(0, 4),
             progress({"Full database schema : DDL export begin (" + v1 + ")",
                       "Full database schema : create table DDL SQL script for entity 'person' (" + v1 + ")",
                       "Full database schema : DDL export end (" + v1 + ")",
                       "Full database schema DDL SQL script created for project 'shop' : '" + v1 + "'"}));
    const QString v2 = m_bench->path("shop_default_db_schema_v1_to_v2.sql");
    QCOMPARE(
        m_bench->messages().mid(4),
        progress(
            {"Database schema evolution : DDL export begin (" + v2 + ")",
             "Database schema evolution : add column DDL SQL script for property 'person.email' (" + v2 + ")",
             "Database schema evolution : DDL export end (" + v2 + ")",
             "Database schema evolution DDL SQL script created for project 'shop' : '" + v2 + "'"}));
}

void tst_evolution::writesAScriptForEachVersion()
{
    for (int number = 1; number <= 3; ++number) {
        store(number);
        tag();
    }
    store(4);
    const zk::ZkBool result = build();
    QVERIFY2(result, qPrintable(result.getDesc()));
    QCOMPARE(m_bench->files(),
             (QStringList{"shop_default_db_schema_v1.sql", "shop_default_db_schema_v1_to_v2.sql",
                          "shop_default_db_schema_v2_to_v3.sql", "shop_default_db_schema_v3_to_v4.sql"}));
    QCOMPARE(script("_v1_to_v2"), QString("\nALTER TABLE person ADD COLUMN email TEXT;\n\n"));
    QCOMPARE(script("_v2_to_v3"), QString("\nALTER TABLE person RENAME COLUMN name TO full_name;\n\n"));
    QCOMPARE(script("_v3_to_v4"), QString("\nALTER TABLE person ADD COLUMN age INTEGER;\n\n"));
    QCOMPARE(temporaryFiles(), QStringList());
}

void tst_evolution::writesTheFullSchemaAsWell()
{
    m_bench->plugin.setExportDatabaseSchema(ddl_export::full_and_evolution);
    store(1);
    tag();
    store(2);
    QVERIFY(build());
    QCOMPARE(m_bench->files(),
             (QStringList{"shop_default_db_schema_full.sql", "shop_default_db_schema_v1.sql",
                          "shop_default_db_schema_v1_to_v2.sql"}));
    QCOMPARE(script("_full"), QString("\nCREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, "
                                      "name TEXT, email TEXT);\n\n"));
    m_bench->plugin.setExportDatabaseSchema(ddl_export::full);
    QVERIFY(databaseOf(m_file).isOpen());
    for (const QString & file : m_bench->files()) {
        QFile::remove(m_bench->path(file));
    }
    QVERIFY(build());
    QCOMPARE(m_bench->files(), QStringList{"shop_default_db_schema_full.sql"});
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

void tst_evolution::ordersTagsByTheirTime()
{
    store(2);
    addHistoric(qCompress(contentOf(m_file)), QDateTime(QDate(2026, 1, 2), QTime(3, 4)));
    store(1);
    zk::ZkSqlDatabase::clearAllDatabases();
    model_builder fresh;
    const QString first = m_folder->filePath("first.korv");
    QVERIFY(!storage::project_file::write(first, *load()).isValid());
    zk::ZkSqlDatabase::clearAllDatabases();
    addHistoric(qCompress(contentOf(first)), QDateTime(QDate(2026, 1, 1), QTime(23, 59)));
    store(3);
    QVERIFY(build());
    QVERIFY(script("_v1").contains("(id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, name TEXT)"));
    QCOMPARE(script("_v1_to_v2"), QString("\nALTER TABLE person ADD COLUMN email TEXT;\n\n"));
}

void tst_evolution::makesEachVersionCurrent()
{
    store(1);
    tag();
    store(2);
    tag();
    store(3);
    QHash<QString, QString> locations;
    connect(&m_bench->builder().builder(), &plugin::ddl_export_builder::onMessage, this,
            [&locations](const QString & text) {
                const auto current = context::ctx_project::getSingleton().getProject();
                const QString script = text.section('/', -1).section('_', 4).section('.', 0, 0);
                locations.insert(script, current->getName() + " in " + current->getLocation());
            });
    QVERIFY(build());
    QCOMPARE(locations, (QHash<QString, QString>{{"v1", "shop in " + m_temp->path()},
                                                 {"v1_to_v2", "shop in " + m_temp->path()},
                                                 {"v2_to_v3", "shop in " + m_folder->path()}}));
}

void tst_evolution::namesScriptsAfterTheExportedProject()
{
    store(1, "stall");
    tag();
    store(2, "market");
    tag();
    store(3);
    QVERIFY(build());
    QCOMPARE(m_bench->files(),
             (QStringList{"shop_default_db_schema_v1.sql", "shop_default_db_schema_v1_to_v2.sql",
                          "shop_default_db_schema_v2_to_v3.sql"}));
    QVERIFY(m_bench->messages().filter("project 'stall'").isEmpty());
    QCOMPARE(m_bench->messages().filter("script created for project 'shop'").size(), 3);
    QCOMPARE(temporaryFiles(), QStringList());
}

void tst_evolution::makesTheProjectCurrentAgain()
{
    store(1);
    tag();
    QVERIFY(build());
    QCOMPARE(context::ctx_project::getSingleton().getProject(), m_project);
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
    QCOMPARE(m_project->getFileName(), m_file);
    QCOMPARE(m_project->getListOfAllEntities()->count(), 1L);
    QCOMPARE(m_bench->builder().previousProject(), nullptr);
    QCOMPARE(m_bench->builder().currentProject(), m_project.get());
}

void tst_evolution::survivesWhenOnlyTheContextOwnsTheProject()
{
    store(1);
    tag();
    store(2);
    context::ctx_project & context = context::ctx_project::getSingleton();
    context.setProject(load());
    model::project & project = *context.getProject();
    QVERIFY(m_bench->builder().builder().build(project));
    QCOMPARE(context.getProject().get(), &project);
    QCOMPARE(script("_v1_to_v2"), QString("\nALTER TABLE person ADD COLUMN email TEXT;\n\n"));
}

void tst_evolution::writesIntoTheFolderOfTheExportedProject()
{
    QVERIFY(QDir(m_folder->path()).mkdir("out"));
    m_bench->plugin.setDDLExportPath("out");
    store(1);
    tag();
    store(2);
    const zk::ZkBool result = build();
    QVERIFY2(result, qPrintable(result.getDesc()));
    QCOMPARE(QDir(m_folder->filePath("out")).entryList(QDir::Files, QDir::Name),
             (QStringList{"shop_default_db_schema_v1.sql", "shop_default_db_schema_v1_to_v2.sql"}));
}

void tst_evolution::keepsTwoVersionsAliveAtMost()
{
    for (int number = 1; number <= 3; ++number) {
        store(number);
        tag();
    }
    store(4);
    std::vector<std::weak_ptr<model::project>> seen;
    QSet<model::project *> known;
    const auto loaded = [&seen] {
        long count = 0;
        for (const std::weak_ptr<model::project> & version : seen) {
            const auto project = version.lock();
            count += project && project->getListOfAllEntities()->count() > 0;
        }
        return count;
    };
    long most = 0;
    connect(&m_bench->builder().builder(), &plugin::ddl_export_builder::onMessage, this, [&] {
        const auto current = context::ctx_project::getSingleton().getProject();
        if (current != m_project && (seen.empty() || seen.back().lock() != current)) {
            seen.push_back(current);
        }
        most = std::max(most, loaded());
    });
    QVERIFY(build());
    QCOMPARE(seen.size(), std::size_t(3));
    QCOMPARE(most, 2L);
    QCOMPARE(loaded(), 0L);
}

void tst_evolution::cannotLoadTheTags_data()
{
    QTest::addColumn<bool>("hasFile");
    QTest::newRow("no project file") << false;
    QTest::newRow("database without the table") << true;
}

void tst_evolution::cannotLoadTheTags()
{
    QFETCH(bool, hasFile);
    const model_builder model;
    if (hasFile) {
        store(1);
        QSqlQuery query(databaseOf(m_file));
        QVERIFY(query.exec("DROP TABLE t_project_historic"));
        model.project().setFileName(m_file);
    }
    context::ctx_project::getSingleton().setProject(model.get());
    const zk::ZkBool result = m_bench->builder().builder().build(model.project());
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    const QString start = "Error loading all project historics :\n";
    QVERIFY2(result.getDesc().startsWith(start), qPrintable(result.getDesc()));
    QVERIFY(result.getDesc().size() > start.size());
    QCOMPARE(m_bench->files(), QStringList());
    QCOMPARE(m_bench->messages(), QStringList());
}

void tst_evolution::cannotUncompressATag_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::newRow("no compressed data") << QByteArray("this was never compressed");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("nothing inside") << qCompress(QByteArray());
    QTest::newRow("cut") << qCompress(QByteArray(10000, 'x')).chopped(5);
    QByteArray huge = qCompress(QByteArray(1000, 'x'));
    huge.replace(0, 4, QByteArray::fromHex("f0000000"));
    QTest::newRow("claims 3.75 GiB") << huge;
}

void tst_evolution::cannotUncompressATag()
{
    QFETCH(QByteArray, stored);
    store(1);
    addHistoric(stored);
    const zk::ZkBool result = build();
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    const QRegularExpression expected(QRegularExpression::anchoredPattern(
        "Cannot uncompress project file : " + QRegularExpression::escape(m_temp->path()) +
        "/shop_v1_\\d{17}\\.korv"));
    QVERIFY2(expected.match(result.getDesc()).hasMatch(), qPrintable(result.getDesc()));
    QCOMPARE(temporaryFiles(), QStringList());
    QCOMPARE(m_bench->files(), QStringList());
    QCOMPARE(m_bench->messages(), QStringList());
    QCOMPARE(context::ctx_project::getSingleton().getProject(), m_project);
}

void tst_evolution::cannotLoadATag_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    QTest::newRow("text") << QByteArray("no database at all") << "is not a Korvane project file (.korv)";
    QTemporaryDir folder;
    const QString other = folder.filePath("other.sqlite");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "other program");
        database.setDatabaseName(other);
        QVERIFY(database.open());
        QVERIFY(QSqlQuery(database).exec("CREATE TABLE bookmarks (url TEXT)"));
    }
    QSqlDatabase::removeDatabase("other program");
    QTest::newRow("database of another program")
        << contentOf(other) << "is a SQLite database, but not a Korvane project";
}

void tst_evolution::cannotLoadATag()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    QVERIFY(!content.isEmpty());
    store(1);
    tag();
    addHistoric(qCompress(content), QDateTime::currentDateTime().addDays(1));
    const zk::ZkBool result = build();
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    const QRegularExpression expected(QRegularExpression::anchoredPattern(
        "An error occurred loading project tag '" + QRegularExpression::escape(m_temp->path()) +
        "/shop_v2_(\\d{17})\\.korv' :\n" + QRegularExpression::escape(m_temp->path()) +
        "/shop_v2_\\1\\.korv: " + QRegularExpression::escape(reason)));
    QVERIFY2(expected.match(result.getDesc()).hasMatch(), qPrintable(result.getDesc()));
    QCOMPARE(temporaryFiles(), QStringList());
    QCOMPARE(m_bench->files(), QStringList{"shop_default_db_schema_v1.sql"});
}

void tst_evolution::cannotWriteTemporaryFiles_data()
{
    QTest::addColumn<bool>("full");
    QTest::newRow("a file instead of a folder") << false;
    QTest::newRow("disk full") << true;
}

void tst_evolution::cannotWriteTemporaryFiles()
{
    QFETCH(bool, full);
    store(1);
    tag();
    zk::ZkBool result(true);
    QString folder = m_temp->path();
    if (full) {
        const support::full_disk disk(1000);
        result = build();
    } else {
        folder = m_folder->filePath("file");
        QFile file(folder);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        qputenv("TMPDIR", folder.toLocal8Bit());
        result = build();
    }
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    const QRegularExpression expected(QRegularExpression::anchoredPattern(
        "An error occurred opening project file : " + QRegularExpression::escape(folder) +
        "/shop_v1_\\d{17}\\.korv"));
    QVERIFY2(expected.match(result.getDesc()).hasMatch(), qPrintable(result.getDesc()));
    QCOMPARE(temporaryFiles(), QStringList());
    QCOMPARE(m_bench->files(), QStringList());
}

QStringList tst_evolution::plant(const QString & suffix, const std::function<bool(const QString &)> & put)
{
    constexpr int milliseconds = 250;
    QStringList taken;
    QDateTime begin;
    for (int lead = 100; taken.isEmpty() || QDateTime::currentDateTime() >= begin; lead *= 2) {
        for (const QString & name : std::as_const(taken)) {
            QFile::remove(m_temp->filePath(name));
        }
        taken.clear();
        begin = QDateTime::currentDateTime().addMSecs(lead);
        for (int i = 0; i < milliseconds; ++i) {
            taken << "shop_v1_" + begin.addMSecs(i).toString("yyyyMMddhhmmsszzz") + ".korv" + suffix;
            if (!put(m_temp->filePath(taken.constLast()))) {
                return {};
            }
        }
    }
    QTest::qWait(static_cast<int>(std::max<qint64>(0, QDateTime::currentDateTime().msecsTo(begin))));
    return taken;
}

void tst_evolution::atTheFirstMessage(const std::function<void()> & act)
{
    connect(&m_bench->builder().builder(), &plugin::ddl_export_builder::onMessage, this,
            [act, isDone = false]() mutable {
                if (!std::exchange(isDone, true)) {
                    act();
                }
            });
}

void tst_evolution::leavesTakenNamesAlone_data()
{
    QTest::addColumn<QString>("link");
    QTest::newRow("files of another export") << QString();
    QTest::newRow("links of somebody who guessed the names") << "victim";
    QTest::newRow("links that lead nowhere") << "missing";
}

void tst_evolution::leavesTakenNamesAlone()
{
    QFETCH(QString, link);
    store(1);
    tag();
    QVERIFY(support::writeBytes(m_folder->filePath("victim"), "untouched"));
    const QStringList taken = plant(QString(), [&](const QString & name) {
        return link.isEmpty() ? support::writeBytes(name, "untouched")
                              : QFile::link(m_folder->filePath(link), name);
    });
    QVERIFY(!taken.isEmpty());
    const zk::ZkBool result = build();
    QVERIFY2(result, qPrintable(result.getDesc()));
    QCOMPARE(m_bench->files(),
             (QStringList{"shop_default_db_schema_v1.sql", "shop_default_db_schema_v1_to_v2.sql"}));
    QCOMPARE(temporaryFiles(), taken);
    QVERIFY(!QFile::exists(m_folder->filePath("missing")));
    for (const QString & name : std::as_const(taken)) {
        QCOMPARE(QFileInfo(m_temp->filePath(name)).isSymLink(), !link.isEmpty());
        QCOMPARE(contentOf(m_temp->filePath(name)), QByteArray(link == "missing" ? "" : "untouched"));
    }
}

void tst_evolution::doesNotLookAtWhatLiesBesideAVersion()
{
    store(1);
    tag();
    // Who opened one of them would wait for ever.
    const QStringList planted = plant("-journal", [](const QString & name) {
        return mkfifo(QFile::encodeName(name).constData(), 0600) == 0;
    });
    QVERIFY(!planted.isEmpty());
    const zk::ZkBool result = build();
    QVERIFY2(result, qPrintable(result.getDesc()));
    QCOMPARE(m_bench->files(),
             (QStringList{"shop_default_db_schema_v1.sql", "shop_default_db_schema_v1_to_v2.sql"}));
    QCOMPARE(temporaryFiles(), planted);
}

void tst_evolution::keepsVersionsFromOthers()
{
    store(1);
    tag();
    QStringList seen;
    atTheFirstMessage([&] {
        for (const QString & name : temporaryFiles()) {
            seen << name.left(name.startsWith('.') ? 9 : 8);
            QCOMPARE(QFile::permissions(m_temp->filePath(name)),
                     QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
        }
    });
    QVERIFY(build());
    QCOMPARE(seen, (QStringList{".korvane-", "shop_v1_"}));
    QCOMPARE(temporaryFiles(), QStringList());
}

void tst_evolution::asksForTheTagsOnce()
{
    m_bench->plugin.setExportDatabaseSchema(ddl_export::full_and_evolution);
    store(1);
    tag();
    // What is tagged after an export has begun belongs to the next one.
    atTheFirstMessage([this] { tag(); });
    QVERIFY(build());
    QCOMPARE(m_bench->files(),
             (QStringList{"shop_default_db_schema_full.sql", "shop_default_db_schema_v1.sql",
                          "shop_default_db_schema_v1_to_v2.sql"}));
    QVERIFY(build());
    QVERIFY(m_bench->files().contains("shop_default_db_schema_v2_to_v3.sql"));
}

void tst_evolution::endsWhenAVersionCannotBeRead_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("reason");
    QTest::newRow("gone") << "DELETE FROM t_project_historic"
                          << "stored\\.korv: the version tagged at .* is not there any more";
    QTest::newRow("error of the database") << "DROP TABLE t_project_historic"
                                           << "stored\\.korv: no such table: t_project_historic";
}

void tst_evolution::endsWhenAVersionCannotBeRead()
{
    QFETCH(QString, statement);
    QFETCH(QString, reason);
    m_bench->plugin.setExportDatabaseSchema(ddl_export::full_and_evolution);
    store(1);
    tag();
    atTheFirstMessage([&] { QCOMPARE(support::run("sqlite3", {m_file, statement}).status, 0); });
    const zk::ZkBool result = build();
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    const QRegularExpression expected(
        QRegularExpression::anchoredPattern("Error loading all project historics :\n" +
                                            QRegularExpression::escape(m_folder->path()) + "/" + reason));
    QVERIFY2(expected.match(result.getDesc()).hasMatch(), qPrintable(result.getDesc()));
    QCOMPARE(m_bench->files(), QStringList{"shop_default_db_schema_full.sql"});
    QCOMPARE(temporaryFiles(), QStringList());
}

void tst_evolution::needsATemporaryFolder()
{
    store(1);
    tag();
    qputenv("TMPDIR", m_temp->filePath("missing").toLocal8Bit());
    const zk::ZkBool result = build();
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    QCOMPARE(result.getDesc(), QString("Cannot get temp directory to extract tag project state"));
    QCOMPARE(m_bench->messages(), QStringList());
}

void tst_evolution::stopsAtTheFirstFailure_data()
{
    QTest::addColumn<QString>("blocked");
    QTest::addColumn<QStringList>("written");
    QTest::newRow("first version") << "_v1" << QStringList();
    QTest::newRow("second step") << "_v2_to_v3"
                                 << QStringList{"shop_default_db_schema_v1.sql",
                                                "shop_default_db_schema_v1_to_v2.sql"};
    QTest::newRow("last step") << "_v3_to_v4"
                               << QStringList{"shop_default_db_schema_v1.sql",
                                              "shop_default_db_schema_v1_to_v2.sql",
                                              "shop_default_db_schema_v2_to_v3.sql"};
}

void tst_evolution::stopsAtTheFirstFailure()
{
    QFETCH(QString, blocked);
    for (int number = 1; number <= 3; ++number) {
        store(number);
        tag();
    }
    store(4);
    const QString file = m_bench->path("shop_default_db_schema" + blocked + ".sql");
    QVERIFY(QDir().mkdir(file));
    const zk::ZkBool result = build();
    QVERIFY(!result);
    QCOMPARE(result.getDesc(), "An error occurred opening SQL file : " + file);
    QTEST(m_bench->files(), "written");
    QCOMPARE(temporaryFiles(), QStringList());
    QCOMPARE(context::ctx_project::getSingleton().getProject(), m_project);
    QCOMPARE(m_bench->builder().previousProject(), nullptr);
}

QTEST_GUILESS_MAIN(tst_evolution)
#include "tst_evolution.moc"
