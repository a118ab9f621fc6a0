#include "app/diagram/diagram_changes.h"

#include "app/change_words.h"

#include "model/project.h"

namespace app {

namespace {

using model::change_kind;
using model::model_change;
using model::object_kind;

/// The entity that a change is told under; null for one of an enumeration.
const model::named_object * entityOf(const model_change & change)
{
    const model::named_object & top = change.owners.empty() ? change.object : change.owners.back();
    return top.kind == object_kind::entity ? &top : nullptr;
}

/// Whether the change is one of a field of `object`.
bool isOfField(const model_change & change)
{
    return change.change == change_kind::renamed || change.change == change_kind::changed;
}

QString lineOf(const model_change & change, const change_words & words)
{
    const bool isOfProperty = change.object.kind == object_kind::relationship ||
                              (change.object.kind == object_kind::property && isOfField(change));
    if (!isOfProperty) {
        return words.lineOf(change);
    }
    const model::named_object & property =
        change.object.kind == object_kind::property ? change.object : change.owners.front();
    return QStringLiteral("%1: %2").arg(property.name, words.lineOf(change));
}

/// Notes a changed field. The name in the model goes before that in the database, and a name before all else.
void noteField(object_changes & of, const model_change & change, const QString & formerName)
{
    const bool isCome = of.change == diagram_change::added || of.change == diagram_change::dropped;
    const bool isName =
        change.change == change_kind::renamed && change.object.kind != object_kind::relationship;
    if (isCome || of.change == diagram_change::renamed) {
        return; // fields come in the order of their weight
    }
    if (!isName) {
        of.change = diagram_change::changed;
        return;
    }
    of.change = diagram_change::renamed;
    of.former = change.before.toString().isEmpty() ? formerName : change.before.toString();
    if (change.field != QLatin1String("name")) {
        of.later = change.after.toString();
    }
}

} // namespace

diagram_changes::diagram_changes(const model::project & before, const model::project & after,
                                 const std::vector<model_change> & changes)
{
    const change_words words(before, after);
    for (const model_change & change : changes) {
        const model::named_object * const entity = entityOf(change);
        if (!entity) {
            continue;
        }
        m_lines[entity->id] << lineOf(change, words);
        if (change.object.kind == object_kind::entity) {
            takeEntity(before, change);
            continue;
        }
        takeProperty(before, change, entity->id);
        noteContents(entity->id);
    }
    for (const std::shared_ptr<model::entity> & dropped : m_droppedEntities) {
        m_droppedProperties.remove(dropped->getId()); // they are among its own
    }
}

/// What changed within an entity changes it.
void diagram_changes::noteContents(long entity)
{
    object_changes & of = m_entities[entity];
    if (of.change == diagram_change::none) {
        of.change = diagram_change::changed;
    }
}

void diagram_changes::takeEntity(const model::project & before, const model_change & change)
{
    object_changes & of = m_entities[change.object.id];
    const auto former = before.getEntityById(change.object.id);
    if (change.change == change_kind::added) {
        of.change = diagram_change::added;
    } else if (change.change == change_kind::removed) {
        of.change = diagram_change::dropped;
        m_droppedEntities.push_back(former);
    } else {
        noteField(of, change, former->getName());
    }
}

void diagram_changes::takeProperty(const model::project & before, const model_change & change, long entity)
{
    const bool isProperty = change.object.kind == object_kind::property;
    const long id = isProperty ? change.object.id : change.owners.front().id;
    if (!isProperty || isOfField(change)) {
        const auto former =
            before.getEntityById(entity) ? before.getEntityById(entity)->getPropertyById(id) : nullptr;
        noteField(m_properties[id], change, former ? former->getName() : change.object.name);
        return;
    }
    long holder = entity;
    if (change.change != change_kind::removed) {
        m_properties[id].change = diagram_change::added;
    }
    if (change.change == change_kind::moved) { // dropped where it was
        holder = static_cast<long>(change.before.toLongLong());
        m_lines[holder] << m_lines[entity].constLast();
        noteContents(holder);
    }
    if (change.change != change_kind::added) {
        const auto from = before.getEntityById(holder);
        if (const auto property = from ? from->getPropertyById(id) : nullptr) {
            m_droppedProperties[holder].push_back(property);
        }
    }
}

const object_changes * diagram_changes::ofEntity(long id) const
{
    const auto found = m_entities.constFind(id);
    return found == m_entities.constEnd() ? nullptr : &*found;
}

const object_changes * diagram_changes::ofProperty(long id) const
{
    const auto found = m_properties.constFind(id);
    return found == m_properties.constEnd() ? nullptr : &*found;
}

} // namespace app
