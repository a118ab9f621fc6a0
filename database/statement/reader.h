#pragma once

#include "database/statement/change.h"
#include "database/statement/token.h"

namespace database {

/// Who wrote a text of statements.
enum class writer
{
    anyone,  ///< what cannot be read may be a form that is not known
    exporter ///< all forms are known: what cannot be read no database can read, either
};

struct statement
{
    change asked;
    QString text;            ///< without the mark that ends it, and without comments around it
    qsizetype position = 0;  ///< of the text's first character in what was read
    bool isCutShort = false; ///< it cannot be read to its end: `asked` is what stands before that
};

struct facts;

/// Reads text after text.
class statement_reader
{
public:
    /// Reads what all databases read alike.
    statement_reader() = default;
    /// Reads as one database does where not all read alike.
    explicit statement_reader(const facts & known);

    /// The statements of a text, in their order, in the forms of all databases that scripts are made for.
    /// What has another form is an `unknown_statement`; comments alone are no statement. Never fails.
    [[nodiscard]] std::vector<statement> read(const QString & text, writer by = writer::anyone);

private:
    bool m_hasQuotedTypes = false;
    std::vector<token> m_tokens; ///< of the text that was read last
};

/// The same of one text, of what all databases read alike.
[[nodiscard]] std::vector<statement> readStatements(const QString & text, writer by = writer::anyone);

} // namespace database
