#pragma once

#include "app/compared_states.h"

#include "check/finding/finding.h"
#include "model/model_difference.h"
#include "plugin/statement_source.h"
#include "zk/zk_bool.h"

#include <QString>

#include <vector>

namespace app {

class source;

/// A statement as a server runs it: a record of the export may hold several, or none but a comment.
struct step_statement
{
    check::statement_place place;
    std::vector<int> causes; ///< indexes into the changes of the step

    /// Whether it is one of those that are around the statements of every script.
    [[nodiscard]] bool isFrame() const
    {
        using plugin::statement_action;
        return !place.isCustom &&
               (place.action == statement_action::begin || place.action == statement_action::end);
    }
};

/// A script, as an export writes it.
struct step_script
{
    QString database; ///< key, as on the command line
    QString label;    ///< of the database, for people
    QByteArray bytes; ///< as an export writes them
    std::vector<step_statement> statements;
};

/// Which script leads from one state to another.
enum class script_kind
{
    step,
    first, ///< of the first version, which is made as a whole
    full   ///< the full schema
};

/// What a script is made with.
struct script_request
{
    script_kind kind = script_kind::step; ///< the others begin with nothing, whatever the state before is
    QString database; ///< see whyNotOneDatabase(); empty for the stored one, or SQLite for a text form
    plugin::friendly_settings options; ///< of the export, beside the database
    /// Whose versions the step lies between; null for a step without a history.
    source * history = nullptr;
};

/// Makes a script of `states`, whose changes are `changes`. The project whose settings count is the current
/// one meanwhile. A step that no export writes, since it jumps over versions, has the names that the scripts
/// of the history left. A failure is one line, and `script` has what was made until then.
[[nodiscard]] zk::ZkBool makeStepScript(plugin::statement_source & source, const compared_states & states,
                                        const std::vector<model::model_change> & changes,
                                        const script_request & request, step_script & script);

} // namespace app
