#pragma once

#include "app/compared_states.h"
#include "app/step_script.h"

#include "check/finding/finding.h"
#include "model/model_difference.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace app {

/// What a finding of a report is about.
struct finding_place
{
    int statement = -1;      ///< index into the statements of the script; -1 for none
    std::vector<int> causes; ///< indexes into the changes; none when no change explains it
};

/// What changed from one state of a project to another.
struct diff_report
{
    compared_states states;
    bool hasTwoSources = false;
    std::vector<model::model_change> changes;
    std::optional<step_script> script; ///< when its statements are asked for
    /// What a database says to the script; empty for a step backwards, which is not judged.
    check::report found;
    std::vector<finding_place> places; ///< of the findings, in their order
};

/// Loads what `request` names and finds what changed. A failure is one line.
[[nodiscard]] zk::ZkBool compareStates(const comparison_request & request, diff_report & report);
/// The same for two versions of `of`, which is open, or its state for `Now`.
[[nodiscard]] zk::ZkBool compareVersions(const std::shared_ptr<source> & of, int from, int to,
                                         diff_report & report);
/// Adds the script of the step.
[[nodiscard]] zk::ZkBool addScript(plugin::statement_source & statements, const script_request & request,
                                   diff_report & report);
/// Adds the findings about that script, as `korvane check` has them, acceptance file included.
/// @param options of the export, beside its database
[[nodiscard]] zk::ZkBool addFindings(plugin::statement_source & statements,
                                     const plugin::friendly_settings & options, diff_report & report);

/// For people: entity by entity, in words of the model.
[[nodiscard]] QByteArray diffText(const diff_report & report);
/// The same as Markdown.
[[nodiscard]] QByteArray diffMarkdown(const diff_report & report);
/// The form "korvane.diff", see resources/schema/diff.schema.json.
/// @param program version of the program
[[nodiscard]] QByteArray diffJson(const diff_report & report, const QString & program);

} // namespace app
