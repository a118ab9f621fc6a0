#pragma once

#include "app/export_options.h"
#include "app/plugin_choice.h"

namespace app {

/// The plug-in that tells a command the statements of scripts. It stays loaded as long as this lives; texts
/// that it gave belong to its module.
class statement_plugin
{
public:
    /// Loads what `request` means, and sees whether it takes `options`. Done; else the exit status, and one
    /// line on standard error says why.
    [[nodiscard]] int load(const plugin_request & request, const export_options & options = {});

    /// After load() was Done.
    [[nodiscard]] plugin::statement_source & statements() const { return *m_statements; }

private:
    found_plugins m_found;
    plugin::statement_source * m_statements = nullptr;
};

} // namespace app
