#include "database/server/catalogue_readers.h"

#include "database/facts/names.h"
#include "database/statement/token.h"

#include <QMap>
#include <QStringBuilder>

#include <algorithm>

namespace database::server {

namespace {

/// All tables, also temporary ones, with their statements and their order.
const QString Tables = QStringLiteral(
    "(SELECT name, sql, rowid AS place FROM sqlite_master WHERE type = 'table' AND name NOT LIKE "
    "'sqlite\\_%' ESCAPE '\\' UNION ALL SELECT name, sql, rowid FROM sqlite_temp_master WHERE type = 'table' "
    "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\')");

/// Words that say something of a table which no pragma tells.
struct telling_word
{
    const char * word;
    const char * what;
};
constexpr telling_word TellingWords[] = {
    {"CHECK", "checks"},
    {"COLLATE", "collations of columns"},
    {"DEFERRABLE", "foreign keys that wait for the end of a transaction"},
    {"CONFLICT", "what a conflict of keys does"},
    {"WITHOUT", "it has no row ids"},
    {"STRICT", "it is strict about types"},
};

constexpr left_out_query LeftOut[] = {
    {"SELECT name, 'view ' || name, name FROM sqlite_master WHERE type = 'view' ORDER BY 1"},
    {"SELECT tbl_name, 'trigger ' || name, name FROM sqlite_master WHERE type = 'trigger' ORDER BY 1, 2"},
    {"SELECT name, type || ' table', name FROM pragma_table_list WHERE schema = 'main' AND "
     "type IN ('virtual', 'shadow') ORDER BY 1",
     database::catalogue_part::table},
    {"SELECT t.name, 'default of column ' || c.name || ': ' || c.dflt_value, c.name FROM %1 AS t, "
     "pragma_table_xinfo(t.name) AS c WHERE c.hidden = 0 AND c.dflt_value IS NOT NULL ORDER BY t.place, "
     "c.cid"},
    {"SELECT t.name, 'computed column ' || c.name, c.name FROM %1 AS t, pragma_table_xinfo(t.name) AS c "
     "WHERE c.hidden IN (2, 3) ORDER BY t.place, c.cid",
     database::catalogue_part::column},
    {"SELECT t.name, 'actions of the foreign key to ' || f.\"table\" || ': ON UPDATE ' || f.on_update || "
     "' ON DELETE ' || f.on_delete, '' FROM %1 AS t, pragma_foreign_key_list(t.name) AS f WHERE f.seq = 0 "
     "AND (f.on_update <> 'NO ACTION' OR f.on_delete <> 'NO ACTION') ORDER BY t.place, f.id"},
    {"SELECT t.name, 'index ' || i.name || ' of a part of the rows', i.name FROM %1 AS t, "
     "pragma_index_list(t.name) AS i WHERE i.partial <> 0 ORDER BY t.place, i.seq",
     database::catalogue_part::index},
    {"SELECT DISTINCT t.name, 'index ' || i.name || ' over expressions', i.name FROM %1 AS t, "
     "pragma_index_list(t.name) AS i, pragma_index_info(i.name) AS p WHERE i.partial = 0 AND p.cid = -2 "
     "ORDER BY t.place, i.seq",
     database::catalogue_part::index},
    {"SELECT DISTINCT t.name, 'order or collation of index ' || i.name, i.name FROM %1 AS t, "
     "pragma_index_list(t.name) AS i, pragma_index_xinfo(i.name) AS p WHERE i.origin = 'c' AND p.key = 1 AND "
     "(p.\"desc\" <> 0 OR p.coll <> 'BINARY') ORDER BY t.place, i.seq"},
};

/// Reads the tables of one connection.
class sqlite_reader
{
public:
    sqlite_reader(const sql_connection & from, sqlite_tables & read) : m_from(from), m_read(read) {}

    [[nodiscard]] database::catalogue read()
    {
        const QMap<QString, QString> statements = statementsByTable();
        QSet<QString> counted;
        QStringList unread;
        for (const QVariantList & row : m_from.rows(QStringLiteral("SELECT name, sql FROM ") + Tables)) {
            const QString name = row[0].toString();
            if (const auto found = m_read.constFind(statements[name]); found != m_read.constEnd()) {
                tableOf(name) = *found;
                continue;
            }
            unread += name;
            tableOf(name).name = name;
            const std::vector<database::token> tokens = database::tokensOf(row[1].toString());
            if (std::any_of(tokens.begin(), tokens.end(),
                            [](const database::token & each) { return each.isWord("AUTOINCREMENT"); })) {
                counted.insert(name);
            }
        }
        if (!unread.isEmpty()) {
            nameUnread(unread);
            addColumns(counted);
            addIndexes();
            addForeignKeys();
        }
        for (const QString & name : std::as_const(unread)) {
            m_read.insert(statements[name], tableOf(name));
        }
        return m_found;
    }

private:
    /// The name and all statements of each table and its indexes, in the order in which they were made.
    [[nodiscard]] QMap<QString, QString> statementsByTable() const
    {
        QMap<QString, QString> statements;
        for (const QVariantList & row :
             m_from.rows(QStringLiteral("SELECT tbl_name, type, name, sql FROM (SELECT 1 AS part, rowid AS "
                                        "place, * FROM sqlite_master "
                                        "UNION ALL SELECT 2, rowid, * FROM sqlite_temp_master) WHERE type IN "
                                        "('table', 'index') ORDER "
                                        "BY part, place"))) {
            QString & text = statements[row[0].toString()];
            for (const QVariant & each : row) {
                text += each.toString() + QChar(u'\0');
            }
        }
        return statements;
    }

