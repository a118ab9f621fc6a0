#include "check/remedy/model_patch.h"

#include "check/remedy/patch_place.h"
#include "check/view/model_names.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <QHash>

#include <algorithm>

namespace check {

namespace {

std::vector<std::shared_ptr<model::entity>> entitiesOf(const model::project & of)
{
    const auto entities = of.getListOfAllEntities();
    return entities ? entities->values() : std::vector<std::shared_ptr<model::entity>>();
}

/// The object of that kind that the finding is about; 0 for none.
long idOf(const finding & of, model::object_kind kind)
{
    const auto found = std::find_if(of.objects.begin(), of.objects.end(),
                                    [&](const object & each) { return each.kind == kind; });
    return found == of.objects.end() ? 0 : found->id;
}

const patch_rule * ruleFor(const finding & of)
{
    static const QHash<QLatin1String, const patch_rule *> byCode = [] {
        QHash<QLatin1String, const patch_rule *> made;
        for (const auto list : {namePatches, fieldPatches}) {
            for (const patch_rule & each : list()) {
                made.insert(QLatin1String(each.code), &each);
            }
        }
        return made;
    }();
    return byCode.value(of.code);
}

} // namespace

std::shared_ptr<model::entity> entityNamed(const patch_place & at, const QString & name)
{
    for (const auto & each : entitiesOf(at.now)) {
        if (each->getName() == name) {
            return each;
        }
    }
    return nullptr;
}

std::shared_ptr<model::property> propertyNamed(const patch_place & at, const QString & name)
{
    for (const auto & entity : entitiesOf(at.now)) {
        if (!name.startsWith(entity->getName() + u'.')) {
            continue;
        }
        for (const auto & each : entity->getListOfProperty(true, true, false)->values()) {
            if (nameOf(*each) == name) {
                return each;
            }
        }
    }
    return nullptr;
}

std::shared_ptr<model::property> propertyOfColumn(const patch_place & at, const QString & column)
{
    for (const auto & each : at.entity ? at.entity->getListOfProperty(true, false, true)->values()
                                       : std::vector<std::shared_ptr<model::property>>()) {
        if (columnNamesOf(*each).contains(column, Qt::CaseInsensitive)) {
            return each;
        }
    }
    return nullptr;
}

long freeId(const patch_place & at)
{
    long highest = 0;
    for (const auto & entity : entitiesOf(at.now)) {
        highest = std::max(highest, entity->getId());
        for (const auto & each : entity->getListOfProperty(true, true, false)->values()) {
            highest = std::max(
                {highest, each->getId(), each->hasRelationship() ? each->getRelation()->getId() : 0});
        }
    }
    return highest + 1;
}

std::vector<patch_operation> modelPatch(const finding & of, const model::project & now,
                                        const text_positions & at, const database::facts & known)
{
    const patch_rule * const rule = ruleFor(of);
    if (rule == nullptr) {
        return {};
    }
    patch_writer writer(at);
    patch_place place{of, now, known, writer, nullptr, nullptr, nullptr};
    const long entity = idOf(of, model::object_kind::entity);
    place.entity = entity == 0 ? nullptr : now.getEntityById(entity);
    place.property = findProperty(now, entity, idOf(of, model::object_kind::property));
    place.relation = place.property ? place.property->getRelation() : nullptr;
    rule->change(place);
    return writer.take();
}

} // namespace check
