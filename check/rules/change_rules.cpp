// Changes of the model that no statement can follow, and such as hardly were meant.

#include "check/rules/change_rules.h"

#include "check/finding/rule.h"
#include "check/view/model_names.h"

#include "model/entity.h"
#include "model/enumeration.h"
#include "model/project.h"
#include "model/property.h"
#include "model/property_type.h"

#include <algorithm>

namespace check {

namespace {

const rule_text EnumerationChanged = {
    QLatin1String("KV309"),
    effect::loss,
    "Rows with a value of the enumeration '{enumeration}' mean something else now: {values}.",
    "Rows hold the numbers, and no statement changes them when an enumeration does.",
    "Keep the number of each value, give new values new numbers, or UPDATE the rows of {properties} "
    "yourself.",
    "values"};

const rule_text IdMeansOther = {
    QLatin1String("KV311"),
    effect::differs,
    "The {kind} with the id {id} was '{before}' and is '{now}' with other contents: its table or column is "
    "renamed and its rows stay.",
    "Ids tell what is the same thing; when two people add something at the same time, both may get one id.",
    "If these are two things, give the new one another id; then the old one is dropped and the new one "
    "added.",
    "name"};

const rule_text SettingsChanged = {
    QLatin1String("KV802"),
    effect::differs,
    "The scripts up to {version} are written otherwise now than when it was tagged: {settings}.",
    "An export writes all scripts with the settings of now. A database that was made with the former ones is "
    "not what these scripts make, and what is foretold of later ones can be wrong for it.",
    "Store the former settings again (korvane settings), or bring the database up to what the scripts make "
    "now by statements of your own, and tag a version.",
    ""};

/// The numbers of values that are called otherwise than before, as "2 was Paid, is Open".
QStringList changedNumbers(const model::enumeration & before, const model::enumeration & now)
{
    QStringList told;
    for (const auto & old : before.getValues()) {
        const auto & values = now.getValues();
        const auto same = std::find_if(values.begin(), values.end(),
                                       [&](const auto & each) { return each.number == old.number; });
        if (same == values.end()) {
            told += QStringLiteral("%1 was %2, is none").arg(QString::number(old.number), old.name);
        } else if (same->name != old.name) {
            told += QStringLiteral("%1 was %2, is %3").arg(QString::number(old.number), old.name, same->name);
        }
    }
    return told;
}

/// Names of the properties with a column of that enumeration.
QStringList usersOf(const model::project & in, long enumeration, std::vector<object> & objects)
{
    QStringList names;
    const auto entities = in.getListOfAllEntities();
    for (const auto & entity :
         entities ? entities->values() : std::vector<std::shared_ptr<model::entity>>()) {
        for (const auto & each : entity->getListOfProperty(true, false, true)->values()) {
            const auto type = each->getType();
            if (type && !each->hasRelationship() && type->getEnumeration() &&
                type->getEnumeration()->getId() == enumeration) {
                names += nameOf(*each);
                objects.push_back({model::object_kind::property, each->getId(), nameOf(*each)});
            }
        }
    }
    return names;
}

void tellEnumeration(const script & step, const model::model_change & change, std::vector<finding> & told)
{
    const auto before = step.before->getEnumerationById(change.object.id);
    const auto now = step.now->getEnumerationById(change.object.id);
    const QStringList numbers = before && now ? changedNumbers(*before, *now) : QStringList();
    std::vector<object> objects{change.object};
    const QStringList users =
        numbers.isEmpty() ? QStringList() : usersOf(*step.now, change.object.id, objects);
    if (users.isEmpty()) {
        return;
    }
    finding one =
        findingOf(EnumerationChanged, {{QStringLiteral("enumeration"), change.object.name},
                                       {QStringLiteral("values"), numbers.join(QStringLiteral("; "))},
                                       {QStringLiteral("properties"), users.join(QStringLiteral(", "))}});
    one.when = occasion::rows;
    one.objects = objects;
    told.push_back(std::move(one));
}

/// Whether an entity keeps nothing of what it had beside its key.
bool hasOtherContents(const model::entity & before, const model::entity & now)
{
    QSet<QString> names;
    for (const auto & each : before.getListOfProperty(false, true, true)->values()) {
        names.insert(each->getName());
    }
    const auto properties = now.getListOfProperty(false, true, true)->values();
    return !names.isEmpty() && !properties.empty() &&
           std::none_of(properties.begin(), properties.end(),
                        [&](const auto & each) { return names.contains(each->getName()); });
}

void tellRenamedEntity(const script & step, const model::model_change & change, std::vector<finding> & told)
{
    const auto before = step.before->getEntityById(change.object.id);
    const auto now = step.now->getEntityById(change.object.id);
    if (!before || !now || !hasOtherContents(*before, *now)) {
        return;
    }
    finding one = findingOf(IdMeansOther, {{QStringLiteral("kind"), QStringLiteral("entity")},
                                           {QStringLiteral("id"), QString::number(change.object.id)},
                                           {QStringLiteral("before"), before->getName()},
                                           {QStringLiteral("now"), now->getName()}});
    one.objects.push_back(change.object);
    told.push_back(std::move(one));
}

} // namespace

std::vector<finding> explainChanges(const script & step, const step_changes & changes)
{
    std::vector<finding> told;
    if (!step.otherSettings.isEmpty()) {
        told.push_back(findingOf(
            SettingsChanged, {{QStringLiteral("version"), step.from},
                              {QStringLiteral("settings"), step.otherSettings.join(QStringLiteral("; "))}}));
    }
    for (const model::model_change & each : changes.all()) {
        if (each.object.kind == model::object_kind::enumeration && each.field == QLatin1String("values")) {
            tellEnumeration(step, each, told);
        } else if (each.object.kind == model::object_kind::entity && each.field == QLatin1String("name")) {
            tellRenamedEntity(step, each, told);
        }
    }
    return told;
}

} // namespace check