    void nameUnread(const QStringList & names)
    {
        QStringList literals;
        for (QString name : names) {
            literals +=
                QLatin1Char('\'') + name.replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
        }
        m_unread = QStringLiteral("(SELECT * FROM %1 WHERE name IN (%2))")
                       .arg(Tables, literals.join(QLatin1Char(',')));
    }

    [[nodiscard]] QList<QVariantList> ofTables(const char * columns, const char * from,
                                               const char * order) const
    {
        return m_from.rows(
            QStringLiteral("SELECT t.name, %1 FROM %2 AS t, %3 ORDER BY t.place, %4")
                .arg(QLatin1String(columns), m_unread, QLatin1String(from), QLatin1String(order)));
    }

    [[nodiscard]] database::table & tableOf(const QVariant & name)
    {
        return m_found.tables[database::foldedTable(m_known, name.toString())];
    }

    void addColumns(const QSet<QString> & counted)
    {
        QMap<QString, QMap<int, QString>> keys;
        for (const QVariantList & c :
             ofTables("c.name, c.type, c.\"notnull\", c.pk", "pragma_table_info(t.name) AS c", "c.cid")) {
            const int place = c[4].toInt();
            tableOf(c[0]).columns.push_back({c[1].toString(), c[2].toString(), c[3].toBool(),
                                             place > 0 && counted.contains(c[0].toString())});
            if (place > 0) {
                keys[c[0].toString()].insert(place, c[1].toString());
            }
        }
        for (auto key = keys.constBegin(); key != keys.constEnd(); ++key) {
            database::table & owner = tableOf(key.key());
            owner.key = database::primary_key{};
            for (const QString & column : *key) {
                owner.key->parts.push_back({column, 0});
            }
        }
    }

    void addIndexes()
    {
        for (const QVariantList & i :
             ofTables("i.name, i.\"unique\", p.name",
                      "pragma_index_list(t.name) AS i, pragma_index_info(i.name) AS p WHERE i.origin <> 'pk'",
                      "i.seq, p.seqno")) {
            auto & indexes = tableOf(i[0]).indexes;
            const QString name = i[1].toString();
            if (indexes.empty() || indexes.back().name != name) {
                indexes.push_back({name, {}, i[2].toBool(), false});
            }
            indexes.back().parts.push_back({i[3].toString(), 0});
        }
    }

    void addForeignKeys()
    {
        QMap<std::pair<QString, int>, database::foreign_key> keys;
        for (const QVariantList & f : ofTables("f.id, f.\"table\", f.\"from\", f.\"to\"",
                                               "pragma_foreign_key_list(t.name) AS f", "f.id, f.seq")) {
            database::foreign_key & key = keys[{f[0].toString(), f[1].toInt()}];
            key.target = f[2].toString();
            key.columns.append(f[3].toString());
            key.targetColumns.append(f[4].toString());
        }
        for (auto key = keys.constBegin(); key != keys.constEnd(); ++key) {
            tableOf(key.key().first).foreignKeys.push_back(*key);
        }
    }

    const sql_connection & m_from;
    sqlite_tables & m_read;
    QString m_unread; ///< those tables that are read now, as a query
    const database::facts & m_known = *database::factsOf(u"sqlite");
    database::catalogue m_found;
};

} // namespace

database::catalogue readSqlite(const sql_connection & from, sqlite_tables & known)
{
    return sqlite_reader(from, known).read();
}

QList<database::left_out> leftOutOfSqlite(const sql_connection & from)
{
    QList<database::left_out> list;
    for (const left_out_query & each : LeftOut) {
        const QByteArray sql = QByteArray(each.sql).replace("%1", Tables.toUtf8());
        addLeftOut(list, from, {sql.constData(), each.standIn});
    }
    for (const QVariantList & row : from.rows(QStringLiteral("SELECT name, sql FROM ") + Tables)) {
        const QString sql = row[1].toString();
        const std::vector<database::token> tokens = database::tokensOf(sql);
        for (const telling_word & telling : TellingWords) {
            if (std::any_of(tokens.begin(), tokens.end(),
                            [&telling](const database::token & each) { return each.isWord(telling.word); })) {
                list.append({row[0].toString(), QString::fromUtf8(telling.what),
                             database::catalogue_part::none, QString()});
            }
        }
    }
    return list;
}

} // namespace database::server
