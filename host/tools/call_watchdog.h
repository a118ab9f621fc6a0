#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace tools {

/// Watches calls for the time they take and for the memory that the program gains, from a thread that lives
/// as long as the watchdog.
///
/// Calls are far more frequent than overruns, so beginning and ending one costs a lock and a look at the
/// clock: the thread looks from time to time, and is woken only when it has long had nothing to look at.
class call_watchdog
{
public:
    enum class overrun
    {
        none,
        time,
        memory
    };

    /// @param onOverrun runs on the watchdog's thread, at most once a call and never after the call has ended
    /// @param onDeaf runs there when the call goes on all the same: 5 s later, or when it goes on to gain
    /// memory
    /// @param memory in bytes, that the program may gain from now on while a call lasts
    call_watchdog(std::function<void()> onOverrun, std::function<void(overrun)> onDeaf, long long memory);
    ~call_watchdog();
    call_watchdog(const call_watchdog &) = delete;
    call_watchdog & operator=(const call_watchdog &) = delete;

    /// Starts to watch a call; with a limit of 0 or less it may take any time.
    void begin(std::chrono::milliseconds limit);
    /// Ends the call; what it was stopped for.
    overrun end();

    using clock = std::chrono::steady_clock;
    /// A watch that stands still.
    struct suspended
    {
        bool isWatching = false;
        overrun reason = overrun::none;
        clock::duration left{};
    };
    /// Stops the watch over the call, for another call to be watched meanwhile or for none.
    suspended suspend();
    /// Goes on with the watch that suspend() stopped.
    void resume(const suspended & former);

private:
    void run();
    void look();

    std::function<void()> m_onOverrun;
    std::function<void(overrun)> m_onDeaf;
    const long long m_iMostMemory;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    clock::time_point m_deadline; ///< of the call, or once it was stopped of the program
    overrun m_overrun = overrun::none;
    bool m_bWatching = false;
    bool m_bAsleep = false;
    bool m_bQuit = false;
    std::thread m_thread;
};

} // namespace tools
