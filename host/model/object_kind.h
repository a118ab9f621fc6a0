#pragma once

namespace model {

/// What has ids of its own: an id stands for one object of its kind.
enum class object_kind
{
    entity,
    property,
    relationship,
    enumeration
};

} // namespace model
