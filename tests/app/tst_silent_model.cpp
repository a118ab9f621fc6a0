// What a model says that no script will follow, told when it comes into a project and when it is tagged.

#include "support/program.h"
#include "support/project_support.h"

#include <QTemporaryDir>
#include <QTest>

using support::json;
using support::program_result;
using support::runProgram;
using support::textOf;

class tst_silent_model : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = path("shop.korv");
    }

    void unknownTypes()
    {
        const program_result result =
            import("{'name': 'customer', 'properties': ["
                   "{'name': 'id', 'type': 'lnog', 'identifier': true},"
                   "{'name': 'first', 'type': 'Qstring'}, {'name': 'last', 'type': ['Qstring', 'int'], "
                   "'columnName': 'a|b'},{'name': 'fee', 'type': 'Money'}]}");
        QCOMPARE(result.status, 0);
        QCOMPARE(
            told(result),
            QString("shop.json: warning: type 'lnog' of customer.id is not in the type mapping, so its "
                    "column becomes TEXT; did you mean 'long'?\n"
                    "shop.json: warning: type 'Qstring' of customer.first and of 1 more is not in the "
                    "type mapping, so its column becomes TEXT; did you mean 'QString'?\n"
                    "shop.json: warning: type 'Money' of customer.fee is not in the type mapping, so its "
                    "column becomes TEXT\n"));
    }
    void typesOfNoColumnAreNotTold()
    {
        const program_result result =
            import("{'name': 'customer', 'properties': ["
                   "{'name': 'a', 'type': 'Money', 'transient': true},"
                   "{'name': 'b', 'type': 'Money', 'forceSqlType': 'NUMERIC(9, 2)'}, {'name': 'c', 'type': "
                   "'QString'}]}");
        QCOMPARE(told(result), QString());
    }
    void theStoredDatabaseSaysWhatItBecomes()
    {
        const char * const model = "{'name': 'customer', 'properties': [{'name': 'fee', 'type': 'Money'}]}";
        QVERIFY(told(import(model)).endsWith("so its column becomes TEXT\n"));
        QCOMPARE(runProgram({"settings", m_project, "--db", "oracle"}).status, 0);
        QVERIFY(told(import(model)).endsWith("so its column becomes CLOB\n"));
    }
    void withoutAPlugin()
    {
        QVERIFY(support::writeBytes(path("shop.json"), textOf("{\"name\": \"a\", \"properties\": [{\"name\": "
                                                              "\"b\", \"type\": \"lnog\"}]}")));
        QDir().mkpath(path("empty"));
        const program_result result =
            runProgram({"import", path("shop.json"), m_project}, {{"KORVANE_PLUGIN_PATH", path("empty")}});
        QCOMPARE(result.status, 0);
        QVERIFY(result.output.contains(" imported into "));
    }

    void everyChangeIsSilent()
    {
        import("{'id': 1, 'name': 'customer', 'properties': [{'id': 10, 'name': 'age', 'type': 'int'}]}");
        QCOMPARE(runProgram({"tag", m_project}).errors, QByteArray());
        import("{'id': 1, 'name': 'customer', 'properties': [{'id': 10, 'name': 'age', 'type': 'long', "
               "'allowNull': false}]}");
        const program_result exported = runProgram(
            {"export", m_project, "-y", "--path", "sql", "--schema", "both", "--db", "postgresql"});
        QCOMPARE(exported.status, 0);
        QVERIFY2(
            QString::fromUtf8(exported.errors)
                .contains(
                    "No statement for PostgreSQL follows the 2 changes since v1: databases stay as they are; "
                    "'korvane diff " +
                    m_project + " v1 --db postgresql' shows what changed\n"),
            exported.errors.constData());
        const program_result tagged = runProgram({"tag", m_project});
        QCOMPARE(tagged.status, 0);
        QCOMPARE(QString::fromUtf8(tagged.errors), "No statement for SQLite follows the 2 changes since v1: "
                                                   "databases stay as they are; 'korvane diff " +
                                                       m_project +
                                                       " v1 v2 --db sqlite' shows what changed\n");
    }
    void oneStatementIsEnough()
    {
        import("{'id': 1, 'name': 'customer', 'properties': [{'id': 10, 'name': 'age', 'type': 'int'}]}");
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
        import("{'id': 1, 'name': 'customer', 'properties': [{'id': 10, 'name': 'years', 'type': 'long'}]}");
        // The database of the export counts: SQLite's scripts have no statement that renames a column.
        const program_result exported = runProgram(
            {"export", m_project, "-y", "--path", "sql", "--schema", "evolution", "--db", "mysql"});
        QVERIFY2(!exported.errors.contains("No statement"), exported.errors.constData());
        QCOMPARE(runProgram({"settings", m_project, "--db", "mariadb"}).status, 0);
        QCOMPARE(runProgram({"tag", m_project}).errors, QByteArray());
        // Nothing changed since, and nothing is told of the steps before.
        const program_result again =
            runProgram({"export", m_project, "-y", "--path", "sql", "--schema", "evolution"});
        QVERIFY2(!again.errors.contains("No statement"), again.errors.constData());
    }
    void onlyTheEvolutionIsAskedFor()
    {
        import("{'id': 1, 'name': 'customer', 'properties': [{'id': 10, 'name': 'age', 'type': 'int'}]}");
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
        import("{'id': 1, 'name': 'customer', 'properties': [{'id': 10, 'name': 'age', 'type': 'long'}]}");
        const program_result full = runProgram({"export", m_project, "-y", "--path", "sql"});
        QVERIFY2(!full.errors.contains("No statement"), full.errors.constData());
    }

private:
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    program_result import(const char * entities)
    {
        support::writeBytes(path("shop.json"), textOf(json(entities)));
        return runProgram({"import", path("shop.json"), m_project});
    }
    [[nodiscard]] QString told(const program_result & result) const
    {
        return QString::fromUtf8(result.errors).remove(m_folder->path() + '/');
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_silent_model)

#include "tst_silent_model.moc"
