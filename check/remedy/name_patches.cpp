// Changes of names in the model.

#include "check/remedy/patch_place.h"
#include "check/view/model_names.h"

#include "database/facts/names.h"
#include "model/column_list.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <QRegularExpression>

#include <algorithm>

namespace check {

namespace {

/// A name like the one that is wrong, which every database reads without quotes.
QString readableName(const QString & of)
{
    static const QRegularExpression odd(QStringLiteral("[^A-Za-z0-9_\\x{80}-\\x{ffff}]"));
    QString name = of;
    name.replace(odd, QStringLiteral("_"));
    // Not every database reads a low line in front.
    if (!name.isEmpty() && (name.at(0).isDigit() || name.at(0) == u'_')) {
        name.prepend(name.at(0) == u'_' ? QStringLiteral("x") : QStringLiteral("x_"));
    }
    const auto isRefused = [&](const database::facts * known) {
        using database::name_place;
        return known->isDatabase && (database::isReserved(*known, name, name_place::table) ||
                                     database::isReserved(*known, name, name_place::other));
    };
    const auto all = database::allFacts();
    while (std::any_of(all.begin(), all.end(), isRefused)) {
        name += u'_';
    }
    return name;
}

/// The columns of a property with another name in the place of one.
QString columnsWith(const model::property & of, const QString & column, const QString & name)
{
    QStringList columns = columnNamesOf(of);
    for (QString & each : columns) {
        each = each.compare(column, Qt::CaseInsensitive) == 0 ? name : each;
    }
    return columns.join(model::ColumnSeparator);
}

void setColumn(const patch_place & at, const model::property & of, const QString & column,
               const QString & name)
{
    at.to.set(of, "columnName", columnsWith(of, column, name).toStdString());
}

/// Sets what both ends of a many-to-many relationship say of their link table.
void setLink(const patch_place & at, const model::property & of, const char * own, const char * others,
             const QString & name)
{
    const auto relation = of.getRelation();
    at.to.set(of, (std::string("relationship/") + own).c_str(), name.toStdString());
    if (const auto inverse = relation->getInverse(); inverse && inverse->getId() != of.getId()) {
        at.to.set(*inverse, (std::string("relationship/") + others).c_str(), name.toStdString());
    }
}

/// Gives everything of the entity that is called so another name.
void renameIn(const patch_place & at, const model::entity & in, const QString & word, const QString & name)
{
    const auto isIt = [&](const QString & each) { return each.compare(word, Qt::CaseInsensitive) == 0; };
    if (isIt(tableNameOf(in))) {
        at.to.set(in, "tableName", name.toStdString());
    }
    if (isIt(in.getSoftDeleteColumn())) {
        at.to.set(in, "softDeleteColumn", name.toStdString());
    }
    for (const auto & each : in.getListOfProperty(true, false, true)->values()) {
        if (columnNamesOf(*each).contains(word, Qt::CaseInsensitive)) {
            setColumn(at, *each, word, name);
        }
        const auto relation = each->getRelation();
        if (!relation || relation->getType() != model::relationship::many_to_many) {
            continue;
        }
        if (isIt(relation->getExtraTable())) {
            setLink(at, *each, "extraTable", "extraTable", name);
        }
        if (isIt(relation->getForeignKey())) {
            setLink(at, *each, "foreignKey", "foreignKeyOwner", name);
        }
        if (isIt(relation->getForeignKeyOwner())) {
            setLink(at, *each, "foreignKeyOwner", "foreignKey", name);
        }
    }
}

void readable(const patch_place & at)
{
    const QString word = at.word("word");
    const QString name = readableName(word);
    if (!at.entity || name == word) {
        return;
    }
    renameIn(at, *at.entity, word, name);
    const auto target = at.relation ? at.relation->getEntityTarget() : nullptr;
    if (target && target != at.entity) {
        renameIn(at, *target, word, name);
    }
}

void otherName(const patch_place & at)
{
    if (at.entity) {
        renameIn(at, *at.entity, at.word("word"), at.word("word") + QStringLiteral("_2"));
    }
}

void plainTable(const patch_place & at)
{
    if (at.entity) {
        renameIn(at, *at.entity, at.word("word"), QString(at.word("word")).replace(u'.', u'_'));
    }
}

/// Makes the longer of table and column shorter by what a name of both is too long.
void shorter(const patch_place & at)
{
    const qsizetype over = at.word("word").size() - at.known.names.longest.value;
    if (!at.entity || over <= 0 || at.known.names.longest.value == 0) {
        return;
    }
    const QString table = tableNameOf(*at.entity);
    const QStringList columns = at.property ? columnNamesOf(*at.property) : QStringList();
    const bool isTable =
        at.word("word") == table || columns.size() != 1 || table.size() > columns.front().size();
    const QString longest = isTable ? table : columns.front();
    if (longest.size() <= over) {
        return;
    }
    const QString name = longest.left(longest.size() - over);
    if (isTable) {
        at.to.set(*at.entity, "tableName", name.toStdString());
    } else {
        setColumn(at, *at.property, longest, name);
    }
}

/// The name with an end of its own within what the database keeps of it.
QString distinct(const patch_place & at, const QString & name, qsizetype others)
{
    const int longest = at.known.names.longest.value;
    const QString end = QStringLiteral("_2");
    const qsizetype room = longest == 0 ? name.size() : longest - others - end.size();
    return room <= 0 ? QString() : name.left(room) + end;
}

/// Of two names that are one the second gets another end.
void secondName(const patch_place & at)
{
    const QString second = at.word("second");
    if (!at.entity) {
        return;
    }
    if (tableNameOf(*at.entity) == second) {
        at.to.set(*at.entity, "tableName", distinct(at, second, 0).toStdString());
        return;
    }
    for (const auto & each : at.entity->getListOfProperty(true, false, true)->values()) {
        if (columnNamesOf(*each).contains(second)) {
            setColumn(at, *each, second, distinct(at, second, 0));
            return;
        }
    }
    // An index or a foreign key, which is called by table and column with a word before them.
    constexpr qsizetype Joints = 5;
    const QStringList columns = at.property ? columnNamesOf(*at.property) : QStringList();
    const QString name = columns.size() == 1
                             ? distinct(at, columns.front(), tableNameOf(*at.entity).size() + Joints)
                             : QString();
    if (!name.isEmpty()) {
        setColumn(at, *at.property, columns.front(), name);
    }
}

void otherColumn(const patch_place & at)
{
    const QStringList columns = at.property ? columnNamesOf(*at.property) : QStringList();
    if (columns.size() == 1) {
        setColumn(at, *at.property, columns.front(), columns.front() + QStringLiteral("_2"));
    }
}

void otherSoftDelete(const patch_place & at)
{
    if (at.entity) {
        at.to.set(*at.entity, "softDeleteColumn",
                  (at.entity->getSoftDeleteColumn() + QStringLiteral("_mark")).toStdString());
    }
}

void otherLinkTable(const patch_place & at)
{
    const bool isLink = at.relation && at.relation->getType() == model::relationship::many_to_many;
    if (isLink) {
        setLink(at, *at.property, "extraTable", "extraTable",
                at.relation->getExtraTable() + QStringLiteral("_link"));
    }
}

void otherLinkColumn(const patch_place & at)
{
    if (at.relation && at.relation->getForeignKey() == at.relation->getForeignKeyOwner()) {
        setLink(at, *at.property, "foreignKeyOwner", "foreignKey",
                at.relation->getForeignKeyOwner() + QStringLiteral("_2"));
    }
}

/// The name that the table or the column has in the database.
void oldName(const patch_place & at)
{
    const bool isColumn = !at.word("column").isEmpty();
    if (isColumn && at.property) {
        setColumn(at, *at.property, at.word("new"), at.word("column"));
    } else if (!isColumn && at.entity) {
        at.to.set(*at.entity, "tableName", at.word("table").toStdString());
    }
}

/// A name for the version between.
void nameBetween(const patch_place & at)
{
    const QString between = at.word("new") + QStringLiteral("_after");
    const bool isColumn = !at.word("column").isEmpty();
    if (isColumn && at.property) {
        setColumn(at, *at.property, at.word("new"), between);
    } else if (!isColumn && at.entity) {
        at.to.set(*at.entity, "tableName", between.toStdString());
    }
}

/// What gives a name up comes before what takes it.
void freedFirst(const patch_place & at)
{
    const long other = at.word("other_id").toLong();
    if (const auto entity = at.property ? nullptr : at.now.getEntityById(other); entity && at.entity) {
        at.to.move(*entity, *at.entity);
    } else if (const auto property = at.property ? at.entity->getPropertyById(other) : nullptr) {
        at.to.move(*property, *at.property);
    }
}

const patch_rule Patches[] = {
    {"KV101", readable},    {"KV102", readable},        {"KV103", shorter},        {"KV104", secondName},
    {"KV105", secondName},  {"KV106", otherSoftDelete}, {"KV123", otherLinkTable}, {"KV124", plainTable},
    {"KV125", otherColumn}, {"KV126", otherColumn},     {"KV128", readable},       {"KV130", otherName},
    {"KV131", otherName},   {"KV134", otherLinkColumn}, {"KV136", otherLinkTable}, {"KV203", nameBetween},
    {"KV204", nameBetween}, {"KV205", freedFirst},      {"KV206", oldName},
};

} // namespace

std::span<const patch_rule> namePatches()
{
    return Patches;
}

} // namespace check
