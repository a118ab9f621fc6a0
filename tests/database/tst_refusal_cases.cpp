#include "database/facts/facts.h"
#include "database/simulation/simulation.h"
#include "database/statement/reader.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <optional>
#include <vector>

using namespace database;

// What servers did with scripts, one file a case; cases/README.md describes their form. Each is run with
// empty tables and once more with a row in every table from the first step on.
namespace {

struct case_statement
{
    QString text;
    QString refusedWith; ///< code; empty when it runs
    bool onlyWithRows = false;
    bool isFirstOfStep = false;
    QStringList rows; ///< "table count" before the step
};

struct database_case
{
    QString database;
    std::vector<case_statement> statements;
    std::optional<QStringList> afterwards;
    std::optional<QStringList> afterwardsWithRows;
};

class case_reader
{
public:
    std::vector<database_case> read(const QString & path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            return {};
        }
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        for (const QString & line : lines) {
            if (!readHead(line) && !readStatement(line) && m_catalogue != nullptr) {
                m_catalogue->append(line);
            }
        }
        return m_cases;
    }

private:
    bool readHead(const QString & line)
    {
        if (line.startsWith(QLatin1String("database "))) {
            m_cases.push_back({line.section(u' ', 1), {}, {}, {}});
            m_catalogue = nullptr;
        } else if (line == QLatin1String("begin") || line == QLatin1String("step")) {
            m_isFirst = line == QLatin1String("step");
        } else if (line.startsWith(QLatin1String("rows "))) {
            m_rows += line.section(u' ', 1);
        } else if (line == QLatin1String("afterwards")) {
            m_catalogue = &m_cases.back().afterwards.emplace();
        } else if (line == QLatin1String("afterwards with rows")) {
            m_catalogue = &m_cases.back().afterwardsWithRows.emplace();
        } else {
            return false;
        }
        return true;
    }
    bool readStatement(const QString & line)
    {
        auto & statements = m_cases.back().statements;
        if (line.startsWith(QLatin1String("> "))) {
            statements.push_back({line.mid(2), {}, false, m_isFirst, m_rows});
            m_isFirst = false;
            m_rows.clear();
        } else if (line.startsWith(QLatin1String("refused "))) {
            statements.back().refusedWith = line.section(u' ', -1);
            statements.back().onlyWithRows = line.contains(QLatin1String("with rows"));
        } else {
            return false;
        }
        return true;
    }

    std::vector<database_case> m_cases;
    QStringList * m_catalogue = nullptr;
    bool m_isFirst = false;
    QStringList m_rows;
};

QString told(const verdict & said)
{
    switch (said.what) {
    case outcome::done:
        return QStringLiteral("done");
    case outcome::refused:
        return "refused " + said.code;
    case outcome::maybe_refused:
        return "maybe refused " + said.code;
    case outcome::not_judged:
        return QStringLiteral("not judged");
    }
    return {};
}

/// One run of one case, and what it says otherwise than the server did.
class case_run
{
public:
    case_run(const database_case & of, bool withRows)
        : m_case(of), m_withRows(withRows), m_simulation(*factsOf(of.database))
    {
    }

    QStringList misses()
    {
        for (const case_statement & each : m_case.statements) {
            putRows(each);
            compare(each);
        }
        compareCatalogue();
        return m_misses;
    }
    [[nodiscard]] int refusals() const { return m_refusals; }

private:
    void putRows(const case_statement & before)
    {
        if (!m_withRows) {
            return;
        }
        for (const QString & rows : before.rows) {
            m_simulation.putRows(rows.section(u' ', 0, 0), rows.section(u' ', 1).toInt());
        }
        if (before.isFirstOfStep) {
            m_simulation.putRowIntoEach();
        }
    }
    void compare(const case_statement & each)
    {
        const bool isRefused = !each.refusedWith.isEmpty() && (m_withRows || !each.onlyWithRows);
        m_refusals += isRefused ? 1 : 0;
        const std::vector<statement> read = readStatements(each.text);
        const QString said =
            read.size() == 1 ? told(m_simulation.run(read.front())) : QString("no statement");
        const bool dependsOnValues = said.startsWith(QLatin1String("maybe"));
        m_isCertain = m_isCertain && !(dependsOnValues && isRefused);
        const QString wanted = isRefused ? "refused " + each.refusedWith : QString("done");
        if (said != wanted && !(dependsOnValues && (!isRefused || said == "maybe " + wanted))) {
            m_misses += where() + each.text.left(120) + "\n  server: " + wanted + ", foretold: " + said;
        }
    }
    void compareCatalogue()
    {
        const auto & wanted =
            m_withRows && m_case.afterwardsWithRows ? m_case.afterwardsWithRows : m_case.afterwards;
        // Whether the statement changed anything depended on values that the simulation does not see.
        if (!wanted || !m_isCertain) {
            return;
        }
        QStringList sorted = *wanted;
        sorted.sort();
        const QStringList is = linesOf(m_simulation.held());
        for (const QString & line : sorted) {
            if (!is.contains(line)) {
                m_misses += where() + "not there: " + line;
            }
        }
        for (const QString & line : is) {
            if (!sorted.contains(line)) {
                m_misses += where() + "too much: " + line;
            }
        }
    }
    [[nodiscard]] QString where() const { return m_case.database + (m_withRows ? " with rows: " : ": "); }

    const database_case & m_case;
    bool m_withRows;
    simulation m_simulation;
    int m_refusals = 0;
    bool m_isCertain = true;
    QStringList m_misses;
};

QDir cases()
{
    return QDir(KORVANE_SOURCE_DIR "/tests/database/cases", "*.txt");
}

} // namespace

class tst_refusal_cases : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void serversAreForetold_data()
    {
        QTest::addColumn<QString>("path");
        for (const QFileInfo & file : cases().entryInfoList()) {
            QTest::newRow(qPrintable(file.completeBaseName())) << file.filePath();
        }
    }
    void serversAreForetold()
    {
        QFETCH(QString, path);
        const std::vector<database_case> databases = case_reader().read(path);
        QVERIFY(!databases.empty());
        QStringList misses;
        for (const database_case & each : databases) {
            for (const bool withRows : {false, true}) {
                case_run run(each, withRows);
                misses += run.misses();
                m_refusals += run.refusals();
            }
        }
        QVERIFY2(misses.isEmpty(), qPrintable(misses.join(u'\n')));
    }
    void allRefusalsWereThere()
    {
        if (QTest::currentTestFailed()) {
            return;
        }
        QCOMPARE(cases().entryList().size(), 206);
        QCOMPARE(m_refusals, 5448);
    }

private:
    int m_refusals = 0;
};

QTEST_APPLESS_MAIN(tst_refusal_cases)
#include "tst_refusal_cases.moc"
