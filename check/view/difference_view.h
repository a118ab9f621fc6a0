#pragma once

#include "check/view/schema_difference.h"
#include "check/view/step_changes.h"
#include "check/view/told_statement.h"

#include <QSet>

#include <memory>

namespace check {

/// What a step wrote beside statements that ran: neither catalogue nor models tell.
struct step_record
{
    QSet<long> commented;       ///< properties whose change stands in the script as a comment alone
    QSet<long> refusedEntities; ///< whose table a refused statement is about
    QSet<long> refusedProperties;
    QSet<long> toldProperties; ///< of which a loss was told already
    int refused = 0;           ///< statements
};

/// One difference with the objects of the models that it is about.
class difference_view
{
public:
    difference_view(const script_view & in, const step_changes & changes, const step_record & record,
                    const schema_difference & what);

    [[nodiscard]] const schema_difference & what() const { return m_what; }
    [[nodiscard]] const script_view & in() const { return m_in; }
    [[nodiscard]] const step_changes & changes() const { return m_changes; }
    [[nodiscard]] const step_record & record() const { return m_record; }

    // Null when the model has none.
    [[nodiscard]] const std::shared_ptr<model::entity> & entity(moment when) const;
    [[nodiscard]] const std::shared_ptr<model::property> & property(moment when) const;
    /// The many-to-many relationship whose link table it is.
    [[nodiscard]] const std::shared_ptr<model::relationship> & link() const { return m_link; }
    /// The same in the model after the step where it is there, else before it.
    [[nodiscard]] std::shared_ptr<model::entity> entity() const;
    [[nodiscard]] std::shared_ptr<model::property> property() const;

    [[nodiscard]] bool isSoftDeleteColumn(moment when) const;
    /// The table that the entity has in the model after the step, by the name that tells it apart; empty for
    /// none.
    [[nodiscard]] QString tableNow() const;
    /// Whether it is a table that is left, which the model asks for still: a new database refuses to make it.
    [[nodiscard]] bool isAskedFor() const;
    [[nodiscard]] std::vector<object> objects() const;
    [[nodiscard]] values words() const;

private:
    void findOwners();
    void findProperty(moment when);

    const script_view & m_in;
    const step_changes & m_changes;
    const step_record & m_record;
    const schema_difference & m_what;
    std::shared_ptr<model::entity> m_entities[2];
    std::shared_ptr<model::property> m_properties[2];
    std::shared_ptr<model::relationship> m_link;
};

} // namespace check
