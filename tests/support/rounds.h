#pragma once

#include <QtGlobal>

namespace support {

/// How often a test repeats what depends on chance or on the moment: `whole` times, or the part of it that
/// the environment asks for in per cent (KORVANE_TEST_ROUNDS), where every round takes many times as long, as
/// under the sanitizers.
inline int rounds(int whole)
{
    const int share = qBound(1, qEnvironmentVariable("KORVANE_TEST_ROUNDS", "100").toInt(), 100);
    return qMax(1, whole * share / 100);
}

} // namespace support
