#include "check/rules/refusal_rules.h"
#include "check/view/told_statement.h"

namespace check {

finding explainRefusal(const told_statement & of, const QString & cause)
{
    values words = of.words();
    words.insert(QStringLiteral("cause"), cause);
    // What cannot be read comes before what the model asks for, and that before what a step changes.
    for (const auto list : {consequenceRules, nameRules, typeRules, structureRules, tableStepRules,
                            keyStepRules, otherRefusalRules}) {
        for (const refusal_rule & each : list()) {
            const std::optional<values> more = each.explains(of);
            if (more) {
                words.insert(*more);
                finding told = findingOf(each.about, words);
                told.error = of.said().code;
                return told;
            }
        }
    }
    return {};
}

} // namespace check
