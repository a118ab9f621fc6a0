#include "export_bench.h"
#include "support/full_disk.h"

#include <QGuiApplication>
#include <QTranslator>
#include <QtTest>

#include <sys/stat.h>

using plugin::ddl_export;
using support::entity_builder;
using support::full_disk;
using support::model_builder;

namespace {

/// Two tables, a link table, an index and every kind of foreign key that is written or left out.
model_builder shopModel()
{
    model_builder model;
    entity_builder person = model.entity(1, "person");
    person.identifier(10, "id", "long");
    person.property(11, "email", "QString").indexed();
    person.relation(12, "country", 100, model::relationship::many_to_one, 2).columns("country_id").indexed();
    person.relation(13, "boss", 101, model::relationship::many_to_one, 1).columns("boss_id");
    person.relation(14, "tags", 102, model::relationship::many_to_many, 3)
        .linkTable("person_tag", "person_id", "tag_id", 31);
    person.relation(15, "children", 103, model::relationship::one_to_many, 2);
    person.relation(16, "gone", 104, model::relationship::many_to_one, 99).columns("gone_id");
    model.entity(2, "country").identifier(20, "id", "long");
    entity_builder tag = model.entity(3, "tag");
    tag.identifier(30, "id", "long");
    tag.relation(31, "persons", 105, model::relationship::many_to_many, 1)
        .linkTable("person_tag", "tag_id", "person_id", 14);
    return model;
}

const char * const ShopScript =
    "\n"
    "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, email TEXT, country_id INTEGER, "
    "boss_id INTEGER);\n"
    "CREATE TABLE country (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);\n"
    "CREATE TABLE tag (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);\n"
    "CREATE TABLE person_tag (person_id INTEGER, tag_id INTEGER);\n"
    "CREATE INDEX idx_person_email ON person (email);\n"
    "CREATE INDEX idx_person_country_id ON person (country_id);\n";
const char * const ShopForeignKeys =
    "ALTER TABLE person ADD CONSTRAINT fk_person_country_id FOREIGN KEY (country_id) REFERENCES country "
    "(id);\n"
    "ALTER TABLE person_tag ADD CONSTRAINT fk_person_tags FOREIGN KEY (person_id) REFERENCES person (id);\n"
    "ALTER TABLE person_tag ADD CONSTRAINT fk_tag_persons FOREIGN KEY (tag_id) REFERENCES tag (id);\n";

} // namespace

class tst_full_schema : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheScript();
    void tellsEveryStep();
    void leavesForeignKeysToTheTables();
    void skipsWhatIsNoTable();
    void takesColumnsAndRelationshipsWithoutId();
    void writesAnEmptyProject();
    void writesTheFirstVersion();
    void emptiesItsListsFirst();
    void needsAPlugin();
    void needsAFolder();
    void needsAListOfEntities();
    void followsTheSchemaMode_data();
    void followsTheSchemaMode();
    void replacesAnOlderScript();
    void writesUtf8WithoutMark();
    void refusesTargetsThatAreNoFiles_data();
    void refusesTargetsThatAreNoFiles();
    void reportsAFullDisk_data();
    void reportsAFullDisk();
    void stopsWhenTheDiskIsFull();
    void showsTheBusyCursor();
    void restoresTheProject();
    void holdsNoProjectAfterwards();
    void usesTheTypesOfThePlugin();
    void resolvesTheFolder();
    void translatesWhatPeopleRead();
};

void tst_full_schema::writesTheScript()
{
    export_bench bench;
    const model_builder model = shopModel();
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(bench.files(), QStringList{"shop_default_db_schema_full.sql"});
    QCOMPARE(bench.content("shop_default_db_schema_full.sql"), ShopScript + QString("\n"));

    bench.plugin.setExportRelationships(true);
    const zk::ZkBool result = bench.builder().builder().build(model.project());
    QVERIFY(result);
    QCOMPARE(result.getDesc(), QString());
    QCOMPARE(bench.content("shop_default_db_schema_full.sql"),
             ShopScript + QString(ShopForeignKeys) + QString("\n"));
}

