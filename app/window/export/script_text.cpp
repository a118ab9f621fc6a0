#include "app/window/export/script_text.h"

#include "app/window/export/message_list.h"

#include <QEvent>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QPainter>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>

namespace app {

namespace {

constexpr int Gap = 6;
constexpr int TabCharacters = 4;
constexpr int MarkWidth = 4; ///< of the bar beside a line that destroys data
constexpr int HalfLightness = 128;
/// More marks are not told apart on a screen, and a line without end may hold any number.
constexpr int MostMarks = 2'000;

/// The strip with the line numbers; all it knows is the view that it belongs to.
class line_margin : public QWidget
{
public:
    explicit line_margin(script_text * view) : QWidget(view), m_pView(view) {}

protected:
    void paintEvent(QPaintEvent * event) override { m_pView->paintMargin(event); }

private:
    script_text * m_pView;
};

} // namespace

script_text::script_text(QWidget * parent) : QPlainTextEdit(parent), m_pMargin(new line_margin(this))
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    // Reading by keyboard needs a cursor that shows; a read-only text has none otherwise.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setWrapped(false);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    takeFont();
    connect(this, &QPlainTextEdit::blockCountChanged, this, &script_text::placeMargin);
    connect(this, &QPlainTextEdit::updateRequest, m_pMargin, [this](const QRect & rect, int dy) {
        dy ? m_pMargin->scroll(0, dy) : m_pMargin->update(0, rect.y(), m_pMargin->width(), rect.height());
    });
}

script_text::~script_text() = default;

void script_text::setScript(const QString & text, sql_dialect dialect)
{
    m_pHighlighter.reset();
    setMarks({}, 0, -1);
    clear();
    // It has to be there before the text: one that comes later reads the text a moment later.
    m_pHighlighter = std::make_unique<sql_highlighter>(document(), dialect, palette());
    setPlainText(text);
    m_iFirstDressed = -1;
}

void script_text::setWrapped(bool wrapped)
{
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setLineWrapMode(wrapped ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
}

void script_text::setMarks(std::vector<int> starts, int length, qsizetype current)
{
    m_marks = std::move(starts);
    m_iMarkLength = length;
    m_iCurrentMark = current;
    m_iFirstDressed = -1;
    if (current >= 0 && current < static_cast<qsizetype>(m_marks.size())) {
        QTextCursor cursor(document());
        cursor.setPosition(m_marks[static_cast<std::size_t>(current)]);
        const bool isInView = viewport()->rect().contains(cursorRect(cursor));
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor, length);
        setTextCursor(cursor);
        if (!isInView) {
            centerCursor(); // what comes before and after is to be seen as well
        }
    }
    viewport()->update();
}

void script_text::selectLines(int line, int count)
{
    const QTextBlock first = document()->findBlockByNumber(line - 1);
    const QTextBlock last = document()->findBlockByNumber(line + count - 2);
    if (!first.isValid() || !last.isValid()) {
        return;
    }
    QTextCursor cursor(first);
    cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    centerCursor();
}

QTextEdit::ExtraSelection script_text::mark(qsizetype index) const
{
    QTextEdit::ExtraSelection selection;
    selection.cursor = QTextCursor(document());
    selection.cursor.setPosition(m_marks[static_cast<std::size_t>(index)]);
    selection.cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor, m_iMarkLength);
    if (index == m_iCurrentMark) {
        // The selection, which is there as well, looks faint while the search field has the focus.
        selection.format.setBackground(palette().color(QPalette::Active, QPalette::Highlight));
        selection.format.setForeground(palette().color(QPalette::Active, QPalette::HighlightedText));
    } else {
        const bool isDark = palette().color(QPalette::Base).lightness() < HalfLightness;
        selection.format.setBackground(isDark ? QColor(0x5c, 0x4a, 0x00) : QColor(0xff, 0xe6, 0x8f));
    }
    return selection;
}

/// Shows the marks that begin at `from` or later and before `to`.
void script_text::showMarks(int from, int to)
{
    QList<QTextEdit::ExtraSelection> selections;
    const auto begin = std::lower_bound(m_marks.cbegin(), m_marks.cend(), from);
    for (auto it = begin; it != m_marks.cend() && *it < to && selections.size() < MostMarks; ++it) {
        selections.append(mark(it - m_marks.cbegin()));
    }
    setExtraSelections(selections);
}

/// Colours and marks the lines in view, unless nothing has changed since they were.
void script_text::dressVisible()
{
    const QTextBlock first = firstVisibleBlock();
    QTextBlock last = first;
    const int bottom = viewport()->height();
    qreal top = first.isValid() ? blockBoundingGeometry(first).translated(contentOffset()).bottom() : 0;
    while (last.next().isValid() && top < bottom) {
        last = last.next();
        top += blockBoundingRect(last).height();
    }
    if (!first.isValid() || !m_pHighlighter ||
        (first.blockNumber() == m_iFirstDressed && last.blockNumber() == m_iLastDressed)) {
        return;
    }
    m_iFirstDressed = first.blockNumber();
    m_iLastDressed = last.blockNumber();
    m_pHighlighter->colorLines(m_iFirstDressed, m_iLastDressed);
    showMarks(first.position(), last.position() + last.length());
}

void script_text::paintEvent(QPaintEvent * event)
{
    dressVisible();
    QPlainTextEdit::paintEvent(event);
}

void script_text::resizeEvent(QResizeEvent * event)
{
    QPlainTextEdit::resizeEvent(event);
    placeMargin();
}

void script_text::changeEvent(QEvent * event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        takeFont();
    } else if (event->type() == QEvent::PaletteChange && m_pHighlighter) {
        m_pHighlighter->setPalette(palette());
        m_iFirstDressed = -1;
        viewport()->update();
    }
}

void script_text::takeFont()
{
    setTabStopDistance(TabCharacters * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    m_pMargin->setFont(font());
    placeMargin();
}

int script_text::marginWidth() const
{
    const qsizetype digits = QString::number(std::max(100, blockCount())).size();
    return static_cast<int>(fontMetrics().horizontalAdvance(QLatin1Char('9')) * digits) + 2 * Gap;
}

void script_text::placeMargin()
{
    setViewportMargins(marginWidth(), 0, 0, 0);
    const QRect area = contentsRect();
    m_pMargin->setGeometry(area.left(), area.top(), marginWidth(), area.height());
}

void script_text::paintMargin(QPaintEvent * event)
{
    QPainter painter(m_pMargin);
    painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
    painter.setPen(messageColor(message_kind::accepted, palette()));
    const int width = m_pMargin->width() - Gap;
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
        if (place.top() > event->rect().bottom()) {
            break;
        }
        if (destroysData(block.text())) {
            painter.fillRect(QRectF(0, place.top(), MarkWidth, place.height()),
                             messageColor(message_kind::error, palette()));
        }
        painter.drawText(0, qRound(place.top()), width, fontMetrics().height(), Qt::AlignRight,
                         QString::number(block.blockNumber() + 1));
    }
}

bool script_text::viewportEvent(QEvent * event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto * const help = static_cast<QHelpEvent *>(event);
        if (destroysData(cursorForPosition(help->pos()).block().text())) {
            QToolTip::showText(help->globalPos(), tr("This statement takes values or a table away"),
                               viewport());
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QPlainTextEdit::viewportEvent(event);
}

} // namespace app
