#include "plugin/builder/ddl_export_builder_sqlite.h"

#include "plugin/builder/sql_text.h"

#include "model/entity.h"
#include "model/property.h"
#include "model/relationship.h"

#include <QStringBuilder>

namespace plugin {

namespace {

/// A comment in place of a statement that the database does not know.
QString warning(const QString & statement, const QString & detail)
{
    return u"--\n"
           u"-- WARNING : SQLite database doesn't support " %
           statement %
           u" DDL script ! --\n"
           u"--           Cannot " %
           detail %
           u"\n"
           u"--";
}

} // namespace

ddl_export_builder_sqlite::ddl_export_builder_sqlite(ddl_export * plugin) : ddl_export_builder_default(plugin)
{
    m_bAlterTableForeignKey = false;
}

ddl_export_builder_sqlite::~ddl_export_builder_sqlite() = default;

QString ddl_export_builder_sqlite::exportBegin() const
{
    return QStringLiteral("BEGIN TRANSACTION;\nPRAGMA foreign_keys = OFF;");
}

QString ddl_export_builder_sqlite::exportEnd() const
{
    return QStringLiteral("END TRANSACTION;");
}

ddl_export::database_type ddl_export_builder_sqlite::databaseType() const
{
    return ddl_export::db_sqlite;
}

QString ddl_export_builder_sqlite::addConstraintFKInCreateTable(std::shared_ptr<model::entity> entity)
{
    const auto relationships = entity ? entity->getListOfRelation() : nullptr;
    if (!relationships) {
        return {};
    }
    QString sql;
    for (const std::shared_ptr<model::relationship> & relationship : relationships->values()) {
        const std::shared_ptr<model::property> property =
            relationship ? relationship->getProperty() : nullptr;
        const std::shared_ptr<model::entity> target = property ? relationship->getEntityTarget() : nullptr;
        if (!target) {
            continue;
        }
        const bool isOneToOne = relationship->getType() == model::relationship::one_to_one;
        if (relationship->getType() == model::relationship::many_to_one ||
            (isOneToOne && entityWithIdentifier(property->getEntity()))) {
            sql += foreignKeyClause(property, target) % ListSeparator;
        }
    }
    return sql;
}

QString ddl_export_builder_sqlite::dropColumn(std::shared_ptr<model::property> property)
{
    const std::shared_ptr<model::entity> entity = currentEntityOf(property);
    if (!entity) {
        return {};
    }
    return warning(QStringLiteral("DROP COLUMN"), u"DROP COLUMN '" % getSqlColumnName(property, -1, true) %
                                                      u"' for table '" % getSqlTableName(entity, true) %
                                                      u"'");
}

QString ddl_export_builder_sqlite::renameColumn(std::shared_ptr<model::property> previous,
                                                std::shared_ptr<model::property> current)
{
    const std::shared_ptr<model::entity> entity = previous ? currentEntityOf(current) : nullptr;
    if (!entity) {
        return {};
    }
    // The old name has no closing quote: scripts are compared with earlier ones to the letter.
    return warning(QStringLiteral("RENAME COLUMN"),
                   u"RENAME COLUMN from '" % getSqlColumnName(previous, -1, true) % u" to '" %
                       getSqlColumnName(current, -1, true) % u"' for table '" %
                       getSqlTableName(entity, true) % u"'");
}

QString ddl_export_builder_sqlite::addForeignKey(std::shared_ptr<model::relationship> relationship)
{
    return foreignKeyWarning(relationship, QStringLiteral("ADD"));
}

QString ddl_export_builder_sqlite::dropForeignKey(std::shared_ptr<model::relationship> relationship)
{
    return foreignKeyWarning(relationship, QStringLiteral("DROP"));
}

QString
ddl_export_builder_sqlite::foreignKeyWarning(const std::shared_ptr<model::relationship> & relationship,
                                             const QString & verb) const
{
    if (!relationship || relationship->getType() == model::relationship::one_to_many) {
        return {};
    }
    const std::shared_ptr<model::property> property = relationship->getProperty();
    const std::shared_ptr<model::entity> entity = property ? property->getEntity() : nullptr;
    if (!entity || !relationship->getEntityTarget()) {
        return {};
    }
    return warning(u"ALTER TABLE my_table " % verb % u" CONSTRAINT",
                   verb % u" FOREIGN KEY '" % getSqlForeignKeyName(relationship) % u"' for table '" %
                       getSqlTableName(entity, true) % u"'");
}

QString ddl_export_builder_sqlite::dropIndex(std::shared_ptr<model::property> property)
{
    return dropIndexByName(property);
}

} // namespace plugin
