#pragma once

#include "check/finding/finding.h"
#include "model/model_difference.h"

#include <QHash>
#include <QString>

#include <utility>

namespace model {
class project;
}

namespace app {

/// Since which version the objects of a model have been there.
class object_origins
{
public:
    /// Takes in a version; they come oldest first.
    void add(const model::project & version, const QString & word);
    /// "because entity 2 'gig' has been there since v1", of the nearest object that the statement is about;
    /// empty when it is about none.
    [[nodiscard]] QString reasonOf(const check::statement_place & place) const;

private:
    void add(model::object_kind kind, long id, const QString & word);

    QHash<std::pair<int, long>, QString> m_since; ///< by kind and id
};

} // namespace app
