#pragma once

#include "check/finding/finding.h"
#include "check/finding/values.h"

#include <QLatin1String>

#include <span>

namespace check {

/// What can be foretold, as data. Codes are stable: none is ever reused or given another meaning.
struct rule
{
    QLatin1String code;
    QLatin1String name;
    severity weight;
    const char * title; ///< what it is about, in one line
};

/// What a rule says. The texts hold names in braces, such as "{table}", which a finding fills in.
struct rule_text
{
    QLatin1String code;
    effect what;
    const char * message; ///< what will happen
    const char * why;
    const char * remedy; ///< what to do
    /// The fields of the text form whose change it is about, with blanks between; after a stroke those that
    /// count when none of these changed. Empty for objects as a whole.
    const char * fields = "";
};

/// `text` with each "{name}" replaced; a name without a value stays as it is, so that it is seen.
[[nodiscard]] QString filled(const char * text, const values & with);

/// All rules, by their codes.
[[nodiscard]] std::span<const rule> allRules();
/// The rule of that code; none when no rule has it.
[[nodiscard]] const rule * ruleOf(const QString & code);

/// The page of a rule, in Markdown: its condition, an example, what databases answer, and what to do. Empty
/// for a code that no rule has.
[[nodiscard]] QByteArray rulePage(const QString & code);

/// A finding with these texts, of the rule that they belong to.
[[nodiscard]] finding findingOf(const rule_text & of, const values & with);

} // namespace check
