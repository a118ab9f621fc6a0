#include "database/facts/known_types.h"

#include <QStringBuilder>

#include <algorithm>
#include <cstring>

namespace database {

namespace {

bool isNumber(const QString & text)
{
    const QStringView digits =
        text.startsWith(u'-') || text.startsWith(u'+') ? QStringView(text).mid(1) : text;
    return !digits.isEmpty() &&
           std::all_of(digits.begin(), digits.end(), [](QChar c) { return c.isDigit() || c == u'.'; });
}

bool hasNumbersOnly(const declared_type & type)
{
    return type.arguments.size() <= 2 && std::all_of(type.arguments.begin(), type.arguments.end(), isNumber);
}

bool contains(std::span<const QLatin1String> words, const QString & word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

QLatin1String familyOf(const facts & known, const declared_type & type)
{
    const type_word * const word = knownType(known, type);
    return QLatin1String(word == nullptr ? "" : word->family);
}

bool isInteger(const type_word & word)
{
    return std::strcmp(word.family, "integer") == 0;
}

} // namespace

int declared_type::length() const
{
    return arguments.size() == 1 ? arguments.front().toInt() : 0;
}

declared_type partsOf(const QString & type)
{
    const QString text = type.trimmed();
    const auto open = text.indexOf(u'(');
    const auto close = text.lastIndexOf(u')');
    declared_type parts;
    const bool hasBrackets = open >= 0 && close > open;
    const QString head = hasBrackets ? text.left(open).trimmed() : text;
    parts.word = head.section(u' ', 0, 0).toUpper();
    parts.rest = head.section(u' ', 1).toUpper();
    if (hasBrackets) {
        for (const QString & argument : text.mid(open + 1, close - open - 1).split(u',')) {
            parts.arguments += argument.trimmed();
        }
        parts.rest = QString(parts.rest % u' ' % text.mid(close + 1).toUpper()).trimmed();
    }
    return parts;
}

const type_word * knownType(const facts & known, const declared_type & type)
{
    const auto words = known.types.words.value;
    const auto found = std::find_if(words.begin(), words.end(), [&type](const type_word & word) {
        return type.word == QLatin1String(word.word);
    });
    return found == words.end() ? nullptr : &*found;
}

refusal_cause refusalOf(const facts & known, const QString & type)
{
    const declared_type parts = partsOf(type);
    if (parts.word.isEmpty()) {
        return known.types.mayBeMissing.value ? refusal_cause::none : refusal_cause::syntax;
    }
    if (contains(known.types.syntaxErrors.value, parts.word)) {
        return refusal_cause::syntax;
    }
    if (known.types.numbersOnlyInBrackets.value && !hasNumbersOnly(parts)) {
        return refusal_cause::syntax;
    }
    const type_word * const word = knownType(known, parts);
    if (word == nullptr) {
        return known.types.unknown.value == unknown_type::taken ? refusal_cause::none
                                                                : refusal_cause::unknown_type;
    }
    return !word->takesLength && !parts.arguments.isEmpty() ? refusal_cause::type_with_length
                                                            : refusal_cause::none;
}

bool mayRefer(const facts & known, const QString & from, const QString & to)
{
    const declared_type own = partsOf(from);
    const declared_type target = partsOf(to);
    const QLatin1String ownFamily = familyOf(known, own);
    const QLatin1String targetFamily = familyOf(known, target);
    if (ownFamily.isEmpty() || targetFamily.isEmpty()) {
        return false;
    }
    if (ownFamily == targetFamily) {
        return own.rest.contains(QLatin1String("UNSIGNED")) ==
               target.rest.contains(QLatin1String("UNSIGNED"));
    }
    const type_word * const word = knownType(known, own);
    return known.types.widerTargets.value && word != nullptr && isInteger(*word) &&
           (targetFamily == QLatin1String("real") || targetFamily == QLatin1String("numeric"));
}

bool isLarge(const facts & known, const QString & type)
{
    const type_word * const word = knownType(known, partsOf(type));
    return word != nullptr && word->large;
}

bool isHashed(const facts & known, const QString & type)
{
    const int longest = known.keys.longestHashFree.value;
    return longest > 0 && (isLarge(known, type) || partsOf(type).length() > longest);
}

bool takesPrefix(const facts & known, const QString & type, int characters)
{
    const declared_type parts = partsOf(type);
    return isLarge(known, type) || (parts.word == QLatin1String("VARCHAR") && parts.length() >= characters);
}

QString shownType(const facts & known, const QString & type)
{
    const declared_type parts = partsOf(type);
    const type_word * const word = knownType(known, parts);
    if (word == nullptr) {
        return type;
    }
    const QLatin1String shown(word->shown);
    if (shown.isEmpty()) {
        return known.types.unknown.value == unknown_type::taken ? type : type.toLower();
    }
    if (parts.arguments.isEmpty() || shown.endsWith(u')')) {
        return shown;
    }
    return shown % u'(' % parts.arguments.join(u',') % u')';
}

} // namespace database
