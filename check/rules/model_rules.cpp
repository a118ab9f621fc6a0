// What a new database has otherwise than the model says, though every statement runs, and what is unwise.

#include "check/rules/model_rules.h"

#include "check/finding/rule.h"
#include "check/remedy/sql_writer.h"
#include "check/view/model_names.h"

#include "database/facts/known_types.h"
#include "database/facts/names.h"
#include "model/column_list.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include <algorithm>
#include <optional>

namespace check {

namespace {

/// A table with the entity, or the relationship, that it was made for.
class model_walk
{
public:
    model_walk(const made_model & of, const std::function<void(finding)> & tell)
        : m_of(of), m_tell(tell), m_sql(of.known)
    {
    }

    void walk()
    {
        const auto entities = m_of.full.now->getListOfAllEntities();
        for (const auto & each :
             entities ? entities->values() : std::vector<std::shared_ptr<model::entity>>()) {
            if (const database::table * const table = tableOf(tableNameOf(*each))) {
                lookAt(*each, *table);
            }
        }
        tellLast();
    }

private:
    /// Nothing more is added to it.
    void tellLast()
    {
        if (m_last) {
            m_tell(std::move(*m_last));
            m_last.reset();
        }
    }

    [[nodiscard]] const database::table * tableOf(const QString & name) const
    {
        const auto found =
            m_of.made.tables.find(database::nameKey(m_of.known, name, database::name_place::table));
        return found == m_of.made.tables.end() ? nullptr : &found->second;
    }

    [[nodiscard]] const database::column * columnOf(const database::table & in, const QString & name)
    {
        // Columns stand in the order of the properties.
        for (qsizetype i = 0; i < in.columns.size(); ++i) {
            m_next = m_next < in.columns.size() ? m_next : 0;
            const database::column & each = in.columns.at(m_next++);
            if (each.name == name) {
                return &each;
            }
        }
        const auto key = [&](const QString & of) {
            return database::nameKey(m_of.known, of, database::name_place::other);
        };
        const QString wanted = key(name);
        const auto found =
            std::find_if(in.columns.begin(), in.columns.end(),
                         [&](const database::column & each) { return key(each.name) == wanted; });
        return found == in.columns.end() ? nullptr : &*found;
    }

    /// Whether a statement of the property, or of the other end of its relationship, was refused.
    [[nodiscard]] bool isRefused(const model::property & of) const
    {
        return m_of.refused.contains(of.getId()) ||
               (of.hasRelationship() && m_of.refused.contains(of.getRelation()->getInverseId()));
    }

    void lookAt(const model::entity & entity, const database::table & table)
    {
        if (!table.key) {
            tell(WithoutKey, entity, nullptr, table);
        }
        for (const auto & each : entity.getListOfProperty(true, true, true)->values()) {
            if (each && !each->isTransient() && !isRefused(*each)) {
                lookAt(entity, *each, table);
            }
        }
    }

    void lookAt(const model::entity & entity, const model::property & member, const database::table & table)
    {
        const QStringList names = columnNamesOf(member);
        const database::column * const column = names.isEmpty() ? nullptr : columnOf(table, names.front());
        if (column != nullptr && member.isIdentifier() && names.size() > 1 && column->counted) {
            tell(CountedCompositeKey, entity, &member, table);
        }
        const bool isOneNull = m_of.known.keys.oneNull.value && member.getUnique() && !member.isIdentifier();
        if (column != nullptr && isOneNull && !column->notNull && !member.hasRelationship()) {
            tell(OneRowWithoutValue, entity, &member, table);
        }
        if (column != nullptr && !member.hasRelationship()) {
            lookAtType(entity, member, table, *column);
        }
        if (member.hasRelationship() && m_of.settings.relationships) {
            lookAtRelationship(entity, member, table, column);
        }
    }

