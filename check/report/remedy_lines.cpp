#include "check/report/remedy_lines.h"

namespace check {

namespace {

using json = nlohmann::ordered_json;

QString textOf(const json & of)
{
    return QString::fromStdString(of.dump(-1, ' ', false, json::error_handler_t::replace));
}

QString pathOf(const json & operation, const char * name)
{
    return QString::fromStdString(operation.value(name, std::string()));
}

/// What one operation of a patch changes, in a line; empty for a test, and for the version that goes with a
/// change.
QString lineOf(const json & operation)
{
    const std::string what = operation.value("op", std::string());
    const QString path = pathOf(operation, "path");
    if (what == "move") {
        return QStringLiteral("%1 goes before %2").arg(pathOf(operation, "from"), path);
    }
    if (what == "remove") {
        return path.endsWith(QLatin1String("/version")) ? QString() : path + QStringLiteral(" is left out");
    }
    return what == "add" || what == "replace" ? path + QStringLiteral(": ") + textOf(operation["value"])
                                              : QString();
}

} // namespace

std::vector<remedy_lines> linesOf(const remedy & of)
{
    QStringList changes;
    for (const json & each : of.model.is_array() ? of.model : json::array()) {
        const QString line = lineOf(each);
        changes += line.isEmpty() ? QStringList() : QStringList(line);
    }
    std::vector<remedy_lines> all;
    const auto add = [&](const char * heading, const QStringList & lines) {
        if (!lines.isEmpty()) {
            all.push_back({QString::fromLatin1(heading), lines});
        }
    };
    add("In the model", changes);
    add("Before the script", of.sql.mid(0, of.before));
    add("After the script", of.sql.mid(of.before));
    return all;
}

} // namespace check
