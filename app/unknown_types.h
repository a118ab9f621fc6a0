#pragma once

#include <QString>
#include <QStringList>

namespace model {
class project;
}

namespace plugin {
class statement_source;
}

namespace app {

/// One line for each C++ type of the columns of `project` that its type mapping does not know, so that an
/// export takes the default type for it, with the nearest one that is known.
/// @param known C++ types of the mapping
/// @param fallback the SQL type that is taken
[[nodiscard]] QStringList unknownTypes(const model::project & project, const QStringList & known,
                                       const QString & fallback);

/// The same for the type mapping that is stored with the project file `file`, for the database that is
/// stored. Nothing when that cannot be read, which whoever exports is told.
[[nodiscard]] QStringList unknownTypes(plugin::statement_source & statements, const QString & file);

} // namespace app
