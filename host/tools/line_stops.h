#pragma once

#include "tools/script_stop.h"

#include <QSet>

#include <functional>

namespace tools {

/// What a script engine asks at each line of the script: whether to stop there. Shared between the debugger,
/// which may go at any time, and the engine, which has to keep it to its own end.
struct line_stops
{
    enum step_mode
    {
        run,
        over,
        into
    };

    /// Lines at which the script stops, from 1 on.
    QSet<int> breakpoints;
    /// Whether it stops at the next line too: any, or one that is not in a function called from here.
    step_mode step = run;
    /// Depth of the call stack above which `over` does not stop.
    qsizetype depth = 0;
    /// False while nobody wants to know of lines.
    bool isWatching = false;
    /// True while the user looks at a stop: what is evaluated then does not stop in turn.
    bool isBusy = false;
    /// Called with the call stack, innermost first; the script goes on when it returns.
    std::function<void(const QList<script_frame> &)> onStop;
};

} // namespace tools
