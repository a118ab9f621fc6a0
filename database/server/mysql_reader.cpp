#include "database/server/catalogue_readers.h"

#include "database/facts/names.h"

namespace database::server {

namespace {

// The server has defaults as expressions; NULL is that of every column that may be null.
constexpr left_out_query LeftOut[] = {
    {"SELECT table_name, concat(lower(table_type), ' ', table_name), table_name FROM "
     "information_schema.tables WHERE table_schema = DATABASE() AND table_type NOT IN ('BASE TABLE', 'SYSTEM "
     "VERSIONED') ORDER BY 1",
     database::catalogue_part::table},
    {"SELECT table_name, 'it keeps former rows', table_name FROM information_schema.tables WHERE "
     "table_schema = DATABASE() AND table_type = 'SYSTEM VERSIONED' ORDER BY 1"},
    {"SELECT table_name, concat('storage engine ', engine), table_name FROM information_schema.tables WHERE "
     "table_schema = DATABASE() AND engine <> 'InnoDB' ORDER BY 1"},
    {"SELECT table_name, 'comment of the table', table_name FROM information_schema.tables WHERE "
     "table_schema = DATABASE() AND table_comment <> '' AND table_type <> 'VIEW' ORDER BY 1"},
    {"SELECT t.table_name, concat('collation ', t.table_collation), t.table_name FROM "
     "information_schema.tables t JOIN information_schema.schemata s ON s.schema_name = t.table_schema WHERE "
     "t.table_schema = DATABASE() AND t.table_collation <> s.default_collation_name ORDER BY 1"},
    {"SELECT c.table_name, concat('collation of column ', c.column_name, ': ', c.collation_name), "
     "c.column_name FROM information_schema.columns c JOIN information_schema.tables t ON t.table_schema = "
     "c.table_schema AND t.table_name = c.table_name WHERE c.table_schema = DATABASE() AND c.collation_name "
     "<> t.table_collation ORDER BY c.table_name, c.ordinal_position"},
    {"SELECT table_name, concat('default of column ', column_name, ': ', column_default), column_name FROM "
     "information_schema.columns WHERE table_schema = DATABASE() AND column_default IS NOT NULL AND "
     "column_default <> 'NULL' ORDER BY table_name, ordinal_position"},
    {"SELECT table_name, concat('computed column ', column_name, ': ', generation_expression), column_name "
     "FROM information_schema.columns WHERE table_schema = DATABASE() AND generation_expression <> '' "
     "ORDER BY table_name, ordinal_position",
     database::catalogue_part::column},
    {"SELECT table_name, concat('column ', column_name, ': ', extra), column_name FROM "
     "information_schema.columns WHERE table_schema = DATABASE() AND lower(extra) LIKE '%on update%' ORDER "
     "BY table_name, ordinal_position"},
    {"SELECT table_name, concat('column ', column_name, ': invisible'), column_name FROM "
     "information_schema.columns WHERE table_schema = DATABASE() AND lower(extra) LIKE '%invisible%' ORDER "
     "BY "
     "table_name, ordinal_position"},
    {"SELECT table_name, concat('column ', column_name, ': zerofill'), column_name FROM "
     "information_schema.columns WHERE table_schema = DATABASE() AND column_type LIKE '% zerofill' ORDER BY "
     "table_name, ordinal_position"},
    {"SELECT table_name, concat('comment of column ', column_name), column_name FROM "
     "information_schema.columns WHERE table_schema = DATABASE() AND column_comment <> '' ORDER BY "
     "table_name, ordinal_position"},
    {"SELECT t.table_name, concat('check ', c.constraint_name, ': ', c.check_clause), c.constraint_name FROM "
     "information_schema.table_constraints t JOIN information_schema.check_constraints c ON "
     "c.constraint_schema = t.constraint_schema AND c.constraint_name = t.constraint_name AND %1 WHERE "
     "t.table_schema = DATABASE() AND t.constraint_type = 'CHECK' ORDER BY 1, 2"},
    {"SELECT table_name, concat('actions of foreign key ', constraint_name, ': ON UPDATE ', update_rule, "
     "' ON DELETE ', delete_rule), constraint_name FROM information_schema.referential_constraints WHERE "
     "constraint_schema = DATABASE() AND (update_rule NOT IN ('RESTRICT', 'NO ACTION') OR delete_rule NOT IN "
     "('RESTRICT', 'NO ACTION')) ORDER BY 1, 2"},
    {"SELECT DISTINCT table_name, concat('index ', index_name, ' of kind ', index_type), index_name FROM "
     "information_schema.statistics WHERE table_schema = DATABASE() AND index_type NOT IN ('BTREE', 'HASH') "
     "ORDER BY 1, 2",
     database::catalogue_part::index},
    {"SELECT DISTINCT table_name, concat('index ', index_name, ' over expressions'), index_name FROM "
     "information_schema.statistics WHERE table_schema = DATABASE() AND column_name IS NULL ORDER BY 1, 2",
     database::catalogue_part::index},
    {"SELECT DISTINCT table_name, concat('order of index ', index_name), index_name FROM "
     "information_schema.statistics WHERE table_schema = DATABASE() AND collation = 'D' ORDER BY 1, 2"},
    {"SELECT table_name, concat(count(*), ' partitions by ', min(partition_method)), '' FROM "
     "information_schema.partitions WHERE table_schema = DATABASE() AND partition_name IS NOT NULL GROUP BY "
     "table_name ORDER BY 1"},
    {"SELECT event_object_table, concat('trigger ', trigger_name), trigger_name FROM "
     "information_schema.triggers WHERE trigger_schema = DATABASE() ORDER BY 1, 2"},
    {"SELECT '', concat(lower(routine_type), ' ', routine_name), routine_name FROM "
     "information_schema.routines WHERE routine_schema = DATABASE() ORDER BY 2"},
    {"SELECT '', concat('event ', event_name), event_name FROM information_schema.events WHERE event_schema "
     "= DATABASE() ORDER BY 2"},
};

// MariaDB tells the table of a check, since two tables may have checks of one name; MySQL has no such column.
QByteArray sameTable(const sql_connection & from)
{
    const bool isTold =
        !from.rows(QStringLiteral("SELECT 1 FROM information_schema.columns WHERE table_schema = "
                                  "'information_schema' AND lower(table_name) = 'check_constraints' AND "
                                  "lower(column_name) = 'table_name'"))
             .isEmpty();
    return isTold ? "c.table_name = t.table_name" : "TRUE";
}

/// Reads the database in use.
class mysql_reader
{
public:
    mysql_reader(const sql_connection & from, const database::facts & known) : m_from(from), m_known(known) {}

