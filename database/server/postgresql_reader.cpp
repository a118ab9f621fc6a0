#include "database/server/catalogue_readers.h"

namespace database::server {

namespace {

/// The one value of each query is the name of the schema.
constexpr left_out_query LeftOut[] = {
    {"SELECT relname, CASE relkind WHEN 'v' THEN 'view ' WHEN 'm' THEN 'materialized view ' ELSE 'foreign "
     "table ' END || relname, relname FROM pg_class WHERE relkind IN ('v', 'm', 'f') AND relnamespace = "
     "(SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1"},
    {"SELECT p.relname, 'partition ' || t.relname, t.relname FROM pg_class t JOIN pg_inherits i ON "
     "i.inhrelid "
     "= t.oid JOIN pg_class p ON p.oid = i.inhparent WHERE t.relispartition AND t.relkind IN ('r', 'p') AND "
     "t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2",
     database::catalogue_part::table},
    {"SELECT relname, 'it is partitioned by ' || pg_get_partkeydef(oid), relname FROM pg_class WHERE relkind "
     "= 'p' AND NOT relispartition AND relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER "
     "BY 1"},
    {"SELECT t.relname, 'it inherits ' || p.relname, '' FROM pg_class t JOIN pg_inherits i ON i.inhrelid = "
     "t.oid JOIN pg_class p ON p.oid = i.inhparent WHERE NOT t.relispartition AND t.relkind = 'r' AND "
     "t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2"},
    {"SELECT relname, CASE WHEN relpersistence = 'u' THEN 'it is unlogged' ELSE 'row level security' END, '' "
     "FROM pg_class WHERE relkind = 'r' AND (relpersistence = 'u' OR relrowsecurity) AND relnamespace = "
     "(SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1"},
    {"SELECT t.relname, 'default of column ' || a.attname || ': ' || pg_get_expr(d.adbin, d.adrelid), "
     "a.attname FROM pg_attrdef d JOIN pg_class t ON t.oid = d.adrelid JOIN pg_attribute a ON a.attrelid = "
     "d.adrelid AND a.attnum = d.adnum WHERE t.relkind IN ('r', 'p') AND NOT t.relispartition AND "
     "a.attgenerated = '' AND pg_get_expr(d.adbin, d.adrelid) NOT LIKE 'nextval(%' AND t.relnamespace = "
     "(SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY t.relname, a.attnum"},
    {"SELECT t.relname, 'computed column ' || a.attname || ': ' || pg_get_expr(d.adbin, d.adrelid), "
     "a.attname FROM pg_attrdef d JOIN pg_class t ON t.oid = d.adrelid JOIN pg_attribute a ON a.attrelid = "
     "d.adrelid AND a.attnum = d.adnum WHERE t.relkind IN ('r', 'p') AND NOT t.relispartition AND "
     "a.attgenerated <> '' AND t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY "
     "t.relname, a.attnum",
     database::catalogue_part::column},
    {"SELECT t.relname, 'identity of column ' || a.attname || ', which scripts make a sequence of', "
     "a.attname "
     "FROM pg_attribute a JOIN pg_class t ON t.oid = a.attrelid WHERE a.attidentity <> '' AND t.relkind IN "
     "('r', 'p') AND NOT t.relispartition AND t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = "
     "?) ORDER BY t.relname, a.attnum"},
    {"SELECT t.relname, 'collation of column ' || a.attname || ': ' || c.collname, a.attname FROM "
     "pg_attribute a JOIN pg_class t ON t.oid = a.attrelid JOIN pg_type y ON y.oid = a.atttypid JOIN "
     "pg_collation c ON c.oid = a.attcollation WHERE a.attcollation <> y.typcollation AND a.attnum > 0 AND "
     "t.relkind IN ('r', 'p') AND NOT t.relispartition AND t.relnamespace = (SELECT oid FROM pg_namespace "
     "WHERE nspname = ?) ORDER BY t.relname, a.attnum"},
    {"SELECT t.relname, 'type ' || format_type(y.oid, NULL) || ' of column ' || a.attname || ', which "
     "scripts "
     "do not make', a.attname FROM pg_attribute a JOIN pg_class t ON t.oid = a.attrelid JOIN pg_type y ON "
     "y.oid "
     "= a.atttypid JOIN pg_type e ON e.oid = CASE WHEN y.typelem <> 0 THEN y.typelem ELSE y.oid END JOIN "
     "pg_namespace n ON n.oid = e.typnamespace WHERE n.nspname <> 'pg_catalog' AND a.attnum > 0 AND NOT "
     "a.attisdropped AND t.relkind IN ('r', 'p') AND NOT t.relispartition AND t.relnamespace = (SELECT oid "
     "FROM pg_namespace WHERE nspname = ?) ORDER BY t.relname, a.attnum"},
    {"SELECT t.relname, CASE contype WHEN 'c' THEN 'check ' ELSE 'exclusion ' END || conname || ': ' || "
     "pg_get_constraintdef(c.oid), conname FROM pg_constraint c JOIN pg_class t ON t.oid = conrelid WHERE "
     "contype IN ('c', 'x') AND NOT t.relispartition AND t.relnamespace = (SELECT oid FROM pg_namespace "
     "WHERE nspname = ?) ORDER BY 1, 2"},
    {"SELECT t.relname, 'foreign key ' || conname || ' in full: ' || pg_get_constraintdef(c.oid), conname "
     "FROM pg_constraint c JOIN pg_class t ON t.oid = conrelid WHERE contype = 'f' AND NOT t.relispartition "
     "AND (confupdtype <> 'a' OR confdeltype <> 'a' OR confmatchtype <> 's' OR condeferrable OR NOT "
     "convalidated) AND t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2"},
    {"SELECT t.relname, 'constraint ' || conname || ' in full: ' || pg_get_constraintdef(c.oid), conname "
     "FROM "
     "pg_constraint c JOIN pg_class t ON t.oid = conrelid WHERE contype IN ('p', 'u') AND condeferrable AND "
     "t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2"},
    {"SELECT t.relname, 'index ' || n.relname || ': ' || pg_get_indexdef(n.oid), n.relname FROM pg_index x "
     "JOIN pg_class n ON n.oid = indexrelid JOIN pg_am m ON m.oid = n.relam JOIN pg_class t ON t.oid = "
     "indrelid WHERE (indexprs IS NOT NULL OR indpred IS NOT NULL OR m.amname <> 'btree') AND NOT "
     "t.relispartition AND t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2",
     database::catalogue_part::index},
    {"SELECT t.relname, 'index ' || n.relname || ' in full: ' || pg_get_indexdef(n.oid), n.relname FROM "
     "pg_index x JOIN pg_class n ON n.oid = indexrelid JOIN pg_am m ON m.oid = n.relam JOIN pg_class t ON "
     "t.oid = indrelid WHERE indexprs IS NULL AND indpred IS NULL AND m.amname = 'btree' AND (indnatts <> "
     "indnkeyatts OR pg_get_indexdef(n.oid) LIKE '%) NULLS NOT DISTINCT%' OR EXISTS (SELECT 1 FROM "
     "unnest(indoption::int2[]) o WHERE o <> 0) OR EXISTS (SELECT 1 "
     "FROM "
     "unnest(indclass::oid[]) o JOIN pg_opclass c ON c.oid = o WHERE NOT c.opcdefault)) AND NOT "
     "t.relispartition AND t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2"},
    {"SELECT t.relname, 'trigger ' || tgname, tgname FROM pg_trigger JOIN pg_class t ON t.oid = tgrelid "
     "WHERE "
     "NOT tgisinternal AND NOT t.relispartition AND t.relnamespace = (SELECT oid FROM pg_namespace WHERE "
     "nspname = ?) ORDER BY 1, 2"},
    {"SELECT t.relname, 'rule ' || rulename, rulename FROM pg_rewrite JOIN pg_class t ON t.oid = ev_class "
     "WHERE rulename <> '_RETURN' AND t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) "
     "ORDER BY 1, 2"},
    {"SELECT t.relname, 'policy ' || polname, polname FROM pg_policy JOIN pg_class t ON t.oid = polrelid "
     "WHERE t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2"},
    {"SELECT t.relname, 'statistics ' || stxname, stxname FROM pg_statistic_ext JOIN pg_class t ON t.oid = "
     "stxrelid WHERE t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2"},
    {"SELECT t.relname, 'sequence ' || s.relname || ': START ' || seqstart || ' INCREMENT ' || seqincrement "
     "|| "
     "CASE WHEN seqcycle THEN ' CYCLE' ELSE '' END, s.relname FROM pg_sequence JOIN pg_class s ON s.oid = "
     "seqrelid JOIN pg_depend d ON d.objid = s.oid AND d.classid = 'pg_class'::regclass AND d.deptype IN "
     "('a', "
     "'i') JOIN pg_class t ON t.oid = d.refobjid WHERE (seqstart <> 1 OR seqincrement <> 1 OR seqcycle) AND "
     "s.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 1, 2"},
    {"SELECT t.relname, CASE WHEN d.objsubid = 0 THEN 'comment of the table' ELSE 'comment of column ' || "
     "a.attname END, '' FROM pg_description d JOIN pg_class t ON t.oid = d.objoid AND d.classoid = "
     "'pg_class'::regclass LEFT JOIN pg_attribute a ON a.attrelid = t.oid AND a.attnum = d.objsubid WHERE "
     "t.relkind IN ('r', 'p') AND NOT t.relispartition AND t.relnamespace = (SELECT oid FROM pg_namespace "
     "WHERE nspname = ?) ORDER BY t.relname, d.objsubid"},
    {"SELECT '', 'sequence ' || s.relname, s.relname FROM pg_class s WHERE s.relkind = 'S' AND NOT EXISTS "
     "(SELECT 1 FROM pg_depend d WHERE d.objid = s.oid AND d.classid = 'pg_class'::regclass AND d.deptype IN "
     "('a', 'i')) AND s.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 2"},
    {"SELECT '', 'type ' || y.typname, y.typname FROM pg_type y WHERE y.typtype IN ('e', 'd', 'r', 'c') AND "
     "(y.typrelid = 0 OR EXISTS (SELECT 1 FROM pg_class c WHERE c.oid = y.typrelid AND c.relkind = 'c')) AND "
     "NOT EXISTS (SELECT 1 FROM pg_attribute a JOIN pg_class t ON t.oid = a.attrelid WHERE a.atttypid IN "
     "(y.oid, y.typarray) AND a.attnum > 0 AND NOT a.attisdropped AND t.relkind IN ('r', 'p')) AND NOT "
     "EXISTS "
     "(SELECT 1 FROM pg_depend d WHERE d.objid = y.oid AND d.deptype = 'e') AND y.typnamespace = (SELECT oid "
     "FROM pg_namespace WHERE nspname = ?) ORDER BY 2"},
    {"SELECT '', CASE prokind WHEN 'p' THEN 'procedure ' ELSE 'function ' END || proname, proname FROM "
     "pg_proc p WHERE NOT EXISTS (SELECT 1 FROM pg_depend d WHERE d.objid = p.oid AND d.deptype = 'e') AND "
     "pronamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY 2"},
};

/// Reads one schema.
class postgresql_reader
{
public:
    postgresql_reader(const sql_connection & from, const QString & schema) : m_from(from), m_schema(schema) {}

