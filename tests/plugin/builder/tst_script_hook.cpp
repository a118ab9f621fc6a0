#include "export_bench.h"

#include "tools/custom_javascript.h"

#include <QThread>
#include <QtTest>

using plugin::ddl_export;
using support::entity_builder;
using support::model_builder;

namespace {

/// Writes what a call was given in place of the statement.
const char * const Reporter = R"(
function nameOf(object) { return object === null ? "null" : object.getName(); }
function exportStep(project, entity, property, enumeration, parameters) {
    return [parameters.action, nameOf(project), nameOf(entity), nameOf(property), enumeration].join("/");
}
)";

} // namespace

/// The custom script sees every statement, and has the last word on it.
class tst_script_hook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_bench.reset(); }
    void isCalledForEveryStepOfAFullSchema();
    void isCalledForEveryStepOfAComparison();
    void knowsTheParameters();
    void replacesStatements();
    void writesEmptyLines();
    void endsTheScriptWhenItFails();
    void takesTheEngineOfTheMoment();
    void failsEvolutionToo();
    void isReleasedAfterABuild();
    void staysOnTheThreadOfTheBuild();

private:
    void useScript(const QByteArray & text);
    zk::ZkBool build(const model_builder & model)
    {
        return m_bench->builder().builder().build(model.project());
    }

    std::unique_ptr<export_bench> m_bench;
};

void tst_script_hook::init()
{
    m_bench = std::make_unique<export_bench>();
    m_bench->plugin.setExportRelationships(true);
}

