#pragma once

#include "app/compared_states.h"
#include "app/step_script.h"

#include "model/model_difference.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace app {

/// What changed from one state of a project to another.
struct diff_report
{
    compared_states states;
    bool hasTwoSources = false;
    std::vector<model::model_change> changes;
    std::optional<step_script> script; ///< when its statements are asked for
};

/// For people: entity by entity, in words of the model.
[[nodiscard]] QByteArray diffText(const diff_report & report);
/// The same as Markdown.
[[nodiscard]] QByteArray diffMarkdown(const diff_report & report);
/// The form "korvane.diff", see resources/schema/diff.schema.json.
/// @param program version of the program
[[nodiscard]] QByteArray diffJson(const diff_report & report, const QString & program);

} // namespace app
