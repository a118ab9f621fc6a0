#include "app/object_origins.h"

#include "model/project.h"

namespace app {

using model::object_kind;

void object_origins::add(object_kind kind, long id, const QString & word)
{
    const std::pair<int, long> key(static_cast<int>(kind), id);
    if (!m_since.contains(key)) {
        m_since.insert(key, word);
    }
}

void object_origins::add(const model::project & version, const QString & word)
{
    for (const auto & entity : version.getListOfAllEntities()->values()) {
        add(object_kind::entity, entity->getId(), word);
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            add(object_kind::property, property->getId(), word);
            if (property->hasRelationship()) {
                add(object_kind::relationship, property->getRelation()->getId(), word);
            }
        }
    }
}

QString object_origins::reasonOf(const check::statement_place & place) const
{
    if (place.objects.empty()) {
        return {};
    }
    const model::named_object & object = place.objects.back();
    return QStringLiteral("because %1 has been there since %2")
        .arg(model::idName(object),
             m_since.value({static_cast<int>(object.kind), object.id}, QStringLiteral("now")));
}

} // namespace app
