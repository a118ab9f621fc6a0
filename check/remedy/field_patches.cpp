// Changes of types, keys and flags in the model.

#include "check/model/tables.h"
#include "check/remedy/patch_place.h"
#include "check/view/model_names.h"

#include "model/column_list.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

namespace check {

namespace {

using json = patch_writer::json;

/// The property that the finding is about, or that has the column which it tells of.
std::shared_ptr<model::property> about(const patch_place & at)
{
    return at.property ? at.property : propertyOfColumn(at, at.word("column"));
}

void forceType(const patch_place & at, const char * type)
{
    if (const auto of = about(at)) {
        at.to.set(*of, "forceSqlType", type);
    }
}

void forceShort(const patch_place & at)
{
    forceType(at, "VARCHAR(200)");
}

void forceIndexed(const patch_place & at)
{
    forceType(at, "VARCHAR(255)");
}

void leaveForcedType(const patch_place & at)
{
    const auto of = about(at);
    if (of && !of->getExplicitForceSqlType().isEmpty()) {
        at.to.remove(*of, "forceSqlType");
    }
}

void forceDefaultType(const patch_place & at)
{
    forceType(at, at.word("type").toUpper().toUtf8().constData());
}

/// The same type on both sides of a foreign key to a text.
void forceBoth(const patch_place & at)
{
    const auto key = at.relation ? at.relation->getKeyProperty() : nullptr;
    const auto type = key ? key->getType() : nullptr;
    const bool isText = type && type->getCppTypes() == QStringList(QStringLiteral("QString"));
    if (!isText || !at.property) {
        return;
    }
    const QString forced = key->getExplicitForceSqlType();
    const QString both = forced.isEmpty() ? QStringLiteral("VARCHAR(255)") : forced;
    at.to.set(*key, "forceSqlType", both.toStdString());
    at.to.set(*at.property, "forceSqlType", both.toStdString());
}

/// Long texts of a row stand elsewhere.
void leaveForcedTexts(const patch_place & at)
{
    const bool isRow = at.word("limit").contains(QLatin1String("rows"));
    for (const auto & each : at.entity && isRow ? at.entity->getListOfProperty(false, false, true)->values()
                                                : std::vector<std::shared_ptr<model::property>>()) {
        if (each->getExplicitForceSqlType().startsWith(QLatin1String("VARCHAR"), Qt::CaseInsensitive)) {
            at.to.remove(*each, "forceSqlType");
        }
    }
}

void countNoMore(const patch_place & at)
{
    const auto key = at.entity ? at.entity->getPropertyId(true) : nullptr;
    if (key) {
        at.to.set(*key, "autoIncrement", false);
    }
}

void notIndexed(const patch_place & at)
{
    const auto of = about(at);
    if (of && of->isIndex()) {
        at.to.remove(*of, "index");
    }
    if (of && of->getUnique()) {
        at.to.remove(*of, "unique");
    }
}

void withoutIndex(const patch_place & at)
{
    if (const auto of = about(at); of && of->isIndex()) {
        at.to.remove(*of, "index");
    }
}

void notUnique(const patch_place & at)
{
    if (const auto of = about(at); of && of->getUnique()) {
        at.to.remove(*of, "unique");
    }
}

void indexed(const patch_place & at)
{
    if (const auto of = about(at); of && !of->isIndex()) {
        at.to.set(*of, "index", true);
    }
}

void nullable(const patch_place & at)
{
    if (const auto of = about(at); of && !of->getAllowNull()) {
        at.to.remove(*of, "allowNull");
    }
}

void notNull(const patch_place & at)
{
    if (const auto of = about(at)) {
        at.to.set(*of, "allowNull", false);
    }
}

/// An auto-increment identifier, in front of the other properties.
void addKey(const patch_place & at, const std::shared_ptr<model::entity> & to)
{
    if (!to || to->getPropertyId(true)) {
        return;
    }
    QString name = QStringLiteral("id");
    const auto properties = to->getListOfProperty(true, true, false)->values();
    for (const auto & each : properties) {
        name = each->getName() == name || columnNamesOf(*each).contains(name)
                   ? to->getName() + QStringLiteral("_id")
                   : name;
    }
    at.to.addProperty(*to, 0, {{"name", name.toStdString()}, {"type", "long"}, {"identifier", true}});
}

void keyOfOther(const patch_place & at)
{
    addKey(at, entityNamed(at, at.word("other")));
}

void keyOfOwn(const patch_place & at)
{
    addKey(at, at.entity);
}

void leaveOut(const patch_place & at)
{
    if (at.entity) {
        at.to.setMetaData(*at.entity, CreateTableData, "0");
    }
}

void exported(const patch_place & at, const std::shared_ptr<model::entity> & of)
{
    if (of && of->getAllMetaData().contains(QLatin1String(CreateTableData))) {
        at.to.setMetaData(*of, CreateTableData, nullptr);
    }
}

void exportOther(const patch_place & at)
{
    exported(at, at.relation ? at.relation->getEntityTarget() : nullptr);
}

void exportOwn(const patch_place & at)
{
    exported(at, at.entity);
}

/// A property for each column.
void oneColumnEach(const patch_place & at)
{
    const auto of = at.property ? at.property : propertyNamed(at, at.word("property"));
    const QStringList columns = of ? columnNamesOf(*of) : QStringList();
    const auto type = of ? of->getType() : nullptr;
    if (columns.size() < 2 || !type || type->getCppTypes().isEmpty()) {
        return;
    }
    at.to.set(*of, "columnName", columns.front().toStdString());
    at.to.set(*of, "type", type->getCppTypes().constFirst().toStdString());
    for (qsizetype i = 1; i < columns.size(); ++i) {
        const QString & cpp = type->getCppTypes().at(std::min(i, type->getCppTypes().size() - 1));
        at.to.addProperty(*of->getEntity(), -1,
                          {{"name", columns.at(i).toStdString()}, {"type", cpp.toStdString()}});
    }
}

/// The column of the entity's own key.
void columnOfKey(const patch_place & at)
{
    const auto of = at.relation ? at.property : propertyNamed(at, at.word("subject"));
    const auto key = of && of->getEntity() ? of->getEntity()->getPropertyId(true) : nullptr;
    if (key && of->hasRelationship()) {
        at.to.set(*of, "columnName", columnNamesOf(*key).join(model::ColumnSeparator).toStdString());
    }
}

/// A column for each of the key, called by both.
void columnsLikeKey(const patch_place & at)
{
    const auto target = at.relation ? at.relation->getEntityTarget() : nullptr;
    const auto key = target ? target->getPropertyId(true) : nullptr;
    QStringList columns;
    for (const QString & each : key ? columnNamesOf(*key) : QStringList()) {
        columns += at.property->getName() + u'_' + each;
    }
    if (!columns.isEmpty()) {
        at.to.set(*at.property, "columnName", columns.join(model::ColumnSeparator).toStdString());
    }
}

void leaveSoftDelete(const patch_place & at)
{
    if (at.entity && !at.entity->getSoftDeleteColumn().isEmpty()) {
        at.to.remove(*at.entity, "softDeleteColumn");
    }
}

bool isTarget(const patch_place & at, const model::entity & of)
{
    for (const auto & entity : at.now.getListOfAllEntities()->values()) {
        for (const auto & each : entity->getListOfRelation()->values()) {
            if (each->getEntityTargetId() == of.getId()) {
                return true;
            }
        }
    }
    return false;
}

/// What took the place of a dropped object is that object.
void sameId(const patch_place & at)
{
    const long id = at.word("id").toLong();
    if (at.word("column").isEmpty()) {
        const model_names names(at.known, at.now);
        const auto entities = names.entitiesOf(at.word("table"));
        if (entities.size() == 1 && !isTarget(at, *entities.front())) {
            at.to.set(*entities.front(), "id", id);
        }
    } else if (const auto of = propertyOfColumn(at, at.word("column")); of && !of->hasRelationship()) {
        at.to.set(*of, "id", id);
    }
}

void ownId(const patch_place & at)
{
    if (at.entity && !isTarget(at, *at.entity)) {
        at.to.set(*at.entity, "id", freeId(at));
    }
}

void newRelationship(const patch_place & at)
{
    if (at.relation) {
        at.to.set(*at.property, "relationship/id", freeId(at));
    }
}

void countVersion(const patch_place & at)
{
    if (at.entity) {
        at.to.countUp(*at.entity);
    }
}

const patch_rule Patches[] = {
    {"KV107", oneColumnEach},    {"KV108", leaveOut},        {"KV109", keyOfOther},
    {"KV110", columnOfKey},      {"KV111", exportOther},     {"KV113", leaveForcedType},
    {"KV114", forceDefaultType}, {"KV115", countNoMore},     {"KV116", countNoMore},
    {"KV117", forceShort},       {"KV118", notIndexed},      {"KV119", forceIndexed},
    {"KV120", forceBoth},        {"KV122", leaveSoftDelete}, {"KV132", leaveForcedTexts},
    {"KV135", keyOfOther},       {"KV137", columnsLikeKey},  {"KV201", nullable},
    {"KV202", notUnique},        {"KV210", indexed},         {"KV222", forceIndexed},
    {"KV303", exportOwn},        {"KV304", sameId},          {"KV311", ownId},
    {"KV405", notIndexed},       {"KV406", newRelationship}, {"KV410", countVersion},
    {"KV418", leaveForcedType},  {"KV603", nullable},        {"KV701", keyOfOwn},
    {"KV702", indexed},          {"KV703", notNull},         {"KV140", withoutIndex},
};

} // namespace

std::span<const patch_rule> fieldPatches()
{
    return Patches;
}

} // namespace check
