#include "database/facts/mariadb_family.h"
#include "database/facts/rows.h"

#include <algorithm>
#include <array>

namespace database {

namespace {

constexpr char Documented[] = "documentation of MySQL 8.0";

// Words that MariaDB knows and MySQL does not are no types to it, but errors in the syntax.
constexpr QLatin1String SyntaxErrors[] = {QLatin1String("UUID"), QLatin1String("INET4"),
                                          QLatin1String("INET6")};

// clang-format off
constexpr error_code OwnErrors[] = {
    {refusal_cause::table_name_too_long, QLatin1String("1059")},
    {refusal_cause::unknown_type, QLatin1String("1064")},
    {refusal_cause::too_many_columns, QLatin1String("1117")},
    {refusal_cause::table_referred_to, QLatin1String("3730")},
    {refusal_cause::column_of_foreign_key, QLatin1String("1828")},
    {refusal_cause::copy_needed, QLatin1String("1832")},
    {refusal_cause::type_change_forbidden, QLatin1String("1832")},
    {refusal_cause::values_cut, QLatin1String("1406")},
    {refusal_cause::foreign_key_exists, QLatin1String("1826")},
    {refusal_cause::foreign_key_missing, QLatin1String("3940")},
    {refusal_cause::target_missing, QLatin1String("1824")},
    {refusal_cause::target_column_missing, QLatin1String("3734")},
    {refusal_cause::target_not_key, QLatin1String("1822")},
    {refusal_cause::target_type_differs, QLatin1String("3780")},
};
// clang-format on

// A code of its own comes before that of the family.
constexpr auto Errors = [] {
    std::array<error_code, std::size(OwnErrors) + std::size(MariadbErrors)> all{};
    std::copy(std::begin(MariadbErrors), std::end(MariadbErrors),
              std::copy(std::begin(OwnErrors), std::end(OwnErrors), all.begin()));
    return all;
}();

constexpr facts mysql()
{
    facts row = mariadbFamily(QLatin1String("mysql"), QLatin1String("MySQL 8.0"), false, Documented);
    row.types.syntaxErrors.value = SyntaxErrors;
    // It keeps no unique index as a hash: a text without a length has to have a prefix in any key.
    row.keys.hashesLong.value = false;
    row.foreignKeys.hashMakesDropIdle.value = false;
    row.errors.value = Errors;
    return row;
}

} // namespace

constinit const facts MysqlFacts = mysql();

} // namespace database
