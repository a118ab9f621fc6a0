#include "plugin/export_details.h"
#include "plugin/export_interface.h"
#include "plugin/statement_source.h"
#include "plugin/stoppable.h"

#include <cstddef>
#include <iterator>

namespace plugin {

namespace {

/// In the order of the enumeration. Custom scripts of users ask for these.
constexpr QLatin1String ActionNames[] = {
    QLatin1String("DDL_EXPORT_BEGIN"), QLatin1String("CREATE_TABLE"),    QLatin1String("CREATE_EXTRA_TABLE"),
    QLatin1String("CREATE_INDEX"),     QLatin1String("ADD_FOREIGN_KEY"), QLatin1String("DROP_TABLE"),
    QLatin1String("RENAME_TABLE"),     QLatin1String("DROP_COLUMN"),     QLatin1String("ADD_COLUMN"),
    QLatin1String("RENAME_COLUMN"),    QLatin1String("DROP_INDEX"),      QLatin1String("DROP_FOREIGN_KEY"),
    QLatin1String("DDL_EXPORT_END"),
};
static_assert(std::size(ActionNames) == static_cast<std::size_t>(statement_action::end) + 1);

} // namespace

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

stoppable::stoppable() = default;
stoppable::~stoppable() = default;

statement_source::statement_source() = default;
statement_source::~statement_source() = default;

QLatin1String actionName(statement_action action)
{
    return ActionNames[static_cast<std::size_t>(action)];
}

} // namespace plugin
