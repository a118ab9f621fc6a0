#include "database/simulation/earlier_refusals.h"

#include "database/simulation/state.h"

#include <QStringList>

namespace database {

namespace {

/// What a statement would have made, and what it would have taken away.
struct effects
{
    QStringList made;
    QStringList gone;
};

class effect_finder
{
public:
    explicit effect_finder(const facts & known) : m_known(known) {}

    effects operator()(const create_table & asked) const { return {{tableObject(table(asked.table))}, {}}; }
    effects operator()(const drop_table & asked) const { return {{}, {tableObject(table(asked.table))}}; }
    effects operator()(const rename_table & asked) const
    {
        return {{tableObject(table(asked.to))}, {tableObject(table(asked.from))}};
    }
    effects operator()(const add_column & asked) const
    {
        return {{column(asked.table, asked.definition.name)}, {}};
    }
    effects operator()(const drop_column & asked) const { return {{}, {column(asked.table, asked.column)}}; }
    effects operator()(const rename_column & asked) const
    {
        return {{column(asked.table, asked.to)}, {column(asked.table, asked.from)}};
    }
    effects operator()(const change_column & asked) const
    {
        return {{column(asked.table, asked.definition.name)}, {column(asked.table, asked.from)}};
    }
    effects operator()(const create_index & asked) const { return {{indexObject(other(asked.index))}, {}}; }
    effects operator()(const drop_index & asked) const { return {{}, {indexObject(other(asked.index))}}; }
    effects operator()(const add_foreign_key & asked) const
    {
        return {{foreignKeyObject(other(asked.reference.name))}, {}};
    }
    effects operator()(const drop_constraint & asked) const
    {
        return {{}, {foreignKeyObject(other(asked.constraint))}};
    }
    template <class Other>
    effects operator()(const Other &) const
    {
        return {};
    }

private:
    [[nodiscard]] QString table(const identifier & written) const
    {
        return understood(m_known, written, name_place::table).name;
    }
    [[nodiscard]] QString other(const identifier & written) const
    {
        return understood(m_known, written, name_place::other).name;
    }
    [[nodiscard]] QString column(const identifier & of, const identifier & written) const
    {
        return columnObject(table(of), other(written));
    }

    const facts & m_known;
};

} // namespace

void earlier_refusals::add(int number, const facts & known, const change & asked)
{
    const effects would = std::visit(effect_finder(known), asked);
    for (const QString & each : would.made) {
        m_notMade.insert(each, number);
    }
    for (const QString & each : would.gone) {
        m_notGone.insert(each, number);
    }
}

int earlier_refusals::causeOf(const refusal & why) const
{
    switch (why.cause) {
    case refusal_cause::table_missing:
    case refusal_cause::dropped_table_missing:
    case refusal_cause::changed_column_missing:
    case refusal_cause::dropped_column_missing:
    case refusal_cause::key_column_missing:
    case refusal_cause::index_missing:
    case refusal_cause::foreign_key_missing:
    case refusal_cause::target_missing:
    case refusal_cause::target_column_missing:
        return m_notMade.value(why.object, -1);
    case refusal_cause::relation_exists:
    case refusal_cause::column_exists:
    case refusal_cause::index_exists:
    case refusal_cause::foreign_key_exists:
    case refusal_cause::table_referred_to:
    case refusal_cause::column_of_foreign_key:
    case refusal_cause::column_of_foreign_key_copied:
    case refusal_cause::column_referred_to:
        return m_notGone.value(why.object, -1);
    default:
        return -1;
    }
}

} // namespace database