void tst_script_hook::useScript(const QByteArray & text)
{
    QFile file(m_bench->path("hook.js"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    const auto script = std::make_shared<tools::custom_javascript>();
    const zk::ZkBool loaded = script->initEngine(file.fileName(), &m_bench->plugin);
    QVERIFY2(loaded, qPrintable(loaded.getDesc()));
    m_bench->plugin.setCustomScript(script);
}

void tst_script_hook::isCalledForEveryStepOfAFullSchema()
{
    model_builder model;
    entity_builder person = model.entity(1, "person");
    person.identifier(10, "id", "long");
    person.property(11, "email", "QString").indexed();
    person.relation(12, "country", 100, model::relationship::many_to_one, 2).columns("c_id");
    person.relation(13, "tags", 101, model::relationship::many_to_many, 2).linkTable("l", "a", "b", 0);
    model.entity(2, "country").identifier(20, "id", "long");
    useScript(Reporter);
    QVERIFY(build(model));
    QCOMPARE(m_bench->content("shop_default_db_schema_full.sql"),
             QString("DDL_EXPORT_BEGIN/shop/null/null/\n"
                     "CREATE_TABLE/shop/person/null/\n"
                     "CREATE_TABLE/shop/country/null/\n"
                     "CREATE_EXTRA_TABLE/shop/person/tags/\n"
                     "CREATE_INDEX/shop/person/email/\n"
                     "ADD_FOREIGN_KEY/shop/person/country/\n"
                     "ADD_FOREIGN_KEY/shop/person/tags/\n"
                     "DDL_EXPORT_END/shop/null/null/\n"));
}

void tst_script_hook::isCalledForEveryStepOfAComparison()
{
    model_builder before("old shop");
    entity_builder old = before.entity(1, "old_person");
    old.identifier(10, "id", "long");
    old.property(11, "dropped", "int");
    old.property(12, "old_name", "int");
    old.property(13, "old_index", "int").indexed();
    old.property(14, "new_index", "int");
    old.relation(15, "old_country", 100, model::relationship::many_to_one, 2).columns("c_id");
    before.entity(2, "country").identifier(20, "id", "long");
    before.entity(3, "gone").identifier(30, "id", "long");

    model_builder after;
    entity_builder now = after.entity(1, "person");
    now.version(2);
    now.identifier(10, "id", "long");
    now.property(12, "new_name", "int");
    now.property(13, "was_index", "int").columns("old_index");
    now.property(14, "new_index", "int").indexed();
    now.relation(16, "country", 101, model::relationship::many_to_one, 2).columns("c_id");
    after.entity(2, "country").identifier(20, "id", "long");
    entity_builder fresh = after.entity(4, "fresh");
    fresh.identifier(40, "id", "long");
    fresh.property(41, "code", "int").indexed();
    fresh.relation(42, "people", 102, model::relationship::many_to_many, 1).linkTable("l", "a", "b", 0);

    useScript(Reporter);
    const auto script = m_bench->plugin.getCustomScript();
    // build() hands the engine over; a comparison of its own has to be given one.
    opened_builder & builder = m_bench->builder();
    builder.setCustomScript(script);
    QVERIFY(builder.compare(before.get(), after.get(), 2));
    QCOMPARE(m_bench->content("shop_default_db_schema_v1_to_v2.sql"),
             QString("DDL_EXPORT_BEGIN/shop/null/null/\n"
                     "DROP_TABLE/shop/gone/null/\n"
                     "RENAME_TABLE/shop/person/null/\n"
                     "DROP_COLUMN/shop/person/dropped/\n"
                     "DROP_COLUMN/shop/person/old_country/\n"
                     "RENAME_COLUMN/shop/person/new_name/\n"
                     "DROP_INDEX/shop/person/old_index/\n"
                     "CREATE_INDEX/shop/person/new_index/\n"
                     "ADD_COLUMN/shop/person/country/\n"
                     "CREATE_TABLE/shop/fresh/null/\n"
                     "CREATE_EXTRA_TABLE/shop/fresh/people/\n"
                     "CREATE_INDEX/shop/fresh/code/\n"
                     "DROP_FOREIGN_KEY/shop/person/old_country/\n"
                     "ADD_FOREIGN_KEY/shop/person/country/\n"
                     "ADD_FOREIGN_KEY/shop/fresh/people/\n"
                     "DDL_EXPORT_END/shop/null/null/\n"));
}

void tst_script_hook::knowsTheParameters()
{
    model_builder model;
    model.entity(1, "e").property(10, "p", "int");
    useScript(
        "function exportStep(project, entity, property, enumeration, p) {\n"
        "  return Object.keys(p).sort().map(function(k) { return k + '=' + p[k]; }).join('\\n') + '\\n';\n"
        "}\n");
    QVERIFY(build(model));
    const QString file = m_bench->path("shop_default_db_schema_full.sql");
    const auto step = [&](const QString & action, const QString & text) {
        return "action=" + action + "\ncurrent_file=" + file + "\ndefault_value=" + text +
               "\noutput_location=" + m_bench->folder() + "\nplugin_name=KorvGenericDDLExport\n\n";
    };
    QCOMPARE(m_bench->content("shop_default_db_schema_full.sql"),
             step("DDL_EXPORT_BEGIN", "") + step("CREATE_TABLE", "CREATE TABLE e (p INTEGER);") +
                 step("DDL_EXPORT_END", ""));
}

void tst_script_hook::replacesStatements()
{
    model_builder model;
    model.entity(1, "a").property(10, "p", "int");
    model.entity(2, "b").property(20, "p", "int");
    useScript("function exportStep(project, entity, property, enumeration, parameters) {\n"
              "  if (entity !== null && entity.getName() === 'a') return '-- a';\n"
              "}\n");
    QVERIFY(build(model));
    QCOMPARE(m_bench->content("shop_default_db_schema_full.sql"),
             QString("\n-- a\nCREATE TABLE b (p INTEGER);\n\n"));
    QCOMPARE(m_bench->messages().size(), 5);
}

void tst_script_hook::writesEmptyLines()
{
    model_builder model;
    model.entity(1, "a").property(10, "p", "int");
    useScript("function exportStep() { return ''; }");
    QVERIFY(build(model));
    QCOMPARE(m_bench->content("shop_default_db_schema_full.sql"), QString("\n\n\n"));
}

void tst_script_hook::endsTheScriptWhenItFails()
{
    m_bench->plugin.setExportDatabaseSchema(ddl_export::full_and_evolution);
    model_builder model;
    model.entity(1, "a").property(10, "p", "int");
    model.entity(2, "b").property(20, "p", "int");
    model.entity(3, "c").property(30, "p", "int");
    useScript("function exportStep(project, entity, property, enumeration, parameters) {\n"
              "  if (entity !== null && entity.getName() === 'b') throw new Error('not this one');\n"
              "}\n");
    const zk::ZkBool result = build(model);
    QVERIFY(!result);
    QVERIFY(result.getDesc().contains("not this one"));
    const QString file = m_bench->path("shop_default_db_schema_full.sql");
    QCOMPARE(m_bench->content("shop_default_db_schema_full.sql"), QString("\nCREATE TABLE a (p INTEGER);\n"));
    const QStringList expected =
        progress({"Full database schema : DDL export begin (" + file + ")",
                  "Full database schema : create table DDL SQL script for entity 'a' (" + file + ")"}) +
        QStringList{"3/10000/" + result.getDesc(), "3/10000/The SQL file is incomplete : " + file};
    QCOMPARE(m_bench->messages(), expected);
    // No evolution was attempted: without a project file that would be another failure.
    QCOMPARE(m_bench->files(), (QStringList{"hook.js", "shop_default_db_schema_full.sql"}));
    QCOMPARE(context::ctx_project::getSingleton().getProject(), model.get());
    QVERIFY(!m_bench->builder().customScript());
}

void tst_script_hook::takesTheEngineOfTheMoment()
{
    model_builder model;
    model.entity(1, "a").property(10, "p", "int");
    useScript("var calls = 0;\n"
              "function exportStep() { calls = calls + 1; return '' + calls; }\n");
    QVERIFY(build(model));
    QCOMPARE(m_bench->content("shop_default_db_schema_full.sql"), QString("1\n2\n3\n"));
    // The next build takes whatever engine the plug-in holds by then.
    m_bench->plugin.setCustomScript(nullptr);
    QVERIFY(build(model));
    QCOMPARE(m_bench->content("shop_default_db_schema_full.sql"),
             QString("\nCREATE TABLE a (p INTEGER);\n\n"));
}

void tst_script_hook::failsEvolutionToo()
{
    const model_builder model;
    for (const char * action : {"DDL_EXPORT_BEGIN", "DDL_EXPORT_END"}) {
        m_bench->forgetMessages();
        useScript(QByteArray("function exportStep(a, b, c, d, parameters) { if (parameters.action === '") +
                  action + "') throw new Error('stop'); }");
        m_bench->builder().setCustomScript(m_bench->plugin.getCustomScript());
        const zk::ZkBool result = m_bench->builder().compare(model.get(), model.get(), 2);
        QVERIFY(!result);
        QCOMPARE(m_bench->messages().mid(m_bench->messages().size() - 2),
                 (QStringList{"3/10000/" + result.getDesc(),
                              "3/10000/The SQL file is incomplete : " +
                                  m_bench->path("shop_default_db_schema_v1_to_v2.sql")}));
        QCOMPARE(m_bench->messages().filter("script created"), QStringList());
        QCOMPARE(m_bench->content("shop_default_db_schema_v1_to_v2.sql"),
                 QString(action == QByteArray("DDL_EXPORT_BEGIN") ? "" : "\n"));
    }
}

void tst_script_hook::isReleasedAfterABuild()
{
    const model_builder model;
    useScript(Reporter);
    std::weak_ptr<tools::custom_javascript> script = m_bench->plugin.getCustomScript();
    QVERIFY(build(model));
    QVERIFY(!m_bench->builder().customScript());
    m_bench->plugin.setCustomScript(nullptr);
    QVERIFY(script.expired());
}

/// The watch over the script has a thread of its own; what it watches has none.
void tst_script_hook::staysOnTheThreadOfTheBuild()
{
    model_builder model;
    model.entity(1, "person").identifier(10, "id", "long");
    useScript("function exportStep(project, entity, property, enumeration, parameters) {"
              " console.log(parameters.action); return parameters.default_value; }");
    QSet<QThread *> threads;
    int calls = 0;
    const auto note = [&] {
        threads.insert(QThread::currentThread());
        ++calls;
    };
    const plugin::ddl_export_builder & builder = m_bench->builder().builder();
    connect(&m_bench->plugin, &plugin::base_interface::onMessage, this, note, Qt::DirectConnection);
    connect(&builder, &plugin::ddl_export_builder::onMessage, this, note, Qt::DirectConnection);
    connect(&builder, &plugin::ddl_export_builder::onProgress, this, note, Qt::DirectConnection);
    QVERIFY(build(model));
    QVERIFY(calls > 6);
    QCOMPARE(threads, QSet<QThread *>{thread()});
}

QTEST_MAIN(tst_script_hook)
#include "tst_script_hook.moc"
