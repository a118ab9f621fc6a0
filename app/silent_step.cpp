#include "app/silent_step.h"

#include "app/compared_states.h"
#include "app/project_work.h"
#include "app/script_guard.h"
#include "app/source.h"
#include "app/step_script.h"

#include "model/model_difference.h"

#include <algorithm>

namespace app {

QString silentStep(plugin::statement_source & statements, const QString & file, int from, int to,
                   const QString & database)
{
    compared_states states;
    if (!loadStates({file, versionWord(from), versionWord(to)}, states)) {
        return {};
    }
    const std::vector<model::model_change> changes = model::difference(*states.before, *states.after);
    script_request request;
    request.database = database;
    const tools::script_guard_scope guard(commandScriptGuard(true)); // it does not decide which there are
    step_script script;
    if (changes.empty() || !makeStepScript(statements, states, changes, request, script) ||
        !std::all_of(script.statements.begin(), script.statements.end(),
                     [](const step_statement & s) { return s.isFrame(); })) {
        return {};
    }
    return QStringLiteral("No statement for %1 follows the %2 since %3: databases stay as they are; "
                          "'korvane diff %4 %5 --db %6' shows what changed")
        .arg(script.label,
             changes.size() == 1 ? QStringLiteral("change")
                                 : QStringLiteral("%1 changes").arg(changes.size()),
             states.from, shownName(file), to == Now ? states.from : states.from + u' ' + states.to,
             script.database);
}

} // namespace app
