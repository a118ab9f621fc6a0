#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>

namespace support {

/// Lets files of this process, and of those that it starts, grow to `bytes` only, for as long as it lives:
/// what a full disk does to a writer. Programs that are started meanwhile leave their counts of branches
/// elsewhere: cut off in the middle, they would spoil those of all others.
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
        qputenv("GCOV_PREFIX", QFile::encodeName(m_counts.path()));
        qputenv("GCOV_ERROR_FILE", "/dev/null");
    }
    ~full_disk()
    {
        qunsetenv("GCOV_ERROR_FILE");
        qunsetenv("GCOV_PREFIX");
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_handler);
    }
    full_disk(const full_disk &) = delete;
    full_disk & operator=(const full_disk &) = delete;

private:
    QTemporaryDir m_counts;
    rlimit m_former{};
    void (*m_handler)(int) = nullptr;
};

} // namespace support
