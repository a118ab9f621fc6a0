#pragma once

#include "app/diff_outline.h"

#include "storage/history.h"
#include "zk/zk_bool.h"

#include <QHash>
#include <QString>

#include <vector>

namespace app {

class source;

/// What a version of a model changed.
struct history_step
{
    QString word;                    ///< "v2", or "now" for what is not tagged yet
    storage::history::version what;  ///< number 0 for what is not tagged yet
    std::vector<outline_line> lines; ///< in words of the model
};

/// Reads what each version of `of` changed, oldest first, and what changed since the newest one, if anything
/// did; nothing when there is no version. A failure is one line.
[[nodiscard]] zk::ZkBool readHistory(source & of, std::vector<history_step> & steps);

/// A step of a history, as far as it is about one entity.
struct entity_step
{
    const history_step * step = nullptr;
    std::vector<const outline_line *> lines;
};

/// The steps that are about an entity, by its id. `steps` have to outlive them.
[[nodiscard]] QHash<long, std::vector<entity_step>> stepsByEntity(const std::vector<history_step> & steps);

} // namespace app
