#include "storage/model_check.h"

#include "model/project.h"
#include "model/property_type.h"
#include "storage/texts.h"
#include "zk/visible_text.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <vector>

namespace storage::model_check {

namespace {

using found = std::optional<finding>;

constexpr qsizetype NameBytes = 180; // leaves room for what scripts and temporary files append to it
constexpr qsizetype PrintedLength = 100;

QString emptyName()
{
    return texts::tr("field 'name' must not be empty");
}

/// The first number that occurs twice.
std::optional<long> findDuplicateId(std::vector<long> & ids)
{
    // Models that were written by the program are in order already.
    if (!std::is_sorted(ids.begin(), ids.end())) {
        std::sort(ids.begin(), ids.end());
    }
    const auto it = std::adjacent_find(ids.begin(), ids.end());
    return it == ids.end() ? std::nullopt : std::optional<long>(*it);
}

/// One walk over the model that stops at the first broken rule.
class checker
{
public:
    explicit checker(const model::project & project) : m_project(project) {}

    found run()
    {
        if (const QString problem = projectNameProblem(m_project.getName()); !problem.isEmpty()) {
            return finding{QString(), namedProblem(texts::tr("project name"), problem)};
        }
        qsizetype index = 0;
        for (const auto & enumeration : m_project.getListOfEnumeration()->values()) {
            if (enumeration->getName().isEmpty()) {
                return finding{placeOfEnumeration(index, QString()), emptyName()};
            }
            ++index;
        }
        index = 0;
        for (const auto & entity : m_project.getListOfAllEntities()->values()) {
            if (found f = checkEntity(*entity, index++)) {
                return f;
            }
        }
        if (const auto id = findDuplicateId(m_lstPropertyId)) {
            return findSecondOwner(*id, false);
        }
        if (const auto id = findDuplicateId(m_lstRelationId)) {
            return findSecondOwner(*id, true);
        }
        return findCycle();
    }

private:
    found checkEntity(const model::entity & entity, qsizetype index)
    {
        if (entity.getName().isEmpty()) {
            return finding{placeOfEntity(index, QString()), emptyName()};
        }
        const auto properties = entity.getListOfProperty(true, true, false);
        bool hasIdentifier = false;
        for (long i = 0; i < properties->count(); ++i) {
            const std::shared_ptr<model::property> property = properties->getByIndex(i);
            QString reason = checkProperty(*property);
            if (property->isIdentifier()) {
                if (reason.isEmpty() && hasIdentifier) {
                    reason = texts::tr("only one property of an entity can be the identifier; for a "
                                       "composite key give that one several columns, such as "
                                       "\"columnName\": \"a|b\"");
                }
                hasIdentifier = true;
            }
            if (!reason.isEmpty()) {
                return finding{
                    placeOfProperty(placeOfEntity(index, entity.getName()), i, property->getName()), reason};
            }
        }
        return {};
    }

    QString checkProperty(const model::property & property)
    {
        m_lstPropertyId.push_back(property.getId());
        if (property.getName().isEmpty()) {
            return emptyName();
        }
        if (property.getAutoIncrement() && !isOfIntegers(property)) {
            return texts::tr("field 'autoIncrement' works only with integer types such as \"long\"");
        }
        return property.hasRelationship() ? checkRelationship(*property.getRelation()) : QString();
    }

    QString checkRelationship(const model::relationship & relation)
    {
        m_lstRelationId.push_back(relation.getId());
        const std::shared_ptr<model::entity> target = m_project.getEntityById(relation.getEntityTargetId());
        if (!target) {
            return texts::tr("relationship target %1 does not exist").arg(relation.getEntityTargetId());
        }
        if (relation.getInverseId() != 0 && !target->getPropertyById(relation.getInverseId())) {
            return texts::tr("relationship inverse %1 does not exist in the target %2")
                .arg(QString::number(relation.getInverseId()), quotedName(target->getName()));
        }
        return {};
    }

    static bool isOfIntegers(const model::property & property)
    {
        const std::shared_ptr<model::property_type> type = property.getType();
        const qsizetype n = type ? type->getCppTypes().size() : 0;
        for (int i = 0; i < static_cast<int>(n); ++i) {
            if (!property.isNumber(true, i)) {
                return false;
            }
        }
        return n > 0;
    }

    /// Where the second object with `id` stands.
    [[nodiscard]] finding findSecondOwner(long id, bool relations) const
    {
        int seen = 0;
        qsizetype entityIndex = 0;
        for (const auto & entity : m_project.getListOfAllEntities()->values()) {
            const QString place = placeOfEntity(entityIndex++, entity->getName());
            qsizetype index = -1;
            for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
                ++index;
                const bool hit = relations
                                     ? property->hasRelationship() && property->getRelation()->getId() == id
                                     : property->getId() == id;
                if (hit && ++seen == 2) {
                    return {placeOfProperty(place, index, property->getName()),
                            usedTwice(relations ? id_kind::relationship : id_kind::property, id)};
                }
            }
        }
        return {};
    }

