#include "check/remedy/mending.h"

#include "check/remedy/table_making.h"

#include "database/facts/names.h"
#include "model/entity.h"
#include "model/project.h"

#include <algorithm>

namespace check {

namespace {

/// In which order statements can run.
enum class phase
{
    drop_foreign_keys,
    drop_indexes,
    drop_keys,
    rename,
    make_tables,
    add_columns,
    change_columns,
    drop_columns,
    add_keys,
    add_indexes,
    add_foreign_keys,
    drop_tables
};

/// The columns of an index or a key, by their names.
QStringList columnsOf(const std::vector<database::key_part> & parts)
{
    QStringList columns;
    for (const database::key_part & each : parts) {
        columns += each.column;
    }
    return columns;
}

/// Finds statements for differences of one table, or the want of one.
class mender
{
public:
    explicit mender(const mending_place & at) : m_at(at), m_sql(at.sql) {}

    QStringList mend(const std::vector<schema_difference> & differences)
    {
        for (const schema_difference & each : differences) {
            if (!m_rebuilt.contains(each.table)) {
                mendOne(each);
            }
        }
        std::stable_sort(m_found.begin(), m_found.end(),
                         [](const auto & a, const auto & b) { return a.first < b.first; });
        QStringList sql;
        for (const auto & [when, text] : m_found) {
            sql += text;
        }
        return sql;
    }

private:
    void mendOne(const schema_difference & of)
    {
        using enum difference_kind;
        switch (of.kind) {
        case table_missing:
            add(phase::make_tables, makingStatements(m_at, of.table));
            break;
        case table_left:
            dropTable(of);
            break;
        case column_missing:
            addColumn(of);
            break;
        case column_left:
            dropColumn(of);
            break;
        case type:
            changeColumn(of, m_sql.words().changeType);
            break;
        case null:
            changeNull(of);
            break;
        case counter:
            changeCounter(of);
            break;
        case key:
            changeKey(of);
            break;
        case index_missing:
        case unique_missing:
            addIndex(of);
            break;
        case index_left:
        case unique_left:
            dropIndex(of);
            break;
        case foreign_key_missing:
        case foreign_key_left:
        case foreign_key_target:
            changeForeignKey(of);
            break;
        case names:
            renameObject(of);
            break;
        case sequence_left:
            dropSequence(of);
            break;
        case order:
            break;
        }
    }

    void add(phase when, const QStringList & sql)
    {
        for (const QString & each : sql) {
            const auto same = std::find_if(m_found.begin(), m_found.end(),
                                           [&](const auto & one) { return one.second == each; });
            if (same == m_found.end()) {
                m_found.emplace_back(when, each);
            }
        }
    }

    /// The words of the database for it, else the table is made anew.
    void addOrRebuild(phase when, const schema_difference & of, const QStringList & sql)
    {
        if (!sql.isEmpty()) {
            add(when, sql);
            return;
        }
        m_rebuilt.insert(of.table);
        add(phase::make_tables, rebuildingStatements(m_at, of.table));
    }

    [[nodiscard]] const database::table * tableIn(const database::catalogue & in, const QString & name) const
    {
        const auto found =
            in.tables.find(database::nameKey(m_at.from.step.known(), name, database::name_place::table));
        return found == in.tables.end() ? nullptr : &found->second;
    }
    [[nodiscard]] const database::table * expected(const schema_difference & of) const
    {
        return tableIn(m_at.expected, of.table);
    }
    [[nodiscard]] const database::table * held(const schema_difference & of) const
    {
        return tableIn(m_at.state, of.table);
    }
    static const database::column * columnOf(const database::table * in, const QString & name)
    {
        const auto found = std::find_if(in->columns.begin(), in->columns.end(),
                                        [&](const database::column & each) { return each.name == name; });
        return found == in->columns.end() ? nullptr : &*found;
    }

    [[nodiscard]] values words(const schema_difference & of) const
    {
        return {{QStringLiteral("table"), m_sql.table(of.table)},
                {QStringLiteral("columns"), m_sql.names(of.columns)}};
    }

