#include "os/memory_in_use.h"

#include <array>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace os {

std::size_t memoryInUse() noexcept
{
    std::array<char, 128> text{};
    const int file = ::open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return 0;
    }
    const bool isRead = ::read(file, text.data(), text.size() - 1) > 0;
    ::close(file);
    const char * pages = isRead ? std::strchr(text.data(), ' ') : nullptr;
    std::size_t count = 0;
    for (; pages && pages[1] >= '0' && pages[1] <= '9'; ++pages) {
        count = count * 10 + static_cast<std::size_t>(pages[1] - '0');
    }
    return count * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace os
