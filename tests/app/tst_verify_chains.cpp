// The command verify on random histories: whatever databases do with the scripts, the check has foretold it.

#include "support/chain_project.h"
#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"

#include "zk/zk_sql_database.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runProgram;

namespace {

constexpr int ChainsInCi = 10;
constexpr unsigned FirstChain = 5001;

int numberFrom(const char * variable, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? number : otherwise;
}

} // namespace

class tst_verify_chains : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void chain_data()
    {
        QTest::addColumn<unsigned>("seed");
        const int first = numberFrom("KORVANE_FIRST_CHAIN", FirstChain);
        const int count = numberFrom("KORVANE_CHAINS", ChainsInCi);
        for (int seed = first; seed < first + count; ++seed) {
            QTest::newRow(qPrintable(QString::number(seed))) << static_cast<unsigned>(seed);
        }
    }
    void chain()
    {
        QFETCH(const unsigned, seed);
        const support::random_chain chain(seed);
        QTemporaryDir folder;
        folder.setAutoRemove(!qEnvironmentVariableIsSet("KORVANE_KEEP_CHAINS"));
        const QString project = folder.filePath("chain.korv");
        const QSqlError error = support::writeChain(chain, project);
        QVERIFY2(!error.isValid(), qPrintable(error.text()));
        const program_result result =
            runProgram({"verify", project, "--json", "--skip-missing", "--db",
                        qEnvironmentVariable("KORVANE_DATABASES", "sqlite,mariadb,postgresql"),
                        "--relationships", chain.hasRelationships() ? "yes" : "no"});
        QVERIFY2(result.status == 0 || result.status == 3, result.errors.constData());
        const QString file = folder.filePath("verify.json");
        QVERIFY(support::writeBytes(file, result.output));
        QCOMPARE(support::schemaErrors("verify.schema.json", {file}), QByteArray());
        for (const QJsonValue & run : QJsonDocument::fromJson(result.output)["runs"].toArray()) {
            m_refused += run["foretold"]["refused"].toInt();
            m_foretold += run["foretold"]["foretold"].toInt();
            m_false += run["foretold"]["false"].toInt();
            m_values += run["rows"]["values"].toInt();
            m_kept += run["rows"]["kept"].toInt();
            ++m_runs;
        }
        const program_result told =
            result.status == 0
                ? result
                : runProgram({"verify", project, "--skip-missing", "--db",
                              qEnvironmentVariable("KORVANE_DATABASES", "sqlite,mariadb,postgresql"),
                              "--relationships", chain.hasRelationships() ? "yes" : "no"});
        QVERIFY2(result.status == 0, told.output.constData());
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }
    void cleanupTestCase()
    {
        qInfo("%d runs: %d of %d refusals foretold, %d false; %d of %d values kept", m_runs, m_foretold,
              m_refused, m_false, m_kept, m_values);
        QVERIFY(m_refused > 0);
        QVERIFY(m_kept > 0);
    }

private:
    int m_runs = 0;
    int m_refused = 0;
    int m_foretold = 0;
    int m_false = 0;
    int m_values = 0;
    int m_kept = 0;
};

QTEST_GUILESS_MAIN(tst_verify_chains)

#include "tst_verify_chains.moc"
