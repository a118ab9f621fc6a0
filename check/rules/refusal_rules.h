#pragma once

#include "check/finding/rule.h"

#include <optional>
#include <span>

namespace check {

class told_statement;

/// A rule that explains why a statement is refused.
struct refusal_rule
{
    rule_text about;
    /// What its texts need beside the names of the statement itself; none when it is not the reason.
    std::optional<values> (*explains)(const told_statement & of);
};

// In each list the first that explains is the reason.
[[nodiscard]] std::span<const refusal_rule> nameRules();      ///< names
[[nodiscard]] std::span<const refusal_rule> typeRules();      ///< types, keys and sizes
[[nodiscard]] std::span<const refusal_rule> structureRules(); ///< columns, relationships and link tables
[[nodiscard]] std::span<const refusal_rule>
tableStepRules();                                           ///< what a step does to tables and their columns
[[nodiscard]] std::span<const refusal_rule> keyStepRules(); ///< to indexes and foreign keys
[[nodiscard]] std::span<const refusal_rule> consequenceRules();  ///< what an earlier refusal brings with it
[[nodiscard]] std::span<const refusal_rule> otherRefusalRules(); ///< what no other explains

/// The reason why the statement is refused, as a finding with its texts; objects, place and so on are left.
[[nodiscard]] finding explainRefusal(const told_statement & of, const QString & cause);

} // namespace check