void tst_full_schema::tellsEveryStep()
{
    export_bench bench;
    bench.plugin.setExportRelationships(true);
    const model_builder model = shopModel();
    model.entity(2)->setKey("COUNTRY");
    QVERIFY(bench.builder().builder().build(model.project()));
    const QString file = bench.path("shop_default_db_schema_full.sql");
    const QString end = "' (" + file + ")";
    QCOMPARE(
        bench.messages(),
        progress(
            {"Full database schema : DDL export begin (" + file + ")",
             "Full database schema : create table DDL SQL script for entity 'person" + end,
             "Full database schema : create table DDL SQL script for entity 'COUNTRY" + end,
             "Full database schema : create table DDL SQL script for entity 'tag" + end,
             "Full database schema : create extra-table DDL SQL script for relationship n-n 'person_tag" +
                 end,
             "Full database schema : create index DDL SQL script for property 'person.email" + end,
             "Full database schema : create index DDL SQL script for property 'person.country" + end,
             "Full database schema : add foreign key DDL SQL script for entity 'person' : property "
             "'country', "
             "target entity 'COUNTRY" +
                 end,
             "Full database schema : add foreign key DDL SQL script for entity 'person' : property 'tags', "
             "target entity 'tag" +
                 end,
             "Full database schema : add foreign key DDL SQL script for entity 'tag' : property 'persons', "
             "target entity 'person" +
                 end,
             "Full database schema : DDL export end (" + file + ")",
             "Full database schema DDL SQL script created for project 'shop' : '" + file + "'"}));
}

void tst_full_schema::leavesForeignKeysToTheTables()
{
    export_bench bench(ddl_export::db_sqlite);
    bench.plugin.setExportRelationships(true);
    const model_builder model = shopModel();
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(bench.content("shop_sqlite_db_schema_full.sql"),
             QString("BEGIN TRANSACTION;\n"
                     "PRAGMA foreign_keys = OFF;\n"
                     "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, email TEXT, "
                     "country_id INTEGER, boss_id INTEGER, FOREIGN KEY (country_id) REFERENCES country (id), "
                     "FOREIGN KEY (boss_id) REFERENCES person (id));\n"
                     "CREATE TABLE country (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);\n"
                     "CREATE TABLE tag (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);\n"
                     "CREATE TABLE person_tag (person_id INTEGER, tag_id INTEGER);\n"
                     "CREATE INDEX idx_person_email ON person (email);\n"
                     "CREATE INDEX idx_person_country_id ON person (country_id);\n"
                     "END TRANSACTION;\n"));
    QCOMPARE(bench.messages().filter("foreign key"), QStringList());
}

void tst_full_schema::skipsWhatIsNoTable()
{
    export_bench bench;
    bench.plugin.setExportRelationships(true);
    model_builder model;
    model.project().getListOfAllEntities()->insert(77, nullptr);
    entity_builder hidden = model.entity(2, "hidden").createTable("false");
    hidden.identifier(20, "id", "long");
    hidden.property(21, "p", "int").indexed();
    hidden.relation(22, "visible", 100, model::relationship::many_to_one, 3);
    entity_builder zero = model.entity(0, "zero");
    zero.relation(90, "visible", 101, model::relationship::many_to_one, 3);
    entity_builder visible = model.entity(3, "visible");
    visible.identifier(30, "id", "QUuid");
    visible.relation(31, "hidden", 102, model::relationship::many_to_one, 2);
    visible.get()->getListOfProperty(true, true, false)->insert(99, nullptr);
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(bench.content("shop_default_db_schema_full.sql"),
             QString("\n"
                     "CREATE TABLE visible (id TEXT NOT NULL PRIMARY KEY, hidden INTEGER);\n"
                     "ALTER TABLE visible ADD CONSTRAINT fk_visible_hidden FOREIGN KEY (hidden) "
                     "REFERENCES hidden (id);\n"
                     "\n"));
}

