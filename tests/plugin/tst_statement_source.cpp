// The statements of scripts without scripts, asked of the built module as a host asks.

#include "plugin/statement_source.h"

#include "support/project_support.h"
#include "support/random_models.h"

#include "context/ctx_project.h"
#include "plugin/export_interface.h"
#include "storage/history.h"
#include "storage/project_file.h"
#include "tools/script_permission.h"
#include "zk/zk_sql_database.h"

#include <QDir>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <map>

using plugin::friendly_settings;
using plugin::statement_list;
using plugin::statement_record;
using support::entity_builder;
using support::model_builder;
using support::random_model;

namespace {

/// Bytes of scripts by their names.
using scripts = std::map<QString, QByteArray>;

scripts joined(const statement_list & list)
{
    scripts result;
    for (const statement_record & record : list.records) {
        result[record.script] += record.text.toUtf8() + '\n';
    }
    return result;
}

/// What differs first, for a message.
QByteArray difference(const scripts & found, const scripts & expected)
{
    for (const auto & [name, bytes] : expected) {
        const auto it = found.find(name);
        if (it == found.end()) {
            return "missing: " + name.toUtf8();
        }
        if (it->second != bytes) {
            return name.toUtf8() + " is\n" + it->second + "\nnot\n" + bytes;
        }
    }
    return found.size() == expected.size() ? QByteArray() : QByteArray("more scripts than expected");
}

constexpr unsigned ModelsADatabase = 6;
const char * const Databases[] = {"generic", "sqlite", "mysql", "postgresql", "oracle", "mssqlserver"};

/// Each database with models of its own.
void addDatabaseRows()
{
    QTest::addColumn<QString>("db");
    QTest::addColumn<unsigned>("firstSeed");
    unsigned seed = 1;
    for (const char * const db : Databases) {
        QTest::newRow(db) << QString::fromLatin1(db) << seed;
        seed += ModelsADatabase;
    }
}

/// "script from-to line+lines ACTION entity/property/relationship", without the script's common beginning.
QString told(const statement_record & r)
{
    return QStringLiteral("%1 %2-%3 %4+%5 %6 %7/%8/%9")
        .arg(QString(r.script).remove(QStringLiteral("shop_sqlite_db_schema_")))
        .arg(r.from)
        .arg(r.to)
        .arg(r.line)
        .arg(r.lines)
        .arg(QString(plugin::actionName(r.action)))
        .arg(r.entity)
        .arg(r.property)
        .arg(r.relationship);
}

QStringList told(const statement_list & list)
{
    QStringList lines;
    for (const statement_record & record : list.records) {
        lines.append(told(record));
    }
    return lines;
}

} // namespace

class tst_statement_source : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();
    void recordsAreTheBytesOfTheScripts_data() { addDatabaseRows(); }
    void recordsAreTheBytesOfTheScripts();
    void theModelsLeaveNoKindOfStatementOut();
    void stepIsWhatAHistoryOfTwoVersionsWrites_data() { addDatabaseRows(); }
    void stepIsWhatAHistoryOfTwoVersionsWrites();
    void linesAreThoseOfTheScript_data() { addDatabaseRows(); }
    void linesAreThoseOfTheScript();
    void tellsWhatStatementsAreAbout();
    void tellsWhatAStepIsAbout();
    void aStepBetweenTwoTexts();
    void actionsHaveTheNamesThatScriptsKnow();
    void customScriptReplacesText();
    void customScriptThatFailsInTheMiddle();
    void handsEachStatementOver();
    void handsOverWhatWasMadeBeforeAFailure();
    void customScriptThatIsNotThere();
    void customScriptKnowsTheExportsNames();
    void consoleIsHeard();
    void guardHasASay();
    void optionsCountForOneCall();
    void wrongOptions_data();
    void wrongOptions();
    void nothingIsWrittenOrStored();
    void projectWithoutAFile();
    void historyWithoutVersions();
    void historyThatCannotBeRead();
    void settingsThatCannotBeRead();
    void stepWithoutAProject();
    void tellsHowFarItIs();
    void listsDatabases();
    void listsTypesInForce();
    void listsOptions();
    void listsStrangeStoredValues();
    void storesOptions();
    void storesNothingThatIsWrong();
    void storesNothingWhenAWriteFails();

private:
    plugin::statement_source & source() { return *m_source; }
    /// Stores `model` as the state of the project file and makes it the current project.
    void store(const model::project & model);
    void tag();
    void writeScript(const QByteArray & text);
    /// What an export with the stored settings writes.
    scripts exported();
    QStringList storedSettings() const;
    void storeSetting(const QString & key, const QVariant & value);

    std::unique_ptr<QPluginLoader> m_loader;
    plugin::export_interface * m_plugin = nullptr;
    plugin::statement_source * m_source = nullptr;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<model::project> m_project;
};

void tst_statement_source::initTestCase()
{
    m_loader = std::make_unique<QPluginLoader>(QStringLiteral(KORVANE_PLUGIN_FILE));
    QObject * const object = m_loader->instance();
    QVERIFY2(object, qPrintable(m_loader->errorString()));
    m_plugin = qobject_cast<plugin::export_interface *>(object);
    m_source = qobject_cast<plugin::statement_source *>(object);
    QVERIFY(m_plugin);
    QVERIFY(m_source);
}

