#include "check/report/report.h"

#include "check/report/json_parts.h"

namespace check {

namespace {

json textOrNull(const QString & text)
{
    return text.isEmpty() ? json(nullptr) : textOf(text);
}

json remedyOf(const remedy & of)
{
    json sql = json::array();
    for (const QString & each : of.sql) {
        sql.push_back(textOf(each));
    }
    return {{"text", textOf(of.text)},
            {"sql", sql},
            {"before", of.before},
            {"model", of.model.empty() ? json::array() : jsonOf(of.model)}};
}

json locationOf(const std::optional<source_place> & of)
{
    return of ? json{{"file", textOf(of->file)}, {"line", of->line}, {"column", of->column}} : json(nullptr);
}

json acceptanceOf(const std::optional<acceptance> & of)
{
    return of ? json{{"why", textOf(of->why)}, {"until", textOrNull(of->until)}} : json(nullptr);
}

json findingOf(const finding & of)
{
    return {{"code", textOf(of.code)},
            {"name", textOf(of.name)},
            {"severity", textOf(wordOf(of.weight))},
            {"outcome", textOf(wordOf(of.what))},
            {"when", textOf(wordOf(of.when))},
            {"database", textOf(of.database)},
            {"error", textOrNull(of.error)},
            {"statement", of.statement ? statementOf(*of.statement) : json(nullptr)},
            {"message", textOf(of.message)},
            {"why", textOf(of.why)},
            {"remedy", remedyOf(of.way)},
            {"objects", objectsOf(of.objects)},
            {"location", locationOf(of.location)},
            {"consequenceOf", of.consequenceOf < 0 ? json(nullptr) : json(of.consequenceOf)},
            {"fingerprint", textOf(of.fingerprint)},
            {"accepted", acceptanceOf(of.accepted)}};
}

json runOf(const run & of)
{
    return {{"database", textOf(of.database)},
            {"basis", textOf(of.basis)},
            {"script", textOf(of.script)},
            {"from", textOrNull(of.from)},
            {"to", textOf(of.to)},
            {"statements", of.statements},
            {"judged", of.judged}};
}

} // namespace

QByteArray jsonReport(const report & of, const QString & program)
{
    json runs = json::array();
    for (const run & each : of.runs) {
        runs.push_back(runOf(each));
    }
    json findings = json::array();
    for (const finding & each : of.findings) {
        findings.push_back(findingOf(each));
    }
    const json whole = {
        {"format", "korvane.check"},         {"formatVersion", 1}, {"program", textOf(program)},
        {"project", textOf(of.project)},     {"runs", runs},       {"findings", findings},
        {"summary", countsOf(summaryOf(of))}};
    return written(whole);
}

} // namespace check
