#pragma once

#include <exception>
#include <functional>
#include <mutex>
#include <vector>

namespace database::server {
class target_database;
}

namespace app {

/// Parts of work that threads share: each takes the next one when it is done with one.
class shared_work
{
public:
    using part = std::function<void(database::server::target_database &)>;

    explicit shared_work(std::vector<part> parts) : m_parts(std::move(parts)) {}

    /// Does parts on `target` until none is left, or until end(). An exception of a part ends the work; the
    /// first of these is kept.
    void doParts(database::server::target_database & target);
    /// Does something that this thread alone can do; an exception ends the work as that of a part does.
    void attempt(const std::function<void()> & own);
    /// Lets no other part begin. Those that are under way ask isEnded().
    void end();
    [[nodiscard]] bool isEnded() const;
    /// Throws what a part threw, once no thread is at work any more.
    void rethrow() const;

private:
    [[nodiscard]] part takeNext();
    void fail(std::exception_ptr why);

    mutable std::mutex m_mutex;
    std::vector<part> m_parts;
    std::size_t m_next = 0;
    bool m_isEnded = false;
    std::exception_ptr m_why;
};

} // namespace app