void tst_statement_source::cleanupTestCase()
{
    // The loader would leave it to the end of the process, and with it a script's engine, whose memory no
    // finder of leaks can look into. Unloading as well would take the names out of what such a finder tells.
    delete m_loader->instance();
}

void tst_statement_source::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("sql")));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("temp")));
    qputenv("TMPDIR", m_folder->filePath(QStringLiteral("temp")).toLocal8Bit());
}

void tst_statement_source::cleanup()
{
    context::ctx_project::getSingleton().setProject(nullptr);
    zk::ZkSqlDatabase::clearAllDatabases();
    m_plugin->clearSettings();
    m_project.reset();
    qunsetenv("TMPDIR");
}

void tst_statement_source::store(const model::project & model)
{
    const QString file = m_folder->filePath(QStringLiteral("shop.korv"));
    const QSqlError error = storage::project_file::write(file, model);
    QVERIFY2(!error.isValid(), qPrintable(error.text()));
    m_project = std::make_shared<model::project>(1);
    m_project->setFileName(file);
    const QSqlError loadError = m_project->load();
    QVERIFY2(!loadError.isValid(), qPrintable(loadError.text()));
    context::ctx_project::getSingleton().setProject(m_project);
}

void tst_statement_source::tag()
{
    int number = 0;
    const QSqlError error =
        storage::history::tag(m_folder->filePath(QStringLiteral("shop.korv")), QStringLiteral("tag"), number);
    QVERIFY2(!error.isValid(), qPrintable(error.text()));
}

void tst_statement_source::writeScript(const QByteArray & text)
{
    QVERIFY(support::writeBytes(m_folder->filePath(QStringLiteral("hook.js")), text));
}

scripts tst_statement_source::exported()
{
    const zk::ZkBool result = m_plugin->exportProject(*m_project);
    if (!result) {
        qWarning("%s", qUtf8Printable(result.getDesc()));
        return {};
    }
    scripts files;
    const QDir folder(m_folder->filePath(QStringLiteral("sql")));
    for (const QString & name : folder.entryList(QDir::Files)) {
        files[name] = support::bytesOf(folder.filePath(name));
    }
    return files;
}

QStringList tst_statement_source::storedSettings() const
{
    QStringList lines;
    QSqlQuery query(QStringLiteral("SELECT param_key, param_value FROM t_plugin_params ORDER BY param_key"),
                    context::ctx_project::getSingleton().getDatabase());
    while (query.next()) {
        lines.append(query.value(0).toString() + QLatin1Char('=') + query.value(1).toString());
    }
    return lines;
}

void tst_statement_source::storeSetting(const QString & key, const QVariant & value)
{
    QSqlQuery query(context::ctx_project::getSingleton().getDatabase());
    query.prepare(QStringLiteral("INSERT INTO t_plugin_params (plugin_guid, param_key, param_value) "
                                 "VALUES ('713A034E-3F7A-422A-BC81-22132DA57110', ?, ?)"));
    query.addBindValue(key);
    query.addBindValue(value);
    QVERIFY(query.exec());
}

void tst_statement_source::recordsAreTheBytesOfTheScripts()
{
    QFETCH(QString, db);
    QFETCH(unsigned, firstSeed);
    for (unsigned seed = firstSeed; seed < firstSeed + ModelsADatabase; ++seed) {
        cleanup();
        init();
        random_model model(seed);
        store(*model.project());
        for (int version = 1; version <= 3; ++version) {
            tag();
            model.change();
            store(*model.project());
        }
        const QString relationships = seed % 3 == 0 ? QStringLiteral("no") : QStringLiteral("yes");
        const zk::ZkBool stored = source().storeOptions(
            {{"path", "sql"}, {"db", db}, {"schema", "both"}, {"relationships", relationships}});
        QVERIFY2(stored, qPrintable(stored.getDesc()));
        const statement_list full = source().fullStatements(*m_project, {});
        QVERIFY2(full.outcome, qPrintable(full.outcome.getDesc()));
        const statement_list history = source().historyStatements(*m_project, {});
        QVERIFY2(history.outcome, qPrintable(history.outcome.getDesc()));

        scripts found = joined(full);
        QCOMPARE(found.size(), std::size_t(1));
        found.merge(joined(history));
        QCOMPARE(found.size(), std::size_t(5));
        const QByteArray differs = difference(found, exported());
        QVERIFY2(differs.isEmpty(), ("seed " + QByteArray::number(seed) + ": " + differs).constData());
    }
}

/// The two tests about all databases say no more than their models do.
void tst_statement_source::theModelsLeaveNoKindOfStatementOut()
{
    std::map<plugin::statement_action, int> seen;
    const unsigned models = ModelsADatabase * static_cast<unsigned>(std::size(Databases));
    for (unsigned seed = 1; seed <= models; ++seed) {
        random_model model(seed);
        const std::shared_ptr<model::project> before = model.project();
        model.change();
        for (const statement_record & record :
             source()
                 .stepStatements({before, model.project(), 1, 2}, {{"relationships", "yes"}, {"db", "mysql"}})
                 .records) {
            ++seen[record.action];
        }
    }
    QCOMPARE(seen.size(), std::size_t(13));
}

