// The settings of the export: accessors, defaults of the mapping lists, and their records in the project's
// database.

#include "plugin/ddl_export.h"

#include "support/stored_project.h"

#include "zk/zk_serialization.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

using plugin::ddl_export;

namespace {

const QString Guid = QStringLiteral("713A034E-3F7A-422A-BC81-22132DA57110");

struct row
{
    QString guid;
    QString key;
    QString storageClass;
    QString value;
};

/// Runs `work` on a connection of its own, beside whatever the code under test has open.
template <class Work>
void onDatabase(const QString & file, Work work)
{
    {
        QSqlDatabase db =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("tst_settings"));
        db.setDatabaseName(file);
        QVERIFY(db.open());
        work(db);
    }
    QSqlDatabase::removeDatabase(QStringLiteral("tst_settings"));
}

QList<row> storedRows(const QString & file)
{
    QList<row> rows;
    onDatabase(file, [&rows](QSqlDatabase & db) {
        QSqlQuery q(db);
        QVERIFY(q.exec(QStringLiteral("SELECT plugin_guid, param_key, typeof(param_value), param_value "
                                      "FROM t_plugin_params ORDER BY rowid")));
        while (q.next()) {
            rows.append(
                {q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(3).toString()});
        }
    });
    return rows;
}

void store(const QString & file, const QString & key, const QVariant & value, const QString & guid = Guid)
{
    onDatabase(file, [&](QSqlDatabase & db) {
        QSqlQuery q(db);
        q.prepare(QStringLiteral("INSERT INTO t_plugin_params (plugin_guid, param_key, param_value) "
                                 "VALUES (?, ?, ?)"));
        q.addBindValue(guid);
        q.addBindValue(key);
        q.addBindValue(value);
        QVERIFY(q.exec());
    });
}

QStringList keys(const QList<row> & rows)
{
    QStringList result;
    for (const row & r : rows) {
        result.append(r.key);
    }
    return result;
}

ddl_export::type_mapping mapping(std::initializer_list<std::pair<const char *, const char *>> pairs)
{
    ddl_export::type_mapping list;
    for (const auto & [cpp, sql] : pairs) {
        list.insert(QString::fromUtf8(cpp), QString::fromUtf8(sql));
    }
    return list;
}

void setEverything(ddl_export & p)
{
    p.setDDLExportPath(QStringLiteral("out"));
    p.setDatabaseType(ddl_export::db_postgresql);
    p.setListTypeMappingByDb(ddl_export::db_mysql, mapping({{"int", "INT"}, {"QString", "VARCHAR(80)"}}));
    p.setExportDatabaseSchema(ddl_export::full_and_evolution);
    p.setCustomScriptFile(QStringLiteral("hook.js"));
    p.setExportRelationships(true);
}

} // namespace

class tst_settings : public QObject
{
    Q_OBJECT

private slots:
    void settersAssignWithoutCheck();
    void pathIsResolvedAgainstTheProjectFolder();
    void emptyMappingGivesDefaults_data();
    void emptyMappingGivesDefaults();
    void unknownDatabaseHasGenericDefaults();
    void emptyListBringsDefaultsBack();
    void storedListIsKept();
    void clearSettings();
    void withoutProjectNothingHappens();
    void recordsAsStored();
    void savingTwiceKeepsOneRecordPerKey();
    void otherPluginsRecordsStay();
    void cachedDefaultsAreSaved();
    void roundTrip();
    void missingRecordsKeepCurrentValues();
    void mappingsAreEmptiedByLoading();
    void keysAreCaseSensitiveAndUnknownOnesIgnored();
    void numbersThatAreNone();
    void letterSuffixLoadsUnderZero();
    void aLaterMappingOfOneDatabaseWins();
    void mappingCutOffIsKeptInPart();
    void damagedMappings_data();
    void damagedMappings();
    void failedFetchChangesNothing();
    void failedSaveKeepsWhatWasStored();
    void aKeyThatIsNotKnownChangesNothing();
    void aSaveWithoutItsTransactionChangesNothing();
    void readFileKeepsContent();
};