void tst_full_schema::takesColumnsAndRelationshipsWithoutId()
{
    export_bench bench;
    bench.plugin.setExportRelationships(true);
    model_builder model;
    entity_builder person = model.entity(1, "person");
    person.identifier(10, "id", "QUuid");
    person.property(0, "code", "int").indexed();
    person.relation(12, "country", 0, model::relationship::many_to_one, 2).columns("country_id");
    model.entity(2, "country").identifier(20, "id", "QUuid");
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(bench.content("shop_default_db_schema_full.sql"),
             QString("\n"
                     "CREATE TABLE person (id TEXT NOT NULL PRIMARY KEY, code INTEGER, country_id TEXT);\n"
                     "CREATE TABLE country (id TEXT NOT NULL PRIMARY KEY);\n"
                     "CREATE INDEX idx_person_code ON person (code);\n"
                     "ALTER TABLE person ADD CONSTRAINT fk_person_country_id FOREIGN KEY (country_id) "
                     "REFERENCES country (id);\n"
                     "\n"));
}

void tst_full_schema::writesAnEmptyProject()
{
    export_bench bench(ddl_export::db_sqlite);
    const model_builder model("empty");
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(bench.content("empty_sqlite_db_schema_full.sql"),
             QString("BEGIN TRANSACTION;\nPRAGMA foreign_keys = OFF;\nEND TRANSACTION;\n"));
    const QString file = bench.path("empty_sqlite_db_schema_full.sql");
    QCOMPARE(bench.messages(),
             progress({"Full database schema : DDL export begin (" + file + ")",
                       "Full database schema : DDL export end (" + file + ")",
                       "Full database schema DDL SQL script created for project 'empty' : '" + file + "'"}));
}

void tst_full_schema::writesTheFirstVersion()
{
    export_bench bench(ddl_export::db_mysql, ddl_export::evolution);
    const model_builder model;
    QVERIFY(bench.builder().buildFull(model.project(), false));
    QCOMPARE(bench.files(), QStringList());
    QCOMPARE(bench.messages(), QStringList());
    QVERIFY(bench.builder().buildFull(model.project(), true));
    QCOMPARE(bench.files(), QStringList{"shop_mysql_db_schema_v1.sql"});
    QCOMPARE(bench.content("shop_mysql_db_schema_v1.sql"), QString("\n\n"));
    const QString file = bench.path("shop_mysql_db_schema_v1.sql");
    QCOMPARE(bench.messages(),
             progress({"Full database schema : DDL export begin (" + file + ")",
                       "Full database schema : DDL export end (" + file + ")",
                       "Full database schema DDL SQL script created for project 'shop' : '" + file + "'"}));
}

void tst_full_schema::emptiesItsListsFirst()
{
    export_bench bench;
    const model_builder model = shopModel();
    bench.builder().indexes().insert(5, model.property(1, 10));
    bench.builder().linkTables().insert("old", model.relation(1, 14));
    model_builder previous;
    bench.builder().setProjects(nullptr, &previous.project());
    QVERIFY(bench.builder().buildFull(model.project(), false));
    QCOMPARE(bench.content("shop_default_db_schema_full.sql"), ShopScript + QString("\n"));
    QCOMPARE(bench.builder().currentProject(), &model.project());
    QCOMPARE(bench.builder().previousProject(), &previous.project());
    QCOMPARE(bench.builder().indexes().count(), 2L);
    QCOMPARE(bench.builder().linkTables().count(), 1L);
}

