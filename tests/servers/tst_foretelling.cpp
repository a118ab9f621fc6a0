// Measures what a check foretells against the databases: random chains of models, whose scripts are run
// statement by statement on the databases, through the simulation and through the check. CONTRIBUTING.md
// tells what came out.
//
// Built once for each database: KORVANE_TARGET is the function that starts it, KORVANE_SCRIPTS the key of the
// scripts that it runs.

#include "database/server/target_database.h"
#include "servers/foretelling.h"

#include "plugin/builder/databases.h"
#include "plugin/ddl_export.h"
#include "support/random_chain.h"
#include "support/stored_project.h"

#include <QTest>

#include <optional>

namespace {

constexpr int ChainsInCi = 40;
constexpr unsigned FirstChain = 1;

int numberFrom(const char * variable, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? number : otherwise;
}

const QString Scripts = QStringLiteral(KORVANE_SCRIPTS);

plugin::ddl_export::database_type number()
{
    for (const plugin::database & each : plugin::allDatabases()) {
        if (Scripts == QLatin1String(each.key)) {
            return each.number;
        }
    }
    qFatal("no such database");
}

/// Stores the list of types of a chain as a project's settings for as long as this lives.
class stored_mapping
{
public:
    explicit stored_mapping(const support::random_chain & chain)
    {
        plugin::ddl_export settings;
        const plugin::ddl_export::type_mapping usual = settings.getListTypeMappingByDb(number());
        plugin::ddl_export::type_mapping types;
        for (const auto & [cppType, sqlType] : chain.mapping()) {
            types.insert(cppType, sqlType);
        }
        for (long i = 0; i < usual.count(); ++i) {
            if (!types.exist(usual.getKeyByIndex(i))) {
                types.insert(usual.getKeyByIndex(i), usual.getByIndex(i));
            }
        }
        settings.setListTypeMappingByDb(number(), types);
        if (settings.saveSettings().isValid()) {
            qFatal("the settings cannot be stored");
        }
    }

private:
    support::stored_project m_project;
};

using script = std::vector<plugin::statement_record>;

script recordsOf(const plugin::statement_list & list)
{
    if (!list.outcome) {
        qFatal("%s", qUtf8Printable(list.outcome.getDesc()));
    }
    return list.records;
}

/// A script as a check takes it.
check::script scriptOf(const script & records, const std::shared_ptr<model::project> & before,
                       const std::shared_ptr<model::project> & now)
{
    check::script made;
    made.name = records.empty() ? QString() : records.front().script;
    made.before = before;
    made.now = now;
    made.records = records;
    return made;
}

/// The scripts of a chain: the full one of the newest version, and those from the first version on.
struct chain_scripts
{
    explicit chain_scripts(const support::random_chain & chain)
    {
        std::optional<stored_mapping> mapping;
        if (!chain.mapping().isEmpty()) {
            mapping.emplace(chain);
        }
        const plugin::friendly_settings options = {
            {QStringLiteral("db"), Scripts},
            {QStringLiteral("relationships"),
             chain.hasRelationships() ? QStringLiteral("yes") : QStringLiteral("no")}};
        plugin::ddl_export source;
        const auto & versions = chain.versions();
        full = recordsOf(source.fullStatements(*versions.back(), options));
        steps.push_back(recordsOf(source.fullStatements(*versions.front(), options)));
        for (std::size_t i = 1; i < versions.size(); ++i) {
            const int to = static_cast<int>(i) + 1;
            steps.push_back(
                recordsOf(source.stepStatements({versions[i - 1], versions[i], to - 1, to}, options)));
        }
    }

    script full;
    std::vector<script> steps;
};

} // namespace

class tst_foretelling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void chain_data();
    void chain();
    void cleanupTestCase();

private:
    std::unique_ptr<database::server::target_database> m_target;
    servers::foretelling_figures m_figures;
    servers::finding_figures m_found;
    int m_chains = 0;
};

void tst_foretelling::initTestCase()
{
    QString why;
    m_target = database::server::KORVANE_TARGET(why);
    if (!m_target) {
        QSKIP(qPrintable(why));
    }
}

void tst_foretelling::chain_data()
{
    QTest::addColumn<unsigned>("seed");
    const int first = numberFrom("KORVANE_FIRST_CHAIN", FirstChain);
    const int count = numberFrom("KORVANE_CHAINS", ChainsInCi);
    for (int seed = first; seed < first + count; ++seed) {
        QTest::newRow(qPrintable(QString::number(seed))) << static_cast<unsigned>(seed);
    }
}

void tst_foretelling::chain()
{
    QFETCH(unsigned, seed);
    const support::random_chain models(seed);
    const chain_scripts scripts(models);
    const auto & versions = models.versions();
    servers::foretelling both(*m_target);
    both.begin();
    both.run(QStringLiteral("full"), scripts.full);
    servers::found_refusals inFull(m_target->known());
    inFull.judge(scriptOf(scripts.full, nullptr, versions.back()));
    inFull.compare(both.executed(), false);
    inFull.compareCatalogue(both.held());
    const auto tell = [&both](const char * run) {
        if (qEnvironmentVariableIsSet("KORVANE_TELL_CASE")) {
            qInfo("%s\n%s", run, qUtf8Printable(both.caseText()));
        }
    };
    tell("full script");
    servers::found_refusals inChain(m_target->known());
    for (const bool withRows : {false, true}) {
        both.begin();
        inChain.begin(withRows);
        for (std::size_t i = 0; i < scripts.steps.size(); ++i) {
            const bool hasRows = !withRows || i == 0 || both.putRows();
            both.run(QStringLiteral("v%1%2").arg(i + 1).arg(QLatin1String(withRows ? " with rows" : "")),
                     scripts.steps[i]);
            if (!withRows) {
                inChain.judge(scriptOf(scripts.steps[i], i == 0 ? nullptr : versions[i - 1], versions[i]));
                inChain.compareCatalogue(both.held());
            }
            inChain.compare(both.executed(), !hasRows);
        }
        tell(withRows ? "steps with rows" : "steps");
    }
    ++m_chains;
    m_figures.add(both.figures());
    m_found.add(inFull.figures());
    m_found.add(inChain.figures());
    const QStringList misses = both.misses() + inFull.misses() + inChain.misses();
    QVERIFY2(misses.isEmpty(),
             qPrintable(QStringLiteral("KORVANE_CHAINS=1 KORVANE_FIRST_CHAIN=%1\n").arg(seed) +
                        misses.join(QLatin1Char('\n'))));
}

void tst_foretelling::cleanupTestCase()
{
    if (m_target) {
        qInfo("%s", qPrintable(QStringLiteral("%1 chains, %2").arg(m_chains).arg(m_figures.told())));
        qInfo("%s", qPrintable(m_found.told()));
    }
}

QTEST_MAIN(tst_foretelling)
#include "tst_foretelling.moc"
