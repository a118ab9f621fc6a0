// What a step cannot do to indexes and foreign keys that are there.

#include "check/rules/found_words.h"
#include "check/rules/refusal_rules.h"
#include "check/view/told_statement.h"

#include "database/facts/known_types.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>

namespace check {

namespace {

using database::refusal_cause;

/// The name of the foreign key that the refusal is about.
QString nameOfObject(const told_statement & of)
{
    constexpr QLatin1String Kind("foreign key ");
    const QString & object = of.said().object;
    return object.startsWith(Kind) ? object.mid(Kind.size()) : object;
}

found indexKeptOldName(const told_statement & of)
{
    if (!of.isFor(refusal_cause::index_missing)) {
        return {};
    }
    const QString old = of.in().made().indexOf(of.record().property);
    return old.isEmpty() ? std::nullopt : found(with("old", old));
}

bool isAboutForeignKeyOfColumn(const told_statement & of)
{
    return of.isFor(refusal_cause::column_of_foreign_key) ||
           of.isFor(refusal_cause::column_of_foreign_key_copied);
}

found foreignKeyKeptOldName(const told_statement & of)
{
    const QString old = of.in().made().foreignKeyOf(of.record().relationship);
    const auto * const asked = of.asks<database::drop_constraint>();
    const bool isMissing = asked != nullptr && of.isFor(refusal_cause::foreign_key_missing);
    const bool isOther =
        !old.isEmpty() && asked != nullptr && old.compare(asked->constraint.text, Qt::CaseInsensitive) != 0;
    return isMissing && isOther ? found(with("old", old)) : std::nullopt;
}

/// A property of the model after the step that has the column of the dropped one.
found sharedColumn(const told_statement & of)
{
    const auto * const asked = of.asks<database::drop_column>();
    const std::shared_ptr<model::entity> entity = of.entity(moment::now);
    if (asked == nullptr || !entity || !isAboutForeignKeyOfColumn(of)) {
        return {};
    }
    for (const auto & each : entity->getListOfProperty(true, false, true)->values()) {
        if (each->getId() != of.record().property && columnNamesOf(*each).contains(asked->column.text)) {
            return with("other", nameOf(*each));
        }
    }
    return {};
}

found droppedColumn(const told_statement & of)
{
    const bool isNeeded = isAboutForeignKeyOfColumn(of) || of.isFor(refusal_cause::column_referred_to);
    return isNeeded ? found(values{
                          {QStringLiteral("detail"),
                           QStringLiteral("drop the column '%1' of table '%2': the foreign key '%3' needs it")
                               .arg(of.word("column"), of.word("table"), nameOfObject(of))}})
                    : std::nullopt;
}

found droppedTarget(const told_statement & of)
{
    const bool isReferredTo = of.isFor(refusal_cause::table_referred_to);
    return isReferredTo
               ? found(values{
                     {QStringLiteral("detail"),
                      QStringLiteral("drop table '%1': the foreign key '%2' of another table refers to it")
                          .arg(of.word("table"), nameOfObject(of))}})
               : std::nullopt;
}

found droppedWhereEnforced(const told_statement & of)
{
    return only(of.isFor(refusal_cause::rows_referred_to));
}

found goneForeignKey(const told_statement & of)
{
    const bool isMissing =
        of.isFor(refusal_cause::foreign_key_missing) || of.isFor(refusal_cause::table_missing);
    return isMissing && of.asks<database::drop_constraint>() != nullptr
               ? found(values{
                     {QStringLiteral("detail"),
                      QStringLiteral("drop the foreign key '%1' of table '%2': neither is there under that "
                                     "name when the statement runs")
                          .arg(of.word("constraint"), of.word("table"))}})
               : std::nullopt;
}

found dropBeforeForeignKey(const told_statement & of)
{
    for (const auto reason : {droppedColumn, droppedTarget, goneForeignKey}) {
        if (found words = reason(of)) {
            return words;
        }
    }
    return {};
}

found indexOfForeignKey(const told_statement & of)
{
    return only(of.isFor(refusal_cause::index_needed));
}

found columnInUse(const told_statement & of)
{
    return only(of.isFor(refusal_cause::column_bound));
}

found renamedAndRetyped(const told_statement & of)
{
    using enum refusal_cause;
    return of.isForAny({type_change_forbidden, own_key_needs_type, other_key_needs_type})
               ? found(with("constraint", nameOfObject(of)))
               : std::nullopt;
}

found besideUniqueText(const told_statement & of)
{
    return of.isFor(refusal_cause::copy_needed) ? found(with("constraint", nameOfObject(of))) : std::nullopt;
}

found leftBehind(const made_objects::origin * left, const char * kind)
{
    return left == nullptr ? std::nullopt
                           : found(values{{QStringLiteral("kind"), QString::fromLatin1(kind)},
                                          {QStringLiteral("word"), left->name},
                                          {QStringLiteral("origin"), left->script}});
}

found nameLeftBehind(const told_statement & of)
{
    if (const auto * const index = of.asks<database::create_index>();
        index != nullptr && of.isFor(refusal_cause::index_exists)) {
        return leftBehind(of.in().made().indexNamed(index->index.text), "index");
    }
    if (const auto * const key = of.asks<database::add_foreign_key>();
        key != nullptr && of.isFor(refusal_cause::foreign_key_exists)) {
        return leftBehind(of.in().made().foreignKeyNamed(key->reference.name.text), "foreign key");
    }
    return {};
}

found counterLeftBehind(const told_statement & of)
{
    if (const auto * const sequence = of.asks<database::create_sequence>();
        sequence != nullptr && of.isFor(refusal_cause::relation_exists)) {
        return leftBehind(of.in().made().sequenceNamed(sequence->sequence.text), "sequence");
    }
    if (const auto * const trigger = of.asks<database::create_trigger>();
        trigger != nullptr && of.isFor(refusal_cause::trigger_exists)) {
        return leftBehind(of.in().made().triggerNamed(trigger->trigger.text), "trigger");
    }
    return {};
}

found overLostRows(const told_statement & of)
{
    return only(of.isFor(refusal_cause::rows_without_target));
}

const refusal_rule Rules[] = {
    {{QLatin1String("KV207"), effect::refused,
      "{db} refuses to drop the index of '{subject}': there is no index '{index}', it is still called "
      "'{old}'.",
      "Renaming a table or a column does not rename its indexes, and the script asks for the index by the "
      "name that it would have today.",
      "Drop '{old}' yourself, or have the custom script write that name (action DROP_INDEX)."},
     indexKeptOldName},
    {{QLatin1String("KV208"), effect::refused,
      "{db} refuses to drop the foreign key of '{subject}': there is no '{constraint}', it is still called "
      "'{old}'.",
      "Renaming a table or a column does not rename its foreign keys, and the script asks for the key by the "
      "name that it would have today.",
      "Drop '{old}' yourself before the script, and have the custom script return an empty text for this "
      "DROP_FOREIGN_KEY."},
     foreignKeyKeptOldName},
    {{QLatin1String("KV310"), effect::refused,
      "{db} refuses to drop the column '{column}' of table '{table}', which is also that of '{other}'.",
      "The relationship '{subject}' was dropped, and the script drops its column, though another property "
      "has it too; only the foreign key keeps it from going.",
      "Have the custom script return an empty text for this DROP_COLUMN."},
     sharedColumn},
    {{QLatin1String("KV209"), effect::refused,
      "{db} refuses to drop table '{table}' on a connection that enforces foreign keys, if rows of another "
      "table refer to it.",
      "The script switches enforcement off, but within its transaction, where that has no effect.",
      "Run the script on a connection that does not enforce foreign keys, and run PRAGMA foreign_key_check "
      "afterwards."},
     droppedWhereEnforced},
    {{QLatin1String("KV209"), effect::refused, "{db} refuses to {detail}.",
      "The script drops tables first, then columns, then foreign keys, and takes the names that tables have "
      "in the model.",
      "Drop the foreign key yourself before the script, and have the custom script return an empty text for "
      "its DROP_FOREIGN_KEY."},
     dropBeforeForeignKey},
    {{QLatin1String("KV210"), effect::refused,
      "{db} refuses to drop the index '{index}' of '{subject}': a foreign key needs it.",
      "A foreign key needs an index on its columns, and uses this one.",
      "Keep \"index\" switched on for '{subject}'; it costs nothing, as the foreign key would have an index "
      "anyway."},
     indexOfForeignKey},
    {{QLatin1String("KV214"), effect::refused,
      "{db} refuses to drop the column '{column}' of table '{table}': an index, a key or a foreign key has "
      "it.",
      "The script drops the column before what is made of it.", "Drop these yourself before the script."},
     columnInUse},
    {{QLatin1String("KV217"), effect::refused,
      "{db} refuses to rename the column '{column}' of table '{table}' to '{new}': that would change its "
      "type, and the foreign key '{constraint}' forbids it.",
      "Renaming a column repeats its type, which is another one than the table has, perhaps since an earlier "
      "version that wrote nothing about it.",
      "Have the custom script put three statements in its place (action RENAME_COLUMN): drop the foreign "
      "key, rename the column, add the foreign key."},
     renamedAndRetyped},
    {{QLatin1String("KV216"), effect::refused,
      "{db} refuses to rename the column '{column}' of table '{table}' to '{new}': the table would be "
      "copied, and the foreign key '{constraint}' forbids it.",
      "The table has a unique column of long text, which is kept as a hash; every change copies such a "
      "table.",
      "Have the custom script put three statements in its place (action RENAME_COLUMN): drop the foreign "
      "key, rename the column, add the foreign key."},
     besideUniqueText},
    {{QLatin1String("KV220"), effect::refused,
      "{db} refuses the statement about '{subject}': the name '{word}' belongs to the {kind} that '{origin}' "
      "made.",
      "Renaming a table or a column leaves the names of its indexes and foreign keys as they were, so the "
      "name is taken for what would get it now.",
      "Rename or drop the old {kind} before the script."},
     nameLeftBehind},
    {{QLatin1String("KV220"), effect::refused,
      "{db} refuses the statement about '{subject}': the name '{word}' belongs to the {kind} that '{origin}' "
      "made.",
      "A table that is renamed keeps the sequence and the trigger that count its key, and a sequence stays "
      "when its table is dropped.",
      "Have the custom script give the new sequence and the new trigger other names (action CREATE_TABLE), "
      "or drop the old ones before the script if nothing needs them."},
     counterLeftBehind},
    {{QLatin1String("KV221"), effect::refused,
      "{db} refuses the foreign key of '{subject}' if a row of '{table}' has a value that leads to no row of "
      "'{target}'.",
      "A foreign key is checked against the rows that are there.",
      "Look for such rows before the script, and mend or clear them: SELECT {column} FROM {table} WHERE "
      "{column} NOT IN (SELECT {target_column} FROM {target})."},
     overLostRows},
};

} // namespace

std::span<const refusal_rule> keyStepRules()
{
    return Rules;
}

} // namespace check
