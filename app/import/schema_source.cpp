#include "app/import/schema_source.h"

#include "app/project_work.h"
#include "app/server_access.h"

#include "check/import/table_draft.h"
#include "database/server/script_run.h"
#include "database/server/server_url.h"
#include "database/server/target_database.h"
#include "os/stop_requests.h"

#include <QSet>

#include <algorithm>

namespace app {

namespace {

using database::server::readable_database;
using database::server::server_url;
using zk::ZkBool;

constexpr QLatin1String ScriptBeginning("ddl:");

ZkBool failure(const QString & source, const QString & reason)
{
    return ZkBool::failure(source + QStringLiteral(": ") + reason);
}

/// Takes out of the catalogue what is not what it seems there.
void dropStandIns(held_schema & held)
{
    using database::catalogue_part;
    QSet<QString> dropped;
    for (const database::left_out & each : held.leftOut) {
        const auto named = [&each](const auto & part) { return part.name == each.name; };
        const auto isIt = [&](const auto & entry) {
            return entry.second.name == (each.standIn == catalogue_part::table ? each.name : each.table);
        };
        const auto found = each.standIn == catalogue_part::none
                               ? held.found.tables.end()
                               : std::find_if(held.found.tables.begin(), held.found.tables.end(), isIt);
        if (found == held.found.tables.end()) {
            continue;
        }
        if (each.standIn == catalogue_part::table) {
            dropped += each.name;
            held.found.tables.erase(found);
        } else if (each.standIn == catalogue_part::column) {
            found->second.columns.removeIf(named);
        } else {
            found->second.indexes.removeIf(named);
        }
    }
    // Of what is no table no part is told.
    held.leftOut.removeIf([&dropped](const database::left_out & each) {
        return dropped.contains(each.table) && each.standIn != catalogue_part::table;
    });
}

/// A foreign key need not say which columns it leads to when these are the key.
void completeTargets(database::catalogue & found, const database::facts & known)
{
    for (auto & [name, table] : found.tables) {
        for (database::foreign_key & each : table.foreignKeys) {
            const auto target = found.tables.find(check::tableKey(found, known, each.target));
            if (each.targetColumns.join(QString()).isEmpty() && target != found.tables.end()) {
                each.targetColumns = check::keyColumnsOf(target->second);
            }
        }
    }
}

ZkBool readOf(readable_database & from, held_schema & held)
{
    try {
        held.known = &from.known();
        held.found = from.held();
        held.leftOut = from.leftOut();
    } catch (const database::server::server_failure & broken) {
        return failure(held.name, broken.reason().simplified());
    }
    dropStandIns(held);
    completeTargets(held.found, *held.known);
    return held.found.tables.empty() ? failure(held.name, QStringLiteral("it has no tables"))
                                     : ZkBool::success();
}

ZkBool readPlace(const schema_request & request, held_schema & held)
{
    QString why;
    server_url place = database::server::readUrl(request.source, why).value_or(server_url());
    if (request.password && !request.password->isEmpty()) {
        place.password = *request.password;
    }
    held.name = place.shown();
    const auto open = [&request](const server_url & at, QString & reason) {
        return database::server::openToRead(at, request.schema, reason);
    };
    const auto opened = request.password ? open(place, why) : openAsking(place, why, open);
    return opened ? readOf(*opened, held) : failure(held.name, why);
}

ZkBool runScript(const schema_request & request, held_schema & held)
{
    QByteArray script;
    const QString file = request.source.mid(ScriptBeginning.size());
    held.name = shownName(file);
    if (const ZkBool read = readText(file, script); !read) {
        return read;
    }
    const os::stop_requests stops; // the server and its folder go first
    QString why;
    const auto target = database::server::start(request.database, why);
    if (!target || !target->reset(why)) {
        return failure(request.database, why);
    }
    QStringList refused;
    try {
        if (!database::server::runScript(*target, QString::fromUtf8(script),
                                         request.skipsRefused ? &refused : nullptr, why)) {
            return failure(held.name, why);
        }
    } catch (const database::server::server_failure & broken) {
        return failure(held.name, broken.reason().simplified());
    }
    const ZkBool read = readOf(*target, held);
    for (const QString & each : refused) {
        held.leftOut.append({QString(), each, database::catalogue_part::none, QString()});
    }
    return read;
}

} // namespace

bool isSchemaSource(const QString & text)
{
    return text.startsWith(ScriptBeginning) || database::server::isUrl(text);
}

QString whyNoSchema(const schema_request & request)
{
    QString why;
    if (!request.source.startsWith(ScriptBeginning)) {
        (void)database::server::readUrl(request.source, why);
        const bool isForScript = !request.database.isEmpty() || request.skipsRefused;
        return why.isEmpty() && isForScript
                   ? QStringLiteral(
                         "--db and --skip-refused are for scripts; a URL names its kind of database")
                   : why;
    }
    return !request.database.isEmpty()
               ? QString()
               : QStringLiteral(
                     "--db has to say on which database the script runs: sqlite, mariadb or postgresql");
}

ZkBool readSchema(const schema_request & request, held_schema & held)
{
    return request.source.startsWith(ScriptBeginning) ? runScript(request, held) : readPlace(request, held);
}

} // namespace app
