#include "app/diff_report.h"

#include "check/report/json_parts.h"
#include "model/project.h"

#include <span>

namespace app {

namespace {

using check::json;
using check::objectOf;
using check::textOf;

json valueOf(const QVariant & value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return nullptr;
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::LongLong:
        return value.toLongLong();
    case QMetaType::ULongLong:
        return value.toULongLong();
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        json list = json::array();
        for (const QVariant & part : value.toList()) {
            list.push_back(valueOf(part));
        }
        return list;
    }
    case QMetaType::QVariantMap: {
        json object = json::object();
        const QVariantMap map = value.toMap();
        for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
            object[it.key().toStdString()] = valueOf(it.value());
        }
        return object;
    }
    default:
        return textOf(value.toString());
    }
}

/// The first of `owners`, with what that belongs to.
json ownerOf(std::span<const model::named_object> owners)
{
    if (owners.empty()) {
        return nullptr;
    }
    json owner = objectOf(owners.front());
    owner["of"] = ownerOf(owners.subspan(1));
    return owner;
}

json changeOf(const model::model_change & change)
{
    json result = {{"change", textOf(model::changeName(change.change))}};
    result.update(objectOf(change.object));
    result["of"] = ownerOf(change.owners);
    result["field"] = change.field.isEmpty() ? json(nullptr) : textOf(change.field);
    result["before"] = valueOf(change.before);
    result["after"] = valueOf(change.after);
    return result;
}

json statementOf(const step_statement & statement)
{
    json result = check::statementOf(statement.place);
    result["causes"] = statement.causes;
    return result;
}

json findingOf(const check::finding & finding, const finding_place & place)
{
    json result = check::briefOf(finding);
    result["statement"] = place.statement < 0 ? json(nullptr) : json(place.statement);
    result["causes"] = place.causes;
    return result;
}

} // namespace

QByteArray diffJson(const diff_report & report, const QString & program)
{
    json changes = json::array();
    for (const model::model_change & change : report.changes) {
        changes.push_back(changeOf(change));
    }
    json whole = {{"format", "korvane.diff"},           {"formatVersion", 1},
                  {"program", textOf(program)},         {"project", textOf(report.states.state->getName())},
                  {"from", textOf(report.states.from)}, {"to", textOf(report.states.to)},
                  {"changes", std::move(changes)}};
    if (report.script) {
        json statements = json::array();
        for (const step_statement & statement : report.script->statements) {
            statements.push_back(statementOf(statement));
        }
        whole["database"] = textOf(report.script->database);
        whole["statements"] = std::move(statements);
        json findings = json::array();
        for (std::size_t i = 0; i < report.places.size(); ++i) {
            findings.push_back(findingOf(report.found.findings[i], report.places[i]));
        }
        whole["findings"] = std::move(findings);
    }
    return check::written(whole);
}

} // namespace app
