#pragma once

#include "plugin/module_ids.h"
#include "tools/line_stops.h"

#include <QtPlugin>

#include <memory>

class QJSEngine;

namespace tools {

/// What makes a script engine stop at lines. It needs an interface that Qt keeps to itself and changes from
/// one version to the next, so it is a module that is loaded when someone debugs: everything else works with
/// any later Qt.
class line_debugger
{
public:
    virtual ~line_debugger() = default;

    /// Makes `engine` ask `stops` about the lines of `fileName`. Has to come before the script is evaluated,
    /// because code that was compiled without it does not ask.
    virtual void install(QJSEngine & engine, const QString & fileName,
                         const std::shared_ptr<line_stops> & stops) = 0;
};

/// The line debugger of the module that was built for the Qt that the program runs on, from the first of the
/// plug-in folders that has one; it stays to the end of the program. Null with one line of reason when there
/// is none.
[[nodiscard]] line_debugger * loadLineDebugger(QString & reason);

} // namespace tools

Q_DECLARE_INTERFACE(tools::line_debugger, KORVANE_LINE_DEBUGGER_IID)
