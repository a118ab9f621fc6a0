#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace tools {

/// Reports calls that run over their time limit, from a thread that lives as long as the watchdog.
///
/// Calls are far more frequent than overruns, so beginning and ending one costs a lock and a look at the
/// clock: the thread is woken only when it would otherwise sleep past the new deadline.
class call_watchdog
{
public:
    /// `onOverrun` runs on the watchdog's thread, at most once a call and never after the call has ended.
    explicit call_watchdog(std::function<void()> onOverrun);
    ~call_watchdog();
    call_watchdog(const call_watchdog &) = delete;
    call_watchdog & operator=(const call_watchdog &) = delete;

    /// Starts to watch a call; a limit of 0 or less watches nothing.
    void begin(std::chrono::milliseconds limit);
    /// Ends the call; true when it was over its limit.
    bool end();

    /// A watch that stands still.
    struct suspended
    {
        bool isWatching = false;
        bool isOverrun = false;
        std::chrono::nanoseconds left{};
    };
    /// Stops the watch over the call, for another call to be watched meanwhile or for none.
    suspended suspend();
    /// Goes on with the watch that suspend() stopped.
    void resume(const suspended & former);

private:
    using clock = std::chrono::steady_clock;
    void run();

    std::function<void()> m_onOverrun;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    clock::time_point m_deadline;
    clock::time_point m_sleepsUntil = clock::time_point::max();
    bool m_bWatching = false;
    bool m_bOverrun = false;
    bool m_bQuit = false;
    std::thread m_thread;
};

} // namespace tools
