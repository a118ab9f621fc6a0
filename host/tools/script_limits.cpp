#include "tools/script_limits.h"

#include "tools/texts.h"

#include <QJSEngine>
#include <QJSValue>

#include <algorithm>
#include <limits>

namespace tools {

namespace {

const char TimeLimitVariable[] = "KORVANE_SCRIPT_TIMEOUT_MS";

// What it throws has no place in the script, so it is reported at the function's.
const char TextLimiter[] = "(function (f, limit, message) {"
                           " return function (project, entity, property, enumeration, parameters) {"
                           " const text = f(project, entity, property, enumeration, parameters);"
                           " if (typeof text === 'string' && text.length > limit) {"
                           " throw message.replace('%1', text.length).replace('%3', limit)"
                           ".replace('%2', function () { return parameters.action; }); } return text; }; })";

} // namespace

std::optional<int> timeLimitOfEnvironment()
{
    if (!qEnvironmentVariableIsSet(TimeLimitVariable)) {
        return DefaultTimeLimit;
    }
    const QString given = qEnvironmentVariable(TimeLimitVariable);
    const bool hasDigitsOnly = std::all_of(
        given.cbegin(), given.cend(), [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
    bool isInRange = false;
    const int limit = given.toInt(&isInRange);
    return isInRange && hasDigitsOnly ? std::optional(limit) : std::nullopt;
}

QString badTimeLimit()
{
    return texts::tr(
               "%1: '%2' is not a time limit; give a number of milliseconds from 1 to %3, or 0 for none")
        .arg(QLatin1String(TimeLimitVariable), qEnvironmentVariable(TimeLimitVariable),
             QString::number(std::numeric_limits<int>::max()));
}

QJSValue withBoundedText(QJSEngine & engine, const QJSValue & exportStep)
{
    const QString message =
        texts::tr("exportStep returned %1 characters for the action %2; at most %3 are allowed");
    return engine.evaluate(QString::fromLatin1(TextLimiter))
        .call({exportStep, QJSValue(LongestText), QJSValue(message)});
}

} // namespace tools
