#pragma once

#include "zk/zk_bool.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <utility>

namespace model {
class project;
}

namespace plugin {
class statement_source;
}

namespace app {

struct sql_column
{
    QString name;
    QStringList types; ///< by database; empty where its table has no such column
};

struct sql_table
{
    QString name;
    QList<sql_column> columns;

    [[nodiscard]] bool hasColumn(const QString & column) const;
};

/// The tables of a model, as full scripts for several databases make them.
struct sql_schema
{
    QStringList databases;                        ///< names for people
    QHash<long, sql_table> tables;                ///< by the id of the entity
    QList<std::pair<long, sql_table>> linkTables; ///< with the id of the relationship, in the scripts' order
};

/// Reads the scripts of `project` for the databases of `keys` (see app/database_choice.h), each kind of
/// script once. The custom script has no say: what the model means is asked for. A failure is one line.
[[nodiscard]] zk::ZkBool readSqlSchema(plugin::statement_source & statements,
                                       const std::shared_ptr<model::project> & project,
                                       const QStringList & keys, sql_schema & schema);

} // namespace app
