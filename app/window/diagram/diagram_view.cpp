#include "app/window/diagram/diagram_view.h"

#include "app/window/diagram/diagram_ways.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr qreal SmallestZoom = 0.1;
constexpr qreal LargestZoom = 4;
constexpr qreal ZoomStep = 1.25;
constexpr qreal WheelNotch = 120; // eighths of a degree, as Qt counts them
constexpr int SightMargin = 24;

QList<QRectF> placesOf(const diagram_scene & scene)
{
    QList<QRectF> places;
    for (const diagram_box_item * const box : scene.boxes()) {
        places.append(box->place());
    }
    return places;
}

} // namespace

diagram_view::diagram_view(QWidget * parent) : QGraphicsView(parent)
{
    setInteractive(false); // choosing and moving about are done here, for boxes only
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true); // a row that can be clicked shows it
    setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
    setAlignment(Qt::AlignCenter);
    setPicture({});
}

diagram_view::~diagram_view()
{
    setScene(nullptr);
}

diagram_style diagram_view::diagramStyle() const
{
    return diagram_style::of(font(), palette());
}

void diagram_view::setPicture(const diagram_picture & picture)
{
    auto scene = std::make_unique<diagram_scene>(picture, diagramStyle());
    setScene(scene.get());
    m_pScene = std::move(scene);
    m_pScene->choose(m_iChosen);
    setCursorTo(m_pScene->boxOf(m_iCursor) ? m_iCursor : m_iChosen);
    if (m_bFit) {
        fit();
    } else {
        bringIntoSight(m_iChosen);
    }
}

void diagram_view::setHint(const QString & hint)
{
    m_sHint = hint;
    viewport()->update();
    showCursor();
}

void diagram_view::choose(long id)
{
    m_iChosen = id;
    m_pScene->choose(id);
    setCursorTo(id);
    bringIntoSight(id);
}

void diagram_view::chooseByHand(long id)
{
    const bool isChange = id != 0 || m_iChosen != 0;
    choose(id);
    if (isChange) {
        Q_EMIT chosen(id);
    }
}

void diagram_view::setCursorTo(long id)
{
    m_iCursor = m_pScene->boxOf(id) ? id : 0;
    showCursor();
}

void diagram_view::showCursor()
{
    const diagram_box_item * const box = m_pScene->boxOf(m_iCursor);
    m_pScene->setCursor(hasFocus() ? box : nullptr);
    if (!box) {
        setAccessibleDescription(m_sHint.isEmpty() ? tr("No entity is selected.") : m_sHint);
    } else if (m_iCursor == m_iChosen) {
        setAccessibleDescription(tr("Selected: %1").arg(box->box().told));
    } else {
        setAccessibleDescription(box->box().told);
    }
}

void diagram_view::bringIntoSight(long id)
{
    if (const diagram_box_item * const box = m_pScene->boxOf(id)) {
        ensureVisible(box->place(), SightMargin, SightMargin);
    }
}

QRect diagram_view::boxRect(long id) const
{
    const diagram_box_item * const box = m_pScene->boxOf(id);
    return box ? mapFromScene(box->place()).boundingRect() : QRect();
}

long diagram_view::idAt(const QPoint & place) const
{
    const diagram_box_item * const box = m_pScene->boxAt(mapToScene(place));
    return box ? box->box().id : 0;
}

QRect diagram_view::restRect(long id) const
{
    const diagram_box_item * const box = m_pScene->boxOf(id);
    const QRectF place = box ? box->restPlace() : QRectF();
    return place.isEmpty() ? QRect() : mapFromScene(place).boundingRect();
}

bool diagram_view::isRestAt(const QPoint & place) const
{
    return restRect(idAt(place)).contains(place);
}

void diagram_view::wantRows(const diagram_box_item * box)
{
    Q_EMIT rowsWanted(box->box().id, !box->box().isOpened);
}

void diagram_view::setZoom(qreal zoom)
{
    m_bFit = false;
    const qreal within = std::clamp(zoom, SmallestZoom, LargestZoom);
    setTransform(QTransform::fromScale(within, within));
    Q_EMIT zoomChanged();
}

void diagram_view::zoomIn()
{
    setZoom(zoom() * ZoomStep);
}

void diagram_view::zoomOut()
{
    setZoom(zoom() / ZoomStep);
}

void diagram_view::showActualSize()
{
    setZoom(1);
}

void diagram_view::fit()
{
    const QRectF whole = sceneRect();
    const QSize room = maximumViewportSize(); // without the scroll bars, which there will not be
    qreal part = 1;
    if (!whole.isEmpty() && !room.isEmpty()) {
        part = std::min({1.0, room.width() / whole.width(), room.height() / whole.height()});
    }
    setTransform(QTransform::fromScale(part, part)); // be it smaller than a person can choose
    centerOn(whole.center());
    m_bFit = true;
    Q_EMIT zoomChanged();
}

void diagram_view::mousePressEvent(QMouseEvent * event)
{
    const bool isLeft = event->button() == Qt::LeftButton;
    if (m_eButton != Qt::NoButton || (!isLeft && event->button() != Qt::MiddleButton)) {
        event->ignore();
        return;
    }
    m_eButton = event->button();
    m_pressedAt = m_lastAt = event->pos();
    m_iPressed = isLeft ? idAt(event->pos()) : 0;
    m_bMayPan = m_iPressed == 0;
    event->accept();
}

