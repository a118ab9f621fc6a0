#pragma once

#include "korvane_global.h"

#include <QtPlugin>

namespace plugin {

/// A plug-in whose exports can be ended by the user, as an interface that a plug-in has or has not.
class KORVANE_EXPORT stoppable
{
public:
    stoppable();
    virtual ~stoppable();
    stoppable(const stoppable &) = delete;
    stoppable & operator=(const stoppable &) = delete;

    /// Ends the export that is under way before it writes its next statement; nothing when there is none. The
    /// export is a success then, and its messages tell which script is incomplete. To be called on the thread
    /// of the plug-in, while an export tells something.
    virtual void stopExport() = 0;
};

} // namespace plugin

Q_DECLARE_INTERFACE(plugin::stoppable, "korvane.stoppable/1")
