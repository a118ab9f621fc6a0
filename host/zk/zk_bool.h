#pragma once

#include "korvane_global.h"

#include <QString>

namespace zk {

/// Result of an operation that can fail: a success flag, a numeric code and a text.
///
/// A failure carries the message to show; a success carries an empty text, except where an operation
/// documents that it hands its answer over in the text (the script engine does).
class KORVANE_EXPORT ZkBool
{
public:
    /// A success (or a failure without any explanation) with code 0.
    explicit ZkBool(bool value = false) : m_bValue(value) {}
    ZkBool(bool value, long code, const QString & desc) : m_bValue(value), m_iCode(code), m_sDesc(desc) {}

    /// A success whose text is `desc`.
    static ZkBool success(const QString & desc = QString()) { return ZkBool(true, 0, desc); }
    /// A failure with code 0 and the message `desc`.
    static ZkBool failure(const QString & desc) { return ZkBool(false, 0, desc); }

    [[nodiscard]] bool getValue() const { return m_bValue; }
    [[nodiscard]] long getCode() const { return m_iCode; }
    [[nodiscard]] QString getDesc() const { return m_sDesc; }
    explicit operator bool() const { return m_bValue; }

private:
    bool m_bValue = false;
    long m_iCode = 0;
    QString m_sDesc;
};

} // namespace zk
