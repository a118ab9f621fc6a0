#include "app/check_run.h"

#include "app/database_choice.h"
#include "app/export_options.h"
#include "app/script_judging.h"
#include "app/source.h"
#include "app/stored_settings.h"

#include "check/checker.h"
#include "check/view/kept_names.h"
#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "database/facts/facts.h"
#include "model/project.h"

#include <algorithm>
#include <future>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace app {

namespace {

using zk::ZkBool;

/// That which says whether relationships become foreign keys, "yes" or "no".
constexpr QLatin1String RelationshipsOption("relationships");

/// The scripts of one database, as far as they are judged.
struct database_run
{
    QString key;
    plugin::friendly_settings options;
    const database::facts * known = nullptr;
    check::export_settings settings;
    std::unique_ptr<database::table_memory> tables; ///< as the scripts of all versions make them
    std::unique_ptr<check::checker> chain;
    std::optional<database::catalogue> state;    ///< of a new database of the project's state
    std::optional<database::catalogue> previous; ///< of one of the version that was compared last
    check::report found;
};

/// What a version is called in `run` and in acceptance files.
QString toWord(int number, int newest)
{
    return number > newest ? versionWord(Now) : versionWord(number);
}

/// The run of a check over all databases at once, so that each version is loaded once.
class check_run
{
public:
    check_run(plugin::statement_source & statements, source & of, const check_request & asked)
        : m_statements(statements), m_source(of), m_asked(asked)
    {
    }

    ZkBool run()
    {
        ZkBool result = m_source.load(Now, m_now);
        if (!result) {
            return result;
        }
        context::ctx_project::getSingleton().setProject(m_now);
        if (result = takeDatabases(); !result) {
            return result;
        }
        const bool isStep = m_asked.from || m_asked.to;
        if (isStep) {
            return judgeStep();
        }
        if (m_asked.scripts != judged_scripts::history) {
            result = judgeFull();
        }
        return result && m_asked.scripts != judged_scripts::full ? judgeHistory() : result;
    }

    /// What the scripts of the one database make until a version is reached.
    ZkBool findMade(int version, std::optional<check::made_objects> & made)
    {
        ZkBool result = m_source.load(Now, m_now);
        if (result) {
            context::ctx_project::getSingleton().setProject(m_now);
            result = takeDatabases();
        }
        std::shared_ptr<model::project> before;
        if (result) {
            result = runChain(version, false, before);
        }
        if (result) {
            made.emplace(m_databases.front().chain->made());
        }
        return result;
    }

    /// What was found, database by database.
    void addTo(check::report & found)
    {
        found.project = m_now ? m_now->getName() : QString();
        for (database_run & each : m_databases) {
            const auto first = static_cast<int>(found.findings.size());
            for (check::finding & one : each.found.findings) {
                one.consequenceOf += one.consequenceOf < 0 ? 0 : first;
                found.findings.push_back(std::move(one));
            }
            found.runs.insert(found.runs.end(), each.found.runs.begin(), each.found.runs.end());
        }
    }

private:
    /// Those that are asked for, else the one that the project's settings name.
    ZkBool takeDatabases()
    {
        if (const ZkBool read = readSettings(m_statements, m_now, m_settings); !read) {
            return read;
        }
        const QList<plugin::friendly_option> & options = m_settings.options;
        const QString stored =
            m_source.isText() ? QString(DatabaseOfTexts) : valueOf(options, DatabaseOption);
        for (const QString & key : m_asked.databases.isEmpty() ? QStringList(stored) : m_asked.databases) {
            if (const QString why = whyNoDatabase({key}); !why.isEmpty()) {
                return ZkBool::failure(why);
            }
            addDatabase(key);
            m_databases.back().settings.relationships =
                valueOf(options, RelationshipsOption) == QLatin1String("yes");
        }
        return ZkBool::success();
    }

    /// What an option of the export is set to for this check.
    [[nodiscard]] QString valueOf(const QList<plugin::friendly_option> & options, QLatin1String name) const
    {
        const auto stored = std::find_if(options.cbegin(), options.cend(),
                                         [&](const plugin::friendly_option & o) { return o.name == name; });
        return m_asked.options.value(name, stored == options.cend() ? QString() : stored->stored);
    }

