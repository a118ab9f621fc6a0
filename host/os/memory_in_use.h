#pragma once

#include <cstddef>

namespace os {

/// Bytes of memory that the program occupies; 0 where the system does not tell. By calls that a signal
/// handler may make.
[[nodiscard]] std::size_t memoryInUse() noexcept;

} // namespace os
