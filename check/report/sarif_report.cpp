#include "check/report/report.h"

#include "check/finding/rule.h"

#include <QSet>
#include <QUrl>

namespace check {

namespace {

using json = nlohmann::ordered_json;

std::string textOf(const QString & text)
{
    return text.toStdString();
}

/// A relative address, percent-encoded, as viewers match alerts by it.
std::string addressOf(const QString & file)
{
    QString path = file;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return QUrl::toPercentEncoding(path, "/").toStdString();
}

/// A rule's name in the form that viewers expect: "RenameOntoTakenTable".
QString ruleNameOf(const rule & of)
{
    QString name;
    for (const QString & word : QString(of.name).split(QLatin1Char('-'))) {
        name += word.left(1).toUpper() + word.mid(1);
    }
    return name;
}

json ruleOf(const rule & of)
{
    const QString page = QString::fromUtf8(rulePage(of.code));
    const QString title = QString::fromUtf8(of.title) + QLatin1Char('.');
    return {{"id", textOf(of.code)},
            {"name", textOf(ruleNameOf(of))},
            {"shortDescription", {{"text", textOf(title)}}},
            {"fullDescription", {{"text", textOf(title)}}},
            {"help",
             {{"text", textOf(page.isEmpty() ? title : page)},
              {"markdown", textOf(page.isEmpty() ? title : page)}}},
            {"defaultConfiguration", {{"level", textOf(wordOf(of.weight))}}},
            {"properties", {{"tags", json::array({"database"})}}}};
}

json locationOf(const finding & of)
{
    const bool isInText = of.location.has_value();
    const QString file = isInText ? of.location->file : of.script;
    json region = {{"startLine", 1}};
    if (isInText) {
        region = {{"startLine", of.location->line}, {"startColumn", of.location->column}};
    } else if (of.statement) {
        region = {{"startLine", of.statement->line},
                  {"endLine", of.statement->line + of.statement->lines - 1}};
    }
    return {{"physicalLocation", {{"artifactLocation", {{"uri", addressOf(file)}}}, {"region", region}}}};
}

/// What mends it, in the form that the JSON report has; viewers show it beside the result.
json remedyOf(const remedy & of)
{
    json sql = json::array();
    for (const QString & each : of.sql) {
        sql.push_back(textOf(each));
    }
    return {
        {"sql", sql}, {"before", of.before}, {"model", of.model.empty() ? json::array() : jsonOf(of.model)}};
}

json resultOf(const finding & of, std::size_t rule)
{
    json result = {{"ruleId", textOf(of.code)},
                   {"ruleIndex", rule},
                   {"level", textOf(wordOf(of.weight))},
                   {"message", {{"text", textOf(of.message + QLatin1Char(' ') + of.way.text)}}},
                   {"locations", json::array({locationOf(of)})},
                   {"partialFingerprints", {{"korvane/v1", textOf(of.fingerprint)}}}};
    if (!of.way.sql.isEmpty() || !of.way.model.empty()) {
        result["properties"] = {{"remedy", remedyOf(of.way)}};
    }
    if (of.accepted) {
        result["suppressions"] =
            json::array({{{"kind", "external"}, {"justification", textOf(of.accepted->why)}}});
    }
    return result;
}

} // namespace

QByteArray sarifReport(const report & of, const QString & program)
{
    json rules = json::array();
    QHash<QString, std::size_t> indexes;
    json results = json::array();
    for (const finding & each : of.findings) {
        const rule * const known = check::ruleOf(each.code);
        if (known == nullptr) {
            continue;
        }
        if (!indexes.contains(each.code)) {
            indexes.insert(each.code, rules.size());
            rules.push_back(ruleOf(*known));
        }
        results.push_back(resultOf(each, indexes.value(each.code)));
    }
    const json whole = {
        {"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
        {"version", "2.1.0"},
        {"runs",
         json::array(
             {{{"tool", {{"driver", {{"name", "korvane"}, {"version", textOf(program)}, {"rules", rules}}}}},
               {"columnKind", "utf16CodeUnits"},
               {"results", results}}})}};
    return QByteArray::fromStdString(whole.dump(2, ' ', false, json::error_handler_t::replace)) + '\n';
}

} // namespace check