    [[nodiscard]] database::catalogue read()
    {
        addTablesAndColumns();
        addIndexes();
        addForeignKeys();
        return m_found;
    }

private:
    [[nodiscard]] database::table & tableOf(const QVariant & name)
    {
        return m_found.tables[database::foldedTable(m_known, name.toString())];
    }
    void addTablesAndColumns();
    void addIndexes();
    void addForeignKeys();

    const sql_connection & m_from;
    const database::facts & m_known;
    database::catalogue m_found;
};

void mysql_reader::addTablesAndColumns()
{
    for (const QString & table : m_from.firstColumn(QStringLiteral(
             "SELECT table_name FROM information_schema.tables WHERE table_schema = DATABASE()"))) {
        tableOf(table).name = table;
    }
    for (const QVariantList & c :
         m_from.rows(QStringLiteral("SELECT table_name, column_name, column_type, is_nullable, extra FROM "
                                    "information_schema.columns WHERE table_schema = DATABASE() "
                                    "ORDER BY table_name, ordinal_position"))) {
        tableOf(c[0]).columns.push_back({c[1].toString(), c[2].toString(),
                                         c[3].toString() == QStringLiteral("NO"),
                                         c[4].toString().contains(QLatin1String("auto_increment"))});
    }
}

void mysql_reader::addIndexes()
{
    for (const QVariantList & i :
         m_from.rows(QStringLiteral("SELECT table_name, index_name, non_unique, column_name, sub_part FROM "
                                    "information_schema.statistics WHERE table_schema = DATABASE() "
                                    "ORDER BY table_name, index_name, seq_in_index"))) {
        database::table & owner = tableOf(i[0]);
        const QString name = i[1].toString();
        const database::key_part part{i[3].toString(), i[4].toInt()};
        if (name == QStringLiteral("PRIMARY")) {
            owner.key = owner.key ? owner.key : database::primary_key{};
            owner.key->parts.push_back(part);
        } else if (!owner.indexes.empty() && owner.indexes.back().name == name) {
            owner.indexes.back().parts.push_back(part);
        } else {
            owner.indexes.push_back({name, {part}, !i[2].toBool(), false});
        }
    }
}

void mysql_reader::addForeignKeys()
{
    for (const QVariantList & f :
         m_from.rows(QStringLiteral("SELECT table_name, constraint_name, referenced_table_name, column_name, "
                                    "referenced_column_name FROM information_schema.key_column_usage "
                                    "WHERE table_schema = DATABASE() AND referenced_table_name IS NOT NULL "
                                    "ORDER BY table_name, constraint_name, ordinal_position"))) {
        addForeignKeyColumn(tableOf(f[0]), f);
    }
}

} // namespace

database::catalogue readMySql(const sql_connection & from, const database::facts & known)
{
    return mysql_reader(from, known).read();
}

QList<database::left_out> leftOutOfMySql(const sql_connection & from)
{
    QList<database::left_out> list;
    const QByteArray table = sameTable(from);
    for (const left_out_query & each : LeftOut) {
        const QByteArray sql = QByteArray(each.sql).replace("%1", table);
        addLeftOut(list, from, {sql.constData(), each.standIn});
    }
    return list;
}

} // namespace database::server