void tst_full_schema::needsAPlugin()
{
    opened_builder builder(ddl_export::db_default, nullptr);
    QSignalSpy spy(&builder.builder(), &plugin::ddl_export_builder::onMessage);
    const model_builder model = shopModel();
    const QString text = "There is no plugin associated to the DDL builder class";
    QCOMPARE(builder.builder().buildScripts(model.project()).getDesc(), text);
    QCOMPARE(builder.builder().buildStep(model.get(), model.get(), 1, 2).getDesc(), text);
    for (const zk::ZkBool & result :
         {builder.builder().build(model.project()), builder.buildFull(model.project(), true),
          builder.buildEvolution(model.project()), builder.compare(model.get(), model.get(), 2)}) {
        QVERIFY(!result);
        QCOMPARE(result.getCode(), 0L);
        QCOMPARE(result.getDesc(), text);
    }
    QCOMPARE(spy.count(), 0);
}

void tst_full_schema::needsAFolder()
{
    export_bench bench;
    const model_builder model = shopModel();
    for (const QString & path : {bench.path("missing"), QString()}) {
        bench.plugin.setDDLExportPath(path);
        const zk::ZkBool result = bench.builder().builder().build(model.project());
        QVERIFY(!result);
        QCOMPARE(result.getCode(), 0L);
        QCOMPARE(result.getDesc(), "Directory to create DDL SQL script doesn't exist : " + path);
    }
    QCOMPARE(bench.files(), QStringList());
    QCOMPARE(bench.messages(), QStringList());
}

void tst_full_schema::needsAListOfEntities()
{
    export_bench bench(ddl_export::db_default, ddl_export::full_and_evolution);
    const model_builder model;
    model.project().setListOfAllEntities(nullptr);
    const zk::ZkBool result = bench.builder().builder().build(model.project());
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    QCOMPARE(result.getDesc(), QString("This project doesn't have a valid list of entities"));
    QCOMPARE(bench.files(), QStringList());
    QCOMPARE(bench.messages(), QStringList());
    QCOMPARE(context::ctx_project::getSingleton().getProject(), model.get());
}

void tst_full_schema::followsTheSchemaMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("written");
    QTest::newRow("full") << 0 << true;
    QTest::newRow("evolution") << 1 << false;
    QTest::newRow("both") << 2 << true;
    QTest::newRow("unknown") << 3 << false;
    QTest::newRow("negative") << -1 << false;
}

void tst_full_schema::followsTheSchemaMode()
{
    QFETCH(int, mode);
    QFETCH(bool, written);
    export_bench bench(ddl_export::db_default, static_cast<ddl_export::export_db_schema>(mode));
    const model_builder model;
    QVERIFY(bench.builder().buildFull(model.project(), false));
    QCOMPARE(bench.files().size(), written ? 1 : 0);
}

void tst_full_schema::replacesAnOlderScript()
{
    export_bench bench;
    QFile old(bench.path("shop_default_db_schema_full.sql"));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write(QByteArray(100000, 'x'));
    old.close();
    const model_builder model;
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(bench.content("shop_default_db_schema_full.sql"), QString("\n\n"));
}

void tst_full_schema::writesUtf8WithoutMark()
{
    export_bench bench;
    model_builder model;
    model.entity(1, QString::fromUtf8("t\u00e4ble\u20ac")).property(10, "n", "int");
    QVERIFY(bench.builder().builder().build(model.project()));
    QFile file(bench.path("shop_default_db_schema_full.sql"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\nCREATE TABLE t\xc3\xa4"
                                        "ble\xe2\x82\xac (n INTEGER);\n\n"));
}

void tst_full_schema::refusesTargetsThatAreNoFiles_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("reason");
    QTest::newRow("folder") << "folder"
                            << "it exists, but is not a file";
    QTest::newRow("fifo") << "fifo"
                          << "it exists, but is not a file";
    QTest::newRow("device")
        << "device"
        << "it is a symbolic link that leads out of the export folder, to /dev/full; remove it";
    QTest::newRow("missing folder") << "missing folder"
                                    << "No such file or directory";
    QTest::newRow("link to fifo") << "link to fifo"
                                  << "it exists, but is not a file";
}

