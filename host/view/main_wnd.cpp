#include "view/main_wnd.h"

namespace view {

main_wnd::main_wnd(QWidget * parent) : QMainWindow(parent) {}
main_wnd::~main_wnd() = default;

} // namespace view
