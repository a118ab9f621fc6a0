#pragma once

#include "korvane_global.h"
#include "model/object_kind.h"

#include <QByteArray>
#include <QHash>

#include <array>
#include <optional>
#include <vector>

namespace model {
class project;
}

namespace storage {

/// A place in a text; 1 is the first of both.
struct text_place
{
    int line = 0;
    int column = 0; ///< in UTF-16 code units, as editors and tools count them

    friend bool operator==(const text_place &, const text_place &) = default;
};

/// Where the objects of a project begin in the text form that it was read from.
class KORVANE_EXPORT text_places
{
public:
    /// @param text a text that text_form::read() has taken
    /// @param project what it made of it, unchanged since
    text_places(const QByteArray & text, const model::project & project);

    /// Nothing for an object that the project does not have.
    [[nodiscard]] std::optional<text_place> find(model::object_kind kind, long id) const;

private:
    using offsets = QHash<long, qsizetype>;

    [[nodiscard]] offsets & of(model::object_kind kind) { return m_offsets[static_cast<std::size_t>(kind)]; }

    QByteArray m_text;
    std::vector<qsizetype> m_lineBegins{0}; ///< in bytes
    std::array<offsets, 4> m_offsets;       ///< by kind, in bytes
};

} // namespace storage
