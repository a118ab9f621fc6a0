#pragma once

/// Modules that lie beside the plug-ins and are none: by its IID each is told from them before it is loaded.
/// A changed interface gets another number.
#define KORVANE_LINE_DEBUGGER_IID "KorvaneLineDebugger/1"
