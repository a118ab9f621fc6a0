// The custom script: what it is given, what its results mean, and how it fails.

#include "support/plugin_double.h"

#include "context/ctx_project.h"
#include "model/entity.h"
#include "model/enumeration.h"
#include "model/project.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"
#include "tools/custom_javascript.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <malloc.h>
#include <unistd.h>
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// The compiler has the function, not its header.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

using tools::custom_javascript;

namespace {

const QString Signature =
    QStringLiteral("function exportStep(project, entity, property, enumeration, parameters)");

/// shop: customer (id long, email QString, state enumeration, country many-to-one, tags many-to-many) and
/// country.
std::shared_ptr<model::project> makeShop()
{
    const auto project = std::make_shared<model::project>(1);
    project->setName(QStringLiteral("shop"));
    const auto state = std::make_shared<model::enumeration>(3);
    state->setName(QStringLiteral("order_state"));
    state->setValues({{QStringLiteral("open"), 0}, {QStringLiteral("paid"), 7}});
    project->addEnumeration(state);

    const auto customer = std::make_shared<model::entity>(10, QStringLiteral("customer"));
    customer->setTableName(QStringLiteral("t_customer"));
    customer->setVersion(4);
    customer->setSoftDeleteColumn(QStringLiteral("deleted_at"));
    customer->setMetaData(QStringLiteral("DDL_EXPORT_CREATE_TABLE"), QStringLiteral("true"));
    project->addEntity(customer);
    const auto country = std::make_shared<model::entity>(11, QStringLiteral("country"));
    project->addEntity(country);

    const auto add = [](const std::shared_ptr<model::entity> & e, long id, const char * name,
                        const char * type) {
        const auto p = std::make_shared<model::property>(id, QString::fromLatin1(name));
        if (type) {
            p->setType(QString::fromLatin1(type));
        }
        e->addProperty(p);
        return p;
    };
    const auto id = add(customer, 100, "id", "long");
    id->setIdentifier(true);
    id->setColumnName(QStringLiteral("customer_id|shop_id"));
    const auto email = add(customer, 101, "email", "QString");
    email->setAllowNull(false);
    email->setUnique(true);
    email->setIndex(true);
    email->setForceSqlType(QStringLiteral("VARCHAR(99)"));
    add(customer, 102, "state", nullptr)->setType(std::make_shared<model::property_type>(state));
    add(customer, 103, "cache", "QVariant")->setTransient(true);
    add(country, 110, "code", "QString")->setIdentifier(true);
    const auto relation = std::make_shared<model::relationship>(500, model::relationship::many_to_one);
    relation->setEntityTargetId(11);
    relation->setInverseId(110);
    relation->setExtraTable(QStringLiteral("customer_country"));
    relation->setForeignKey(QStringLiteral("fk"));
    relation->setForeignKeyOwner(QStringLiteral("fko"));
    const auto reference = add(customer, 105, "country", nullptr);
    reference->setRelation(relation);
    return project;
}

/// Bytes that the program has allocated and not freed.
qint64 usedHeap()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
    return static_cast<qint64>(mallinfo2().uordblks);
#endif
}

QHash<QString, QVariant> parametersOf(const char * action, const QString & text)
{
    return {{QStringLiteral("plugin_name"), QStringLiteral("KorvGenericDDLExport")},
            {QStringLiteral("current_file"), QStringLiteral("/out/shop_sqlite_db_schema_full.sql")},
            {QStringLiteral("output_location"), QStringLiteral("/out")},
            {QStringLiteral("default_value"), text},
            {QStringLiteral("action"), QString::fromLatin1(action)}};
}

} // namespace