    [[nodiscard]] database::catalogue read()
    {
        addTablesAndColumns();
        addForeignKeys();
        addIndexes();
        addSequences();
        return m_found;
    }

private:
    /// @param query with the name of the schema as its one value
    [[nodiscard]] QList<QVariantList> ofSchema(const char * query) const
    {
        return m_from.rows(QString::fromUtf8(query), {m_schema});
    }
    void addTablesAndColumns();
    void addForeignKeys();
    void addIndexes();
    void addSequences();

    const sql_connection & m_from;
    QString m_schema;
    database::catalogue m_found;
};

void postgresql_reader::addTablesAndColumns()
{
    for (const QVariantList & t :
         ofSchema("SELECT relname FROM pg_class WHERE relkind IN ('r', 'p') AND relnamespace = (SELECT oid "
                  "FROM pg_namespace WHERE nspname = ?)")) {
        m_found.tables[t[0].toString()].name = t[0].toString();
    }
    for (const QVariantList & c :
         ofSchema("SELECT t.relname, a.attname, format_type(a.atttypid, a.atttypmod), a.attnotnull, "
                  "a.attidentity <> '' OR coalesce(pg_get_expr(d.adbin, d.adrelid), '') LIKE 'nextval(%' "
                  "FROM pg_attribute a JOIN pg_class t ON t.oid = a.attrelid LEFT JOIN pg_attrdef d ON "
                  "d.adrelid = t.oid AND d.adnum = a.attnum WHERE t.relkind IN ('r', 'p') AND t.relnamespace "
                  "= (SELECT oid FROM pg_namespace WHERE nspname = ?) AND a.attnum > 0 AND NOT "
                  "a.attisdropped ORDER BY t.relname, a.attnum")) {
        m_found.tables[c[0].toString()].columns.push_back(
            {c[1].toString(), c[2].toString(), c[3].toBool(), c[4].toBool()});
    }
}

void postgresql_reader::addForeignKeys()
{
    for (const QVariantList & f : ofSchema(
             "SELECT t.relname, c.conname, CASE WHEN f.relnamespace = t.relnamespace THEN '' ELSE n.nspname "
             "|| '.' END || f.relname, own.attname, other.attname FROM pg_constraint c JOIN pg_class t ON "
             "t.oid "
             "= c.conrelid JOIN pg_class f ON f.oid = c.confrelid JOIN pg_namespace n ON n.oid = "
             "f.relnamespace CROSS JOIN LATERAL unnest(c.conkey, c.confkey) WITH ORDINALITY AS k(num, "
             "target, "
             "place) JOIN pg_attribute own ON own.attrelid = t.oid AND own.attnum = k.num JOIN pg_attribute "
             "other ON other.attrelid = f.oid AND other.attnum = k.target WHERE c.contype = 'f' AND "
             "t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER BY t.relname, "
             "c.conname, k.place")) {
        addForeignKeyColumn(m_found.tables[f[0].toString()], f);
    }
}

void postgresql_reader::addIndexes()
{
    // What an index includes besides is no part of its key; a part that is no column has no name.
    for (const QVariantList & i : ofSchema(
             "SELECT t.relname, n.relname, x.indisprimary, x.indisunique, a.attname FROM pg_index x JOIN "
             "pg_class n ON n.oid = x.indexrelid JOIN pg_class t ON t.oid = x.indrelid CROSS JOIN LATERAL "
             "unnest(x.indkey::int2[]) WITH ORDINALITY AS k(num, place) LEFT JOIN pg_attribute a ON "
             "a.attrelid = t.oid AND a.attnum = k.num WHERE t.relkind IN ('r', 'p') AND k.place <= "
             "x.indnkeyatts AND t.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = ?) ORDER "
             "BY t.relname, n.relname, k.place")) {
        database::table & owner = m_found.tables[i[0].toString()];
        const QString name = i[1].toString();
        const database::key_part part{i[4].toString(), 0};
        if (i[2].toBool()) {
            owner.key = owner.key ? owner.key : database::primary_key{name, {}};
            owner.key->parts.push_back(part);
        } else if (!owner.indexes.empty() && owner.indexes.back().name == name) {
            owner.indexes.back().parts.push_back(part);
        } else {
            owner.indexes.push_back({name, {part}, i[3].toBool(), false});
        }
    }
}

void postgresql_reader::addSequences()
{
    for (const QVariantList & s :
         ofSchema("SELECT s.relname, t.relname, a.attname FROM pg_class s LEFT JOIN pg_depend d ON d.objid = "
                  "s.oid AND d.classid = 'pg_class'::regclass AND d.deptype IN ('a', 'i') LEFT JOIN pg_class "
                  "t ON t.oid = d.refobjid LEFT JOIN pg_attribute a ON a.attrelid = t.oid AND a.attnum = "
                  "d.refobjsubid WHERE s.relkind = 'S' AND s.relnamespace = (SELECT oid FROM pg_namespace "
                  "WHERE nspname = ?)")) {
        const database::sequence sequence{s[0].toString(), s[2].toString()};
        auto & owner = s[1].isNull() ? m_found.sequences : m_found.tables[s[1].toString()].sequences;
        owner.push_back(sequence);
    }
}

} // namespace

database::catalogue readPostgreSql(const sql_connection & from, const QString & schema)
{
    return postgresql_reader(from, schema).read();
}

QList<database::left_out> leftOutOfPostgreSql(const sql_connection & from, const QString & schema)
{
    QList<database::left_out> list;
    for (const left_out_query & each : LeftOut) {
        addLeftOut(list, from, each, {schema});
    }
    return list;
}

} // namespace database::server
