#include "database/server/table_rows.h"

#include <QDate>
#include <QSet>
#include <QTime>

#include <algorithm>

namespace database::server {

namespace {

struct type_value
{
    const char * beginning; ///< of the type as the catalogue shows it, in small letters
    const char * value; ///< a literal; %1 is a number that no other column has, %2 a day, %3 a time of day
    const char * ofKey; ///< the same in columns of keys
};

// The first that fits counts.
constexpr type_value Values[] = {
    {"varchar", "'v%1'", "'k7'"},
    {"char", "'v%1'", "'k7'"},
    {"text", "'v%1'", "'k7'"},
    {"tinytext", "'v%1'", "'k7'"},
    {"mediumtext", "'v%1'", "'k7'"},
    {"longtext", "'v%1'", "'k7'"},
    {"bool", "TRUE", "TRUE"},
    {"tinyint", "1", "7"},
    {"year", "2026", "2026"},
    {"blob", "'b%1'", "'k7'"},
    {"longblob", "'b%1'", "'k7'"},
    {"bytea", "'b%1'", "'k7'"},
    {"varbinary", "'b%1'", "'k7'"},
    {"timestamp", "'%2 00:00:00'", "'2026-01-01 00:00:00'"},
    {"datetime", "'%2 00:00:00'", "'2026-01-01 00:00:00'"},
    {"date", "'%2'", "'2026-01-02'"},
    {"time", "'%3'", "'03:04:05'"},
    {"json", "'{\"a\": %1}'", "'{\"a\": 7}'"},
    {"uuid", "'00000000-0000-0000-0000-00000000%1'", "'00000000-0000-0000-0000-000000000007'"},
};

QString valueOf(const QString & type, bool isKey, int number)
{
    static const QDate firstDay(2020, 1, 1);
    constexpr int days = 6000; // some databases count seconds to the year 2038 only
    for (const type_value & each : Values) {
        if (type.startsWith(QLatin1String(each.beginning), Qt::CaseInsensitive)) {
            return QString::fromLatin1(isKey ? each.ofKey : each.value)
                .replace(QLatin1String("%1"), QString::number(number))
                .replace(QLatin1String("%2"), firstDay.addDays(number % days).toString(Qt::ISODate))
                .replace(QLatin1String("%3"), QTime(0, 0).addSecs(number).toString(Qt::ISODate));
        }
    }
    return isKey ? QStringLiteral("7") : QString::number(number);
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

QString insertion(const target_database & target, const database::table & owner, row_content content,
                  int & number)
{
    const QSet<QString> keys = keyColumnsOf(owner);
    QStringList columns;
    QStringList values;
    for (const database::column & each : owner.columns) {
        const bool isKey = keys.contains(each.name) || each.name.endsWith(QLatin1String("_id"));
        columns += target.quoted(each.name);
        const QString value = valueOf(each.type, isKey, ++number);
        values += content == row_content::nulls && mayBeNull(owner, each) ? QStringLiteral("NULL") : value;
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(target.quoted(owner.name), columns.join(QLatin1Char(',')), values.join(QLatin1Char(',')));
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
    server_error error;
    for (const auto & [key, owner] : held.tables) {
        const QString query = QStringLiteral("SELECT count(*) FROM ") + target.quoted(owner.name);
        int count = target.rows(query).constFirst().constFirst().toInt();
        if (count == 0 && !owner.columns.empty() &&
            target.execute(insertion(target, owner, content, number), error)) {
            count = 1;
            if (added) {
                added->push_back(rowsOf(target, owner).front());
            }
        }
        counts[owner.name] = count;
    }
    return counts;
}

} // namespace database::server
