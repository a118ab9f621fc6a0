#pragma once

#include "app/document/documented_model.h"

#include <QByteArray>

namespace app {

/// The script that tells search.js what there is to be found: a row an entity, property, link table and
/// enumeration, each with its kind, its name, what else it is found by, and its page.
[[nodiscard]] QByteArray searchIndex(const documented_model & of);

} // namespace app
