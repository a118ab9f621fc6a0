// The proof that scripts do what was foretold: all of them are run on a database.

#include "app/verification.h"

#include "app/check_run.h"
#include "app/export_options.h"
#include "app/foretold_statements.h"
#include "app/source.h"
#include "app/verified_rows.h"
#include "app/version_scripts.h"

#include "check/view/schema_difference.h"
#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "database/server/target_database.h"
#include "database/simulation/simulation.h"
#include "model/project.h"
#include "os/stop_requests.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace app {

namespace {

using database::server::server_error;
using database::server::server_failure;
using database::server::target_database;
using zk::ZkBool;

/// What a run of the history told.
struct history_findings
{
    bool isWhole = true; ///< whether no statement was refused, told or not
    std::vector<verified_refusal> refused;
    std::vector<verified_difference> chainDifferences;
    std::vector<verified_difference> modelDifferences;
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
            result = loadScripts(m_statements, m_source, m_options, now, m_versions);
        }
        try {
            m_proof.server = m_target.version();
            if (result) {
                m_runs = m_source.newestVersion() == 0 ? 1 : 2;
                runFullScripts();
                runHistory();
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

    void noteScript(const std::vector<run_statement> & script)
    {
        if (!script.empty() && !m_proof.scripts.contains(script.front().place.script)) {
            m_proof.scripts += script.front().place.script;
        }
    }

    void progress()
    {
        if (m_asked.progress) {
            m_asked.progress(++m_done, m_runs * static_cast<int>(m_versions.size()));
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

    /// Runs one script on the database and in the simulation; false when a statement was refused.
    bool runScript(const std::vector<run_statement> & script, bool withRows, bool isCounted,
                   database::simulation & simulated, std::vector<verified_refusal> & refused)
    {
        bool isWhole = true;
        for (const run_statement & each : script) {
            if (os::stop_requests::isRequested()) {
                throw server_failure(QStringLiteral("stopped"));
            }
            server_error error;
            const bool isDone = m_target.execute(each.read.text, error);
            simulated.run(each.read,
                          isDone ? database::row_values::fitting : database::row_values::conflicting);
            isWhole = isWhole && isDone;
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
        return isWhole;
    }

    static void compareWithModel(const QString & version, const QString & what,
                                 const database::catalogue & expected, const database::catalogue & found,
                                 std::vector<verified_difference> & differences)
    {
        for (const check::schema_difference & each : check::compareSchemas(expected, found)) {
            differences.push_back({version, what + check::subjectOf(each), each.expected, each.found, {}});
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
                compareWithModel(version.word, QString(), simulated.held(), m_held.back(),
                                 m_proof.modelDifferences);
            }
            if (isNow) {
                noteScript(version.full);
                m_proof.fullStatements = static_cast<int>(version.full.size());
            }
            progress();
        }
    }

    /// Runs the history with rows, and without them where they made a difference: a statement that runs on
    /// tables with rows runs on empty ones as well, and does the same.
    void runHistory()
    {
        if (m_source.newestVersion() == 0) {
            return;
        }
        for (const version_scripts & version : m_versions) {
            noteScript(version.step);
        }
        for (std::size_t i = 0; i < m_versions.size(); ++i) {
            m_proof.chainStatements += isTold(i) ? static_cast<int>(m_versions[i].step.size()) : 0;
        }
        history_findings withRows = runChain(true);
        if (withRows.isWhole) {
            take(std::move(withRows));
            return;
        }
        m_runs = 3;
        take(runChain(false));
        addRefused(withRows.refused);
    }

    history_findings runChain(bool withRows)
    {
        reset();
        history_findings found;
        database::simulation simulated(m_target.known());
        verified_rows rows(m_target);
        QSet<QString> told;
        for (std::size_t i = 0; i < m_versions.size(); ++i) {
            const version_scripts & version = m_versions[i];
            if (withRows && i > 0) {
                const QMap<QString, int> counts = rows.put(m_versions[i - 1].word, *m_versions[i - 1].model);
                for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
                    simulated.putRows(it.key(), it.value());
                }
            }
            const bool isWhole = runScript(version.step, withRows, isTold(i), simulated, found.refused);
            found.isWhole = found.isWhole && isWhole;
            compareVersion(i, simulated.held(), told, found);
            progress();
        }
        if (withRows) {
            compareRows(rows);
        }
        return found;
    }

    void take(history_findings found)
    {
        const auto move = [](auto & from, auto & to) {
            to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
        };
        move(found.refused, m_proof.chainRefused);
        move(found.chainDifferences, m_proof.chainDifferences);
        move(found.modelDifferences, m_proof.modelDifferences);
    }

    /// What is refused in both runs is told once.
    void addRefused(std::vector<verified_refusal> & withRows)
    {
        for (verified_refusal & each : withRows) {
            const auto same = [&each](const verified_refusal & other) {
                return other.place.script == each.place.script && other.place.line == each.place.line;
            };
            if (std::none_of(m_proof.chainRefused.begin(), m_proof.chainRefused.end(), same)) {
                m_proof.chainRefused.push_back(std::move(each));
            }
        }
    }

    /// @param told what was told of the versions before: what follows from an earlier one is told once
    void compareVersion(std::size_t index, const database::catalogue & foretold, QSet<QString> & told,
                        history_findings & found)
    {
        const database::catalogue held = m_target.held();
        const QString & word = m_versions[index].word;
        for (const check::schema_difference & each : check::compareSchemas(m_held[index], held)) {
            const QString object = check::subjectOf(each);
            if (const QString key = object + u'\n' + each.expected + u'\n' + each.found;
                !told.contains(key)) {
                told.insert(key);
                if (isTold(index)) {
                    found.chainDifferences.push_back(
                        {word, object, each.expected, each.found, m_foretold.difference(object)});
                }
            }
        }
        if (isTold(index)) {
            compareWithModel(word, QStringLiteral("after the history, "), foretold, held,
                             found.modelDifferences);
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
    int m_done = 0;
    int m_runs = 1; ///< of all versions, as far as is known
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