    void lookAtType(const model::entity & entity, const model::property & member,
                    const database::table & table, const database::column & column)
    {
        const QString forced = member.getExplicitForceSqlType();
        const QString & shown = m_of.types.shown(column.type);
        const bool isOther = !forced.isEmpty() && m_of.types.shown(forced) != shown;
        if (isOther) {
            tell(ForcedTypeUnused, entity, &member, table,
                 {{QStringLiteral("forced"), forced}, {QStringLiteral("type"), shown}});
        }
        const auto type = member.getType();
        if (!forced.isEmpty() || !type || type->getEnumeration() || m_of.settings.mappedTypes.isEmpty()) {
            return;
        }
        for (const QString & each : type->getCppTypes()) {
            if (!m_of.settings.mappedTypes.contains(each)) {
                tell(UnknownCppType, entity, &member, table,
                     {{QStringLiteral("cpp"), each}, {QStringLiteral("type"), shown}});
            }
        }
    }

    void lookAtRelationship(const model::entity & entity, const model::property & member,
                            const database::table & table, const database::column * column)
    {
        const model::relationship & relation = *member.getRelation();
        if (relation.getType() == model::relationship::many_to_many) {
            lookAtLink(entity, member);
            return;
        }
        if (column == nullptr || relation.getType() != model::relationship::many_to_one) {
            return;
        }
        const bool isWritten = std::any_of(
            table.foreignKeys.begin(), table.foreignKeys.end(),
            [&](const database::foreign_key & each) { return each.columns.contains(column->name); });
        if (!isWritten && relation.getEntityTargetId() == entity.getId()) {
            tell(SelfReference, entity, &member, table);
            addSql(m_sql.addForeignKey(table.name, keyTo(entity, table, columnNamesOf(member))));
        }
        const bool isUnique = std::any_of(table.indexes.begin(), table.indexes.end(), [&](const auto & each) {
            return each.unique && each.parts.front().column == column->name;
        });
        const bool isKey = table.key && table.key->parts.front().column == column->name;
        const bool isNullUnwritten = !member.getAllowNull() && !column->notNull;
        if (!isKey && (isNullUnwritten || (member.getUnique() && !isUnique))) {
            tell(ConstraintsUnwritten, entity, &member, table);
            addSql(isNullUnwritten ? notNull(table, *column) : QStringList());
            addSql(member.getUnique() && !isUnique ? unique(table, *column) : QStringList());
        }
        if (isWritten && !isKey && !hasIndex(table, column->name)) {
            tell(WithoutIndex, entity, &member, table);
        }
    }

    static bool hasIndex(const database::table & in, const QString & column)
    {
        return std::any_of(in.indexes.begin(), in.indexes.end(),
                           [&](const database::index & each) { return each.parts.front().column == column; });
    }

    void lookAtLink(const model::entity & entity, const model::property & member)
    {
        const model::relationship & relation = *member.getRelation();
        const database::table * const table = tableOf(relation.getExtraTable());
        // Both ends have the relationship; the link table is told of once.
        if (table == nullptr || m_links.contains(table->name)) {
            return;
        }
        m_links.insert(table->name);
        const bool isSelf = relation.getEntityTargetId() == entity.getId();
        if (table->foreignKeys.empty()) {
            tell(isSelf ? SelfLinkWithoutForeignKeys : LinkWithoutForeignKeys, entity, &member, *table);
            for (const QString & each :
                 isSelf ? QStringList{relation.getForeignKey(), relation.getForeignKeyOwner()}
                        : QStringList()) {
                addSql(m_sql.addForeignKey(table->name,
                                           keyTo(entity, *table, each.split(model::ColumnSeparator))));
            }
        } else if (table->foreignKeys.size() == 1) {
            tell(LinkWithOneForeignKey, entity, &member, *table);
        }
        const bool counts = std::any_of(table->columns.begin(), table->columns.end(),
                                        [](const database::column & each) { return each.counted; });
        if (counts) {
            tell(LinkCounts, entity, &member, *table);
            for (const database::sequence & each : table->sequences) {
                addSql(sql_writer::statements(m_sql.words().countNoMore,
                                              {{QStringLiteral("table"), m_sql.table(table->name)},
                                               {QStringLiteral("column"), m_sql.name(each.column)},
                                               {QStringLiteral("name"), m_sql.name(each.name)}}));
            }
        }
    }

