#include "tools/script_values.h"

#include "tools/custom_javascript.h"
#include "tools/script_objects.h"
#include "tools/texts.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QJSValueIterator>

namespace tools {

namespace {

constexpr int MostMembers = 20;
constexpr int MostCharacters = 2000;
constexpr int Deepest = 2;

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('"'), QLatin1String("\\\""))
        .replace(QLatin1Char('\n'), QLatin1String("\\n"))
        .replace(QLatin1Char('\r'), QLatin1String("\\r"))
        .replace(QLatin1Char('\t'), QLatin1String("\\t"));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString describe(const QJSValue & value, int depth);

QString members(const QJSValue & value, int depth)
{
    const bool isArray = value.isArray();
    const QString open = isArray ? QStringLiteral("[") : QStringLiteral("{");
    const QString close = isArray ? QStringLiteral("]") : QStringLiteral("}");
    const QString more = QStringLiteral("…");
    if (depth >= Deepest) {
        return open + more + close;
    }
    QStringList texts;
    QJSValueIterator it(value);
    while (it.hasNext()) {
        it.next();
        if (isArray && it.name() == QLatin1String("length")) {
            continue;
        }
        if (texts.size() == MostMembers) {
            texts.append(more);
            break;
        }
        const QString text = describe(it.value(), depth + 1);
        texts.append(isArray ? text : it.name() + QStringLiteral(": ") + text);
    }
    return open + texts.join(QStringLiteral(", ")) + close;
}

QString describe(const QJSValue & value, int depth)
{
    if (value.isString()) {
        return quoted(value.toString());
    }
    if (value.isQObject()) {
        // Objects of the model are all that a script can hold of these; it may destroy one and keep the
        // value.
        const auto * const object = qobject_cast<const script_object *>(value.toQObject());
        return object ? object->toString() : QStringLiteral("(destroyed)");
    }
    if (value.isCallable()) {
        return QStringLiteral("function ") + value.property(QStringLiteral("name")).toString();
    }
    if (value.isDate()) {
        return value.toDateTime().toString(Qt::ISODateWithMs);
    }
    if (!value.isObject() || value.isError() || value.isRegExp()) {
        return value.toString();
    }
    return members(value, depth);
}

} // namespace

QString describe(const QJSValue & value)
{
    const QString text = describe(value, 0);
    return text.size() > MostCharacters ? text.left(MostCharacters) + QStringLiteral("…") : text;
}

script_step describeStep(const model::project * project, const model::entity * entity,
                         const model::property * property, const model::enumeration * enumeration,
                         const QHash<QString, QVariant> & parameters, const QJSValueList & arguments)
{
    const auto label = [](const char * text) {
        return QCoreApplication::translate("tools::script_step", text);
    };
    const QString none = label(QT_TRANSLATE_NOOP("tools::script_step", "none"));
    const auto keyAndName = [&none](const auto * object) {
        if (!object) {
            return none;
        }
        return object->getKey() == object->getName()
                   ? object->getName()
                   : object->getKey() + QStringLiteral(" / ") + object->getName();
    };
    script_step step;
    step.action = parameters.value(step_parameter::Action).toString();
    step.defaultText = parameters.value(step_parameter::DefaultValue).toString();
    step.details = {
        {label(QT_TRANSLATE_NOOP("tools::script_step", "Project")), project ? project->getName() : none},
        {label(QT_TRANSLATE_NOOP("tools::script_step", "Entity")), keyAndName(entity)},
        {label(QT_TRANSLATE_NOOP("tools::script_step", "Property")), keyAndName(property)},
        {label(QT_TRANSLATE_NOOP("tools::script_step", "Enumeration")),
         enumeration ? enumeration->getName() : none}};
    QStringList others = parameters.keys();
    others.sort();
    for (const QString & name : std::as_const(others)) {
        if (name != step_parameter::Action && name != step_parameter::DefaultValue) {
            step.details.append({name, parameters.value(name).toString()});
        }
    }
    const char * const names[] = {"project", "entity", "property", "enumeration", "parameters"};
    for (qsizetype i = 0; i < arguments.size() && i < 5; ++i) {
        step.arguments.append({QString::fromLatin1(names[i]), arguments[i]});
    }
    return step;
}

QString kindOf(const QJSValue & value)
{
    if (value.isBool()) {
        return texts::tr("a boolean", "exportStep returned …");
    }
    if (value.isNumber()) {
        return texts::tr("a number", "exportStep returned …");
    }
    if (value.isCallable()) {
        return texts::tr("a function", "exportStep returned …");
    }
    return value.isArray() ? texts::tr("an array", "exportStep returned …")
                           : texts::tr("an object", "exportStep returned …");
}

} // namespace tools
