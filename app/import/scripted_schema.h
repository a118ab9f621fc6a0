#pragma once

#include "app/import/schema_source.h"

#include "zk/zk_bool.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <utility>

namespace model {
class project;
}

namespace plugin {
class statement_source;
}

namespace app {

/// C++ type to SQL type, as the scripts for a database have them with the settings of `project`.
/// @param scripts key of the database that they are for
[[nodiscard]] zk::ZkBool mappingOf(plugin::statement_source & statements,
                                   const std::shared_ptr<model::project> & project, const QString & scripts,
                                   QList<std::pair<QString, QString>> & mapping);

/// What the full script of `project` makes, relationships included, in normal form. The custom script has no
/// say: what a model means is asked for.
[[nodiscard]] zk::ZkBool scriptedSchema(plugin::statement_source & statements,
                                        const std::shared_ptr<model::project> & project,
                                        const database::facts & known, database::catalogue & made);

/// What scripts make otherwise than it is in the database, by table.
/// @param isSelected whether the table takes part
[[nodiscard]] QList<database::left_out>
madeOtherwise(const held_schema & held, const database::catalogue & made,
              const std::function<bool(const QString & table)> & isSelected);

} // namespace app
