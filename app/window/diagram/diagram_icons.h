#pragma once

#include <QIcon>
#include <QPalette>

namespace app {

/// The diagram's icon of that name ("zoom_in", "save", …) in the colours of `palette`: its text's, and paler
/// for what is disabled.
[[nodiscard]] QIcon diagramIcon(const QString & name, const QPalette & palette);

} // namespace app
