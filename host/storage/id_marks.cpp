#include "storage/id_marks.h"

#include "model/project.h"

#include <algorithm>

namespace storage {

namespace {

const QString MetaDataKey = QStringLiteral("korvane.largest_ids");

void raise(long & mark, long id)
{
    mark = std::max(mark, id);
}

} // namespace

id_marks marksOf(const model::project & project)
{
    const QVariantList kept = project.getMetaData(MetaDataKey).toList();
    const auto keptAt = [&kept](qsizetype i) { return static_cast<long>(kept.value(i).toLongLong()); };
    id_marks marks{keptAt(0), keptAt(1), keptAt(2), keptAt(3)};
    for (const auto & enumeration : project.getListOfEnumeration()->values()) {
        raise(marks.enumeration, enumeration->getId());
    }
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        raise(marks.entity, entity->getId());
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            raise(marks.property, property->getId());
            if (property->hasRelationship()) {
                raise(marks.relationship, property->getRelation()->getId());
            }
        }
    }
    return marks;
}

void remember(model::project & project, const id_marks & marks)
{
    project.setMetaData(MetaDataKey, QVariantList{qlonglong(marks.enumeration), qlonglong(marks.entity),
                                                  qlonglong(marks.property), qlonglong(marks.relationship)});
}

} // namespace storage