void tst_settings::settersAssignWithoutCheck()
{
    ddl_export p;
    p.setDatabaseType(static_cast<ddl_export::database_type>(77));
    QCOMPARE(static_cast<int>(p.getDatabaseType()), 77);
    p.setExportDatabaseSchema(static_cast<ddl_export::export_db_schema>(-3));
    QCOMPARE(static_cast<int>(p.getExportDatabaseSchema()), -3);
    p.setDDLExportPath(QStringLiteral("a/../b"));
    QCOMPARE(p.getDDLExportPath(false), QStringLiteral("a/../b"));
    QCOMPARE(static_cast<int>(ddl_export::db_default), 0);
    QCOMPARE(static_cast<int>(ddl_export::db_sqlite), 1);
    QCOMPARE(static_cast<int>(ddl_export::db_mysql), 2);
    QCOMPARE(static_cast<int>(ddl_export::db_postgresql), 3);
    QCOMPARE(static_cast<int>(ddl_export::db_oracle), 4);
    QCOMPARE(static_cast<int>(ddl_export::db_mssqlserver), 5);
    QCOMPARE(static_cast<int>(ddl_export::full), 0);
    QCOMPARE(static_cast<int>(ddl_export::evolution), 1);
    QCOMPARE(static_cast<int>(ddl_export::full_and_evolution), 2);
}

void tst_settings::pathIsResolvedAgainstTheProjectFolder()
{
    const support::stored_project stored;
    ddl_export p;
    p.setDDLExportPath(QStringLiteral("out"));
    QCOMPARE(p.getDDLExportPath(false), QStringLiteral("out"));
    QCOMPARE(p.getDDLExportPath(true), stored.path(QStringLiteral("out")));
    p.setDDLExportPath(QString());
    QCOMPARE(p.getDDLExportPath(true), QString());
    p.setDDLExportPath(QStringLiteral("/somewhere/else"));
    QCOMPARE(p.getDDLExportPath(true), QStringLiteral("/somewhere/else"));
}

void tst_settings::emptyMappingGivesDefaults_data()
{
    QTest::addColumn<int>("db");
    QTest::addColumn<QString>("typeOfQUuid");
    QTest::addColumn<QString>("typeOfBool");
    QTest::newRow("generic") << 0 << "TEXT"
                             << "SMALLINT";
    QTest::newRow("sqlite") << 1 << "TEXT"
                            << "SMALLINT";
    QTest::newRow("mysql") << 2 << "TEXT"
                           << "SMALLINT";
    QTest::newRow("postgresql") << 3 << "TEXT"
                                << "BOOLEAN";
    QTest::newRow("oracle") << 4 << "VARCHAR2(255)"
                            << "SMALLINT";
    QTest::newRow("mssqlserver") << 5 << "TEXT"
                                 << "TINYINT";
    QTest::newRow("unknown") << 9 << "TEXT"
                             << "SMALLINT";
}

void tst_settings::emptyMappingGivesDefaults()
{
    QFETCH(int, db);
    QFETCH(QString, typeOfQUuid);
    QFETCH(QString, typeOfBool);
    ddl_export p;
    const auto list = p.getListTypeMappingByDb(static_cast<ddl_export::database_type>(db));
    QCOMPARE(list.count(), 34L);
    QCOMPARE(list.getKeyByIndex(0), QStringLiteral("<default type>"));
    QCOMPARE(list.getByKey(QStringLiteral("QUuid")), typeOfQUuid);
    QCOMPARE(list.getByKey(QStringLiteral("bool")), typeOfBool);
}

