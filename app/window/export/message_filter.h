#pragma once

#include <QSortFilterProxyModel>

namespace app {

/// Shows all lines of a message list, or errors only; headings stay, to tell which run an error is of.
class message_filter : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setErrorsOnly(bool errorsOnly);

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex & parent) const override;

private:
    bool m_bErrorsOnly = false;
};

} // namespace app