void diagram_view::mouseMoveEvent(QMouseEvent * event)
{
    if (m_eButton == Qt::NoButton) {
        isRestAt(event->pos()) ? viewport()->setCursor(Qt::PointingHandCursor) : viewport()->unsetCursor();
    }
    if (!m_bMayPan) {
        return;
    }
    if (!m_bPanning) {
        if ((event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance()) {
            return;
        }
        m_bPanning = true;
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
    const QPoint step = event->pos() - m_lastAt;
    m_lastAt = event->pos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - step.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - step.y());
}

void diagram_view::mouseReleaseEvent(QMouseEvent * event)
{
    if (m_eButton == Qt::NoButton || event->button() != m_eButton) {
        event->ignore();
        return;
    }
    // Read first: who is told of the choice may do anything.
    const bool isClick = m_eButton == Qt::LeftButton && !m_bPanning && idAt(event->pos()) == m_iPressed;
    const bool isRest = isClick && isRestAt(event->pos()) && isRestAt(m_pressedAt);
    const long id = m_iPressed;
    m_eButton = Qt::NoButton;
    m_bMayPan = false;
    if (std::exchange(m_bPanning, false)) {
        viewport()->unsetCursor();
    }
    if (isRest) {
        wantRows(m_pScene->boxOf(id));
    } else if (isClick) {
        chooseByHand(id);
    }
}

void diagram_view::mouseDoubleClickEvent(QMouseEvent * event)
{
    event->accept(); // its first click has chosen already
}

void diagram_view::wheelEvent(QWheelEvent * event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QGraphicsView::wheelEvent(event);
        return;
    }
    const QPointF before = mapToScene(event->position().toPoint());
    setZoom(zoom() * std::pow(ZoomStep, event->angleDelta().y() / WheelNotch));
    // What is under the pointer stays there.
    const QPoint moved = mapFromScene(before) - event->position().toPoint();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + moved.y());
    event->accept();
}

bool diagram_view::moveCursor(int key)
{
    const QList<diagram_box_item *> & boxes = m_pScene->boxes();
    const auto from = boxes.indexOf(m_pScene->boxOf(m_iCursor));
    if (from < 0) {
        return false;
    }
    const int to = boxTowards(placesOf(*m_pScene), static_cast<int>(from), static_cast<Qt::Key>(key));
    if (to >= 0) {
        setCursorTo(boxes[to]->box().id);
        bringIntoSight(m_iCursor);
    }
    return true;
}

void diagram_view::keyPressEvent(QKeyEvent * event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (moveCursor(event->key())) {
            return;
        }
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (m_iCursor != 0) {
            chooseByHand(m_iCursor);
            return;
        }
        break;
    case Qt::Key_Escape:
        if (m_iCursor != 0 || m_iChosen != 0) {
            chooseByHand(0);
            return;
        }
        break;
    case Qt::Key_Home:
        fit();
        return;
    case Qt::Key_Plus:
    case Qt::Key_Minus:
        if (const diagram_box_item * const box = m_pScene->boxOf(m_iCursor);
            box && !box->restPlace().isEmpty() && box->box().isOpened == (event->key() == Qt::Key_Minus)) {
            wantRows(box);
            return;
        }
        break;
    default:
        break;
    }
    QGraphicsView::keyPressEvent(event);
}

bool diagram_view::focusNextPrevChild(bool next)
{
    const QList<int> order = readingOrder(placesOf(*m_pScene));
    const QList<diagram_box_item *> & boxes = m_pScene->boxes();
    const auto here = order.indexOf(static_cast<int>(boxes.indexOf(m_pScene->boxOf(m_iCursor))));
    const auto there = here < 0 ? (next ? 0 : order.size() - 1) : here + (next ? 1 : -1);
    if (there < 0 || there >= order.size()) {
        return QGraphicsView::focusNextPrevChild(next); // past the last box: out of the diagram
    }
    setCursorTo(boxes[order[there]]->box().id);
    bringIntoSight(m_iCursor);
    return true;
}

void diagram_view::focusInEvent(QFocusEvent * event)
{
    QGraphicsView::focusInEvent(event);
    const bool isForth = event->reason() == Qt::TabFocusReason;
    if (m_iCursor == 0 && !m_pScene->boxes().isEmpty() &&
        (isForth || event->reason() == Qt::BacktabFocusReason)) {
        const QList<int> order = readingOrder(placesOf(*m_pScene));
        setCursorTo(m_pScene->boxes()[isForth ? order.constFirst() : order.constLast()]->box().id);
        bringIntoSight(m_iCursor);
    }
    showCursor();
    viewport()->update();
}

void diagram_view::focusOutEvent(QFocusEvent * event)
{
    QGraphicsView::focusOutEvent(event);
    showCursor();
    viewport()->update();
}

void diagram_view::resizeEvent(QResizeEvent * event)
{
    QGraphicsView::resizeEvent(event);
    if (m_bFit) {
        fit();
    }
}

void diagram_view::changeEvent(QEvent * event)
{
    QGraphicsView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_pScene) {
        m_pScene->setStyle(diagramStyle());
    }
}

void diagram_view::paintEvent(QPaintEvent * event)
{
    QGraphicsView::paintEvent(event);
    QPainter painter(viewport());
    if (!m_sHint.isEmpty()) {
        painter.setPen(diagramStyle().quietInk);
        painter.drawText(viewport()->rect().adjusted(SightMargin, SightMargin, -SightMargin, -SightMargin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_sHint);
    }
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
    }
}

} // namespace app
