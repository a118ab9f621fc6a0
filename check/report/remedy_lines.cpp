#include "check/report/remedy_lines.h"

namespace check {

namespace {

using json = nlohmann::ordered_json;

QString textOf(const json & of)
{
    return QString::fromStdString(of.dump(-1, ' ', false, json::error_handler_t::replace));
}

/// What one operation of a patch changes, in a line; empty for a test, and for the version that goes with a
/// change.
QString lineOf(const patch_operation & of)
{
    using kind = patch_operation::kind;
    switch (of.what) {
    case kind::test:
        break;
    case kind::move:
        return QStringLiteral("%1 goes before %2").arg(of.from, of.path);
    case kind::remove:
        return of.path.endsWith(QLatin1String("/version")) ? QString()
                                                           : of.path + QStringLiteral(" is left out");
    case kind::add:
    case kind::replace:
        return of.path + QStringLiteral(": ") + textOf(of.value);
    }
    return {};
}

} // namespace

std::vector<remedy_lines> linesOf(const remedy & of)
{
    QStringList changes;
    for (const patch_operation & each : of.model) {
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
