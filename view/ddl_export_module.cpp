// The entry of the module: gives the plug-in, which knows no dialog, the one for its settings.

#include "view/ddl_export_settings.h"

#include "plugin/ddl_export.h"

namespace {

struct settings_entry
{
    settings_entry() { plugin::ddl_export::setSettingsDialog(&view::showSettingsDialog); }
};

const settings_entry entry;

} // namespace
