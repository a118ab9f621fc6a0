// What the model says and no statement follows: why the database of a history is not like a new one.

#include "check/rules/difference_rules.h"

#include "check/model/tables.h"
#include "check/view/difference_view.h"

#include "model/entity.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>
#include <initializer_list>

namespace check {

namespace {

using found = std::optional<values>;
using kinds = std::initializer_list<difference_kind>;
using enum difference_kind;

struct difference_rule
{
    bool (*applies)(const difference_view & of);
    rule_text about;
};

bool isOf(const difference_view & of, kinds any)
{
    return std::find(any.begin(), any.end(), of.what().kind) != any.end();
}

long idOf(const std::shared_ptr<model::property> & of)
{
    return of ? of->getId() : 0;
}

/// Whether one of the property's fields, or of those of its relationship, differs.
bool hasChanged(const difference_view & of, std::initializer_list<const char *> fields)
{
    const auto member = of.property();
    return member &&
           (of.changes().has(model::object_kind::property, member->getId(), fields) ||
            (member->hasRelationship() &&
             of.changes().has(model::object_kind::relationship, member->getRelation()->getId(), fields)));
}

bool isNewProperty(const difference_view & of)
{
    return of.property(moment::now) &&
           of.changes().isAdded(model::object_kind::property, of.property()->getId());
}

bool isRelationship(const std::shared_ptr<model::property> & of)
{
    return of && of->hasRelationship();
}

bool isSameVersion(const difference_view & of)
{
    const auto & before = of.entity(moment::before);
    const auto & now = of.entity(moment::now);
    return before && now && before->getVersion() == now->getVersion() &&
           of.changes().touchesWithin(now->getId());
}

bool isComment(const difference_view & of)
{
    return of.record().commented.contains(idOf(of.property())) ||
           (of.link() && of.record().commented.contains(idOf(of.link()->getProperty())));
}

bool isSwitchedOn(const difference_view & of)
{
    return isOf(of, {table_missing}) && of.entity(moment::before) && of.entity(moment::now);
}

bool isLinkTable(const difference_view & of)
{
    return of.link() && !of.entity(moment::now) && !isOf(of, {names, order});
}

bool isSoftDelete(const difference_view & of)
{
    return isOf(of, {column_missing, column_left}) &&
           (of.isSoftDeleteColumn(moment::now) || of.isSoftDeleteColumn(moment::before));
}

bool isKey(const difference_view & of)
{
    const bool isIdentifier = (of.property(moment::now) && of.property(moment::now)->isIdentifier()) ||
                              (of.property(moment::before) && of.property(moment::before)->isIdentifier());
    const bool isAboutKey = isOf(of, {key, counter}) || (isIdentifier && isOf(of, {type, null}));
    const auto entity = of.entity();
    return isAboutKey && entity && of.changes().touchesWithin(entity->getId());
}

bool isCountedByTrigger(const difference_view & of)
{
    return isOf(of, {counter}) && isKey(of) && of.in().known().types.countedByTrigger.value;
}

/// A property that is a relationship now and was none.
bool becameRelationship(const difference_view & of)
{
    return isRelationship(of.property(moment::now)) && of.property(moment::before) &&
           !isRelationship(of.property(moment::before));
}

bool becamePlain(const difference_view & of)
{
    return isRelationship(of.property(moment::before)) && of.property(moment::now) &&
           !isRelationship(of.property(moment::now));
}

bool isAddedOneToOne(const difference_view & of)
{
    const auto & now = of.property(moment::now);
    return isOf(of, {column_left}) && isRelationship(now) &&
           now->getRelation()->getType() == model::relationship::one_to_one && isNewProperty(of);
}

bool isIndexOfForeignKey(const difference_view & of)
{
    const auto entity = of.entity();
    return isOf(of, {index_left}) && entity && of.changes().touchesWithin(entity->getId()) &&
           of.what().found.startsWith(QLatin1Char('('));
}

bool isConstraintWhenAdded(const difference_view & of)
{
    return isOf(of, {null, unique_left}) && isNewProperty(of) && isRelationship(of.property(moment::now));
}

bool isAddedIndex(const difference_view & of)
{
    return isOf(of, {index_missing}) && isNewProperty(of);
}

/// The index that a foreign key makes for itself, where no unique column stands in for it.
bool isAddedKeyIndex(const difference_view & of)
{
    return isAddedIndex(of) && isRelationship(of.property()) && of.property()->getUnique();
}

bool isNullOrUnique(const difference_view & of)
{
    return isOf(of, {null, unique_missing, unique_left}) && hasChanged(of, {"allowNull", "unique"});
}

bool isRelationshipChanged(const difference_view & of)
{
    const bool isKind = isOf(of, {foreign_key_missing, foreign_key_left, foreign_key_target, column_missing,
                                  column_left, unique_missing, unique_left});
    return isKind && isRelationship(of.property()) && hasChanged(of, {"type", "target"});
}

/// What the type of a column follows from: texts that are indexed have one of their own in some databases.
constexpr std::initializer_list<const char *> TypeFields = {"type",       "enumeration",   "forceSqlType",
                                                            "identifier", "autoIncrement", "index"};

/// The type of the property, or of the key that its relationship takes it from.
bool isType(const difference_view & of)
{
    if (!isOf(of, {type})) {
        return false;
    }
    const auto & now = of.property(moment::now);
    const auto key = isRelationship(now) ? now->getRelation()->getKeyProperty() : nullptr;
    return hasChanged(of, TypeFields) ||
           (key && of.changes().has(model::object_kind::property, key->getId(), TypeFields));
}

/// Of the table of an entity that changed, or of a link table.
bool isOfChanged(const difference_view & of)
{
    const auto entity = of.entity();
    return entity ? of.changes().touchesWithin(entity->getId()) : of.link() != nullptr;
}

bool isName(const difference_view & of)
{
    return isOf(of, {names}) && isOfChanged(of);
}

bool isOrder(const difference_view & of)
{
    return isOf(of, {order}) && isOfChanged(of);
}

bool isSequence(const difference_view & of)
{
    return isOf(of, {sequence_left}) && of.entity();
}

/// A table that is there, which a new database refuses to make.
bool isOnlyLeft(const difference_view & of)
{
    return of.isAskedFor();
}

// The first that applies is told.
const difference_rule Rules[] = {
    {isOnlyLeft,
     {QLatin1String("KV419"), effect::differs,
      "Table '{table}' of '{entity}' is there as the steps left it, a new database refuses to make it.",
      "The full script has a CREATE TABLE for it that is refused, so nothing can be compared.",
      "Mend what is refused in the full script first; then look at this step again."}},
    {isSequence,
     {QLatin1String("KV409"), effect::differs,
      "The sequence '{found}', which counted the key of '{entity}', stays as it is.",
      "A step drops and renames tables, but not the sequences that it made for them.",
      "If the table is gone, drop the sequence as well; a renamed table goes on using it.",
      "tableName | name"}},
    {isSameVersion,
     {QLatin1String("KV410"), effect::silent, "Nothing of what changed in '{entity}' reaches the database.",
      "The entity differs from that of the version before, but its version number is the same, so it counts "
      "as unchanged.",
      "Import the text form without \"version\" numbers, or with a higher one for '{entity}'."}},
    {isLinkTable,
     {QLatin1String("KV407"), effect::silent, "The link table '{table}' of '{subject}' stays as it was.",
      "A step makes a link table only together with the table of one of its ends, and neither drops nor "
      "renames one.",
      "Make, rename or drop the table yourself: the full script has the CREATE TABLE of a new one.",
      "extraTable foreignKey foreignKeyOwner type target"}},
    {isComment,
     {QLatin1String("KV408"), effect::silent, "The change of '{subject}' does not reach the database.",
      "Scripts for this database leave a comment in the place of such a change.",
      "Have the custom script write the statement, as far as the database knows it (ALTER TABLE … RENAME "
      "COLUMN, ALTER TABLE … DROP COLUMN), or make the table anew and copy its rows."}},
    {isSwitchedOn,
     {QLatin1String("KV413"), effect::silent, "There is no table '{table}' for '{entity}'.",
      "It was left out of the scripts before; a step makes tables of new entities only.",
      "Make the table yourself, as the full script does.", CreateTableField}},
    {isSoftDelete,
     {QLatin1String("KV404"), effect::silent,
      "The soft-delete column '{column}' of '{entity}' is not followed.",
      "A step neither adds, drops nor renames a soft-delete column.",
      "Run the ALTER TABLE {table} yourself that adds, drops or renames the column.", "softDeleteColumn"}},
    {becameRelationship,
     {QLatin1String("KV221"), effect::silent,
      "'{property}' became a relationship; the database has {found} where a new one has {expected}.",
      "The column stays as it was made, with its type and its constraints.",
      "Change the column yourself, and look at the values: each has to be a key of the other table."}},
    {isConstraintWhenAdded,
     {QLatin1String("KV412"), effect::differs,
      "The column '{column}' of '{property}' is made with constraints that a new database does not have.",
      "A relationship that is added to a table that is there gets NOT NULL and UNIQUE as the model says; a "
      "new table is made without them.",
      "Decide which is right, and add or drop the constraint in the other with a statement of your own."}},
    {isAddedOneToOne,
     {QLatin1String("KV414"), effect::differs,
      "The column '{column}' of '{property}' is added, a new database has none.",
      "A one-to-one relationship that is added brings a column, but the table of a new database is made "
      "without it.",
      "Name a column that the table has in \"columnName\"."}},
    {becamePlain,
     {QLatin1String("KV414"), effect::silent,
      "'{property}' is no relationship any more; the database has {found} where a new one has {expected}.",
      "Only the foreign key is dropped; the column keeps its type, and an index that the foreign key had "
      "stays.",
      "Change the column yourself with an ALTER TABLE {table}."}},
    {isCountedByTrigger,
     {QLatin1String("KV403"), effect::silent,
      "The key of table '{table}' is {found}, that of a new database {expected}.",
      "A step adds and drops columns, but neither sequences nor triggers of keys.",
      "Make, or drop, the sequence and the trigger yourself: the full script of the version that has them "
      "shows how.",
      "identifier type enumeration forceSqlType autoIncrement"}},
    {isKey,
     {QLatin1String("KV403"), effect::silent,
      "The key of table '{table}' is {found}, that of a new database {expected}.",
      "A step adds and drops columns, but changes neither keys nor auto-increment.",
      "Change the key yourself with an ALTER TABLE {table}.",
      "identifier type enumeration forceSqlType autoIncrement"}},
    {isRelationshipChanged,
     {QLatin1String("KV406"), effect::silent,
      "The relationship '{property}' leads elsewhere now, the database still has {found} in the place of "
      "{expected}.",
      "A step drops foreign keys of relationships that are gone and adds those of new ones; it does not "
      "change one.",
      "Give the relationship a new id, so that the old foreign key is dropped and the new one added, or "
      "change the foreign key yourself.",
      "type target"}},
    {isAddedKeyIndex,
     {QLatin1String("KV405"), effect::silent,
      "The column '{column}' of '{property}' is added without an index for its foreign key.",
      "It is added as a unique column, whose index serves the foreign key as well. In a new table it is not "
      "unique, and the foreign key has an index of its own.",
      "Leave \"unique\" out, which does not reach a new table either; or run CREATE INDEX yourself, before "
      "the unique index is dropped."}},
    {isAddedIndex,
     {QLatin1String("KV405"), effect::silent,
      "The column '{column}' of '{property}' is added without its index.",
      "A step makes the indexes of new tables and of properties that were there before.",
      "Add the property first, tag, and switch \"index\" on in the next version; or run CREATE INDEX "
      "yourself."}},
    {isNullOrUnique,
     {QLatin1String("KV402"), effect::silent,
      "'{property}' is {found} in the database still, and {expected} in a new one.",
      "A step does not change whether a column may be null or has to be unique.",
      "Change it yourself with an ALTER TABLE {table}, after a look at the values that are there.",
      "allowNull unique"}},
    {isType,
     {QLatin1String("KV401"), effect::silent,
      "The column '{column}' of '{property}' is still {found}, in a new database it is {expected}.",
      "A step does not change the type of a column.",
      "Change it yourself with an ALTER TABLE {table}, after a look at the values that are there.",
      "type enumeration forceSqlType identifier autoIncrement index"}},
    {isIndexOfForeignKey,
     {QLatin1String("KV414"), effect::differs, "The index {found} of table '{table}' stays.",
      "A foreign key made it for itself, and dropping the foreign key leaves it.",
      "Drop it yourself if nothing needs it; it does no harm otherwise."}},
    {isOrder,
     {QLatin1String("KV416"), effect::differs,
      "The columns of table '{table}' are in another order than in a new one.",
      "Columns that are added come last.",
      "Nothing, as long as programs name the columns that they read and write.", "order"}},
    {isName,
     {QLatin1String("KV415"), effect::differs,
      "Table '{table}' keeps names of what belongs to it: '{found}' is '{expected}' in a new database.",
      "Renaming a table or a column leaves the names of its indexes, keys, sequences and foreign keys.",
      "Nothing now; later versions that drop it, or make another of that name, will be refused, which the "
      "check tells then.",
      "tableName columnName | name"}},
};

const rule_text Unexplained = {
    QLatin1String("KV419"), effect::differs,
    "Table '{table}' differs from that of a new database: {found} in the place of {expected} ({column}).",
    "No single change of this step explains it; a type mapping, a setting or the custom script may have "
    "changed.",
    "Compare the table with the full script, and change it yourself where that matters."};

values wordsOf(const difference_view & of)
{
    values words = of.words();
    for (const char * const side : {"expected", "found"}) {
        QString & text = words[QString::fromLatin1(side)];
        if (text.isEmpty()) {
            text = QStringLiteral("nothing");
        } else if (isOf(of, {unique_missing, unique_left})) {
            text = QStringLiteral("UNIQUE");
        }
    }
    if (isOf(of, {unique_missing, unique_left})) {
        words.insert(of.what().found.isEmpty() ? QStringLiteral("found") : QStringLiteral("expected"),
                     QStringLiteral("not UNIQUE"));
    }
    return words;
}

} // namespace

bool isExplained(const difference_view & of)
{
    const auto entity = of.entity();
    const auto member = of.property();
    const step_record & record = of.record();
    // What counts a key is made by statements of its table.
    const bool isTable = isOf(of, {table_missing, table_left, counter});
    const auto owner = of.link() ? of.link()->getProperty() : nullptr;
    return (owner && record.refusedProperties.contains(owner->getId())) ||
           (member && (record.refusedProperties.contains(member->getId()) ||
                       record.toldProperties.contains(member->getId()))) ||
           (isTable && entity && record.refusedEntities.contains(entity->getId()));
}

std::optional<finding> explainDifference(const difference_view & of)
{
    for (const difference_rule & each : Rules) {
        if (each.applies(of)) {
            return findingOf(each.about, wordsOf(of));
        }
    }
    return {};
}

finding unexplained(const difference_view & of)
{
    return findingOf(Unexplained, wordsOf(of));
}

} // namespace check
