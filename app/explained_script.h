#pragma once

#include "app/step_script.h"

#include "check/finding/finding.h"
#include "zk/zk_bool.h"

#include <QString>

#include <vector>

namespace app {

class source;

/// What the name of a script says, such as "shop_postgresql_db_schema_v2_to_v3.sql".
struct script_name
{
    QString database;                     ///< key
    script_kind kind = script_kind::full; ///< which script it is
    int from = 0;                         ///< of a step
    int to = 0;                           ///< of a step and of the first version
};

struct explained_statement
{
    step_statement statement;
    std::vector<QString> reasons; ///< "because …", one line each; none for the script's frame
    std::vector<const check::finding *> findings; ///< of the report, the worst first
};

/// A script with the reason of each statement.
struct explained_script
{
    script_name name;
    QString from; ///< word of the version that it begins with; empty for none
    QString to;
    QByteArray bytes; ///< as an export writes it now
    std::vector<explained_statement> statements;
    check::report report;
};

/// What the file name `name` says; a failure for one that no export gives.
[[nodiscard]] zk::ZkBool readScriptName(plugin::statement_source & statements, const QString & name,
                                        script_name & read);

/// Explains the script `name` of the project `of` as an export writes it now.
/// @param options of the export, beside its database
/// A failure is one line.
[[nodiscard]] zk::ZkBool explainScript(plugin::statement_source & statements, source & of,
                                       const script_name & name, const plugin::friendly_settings & options,
                                       explained_script & explained);

} // namespace app