void tst_full_schema::refusesTargetsThatAreNoFiles()
{
    QFETCH(QString, kind);
    export_bench bench;
    model_builder model;
    QString file = bench.path("shop_default_db_schema_full.sql");
    if (kind == "folder") {
        QVERIFY(QDir().mkdir(file));
    } else if (kind == "fifo") {
        QCOMPARE(mkfifo(file.toLocal8Bit().constData(), 0600), 0);
    } else if (kind == "device") {
        QVERIFY(QFile::link("/dev/full", file));
    } else if (kind == "link to fifo") {
        QCOMPARE(mkfifo(bench.path("pipe").toLocal8Bit().constData(), 0600), 0);
        QVERIFY(QFile::link(bench.path("pipe"), file));
    } else {
        model.project().setName("no/folder");
        file = bench.path("no/folder_default_db_schema_full.sql");
    }
    const zk::ZkBool result = bench.builder().builder().build(model.project());
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    QCOMPARE(result.getDesc(), "An error occurred opening SQL file : " + file);
    QFETCH(QString, reason);
    QCOMPARE(bench.messages(),
             QStringList("3/10000/" + result.getDesc() + " (" + reason.arg(bench.folder()) + ")"));

    const zk::ZkBool evolution = bench.builder().compare(model.get(), model.get(), 3);
    QCOMPARE(evolution.getValue(), kind != "missing folder");
    if (!evolution) {
        QCOMPARE(evolution.getDesc(), "An error occurred opening SQL file : " +
                                          bench.path("no/folder_default_db_schema_v2_to_v3.sql"));
    }
}

void tst_full_schema::reportsAFullDisk_data()
{
    QTest::addColumn<int>("room");
    QTest::newRow("nothing fits") << 0;
    QTest::newRow("the end is missing") << 100;
}

void tst_full_schema::reportsAFullDisk()
{
    QFETCH(int, room);
    export_bench bench;
    const model_builder model = shopModel();
    zk::ZkBool result(true);
    {
        const full_disk disk(room);
        result = bench.builder().builder().build(model.project());
    }
    const QString file = bench.path("shop_default_db_schema_full.sql");
    QVERIFY(!result);
    QCOMPARE(result.getCode(), 0L);
    QCOMPARE(result.getDesc(), "An error occurred writing SQL file : " + file);
    QCOMPARE(bench.messages().filter("script created"), QStringList());
    QCOMPARE(bench.messages().mid(bench.messages().size() - 2),
             (QStringList{"3/10000/An error occurred writing SQL file : " + file + " (File too large)",
                          "3/10000/The SQL file is incomplete : " + file}));
    QCOMPARE(bench.content("shop_default_db_schema_full.sql"), QString(ShopScript).left(room));
}

void tst_full_schema::stopsWhenTheDiskIsFull()
{
    export_bench bench;
    model_builder model;
    const int entities = 3000;
    for (int i = 1; i <= entities; ++i) {
        model.entity(i, "table_" + QString::number(i)).property(100000 + i, "a_column", "QString");
    }
    zk::ZkBool result(true);
    {
        const full_disk disk(20000);
        result = bench.builder().builder().build(model.project());
    }
    QVERIFY(!result);
    QCOMPARE(result.getDesc(),
             "An error occurred writing SQL file : " + bench.path("shop_default_db_schema_full.sql"));
    const qsizetype told = bench.messages().filter("create table").size();
    QVERIFY2(told < entities / 2, qPrintable(QString::number(told)));
}

