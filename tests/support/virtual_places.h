#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <vector>

namespace support {

/// The places of virtual member functions in the table of their class, as the platform's binary interface
/// writes them into a pointer to such a function.
template <class... Functions>
std::vector<std::size_t> virtualPlaces(Functions... functions)
{
    const auto placeOf = [](auto function) {
        std::array<std::size_t, 2> words{};
        static_assert(sizeof function == sizeof words);
        std::memcpy(words.data(), &function, sizeof words);
        return words[0] / sizeof(void *);
    };
    return {placeOf(functions)...};
}

/// `count` places one behind the other, from that of the first of `places` on.
inline std::vector<std::size_t> inARow(const std::vector<std::size_t> & places, std::size_t count)
{
    std::vector<std::size_t> expected;
    for (std::size_t i = 0; i < count; ++i) {
        expected.push_back(places.front() + i);
    }
    return expected;
}

} // namespace support
