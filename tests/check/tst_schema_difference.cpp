// In what two databases differ, one difference a row.

#include "check/view/schema_difference.h"

#include <QTest>

#include <functional>

using namespace check;
using database::catalogue;
using database::table;

namespace {

table gigs()
{
    table made;
    made.name = "gig";
    made.columns = {
        {"id", "bigint", true, true}, {"title", "text", false, false}, {"venue", "integer", false, false}};
    made.key = database::primary_key{"gig_pkey", {{"id", 0}}};
    made.indexes = {{"idx_gig_title", {{"title", 0}}, false, false},
                    {"gig_title_key", {{"title", 0}}, true, false}};
    made.foreignKeys = {{"fk_gig_venue", {"venue"}, "venue", {"id"}}};
    made.sequences = {{"gig_id_seq", "id"}};
    return made;
}

catalogue with(const table & of)
{
    catalogue held;
    held.tables[of.name] = of;
    return held;
}

QString told(const schema_difference & of)
{
    return QStringLiteral("%1|%2|%3|%4|%5")
        .arg(static_cast<int>(of.kind))
        .arg(of.table, of.columns.join(u','), of.expected, of.found);
}

QStringList told(const std::vector<schema_difference> & all)
{
    QStringList lines;
    for (const schema_difference & each : all) {
        lines += told(each);
    }
    return lines;
}

QString line(difference_kind kind, const char * rest)
{
    return QString::number(static_cast<int>(kind)) + u'|' + QString::fromUtf8(rest);
}

using change = std::function<void(table &)>;

} // namespace

Q_DECLARE_METATYPE(change)

class tst_schema_difference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Of parts that say the same the name tells which is which.
    void partsThatSayTheSame()
    {
        table expected = gigs();
        expected.foreignKeys = {{"fk_a", {"venue"}, "venue", {"id"}}, {"fk_b", {"venue"}, "venue", {"id"}}};
        expected.indexes = {{"idx_a", {{"title", 0}}, false, false}, {"idx_b", {{"title", 0}}, false, false}};
        table found = expected;
        std::swap(found.foreignKeys[0], found.foreignKeys[1]);
        std::swap(found.indexes[0], found.indexes[1]);
        QCOMPARE(told(compareSchemas(with(expected), with(found))), QStringList());
        found.foreignKeys[1].name = "fk_c";
        found.indexes[1].name = "idx_c";
        QCOMPARE(told(compareSchemas(with(expected), with(found))),
                 QStringList({line(difference_kind::names, "gig|title|idx_a|idx_c"),
                              line(difference_kind::names, "gig|venue|fk_a|fk_c")}));
        found.foreignKeys.pop_back();
        QCOMPARE(told(compareSchemas(with(expected), with(found))),
                 QStringList({line(difference_kind::foreign_key_missing, "gig|venue|(venue) → venue (id)|"),
                              line(difference_kind::names, "gig|title|idx_a|idx_c")}));
    }
    void differences_data()
    {
        QTest::addColumn<change>("how"); // what the history left otherwise
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char * name, const change & how, const QStringList & expected) {
            QTest::newRow(name) << how << expected;
        };
        using enum difference_kind;
        row("nothing", [](table &) {}, {});
        row("column missing", [](table & t) { t.columns.pop_back(); },
            {line(column_missing, "gig|venue|integer|")});
        row("column left",
            [](table & t) {
                t.columns.push_back({"old", "date", false, false});
            },
            {line(column_left, "gig|old||date")});
        row("type", [](table & t) { t.columns[1].type = "integer"; }, {line(type, "gig|title|text|integer")});
        row("null", [](table & t) { t.columns[1].notNull = true; }, {line(null, "gig|title|NULL|NOT NULL")});
        row("counter", [](table & t) { t.columns[0].counted = false; },
            {line(counter, "gig|id|auto-increment|not auto-increment")});
        row("order", [](table & t) { std::swap(t.columns[1], t.columns[2]); },
            {line(order, "gig||id, title, venue|id, venue, title")});
        row("no key", [](table & t) { t.key.reset(); }, {line(key, "gig|id|(id)|")});
        row("other key",
            [](table & t) {
                t.key->parts = {{"title", 0}};
            },
            {line(key, "gig|id|(id)|(title)")});
        row("index missing", [](table & t) { t.indexes.erase(t.indexes.begin()); },
            {line(index_missing, "gig|title|(title)|")});
        row("index left",
            [](table & t) {
                t.indexes.push_back({"old", {{"venue", 0}}, false, false});
            },
            {line(index_left, "gig|venue||(venue)")});
        row("unique missing", [](table & t) { t.indexes.pop_back(); },
            {line(unique_missing, "gig|title|UNIQUE (title)|")});
        row("unique left",
            [](table & t) {
                t.indexes.push_back({"old", {{"venue", 0}}, true, false});
            },
            {line(unique_left, "gig|venue||UNIQUE (venue)")});
        row("prefix", [](table & t) { t.indexes[0].parts[0].prefix = 255; },
            {line(index_missing, "gig|title|(title)|"), line(index_left, "gig|title||(title(255))")});
        row("foreign key missing", [](table & t) { t.foreignKeys.clear(); },
            {line(foreign_key_missing, "gig|venue|(venue) → venue (id)|")});
        row("foreign key left",
            [](table & t) {
                t.foreignKeys.push_back({"old", {"title"}, "song", {"id"}});
            },
            {line(foreign_key_left, "gig|title||(title) → song (id)")});
        row("foreign key leads elsewhere", [](table & t) { t.foreignKeys[0].target = "hall"; },
            {line(foreign_key_target, "gig|venue|(venue) → venue (id)|(venue) → hall (id)")});
        row("name of an index", [](table & t) { t.indexes[0].name = "idx_show_title"; },
            {line(names, "gig|title|idx_gig_title|idx_show_title")});
        row("name of a foreign key", [](table & t) { t.foreignKeys[0].name = "fk_show"; },
            {line(names, "gig|venue|fk_gig_venue|fk_show")});
        row("name of the key", [](table & t) { t.key->name = "show_pkey"; },
            {line(names, "gig|id|gig_pkey|show_pkey")});
        row("name of a sequence", [](table & t) { t.sequences[0].name = "show_id_seq"; },
            {line(names, "gig|id|gig_id_seq|show_id_seq")});
    }
    void differences()
    {
        QFETCH(change, how);
        QFETCH(QStringList, expected);
        table left = gigs();
        how(left);
        QStringList found;
        for (const schema_difference & each : compareSchemas(with(gigs()), with(left))) {
            found += told(each);
        }
        QCOMPARE(found, expected);
    }
    void tables()
    {
        const auto missing = compareSchemas(with(gigs()), {});
        QCOMPARE(missing.size(), std::size_t(1));
        QCOMPARE(told(missing.front()), line(difference_kind::table_missing, "gig||gig|"));
        const auto left = compareSchemas({}, with(gigs()));
        QCOMPARE(left.size(), std::size_t(1));
        QCOMPARE(told(left.front()), line(difference_kind::table_left, "gig|||gig"));
    }
};

QTEST_APPLESS_MAIN(tst_schema_difference)
#include "tst_schema_difference.moc"