void tst_settings::unknownDatabaseHasGenericDefaults()
{
    support::stored_project stored;
    ddl_export p;
    const auto nine = static_cast<ddl_export::database_type>(9);
    QVERIFY(p.getListTypeMappingByDb(nine) == ddl_export().getListTypeMappingByDb(ddl_export::db_default));
    QVERIFY(!p.saveSettings().isValid());
    QVERIFY(keys(storedRows(stored.file())).contains(QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_9")));
}

void tst_settings::emptyListBringsDefaultsBack()
{
    ddl_export p;
    p.setListTypeMappingByDb(ddl_export::db_oracle, mapping({{"int", "NUMBER(9)"}}));
    p.setListTypeMappingByDb(ddl_export::db_oracle, {});
    QCOMPARE(p.getListTypeMappingByDb(ddl_export::db_oracle).getByKey(QStringLiteral("int")),
             QStringLiteral("INTEGER"));
    QCOMPARE(p.getListTypeMappingByDb(ddl_export::db_oracle).count(), 34L);
}

void tst_settings::storedListIsKept()
{
    ddl_export p;
    const auto list = mapping({{"int", "NUMBER(9)"}});
    p.setListTypeMappingByDb(ddl_export::db_oracle, list);
    QVERIFY(p.getListTypeMappingByDb(ddl_export::db_oracle) == list);
    const auto other = mapping({{"int", "NUMBER(10)"}});
    p.setListTypeMappingByDb(ddl_export::db_oracle, other);
    QVERIFY(p.getListTypeMappingByDb(ddl_export::db_oracle) == other);
}

void tst_settings::clearSettings()
{
    ddl_export p;
    setEverything(p);
    p.clearSettings();
    QCOMPARE(p.getDDLExportPath(false), QString());
    QCOMPARE(static_cast<int>(p.getDatabaseType()), 1);
    QCOMPARE(p.getListTypeMappingByDb(ddl_export::db_mysql).count(), 34L);
    QCOMPARE(static_cast<int>(p.getExportDatabaseSchema()), 0);
    QCOMPARE(p.getCustomScriptFile(), QString());
    QVERIFY(!p.getExportRelationships());
}

void tst_settings::withoutProjectNothingHappens()
{
    context::ctx_project::getSingleton().setProject(nullptr);
    ddl_export p;
    setEverything(p);
    QVERIFY(!p.loadSettings().isValid());
    QVERIFY(!p.saveSettings().isValid());
    QCOMPARE(p.getDDLExportPath(false), QStringLiteral("out"));
    QCOMPARE(p.getListTypeMappingByDb(ddl_export::db_mysql).count(), 2L);
}

void tst_settings::recordsAsStored()
{
    const support::stored_project stored;
    ddl_export p;
    setEverything(p);
    p.setListTypeMappingByDb(ddl_export::db_oracle, {});
    QVERIFY(!p.saveSettings().isValid());

    const QList<row> rows = storedRows(stored.file());
    const QStringList expectedKeys = {QStringLiteral("DDL_EXPORT_PATH"),
                                      QStringLiteral("DDL_EXPORT_DATABASE_TYPE"),
                                      QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_2"),
                                      QStringLiteral("DDL_EXPORT_DATABASE_SCHEMA"),
                                      QStringLiteral("DDL_EXPORT_CUSTOM_JAVASCRIPT"),
                                      QStringLiteral("DDL_EXPORT_RELATIONSHIPS")};
    QCOMPARE(keys(rows), expectedKeys);
    for (const row & r : rows) {
        QCOMPARE(r.guid, Guid);
    }
    QCOMPARE(rows[0].storageClass, QStringLiteral("text"));
    QCOMPARE(rows[0].value, QStringLiteral("out"));
    QCOMPARE(rows[1].storageClass, QStringLiteral("integer"));
    QCOMPARE(rows[1].value, QStringLiteral("3"));
    QCOMPARE(rows[2].storageClass, QStringLiteral("text"));
    QVERIFY2(rows[2].value.startsWith(QStringLiteral("<zk.ZkCollection-QString_QString-")),
             qPrintable(rows[2].value));
    QVERIFY(rows[2].value.contains(QStringLiteral("<second>VARCHAR(80)</second>")));
    QCOMPARE(rows[3].storageClass, QStringLiteral("integer"));
    QCOMPARE(rows[3].value, QStringLiteral("2"));
    QCOMPARE(rows[4].value, QStringLiteral("hook.js"));
    QCOMPARE(rows[5].storageClass, QStringLiteral("integer"));
    QCOMPARE(rows[5].value, QStringLiteral("1"));
}

void tst_settings::savingTwiceKeepsOneRecordPerKey()
{
    const support::stored_project stored;
    ddl_export p;
    setEverything(p);
    QVERIFY(!p.saveSettings().isValid());
    p.setDDLExportPath(QStringLiteral("elsewhere"));
    QVERIFY(!p.saveSettings().isValid());
    const QList<row> rows = storedRows(stored.file());
    QCOMPARE(rows.size(), 6);
    const QStringList storedKeys = keys(rows);
    QCOMPARE(QSet<QString>(storedKeys.begin(), storedKeys.end()).size(), 6);
    QCOMPARE(rows[0].value, QStringLiteral("elsewhere"));
}

void tst_settings::otherPluginsRecordsStay()
{
    const support::stored_project stored;
    store(stored.file(), QStringLiteral("DDL_EXPORT_PATH"), QStringLiteral("theirs"),
          QStringLiteral("ANOTHER-GUID"));
    ddl_export p;
    QVERIFY(!p.loadSettings().isValid());
    QCOMPARE(p.getDDLExportPath(false), QString());
    QVERIFY(!p.saveSettings().isValid());
    const QList<row> rows = storedRows(stored.file());
    QCOMPARE(rows.size(), 6);
    QCOMPARE(rows[0].guid, QStringLiteral("ANOTHER-GUID"));
    QCOMPARE(rows[0].value, QStringLiteral("theirs"));
}

void tst_settings::cachedDefaultsAreSaved()
{
    const support::stored_project stored;
    ddl_export p;
    QCOMPARE(p.getListTypeMappingByDb(ddl_export::db_postgresql).getByKey(QStringLiteral("QByteArray")),
             QStringLiteral("BYTEA"));
    QVERIFY(!p.saveSettings().isValid());
    const QList<row> rows = storedRows(stored.file());
    QCOMPARE(keys(rows).count(QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_3")), 1);
    QCOMPARE(keys(rows).filter(QStringLiteral("MAPPING")).size(), 1);
}

void tst_settings::roundTrip()
{
    const support::stored_project stored;
    ddl_export saved;
    setEverything(saved);
    QVERIFY(!saved.saveSettings().isValid());
    ddl_export loaded;
    QVERIFY(!loaded.loadSettings().isValid());
    QCOMPARE(loaded.getDDLExportPath(false), QStringLiteral("out"));
    QCOMPARE(static_cast<int>(loaded.getDatabaseType()), 3);
    QVERIFY(loaded.getListTypeMappingByDb(ddl_export::db_mysql) ==
            mapping({{"int", "INT"}, {"QString", "VARCHAR(80)"}}));
    QCOMPARE(static_cast<int>(loaded.getExportDatabaseSchema()), 2);
    QCOMPARE(loaded.getCustomScriptFile(), QStringLiteral("hook.js"));
    QVERIFY(loaded.getExportRelationships());
}

void tst_settings::missingRecordsKeepCurrentValues()
{
    const support::stored_project stored;
    ddl_export p;
    setEverything(p);
    store(stored.file(), QStringLiteral("DDL_EXPORT_DATABASE_TYPE"), 4);
    QVERIFY(!p.loadSettings().isValid());
    QCOMPARE(static_cast<int>(p.getDatabaseType()), 4);
    QCOMPARE(p.getDDLExportPath(false), QStringLiteral("out"));
    QCOMPARE(static_cast<int>(p.getExportDatabaseSchema()), 2);
    QCOMPARE(p.getCustomScriptFile(), QStringLiteral("hook.js"));
    QVERIFY(p.getExportRelationships());
}

void tst_settings::mappingsAreEmptiedByLoading()
{
    const support::stored_project stored;
    ddl_export p;
    setEverything(p);
    QVERIFY(!p.loadSettings().isValid());
    QCOMPARE(p.getListTypeMappingByDb(ddl_export::db_mysql).count(), 34L);
}

void tst_settings::keysAreCaseSensitiveAndUnknownOnesIgnored()
{
    const support::stored_project stored;
    store(stored.file(), QStringLiteral("ddl_export_path"), QStringLiteral("wrong"));
    store(stored.file(), QStringLiteral("DDL_EXPORT_SOMETHING"), QStringLiteral("wrong"));
    store(stored.file(), QStringLiteral("DDL_EXPORT_RELATIONSHIPS"), 1);
    ddl_export p;
    QVERIFY(!p.loadSettings().isValid());
    QCOMPARE(p.getDDLExportPath(false), QString());
    QVERIFY(p.getExportRelationships());
}

void tst_settings::numbersThatAreNone()
{
    const support::stored_project stored;
    store(stored.file(), QStringLiteral("DDL_EXPORT_DATABASE_TYPE"), QStringLiteral("postgresql"));
    store(stored.file(), QStringLiteral("DDL_EXPORT_DATABASE_SCHEMA"), QStringLiteral("both"));
    store(stored.file(), QStringLiteral("DDL_EXPORT_RELATIONSHIPS"), QStringLiteral("false"));
    ddl_export p;
    setEverything(p);
    QVERIFY(!p.loadSettings().isValid());
    QCOMPARE(static_cast<int>(p.getDatabaseType()), 0);
    QCOMPARE(static_cast<int>(p.getExportDatabaseSchema()), 0);
    QVERIFY(!p.getExportRelationships());
}

void tst_settings::letterSuffixLoadsUnderZero()
{
    const support::stored_project stored;
    const auto list = mapping({{"int", "NUMERIC"}});
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_x"),
          zk::serialization::toXml(list));
    ddl_export p;
    QVERIFY(!p.loadSettings().isValid());
    QVERIFY(p.getListTypeMappingByDb(ddl_export::db_default) == list);
}

void tst_settings::aLaterMappingOfOneDatabaseWins()
{
    const support::stored_project stored;
    const auto first = mapping({{"int", "FIRST"}});
    const auto second = mapping({{"int", "SECOND"}});
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_0"),
          zk::serialization::toXml(first));
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_x"),
          zk::serialization::toXml(second));
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_2"),
          zk::serialization::toXml(first));
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_02"), QString());
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_3"),
          zk::serialization::toXml(first));
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_03"), QStringLiteral("rubbish"));
    ddl_export p;
    QVERIFY(!p.loadSettings().isValid());
    QVERIFY(p.getListTypeMappingByDb(ddl_export::db_default) == second);
    // An empty text is no mapping, a damaged one is a mapping without a pair.
    QVERIFY(p.getListTypeMappingByDb(ddl_export::db_mysql) == first);
    QCOMPARE(p.getListTypeMappingByDb(ddl_export::db_postgresql).count(), 34L);
}

