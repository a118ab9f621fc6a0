// What a step cannot do to tables and columns that are there.

#include "check/rules/found_words.h"
#include "check/rules/refusal_rules.h"
#include "check/view/told_statement.h"

#include "database/facts/names.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <algorithm>

namespace check {

namespace {

using database::refusal_cause;

bool isOneColumn(const database::facts & known, const QString & a, const QString & b)
{
    const auto key = [&](const QString & name) {
        return database::nameKey(known, name, database::name_place::other);
    };
    return key(a) == key(b);
}

/// The names that a statement renames from and to.
struct renaming
{
    QString from;
    QString to;
};

std::optional<renaming> renamedColumn(const told_statement & of)
{
    if (const auto * const asked = of.asks<database::rename_column>()) {
        return renaming{asked->from.text, asked->to.text};
    }
    const auto * const asked = of.asks<database::change_column>();
    return asked == nullptr ? std::nullopt
                            : std::optional(renaming{asked->from.text, asked->definition.name.text});
}

found caseOnlyRename(const told_statement & of)
{
    if (const auto * const asked = of.asks<database::rename_table>();
        asked != nullptr && of.isFor(refusal_cause::relation_exists)) {
        return only(differOnlyInCase(asked->from.text, asked->to.text));
    }
    const std::optional<renaming> column = renamedColumn(of);
    return only(column && of.isFor(refusal_cause::column_exists) &&
                differOnlyInCase(column->from, column->to));
}

found ontoTakenTable(const told_statement & of)
{
    return only(of.asks<database::rename_table>() != nullptr && of.isFor(refusal_cause::relation_exists));
}

found ontoTakenColumn(const told_statement & of)
{
    return only(renamedColumn(of) && of.isFor(refusal_cause::column_exists));
}

/// The property of the model before the step that has the column, other than the statement's own.
std::shared_ptr<model::property> ownerOfColumn(const told_statement & of, moment when, const QString & column)
{
    const std::shared_ptr<model::entity> entity = of.entity(when);
    if (!entity) {
        return nullptr;
    }
    for (const auto & each : entity->getListOfProperty(true, false, true)->values()) {
        if (each->getId() == of.record().property) {
            continue;
        }
        for (const QString & name : columnNamesOf(*each)) {
            if (isOneColumn(of.known(), name, column)) {
                return each;
            }
        }
    }
    return nullptr;
}

found freedTooLateTable(const told_statement & of)
{
    const auto * const made = of.asks<database::create_table>();
    const model_names * const before = of.in().names(moment::before);
    if (made == nullptr || before == nullptr || !of.isFor(refusal_cause::relation_exists)) {
        return {};
    }
    for (const std::shared_ptr<model::entity> & each : before->entitiesOf(made->table.text)) {
        if (each->getId() != of.record().entity) {
            return values{{QStringLiteral("other"), each->getName()},
                          {QStringLiteral("other_id"), QString::number(each->getId())},
                          {QStringLiteral("word"), made->table.text}};
        }
    }
    return {};
}

found freedTooLate(const told_statement & of)
{
    const auto * const added = of.asks<database::add_column>();
    if (added == nullptr || !of.isFor(refusal_cause::column_exists)) {
        return freedTooLateTable(of);
    }
    const QString column = added->definition.name.text;
    const std::shared_ptr<model::property> before = ownerOfColumn(of, moment::before, column);
    const std::shared_ptr<model::property> now = ownerOfColumn(of, moment::now, column);
    const std::shared_ptr<model::entity> entity = of.entity(moment::now);
    const bool isRenamed = before && !now && entity && entity->getPropertyById(before->getId()) != nullptr;
    return isRenamed ? found(values{{QStringLiteral("other"), nameOf(*before)},
                                    {QStringLiteral("other_id"), QString::number(before->getId())},
                                    {QStringLiteral("word"), column}})
                     : std::nullopt;
}

found linkTableLeft(const told_statement & of)
{
    const auto * const made = of.asks<database::create_table>();
    return only(made != nullptr && of.isFor(refusal_cause::relation_exists) &&
                of.in().made().isLinkTable(made->table.text));
}

found switchedOn(const told_statement & of)
{
    const std::shared_ptr<model::entity> before = of.entity(moment::before);
    return only(of.isFor(refusal_cause::table_missing) && before && of.entity(moment::now) &&
                !of.in().made().hasTableOf(before->getId()));
}

/// Whether the property has another count of columns than before the step.
bool hasOtherColumnCount(const told_statement & of)
{
    const std::shared_ptr<model::property> before = of.property(moment::before);
    const std::shared_ptr<model::property> now = of.property(moment::now);
    return before && now && columnNamesOf(*before).size() != columnNamesOf(*now).size();
}

found compositeKeyColumn(const told_statement & of)
{
    const bool isDropped = of.isFor(refusal_cause::column_of_key);
    const bool isAdded = of.isFor(refusal_cause::column_exists) &&
                         of.asks<database::add_column>() != nullptr && hasOtherColumnCount(of);
    return only(isDropped || isAdded);
}

found columnThereAlready(const told_statement & of)
{
    return only(of.asks<database::add_column>() != nullptr && of.isFor(refusal_cause::column_exists));
}

found lastColumn(const told_statement & of)
{
    return only(of.isFor(refusal_cause::last_column));
}

found notNullAdded(const told_statement & of)
{
    return only(of.isFor(refusal_cause::not_null_added));
}

found uniqueAdded(const told_statement & of)
{
    return only(of.isFor(refusal_cause::unique_added) || of.isFor(refusal_cause::values_repeat));
}

found indexOnUnrenamed(const told_statement & of)
{
    const std::shared_ptr<model::property> before = of.property(moment::before);
    const std::shared_ptr<model::property> now = of.property(moment::now);
    const bool isRenamed = before && now && columnNamesOf(*before) != columnNamesOf(*now);
    return of.isFor(refusal_cause::key_column_missing) && of.asks<database::create_index>() != nullptr &&
                   isRenamed
               ? found(with("old", columnNamesOf(*before).join(QStringLiteral(", "))))
               : std::nullopt;
}

found restated(const told_statement & of)
{
    using enum refusal_cause;
    return only(of.asks<database::change_column>() != nullptr &&
                of.isForAny({values_lost, values_converted, values_cut, values_cut_converted, nulls_lost}));
}

const refusal_rule Rules[] = {
    {{QLatin1String("KV206"), effect::refused,
      "{db} refuses to rename '{subject}': it takes the new name '{new}' for the old one.",
      "The names differ in capital and small letters only, which the database does not tell apart.",
      "Keep the old spelling in \"tableName\" or \"columnName\"; the name in the program can change all the "
      "same."},
     caseOnlyRename},
    {{QLatin1String("KV203"), effect::refused,
      "{db} refuses to rename the table of '{entity}' from '{table}' to '{new}': that name is taken when the "
      "statement runs.",
      "Tables are renamed one after another in the order of the model, so a name that another table gives up "
      "later in the script is not free yet.",
      "Take two versions: rename '{entity}' to a name that nothing has, tag, then to '{new}'."},
     ontoTakenTable},
    {{QLatin1String("KV204"), effect::refused,
      "{db} refuses to rename the column of '{subject}' from '{column}' to '{new}': table '{table}' has that "
      "name when the statement runs.",
      "Columns are renamed one after another in the order of the properties, so a name that another column "
      "gives up later in the script is not free yet.",
      "Take two versions: rename '{subject}' to a name that nothing has, tag, then to '{new}'."},
     ontoTakenColumn},
    {{QLatin1String("KV225"), effect::refused,
      "{db} refuses the statement about '{subject}': a column cannot be taken out of a key of several "
      "columns.",
      "The key of '{entity}' has another number of columns than before, and the script drops and adds "
      "columns without changing the key of the table.",
      "Change the key yourself before the script: drop it, change the columns, add it again."},
     compositeKeyColumn},
    {{QLatin1String("KV219"), effect::refused,
      "{db} refuses to make table '{table}': a link table of that name is still there.",
      "A many-to-many relationship that is dropped from the model leaves its link table in the database.",
      "Run DROP TABLE {table} before the script, once nothing in it is needed."},
     linkTableLeft},
    {{QLatin1String("KV205"), effect::refused,
      "{db} refuses the statement about '{subject}': '{word}' is still the name of '{other}' when it runs.",
      "'{other}' gives the name up in the same script, but later.",
      "Put '{other}' before '{subject}' in the model, or take two versions: rename first, tag, then add."},
     freedTooLate},
    {{QLatin1String("KV212"), effect::refused,
      "{db} refuses the statement about '{subject}': there is no table '{table}'.",
      "'{entity}' was left out of the scripts so far, and a step changes tables that it takes for being "
      "there.",
      "Make the table yourself before the script, as the full script does."},
     switchedOn},
    {{QLatin1String("KV215"), effect::refused,
      "{db} refuses to add the column '{column}' of '{subject}': table '{table}' has one of that name.",
      "The column belongs to another property, or was left by an earlier step that did not drop or rename "
      "it.",
      "If the column that is there is the right one, have the custom script return an empty text for this "
      "ADD_COLUMN; else choose another \"columnName\"."},
     columnThereAlready},
    {{QLatin1String("KV218"), effect::refused,
      "{db} refuses to drop the column '{column}' of table '{table}': it is the last one when the statement "
      "runs.",
      "All properties were replaced, and columns are dropped before new ones are added.",
      "Take two versions: add the new properties, tag, then drop the old ones."},
     lastColumn},
    {{QLatin1String("KV201"), effect::refused,
      "{db} refuses to add the column '{column}' to table '{table}' if the table has rows: rows that are "
      "there would have no value in it.",
      "'{property}' must not be null, and the statement gives no default.",
      "Add the property with \"allowNull\": true, fill the column, then ask for NOT NULL yourself."},
     notNullAdded},
    {{QLatin1String("KV202"), effect::refused,
      "{db} refuses to add the unique column '{column}' to table '{table}'.",
      "A column that is unique cannot be added to a table that is there, or not to one with several rows "
      "that would all get the same value.",
      "Leave \"unique\" out and make a unique index of your own after the script: CREATE UNIQUE INDEX … ON "
      "{table} ({column})."},
     uniqueAdded},
    {{QLatin1String("KV211"), effect::refused,
      "{db} refuses the index of '{subject}': table '{table}' has no column '{column}', it is still called "
      "'{old}'.",
      "Scripts for this database do not rename columns, they leave a comment.",
      "Run ALTER TABLE {table} RENAME COLUMN {old} TO {column} before, or have the custom script write it "
      "(action RENAME_COLUMN)."},
     indexOnUnrenamed},
    {{QLatin1String("KV307"), effect::refused,
      "{db} refuses to rename the column '{column}' of table '{table}' if a row holds a value that does not "
      "fit: the statement makes it {type} as well.",
      "Renaming a column repeats its type and whether it may be null; they differ from what the table has, "
      "perhaps "
      "since an earlier version that wrote nothing about it. Without a strict sql_mode values are changed "
      "instead.",
      "Change type and null in a statement of your own first, and look at the values that it would lose."},
     restated},
};

} // namespace

std::span<const refusal_rule> tableStepRules()
{
    return Rules;
}

} // namespace check
