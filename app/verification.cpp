// The proof that scripts do what was foretold: all of them are run on a database, with and without rows.

#include "app/verification.h"

#include "app/check_run.h"
#include "app/export_options.h"
#include "app/source.h"
#include "app/verified_rows.h"

#include "check/view/schema_difference.h"
#include "check/view/statement_place.h"
#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "database/server/target_database.h"
#include "database/simulation/simulation.h"
#include "database/statement/reader.h"
#include "model/project.h"
#include "os/stop_requests.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace app {

namespace {

using database::server::server_error;
using database::server::server_failure;
using database::server::target_database;
using zk::ZkBool;

/// A statement as a server runs it.
struct run_statement
{
    check::statement_place place;
    database::statement read;
};

/// The scripts that belong to one version.
struct version_scripts
{
    QString word;
    std::shared_ptr<model::project> model;
    std::vector<run_statement> full; ///< makes it as a whole
    std::vector<run_statement> step; ///< leads to it from the version before
};

std::vector<run_statement> statementsOf(const plugin::statement_list & list)
{
    std::vector<run_statement> statements;
    for (const plugin::statement_record & record : list.records) {
        for (const database::statement & read : database::readStatements(
                 record.text, record.isReplaced() ? database::writer::anyone : database::writer::exporter)) {
            statements.push_back({check::placeOf(record, read), read});
        }
    }
    return statements;
}

/// What the check foretold of each statement of the scripts.
class foretold_statements
{
public:
    foretold_statements() = default;
    explicit foretold_statements(const check::report & report)
    {
        for (const check::finding & each : report.findings) {
            if (each.what == check::effect::refused && each.statement) {
                const auto key = keyOf(*each.statement);
                QString & code = (each.when == check::occasion::always ? m_always : m_withRows)[key];
                code = code.isEmpty() ? QString(each.code) : code;
                if (each.when == check::occasion::always || each.weight == check::severity::error) {
                    m_certain.insert(key);
                }
            }
            for (const QString & difference : each.differences) {
                m_differences.insert(difference, each.code);
            }
            for (const check::object & object : each.objects) {
                const bool isTold = each.what == check::effect::loss || each.what == check::effect::refused ||
                                    each.what == check::effect::silent || each.what == check::effect::differs;
                if (isTold) {
                    m_objects.insert({static_cast<int>(object.kind), object.id}, each.code);
                }
            }
        }
    }

    /// The code of the finding that says that the statement is refused; empty without one.
    [[nodiscard]] QString refusal(const check::statement_place & of, bool withRows) const
    {
        const QString always = m_always.value(keyOf(of));
        return always.isEmpty() && withRows ? m_withRows.value(keyOf(of)) : always;
    }
    /// Whether that does not depend on how somebody is connected.
    [[nodiscard]] bool isCertain(const check::statement_place & of) const
    {
        return m_certain.contains(keyOf(of));
    }
    [[nodiscard]] QString difference(const QString & object) const { return m_differences.value(object); }
    [[nodiscard]] QString loss(long entity, long property) const
    {
        const QString own = m_objects.value({static_cast<int>(model::object_kind::property), property});
        return own.isEmpty() ? m_objects.value({static_cast<int>(model::object_kind::entity), entity}) : own;
    }

private:
    static std::pair<QString, int> keyOf(const check::statement_place & place)
    {
        return {place.script, place.line};
    }

    QHash<std::pair<QString, int>, QString> m_always;
    QHash<std::pair<QString, int>, QString> m_withRows;
    QSet<std::pair<QString, int>> m_certain;
    QHash<QString, QString> m_differences;
    QHash<std::pair<int, long>, QString> m_objects;
};

/// The proof on one database.
class proof_run
{
public:
    proof_run(target_database & target, plugin::statement_source & statements, source & of,
              const verification_request & asked, database_proof & proof)
        : m_target(target), m_statements(statements), m_source(of), m_asked(asked), m_proof(proof)
    {
    }

