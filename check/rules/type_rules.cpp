// Types, keys and sizes that a database does not take.

#include "check/rules/found_words.h"
#include "check/rules/refusal_rules.h"
#include "check/view/told_statement.h"

#include "database/facts/known_types.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace check {

namespace {

using database::refusal_cause;

/// The column that the refusal is about, without its table.
QString columnOf(const told_statement & of)
{
    return of.said().object.section(QLatin1Char('.'), -1);
}

bool isWithoutKey(const std::shared_ptr<model::relationship> & relation)
{
    return relation && relation->hasColumns() && !relation->getKeyProperty();
}

/// The relationship of the statement, or of a table that it makes, whose target has no key.
std::shared_ptr<model::relationship> relationshipWithoutKey(const told_statement & of)
{
    if (const auto own = of.relationship(); isWithoutKey(own)) {
        return own;
    }
    const std::shared_ptr<model::entity> entity = of.entity();
    if (!entity || of.asks<database::create_table>() == nullptr) {
        return nullptr;
    }
    const auto relations = entity->getListOfRelation()->values();
    const auto first = std::find_if(relations.begin(), relations.end(), isWithoutKey);
    return first == relations.end() ? nullptr : *first;
}

found targetWithoutKey(const told_statement & of)
{
    const std::shared_ptr<model::relationship> relation =
        of.isFor(refusal_cause::syntax) ? relationshipWithoutKey(of) : nullptr;
    if (!relation) {
        return {};
    }
    const std::shared_ptr<model::entity> target = relation->getEntityTarget();
    const std::shared_ptr<model::property> owner = relation->getProperty();
    return values{{QStringLiteral("property"), owner ? nameOf(*owner) : QString()},
                  {QStringLiteral("other"), target ? target->getName() : QStringLiteral("?")}};
}

found noColumns(const told_statement & of)
{
    const auto * const made = of.asks<database::create_table>();
    return only(of.isForAny({refusal_cause::syntax, refusal_cause::table_without_columns}) &&
                made != nullptr && made->columns.empty());
}

/// An identifier of several columns that is auto-increment.
bool hasCountedCompositeKey(const told_statement & of)
{
    const std::shared_ptr<model::entity> entity = of.entity();
    const std::shared_ptr<model::property> key = entity ? entity->getPropertyId(true) : nullptr;
    return key && columnNamesOf(*key).size() > 1;
}

bool isAboutCounting(const told_statement & of)
{
    return of.isFor(refusal_cause::counted_not_possible) || of.isFor(refusal_cause::several_counted);
}

found countedCompositeKey(const told_statement & of)
{
    return only(isAboutCounting(of) && hasCountedCompositeKey(of));
}

found countedKeyType(const told_statement & of)
{
    return isAboutCounting(of) ? found(with("type", QString(of.known().types.countableType.value)))
                               : std::nullopt;
}

/// The column of the statement whose type the database does not take; null when there is none.
const database::column_definition * columnOfRefusedType(const told_statement & of)
{
    const auto isRefused = [&](const database::column_definition & each) {
        return !each.type.isEmpty() && database::refusalOf(of.known(), each.type) != refusal_cause::none;
    };
    if (const auto * const made = of.asks<database::create_table>()) {
        const auto first = std::find_if(made->columns.begin(), made->columns.end(), isRefused);
        return first == made->columns.end() ? nullptr : &*first;
    }
    const auto * const added = of.asks<database::add_column>();
    const auto * const changed = of.asks<database::change_column>();
    const auto * const only = added != nullptr     ? &added->definition
                              : changed != nullptr ? &changed->definition
                                                   : nullptr;
    return only != nullptr && isRefused(*only) ? only : nullptr;
}

found unknownType(const told_statement & of)
{
    const bool isType = of.isForAny({refusal_cause::unknown_type, refusal_cause::type_with_length,
                                     refusal_cause::length_too_large, refusal_cause::text_too_long,
                                     refusal_cause::width_too_large, refusal_cause::precision_too_large,
                                     refusal_cause::specifier_impossible, refusal_cause::syntax});
    const database::column_definition * const column = isType ? columnOfRefusedType(of) : nullptr;
    return column == nullptr ? std::nullopt
                             : found(values{{QStringLiteral("type"), column->type},
                                            {QStringLiteral("column"), column->name.text}});
}

found softDeleteType(const told_statement & of)
{
    const std::shared_ptr<model::entity> entity = of.entity();
    found words = unknownType(of);
    const bool isSoftDelete = words && entity && of.asks<database::create_table>() != nullptr &&
                              words->value(QStringLiteral("column")) == entity->getSoftDeleteColumn();
    return isSoftDelete ? words : std::nullopt;
}

found keyTooLong(const told_statement & of)
{
    return of.isFor(refusal_cause::key_too_long)
               ? found(with("most", QString::number(of.known().keys.longest.value)))
               : std::nullopt;
}

found tooMany(const told_statement & of)
{
    const database::limit_facts & limits = of.known().limits;
    struct limit
    {
        const char * words;
        refusal_cause cause;
        int most;
    };
    const limit all[] = {
        {"has more than %1 columns", refusal_cause::too_many_columns, limits.columns.value},
        {"has more than %1 columns", refusal_cause::too_many_columns_read, limits.columns.value},
        {"has a key of more than %1 columns", refusal_cause::too_many_key_columns, limits.keyColumns.value},
        {"has more than %1 indexes, keys included", refusal_cause::too_many_indexes, limits.indexes.value},
        {"has rows of more than %1 bytes", refusal_cause::row_too_long, limits.row.value},
        {"has rows that do not fit into the %1 bytes of a page", refusal_cause::row_over_page,
         limits.page.value}};
    const auto * const passed = std::find_if(std::begin(all), std::end(all),
                                             [&](const limit & each) { return of.isFor(each.cause); });
    return passed == std::end(all)
               ? std::nullopt
               : found(with("limit", QString::fromLatin1(passed->words).arg(passed->most)));
}

found prefixNotPossible(const told_statement & of)
{
    return of.isFor(refusal_cause::prefix_not_possible) ? found(with("column", columnOf(of))) : std::nullopt;
}

found renamedTextKey(const told_statement & of)
{
    return only(of.isFor(refusal_cause::text_key_without_prefix) &&
                of.asks<database::change_column>() != nullptr);
}

/// The column of the statement that the refusal is about; null when it defines none of that name.
const database::column_definition * definitionOf(const told_statement & of)
{
    const auto isIt = [&](const database::column_definition & each) {
        return each.name.text.compare(columnOf(of), Qt::CaseInsensitive) == 0;
    };
    if (const auto * const made = of.asks<database::create_table>()) {
        const auto found = std::find_if(made->columns.begin(), made->columns.end(), isIt);
        return found == made->columns.end() ? nullptr : &*found;
    }
    const auto * const added = of.asks<database::add_column>();
    return added != nullptr && isIt(added->definition) ? &added->definition : nullptr;
}

QString writtenColumnOf(const told_statement & of)
{
    const database::column_definition * const written = definitionOf(of);
    return written == nullptr ? columnOf(of) : written->name.text;
}

found textInKey(const told_statement & of)
{
    const database::column_definition * const written = definitionOf(of);
    const bool isLong = of.isFor(refusal_cause::key_type_not_indexable) && written != nullptr &&
                        database::isLarge(of.known(), written->type);
    return of.isFor(refusal_cause::text_key_without_prefix) || isLong
               ? found(with("column", writtenColumnOf(of)))
               : std::nullopt;
}

found notIndexable(const told_statement & of)
{
    return of.isForAny({refusal_cause::type_not_indexable, refusal_cause::key_type_not_indexable})
               ? found(with("column", writtenColumnOf(of)))
               : std::nullopt;
}

found indexedTwice(const told_statement & of)
{
    return of.isFor(refusal_cause::columns_indexed) ? found(with("column", writtenColumnOf(of)))
                                                    : std::nullopt;
}

found longTextIndexed(const told_statement & of)
{
    return only(of.isFor(refusal_cause::value_too_long_for_index));
}

found typesDiffer(const told_statement & of)
{
    return only(of.isFor(refusal_cause::target_type_differs));
}

bool isAboutTargetKey(const told_statement & of)
{
    return of.isForAny({refusal_cause::target_not_key, refusal_cause::target_column_count,
                        refusal_cause::column_repeated}) &&
           of.asks<database::add_foreign_key>() != nullptr;
}

/// The entity that the statement's relationship leads to, in one of the models.
std::shared_ptr<model::entity> targetOf(const told_statement & of, moment when)
{
    const std::shared_ptr<model::relationship> relation = of.relationship();
    const model::project * const in = of.in().project(when);
    return relation && in != nullptr ? in->getEntityById(relation->getEntityTargetId()) : nullptr;
}

found keyColumnCount(const told_statement & of)
{
    const std::shared_ptr<model::property> own = of.property();
    const std::shared_ptr<model::entity> target = targetOf(of, moment::now);
    const std::shared_ptr<model::property> key = target ? target->getPropertyId(true) : nullptr;
    if (!isAboutTargetKey(of) || !own || !key) {
        return {};
    }
    const qsizetype count = columnNamesOf(*own).size();
    const qsizetype needed = columnNamesOf(*key).size();
    return count != 0 && count != needed ? found(values{{QStringLiteral("count"), QString::number(count)},
                                                        {QStringLiteral("needed"), QString::number(needed)}})
                                         : std::nullopt;
}

found addedKey(const told_statement & of)
{
    if (!isAboutTargetKey(of)) {
        return {};
    }
    const std::shared_ptr<model::entity> before = targetOf(of, moment::before);
    const std::shared_ptr<model::entity> now = targetOf(of, moment::now);
    return before && now && !before->getPropertyId(true) && now->getPropertyId(true)
               ? found(with("other", now->getName()))
               : std::nullopt;
}

found targetIsNoKey(const told_statement & of)
{
    const std::shared_ptr<model::entity> target = targetOf(of, moment::now);
    return isAboutTargetKey(of) ? found(with("other", target ? target->getName()
                                                             : of.said().object.section(QLatin1Char(' '), 1)))
                                : std::nullopt;
}

const refusal_rule Rules[] = {
    {{QLatin1String("KV109"), effect::refused,
      "{db} refuses the statement about '{property}': '{other}', to which it refers, has no identifier.",
      "The column takes its type from the identifier of the other entity, so that it is written without a "
      "type here.",
      "Give '{other}' an identifier (\"identifier\": true on one property)."},
     targetWithoutKey},
    {{QLatin1String("KV108"), effect::refused,
      "{db} refuses to make table '{table}': it would have no column.",
      "Every property of '{entity}' is transient, or has no column of its own.",
      "Give '{entity}' a property with a column, or leave its table out with the meta-data "
      "\"DDL_EXPORT_CREATE_TABLE\": \"0\"."},
     noColumns},
    {{QLatin1String("KV116"), effect::refused,
      "{db} refuses to make table '{table}': its identifier has several columns and is auto-increment.",
      "One column at most can be auto-increment.",
      "Leave \"autoIncrement\" out, or set it to false, at the identifier of '{entity}'."},
     countedCompositeKey},
    {{QLatin1String("KV115"), effect::refused,
      "{db} refuses the statement about '{subject}': only a key of the type '{type}' can be auto-increment.",
      "The type of the identifier is mapped to, or forced to, another one.",
      "Choose a C++ type that is mapped to '{type}', or set \"autoIncrement\" to false."},
     countedKeyType},
    {{QLatin1String("KV122"), effect::refused,
      "{db} refuses to make table '{table}': it does not take the type '{type}' of the soft-delete column "
      "'{column}'.",
      "The soft-delete column has one type in the scripts for all databases.",
      "Have the custom script write another type (action CREATE_TABLE), or leave the soft-delete column "
      "out."},
     softDeleteType},
    {{QLatin1String("KV113"), effect::refused,
      "{db} refuses the statement about '{subject}': it does not take the type '{type}'.",
      "The type comes from \"forceSqlType\" or from the type mapping; an extension or a type of your own "
      "could bring it.",
      "Choose a type of this database in \"forceSqlType\", or in the type mapping of the export."},
     unknownType},
    {{QLatin1String("KV127"), effect::refused,
      "{db} refuses to make table '{table}': the columns of its key are together longer than {most} bytes.",
      "A text counts with its full length, and with as many bytes for each character as one can have.",
      "Force shorter types on the columns of the key, VARCHAR(100) for instance, or take fewer columns."},
     keyTooLong},
    {{QLatin1String("KV132"), effect::refused,
      "{db} refuses the statement about table '{table}': it {limit}.",
      "Columns, keys and the length of a row have an upper limit each; bounded texts count with their full "
      "length.",
      "Part the entity, drop indexes that nothing needs, or use TEXT in the place of VARCHAR columns."},
     tooMany},
    {{QLatin1String("KV119"), effect::refused,
      "{db} refuses the statement about '{subject}': the column '{column}' has no first 255 characters.",
      "Indexes and keys on text are written for the first 255 characters, whatever type is forced; the type "
      "is a shorter text, or none at all.",
      "Force VARCHAR(255) or a longer text, or give the property the C++ type of a number or a date if it is "
      "one."},
     prefixNotPossible},
    {{QLatin1String("KV222"), effect::refused,
      "{db} refuses to rename the key '{property}' of table '{table}': the statement makes it {type} again, "
      "which cannot be a key.",
      "Renaming a column repeats its type; the table was made with VARCHAR(255), since the key is referred "
      "to.",
      "Force VARCHAR(255) on the key (\"forceSqlType\")."},
     renamedTextKey},
    {{QLatin1String("KV117"), effect::refused,
      "{db} refuses the statement about table '{table}': '{column}' is in a key or an index, or "
      "unique, and of a type without a length.",
      "Keys, indexes and unique columns hold values of a bounded length only.",
      "Force a length, VARCHAR(200) for instance (\"forceSqlType\")."},
     textInKey},
    {{QLatin1String("KV118"), effect::refused,
      "{db} refuses the index on '{column}' of table '{table}': columns of its type cannot be indexed.",
      "An ordinary index puts values in order and bounds their length; types exist for which a database does "
      "not do both.",
      "Switch \"index\" or \"unique\" off, or choose another type."},
     notIndexable},
    {{QLatin1String("KV140"), effect::refused,
      "{db} refuses the index of '{subject}': the column '{column}' of table '{table}' has one already.",
      "A key and a unique column have an index of their own, and {db} makes no second one on the same "
      "columns.",
      "Switch \"index\" off for '{subject}'; that it is a key, or unique, gives it the index."},
     indexedTwice},
    {{QLatin1String("KV224"), effect::advice,
      "The index of '{subject}' takes no text of more than 2,704 bytes: a row with a longer one keeps the "
      "index from being made, and later such a row cannot be written.",
      "{db} puts whole values into an index, and each has to fit into a third of a page, after compression.",
      "Force a bounded type, or have the custom script write an index over an expression (action "
      "CREATE_INDEX)."},
     longTextIndexed},
    {{QLatin1String("KV120"), effect::refused,
      "{db} refuses the foreign key of '{subject}': it is of another type than the key in '{target}'.",
      "A foreign key compares both columns, and the database does not compare these types.",
      "Force the same type on both (\"forceSqlType\")."},
     typesDiffer},
    {{QLatin1String("KV137"), effect::refused,
      "{db} refuses the foreign key of '{subject}': it has columns: {count}, and the key in '{target}': "
      "{needed}.",
      "A foreign key needs a column for each column of the key that it refers to.",
      "Name as many columns in \"columnName\", with bars between, as the key has."},
     keyColumnCount},
    {{QLatin1String("KV223"), effect::refused,
      "{db} refuses the foreign key of '{subject}': the identifier of '{other}' was added in this step, and "
      "its column is no key in the database.",
      "A step adds the column of a new identifier, but not the key.",
      "Run ALTER TABLE {target} ADD PRIMARY KEY ({target_column}) between the two statements."},
     addedKey},
    {{QLatin1String("KV403"), effect::refused,
      "{db} refuses the foreign key of '{subject}': what it refers to in '{target}' is not the key of that "
      "table.",
      "The key of '{other}' was changed in the model; scripts do not change the key of a table that is "
      "there.",
      "Change the key yourself before the script: drop the old one, add the new one."},
     targetIsNoKey},
};

} // namespace

std::span<const refusal_rule> typeRules()
{
    return Rules;
}

} // namespace check
