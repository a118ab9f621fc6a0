#pragma once

#include "support/model_builder.h"

#include <memory>
#include <optional>
#include <vector>

namespace support {

/// A model in plain values, to be changed by chance and then made into objects.
struct draft_property
{
    long id = 0;
    QString name;
    QString columns; ///< as the model has them: names with bars between
    QStringList types;
    QString forced;
    bool isKey = false;
    bool isNullable = true;
    bool isUnique = false;
    bool isIndex = false;
    bool isTransient = false;
    std::optional<bool> isCounted;
    long relationId = 0; ///< 0 for a property without a relationship
    model::relationship::type_relation relation = model::relationship::many_to_one;
    long target = 0;
    long inverse = 0;
    QString linkTable;
    QString linkColumns;    ///< those that refer to the property's entity
    QString inverseColumns; ///< those that refer to the target
};

struct draft_entity
{
    long id = 0;
    long version = 1;
    QString name;
    QString table; ///< empty for the name
    QString softDelete;
    bool hasTable = true;
    std::vector<draft_property> properties;
};

/// "name0", "name1", …
[[nodiscard]] QStringList numbered(const QString & name, int count);

/// The model that the draft describes, as objects of its own.
[[nodiscard]] std::shared_ptr<model::project> projectOf(const std::vector<draft_entity> & draft);

} // namespace support
