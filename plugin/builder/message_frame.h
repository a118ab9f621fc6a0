#pragma once

#include <QString>

#include <initializer_list>
#include <vector>

namespace plugin {

/// A text with places (%1 to %9) that is taken apart once, to be filled for each of many statements: what
/// QString::arg() looks for in the whole text every time.
class message_frame
{
public:
    message_frame() = default;
    explicit message_frame(const QString & text);

    [[nodiscard]] bool isEmpty() const { return m_parts.empty(); }
    /// The text with `values` in its places, the first one in that of %1. A place without a value stays
    /// empty.
    [[nodiscard]] QString filled(std::initializer_list<QString> values) const;

private:
    /// A piece of the text, and the number of the place behind it; 0 for the last one.
    struct part
    {
        QString text;
        std::size_t place = 0;
    };

    std::vector<part> m_parts;
};

} // namespace plugin
