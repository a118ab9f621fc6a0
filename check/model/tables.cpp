#include "check/model/tables.h"

#include "model/entity.h"

namespace check {

QString tableNameOf(const model::entity & of)
{
    return of.getTableName().isEmpty() ? of.getName() : of.getTableName();
}

bool isTableMade(const model::entity & of)
{
    const QString made = of.getMetaData(QLatin1String(CreateTableData)).toString();
    return made != QLatin1String("0") && made.compare(QLatin1String("false"), Qt::CaseInsensitive) != 0;
}

} // namespace check
