#pragma once

#include <QVariant>

#include <limits>

namespace model {

/// `value` as one of the types in which meta-data is kept: text, boolean, signed or (only when too large for
/// that) unsigned 64-bit integer, double.
[[nodiscard]] inline QVariant metaValue(const QVariant & value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::LongLong:
        return value;
    case QMetaType::Double:
    case QMetaType::Float:
        return value.toDouble() + 0.0; // a negative zero becomes the zero that it equals
    case QMetaType::ULongLong:
    case QMetaType::ULong:
        if (value.toULongLong() > static_cast<qulonglong>(std::numeric_limits<qlonglong>::max())) {
            return value.toULongLong();
        }
        [[fallthrough]];
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
        return value.toLongLong();
    default:
        return value.toString();
    }
}

} // namespace model
