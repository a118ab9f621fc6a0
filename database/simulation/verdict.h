#pragma once

#include "database/facts/refusal_cause.h"

#include <QLatin1String>
#include <QString>

#include <vector>

namespace database {

enum class outcome
{
    done,
    refused,       ///< the catalogue is as it was
    maybe_refused, ///< it depends on the values in rows; what follows is judged as if it was done
    not_judged     ///< the form is unknown; what follows is judged as if it changed nothing
};

/// What goes, or becomes something else, though the statement runs.
enum class loss_kind
{
    rows,            ///< those of a dropped table
    values,          ///< those of a dropped column
    counter,         ///< a column is no longer counted
    not_null,        ///< a column may hold no value from now on
    filled,          ///< rows got a value that nobody gave
    name_cut,        ///< something has a shorter name than it was given
    index_cut,       ///< only the beginning of the values counts
    nothing_done,    ///< the statement runs and leaves everything as it is
    other_renamed,   ///< it was not a table that got the name
    column_not_made, ///< the words of a column mean something else
    columns_joined,  ///< the columns after one are words of its type
    key,             ///< a table has no primary key any more
    trigger          ///< the trigger that counts a column does not know it any more, and lets no row in
};

struct loss
{
    loss_kind kind = loss_kind::rows;
    QString object; ///< as "table a", "column a.x", "index i"

    bool operator==(const loss &) const = default;
};

/// What a database says to one statement.
struct verdict
{
    outcome what = outcome::done;
    refusal_cause cause = refusal_cause::none;
    QLatin1String code; ///< the server's own, for a statement that is or may be refused
    QString object;     ///< that it is about, as "table a", "column a.x"; empty for none in particular
    int consequenceOf =
        -1; ///< number of the earlier statement without whose refusal this would not be refused
    std::vector<loss> losses;
};

} // namespace database