void tst_settings::mappingCutOffIsKeptInPart()
{
    const support::stored_project stored;
    const QString xml = zk::serialization::toXml(
        mapping({{"int", "FIRST"}, {"long", "SECOND"}, {"short", "THIRD"}, {"bool", "FOURTH"}}));
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_2"),
          xml.left(xml.indexOf(QStringLiteral("THIRD"))));
    ddl_export p;
    QVERIFY(!p.loadSettings().isValid());
    QVERIFY(p.getListTypeMappingByDb(ddl_export::db_mysql) ==
            mapping({{"int", "FIRST"}, {"long", "SECOND"}}));
}

void tst_settings::damagedMappings_data()
{
    QTest::addColumn<QString>("xml");
    QTest::newRow("empty text") << QString();
    QTest::newRow("no XML") << QStringLiteral("rubbish");
    QTest::newRow("another root") << QStringLiteral("<list><count>1</count></list>");
    QTest::newRow("a count without pairs") << zk::serialization::toXml({}).replace(
        QStringLiteral("<count>0<"), QStringLiteral("<count>4000000000<"));
    QTest::newRow("a negative count")
        << zk::serialization::toXml({}).replace(QStringLiteral("<count>0<"), QStringLiteral("<count>-1<"));
}

void tst_settings::damagedMappings()
{
    QFETCH(QString, xml);
    const support::stored_project stored;
    store(stored.file(), QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_2"), xml);
    store(stored.file(), QStringLiteral("DDL_EXPORT_PATH"), QStringLiteral("out"));
    ddl_export p;
    QVERIFY(!p.loadSettings().isValid());
    QCOMPARE(p.getDDLExportPath(false), QStringLiteral("out"));
    QVERIFY(p.getListTypeMappingByDb(ddl_export::db_mysql) ==
            ddl_export().getListTypeMappingByDb(ddl_export::db_mysql));
}

void tst_settings::failedFetchChangesNothing()
{
    const support::stored_project stored;
    ddl_export p;
    setEverything(p);
    onDatabase(stored.file(), [](QSqlDatabase & db) {
        QVERIFY(QSqlQuery(db).exec(QStringLiteral("DROP TABLE t_plugin_params")));
    });
    QVERIFY(p.loadSettings().isValid());
    QCOMPARE(p.getDDLExportPath(false), QStringLiteral("out"));
    QCOMPARE(p.getListTypeMappingByDb(ddl_export::db_mysql).count(), 2L);
    QVERIFY(p.saveSettings().isValid());
}

void tst_settings::failedSaveKeepsWhatWasStored()
{
    const support::stored_project stored;
    ddl_export p;
    setEverything(p);
    QVERIFY(!p.saveSettings().isValid());
    // The insert fails at its fourth record, after the delete went well.
    onDatabase(stored.file(), [](QSqlDatabase & db) {
        QVERIFY(QSqlQuery(db).exec(
            QStringLiteral("CREATE UNIQUE INDEX no_schema_2 ON t_plugin_params (param_value) "
                           "WHERE param_key IN ('DDL_EXPORT_DATABASE_TYPE', 'DDL_EXPORT_DATABASE_SCHEMA')")));
    });
    p.setDDLExportPath(QStringLiteral("elsewhere"));
    p.setDatabaseType(ddl_export::db_mysql);
    QVERIFY(p.saveSettings().isValid());
    const QList<row> rows = storedRows(stored.file());
    QCOMPARE(rows.size(), 6);
    QCOMPARE(rows[0].value, QStringLiteral("out"));
    QCOMPARE(rows[1].value, QStringLiteral("3"));
}

void tst_settings::aKeyThatIsNotKnownChangesNothing()
{
    const support::stored_project stored;
    store(stored.file(), QStringLiteral("DDL_EXPORT_SOMETHING_NEWER"), QStringLiteral("1"));
    ddl_export p;
    QVERIFY(!p.loadSettings().isValid());
    QVERIFY(!p.getExportRelationships());
}

void tst_settings::aSaveWithoutItsTransactionChangesNothing()
{
    const support::stored_project stored;
    ddl_export p;
    setEverything(p);
    QVERIFY(!p.saveSettings().isValid());
    const QSqlDatabase database = context::ctx_project::getSingleton().getDatabase();
    QVERIFY(QSqlQuery(database).exec(QStringLiteral("BEGIN")));
    QVERIFY(p.saveSettings().isValid());
    QVERIFY(QSqlQuery(database).exec(QStringLiteral("COMMIT")));
    QCOMPARE(storedRows(stored.file()).size(), 6);
}

void tst_settings::readFileKeepsContent()
{
    class reader : public ddl_export
    {
    public:
        using ddl_export::readFile;
    };
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("text"));
    const reader p;
    QString content = QStringLiteral("before");
    p.readFile(name, content);
    QCOMPARE(content, QStringLiteral("before"));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    p.readFile(name, content);
    QCOMPARE(content, QStringLiteral("before"));
    file.write("grün\r\nzwei");
    file.close();
    p.readFile(name, content);
    QCOMPARE(content, QStringLiteral("grün\nzwei"));
}

QTEST_MAIN(tst_settings)
#include "tst_settings.moc"
