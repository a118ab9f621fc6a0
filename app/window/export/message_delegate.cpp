#include "app/window/export/message_delegate.h"

#include "app/window/export/message_list.h"

#include <QStyle>

#include <algorithm>

namespace app {

namespace {

constexpr int RowGap = 4;

} // namespace

QIcon messageIcon(message_kind kind, const QStyle & style)
{
    switch (kind) {
    case message_kind::error:
        return style.standardIcon(QStyle::SP_MessageBoxCritical);
    case message_kind::warning:
        return style.standardIcon(QStyle::SP_MessageBoxWarning);
    case message_kind::note:
        return style.standardIcon(QStyle::SP_MessageBoxInformation);
    case message_kind::closing:
        return style.standardIcon(QStyle::SP_DialogApplyButton);
    default:
        return {};
    }
}

message_delegate::message_delegate(QWidget * parent) : QStyledItemDelegate(parent)
{
    takeIcons(*parent->style());
}

void message_delegate::takeIcons(const QStyle & style)
{
    m_errorIcon = messageIcon(message_kind::error, style);
    m_warningIcon = messageIcon(message_kind::warning, style);
    m_noteIcon = messageIcon(message_kind::note, style);
    m_closingIcon = messageIcon(message_kind::closing, style);
}

QSize message_delegate::sizeHint(const QStyleOptionViewItem & option, const QModelIndex &) const
{
    return {0, std::max(option.fontMetrics.height(), option.decorationSize.height()) + RowGap};
}

void message_delegate::initStyleOption(QStyleOptionViewItem * option, const QModelIndex & index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const message_kind kind = messageKind(index);
    if (const QColor color = messageColor(kind, option->palette); color.isValid()) {
        option->palette.setColor(QPalette::Text, color);
    }
    option->font.setBold(kind == message_kind::heading || kind == message_kind::closing);
    option->font.setItalic(kind == message_kind::dropped);
    if (kind == message_kind::heading) {
        return;
    }
    option->features |= QStyleOptionViewItem::HasDecoration; // its room keeps the texts in one column
    option->icon = kind == message_kind::error     ? m_errorIcon
                   : kind == message_kind::warning ? m_warningIcon
                   : kind == message_kind::note    ? m_noteIcon
                   : kind == message_kind::closing ? m_closingIcon
                                                   : QIcon();
}

} // namespace app
