#include "database/facts/names.h"

#include <QList>
#include <QRegularExpression>
#include <QStringBuilder>

#include <algorithm>
#include <array>

namespace database {

namespace {

bool isCapital(QChar c)
{
    return c >= u'A' && c <= u'Z';
}

QChar asciiFolded(QChar c)
{
    return isCapital(c) ? QChar(c.unicode() + ('a' - 'A')) : c;
}

QString asciiFolded(const QString & text)
{
    // Most names are small already, and are shared, not copied.
    if (std::none_of(text.begin(), text.end(), isCapital)) {
        return text;
    }
    QString small = text;
    for (QChar & c : small) {
        c = asciiFolded(c);
    }
    return small;
}

QString folded(name_equality equality, const QString & name)
{
    switch (equality) {
    case name_equality::exact:
        return name;
    case name_equality::ascii_ignored:
    case name_equality::stored_as_lower:
        return asciiFolded(name);
    case name_equality::case_ignored:
        return name.toCaseFolded();
    case name_equality::stored_as_upper:
        return name.toUpper();
    }
    return name;
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

constexpr bool isPartOfName(char16_t c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' ||
           c == u'$' || c >= 0x80;
}

// Names are read character by character very often.
constexpr std::array<bool, 0x80> StandingIn = [] {
    std::array<bool, 0x80> allowed{};
    for (std::size_t c = 0; c < allowed.size(); ++c) {
        allowed[c] = isPartOfName(static_cast<char16_t>(c));
    }
    return allowed;
}();

bool mayStandIn(QChar c)
{
    return c.unicode() >= StandingIn.size() || StandingIn[c.unicode()];
}

// Where a digit may lead, what is a number nevertheless: 1e5, 0x1f, 0b1.
bool beginsWithNumber(QStringView text)
{
    static const QRegularExpression number(QStringLiteral("^(?:[0-9]+[eE][0-9].*|0x[0-9a-fA-F]+|0b[01]+)$"),
                                           QRegularExpression::DotMatchesEverythingOption);
    return isDigit(text.front()) && number.match(text).hasMatch();
}

bool hasUnquotedShape(const facts & known, QStringView text)
{
    if (text.isEmpty() || !std::all_of(text.begin(), text.end(), mayStandIn)) {
        return false;
    }
    if (known.names.digitMayLead.value) {
        return !std::all_of(text.begin(), text.end(), isDigit) && !beginsWithNumber(text);
    }
    const QChar first = text.front();
    return !isDigit(first) && first != u'$' && (first != u'_' || known.names.lowLineMayLead.value);
}

constexpr qsizetype MostBytes = 3; // of a UTF-16 unit

// Bytes of a text cut after `length` of them, back to a whole character.
QString firstBytes(const QString & text, qsizetype length)
{
    if (MostBytes * text.size() <= length) {
        return text;
    }
    QByteArray bytes = text.toUtf8();
    if (bytes.size() <= length) {
        return text;
    }
    while (length > 0 && (static_cast<unsigned char>(bytes.at(length)) & 0xC0) == 0x80) {
        --length;
    }
    return QString::fromUtf8(bytes.first(length));
}

qsizetype lengthIn(name_unit unit, const QString & text)
{
    char16_t all = 0;
    for (const QChar c : text) {
        all |= c.unicode();
    }
    if (all < 0x80) {
        return text.size();
    }
    return unit == name_unit::bytes ? text.toUtf8().size() : text.toUcs4().size();
}

understood_name withinLength(const facts & known, const QString & name, name_place place)
{
    if (isOfTable(place) && !known.names.mayEndInBlank.value && name.endsWith(u' ')) {
        return {name, refusal_cause::table_name_ends_blank, false};
    }
    if (isShort(known, name)) {
        return {name, refusal_cause::none, false};
    }
    if (known.names.over.value == name_over_length::refused) {
        const bool isTable = isOfTable(place);
        return {name, isTable ? refusal_cause::table_name_too_long : refusal_cause::name_too_long, false};
    }
    return {firstBytes(name, known.names.longest.value), refusal_cause::none, true};
}

// A schema that is there on any database is left out of the name: tables of others are not known.
understood_name withSchema(const facts & known, const QString & text, name_place place)
{
    const QStringList parts = text.split(u'.');
    const qsizetype most = known.names.databasesNamed.value ? 3 : 2;
    if (!isOfTable(place) || !isQualified(known, text) || parts.size() > most) {
        return {text, refusal_cause::syntax, false};
    }
    if (parts.size() == 3) {
        return {text, refusal_cause::database_named, false};
    }
    const auto dot = text.indexOf(u'.');
    const auto schemas = known.names.knownSchemas.value;
    const bool isThere =
        std::find(schemas.begin(), schemas.end(), asciiFolded(text.first(dot))) != schemas.end();
    return isThere ? understood(known, {text.sliced(dot + 1), {}}, place)
                   : understood_name{text, refusal_cause::schema_missing, false};
}

} // namespace

bool isShort(const facts & known, const QString & name)
{
    const int longest = known.names.longest.value;
    // Most are short in any unit, and need not be looked at.
    return longest == 0 || MostBytes * name.size() <= longest ||
           lengthIn(known.names.unit.value, name) <= longest;
}

bool isLiteral(const QString & text)
{
    static const QRegularExpression number(QStringLiteral("^(?:[0-9]+(?:[eE][0-9]+)?|0[xX][0-9a-fA-F]+)$"));
    return text.compare(u"null", Qt::CaseInsensitive) == 0 || number.match(text).hasMatch();
}

bool isQualified(const facts & known, const QString & text)
{
    if (!text.contains(u'.')) {
        return false;
    }
    const QStringList parts = text.split(u'.');
    return parts.size() > 1 && std::all_of(parts.begin(), parts.end(), [&](const QString & part) {
               return hasUnquotedShape(known, part);
           });
}

QString foldedTable(const facts & known, const QString & name)
{
    return folded(known.names.tables.value, name);
}

QString foldedName(const facts & known, const QString & name)
{
    return folded(known.names.others.value, name);
}

bool areComparedByLetters(const facts & known)
{
    const name_equality equality = known.names.others.value;
    return equality == name_equality::ascii_ignored || equality == name_equality::stored_as_lower;
}

bool isSameName(const facts & known, const QString & a, const QString & b)
{
    if (areComparedByLetters(known)) {
        // Names of one table often begin alike.
        return a.size() == b.size() && std::equal(a.rbegin(), a.rend(), b.rbegin(), [](QChar x, QChar y) {
                   return x == y || asciiFolded(x) == asciiFolded(y);
               });
    }
    return foldedName(known, a) == foldedName(known, b);
}

understood_name understood(const facts & known, const identifier & written, name_place place)
{
    const QString & text = written.text;
    const auto beyond = known.names.basicPlaneOnly.value
                            ? std::find_if(text.begin(), text.end(), [](QChar c) { return c.isSurrogate(); })
                            : text.end();
    if (beyond != text.end()) {
        // Without quotes the text is read up to what is no part of a name.
        const bool isReached = !written.quote.isNull() || std::all_of(text.begin(), beyond, [](QChar c) {
            return mayStandIn(c) || c == u'.';
        });
        return {text, isReached ? refusal_cause::name_not_encodable : refusal_cause::syntax, false};
    }
    if (!written.quote.isNull()) {
        const bool isQuote = known.names.quotes.value.contains(written.quote);
        return isQuote ? withinLength(known, text, place)
                       : understood_name{text, refusal_cause::syntax, false};
    }
    if (!hasUnquotedShape(known, text)) {
        return withSchema(known, text, place);
    }
    if (isReserved(known, text, place)) {
        return {text, refusal_cause::syntax, false};
    }
    understood_name found = withinLength(known, text, place);
    const name_equality equality = known.names.others.value;
    if (equality == name_equality::stored_as_lower || equality == name_equality::stored_as_upper) {
        found.name = folded(equality, found.name);
    }
    return found;
}

QString storedName(const facts & known, const identifier & written, name_place place)
{
    const understood_name found = understood(known, written, place);
    return found.refused == refusal_cause::none ? found.name : written.text;
}

QString storedName(const facts & known, const QString & name, name_place place)
{
    return storedName(known, identifier{name, {}}, place);
}

QString nameKey(const facts & known, const identifier & written, name_place place)
{
    const QString name = understood(known, written, place).name;
    return isOfTable(place) ? foldedTable(known, name) : foldedName(known, name);
}

QString nameKey(const facts & known, const QString & name, name_place place)
{
    return nameKey(known, identifier{name, {}}, place);
}

QString writtenName(const facts & known, const QString & stored, name_place place)
{
    const understood_name plain = understood(known, {stored, {}}, place);
    const QString quotes = known.names.quotes.value;
    if ((plain.refused == refusal_cause::none && plain.name == stored) || quotes.isEmpty()) {
        return stored;
    }
    const QChar open = quotes.front();
    const QChar close = open == u'[' ? QChar(u']') : open;
    return open + QString(stored).replace(close, QString(2, close)) + close;
}

QString impliedName(const facts & known, const QString & table, const QString & column, const QString & label)
{
    qsizetype ofTable = lengthIn(name_unit::bytes, table);
    qsizetype ofColumn = lengthIn(name_unit::bytes, column);
    const qsizetype room = known.names.longest.value - label.size() - (column.isEmpty() ? 1 : 2);
    while (ofTable + ofColumn > room) {
        (ofTable > ofColumn ? ofTable : ofColumn) -= 1;
    }
    const QString middle = column.isEmpty() ? QString() : QString(firstBytes(column, ofColumn) % u'_');
    return firstBytes(table, ofTable) % u'_' % middle % label;
}

} // namespace database