void tst_full_schema::showsTheBusyCursor()
{
    export_bench bench;
    const model_builder model;
    int busy = 0;
    connect(&bench.builder().builder(), &plugin::ddl_export_builder::onMessage, this, [&busy] {
        const QCursor * const cursor = QGuiApplication::overrideCursor();
        busy += cursor && cursor->shape() == Qt::WaitCursor;
    });
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(busy, 3);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_full_schema::restoresTheProject()
{
    export_bench bench;
    const model_builder model;
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(context::ctx_project::getSingleton().getProject(), model.get());
    QCOMPARE(bench.builder().previousProject(), nullptr);
    QVERIFY(!bench.builder().customScript());
}

void tst_full_schema::holdsNoProjectAfterwards()
{
    export_bench bench;
    context::ctx_project & context = context::ctx_project::getSingleton();
    const auto owned = std::make_shared<model::project>(1);
    owned->setName("owned");
    context.setProject(owned);
    QVERIFY(bench.builder().builder().build(*owned));
    QCOMPARE(context.getProject(), owned);
    QCOMPARE(owned.use_count(), 2L);
}

void tst_full_schema::usesTheTypesOfThePlugin()
{
    export_bench bench(ddl_export::db_oracle);
    model_builder model;
    model.entity(1, "t").property(10, "d", "QDate");
    ddl_export::type_mapping types;
    types.insert("QDate", "DAY");
    bench.plugin.setListTypeMappingByDb(ddl_export::db_oracle, types);
    bench.plugin.setListTypeMappingByDb(ddl_export::db_default, {});
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(bench.content("shop_oracle_db_schema_full.sql"), QString("\nCREATE TABLE t (d DAY);\n\n"));
    bench.plugin.setDatabaseType(ddl_export::db_default);
    QVERIFY(bench.builder().builder().build(model.project()));
    QCOMPARE(bench.content("shop_oracle_db_schema_full.sql"), QString("\nCREATE TABLE t (d DATE);\n\n"));
}

void tst_full_schema::resolvesTheFolder()
{
    export_bench bench;
    const model_builder model;
    model.project().setLocation(bench.folder());
    context::ctx_project::getSingleton().setProject(model.get());
    QVERIFY(QDir(bench.folder()).mkdir("out"));
    bench.plugin.setDDLExportPath("out");
    QVERIFY(bench.builder().builder().build(model.project()));
    QVERIFY(QFile::exists(bench.path("out/shop_default_db_schema_full.sql")));
    QVERIFY(bench.messages().constLast().endsWith(" : '" + bench.path("out/shop_default_db_schema_full.sql") +
                                                  "'"));
}

void tst_full_schema::translatesWhatPeopleRead()
{
    class marking_translator : public QTranslator
    {
    public:
        [[nodiscard]] bool isEmpty() const override { return false; }
        [[nodiscard]] QString translate(const char * context, const char * text, const char *,
                                        int) const override
        {
            return context == QByteArray("plugin::ddl_export_builder") ? "~" + QString(text) : QString();
        }
    };
    marking_translator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    export_bench bench;
    bench.plugin.setExportRelationships(true);
    const model_builder model = shopModel();
    QVERIFY(bench.builder().builder().build(model.project()));
    const QString script = bench.content("shop_default_db_schema_full.sql");
    const model_builder empty;
    QVERIFY(bench.builder().compare(empty.get(), model.get(), 2));
    QVERIFY(bench.builder().compare(model.get(), empty.get(), 3));
    for (const QString & message : bench.messages()) {
        QVERIFY2(message.startsWith("1/10000/~"), qPrintable(message));
    }
    QCOMPARE(bench.messages().filter("~Full database schema").size(), 12);
    bench.plugin.setDDLExportPath("missing");
    QVERIFY(bench.builder().builder().build(model.project()).getDesc().startsWith('~'));
    QVERIFY(bench.builder().compare(nullptr, nullptr, 2).getDesc().startsWith('~'));
    QVERIFY(bench.builder().buildFull(model.project(), false).getDesc().startsWith('~'));
    // What a database reads is the same in every language.
    QCOMPARE(script, ShopScript + QString(ShopForeignKeys) + QString("\n"));
}

QTEST_MAIN(tst_full_schema)
#include "tst_full_schema.moc"
