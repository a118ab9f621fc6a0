#include "tools/call_watchdog.h"

#include <utility>

namespace tools {

call_watchdog::call_watchdog(std::function<void()> onOverrun)
    : m_onOverrun(std::move(onOverrun)), m_thread([this] { run(); })
{
}

call_watchdog::~call_watchdog()
{
    {
        const std::lock_guard lock(m_mutex);
        m_bQuit = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void call_watchdog::begin(std::chrono::milliseconds limit)
{
    resume({limit.count() > 0, false, limit});
}

call_watchdog::suspended call_watchdog::suspend()
{
    const std::lock_guard lock(m_mutex);
    const suspended result{m_bWatching, m_bOverrun,
                           m_bWatching ? m_deadline - clock::now() : std::chrono::nanoseconds()};
    m_bWatching = false;
    return result;
}

void call_watchdog::resume(const suspended & former)
{
    bool wake = false;
    {
        const std::lock_guard lock(m_mutex);
        m_bOverrun = former.isOverrun;
        m_bWatching = former.isWatching;
        if (m_bWatching) {
            m_deadline = clock::now() + former.left;
            wake = m_deadline < m_sleepsUntil;
        }
    }
    if (wake) {
        m_wake.notify_one();
    }
}

bool call_watchdog::end()
{
    const std::lock_guard lock(m_mutex);
    m_bWatching = false;
    return m_bOverrun;
}

void call_watchdog::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_bQuit) {
        if (m_bWatching && clock::now() >= m_deadline) {
            m_bWatching = false;
            m_bOverrun = true;
            m_onOverrun();
        }
        m_sleepsUntil = m_bWatching ? m_deadline : clock::time_point::max();
        if (m_bWatching) {
            m_wake.wait_until(lock, m_sleepsUntil);
        } else {
            m_wake.wait(lock);
        }
    }
}

} // namespace tools
