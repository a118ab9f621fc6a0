// What is refused because of something else, and what no other rule explains.

#include "check/rules/refusal_rules.h"
#include "check/view/told_statement.h"

namespace check {

namespace {

std::optional<values> followsFromRefusal(const told_statement & of)
{
    return of.said().consequenceOf >= 0 ? std::optional(values()) : std::nullopt;
}

std::optional<values> always(const told_statement & of)
{
    const QString object = of.said().object;
    const QString error =
        of.said().code.isEmpty() ? QString() : QStringLiteral(" with the error ") + of.said().code;
    return values{{QStringLiteral("object"), object.isEmpty() ? QStringLiteral("the statement") : object},
                  {QStringLiteral("error"), error}};
}

const refusal_rule Follows[] = {
    {{QLatin1String("KV200"), effect::refused,
      "{db} refuses the statement about '{subject}' as well, since {cause} was refused.",
      "A refused statement changes nothing, and what comes after it in the scripts takes it for done.",
      "Mend what was refused first; this goes with it."},
     followsFromRefusal},
};

const refusal_rule Others[] = {
    {{QLatin1String("KV299"), effect::refused,
      "{db} refuses the statement about '{subject}'{error} ({object}).",
      "The statement does not fit what the database holds when it runs.",
      "Look at the statement and at those before it; a custom script can replace it."},
     always},
};

} // namespace

std::span<const refusal_rule> consequenceRules()
{
    return Follows;
}

std::span<const refusal_rule> otherRefusalRules()
{
    return Others;
}

} // namespace check