void tst_statement_source::stepIsWhatAHistoryOfTwoVersionsWrites()
{
    QFETCH(QString, db);
    QFETCH(unsigned, firstSeed);
    for (unsigned seed = firstSeed; seed < firstSeed + ModelsADatabase; ++seed) {
        cleanup();
        init();
        random_model model(seed);
        const std::shared_ptr<model::project> before = model.project();
        for (unsigned i = 0; i <= seed % 4; ++i) {
            model.change();
        }
        const std::shared_ptr<model::project> after = model.project();
        store(*before);
        tag();
        store(*after);
        QVERIFY(source().storeOptions(
            {{"path", "sql"}, {"db", db}, {"schema", "evolution"}, {"relationships", "yes"}}));
        scripts expected = exported();
        QCOMPARE(expected.size(), std::size_t(2));
        expected.erase(expected.begin());

        const statement_list step = source().stepStatements({before, after, 1, 2}, {});
        QVERIFY2(step.outcome, qPrintable(step.outcome.getDesc()));
        const QByteArray differs = difference(joined(step), expected);
        QVERIFY2(differs.isEmpty(), ("seed " + QByteArray::number(seed) + ": " + differs).constData());
    }
}

void tst_statement_source::linesAreThoseOfTheScript()
{
    QFETCH(QString, db);
    QFETCH(unsigned, firstSeed);
    random_model model(firstSeed);
    store(*model.project());
    tag();
    model.change();
    store(*model.project());
    QVERIFY(source().storeOptions(
        {{"path", "sql"}, {"db", db}, {"schema", "evolution"}, {"relationships", "yes"}}));
    const statement_list list = source().historyStatements(*m_project, {});
    const scripts files = exported();
    QVERIFY(list.records.size() > 10);
    for (const statement_record & record : list.records) {
        const QStringList lines = QString::fromUtf8(files.at(record.script)).split(QLatin1Char('\n'));
        QCOMPARE(lines.mid(record.line - 1, record.lines).join(QLatin1Char('\n')), record.text);
    }
}

void tst_statement_source::tellsWhatStatementsAreAbout()
{
    model_builder model;
    entity_builder person = model.entity(1, "person");
    person.identifier(10, "id", "long");
    person.property(11, "email", "QString").indexed();
    person.relation(12, "country", 100, model::relationship::many_to_one, 2).columns("country_id");
    person.relation(13, "tags", 101, model::relationship::many_to_many, 3)
        .linkTable("person_tag", "person_id", "tag_id", 31);
    model.entity(2, "country").identifier(20, "id", "long");
    entity_builder tagged = model.entity(3, "tag");
    tagged.identifier(30, "id", "long");
    tagged.relation(31, "persons", 102, model::relationship::many_to_many, 1)
        .linkTable("person_tag", "tag_id", "person_id", 13);
    store(model.project());
    const statement_list list =
        source().fullStatements(*m_project, {{"db", "oracle"}, {"relationships", "yes"}});
    QVERIFY(list.outcome);
    QStringList lines = told(list);
    lines.replaceInStrings(QStringLiteral("shop_oracle_db_schema_"), QString());
    QCOMPARE(lines,
             QStringList(
                 {"full.sql 0-0 1+1 DDL_EXPORT_BEGIN 0/0/0", "full.sql 0-0 2+12 CREATE_TABLE 1/0/0",
                  "full.sql 0-0 14+12 CREATE_TABLE 2/0/0", "full.sql 0-0 26+12 CREATE_TABLE 3/0/0",
                  "full.sql 0-0 38+1 CREATE_EXTRA_TABLE 1/13/101", "full.sql 0-0 39+1 CREATE_INDEX 1/11/0",
                  "full.sql 0-0 40+1 ADD_FOREIGN_KEY 1/12/100", "full.sql 0-0 41+1 ADD_FOREIGN_KEY 1/13/101",
                  "full.sql 0-0 42+1 ADD_FOREIGN_KEY 3/31/102", "full.sql 0-0 43+1 DDL_EXPORT_END 0/0/0"}));
}

