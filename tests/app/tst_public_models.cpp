// Two models that others made, as large and as odd as real ones, there and back on SQLite.

#include "app/sqlite_bench.h"

#include "support/project_support.h"

#include "database/server/script_run.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using support::program_result;
using support::runProgram;

class tst_public_models : public support::sqlite_bench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (support::modelsFolder().isEmpty()) {
            QSKIP("the public models are not here; KORVANE_MODELS names their folder");
        }
    }
    void init() { beginAnew(); }

    void thereAndBack_data() { addModels(); }
    /// A database whose scripts have run is what the model says; and so is one that is made of the database.
    void thereAndBack()
    {
        takeModel();
        runScript();
        const QByteArray same = imported({"-n"});
        QVERIFY2(same.contains(": no changes\n"), same.constData());
        QVERIFY2(same.endsWith("; without a place in the model: 0)\n"), same.constData());

        m_project = path("new.korv");
        const QByteArray made = imported();
        QVERIFY2(made.contains("Project 'new' imported into "), made.constData());
        m_url = "sqlite:" + path("again.db");
        runScript();
        const QByteArray again = imported({"-n"});
        QVERIFY2(again.contains(": no changes\n"), again.constData());
        QVERIFY2(again.endsWith("; without a place in the model: 0)\n"), again.constData());
    }

    void aHistory_data() { addModels(); }
    /// What people do to a model from one release to the next is proven with rows.
    void aHistory()
    {
        takeModel();
        QCOMPARE(runProgram({"tag", m_project, "-m", "first"}).status, 0);
        changeEntity(0, [](QJsonObject & entity) { entity["tableName"] = "t_renamed_first"; });
        QCOMPARE(runProgram({"tag", m_project, "-m", "second"}).status, 0);
        changeEntity(1, [](QJsonObject & entity) {
            QJsonArray properties = entity["properties"].toArray();
            properties.append(QJsonObject{{"name", "remark"}, {"type", "QString"}, {"index", true}});
            entity["properties"] = properties;
        });
        QCOMPARE(runProgram({"tag", m_project, "-m", "third"}).status, 0);
        changeEntity(2, [](QJsonObject & entity) { entity["tableName"] = "t_renamed_third"; });

        const program_result result = runProgram({"verify", m_project, "--relationships", "yes", "--json"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
        const QJsonObject run = QJsonDocument::fromJson(result.output)["runs"][0].toObject();
        QCOMPARE(run["ok"], QJsonValue(true));
        QCOMPARE(run["fullEqualsModel"]["equal"], QJsonValue(true));
        QCOMPARE(run["full"]["refused"].toArray(), QJsonArray());
        QCOMPARE(run["chain"]["refused"].toArray(), QJsonArray());
        // Every table had a row, and none of its values went.
        const int tables = entities().size();
        QVERIFY2(run["rows"]["values"].toInt() > 2 * tables, result.output.constData());
        QCOMPARE(run["rows"]["kept"], run["rows"]["values"]);
    }

private:
    static void addModels()
    {
        QTest::addColumn<QString>("model");
        QTest::newRow("chinook") << "chinook";
        QTest::newRow("sakila") << "sakila";
    }
    void takeModel() const
    {
        QFETCH(const QString, model);
        const program_result taken =
            runProgram({"import", support::modelsFolder() + '/' + model + ".json", m_project});
        QCOMPARE(taken.status, 0);
    }
    /// Runs the full script of the project on the file of the URL.
    void runScript() const
    {
        const program_result made =
            runProgram({"export", m_project, "-y", "--no-check", "--db", "sqlite", "--relationships", "yes",
                        "--schema", "full", "--path", path("sql")});
        QCOMPARE(made.errors, QByteArray());
        const QString name = text()["name"].toString();
        const QString script =
            QString::fromUtf8(support::bytesOf(path("sql/" + name + "_sqlite_db_schema_full.sql")));
        QVERIFY(!script.isEmpty());
        const database::server::sql_connection connection(
            "QSQLITE", [this](QSqlDatabase & db) { db.setDatabaseName(m_url.mid(7)); });
        for (const auto & each : database::server::statementsOfScript(script, "sqlite")) {
            QString error;
            QVERIFY2(connection.execute(each.text, error), qPrintable(each.text + ": " + error));
        }
    }

    [[nodiscard]] QJsonObject text() const
    {
        return QJsonDocument::fromJson(runProgram({"dump", m_project}).output).object();
    }
    [[nodiscard]] QJsonArray entities() const { return text()["entities"].toArray(); }
    /// Changes an entity as a person does in the text, who leaves its version out.
    template <class Change>
    void changeEntity(int index, const Change & change) const
    {
        QJsonObject whole = text();
        QJsonArray all = whole["entities"].toArray();
        QJsonObject entity = all[index].toObject();
        change(entity);
        entity.remove("version");
        all[index] = entity;
        whole["entities"] = all;
        QVERIFY(support::writeBytes(path("changed.json"), QJsonDocument(whole).toJson()));
        const program_result done = runProgram({"import", path("changed.json"), m_project});
        QVERIFY2(done.status == 0, done.errors.constData());
    }
};

QTEST_GUILESS_MAIN(tst_public_models)
#include "tst_public_models.moc"
