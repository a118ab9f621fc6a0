#include "database/facts/known_types.h"

#include "database/facts/reserved_words.h"

#include <QRegularExpression>
#include <QStringBuilder>

#include <algorithm>

namespace database {

namespace {

bool isNumber(const QString & text)
{
    const QStringView digits =
        text.startsWith(u'-') || text.startsWith(u'+') ? QStringView(text).mid(1) : text;
    return !digits.isEmpty() &&
           std::all_of(digits.begin(), digits.end(), [](QChar c) { return c.isDigit() || c == u'.'; });
}

bool haveNumbersOnly(const QStringList & arguments)
{
    return std::all_of(arguments.begin(), arguments.end(), isNumber);
}

bool haveTextsOnly(const QStringList & arguments)
{
    return std::all_of(arguments.begin(), arguments.end(),
                       [](const QString & each) { return each.startsWith(u'\''); });
}

template <class Text>
bool contains(std::span<const QLatin1String> words, const Text & word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::span<const type_word> rowsOf(const facts & known, const QString & word)
{
    const auto words = known.types.words.value;
    const auto first =
        std::lower_bound(words.begin(), words.end(), word, [](const type_word & row, const QString & asked) {
            return QLatin1String(row.word) < asked;
        });
    const auto last = std::find_if(first, words.end(),
                                   [&](const type_word & row) { return word != QLatin1String(row.word); });
    return {first, last};
}

/// The words of a type that belong to its name, and what follows them.
struct known_words
{
    std::span<const type_word> rows;
    QString rest;
};

// As many words as there is a type for.
known_words wordsOf(const facts & known, const declared_type & type)
{
    QString name = type.rest.isEmpty() ? type.word : QString(type.word % u' ' % type.rest);
    for (QString rest;;) {
        const auto rows = rowsOf(known, name);
        const auto blank = name.lastIndexOf(u' ');
        if (!rows.empty() || blank < 0) {
            return {rows, rest.trimmed()};
        }
        rest = name.sliced(blank) % rest;
        name.truncate(blank);
    }
}

bool fitsCount(const type_word & row, qsizetype count)
{
    return count <= row.mostNumbers && count >= row.fewestNumbers;
}

bool fitsNumber(const type_word & row, const QStringList & arguments)
{
    if (arguments.isEmpty() || row.takesTexts) {
        return true;
    }
    const int number = arguments.constFirst().toInt();
    return number >= row.smallest && (row.largest == 0 || number <= row.largest);
}

void addUsual(understood_type & type)
{
    // Where a width or a precision can be too large, none at all is as if it was not there.
    const bool isCounted = type.row->tooLarge == refusal_cause::width_too_large ||
                           type.row->tooLarge == refusal_cause::precision_too_large;
    if (isCounted && !type.arguments.isEmpty() && type.arguments.constFirst().toInt() == 0) {
        type.arguments.clear();
    }
    const bool hasOther = type.isUnsigned && type.row->usualUnsigned >= 0;
    const int usual = hasOther ? type.row->usualUnsigned : type.row->usual;
    if (type.arguments.isEmpty() && usual >= 0) {
        type.arguments += QString::number(usual);
    }
    if (type.arguments.size() == 1 && type.row->usualScale >= 0) {
        type.arguments += QString::number(type.row->usualScale);
    }
}

void chooseRow(std::span<const type_word> rows, understood_type & type)
{
    const QStringList & arguments = type.arguments;
    const type_word & first = rows.front();
    const auto counted = std::find_if(rows.begin(), rows.end(), [&](const type_word & row) {
        return fitsCount(row, arguments.size()) &&
               (row.takesTexts ? haveTextsOnly(arguments) : haveNumbersOnly(arguments));
    });
    if (counted == rows.end()) {
        const bool isTooMany = arguments.size() > first.mostNumbers && haveNumbersOnly(arguments);
        type.refused = isTooMany ? first.miscounted : refusal_cause::syntax;
        return;
    }
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const type_word & row) {
        return fitsCount(row, arguments.size()) && fitsNumber(row, arguments);
    });
    if (found == rows.end() && counted->tooLarge != refusal_cause::none) {
        type.refused = counted->tooLarge;
        return;
    }
    type.row = found == rows.end() ? &*counted : &*found;
    if (found == rows.end()) {
        type.arguments.front() = QString::number(counted->largest);
    }
    if (const int most = type.row->largestScale; most > 0 && arguments.size() == 2) {
        const int scale = arguments.at(1).toInt();
        type.refused = scale > most                      ? refusal_cause::scale_too_large
                       : scale > arguments.at(0).toInt() ? refusal_cause::scale_over_precision
                                                         : refusal_cause::none;
    }
    addUsual(type);
}

// After the type: whether its numbers have a sign.
bool takeMarks(const type_word & row, const QString & rest, understood_type & type)
{
    const QStringList marks = rest.split(u' ', Qt::SkipEmptyParts);
    const bool areKnown = std::all_of(marks.begin(), marks.end(), [](const QString & mark) {
        return mark == QLatin1String("UNSIGNED") || mark == QLatin1String("SIGNED") ||
               mark == QLatin1String("ZEROFILL");
    });
    type.isUnsigned = marks.contains(QLatin1String("UNSIGNED")) || marks.contains(QLatin1String("ZEROFILL"));
    return marks.isEmpty() || (areKnown && row.ifUnsigned != nullptr);
}

/// The type with a word that means nothing in the place of each that stands in quotation marks.
QString withoutQuotations(const facts & known, const QString & type)
{
    static const QRegularExpression quotation(QStringLiteral(R"(`[^`]*`|"[^"]*"|\[[^]]*\])"));
    return known.types.quotedWords.value ? QString(type).replace(quotation, QStringLiteral(" x ")) : type;
}

// Of a type that can be any words: none of them means something else.
bool haveWordsOnly(const facts & known, const declared_type & type)
{
    const QStringList words = type.rest.split(u' ', Qt::SkipEmptyParts) + QStringList(type.word);
    return std::none_of(words.begin(), words.end(),
                        [&](const QString & word) { return isReserved(known, word, name_place::other); });
}

int bytesOfDigits(int digits)
{
    constexpr int Bytes[] = {0, 1, 1, 2, 2, 3, 3, 4, 4};
    return digits / 9 * 4 + Bytes[digits % 9];
}

/// A type as the database keeps it that takes any: of one that begins with a quotation nothing but what
/// stands inside.
QString keptType(const facts & known, const QString & type)
{
    static const QRegularExpression quotation(
        QStringLiteral(R"re(^(?:`((?:[^`]|``)*)`|"((?:[^"]|"")*)"|\[([^]]*)\]))re"));
    const QRegularExpressionMatch found =
        known.types.quotedWords.value ? quotation.match(type) : QRegularExpressionMatch();
    if (!found.hasMatch()) {
        return type;
    }
    const QString inside = found.captured(found.lastCapturedIndex());
    const QChar mark = type.front(); // which stands twice where it is meant
    return mark == u'[' ? inside : QString(inside).replace(QString(2, mark), QString(mark));
}

/// The type as the catalogue shows it, of which it is known what it is understood as.
QString shownType(const facts & known, const QString & type, const understood_type & found)
{
    if (found.row == nullptr || known.types.unknown.value == unknown_type::taken) {
        return keptType(known, type);
    }
    const QString brackets =
        found.arguments.isEmpty() ? QString() : QString(u'(' % found.arguments.join(u',') % u')');
    QString shown = QString::fromLatin1(found.row->shown);
    if (shown.isEmpty()) {
        shown = QString::fromLatin1(found.row->word).toLower() % u'%';
    }
    shown.replace(u'%', brackets);
    return shown % QLatin1String(found.isUnsigned && !found.row->isTime ? " unsigned" : "") %
           QLatin1String(found.isArray ? "[]" : "");
}

QString familyOf(const understood_type & type, const QString & shown)
{
    if (type.row == nullptr) {
        return {};
    }
    if (type.isArray) {
        // Those of texts with a length have no family, whatever the length.
        const bool hasFamily = type.row->family[0] != '\0' && !type.row->isBounded;
        return hasFamily ? shown : QString();
    }
    return QString::fromLatin1(type.isUnsigned ? type.row->ifUnsigned : type.row->family);
}

/// What stands in the brackets, as numbers where the database has words for them.
QStringList argumentsOf(const facts & known, const QStringList & written)
{
    const std::span<const number_word> words = known.types.numberWords.value;
    const std::span<const QLatin1String> units = known.types.lengthUnits.value;
    if (words.empty() && units.empty()) {
        return written;
    }
    QStringList read;
    for (const QString & each : written) {
        const QString capitals = each.toUpper();
        const bool hasUnit = contains(units, capitals.section(u' ', 1));
        const auto number = std::find_if(words.begin(), words.end(), [&](const number_word & word) {
            return capitals == QLatin1String(word.word);
        });
        read += number != words.end() ? QString::fromLatin1(number->number)
                                      : (hasUnit ? each.section(u' ', 0, 0) : each);
    }
    return read;
}

} // namespace

int understood_type::length() const
{
    return row != nullptr && row->isBounded && !arguments.isEmpty() ? arguments.constFirst().toInt() : 0;
}

int understood_type::bytes() const
{
    if (row == nullptr) {
        return 0;
    }
    if (row->usualScale >= 0 && arguments.size() == 2) {
        const int scale = arguments.at(1).toInt();
        return bytesOfDigits(std::max(arguments.at(0).toInt() - scale, 0)) + bytesOfDigits(scale);
    }
    return row->isBounded ? length() * row->bytes : row->bytes;
}

declared_type partsOf(const QString & type)
{
    // Most types are one word in capitals, and each of the many columns of a schema has one.
    const bool isWord = std::all_of(type.begin(), type.end(), [](QChar c) { return c >= u'A' && c <= u'Z'; });
    if (isWord) {
        return {type, {}, {}, false};
    }
    QString text = type.trimmed();
    declared_type parts;
    parts.isArray = text.endsWith(QLatin1String("[]"));
    if (parts.isArray) {
        text.chop(2);
    }
    const auto open = text.indexOf(u'(');
    const auto close = text.lastIndexOf(u')');
    const bool hasBrackets = open >= 0 && close > open;
    QString words = hasBrackets ? QString(text.left(open) % u' ' % text.mid(close + 1)) : text;
    words = words.simplified().toUpper();
    parts.word = words.section(u' ', 0, 0);
    parts.rest = words.section(u' ', 1);
    if (hasBrackets) {
        for (const QString & argument : text.mid(open + 1, close - open - 1).split(u',')) {
            parts.arguments += argument.trimmed();
        }
    }
    return parts;
}

understood_type understoodType(const facts & known, const QString & type)
{
    const declared_type parts = partsOf(withoutQuotations(known, type));
    understood_type found;
    found.arguments = argumentsOf(known, parts.arguments);
    found.isArray = parts.isArray;
    const type_facts & types = known.types;
    const bool isTaken = types.unknown.value == unknown_type::taken;
    if (parts.word.isEmpty()) {
        found.refused = types.mayBeMissing.value ? refusal_cause::none : refusal_cause::syntax;
    } else {
        const bool isNoNumber = types.numbersOnlyInBrackets.value &&
                                (parts.arguments.size() > 2 || !haveNumbersOnly(parts.arguments));
        const bool isOther = contains(types.syntaxErrors.value, parts.word) ||
                             (parts.isArray && !types.arrays.value) || isNoNumber;
        found.refused = isOther ? refusal_cause::syntax : refusal_cause::none;
    }
    if (isTaken && found.refused == refusal_cause::none && !haveWordsOnly(known, parts)) {
        found.refused = refusal_cause::syntax;
    }
    const known_words words = wordsOf(known, parts);
    if (found.refused != refusal_cause::none || parts.word.isEmpty()) {
        return found;
    }
    if (isTaken) {
        found.row = words.rows.empty() ? nullptr : &words.rows.front();
    } else if (words.rows.empty()) {
        const bool isOneWord = words.rest.isEmpty() || isReadFirst(known, refusal_cause::unknown_type);
        found.refused = isOneWord ? refusal_cause::unknown_type : refusal_cause::syntax;
    } else if (!takeMarks(words.rows.front(), words.rest, found)) {
        found.refused = refusal_cause::syntax;
    } else {
        chooseRow(words.rows, found);
    }
    return found;
}

refusal_cause refusalOf(const known_types & types, const QString & type)
{
    return types.of(type).refused;
}

bool isReadFirst(const facts & known, refusal_cause cause)
{
    constexpr refusal_cause Always[] = {refusal_cause::syntax, refusal_cause::name_not_encodable,
                                        refusal_cause::table_name_in_column,
                                        refusal_cause::database_name_in_column};
    const auto causes = known.types.readFirst.value;
    return std::find(std::begin(Always), std::end(Always), cause) != std::end(Always) ||
           std::find(causes.begin(), causes.end(), cause) != causes.end();
}

bool mayRefer(const known_types & types, const QString & from, const QString & to)
{
    const QString & own = types.family(from);
    const QString & target = types.family(to);
    const bool areCompared = types.known().foreignKeys.lengthsCompared.value;
    if (own.isEmpty() || target.isEmpty() || (areCompared && types.shown(from) != types.shown(to))) {
        return false;
    }
    const auto pairs = types.known().types.references.value;
    return own == target || std::any_of(pairs.begin(), pairs.end(), [&](const family_pair & pair) {
               return own == QLatin1String(pair.from) && target == QLatin1String(pair.to);
           });
}

bool hasOrder(const known_types & types, const QString & type)
{
    const understood_type & found = types.of(type);
    return found.row == nullptr || found.isArray ||
           !contains(types.known().types.withoutOrder.value, QLatin1String(found.row->family));
}

bool isHashed(const known_types & types, const QString & type)
{
    const key_facts & keys = types.known().keys;
    if (!keys.hashesLong.value) {
        return false;
    }
    const understood_type & found = types.of(type);
    return found.isLarge() || found.bytes() > keys.longest.value;
}

bool isLarge(const known_types & types, const QString & type)
{
    return types.of(type).isLarge();
}

bool takesPrefix(const known_types & types, const QString & type, int characters)
{
    const understood_type & found = types.of(type);
    return found.isLarge() || found.length() >= characters ||
           (found.row != nullptr && found.row->hasPrefixes);
}

const known_types::known_type & known_types::entry(const QString & type) const
{
    const auto known = m_types.find(type);
    if (known != m_types.end()) {
        return known->second;
    }
    understood_type understood = understoodType(m_known, type);
    QString shown = shownType(m_known, type, understood);
    QString family = familyOf(understood, shown);
    return m_types.emplace(type, known_type{type, std::move(shown), std::move(family), std::move(understood)})
        .first->second;
}

QString shownType(const facts & known, const QString & type)
{
    return shownType(known, type, understoodType(known, type));
}

} // namespace database
