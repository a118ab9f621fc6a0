#include "database/simulation/simulation.h"

#include "database/facts/known_types.h"
#include "database/facts/normal_form.h"
#include "database/simulation/changes.h"
#include "database/simulation/earlier_refusals.h"
#include "database/simulation/parts.h"
#include "database/statement/reader.h"

#include <algorithm>
#include <optional>

namespace database {

class simulation::memory
{
public:
    memory(const facts & known, catalogue begin) : now(std::make_unique<state>(known, std::move(begin))) {}
    memory(const memory & other)
        : now(std::make_unique<state>(*other.now)), refused(other.refused), number(other.number)
    {
    }
    memory & operator=(const memory &) = delete;
    ~memory() = default;

    std::unique_ptr<state> now;
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

// For a database where # begins a comment, in which names that are not quoted can have it.
std::optional<statement> withoutComment(const facts & known, const statement & asked)
{
    if (!known.names.hashIsComment.value || !asked.text.contains(u'#')) {
        return std::nullopt;
    }
    QString text;
    QChar quote;
    for (const QChar c : asked.text) {
        if (quote.isNull() && c == u'#') {
            break;
        }
        const bool isMark = c == u'`' || c == u'"' || c == u'\'';
        quote = isMark && quote.isNull() ? c : (c == quote ? QChar() : quote);
        text += c;
    }
    const std::vector<statement> read = statement_reader(known).read(text);
    statement cut = read.empty() ? statement() : read.front();
    // What is left may be the beginning of a statement only.
    cut.isCutShort = cut.isCutShort || read.empty() || isUnknown(cut);
    return cut;
}

/// The columns that a change defines, and the table that they are for.
struct defined_columns
{
    identifier table;
    std::vector<column_definition> columns;
};

std::optional<defined_columns> columnsDefinedBy(const change & asked)
{
    if (const auto * const made = std::get_if<create_table>(&asked)) {
        return defined_columns{made->table, made->columns};
    }
    if (const auto * const added = std::get_if<add_column>(&asked)) {
        return defined_columns{added->table, {added->definition}};
    }
    const auto * const changed = std::get_if<change_column>(&asked);
    return changed == nullptr ? std::nullopt
                              : std::optional(defined_columns{changed->table, {changed->definition}});
}

// The table that the text names first.
void readTable(name_reader & names, const create_table & asked)
{
    names.createdTable(asked.table);
}

template <class Change>
void readTable(name_reader & names, const Change & asked)
{
    if constexpr (requires { names.table(asked.table); }) {
        names.table(asked.table);
    }
}

// What stands before the place that cannot be read is read first, so that can be what is wrong.
refusal checkBeginning(const state & at, const change & asked)
{
    const facts & known = at.known;
    losses lost;
    if (const auto * const unknown = std::get_if<unknown_statement>(&asked); unknown && unknown->table) {
        name_reader names(known, lost);
        names.table(*unknown->table);
        return names.why() ? names.why() : refusal{refusal_cause::syntax, {}, false};
    }
    name_reader tables(known, lost);
    std::visit([&tables](const auto & each) { readTable(tables, each); }, asked);
    if (tables.why() && !isLookedUp(tables.why().cause)) {
        return tables.why();
    }
    const auto defined = columnsDefinedBy(asked);
    if (defined) {
        name_reader names(known, lost);
        names.table(defined->table);
        for (const column_definition & each : defined->columns) {
            const QString name = names.newColumn(each.name);
            if (names.why() && !isLookedUp(names.why().cause)) {
                return names.why();
            }
            if (const refusal why = {readType(known, at.types.of(each.type), each), name, false}; why) {
                return why;
            }
        }
    }
    return {refusal_cause::syntax, {}, false};
}

error_form formOf(const change & asked)
{
    if (std::holds_alternative<create_table>(asked)) {
        return error_form::create_table;
    }
    if (std::holds_alternative<rename_table>(asked) || std::holds_alternative<rename_column>(asked)) {
        return error_form::rename;
    }
    if (std::holds_alternative<create_index>(asked)) {
        return error_form::create_index;
    }
    return std::holds_alternative<add_foreign_key>(asked) ? error_form::foreign_key : error_form::any;
}

} // namespace

simulation::simulation(const facts & known, catalogue begin)
    : m_memory(std::make_unique<memory>(known, std::move(begin)))
{
}

simulation::simulation(const simulation & other) : m_memory(std::make_unique<memory>(*other.m_memory)) {}

simulation::~simulation() = default;

verdict simulation::run(const statement & written, row_values values)
{
    const std::optional<statement> cut = withoutComment(m_memory->now->known, written);
    const statement & asked = cut ? *cut : written;
    const int number = m_memory->number++;
    const std::unique_ptr<state> before =
        values == row_values::conflicting ? std::make_unique<state>(*m_memory->now) : nullptr;
    state & now = *m_memory->now;
    verdict said;
    if (isUnknown(asked) && !asked.isCutShort) {
        said.what = outcome::not_judged;
        return said;
    }
    const refusal why = asked.isCutShort ? checkBeginning(now, asked.asked)
                                         : std::visit(performer(now, said.losses), asked.asked);
    if (!why) {
        return said;
    }
    said.what = why.dependsOnValues ? outcome::maybe_refused : outcome::refused;
    said.cause = why.cause;
    said.object = why.object;
    said.code = codeOf(now.known, why.cause, formOf(asked.asked));
    const bool isUndone = why.dependsOnValues && values == row_values::conflicting;
    if (!why.dependsOnValues || isUndone) {
        said.losses.clear();
        said.consequenceOf = m_memory->refused.causeOf(why);
        m_memory->refused.add(number, now.known, asked.asked);
    }
    if (isUndone) {
        m_memory->now = std::make_unique<state>(*before);
    }
    return said;
}

const table * simulation::madeByItself(const statement & last) const
{
    const auto * const asked = std::get_if<create_table>(&last.asked);
    // Where a table may be there already it need not be the one that was made.
    if (asked == nullptr || asked->ifNotExists || last.isCutShort) {
        return nullptr;
    }
    const state & now = *m_memory->now;
    const auto found = now.held().tables.find(nameKey(now.known, asked->table, name_place::table));
    return found != now.held().tables.end() && now.isMadeByItself(found->second) ? &found->second : nullptr;
}

bool simulation::makeAgain(const table & made)
{
    const bool hasRoom = m_memory->now->hasRoomFor(made);
    if (hasRoom) {
        ++m_memory->number;
        m_memory->now->add(made, 0);
    }
    return hasRoom;
}

void simulation::putRows(const QString & table, int count)
{
    m_memory->now->forgetEmpty();
    const auto * const found = m_memory->now->find(table);
    if (found != nullptr) {
        m_memory->now->setRows(table, std::max(count, m_memory->now->rowsOf(*found)));
    }
}

void simulation::putRowIntoEach()
{
    for (const auto & [key, owner] : m_memory->now->held().tables) {
        putRows(owner.name, 1);
    }
}

catalogue simulation::held() const
{
    return normalForm(stored(), m_memory->now->types);
}

const catalogue & simulation::stored() const
{
    return m_memory->now->held();
}

catalogue simulation::takeStored()
{
    return m_memory->now->takeHeld();
}

} // namespace database
