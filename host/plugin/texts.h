#pragma once

#include <QCoreApplication>

namespace plugin {

/// tr() for the reasons that this folder tells.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(plugin)
};

} // namespace plugin
