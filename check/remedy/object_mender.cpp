#include "check/remedy/object_mender.h"

#include "check/remedy/table_making.h"

#include "database/facts/names.h"
#include "model/entity.h"
#include "model/project.h"

#include <algorithm>

namespace check {

namespace {

/// The index of that name over the columns; null when there is none.
const database::index * indexOf(const database::table & in, const QString & name, const QStringList & columns)
{
    const auto found = std::find_if(in.indexes.begin(), in.indexes.end(), [&](const database::index & each) {
        return each.name == name && columnsOf(each.parts) == columns;
    });
    return found == in.indexes.end() ? nullptr : &*found;
}

} // namespace

QStringList columnsOf(const std::vector<database::key_part> & parts)
{
    QStringList columns;
    for (const database::key_part & each : parts) {
        columns += each.column;
    }
    return columns;
}

void object_mender::add(phase when, const QStringList & sql)
{
    for (const QString & each : sql) {
        const auto same = std::find_if(m_found.begin(), m_found.end(),
                                       [&](const auto & one) { return one.second == each; });
        if (same == m_found.end()) {
            m_found.emplace_back(when, each);
        }
    }
}

void object_mender::addOrRebuild(phase when, const schema_difference & of, const QStringList & sql)
{
    if (!sql.isEmpty()) {
        add(when, sql);
        return;
    }
    m_rebuilt.insert(of.table);
    add(phase::make_tables, rebuildingStatements(m_at, of.table));
}

const database::table * object_mender::tableIn(const database::catalogue & in, const QString & name) const
{
    const auto found =
        in.tables.find(database::nameKey(m_at.from.step.known(), name, database::name_place::table));
    return found == in.tables.end() ? nullptr : &found->second;
}

const database::table * object_mender::expected(const schema_difference & of) const
{
    return tableIn(m_at.expected, of.table);
}

const database::table * object_mender::held(const schema_difference & of) const
{
    return tableIn(m_at.state, of.table);
}

values object_mender::words(const schema_difference & of) const
{
    return {{QStringLiteral("table"), m_sql.table(of.table)},
            {QStringLiteral("columns"), m_sql.names(of.columns)}};
}

void object_mender::changeKey(const schema_difference & of)
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

bool object_mender::isNumbered(const database::index & of) const
{
    const QString kept = m_at.from.step.known().names.keptBeginning.value;
    return of.name.isEmpty() || (!kept.isEmpty() && of.name.startsWith(kept));
}

void object_mender::addIndex(const schema_difference & of)
{
    const database::table * const in = expected(of);
    const database::index * const found = indexOf(*in, of.expectedName, of.columns);
    // One that goes with a foreign key comes with it.
    if (found == nullptr || found->madeByForeignKey) {
        return;
    }
    // Where indexes have exchanged their names each waits for the other one.
    if (!m_freed.contains(found->name)) {
        m_freed.insert(found->name);
        freeName(found->name, &database::table::indexes, m_at.from.step.known().scopes.indexes.value);
    }
    values with = words(of);
    const QString name =
        isNumbered(*found) ? QStringLiteral("idx_%1_%2").arg(in->name, of.columns.join(u'_')) : found->name;
    with.insert(QStringLiteral("name"), m_sql.name(name));
    with.insert(QStringLiteral("columns"), m_sql.parts(found->parts));
    const QStringList sql = found->unique
                                ? sql_writer::statements(m_sql.words().addUnique, with)
                                : QStringList(filled("CREATE INDEX {name} ON {table} ({columns});", with));
    addOrRebuild(phase::add_indexes, of, sql);
}

template <class Object>
void object_mender::freeName(const QString & name, QList<Object> database::table::*of,
                             database::name_scope scope)
{
    for (const auto & [key, table] : m_at.state.tables) {
        const database::table * const wanted = tableIn(m_at.expected, table.name);
        const bool hasName = std::any_of((table.*of).begin(), (table.*of).end(),
                                         [&](const Object & each) { return each.name == name; });
        std::vector<schema_difference> all;
        if (hasName && wanted != nullptr && scope == database::name_scope::database) {
            compareTables(*wanted, table, all);
        }
        for (const schema_difference & each : all) {
            if (each.kind == difference_kind::names && each.foundName == name) {
                renameObject(each);
            }
        }
    }
}

void object_mender::dropIndex(const schema_difference & of)
{
    const database::index * const found = indexOf(*held(of), of.foundName, of.columns);
    if (found == nullptr) {
        return;
    }
    if (isNumbered(*found)) {
        addOrRebuild(phase::drop_indexes, of,
                     found->unique ? sql_writer::statements(m_sql.words().dropNumberedUnique, words(of))
                                   : QStringList());
        return;
    }
    dropIndexNamed(of, found->name, found->unique);
}

void object_mender::dropIndexNamed(const schema_difference & of, const QString & name, bool isUnique)
{
    values with = words(of);
    with.insert(QStringLiteral("name"), m_sql.name(name));
    add(phase::drop_indexes,
        sql_writer::statements(isUnique && m_sql.words().dropUnique != nullptr ? m_sql.words().dropUnique
                                                                               : m_sql.words().dropIndex,
                               with));
}

void object_mender::dropForeignKey(const QString & table, const QString & name)
{
    add(phase::drop_foreign_keys,
        sql_writer::statements(m_sql.words().dropForeignKey, {{QStringLiteral("table"), m_sql.table(table)},
                                                              {QStringLiteral("name"), m_sql.name(name)}}));
}

void object_mender::changeForeignKey(const schema_difference & of)
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
            freeName(each.name, &database::table::foreignKeys,
                     m_at.from.step.known().scopes.foreignKeys.value);
            add(phase::add_foreign_keys, m_sql.addForeignKey(of.table, each));
        }
    }
}

void object_mender::renameObject(const schema_difference & of)
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

void object_mender::makeIndexAgain(const schema_difference & of)
{
    schema_difference other = of;
    dropIndexNamed(of, of.foundName, false);
    other.kind = difference_kind::index_missing;
    addIndex(other);
}

void object_mender::dropSequence(const schema_difference & of)
{
    const bool isGone =
        m_at.from.step.project(moment::now)->getEntityById(m_at.from.step.made().ownerOfSequence(of.found)) ==
        nullptr;
    if (isGone) {
        add(phase::drop_tables, {QStringLiteral("DROP SEQUENCE %1;").arg(m_sql.name(of.found))});
    }
}

} // namespace check
