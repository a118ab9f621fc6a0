#pragma once

#include "plugin/base_interface.h"
#include "zk/zk_bool.h"

namespace model {
class project;
}

namespace plugin {

/// A plug-in that exports projects.
class KORVANE_EXPORT export_interface : public base_interface
{
    Q_OBJECT

public:
    export_interface();
    ~export_interface() override;

    /// Exports `project`, which is the current project. A cancellation by the user is a success.
    virtual zk::ZkBool exportProject(model::project & project) = 0;
};

} // namespace plugin
