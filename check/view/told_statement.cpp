#include "check/view/told_statement.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>

namespace check {

namespace {

/// The names that a statement writes.
class word_reader
{
public:
    explicit word_reader(values & words) : m_words(words) {}

    void operator()(const database::create_table & asked) { set("table", asked.table.text); }
    void operator()(const database::drop_table & asked) { set("table", asked.table.text); }
    void operator()(const database::rename_table & asked)
    {
        set("table", asked.from.text);
        set("new", asked.to.text);
    }
    void operator()(const database::add_column & asked)
    {
        set("table", asked.table.text);
        set("column", asked.definition.name.text);
        set("type", asked.definition.type);
    }
    void operator()(const database::drop_column & asked)
    {
        set("table", asked.table.text);
        set("column", asked.column.text);
    }
    void operator()(const database::rename_column & asked)
    {
        set("table", asked.table.text);
        set("column", asked.from.text);
        set("new", asked.to.text);
    }
    void operator()(const database::change_column & asked)
    {
        set("table", asked.table.text);
        set("column", asked.from.text);
        set("new", asked.definition.name.text);
        set("type", asked.definition.type);
    }
    void operator()(const database::create_index & asked)
    {
        set("table", asked.table.text);
        set("index", asked.index.text);
        set("column", asked.parts.empty() ? QString() : asked.parts.front().column.text);
    }
    void operator()(const database::drop_index & asked)
    {
        set("table", asked.table ? asked.table->text : QString());
        set("index", asked.index.text);
    }
    void operator()(const database::add_foreign_key & asked)
    {
        const database::reference_definition & key = asked.reference;
        set("table", asked.table.text);
        set("constraint", key.name.text);
        set("column", key.columns.empty() ? QString() : key.columns.front().text);
        set("target", key.target.text);
        set("target_column", key.targetColumns.empty() ? QString() : key.targetColumns.front().text);
    }
    void operator()(const database::drop_constraint & asked)
    {
        set("table", asked.table.text);
        set("constraint", asked.constraint.text);
    }
    void operator()(const database::add_key & asked)
    {
        set("table", asked.table.text);
        set("column", asked.key.parts.empty() ? QString() : asked.key.parts.front().column.text);
    }
    void operator()(const database::drop_key & asked) { set("table", asked.table.text); }
    void operator()(const database::drop_unique & asked)
    {
        set("table", asked.table.text);
        set("column", asked.columns.empty() ? QString() : asked.columns.front().column.text);
    }
    void operator()(const database::rename_index & asked)
    {
        set("table", asked.table ? asked.table->text : QString());
        set("index", asked.from.text);
        set("new", asked.to.text);
    }
    void operator()(const database::alter_column & asked)
    {
        set("table", asked.table.text);
        set("column", asked.column.text);
        set("type", asked.type);
    }
    void operator()(const database::create_sequence & asked) { set("table", asked.sequence.text); }
    void operator()(const database::create_trigger & asked) { set("table", asked.table.text); }
    template <class Other>
    void operator()(const Other &)
    {
    }

private:
    void set(const char * name, const QString & text)
    {
        if (!text.isEmpty()) {
            m_words.insert(QString::fromLatin1(name), text);
        }
    }

    values & m_words;
};

bool isQuoted(const plugin::statement_record & record)
{
    return (record.action == plugin::statement_action::create_table ||
            record.action == plugin::statement_action::add_column) &&
           record.defaultText.contains(QLatin1Char('`'));
}

} // namespace

script_view::script_view(const script & of, const database::facts & known, const made_objects & made)
    : m_script(of), m_known(known), m_made(made)
{
}

const model::project * script_view::project(moment when) const
{
    return (when == moment::now ? m_script.now : m_script.before).get();
}

const model_names * script_view::names(moment when) const
{
    const model::project * const of = project(when);
    std::optional<model_names> & kept = when == moment::now ? m_now : m_before;
    if (of != nullptr && !kept) {
        kept.emplace(m_known, *of);
    }
    return kept ? &*kept : nullptr;
}

void script_view::see(const plugin::statement_record & record)
{
    m_quotes = m_quotes || isQuoted(record);
}

bool script_view::quotesNames() const
{
    if (!m_ownQuotes) {
        m_ownQuotes = std::any_of(m_script.records.begin(), m_script.records.end(), isQuoted);
    }
    return m_quotes || *m_ownQuotes;
}

std::shared_ptr<model::entity> told_statement::entity(moment when) const
{
    const model::project * const of = m_in.project(when);
    return of != nullptr && m_record.entity != 0 ? of->getEntityById(m_record.entity) : nullptr;
}

std::shared_ptr<model::property> told_statement::property(moment when) const
{
    const model::project * const of = m_in.project(when);
    return of == nullptr ? nullptr : findProperty(*of, m_record.entity, m_record.property);
}

std::shared_ptr<model::relationship> told_statement::relationship(moment when) const
{
    const std::shared_ptr<model::property> owner = property(when);
    return owner ? owner->getRelation() : nullptr;
}

std::shared_ptr<model::entity> told_statement::entity() const
{
    const std::shared_ptr<model::entity> now = entity(moment::now);
    return now ? now : entity(moment::before);
}

std::shared_ptr<model::property> told_statement::property() const
{
    const std::shared_ptr<model::property> now = property(moment::now);
    return now ? now : property(moment::before);
}

std::shared_ptr<model::relationship> told_statement::relationship() const
{
    const std::shared_ptr<model::relationship> now = relationship(moment::now);
    return now ? now : relationship(moment::before);
}

std::vector<object> told_statement::objects() const
{
    std::vector<object> about;
    if (const auto of = entity()) {
        about.push_back({model::object_kind::entity, of->getId(), of->getName()});
    }
    const auto member = property();
    if (member) {
        about.push_back({model::object_kind::property, member->getId(), nameOf(*member)});
    }
    if (m_record.relationship != 0) {
        about.push_back(
            {model::object_kind::relationship, m_record.relationship, member ? nameOf(*member) : QString()});
    }
    return about;
}

values told_statement::words() const
{
    values words{{QStringLiteral("db"), m_in.known().label}, {QStringLiteral("code"), m_said.code}};
    const auto of = entity();
    const auto member = property();
    if (of) {
        words.insert(QStringLiteral("entity"), of->getName());
        words.insert(QStringLiteral("subject"), of->getName());
    }
    if (member) {
        words.insert(QStringLiteral("property"), nameOf(*member));
        words.insert(QStringLiteral("subject"), nameOf(*member));
    }
    std::visit(word_reader(words), m_read.asked);
    // A statement of the custom script need not be about anything of the model.
    const QString own = words.value(u"table");
    const QString table = own.isEmpty() ? m_in.of().name : own;
    const QString column = words.value(u"column");
    const QString named = column.isEmpty() ? table : table + QLatin1Char('.') + column;
    for (const auto & [word, text] : {std::pair("entity", table), {"property", named}, {"subject", named}}) {
        QString & held = words[QString::fromLatin1(word)];
        held = held.isEmpty() ? text : held;
    }
    return words;
}

} // namespace check
