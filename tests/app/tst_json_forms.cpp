// Each form in JSON is as its schema says, of the sample and of histories made by chance: whatever is in a
// model, and whatever databases say to it.

#include "support/chain_project.h"
#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"
#include "support/rounds.h"

#include "zk/zk_sql_database.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runProgram;

namespace {

constexpr int Chains = 12;
constexpr unsigned FirstChain = 7001;

const QStringList Databases{"sqlite", "mysql", "postgresql", "oracle", "mssqlserver", "generic"};

} // namespace

class tst_json_forms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!support::hasSchemaValidator()) {
            QSKIP("python3-jsonschema is not installed");
        }
    }
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_statements = 0;
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void theSample()
    {
        const QString samples = QStringLiteral(KORVANE_SOURCE_DIR "/samples/");
        for (const char * const text : {"festival_v1.json", "festival.json"}) {
            QCOMPARE(runProgram({"import", samples + text, project()}).status, 0);
            QCOMPARE(runProgram({"tag", project()}).status, 0);
        }
        for (const QString & database : Databases) {
            keepForms(database, 2);
        }
        compareWithSchemas();
        QVERIFY(m_statements > 100);
    }
    void chains()
    {
        const int chains = support::rounds(Chains);
        for (int i = 0; i < chains; ++i) {
            const support::random_chain chain(FirstChain + static_cast<unsigned>(i));
            QFile::remove(project());
            zk::ZkSqlDatabase::clearAllDatabases();
            const QSqlError error = support::writeChain(chain, project());
            QVERIFY2(!error.isValid(), qPrintable(error.text()));
            keepForms(Databases[i % Databases.size()], static_cast<int>(chain.versions().size()) - 1);
            if (QTest::currentTestFailed()) {
                return;
            }
        }
        compareWithSchemas();
        QVERIFY(m_statements > 20 * chains);
    }

private:
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    [[nodiscard]] QString project() const { return path(QStringLiteral("shop.korv")); }

    /// Asks for each form, for a project with that many versions.
    void keepForms(const QString & database, int versions)
    {
        const QString scripts = QStringLiteral("sql_") + database;
        const QStringList options{"--db", database, "--relationships", "yes"};
        QVERIFY(QDir(m_folder->path()).mkpath(scripts));
        QCOMPARE(runProgram(QStringList{"export", project(), "-y", "--no-check", "--path", scripts,
                                        "--schema", "both"} +
                            options)
                     .status,
                 0);
        QCOMPARE(
            runProgram(QStringList{"settings", project(), "--path", scripts, "--schema", "both"} + options)
                .status,
            0);
        keep("status", {"status", project()});
        keep("check", QStringList{"check", project(), "--all", "--fail-on", "never"} + options);
        for (int from = 1; from <= versions; ++from) {
            const QString begin = QStringLiteral("v%1").arg(from);
            keep("diff", {"diff", project(), begin, "now"});
            keep("diff", QStringList{"diff", project(), begin, "now"} + options);
            keep("diff", QStringList{"diff", project(), "now", begin} + options);
        }
        const QDir folder(path(scripts));
        for (const QString & script : folder.entryList({QStringLiteral("*.sql")})) {
            keep("explain", {"explain", project(), folder.filePath(script)});
        }
        QVERIFY(folder.count() > 0);
        QVERIFY(QDir(folder).removeRecursively());
        keep("status", {"status", project()}); // the scripts are missing
        if (database == QLatin1String("sqlite")) {
            keep("verify", QStringList{"verify", project()} + options);
        }
    }
    void keep(const QString & form, const QStringList & arguments)
    {
        const program_result result = runProgram(arguments + QStringList{"--json"});
        QVERIFY2(result.status == 0 || result.status == 3,
                 (arguments.join(u' ').toUtf8() + ": " + result.errors).constData());
        QStringList & files = m_files[form];
        files << path(QStringLiteral("%1_%2.json").arg(form).arg(files.size()));
        QVERIFY(support::writeBytes(files.constLast(), result.output));
        const QJsonObject told = QJsonDocument::fromJson(result.output).object();
        QCOMPARE(told["format"].toString(), QStringLiteral("korvane.") + form);
        m_statements += static_cast<int>(told["statements"].toArray().size());
    }
    void compareWithSchemas()
    {
        for (const char * const form : {"check", "diff", "explain", "status", "verify"}) {
            const QStringList files = m_files.take(QString::fromLatin1(form));
            QVERIFY2(!files.isEmpty(), form);
            QCOMPARE(support::schemaErrors(QLatin1String(form) + QStringLiteral(".schema.json"), files),
                     QByteArray());
        }
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QMap<QString, QStringList> m_files; ///< by form
    int m_statements = 0;
};

QTEST_GUILESS_MAIN(tst_json_forms)
#include "tst_json_forms.moc"
