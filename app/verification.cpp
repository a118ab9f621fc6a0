// The proof that scripts do what was foretold: all of them are run on a database.

#include "app/verification.h"

#include "app/check_run.h"
#include "app/export_options.h"
#include "app/foretold_statements.h"
#include "app/proof_judgement.h"
#include "app/proof_runs.h"
#include "app/shared_work.h"
#include "app/source.h"
#include "app/version_scripts.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "database/server/target_database.h"
#include "model/project.h"
#include "os/stop_requests.h"

#include <algorithm>
#include <mutex>
#include <system_error>
#include <thread>

namespace app {

namespace {

using database::server::row_content;
using database::server::server_failure;
using database::server::target_database;
using zk::ZkBool;

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
        if (result = loadScripts(m_statements, m_source, m_options, now, m_versions); !result) {
            return result;
        }
        try {
            m_proof.server = m_target.version();
            if (result = runAll(); result) {
                noteScripts();
                judge(m_results, m_versions, m_foretold, m_asked.from, m_proof);
            }
        } catch (const server_failure & failure) {
            return ZkBool::failure(
                QStringLiteral("%1: %2").arg(m_target.known().label, failure.reason().simplified()));
        }
        return result;
    }

private:
    /// Runs scripts in this thread, and where there can be a second database in another one as well, which
    /// has begun while this one still finds out what is foretold: only this one may use the plug-in. The
    /// models are only read from here on.
    ZkBool runAll()
    {
        std::unique_ptr<target_database> other = m_target.another();
        shared_work work(parts(other != nullptr));
        m_watch.isEnded = [&work] { return work.isEnded() || os::stop_requests::isRequested(); };
        m_watch.versionDone = [this] { progress(); };
        ZkBool result = ZkBool::success();
        {
            const std::jthread helper = other ? startHelper(work, std::move(other)) : std::jthread();
            work.attempt([&] { result = foretell(); });
            if (!result) {
                work.end();
            }
            work.doParts(m_target);
        }
        work.rethrow();
        return result;
    }

    /// Without another thread the parts are done in the order in which a target that is kept is left as the
    /// history left it; else the longest come first.
    std::vector<shared_work::part> parts(bool isShared)
    {
        std::vector<shared_work::part> all;
        all.reserve(m_versions.size() + 2);
        m_results.full.resize(m_versions.size());
        for (std::size_t i = 0; i < m_versions.size(); ++i) {
            all.emplace_back([this, i](target_database & target) {
                m_results.full[i] = runFullScript(target, m_versions, i, m_watch);
            });
        }
        m_runs = 1;
        if (m_source.newestVersion() > 0) {
            m_runs = 3;
            all.emplace_back([this](target_database & target) {
                m_results.nulls = runHistory(target, m_versions, row_content::nulls, m_watch);
            });
            all.emplace_back([this](target_database & target) { runHistories(target); });
        }
        if (isShared) {
            std::reverse(all.begin(), all.end());
        }
        return all;
    }

    /// Runs the history with values, and without rows where these had a say: a statement that runs on tables
    /// with rows runs on empty ones as well, and does the same.
    void runHistories(target_database & target)
    {
        m_results.values = runHistory(target, m_versions, row_content::values, m_watch);
        if (!m_results.values->isWhole) {
            addRun();
            m_results.empty = runHistory(target, m_versions, std::nullopt, m_watch);
        }
    }

    /// A machine that has no room for another thread does it all in this one.
    static std::jthread startHelper(shared_work & work, std::unique_ptr<target_database> target)
    {
        try {
            return std::jthread([&work, own = std::move(target)]() mutable {
                const std::unique_ptr<target_database> used = std::move(own); // goes in this thread
                work.doParts(*used);
            });
        } catch (const std::system_error &) {
            return {};
        }
    }

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

    /// Which scripts were run, and how many statements they have.
    void noteScripts()
    {
        noteScript(m_versions.back().full);
        m_proof.fullStatements = static_cast<int>(m_versions.back().full.size());
        for (std::size_t i = 0; i < m_versions.size(); ++i) {
            noteScript(m_versions[i].step);
            const bool isTold = static_cast<int>(i) + 1 >= m_asked.from;
            m_proof.chainStatements += isTold ? static_cast<int>(m_versions[i].step.size()) : 0;
        }
    }

    void noteScript(const std::vector<run_statement> & script)
    {
        if (!script.empty() && !m_proof.scripts.contains(script.front().place.script)) {
            m_proof.scripts += script.front().place.script;
        }
    }

    void progress()
    {
        const std::lock_guard lock(m_progress);
        ++m_done;
        if (m_asked.progress) {
            m_asked.progress(m_done, m_runs * static_cast<int>(m_versions.size()));
        }
    }

    void addRun()
    {
        const std::lock_guard lock(m_progress);
        ++m_runs;
    }

    target_database & m_target;
    plugin::statement_source & m_statements;
    source & m_source;
    const verification_request & m_asked;
    database_proof & m_proof;
    plugin::friendly_settings m_options;
    foretold_statements m_foretold;
    std::vector<version_scripts> m_versions;
    proof_results m_results;
    run_watch m_watch;
    std::mutex m_progress;
    int m_done = 0;
    int m_runs = 0; ///< of all versions, as far as is known
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
