#pragma once

#include "database/catalogue/catalogue.h"
#include "database/catalogue/left_out.h"
#include "zk/zk_bool.h"

#include <QList>
#include <QString>

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

/// Whether `text` names a database or a script, not a model in text form.
[[nodiscard]] bool isSchemaSource(const QString & text);
/// Why the source cannot be meant; empty when it can.
/// @param database key that was given beside it
[[nodiscard]] QString whyNoSchema(const QString & text, const QString & database);

/// Reads the database of a URL, or runs the script "ddl:FILE" on a new database of the kind `database`, which
/// goes again. A failure is one line "source: reason".
/// @param schema see database::server::openToRead()
[[nodiscard]] zk::ZkBool readSchema(const QString & text, const QString & database, const QString & schema,
                                    held_schema & held);

} // namespace app
