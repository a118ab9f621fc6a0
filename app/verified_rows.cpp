#include "app/verified_rows.h"

#include "check/view/model_names.h"
#include "database/facts/names.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <QHash>

#include <algorithm>
#include <optional>

namespace app {

namespace {

using database::server::put_row;
using database::server::row_content;

/// What a column has in the row; nothing when the table has no such column.
std::optional<QVariant> valueIn(const put_row & row, const QString & column, const database::facts & known)
{
    const auto found = std::find_if(row.values.begin(), row.values.end(), [&](const auto & each) {
        return database::isSameName(known, each.first, column);
    });
    return found == row.values.end() ? std::nullopt : std::optional(found->second);
}

/// Nulls of two types are the same, and no value; for Qt a null is equal to a zero of its type.
bool isSame(const QVariant & first, const QVariant & second)
{
    return first.isNull() == second.isNull() && (first.isNull() || first == second);
}

using rows_by_entity = QHash<long, std::vector<put_row>>;

/// All rows of the tables of `model`.
rows_by_entity readRows(database::server::target_database & target, const database::catalogue & held,
                        const model::project & model)
{
    const check::model_names names(target.known(), model);
    rows_by_entity rows;
    for (const auto & [key, table] : held.tables) {
        const auto entities = names.entitiesOf(table.name);
        if (!entities.empty()) {
            rows[entities.front()->getId()] = database::server::rowsOf(target, table);
        }
    }
    return rows;
}

} // namespace

QMap<QString, int> verified_rows::put(const database::catalogue & held, const QString & version,
                                      const model::project & model)
{
    std::vector<put_row> added;
    database::server::server_error error;
    m_target.execute(m_target.foreignKeyChecks(false), error);
    const QMap<QString, int> counts =
        database::server::putRowIntoEach(m_target, held, m_content, m_number, &added);
    m_target.execute(m_target.foreignKeyChecks(m_target.enforcesForeignKeys()), error);
    for (const auto & [key, table] : held.tables) {
        const bool isEmpty = counts.value(table.name) == 0 && !table.columns.empty();
        if (isEmpty && !m_emptyTables.contains(table.name)) {
            m_emptyTables += table.name;
        }
    }
    const check::model_names names(m_target.known(), model);
    for (const put_row & row : added) {
        const auto entities = names.entitiesOf(row.table);
        if (entities.size() == 1) { // not a link table, or a table that two entities share
            remember(version, *entities.front(), row);
        }
    }
    return counts;
}

void verified_rows::remember(const QString & version, const model::entity & entity, const put_row & row)
{
    for (const auto & property : entity.getListOfProperty(true, false, false)->values()) {
        const QStringList columns = check::columnNamesOf(*property);
        for (qsizetype i = 0; i < columns.size(); ++i) {
            const std::optional<QVariant> value = valueIn(row, columns[i], m_target.known());
            if (value && value->isNull() == (m_content == row_content::nulls)) {
                m_values.push_back({version, entity.getId(), property->getId(), i, *value});
            }
        }
    }
}

verified_values verified_rows::compare(const database::catalogue & held, const model::project & now) const
{
    const rows_by_entity rows = readRows(m_target, held, now);
    verified_values told;
    told.emptyTables = m_emptyTables;
    for (const put_value & each : m_values) {
        const auto entity = now.getEntityById(each.entity);
        const auto property = entity ? entity->getPropertyById(each.property) : nullptr;
        const QStringList columns = property ? check::columnNamesOf(*property) : QStringList();
        if (each.column >= columns.size()) {
            continue; // it did not live through
        }
        ++told.values;
        const std::vector<put_row> & there = rows.value(each.entity);
        const bool isKept = std::any_of(there.begin(), there.end(), [&](const put_row & row) {
            const std::optional<QVariant> value = valueIn(row, columns[each.column], m_target.known());
            return value && isSame(*value, each.value);
        });
        if (!isKept) {
            told.lost.push_back({each.version, QStringLiteral("property ") + check::nameOf(*property),
                                 each.value.isNull() ? QStringLiteral("null") : each.value.toString(),
                                 each.entity, each.property});
        }
    }
    return told;
}

} // namespace app