void tst_statement_source::tellsWhatAStepIsAbout()
{
    const auto version = [](bool isLater) {
        model_builder model;
        entity_builder person = model.entity(1, isLater ? "human" : "person");
        person.version(isLater ? 5 : 4).identifier(10, "id", "long");
        person.property(11, isLater ? "mail" : "email", "QString").indexed(!isLater);
        if (isLater) {
            person.property(13, "age", "int");
            person.property(14, "rank", "int").transient().indexed();
        } else {
            person.property(12, "phone", "QString");
            person.property(14, "rank", "int").transient();
            person.relation(15, "country", 100, model::relationship::many_to_one, 2).columns("c_id");
            model.entity(2, "country").identifier(20, "id", "long");
        }
        model.entity(3, "same").identifier(30, "id", "long");
        return model.get();
    };
    const statement_list list = source().stepStatements({version(false), version(true), 3, 7},
                                                        {{"db", "sqlite"}, {"relationships", "yes"}});
    QVERIFY2(list.outcome, qPrintable(list.outcome.getDesc()));
    QCOMPARE(
        told(list),
        QStringList({"v3_to_v7.sql 3-7 1+2 DDL_EXPORT_BEGIN 0/0/0", "v3_to_v7.sql 3-7 3+1 DROP_TABLE 2/0/0",
                     "v3_to_v7.sql 3-7 4+1 RENAME_TABLE 1/0/0", "v3_to_v7.sql 3-7 5+4 DROP_COLUMN 1/12/0",
                     "v3_to_v7.sql 3-7 9+4 DROP_COLUMN 1/15/0", "v3_to_v7.sql 3-7 13+4 RENAME_COLUMN 1/11/0",
                     "v3_to_v7.sql 3-7 17+1 DROP_INDEX 1/11/0", "v3_to_v7.sql 3-7 18+1 ADD_COLUMN 1/13/0",
                     "v3_to_v7.sql 3-7 19+4 DROP_FOREIGN_KEY 1/15/100",
                     "v3_to_v7.sql 3-7 23+1 DDL_EXPORT_END 0/0/0"}));
}

/// Texts bear whatever versions somebody wrote into them; the step has to go by what differs.
void tst_statement_source::aStepBetweenTwoTexts()
{
    const auto former = support::projectOf(
        support::textOf(R"({"id": 1, "name": "a", "version": 7}, {"id": 2, "name": "b", "version": 7})"));
    const auto later = support::projectOf(
        support::textOf(R"({"id": 1, "name": "z", "version": 7}, {"id": 2, "name": "b", "version": 9})"));
    const auto step = [&] {
        const statement_list list = source().stepStatements({former, later, 1, 2}, {{"db", "postgresql"}});
        QStringList actions;
        for (const statement_record & record : list.records) {
            actions << plugin::actionName(record.action) + QLatin1Char(' ') + QString::number(record.entity);
        }
        return actions;
    };
    // Without it the rename is not seen.
    QCOMPARE(step(), QStringList({"DDL_EXPORT_BEGIN 0", "DDL_EXPORT_END 0"}));
    storage::text_form::settleVersions(*former, *later);
    QCOMPARE(step(), QStringList({"DDL_EXPORT_BEGIN 0", "RENAME_TABLE 1", "DDL_EXPORT_END 0"}));
    QCOMPARE(support::entityOf(*later, 1)->getVersion(), 7L);
}

void tst_statement_source::actionsHaveTheNamesThatScriptsKnow()
{
    using plugin::statement_action;
    QStringList names;
    for (const statement_action action :
         {statement_action::begin, statement_action::create_table, statement_action::create_extra_table,
          statement_action::create_index, statement_action::add_foreign_key, statement_action::drop_table,
          statement_action::rename_table, statement_action::drop_column, statement_action::add_column,
          statement_action::rename_column, statement_action::drop_index, statement_action::drop_foreign_key,
          statement_action::end}) {
        names.append(plugin::actionName(action));
    }
    QCOMPARE(names, QStringList({"DDL_EXPORT_BEGIN", "CREATE_TABLE", "CREATE_EXTRA_TABLE", "CREATE_INDEX",
                                 "ADD_FOREIGN_KEY", "DROP_TABLE", "RENAME_TABLE", "DROP_COLUMN", "ADD_COLUMN",
                                 "RENAME_COLUMN", "DROP_INDEX", "DROP_FOREIGN_KEY", "DDL_EXPORT_END"}));
}

namespace {

/// Two tables, "person" and "country", each with a key.
model_builder twoTables()
{
    model_builder model;
    model.entity(1, "person").identifier(10, "id", "long");
    model.entity(2, "country").identifier(20, "id", "long");
    return model;
}

} // namespace

void tst_statement_source::customScriptReplacesText()
{
    store(twoTables().project());
    writeScript("function exportStep(project, entity, property, enumeration, parameters) {\n"
                "    if (parameters.action !== 'CREATE_TABLE') return undefined;\n"
                "    return entity.getName() === 'person' ? '-- one\\n-- two' : '';\n"
                "}\n");
    QVERIFY(source().storeOptions({{"db", "generic"}, {"path", "sql"}, {"custom-script", "hook.js"}}));
    const statement_list list = source().fullStatements(*m_project, {});
    QVERIFY2(list.outcome, qPrintable(list.outcome.getDesc()));
    QCOMPARE(list.records.size(), std::size_t(4));
    QCOMPARE(list.records[1].text, "-- one\n-- two");
    QCOMPARE(list.records[1].defaultText,
             "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);");
    QVERIFY(list.records[1].isReplaced());
    QCOMPARE(list.records[2].text, QString());
    QCOMPARE(list.records[2].line, 4);
    QCOMPARE(list.records[2].lines, 1);
    QVERIFY(list.records[2].isReplaced());
    QCOMPARE(list.records[3].line, 5);
    QVERIFY(!list.records[0].isReplaced());
    QVERIFY(!list.records[3].isReplaced());
    QCOMPARE(difference(joined(list), exported()), QByteArray());
    // None of it stays with the plug-in.
    const statement_list without = source().fullStatements(*m_project, {{"custom-script", ""}});
    QCOMPARE(without.records[1].text, without.records[1].defaultText);
}

