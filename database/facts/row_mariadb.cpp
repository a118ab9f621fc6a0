#include "database/facts/mariadb_family.h"
#include "database/facts/rows.h"

namespace database {

constinit const facts MariadbFacts = mariadbFamily(QLatin1String("mariadb"), QLatin1String("MariaDB 10.11"),
                                                   true, "tried on MariaDB 10.11.19");

} // namespace database
