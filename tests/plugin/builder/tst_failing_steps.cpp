// The first step that fails ends the script, whichever it is.

#include "export_bench.h"

#include "tools/custom_javascript.h"

#include <QtTest>

using support::entity_builder;
using support::model_builder;

namespace {

/// Writes the name of the action, until the call whose number the global "last" has.
const char * const Stopper = R"(
var calls = 0;
function exportStep(project, entity, property, enumeration, parameters) {
    calls = calls + 1;
    if (calls === LAST) {
        throw new Error("stop");
    }
    return parameters.action;
}
)";

// Each kind of step is followed by another of its kind, where there can be two, and by later passes: a
// failure that is forgotten shows as a line more, or as a success.
const QStringList FullSteps = {
    "DDL_EXPORT_BEGIN",   "CREATE_TABLE",       "CREATE_TABLE",    "CREATE_TABLE",  "CREATE_TABLE",
    "CREATE_EXTRA_TABLE", "CREATE_EXTRA_TABLE", "CREATE_INDEX",    "CREATE_INDEX",  "ADD_FOREIGN_KEY",
    "ADD_FOREIGN_KEY",    "ADD_FOREIGN_KEY",    "ADD_FOREIGN_KEY", "DDL_EXPORT_END"};
const QStringList ComparisonSteps = {
    "DDL_EXPORT_BEGIN",   "DROP_TABLE",         "DROP_TABLE",      "RENAME_TABLE",    "DROP_COLUMN",
    "DROP_COLUMN",        "DROP_COLUMN",        "RENAME_COLUMN",   "CREATE_INDEX",    "RENAME_COLUMN",
    "DROP_INDEX",         "ADD_COLUMN",         "ADD_COLUMN",      "CREATE_TABLE",    "CREATE_TABLE",
    "CREATE_EXTRA_TABLE", "CREATE_EXTRA_TABLE", "CREATE_INDEX",    "CREATE_INDEX",    "DROP_FOREIGN_KEY",
    "DROP_FOREIGN_KEY",   "ADD_FOREIGN_KEY",    "ADD_FOREIGN_KEY", "ADD_FOREIGN_KEY", "ADD_FOREIGN_KEY",
    "DDL_EXPORT_END"};

/// Two entities with an index, a link table and nothing else that is new.
void addFreshEntities(model_builder & model)
{
    entity_builder fresh = model.entity(4, "fresh");
    fresh.identifier(40, "id", "long");
    fresh.property(41, "code", "int").indexed();
    fresh.relation(42, "people", 102, model::relationship::many_to_many, 1).linkTable("l", "a", "b", 0);
    entity_builder other = model.entity(5, "other");
    other.identifier(50, "id", "long");
    other.property(51, "code", "int").indexed();
    other.relation(52, "people", 103, model::relationship::many_to_many, 1).linkTable("m", "a", "b", 0);
}

void fillOldModel(model_builder & before)
{
    entity_builder old = before.entity(1, "old_person");
    old.identifier(10, "id", "long");
    old.property(11, "dropped", "int");
    old.property(12, "gains", "int");
    old.property(13, "loses", "int").indexed();
    old.relation(15, "old_country", 100, model::relationship::many_to_one, 2).columns("c_id");
    old.relation(16, "older_country", 101, model::relationship::many_to_one, 2).columns("d_id");
    before.entity(2, "country").identifier(20, "id", "long");
    before.entity(3, "gone").identifier(30, "id", "long");
    before.entity(6, "gone_too").identifier(60, "id", "long");
}

void fillNewModel(model_builder & after)
{
    entity_builder now = after.entity(1, "person");
    now.version(2);
    now.identifier(10, "id", "long");
    now.property(12, "gains_index", "int").indexed();
    now.property(13, "loses_index", "int");
    now.relation(17, "country", 110, model::relationship::many_to_one, 2).columns("c_id");
    now.relation(18, "other_country", 111, model::relationship::many_to_one, 2).columns("d_id");
    after.entity(2, "country").identifier(20, "id", "long");
    addFreshEntities(after);
}

