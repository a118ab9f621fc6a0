#pragma once

#include "database/catalogue/catalogue.h"
#include "database/catalogue/left_out.h"
#include "database/facts/facts.h"
#include "database/server/sql_connection.h"

#include <QList>
#include <QString>

#include <memory>

namespace database::server {

struct server_url;

/// A database whose own catalogue tells what is in it. What reads throws server_failure.
class readable_database
{
public:
    virtual ~readable_database() = default;

    /// What is known about it.
    [[nodiscard]] virtual const database::facts & known() const = 0;
    /// What it says of its own version, such as "SQLite 3.40.1".
    [[nodiscard]] virtual QString version() = 0;
    /// What is in the database now, in its normal form.
    [[nodiscard]] virtual database::catalogue held() = 0;
    /// What of it held() has no place for.
    [[nodiscard]] virtual QList<database::left_out> leftOut() = 0;
};

/// Opens the database of that URL, which is somebody's, to read it and nothing else: of SQLite a file that is
/// there, of MySQL and MariaDB a database, of PostgreSQL one schema of it.
/// @param schema of PostgreSQL; empty for "public"
/// @return null, with the reason on one line and without the password, when that cannot be done
[[nodiscard]] std::unique_ptr<readable_database> openToRead(const server_url & place, const QString & schema,
                                                            QString & why);

} // namespace database::server
