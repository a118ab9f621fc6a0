#pragma once

#include "model/project_historic.h"
#include "zk/zk_bool.h"
#include "zk/zk_collection.h"

#include <QCoreApplication>
#include <QSqlError>

#include <functional>
#include <memory>

namespace model {
class project;
}

namespace storage {
class restored_version;
}

namespace plugin {

/// The tagged versions of the current project, asked for when this object is made.
class ddl_export_history
{
    // Who translates knows the messages as the builder's.
    Q_DECLARE_TR_FUNCTIONS(plugin::ddl_export_builder)

public:
    using list_of_tags = zk::ZkCollection<long, std::shared_ptr<model::project_historic>>;
    /// What is done with a version, which is the current project then; a failure ends the walk.
    using visitor = std::function<zk::ZkBool(const std::shared_ptr<model::project> & version, int number)>;

    ddl_export_history();

    /// Why there are no tags, when they cannot be read.
    [[nodiscard]] const QSqlError & getError() const { return m_error; }
    /// Oldest first.
    [[nodiscard]] const list_of_tags & getTags() const { return m_tags; }

    /// Restores and loads the versions one after another under the name of `project`, whose versions they
    /// are, and lets `visit` see each. Fails with the message to show, or with that of `visit`. Another
    /// project may be current afterwards.
    zk::ZkBool forEach(const model::project & project, const visitor & visit) const;

    /// That the tags cannot be read, for the reason `error`.
    [[nodiscard]] static zk::ZkBool tagsFailure(const QSqlError & error);

private:
    /// Writes what `tag` holds into a new file of the folder `temp`, whose name begins with `start`.
    static zk::ZkBool restore(const model::project_historic & tag, const QString & temp,
                              const QString & start, storage::restored_version & file);
    /// Loads the version that was restored into the file `name` of the folder `temp`, and makes it current.
    static zk::ZkBool load(const QString & temp, const QString & name, model::project & version);

    list_of_tags m_tags;
    QSqlError m_error;
};

} // namespace plugin
