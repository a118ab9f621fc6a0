#include "check/remedy/table_making.h"

#include "database/facts/names.h"
#include "database/statement/reader.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <algorithm>

namespace check {

namespace {

/// What the full script makes of one table.
struct table_statements
{
    database::create_table asked;
    QString text;
    QStringList indexes;
};

QString ended(const QString & statement)
{
    return statement.endsWith(u';') ? statement : statement + u';';
}

std::optional<table_statements> statementsOf(const mending_place & at, const QString & table)
{
    using plugin::statement_action;
    const database::facts & known = at.from.step.known();
    const QString wanted = database::nameKey(known, table, database::name_place::table);
    const auto isIt = [&](const database::identifier & name) {
        return database::nameKey(known, name, database::name_place::table) == wanted;
    };
    const auto entities = at.from.step.names(moment::now)->entitiesOf(table);
    const long entity = entities.empty() ? 0 : entities.front()->getId();
    std::optional<table_statements> found;
    for (const plugin::statement_record & record : at.from.full()) {
        // Only what can be about the table is read.
        if (record.entity != entity && record.action != statement_action::create_extra_table) {
            continue;
        }
        for (const database::statement & read : database::readStatements(record.text)) {
            if (const auto * const made = std::get_if<database::create_table>(&read.asked);
                made != nullptr && isIt(made->table)) {
                found = table_statements{*made, read.text, {}};
            } else if (const auto * const index = std::get_if<database::create_index>(&read.asked);
                       index != nullptr && found && isIt(index->table)) {
                found->indexes += ended(read.text);
            }
        }
    }
    return found;
}

/// The text of CREATE TABLE with another name; empty when it has another form.
QString renamed(const table_statements & of, const QString & to)
{
    const QString name = of.asked.table.text;
    const qsizetype open = of.text.indexOf(u'(');
    const qsizetype at = open < 0 ? -1 : of.text.lastIndexOf(name, open);
    return at < 0 ? QString() : of.text.left(at) + to + of.text.mid(at + name.size());
}

/// Where the values of each column come from.
class row_source
{
public:
    row_source(const mending_place & at, const database::table & from, const database::table & to)
        : m_at(at), m_from(from), m_to(to)
    {
    }

    QString copying(const QString & into) const
    {
        QStringList columns;
        QStringList values;
        for (const database::column & each : m_to.columns) {
            const QString value = valueOf(each);
            if (!value.isEmpty()) {
                columns += m_at.sql.name(each.name);
                values += value;
            }
        }
        return columns.isEmpty() ? QString()
                                 : QStringLiteral("INSERT INTO %1 (%2) SELECT %3 FROM %4;")
                                       .arg(into, columns.join(QStringLiteral(", ")),
                                            values.join(QStringLiteral(", ")), m_at.sql.table(m_from.name));
    }

private:
    [[nodiscard]] bool has(const QString & column) const
    {
        return std::any_of(m_from.columns.begin(), m_from.columns.end(),
                           [&](const database::column & each) { return each.name == column; });
    }

    [[nodiscard]] QString valueOf(const database::column & of) const
    {
        const QString old = oldNameOf(of.name);
        if (old.isEmpty()) {
            return of.notNull && !of.counted ? m_at.sql.filling(of) : QString();
        }
        const bool mayLack = of.notNull && std::any_of(m_from.columns.begin(), m_from.columns.end(),
                                                       [&](const database::column & each) {
                                                           return each.name == old && !each.notNull;
                                                       });
        return mayLack ? QStringLiteral("COALESCE(%1, %2)").arg(m_at.sql.name(old), m_at.sql.filling(of))
                       : m_at.sql.name(old);
    }

    /// The column that is there for it, perhaps under the name that it had in the model before.
    [[nodiscard]] QString oldNameOf(const QString & column) const
    {
        if (has(column)) {
            return column;
        }
        const script_view & step = m_at.from.step;
        const model_names * const names = step.names(moment::now);
        const auto entities = names->entitiesOf(m_to.name);
        const auto entity = entities.empty() ? nullptr : entities.front();
        const auto before = entity ? step.project(moment::before)->getEntityById(entity->getId()) : nullptr;
        for (const auto & each : before ? entity->getListOfProperty(true, false, true)->values()
                                        : std::vector<std::shared_ptr<model::property>>()) {
            const auto was = before->getPropertyById(each->getId());
            const QStringList old = was ? columnNamesOf(*was) : QStringList();
            const auto place = columnNamesOf(*each).indexOf(column);
            if (place >= 0 && place < old.size() && has(old.at(place))) {
                return old.at(place);
            }
        }
        return {};
    }

    const mending_place & m_at;
    const database::table & m_from;
    const database::table & m_to;
};

} // namespace

QStringList makingStatements(const mending_place & at, const QString & table)
{
    const auto made = statementsOf(at, table);
    return made ? QStringList(ended(made->text)) + made->indexes : QStringList();
}

QStringList rebuildingStatements(const mending_place & at, const QString & table)
{
    const QString key = database::nameKey(at.from.step.known(), table, database::name_place::table);
    const auto from = at.state.tables.find(key);
    const auto to = at.expected.tables.find(key);
    const auto made = statementsOf(at, table);
    if (!made || at.sql.words().beforeRebuild == nullptr || from == at.state.tables.end() ||
        to == at.expected.tables.end()) {
        return {};
    }
    const QString between = at.sql.table(to->second.name + QStringLiteral("_new"));
    const QString making = renamed(*made, between);
    const QString copying = row_source(at, from->second, to->second).copying(between);
    if (making.isEmpty() || copying.isEmpty()) {
        return {};
    }
    const QString name = at.sql.table(to->second.name);
    return QStringList{QString::fromLatin1(at.sql.words().beforeRebuild), ended(making), copying,
                       QStringLiteral("DROP TABLE %1;").arg(name),
                       QStringLiteral("ALTER TABLE %1 RENAME TO %2;").arg(between, name)} +
           made->indexes;
}

} // namespace check
