#pragma once

#include <QCoreApplication>

namespace storage {

/// tr() for the reasons that this folder tells. Whole sentences: what they begin with ("file: ...") names no
/// more than where they hold.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(storage)
};

} // namespace storage
