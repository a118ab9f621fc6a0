#pragma once

#include "app/window/diagram/diagram_items.h"

#include <QGraphicsScene>

namespace app {

/// A diagram, drawn. It stands by itself: windows and pictures each have their own.
class diagram_scene : public QGraphicsScene
{
public:
    diagram_scene(const diagram_picture & picture, const diagram_style & style, QObject * parent = nullptr);
    ~diagram_scene() override;

    /// Takes over the colours of `style`; the fonts were decided with the layout.
    void setStyle(const diagram_style & style);
    /// Marks the box of that entity and its lines, and no other; 0 marks none.
    void choose(long id);
    /// Marks where the keyboard is; null for nowhere.
    void setCursor(const diagram_box_item * box);

    /// In the order of the picture.
    [[nodiscard]] const QList<diagram_box_item *> & boxes() const { return m_lstBox; }
    /// Null when no box shows that entity.
    [[nodiscard]] diagram_box_item * boxOf(long id) const;
    /// The box at a place of the scene, null where there is none.
    [[nodiscard]] diagram_box_item * boxAt(const QPointF & place) const;

private:
    diagram_style m_style;
    QList<diagram_box_item *> m_lstBox;
    QList<diagram_line_item *> m_lstLine;
    QList<diagram_label_item *> m_lstLabel; // beside m_lstLine
};

} // namespace app