    ZkBool run()
    {
        std::shared_ptr<model::project> now;
        ZkBool result = m_source.load(Now, now);
        if (!result) {
            return result;
        }
        const context::ctx_kept kept(context::ctx_project::getSingleton());
        context::ctx_project::getSingleton().setProject(now);
        m_options = m_asked.options;
        m_options.insert(DatabaseOption, m_target.known().scripts);
        m_proof.database = m_target.known().key;
        if (result = foretell(); result) {
            result = loadScripts(now);
        }
        try {
            m_proof.server = m_target.version();
            if (result) {
                runFullScripts();
                runChain(false);
                runChain(true);
            }
        } catch (const server_failure & failure) {
            return ZkBool::failure(QStringLiteral("%1: %2").arg(m_target.known().label, failure.reason()));
        }
        return result;
    }

private:
    ZkBool foretell()
    {
        check_request request;
        request.databases = QStringList(QString(m_target.known().key));
        request.scripts = judged_scripts::all;
        request.options = m_asked.options;
        check::report report;
        const ZkBool told = checkSource(m_statements, m_source, request, report);
        m_foretold = foretold_statements(report);
        return told;
    }

    ZkBool loadScripts(const std::shared_ptr<model::project> & now)
    {
        std::shared_ptr<model::project> before;
        const int newest = m_source.newestVersion();
        for (int number = 1; number <= newest + 1; ++number) {
            version_scripts version;
            const bool isNow = number > newest;
            version.word = versionWord(isNow ? Now : number);
            version.model = now;
            ZkBool result = isNow ? ZkBool::success() : m_source.load(number, version.model);
            if (result) {
                version.model->setName(now->getName());
                const plugin::statement_list full = m_statements.fullStatements(*version.model, m_options);
                version.full = statementsOf(full);
                result = full.outcome;
            }
            // A project without versions has no history.
            if (result && newest > 0) {
                const plugin::statement_list step = m_statements.stepStatements(
                    {before, version.model, before ? number - 1 : 0, number}, m_options);
                version.step = statementsOf(step);
                result = step.outcome;
            }
            if (!result) {
                return result;
            }
            before = version.model;
            m_versions.push_back(std::move(version));
        }
        return ZkBool::success();
    }

    void noteScript(const std::vector<run_statement> & script)
    {
        if (!script.empty() && !m_proof.scripts.contains(script.front().place.script)) {
            m_proof.scripts += script.front().place.script;
        }
    }

    void progress()
    {
        if (m_asked.progress) {
            m_asked.progress(++m_done, static_cast<int>(3 * m_versions.size()));
        }
    }

    void reset()
    {
        QString error;
        if (!m_target.reset(error)) {
            throw server_failure(error);
        }
    }

    [[nodiscard]] bool isTold(std::size_t version) const
    {
        return static_cast<int>(version) + 1 >= m_asked.from;
    }

    /// Runs one script on the database and in the simulation.
    void runScript(const std::vector<run_statement> & script, bool withRows, bool isCounted,
                   database::simulation & simulated, std::vector<verified_refusal> & refused)
    {
        for (const run_statement & each : script) {
            if (os::stop_requests::isRequested()) {
                throw server_failure(QStringLiteral("stopped"));
            }
            server_error error;
            const bool isDone = m_target.execute(each.read.text, error);
            simulated.run(each.read,
                          isDone ? database::row_values::fitting : database::row_values::conflicting);
            if (!isCounted) {
                continue;
            }
            const QString code = m_foretold.refusal(each.place, withRows);
            if (isDone) {
                m_proof.falseAlarms += !code.isEmpty() && m_foretold.isCertain(each.place) ? 1 : 0;
                continue;
            }
            ++m_proof.refused;
            m_proof.foretold += code.isEmpty() ? 0 : 1;
            refused.push_back({each.place, error.code, error.words.simplified(), code, withRows});
        }
    }

    void compareWithModel(const QString & version, const QString & what, const database::catalogue & expected,
                          const database::catalogue & found)
    {
        for (const check::schema_difference & each : check::compareSchemas(expected, found)) {
            m_proof.modelDifferences.push_back(
                {version, what + check::subjectOf(each), each.expected, each.found, {}});
        }
    }

    /// Makes each version as a whole.
    void runFullScripts()
    {
        for (std::size_t i = 0; i < m_versions.size(); ++i) {
            const version_scripts & version = m_versions[i];
            const bool isNow = i + 1 == m_versions.size();
            reset();
            database::simulation simulated(m_target.known());
            runScript(version.full, false, isNow, simulated, m_proof.fullRefused);
            m_held.push_back(m_target.held());
            if (isTold(i)) {
                compareWithModel(version.word, QString(), simulated.held(), m_held.back());
            }
            if (isNow) {
                noteScript(version.full);
                m_proof.fullStatements = static_cast<int>(version.full.size());
            }
            progress();
        }
    }

