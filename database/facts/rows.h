#pragma once

#include "database/facts/facts.h"

namespace database {

// One a database, each in a file of its own.
extern const facts GenericFacts;
extern const facts SqliteFacts;
extern const facts MysqlFacts;
extern const facts MariadbFacts;
extern const facts PostgresqlFacts;
extern const facts OracleFacts;
extern const facts MssqlserverFacts;

} // namespace database
