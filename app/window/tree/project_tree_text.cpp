#include "app/window/tree/project_tree_text.h"

#include "model/entity.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"
#include "zk/visible_text.h"

namespace app {

namespace {

constexpr int UnbrokenLength = 60;

/// A long word without blanks makes a tooltip wider than the screen; it may break at these places.
QString breakable(const QString & text)
{
    const QString shown = zk::visibleText(text);
    QString result;
    int run = 0;
    for (const QChar c : shown) {
        if (run >= UnbrokenLength && !c.isLowSurrogate() && !c.isMark()) {
            result += QChar(0x200b); // zero-width space
            run = 0;
        }
        run = c.isSpace() ? 0 : run + 1;
        result += c;
    }
    return result;
}

/// Names are the user's: nothing in them is mark-up.
QString richText(const QString & title, const QStringList & lines)
{
    QStringList all = {QStringLiteral("<b>") + breakable(title).toHtmlEscaped() + QStringLiteral("</b>")};
    for (const QString & line : lines) {
        all << breakable(line).toHtmlEscaped();
    }
    return QStringLiteral("<qt>") + all.join(QStringLiteral("<br/>")) + QStringLiteral("</qt>");
}

QString orName(const QString & given, const QString & name)
{
    return given.isEmpty() ? name : given;
}

} // namespace

// Everything about the columns of the tree, in their order.
const std::array<project_tree_text::column_row, project_tree_text::column_count> project_tree_text::Columns =
    {{
        {QT_TR_NOOP("Name"),
         42,
         {[](const model::entity & e) { return e.getName(); },
          [](const model::entity & e) { return tr("entity %1").arg(e.getName()); }},
         {[](const model::property & p) { return p.getName(); },
          [](const model::property & p) {
              return (QStringList(p.getName()) << flags(p)).join(QStringLiteral(", "));
          }},
         {arrow, [](const model::relationship & r) { return tr("relationship to %1").arg(targetName(r)); }}},
        {QT_TR_NOOP("Type"),
         28,
         {},
         {typeOf,
          [](const model::property & p) {
              const std::shared_ptr<model::relationship> r = p.getRelation();
              return r ? tr("%1 to %2").arg(kind(*r), targetName(*r)) : typeOf(p);
          }},
         {kindAndInverse}},
        {QT_TR_NOOP("In the database"), 30, {tableOf}, {columnsOf}, {[](const model::relationship & r) {
             const QString table = linkTable(r);
             return table.isEmpty() ? QString() : tr("link table %1").arg(table);
         }}},
    }};

QString project_tree_text::header(int column)
{
    return column >= 0 && column < column_count ? tr(Columns[static_cast<std::size_t>(column)].title)
                                                : QString();
}

QList<int> project_tree_text::widths(int whole)
{
    QList<int> widths;
    int left = whole;
    for (const column_row & row : Columns) {
        const int width = whole * row.width / 100;
        widths << width;
        left -= width;
    }
    widths.last() += left; // what rounding left over
    return widths;
}

template <class Object>
QString project_tree_text::text(const Object & object, int column, cell<Object> column_row::*of)
{
    if (column < 0 || column >= column_count) {
        return {};
    }
    const cell<Object> & wanted = Columns[static_cast<std::size_t>(column)].*of;
    return wanted.text ? wanted.text(object) : QString();
}

template <class Object>
QString project_tree_text::said(const Object & object, int column, cell<Object> column_row::*of)
{
    const bool isColumn = column >= 0 && column < column_count;
    const auto other = isColumn ? (Columns[static_cast<std::size_t>(column)].*of).said : nullptr;
    return other ? other(object) : text(object, column, of);
}

QString project_tree_text::text(const model::entity & entity, int column)
{
    return text(entity, column, &column_row::entity);
}

QString project_tree_text::text(const model::property & property, int column)
{
    return text(property, column, &column_row::property);
}

QString project_tree_text::text(const model::relationship & relation, int column)
{
    return text(relation, column, &column_row::relation);
}

QString project_tree_text::accessibleText(const model::entity & entity, int column)
{
    return said(entity, column, &column_row::entity);
}

QString project_tree_text::accessibleText(const model::property & property, int column)
{
    return said(property, column, &column_row::property);
}

QString project_tree_text::accessibleText(const model::relationship & relation, int column)
{
    return said(relation, column, &column_row::relation);
}

QString project_tree_text::toolTip(const model::entity & entity)
{
    QStringList lines = {tr("Table: %1").arg(tableOf(entity)), tr("Id: %1").arg(entity.getId()),
                         tr("Version: %1").arg(entity.getVersion())};
    if (!entity.getSoftDeleteColumn().isEmpty()) {
        lines << tr("Soft-delete column: %1").arg(entity.getSoftDeleteColumn());
    }
    const std::shared_ptr<model::property> key = entity.getPropertyId(true);
    lines << (key ? tr("Primary key: %1 (%2)").arg(key->getName(), typeOf(*key)) : tr("Primary key: none"));
    return richText(entity.getName(), lines);
}

QString project_tree_text::toolTip(const model::property & property)
{
    QStringList lines = {tr("Type: %1").arg(typeOf(property))};
    if (property.isTransient()) {
        lines << tr("Transient: it is not stored in the database");
    } else if (hasColumns(property)) {
        lines << tr("In the database: %1").arg(columnsOf(property));
    } else {
        lines << tr("In the database: no column");
    }
    if (const QString forced = property.getExplicitForceSqlType(); !forced.isEmpty()) {
        lines << tr("SQL type: %1").arg(forced);
    }
    if (const QStringList all = flags(property); !all.isEmpty()) {
        lines << all.join(QStringLiteral(", "));
    }
    return richText(property.getName(), lines << tr("Id: %1").arg(property.getId()));
}

QString project_tree_text::toolTip(const model::relationship & relation)
{
    QStringList lines = {tr("Relationship: %1").arg(kind(relation))};
    if (const QString other = inverse(relation); !other.isEmpty()) {
        lines << tr("Inverse of: %1").arg(other);
    }
    if (const QString table = linkTable(relation); !table.isEmpty()) {
        lines << tr("Link table: %1").arg(table);
    }
    return richText(arrow(relation), lines);
}

QString project_tree_text::targetName(const model::relationship & relation)
{
    const std::shared_ptr<model::entity> target = relation.getEntityTarget();
    return target ? target->getName() : tr("missing entity %1").arg(relation.getEntityTargetId());
}

bool project_tree_text::hasColumns(const model::property & property)
{
    return !property.isTransient() && property.getColumnNameCount() > 0;
}

QString project_tree_text::kind(const model::relationship & relation)
{
    switch (relation.getType()) {
    case model::relationship::one_to_one:
        return tr("one-to-one");
    case model::relationship::one_to_many:
        return tr("one-to-many");
    case model::relationship::many_to_one:
        return tr("many-to-one");
    case model::relationship::many_to_many:
        return tr("many-to-many");
    }
    return {};
}

QString project_tree_text::typeOf(const model::property & property)
{
    if (const std::shared_ptr<model::relationship> relation = property.getRelation()) {
        return kind(*relation) + QStringLiteral(" → ") + targetName(*relation);
    }
    const std::shared_ptr<model::property_type> type = property.getType();
    return type ? type->getPrimitiveType(-1) : tr("(no type)");
}

QString project_tree_text::columnsOf(const model::property & property)
{
    if (property.isTransient()) {
        return tr("(transient)");
    }
    const int count = property.getColumnNameCount();
    if (count == 0) {
        return tr("(no column)");
    }
    if (count == 1) {
        return orName(property.getColumnName(), property.getName());
    }
    QStringList columns;
    for (int i = 0; i < count; ++i) {
        columns << property.getColumnName(i);
    }
    return columns.join(QStringLiteral(", "));
}

QString project_tree_text::tableOf(const model::entity & entity)
{
    return orName(entity.getTableName(), entity.getName());
}

QString project_tree_text::arrow(const model::relationship & relation)
{
    return QStringLiteral("→ ") + targetName(relation);
}

QString project_tree_text::kindAndInverse(const model::relationship & relation)
{
    const QString other = inverse(relation);
    return other.isEmpty() ? kind(relation) : tr("%1, inverse of %2").arg(kind(relation), other);
}

/// As the exports have it, only many-to-many relationships have one.
QString project_tree_text::linkTable(const model::relationship & relation)
{
    return relation.getType() == model::relationship::many_to_many ? relation.getExtraTable() : QString();
}

QString project_tree_text::inverse(const model::relationship & relation)
{
    const std::shared_ptr<model::property> other = relation.getInverse();
    return other ? other->getName() : QString();
}

QStringList project_tree_text::flags(const model::property & property)
{
    QStringList result;
    if (property.isIdentifier()) {
        result << tr("primary key");
    }
    if (property.getUnique()) {
        result << tr("unique");
    }
    if (property.isIndex()) {
        result << tr("indexed");
    }
    if (!property.getAllowNull()) {
        result << tr("not null");
    }
    if (property.isTransient()) {
        result << tr("transient");
    }
    return result;
}

} // namespace app
