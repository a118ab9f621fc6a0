#include "app/silent_step.h"

#include "app/compared_states.h"
#include "app/project_work.h"
#include "app/source.h"
#include "app/step_script.h"

#include "model/model_difference.h"

#include <algorithm>

namespace app {

QString silentStep(plugin::statement_source & statements, const QString & file, int from, int to)
{
    compared_states states;
    if (!loadStates({file, versionWord(from), versionWord(to)}, states)) {
        return {};
    }
    const std::vector<model::model_change> changes = model::difference(*states.before, *states.after);
    script_request request;
    request.noCustomScript = true; // which statements there are, it does not decide
    step_script script;
    if (changes.empty() || !makeStepScript(statements, states, changes, request, script) ||
        !std::all_of(script.statements.begin(), script.statements.end(),
                     [](const step_statement & s) { return s.isFrame(); })) {
        return {};
    }
    return QStringLiteral("No statement follows the %1 since %2: databases stay as they are; "
                          "'korvane diff %3 %4 --db %5' shows what changed")
        .arg(changes.size() == 1 ? QStringLiteral("change")
                                 : QStringLiteral("%1 changes").arg(changes.size()),
             states.from, shownName(file), to == Now ? states.from : states.from + u' ' + states.to,
             script.database);
}

} // namespace app