    /// Runs the history from its first script on.
    void runChain(bool withRows)
    {
        if (m_source.newestVersion() == 0) {
            return;
        }
        reset();
        database::simulation simulated(m_target.known());
        verified_rows rows(m_target);
        for (std::size_t i = 0; i < m_versions.size(); ++i) {
            const version_scripts & version = m_versions[i];
            if (withRows && i > 0) {
                const QMap<QString, int> counts = rows.put(m_versions[i - 1].word, *m_versions[i - 1].model);
                for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
                    simulated.putRows(it.key(), it.value());
                }
            }
            std::vector<verified_refusal> refused;
            runScript(version.step, withRows, isTold(i), simulated, refused);
            addRefused(refused, withRows);
            if (!withRows) {
                noteScript(version.step);
                m_proof.chainStatements += isTold(i) ? static_cast<int>(version.step.size()) : 0;
                compareVersion(i, simulated.held());
            }
            progress();
        }
        if (withRows) {
            compareRows(rows);
        }
    }

    /// What is refused in both runs is told once.
    void addRefused(std::vector<verified_refusal> & refused, bool withRows)
    {
        for (verified_refusal & each : refused) {
            const auto same = [&each](const verified_refusal & other) {
                return other.place.script == each.place.script && other.place.line == each.place.line;
            };
            if (!withRows || std::none_of(m_proof.chainRefused.begin(), m_proof.chainRefused.end(), same)) {
                m_proof.chainRefused.push_back(std::move(each));
            }
        }
    }

    void compareVersion(std::size_t index, const database::catalogue & foretold)
    {
        const database::catalogue held = m_target.held();
        const QString & word = m_versions[index].word;
        for (const check::schema_difference & each : check::compareSchemas(m_held[index], held)) {
            const QString object = check::subjectOf(each);
            // What follows from an earlier one is told once.
            if (const QString key = object + u'\n' + each.expected + u'\n' + each.found;
                !m_told.contains(key)) {
                m_told.insert(key);
                if (isTold(index)) {
                    m_proof.chainDifferences.push_back(
                        {word, object, each.expected, each.found, m_foretold.difference(object)});
                }
            }
        }
        if (isTold(index)) {
            compareWithModel(word, QStringLiteral("after the history, "), foretold, held);
        }
    }

    void compareRows(const verified_rows & rows)
    {
        const verified_values found = rows.compare(*m_versions.back().model);
        m_proof.values = found.values;
        m_proof.kept = found.values - static_cast<int>(found.lost.size());
        for (const verified_values::value & each : found.lost) {
            m_proof.lost.push_back(
                {each.version, each.name, each.text, m_foretold.loss(each.entity, each.property)});
        }
    }

    target_database & m_target;
    plugin::statement_source & m_statements;
    source & m_source;
    const verification_request & m_asked;
    database_proof & m_proof;
    plugin::friendly_settings m_options;
    foretold_statements m_foretold;
    std::vector<version_scripts> m_versions;
    std::vector<database::catalogue> m_held; ///< what the full script of each version makes
    QSet<QString> m_told;
    int m_done = 0;
};

} // namespace

bool database_proof::isOk() const
{
    const auto isForetold = [](const verified_refusal & each) { return !each.foretoldBy.isEmpty(); };
    return std::all_of(fullRefused.begin(), fullRefused.end(), isForetold) &&
           std::all_of(chainRefused.begin(), chainRefused.end(), isForetold) &&
           std::all_of(chainDifferences.begin(), chainDifferences.end(),
                       [](const verified_difference & each) { return !each.explainedBy.isEmpty(); }) &&
           modelDifferences.empty() && std::all_of(lost.begin(), lost.end(), [](const lost_value & each) {
               return !each.explainedBy.isEmpty();
           });
}

bool verification::isOk() const
{
    return std::all_of(proofs.begin(), proofs.end(), [](const database_proof & each) { return each.isOk(); });
}

ZkBool verifyOn(target_database & target, plugin::statement_source & statements, source & of,
                const verification_request & asked, database_proof & proof)
{
    return proof_run(target, statements, of, asked, proof).run();
}

} // namespace app