    void dropTable(const schema_difference & of)
    {
        const QString key = database::nameKey(m_at.from.step.known(), of.table, database::name_place::table);
        for (const auto & [own, other] : m_at.state.tables) {
            for (const database::foreign_key & each : other.foreignKeys) {
                const bool refers = database::nameKey(m_at.from.step.known(), each.target,
                                                      database::name_place::table) == key;
                if (refers && own != key && m_at.from.step.known().foreignKeys.keepsTarget.value) {
                    dropForeignKey(other.name, each.name);
                }
            }
        }
        add(phase::drop_tables, {QStringLiteral("DROP TABLE %1;").arg(m_sql.table(of.table))});
    }

    void addColumn(const schema_difference & of)
    {
        database::column column = *columnOf(expected(of), of.columns.front());
        const database::column wanted = column;
        if (column.counted) {
            return;
        }
        column.notNull = false;
        add(phase::add_columns, m_sql.about(m_sql.words().addColumn, of.table, column));
        if (wanted.notNull) {
            fill(of, wanted);
            add(phase::change_columns, m_sql.about(m_sql.words().setNotNull, of.table, wanted));
        }
    }

    /// Rows that have no value get one.
    void fill(const schema_difference & of, const database::column & column)
    {
        add(phase::change_columns,
            {QStringLiteral("UPDATE %1 SET %2 = %3 WHERE %2 IS NULL;")
                 .arg(m_sql.table(of.table), m_sql.name(column.name), m_sql.filling(column))});
    }

    void dropColumn(const schema_difference & of)
    {
        const database::table * const in = held(of);
        const QString name = of.columns.front();
        const bool takesAll = m_at.from.step.known().changes.columnTakesItsObjects.value;
        for (const database::foreign_key & each : in->foreignKeys) {
            if (each.columns.contains(name) && !takesAll) {
                if (m_sql.words().dropForeignKey == nullptr) {
                    addOrRebuild(phase::drop_columns, of, {});
                    return;
                }
                dropForeignKey(in->name, each.name);
            }
        }
        for (const database::index & each : in->indexes) {
            if (columnsOf(each.parts).contains(name) && !takesAll) {
                if (isNumbered(each)) {
                    addOrRebuild(phase::drop_columns, of, {});
                    return;
                }
                dropIndexNamed(of, each.name, each.unique);
            }
        }
        const bool isInKey = in->key && columnsOf(in->key->parts).contains(name) && !takesAll;
        if (isInKey) {
            add(phase::drop_keys, sql_writer::statements(m_sql.words().dropKey, words(of)));
        }
        addOrRebuild(phase::drop_columns, of,
                     isInKey && m_sql.words().dropKey == nullptr
                         ? QStringList()
                         : m_sql.about(m_sql.words().dropColumn, of.table, *columnOf(in, name)));
    }

    void changeColumn(const schema_difference & of, const char * how)
    {
        addOrRebuild(phase::change_columns, of,
                     m_sql.about(how, of.table, *columnOf(expected(of), of.columns.front())));
    }

    void changeNull(const schema_difference & of)
    {
        const database::column & wanted = *columnOf(expected(of), of.columns.front());
        const bool canChange = m_sql.words().setNotNull != nullptr;
        if (wanted.notNull && canChange) {
            fill(of, wanted);
        }
        changeColumn(of, wanted.notNull ? m_sql.words().setNotNull : m_sql.words().dropNotNull);
    }

    void changeCounter(const schema_difference & of)
    {
        const database::column & wanted = *columnOf(expected(of), of.columns.front());
        const database::table & sequences = wanted.counted ? *expected(of) : *held(of);
        QString name;
        for (const database::sequence & each : sequences.sequences) {
            name = each.column == wanted.name ? each.name : name;
        }
        const char * const how = wanted.counted ? m_sql.words().count : m_sql.words().countNoMore;
        values with = words(of);
        with.insert(QStringLiteral("column"), m_sql.name(wanted.name));
        with.insert(QStringLiteral("definition"), m_sql.definition(wanted));
        with.insert(QStringLiteral("name"), m_sql.name(name));
        addOrRebuild(phase::add_indexes, of, sql_writer::statements(how, with));
    }

