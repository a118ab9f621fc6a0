#include "app/script_judging.h"

#include "app/check_run.h"

#include "check/script_judge.h"
#include "check/view/kept_names.h"

#include <functional>

namespace app {

namespace {

using zk::ZkBool;

/// Judges a script that begins with nothing while it is made.
ZkBool judgeMade(check::checker & with, check::script & script, check::report * told,
                 const std::function<ZkBool(const plugin::statement_receiver &)> & make)
{
    check::script_judge judge(with, script, told);
    ZkBool made = make([&judge](plugin::statement_record record) { judge.take(std::move(record)); });
    if (made || judge.isBegun()) {
        judge.end();
    }
    return made;
}

/// Judges a script that is made already.
void judgeWhole(check::checker & with, check::script & script, std::vector<plugin::statement_record> records,
                check::report * told)
{
    script.records = std::move(records);
    script.name = script.records.empty() ? QString() : script.records.front().script;
    with.run(script, told);
}

} // namespace

ZkBool judgeFullScript(plugin::statement_source & statements, const plugin::friendly_settings & options,
                       check::checker & with, check::script & full, check::report * told)
{
    return judgeMade(with, full, told, [&](const plugin::statement_receiver & receiver) {
        return statements.fullStatements(*full.now, options, receiver).outcome;
    });
}

ZkBool judgeStepScript(plugin::statement_source & statements, const plugin::friendly_settings & options,
                       check::checker & with, check::script & step, int from, int to, check::report * told)
{
    const plugin::project_step ends{step.before, step.now, from, to};
    if (!step.before) {
        return judgeMade(with, step, told, [&](const plugin::statement_receiver & receiver) {
            return statements.stepStatements(ends, options, receiver).outcome;
        });
    }
    // What it is about may have another name, and rules look at all of it.
    plugin::statement_list list = statements.stepStatements(ends, options);
    if (!isNeighbour(from, to)) {
        check::useKeptNames(with.made(), *step.now, list.records);
    }
    if (list.outcome || !list.records.empty()) {
        judgeWhole(with, step, std::move(list.records), told);
    }
    return list.outcome;
}

} // namespace app
