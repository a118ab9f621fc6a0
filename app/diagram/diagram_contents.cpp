#include "app/diagram/diagram_contents.h"

#include "tools/visible_text.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace app {

namespace {

constexpr int RowsOfFew = 8;   // an entity with no more properties shows them all
constexpr int MostMissing = 5; // targets that a tip names one by one
constexpr int RowsOfMany = 7;  // beside the row that tells how many more there are

/// tr() for what belongs to no object.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(app::diagram_contents)
};

diagram_row rowOf(const diagram_property & property)
{
    const QString name = drawable(property.name);
    return {property.isTargetMissing ? name + QStringLiteral(" → ?") : name, property.mark,
            property.isTransient, property.isTargetMissing, false};
}

QList<diagram_row> rowsOf(const diagram_entity & entity)
{
    const QList<diagram_property> & properties = entity.properties;
    QList<diagram_row> rows;
    if (properties.size() <= RowsOfFew) {
        std::transform(properties.begin(), properties.end(), std::back_inserter(rows), rowOf);
        return rows;
    }
    // Keys and relationships are what a diagram is about; the others fill up.
    QList<bool> isShown(properties.size(), false);
    int shown = 0;
    for (const bool isMarked : {true, false}) {
        for (qsizetype i = 0; i < properties.size() && shown < RowsOfMany; ++i) {
            if (!isShown[i] && (properties[i].mark != diagram_mark::none) == isMarked) {
                isShown[i] = true;
                ++shown;
            }
        }
    }
    for (qsizetype i = 0; i < properties.size(); ++i) {
        if (isShown[i]) {
            rows.append(rowOf(properties[i]));
        }
    }
    rows.append(
        {texts::tr("… %1 more").arg(grouped(properties.size() - RowsOfMany)), {}, false, false, true});
    return rows;
}

QStringList factsOf(const diagram_entity & entity, int hidden)
{
    const QString table = entity.tableName.isEmpty() ? entity.name : entity.tableName;
    QStringList facts{
        texts::tr("Table: %1").arg(drawable(table)),
        texts::tr("Id: %1, version: %2").arg(QString::number(entity.id), QString::number(entity.version)),
        texts::tr("Properties: %1").arg(grouped(entity.properties.size()))};
    QStringList missing;
    for (const diagram_property & property : entity.properties) {
        if (property.isTargetMissing) {
            missing << texts::tr("The target of %1 is missing").arg(drawable(property.name));
        }
    }
    facts << (missing.size() <= MostMissing
                  ? missing
                  : QStringList(texts::tr("Missing targets: %1").arg(grouped(missing.size()))));
    if (hidden > 0) {
        facts << texts::tr("Neighbours that are not shown: %1").arg(grouped(hidden));
    }
    return facts;
}

QString richText(const QString & title, const QStringList & lines)
{
    QStringList escaped{QStringLiteral("<b>%1</b>").arg(title.toHtmlEscaped())};
    for (const QString & line : lines) {
        escaped << line.toHtmlEscaped();
    }
    return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(escaped.join(QStringLiteral("<br>")));
}

QString endText(diagram_end end)
{
    switch (end) {
    case diagram_end::zero_or_one:
        return texts::tr("none or one");
    case diagram_end::exactly_one:
        return texts::tr("exactly one");
    case diagram_end::many:
        break;
    }
    return texts::tr("any number");
}

diagram_line lineOf(const diagram_relation & relation, const diagram_graph & graph,
                    const QHash<int, int> & boxes)
{
    const QString from = drawable(graph.entities()[relation.from].name);
    const QString to = drawable(graph.entities()[relation.to].name);
    const bool isHeldByFrom = relation.holder == relation.from;
    diagram_line line{boxes.value(relation.from),
                      boxes.value(relation.to),
                      relation.fromEnd,
                      relation.toEnd,
                      drawable(relation.name),
                      drawable(relation.linkTable),
                      {}};
    QStringList facts{texts::tr("%1: %2 for each %3").arg(from, endText(relation.fromEnd), to),
                      texts::tr("%1: %2 for each %3").arg(to, endText(relation.toEnd), from)};
    if (!relation.inverseName.isEmpty()) {
        facts << texts::tr("Inverse: %1.%2").arg(isHeldByFrom ? to : from, drawable(relation.inverseName));
    }
    if (!line.linkTable.isEmpty()) {
        facts << texts::tr("Link table: %1").arg(line.linkTable);
    }
    line.tip = richText((isHeldByFrom ? from : to) + QLatin1Char('.') + line.label, facts);
    return line;
}

/// Adds to what is told of each box whom it is connected with.
void tellNeighbours(diagram_contents & contents)
{
    QList<QStringList> neighbours(contents.boxes.size());
    for (const diagram_line & line : std::as_const(contents.lines)) {
        neighbours[line.from] << contents.boxes[line.to].name;
        if (line.to != line.from) {
            neighbours[line.to] << contents.boxes[line.from].name;
        }
    }
    for (qsizetype i = 0; i < contents.boxes.size(); ++i) {
        neighbours[i].removeDuplicates();
        contents.boxes[i].told +=
            neighbours[i].isEmpty()
                ? texts::tr(". No relationships are shown.")
                : texts::tr(". Connected with %1.").arg(neighbours[i].join(QStringLiteral(", ")));
    }
}

} // namespace

QString markText(diagram_mark mark)
{
    switch (mark) {
    case diagram_mark::key:
        return texts::tr("PK", "primary key");
    case diagram_mark::reference:
        return texts::tr("FK", "foreign key");
    case diagram_mark::one_to_many:
        return QStringLiteral("1:n");
    case diagram_mark::many_to_many:
        return QStringLiteral("n:m");
    case diagram_mark::none:
        break;
    }
    return {};
}

QStringList diagram_line::labelTexts() const
{
    QStringList lines{label};
    if (!linkTable.isEmpty()) {
        lines << linkTable;
    }
    lines.removeAll(QString());
    return lines;
}

QString drawable(const QString & text)
{
    QString result;
    for (const uint c : tools::visibleText(text).toUcs4()) {
        const bool isLegal =
            c >= 0x20 && (c < 0x7f || c > 0x9f) && !QChar::isSurrogate(c) && !QChar::isNonCharacter(c);
        const char32_t shown = QChar::isSpace(c) ? U' ' : isLegal ? c : U'\ufffd';
        result += QString::fromUcs4(&shown, 1);
    }
    return result;
}

QString grouped(qlonglong number)
{
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() & ~QLocale::OmitGroupSeparator); // "C" leaves them out
    return locale.toString(number);
}

diagram_contents contentsOf(const diagram_graph & graph, const diagram_piece & piece)
{
    diagram_contents contents;
    QHash<int, int> boxes;
    for (qsizetype i = 0; i < piece.entities.size(); ++i) {
        const diagram_entity & entity = graph.entities()[piece.entities[i]];
        boxes.insert(piece.entities[i], static_cast<int>(i));
        const QString name = drawable(entity.name);
        const QStringList facts = factsOf(entity, piece.hidden[i]);
        contents.boxes.append({entity.id, name, richText(name, facts),
                               name + QStringLiteral(": ") + facts.join(QStringLiteral("; ")), rowsOf(entity),
                               piece.hidden[i]});
    }
    for (const int relation : piece.relations) {
        contents.lines.append(lineOf(graph.relations()[relation], graph, boxes));
    }
    tellNeighbours(contents);
    return contents;
}

} // namespace app
