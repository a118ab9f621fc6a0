#include "check/remedy/mending.h"

#include "check/remedy/object_mender.h"
#include "check/remedy/table_making.h"

#include "database/facts/names.h"

#include <algorithm>

namespace check {

namespace {

/// Finds statements for differences of one table, or the want of one.
class mender : object_mender
{
public:
    explicit mender(const mending_place & at) : object_mender(at) {}

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
            return add(phase::make_tables, makingStatements(m_at, of.table));
        case table_left:
            return dropTable(of);
        case column_missing:
            return addColumn(of);
        case column_left:
            return dropColumn(of);
        case type:
            return changeColumn(of, m_sql.words().changeType);
        case null:
            return changeNull(of);
        case counter:
            return changeCounter(of);
        case key:
            return changeKey(of);
        case index_missing:
        case unique_missing:
            return addIndex(of);
        case index_left:
        case unique_left:
            return dropIndex(of);
        case foreign_key_missing:
        case foreign_key_left:
        case foreign_key_target:
            return changeForeignKey(of);
        case names:
            return renameObject(of);
        case sequence_left:
            return dropSequence(of);
        case order:
            break;
        }
    }

    static const database::column * columnOf(const database::table * in, const QString & name)
    {
        const auto found = std::find_if(in->columns.begin(), in->columns.end(),
                                        [&](const database::column & each) { return each.name == name; });
        return found == in->columns.end() ? nullptr : &*found;
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
};

} // namespace

QStringList mendingStatements(const mending_place & at, const std::vector<schema_difference> & differences)
{
    return mender(at).mend(differences);
}

} // namespace check
