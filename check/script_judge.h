#pragma once

#include "check/judged_script.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace check {

/// Runs a script while its statements are still being made: a thread of its own judges them some at a time,
/// in their order. A script of few statements is judged without one. Only the statements go from thread to
/// thread, so until end() nobody else may use the checker or the report, or change the models.
class script_judge
{
public:
    /// @param what the script without its records; takes its name from the first
    /// @param told as for checker::run(); all have to outlive this object
    script_judge(checker & with, script & what, report * told);
    /// Without end() what is not judged by then is left out.
    ~script_judge();
    script_judge(const script_judge &) = delete;
    script_judge & operator=(const script_judge &) = delete;

    /// Takes the next statement; waits when too many wait already.
    void take(plugin::statement_record record);
    /// Whether there was a statement.
    [[nodiscard]] bool isBegun() const { return m_run != nullptr; }
    /// Returns when all are judged, and all was told. Throws what judging threw.
    void end();

private:
    struct taken_record
    {
        plugin::statement_record record;
        std::optional<std::vector<database::statement>> statements; ///< none when they were not read yet
    };
    using taken_records = std::vector<taken_record>;

    void begin();
    void send();
    void stop(bool isWhole);
    void work();
    void judge(const taken_records & some);

    checker & m_with;
    script & m_what;
    report * m_told;
    std::unique_ptr<checker::judged_script> m_run; ///< null until there is a statement
    database::statement_reader m_reader;           ///< of the thread that calls
    taken_records m_taken;                         ///< that were not sent yet
    bool m_isBehind = false; ///< the other thread has enough to do: what is sent it need not read
    std::thread m_thread;

    // Shared by both threads, under the lock.
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<taken_records> m_sent;    ///< not begun yet, oldest first
    std::vector<taken_records> m_judged; ///< go back, since memory is freed fast only where it was taken
    bool m_isWhole = false;              ///< nothing will be sent any more
    bool m_isEnded = false;              ///< nothing is judged any more
    std::exception_ptr m_why;
};

} // namespace check