    void changeKey(const schema_difference & of)
    {
        const auto & wanted = expected(of)->key;
        const auto & is = held(of)->key;
        if ((is && m_sql.words().dropKey == nullptr) || (wanted && m_sql.words().addKey == nullptr)) {
            addOrRebuild(phase::drop_keys, of, {});
            return;
        }
        values with = words(of);
        if (is) {
            with.insert(QStringLiteral("name"), m_sql.name(is->name));
            add(phase::drop_keys, sql_writer::statements(m_sql.words().dropKey, with));
        }
        if (wanted) {
            with.insert(QStringLiteral("columns"), m_sql.parts(wanted->parts));
            add(phase::add_keys, sql_writer::statements(m_sql.words().addKey, with));
        }
    }

    /// Whether the database has given the index a name, or none, that no statement can say.
    [[nodiscard]] bool isNumbered(const database::index & of) const
    {
        const QString kept = m_at.from.step.known().names.keptBeginning.value;
        return of.name.isEmpty() || (!kept.isEmpty() && of.name.startsWith(kept));
    }

    void addIndex(const schema_difference & of)
    {
        const database::table * const in = expected(of);
        const auto found =
            std::find_if(in->indexes.begin(), in->indexes.end(), [&](const database::index & each) {
                return each.name == of.expectedName && columnsOf(each.parts) == of.columns;
            });
        // One that goes with a foreign key comes with it.
        if (found == in->indexes.end() || found->madeByForeignKey) {
            return;
        }
        freeIndexName(*found);
        values with = words(of);
        const QString name = isNumbered(*found)
                                 ? QStringLiteral("idx_%1_%2").arg(in->name, of.columns.join(u'_'))
                                 : found->name;
        with.insert(QStringLiteral("name"), m_sql.name(name));
        with.insert(QStringLiteral("columns"), m_sql.parts(found->parts));
        const QStringList sql =
            found->unique ? sql_writer::statements(m_sql.words().addUnique, with)
                          : QStringList(filled("CREATE INDEX {name} ON {table} ({columns});", with));
        addOrRebuild(phase::add_indexes, of, sql);
    }

    /// An index of another table that has kept the name gets the one that it has in a new database.
    void freeIndexName(const database::index & of)
    {
        for (const auto & [key, table] : m_at.state.tables) {
            const database::table * const wanted = tableIn(m_at.expected, table.name);
            const bool hasName =
                std::any_of(table.indexes.begin(), table.indexes.end(),
                            [&](const database::index & each) { return each.name == of.name; });
            std::vector<schema_difference> all;
            if (hasName && wanted != nullptr && isShared(m_at.from.step.known().scopes.indexes.value)) {
                compareTables(*wanted, table, all);
            }
            for (const schema_difference & each : all) {
                if (each.kind == difference_kind::names && each.foundName == of.name) {
                    renameObject(each);
                }
            }
        }
    }

    void freeForeignKeyName(const database::foreign_key & of)
    {
        for (const auto & [key, table] : m_at.state.tables) {
            const database::table * const wanted = tableIn(m_at.expected, table.name);
            const bool hasName =
                std::any_of(table.foreignKeys.begin(), table.foreignKeys.end(),
                            [&](const database::foreign_key & each) { return each.name == of.name; });
            std::vector<schema_difference> all;
            if (hasName && wanted != nullptr && isShared(m_at.from.step.known().scopes.foreignKeys.value)) {
                compareTables(*wanted, table, all);
            }
            for (const schema_difference & each : all) {
                if (each.kind == difference_kind::names && each.foundName == of.name) {
                    renameObject(each);
                }
            }
        }
    }

    static bool isShared(database::name_scope scope) { return scope == database::name_scope::database; }

    void dropIndex(const schema_difference & of)
    {
        const database::table * const in = held(of);
        const auto found =
            std::find_if(in->indexes.begin(), in->indexes.end(), [&](const database::index & each) {
                return each.name == of.foundName && columnsOf(each.parts) == of.columns;
            });
        if (found == in->indexes.end()) {
            return;
        }
        if (isNumbered(*found)) {
            addOrRebuild(phase::drop_indexes, of, {});
            return;
        }
        dropIndexNamed(of, found->name, found->unique);
    }

