#include "app/window/diagram/diagram_scene.h"

#include <algorithm>

namespace app {

namespace {

constexpr qreal Margin = 16;

} // namespace

diagram_scene::diagram_scene(const diagram_picture & picture, const diagram_style & style, QObject * parent)
    : QGraphicsScene(parent), m_style(style)
{
    setItemIndexMethod(QGraphicsScene::NoIndex); // few items, and none of them moves
    setBackgroundBrush(style.canvas);
    const QList<QRectF> & places = picture.places.boxes;
    for (qsizetype i = 0; i < picture.contents.boxes.size(); ++i) {
        m_lstBox.append(new diagram_box_item(picture.contents.boxes[i], places[i], m_style));
        addItem(m_lstBox.constLast());
    }
    for (qsizetype i = 0; i < picture.contents.lines.size(); ++i) {
        const diagram_line & line = picture.contents.lines[i];
        const diagram_route & route = picture.places.routes[i];
        m_lstLine.append(new diagram_line_item(line, route, places[line.from], places[line.to], m_style));
        m_lstLabel.append(new diagram_label_item(line, route.label, m_style));
        addItem(m_lstLine.constLast());
        addItem(m_lstLabel.constLast());
    }
    const QRectF used = itemsBoundingRect().adjusted(-Margin, -Margin, Margin, Margin);
    setSceneRect(used.toAlignedRect());
}

diagram_scene::~diagram_scene()
{
    clear(); // the items refer to the style
}

void diagram_scene::setStyle(const diagram_style & style)
{
    m_style = style;
    setBackgroundBrush(style.canvas);
    update();
}

void diagram_scene::choose(long id)
{
    for (diagram_box_item * const box : std::as_const(m_lstBox)) {
        box->setChosen(box->box().id == id);
    }
    const auto isOf = [this, id](int box) { return m_lstBox[box]->box().id == id; };
    for (qsizetype i = 0; i < m_lstLine.size(); ++i) {
        const bool isChosen = isOf(m_lstLine[i]->line().from) || isOf(m_lstLine[i]->line().to);
        m_lstLine[i]->setChosen(isChosen);
        m_lstLabel[i]->setChosen(isChosen);
    }
}

void diagram_scene::setCursor(const diagram_box_item * box)
{
    for (diagram_box_item * const item : std::as_const(m_lstBox)) {
        item->setCursorHere(item == box);
    }
}

diagram_box_item * diagram_scene::boxOf(long id) const
{
    const auto found = std::find_if(m_lstBox.begin(), m_lstBox.end(),
                                    [id](const diagram_box_item * box) { return box->box().id == id; });
    return found == m_lstBox.end() ? nullptr : *found;
}

diagram_box_item * diagram_scene::boxAt(const QPointF & place) const
{
    const auto found = std::find_if(m_lstBox.begin(), m_lstBox.end(), [&place](const diagram_box_item * box) {
        return box->place().contains(place);
    });
    return found == m_lstBox.end() ? nullptr : *found;
}

} // namespace app
