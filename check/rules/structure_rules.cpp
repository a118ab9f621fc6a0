// Columns, relationships and link tables that the model asks for and the script cannot make.

#include "check/rules/found_words.h"
#include "check/rules/refusal_rules.h"
#include "check/view/told_statement.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>

namespace check {

namespace {

using database::refusal_cause;

bool makesLinkTable(const told_statement & of)
{
    return of.record().action == plugin::statement_action::create_extra_table;
}

/// The many-to-many relationship that the statement is about.
std::shared_ptr<model::relationship> linkOf(const told_statement & of)
{
    const std::shared_ptr<model::relationship> relation = of.relationship();
    return relation && relation->getType() == model::relationship::many_to_many ? relation : nullptr;
}

found selfLinkOneName(const told_statement & of)
{
    const std::shared_ptr<model::relationship> link = makesLinkTable(of) ? linkOf(of) : nullptr;
    const bool isTwice =
        link && (of.isFor(refusal_cause::column_exists) || of.isFor(refusal_cause::relation_exists)) &&
        link->getForeignKey() == link->getForeignKeyOwner();
    return isTwice ? found(with("column", link->getForeignKey())) : std::nullopt;
}

/// An entity of the model that has the name of the statement's link table, or the other way round.
found linkTableNameTaken(const told_statement & of)
{
    const model_names * const names = of.in().names(moment::now);
    if (names == nullptr) {
        return {};
    }
    if (const auto * const made = of.asks<database::create_table>();
        made != nullptr && of.isFor(refusal_cause::relation_exists)) {
        const auto entities = names->entitiesOf(made->table.text);
        if (makesLinkTable(of) && !entities.empty()) {
            return with("other", entities.front()->getName());
        }
        const auto links = names->linksOf(made->table.text);
        const auto owner = makesLinkTable(of) || links.empty() ? nullptr : links.front()->getProperty();
        return owner ? found(with("other", nameOf(*owner))) : std::nullopt;
    }
    const std::shared_ptr<model::relationship> link =
        of.isFor(refusal_cause::key_column_missing) ? linkOf(of) : nullptr;
    const auto entities =
        link ? names->entitiesOf(link->getExtraTable()) : std::vector<std::shared_ptr<model::entity>>();
    return entities.empty() ? std::nullopt : found(with("other", entities.front()->getName()));
}

found impliedNameTaken(const told_statement & of)
{
    const bool isMade =
        of.asks<database::create_table>() != nullptr && of.isFor(refusal_cause::relation_exists);
    if (!isMade || !of.known().scopes.namesKeysAndSequences.value) {
        return {};
    }
    const QString kind = of.said().object.section(QLatin1Char(' '), 0, 0);
    return kind == QLatin1String("table") || kind == QLatin1String("index")
               ? std::nullopt
               : found(with("word", of.said().object.section(QLatin1Char(' '), 1)));
}

found missingOwnColumn(const told_statement & of)
{
    const std::shared_ptr<model::relationship> relation = of.relationship();
    const auto isOneToOne = [](const std::shared_ptr<model::relationship> & each) {
        return each && each->getType() == model::relationship::one_to_one;
    };
    if (!of.isFor(refusal_cause::key_column_missing)) {
        return {};
    }
    const QString column = of.said().object.section(QLatin1Char('.'), -1);
    if (of.asks<database::add_foreign_key>() != nullptr && isOneToOne(relation)) {
        return with("column", column);
    }
    const std::shared_ptr<model::entity> entity = of.entity();
    if (!entity || of.asks<database::create_table>() == nullptr) {
        return {};
    }
    const auto relations = entity->getListOfRelation()->values();
    const auto first = std::find_if(relations.begin(), relations.end(), isOneToOne);
    return first == relations.end()
               ? std::nullopt
               : found(values{{QStringLiteral("column"), column},
                              {QStringLiteral("subject"), nameOf(*(*first)->getProperty())}});
}

found linksShareTable(const told_statement & of)
{
    const std::shared_ptr<model::relationship> link =
        of.isFor(refusal_cause::key_column_missing) ? linkOf(of) : nullptr;
    const model_names * const names = of.in().names(moment::now);
    if (!link || names == nullptr) {
        return {};
    }
    for (const std::shared_ptr<model::relationship> & each : names->linksOf(link->getExtraTable())) {
        if (each->getId() != link->getId() && each->getId() != link->getInverseId()) {
            const std::shared_ptr<model::property> owner = each->getProperty();
            return with("other", owner ? nameOf(*owner) : QString());
        }
    }
    return {};
}

/// Whether both ends of a many-to-many relationship are there in the model before the step, so that no end
/// makes the link table.
bool isBetweenOldEntities(const told_statement & of, const model::relationship & link)
{
    const model::project * const before = of.in().project(moment::before);
    return before != nullptr && before->getEntityById(of.record().entity) != nullptr &&
           before->getEntityById(link.getEntityTargetId()) != nullptr;
}

bool isMissingLinkTable(const told_statement & of)
{
    return of.asks<database::add_foreign_key>() != nullptr && of.isFor(refusal_cause::table_missing);
}

found linkWithoutKey(const told_statement & of)
{
    const std::shared_ptr<model::relationship> link = isMissingLinkTable(of) ? linkOf(of) : nullptr;
    if (!link) {
        return {};
    }
    const std::shared_ptr<model::entity> own = of.entity();
    const std::shared_ptr<model::entity> target = link->getEntityTarget();
    for (const std::shared_ptr<model::entity> & end : {own, target}) {
        if (end && !end->getPropertyId(true)) {
            return values{{QStringLiteral("other"), end->getName()},
                          {QStringLiteral("link"), link->getExtraTable()}};
        }
    }
    return {};
}

found foreignKeyWithoutLinkTable(const told_statement & of)
{
    const std::shared_ptr<model::relationship> link = isMissingLinkTable(of) ? linkOf(of) : nullptr;
    return link && isBetweenOldEntities(of, *link) ? found(with("link", link->getExtraTable()))
                                                   : std::nullopt;
}

found targetNotExported(const told_statement & of)
{
    const std::shared_ptr<model::relationship> relation =
        of.isFor(refusal_cause::target_missing) ? of.relationship() : nullptr;
    const std::shared_ptr<model::entity> target = relation ? relation->getEntityTarget() : nullptr;
    return target && !of.in().made().hasTableOf(target->getId()) ? found(with("other", target->getName()))
                                                                 : std::nullopt;
}

const refusal_rule Rules[] = {
    {{QLatin1String("KV134"), effect::refused,
      "{db} refuses to make the link table '{table}' of '{subject}': both its columns are called '{column}'.",
      "\"foreignKey\" and \"foreignKeyOwner\" are the two columns of one table.",
      "Give \"foreignKey\" and \"foreignKeyOwner\" different names."},
     selfLinkOneName},
    {{QLatin1String("KV123"), effect::refused,
      "{db} refuses the statement about '{subject}': a link table and the table of '{other}' have one name.",
      "The link table of a many-to-many relationship is a table of its own.",
      "Choose another name in \"extraTable\"."},
     linkTableNameTaken},
    {{QLatin1String("KV130"), effect::refused,
      "{db} refuses to make table '{table}': the name '{word}' is taken by a sequence, a key or an index.",
      "The database names the sequences of auto-increment columns, keys and unique columns itself, and they "
      "share "
      "their names with tables and with each other.",
      "Choose other, shorter names in \"tableName\" or \"columnName\"."},
     impliedNameTaken},
    {{QLatin1String("KV110"), effect::refused,
      "{db} refuses the foreign key of '{subject}': its table has no column '{column}'.",
      "A one-to-one relationship makes no column of its own; it uses one that a property has.",
      "Name the column of a property of '{entity}', its key for instance, in \"columnName\" of the "
      "relationship."},
     missingOwnColumn},
    {{QLatin1String("KV136"), effect::refused,
      "{db} refuses the foreign key of '{subject}': the link table is made once, with the columns of "
      "'{other}'.",
      "Two many-to-many relationships name one \"extraTable\".", "Give each a link table of its own."},
     linksShareTable},
    {{QLatin1String("KV135"), effect::refused,
      "{db} refuses the foreign key of '{subject}': there is no link table '{link}', as '{other}' has no "
      "identifier.",
      "A link table refers to the keys of both ends, so it is not made without them.",
      "Give '{other}' an identifier."},
     linkWithoutKey},
    {{QLatin1String("KV213"), effect::refused,
      "{db} refuses the foreign key of '{subject}': the link table '{link}' is not made.",
      "A step makes a link table only together with the table of one of its ends; both are there already.",
      "Make the table '{link}' yourself before the script; the foreign keys then run."},
     foreignKeyWithoutLinkTable},
    {{QLatin1String("KV111"), effect::refused,
      "{db} refuses the foreign key of '{subject}' unless there is a table '{target}'.",
      "'{other}' is left out of the scripts by its meta-data \"DDL_EXPORT_CREATE_TABLE\".",
      "Make the table before the script, or let the script make it."},
     targetNotExported},
};

} // namespace

std::span<const refusal_rule> structureRules()
{
    return Rules;
}

} // namespace check
