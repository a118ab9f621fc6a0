#pragma once

#include "check/finding/rule.h"
#include "check/view/made_objects.h"
#include "check/view/model_names.h"
#include "check/view/script.h"

#include "database/simulation/verdict.h"

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <optional>

namespace check {

/// A model that a script leads from, or to.
enum class moment
{
    before,
    now
};

/// What rules can ask about one script.
class script_view
{
public:
    script_view(const script & of, const database::facts & known, const made_objects & made);

    [[nodiscard]] const script & of() const { return m_script; }
    [[nodiscard]] const database::facts & known() const { return m_known; }
    [[nodiscard]] const made_objects & made() const { return m_made; }
    [[nodiscard]] bool isStep() const { return m_script.before != nullptr; }
    [[nodiscard]] const model::project * project(moment when) const;
    /// The names of the model's tables; none when there is no model.
    [[nodiscard]] const model_names * names(moment when) const;
    /// Takes that a statement is run now, which may be none of the script's own records.
    void see(const plugin::statement_record & record);
    /// Whether the script writes names of tables in quotes: one of its own records, or of those that were
    /// seen.
    [[nodiscard]] bool quotesNames() const;

private:
    const script & m_script;
    const database::facts & m_known;
    const made_objects & m_made;
    mutable std::optional<model_names> m_before; ///< made when they are asked for
    mutable std::optional<model_names> m_now;
    bool m_quotes = false; ///< of what was seen
    mutable std::optional<bool> m_ownQuotes;
};

/// What rules can ask about one statement.
class told_statement
{
public:
    told_statement(const script_view & in, const plugin::statement_record & record,
                   const database::statement & read, const database::verdict & said)
        : m_in(in), m_record(record), m_read(read), m_said(said)
    {
    }

    [[nodiscard]] const script_view & in() const { return m_in; }
    [[nodiscard]] const database::facts & known() const { return m_in.known(); }
    [[nodiscard]] const plugin::statement_record & record() const { return m_record; }
    [[nodiscard]] const database::verdict & said() const { return m_said; }
    [[nodiscard]] const database::statement & read() const { return m_read; }
    [[nodiscard]] bool isFor(database::refusal_cause cause) const { return m_said.cause == cause; }
    [[nodiscard]] bool isForAny(std::initializer_list<database::refusal_cause> causes) const
    {
        return std::find(causes.begin(), causes.end(), m_said.cause) != causes.end();
    }

    /// What the statement asks for; none when it is something else.
    template <class Change>
    [[nodiscard]] const Change * asks() const
    {
        return std::get_if<Change>(&m_read.asked);
    }

    // What the statement is about, in one of the models; null when it is not there.
    [[nodiscard]] std::shared_ptr<model::entity> entity(moment when) const;
    [[nodiscard]] std::shared_ptr<model::property> property(moment when) const;
    [[nodiscard]] std::shared_ptr<model::relationship> relationship(moment when) const;
    /// The model after the script where the object is there, else the one before it.
    [[nodiscard]] std::shared_ptr<model::entity> entity() const;
    [[nodiscard]] std::shared_ptr<model::property> property() const;
    [[nodiscard]] std::shared_ptr<model::relationship> relationship() const;

    /// Objects of the model that the statement is about.
    [[nodiscard]] std::vector<object> objects() const;
    /// What the names in texts of rules stand for, as far as the statement itself says it.
    [[nodiscard]] values words() const;
    /// One of them; empty when the statement does not say it.
    [[nodiscard]] QString word(const char * name) const { return words().value(QString::fromLatin1(name)); }

private:
    const script_view & m_in;
    const plugin::statement_record & m_record;
    const database::statement & m_read;
    const database::verdict & m_said;
};

} // namespace check
