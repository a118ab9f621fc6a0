#pragma once

#include "storage/model_check.h"

#include <QByteArray>

#include <nlohmann/json.hpp>

/// JSON text as a tree, with the errors that a person needs to find the place.
namespace storage::text_tree {

/// Thrown inside the reading of a text only; storage::text_form::read() turns it into its result.
struct text_error
{
    model_check::finding finding;
};

/// The tree of `text`. Refused with a text_error: what is no JSON, a field given twice, nesting that is too
/// deep.
[[nodiscard]] nlohmann::json parse(const QByteArray & text);

/// The text under "name" in `object`, as far as there is one.
[[nodiscard]] QString nameIn(const nlohmann::json & object);

} // namespace storage::text_tree
