#include "app/document/relation_rows.h"

#include "app/document/page_names.h"

#include "check/view/model_names.h"
#include "model/project.h"

namespace app {

namespace {

using model::property;
using model::relationship;

/// Where the values of a relationship are kept.
struct stored_place
{
    QString text;
    QString name;
    QString page;
};

stored_place columnPlace(const documented_model & of, const property & holder)
{
    const QStringList columns = of.columnsOf(holder);
    if (columns.isEmpty()) {
        return {QStringLiteral("not stored"), {}, {}};
    }
    return {columns.size() == 1 ? QStringLiteral("column") : QStringLiteral("columns"),
            columns.join(QStringLiteral(", ")), propertyPage(holder.getEntityId(), holder.getId())};
}

stored_place placeOf(const documented_model & of, const property & holder)
{
    const relationship & relation = *holder.getRelation();
    if (relation.getType() == relationship::many_to_many && !holder.isTransient()) {
        const auto * const table = of.linkTableOf(relation);
        return table ? stored_place{QStringLiteral("link table"), table->second.name,
                                    placeIn(IndexPage, linkAnchor(table->first))}
                     : stored_place{QStringLiteral("not stored"), {}, {}};
    }
    const std::shared_ptr<property> inverse = relation.getInverse();
    return relation.hasColumns() || !inverse ? columnPlace(of, holder) : columnPlace(of, *inverse);
}

page_data rowOf(const documented_model & of, const property & holder, const QString & name)
{
    const stored_place place = placeOf(of, holder);
    page_data row;
    put(row, "holderName", name);
    put(row, "holderPage", propertyPage(holder.getEntityId(), holder.getId()));
    put(row, "kind", model::typeName(holder.getRelation()->getType()));
    put(row, "placeText", place.text);
    put(row, "placeName", place.name);
    put(row, "placePage", place.page);
    return row;
}

} // namespace

page_list outgoingRows(const documented_model & of, const model::entity & entity)
{
    page_list rows;
    for (const auto & holder : propertiesOf(entity)) {
        if (!holder->hasRelationship()) {
            continue;
        }
        page_data row = rowOf(of, *holder, holder->getName());
        const std::shared_ptr<model::entity> target = holder->getRelation()->getEntityTarget();
        put(row, "otherName", target ? target->getName() : QString());
        put(row, "otherPage", target ? entityPage(target->getId()) : QString());
        const std::shared_ptr<property> inverse = holder->getRelation()->getInverse();
        put(row, "inverseName", inverse ? inverse->getName() : QString());
        put(row, "inversePage", inverse ? propertyPage(inverse->getEntityId(), inverse->getId()) : QString());
        rows.push_back(row);
    }
    return rows;
}

page_list incomingRows(const documented_model & of, const model::entity & entity)
{
    page_list rows;
    for (const auto & holder : of.referrersOf(entity.getId())) {
        rows.push_back(rowOf(of, *holder, check::nameOf(*holder)));
    }
    return rows;
}

} // namespace app
