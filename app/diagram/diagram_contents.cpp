#include "app/diagram/diagram_contents.h"

#include "zk/visible_text.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace app {

namespace {

constexpr int RowsOfFew = 8;    // an entity with no more properties shows them all
constexpr int MostMissing = 5;  // targets that a tip names one by one
constexpr int MostChanges = 12; // likewise
constexpr int RowsOfMany = 7;   // beside the row that tells how many more there are

/// tr() for what belongs to no object.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(app::diagram_contents)
};

/// The name of an object, with its new name in the database when it is that one which changed.
template <class Object>
QString nameOf(const Object & object)
{
    const QString name = drawable(object.name);
    const QString later = drawable(object.later);
    return later.isEmpty() || later == name ? name : QStringLiteral("%1 (%2)").arg(name, later);
}

diagram_row rowOf(const diagram_property & property)
{
    const QString name = nameOf(property);
    return {property.isTargetMissing ? name + QStringLiteral(" → ?") : name,
            property.mark,
            property.isTransient,
            property.isTargetMissing,
            false,
            drawable(property.type),
            property.traits,
            property.change,
            drawable(property.former)};
}

/// Which properties of many are shown: what changed, then keys and relationships, which a diagram is about;
/// the others fill up.
QList<bool> chosenOf(const QList<diagram_property> & properties)
{
    const auto rankOf = [](const diagram_property & property) {
        return property.change != diagram_change::none ? 0 : property.mark != diagram_mark::none ? 1 : 2;
    };
    QList<bool> isShown(properties.size(), false);
    int shown = 0;
    for (const int rank : {0, 1, 2}) {
        for (qsizetype i = 0; i < properties.size() && shown < RowsOfMany; ++i) {
            if (rankOf(properties[i]) == rank) {
                isShown[i] = true;
                ++shown;
            }
        }
    }
    return isShown;
}

diagram_row restRow(const QList<diagram_property> & properties, const QList<bool> & isShown)
{
    diagram_row row;
    row.text = texts::tr("… %1 more").arg(grouped(properties.size() - RowsOfMany));
    row.isRest = true;
    for (qsizetype i = 0; i < properties.size(); ++i) {
        if (!isShown[i] && properties[i].change != diagram_change::none) {
            row.change = diagram_change::changed;
        }
    }
    return row;
}

QList<diagram_row> rowsOf(const diagram_entity & entity, bool isOpened)
{
    const QList<diagram_property> & properties = entity.properties;
    QList<diagram_row> rows;
    if (isOpened || properties.size() <= RowsOfFew) {
        std::transform(properties.begin(), properties.end(), std::back_inserter(rows), rowOf);
        if (properties.size() > RowsOfFew) {
            diagram_row fewer;
            fewer.text = texts::tr("show fewer");
            fewer.isRest = true;
            rows.append(fewer);
        }
        return rows;
    }
    const QList<bool> isShown = chosenOf(properties);
    for (qsizetype i = 0; i < properties.size(); ++i) {
        if (isShown[i]) {
            rows.append(rowOf(properties[i]));
        }
    }
    rows.append(restRow(properties, isShown));
    return rows;
}

/// What the signs of a row say, in words.
QStringList wordsOf(const diagram_row & row)
{
    QStringList words;
    if (!row.type.isEmpty()) {
        words << row.type;
    }
    if (row.mark == diagram_mark::key || row.mark == diagram_mark::key_reference) {
        words << texts::tr("primary key");
    }
    if (row.mark == diagram_mark::reference || row.mark == diagram_mark::key_reference) {
        words << texts::tr("foreign key");
    }
    if (row.traits.isNotNull) {
        words << texts::tr("not null");
    }
    if (row.traits.isUnique) {
        words << texts::tr("unique");
    }
    if (row.traits.isIndexed) {
        words << texts::tr("indexed");
    }
    if (row.change != diagram_change::none) {
        words << (row.former.isEmpty() ? changeWord(row.change) : texts::tr("was %1").arg(row.former));
    }
    return words;
}

