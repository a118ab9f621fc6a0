// What the readers of all databases do alike.

#include "database/server/catalogue_readers.h"

namespace database::server {

void addLeftOut(QList<database::left_out> & list, const sql_connection & from, const left_out_query & asked,
                const QVariantList & values)
{
    for (const QVariantList & row : from.rows(QString::fromUtf8(asked.sql), values)) {
        list.append({row[0].toString(), row[1].toString().simplified(), asked.standIn, row[2].toString()});
    }
}

void addForeignKeyColumn(database::table & owner, const QVariantList & row)
{
    auto & keys = owner.foreignKeys;
    if (keys.empty() || keys.back().name != row[1].toString()) {
        keys.push_back({row[1].toString(), {}, row[2].toString(), {}});
    }
    keys.back().columns.append(row[3].toString());
    keys.back().targetColumns.append(row[4].toString());
}

} // namespace database::server
