#pragma once

#include "database/simulation/refusal.h"
#include "database/statement/change.h"

#include <QHash>

namespace database {

/// Remembers what refused statements would have made and taken away, to tell a later refusal that follows
/// from one.
class earlier_refusals
{
public:
    /// Takes a statement that was refused.
    void add(int number, const facts & known, const change & asked);
    /// The number of the statement without whose refusal this one would not have come; -1 for none.
    [[nodiscard]] int causeOf(const refusal & why) const;

private:
    QHash<QString, int> m_notMade;
    QHash<QString, int> m_notGone;
};

} // namespace database
