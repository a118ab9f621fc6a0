#pragma once

#include <QCoreApplication>

namespace storage {

/// tr() for the reasons that this folder tells.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(storage)
};

} // namespace storage
