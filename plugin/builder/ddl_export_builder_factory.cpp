#include "plugin/builder/ddl_export_builder_factory.h"

#include "plugin/builder/ddl_export_builder_default.h"
#include "plugin/builder/ddl_export_builder_mssqlserver.h"
#include "plugin/builder/ddl_export_builder_mysql.h"
#include "plugin/builder/ddl_export_builder_oracle.h"
#include "plugin/builder/ddl_export_builder_postgresql.h"
#include "plugin/builder/ddl_export_builder_sqlite.h"

namespace plugin {

std::shared_ptr<ddl_export_builder> createBuilder(ddl_export::database_type db, ddl_export * plugin)
{
    switch (db) {
    case ddl_export::db_sqlite:
        return std::make_shared<ddl_export_builder_sqlite>(plugin);
    case ddl_export::db_mysql:
        return std::make_shared<ddl_export_builder_mysql>(plugin);
    case ddl_export::db_postgresql:
        return std::make_shared<ddl_export_builder_postgresql>(plugin);
    case ddl_export::db_oracle:
        return std::make_shared<ddl_export_builder_oracle>(plugin);
    case ddl_export::db_mssqlserver:
        return std::make_shared<ddl_export_builder_mssqlserver>(plugin);
    case ddl_export::db_default:
        break;
    }
    return std::make_shared<ddl_export_builder_default>(plugin);
}

} // namespace plugin
