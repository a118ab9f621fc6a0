#pragma once

#include <csignal>
#include <sys/resource.h>

namespace support {

/// Lets files of this process grow to `bytes` only, for as long as it lives: what a full disk does to a
/// writer.
class full_disk
{
public:
    explicit full_disk(rlim_t bytes)
    {
        // Without this the kernel ends the process, where a disk only refuses.
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_former);
        rlimit limit = m_former;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~full_disk()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_handler);
    }
    full_disk(const full_disk &) = delete;
    full_disk & operator=(const full_disk &) = delete;

private:
    rlimit m_former{};
    void (*m_handler)(int) = nullptr;
};

} // namespace support
