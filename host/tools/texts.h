#pragma once

#include <QCoreApplication>

namespace tools {

/// tr() for the reasons that this folder tells.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(tools)
};

} // namespace tools
