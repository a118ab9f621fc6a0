#include "tools/call_watchdog.h"

#include "os/memory_in_use.h"

#include <utility>

namespace tools {

namespace {

constexpr std::chrono::milliseconds Interval(10);
constexpr int IdleLooks = 50; // without a call, before the thread sleeps until it is woken
constexpr std::chrono::seconds TimeToHeed(5);
constexpr call_watchdog::clock::duration Forever = std::chrono::hours(24 * 365);

} // namespace

call_watchdog::call_watchdog(std::function<void()> onOverrun, std::function<void(overrun)> onDeaf,
                             long long memory)
    : m_onOverrun(std::move(onOverrun)), m_onDeaf(std::move(onDeaf)),
      m_iMostMemory(static_cast<long long>(os::memoryInUse()) + memory), m_thread([this] { run(); })
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
    resume({true, overrun::none, limit.count() > 0 ? clock::duration(limit) : Forever});
}

call_watchdog::suspended call_watchdog::suspend()
{
    const std::lock_guard lock(m_mutex);
    const suspended result{m_bWatching, m_overrun, m_deadline - clock::now()};
    m_bWatching = false;
    return result;
}

void call_watchdog::resume(const suspended & former)
{
    bool wake = false;
    {
        const std::lock_guard lock(m_mutex);
        m_overrun = former.reason;
        m_bWatching = former.isWatching;
        m_deadline = clock::now() + former.left;
        wake = m_bWatching && m_bAsleep;
    }
    if (wake) {
        m_wake.notify_one();
    }
}

call_watchdog::overrun call_watchdog::end()
{
    const std::lock_guard lock(m_mutex);
    m_bWatching = false;
    return m_overrun;
}

/// One look at the call under watch.
void call_watchdog::look()
{
    const auto memory = static_cast<long long>(os::memoryInUse());
    const bool isLate = clock::now() >= m_deadline;
    if (m_overrun == overrun::none) {
        if (isLate || memory > m_iMostMemory) {
            m_overrun = isLate ? overrun::time : overrun::memory;
            m_deadline = clock::now() + TimeToHeed;
            m_onOverrun();
        }
        return;
    }
    // Time enough to be heeded, but not to fill the memory of the machine.
    if (isLate || memory > m_iMostMemory + m_iMostMemory / 2) {
        m_onDeaf(m_overrun);
    }
}

void call_watchdog::run()
{
    std::unique_lock lock(m_mutex);
    int idle = 0;
    while (!m_bQuit) {
        idle = m_bWatching ? 0 : idle + 1;
        if (m_bWatching) {
            look();
        }
        if (idle < IdleLooks) {
            m_wake.wait_for(lock, Interval);
            continue;
        }
        m_bAsleep = true;
        m_wake.wait(lock, [this] { return m_bWatching || m_bQuit; });
        m_bAsleep = false;
        idle = 0;
    }
}

} // namespace tools
