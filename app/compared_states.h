#pragma once

#include "zk/zk_bool.h"

#include <QString>

#include <memory>

namespace model {
class project;
}

namespace app {

class source;

/// What a command line names for a comparison: SOURCE, then a version, two versions, or another SOURCE.
struct comparison_request
{
    QString source;
    QString from; ///< a version, or the other source; empty for the newest version
    QString to;   ///< a version; empty for the state of the project

    /// Why that cannot be meant; empty when it can.
    [[nodiscard]] QString whyWrong() const;
    /// Whether two sources are compared.
    [[nodiscard]] bool hasTwoSources() const;
};

/// Two states of a project, both loaded.
struct compared_states
{
    std::shared_ptr<model::project> before;
    std::shared_ptr<model::project> after;
    /// The project whose settings count: that of the later source as it is now.
    std::shared_ptr<model::project> state;
    QString from; ///< word for `before`: a version, or the name of its source when there are two
    QString to;
    /// Numbers of the versions, for the name of a script; the state of a project is the next one after its
    /// newest version. Two sources are 1 and 2.
    int fromNumber = 0;
    int toNumber = 0;
    bool isText = false; ///< whether `state` comes from a text form
    /// That of the versions; of two sources one whose only version and whose state they are.
    std::shared_ptr<source> of;

    /// Whether it is a step from one version to a later one.
    [[nodiscard]] bool isForwards() const { return fromNumber < toNumber; }
};

/// Loads two versions of `of`, which is open, or its state for `Now`. A failure is one line.
[[nodiscard]] zk::ZkBool loadVersions(const std::shared_ptr<source> & of, int from, int to,
                                      compared_states & states);
/// Loads what `request` names. A failure is one line.
[[nodiscard]] zk::ZkBool loadStates(const comparison_request & request, compared_states & states);

} // namespace app
