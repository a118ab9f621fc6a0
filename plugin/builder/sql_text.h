#pragma once

#include <QLatin1String>
#include <QString>

namespace plugin {

/// `count` pieces of text, piece(0) to piece(count - 1), with `separator` between them.
template <class Piece>
[[nodiscard]] QString joined(int count, QLatin1String separator, Piece piece)
{
    QString text;
    for (int i = 0; i < count; ++i) {
        if (i > 0) {
            text += separator;
        }
        text += piece(i);
    }
    return text;
}

inline constexpr QLatin1String ListSeparator(", ");
inline constexpr QLatin1String StatementSeparator("\n");

/// Takes the separator away that the last item of a list left behind.
inline void chopListSeparator(QString & sql)
{
    if (sql.endsWith(ListSeparator)) {
        sql.chop(ListSeparator.size());
    }
}

} // namespace plugin