void tst_statement_source::customScriptThatFailsInTheMiddle()
{
    store(twoTables().project());
    writeScript(
        "function exportStep(project, entity) {\n"
        "    if (entity !== null && entity.getName() === 'country') throw new Error('not this one');\n"
        "}\n");
    const statement_list list =
        source().fullStatements(*m_project, {{"db", "generic"}, {"custom-script", "hook.js"}});
    QVERIFY(!list.outcome);
    QVERIFY2(list.outcome.getDesc().contains(QStringLiteral("not this one")),
             qPrintable(list.outcome.getDesc()));
    QCOMPARE(list.records.size(), std::size_t(2));
    QCOMPARE(list.records[1].text, "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);");
}

void tst_statement_source::handsEachStatementOver()
{
    random_model model(3);
    const std::shared_ptr<model::project> before = model.project();
    store(*before);
    tag();
    model.change();
    const std::shared_ptr<model::project> after = model.project();
    store(*after);
    scripts taken;
    const plugin::statement_receiver take = [&taken](const statement_record & record) {
        taken[record.script] += record.text.toUtf8() + '\n';
    };
    const plugin::project_step step{before, after, 1, 2};
    const friendly_settings options{{"db", "postgresql"}};
    const auto same = [&](const statement_list & handedOver, const statement_list & listed) {
        const scripts expected = joined(listed);
        const QByteArray differs = difference(taken, expected);
        taken.clear();
        return handedOver.outcome && handedOver.records.empty() && !expected.empty() && differs.isEmpty();
    };
    QVERIFY(same(source().fullStatements(*m_project, options, take),
                 source().fullStatements(*m_project, options)));
    QVERIFY(same(source().historyStatements(*m_project, options, take),
                 source().historyStatements(*m_project, options)));
    QVERIFY(same(source().stepStatements(step, options, take), source().stepStatements(step, options)));
}

void tst_statement_source::handsOverWhatWasMadeBeforeAFailure()
{
    store(twoTables().project());
    writeScript(
        "function exportStep(project, entity) {\n"
        "    if (entity !== null && entity.getName() === 'country') throw new Error('not this one');\n"
        "}\n");
    QStringList taken;
    const statement_list list =
        source().fullStatements(*m_project, {{"db", "generic"}, {"custom-script", "hook.js"}},
                                [&taken](const statement_record & record) { taken += record.text; });
    QVERIFY(!list.outcome);
    QVERIFY(list.records.empty());
    QCOMPARE(taken.size(), 2);
    QCOMPARE(taken[1], "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);");
}

void tst_statement_source::customScriptThatIsNotThere()
{
    store(twoTables().project());
    const statement_list list = source().fullStatements(*m_project, {{"custom-script", "missing.js"}});
    QVERIFY(!list.outcome);
    QVERIFY2(list.outcome.getDesc().contains(QStringLiteral("missing.js")),
             qPrintable(list.outcome.getDesc()));
    QVERIFY(list.records.empty());
}

void tst_statement_source::customScriptKnowsTheExportsNames()
{
    store(twoTables().project());
    writeScript("function exportStep(project, entity, property, enumeration, parameters) {\n"
                "    return parameters.plugin_name + '|' + parameters.current_file + '|' +\n"
                "        parameters.output_location;\n"
                "}\n");
    const statement_list list = source().fullStatements(
        *m_project, {{"db", "mysql"}, {"path", "nowhere"}, {"custom-script", "hook.js"}});
    QVERIFY2(list.outcome, qPrintable(list.outcome.getDesc()));
    const QString folder = m_folder->filePath(QStringLiteral("nowhere"));
    QCOMPARE(list.records[0].text, QStringLiteral("KorvGenericDDLExport|") + folder +
                                       QStringLiteral("/shop_mysql_db_schema_full.sql|") + folder);
    QVERIFY(!QFileInfo::exists(folder));
}

void tst_statement_source::consoleIsHeard()
{
    store(twoTables().project());
    writeScript("console.log('loaded');\nfunction exportStep() {}\n");
    QSignalSpy messages(m_plugin, &plugin::base_interface::onMessage);
    QVERIFY(source().fullStatements(*m_project, {{"custom-script", "hook.js"}}).outcome);
    QCOMPARE(messages.count(), 1);
    QCOMPARE(messages[0][0].toString(), QStringLiteral("loaded"));
}

void tst_statement_source::guardHasASay()
{
    store(twoTables().project());
    writeScript("function exportStep() { return 'replaced'; }\n");
    const QString file = m_folder->filePath(QStringLiteral("hook.js"));
    QVERIFY(source().storeOptions({{"custom-script", "hook.js"}}));
    QStringList asked;
    tools::script_permission answer = tools::script_permission::run;
    const tools::script_guard_scope guard([&](const QString & name, bool isStored) {
        asked.append(name + (isStored ? QStringLiteral(" stored") : QStringLiteral(" given")));
        return answer;
    });
    QCOMPARE(source().fullStatements(*m_project, {}).records[0].text, QStringLiteral("replaced"));
    answer = tools::script_permission::leave_out;
    QCOMPARE(source().fullStatements(*m_project, {{"db", "generic"}}).records[0].text, QString());
    answer = tools::script_permission::cancel;
    const statement_list refused = source().fullStatements(*m_project, {{"custom-script", "hook.js"}});
    QVERIFY(!refused.outcome);
    QCOMPARE(
        refused.outcome.getDesc(),
        QStringLiteral("The statements are not known: the custom script 'hook.js' was not allowed to run"));
    QVERIFY(refused.records.empty());
    QCOMPARE(asked, QStringList({file + " stored", file + " stored", file + " given"}));
}

