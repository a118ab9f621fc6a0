#pragma once

#include <QtGlobal>

/// Marks what the shared library KorvaneCore offers to programs and plug-ins.
#if defined(KORVANE_CORE_LIBRARY)
#define KORVANE_EXPORT Q_DECL_EXPORT
#else
#define KORVANE_EXPORT Q_DECL_IMPORT
#endif
