#pragma once

#include "plugin/statement_source.h"

#include <QString>

namespace plugin {

/// What a script is called, and which versions of the project it is about.
struct script_identity
{
    QString fileName; ///< absolute name of the file that an export writes
    int from = 0;     ///< version that the script begins with; 0 when it begins with nothing
    int to = 0;       ///< version that it leads to; 0 for the full schema
};

/// One statement as it goes into a script.
struct script_statement
{
    statement_action action = statement_action::begin;
    QString text;
    QString defaultText; ///< what the dialect said, before a custom script replaced it
    long entity = 0;     ///< id of what it is about; 0 when there is none
    long property = 0;
    long relationship = 0;
};

/// Where the statements of one script go, in their order.
///
/// An operation that fails gives false; then reason() tells more, and abandon() is the last call.
class statement_sink
{
public:
    statement_sink() = default;
    virtual ~statement_sink() = default;
    statement_sink(const statement_sink &) = delete;
    statement_sink & operator=(const statement_sink &) = delete;

    [[nodiscard]] virtual bool open() = 0;
    [[nodiscard]] virtual bool take(const script_statement & statement) = 0;
    /// Ends the script; true when all of it has arrived.
    [[nodiscard]] virtual bool close() = 0;
    [[nodiscard]] virtual QString reason() const = 0;
    /// What a person has to know about a script that ends now, before its time; empty when there is nothing.
    [[nodiscard]] virtual QString lossText() const = 0;
    /// Ends a script that is not complete.
    virtual void abandon() = 0;
};

} // namespace plugin
