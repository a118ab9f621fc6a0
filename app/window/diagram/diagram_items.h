#pragma once

#include "app/diagram/diagram_contents.h"
#include "app/window/diagram/diagram_rows.h"
#include "app/window/diagram/diagram_style.h"

#include <QGraphicsItem>
#include <QPen>

namespace app {

/// The size that a box needs for its texts, within limits; whole pixels.
[[nodiscard]] QSizeF boxSize(const diagram_box & box, const diagram_style & style);
/// The size of a line's label; empty without one.
[[nodiscard]] QSizeF labelSize(const diagram_line & line, const diagram_style & style);

/// The items draw with the style of their scene, which outlives them.
class diagram_box_item : public QGraphicsItem
{
public:
    enum
    {
        Type = UserType + 1
    };

    diagram_box_item(const diagram_box & box, const QRectF & place, const diagram_style & style);

    [[nodiscard]] const diagram_box & box() const { return m_box; }
    [[nodiscard]] QRectF place() const { return m_place; }
    void setChosen(bool chosen);
    void setCursorHere(bool here);
    /// The row that opens and closes the box; empty when it shows all that there is.
    [[nodiscard]] QRectF restPlace() const;

    [[nodiscard]] int type() const override { return Type; }
    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;
    void paint(QPainter * painter, const QStyleOptionGraphicsItem * option, QWidget * widget) override;

private:
    void paintHeader(QPainter & painter) const;
    void paintTitle(QPainter & painter, QRectF place) const;
    void paintHidden(QPainter & painter) const;
    [[nodiscard]] QPen framePen() const;
    [[nodiscard]] QRectF rowsPlace() const;

    diagram_box m_box;
    QRectF m_place;
    const diagram_style & m_style;
    diagram_rows m_rows; ///< those of the box
    bool m_bChosen = false;
    bool m_bCursorHere = false;
};

/// The line of a relationship with the marks at its ends.
class diagram_line_item : public QGraphicsItem
{
public:
    /// `from` and `to` are the places of the boxes at its ends.
    diagram_line_item(const diagram_line & line, const diagram_route & route, const QRectF & from,
                      const QRectF & to, const diagram_style & style);

    [[nodiscard]] const diagram_line & line() const { return m_line; }
    void setChosen(bool chosen);

    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;
    void paint(QPainter * painter, const QStyleOptionGraphicsItem * option, QWidget * widget) override;

private:
    diagram_line m_line;
    QPainterPath m_path;
    QRectF m_from;
    QRectF m_to;
    const diagram_style & m_style;
    bool m_bChosen = false;
};

/// The label of a line.
class diagram_label_item : public QGraphicsItem
{
public:
    diagram_label_item(const diagram_line & line, const QPointF & centre, const diagram_style & style);

    void setChosen(bool chosen);

    [[nodiscard]] QRectF boundingRect() const override { return m_place; }
    void paint(QPainter * painter, const QStyleOptionGraphicsItem * option, QWidget * widget) override;

private:
    diagram_line m_line;
    QRectF m_place;
    const diagram_style & m_style;
    bool m_bChosen = false;
};

} // namespace app