/// The rows for who does not see them.
QString toldRows(const QList<diagram_row> & rows)
{
    QStringList told;
    for (const diagram_row & row : rows) {
        const QStringList words = wordsOf(row);
        told << (words.isEmpty() ? row.text
                                 : QStringLiteral("%1 (%2)").arg(row.text, words.join(QStringLiteral(", "))));
    }
    return told.join(QStringLiteral("; "));
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
    for (const QString & line :
         entity.changes.first(std::min<qsizetype>(entity.changes.size(), MostChanges))) {
        facts << drawable(line);
    }
    if (entity.changes.size() > MostChanges) {
        facts << texts::tr("… %1 more").arg(grouped(entity.changes.size() - MostChanges));
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
                      {},
                      relation.change};
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
        if (!contents.boxes[i].rows.isEmpty()) {
            contents.boxes[i].told += texts::tr(" Shown: %1.").arg(toldRows(contents.boxes[i].rows));
        }
    }
}

} // namespace

QStringList diagram_line::labelTexts() const
{
    const QString sign = label.isEmpty() ? QString() : changeSign(change);
    QStringList lines{sign.isEmpty() ? label : sign + QLatin1Char(' ') + label};
    if (!linkTable.isEmpty()) {
        lines << linkTable;
    }
    lines.removeAll(QString());
    return lines;
}

QString drawable(const QString & text)
{
    QString result;
    for (const uint c : zk::visibleText(text).toUcs4()) {
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

QString changeSign(diagram_change change)
{
    switch (change) {
    case diagram_change::added:
        return QStringLiteral("+");
    case diagram_change::dropped:
        return QStringLiteral("−");
    case diagram_change::changed:
        return QStringLiteral("~");
    case diagram_change::renamed:
        return QStringLiteral("»");
    case diagram_change::none:
        break;
    }
    return {};
}

QString changeWord(diagram_change change)
{
    switch (change) {
    case diagram_change::added:
        return texts::tr("added");
    case diagram_change::dropped:
        return texts::tr("dropped");
    case diagram_change::changed:
        return texts::tr("changed");
    case diagram_change::renamed:
        return texts::tr("renamed");
    case diagram_change::none:
        break;
    }
    return {};
}

QString markText(diagram_mark mark)
{
    switch (mark) {
    case diagram_mark::key:
        return texts::tr("PK", "primary key");
    case diagram_mark::key_reference:
        return texts::tr("PK FK", "primary key, foreign key");
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

std::array<QString, 3> traitSigns(const diagram_traits & traits)
{
    return {traits.isNotNull ? texts::tr("NN", "not null") : QString(),
            traits.isUnique ? texts::tr("UQ", "unique") : QString(),
            traits.isIndexed ? texts::tr("IX", "index") : QString()};
}

diagram_contents contentsOf(const diagram_graph & graph, const diagram_piece & piece,
                            const QSet<long> & opened)
{
    diagram_contents contents;
    QHash<int, int> boxes;
    for (qsizetype i = 0; i < piece.entities.size(); ++i) {
        const diagram_entity & entity = graph.entities()[piece.entities[i]];
        boxes.insert(piece.entities[i], static_cast<int>(i));
        const QString name = nameOf(entity);
        QStringList facts = factsOf(entity, piece.hidden[i]);
        if (entity.change != diagram_change::none) {
            facts.prepend(changeWord(entity.change));
        }
        contents.boxes.append({entity.id, name, richText(name, facts),
                               name + QStringLiteral(": ") + facts.join(QStringLiteral("; ")),
                               rowsOf(entity, opened.contains(entity.id)), piece.hidden[i], entity.change,
                               drawable(entity.former), opened.contains(entity.id)});
    }
    for (const int relation : piece.relations) {
        contents.lines.append(lineOf(graph.relations()[relation], graph, boxes));
    }
    tellNeighbours(contents);
    return contents;
}

} // namespace app
