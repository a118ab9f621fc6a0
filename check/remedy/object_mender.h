#pragma once

#include "check/remedy/mending.h"

#include <QSet>

#include <utility>
#include <vector>

namespace check {

/// The columns of an index or a key, by their names.
[[nodiscard]] QStringList columnsOf(const std::vector<database::key_part> & parts);

/// Finds statements for what belongs to a table: keys, indexes, foreign keys, sequences and their names.
class object_mender
{
protected:
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

    explicit object_mender(const mending_place & at) : m_at(at), m_sql(at.sql) {}

    void add(phase when, const QStringList & sql);
    /// The words of the database for it, else the table is made anew.
    void addOrRebuild(phase when, const schema_difference & of, const QStringList & sql);
    [[nodiscard]] const database::table * tableIn(const database::catalogue & in, const QString & name) const;
    [[nodiscard]] const database::table * expected(const schema_difference & of) const;
    [[nodiscard]] const database::table * held(const schema_difference & of) const;
    [[nodiscard]] values words(const schema_difference & of) const;
    void changeKey(const schema_difference & of);
    /// Whether the database has given the index a name, or none, that no statement can say.
    [[nodiscard]] bool isNumbered(const database::index & of) const;
    void addIndex(const schema_difference & of);
    /// An index, or a foreign key, of another table that has kept the name gets the one that it has in a new
    /// database.
    template <class Object>
    void freeName(const QString & name, QList<Object> database::table::*of, database::name_scope scope);
    void dropIndex(const schema_difference & of);
    void dropIndexNamed(const schema_difference & of, const QString & name, bool isUnique);
    void dropForeignKey(const QString & table, const QString & name);
    void changeForeignKey(const schema_difference & of);
    void renameObject(const schema_difference & of);
    void makeIndexAgain(const schema_difference & of);
    void dropSequence(const schema_difference & of);

    const mending_place & m_at;
    const sql_writer & m_sql;
    QSet<QString> m_rebuilt; ///< tables that are made anew
    QSet<QString> m_freed;   ///< names of indexes that are given up, or are about to be
    std::vector<std::pair<phase, QString>> m_found;
};

} // namespace check
