#pragma once

/// What a plug-in gives as its IID to Q_PLUGIN_METADATA: the interface whose headers it is built with. A
/// program with another one refuses it before any code of it runs. The number grows with every change of
/// plugin::base_interface, plugin::export_interface or what they hand over.
#define KORVANE_PLUGIN_IID "KorvanePlugin/1"

/// Modules that lie beside the plug-ins and are none: by its IID each is told from them before it is loaded.
/// A changed interface gets another number.
#define KORVANE_LINE_DEBUGGER_IID "KorvaneLineDebugger/1"