void tst_statement_source::optionsCountForOneCall()
{
    store(twoTables().project());
    QVERIFY(source().storeOptions({{"db", "mysql"}}));
    const auto script = [this](const friendly_settings & options) {
        return source().fullStatements(*m_project, options).records[0].script;
    };
    QCOMPARE(script({{"db", "oracle"}}), QStringLiteral("shop_oracle_db_schema_full.sql"));
    QCOMPARE(script({{"db", "generic"}, {"schema", "evolution"}}),
             QStringLiteral("shop_default_db_schema_full.sql"));
    QCOMPARE(script({}), QStringLiteral("shop_mysql_db_schema_full.sql"));
}

void tst_statement_source::wrongOptions_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("reason");
    QTest::newRow("name") << "dbs"
                          << "sqlite"
                          << "The export has no option 'dbs': it has path, db, relationships, schema, "
                             "custom-script";
    QTest::newRow("database") << "db"
                              << "postgress"
                              << "'postgress' is not a value of the option 'db': it takes generic, sqlite, "
                                 "mysql, postgresql, oracle, mssqlserver";
    QTest::newRow("number") << "db"
                            << "3"
                            << "'3' is not a value of the option 'db': it takes generic, sqlite, mysql, "
                               "postgresql, oracle, mssqlserver";
    QTest::newRow("relationships") << "relationships"
                                   << "true"
                                   << "'true' is not a value of the option 'relationships': it takes no, yes";
    QTest::newRow("schema") << "schema"
                            << ""
                            << "'' is not a value of the option 'schema': it takes full, evolution, both";
}

void tst_statement_source::wrongOptions()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QFETCH(QString, reason);
    store(twoTables().project());
    const friendly_settings options{{name, value}};
    for (const statement_list & list :
         {source().fullStatements(*m_project, options), source().historyStatements(*m_project, options),
          source().stepStatements({m_project, m_project, 1, 2}, options)}) {
        QVERIFY(!list.outcome);
        QCOMPARE(list.outcome.getDesc(), reason);
        QVERIFY(list.records.empty());
    }
    QCOMPARE(source().storeOptions(options).getDesc(), reason);
}

void tst_statement_source::nothingIsWrittenOrStored()
{
    random_model model(7);
    store(*model.project());
    tag();
    model.change();
    store(*model.project());
    const QStringList settings = storedSettings();
    QVERIFY(settings.isEmpty());
    const QByteArray file = support::bytesOf(m_project->getFileName());
    const friendly_settings options{{"db", "oracle"}, {"path", "sql"}};
    QVERIFY(source().fullStatements(*m_project, options).outcome);
    QVERIFY(source().historyStatements(*m_project, options).outcome);
    QVERIFY(source().stepStatements({m_project, m_project, 1, 2}, options).outcome);
    QList<plugin::statement_database> databases;
    QVERIFY(source().listDatabases(databases));
    QCOMPARE(context::ctx_project::getSingleton().getProject(), m_project);
    QCOMPARE(storedSettings(), settings);
    QCOMPARE(support::bytesOf(m_project->getFileName()), file);
    const auto entries = [this](const char * folder) {
        return QDir(m_folder->filePath(QString::fromLatin1(folder)))
            .entryList(QDir::Files | QDir::Hidden | QDir::System);
    };
    QCOMPARE(entries("sql"), QStringList());
    QCOMPARE(entries("temp"), QStringList());
    // The plug-in's settings in memory are what an export stores.
    QVERIFY(!m_plugin->saveSettings().isValid());
    QVERIFY(storedSettings().contains(QStringLiteral("DDL_EXPORT_DATABASE_TYPE=1")));
    QVERIFY(storedSettings().contains(QStringLiteral("DDL_EXPORT_PATH=")));
}

void tst_statement_source::projectWithoutAFile()
{
    const model_builder model = twoTables();
    for (const std::shared_ptr<model::project> & current : {model.get(), std::shared_ptr<model::project>()}) {
        context::ctx_project::getSingleton().setProject(current);
        const statement_list full = source().fullStatements(model.project(), {});
        QVERIFY2(full.outcome, qPrintable(full.outcome.getDesc()));
        QCOMPARE(
            told(full),
            QStringList({"full.sql 0-0 1+2 DDL_EXPORT_BEGIN 0/0/0", "full.sql 0-0 3+1 CREATE_TABLE 1/0/0",
                         "full.sql 0-0 4+1 CREATE_TABLE 2/0/0", "full.sql 0-0 5+1 DDL_EXPORT_END 0/0/0"}));
        const statement_list history = source().historyStatements(model.project(), {});
        QVERIFY(history.outcome);
        QVERIFY(history.records.empty());
        QCOMPARE(context::ctx_project::getSingleton().getProject(), current);
    }
}

