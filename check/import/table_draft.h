#pragma once

#include "database/catalogue/catalogue.h"
#include "database/facts/facts.h"
#include "model/relationship.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace check {

/// A relationship that a foreign key says.
struct relation_draft
{
    model::relationship::type_relation type = model::relationship::many_to_one;
    QString target; ///< key of the table in the catalogue
};

/// A property that a table of a database asks for.
struct property_draft
{
    QStringList columns;
    bool isIdentifier = false;
    relation_draft relation; ///< leads to no table when it is none

    [[nodiscard]] bool isRelation() const { return !relation.target.isEmpty(); }
};

/// The properties of one table, in the order of its columns.
struct table_draft
{
    QString key; ///< of the table in the catalogue
    const database::table * table = nullptr;
    QList<property_draft> properties;
};

/// A table that says nothing but which rows of two others belong together.
struct link_draft
{
    const database::table * table = nullptr;
    QString first; ///< keys of the two tables
    QString second;
    QStringList firstColumns; ///< that refer to them, in the order of their keys
    QStringList secondColumns;
};

/// What the tables of a catalogue become in a model.
struct schema_draft
{
    std::vector<table_draft> tables;
    std::vector<link_draft> links;
};

/// Which tables count, and what may become of them.
struct draft_rules
{
    std::function<bool(const QString & key)> isTaken;     ///< whether the table becomes part of the model
    std::function<bool(const QString & key)> isReachable; ///< whether a relationship may lead to it
    std::function<bool(const QString & key)> mayBeLink;   ///< whether it may be told as many-to-many
};

/// Drafts the model of `found`, which is in normal form and has to outlive the result.
[[nodiscard]] schema_draft draftOf(const database::catalogue & found, const database::facts & known,
                                   const draft_rules & rules);

/// The key of the table that is called `name`: the one that is stored so, else the one that a statement means
/// by the name without quotes.
[[nodiscard]] QString tableKey(const database::catalogue & in, const database::facts & known,
                               const QString & name);
/// Whether both name the same columns, in the same order.
[[nodiscard]] bool areSameColumns(const database::facts & known, const QStringList & a,
                                  const QStringList & b);
/// The column that a statement means by that name; null when the table has none.
[[nodiscard]] const database::column * columnOf(const database::facts & known, const database::table & table,
                                                const QString & name);
/// The names of the columns of its key; empty without one.
[[nodiscard]] QStringList keyColumnsOf(const database::table & table);
/// Whether the column is unique by an index of its own.
[[nodiscard]] bool isUnique(const database::facts & known, const database::table & table,
                            const QString & column);
/// Whether the column has an index of its own that somebody asked for.
[[nodiscard]] bool isIndexed(const database::facts & known, const database::table & table,
                             const QString & column);

} // namespace check
