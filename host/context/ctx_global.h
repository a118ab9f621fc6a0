#pragma once

#include "korvane_global.h"

#include <QPointer>
#include <QString>

namespace view {
class main_wnd;
}

namespace context {

/// What belongs to the running program as a whole.
class KORVANE_EXPORT ctx_global
{
public:
    /// The main window; null when the host runs without one.
    [[nodiscard]] static view::main_wnd * getMainWnd();
    /// Makes `wnd` (not owned) the main window; null takes it away.
    static void setMainWnd(view::main_wnd * wnd);

    /// Base address of the user manual, to which an anchor such as "#ddl_export_settings" is appended.
    [[nodiscard]] static QString getAppHelpManualUrl();
    static void setAppHelpManualUrl(const QString & url);
};

} // namespace context
