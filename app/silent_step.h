#pragma once

#include <QString>

namespace plugin {
class statement_source;
}

namespace app {

/// Says on one line that the model of the project file `file` changed since a version and that no statement
/// of the step follows any of the changes; empty when that is not so, or cannot be found out.
/// @param from number of the version
/// @param to number of the next one, or `Now`
/// @param database key; empty for the stored one
[[nodiscard]] QString silentStep(plugin::statement_source & statements, const QString & file, int from,
                                 int to, const QString & database);

} // namespace app