    /// Identifiers that are relationships lead from entity to entity; none may come back to where it was.
    [[nodiscard]] found findCycle() const
    {
        QSet<long> finished;
        qsizetype index = -1;
        for (const auto & entity : m_project.getListOfAllEntities()->values()) {
            ++index;
            if (const auto key = entity->getPropertyId(true); !key || !key->hasRelationship()) {
                continue;
            }
            QSet<long> onWay;
            QStringList names;
            std::shared_ptr<model::property> key;
            for (std::shared_ptr<model::entity> e = entity; e && !finished.contains(e->getId());) {
                names.append(quotedName(e->getName()));
                if (onWay.contains(e->getId())) {
                    return finding{placeOfEntity(index, entity->getName()),
                                   texts::tr("identifiers refer to each other in a circle: %1; give one of "
                                             "them a plain type")
                                       .arg(shortened(names).join(QStringLiteral(" -> ")))};
                }
                onWay.insert(e->getId());
                key = e->getPropertyId(true);
                e = key && key->hasRelationship() ? key->getRelation()->getEntityTarget() : nullptr;
            }
            finished.unite(onWay);
        }
        return {};
    }

    static QStringList shortened(const QStringList & names)
    {
        constexpr qsizetype shown = 6;
        return names.size() <= shown ? names
                                     : names.mid(0, shown - 1) << QStringLiteral("...") << names.constLast();
    }

    const model::project & m_project;
    std::vector<long> m_lstPropertyId;
    std::vector<long> m_lstRelationId;
};

} // namespace

QString finding::text(const QString & source) const
{
    const QString separator = QStringLiteral(": ");
    return source + separator + (place.isEmpty() ? QString() : place + separator) + reason;
}

QString printable(const QString & text)
{
    QString result = text.size() > PrintedLength ? text.left(PrintedLength) + QStringLiteral("...") : text;
    for (QChar & c : result) {
        if (!c.isPrint() && !c.isSurrogate() && !zk::isHiddenControl(c)) {
            c = QLatin1Char('?');
        }
    }
    return zk::visibleText(result);
}

QString quotedName(const QString & name)
{
    return texts::tr("'%1'").arg(printable(name));
}

QString placeOf(const QString & list, qsizetype index, const QString & name)
{
    const QString place = QStringLiteral("%1[%2]").arg(list).arg(index);
    return name.isEmpty() ? place : place + QLatin1Char(' ') + quotedName(name);
}

QString placeOfEntity(qsizetype index, const QString & name)
{
    return placeOf(QStringLiteral("entities"), index, name);
}

QString placeOfProperty(const QString & entity, qsizetype index, const QString & name)
{
    return entity + QStringLiteral(" / ") + placeOf(QStringLiteral("properties"), index, name);
}

QString placeOfEnumeration(qsizetype index, const QString & name)
{
    return placeOf(QStringLiteral("enumerations"), index, name);
}

QString projectNameProblem(const QString & name)
{
    if (name.isEmpty()) {
        return texts::tr("must not be empty");
    }
    if (name.toUtf8().size() > NameBytes) {
        return texts::tr("is longer than %1 bytes").arg(NameBytes);
    }
    if (name.startsWith(QLatin1Char(':')) || name.startsWith(QLatin1Char('.'))) {
        return texts::tr("%1 must not begin with ':' or '.'").arg(quotedName(name));
    }
    for (const QChar c : name) {
        if (c == QLatin1Char('/') || c == QLatin1Char('\\') || c.category() == QChar::Other_Control) {
            return texts::tr("%1 must not contain '/', '\\' or control characters").arg(quotedName(name));
        }
        if (zk::isHiddenControl(c)) {
            return texts::tr("%1 must not contain characters that turn the direction of text or separate "
                             "lines")
                .arg(quotedName(name));
        }
    }
    // Windows takes these for devices whatever extension and blanks follow.
    static const QRegularExpression device(
        QStringLiteral("^(CON|PRN|AUX|NUL|CONIN\\$|CONOUT\\$|CLOCK\\$|(COM|LPT)[0-9\u00b9\u00b2\u00b3])"
                       "[ ]*([.:].*)?$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    if (device.match(name).hasMatch()) {
        return texts::tr("%1 is a reserved device name of Windows").arg(quotedName(name));
    }
    return {};
}

QString namedProblem(const QString & what, const QString & problem)
{
    const QString openingQuote = texts::tr("'%1'").section(QLatin1Char('%'), 0, 0);
    return what + QLatin1String(problem.startsWith(openingQuote) ? ": " : " ") + problem;
}

QString usedTwice(id_kind kind, long id)
{
    switch (kind) {
    case id_kind::enumeration:
        return texts::tr("enumeration id %1 is used twice").arg(id);
    case id_kind::entity:
        return texts::tr("entity id %1 is used twice").arg(id);
    case id_kind::property:
        return texts::tr("property id %1 is used twice").arg(id);
    case id_kind::relationship:
        return texts::tr("relationship id %1 is used twice").arg(id);
    case id_kind::type:
        return texts::tr("type id %1 is used twice").arg(id);
    }
    return {};
}

std::optional<finding> firstError(const model::project & project)
{
    return checker(project).run();
}

} // namespace storage::model_check
