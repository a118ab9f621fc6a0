#include "view/main_wnd.h"

namespace view {

main_wnd::main_wnd(QWidget * parent) : QMainWindow(parent) {}
main_wnd::~main_wnd() = default;

void main_wnd::setHolder(QWidget * holder)
{
    if (holder != m_pHolder) {
        m_pHolder = holder;
        Q_EMIT holderChanged();
    }
}

} // namespace view
