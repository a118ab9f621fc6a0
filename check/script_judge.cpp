#include "check/script_judge.h"

#include <utility>

namespace check {

namespace {

// Enough that changing hands costs nothing beside the work, and little enough to take no memory to speak of.
constexpr std::size_t RecordsAtOnce = 64;
constexpr std::size_t MostSent = 8;

} // namespace

script_judge::script_judge(checker & with, script & what, report * told)
    : m_with(with), m_what(what), m_told(told)
{
}

script_judge::~script_judge()
{
    stop(false);
}

void script_judge::take(plugin::statement_record record)
{
    if (!isBegun()) {
        m_what.name = record.script;
        m_run = std::make_unique<checker::judged_script>(m_with, m_what, m_told);
    }
    // A table that is made again is not read at all; see database::table_memory.
    std::optional<std::vector<database::statement>> statements;
    if (m_isBehind && m_told != nullptr) {
        statements = checker::judged_script::read(m_reader, record);
    }
    m_taken.push_back({std::move(record), std::move(statements)});
    if (m_taken.size() == RecordsAtOnce) {
        send();
    }
}

void script_judge::send()
{
    if (!m_thread.joinable()) {
        m_thread = std::thread(&script_judge::work, this);
    }
    std::vector<taken_records> judged;
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isEnded || m_sent.size() < MostSent; });
        m_sent.push_back(std::exchange(m_taken, {}));
        m_isBehind = m_sent.size() > 1;
        judged = std::exchange(m_judged, {});
    }
    m_changed.notify_all();
}

void script_judge::end()
{
    if (!isBegun()) {
        m_run = std::make_unique<checker::judged_script>(m_with, m_what, m_told);
    }
    stop(true);
    if (m_why) {
        std::rethrow_exception(m_why);
    }
    judge(m_taken);
    m_run->end();
}

void script_judge::stop(bool isWhole)
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

void script_judge::work()
{
    try {
        std::unique_lock lock(m_mutex);
        while (true) {
            m_changed.wait(lock, [this] { return m_isEnded || m_isWhole || !m_sent.empty(); });
            if (m_isEnded || m_sent.empty()) {
                return;
            }
            taken_records next = std::move(m_sent.front());
            m_sent.pop_front();
            lock.unlock();
            m_changed.notify_all();
            judge(next);
            lock.lock();
            m_judged.push_back(std::move(next));
        }
    } catch (...) {
        const std::lock_guard lock(m_mutex);
        m_why = std::current_exception();
        m_isEnded = true;
        m_changed.notify_all();
    }
}

void script_judge::judge(const taken_records & some)
{
    for (const taken_record & each : some) {
        if (each.statements) {
            m_run->run(each.record, *each.statements);
        } else {
            m_run->run(each.record);
        }
    }
}

} // namespace check