class tst_custom_javascript : public QObject
{
    Q_OBJECT

private:
    QString write(const QByteArray & content, const QString & name = QStringLiteral("hook.js"))
    {
        QFile file(m_dir->filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        return file.fileName();
    }
    /// Loads a script that holds `body` as exportStep, on line 1.
    zk::ZkBool loadBody(custom_javascript & script, const QByteArray & body)
    {
        return script.initEngine(write(Signature.toLatin1() + " {" + body + "}"), &m_plugin);
    }
    zk::ZkBool run(const QByteArray & body, const QString & text = QStringLiteral("SELECT 1;"))
    {
        custom_javascript script;
        if (const zk::ZkBool loaded = loadBody(script, body); !loaded) {
            return loaded;
        }
        return step(script, text);
    }
    zk::ZkBool step(custom_javascript & script, const QString & text = QStringLiteral("SELECT 1;"))
    {
        const std::shared_ptr<model::entity> customer = m_pShop->getEntityById(10);
        return script.executeScript(m_pShop.get(), customer.get(), customer->getPropertyById(101).get(),
                                    nullptr, parametersOf("CREATE_TABLE", text));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::shared_ptr<model::project> m_pShop;
    support::plugin_double m_plugin;

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_pShop = makeShop();
    }
    void cleanup() { context::ctx_project::getSingleton().setProject(nullptr); }

    void resultDecidesWhatIsWritten_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("text");
        QTest::newRow("text") << QByteArray("return 'DROP;\\nx'") << "DROP;\nx";
        QTest::newRow("empty text") << QByteArray("return ''") << "";
        QTest::newRow("undefined") << QByteArray("return undefined") << "SELECT 1;";
        QTest::newRow("nothing") << QByteArray("") << "SELECT 1;";
        QTest::newRow("null") << QByteArray("return null") << "SELECT 1;";
        QTest::newRow("null literal as text") << QByteArray("return 'null'") << "null";
        QTest::newRow("non-ASCII text")
            << QByteArray("return 'd\xc3\xa9j\xc3\xa0'") << QStringLiteral("déjà");
        QTest::newRow("parameters")
            << QByteArray("return [parameters.plugin_name, parameters.current_file, "
                          "parameters.output_location, parameters.default_value, "
                          "parameters.action].join(' ')")
            << "KorvGenericDDLExport /out/shop_sqlite_db_schema_full.sql /out SELECT 1; CREATE_TABLE";
        QTest::newRow("arguments") << QByteArray("return [project.getName(), entity.getTableName(), "
                                                 "property.getName(), String(enumeration)].join(' ')")
                                   << "shop t_customer email null";
        QTest::newRow("changed parameters keep the statement")
            << QByteArray("parameters.default_value = 'other'") << "SELECT 1;";
    }
    void resultDecidesWhatIsWritten()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, text);
        const zk::ZkBool result = run(body);
        QVERIFY2(result.getValue(), qPrintable(result.getDesc()));
        QCOMPARE(result.getDesc(), text);
    }

    void otherResultsFail_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("kind");
        QTest::newRow("number") << QByteArray("return 0") << "a number";
        QTest::newRow("boolean") << QByteArray("return false") << "a boolean";
        QTest::newRow("object") << QByteArray("return {}") << "an object";
        QTest::newRow("array") << QByteArray("return ['a']") << "an array";
        QTest::newRow("function") << QByteArray("return () => 'a'") << "a function";
        QTest::newRow("model object") << QByteArray("return entity") << "an object";
        QTest::newRow("String object") << QByteArray("return new String('a')") << "an object";
    }
    void otherResultsFail()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, kind);
        const zk::ZkBool result = run(body);
        QVERIFY(!result.getValue());
        QCOMPARE(result.getCode(), 0L);
        QCOMPARE(result.getDesc(), m_dir->filePath(QStringLiteral("hook.js")) + ":1: exportStep returned " +
                                       kind +
                                       " for the action CREATE_TABLE; expected a string, undefined or null");
    }

    void exceptionsTellFileLineAndReason_data()
    {
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("problem");
        QTest::newRow("Error") << QByteArray("function exportStep() {\n\n  throw new Error('no key')\n}")
                               << ":3: Error: no key";
        QTest::newRow("text") << QByteArray("function exportStep() {\n  throw 'no key'\n}") << ":2: no key";
        QTest::newRow("undefined") << QByteArray("\nfunction exportStep() { throw undefined }")
                                   << ":2: undefined";
        QTest::newRow("null access") << QByteArray(
                                            "function exportStep(p, e, q, en) {\n  return en.getName()\n}")
                                     << ":2: TypeError: Cannot call method 'getName' of null";
        QTest::newRow("helper") << QByteArray("function helper() {\n  throw new RangeError('x')\n}\n"
                                              "function exportStep() { helper() }")
                                << ":2: RangeError: x";
        QTest::newRow("several lines")
            << QByteArray("function exportStep() { throw new Error('a\\nb\\r\\nc') }") << ":1: Error: a b c";
        QTest::newRow("const") << QByteArray("\n\nconst exportStep = () => { throw 1 }") << ":3: 1";
        QTest::newRow("const without a place") << QByteArray("\n\nconst exportStep = () => 5")
                                               << ":3: exportStep returned a number for the action "
                                                  "CREATE_TABLE; expected a string, undefined or null";
        QTest::newRow("very long text") << QByteArray("function exportStep() { throw 'x'.repeat(5000000) }")
                                        << ":1: " + QString(2000, 'x');
    }
    void exceptionsTellFileLineAndReason()
    {
        QFETCH(QByteArray, source);
        QFETCH(QString, problem);
        custom_javascript script;
        const QString file = write(source);
        QVERIFY(script.initEngine(file, &m_plugin).getValue());
        const zk::ZkBool result = step(script);
        QVERIFY(!result.getValue());
        QCOMPARE(result.getCode(), 0L);
        QCOMPARE(result.getDesc(), file + problem);
    }

    void debuggerIsNotAttachedToARunningScript()
    {
        custom_javascript script;
        QVERIFY(loadBody(script, "console.log('runs'); return 'done'"));
        zk::ZkBool attached(true);
        const auto connection = connect(&m_plugin, &plugin::base_interface::onMessage, this,
                                        [&] { attached = script.runDebugger(); });
        const zk::ZkBool result = step(script);
        disconnect(connection);
        QVERIFY(!attached);
        QCOMPARE(attached.getDesc(),
                 QStringLiteral("The script debugger cannot be attached to a running script"));
        QCOMPARE(result.getDesc(), QStringLiteral("done"));
    }

    void aFailureLeavesTheEngineUsable()
    {
        custom_javascript script;
        QVERIFY(loadBody(script, "if (parameters.default_value === 'bad') throw 'bad'; return 'good'")
                    .getValue());
        QVERIFY(!step(script, QStringLiteral("bad")).getValue());
        const zk::ZkBool next = step(script);
        QVERIFY(next.getValue());
        QCOMPARE(next.getDesc(), QStringLiteral("good"));
    }

    void stateLivesFromStepToStep()
    {
        custom_javascript script;
        QVERIFY(
            script
                .initEngine(write("let n = 0; " + Signature.toLatin1() + " { return String(++n) }"), nullptr)
                .getValue());
        QCOMPARE(step(script).getDesc(), QStringLiteral("1"));
        QCOMPARE(step(script).getDesc(), QStringLiteral("2"));
    }

    void loadFailures_data()
    {
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("problem");
        const QString missing =
            QStringLiteral(": the custom script defines no function exportStep(project, entity, "
                           "property, enumeration, parameters)");
        QTest::newRow("empty") << QByteArray() << missing;
        QTest::newRow("other function") << QByteArray("function exportstep() {}") << missing;
        QTest::newRow("no function") << QByteArray("var exportStep = 'x';") << missing;
        QTest::newRow("in a comment") << QByteArray("// function exportStep() {}") << missing;
        QTest::newRow("syntax") << QByteArray("var a;\nvar b = ;\nfunction exportStep() {}")
                                << ":2: SyntaxError: Unexpected token `;'";
        QTest::newRow("unfinished") << QByteArray("function exportStep() {\n  return 'a'")
                                    << ":2: SyntaxError: Expected token `;'";
        QTest::newRow("runs into an exception")
            << QByteArray("\nfunction exportStep() {}\n\nundefinedFunction()")
            << ":4: ReferenceError: undefinedFunction is not defined";
        QTest::newRow("throws a text")
            << QByteArray("function exportStep() {}\nthrow 'not today'") << ":2: not today";
        QTest::newRow("not UTF-8") << QByteArray("function exportStep() { return '\xff' }")
                                   << ": the custom script cannot be read: it is not UTF-8 text";
    }
    void loadFailures()
    {
        QFETCH(QByteArray, source);
        QFETCH(QString, problem);
        const QString file = write(source);
        custom_javascript script;
        const zk::ZkBool result = script.initEngine(file, &m_plugin);
        QVERIFY(!result.getValue());
        QCOMPARE(result.getCode(), 0L);
        QCOMPARE(result.getDesc(), file + problem);
        QVERIFY(!step(script).getValue());
    }

    void functionMayBeBoundByConstOrLet()
    {
        custom_javascript script;
        QVERIFY(script.initEngine(write("const exportStep = (p, e) => e.getName()"), nullptr).getValue());
        QCOMPARE(step(script).getDesc(), QStringLiteral("customer"));
        QVERIFY(script.initEngine(write("let exportStep = () => 'let' // end"), nullptr).getValue());
        QCOMPARE(step(script).getDesc(), QStringLiteral("let"));
    }

    void byteOrderMarkAndWindowsLineEnds()
    {
        custom_javascript script;
        const QString file = write("\xef\xbb\xbf// first\r\nfunction exportStep() {\r\n  throw 'x' }\r\n");
        QVERIFY(script.initEngine(file, nullptr).getValue());
        QCOMPARE(step(script).getDesc(), file + ":3: x");
    }

    void filesThatCannotBeRead()
    {
        custom_javascript script;
        QCOMPARE(script.initEngine(m_dir->filePath("none.js"), nullptr).getDesc(),
                 m_dir->filePath("none.js") + ": the custom script cannot be read: the file does not exist");
        QCOMPARE(script.initEngine(m_dir->path(), nullptr).getDesc(),
                 m_dir->path() + ": the custom script cannot be read: it is a folder, not a file");
        QCOMPARE(script.initEngine(QStringLiteral("/dev/zero"), nullptr).getDesc(),
                 QStringLiteral("/dev/zero: the custom script cannot be read: it is not a regular file"));
        QCOMPARE(script.initEngine(QString(), nullptr).getDesc(),
                 QStringLiteral("No custom script file is given"));
        const QString big = write("function exportStep() {}//");
        QVERIFY(QFile::resize(big, 16 * 1024 * 1024 + 1));
        QCOMPARE(script.initEngine(big, nullptr).getDesc(),
                 big + ": the custom script cannot be read: it is larger than 16 MiB");
        // A file that can be opened, but whose beginning cannot be read.
        QCOMPARE(script.initEngine(QStringLiteral("/proc/self/mem"), nullptr).getDesc(),
                 QStringLiteral("/proc/self/mem: the custom script cannot be read: Input/output error"));
        const QString closed = write("function exportStep() {}", QStringLiteral("closed.js"));
        QVERIFY(QFile::setPermissions(closed, {}));
        QVERIFY(QFile::setPermissions(m_dir->path(), QFile::Permissions(0x7755)));
        // Nothing is unreadable for the superuser, so another user asks.
        constexpr uid_t Nobody = 65534;
        const bool isRoot = geteuid() == 0;
        QCOMPARE(isRoot ? seteuid(Nobody) : 0, 0);
        const QString told = script.initEngine(closed, nullptr).getDesc();
        QCOMPARE(isRoot ? seteuid(0) : 0, 0);
        QCOMPARE(told, closed + ": the custom script cannot be read: Permission denied");
    }

    void relativePathIsTakenFromTheProjectsFolder()
    {
        write("function exportStep() { return 'found' }", QStringLiteral("rel.js"));
        custom_javascript script;
        QVERIFY(!script.initEngine(QStringLiteral("rel.js"), nullptr).getValue());
        m_pShop->setLocation(m_dir->path());
        context::ctx_project::getSingleton().setProject(m_pShop);
        QVERIFY(script.initEngine(QStringLiteral("rel.js"), nullptr).getValue());
        QCOMPARE(step(script).getDesc(), QStringLiteral("found"));
    }

    void withoutAScript()
    {
        custom_javascript script;
        const zk::ZkBool result = step(script);
        QVERIFY(!result.getValue());
        QCOMPARE(result.getDesc(), QStringLiteral("No custom script is loaded"));
        QVERIFY(!script.isDebugging());
        QVERIFY(!script.runDebugger().getValue());
        QCOMPARE(script.runDebugger().getDesc(), QStringLiteral("No custom script is loaded"));
        QVERIFY(!script.isDebugging());
    }

    void consoleReachesTheOwner()
    {
        QSignalSpy spy(&m_plugin, &plugin::base_interface::onMessage);
        QVERIFY(run("console.log('a', 1, null, {b: [2]}, entity); console.info('i'); console.debug('d');"
                    "console.warn('w'); console.error('e')")
                    .getValue());
        QCOMPARE(spy.size(), 5);
        QCOMPARE(spy[0], QVariantList({"a 1 null {\"b\":[2]} entity customer", 1, 10000}));
        QCOMPARE(spy[1], QVariantList({"i", 1, 10000}));
        QCOMPARE(spy[2], QVariantList({"d", 1, 10000}));
        QCOMPARE(spy[3], QVariantList({"w", 1, 10000}));
        QCOMPARE(spy[4], QVariantList({"e", 3, 10000}));
    }

    void consoleOfAnOwnerThatIsGone()
    {
        custom_javascript script;
        auto owner = std::make_unique<support::plugin_double>();
        QVERIFY(
            script.initEngine(write("function exportStep() { console.log('x'); return 'ok' }"), owner.get())
                .getValue());
        owner.reset();
        QCOMPARE(step(script).getDesc(), QStringLiteral("ok"));
    }

    void runningScriptIsNotEnteredAgain()
    {
        custom_javascript script;
        QVERIFY(loadBody(script, "console.log('x'); return 'outer'").getValue());
        QStringList inner;
        connect(&m_plugin, &plugin::base_interface::onMessage, this, [&] {
            inner << step(script).getDesc()
                  << script.initEngine(QStringLiteral("hook.js"), &m_plugin).getDesc();
        });
        QCOMPARE(step(script).getDesc(), QStringLiteral("outer"));
        QCOMPARE(inner, QStringList({"The custom script is running already",
                                     "The custom script cannot be reloaded while it is running"}));
        disconnect(&m_plugin, nullptr, this, nullptr);
    }

    void timeLimitStopsACall_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("loop") << QByteArray("while (true) {}");
        QTest::newRow("loop that catches")
            << QByteArray("while (true) { try { while (true) {} } catch (e) {} }");
        QTest::newRow("thrown text that loops") << QByteArray("throw {toString() { while (true) {} }}");
    }
    void timeLimitStopsACall()
    {
        QFETCH(QByteArray, body);
        custom_javascript script;
        QCOMPARE(script.getTimeLimit(), 10000);
        script.setTimeLimit(150);
        const QString file = write("\nlet stuck = true;\n" + Signature.toLatin1() +
                                   " { if (!stuck) return 'free';" + " stuck = false; " + body + " }");
        QVERIFY(script.initEngine(file, &m_plugin).getValue());
        QElapsedTimer time;
        time.start();
        const zk::ZkBool result = step(script);
        QVERIFY(!result.getValue());
        QCOMPARE(result.getDesc(), file + ":3: exportStep did not end within 150 ms");
        QVERIFY2(time.elapsed() >= 150 && time.elapsed() < 5000, qPrintable(QString::number(time.elapsed())));
        const zk::ZkBool next = step(script);
        QVERIFY2(next.getValue(), qPrintable(next.getDesc()));
        QCOMPARE(next.getDesc(), QStringLiteral("free"));
    }

    void timeLimitIsPerCall()
    {
        custom_javascript script;
        script.setTimeLimit(400);
        QVERIFY(loadBody(script, "const end = Date.now() + 150; while (Date.now() < end) {} return 'done'")
                    .getValue());
        for (int i = 0; i < 4; ++i) {
            const zk::ZkBool result = step(script);
            QVERIFY2(result.getValue(), qPrintable(result.getDesc()));
        }
    }

    void timeLimitStopsLoading()
    {
        custom_javascript script;
        script.setTimeLimit(100);
        const QString file = write("function exportStep() {}\nwhile (true) {}");
        const zk::ZkBool result = script.initEngine(file, nullptr);
        QVERIFY(!result.getValue());
        QCOMPARE(result.getDesc(), file + ":1: loading the custom script did not end within 100 ms");
    }

    void timeLimitOfTheEnvironment()
    {
        qputenv("KORVANE_SCRIPT_TIMEOUT_MS", "1234");
        QCOMPARE(custom_javascript().getTimeLimit(), 1234);
        qputenv("KORVANE_SCRIPT_TIMEOUT_MS", "0");
        QCOMPARE(custom_javascript().getTimeLimit(), 0);
        qunsetenv("KORVANE_SCRIPT_TIMEOUT_MS");
        QCOMPARE(custom_javascript().getTimeLimit(), 10000);
        custom_javascript unlimited;
        unlimited.setTimeLimit(0);
        QVERIFY(loadBody(unlimited, "const end = Date.now() + 50; while (Date.now() < end) {} return 'done'")
                    .getValue());
        QCOMPARE(step(unlimited).getDesc(), QStringLiteral("done"));
    }

    void badTimeLimitOfTheEnvironment_data()
    {
        QTest::addColumn<QByteArray>("given");
        for (const char * const given : {"abc", "-1", "", "99999999999999999999", "2147483648", "1.5", "1e3",
                                         "+5", " 5", "0x10", "5 s"}) {
            QTest::newRow(given) << QByteArray(given);
        }
    }
    void badTimeLimitOfTheEnvironment()
    {
        QFETCH(QByteArray, given);
        const QString file = write("console.log('it runs'); function exportStep() {}");
        support::plugin_double plugin;
        const QSignalSpy spy(&plugin, &plugin::base_interface::onMessage);
        qputenv("KORVANE_SCRIPT_TIMEOUT_MS", given);
        custom_javascript script;
        const zk::ZkBool refused = script.initEngine(file, &plugin);
        custom_javascript limited;
        limited.setTimeLimit(100);
        const zk::ZkBool taken = limited.initEngine(file, nullptr);
        qunsetenv("KORVANE_SCRIPT_TIMEOUT_MS");
        QVERIFY(!refused);
        QCOMPARE(refused.getDesc(), "KORVANE_SCRIPT_TIMEOUT_MS: '" + QString::fromLatin1(given) +
                                        "' is not a time limit; give a number of milliseconds from 1 to "
                                        "2147483647, or 0 for none");
        QVERIFY(spy.isEmpty());
        QVERIFY(taken);
    }

    void aTextOfTheLargestSizeIsTaken()
    {
        custom_javascript script;
        QVERIFY(loadBody(script, "return 'x'.repeat(16 * 1024 * 1024)"));
        QCOMPARE(step(script).getDesc().size(), 16777216);
    }
    void aLargerTextIsAFailure_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("size");
        QTest::newRow("one more") << QByteArray("return 'x'.repeat(16 * 1024 * 1024 + 1)") << 16777217;
        QTest::newRow("far more") << QByteArray(
                                         "let t = 'x'; for (let i = 0; i < 26; ++i) t = t + t; return t")
                                  << 67108864;
    }
    void aLargerTextIsAFailure()
    {
        QFETCH(QByteArray, body);
        QFETCH(int, size);
        custom_javascript script;
        QVERIFY(loadBody(script, body));
        const zk::ZkBool result = step(script);
        QVERIFY(!result);
        QVERIFY2(result.getDesc().endsWith(
                     ":1: exportStep returned " + QString::number(size) +
                     " characters for the action CREATE_TABLE; at most 16777216 are allowed"),
                 qPrintable(result.getDesc().left(200)));
    }
    void memoryIsBounded()
    {
        custom_javascript script;
        // On a busy machine any time is too short; 3 GB are the end of it all the same.
        script.setTimeLimit(0);
        QVERIFY(loadBody(script,
                         "const kept = [];"
                         "for (let i = 0; i < 30000; ++i) kept.push(new Uint8Array(100000).fill(1))"));
        const zk::ZkBool result = step(script);
        QVERIFY(!result);
        QVERIFY2(result.getDesc().endsWith(": exportStep used more than 1 GiB of memory"),
                 qPrintable(result.getDesc()));
        QVERIFY(loadBody(script, "return 'again'"));
        QCOMPARE(step(script).getDesc(), QStringLiteral("again"));
    }

    void deepRecursionIsAFailure_data()
    {
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("problem");
        QTest::newRow("function") << QByteArray("function down(n) { return n ? down(n - 1) + 1 : 0 }\n"
                                                "function exportStep() { return String(down(1000000)) }")
                                  << ":1: RangeError: Maximum call stack size exceeded.";
        QTest::newRow("through callbacks")
            << QByteArray("function down(n) { return n ? [n].map(m => down(m - 1))[0] + 1 : 0 }\n"
                          "function exportStep() { return String(down(1000000)) }")
            << ":1: RangeError: Maximum call stack size exceeded.";
        QTest::newRow("through the model")
            << QByteArray("function exportStep(p, e) { const o = {toString() { return '' + o }};\n"
                          " console.log(o); return '' + o }")
            << ":1: RangeError: Maximum call stack size exceeded.";
    }
    void deepRecursionIsAFailure()
    {
        QFETCH(QByteArray, source);
        QFETCH(QString, problem);
        const QString file = write(source);
        custom_javascript script;
        QVERIFY(script.initEngine(file, nullptr).getValue());
        const zk::ZkBool result = step(script);
        QVERIFY(!result.getValue());
        QCOMPARE(result.getDesc(), file + problem);
    }

    void deeplyNestedSourceIsAFailure()
    {
        custom_javascript script;
        const QString file = write("function exportStep() { return " + QByteArray(200000, '(') + "1" +
                                   QByteArray(200000, ')') + "}");
        const zk::ZkBool result = script.initEngine(file, nullptr);
        QVERIFY(!result.getValue());
        QVERIFY2(result.getDesc().startsWith(file + QStringLiteral(":1: SyntaxError: ")),
                 qPrintable(result.getDesc()));
    }

    void modelAnswers_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("answer");
        const auto row = [](const char * expression, const char * answer) {
            QTest::newRow(expression) << QString::fromLatin1(expression) << QString::fromLatin1(answer);
        };
        row("project.getId()", "1");
        row("typeof project.getId()", "number");
        row("project.getName()", "shop");
        row("project.getLocation()", "/shop/folder");
        row("project.getFileName()", "/shop/folder/shop.korv");
        row("project.getThis() === project", "true");
        row("project.getMetaData('x')", "undefined");
        row("JSON.stringify(project.getAllMetaData())", "{}");
        row("project.getListOfAllEntities().map(e => e.getName()).join()", "customer,country");
        row("Array.isArray(project.getListOfAllEntities())", "true");
        row("project.getEntityById(10) === entity", "true");
        row("project.getEntityById(99)", "null");
        row("project.getEntityById(0.5)", "null");
        row("project.getEntityById(NaN)", "null");
        row("project.getListOfEnumeration().map(e => e.getName()).join()", "order_state");
        row("project.getEnumerationById(3).getName()", "order_state");
        row("project.getEnumerationById(4)", "null");
        row("entity.getId()", "10");
        row("entity.getKey()", "customer");
        row("entity.getExplicitKey() === ''", "true");
        row("entity.getName()", "customer");
        row("entity.getTableName()", "t_customer");
        row("entity.getVersion()", "4");
        row("typeof entity.getVersion()", "number");
        row("entity.getSoftDeleteColumn()", "deleted_at");
        row("entity.getMetaData('DDL_EXPORT_CREATE_TABLE')", "true");
        row("typeof entity.getMetaData('DDL_EXPORT_CREATE_TABLE')", "string");
        row("entity.getMetaData('ddl_export_create_table')", "undefined");
        row("JSON.stringify(entity.getAllMetaData())", "{\"DDL_EXPORT_CREATE_TABLE\":\"true\"}");
        row("entity.getPropertyId(true).getName()", "id");
        row("entity.getPropertyId().getName()", "id");
        row("entity.getPropertyById(101) === property", "true");
        row("entity.getPropertyById(110)", "null");
        row("entity.getListOfProperty(true, true, false).map(p => p.getName()).join()",
            "id,email,state,cache,country");
        row("entity.getListOfProperty().length", "5");
        row("entity.getListOfProperty(false, true, false).map(p => p.getName()).join()",
            "email,state,cache,country");
        row("entity.getListOfProperty(true, false, false).map(p => p.getName()).join()",
            "id,email,state,country");
        row("entity.getListOfRelation().map(r => r.getId()).join()", "500");
        row("entity.getProject() === project", "true");
        row("property.getId()", "101");
        row("property.getKey()", "customer.email");
        row("property.getExplicitKey() === ''", "true");
        row("entity.getPropertyId().getColumnName()", "customer_id|shop_id");
        row("entity.getPropertyId().getColumnName(-1)", "customer_id|shop_id");
        row("entity.getPropertyId().getColumnName(1)", "shop_id");
        row("entity.getPropertyId().getColumnNameCount()", "2");
        row("property.getEntityId()", "10");
        row("property.getEntity() === entity", "true");
        row("property.getType().getPrimitiveType(-1)", "QString");
        row("property.getType().getCppTypes().join()", "QString");
        row("property.getType() === property.getType()", "true");
        row("property.getType().getEnumeration()", "null");
        row("property.getForceSqlType()", "VARCHAR(99)");
        row("property.getExplicitForceSqlType()", "VARCHAR(99)");
        row("property.isIdentifier()", "false");
        row("entity.getPropertyId().isIdentifier()", "true");
        row("property.getAllowNull()", "false");
        row("entity.getPropertyId().getAllowNull()", "true");
        row("property.getUnique()", "true");
        row("entity.getPropertyId().getUnique()", "false");
        row("property.isIndex()", "true");
        row("entity.getPropertyId().isIndex()", "false");
        row("property.isTransient()", "false");
        row("entity.getPropertyById(103).isTransient()", "true");
        row("property.getAutoIncrement()", "null");
        row("property.hasRelationship()", "false");
        row("property.getRelation()", "null");
        row("entity.getPropertyId().isNumber(true, 0)", "true");
        row("entity.getPropertyId().isNumber(true, -1)", "false");
        row("property.isNumber(true, 0)", "false");
        row("property.isString(false, 0)", "true");
        row("property.isString(true, -1)", "true");
        row("entity.getPropertyId().isString(true, -1)", "false");
        row("entity.getPropertyById(102).getType().getEnumeration().getName()", "order_state");
        row("entity.getPropertyById(102).getType().getEnumeration().getId()", "3");
        row("JSON.stringify(project.getEnumerationById(3).getValues())",
            "[{\"name\":\"open\",\"number\":0},{\"name\":\"paid\",\"number\":7}]");
        row("entity.getPropertyById(105).hasRelationship()", "true");
        row("entity.getPropertyById(105).getRelation().getId()", "500");
        row("entity.getPropertyById(105).getRelation().getType()", "2");
        row("entity.getPropertyById(105).getRelation().getProperty().getName()", "country");
        row("entity.getPropertyById(105).getRelation().getInverse().getName()", "code");
        row("entity.getPropertyById(105).getRelation().getInverseId()", "110");
        row("entity.getPropertyById(105).getRelation().getEntityTarget().getName()", "country");
        row("entity.getPropertyById(105).getRelation().getEntityTargetId()", "11");
        row("entity.getPropertyById(105).getRelation().getExtraTable()", "customer_country");
        row("entity.getPropertyById(105).getRelation().getForeignKey()", "fk");
        row("entity.getPropertyById(105).getRelation().getForeignKeyOwner()", "fko");
        row("entity.getPropertyById(105).getRelation().getColumnNameCount()", "1");
        row("entity.getPropertyById(105).getRelation().getColumnName(0)", "country");
        row("entity.getPropertyById(105).getRelation().hasColumns()", "true");
        row("entity.getPropertyById(105).getRelation().getKeyProperty().getKey()", "country.code");
        row("String(project)", "project shop");
        row("String(property)", "property customer.email");
        row("String(property.getType())", "property type QString");
        row("String(entity.getPropertyById(105).getRelation())", "relationship customer.country");
        row("String(project.getEnumerationById(3))", "enumeration order_state");
        row("typeof entity.setName", "undefined");
        row("typeof entity.deleteLater", "undefined");
    }
    void modelAnswers()
    {
        QFETCH(QString, expression);
        QFETCH(QString, answer);
        m_pShop->setLocation(QStringLiteral("/shop/folder"));
        const zk::ZkBool result = run("return String(" + expression.toLatin1() + ")");
        QVERIFY2(result.getValue(), qPrintable(result.getDesc()));
        QCOMPARE(result.getDesc(), answer);
    }

    void sameObjectIsTheSameInLaterSteps()
    {
        custom_javascript script;
        QVERIFY(
            script
                .initEngine(write("let kept; " + Signature.toLatin1() +
                                  " { const same = kept === entity; kept = entity; return String(same) }"),
                            nullptr)
                .getValue());
        QCOMPARE(step(script).getDesc(), QStringLiteral("false"));
        QCOMPARE(step(script).getDesc(), QStringLiteral("true"));
    }

    void keptObjectsOfAReleasedProjectAnswerEmpty()
    {
        custom_javascript script;
        QVERIFY(script
                    .initEngine(write("let p, e, q, r, t, n;" + Signature.toLatin1() + R"( {
            if (entity) {
                p = project; e = entity; q = entity.getPropertyById(105); r = q.getRelation();
                t = entity.getPropertyById(102).getType(); n = t.getEnumeration();
                return p.getName() + e.getName();
            }
            return JSON.stringify([p.getId(), p.getName(), p.getThis(), p.getListOfAllEntities(), p.getEntityById(10),
                e.getName(), e.getVersion(), e.getPropertyId(), e.getListOfProperty(), e.getMetaData('x') === undefined,
                e.getProject(), q.getKey(), q.getType(), q.isNumber(true, 0), q.getAutoIncrement(), q.getEntity(),
                r.getType(), r.getEntityTarget(), r.getProperty(), t.getPrimitiveType(0), t.getCppTypes(),
                t.getEnumeration(), n.getName(), n.getValues(), n.getAllMetaData()]);
        })"),
                                nullptr)
                    .getValue());
        QCOMPARE(step(script).getDesc(), QStringLiteral("shopcustomer"));
        m_pShop.reset();
        const zk::ZkBool result =
            script.executeScript(nullptr, nullptr, nullptr, nullptr, parametersOf("DDL_EXPORT_END", {}));
        QVERIFY2(result.getValue(), qPrintable(result.getDesc()));
        QCOMPARE(result.getDesc(),
                 QStringLiteral(
                     "[0,\"\",null,[],null,\"\",0,null,[],true,null,\"\",null,false,null,null,0,null,null,"
                     "\"\",[],null,\"\",[],{}]"));
    }

    void objectsThatNoSharedPointerOwnsAnswerDuringTheCall()
    {
        custom_javascript script;
        QVERIFY(
            script
                .initEngine(
                    write(
                        "let kept, n = 0;" + Signature.toLatin1() +
                        " { const same = kept === project; if (project) kept = project;"
                        " return [++n, same, kept.getName(), enumeration && enumeration.getName()].join() }"),
                    nullptr)
                .getValue());
        {
            model::project onStack(5);
            onStack.setName(QStringLiteral("local"));
            model::enumeration values(6);
            values.setName(QStringLiteral("colours"));
            for (const char * expected : {"1,false,local,colours", "2,true,local,colours"}) {
                QCOMPARE(script.executeScript(&onStack, nullptr, nullptr, &values, {}).getDesc(),
                         QString::fromLatin1(expected));
            }
            QCOMPARE(script.executeScript(nullptr, nullptr, nullptr, nullptr, {}).getDesc(),
                     QStringLiteral("3,false,,"));
        }
        QCOMPARE(script.executeScript(nullptr, nullptr, nullptr, nullptr, {}).getDesc(),
                 QStringLiteral("4,false,,"));
    }

    void objectThatTheScriptDestroysComesBack()
    {
        custom_javascript script;
        QVERIFY(loadBody(script, "entity.destroy(); return project.getEntityById(10).getName()").getValue());
        QCOMPARE(step(script).getDesc(), QStringLiteral("customer"));
        QCOMPARE(step(script).getDesc(), QStringLiteral("customer"));
    }

    void manyObjectsAreLetGo()
    {
        custom_javascript script;
        QVERIFY(loadBody(script, "return entity.getName()").getValue());
        const auto steps = [&](int from, int to) {
            for (int i = from; i < to; ++i) {
                const auto e = std::make_shared<model::entity>(i + 1, QString::number(i));
                const zk::ZkBool result = script.executeScript(m_pShop.get(), e.get(), nullptr, nullptr, {});
                if (!result || result.getDesc() != QString::number(i)) {
                    qFatal("step %d: %s", i, qPrintable(result.getDesc()));
                }
            }
        };
        // The first steps reach the number of objects that is kept; from there on memory must not follow the
        // steps.
        steps(0, 40000);
        const qint64 before = usedHeap();
        QVERIFY(before > 0);
        steps(40000, 240000);
        const qint64 grown = usedHeap() - before;
        QVERIFY2(grown < 4 * 1024 * 1024, qPrintable(QString::number(grown)));
        qInfo("%lld bytes more", grown);
    }

    void aStepIsCheap()
    {
        custom_javascript script;
        QVERIFY(loadBody(script, "return parameters.default_value").getValue());
        QElapsedTimer time;
        time.start();
        for (int i = 0; i < 30000; ++i) {
            (void)step(script);
        }
        qInfo("%lld us for a step", time.nsecsElapsed() / 30000 / 1000);
        QVERIFY(time.elapsed() < 10000);
    }

    void declaredOperationsAreThere();
    void sampleRunsForEveryAction_data();
    void sampleRunsForEveryAction();
};

