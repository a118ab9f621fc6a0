#include "app/shared_work.h"

namespace app {

void shared_work::doParts(database::server::target_database & target)
{
    attempt([this, &target] {
        while (const part next = takeNext()) {
            next(target);
        }
    });
}

void shared_work::attempt(const std::function<void()> & own)
{
    try {
        own();
    } catch (...) {
        fail(std::current_exception());
    }
}

void shared_work::end()
{
    const std::lock_guard lock(m_mutex);
    m_isEnded = true;
}

bool shared_work::isEnded() const
{
    const std::lock_guard lock(m_mutex);
    return m_isEnded;
}

void shared_work::rethrow() const
{
    if (m_why) {
        std::rethrow_exception(m_why);
    }
}

shared_work::part shared_work::takeNext()
{
    const std::lock_guard lock(m_mutex);
    return m_isEnded || m_next == m_parts.size() ? part() : m_parts[m_next++];
}

void shared_work::fail(std::exception_ptr why)
{
    const std::lock_guard lock(m_mutex);
    m_isEnded = true;
    m_why = m_why ? m_why : std::move(why);
}

} // namespace app
