#include "app/window/export/message_filter.h"

#include "app/window/export/message_list.h"

namespace app {

void message_filter::setErrorsOnly(bool errorsOnly)
{
    m_bErrorsOnly = errorsOnly;
    // One new layout; a filter that is only told to look again reports every gap between two errors.
    invalidate();
}

bool message_filter::filterAcceptsRow(int row, const QModelIndex & parent) const
{
    if (!m_bErrorsOnly) {
        return true;
    }
    const message_kind kind = messageKind(sourceModel()->index(row, 0, parent));
    return kind == message_kind::error || kind == message_kind::heading;
}

} // namespace app
