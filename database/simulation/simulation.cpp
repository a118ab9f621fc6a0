#include "database/simulation/simulation.h"

#include "database/facts/known_types.h"
#include "database/facts/normal_form.h"
#include "database/simulation/changes.h"
#include "database/simulation/earlier_refusals.h"
#include "database/statement/reader.h"

#include <algorithm>

namespace database {

class simulation::memory
{
public:
    memory(const facts & known, catalogue begin) : now(known, std::move(begin)) {}

    state now;
    earlier_refusals refused;
    int number = 0; ///< of the next statement
};

namespace {

/// Calls what a change does; those that do nothing have no function of their own.
class performer
{
public:
    performer(state & at, losses & lost) : m_at(at), m_lost(lost) {}

    refusal operator()(const no_change &) const { return {}; }
    refusal operator()(const unknown_statement &) const { return {}; }
    template <class Change>
    refusal operator()(const Change & asked) const
    {
        return apply(m_at, asked, m_lost);
    }

private:
    state & m_at;
    losses & m_lost;
};

bool isUnknown(const statement & asked)
{
    return std::holds_alternative<unknown_statement>(asked.asked);
}

// What stands before a quotation without end is read first, so its types can be what is wrong.
refusal refusalOfCut(const facts & known, const change & asked)
{
    const auto * const made = std::get_if<create_table>(&asked);
    const bool hasUnknown =
        made != nullptr && known.types.unknownReadFirst.value &&
        std::any_of(made->columns.begin(), made->columns.end(), [&](const column_definition & each) {
            return refusalOf(known, each.type) == refusal_cause::unknown_type;
        });
    return {hasUnknown ? refusal_cause::unknown_type : refusal_cause::syntax, {}, false};
}

} // namespace

simulation::simulation(const facts & known, catalogue begin)
    : m_memory(std::make_unique<memory>(known, std::move(begin)))
{
}

simulation::~simulation() = default;

verdict simulation::run(const statement & asked)
{
    const int number = m_memory->number++;
    state & now = m_memory->now;
    verdict said;
    if (isUnknown(asked) && !asked.isCutShort) {
        said.what = outcome::not_judged;
        return said;
    }
    const refusal why = asked.isCutShort ? refusalOfCut(now.known, asked.asked)
                                         : std::visit(performer(now, said.losses), asked.asked);
    if (!why) {
        return said;
    }
    said.what = why.dependsOnValues ? outcome::maybe_refused : outcome::refused;
    said.cause = why.cause;
    said.object = why.object;
    said.code = codeOf(now.known, why.cause);
    if (!why.dependsOnValues) {
        said.losses.clear();
        said.consequenceOf = m_memory->refused.causeOf(why);
        m_memory->refused.add(number, now.known, asked.asked);
    }
    return said;
}

void simulation::putRows(const QString & table, int count)
{
    const auto * const found = m_memory->now.find(table);
    if (found != nullptr) {
        m_memory->now.setRows(table, std::max(count, m_memory->now.rowsOf(*found)));
    }
}

void simulation::putRowIntoEach()
{
    for (const auto & [key, owner] : m_memory->now.held().tables) {
        putRows(owner.name, 1);
    }
}

catalogue simulation::held() const
{
    return normalForm(m_memory->now.held(), m_memory->now.known);
}

} // namespace database
