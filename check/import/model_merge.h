#pragma once

#include "check/import/mapped_types.h"
#include "database/catalogue/catalogue.h"
#include "database/facts/facts.h"
#include "model/object_kind.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace model {
class project;
}

namespace check {

/// The ids that the next new objects get.
struct next_ids
{
    long entity = 1;
    long property = 1;
    long relationship = 1;
};

/// A database that is to become the model of a project.
struct schema_import
{
    const database::catalogue & found; ///< what the database holds, in normal form
    const database::facts & known;
    const mapped_types & types;
    /// What the scripts of the former project make, in normal form: what is the same in the database stays as
    /// the model has it. Nothing without a former project.
    std::optional<database::catalogue> meant;
    std::function<bool(const QString & table)> isSelected; ///< others are no part of the import
    bool tellsLinks = true; ///< tables that only link others become many-to-many
    next_ids ids;
};

/// Two objects that may be one: what is gone from the model, and what is new in it.
struct possible_rename
{
    model::object_kind kind = model::object_kind::entity;
    long formerId = 0;
    long id = 0;
    QString former; ///< table, or table and column
    QString current;
    std::vector<std::pair<long, long>>
        properties; ///< of an entity: former and new ids of those of one column
};

/// Makes the model of `former` that of the database: objects are told apart by the names of their tables and
/// columns, and what the database says nothing about stays as it is.
///
/// @param former a project that nobody else uses, without objects for a new one; its objects become those of
/// the result
/// @param into receives the model; its objects have ids, and versions that `former` gave
/// @return what may have been renamed, which a person has to say
[[nodiscard]] std::vector<possible_rename> mergeSchema(const schema_import & import, model::project & former,
                                                       model::project & into);

} // namespace check