    void addDatabase(const QString & key)
    {
        database_run run;
        run.key = key;
        run.known = database::factsOf(key);
        run.options = m_asked.options;
        run.options.insert(DatabaseOption, run.known->scripts);
        run.tables = std::make_unique<database::table_memory>();
        run.chain = std::make_unique<check::checker>(*run.known, key, run.tables.get());
        for (const plugin::statement_database & each : std::as_const(m_settings.databases)) {
            for (const auto & [cppType, sqlType] :
                 each.key == run.known->scripts ? each.types : decltype(each.types)()) {
                run.settings.mappedTypes.insert(cppType);
            }
        }
        m_databases.push_back(std::move(run));
    }

    ZkBool judgeFull()
    {
        for (database_run & each : m_databases) {
            check::script full;
            full.to = versionWord(Now);
            full.now = m_now;
            full.isFull = true;
            full.isCurrent = true;
            full.step = QStringLiteral("full");
            // A version has most of its tables in common with the state.
            const bool hasVersions = m_source.newestVersion() > 0;
            auto whole = std::make_unique<check::checker>(*each.known, each.key,
                                                          hasVersions ? each.tables.get() : nullptr);
            if (const ZkBool told = judgeFullScript(m_statements, each.options, *whole, full, &each.found);
                !told) {
                return told;
            }
            whole->lookAtModel(full, whole->stored(), each.settings, each.found);
            if (hasVersions) {
                each.state = whole->takeStored();
            }
            discard(std::move(whole));
        }
        return ZkBool::success();
    }

    ZkBool judgeHistory()
    {
        const int newest = m_source.newestVersion();
        std::shared_ptr<model::project> before;
        ZkBool result = runChain(newest, m_asked.scripts != judged_scripts::usual, before);
        if (result && newest > 0) {
            result = runStep(before, m_now, newest, newest + 1, true);
        }
        return result;
    }

    ZkBool judgeStep()
    {
        const int newest = m_source.newestVersion();
        const int to = m_asked.to.value_or(Now);
        const int toNumber = to == Now ? newest + 1 : to;
        const int from = m_asked.from ? *m_asked.from : toNumber - 1;
        for (const int each : {from, to}) {
            if (const ZkBool there = m_source.checkVersion(each); !there) {
                return there;
            }
        }
        if (to == Now) {
            prepareState();
        }
        std::shared_ptr<model::project> before;
        ZkBool result = runChain(from, false, before);
        std::shared_ptr<model::project> after = m_now;
        if (result && to != Now) {
            result = load(to, after);
        }
        return result ? runStep(before, after, from, toNumber, true) : result;
    }

    /// Makes the new databases of the state while no other version needs memory. One that fails is tried
    /// again when it is needed, after what can be told without it.
    void prepareState()
    {
        for (database_run & each : m_databases) {
            ZkBool result = ZkBool::success();
            database::catalogue made = newDatabase(each, m_now, result);
            if (result) {
                each.state = std::move(made);
            }
        }
    }

    /// Runs the scripts of the history up to a version, which is handed out.
    ZkBool runChain(int last, bool isTold, std::shared_ptr<model::project> & newest)
    {
        for (int number = 1; number <= last; ++number) {
            std::shared_ptr<model::project> version;
            ZkBool result = load(number, version);
            if (result) {
                result = runStep(newest, version, number - 1, number, isTold);
            }
            if (!result) {
                return result;
            }
            newest = version;
        }
        return ZkBool::success();
    }

    ZkBool load(int number, std::shared_ptr<model::project> & version)
    {
        const bool isState = number > m_source.newestVersion();
        const auto look = [this, number](const std::shared_ptr<model::project> & restored) {
            stored_settings stored;
            // Nothing is said of settings that cannot be read; the model of the version can.
            if (readSettings(m_statements, restored, stored)) {
                m_settingsThen.insert_or_assign(number, std::move(stored));
            }
        };
        const ZkBool loaded = m_source.load(isState ? Now : number, version, look);
        if (loaded) {
            version->setName(m_now->getName());
        }
        return loaded;
    }

