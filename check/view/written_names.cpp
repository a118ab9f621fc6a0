#include "check/view/written_names.h"

namespace check {

namespace {

using database::name_place;

class name_collector
{
public:
    explicit name_collector(std::vector<written_name> & names) : m_names(names) {}

    void operator()(const database::create_table & asked)
    {
        table(asked.table, name_place::table);
        for (const database::column_definition & each : asked.columns) {
            other(each.name);
        }
        if (asked.key) {
            parts(asked.key->parts);
        }
        for (const database::reference_definition & each : asked.references) {
            reference(each);
        }
    }
    void operator()(const database::drop_table & asked) { table(asked.table, name_place::table); }
    void operator()(const database::rename_table & asked)
    {
        table(asked.from);
        table(asked.to);
    }
    void operator()(const database::add_column & asked)
    {
        table(asked.table);
        other(asked.definition.name);
    }
    void operator()(const database::drop_column & asked)
    {
        table(asked.table);
        other(asked.column);
    }
    void operator()(const database::rename_column & asked)
    {
        table(asked.table);
        other(asked.from);
        other(asked.to);
    }
    void operator()(const database::change_column & asked)
    {
        table(asked.table);
        other(asked.from);
        other(asked.definition.name);
    }
    void operator()(const database::create_index & asked)
    {
        other(asked.index, name_place::index);
        table(asked.table);
        parts(asked.parts);
    }
    void operator()(const database::drop_index & asked)
    {
        other(asked.index, name_place::index);
        if (asked.table) {
            table(*asked.table);
        }
    }
    void operator()(const database::add_foreign_key & asked)
    {
        table(asked.table);
        reference(asked.reference);
    }
    void operator()(const database::drop_constraint & asked)
    {
        table(asked.table);
        other(asked.constraint);
    }
    void operator()(const database::create_sequence & asked) { other(asked.sequence); }
    void operator()(const database::create_trigger & asked)
    {
        other(asked.trigger);
        for (const database::identifier & each : asked.columns) {
            other(each);
        }
        table(asked.table);
    }
    template <class Other>
    void operator()(const Other &)
    {
    }

private:
    void table(const database::identifier & name, name_place place = name_place::named_table)
    {
        m_names.push_back({name, place});
    }
    void other(const database::identifier & name, name_place place = name_place::other)
    {
        if (!name.text.isEmpty()) {
            m_names.push_back({name, place});
        }
    }
    void parts(const std::vector<database::named_part> & of)
    {
        for (const database::named_part & each : of) {
            other(each.column);
        }
    }
    void reference(const database::reference_definition & of)
    {
        other(of.name);
        for (const database::identifier & each : of.columns) {
            other(each);
        }
        table(of.target);
        for (const database::identifier & each : of.targetColumns) {
            other(each);
        }
    }

    std::vector<written_name> & m_names;
};

} // namespace

std::vector<written_name> writtenNames(const database::change & of)
{
    std::vector<written_name> names;
    std::visit(name_collector(names), of);
    return names;
}

} // namespace check
