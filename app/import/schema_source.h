#pragma once

#include "database/catalogue/catalogue.h"
#include "database/catalogue/left_out.h"
#include "zk/zk_bool.h"

#include <QList>
#include <QString>

#include <optional>

namespace database {
struct facts;
}

namespace app {

/// What a database holds, for a model to be made of it.
struct held_schema
{
    QString name; ///< of the database, for messages
    const database::facts * known = nullptr;
    database::catalogue found;         ///< without what stands in for something else
    QList<database::left_out> leftOut; ///< in no order of tables
};

/// What a command line says of a database or a script.
struct schema_request
{
    QString source;            ///< a URL, or "ddl:FILE"
    QString database;          ///< key of the one that a script runs on; empty for a URL
    QString schema;            ///< see database::server::openToRead()
    bool skipsRefused = false; ///< statements of the script that are refused are listed, and do not end it
    /// Of the server, when it is given apart from the URL; empty for none. Nobody is asked for it then.
    std::optional<QString> password;
};

/// Whether `text` names a database or a script, not a model in text form.
[[nodiscard]] bool isSchemaSource(const QString & text);
/// Why the request cannot be meant; empty when it can.
[[nodiscard]] QString whyNoSchema(const schema_request & request);

/// Reads the database of a URL, or runs a script on a new database, which goes again. A failure is one line
/// "source: reason".
[[nodiscard]] zk::ZkBool readSchema(const schema_request & request, held_schema & held);

} // namespace app
