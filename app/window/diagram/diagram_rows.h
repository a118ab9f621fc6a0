#pragma once

#include "app/diagram/diagram_contents.h"
#include "app/window/diagram/diagram_style.h"

#include <array>

class QPainter;

namespace app {

/// The rows of a box side by side: sign of a change, mark, name, type, traits. Each stands below its like.
class diagram_rows
{
public:
    /// Both outlive it.
    diagram_rows(const QList<diagram_row> & rows, const diagram_style & style);

    /// What the rows need so that nothing is cut.
    [[nodiscard]] qreal width() const;
    /// Draws the rows from the top of `place` on, each as high as a line of the style. What does not fit is
    /// cut, types first.
    void draw(QPainter & painter, const QRectF & place) const;

private:
    [[nodiscard]] QFont fontOf(const diagram_row & row) const;
    [[nodiscard]] QColor colorOf(const diagram_row & row) const;
    [[nodiscard]] qreal nameWidth(const diagram_row & row) const;
    void drawRow(QPainter & painter, const diagram_row & row, QRectF place) const;
    void drawName(QPainter & painter, const diagram_row & row, QRectF place) const;
    void drawTraits(QPainter & painter, const diagram_row & row, const QRectF & place) const;

    const QList<diagram_row> & m_rows;
    const diagram_style & m_style;
    qreal m_signs = 0; ///< widths; 0 for what no row has
    qreal m_marks = 0;
    qreal m_names = 0;
    qreal m_types = 0;
    std::array<qreal, 3> m_traits{};
};

} // namespace app