/// The interfaces of the declaration file and the operations of the real objects are the same, both ways.
void tst_custom_javascript::declaredOperationsAreThere()
{
    QFile file(QStringLiteral(KORVANE_SOURCE_DIR "/samples/custom_script.d.ts"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QList<QPair<QString, QString>> objects = {
        {QStringLiteral("Project"), QStringLiteral("project")},
        {QStringLiteral("Entity"), QStringLiteral("entity")},
        {QStringLiteral("Property"), QStringLiteral("property")},
        {QStringLiteral("PropertyType"), QStringLiteral("property.getType()")},
        {QStringLiteral("Relationship"), QStringLiteral("entity.getPropertyById(105).getRelation()")},
        {QStringLiteral("Enumeration"), QStringLiteral("project.getEnumerationById(3)")}};
    for (const auto & [interface, expression] : objects) {
        const QRegularExpression block(QStringLiteral("\ninterface %1 \\{\n(.*?)\n\\}").arg(interface),
                                       QRegularExpression::DotMatchesEverythingOption);
        const QRegularExpressionMatch match = block.match(text);
        QVERIFY2(match.hasMatch(), qPrintable(interface));
        QStringList declared;
        static const QRegularExpression operation(QStringLiteral("^    (\\w+)\\("),
                                                  QRegularExpression::MultilineOption);
        for (auto it = operation.globalMatch(match.captured(1)); it.hasNext();) {
            declared << it.next().captured(1);
        }
        declared.sort();
        const zk::ZkBool real = run("const o = " + expression.toLatin1() +
                                    "; return Object.keys(o).filter(k => typeof o[k] === 'function'"
                                    " && k !== 'objectNameChanged').sort().join()");
        QVERIFY2(real.getValue(), qPrintable(real.getDesc()));
        QCOMPARE(declared.join(QLatin1Char(',')), real.getDesc());
        QVERIFY(declared.size() > 3);
    }
}

void tst_custom_javascript::sampleRunsForEveryAction_data()
{
    QTest::addColumn<bool>("hasEntity");
    QTest::addColumn<bool>("hasProperty");
    QTest::addColumn<QString>("text");
    const QString kept = QStringLiteral("STATEMENT;");
    QTest::newRow("DDL_EXPORT_BEGIN") << false << false << "-- Project shop, 2 entities\nSTATEMENT;";
    QTest::newRow("CREATE_TABLE") << true << false << "-- t_customer: 4 properties, version 4\nSTATEMENT;";
    QTest::newRow("CREATE_EXTRA_TABLE")
        << true << true << "-- customer_country links t_customer and country\nSTATEMENT;";
    QTest::newRow("CREATE_INDEX") << true << true << kept;
    QTest::newRow("ADD_FOREIGN_KEY") << true << true << kept;
    QTest::newRow("DROP_TABLE") << true << false << kept;
    QTest::newRow("RENAME_TABLE") << true << false << kept;
    QTest::newRow("DROP_COLUMN") << true << true << kept;
    QTest::newRow("ADD_COLUMN") << true << true << kept;
    QTest::newRow("RENAME_COLUMN") << true << true << kept;
    QTest::newRow("DROP_INDEX") << true << true << kept;
    QTest::newRow("DROP_FOREIGN_KEY") << true << true << kept;
    QTest::newRow("DDL_EXPORT_END") << false << false
                                    << "STATEMENT;\n-- End, written by KorvGenericDDLExport";
    QTest::newRow("AN_ACTION_TO_COME") << true << true << kept;
}

void tst_custom_javascript::sampleRunsForEveryAction()
{
    QFETCH(bool, hasEntity);
    QFETCH(bool, hasProperty);
    QFETCH(QString, text);
    custom_javascript script;
    const zk::ZkBool loaded =
        script.initEngine(QStringLiteral(KORVANE_SOURCE_DIR "/samples/custom_script.js"), &m_plugin);
    QVERIFY2(loaded.getValue(), qPrintable(loaded.getDesc()));
    const std::shared_ptr<model::entity> customer = m_pShop->getEntityById(10);
    const zk::ZkBool result =
        script.executeScript(m_pShop.get(), hasEntity ? customer.get() : nullptr,
                             hasProperty ? customer->getPropertyById(105).get() : nullptr, nullptr,
                             parametersOf(QTest::currentDataTag(), QStringLiteral("STATEMENT;")));
    QVERIFY2(result.getValue(), qPrintable(result.getDesc()));
    QCOMPARE(result.getDesc(), text);
    QFile source(QStringLiteral(KORVANE_SOURCE_DIR "/samples/custom_script.js"));
    QVERIFY(source.open(QIODevice::ReadOnly));
    if (qstrcmp(QTest::currentDataTag(), "AN_ACTION_TO_COME") != 0) {
        QVERIFY(source.readAll().contains(QByteArray("\n    ") + QTest::currentDataTag() + "("));
    }
}

QTEST_GUILESS_MAIN(tst_custom_javascript)
#include "tst_custom_javascript.moc"
