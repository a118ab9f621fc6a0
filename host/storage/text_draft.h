#pragma once

#include "model/enumeration.h"
#include "model/project.h"
#include "model/property_type.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

/// A project as a text says it, before ids and versions that the text leaves open are known.
namespace storage::text_draft {

struct property
{
    std::shared_ptr<model::property> object; ///< id 0 where the text gives none, its relationship's likewise
    long enumerationId = 0;
};

struct entity
{
    std::shared_ptr<model::entity> object; ///< without its properties
    std::optional<long> version;
    std::vector<property> properties;
};

struct project
{
    QString name;
    std::vector<std::shared_ptr<model::enumeration>> enumerations;
    std::vector<entity> entities;
};

/// The draft that `text` describes; throws text_tree::text_error.
[[nodiscard]] project read(const QByteArray & text);

/// Gives every object of `draft` its id: the given one, that of its namesake in `existing` (may be null), or
/// a new one. Throws text_tree::text_error.
void assignIds(project & draft, const model::project * existing);

} // namespace storage::text_draft