    ZkBool runStep(const std::shared_ptr<model::project> & before,
                   const std::shared_ptr<model::project> & after, int from, int to, bool isTold)
    {
        for (database_run & each : m_databases) {
            check::script step;
            step.from = from == 0 ? QString() : versionWord(from);
            step.to = toWord(to, m_source.newestVersion());
            step.step = from == 0 ? versionWord(to) : step.from + QLatin1Char('-') + versionWord(to);
            step.before = before;
            step.now = after;
            step.isCurrent = after == m_now;
            step.otherSettings = otherSettingsOf(each, from);
            check::report * const found = isTold ? &each.found : nullptr;
            const ZkBool told =
                judgeStepScript(m_statements, each.options, *each.chain, step, from, to, found);
            if (!told) {
                return told;
            }
            const ZkBool compared = isTold && before ? compare(each, step) : ZkBool::success();
            if (!compared) {
                return compared;
            }
        }
        return ZkBool::success();
    }

    /// What is stored otherwise since the version was tagged that a step begins with.
    [[nodiscard]] QStringList otherSettingsOf(const database_run & of, int from) const
    {
        const auto then = m_settingsThen.find(from);
        return then == m_settingsThen.end()
                   ? QStringList()
                   : otherSettings(then->second, m_settings, of.known->scripts, m_asked.options);
    }

    /// Compares what a step left with new databases. A failure is one of making their statements.
    ZkBool compare(database_run & of, const check::script & step)
    {
        ZkBool result = ZkBool::success();
        std::optional<database::catalogue> known;
        if (step.now == m_now) {
            known = std::exchange(of.state, {}); // one step alone leads to the state
        }
        database::catalogue now = known ? std::move(*known) : newDatabase(of, step.now, result);
        if (!result) {
            return result;
        }
        of.chain->compare(
            step, now,
            [&] {
                // The first version is made as a whole, so a history holds then what a new database does.
                return step.from == versionWord(1) ? of.chain->storedBefore()
                       : of.previous               ? *of.previous
                                                   : newDatabase(of, step.before, result);
            },
            [&] { return m_statements.fullStatements(*step.now, of.options).records; }, of.found);
        of.previous = std::move(now);
        return result;
    }

    /// What the full script of the model makes. A failure goes to `result`, which is left alone otherwise.
    database::catalogue newDatabase(const database_run & of, const std::shared_ptr<model::project> & model,
                                    ZkBool & result)
    {
        check::script full;
        full.now = model;
        full.isFull = true;
        auto whole = std::make_unique<check::checker>(*of.known, of.key, of.tables.get());
        if (const ZkBool made = judgeFullScript(m_statements, of.options, *whole, full, nullptr); !made) {
            result = made;
        }
        database::catalogue stored = whole->takeStored();
        discard(std::move(whole));
        return stored;
    }

    /// Takes apart what is not needed any more while the work goes on: a large one takes long. Without room
    /// for a thread that happens when the next one is discarded.
    void discard(std::unique_ptr<check::checker> spent)
    {
        m_discarded = std::async([of = std::move(spent)]() mutable { of.reset(); });
    }

    plugin::statement_source & m_statements;
    source & m_source;
    const check_request & m_asked;
    std::shared_ptr<model::project> m_now;
    stored_settings m_settings;                    ///< of the state
    std::map<int, stored_settings> m_settingsThen; ///< of versions, by their numbers
    std::vector<database_run> m_databases;
    std::future<void> m_discarded; ///< done when the last one is taken apart
};

} // namespace

bool isNeighbour(int from, int to)
{
    return to == from + 1;
}

ZkBool useKeptNames(plugin::statement_source & statements, source & of, const QString & database,
                    const plugin::friendly_settings & options, int from, const model::project & now,
                    std::vector<plugin::statement_record> & records)
{
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    check_request asked;
    asked.databases = {database};
    asked.options = options;
    std::optional<check::made_objects> made;
    const ZkBool result = check_run(statements, of, asked).findMade(from, made);
    if (made) {
        check::useKeptNames(*made, now, records);
    }
    return result;
}

ZkBool checkSource(plugin::statement_source & statements, source & of, const check_request & asked,
                   check::report & found)
{
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    check_run run(statements, of, asked);
    const ZkBool result = run.run();
    run.addTo(found);
    return result;
}

} // namespace app
