#pragma once

#include "app/import/schema_source.h"

#include "check/import/model_merge.h"
#include "zk/zk_bool.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

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

struct database_import_result
{
    zk::ZkBool result;
    QString projectName;
    long entities = 0;
    QByteArray plan; ///< what would change; empty unless asked for
    QList<database::left_out>
        leftOut; ///< by table: what the model has no place for, or scripts make otherwise
    std::vector<check::possible_rename> renames;
};

/// Makes the model of a project that of a database; what has no name there stays. A failure is one line.
/// @param statements of the plug-in whose scripts are to make the same types again
[[nodiscard]] database_import_result importDatabase(const database_import_request & request,
                                                    plugin::statement_source & statements);

/// What a person is told of possible renames, one line each: which id to write where, in the text form.
/// @param isPlan whether nothing is stored yet
[[nodiscard]] QStringList renameLines(const std::vector<check::possible_rename> & renames, bool isPlan);

} // namespace app
