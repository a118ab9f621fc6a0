#pragma once

#include "database/statement/change.h"

namespace database {

struct statement
{
    change asked;
    QString text;            ///< without the mark that ends it, and without comments around it
    qsizetype position = 0;  ///< of the text's first character in what was read
    bool isCutShort = false; ///< a quotation has no end: `asked` is what stands before it
};

/// The statements of a text, in their order, in the forms of all databases that scripts are made for. What
/// has another form is an `unknown_statement`; comments alone are no statement. Never fails.
[[nodiscard]] std::vector<statement> readStatements(const QString & text);

} // namespace database
