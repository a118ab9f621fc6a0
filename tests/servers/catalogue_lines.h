#pragma once

#include "database/catalogue/catalogue.h"

#include <QStringList>

namespace servers {

/// What a model asks for and a person compares, a sorted list of lines:
///   "table T", "column T.C TYPE [NOT NULL]", "key T (C, …)", "unique T (C)", "index NAME T (C)",
///   "foreign NAME T (C, …) -> T2 (C2, …)"; a foreign key without a name of its own has the name "-".
/// What a database makes by itself is left out: sequences, names of keys, indexes of foreign keys.
[[nodiscard]] QStringList modelLinesOf(const database::catalogue & held);

/// "subject (a, b)"
[[nodiscard]] QString withColumns(const QString & subject, const QStringList & columns);

} // namespace servers
