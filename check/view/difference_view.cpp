#include "check/view/difference_view.h"

#include "database/facts/names.h"
#include "model/column_list.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>

namespace check {

namespace {

constexpr std::size_t indexOf(moment when)
{
    return when == moment::now ? 1 : 0;
}

} // namespace

difference_view::difference_view(const script_view & in, const step_changes & changes,
                                 const step_record & record, const schema_difference & what)
    : m_in(in), m_changes(changes), m_record(record), m_what(what)
{
    findOwners();
    findProperty(moment::before);
    findProperty(moment::now);
    // A property that was renamed is told by its id where only one of both names is in the catalogue.
    const auto & before = m_properties[indexOf(moment::before)];
    const auto & now = m_properties[indexOf(moment::now)];
    if (before && !now && m_entities[1]) {
        m_properties[1] = m_entities[1]->getPropertyById(before->getId());
    } else if (now && !before && m_entities[0]) {
        m_properties[0] = m_entities[0]->getPropertyById(now->getId());
    }
}

void difference_view::findOwners()
{
    if (m_what.kind == difference_kind::sequence_left) {
        const long owner = m_in.made().ownerOfSequence(m_what.found);
        for (const moment when : {moment::now, moment::before}) {
            const model::project * const in = m_in.project(when);
            m_entities[indexOf(when)] = in == nullptr ? nullptr : in->getEntityById(owner);
        }
        return;
    }
    for (const moment when : {moment::now, moment::before}) {
        const model_names * const names = m_in.names(when);
        if (names == nullptr) {
            continue;
        }
        const auto entities = names->entitiesOf(m_what.table);
        if (!entities.empty() && !m_entities[indexOf(when)]) {
            m_entities[indexOf(when)] = entities.front();
        }
        const auto links = names->linksOf(m_what.table);
        if (!m_link && entities.empty() && !links.empty()) {
            m_link = links.front();
        }
    }
    const model::project * const before = m_in.project(moment::before);
    if (const auto & now = m_entities[indexOf(moment::now)]; now && before != nullptr) {
        m_entities[indexOf(moment::before)] = before->getEntityById(now->getId());
    } else if (const auto & former = m_entities[indexOf(moment::before)];
               former && m_in.project(moment::now) != nullptr) {
        // Its table has another name by now.
        m_entities[indexOf(moment::now)] = m_in.project(moment::now)->getEntityById(former->getId());
    }
}

void difference_view::findProperty(moment when)
{
    const auto & entity = m_entities[indexOf(when)];
    if (!entity || m_what.columns.isEmpty()) {
        return;
    }
    const auto key = [&](const QString & name) {
        return database::nameKey(m_in.known(), name, database::name_place::other);
    };
    const QString wanted = key(m_what.columns.front());
    for (const auto & each : entity->getListOfProperty(true, false, true)->values()) {
        QStringList names = columnNamesOf(*each);
        // A one-to-one relationship uses the column of another property; added, it brings one of its own.
        if (names.isEmpty() && each->hasRelationship() && each->getRelation()->hasColumns()) {
            names = each->getColumnName().isEmpty() ? QStringList(each->getName())
                                                    : each->getColumnName().split(model::ColumnSeparator);
        }
        const bool isIt = std::any_of(names.begin(), names.end(),
                                      [&](const QString & name) { return key(name) == wanted; });
        if (isIt) {
            m_properties[indexOf(when)] = each;
            return;
        }
    }
}

const std::shared_ptr<model::entity> & difference_view::entity(moment when) const
{
    return m_entities[indexOf(when)];
}

const std::shared_ptr<model::property> & difference_view::property(moment when) const
{
    return m_properties[indexOf(when)];
}

std::shared_ptr<model::entity> difference_view::entity() const
{
    return m_entities[1] ? m_entities[1] : m_entities[0];
}

std::shared_ptr<model::property> difference_view::property() const
{
    return m_properties[1] ? m_properties[1] : m_properties[0];
}

bool difference_view::isSoftDeleteColumn(moment when) const
{
    const auto & of = entity(when);
    return of && !of->getSoftDeleteColumn().isEmpty() && !m_what.columns.isEmpty() &&
           of->getSoftDeleteColumn().compare(m_what.columns.front(), Qt::CaseInsensitive) == 0;
}

QString difference_view::tableNow() const
{
    const auto & owner = entity(moment::now);
    return owner && isTableMade(*owner)
               ? database::nameKey(m_in.known(), tableNameOf(*owner), database::name_place::table)
               : QString();
}

bool difference_view::isAskedFor() const
{
    return m_what.kind == difference_kind::table_left &&
           tableNow() == database::nameKey(m_in.known(), m_what.table, database::name_place::table);
}

std::vector<object> difference_view::objects() const
{
    std::vector<object> about;
    if (const auto of = entity()) {
        about.push_back({model::object_kind::entity, of->getId(), of->getName()});
    }
    // Names and order are told once for a table.
    const bool isOfTable = m_what.kind == difference_kind::names || m_what.kind == difference_kind::order;
    if (isOfTable && !about.empty()) {
        return about;
    }
    if (const auto member = property()) {
        about.push_back({model::object_kind::property, member->getId(), nameOf(*member)});
        if (member->hasRelationship()) {
            about.push_back(
                {model::object_kind::relationship, member->getRelation()->getId(), nameOf(*member)});
        }
    } else if (const auto owner = m_link ? m_link->getProperty() : nullptr) {
        about.push_back({model::object_kind::property, owner->getId(), nameOf(*owner)});
        about.push_back({model::object_kind::relationship, m_link->getId(), nameOf(*owner)});
    }
    return about;
}

values difference_view::words() const
{
    values words{{QStringLiteral("db"), m_in.known().label},
                 {QStringLiteral("table"), m_what.table},
                 {QStringLiteral("column"), m_what.columns.join(QStringLiteral(", "))},
                 {QStringLiteral("expected"), m_what.expected},
                 {QStringLiteral("found"), m_what.found},
                 {QStringLiteral("subject"), m_what.table}};
    if (const auto of = entity()) {
        words.insert(QStringLiteral("entity"), of->getName());
        words.insert(QStringLiteral("subject"), of->getName());
    }
    const auto owner = m_link ? m_link->getProperty() : nullptr;
    if (const auto member = property() ? property() : owner) {
        words.insert(QStringLiteral("property"), nameOf(*member));
        words.insert(QStringLiteral("subject"), nameOf(*member));
    }
    return words;
}

} // namespace check
