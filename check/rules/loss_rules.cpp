// What is lost, or becomes something else, though the statement runs.

#include "check/rules/loss_rules.h"

#include "check/rules/found_words.h"
#include "check/view/told_statement.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <algorithm>
#include <iterator>

namespace check {

namespace {

using database::loss_kind;

struct loss_rule
{
    loss_kind kind;
    occasion when;
    rule_text about;
    /// What its texts need beside the names of the statement itself; none when it does not apply. In the list
    /// the first that applies is told.
    std::optional<values> (*applies)(const told_statement & of);
};

found always(const told_statement &)
{
    return values();
}

/// The column of a new table that has others in its type.
found joinedColumn(const told_statement & of)
{
    const auto * const asked = of.asks<database::create_table>();
    if (asked == nullptr) {
        return {};
    }
    const auto first = std::find_if(asked->columns.begin(), asked->columns.end(),
                                    [](const auto & each) { return each.type.contains(u'`'); });
    return first == asked->columns.end() ? std::nullopt : found(with("column", first->name.text));
}

found isExportedNoMore(const told_statement & of)
{
    return of.entity(moment::now) ? found(values()) : std::nullopt;
}

/// An entity that is new and whose table has the name of the dropped one.
found hasSuccessor(const told_statement & of)
{
    const auto * const asked = of.asks<database::drop_table>();
    const model_names * const names = of.in().names(moment::now);
    const model::project * const before = of.in().project(moment::before);
    if (asked == nullptr || names == nullptr || before == nullptr) {
        return {};
    }
    for (const auto & each : names->entitiesOf(asked->table.text)) {
        if (!before->getEntityById(each->getId())) {
            return with("id", QString::number(of.record().entity));
        }
    }
    return {};
}

/// The property that has the dropped column in the model after the step, other than the statement's own.
std::shared_ptr<model::property> otherOwner(const told_statement & of)
{
    const auto * const asked = of.asks<database::drop_column>();
    const std::shared_ptr<model::entity> entity = of.entity(moment::now);
    if (asked == nullptr || !entity) {
        return nullptr;
    }
    const auto properties = entity->getListOfProperty(true, false, true)->values();
    const auto other = std::find_if(properties.begin(), properties.end(), [&](const auto & each) {
        return each->getId() != of.record().property && columnNamesOf(*each).contains(asked->column.text);
    });
    return other == properties.end() ? nullptr : *other;
}

found isShared(const told_statement & of)
{
    const std::shared_ptr<model::property> other = otherOwner(of);
    const std::shared_ptr<model::entity> before = of.entity(moment::before);
    return other && before && before->getPropertyById(other->getId()) ? found(with("other", nameOf(*other)))
                                                                      : std::nullopt;
}

found hasNewOwner(const told_statement & of)
{
    return otherOwner(of) ? found(with("id", QString::number(of.record().property))) : std::nullopt;
}

found isMoved(const told_statement & of)
{
    const std::shared_ptr<model::property> now = of.property(moment::now);
    return now && now->getEntityId() != of.record().entity ? found(with("other", nameOf(*now)))
                                                           : std::nullopt;
}

found hasOtherColumnCount(const told_statement & of)
{
    const std::shared_ptr<model::property> now = of.property(moment::now);
    return now && !now->isTransient() && !columnNamesOf(*now).isEmpty() ? found(values()) : std::nullopt;
}

bool makesName(const told_statement & of)
{
    return of.asks<database::create_table>() != nullptr || of.asks<database::create_index>() != nullptr ||
           of.asks<database::add_column>() != nullptr || of.asks<database::rename_table>() != nullptr ||
           of.asks<database::rename_column>() != nullptr || of.asks<database::add_foreign_key>() != nullptr;
}

found isNewName(const told_statement & of)
{
    return makesName(of) ? found(with("most", QString::number(of.known().names.longest.value)))
                         : std::nullopt;
}

const loss_rule Rules[] = {
    {loss_kind::rows,
     occasion::rows,
     {QLatin1String("KV304"), effect::loss,
      "Table '{table}' is dropped with all its rows, and made anew, empty, for a new entity.",
      "The entity with the id {id} is gone from the model, and another one has its table name; only the id "
      "tells that something was renamed.",
      "If it is the same entity, write the id {id} into the new one; else this is right, accept it."},
     hasSuccessor},
    {loss_kind::rows,
     occasion::rows,
     {QLatin1String("KV303"), effect::loss, "Table '{table}' of '{entity}' is dropped with all its rows.",
      "'{entity}' is left out of the scripts now (meta-data \"DDL_EXPORT_CREATE_TABLE\"), which a step takes "
      "for a dropped entity.",
      "To keep the table, have the custom script return an empty text for this DROP_TABLE."},
     isExportedNoMore},
    {loss_kind::rows,
     occasion::rows,
     {QLatin1String("KV301"), effect::loss, "Table '{table}' of '{entity}' is dropped with all its rows.",
      "The entity is gone from the model.",
      "Save what is needed before the script. If this is meant, accept it."},
     always},
    {loss_kind::values,
     occasion::rows,
     {QLatin1String("KV310"), effect::loss,
      "The column '{column}' of table '{table}' is dropped with its values, though '{other}' has it too.",
      "The relationship '{subject}' was dropped, and the script drops its column with it.",
      "Have the custom script return an empty text for this DROP_COLUMN."},
     isShared},
    {loss_kind::values,
     occasion::rows,
     {QLatin1String("KV304"), effect::loss,
      "The column '{column}' of table '{table}' is dropped with its values, and added anew, empty, for a new "
      "property.",
      "The property with the id {id} is gone from the model, and another one has its column; only the id "
      "tells that something was renamed.",
      "If it is the same property, write the id {id} into the new one; else this is right, accept it."},
     hasNewOwner},
    {loss_kind::values,
     occasion::rows,
     {QLatin1String("KV305"), effect::loss,
      "The column '{column}' of table '{table}' is dropped with its values: the property is now '{other}'.",
      "A property that moves to another entity is dropped in one table and added, empty, to the other.",
      "Take two versions, with the property in both entities in the first one, and copy the values between "
      "them with an UPDATE of your own."},
     isMoved},
    {loss_kind::values,
     occasion::rows,
     {QLatin1String("KV306"), effect::loss,
      "The column '{column}' of table '{table}' is dropped with its values: '{property}' has another number "
      "of columns now.",
      "Columns that are not as many as before are all dropped, and added anew, empty.",
      "Take two versions, with a new property of the new columns in the first one, and copy the values "
      "between them."},
     hasOtherColumnCount},
    {loss_kind::values,
     occasion::rows,
     {QLatin1String("KV302"), effect::loss,
      "The column '{column}' of table '{table}' is dropped with its values.",
      "'{subject}' is gone from the model, or has no column any more.",
      "Save what is needed before the script. If this is meant, accept it."},
     always},
    {loss_kind::counter,
     occasion::always,
     {QLatin1String("KV308"), effect::loss, "The key '{new}' of table '{table}' is no longer auto-increment.",
      "Renaming a column repeats its type, and the statement does not repeat AUTO_INCREMENT; the next row "
      "without a value for the key is refused.",
      "Have the custom script add NOT NULL AUTO_INCREMENT to this RENAME_COLUMN."},
     always},
    {loss_kind::trigger,
     occasion::always,
     {QLatin1String("KV308"), effect::loss,
      "No row can be put into table '{table}' any more: the trigger that counts the key '{new}' knows it as "
      "'{column}'.",
      "Renaming a column leaves the text of triggers as it is, and one that does not compile fails every "
      "INSERT and UPDATE of its table.",
      "Make the trigger anew after this statement, with the new name of the column: the full script of this "
      "version has it."},
     always},
    {loss_kind::filled,
     occasion::rows,
     {QLatin1String("KV201"), effect::loss,
      "Rows of table '{table}' get a value in the new column '{column}' that nobody gave.",
      "'{property}' must not be null and has no default, so the database fills in 0, an empty text, or a "
      "date of zeros.",
      "Add the property with \"allowNull\": true, fill the column, then ask for NOT NULL yourself."},
     always},
    {loss_kind::name_cut,
     occasion::always,
     {QLatin1String("KV103"), effect::differs,
      "{db} cuts a name in the statement about '{subject}' to {most} bytes.",
      "Longer names are cut without an error; a program that asks for the whole name finds it, as that is "
      "cut as well.",
      "Shorten \"tableName\" or \"columnName\", so that the name is whole."},
     isNewName},
    {loss_kind::index_cut,
     occasion::always,
     {QLatin1String("KV118"), effect::differs,
      "The index of '{subject}' holds only the beginning of each value.",
      "The column's type is longer than an index can hold.",
      "Force a shorter type, or switch \"index\" off."},
     always},
    {loss_kind::nothing_done,
     occasion::always,
     {QLatin1String("KV411"), effect::silent, "The foreign key '{constraint}' of table '{table}' stays.",
      "The table has a unique column of long text, which is kept as a hash; in such a table DROP CONSTRAINT "
      "reports success and does nothing.",
      "Have the custom script write ALTER TABLE {table} DROP FOREIGN KEY {constraint} (action "
      "DROP_FOREIGN_KEY)."},
     always},
    {loss_kind::other_renamed,
     occasion::always,
     {QLatin1String("KV130"), effect::differs,
      "The statement renames a sequence or an index called '{table}', not a table.",
      "The table of that name was never made, as the name was taken; the statement takes whatever has it.",
      "Choose another \"tableName\" for '{entity}'."},
     always},
    {loss_kind::column_not_made,
     occasion::always,
     {QLatin1String("KV101"), effect::differs, "Table '{table}' gets no column 'constraint'.",
      "At the end of the table the word is read as the beginning of a constraint, without any error.",
      "Choose another name in \"columnName\"."},
     always},
    {loss_kind::columns_joined,
     occasion::always,
     {QLatin1String("KV102"), effect::differs,
      "Table '{table}' gets a column '{column}' whose type is made of the columns after it.",
      "A grave accent begins a name in quotes, and that in the name of a later column ends it. {db} reads "
      "what "
      "stands between the two as a word of the type, without any error.",
      "Choose names without grave accents in \"columnName\"."},
     joinedColumn},
    {loss_kind::key,
     occasion::always,
     {QLatin1String("KV403"), effect::differs, "Table '{table}' has no primary key from this statement on.",
      "The key went with its column, and a step adds columns, but no keys.",
      "Run ALTER TABLE {table} ADD PRIMARY KEY (…) of your own after the script."},
     always},
};

const rule_text NotJudged = {
    QLatin1String("KV805"), effect::advice, "The statement is not judged: its form is not known.",
    "It comes from the custom script; what follows is judged as if it changed nothing.",
    "Look at it yourself, and try it on a copy of the database."};

} // namespace

std::optional<finding> explainLoss(const told_statement & of, const database::loss & lost)
{
    for (const loss_rule & each : Rules) {
        const std::optional<values> more = each.kind == lost.kind ? each.applies(of) : std::nullopt;
        if (more) {
            values words = of.words();
            words.insert(*more);
            finding told = findingOf(each.about, words);
            told.when = each.when;
            told.weight = each.about.what == effect::differs ? severity::warning : told.weight;
            return told;
        }
    }
    return {};
}

finding notJudged(const told_statement & of)
{
    return findingOf(NotJudged, of.words());
}

} // namespace check