    /// Gives the finding that was told last statements that mend it after the full script.
    void addSql(const QStringList & sql)
    {
        if (m_last) {
            m_last->way.sql += sql;
        }
    }

    /// The names as the table has them, whose columns the model names so.
    QStringList storedNames(const database::table & in, const QStringList & names)
    {
        QStringList stored;
        for (const QString & each : names) {
            const database::column * const column = columnOf(in, each);
            stored += column == nullptr ? each : column->name;
        }
        return stored;
    }

    /// A foreign key from columns of a table to the key of the entity.
    database::foreign_key keyTo(const model::entity & target, const database::table & from,
                                const QStringList & columns)
    {
        const QString tableName = tableNameOf(target);
        const database::table * const table = tableOf(tableName);
        const auto key = target.getPropertyId(true);
        const QStringList own = storedNames(from, columns);
        const QStringList others = key ? columnNamesOf(*key) : QStringList();
        const QString name = QStringLiteral("fk_%1_%2").arg(from.name, own.join(u'_'));
        return {database::storedName(m_of.known, name, database::name_place::other), own,
                table == nullptr ? tableName : table->name,
                table == nullptr ? others : storedNames(*table, others)};
    }

    [[nodiscard]] QStringList notNull(const database::table & in, const database::column & column) const
    {
        database::column wanted = column;
        wanted.notNull = true;
        return m_sql.about(m_sql.words().setNotNull, in.name, wanted);
    }

    [[nodiscard]] QStringList unique(const database::table & in, const database::column & column) const
    {
        return sql_writer::statements(
            m_sql.words().addUnique,
            {{QStringLiteral("table"), m_sql.table(in.name)},
             {QStringLiteral("columns"), m_sql.name(column.name)},
             {QStringLiteral("name"), m_sql.name(QStringLiteral("uq_%1_%2").arg(in.name, column.name))}});
    }

    void tell(const rule_text & about, const model::entity & entity, const model::property * member,
              const database::table & table, const values & more = {})
    {
        values words{{QStringLiteral("db"), m_of.known.label},
                     {QStringLiteral("entity"), entity.getName()},
                     {QStringLiteral("table"), table.name}};
        const QString name = member != nullptr ? nameOf(*member) : QString();
        if (member != nullptr) {
            words.insert(QStringLiteral("property"), name);
            words.insert(QStringLiteral("column"), columnNamesOf(*member).join(QStringLiteral(", ")));
        }
        words.insert(more);
        finding told = findingOf(about, words);
        told.objects.push_back({model::object_kind::entity, entity.getId(), entity.getName()});
        if (member != nullptr) {
            told.objects.push_back({model::object_kind::property, member->getId(), name});
        }
        tellLast();
        m_last = std::move(told);
    }

    static const rule_text WithoutKey;
    static const rule_text CountedCompositeKey;
    static const rule_text ForcedTypeUnused;
    static const rule_text UnknownCppType;
    static const rule_text SelfReference;
    static const rule_text ConstraintsUnwritten;
    static const rule_text WithoutIndex;
    static const rule_text OneRowWithoutValue;
    static const rule_text LinkWithoutForeignKeys;
    static const rule_text SelfLinkWithoutForeignKeys;
    static const rule_text LinkWithOneForeignKey;
    static const rule_text LinkCounts;

