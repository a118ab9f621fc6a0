// Which ids the objects of a text get.

#include "storage/text_draft.h"

#include "storage/id_marks.h"
#include "storage/text_tree.h"
#include "storage/texts.h"

#include <QHash>

#include <algorithm>
#include <unordered_set>

namespace storage::text_draft {

namespace {

using text_tree::text_error;

/// The ids of one kind of object.
class id_pool
{
public:
    explicit id_pool(model_check::id_kind kind) : m_kind(kind) {}

    /// Notes the largest id that the existing project had, which a new object must stay clear of.
    void noteExisting(long id) { m_iMax = std::max(m_iMax, id); }

    /// Takes an id that the text gives (0 for none) for the object at `where`.
    template <class Place>
    void claimGiven(long id, const Place & where)
    {
        if (id != 0 && !claim(id)) {
            throw text_error{{where(), model_check::usedTwice(m_kind, id)}};
        }
        m_iMax = std::max(m_iMax, id);
    }
    /// True when nobody had `id` yet.
    bool claim(long id) { return m_used.insert(id).second; }

    /// An id larger than any in use.
    template <class Place>
    long fresh(const Place & where)
    {
        if (m_iMax >= LargestId) {
            throw text_error{{where(), allUsedUp()}};
        }
        m_used.insert(++m_iMax);
        return m_iMax;
    }

private:
    [[nodiscard]] QString allUsedUp() const
    {
        using model_check::id_kind;
        switch (m_kind) {
        case id_kind::enumeration:
            return texts::tr("all enumeration ids are used up");
        case id_kind::entity:
            return texts::tr("all entity ids are used up");
        case id_kind::property:
            return texts::tr("all property ids are used up");
        case id_kind::relationship:
            return texts::tr("all relationship ids are used up");
        case id_kind::type: // a text gives them none
            break;
        }
        return {};
    }

    model_check::id_kind m_kind;
    std::unordered_set<long> m_used;
    long m_iMax = 0;
};

/// Ids of existing objects by name, in model order.
using ids_by_name = QHash<QString, QList<long>>;

template <class List>
ids_by_name idsByName(const List & list)
{
    ids_by_name result;
    for (const auto & object : list.values()) {
        result[object->getName()].append(object->getId());
    }
    return result;
}

class id_assigner
{
public:
    id_assigner(project & draft, const model::project * existing) : m_draft(draft), m_pExisting(existing) {}

    void run()
    {
        if (m_pExisting) {
            noteExisting();
        }
        claimGiven();
        assignEnumerations();
        assignEntities();
    }

private:
    [[nodiscard]] QString placeOf(std::size_t e) const
    {
        return model_check::placeOfEntity(static_cast<qsizetype>(e), m_draft.entities[e].object->getName());
    }
    [[nodiscard]] QString placeOf(std::size_t e, std::size_t p) const
    {
        return model_check::placeOfProperty(placeOf(e), static_cast<qsizetype>(p),
                                            m_draft.entities[e].properties[p].object->getName());
    }
    [[nodiscard]] QString placeOfEnumeration(std::size_t i) const
    {
        return model_check::placeOfEnumeration(static_cast<qsizetype>(i), m_draft.enumerations[i]->getName());
    }

    void noteExisting()
    {
        const id_marks marks = marksOf(*m_pExisting);
        m_enumerationIds.noteExisting(marks.enumeration);
        m_entityIds.noteExisting(marks.entity);
        m_propertyIds.noteExisting(marks.property);
        m_relationIds.noteExisting(marks.relationship);
        for (const auto & entity : m_pExisting->getListOfAllEntities()->values()) {
            for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
                if (property->hasRelationship()) {
                    m_relationOfProperty.insert(property->getId(), property->getRelation()->getId());
                }
            }
        }
    }

    /// Given ids come first: an object without one must not take what the text gives to another.
    void claimGiven()
    {
        for (std::size_t i = 0; i < m_draft.enumerations.size(); ++i) {
            m_enumerationIds.claimGiven(m_draft.enumerations[i]->getId(),
                                        [this, i] { return placeOfEnumeration(i); });
        }
        for (std::size_t e = 0; e < m_draft.entities.size(); ++e) {
            const entity & entity = m_draft.entities[e];
            m_entityIds.claimGiven(entity.object->getId(), [this, e] { return placeOf(e); });
            for (std::size_t p = 0; p < entity.properties.size(); ++p) {
                const auto where = [this, e, p] { return placeOf(e, p); };
                const model::property & property = *entity.properties[p].object;
                m_propertyIds.claimGiven(property.getId(), where);
                if (property.hasRelationship()) {
                    m_relationIds.claimGiven(property.getRelation()->getId(), where);
                }
            }
        }
    }

    template <class Object, class Place>
    static void assign(Object & object, id_pool & pool, const ids_by_name & existing, const Place & where)
    {
        if (object.getId() != 0) {
            return;
        }
        for (const long id : existing.value(object.getName())) {
            if (pool.claim(id)) {
                object.setId(id);
                return;
            }
        }
        object.setId(pool.fresh(where));
    }

    void assignEnumerations()
    {
        const ids_by_name existing =
            m_pExisting ? idsByName(*m_pExisting->getListOfEnumeration()) : ids_by_name();
        for (std::size_t i = 0; i < m_draft.enumerations.size(); ++i) {
            assign(*m_draft.enumerations[i], m_enumerationIds, existing,
                   [this, i] { return placeOfEnumeration(i); });
        }
    }

    void assignEntities()
    {
        const ids_by_name existing =
            m_pExisting ? idsByName(*m_pExisting->getListOfAllEntities()) : ids_by_name();
        for (std::size_t e = 0; e < m_draft.entities.size(); ++e) {
            model::entity & entity = *m_draft.entities[e].object;
            assign(entity, m_entityIds, existing, [this, e] { return placeOf(e); });
            const auto old = m_pExisting ? m_pExisting->getEntityById(entity.getId()) : nullptr;
            assignProperties(e, old ? idsByName(*old->getListOfProperty(true, true, false)) : ids_by_name());
        }
    }

    void assignProperties(std::size_t e, const ids_by_name & existing)
    {
        for (std::size_t p = 0; p < m_draft.entities[e].properties.size(); ++p) {
            const auto where = [this, e, p] { return placeOf(e, p); };
            model::property & property = *m_draft.entities[e].properties[p].object;
            assign(property, m_propertyIds, existing, where);
            if (!property.hasRelationship() || property.getRelation()->getId() != 0) {
                continue;
            }
            const long known = m_relationOfProperty.value(property.getId());
            property.getRelation()->setId(
                known != 0 && m_relationIds.claim(known) ? known : m_relationIds.fresh(where));
        }
    }

    project & m_draft;
    const model::project * m_pExisting;
    id_pool m_enumerationIds{model_check::id_kind::enumeration};
    id_pool m_entityIds{model_check::id_kind::entity};
    id_pool m_propertyIds{model_check::id_kind::property};
    id_pool m_relationIds{model_check::id_kind::relationship};
    QHash<long, long> m_relationOfProperty;
};

} // namespace

void assignIds(project & draft, const model::project * existing)
{
    id_assigner(draft, existing).run();
}

} // namespace storage::text_draft