void tst_statement_source::historyWithoutVersions()
{
    store(twoTables().project());
    const statement_list history = source().historyStatements(*m_project, {});
    QVERIFY(history.outcome);
    QVERIFY(history.records.empty());
}

void tst_statement_source::historyThatCannotBeRead()
{
    store(twoTables().project());
    tag();
    QSqlQuery damage(context::ctx_project::getSingleton().getDatabase());
    QVERIFY(damage.exec(QStringLiteral("UPDATE t_project_historic SET project_file = x'00112233'")));
    const statement_list history = source().historyStatements(*m_project, {});
    QVERIFY(!history.outcome);
    QVERIFY2(history.outcome.getDesc().startsWith(QStringLiteral("Cannot uncompress project file : ")),
             qPrintable(history.outcome.getDesc()));
    QVERIFY(history.records.empty());
    QCOMPARE(context::ctx_project::getSingleton().getProject(), m_project);
}

void tst_statement_source::settingsThatCannotBeRead()
{
    store(twoTables().project());
    QVERIFY(QFile::remove(m_project->getFileName()));
    zk::ZkSqlDatabase::clearAllDatabases();
    const QString start = QStringLiteral("Error loading plugin settings : ") + m_project->getFileName();
    const statement_list list = source().fullStatements(*m_project, {});
    QVERIFY(!list.outcome);
    QVERIFY2(list.outcome.getDesc().startsWith(start), qPrintable(list.outcome.getDesc()));
    QList<plugin::statement_database> databases{{}};
    QVERIFY(source().listDatabases(databases).getDesc().startsWith(start));
    QVERIFY(databases.isEmpty());
    QList<plugin::friendly_option> options{{}};
    QVERIFY(source().listOptions(options).getDesc().startsWith(start));
    QVERIFY(options.isEmpty());
    QVERIFY(source().storeOptions({}).getDesc().startsWith(start));
}

void tst_statement_source::stepWithoutAProject()
{
    const std::shared_ptr<model::project> model = twoTables().get();
    QCOMPARE(source().stepStatements({nullptr, model, 1, 2}, {}).outcome.getDesc(),
             QStringLiteral("Invalid previous project"));
    QCOMPARE(source().stepStatements({model, nullptr, 1, 2}, {}).outcome.getDesc(),
             QStringLiteral("Invalid current project"));
}

void tst_statement_source::tellsHowFarItIs()
{
    store(twoTables().project());
    tag();
    QSignalSpy progress(m_plugin, &plugin::base_interface::onProgress);
    QSignalSpy files(m_plugin, &plugin::base_interface::onFileWritten);
    QVERIFY(source().historyStatements(*m_project, {}).outcome);
    QCOMPARE(progress.first()[1].toInt(), 2000);
    QCOMPARE(progress.last()[0].toInt(), 2000);
    progress.clear();
    QVERIFY(source().stepStatements({m_project, m_project, 1, 2}, {}).outcome);
    QCOMPARE(progress.last()[0].toInt(), 1000);
    QCOMPARE(progress.last()[1].toInt(), 1000);
    QCOMPARE(files.count(), 0);
}

void tst_statement_source::listsDatabases()
{
    QList<plugin::statement_database> databases;
    QVERIFY(source().listDatabases(databases));
    QStringList lines;
    for (const plugin::statement_database & db : databases) {
        QString boolean;
        for (const auto & [cppType, sqlType] : db.types) {
            boolean = cppType == QLatin1String("bool") ? sqlType : boolean;
        }
        lines.append(QStringLiteral("%1 %2 %3 '%4' %5 types, <%6>, bool is %7")
                         .arg(db.number)
                         .arg(db.key, db.shortName, db.label)
                         .arg(db.types.size())
                         .arg(db.types.constFirst().first, boolean));
    }
    QCOMPARE(lines,
             QStringList({"0 generic default 'Generic SQL' 34 types, <<default type>>, bool is SMALLINT",
                          "1 sqlite sqlite 'SQLite' 34 types, <<default type>>, bool is SMALLINT",
                          "2 mysql mysql 'MySQL' 34 types, <<default type>>, bool is SMALLINT",
                          "3 postgresql postgresql 'PostgreSQL' 34 types, <<default type>>, bool is BOOLEAN",
                          "4 oracle oracle 'Oracle' 34 types, <<default type>>, bool is SMALLINT",
                          "5 mssqlserver mssqlserver 'MS SQL Server' 34 types, <<default type>>, bool "
                          "is TINYINT"}));
}

