#include "check/remedy/row_repair.h"

#include "check/remedy/sql_writer.h"
#include "check/view/told_statement.h"

#include "database/facts/names.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <algorithm>

namespace check {

namespace {

using database::refusal_cause;

QString ended(const QString & statement)
{
    return statement.endsWith(u';') ? statement : statement + u';';
}

QString tableNamed(const told_statement & of, const database::identifier & written)
{
    return database::storedName(of.known(), written, database::name_place::table);
}

QString columnNamed(const told_statement & of, const database::identifier & written)
{
    return database::storedName(of.known(), written, database::name_place::other);
}

database::column columnOf(const told_statement & in, const database::column_definition & of)
{
    return {columnNamed(in, of.name), of.type, of.notNull, of.counted};
}

QString filling(const sql_writer & sql, const QString & table, const database::column & column)
{
    return QStringLiteral("UPDATE %1 SET %2 = %3 WHERE %2 IS NULL;")
        .arg(sql.table(table), sql.name(column.name), sql.filling(column));
}

/// Adds the column, fills it, and asks for NOT NULL then.
QStringList addedColumn(const told_statement & of, const sql_writer & sql)
{
    const auto * const asked = of.asks<database::add_column>();
    if (asked == nullptr || asked->definition.unique) {
        return {};
    }
    const QString table = tableNamed(of, asked->table);
    database::column column = columnOf(of, asked->definition);
    const QStringList then = sql.about(sql.words().setNotNull, table, column);
    if (then.isEmpty()) {
        return sql_writer::statements(
            sql.words().addColumn,
            {{QStringLiteral("table"), sql.table(table)},
             {QStringLiteral("column"), sql.name(column.name)},
             {QStringLiteral("definition"),
              sql.definition(column) + QStringLiteral(" DEFAULT ") + sql.filling(column)}});
    }
    const QString fill = filling(sql, table, column);
    column.notNull = false;
    return sql.about(sql.words().addColumn, table, column) + QStringList(fill) + then;
}

/// Takes values away that lead nowhere, and adds the foreign key then.
QStringList addedForeignKey(const told_statement & of, const sql_writer & sql)
{
    const auto * const asked = of.asks<database::add_foreign_key>();
    const auto member = of.property();
    if (asked == nullptr || !member || !member->getAllowNull() || member->isIdentifier()) {
        return {};
    }
    const QString table = sql.table(tableNamed(of, asked->table));
    const QString target = sql.table(tableNamed(of, asked->reference.target));
    QStringList set;
    QStringList there;
    QStringList same;
    const auto & columns = asked->reference.columns;
    for (std::size_t i = 0; i < columns.size() && i < asked->reference.targetColumns.size(); ++i) {
        const QString own = sql.name(columnNamed(of, columns[i]));
        set += own + QStringLiteral(" = NULL");
        there += own + QStringLiteral(" IS NOT NULL");
        same += QStringLiteral("%1.%2 = %3.%4")
                    .arg(target, sql.name(columnNamed(of, asked->reference.targetColumns[i])), table, own);
    }
    return {QStringLiteral("UPDATE %1 SET %2 WHERE %3 AND NOT EXISTS (SELECT 1 FROM %4 WHERE %5);")
                .arg(table, set.join(QStringLiteral(", ")), there.join(QStringLiteral(" AND ")), target,
                     same.join(QStringLiteral(" AND "))),
            ended(of.read().text)};
}

QStringList changedColumn(const told_statement & of, const sql_writer & sql)
{
    const auto * const asked = of.asks<database::change_column>();
    if (asked == nullptr) {
        return {};
    }
    database::column column = columnOf(of, asked->definition);
    column.name = columnNamed(of, asked->from);
    return {filling(sql, tableNamed(of, asked->table), column), ended(of.read().text)};
}

/// A name for a copy that is not longer than names are.
QString copyName(const database::facts & known, const QString & of)
{
    const QString end = QStringLiteral("_before");
    const int longest = known.names.longest.value;
    return (longest > 0 ? of.left(longest - end.size()) : of) + end;
}

} // namespace

void addSchema(remedy & to, const told_statement & of)
{
    const sql_writer sql(of.known());
    if (of.isFor(refusal_cause::schema_missing)) {
        to.sql = sql_writer::statements(
            sql.words().createSchema,
            {{QStringLiteral("name"), of.said().object.section(u' ', 1).section(u'.', 0, 0)}});
        to.before = static_cast<int>(to.sql.size());
    }
}

void addRowRepair(remedy & to, const told_statement & of)
{
    const sql_writer sql(of.known());
    if (of.isFor(refusal_cause::not_null_added)) {
        to.sql = addedColumn(of, sql);
    } else if (of.isFor(refusal_cause::rows_without_target)) {
        to.sql = addedForeignKey(of, sql);
    } else if (of.isFor(refusal_cause::nulls_lost)) {
        to.sql = changedColumn(of, sql);
    } else if (of.isFor(refusal_cause::rows_referred_to)) {
        to.sql = {QStringLiteral("PRAGMA foreign_keys = OFF;")};
        to.before = 1;
    }
}

void addRowCopy(remedy & to, const told_statement & of, const database::catalogue & before)
{
    const auto * const column = of.asks<database::drop_column>();
    const bool isTable = of.asks<database::drop_table>() != nullptr;
    const auto entity = of.entity(moment::before);
    if (!entity || (!isTable && column == nullptr)) {
        return;
    }
    const QString name = tableNameOf(*entity);
    const auto found = before.tables.find(database::nameKey(of.known(), name, database::name_place::table));
    if (found == before.tables.end()) {
        return;
    }
    const sql_writer sql(of.known());
    QStringList columns;
    if (const auto & key = found->second.key; key && !isTable) {
        for (const database::key_part & each : key->parts) {
            columns += each.column;
        }
    }
    QString copied = found->second.name;
    if (column != nullptr) {
        const QString wanted = database::nameKey(of.known(), column->column, database::name_place::other);
        const auto & all = found->second.columns;
        const auto own = std::find_if(all.begin(), all.end(), [&](const database::column & each) {
            return database::nameKey(of.known(), each.name, database::name_place::other) == wanted;
        });
        if (own == all.end()) {
            return;
        }
        columns += columns.contains(own->name) ? QStringList() : QStringList(own->name);
        copied += u'_' + own->name;
    }
    to.sql = sql.copy(found->second.name, columns, copyName(of.known(), copied));
    to.before = static_cast<int>(to.sql.size());
}

} // namespace check
