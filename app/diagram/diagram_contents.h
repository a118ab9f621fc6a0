#pragma once

#include "app/diagram/diagram_geometry.h"
#include "app/diagram/diagram_graph.h"

#include <QSet>
#include <QStringList>

#include <array>

namespace app {

/// A line of text in a box.
struct diagram_row
{
    QString text;
    diagram_mark mark = diagram_mark::none;
    bool isTransient = false;
    bool isTargetMissing = false;
    bool isRest = false; ///< "… 12 more", "show fewer": no property
    QString type;
    diagram_traits traits;
    diagram_change change = diagram_change::none;
    QString former; ///< a name that is no more
};

/// An entity as it is shown.
struct diagram_box
{
    long id = 0;
    QString name;
    QString tip;  ///< rich text
    QString told; ///< plain text for who does not see the diagram
    QList<diagram_row> rows;
    int hidden = 0; ///< neighbours that are not shown
    diagram_change change = diagram_change::none;
    QString former;        ///< a name that is no more
    bool isOpened = false; ///< shows all of many properties
};

/// A relationship as it is shown.
struct diagram_line
{
    int from = 0; ///< index of a box
    int to = 0;
    diagram_end fromEnd = diagram_end::many;
    diagram_end toEnd = diagram_end::many;
    QString label;
    QString linkTable; ///< a second line of the label; empty without one
    QString tip;       ///< rich text
    diagram_change change = diagram_change::none;

    /// What stands at the line, from top to bottom.
    [[nodiscard]] QStringList labelTexts() const;
};

/// The texts of a diagram.
struct diagram_contents
{
    QList<diagram_box> boxes;
    QList<diagram_line> lines;
};

/// All that it takes to draw a diagram.
struct diagram_picture
{
    diagram_contents contents;
    diagram_places places; ///< in the order of the contents
};

/// The texts of a piece of a graph, on one line each and without characters that cannot be drawn.
/// @param opened ids of the entities that show all of their properties
[[nodiscard]] diagram_contents contentsOf(const diagram_graph & graph, const diagram_piece & piece,
                                          const QSet<long> & opened = {});

/// What tells a change beside its colour: "+"; empty without a change.
[[nodiscard]] QString changeSign(diagram_change change);
/// The same in words.
[[nodiscard]] QString changeWord(diagram_change change);
/// What the traits of a column are called, "NN" first; an empty text for one that it does not have.
[[nodiscard]] std::array<QString, 3> traitSigns(const diagram_traits & traits);

/// The few letters for `mark` before a row; empty for none.
[[nodiscard]] QString markText(diagram_mark mark);

/// `text` on one line, with a mark for every character that no picture can hold.
[[nodiscard]] QString drawable(const QString & text);

/// `number` as the user's language writes it, in groups of digits.
[[nodiscard]] QString grouped(qlonglong number);

} // namespace app
