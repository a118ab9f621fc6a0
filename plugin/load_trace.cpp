// Traces when the library is attached to and detached from a process: silent unless the debug level of the
// logging category "korvane.ddl_export" is switched on.

#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(lcLoad, "korvane.ddl_export", QtInfoMsg)

struct load_trace
{
    load_trace() { qCDebug(lcLoad, "KorvGenericDDLExport.DllMain() ---> DLL_PROCESS_ATTACH"); }
    ~load_trace() { qCDebug(lcLoad, "KorvGenericDDLExport.DllMain() ---> DLL_PROCESS_DETACH"); }
};

const load_trace trace;

} // namespace
