#pragma once

#include "check/judged_script.h"
#include "check/work_beside.h"

#include <memory>
#include <optional>

namespace check {

/// Runs a script while its statements are still being made. Only the statements go from thread to thread, so
/// until end() nobody else may use the checker or the report, or change the models.
class script_judge
{
public:
    /// @param what the script without its records; takes its name from the first
    /// @param told as for checker::run(); all have to outlive this object
    script_judge(checker & with, script & what, report * told);

    /// Takes the next statement; waits when too many wait already.
    void take(plugin::statement_record record);
    /// Whether there was a statement.
    [[nodiscard]] bool isBegun() const { return m_run != nullptr; }
    /// Returns when all are judged, and all was told. Throws what judging threw. Without it what is not
    /// judged when this object goes is left out.
    void end();

private:
    struct taken_record
    {
        plugin::statement_record record;
        std::optional<std::vector<database::statement>> statements; ///< none when they were not read yet
    };

    void begin();
    void judge(const taken_record & next);

    checker & m_with;
    script & m_what;
    report * m_told;
    std::unique_ptr<checker::judged_script> m_run; ///< null until there is a statement
    database::statement_reader m_reader;           ///< of the thread that calls
    work_beside<taken_record> m_judging;
};

} // namespace check
