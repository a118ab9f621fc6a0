#include "app/statement_plugin.h"

#include "app/command.h"
#include "app/output.h"

namespace app {

int statement_plugin::load(const plugin_request & request, const export_options & options)
{
    m_found = found_plugins::forRequest(request);
    int status = Failed;
    QString reason;
    m_statements = chooseStatementSource(m_found, request, status, reason);
    if (m_statements) {
        reason = options.whyRefused(*m_statements);
        status = WrongUsage;
    }
    if (!reason.isEmpty()) {
        printError(reason);
        return status;
    }
    return Done;
}

} // namespace app
