#include "plugin/export_details.h"
#include "plugin/export_interface.h"

#include "tools/custom_javascript.h"

namespace plugin {

base_interface::base_interface() = default;
base_interface::~base_interface() = default;

void base_interface::terminate()
{
    setCustomScript(nullptr);
}

void base_interface::setCustomScript(const std::shared_ptr<tools::custom_javascript> & script)
{
    m_pCustomScript = script;
}

export_interface::export_interface() = default;
export_interface::~export_interface() = default;

export_details::export_details() = default;
export_details::~export_details() = default;

} // namespace plugin
