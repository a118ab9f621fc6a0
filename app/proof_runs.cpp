#include "app/proof_runs.h"

#include "database/server/target_database.h"
#include "database/simulation/simulation.h"

namespace app {

namespace {

using database::server::row_content;
using database::server::server_failure;
using database::server::target_database;

/// A run of scripts on a database that begins with nothing.
class proof_runner
{
public:
    proof_runner(target_database & target, const run_watch & watch)
        : m_target(target), m_watch(watch), m_simulated(target.known())
    {
        QString error;
        if (!m_target.reset(error)) {
            throw server_failure(error);
        }
    }

    void run(const std::vector<run_statement> & script, std::size_t version)
    {
        for (const run_statement & each : script) {
            if (m_watch.isEnded()) {
                throw server_failure(QStringLiteral("stopped"));
            }
            statement_result told;
            told.asked = &each;
            told.version = version;
            told.isDone = m_target.execute(each.read.text, told.error);
            told.error.words = told.error.words.simplified();
            const database::verdict said = m_simulated.run(
                each.read, told.isDone ? database::row_values::fitting : database::row_values::conflicting);
            told.isExpectedRefused = said.what == database::outcome::refused;
            told.consequenceOf = said.consequenceOf;
            m_result.isWhole = m_result.isWhole && told.isDone;
            m_result.statements.push_back(std::move(told));
        }
    }

    void endVersion()
    {
        database::catalogue held = m_target.held();
        if (!m_result.held.empty()) {
            shareTables(m_result.held.back(), held);
        }
        m_result.differences.push_back(check::compareSchemas(m_simulated.held(), held));
        m_result.held.push_back(std::move(held));
        m_watch.versionDone();
    }

    void put(verified_rows & rows, const version_scripts & newest)
    {
        const QMap<QString, int> counts = rows.put(m_result.held.back(), newest.word, *newest.model);
        for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
            m_simulated.putRows(it.key(), it.value());
        }
    }

    void compare(const verified_rows & rows, const model::project & now)
    {
        m_result.hasRows = rows.isAny();
        m_result.rows = rows.compare(m_result.held.back(), now);
    }

    [[nodiscard]] proof_result result() { return std::move(m_result); }

private:
    /// Most tables are those of the version before: copies of these share what they hold.
    static void shareTables(const database::catalogue & before, database::catalogue & now)
    {
        for (auto & [key, table] : now.tables) {
            if (const auto same = before.tables.find(key);
                same != before.tables.end() && same->second == table) {
                table = same->second;
            }
        }
    }

    target_database & m_target;
    const run_watch & m_watch;
    database::simulation m_simulated;
    proof_result m_result;
};

} // namespace

proof_result runFullScript(target_database & target, const std::vector<version_scripts> & versions,
                           std::size_t index, const run_watch & watch)
{
    proof_runner runner(target, watch);
    runner.run(versions[index].full, index);
    runner.endVersion();
    return runner.result();
}

proof_result runHistory(target_database & target, const std::vector<version_scripts> & versions,
                        std::optional<row_content> content, const run_watch & watch)
{
    proof_runner runner(target, watch);
    verified_rows rows(target, content.value_or(row_content::values));
    for (std::size_t i = 0; i < versions.size(); ++i) {
        if (content && i > 0) {
            runner.put(rows, versions[i - 1]);
        }
        runner.run(versions[i].step, i);
        runner.endVersion();
    }
    if (content) {
        runner.compare(rows, *versions.back().model);
    }
    return runner.result();
}

} // namespace app
