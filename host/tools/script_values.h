#pragma once

#include "tools/script_stop.h"

#include <QHash>
#include <QJSValue>
#include <QString>
#include <QVariant>

namespace model {
class project;
class entity;
class property;
class enumeration;
} // namespace model

namespace tools {

/// A value for a person to read, of bounded length: texts quoted, the members of arrays and plain objects.
/// Runs no function of the script but the getters of such objects.
[[nodiscard]] QString describe(const QJSValue & value);

/// What a call of exportStep with these objects, which may be null, and parameters is about. `arguments` are
/// the script's values of the same, in the same order.
[[nodiscard]] script_step describeStep(const model::project * project, const model::entity * entity,
                                       const model::property * property,
                                       const model::enumeration * enumeration,
                                       const QHash<QString, QVariant> & parameters,
                                       const QJSValueList & arguments);

/// What kind of value it is, with its article; for one that is neither a text nor missing.
[[nodiscard]] QString kindOf(const QJSValue & value);

} // namespace tools
