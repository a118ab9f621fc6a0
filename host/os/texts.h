#pragma once

#include <QCoreApplication>

namespace os {

/// tr() for the reasons that this folder tells.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(os)
};

} // namespace os
