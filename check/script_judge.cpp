#include "check/script_judge.h"

#include <utility>

namespace check {

script_judge::script_judge(checker & with, script & what, report * told)
    : m_with(with), m_what(what), m_told(told), m_reader(with.known()),
      m_judging([this](const taken_record & next) { judge(next); })
{
}

void script_judge::begin()
{
    m_run = std::make_unique<checker::judged_script>(m_with, m_what, m_told);
}

void script_judge::take(plugin::statement_record record)
{
    if (!isBegun()) {
        m_what.name = record.script;
        begin();
    }
    // A table that is made again is not read at all; see database::table_memory.
    std::optional<std::vector<database::statement>> statements;
    if (m_judging.isBehind() && m_told != nullptr) {
        statements = checker::judged_script::read(m_reader, record);
    }
    m_judging.take({std::move(record), std::move(statements)});
}

void script_judge::end()
{
    if (!isBegun()) {
        begin();
    }
    m_judging.end();
    m_run->end();
}

void script_judge::judge(const taken_record & next)
{
    if (next.statements) {
        m_run->run(next.record, *next.statements);
    } else {
        m_run->run(next.record);
    }
}

} // namespace check
