#include "check/remedy/sql_writer.h"

#include "database/facts/known_types.h"
#include "database/facts/names.h"

namespace check {

QString sql_writer::table(const QString & stored) const
{
    return database::writtenName(m_known, stored, database::name_place::table);
}

QString sql_writer::name(const QString & stored) const
{
    return database::writtenName(m_known, stored, database::name_place::other);
}

QString sql_writer::names(const QStringList & stored) const
{
    QStringList written;
    for (const QString & each : stored) {
        written += name(each);
    }
    return written.join(QStringLiteral(", "));
}

QString sql_writer::parts(const std::vector<database::key_part> & of) const
{
    QStringList written;
    for (const database::key_part & each : of) {
        const QString prefix = each.prefix > 0 ? u'(' + QString::number(each.prefix) + u')' : QString();
        written += name(each.column) + prefix;
    }
    return written.join(QStringLiteral(", "));
}

QString sql_writer::definition(const database::column & of) const
{
    return of.type + QLatin1String(of.notNull ? " NOT NULL" : words().nullable) +
           QLatin1String(of.counted && words().counted != nullptr ? words().counted : "");
}

QString sql_writer::filling(const database::column & of) const
{
    struct value
    {
        const char * beginning; // of the type
        const char * literal;
    };
    constexpr value Values[] = {{"timestamp", "'2000-01-01 00:00:00'"},
                                {"date", "'2000-01-01'"},
                                {"time", "'00:00:00'"},
                                {"bool", "FALSE"},
                                {"json", "'{}'"},
                                {"uuid", "'00000000-0000-0000-0000-000000000000'"},
                                {"int", "0"}};
    for (const value & each : Values) {
        if (of.type.startsWith(QLatin1String(each.beginning), Qt::CaseInsensitive)) {
            return QString::fromLatin1(each.literal);
        }
    }
    const database::understood_type type = database::understoodType(m_known, of.type);
    const bool isText = type.isLarge() || type.length() > 0 ||
                        of.type.contains(QLatin1String("char"), Qt::CaseInsensitive) ||
                        of.type.contains(QLatin1String("text"), Qt::CaseInsensitive);
    return isText ? QStringLiteral("''") : QStringLiteral("0");
}

QStringList sql_writer::statements(const char * words, const values & with)
{
    return words == nullptr ? QStringList() : filled(words, with).split(u'\n');
}

QStringList sql_writer::about(const char * words, const QString & in, const database::column & of) const
{
    return statements(words, {{QStringLiteral("table"), table(in)},
                              {QStringLiteral("column"), name(of.name)},
                              {QStringLiteral("type"), of.type},
                              {QStringLiteral("definition"), definition(of)}});
}

QStringList sql_writer::copy(const QString & of, const QStringList & columns, const QString & into) const
{
    return statements(words().copyRows,
                      {{QStringLiteral("table"), table(of)},
                       {QStringLiteral("columns"), columns.isEmpty() ? QStringLiteral("*") : names(columns)},
                       {QStringLiteral("new"), table(into)}});
}

QStringList sql_writer::addForeignKey(const QString & to, const database::foreign_key & key) const
{
    return statements(words().addForeignKey, {{QStringLiteral("table"), table(to)},
                                              {QStringLiteral("name"), name(key.name)},
                                              {QStringLiteral("columns"), names(key.columns)},
                                              {QStringLiteral("target"), table(key.target)},
                                              {QStringLiteral("target_columns"), names(key.targetColumns)}});
}

} // namespace check
