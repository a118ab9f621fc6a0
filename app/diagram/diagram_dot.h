#pragma once

#include "app/diagram/diagram_geometry.h"

#include <QByteArray>

#include <optional>

namespace app {

/// The graph of `request` in dot's language. Boxes are called n0, n1, … and lines e0, e1, …: no text of a
/// user is in it. Boxes without any line are left out, they need no layout.
[[nodiscard]] QByteArray dotText(const diagram_request & request);

/// Reads what `dot -Tjson` answered to dotText(request); nothing when it is no such answer. Boxes that were
/// left out stand in rows below the others.
[[nodiscard]] std::optional<diagram_places> readDotAnswer(const diagram_request & request,
                                                          const QByteArray & json);

} // namespace app
