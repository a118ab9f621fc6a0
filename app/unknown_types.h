#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace model {
class project;
}

namespace plugin {
class statement_source;
}

namespace app {

/// A C++ type of columns, and where it is.
struct column_type
{
    QString name;
    QString first; ///< "customer.age"
    int count = 0; ///< of the columns that have it
};

/// The C++ types of the columns whose SQL type a type mapping says, in the order of the model.
[[nodiscard]] QList<column_type> columnTypes(const model::project & project);

/// One line for each of `types` that the type mapping of the project file `file` does not know, for the
/// database that is stored with it: an export takes the default type for it. With the nearest one that is
/// known. Nothing when the settings cannot be read, which whoever exports is told.
[[nodiscard]] QStringList unknownTypes(plugin::statement_source & statements, const QString & file,
                                       const QList<column_type> & types);

} // namespace app
