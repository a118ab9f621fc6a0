// Steps that jump over versions, run on databases that hold what the history made until then: what is refused
// is what the check has foretold of that step, and nothing else.

#include "database/server/script_run.h"
#include "database/server/target_database.h"
#include "support/program.h"
#include "support/project_support.h"
#include "support/random_models.h"

#include "zk/zk_sql_database.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <set>

using support::runProgram;

namespace {

constexpr unsigned Histories = 8;

} // namespace

class tst_distant_steps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusedIsWhatWasForetold_data()
    {
        QTest::addColumn<QString>("scripts");
        QTest::newRow("sqlite") << "sqlite";
        QTest::newRow("mariadb") << "mysql";
        QTest::newRow("postgresql") << "postgresql";
    }
    void refusedIsWhatWasForetold()
    {
        QFETCH(QString, scripts);
        m_database = QString::fromLatin1(QTest::currentDataTag());
        QString why;
        m_target = database::server::start(m_database, why);
        if (!m_target) {
            QSKIP(qPrintable(why));
        }
        int statements = 0;
        std::size_t refusals = 0;
        for (unsigned seed = 1; seed <= Histories; ++seed) {
            m_folder = std::make_unique<QTemporaryDir>();
            const QSqlError error = support::writeHistory(project(), 200 + seed);
            QVERIFY2(!error.isValid(), qPrintable(error.text()));
            zk::ZkSqlDatabase::clearAllDatabases();
            QCOMPARE(runProgram({"export", project(), "-y", "--no-check", "--path", "sql", "--db", scripts,
                                 "--schema", "evolution", "--relationships", "yes"})
                         .status,
                     0);
            for (int from = 1; from <= 2; ++from) {
                QVERIFY2(m_target->reset(why), qPrintable(why));
                for (const QString & name : scriptsUntil(from)) {
                    QStringList refused;
                    QVERIFY2(database::server::runScript(*m_target, QString::fromUtf8(support::bytesOf(name)),
                                                         &refused, why),
                             qPrintable(why));
                }
                const QStringList step{project(), QStringLiteral("v%1").arg(from), "now"};
                const QByteArray script =
                    runProgram(QStringList{"diff"} + step + options() + QStringList{"--sql"}).output;
                QVERIFY(!script.isEmpty());
                statements += static_cast<int>(script.count(';'));
                QStringList refused;
                QVERIFY2(database::server::runScript(*m_target, QString::fromUtf8(script), &refused, why),
                         qPrintable(why));
                QCOMPARE(linesOf(refused), foretold(from));
                refusals += static_cast<std::size_t>(refused.size());
            }
        }
        QVERIFY2(statements > 100, qPrintable(QString::number(statements)));
        QVERIFY(refusals > 0);
    }

private:
    [[nodiscard]] QString project() const { return m_folder->filePath(QStringLiteral("shop.korv")); }
    [[nodiscard]] QStringList options() const { return {"--db", m_database, "--relationships", "yes"}; }
    /// The scripts that make the version.
    [[nodiscard]] QStringList scriptsUntil(int version) const
    {
        const QDir folder(m_folder->filePath(QStringLiteral("sql")));
        QStringList names = folder.entryList({QStringLiteral("*_v1.sql")});
        for (int from = 1; from < version; ++from) {
            names += folder.entryList({QStringLiteral("*_v%1_to_v%2.sql").arg(from).arg(from + 1)});
        }
        for (QString & name : names) {
            name = folder.filePath(name);
        }
        return names;
    }
    /// The lines of the statements that were refused, which begin with them.
    static std::set<int> linesOf(const QStringList & refused)
    {
        std::set<int> lines;
        for (const QString & each : refused) {
            static const QRegularExpression number(QStringLiteral("\\d+"));
            lines.insert(number.match(each).captured().toInt());
        }
        return lines;
    }
    [[nodiscard]] std::set<int> foretold(int from) const
    {
        const QByteArray told =
            runProgram(QStringList{"check", project(), "--from", QStringLiteral("v%1").arg(from), "--json"} +
                       options())
                .output;
        std::set<int> lines;
        const QJsonArray findings = QJsonDocument::fromJson(told).object()["findings"].toArray();
        for (const QJsonValue & each : findings) {
            if (each["outcome"] == QJsonValue("refused") && each["when"] == QJsonValue("always")) {
                lines.insert(each["statement"]["line"].toInt());
            }
        }
        return lines;
    }

    std::unique_ptr<database::server::target_database> m_target;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_database;
};

QTEST_GUILESS_MAIN(tst_distant_steps)
#include "tst_distant_steps.moc"
