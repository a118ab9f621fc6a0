#include "database/facts/facts.h"

#include "database/facts/rows.h"

#include <algorithm>
#include <array>

namespace database {

namespace {

// By address: the rows stand in files of their own.
constexpr std::array<const facts *, 7> Rows = {&GenericFacts,    &SqliteFacts,     &MysqlFacts,
                                               &MariadbFacts,    &PostgresqlFacts, &OracleFacts,
                                               &MssqlserverFacts};

} // namespace

std::span<const facts * const> allFacts()
{
    return Rows;
}

const facts * factsOf(QStringView key)
{
    const auto found =
        std::find_if(Rows.begin(), Rows.end(), [key](const facts * row) { return row->key == key; });
    return found == Rows.end() ? nullptr : *found;
}

QLatin1String codeOf(const facts & known, refusal_cause cause, error_form form)
{
    const auto codes = known.errors.value;
    const auto found = std::find_if(codes.begin(), codes.end(), [cause, form](const error_code & answer) {
        return answer.cause == cause && (answer.form == error_form::any || answer.form == form);
    });
    return found == codes.end() ? QLatin1String() : found->code;
}

} // namespace database
