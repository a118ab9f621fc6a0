// Statements of a step that run: what they cost those who use the database, and which programs they break.

#include "check/rules/statement_rules.h"

#include "check/view/told_statement.h"

#include "database/facts/known_types.h"

#include <algorithm>
#include <iterator>

namespace check {

namespace {

using database::lock_form;

struct statement_rule
{
    bool (*applies)(const told_statement & of);
    rule_text about;
};

/// What kind of lock a statement takes.
class form_finder
{
public:
    explicit form_finder(const database::facts & known) : m_known(known) {}

    std::optional<lock_form> operator()(const database::add_column & asked) const
    {
        const bool isCounted = database::understoodType(m_known, asked.definition.type).counts();
        return isCounted                 ? lock_form::add_counted_column
               : asked.definition.unique ? lock_form::add_unique_column
                                         : lock_form::add_column;
    }
    std::optional<lock_form> operator()(const database::drop_column &) const
    {
        return lock_form::drop_column;
    }
    std::optional<lock_form> operator()(const database::rename_column &) const
    {
        return lock_form::rename_column;
    }
    std::optional<lock_form> operator()(const database::rename_table &) const
    {
        return lock_form::rename_table;
    }
    std::optional<lock_form> operator()(const database::create_index &) const
    {
        return lock_form::create_index;
    }
    std::optional<lock_form> operator()(const database::drop_index &) const { return lock_form::drop_index; }
    std::optional<lock_form> operator()(const database::add_foreign_key &) const
    {
        return lock_form::add_foreign_key;
    }
    std::optional<lock_form> operator()(const database::drop_constraint &) const
    {
        return lock_form::drop_foreign_key;
    }
    template <class Other>
    std::optional<lock_form> operator()(const Other &) const
    {
        return {};
    }

private:
    const database::facts & m_known;
};

/// What the statement costs on a table that may have rows; none for one that is made in the same script.
std::optional<database::lock_cost> costOf(const told_statement & of)
{
    const std::optional<lock_form> form = std::visit(form_finder(of.known()), of.read().asked);
    if (!form || !of.in().isStep() || of.in().made().makerOf(of.record().entity) == of.record().script) {
        return {};
    }
    const auto costs = of.known().locks.costs.value;
    const auto cost = std::find_if(costs.begin(), costs.end(),
                                   [&](const database::lock_cost & each) { return each.form == *form; });
    return cost == costs.end() ? std::nullopt : std::optional(*cost);
}

bool rewrites(const told_statement & of)
{
    const std::optional<database::lock_cost> cost = costOf(of);
    return cost && cost->rewrites;
}

bool keepsWritersWaiting(const told_statement & of)
{
    const std::optional<database::lock_cost> cost = costOf(of);
    return cost && cost->writersWait && !cost->rewrites;
}

bool renames(const told_statement & of)
{
    return of.in().isStep() &&
           (of.asks<database::rename_table>() != nullptr || of.asks<database::rename_column>() != nullptr ||
            of.asks<database::change_column>() != nullptr);
}

bool addsRequired(const told_statement & of)
{
    const auto * const added = of.asks<database::add_column>();
    return of.in().isStep() && added != nullptr && added->definition.notNull;
}

bool drops(const told_statement & of)
{
    return of.in().isStep() &&
           (of.asks<database::drop_table>() != nullptr || of.asks<database::drop_column>() != nullptr);
}

const statement_rule Rules[] = {
    {rewrites,
     {QLatin1String("KV501"), effect::blocks,
      "{db} copies table '{table}' for this statement, nobody can write to it meanwhile.",
      "The form of the statement changes how each row is stored, or makes what has to be checked row by row.",
      "With a large table run the script when nobody writes, or change the table in steps of your own."}},
    {keepsWritersWaiting,
     {QLatin1String("KV502"), effect::blocks,
      "{db} keeps everybody from writing to table '{table}' while this statement reads the whole of it.",
      "It looks at every row that is there.",
      "With a large table run the script when nobody writes; some databases have a slower form that lets "
      "writers go on, such as CREATE INDEX CONCURRENTLY, which the custom script can write."}},
    {renames,
     {QLatin1String("KV601"), effect::advice,
      "Programs that ask for '{column}{table_of}' fail from this statement on.",
      "The name changes at once, for programs of the version before as well.",
      "Stop them before the script, or give them the old name by a view or a second column for a while."}},
    {drops,
     {QLatin1String("KV602"), effect::advice,
      "Programs that use '{column}{table_of}' fail from this statement on.",
      "What is dropped is gone at once, for programs of the version before as well.",
      "Stop them before the script, or drop it one version after the last program stopped to use it."}},
    {addsRequired,
     {QLatin1String("KV603"), effect::advice,
      "Programs that write to table '{table}' without a value for '{column}' fail from this statement on.",
      "The column has to have a value and no default.",
      "Stop programs of the version before, or add the column with \"allowNull\": true first."}},
};

const rule_text HalfApplied = {
    QLatin1String("KV503"), effect::differs,
    "{db} does this script in part: of its statements {done} run and {refused} do not.",
    "A refused statement does not take back those before it, and what runs the script may go on with those "
    "after it, or stop in the middle.",
    "Mend what is refused before you run the script, and try it on a copy of the database."};

values wordsOf(const told_statement & of)
{
    values words = of.words();
    const bool isTable =
        of.asks<database::rename_table>() != nullptr || of.asks<database::drop_table>() != nullptr;
    words.insert(QStringLiteral("table_of"),
                 isTable ? words.value(QStringLiteral("table"))
                         : QStringLiteral("' of table '") + words.value(QStringLiteral("table")));
    if (isTable) {
        words.insert(QStringLiteral("column"), QString());
    }
    return words;
}

} // namespace

std::vector<finding> explainDone(const told_statement & of)
{
    std::vector<finding> told;
    for (const statement_rule & each : Rules) {
        if (each.applies(of)) {
            told.push_back(findingOf(each.about, wordsOf(of)));
        }
    }
    return told;
}

finding halfApplied(const values & words)
{
    return findingOf(HalfApplied, words);
}

} // namespace check
