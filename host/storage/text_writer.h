#pragma once

#include <QByteArray>

namespace model {
class project;
}

namespace storage::text_writer {

/// The text form of `project`: one line a property and one a field of everything above it, so that a
/// difference between two texts is a difference of few lines.
[[nodiscard]] QByteArray projectText(const model::project & project);

} // namespace storage::text_writer
