#pragma once

#include "app/window/diagram/diagram_scene.h"

#include <QGraphicsView>

#include <memory>

namespace app {

/// Shows a diagram, to look at and to choose entities in, by mouse and by keys: Tab and the arrows move from
/// box to box, Enter or the space bar chooses, Escape chooses nothing, Home shows the whole, plus and minus
/// show all or few properties of a box.
class diagram_view : public QGraphicsView
{
    Q_OBJECT

public:
    explicit diagram_view(QWidget * parent = nullptr);
    ~diagram_view() override;

    /// Shows `picture` in the place of what was shown; what is chosen is marked in it as well. The zoom stays
    /// unless the whole was to be seen.
    void setPicture(const diagram_picture & picture);
    /// A text in the middle of the view, such as why there is no diagram; empty for none.
    void setHint(const QString & hint);
    [[nodiscard]] QString hint() const { return m_sHint; }
    /// Marks the entity's box, if there is one, and brings it into sight. Emits nothing; 0 marks none.
    void choose(long id);
    /// Fonts and colours of what is shown.
    [[nodiscard]] diagram_style diagramStyle() const;

    [[nodiscard]] qreal zoom() const { return transform().m11(); }
    void zoomIn();
    void zoomOut();
    /// Shows the whole diagram, at its own size at most, now and whenever the view gets another size, until
    /// another zoom is chosen.
    void fit();
    void showActualSize();

    /// The entity whose box has the keyboard; 0 when none has.
    [[nodiscard]] long cursor() const { return m_iCursor; }
    /// Where the entity's box is to be seen, in the viewport's pixels; empty without a box.
    [[nodiscard]] QRect boxRect(long id) const;
    /// Where the row of the box is to be seen that opens and closes it; empty without one.
    [[nodiscard]] QRect restRect(long id) const;

Q_SIGNALS:
    /// The person chose this entity; 0 for none.
    void chosen(long id);
    /// The person wants to see all properties of this entity, or few again.
    void rowsWanted(long id, bool all);
    void zoomChanged();

protected:
    void mousePressEvent(QMouseEvent * event) override;
    void mouseMoveEvent(QMouseEvent * event) override;
    void mouseReleaseEvent(QMouseEvent * event) override;
    void mouseDoubleClickEvent(QMouseEvent * event) override;
    void wheelEvent(QWheelEvent * event) override;
    void keyPressEvent(QKeyEvent * event) override;
    void focusInEvent(QFocusEvent * event) override;
    void focusOutEvent(QFocusEvent * event) override;
    bool focusNextPrevChild(bool next) override;
    void resizeEvent(QResizeEvent * event) override;
    void changeEvent(QEvent * event) override;
    void paintEvent(QPaintEvent * event) override;

private:
    void chooseByHand(long id);
    void setCursorTo(long id);
    void showCursor();
    void bringIntoSight(long id);
    [[nodiscard]] bool moveCursor(int key);
    void setZoom(qreal zoom);
    [[nodiscard]] long idAt(const QPoint & place) const;
    [[nodiscard]] bool isRestAt(const QPoint & place) const;
    void wantRows(const diagram_box_item * box);

    std::unique_ptr<diagram_scene> m_pScene;
    QString m_sHint;
    long m_iChosen = 0;
    long m_iCursor = 0;
    bool m_bFit = true;
    Qt::MouseButton m_eButton = Qt::NoButton; // the one that is held down
    bool m_bMayPan = false;
    bool m_bPanning = false;
    long m_iPressed = 0;
    QPoint m_pressedAt;
    QPoint m_lastAt;
};

} // namespace app
