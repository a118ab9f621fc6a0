#include "tools/script_source_view.h"

#include "tools/colours.h"

#include <QEvent>
#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>

namespace tools {

namespace {

constexpr int Gap = 4;

/// The strip with the line numbers; all it knows is the view that it belongs to.
class margin : public QWidget
{
public:
    explicit margin(script_source_view * view) : QWidget(view), m_pView(view)
    {
        setObjectName(QStringLiteral("m_margin"));
    }
    [[nodiscard]] QSize sizeHint() const override { return {m_pView->marginWidth(), 0}; }

protected:
    void paintEvent(QPaintEvent * event) override { m_pView->paintMargin(event); }
    void mousePressEvent(QMouseEvent * event) override
    {
        if (event->button() == Qt::LeftButton) {
            m_pView->clickMargin(event->position().toPoint().y());
        }
    }

private:
    script_source_view * m_pView;
};

} // namespace

script_source_view::script_source_view(QWidget * parent) : QPlainTextEdit(parent), m_pMargin(new margin(this))
{
    setReadOnly(true);
    // Reading by keyboard needs a cursor that shows; a read-only text has none otherwise.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setTabStopDistance(4 * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    m_pMargin->setFont(font());
    connect(this, &QPlainTextEdit::blockCountChanged, this, &script_source_view::placeMargin);
    connect(this, &QPlainTextEdit::updateRequest, m_pMargin, [this](const QRect & rect, int dy) {
        dy ? m_pMargin->scroll(0, dy) : m_pMargin->update(0, rect.y(), m_pMargin->width(), rect.height());
    });
    placeMargin();
}

int script_source_view::marginWidth() const
{
    const qsizetype digits = QString::number(qMax(100, blockCount())).size();
    return static_cast<int>(fontMetrics().horizontalAdvance(QLatin1Char('9')) * digits) +
           fontMetrics().height() + 2 * Gap;
}

void script_source_view::placeMargin()
{
    setViewportMargins(marginWidth(), 0, 0, 0);
    const QRect area = contentsRect();
    m_pMargin->setGeometry(area.left(), area.top(), marginWidth(), area.height());
}

void script_source_view::resizeEvent(QResizeEvent * event)
{
    QPlainTextEdit::resizeEvent(event);
    placeMargin();
}

void script_source_view::changeEvent(QEvent * event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        placeMargin();
    } else if (event->type() == QEvent::PaletteChange) {
        markCurrentLine();
    }
}

void script_source_view::setCurrentLine(int line)
{
    m_iCurrentLine = line;
    const QTextBlock block = document()->findBlockByNumber(line - 1);
    if (line > 0 && block.isValid()) {
        const QTextCursor cursor(block);
        const bool isInView = viewport()->rect().contains(cursorRect(cursor));
        setTextCursor(cursor);
        if (!isInView) {
            centerCursor(); // what comes next is to be seen as well
        }
    }
    markCurrentLine();
    m_pMargin->update();
}

void script_source_view::markCurrentLine()
{
    QList<QTextEdit::ExtraSelection> selections;
    const QTextBlock block = document()->findBlockByNumber(m_iCurrentLine - 1);
    if (m_iCurrentLine > 0 && block.isValid()) {
        QTextEdit::ExtraSelection selection;
        // Between the two colours the text stays legible in light and dark palettes alike.
        selection.format.setBackground(
            between(palette().color(QPalette::Base), palette().color(QPalette::Highlight), 0.3));
        selection.format.setProperty(QTextFormat::FullWidthSelection, true);
        selection.cursor = QTextCursor(block);
        selections.append(selection);
    }
    setExtraSelections(selections);
}

void script_source_view::toggleBreakpoint(int line)
{
    if (!m_bBreakpointsPossible || line < 1 || line > blockCount()) {
        return;
    }
    if (!m_breakpoints.remove(line)) {
        m_breakpoints.insert(line);
    }
    m_pMargin->update();
    Q_EMIT breakpointsChanged();
}

void script_source_view::clickMargin(int y)
{
    toggleBreakpoint(cursorForPosition(QPoint(0, y)).blockNumber() + 1);
}

void script_source_view::paintMargin(QPaintEvent * event)
{
    QPainter painter(m_pMargin);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
    const QColor text = palette().color(QPalette::Text);
    const QColor quiet = between(text, palette().color(QPalette::AlternateBase), 0.35);
    const int height = fontMetrics().height();
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
        if (place.top() > event->rect().bottom()) {
            break;
        }
        const int line = block.blockNumber() + 1;
        const int top = qRound(place.top());
        if (m_breakpoints.contains(line)) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(0xd0, 0x30, 0x30));
            painter.drawEllipse(QRectF(Gap, top + height * 0.2, height * 0.6, height * 0.6));
        }
        if (line == m_iCurrentLine) {
            const qreal left = Gap + height * 0.15;
            painter.setPen(Qt::NoPen);
            painter.setBrush(text);
            painter.drawPolygon(
                QPolygonF({QPointF(left, top + height * 0.25), QPointF(left, top + height * 0.75),
                           QPointF(left + height * 0.45, top + height * 0.5)}));
        }
        painter.setPen(line == m_iCurrentLine ? text : quiet);
        painter.drawText(0, top, m_pMargin->width() - Gap, height, Qt::AlignRight, QString::number(line));
    }
}

} // namespace tools
