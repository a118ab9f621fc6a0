#include "servers/expected_catalogue.h"

#include "servers/catalogue_lines.h"

#include "model/project.h"
#include "model/property_type.h"

#include <QSet>

namespace servers {

namespace {

using model::relationship;

class catalogue_writer
{
public:
    catalogue_writer(const model::project & project, const expectations & e) : m_project(project), m_e(e) {}

    QStringList lines()
    {
        for (const auto & entity : m_project.getListOfAllEntities()->values()) {
            if (entity->getMetaData(QStringLiteral("DDL_EXPORT_CREATE_TABLE")).toString() !=
                QStringLiteral("false")) {
                addTable(*entity);
            }
        }
        m_lines.sort();
        return m_lines;
    }

private:
    static QString tableOf(const model::entity & entity)
    {
        return entity.getTableName().isEmpty() ? entity.getName() : entity.getTableName();
    }
    static QStringList columnsOf(const model::property & p)
    {
        return (p.getColumnName().isEmpty() ? p.getName() : p.getColumnName()).split(QLatin1Char('|'));
    }
    [[nodiscard]] QString typeOf(const model::property & p, int index) const
    {
        if (!p.getForceSqlType().isEmpty()) {
            return p.getForceSqlType();
        }
        return p.getType()->getEnumeration() ? QStringLiteral("INTEGER")
                                             : m_e.sqlType(p.getType()->getPrimitiveType(index));
    }
    /// Type of column `index` of `key` where it is a key, or where a link table refers to it.
    [[nodiscard]] QString keyTypeOf(const model::property & key, int index) const
    {
        if (!m_e.countedKeyType.isEmpty() && key.isNumber(true, -1)) {
            return m_e.countedKeyType;
        }
        const bool bounded = !m_e.stringKeyType.isEmpty() && m_e.relationships && key.isString(false, index);
        return bounded ? m_e.stringKeyType : typeOf(key, index);
    }

    void addColumn(const QString & table, const QString & name, const QString & type, bool notNull)
    {
        if (m_taken.contains(name)) {
            return;
        }
        m_taken.insert(name);
        m_lines.append(
            QStringLiteral("column %1.%2 %3%4")
                .arg(table, name, m_e.spell(type), notNull ? QStringLiteral(" NOT NULL") : QString()));
    }
    void addIndexes(const QString & table, const QStringList & columns)
    {
        for (const QString & column : columns) {
            m_lines.append(withColumns(QStringLiteral("index idx_%1_%2 %1").arg(table, column), {column}));
        }
    }

    void addTable(const model::entity & entity)
    {
        m_taken.clear();
        const QString table = tableOf(entity);
        m_lines.append(QStringLiteral("table ") + table);
        if (const auto key = entity.getPropertyId(true)) {
            const QStringList columns = columnsOf(*key);
            for (qsizetype i = 0; i < columns.size(); ++i) {
                addColumn(table, columns[i], keyTypeOf(*key, static_cast<int>(i)), true);
            }
            m_lines.append(withColumns(QStringLiteral("key ") + table, columns));
        }
        for (const auto & p : entity.getListOfProperty(true, true, false)->values()) {
            if (!p->isIdentifier() && !p->isTransient() && !p->hasRelationship()) {
                addPlainColumn(table, *p);
            }
        }
        if (!entity.getSoftDeleteColumn().isEmpty()) {
            addColumn(table, entity.getSoftDeleteColumn(), QStringLiteral("TEXT"), false);
        }
        for (const auto & relation : entity.getListOfRelation()->values()) {
            addRelation(entity, *relation);
        }
    }

    void addPlainColumn(const QString & table, const model::property & p)
    {
        const QString column = columnsOf(p).constFirst();
        addColumn(table, column, typeOf(p, -1), !p.getAllowNull());
        if (p.getUnique()) {
            m_lines.append(withColumns(QStringLiteral("unique ") + table, {column}));
        }
        if (p.isIndex()) {
            addIndexes(table, {column});
        }
    }

    void addRelation(const model::entity & owner, const relationship & relation)
    {
        const QString table = tableOf(owner);
        const auto property = relation.getProperty();
        const auto target = relation.getEntityTarget();
        if (relation.getType() == relationship::many_to_one) {
            const auto targetKey = target->getPropertyId(true);
            const QStringList columns = columnsOf(*property);
            for (qsizetype i = 0; i < columns.size(); ++i) {
                addColumn(table, columns[i], typeOf(*targetKey, static_cast<int>(i)), false);
            }
            if (property->isIndex()) {
                addIndexes(table, columns);
            }
        }
        if (relation.getType() == relationship::many_to_many) {
            addLinkTable(relation, owner, *target);
        }
        if (m_e.relationships && relation.getType() != relationship::one_to_many) {
            addForeignKey(owner, relation, *target);
        }
    }

    void addLinkTable(const relationship & relation, const model::entity & owner,
                      const model::entity & target)
    {
        const QString table = relation.getExtraTable();
        if (m_linkTables.contains(table)) {
            return;
        }
        m_linkTables.insert(table);
        m_lines.append(QStringLiteral("table ") + table);
        const QSet<QString> outer = m_taken;
        m_taken.clear();
        for (const auto & [names, entity] : {std::pair{relation.getForeignKey(), &owner},
                                             std::pair{relation.getForeignKeyOwner(), &target}}) {
            const auto key = entity->getPropertyId(true);
            const QStringList columns = names.split(QLatin1Char('|'));
            for (qsizetype i = 0; i < columns.size(); ++i) {
                addColumn(table, columns[i], keyTypeOf(*key, static_cast<int>(i)),
                          m_e.countedKeyTypeIsNotNull && key->isNumber(true, -1));
            }
        }
        m_taken = outer;
    }

    void addForeignKey(const model::entity & owner, const relationship & relation,
                       const model::entity & target)
    {
        const bool isLink = relation.getType() == relationship::many_to_many;
        const bool isSelf = owner.getId() == target.getId();
        if (m_e.inlineForeignKeys ? isLink : isSelf) {
            return;
        }
        const QStringList propertyColumns = columnsOf(*relation.getProperty());
        const QString name =
            m_e.inlineForeignKeys
                ? QStringLiteral("-")
                : QStringLiteral("fk_%1_%2").arg(tableOf(owner), propertyColumns.join(QLatin1Char('_')));
        const model::entity & referred = isLink ? owner : target;
        const QStringList from = isLink ? relation.getForeignKey().split(QLatin1Char('|')) : propertyColumns;
        m_lines.append(
            withColumns(
                QStringLiteral("foreign %1 %2").arg(name, isLink ? relation.getExtraTable() : tableOf(owner)),
                from) +
            withColumns(QStringLiteral(" -> ") + tableOf(referred),
                        columnsOf(*referred.getPropertyId(true))));
    }

    const model::project & m_project;
    const expectations & m_e;
    QStringList m_lines;
    QSet<QString> m_taken;
    QSet<QString> m_linkTables;
};

} // namespace

QStringList expectedCatalogue(const model::project & project, const expectations & e)
{
    return catalogue_writer(project, e).lines();
}

} // namespace servers
