#include "check/report/json_parts.h"

namespace check {

json textOf(const QString & text)
{
    return text.toStdString();
}

json textOf(QLatin1String text)
{
    return std::string(text.data(), static_cast<std::size_t>(text.size()));
}

json objectOf(const object & of)
{
    return {{"kind", textOf(model::kindName(of.kind))}, {"id", of.id}, {"name", textOf(of.name)}};
}

json objectsOf(const std::vector<object> & objects)
{
    json list = json::array();
    for (const object & each : objects) {
        list.push_back(objectOf(each));
    }
    return list;
}

json statementOf(const statement_place & of)
{
    return {{"script", textOf(of.script)},
            {"line", of.line},
            {"lines", of.lines},
            {"action", textOf(plugin::actionName(of.action))},
            {"text", textOf(of.text)},
            {"customScript", of.isCustom},
            {"objects", objectsOf(of.objects)}};
}

json briefOf(const finding & of)
{
    return {{"code", textOf(of.code)},
            {"severity", textOf(wordOf(of.weight))},
            {"message", textOf(of.message)},
            {"accepted", of.accepted.has_value()}};
}

json countsOf(const summary & of)
{
    const auto key = [](severity weight) { return QString(wordOf(weight)).toStdString(); };
    return {{key(severity::error), of.errors},
            {key(severity::warning), of.warnings},
            {key(severity::note), of.notes},
            {"accepted", of.accepted}};
}

QByteArray written(const json & document)
{
    return QByteArray::fromStdString(document.dump(2, ' ', false, json::error_handler_t::replace)) + '\n';
}

} // namespace check
