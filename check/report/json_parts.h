#pragma once

#include "check/finding/finding.h"

#include <QByteArray>

#include <nlohmann/json.hpp>

/// What the JSON forms of several commands have in common.
namespace check {

using json = nlohmann::ordered_json;

[[nodiscard]] json textOf(const QString & text);
[[nodiscard]] json textOf(QLatin1String text);
[[nodiscard]] json objectOf(const object & of);
[[nodiscard]] json objectsOf(const std::vector<object> & objects);
[[nodiscard]] json statementOf(const statement_place & of);
/// What a finding says, in short.
[[nodiscard]] json briefOf(const finding & of);
/// The numbers by the words of their severities.
[[nodiscard]] json countsOf(const summary & of);

/// The text of a whole document, for people as well.
[[nodiscard]] QByteArray written(const json & document);

} // namespace check
