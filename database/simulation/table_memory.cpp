#include "database/simulation/table_memory.h"

#include <utility>

namespace database {

void table_memory::beginScript()
{
    m_tables.removeIf([](const auto & each) { return !each.value().isUsed; });
    for (entry & each : m_tables) {
        each.isUsed = false;
    }
}

const table_memory::made_table * table_memory::find(const QString & text)
{
    const auto found = m_tables.find(text);
    if (found == m_tables.end()) {
        return nullptr;
    }
    found->isUsed = true;
    return &found->what;
}

void table_memory::add(const QString & text, made_table made)
{
    m_tables.insert(text, {std::move(made), true});
}

} // namespace database
