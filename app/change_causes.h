#pragma once

#include "check/finding/finding.h"
#include "model/model_difference.h"
#include "plugin/statement_source.h"

#include <QHash>

#include <functional>
#include <utility>
#include <vector>

namespace app {

/// Finds the changes of a model from which the statements of its step follow, and that findings are about.
class change_causes
{
public:
    /// Both have to outlive it.
    /// @param after the model that the step leads to
    change_causes(const std::vector<model::model_change> & changes, const model::project & after);

    /// Indexes into the changes, ascending; none for a statement that no change explains.
    [[nodiscard]] std::vector<int> find(const plugin::statement_record & statement) const;
    /// The same for a finding, told by its objects.
    [[nodiscard]] std::vector<int> find(const check::finding & finding) const;

private:
    using condition = std::function<bool(const model::model_change &)>;
    /// The changes of the objects that are as asked for, ascending.
    [[nodiscard]] std::vector<int> changesOf(const std::vector<check::object> & objects,
                                             const condition & isAsked) const;
    [[nodiscard]] std::vector<int> changesWithin(const std::vector<check::object> & objects) const;
    [[nodiscard]] std::vector<int> additionsOf(const std::vector<check::object> & objects) const;
    [[nodiscard]] std::vector<int> ofFields(const check::finding & finding) const;
    [[nodiscard]] std::vector<int> nearest(const plugin::statement_record & statement) const;
    [[nodiscard]] std::vector<int> ofInverse(const plugin::statement_record & statement) const;
    [[nodiscard]] std::vector<int> changesOf(model::object_kind kind, long id) const
    {
        return m_byObject.value({static_cast<int>(kind), id});
    }

    const std::vector<model::model_change> & m_changes;
    const model::project & m_after;
    QHash<std::pair<int, long>, std::vector<int>> m_byObject; ///< kind and id
};

} // namespace app
