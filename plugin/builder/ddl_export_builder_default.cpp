// The generic dialect's tables and columns.

#include "plugin/builder/ddl_export_builder_default.h"

#include "plugin/builder/databases.h"
#include "plugin/builder/sql_text.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include <QSet>
#include <QStringBuilder>

#include <vector>

namespace plugin {

namespace {

/// About what one column takes, so that a table is built without copying its text again and again.
constexpr qsizetype ColumnLength = 48;

QLatin1String columnConstraints(const model::property & property)
{
    if (property.getAllowNull()) {
        return QLatin1String(property.getUnique() ? " UNIQUE" : "");
    }
    return QLatin1String(property.getUnique() ? " NOT NULL UNIQUE" : " NOT NULL");
}

} // namespace

/// A CREATE TABLE statement that grows.
struct ddl_export_builder_default::table_draft
{
    table_key key;
    std::shared_ptr<model::entity::list_of_property> properties;
    QString sql;
    QSet<QString> columns; ///< names written so far
    std::vector<std::shared_ptr<model::property>> relationships;

    /// Notes that `column` is written; false when the table has a column of that name.
    bool takeColumn(const QString & column)
    {
        const qsizetype before = columns.size();
        columns.insert(column);
        return columns.size() > before;
    }
};

ddl_export_builder_default::ddl_export_builder_default(ddl_export * plugin) : ddl_export_builder(plugin) {}
ddl_export_builder_default::~ddl_export_builder_default() = default;

bool ddl_export_builder_default::table_key::isCounted() const
{
    return property && property->isNumber(true, -1);
}

ddl_export_builder::type_mapping ddl_export_builder_default::getDefaultListTypeMapping() const
{
    return defaultTypeMapping(databaseOf(databaseType()).types);
}

QString ddl_export_builder_default::exportBegin() const
{
    return {};
}

QString ddl_export_builder_default::exportEnd() const
{
    return {};
}

QString ddl_export_builder_default::getBuilderName() const
{
    return databaseOf(databaseType()).getShortName();
}

ddl_export::database_type ddl_export_builder_default::databaseType() const
{
    return ddl_export::db_default;
}

QString ddl_export_builder_default::getDefaultSqlPropertyType(bool numeric) const
{
    return numeric ? QStringLiteral("INTEGER") : QStringLiteral("TEXT");
}

QString ddl_export_builder_default::createTable(std::shared_ptr<model::entity> entity)
{
    if (!entity) {
        return {};
    }
    table_draft draft;
    draft.key.entity = entity;
    draft.key.property = entity->getPropertyId(true);
    if (draft.key.property && draft.key.property->getType()) {
        draft.key.columns = draft.key.property->getColumnNameCount();
    }
    draft.properties = entity->getListOfProperty(true, true, false);
    const qsizetype expectedColumns = (draft.properties ? draft.properties->count() : 0) + 2;
    draft.columns.reserve(expectedColumns);
    draft.sql.reserve(ColumnLength * expectedColumns);
    draft.sql += u"CREATE TABLE " % getSqlTableName(entity, true) % u" (";
    appendKeyColumns(draft);
    appendColumns(draft);
    appendSoftDelete(draft);
    appendRelationships(draft);
    appendClauses(draft);
    chopListSeparator(draft.sql);
    draft.sql += tableTail() % statementsAfterTable(draft.key);
    return draft.sql;
}

void ddl_export_builder_default::appendKeyColumns(table_draft & draft) const
{
    for (int i = 0; i < draft.key.columns; ++i) {
        const QString column = getSqlColumnName(draft.key.property, i, true);
        if (draft.takeColumn(column)) {
            draft.sql += column % u" " % keyColumnType(draft.key.property, i) % u" NOT NULL" %
                         keyColumnSuffix(draft.key) % ListSeparator;
        }
    }
}

void ddl_export_builder_default::appendColumns(table_draft & draft)
{
    if (!draft.properties) {
        return;
    }
    for (const std::shared_ptr<model::property> & p : draft.properties->values()) {
        if (!p || !p->getType() || p->isTransient() ||
            (draft.key.property && p->getId() == draft.key.property->getId())) {
            continue;
        }
        if (p->hasRelationship()) {
            draft.relationships.push_back(p);
            continue;
        }
        const QString column = getSqlColumnName(p, -1, true);
        if (!draft.takeColumn(column)) {
            continue;
        }
        draft.sql += column % u" " % columnType(p) % columnConstraints(*p) % ListSeparator;
        if (p->isIndex()) {
            registerIndex(p);
        }
    }
}

void ddl_export_builder_default::appendSoftDelete(table_draft & draft) const
{
    if (const QString column = draft.key.entity->getSoftDeleteColumn(); !column.isEmpty()) {
        draft.sql += column % u" " % getDefaultSqlPropertyType(false) % ListSeparator;
    }
}

void ddl_export_builder_default::appendRelationships(table_draft & draft)
{
    for (const std::shared_ptr<model::property> & p : draft.relationships) {
        const std::shared_ptr<model::relationship> relation = p->getRelation();
        const std::shared_ptr<model::entity> target = relation ? relation->getEntityTarget() : nullptr;
        if (!target) {
            continue;
        }
        if (relation->getType() == model::relationship::many_to_many) {
            registerLinkTable(relation);
        } else if (relation->getType() == model::relationship::many_to_one) {
            const std::shared_ptr<model::property> targetKey = target->getPropertyId(true);
            const int columns = relation->getColumnNameCount();
            for (int i = 0; i < columns; ++i) {
                const QString column = getSqlName(relation->getColumnName(i));
                if (draft.takeColumn(column)) {
                    draft.sql += column % u" " % getSqlPropertyType(targetKey, i) % ListSeparator;
                }
            }
            if (p->isIndex()) {
                registerIndex(p);
            }
        }
    }
}

void ddl_export_builder_default::appendClauses(table_draft & draft)
{
    if (const QString clause = keyClause(draft.key); !clause.isEmpty()) {
        draft.sql += clause % ListSeparator;
    }
    if (exportsRelationships() && !m_bAlterTableForeignKey) {
        draft.sql += addConstraintFKInCreateTable(draft.key.entity);
    }
}

void ddl_export_builder_default::registerIndex(const std::shared_ptr<model::property> & property)
{
    const std::lock_guard lock(m_lstIndex.mutex());
    m_lstIndex.insert(property->getId(), property);
}

void ddl_export_builder_default::registerLinkTable(const std::shared_ptr<model::relationship> & relationship)
{
    const QString table = relationship->getExtraTable();
    if (!table.isEmpty()) {
        const std::lock_guard lock(m_lstExtraTable.mutex());
        m_lstExtraTable.insert(table, relationship);
    }
}

QString ddl_export_builder_default::keyColumnType(const std::shared_ptr<model::property> & key,
                                                  int index) const
{
    return getSqlPropertyType(key, index);
}

QString ddl_export_builder_default::keyColumnSuffix(const table_key & key) const
{
    return primaryKeyOfSingleColumn(key) % QLatin1String(key.isCounted() ? " AUTOINCREMENT" : "");
}

QString ddl_export_builder_default::primaryKeyOfSingleColumn(const table_key & key)
{
    return key.isComposite() ? QString() : QStringLiteral(" PRIMARY KEY");
}

QString ddl_export_builder_default::columnType(const std::shared_ptr<model::property> & property) const
{
    return getSqlPropertyType(property, -1);
}

QString ddl_export_builder_default::keyClause(const table_key & key) const
{
    return key.isComposite() ? keyClauseText(key) : QString();
}

QString ddl_export_builder_default::keyClauseText(const table_key & key) const
{
    return u"PRIMARY KEY (" %
           joined(key.columns, ListSeparator, [&](int i) { return keyClauseColumn(key.property, i); }) % u")";
}

QString ddl_export_builder_default::namedKeyClause(const table_key & key) const
{
    return key.isComposite() ? QString(u"CONSTRAINT " % getSqlPrimaryKeyName(key.property, true) % u" " %
                                       keyClauseText(key))
                             : QString();
}

QString ddl_export_builder_default::keyClauseColumn(const std::shared_ptr<model::property> & key,
                                                    int index) const
{
    return getSqlColumnName(key, index, true);
}

QString ddl_export_builder_default::tableTail() const
{
    return QStringLiteral(");");
}

QString ddl_export_builder_default::statementsAfterTable(const table_key &) const
{
    return {};
}

QString ddl_export_builder_default::dropTable(std::shared_ptr<model::entity> entity)
{
    return entity ? QString(u"DROP TABLE " % getSqlTableName(entity, true) % u";") : QString();
}

QString ddl_export_builder_default::renameTable(std::shared_ptr<model::entity> previous,
                                                std::shared_ptr<model::entity> current)
{
    if (!previous || !current) {
        return {};
    }
    return renameTableStatement(getSqlTableName(previous, true), getSqlTableName(current, true));
}

QString ddl_export_builder_default::renameTableStatement(const QString & from, const QString & to) const
{
    return u"ALTER TABLE " % from % u" RENAME TO " % to % u";";
}

QString ddl_export_builder_default::addColumn(std::shared_ptr<model::property> property)
{
    const std::shared_ptr<model::entity> entity = currentEntityOf(property);
    if (!entity) {
        return {};
    }
    const QString head = u"ALTER TABLE " % getSqlTableName(entity, true) % u" ADD COLUMN ";
    const QString tail = columnConstraints(*property) % u";";
    return joined(property->getColumnNameCount(), StatementSeparator, [&](int i) -> QString {
        return head % getSqlColumnName(property, i, true) % u" " % getSqlPropertyType(property, i) % tail;
    });
}

QString ddl_export_builder_default::addColumnWithoutKeyword(const std::shared_ptr<model::property> & property)
{
    return ddl_export_builder_default::addColumn(property).replace(QLatin1String(" ADD COLUMN "),
                                                                   QLatin1String(" ADD "));
}

QString ddl_export_builder_default::dropColumn(std::shared_ptr<model::property> property)
{
    const std::shared_ptr<model::entity> entity = currentEntityOf(property);
    if (!entity) {
        return {};
    }
    const QString head = u"ALTER TABLE " % getSqlTableName(entity, true) % u" DROP COLUMN ";
    return joined(property->getColumnNameCount(), StatementSeparator,
                  [&](int i) -> QString { return head % getSqlColumnName(property, i, true) % u";"; });
}

QString ddl_export_builder_default::renameColumn(std::shared_ptr<model::property> previous,
                                                 std::shared_ptr<model::property> current)
{
    const std::shared_ptr<model::entity> entity = previous ? currentEntityOf(current) : nullptr;
    if (!entity) {
        return {};
    }
    const int columns = current->getColumnNameCount();
    if (previous->getColumnNameCount() != columns) {
        return dropColumn(previous) % StatementSeparator % addColumn(current);
    }
    const QString table = getSqlTableName(entity, true);
    QString sql;
    for (int i = 0; i < columns; ++i) {
        const QString from = getSqlColumnName(previous, i, true);
        const QString to = getSqlColumnName(current, i, true);
        if (from == to) {
            continue;
        }
        // By the column's number, also when no column before it was renamed: scripts begin with that line
        // end.
        if (i > 0) {
            sql += StatementSeparator;
        }
        sql += renameColumnStatement(table, from, to, current, i);
    }
    return sql;
}

QString ddl_export_builder_default::renameColumnStatement(const QString & table, const QString & from,
                                                          const QString & to,
                                                          const std::shared_ptr<model::property> &, int) const
{
    return u"ALTER TABLE " % table % u" RENAME COLUMN " % from % u" TO " % to % u";";
}

bool ddl_export_builder_default::exportsRelationships() const
{
    return m_pPlugin && m_pPlugin->getExportRelationships();
}

std::shared_ptr<model::entity>
ddl_export_builder_default::currentEntityOf(const std::shared_ptr<model::property> & property) const
{
    return property && m_pCurrentProject ? m_pCurrentProject->getEntityById(property->getEntityId())
                                         : nullptr;
}

} // namespace plugin