    const made_model & m_of;
    const std::function<void(finding)> & m_tell;
    sql_writer m_sql;
    QSet<QString> m_links;
    qsizetype m_next = 0;          ///< column after the one that was found last
    std::optional<finding> m_last; ///< that was found
};

const rule_text model_walk::WithoutKey = {
    QLatin1String("KV701"), effect::advice, "Table '{table}' has no primary key.",
    "'{entity}' has no identifier. Rows cannot be told apart, other tables cannot refer to them, and some "
    "ways to copy databases need a key.",
    "Give '{entity}' an identifier (\"identifier\": true on one property)."};

const rule_text model_walk::CountedCompositeKey = {
    QLatin1String("KV116"), effect::differs, "Each column of the key of table '{table}' is auto-increment.",
    "The identifier '{property}' has several columns and is auto-increment.",
    "Leave \"autoIncrement\" out, or set it to false, at '{property}'."};

const rule_text model_walk::ForcedTypeUnused = {
    QLatin1String("KV418"), effect::differs,
    "The column '{column}' of '{property}' is {type}, not {forced} as \"forceSqlType\" says.",
    "Auto-increment keys and texts that are keys or indexed have types of their own.",
    "Leave \"forceSqlType\" out, or have the custom script write the type (action CREATE_TABLE)."};

const rule_text model_walk::UnknownCppType = {
    QLatin1String("KV114"), effect::differs,
    "The column '{column}' of '{property}' is {type}, since the type mapping does not know '{cpp}'.",
    "C++ types without a row in the type mapping get the default type.",
    "Look at the spelling of the type, add a row to the type mapping, or force a type (\"forceSqlType\")."};

const rule_text model_walk::SelfReference = {
    QLatin1String("KV112"), effect::differs, "'{property}' gets no foreign key.",
    "The relationship leads from the entity to itself, and scripts for this database write no foreign key "
    "then.",
    "Run an ALTER TABLE {table} ADD CONSTRAINT … FOREIGN KEY ({column}) … of your own."};

const rule_text model_walk::ConstraintsUnwritten = {
    QLatin1String("KV138"), effect::differs,
    "The column '{column}' of '{property}' may be null and repeat, whatever the model says.",
    "NOT NULL and UNIQUE are not written for relationships of a new table.",
    "Add them with an ALTER TABLE {table} of your own, or have the custom script write them (action "
    "CREATE_TABLE)."};

const rule_text model_walk::WithoutIndex = {QLatin1String("KV702"), effect::advice,
                                            "The foreign key of '{property}' has no index.",
                                            "{db} makes none by itself, so that looking for the rows that "
                                            "refer to another one reads the whole table; dropping "
                                            "and changing rows of the other table does that.",
                                            "Set \"index\": true on '{property}'."};

const rule_text model_walk::OneRowWithoutValue = {
    QLatin1String("KV703"), effect::advice,
    "Only one row of table '{table}' can be without a value in the column '{column}'.",
    "'{property}' is unique and may be null, and {db} takes two rows without a value for equal.",
    "Set \"allowNull\": false, or leave \"unique\" out and make a unique index of your own over the rows "
    "that have a value."};

const rule_text model_walk::LinkWithoutForeignKeys = {
    QLatin1String("KV139"), effect::differs, "The link table '{table}' of '{property}' has no foreign keys.",
    "Scripts for this database write foreign keys into the table of an entity only.",
    "Have the custom script write them (action CREATE_EXTRA_TABLE)."};

const rule_text model_walk::SelfLinkWithoutForeignKeys = {
    QLatin1String("KV134"), effect::differs, "The link table '{table}' of '{property}' has no foreign keys.",
    "The relationship leads from the entity to itself, and no foreign key is written then.",
    "Run two ALTER TABLE {table} ADD CONSTRAINT … FOREIGN KEY … of your own."};

const rule_text model_walk::LinkWithOneForeignKey = {
    QLatin1String("KV111"), effect::differs,
    "The link table '{table}' of '{property}' has one foreign key, not two.",
    "The entity at its other end is left out of the scripts, which writes that end's foreign key.",
    "Run the other ALTER TABLE {table} ADD CONSTRAINT … FOREIGN KEY … of your own."};

const rule_text model_walk::LinkCounts = {
    QLatin1String("KV121"), effect::differs,
    "A row of the link table '{table}' that is written without a value gets the next number.",
    "The columns have the type of the keys that they refer to, which are auto-increment here.",
    "Always write both values, or have the custom script write another type (action CREATE_EXTRA_TABLE)."};

} // namespace

void explainModel(const made_model & of, const std::function<void(finding)> & tell)
{
    model_walk(of, tell).walk();
}

} // namespace check
