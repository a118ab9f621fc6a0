#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

namespace app {

/// Draws a line of a message_list in the colour and with the picture of its kind.
class message_delegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit message_delegate(QWidget * parent);

    /// Takes the pictures of `style`. Looking one up is too slow to be done for every row that is drawn.
    void takeIcons(const QStyle & style);
    /// No width: a line is as wide as the list, and what has no room is elided.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem & option,
                                 const QModelIndex & index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem * option, const QModelIndex & index) const override;

private:
    QIcon m_errorIcon;
    QIcon m_warningIcon;
    QIcon m_noteIcon;
    QIcon m_closingIcon;
};

} // namespace app
