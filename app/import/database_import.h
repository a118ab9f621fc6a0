#pragma once

#include "app/diff_report.h"
#include "app/import/schema_source.h"

#include "check/import/model_merge.h"
#include "zk/zk_bool.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace plugin {
class statement_source;
}

namespace app {

/// What a command line says of an import from a database.
struct database_import_request
{
    schema_request from;
    QString projectFile;
    QStringList tables;     ///< patterns of names; empty for all
    bool tellsLinks = true; ///< a table that only links two others becomes many-to-many
    bool isPlan = false;    ///< nothing is stored
};

/// What of a database becomes a model, and where that goes.
struct import_choice
{
    QString projectFile;
    std::function<bool(const QString & table)> isChosen;
    bool tellsLinks = true; ///< as above
    bool isPlan = false;
};

struct database_import_result
{
    zk::ZkBool result;
    QString projectName;
    long entities = 0;
    std::optional<diff_report> plan; ///< what would change; nothing unless asked for
    QList<database::left_out>
        leftOut; ///< by table: what the model has no place for, or scripts make otherwise
    std::vector<check::possible_rename> renames;
};

/// Makes the model of a project that of a database; what has no name there stays. A failure is one line.
/// @param statements of the plug-in whose scripts are to make the same types again
[[nodiscard]] database_import_result importDatabase(const database_import_request & request,
                                                    plugin::statement_source & statements);
/// The same for a database that was read.
[[nodiscard]] database_import_result importSchema(const held_schema & held, const import_choice & choice,
                                                  plugin::statement_source & statements);

/// What a person is told of possible renames, one line each: which id to write where, in the text form.
/// @param isPlan whether nothing is stored yet
[[nodiscard]] QStringList renameLines(const std::vector<check::possible_rename> & renames, bool isPlan);

} // namespace app
