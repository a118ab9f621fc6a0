#include "database/facts/names.h"

#include <QList>
#include <QStringBuilder>

#include <algorithm>

namespace database {

namespace {

QString asciiFolded(QString text)
{
    for (QChar & c : text) {
        if (c >= u'A' && c <= u'Z') {
            c = QChar(c.unicode() + ('a' - 'A'));
        }
    }
    return text;
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

bool mayStandIn(QChar c)
{
    return isDigit(c) || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' || c == u'$' ||
           c.unicode() >= 0x80;
}

bool hasUnquotedShape(const facts & known, QStringView text)
{
    if (text.isEmpty() || !std::all_of(text.begin(), text.end(), mayStandIn)) {
        return false;
    }
    if (known.names.digitMayLead.value) {
        return !std::all_of(text.begin(), text.end(), isDigit);
    }
    return !isDigit(text.front()) && text.front() != u'$';
}

// Bytes of a text cut after `length` of them, back to a whole character.
QString firstBytes(const QString & text, qsizetype length)
{
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
    return unit == name_unit::bytes ? text.toUtf8().size() : text.toUcs4().size();
}

understood_name withinLength(const facts & known, const QString & name, name_place place)
{
    const int longest = known.names.longest.value;
    if (longest == 0 || lengthIn(known.names.unit.value, name) <= longest) {
        return {name, refusal_cause::none, false};
    }
    if (known.names.over.value == name_over_length::refused) {
        const bool isTable = place == name_place::table;
        return {name, isTable ? refusal_cause::table_name_too_long : refusal_cause::name_too_long, false};
    }
    return {firstBytes(name, longest), refusal_cause::none, true};
}

// A schema that is there on any database is left out of the name: tables of others are not known.
understood_name withSchema(const facts & known, const QString & text, name_place place)
{
    const auto dot = text.indexOf(u'.');
    const QStringView whole(text);
    if (place != name_place::table || dot <= 0 || !hasUnquotedShape(known, whole.first(dot)) ||
        !hasUnquotedShape(known, whole.sliced(dot + 1))) {
        return {text, refusal_cause::syntax, false};
    }
    const auto schemas = known.names.knownSchemas.value;
    const bool isThere =
        std::find(schemas.begin(), schemas.end(), asciiFolded(text.first(dot))) != schemas.end();
    return isThere ? understood(known, {text.sliced(dot + 1), {}}, place)
                   : understood_name{text, refusal_cause::schema_missing, false};
}

} // namespace

QString foldedTable(const facts & known, const QString & name)
{
    return folded(known.names.tables.value, name);
}

QString foldedName(const facts & known, const QString & name)
{
    return folded(known.names.others.value, name);
}

understood_name understood(const facts & known, const identifier & written, name_place place)
{
    const QString & text = written.text;
    if (!written.quote.isNull()) {
        const bool isQuote = QString(known.names.quotes.value).contains(written.quote);
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

QString impliedName(const facts & known, const QString & table, const QString & column, QLatin1String label)
{
    qsizetype ofTable = table.toUtf8().size();
    qsizetype ofColumn = column.toUtf8().size();
    const qsizetype room = known.names.longest.value - label.size() - (column.isEmpty() ? 1 : 2);
    while (ofTable + ofColumn > room) {
        (ofTable > ofColumn ? ofTable : ofColumn) -= 1;
    }
    const QString middle = column.isEmpty() ? QString() : QString(firstBytes(column, ofColumn) % u'_');
    return firstBytes(table, ofTable) % u'_' % middle % label;
}

} // namespace database
