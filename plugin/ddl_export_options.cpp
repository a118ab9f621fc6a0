// The options of the command line that have a fixed set of values.

#include "plugin/builder/databases.h"
#include "plugin/ddl_export.h"

namespace plugin {

namespace {

const QString DatabaseOption = QStringLiteral("--KorvGenericDDLExport_db_type");
const QString RelationshipsOption = QStringLiteral("--KorvGenericDDLExport_relation_as_fk");
const QString SchemaOption = QStringLiteral("--KorvGenericDDLExport_schema_type");

QString shown(const option_value & value)
{
    return QStringLiteral("%1 (%2)").arg(value.value, value.name);
}

/// The values of an option, by number from 0 on.
QList<option_value> numbered(const QStringList & names)
{
    QList<option_value> values;
    for (const QString & name : names) {
        values.append({QString::number(values.size()), name});
    }
    return values;
}

} // namespace

QList<command_option> ddl_export::getCommandLineOptions() const
{
    QList<option_value> databases;
    for (const database & db : allDatabases()) {
        databases.append({QString::number(db.number), db.getShortName()});
    }
    return {{DatabaseOption, databases},
            {RelationshipsOption, numbered({QStringLiteral("no"), QStringLiteral("yes")})},
            {SchemaOption, numbered({QStringLiteral("full"), QStringLiteral("evolution"),
                                     QStringLiteral("full_and_evolution")})}};
}

QString ddl_export::getTakenFor(const QString & option, const QString & value) const
{
    if (value.isEmpty()) {
        return tr("no value, so the stored setting counts");
    }
    for (const command_option & known : getCommandLineOptions()) {
        if (known.name != option) {
            continue;
        }
        // Only 1 switches relationships on; other options are read as numbers.
        const int number = option == RelationshipsOption ? 0 : value.toInt();
        if (number >= 0 && number < known.values.size()) {
            return shown(known.values[number]);
        }
        return option == DatabaseOption ? shown(known.values.constFirst())
                                        : tr("none of them, so nothing is written");
    }
    return {};
}

} // namespace plugin
