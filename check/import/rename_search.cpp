#include "check/import/rename_search.h"

#include "check/model/tables.h"

#include "database/facts/names.h"
#include "model/entity.h"
#include "model/property.h"
#include "model/property_type.h"

#include <algorithm>

namespace check {

namespace {

using property_list = std::vector<std::shared_ptr<model::property>>;

QString columnsText(const model::property & property)
{
    return property_merge::columnsOf(property).join(QLatin1Char('|'));
}

/// Former and new ids of the properties that have the same columns.
std::vector<std::pair<long, long>> commonProperties(const database::facts & known, const model::entity & a,
                                                    const model::entity & b)
{
    QHash<QString, long> ids;
    for (const auto & each : a.getListOfProperty(true, false, false)->values()) {
        ids.insert(database::foldedName(known, columnsText(*each)), each->getId());
    }
    std::vector<std::pair<long, long>> common;
    for (const auto & each : b.getListOfProperty(true, false, false)->values()) {
        const QString columns = columnsText(*each);
        if (const long id = ids.value(database::foldedName(known, columns)); id != 0 && !columns.isEmpty()) {
            common.emplace_back(id, each->getId());
        }
    }
    return common;
}

/// Of two candidates the one with more in common; none that has less than half in common.
std::vector<possible_rename> entityRenames(const database::facts & known,
                                           const std::vector<merged_entity> & merged,
                                           const std::vector<std::shared_ptr<model::entity>> & gone)
{
    std::vector<possible_rename> renames;
    QSet<long> taken;
    for (const auto & former : gone) {
        possible_rename best;
        for (const merged_entity & each : merged) {
            if (each.former || taken.contains(each.made->getId())) {
                continue;
            }
            auto common = commonProperties(known, *former, *each.made);
            const auto most = std::max(former->getListOfProperty(true, false, false)->count(),
                                       each.made->getListOfProperty(true, false, false)->count());
            if (2 * static_cast<long>(common.size()) >= most && common.size() > best.properties.size()) {
                best = {model::object_kind::entity, former->getId(),         each.made->getId(),
                        tableNameOf(*former),       tableNameOf(*each.made), std::move(common)};
            }
        }
        if (best.id != 0) {
            taken += best.id;
            renames.push_back(std::move(best));
        }
    }
    return renames;
}

bool isAlike(const model::property & a, const model::property & b)
{
    const auto typeOf = [](const model::property & of) {
        return of.getType() ? of.getType()->getPrimitiveType(-1) + u'/' + of.getForceSqlType() : QString();
    };
    return typeOf(a) == typeOf(b);
}

/// Those of one type, or the only two that are left over.
void addPropertyRenames(const merged_entity & of, std::vector<possible_rename> & renames)
{
    const QString table = tableNameOf(*of.made) + u'.';
    QSet<long> taken;
    for (const auto & former : of.gone) {
        const auto found = std::find_if(of.added.begin(), of.added.end(), [&](const auto & each) {
            const bool isOnly = of.gone.size() == 1 && of.added.size() == 1;
            return !taken.contains(each->getId()) && (isOnly || isAlike(*former, *each));
        });
        if (found != of.added.end()) {
            taken += (*found)->getId();
            renames.push_back({model::object_kind::property,
                               former->getId(),
                               (*found)->getId(),
                               table + columnsText(*former),
                               table + columnsText(**found),
                               {}});
        }
    }
}

} // namespace

std::vector<possible_rename> renamesIn(const database::facts & known,
                                       const std::vector<merged_entity> & merged,
                                       const std::vector<std::shared_ptr<model::entity>> & gone)
{
    std::vector<possible_rename> renames = entityRenames(known, merged, gone);
    for (const merged_entity & each : merged) {
        addPropertyRenames(each, renames);
    }
    return renames;
}

} // namespace check
