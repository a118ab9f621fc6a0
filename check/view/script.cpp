#include "check/view/script.h"

namespace check {

QString script::step() const
{
    if (!from.isEmpty()) {
        return from + QLatin1Char('-') + to;
    }
    return isFull ? QStringLiteral("full") : to;
}

} // namespace check
