#include "check/view/kept_names.h"

#include "check/view/made_objects.h"
#include "check/view/model_names.h"

#include "database/statement/reader.h"
#include "database/statement/token.h"
#include "model/entity.h"
#include "model/property.h"
#include "model/relationship.h"

#include <map>
#include <type_traits>
#include <variant>

namespace check {

namespace {

/// A name that a statement writes, and the one that is meant by it.
struct corrected_name
{
    QString written;
    QString kept; ///< empty when nothing is known of it
};

corrected_name droppedName(const database::change & asked, const plugin::statement_record & record,
                           const made_objects & made)
{
    if (const auto * const index = std::get_if<database::drop_index>(&asked)) {
        return {index->index.text, made.indexOf(record.property)};
    }
    if (const auto * const key = std::get_if<database::drop_constraint>(&asked)) {
        return {key->constraint.text, made.foreignKeyOf(record.relationship)};
    }
    return {};
}

/// The same name as part of what it belongs to, where it is written so: "table.index".
void qualify(corrected_name & name)
{
    if (!name.kept.isEmpty() && !name.kept.contains(u'.')) {
        name.kept.prepend(name.written.left(name.written.lastIndexOf(u'.') + 1));
    }
}

/// The text with another name in the place of the first one after `from` that is written so; `from` is behind
/// it then. Names in apostrophes may have several parts, "table.column".
QString withName(const QString & text, const corrected_name & name, qsizetype & from)
{
    const std::vector<database::token> tokens = database::tokensOf(text);
    for (const database::token & each : tokens) {
        const bool isText = each.kind == database::token_kind::text;
        const QList<QStringView> parts = isText ? each.inside.split(u'.') : QList<QStringView>{each.inside};
        for (const QStringView part : parts) {
            const qsizetype at = part.data() - text.constData();
            if (at >= from && part == name.written) {
                from = at + name.kept.size();
                return QString(text).replace(at, name.written.size(), name.kept);
            }
        }
    }
    return text;
}

/// The table that a statement changes, by the name that it is to have before; null for none.
const database::identifier * tableOf(const database::change & asked)
{
    return std::visit(
        []<class Change>(const Change & change) -> const database::identifier * {
            if constexpr (std::is_same_v<Change, database::rename_table>) {
                return &change.from;
            } else if constexpr (requires { change.table.text; } &&
                                 !std::is_same_v<Change, database::create_table>) {
                return &change.table;
            } else {
                return nullptr;
            }
        },
        asked);
}

/// The column that a statement changes or uses, by the name that it is to have before; null for none, and
/// for several.
const database::identifier * columnOf(const database::change & asked)
{
    return std::visit(
        []<class Change>(const Change & change) -> const database::identifier * {
            if constexpr (std::is_same_v<Change, database::create_index>) {
                return change.parts.size() == 1 ? &change.parts.front().column : nullptr;
            } else if constexpr (std::is_same_v<Change, database::add_foreign_key>) {
                return change.reference.columns.size() == 1 ? &change.reference.columns.front() : nullptr;
            } else if constexpr (requires {
                                     change.table.text;
                                     change.from.text;
                                 }) {
                return &change.from;
            } else if constexpr (requires { change.column.text; }) {
                return &change.column;
            } else {
                return nullptr;
            }
        },
        asked);
}

/// What tables and columns are called still, while a step goes on that may rename them after all.
class kept_objects
{
public:
    kept_objects(const made_objects & made, const model::project & now)
        : m_made(made), m_now(now), m_tables(made.keptTables()), m_columns(made.keptColumns())
    {
    }

    /// The text of a statement of the step with the names that are there.
    [[nodiscard]] QString corrected(const database::change & asked, const plugin::statement_record & record)
    {
        QString text = record.text;
        qsizetype from = 0;
        const auto table = m_tables.find(record.entity);
        const database::identifier * const ofTable = tableOf(asked);
        if (ofTable && table != m_tables.end() && m_made.hasTableOf(record.entity)) {
            text = withName(text, {ofTable->text, table->second}, from);
        } else if (ofTable) {
            text = withName(text, {ofTable->text, ofTable->text}, from); // what is looked for comes after it
        }
        const auto column = m_columns.find(record.property);
        const database::identifier * const ofColumn = columnOf(asked);
        if (ofColumn && column != m_columns.end()) {
            text = withName(text, {ofColumn->text, column->second}, from);
        }
        if (const corrected_name target = targetOf(asked, record); !target.kept.isEmpty()) {
            text = withName(text, target, from);
        }
        forget(asked, record);
        return text;
    }

private:
    /// What is renamed, or is no more, has the name of the model from here on.
    void forget(const database::change & asked, const plugin::statement_record & record)
    {
        if (std::holds_alternative<database::rename_table>(asked) ||
            std::holds_alternative<database::drop_table>(asked)) {
            m_tables.erase(record.entity);
        }
        if (std::holds_alternative<database::rename_column>(asked) ||
            std::holds_alternative<database::change_column>(asked) ||
            std::holds_alternative<database::drop_column>(asked)) {
            m_columns.erase(record.property);
        }
    }

    /// What the table is called that a foreign key leads to, where it has kept its name.
    [[nodiscard]] corrected_name targetOf(const database::change & asked,
                                          const plugin::statement_record & record) const
    {
        const auto * const key = std::get_if<database::add_foreign_key>(&asked);
        const auto property = key ? findProperty(m_now, record.entity, record.property) : nullptr;
        const auto relation = property ? property->getRelation() : nullptr;
        const auto target = relation ? relation->getEntityTarget() : nullptr;
        const auto kept = target ? m_tables.find(target->getId()) : m_tables.end();
        return kept != m_tables.end() && m_made.hasTableOf(target->getId())
                   ? corrected_name{key->reference.target.text, kept->second}
                   : corrected_name();
    }

    const made_objects & m_made;
    const model::project & m_now;
    std::map<long, QString> m_tables;
    std::map<long, QString> m_columns;
};

/// Puts the name of the index or foreign key that a statement drops into `text`.
QString withDroppedName(const QString & text, const database::change & asked,
                        const plugin::statement_record & record, const made_objects & made)
{
    corrected_name name = droppedName(asked, record, made);
    qualify(name);
    qsizetype from = 0;
    return name.kept.isEmpty() || name.kept == name.written ? text : withName(text, name, from);
}

} // namespace

void useKeptNames(const made_objects & made, const model::project & now,
                  std::vector<plugin::statement_record> & records)
{
    kept_objects kept(made, now);
    for (plugin::statement_record & record : records) {
        if (record.isReplaced()) {
            continue;
        }
        const std::vector<database::statement> read =
            database::readStatements(record.text, database::writer::exporter);
        if (read.size() != 1) {
            continue; // of a property with several indexes only the name of the last is known
        }
        const database::change & asked = read.front().asked;
        record.text = withDroppedName(kept.corrected(asked, record), asked, record, made);
        record.defaultText = record.text;
    }
}

} // namespace check