    void dropIndexNamed(const schema_difference & of, const QString & name, bool isUnique)
    {
        values with = words(of);
        with.insert(QStringLiteral("name"), m_sql.name(name));
        add(phase::drop_indexes,
            sql_writer::statements(isUnique && m_sql.words().dropUnique != nullptr ? m_sql.words().dropUnique
                                                                                   : m_sql.words().dropIndex,
                                   with));
    }

    void dropForeignKey(const QString & table, const QString & name)
    {
        add(phase::drop_foreign_keys, sql_writer::statements(m_sql.words().dropForeignKey,
                                                             {{QStringLiteral("table"), m_sql.table(table)},
                                                              {QStringLiteral("name"), m_sql.name(name)}}));
    }

    void changeForeignKey(const schema_difference & of)
    {
        if (m_sql.words().dropForeignKey == nullptr) {
            addOrRebuild(phase::drop_foreign_keys, of, {});
            return;
        }
        if (of.kind != difference_kind::foreign_key_missing) {
            dropForeignKey(of.table, of.foundName);
        }
        for (const database::foreign_key & each : expected(of)->foreignKeys) {
            if (of.kind != difference_kind::foreign_key_left && each.name == of.expectedName) {
                freeForeignKeyName(each);
                add(phase::add_foreign_keys, m_sql.addForeignKey(of.table, each));
            }
        }
    }

    void renameObject(const schema_difference & of)
    {
        const database::table * const in = held(of);
        const auto isNamed = [&](const auto & each) { return each.name == of.foundName; };
        const bool isIndex = std::any_of(in->indexes.begin(), in->indexes.end(), isNamed);
        const bool isSequence = std::any_of(in->sequences.begin(), in->sequences.end(), isNamed);
        const auto key = std::find_if(in->foreignKeys.begin(), in->foreignKeys.end(), isNamed);
        values with = words(of);
        with.insert(QStringLiteral("name"), m_sql.name(of.foundName));
        with.insert(QStringLiteral("new"), m_sql.name(of.expectedName));
        if (isSequence) {
            add(phase::rename, sql_writer::statements(m_sql.words().renameSequence, with));
        } else if (key != in->foreignKeys.end() && m_sql.words().renameConstraint == nullptr &&
                   !of.foundName.isEmpty()) {
            database::foreign_key again = *key;
            again.name = of.expectedName;
            dropForeignKey(of.table, key->name);
            add(phase::add_foreign_keys, m_sql.addForeignKey(of.table, again));
        } else if (isIndex && m_sql.words().renameIndex == nullptr && !of.foundName.isEmpty()) {
            makeIndexAgain(of);
        } else if (!of.foundName.isEmpty() && !of.expectedName.isEmpty()) {
            add(phase::rename, sql_writer::statements(isIndex || (in->key && in->key->name == of.foundName)
                                                          ? m_sql.words().renameIndex
                                                          : m_sql.words().renameConstraint,
                                                      with));
        }
    }

    void makeIndexAgain(const schema_difference & of)
    {
        schema_difference other = of;
        dropIndexNamed(of, of.foundName, false);
        other.kind = difference_kind::index_missing;
        addIndex(other);
    }

    void dropSequence(const schema_difference & of)
    {
        const bool isGone = m_at.from.step.project(moment::now)
                                ->getEntityById(m_at.from.step.made().ownerOfSequence(of.found)) == nullptr;
        if (isGone) {
            add(phase::drop_tables, {QStringLiteral("DROP SEQUENCE %1;").arg(m_sql.name(of.found))});
        }
    }

    const mending_place & m_at;
    const sql_writer & m_sql;
    QSet<QString> m_rebuilt;
    std::vector<std::pair<phase, QString>> m_found;
};

} // namespace

QStringList mendingStatements(const mending_place & at, const std::vector<schema_difference> & differences)
{
    return mender(at).mend(differences);
}

} // namespace check
