#include "check/view/made_objects.h"

#include "database/facts/names.h"

namespace check {

namespace {

template <class Change>
const Change * changeOf(const database::statement & done)
{
    return std::get_if<Change>(&done.asked);
}

} // namespace

void made_objects::add(const database::statement & done, const plugin::statement_record & record)
{
    const origin by{{}, record.script, record.entity, record.property, record.relationship};
    const auto remember = [&](QHash<QString, origin> & in, const QString & name) {
        origin & made = in[keyOf(name)];
        made = by;
        made.name = name;
    };
    if (const auto * const table = changeOf<database::create_table>(done)) {
        addTable(table->table.text, record);
    } else if (const auto * const index = changeOf<database::create_index>(done)) {
        remember(m_indexes, index->index.text);
        m_indexOf.insert(record.property, index->index.text);
    } else if (const auto * const key = changeOf<database::add_foreign_key>(done)) {
        remember(m_foreignKeys, key->reference.name.text);
        m_foreignKeyOf.insert(record.relationship, key->reference.name.text);
    } else if (const auto * const sequence = changeOf<database::create_sequence>(done)) {
        remember(m_sequences, sequence->sequence.text);
    } else if (const auto * const trigger = changeOf<database::create_trigger>(done)) {
        remember(m_triggers, trigger->trigger.text);
    } else if (changeOf<database::drop_table>(done) != nullptr) {
        m_tables.remove(record.entity);
    } else if (changeOf<database::rename_table>(done) != nullptr) {
        m_keptTables.erase(record.entity);
    } else if (changeOf<database::rename_column>(done) != nullptr) {
        m_keptColumns.erase(record.property);
    }
}

void made_objects::addTable(const QString & written, const plugin::statement_record & record)
{
    if (record.action == plugin::statement_action::create_extra_table) {
        m_links.insert(keyOf(written));
    } else {
        m_tables.insert(record.entity, record.script);
    }
}

void made_objects::addRefused(const database::statement & refused, const plugin::statement_record & record)
{
    if (const auto * const table = changeOf<database::rename_table>(refused)) {
        // What had kept its name before has that one still.
        m_keptTables.emplace(record.entity, table->from.text);
    } else if (const auto * const column = changeOf<database::rename_column>(refused)) {
        keepColumn(record.property, column->from.text);
    } else if (const auto * const restated = changeOf<database::change_column>(refused)) {
        keepColumn(record.property, restated->from.text);
    }
}

void made_objects::keepColumn(long property, const QString & name)
{
    m_keptColumns.emplace(property, name);
}

long made_objects::ownerOfSequence(const QString & name) const
{
    return m_sequences.value(keyOf(name)).entity;
}

bool made_objects::isLinkTable(const QString & table) const
{
    return m_links.contains(keyOf(table));
}

const made_objects::origin * made_objects::named(const QString & name,
                                                 const QHash<QString, origin> & in) const
{
    const auto found = in.constFind(keyOf(name));
    return found == in.constEnd() ? nullptr : &*found;
}

const made_objects::origin * made_objects::indexNamed(const QString & name) const
{
    return named(name, m_indexes);
}

const made_objects::origin * made_objects::foreignKeyNamed(const QString & name) const
{
    return named(name, m_foreignKeys);
}

const made_objects::origin * made_objects::sequenceNamed(const QString & name) const
{
    return named(name, m_sequences);
}

const made_objects::origin * made_objects::triggerNamed(const QString & name) const
{
    return named(name, m_triggers);
}

QString made_objects::keyOf(const QString & name) const
{
    return database::nameKey(m_known, name, database::name_place::other);
}

} // namespace check
