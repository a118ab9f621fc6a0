#include "servers/refusals.h"

namespace servers {

namespace {

constexpr int Sqlite = 1;
constexpr int MariaDb = 2;
constexpr int PostgreSql = 3;

const QString Key = QStringLiteral(R"({"id": 1, "name": "id", "type": "long", "identifier": true})");

QString entity(int id, const QString & name, const QStringList & properties, const QString & more = {})
{
    return QStringLiteral(R"({"id": %1, "name": "%2", %3"properties": [%4]})")
        .arg(QString::number(id), name, more, properties.join(QLatin1Char(',')));
}

QString thing(const QString & property, int version = 1)
{
    return entity(1, QStringLiteral("thing"), {Key, property},
                  QStringLiteral("\"version\": %1, ").arg(version));
}

QString
box(const QString & key = QStringLiteral(R"({"id": 21, "name": "id", "type": "long", "identifier": true})"))
{
    return entity(2, QStringLiteral("box"), {key});
}

QStringList list(const char * line)
{
    return {QString::fromLatin1(line)};
}

QString text(const char * utf8)
{
    return QString::fromUtf8(utf8);
}

const char * const ToBox =
    R"({"id": 2, "name": "box", "columnName": "box_id", "relationship": {"id": 9, "type": "many-to-one", "target": 2}})";

QList<refusal> names()
{
    return {
        {.name = "table named by a reserved word",
         .versions = {entity(1, text("order"), {Key})},
         .refused = {{Sqlite, list("CREATE TABLE")}, {PostgreSql, list("CREATE TABLE")}}},
        {.name = "column named by a reserved word",
         .versions = {thing(text(R"({"id": 2, "name": "group", "type": "int"})"))},
         .refused = {{Sqlite, list("CREATE TABLE")}, {PostgreSql, list("CREATE TABLE")}}},
        {.name = "dot in a name",
         .versions = {thing(text(R"({"id": 2, "name": "address.city", "type": "int"})"))},
         .refused = {{Sqlite, list("CREATE TABLE")}, {PostgreSql, list("CREATE TABLE")}},
         .found = {{MariaDb, list("column thing.address.city int(11)")}}},
        {.name = "ordinary property of several columns",
         .versions = {thing(text(R"({"id": 2, "name": "place", "columnName": "x|y", "type": "int"})"))},
         .refused = {{Sqlite, list("CREATE TABLE")}, {PostgreSql, list("CREATE TABLE")}},
         .found = {{MariaDb, list("column thing.x|y int(11)")}}},
        {.name = "columns that differ only in case",
         .versions = {entity(1, text("thing"),
                             {text(R"({"id": 1, "name": "tag", "type": "int"})"),
                              text(R"({"id": 2, "name": "Tag", "type": "int"})")})},
         .refused = {{Sqlite, list("CREATE TABLE")},
                     {MariaDb, list("CREATE TABLE")},
                     {PostgreSql, list("CREATE TABLE")}}},
        {.name = "capitals in a name",
         .versions = {entity(1, text("Thing"), {Key})},
         .found = {{Sqlite, list("table Thing")}, {PostgreSql, list("table thing")}}},
        {.name = "index names of more than 63 characters",
         .versions = {entity(1, text("thing_with_a_name_that_is_quite_a_bit_longer_than_it_should_be"),
                             {text(R"({"id": 1, "name": "first", "type": "int", "index": true})"),
                              text(R"({"id": 2, "name": "second", "type": "int", "index": true})")})},
         .refused = {{MariaDb, {text("CREATE INDEX"), text("CREATE INDEX")}},
                     {PostgreSql, list("CREATE INDEX")}}},
        {.name = "soft-delete column that is a property, too",
         .versions = {entity(1, text("thing"), {Key, text(R"({"id": 2, "name": "gone", "type": "int"})")},
                             text(R"("softDeleteColumn": "gone", )"))},
         .refused = {{Sqlite, list("CREATE TABLE")},
                     {MariaDb, list("CREATE TABLE")},
                     {PostgreSql, list("CREATE TABLE")}}},
        {.name = "entity without columns",
         .versions = {entity(1, text("thing"),
                             {text(R"({"id": 1, "name": "cache", "type": "int", "transient": true})")})},
         .refused = {{Sqlite, list("CREATE TABLE")}, {MariaDb, list("CREATE TABLE")}},
         .found = {{PostgreSql, list("table thing")}}},
    };
}

QList<refusal> keysAndTypes()
{
    return {
        {.name = "counted key that is not INTEGER",
         .versions = {entity(1, text("thing"),
                             {text(R"({"id": 1, "name": "id", "type": "short", "identifier": true})")})},
         .refused = {{Sqlite, list("CREATE TABLE")}}},
        {.name = "composite key that is counted up",
         .versions = {entity(1, text("thing"),
                             {text(R"({"id": 1, "name": "key", "columnName": "a|b", "type": "int",
                                                         "identifier": true, "autoIncrement": true})")})},
         .afterwards = list("INSERT INTO thing DEFAULT VALUES"),
         .refused = {{Sqlite, {text("CREATE TABLE"), text("INSERT")}},
                     {MariaDb, {text("CREATE TABLE"), text("INSERT")}}},
         .found = {{PostgreSql, list("column thing.b bigint NOT NULL")}}},
        {.name = "type of another database",
         .versions = {thing(
             text(R"x({"id": 2, "name": "tag", "type": "QString", "forceSqlType": "VARCHAR2(30)"})x"))},
         .refused = {{MariaDb, list("CREATE TABLE")}, {PostgreSql, list("CREATE TABLE")}},
         .found = {{Sqlite, list("column thing.tag VARCHAR2(30)")}}},
        {.name = "unique text",
         .versions = {thing(text(R"({"id": 2, "name": "mail", "type": "QString", "unique": true})"))}},
        {.name = "unique text with a length",
         .versions = {thing(text(
             R"x({"id": 2, "name": "mail", "type": "QString", "unique": true, "forceSqlType": "VARCHAR(200)"})x"))}},
        {.name = "indexed bytes",
         .versions = {thing(text(R"({"id": 2, "name": "picture", "type": "QByteArray", "index": true})"))}},
        {.name = "indexed text shorter than 255",
         .versions = {thing(text(
             R"x({"id": 2, "name": "mail", "type": "QString", "index": true, "forceSqlType": "VARCHAR(80)"})x"))},
         .refused = {{MariaDb, list("CREATE INDEX")}}},
        {.name = "indexed text of 255",
         .versions = {thing(text(
             R"x({"id": 2, "name": "mail", "type": "QString", "index": true, "forceSqlType": "VARCHAR(255)"})x"))}},
        {.name = "text key shorter than 255, without relationships",
         .versions = {entity(
             1, text("thing"),
             {text(
                 R"x({"id": 1, "name": "code", "type": "QString", "identifier": true, "forceSqlType": "VARCHAR(80)"})x")})},
         .refused = {{MariaDb, list("CREATE TABLE")}}},
        {.name = "text key shorter than 255, with relationships",
         .versions = {entity(
             1, text("thing"),
             {text(
                 R"x({"id": 1, "name": "code", "type": "QString", "identifier": true, "forceSqlType": "VARCHAR(80)"})x")})},
         .relationships = true,
         .found = {{MariaDb, list("column thing.code varchar(255) NOT NULL")}}},
    };
}

QList<refusal> foreignKeys()
{
    const QString textKey = text(R"({"id": 21, "name": "code", "type": "QString", "identifier": true})");
    const QString boundedKey = text(
        R"x({"id": 21, "name": "code", "type": "QString", "identifier": true, "forceSqlType": "VARCHAR(255)"})x");
    const QString self = text(
        R"({"id": 2, "name": "parent", "columnName": "parent_id", "relationship": {"id": 9, "type": "many-to-one", "target": 1}})");
    return {
        {.name = "foreign key to a text key",
         .versions = {box(textKey) + QLatin1Char(',') + thing(text(ToBox))},
         .relationships = true,
         .refused = {{MariaDb, list("ALTER TABLE `thing` ADD CONSTRAINT")}}},
        {.name = "foreign key to a text key with a length",
         .versions = {box(boundedKey) + QLatin1Char(',') + thing(text(ToBox))},
         .relationships = true},
        {.name = "foreign key to an entity without a key",
         .versions = {box(text(R"({"id": 21, "name": "size", "type": "int"})")) + QLatin1Char(',') +
                      thing(text(ToBox))},
         .relationships = true,
         .refused = {{Sqlite, list("CREATE TABLE thing")},
                     {MariaDb, {text("CREATE TABLE `thing`"), text("ALTER TABLE `thing` ADD CONSTRAINT")}},
                     {PostgreSql, {text("CREATE TABLE thing"), text("ALTER TABLE thing ADD CONSTRAINT")}}}},
        {.name = "foreign key to a table that is not created",
         .versions = {entity(2, text("box"),
                             {text(R"({"id": 21, "name": "id", "type": "long", "identifier": true})")},
                             text(R"("metaData": {"DDL_EXPORT_CREATE_TABLE": false}, )")) +
                      QLatin1Char(',') + thing(text(ToBox))},
         .relationships = true,
         .refused = {{MariaDb, list("ALTER TABLE `thing` ADD CONSTRAINT")},
                     {PostgreSql, list("ALTER TABLE thing ADD CONSTRAINT")}}},
        {.name = "one-to-one whose column is no property",
         .versions =
             {box() + QLatin1Char(',') +
              thing(text(
                  R"({"id": 2, "name": "box", "columnName": "box_id", "relationship": {"id": 9, "type": "one-to-one", "target": 2}})"))},
         .relationships = true,
         .refused = {{Sqlite, list("CREATE TABLE thing")},
                     {MariaDb, list("ALTER TABLE `thing` ADD CONSTRAINT")},
                     {PostgreSql, list("ALTER TABLE thing ADD CONSTRAINT")}}},
        {.name = "entity that refers to itself",
         .versions = {thing(self)},
         .relationships = true,
         .found = {{Sqlite, list("foreign - thing (parent_id) -> thing (id)")}},
         .missing = {{MariaDb, list("foreign fk_thing_parent_id thing (parent_id) -> thing (id)")},
                     {PostgreSql, list("foreign fk_thing_parent_id thing (parent_id) -> thing (id)")}}},
    };
}

QList<refusal> changesOfColumns()
{
    const QString size = text(R"({"id": 2, "name": "size", "type": "int"})");
    const QString indexed = text(R"({"id": 2, "name": "size", "type": "int", "index": true})");
    const QString none = text(R"({"id": 3, "name": "other", "type": "int"})");
    return {
        {.name = "added column that must not be null",
         .versions = {thing(none),
                      thing(none + text(R"(, {"id": 2, "name": "size", "type": "int", "allowNull": false})"),
                            2)}},
        {.name = "added columns that must not be null, table with rows",
         .versions = {thing(none),
                      thing(none + text(R"(, {"id": 2, "name": "size", "type": "int", "allowNull": false},
                                                        {"id": 4, "name": "label", "type": "QString", "allowNull": false})"),
                            2)},
         .rows = list("INSERT INTO thing (other) VALUES (1)"),
         .refused =
             {{Sqlite,
               {text("ALTER TABLE thing ADD COLUMN size"), text("ALTER TABLE thing ADD COLUMN label")}},
              {PostgreSql,
               {text("ALTER TABLE thing ADD COLUMN size"), text("ALTER TABLE thing ADD COLUMN label")}}}},
        {.name = "value of added columns that must not be null",
         .versions = {thing(none),
                      thing(none + text(R"(, {"id": 2, "name": "size", "type": "int", "allowNull": false},
                                                        {"id": 4, "name": "label", "type": "QString", "allowNull": false})"),
                            2)},
         .onlyOn = MariaDb,
         .rows = list("INSERT INTO thing (other) VALUES (1)"),
         .afterwards = {text("ALTER TABLE thing ADD CONSTRAINT zero CHECK (size = 0)"),
                        text("ALTER TABLE thing ADD CONSTRAINT empty CHECK (label = '')"),
                        text("ALTER TABLE thing ADD CONSTRAINT one CHECK (size = 1)")},
         .refused = {{MariaDb, list("ALTER TABLE thing ADD CONSTRAINT one")}}},
        {.name = "added column that is unique",
         .versions = {thing(none),
                      thing(none + text(R"(, {"id": 2, "name": "size", "type": "int", "unique": true})"), 2)},
         .refused = {{Sqlite, list("ALTER TABLE thing ADD COLUMN size")}}},
        {.name = "added column with an index",
         .versions = {thing(none), thing(none + text(", ") + indexed, 2)},
         .missing = {{Sqlite, list("index idx_thing_size thing (size)")},
                     {MariaDb, list("index idx_thing_size thing (size)")},
                     {PostgreSql, list("index idx_thing_size thing (size)")}}},
        {.name = "dropped column",
         .versions = {thing(none + text(", ") + size), thing(none, 2)},
         .found = {{Sqlite, list("column thing.size INTEGER")}}},
        {.name = "renamed column",
         .versions = {thing(size), thing(text(R"({"id": 2, "name": "length", "type": "int"})"), 2)},
         .found = {{Sqlite, list("column thing.size INTEGER")}}},
        {.name = "renamed column that becomes an index",
         .versions = {thing(size),
                      thing(text(R"({"id": 2, "name": "length", "type": "int", "index": true})"), 2)},
         .refused = {{Sqlite, list("CREATE INDEX")}}},
        {.name = "index dropped after its column was renamed",
         .versions = {thing(indexed),
                      thing(text(R"({"id": 2, "name": "length", "type": "int", "index": true})"), 2),
                      thing(text(R"({"id": 2, "name": "length", "type": "int"})"), 3)},
         .refused = {{Sqlite, list("DROP INDEX")},
                     {MariaDb, list("DROP INDEX")},
                     {PostgreSql, list("DROP INDEX")}}},
        {.name = "other type of a column",
         .versions = {thing(size), thing(text(R"({"id": 2, "name": "size", "type": "QString"})"), 2)},
         .found = {{Sqlite, list("column thing.size INTEGER")},
                   {MariaDb, list("column thing.size int(11)")},
                   {PostgreSql, list("column thing.size integer")}}},
        {.name = "other allowNull and unique of a column",
         .versions =
             {thing(size),
              thing(text(R"({"id": 2, "name": "size", "type": "int", "allowNull": false, "unique": true})"),
                    2)},
         .found = {{Sqlite, list("column thing.size INTEGER")},
                   {MariaDb, list("column thing.size int(11)")},
                   {PostgreSql, list("column thing.size integer")}},
         .missing = {{Sqlite, list("unique thing (size)")},
                     {MariaDb, list("unique thing (size)")},
                     {PostgreSql, list("unique thing (size)")}}},
        {.name = "index dropped after its table was renamed",
         .versions = {thing(indexed), entity(1, text("gadget"), {Key, indexed}, text("\"version\": 2, ")),
                      entity(1, text("gadget"), {Key, size}, text("\"version\": 3, "))},
         .refused = {{Sqlite, list("DROP INDEX")},
                     {MariaDb, list("DROP INDEX")},
                     {PostgreSql, list("DROP INDEX")}}},
        {.name = "renamed key that is counted up",
         .versions = {entity(1, text("thing"), {Key, none}),
                      entity(1, text("thing"),
                             {text(R"({"id": 1, "name": "nr", "type": "long", "identifier": true})"), none},
                             text("\"version\": 2, "))},
         .rows = list("INSERT INTO thing (other) VALUES (1)"),
         .afterwards = list("INSERT INTO thing (other) VALUES (2)"),
         .refused = {{MariaDb, list("INSERT INTO thing")}},
         .found = {{Sqlite, list("column thing.id INTEGER NOT NULL")}}},
        {.name = "renamed text key",
         .versions = {entity(1, text("thing"),
                             {text(R"({"id": 1, "name": "code", "type": "QString", "identifier": true})")}),
                      entity(1, text("thing"),
                             {text(R"({"id": 1, "name": "nr", "type": "QString", "identifier": true})")},
                             text("\"version\": 2, "))},
         .relationships = true,
         .refused = {{MariaDb, list("ALTER TABLE `thing` CHANGE")}}},
        {.name = "renamed text key with a length",
         .versions =
             {entity(
                  1, text("thing"),
                  {text(
                      R"x({"id": 1, "name": "code", "type": "QString", "identifier": true, "forceSqlType": "VARCHAR(255)"})x")}),
              entity(
                  1, text("thing"),
                  {text(
                      R"x({"id": 1, "name": "nr", "type": "QString", "identifier": true, "forceSqlType": "VARCHAR(255)"})x")},
                  text("\"version\": 2, "))},
         .relationships = true,
         .found = {{MariaDb, list("column thing.nr varchar(255) NOT NULL")}}},
    };
}

QList<refusal> changesOfRelationships()
{
    const QString key3 = text(R"({"id": 3, "name": "other", "type": "int"})");
    const QString boxes = text(
        R"({"id": 2, "name": "boxes", "relationship": {"id": 9, "type": "many-to-many", "target": 2, "inverse": 22, "extraTable": "thing_box", "foreignKey": "thing_id", "foreignKeyOwner": "box_id"}})");
    const QString things = text(
        R"({"id": 22, "name": "things", "relationship": {"id": 10, "type": "many-to-many", "target": 1, "inverse": 2, "extraTable": "thing_box", "foreignKey": "box_id", "foreignKeyOwner": "thing_id"}})");
    const QString boxKey = text(R"({"id": 21, "name": "id", "type": "long", "identifier": true})");
    const QString comma = text(",");
    const QString linked =
        entity(2, text("box"), {boxKey, things}, text("\"version\": 2, ")) + comma + thing(boxes, 2);
    const QString indexedToBox = text(
        R"({"id": 2, "name": "box", "columnName": "box_id", "index": true, "relationship": {"id": 9, "type": "many-to-one", "target": 2}})");
    const auto gadget = [](const QStringList & more, int version) {
        return entity(1, QStringLiteral("gadget"), QStringList{Key} + more,
                      QStringLiteral("\"version\": %1, ").arg(version));
    };
    return {
        {.name = "added relationship",
         .versions = {box() + comma + thing(key3), box() + comma + thing(key3 + comma + text(ToBox), 2)},
         .relationships = true,
         .found = {{MariaDb, list("foreign fk_thing_box_id thing (box_id) -> box (id)")},
                   {PostgreSql, list("foreign fk_thing_box_id thing (box_id) -> box (id)")}},
         .missing = {{Sqlite, list("foreign - thing (box_id) -> box (id)")}}},
        {.name = "dropped relationship",
         .versions = {box() + comma + thing(key3 + comma + text(ToBox)), box() + comma + thing(key3, 2)},
         .relationships = true,
         .refused = {{MariaDb, list("ALTER TABLE `thing` DROP COLUMN")},
                     {PostgreSql, list("ALTER TABLE thing DROP CONSTRAINT")}},
         .found = {{Sqlite, list("foreign - thing (box_id) -> box (id)")}}},
        {.name = "dropped relationship of a renamed table",
         .versions = {box() + comma + thing(key3 + comma + text(ToBox)), box() + comma + gadget({key3}, 2)},
         .relationships = true,
         .refused = {{MariaDb,
                      {text("ALTER TABLE `gadget` DROP COLUMN"),
                       text("ALTER TABLE `thing` DROP CONSTRAINT")}},
                     {PostgreSql, list("ALTER TABLE thing DROP CONSTRAINT")}}},
        {.name = "relationship dropped after its table was renamed",
         .versions = {box() + comma + thing(key3 + comma + text(ToBox)),
                      box() + comma + gadget({key3, text(ToBox)}, 2), box() + comma + gadget({key3}, 3)},
         .relationships = true,
         .refused = {{MariaDb,
                      {text("ALTER TABLE `gadget` DROP COLUMN"),
                       text("ALTER TABLE `gadget` DROP CONSTRAINT")}},
                     {PostgreSql, list("ALTER TABLE gadget DROP CONSTRAINT")}}},
        {.name = "dropped table that another one refers to",
         .versions = {box() + comma + thing(key3 + comma + text(ToBox)), thing(key3, 2)},
         .relationships = true,
         .refused = {{MariaDb, {text("DROP TABLE"), text("ALTER TABLE `thing` DROP COLUMN")}},
                     {PostgreSql, {text("DROP TABLE"), text("ALTER TABLE thing DROP CONSTRAINT")}}}},
        {.name = "dropped table with rows that others refer to, foreign keys enforced",
         .versions = {box() + comma + thing(key3 + comma + text(ToBox)), thing(key3, 2)},
         .relationships = true,
         .onlyOn = Sqlite,
         .rows = {text("PRAGMA foreign_keys = ON"), text("INSERT INTO box (id) VALUES (1)"),
                  text("INSERT INTO thing (box_id) VALUES (1)")},
         .refused = {{Sqlite, list("DROP TABLE")}}},
        {.name = "dropped index of a foreign key",
         .versions = {box() + comma + thing(indexedToBox), box() + comma + thing(text(ToBox), 2)},
         .relationships = true,
         .refused = {{MariaDb, list("DROP INDEX")}}},
        {.name = "many-to-many between tables that exist",
         .versions = {box() + comma + thing(key3), linked},
         .missing = {{Sqlite, list("table thing_box")},
                     {MariaDb, list("table thing_box")},
                     {PostgreSql, list("table thing_box")}}},
        {.name = "many-to-many between tables that exist, with relationships",
         .versions = {box() + comma + thing(key3), linked},
         .relationships = true,
         .refused = {{MariaDb,
                      {text("ALTER TABLE thing_box ADD CONSTRAINT"),
                       text("ALTER TABLE thing_box ADD CONSTRAINT")}},
                     {PostgreSql,
                      {text("ALTER TABLE thing_box ADD CONSTRAINT"),
                       text("ALTER TABLE thing_box ADD CONSTRAINT")}}}},
        {.name = "dropped many-to-many",
         .versions = {linked, box() + comma + thing(key3, 3)},
         .found = {{Sqlite, list("table thing_box")},
                   {MariaDb, list("table thing_box")},
                   {PostgreSql, list("table thing_box")}}},
        {.name = "columns of a link table",
         .versions = {linked},
         .afterwards = list("INSERT INTO thing_box (thing_id) VALUES (1)"),
         .found = {{PostgreSql, list("column thing_box.thing_id bigint NOT NULL")}}},
    };
}

} // namespace

QList<refusal> refusals()
{
    return names() + keysAndTypes() + foreignKeys() + changesOfColumns() + changesOfRelationships();
}

} // namespace servers
