#include "database/server/table_rows.h"

#include <QDate>
#include <QRegularExpression>
#include <QSet>
#include <QTime>

#include <algorithm>
#include <iterator>

namespace database::server {

namespace {

/// What the number in brackets behind a type says of its values.
enum class length_use
{
    none,
    longest, ///< of a text
    exact,   ///< the length of a text
    digits   ///< and those of them that come behind the point
};

struct type_value
{
    const char * beginning; ///< of the type as the catalogue shows it, in small letters
    /// A literal; %1 is a number that no other column has, %2 a day, %3 a time of day, %4 the number with
    /// twelve digits, %5 an address, %6 the number in bits, %7 the type's first word in quotation marks.
    const char * value;
    const char * ofKey; ///< the same in columns of keys
    length_use length = length_use::none;
};

// The first that fits counts.
constexpr type_value Values[] = {
    {"varchar", "'v%1'", "'k7'", length_use::longest},
    {"character", "'v%1'", "'k7'", length_use::longest},
    {"char", "'v%1'", "'k7'", length_use::longest},
    {"text", "'v%1'", "'k7'"},
    {"tinytext", "'v%1'", "'k7'"},
    {"mediumtext", "'v%1'", "'k7'"},
    {"longtext", "'v%1'", "'k7'"},
    {"bool", "TRUE", "TRUE"},
    {"bit varying", "b'%6'", "b'1'", length_use::longest},
    {"bit", "b'%6'", "b'1'", length_use::exact},
    {"numeric", "%1", "7", length_use::digits},
    {"decimal", "%1", "7", length_use::digits},
    {"enum", "%7", "%7"},
    {"set", "%7", "%7"},
    {"tinyint", "1", "7"},
    {"year", "2026", "2026"},
    {"blob", "'b%1'", "'k7'"},
    {"longblob", "'b%1'", "'k7'"},
    {"bytea", "'b%1'", "'k7'"},
    {"varbinary", "'b%1'", "'k7'", length_use::longest},
    {"binary", "'b%1'", "'k7'", length_use::longest},
    {"interval", "'%1 seconds'", "'7 seconds'"},
    {"inet6", "'::%5'", "'::10.0.0.7'"},
    {"inet", "'%5'", "'10.0.0.7'"},
    {"cidr", "'%5'", "'10.0.0.7'"},
    {"xml", "'<v>%1</v>'", "'<v>7</v>'"},
    {"tsvector", "'v%1'", "'k7'"},
    {"timestamp", "'%2 00:00:00'", "'2026-01-01 00:00:00'"},
    {"datetime", "'%2 00:00:00'", "'2026-01-01 00:00:00'"},
    {"date", "'%2'", "'2026-01-02'"},
    {"time", "'%3'", "'03:04:05'"},
    {"json", "'{\"a\": %1}'", "'{\"a\": 7}'"},
    {"uuid", "'00000000-0000-0000-0000-%4'", "'00000000-0000-0000-0000-000000000007'"},
};

// Beginnings of the other types whose values are numbers.
constexpr const char * NumberTypes[] = {"int",    "bigint", "smallint", "mediumint", "integer", "float",
                                        "double", "real",   "money",    "oid",       "number",  "serial"};

bool beginsWith(const QString & type, const char * beginning)
{
    return type.startsWith(QLatin1String(beginning), Qt::CaseInsensitive);
}

const type_value * knownValue(const QString & type)
{
    const auto * const found =
        std::find_if(std::begin(Values), std::end(Values),
                     [&](const type_value & each) { return beginsWith(type, each.beginning); });
    return found == std::end(Values) ? nullptr : found;
}

bool isArray(const QString & type)
{
    return type.endsWith(QLatin1String("[]"));
}

/// Whether nobody knows what a column of that type takes.
bool isUnknown(const QString & type)
{
    return isArray(type) ||
           (!knownValue(type) && std::none_of(std::begin(NumberTypes), std::end(NumberTypes),
                                              [&](const char * each) { return beginsWith(type, each); }));
}

/// The literal `text` as short as `use` and the numbers in brackets behind `type` want it.
QString fitted(const QString & text, const QString & type, length_use use)
{
    const QString brackets = type.section(QLatin1Char('('), 1).section(QLatin1Char(')'), 0, 0);
    const int length = brackets.section(QLatin1Char(','), 0, 0).toInt();
    if (use == length_use::digits && length > 0) {
        const int behind = brackets.section(QLatin1Char(','), 1).toInt();
        const QString digits = text.right(length);
        const QString whole = digits.right(std::max(length - behind, 0));
        return whole.isEmpty() ? QStringLiteral("0.") + digits : whole;
    }
    const int wanted = length == 0 && use == length_use::exact ? 1 : length;
    if (use == length_use::none || use == length_use::digits || wanted == 0) {
        return text;
    }
    const QString value = text.section(QLatin1Char('\''), 1, 1).right(wanted);
    return QStringLiteral("%1'%2'").arg(text.section(QLatin1Char('\''), 0, 0),
                                        use == length_use::exact ? value.rightJustified(wanted, u'0')
                                                                 : value);
}

QString filled(QString pattern, const QString & type, int number)
{
    static const QDate firstDay(2020, 1, 1);
    constexpr int days = 6000; // some databases count seconds to the year 2038 only
    constexpr int byte = 256;
    static const QRegularExpression word(QStringLiteral("'(?:[^']|'')*'"));
    return pattern.replace(QLatin1String("%1"), QString::number(number))
        .replace(QLatin1String("%2"), firstDay.addDays(number % days).toString(Qt::ISODate))
        .replace(QLatin1String("%3"), QTime(0, 0).addSecs(number).toString(Qt::ISODate))
        .replace(QLatin1String("%4"), QString::number(number).rightJustified(12, u'0'))
        .replace(QLatin1String("%5"),
                 QStringLiteral("10.1.%1.%2").arg(number / byte % byte).arg(number % byte))
        .replace(QLatin1String("%6"), QString::number(number, 2))
        .replace(QLatin1String("%7"), word.match(type).captured());
}

QString valueOf(const QString & type, bool isKey, int number)
{
    constexpr int smallest = 30000; // that the narrowest of the other types of numbers takes
    if (isArray(type)) {
        return QStringLiteral("'{%1}'").arg(isKey ? 7 : number);
    }
    if (const type_value * const known = knownValue(type)) {
        return fitted(filled(QString::fromLatin1(isKey ? known->ofKey : known->value), type, number), type,
                      known->length);
    }
    const bool isShort = beginsWith(type, "smallint");
    return isKey ? QStringLiteral("7") : QString::number(isShort ? number % smallest : number);
}

QSet<QString> keyColumnsOf(const database::table & owner)
{
    QSet<QString> names;
    if (owner.key) {
        for (const database::key_part & part : owner.key->parts) {
            names += part.column;
        }
    }
    for (const database::foreign_key & key : owner.foreignKeys) {
        names += QSet<QString>(key.columns.begin(), key.columns.end());
    }
    return names;
}

bool mayBeNull(const database::table & owner, const database::column & of)
{
    const auto isIt = [&of](const database::key_part & part) { return part.column == of.name; };
    const bool isInKey = owner.key && std::any_of(owner.key->parts.begin(), owner.key->parts.end(), isIt);
    return !of.notNull && !isInKey;
}

/// Columns that are left null, where they may be.
enum class null_columns
{
    none,
    unknown, ///< those of types without values here
    all
};

QString insertion(const target_database & target, const database::table & owner, null_columns nulls,
                  int number)
{
    const QSet<QString> keys = keyColumnsOf(owner);
    QStringList columns;
    QStringList values;
    for (const database::column & each : owner.columns) {
        const bool isKey = keys.contains(each.name) || each.name.endsWith(QLatin1String("_id"));
        const bool isNull =
            nulls == null_columns::all || (nulls == null_columns::unknown && isUnknown(each.type));
        columns += target.quoted(each.name);
        const QString value = valueOf(each.type, isKey, ++number);
        values += isNull && mayBeNull(owner, each) ? QStringLiteral("NULL") : value;
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(target.quoted(owner.name), columns.join(QLatin1Char(',')), values.join(QLatin1Char(',')));
}

/// Puts a row into the table, with as many values as it takes.
bool putRowInto(target_database & target, const database::table & owner, row_content content, int number)
{
    server_error error;
    const auto put = [&](null_columns nulls) {
        return target.execute(insertion(target, owner, nulls, number), error);
    };
    return content == row_content::nulls
               ? put(null_columns::all)
               : put(null_columns::none) || put(null_columns::unknown) || put(null_columns::all);
}

} // namespace

std::vector<put_row> rowsOf(target_database & target, const database::table & owner)
{
    QStringList columns;
    for (const database::column & each : owner.columns) {
        columns += target.quoted(each.name);
    }
    std::vector<put_row> rows;
    if (columns.isEmpty()) {
        return rows;
    }
    for (const QVariantList & values :
         target.rows(QStringLiteral("SELECT %1 FROM %2")
                         .arg(columns.join(QLatin1Char(',')), target.quoted(owner.name)))) {
        put_row row{owner.name, {}};
        for (qsizetype i = 0; i < owner.columns.size(); ++i) {
            row.values.emplace_back(owner.columns[i].name, values[i]);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

QMap<QString, int> putRowIntoEach(target_database & target, const database::catalogue & held,
                                  row_content content, int & number, std::vector<put_row> * added)
{
    QMap<QString, int> counts;
    for (const auto & [key, owner] : held.tables) {
        const QString query = QStringLiteral("SELECT count(*) FROM ") + target.quoted(owner.name);
        int count = target.rows(query).constFirst().constFirst().toInt();
        if (count == 0 && !owner.columns.empty()) {
            count = putRowInto(target, owner, content, number) ? 1 : 0;
            number += static_cast<int>(owner.columns.size());
            if (added && count == 1) {
                added->push_back(rowsOf(target, owner).front());
            }
        }
        counts[owner.name] = count;
    }
    return counts;
}

} // namespace database::server
