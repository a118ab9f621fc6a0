#pragma once

#include "app/diagram/diagram_contents.h"

namespace app {

/// An entity between those that it is related to: those that it refers to at its left, others at its right.
struct neighbour_diagram
{
    diagram_picture picture; ///< empty when there are no neighbours
    int hidden = 0;          ///< neighbours that have no place
};

/// @param entity index in `graph`
[[nodiscard]] neighbour_diagram neighboursOf(const diagram_graph & graph, int entity);

} // namespace app
