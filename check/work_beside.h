#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace check {

/// Work on one item after another, in their order, in a thread beside the one that makes them. Few items are
/// worked on without a thread, when they are all there, and many where there is no room for one.
template <class Item>
class work_beside
{
public:
    /// @param work is called for each item, never at two places at once
    explicit work_beside(std::function<void(Item & item)> work) : m_work(std::move(work)) {}
    /// Without end() what is not done by then is left out.
    ~work_beside() { stop(false); }
    work_beside(const work_beside &) = delete;
    work_beside & operator=(const work_beside &) = delete;

    /// Takes the next item; waits when too many wait already. What the work throws waits for end().
    void take(Item item)
    {
        m_taken.push_back(std::move(item));
        if (m_taken.size() == ItemsAtOnce) {
            send();
        }
    }
    /// Whether items wait, so that who makes them may as well do some of the work.
    [[nodiscard]] bool isBehind() const { return m_isBehind; }
    /// Returns when all is done. Throws what the work threw first; what comes after that is left out.
    void end()
    {
        stop(true);
        workHere();
        if (m_why) {
            std::rethrow_exception(m_why);
        }
    }

private:
    using items = std::vector<Item>;
    // Enough that changing hands costs nothing beside the work, and few enough to take no memory to speak of.
    static constexpr std::size_t ItemsAtOnce = 64;
    static constexpr std::size_t MostSent = 8;

    /// Whether there is a thread, which takes room of its own.
    [[nodiscard]] bool hasThread()
    {
        if (!m_thread.joinable()) {
            try {
                m_thread = std::thread(&work_beside::run, this);
            } catch (const std::system_error &) {
                return false;
            }
        }
        return true;
    }

    void send()
    {
        if (!hasThread()) {
            workHere();
            return;
        }
        std::vector<items> done;
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_isEnded || m_sent.size() < MostSent; });
            if (!m_isEnded) {
                m_sent.push_back(std::move(m_taken));
            }
            m_isBehind = m_sent.size() > 1;
            done = std::exchange(m_done, {});
        }
        m_taken = {};
        m_changed.notify_all();
    }

    void stop(bool isWhole)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isWhole = true;
            m_isEnded = m_isEnded || !isWhole;
        }
        m_changed.notify_all();
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }

    void run()
    {
        try {
            std::unique_lock lock(m_mutex);
            while (true) {
                m_changed.wait(lock, [this] { return m_isEnded || m_isWhole || !m_sent.empty(); });
                if (m_isEnded || m_sent.empty()) {
                    return;
                }
                items next = std::move(m_sent.front());
                m_sent.pop_front();
                lock.unlock();
                m_changed.notify_all();
                next = workOn(std::move(next));
                lock.lock();
                m_done.push_back(std::move(next));
            }
        } catch (...) {
            const std::lock_guard lock(m_mutex);
            m_why = std::current_exception();
            m_isEnded = true;
            m_changed.notify_all();
        }
    }

    /// Without a thread, or when it has ended.
    void workHere()
    {
        try {
            if (!m_why) {
                workOn(std::move(m_taken));
            }
        } catch (...) {
            m_why = std::current_exception();
        }
        m_taken = {};
    }

    items workOn(items some)
    {
        for (Item & each : some) {
            m_work(each);
        }
        return some;
    }

    const std::function<void(Item & item)> m_work;
    items m_taken; ///< that were not sent yet
    bool m_isBehind = false;
    std::thread m_thread;

    // Shared by both threads, under the lock.
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<items> m_sent;  ///< not begun yet, oldest first
    std::vector<items> m_done; ///< go back, since memory is freed fast only where it was taken
    bool m_isWhole = false;    ///< nothing will be sent any more
    bool m_isEnded = false;    ///< nothing is worked on any more
    std::exception_ptr m_why;
};

} // namespace check
