// What is allowed in a model, but hardly meant.

#include "storage/model_check.h"

#include "model/project.h"
#include "model/property_type.h"
#include "model/relationship.h"
#include "storage/texts.h"

#include <QHash>
#include <QSet>

#include <optional>

namespace storage::model_check {

namespace {

/// The names of the columns that the table of an entity gets, looked up only where somebody asks.
class column_names
{
public:
    explicit column_names(const model::entity & entity) : m_entity(entity) {}

    bool contain(const QString & column)
    {
        if (!m_names) {
            m_names = collect();
        }
        return m_names->contains(column);
    }

private:
    [[nodiscard]] QSet<QString> collect() const
    {
        QSet<QString> columns;
        for (const auto & p : m_entity.getListOfProperty(true, true, false)->values()) {
            const bool ownColumn = !p->hasRelationship() || p->isIdentifier() ||
                                   p->getRelation()->getType() == model::relationship::many_to_one;
            if (p->isTransient() || !ownColumn) {
                continue;
            }
            for (int i = 0; i < p->getColumnNameCount(); ++i) {
                columns.insert(p->getColumnName().isEmpty() ? p->getName() : p->getColumnName(i));
            }
        }
        return columns;
    }

    const model::entity & m_entity;
    std::optional<QSet<QString>> m_names;
};

bool isManyToMany(const model::property & p)
{
    return p.hasRelationship() && !p.isTransient() &&
           p.getRelation()->getType() == model::relationship::many_to_many;
}

/// What a many-to-many of `p` lacks for its link table and for its foreign key, which the other side, however
/// complete it is, does not make for it.
QStringList missingLinkFields(const model::property & p)
{
    QStringList missing;
    if (!isManyToMany(p)) {
        return missing;
    }
    const model::relationship & relation = *p.getRelation();
    const auto need = [&missing](bool isThere, const QString & field) {
        if (!isThere) {
            missing.append(field);
        }
    };
    need(relation.getInverseId() != 0, QStringLiteral("'inverse'"));
    need(!relation.getExtraTable().isEmpty(), QStringLiteral("'extraTable'"));
    need(!relation.getForeignKey().isEmpty(), QStringLiteral("'foreignKey'"));
    need(!relation.getForeignKeyOwner().isEmpty(), QStringLiteral("'foreignKeyOwner'"));
    return missing;
}

QStringList warningsOf(const model::property & p, column_names & columns)
{
    QStringList result;
    if (const QStringList missing = missingLinkFields(p); !missing.isEmpty()) {
        result.append(texts::tr("a many-to-many needs relationship field %1, or the scripts make no usable "
                                "link table or foreign key")
                          .arg(missing.join(QStringLiteral(", "))));
    }
    const qsizetype types = p.getType() ? p.getType()->getCppTypes().size() : 0;
    if (types > 1 && types != p.getColumnNameCount()) {
        result.append(texts::tr("'type' lists %1 types, but 'columnName' gives the number of columns as "
                                "%2; they must be as many")
                          .arg(QString::number(types), QString::number(p.getColumnNameCount())));
    }
    if (p.hasRelationship() && !p.isTransient() && !p.isIdentifier() &&
        p.getRelation()->getType() == model::relationship::one_to_one) {
        for (int i = 0; i < p.getRelation()->getColumnNameCount(); ++i) {
            if (const QString column = p.getRelation()->getColumnName(i); !columns.contain(column)) {
                result.append(texts::tr("the foreign key needs a column %1, which no property makes; "
                                        "name an existing one in 'columnName'")
                                  .arg(quotedName(column)));
            }
        }
    }
    return result;
}

/// Finds what several entities share that each should have for itself.
class name_watcher
{
public:
    QStringList warningsOf(const model::entity & entity, qsizetype index)
    {
        QStringList result;
        const QString table = entity.getTableName().isEmpty() ? entity.getName() : entity.getTableName();
        // Most databases take names that differ in case only for one name.
        if (const auto it = m_tables.constFind(table.toCaseFolded()); it != m_tables.constEnd()) {
            result.append(texts::tr("its table %1 is the table of %2 as well; give one of them another "
                                    "'tableName'")
                              .arg(quotedName(table), placeOfEntity(it->index, it->name)));
        } else {
            m_tables.insert(table.toCaseFolded(), {index, entity.getName()});
        }
        if (const auto it = m_names.constFind(entity.getName()); it != m_names.constEnd()) {
            result.append(texts::tr("%1 has the same name; give one of them another, since an entity "
                                    "without 'id' is known by its name")
                              .arg(placeOfEntity(*it, QString())));
        } else {
            m_names.insert(entity.getName(), index);
        }
        return result;
    }

private:
    struct place
    {
        qsizetype index;
        QString name;
    };

    QHash<QString, place> m_tables; ///< where the first entity of a table stands
    QHash<QString, qsizetype> m_names;
};

} // namespace

QStringList warnings(const model::project & project)
{
    QStringList result;
    const auto tell = [&result](const QString & place, const QString & warning) {
        result.append(place + QStringLiteral(": ") + warning);
    };
    name_watcher watcher;
    qsizetype entityIndex = 0;
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        const auto place = [&, at = entityIndex] { return placeOfEntity(at, entity->getName()); };
        for (const QString & warning : watcher.warningsOf(*entity, entityIndex++)) {
            tell(place(), warning);
        }
        column_names columns(*entity);
        qsizetype index = 0;
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            for (const QString & warning : warningsOf(*property, columns)) {
                tell(placeOfProperty(place(), index, property->getName()), warning);
            }
            ++index;
        }
    }
    return result;
}

} // namespace storage::model_check
