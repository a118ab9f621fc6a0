#include "app/window/export/message_list.h"

#include "app/output.h"
#include "app/shown_text.h"

#include "zk/visible_text.h"

#include <QLocale>
#include <QPalette>

#include <algorithm>
#include <iterator>

namespace app {

namespace {

constexpr int FlushMilliseconds = 50;
/// More than any row has room for; laying out the rest of a text of megabytes would hold up the window.
constexpr int LongestRow = 1'000;
constexpr int LongestToolTip = 4'000;
constexpr int HalfLightness = 128;

/// `text` as a tool tip that shows it as it is, whatever marks it contains.
QString toolTip(const QString & text)
{
    QString plain = shortened(text.trimmed(), LongestToolTip);
    std::replace_if(
        plain.begin(), plain.end(),
        [](QChar c) { return c.category() == QChar::Other_Control && c != QLatin1Char('\n'); },
        QLatin1Char(' '));
    return plainToolTip(plain);
}

/// `text` with a word for what it is, for those who see neither colour nor picture.
QString inWords(const QString & text, message_kind kind)
{
    switch (kind) {
    case message_kind::error:
        return message_list::tr("Error: %1").arg(text);
    case message_kind::warning:
        return message_list::tr("Warning: %1").arg(text);
    case message_kind::note:
        return message_list::tr("Note: %1").arg(text);
    case message_kind::accepted:
        return message_list::tr("Accepted: %1").arg(text);
    default:
        return text;
    }
}

} // namespace

message_kind messageKind(const QModelIndex & index)
{
    return static_cast<message_kind>(index.data(MessageKindRole).toInt());
}

QColor messageColor(message_kind kind, const QPalette & palette)
{
    /// Legible on light and on dark ground.
    struct kind_colors
    {
        message_kind kind;
        QRgb onLight;
        QRgb onDark;
    };
    static constexpr kind_colors colors[] = {{message_kind::error, 0xffb00020, 0xffff8a80},
                                             {message_kind::warning, 0xff805400, 0xffffcc66},
                                             {message_kind::accepted, 0xff606060, 0xffa8a8a8}};
    const auto * const own = std::find_if(std::begin(colors), std::end(colors),
                                          [kind](const kind_colors & each) { return each.kind == kind; });
    if (own == std::end(colors)) {
        return {};
    }
    return palette.color(QPalette::Base).lightness() < HalfLightness ? own->onDark : own->onLight;
}

message_list::message_list(QObject * parent, int limit)
    : QAbstractListModel(parent), m_iLimit(std::max(10, limit))
{
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(FlushMilliseconds);
    connect(&m_flushTimer, &QTimer::timeout, this, &message_list::flush);
}

void message_list::add(const QString & text, message_kind kind, const QVariant & target)
{
    m_pending.push_back({zk::visibleText(text), kind, target});
    if (m_pending.size() * 10 >= static_cast<std::size_t>(m_iLimit)) {
        flush(); // where no event is handled for long, what is held back is not to grow without end
    } else if (!m_flushTimer.isActive()) {
        m_flushTimer.start();
    }
}

void message_list::flush()
{
    m_flushTimer.stop();
    if (m_pending.empty()) {
        return;
    }
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(m_pending.size()) - 1);
    std::move(m_pending.begin(), m_pending.end(), std::back_inserter(m_lines));
    m_pending.clear();
    endInsertRows();
    dropOldest();
}

/// Drops a tenth more than it has to, so that not every new line moves all rows.
void message_list::dropOldest()
{
    if (rowCount() <= m_iLimit) {
        return;
    }
    const int count = rowCount() - (m_iLimit - m_iLimit / 10);
    m_iDropped += count + (m_iDropped == 0 ? 1 : 0);
    // The first line becomes the one that tells; a row that is put before all would move what is being read.
    m_lines.front() = {tr("%1 older lines were dropped").arg(QLocale().toString(m_iDropped)),
                       message_kind::dropped, QVariant()};
    Q_EMIT dataChanged(index(0), index(0));
    beginRemoveRows({}, 1, count);
    m_lines.erase(m_lines.begin() + 1, m_lines.begin() + 1 + count);
    endRemoveRows();
}

void message_list::clear()
{
    m_flushTimer.stop();
    beginResetModel();
    m_pending.clear();
    m_lines.clear();
    m_iDropped = 0;
    endResetModel();
}

int message_list::rowCount(const QModelIndex & parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

QVariant message_list::data(const QModelIndex & index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const line & shown = m_lines[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return oneLine(shortened(shown.text, LongestRow));
    case Qt::ToolTipRole:
        return toolTip(shown.text);
    case Qt::AccessibleTextRole:
        return inWords(oneLine(shown.text), shown.kind);
    case MessageKindRole:
        return static_cast<int>(shown.kind);
    case MessageCopyRole:
        return inWords(shown.text, shown.kind);
    case MessageTargetRole:
        return shown.target;
    default:
        return {};
    }
}

} // namespace app