void fillFullModel(model_builder & model)
{
    entity_builder person = model.entity(1, "person");
    person.identifier(10, "id", "long");
    person.relation(17, "country", 110, model::relationship::many_to_one, 2).columns("c_id");
    person.relation(18, "other_country", 111, model::relationship::many_to_one, 2).columns("d_id");
    model.entity(2, "country").identifier(20, "id", "long");
    addFreshEntities(model);
}

QString lines(const QStringList & texts)
{
    return texts.isEmpty() ? QString() : texts.join('\n') + '\n';
}

} // namespace

class tst_failing_steps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_bench.reset(); }
    void ofAFullScript_data() { addRows(FullSteps); }
    void ofAFullScript();
    void ofAComparison_data() { addRows(ComparisonSteps); }
    void ofAComparison();

private:
    static void addRows(const QStringList & steps);
    void useScript(int last);
    void check(const zk::ZkBool & result, const QString & script, const QStringList & steps, int last);

    std::unique_ptr<export_bench> m_bench;
};

void tst_failing_steps::init()
{
    m_bench = std::make_unique<export_bench>();
    m_bench->plugin.setExportRelationships(true);
}

/// A row for each step, and one in which none fails.
void tst_failing_steps::addRows(const QStringList & steps)
{
    QTest::addColumn<int>("last");
    for (int i = 0; i < steps.size(); ++i) {
        QTest::addRow("%d %s", i + 1, qPrintable(steps[i])) << i + 1;
    }
    QTest::newRow("none") << static_cast<int>(steps.size()) + 1;
}

void tst_failing_steps::useScript(int last)
{
    QFile file(m_bench->path("hook.js"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(Stopper).replace("LAST", QByteArray::number(last)));
    file.close();
    const auto script = std::make_shared<tools::custom_javascript>();
    const zk::ZkBool loaded = script->initEngine(file.fileName(), &m_bench->plugin);
    QVERIFY2(loaded, qPrintable(loaded.getDesc()));
    m_bench->plugin.setCustomScript(script);
    m_bench->builder().setCustomScript(script);
}

void tst_failing_steps::check(const zk::ZkBool & result, const QString & script, const QStringList & steps,
                              int last)
{
    QCOMPARE(result.getValue(), last > steps.size());
    // With the script's folder goes what was not flushed when it ended.
    QCOMPARE(m_bench->content(script), lines(steps.mid(0, last - 1)));
    const QStringList messages = m_bench->messages();
    if (last > steps.size()) {
        QCOMPARE(messages.filter(QRegularExpression("^1/10000/")).size(), steps.size() + 1);
        return;
    }
    QCOMPARE(messages.size(), last + 1);
    QCOMPARE(messages.mid(last - 1),
             (QStringList{"3/10000/" + result.getDesc(),
                          "3/10000/The SQL file is incomplete : " + m_bench->path(script)}));
    QVERIFY2(result.getDesc().endsWith("Error: stop"), qPrintable(result.getDesc()));
}

void tst_failing_steps::ofAFullScript()
{
    QFETCH(int, last);
    model_builder model;
    fillFullModel(model);
    useScript(last);
    check(m_bench->builder().builder().build(model.project()), "shop_default_db_schema_full.sql", FullSteps,
          last);
}

void tst_failing_steps::ofAComparison()
{
    QFETCH(int, last);
    model_builder before;
    fillOldModel(before);
    model_builder after;
    fillNewModel(after);
    useScript(last);
    check(m_bench->builder().compare(before.get(), after.get(), 2), "shop_default_db_schema_v1_to_v2.sql",
          ComparisonSteps, last);
}

QTEST_MAIN(tst_failing_steps)
#include "tst_failing_steps.moc"