void tst_statement_source::listsTypesInForce()
{
    store(twoTables().project());
    storeSetting(QStringLiteral("DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_3"),
                 QStringLiteral("<zk.ZkCollection-QString_QString- class_id=\"0\" tracking_level=\"0\" "
                                "version=\"0\">\n"
                                "\t<count>2</count>\n"
                                "\t<item class_id=\"1\" tracking_level=\"0\" version=\"0\">\n"
                                "\t\t<first>&lt;default type&gt;</first>\n"
                                "\t\t<second>VARCHAR</second>\n"
                                "\t</item>\n"
                                "\t<item>\n"
                                "\t\t<first>int</first>\n"
                                "\t\t<second>INT4</second>\n"
                                "\t</item>\n"
                                "</zk.ZkCollection-QString_QString->\n\n"));
    using types = QList<std::pair<QString, QString>>;
    QList<plugin::statement_database> databases;
    QVERIFY(source().listDatabases(databases));
    QCOMPARE(databases[3].types, types({{"<default type>", "VARCHAR"}, {"int", "INT4"}}));
    QCOMPARE(databases[2].types.size(), 34);
    // And they are the ones that statements are made with.
    model_builder model;
    model.entity(1, "person").property(10, "age", "int");
    QCOMPARE(source().fullStatements(model.project(), {{"db", "postgresql"}}).records[1].text,
             "CREATE TABLE person (age INT4) WITH (OIDS = FALSE);");
}

void tst_statement_source::listsOptions()
{
    store(twoTables().project());
    QVERIFY(source().storeOptions(
        {{"db", "postgresql"}, {"path", "a b"}, {"schema", "both"}, {"relationships", "yes"}}));
    QList<plugin::friendly_option> options;
    QVERIFY(source().listOptions(options));
    QStringList lines;
    for (const plugin::friendly_option & option : options) {
        QString line = QStringLiteral("%1 %2 [%3] <%4> %5:")
                           .arg(option.name, option.longName, option.argument, option.stored, option.about);
        for (const plugin::friendly_value & value : option.values) {
            line += QStringLiteral(" %1=%2=%3").arg(value.name, value.number, value.label);
        }
        lines.append(line);
    }
    QCOMPARE(
        lines,
        QStringList({"path --KorvGenericDDLExport_path [DIR] <a b> Folder of the scripts:",
                     "db --KorvGenericDDLExport_db_type [NAME] <postgresql> Database that the scripts are "
                     "for: generic=0=Generic SQL sqlite=1=SQLite mysql=2=MySQL postgresql=3=PostgreSQL "
                     "oracle=4=Oracle mssqlserver=5=MS SQL Server",
                     "relationships --KorvGenericDDLExport_relation_as_fk [] <yes> Whether relationships "
                     "become foreign keys: no=0= yes=1=",
                     "schema --KorvGenericDDLExport_schema_type [] <both> Which scripts are written: "
                     "full=0= evolution=1= both=2=",
                     "custom-script --KorvGenericDDLExport_custom_javacript [FILE] <> JavaScript file "
                     "that may change each statement:"}));
}

void tst_statement_source::listsStrangeStoredValues()
{
    store(twoTables().project());
    storeSetting(QStringLiteral("DDL_EXPORT_DATABASE_TYPE"), 9);
    QList<plugin::friendly_option> options;
    QVERIFY(source().listOptions(options));
    QCOMPARE(options[1].stored, QStringLiteral("9"));
    // As in an export: generic SQL.
    QCOMPARE(source().fullStatements(*m_project, {}).records[0].script,
             QStringLiteral("shop_default_db_schema_full.sql"));
}

void tst_statement_source::storesOptions()
{
    store(twoTables().project());
    QVERIFY(source().storeOptions({{"db", "oracle"}, {"path", "sql"}, {"relationships", "yes"}}));
    QVERIFY(
        source().storeOptions({{"schema", "evolution"}, {"custom-script", "x.js"}, {"relationships", "no"}}));
    QCOMPARE(storedSettings(), QStringList({"DDL_EXPORT_CUSTOM_JAVASCRIPT=x.js",
                                            "DDL_EXPORT_DATABASE_SCHEMA=1", "DDL_EXPORT_DATABASE_TYPE=4",
                                            "DDL_EXPORT_PATH=sql", "DDL_EXPORT_RELATIONSHIPS=0"}));
}

void tst_statement_source::storesNothingThatIsWrong()
{
    store(twoTables().project());
    QVERIFY(!source().storeOptions({{"db", "oracle"}, {"schema", "whole"}}));
    QCOMPARE(storedSettings(), QStringList());
    const model_builder model = twoTables();
    context::ctx_project::getSingleton().setProject(model.get());
    QCOMPARE(source().storeOptions({{"db", "oracle"}}).getDesc(),
             QStringLiteral("The settings cannot be stored: the project has no file"));
}

void tst_statement_source::storesNothingWhenAWriteFails()
{
    store(twoTables().project());
    QVERIFY(source().storeOptions({{"db", "mysql"}}));
    const QStringList before = storedSettings();
    QSqlQuery trap(context::ctx_project::getSingleton().getDatabase());
    QVERIFY(trap.exec(QStringLiteral("CREATE TEMP TRIGGER trap BEFORE INSERT ON t_plugin_params "
                                     "BEGIN SELECT RAISE(ABORT, 'not today'); END")));
    const zk::ZkBool result = source().storeOptions({{"db", "oracle"}});
    QVERIFY(!result);
    QCOMPARE(result.getDesc(), QStringLiteral("The settings cannot be stored: ") + m_project->getFileName() +
                                   QStringLiteral(": not today"));
    QVERIFY(trap.exec(QStringLiteral("DROP TRIGGER trap")));
    QCOMPARE(storedSettings(), before);
}

QTEST_MAIN(tst_statement_source)
#include "tst_statement_source.moc"
