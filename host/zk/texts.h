#pragma once

#include <QCoreApplication>

namespace zk {

/// tr() for the reasons that this folder tells.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(zk)
};

} // namespace zk
