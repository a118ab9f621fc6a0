#pragma once

#include "app/diagram/diagram_graph.h"

#include "model/property.h"
#include "model/relationship.h"

namespace app {

/// A property with a relationship, as it stands in the model.
struct held_relation
{
    int holder = 0;
    int target = 0;
    long propertyId = 0;
    long inverseId = 0;
    model::relationship::type_relation type = model::relationship::many_to_one;
    bool isMandatory = false;
    QString name;
    QString linkTable;
    diagram_change change = diagram_change::none;
};

/// What the property holds, which has a relationship.
/// @param holder index of its entity, `target` of the one that it refers to
[[nodiscard]] held_relation heldRelation(const model::property & property, int holder, int target);
/// The same with one relationship in the place of two properties that are each other's inverse.
[[nodiscard]] QList<diagram_relation> joined(const QList<held_relation> & held);

} // namespace app
