#include "plugin/builder/databases.h"

#include "plugin/builder/ddl_export_builder_default.h"
#include "plugin/builder/ddl_export_builder_mssqlserver.h"
#include "plugin/builder/ddl_export_builder_mysql.h"
#include "plugin/builder/ddl_export_builder_oracle.h"
#include "plugin/builder/ddl_export_builder_postgresql.h"
#include "plugin/builder/ddl_export_builder_sqlite.h"

#include <algorithm>

namespace plugin {

namespace {

template <class Builder>
std::shared_ptr<ddl_export_builder> make(ddl_export * plugin)
{
    return std::make_shared<Builder>(plugin);
}

// clang-format off
constexpr database Databases[] = {
    {ddl_export::db_default,     "generic",     "Generic SQL",   "default",     &default_type::generic,     make<ddl_export_builder_default>},
    {ddl_export::db_sqlite,      "sqlite",      "SQLite",        "sqlite",      &default_type::generic,     make<ddl_export_builder_sqlite>},
    {ddl_export::db_mysql,       "mysql",       "MySQL",         "mysql",       &default_type::mysql,       make<ddl_export_builder_mysql>},
    {ddl_export::db_postgresql,  "postgresql",  "PostgreSQL",    "postgresql",  &default_type::postgresql,  make<ddl_export_builder_postgresql>},
    {ddl_export::db_oracle,      "oracle",      "Oracle",        "oracle",      &default_type::oracle,      make<ddl_export_builder_oracle>},
    {ddl_export::db_mssqlserver, "mssqlserver", "MS SQL Server", "mssqlserver", &default_type::mssqlserver, make<ddl_export_builder_mssqlserver>},
};
// clang-format on

} // namespace

std::span<const database> allDatabases()
{
    return Databases;
}

const database & databaseOf(ddl_export::database_type db)
{
    const auto * const row = std::find_if(std::begin(Databases), std::end(Databases),
                                          [db](const database & known) { return known.number == db; });
    return row == std::end(Databases) ? Databases[0] : *row;
}

std::shared_ptr<ddl_export_builder> createBuilder(ddl_export::database_type db, ddl_export * plugin)
{
    return databaseOf(db).create(plugin);
}

} // namespace plugin
