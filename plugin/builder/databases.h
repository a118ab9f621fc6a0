#pragma once

#include "plugin/builder/default_type_mapping.h"
#include "plugin/ddl_export.h"

#include <QString>

#include <memory>
#include <span>

namespace plugin {

class ddl_export_builder;

/// One database that scripts are written for. All that tells databases apart, but for the statements of their
/// dialects, is asked of this.
struct database
{
    ddl_export::database_type number; ///< as it is stored and given on the command line
    const char * key;                 ///< what a person calls it on the command line
    const char * label;               ///< what a window calls it
    const char * shortName;           ///< a part of the names of script files
    const char * default_type::*types;
    std::shared_ptr<ddl_export_builder> (*create)(ddl_export * plugin);

    [[nodiscard]] QString getShortName() const { return QString::fromLatin1(shortName); }
};

/// All databases, by number.
[[nodiscard]] std::span<const database> allDatabases();

/// The row of `db`; that of generic SQL for a number outside the enumeration.
[[nodiscard]] const database & databaseOf(ddl_export::database_type db);

/// A new builder of the dialect of `db`, reading its settings through `plugin` (not owned, may be null); the
/// generic builder for a number outside the enumeration.
[[nodiscard]] std::shared_ptr<ddl_export_builder> createBuilder(ddl_export::database_type db,
                                                                ddl_export * plugin);

} // namespace plugin
