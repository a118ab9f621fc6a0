#pragma once

#include "app/diff_outline.h"

#include "storage/history.h"
#include "zk/zk_bool.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace model {
class project;
}

namespace app {

class source;

/// What a version of a model changed.
struct history_step
{
    QString word;                    ///< "v2", or "now" for what is not tagged yet
    storage::history::version what;  ///< number 0 for what is not tagged yet
    std::vector<outline_line> lines; ///< in words of the model
};

/// What entities and properties were called in the versions of a model.
class former_names
{
public:
    /// Takes in a version; they come oldest first.
    void add(const model::project & version);

    /// The names that an entity had, oldest first, without `current`.
    [[nodiscard]] QStringList ofEntity(long id, const QString & current) const;
    /// The same for a property.
    [[nodiscard]] QStringList ofProperty(long id, const QString & current) const;

private:
    using names_by_id = QHash<long, QStringList>;

    names_by_id m_entities;
    names_by_id m_properties;
};

struct model_history
{
    /// What each version changed, oldest first, and what changed since the newest one, if anything did; empty
    /// without a version.
    std::vector<history_step> steps;
    former_names names;
};

/// Reads the versions of `of`. A failure is one line.
[[nodiscard]] zk::ZkBool readHistory(source & of, model_history & history);

/// A step of a history, as far as it is about one entity.
struct entity_step
{
    const history_step * step = nullptr;
    std::vector<const outline_line *> lines;
};

/// The steps that are about an entity, by its id. `steps` have to outlive them.
[[nodiscard]] QHash<long, std::vector<entity_step>> stepsByEntity(const std::vector<history_step> & steps);

} // namespace app
