// All rules, in one table. A code is never given to another rule, even when its rule is gone.

#include "check/finding/rule.h"

#include <algorithm>
#include <iterator>

namespace check {

namespace {

// clang-format off
constexpr rule Rules[] = {
    {QLatin1String("KV101"), QLatin1String("reserved-word"), severity::error, "A table or column is named by a reserved word"},
    {QLatin1String("KV102"), QLatin1String("name-needs-quotes"), severity::error, "A name cannot be read without quotes"},
    {QLatin1String("KV103"), QLatin1String("name-too-long"), severity::error, "A name is longer than the database allows"},
    {QLatin1String("KV104"), QLatin1String("names-equal-when-cut"), severity::error, "Two names are one when they are cut to the longest length"},
    {QLatin1String("KV105"), QLatin1String("names-differ-in-case"), severity::error, "Two names differ in capital and small letters only"},
    {QLatin1String("KV106"), QLatin1String("soft-delete-twice"), severity::error, "The soft-delete column is also the column of a property"},
    {QLatin1String("KV107"), QLatin1String("several-columns"), severity::error, "A property that is neither key nor relationship has several columns"},
    {QLatin1String("KV108"), QLatin1String("no-columns"), severity::error, "A table would have no column"},
    {QLatin1String("KV109"), QLatin1String("target-without-key"), severity::error, "A relationship leads to an entity without identifier"},
    {QLatin1String("KV110"), QLatin1String("one-to-one-without-column"), severity::error, "A one-to-one relationship uses a column that no property makes"},
    {QLatin1String("KV111"), QLatin1String("target-not-exported"), severity::error, "A relationship leads to an entity that is left out of the scripts"},
    {QLatin1String("KV112"), QLatin1String("self-reference-unwritten"), severity::warning, "A relationship of an entity to itself gets no foreign key"},
    {QLatin1String("KV113"), QLatin1String("unknown-sql-type"), severity::error, "A type is unknown to the database"},
    {QLatin1String("KV114"), QLatin1String("unknown-cpp-type"), severity::warning, "A C++ type is not in the type mapping, so the default type stands for it"},
    {QLatin1String("KV115"), QLatin1String("counted-key-type"), severity::error, "A key of this type cannot be auto-increment"},
    {QLatin1String("KV116"), QLatin1String("counted-composite-key"), severity::error, "An auto-increment key has several columns"},
    {QLatin1String("KV117"), QLatin1String("text-in-key"), severity::error, "A text without a length is in a key or unique"},
    {QLatin1String("KV118"), QLatin1String("type-not-indexable"), severity::error, "A column of this type cannot be indexed, or not as a whole"},
    {QLatin1String("KV119"), QLatin1String("prefix-over-length"), severity::error, "An index or key asks for the first characters of a shorter text, or of no text"},
    {QLatin1String("KV120"), QLatin1String("key-types-differ"), severity::error, "A foreign key and the key that it refers to are of different types"},
    {QLatin1String("KV121"), QLatin1String("link-column-counts-up"), severity::warning, "A column of a link table is auto-increment"},
    {QLatin1String("KV122"), QLatin1String("soft-delete-type"), severity::error, "The soft-delete column has a type that the database does not take"},
    {QLatin1String("KV123"), QLatin1String("link-table-name-taken"), severity::error, "A link table has the name of another table"},
    {QLatin1String("KV124"), QLatin1String("schema-qualified"), severity::error, "A table name with a dot needs a schema"},
    {QLatin1String("KV125"), QLatin1String("foreign-key-name-twice"), severity::error, "Two foreign keys get one name"},
    {QLatin1String("KV126"), QLatin1String("index-name-twice"), severity::error, "Two indexes, or an index and a table, get one name"},
    {QLatin1String("KV127"), QLatin1String("key-too-long"), severity::error, "A key is longer than the database allows"},
    {QLatin1String("KV128"), QLatin1String("unquoted-word"), severity::error, "A reserved word stands where the script does not quote names"},
    {QLatin1String("KV130"), QLatin1String("implied-name-taken"), severity::error, "The database makes up a name that is taken"},
    {QLatin1String("KV131"), QLatin1String("system-column"), severity::error, "A column has the name of a column that every table has"},
    {QLatin1String("KV132"), QLatin1String("too-many"), severity::error, "A table has more columns, indexes or bytes in a row than it can have"},
    {QLatin1String("KV134"), QLatin1String("self-link-one-name"), severity::error, "The two columns of a link table have one name, or a link to itself has no foreign keys"},
    {QLatin1String("KV135"), QLatin1String("link-without-key"), severity::error, "An end of a many-to-many relationship has no identifier"},
    {QLatin1String("KV136"), QLatin1String("links-share-table"), severity::error, "Two many-to-many relationships share a link table"},
    {QLatin1String("KV137"), QLatin1String("key-column-count"), severity::error, "A relationship has another number of columns than the key that it refers to"},
    {QLatin1String("KV138"), QLatin1String("relationship-constraints-unwritten"), severity::warning, "A relationship's column is nullable and not unique, whatever the model says"},
    {QLatin1String("KV139"), QLatin1String("link-without-foreign-keys"), severity::warning, "A link table has no foreign keys"},
    {QLatin1String("KV140"), QLatin1String("indexed-twice"), severity::error, "An index is made on a column that has one already"},
    {QLatin1String("KV200"), QLatin1String("follows-from-refusal"), severity::error, "A statement is refused because an earlier one was"},
    {QLatin1String("KV201"), QLatin1String("not-null-added"), severity::error, "A column that must not be null is added to a table that may have rows"},
    {QLatin1String("KV202"), QLatin1String("unique-added"), severity::error, "A unique column is added to a table that is there"},
    {QLatin1String("KV203"), QLatin1String("rename-onto-taken-table"), severity::error, "A table is renamed to a name that is still taken"},
    {QLatin1String("KV204"), QLatin1String("rename-onto-taken-column"), severity::error, "A column is renamed to a name that is still taken"},
    {QLatin1String("KV205"), QLatin1String("name-freed-too-late"), severity::error, "A new table or column takes a name that another gives up later in the script"},
    {QLatin1String("KV206"), QLatin1String("case-only-rename"), severity::error, "A rename changes capital and small letters only"},
    {QLatin1String("KV207"), QLatin1String("index-kept-old-name"), severity::error, "An index is dropped by a name that it does not have"},
    {QLatin1String("KV208"), QLatin1String("foreign-key-kept-old-name"), severity::error, "A foreign key is dropped by a name that it does not have"},
    {QLatin1String("KV209"), QLatin1String("drop-before-its-foreign-key"), severity::error, "Something is dropped before the foreign key that needs it, or the foreign key after it"},
    {QLatin1String("KV210"), QLatin1String("drop-index-of-foreign-key"), severity::error, "An index that a foreign key needs is dropped"},
    {QLatin1String("KV211"), QLatin1String("index-on-unrenamed"), severity::error, "An index is made on a column that was not renamed"},
    {QLatin1String("KV212"), QLatin1String("export-switched-on"), severity::error, "A table is changed that was left out of the scripts before"},
    {QLatin1String("KV213"), QLatin1String("foreign-key-without-link-table"), severity::error, "A step adds a many-to-many relationship but not its link table"},
    {QLatin1String("KV214"), QLatin1String("dropped-column-in-use"), severity::error, "A column is dropped that an index, a key or a foreign key has"},
    {QLatin1String("KV215"), QLatin1String("column-there-already"), severity::error, "A column is added that is there already"},
    {QLatin1String("KV216"), QLatin1String("foreign-key-column-beside-unique-text"), severity::error, "A column of a foreign key is renamed in a table with a unique long text"},
    {QLatin1String("KV217"), QLatin1String("foreign-key-column-retyped"), severity::error, "A column of a foreign key is renamed and gets another type"},
    {QLatin1String("KV218"), QLatin1String("last-column-dropped"), severity::error, "The last column of a table is dropped before new ones are added"},
    {QLatin1String("KV219"), QLatin1String("link-table-name-left"), severity::error, "A new table has the name of a link table that was left behind"},
    {QLatin1String("KV220"), QLatin1String("name-left-behind"), severity::error, "A new index or foreign key has a name that a renamed table or column left behind"},
    {QLatin1String("KV221"), QLatin1String("foreign-key-over-lost-rows"), severity::error, "A foreign key is added over values that may lead nowhere"},
    {QLatin1String("KV222"), QLatin1String("rename-restates-key-text"), severity::error, "A text key is renamed to a type that cannot be a key"},
    {QLatin1String("KV223"), QLatin1String("foreign-key-to-added-key"), severity::error, "A foreign key refers to an identifier that was added and is no key"},
    {QLatin1String("KV224"), QLatin1String("index-over-long-text"), severity::note, "An index is made over text that may be too long for it"},
    {QLatin1String("KV225"), QLatin1String("composite-key-column-dropped"), severity::error, "A key of several columns gets another number of columns"},
    {QLatin1String("KV299"), QLatin1String("refused"), severity::error, "A statement is refused for a reason that no other rule names"},
    {QLatin1String("KV301"), QLatin1String("table-dropped"), severity::error, "A table is dropped with its rows"},
    {QLatin1String("KV302"), QLatin1String("column-dropped"), severity::error, "A column is dropped with its values"},
    {QLatin1String("KV303"), QLatin1String("switched-off-drops"), severity::error, "Leaving an entity out of the scripts drops its table"},
    {QLatin1String("KV304"), QLatin1String("same-name-new-id"), severity::error, "A new object of the same name takes the place of one that is dropped"},
    {QLatin1String("KV305"), QLatin1String("column-moved"), severity::error, "A property moved to another entity loses its values"},
    {QLatin1String("KV306"), QLatin1String("column-count-changed"), severity::error, "A property with another number of columns loses its values"},
    {QLatin1String("KV307"), QLatin1String("rename-restates-column"), severity::error, "A rename changes type or null of the column as well"},
    {QLatin1String("KV308"), QLatin1String("rename-loses-counter"), severity::error, "A renamed key is no longer auto-increment"},
    {QLatin1String("KV309"), QLatin1String("enum-values-changed"), severity::error, "Numbers of an enumeration changed, rows keep the old ones"},
    {QLatin1String("KV310"), QLatin1String("shared-column-dropped"), severity::error, "A dropped relationship takes the column of a property along"},
    {QLatin1String("KV311"), QLatin1String("id-means-another-thing"), severity::warning, "An id seems to have been given to something else"},
    {QLatin1String("KV401"), QLatin1String("type-not-followed"), severity::warning, "A type changed in the model stays in the database"},
    {QLatin1String("KV402"), QLatin1String("null-or-unique-not-followed"), severity::warning, "A change of null or unique stays out of the database"},
    {QLatin1String("KV403"), QLatin1String("key-not-followed"), severity::warning, "A change of the identifier stays out of the database"},
    {QLatin1String("KV404"), QLatin1String("soft-delete-not-followed"), severity::warning, "A change of the soft-delete column stays out of the database"},
    {QLatin1String("KV405"), QLatin1String("index-not-made"), severity::warning, "A column is added without its index"},
    {QLatin1String("KV406"), QLatin1String("relationship-not-followed"), severity::warning, "A relationship that leads elsewhere keeps its old foreign key"},
    {QLatin1String("KV407"), QLatin1String("link-table-not-followed"), severity::warning, "A link table stays as it was"},
    {QLatin1String("KV408"), QLatin1String("sqlite-left-as-comment"), severity::warning, "A change is left as a comment in the script"},
    {QLatin1String("KV409"), QLatin1String("sequence-left"), severity::warning, "A sequence stays when its table is dropped or renamed"},
    {QLatin1String("KV410"), QLatin1String("changed-but-same-version"), severity::warning, "An entity changed while its version number stayed"},
    {QLatin1String("KV411"), QLatin1String("drop-constraint-ignored"), severity::warning, "A foreign key is dropped without effect"},
    {QLatin1String("KV412"), QLatin1String("constraint-only-when-added"), severity::warning, "An added relationship is not null or unique, a new table's is not"},
    {QLatin1String("KV413"), QLatin1String("switched-on-silent"), severity::warning, "A table that is to be exported now is not made"},
    {QLatin1String("KV414"), QLatin1String("column-in-chain-only"), severity::warning, "A change leaves a column or an index that a new database has not"},
    {QLatin1String("KV415"), QLatin1String("names-kept"), severity::note, "Renaming leaves the names of indexes and keys as they were"},
    {QLatin1String("KV416"), QLatin1String("column-order"), severity::note, "Columns are in another order than in a new database"},
    {QLatin1String("KV418"), QLatin1String("forced-type-unused"), severity::warning, "A forced type is not used"},
    {QLatin1String("KV419"), QLatin1String("other-difference"), severity::warning, "The database differs from a new one in something that no other rule names"},
    {QLatin1String("KV501"), QLatin1String("table-rewritten"), severity::warning, "A statement rewrites the whole table"},
    {QLatin1String("KV502"), QLatin1String("writers-wait"), severity::note, "A statement keeps others from writing"},
    {QLatin1String("KV503"), QLatin1String("half-applied"), severity::note, "A script that fails in the middle leaves half of it done"},
    {QLatin1String("KV601"), QLatin1String("rename-breaks-programs"), severity::note, "Programs that know the old name fail from this step on"},
    {QLatin1String("KV602"), QLatin1String("drop-breaks-programs"), severity::note, "Programs that use what is dropped fail from this step on"},
    {QLatin1String("KV603"), QLatin1String("required-column-breaks-programs"), severity::note, "Programs that do not fill a new column fail to write"},
    {QLatin1String("KV701"), QLatin1String("table-without-key"), severity::note, "A table has no primary key"},
    {QLatin1String("KV702"), QLatin1String("foreign-key-without-index"), severity::note, "The column of a foreign key has no index"},
    {QLatin1String("KV703"), QLatin1String("one-row-without-value"), severity::note, "A unique column may have no value in one row only"},
    {QLatin1String("KV802"), QLatin1String("settings-changed"), severity::warning, "Settings of the export changed since a version was tagged"},
    {QLatin1String("KV805"), QLatin1String("not-judged"), severity::note, "A statement is in a form that is not known"},
    {QLatin1String("KV806"), QLatin1String("acceptance-without-finding"), severity::warning, "An entry of the acceptance file matches nothing"},
    {QLatin1String("KV807"), QLatin1String("acceptance-expired"), severity::warning, "An entry of the acceptance file is past its date"},
};
// clang-format on

} // namespace

std::span<const rule> allRules()
{
    return Rules;
}

const rule * ruleOf(const QString & code)
{
    const auto * const found =
        std::lower_bound(std::begin(Rules), std::end(Rules), code,
                         [](const rule & each, const QString & asked) { return each.code < asked; });
    return found != std::end(Rules) && found->code == code ? found : nullptr;
}

} // namespace check
