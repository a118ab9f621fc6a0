#include "check/import/table_draft.h"

#include "database/facts/names.h"

#include <algorithm>

namespace check {

namespace {

using database::facts;

QStringList columnsOf(const std::vector<database::key_part> & parts)
{
    QStringList columns;
    for (const database::key_part & part : parts) {
        columns += part.column;
    }
    return columns;
}

QSet<QString> folded(const facts & known, const QStringList & columns)
{
    QSet<QString> names;
    for (const QString & column : columns) {
        names += database::foldedName(known, column);
    }
    return names;
}

/// Drafts one catalogue.
class drafting
{
public:
    drafting(const database::catalogue & found, const facts & known, const draft_rules & rules)
        : m_found(found), m_known(known), m_rules(rules)
    {
    }

    schema_draft run()
    {
        for (const auto & [key, owner] : m_found.tables) {
            for (const database::foreign_key & each : owner.foreignKeys) {
                m_referred += tableKey(m_found, m_known, each.target);
            }
        }
        schema_draft draft;
        for (const auto & [key, owner] : m_found.tables) {
            if (!m_rules.isTaken(key)) {
                continue;
            }
            if (const std::optional<link_draft> link = linkOf(key, owner)) {
                draft.links.push_back(*link);
            } else {
                draft.tables.push_back(tableOf(key, owner));
            }
        }
        return draft;
    }

private:
    /// What a foreign key says, when it leads to the key of a table of the model.
    struct reference
    {
        QString target;
        QStringList columns; ///< in the order of the target's key
    };

    [[nodiscard]] std::optional<reference> referenceOf(const database::foreign_key & of) const
    {
        const QString target = tableKey(m_found, m_known, of.target);
        const auto found = m_found.tables.find(target);
        if (found == m_found.tables.end() || !m_rules.isReachable(target)) {
            return {};
        }
        const QStringList key = keyColumnsOf(found->second);
        if (key.isEmpty() || key.size() != of.columns.size() || key.size() != of.targetColumns.size()) {
            return {};
        }
        reference made{target, {}};
        for (qsizetype i = 0; i < key.size(); ++i) {
            const auto place =
                std::find_if(of.targetColumns.begin(), of.targetColumns.end(), [&](const QString & each) {
                    return database::isSameName(m_known, each, key[i]);
                });
            if (place == of.targetColumns.end()) {
                return {};
            }
            made.columns += of.columns[place - of.targetColumns.begin()];
        }
        return made;
    }

    [[nodiscard]] std::optional<link_draft> linkOf(const QString & key, const database::table & owner) const
    {
        if (owner.foreignKeys.size() != 2 || m_referred.contains(key) || !m_rules.mayBeLink(key)) {
            return {};
        }
        const std::optional<reference> first = referenceOf(owner.foreignKeys.front());
        const std::optional<reference> second = referenceOf(owner.foreignKeys.back());
        if (!first || !second || first->target == second->target ||
            owner.columns.size() != first->columns.size() + second->columns.size() ||
            folded(m_known, first->columns).intersects(folded(m_known, second->columns)) ||
            isNarrower(owner)) {
            return {};
        }
        return link_draft{&owner, first->target, second->target, first->columns, second->columns};
    }

    /// Whether the rows of a table are told apart by less than all of its columns.
    static bool isNarrower(const database::table & owner)
    {
        const auto isPart = [&owner](const std::vector<database::key_part> & parts) {
            return static_cast<qsizetype>(parts.size()) < owner.columns.size();
        };
        return (owner.key && isPart(owner.key->parts)) ||
               std::any_of(owner.indexes.begin(), owner.indexes.end(),
                           [&](const database::index & each) { return each.unique && isPart(each.parts); });
    }

    [[nodiscard]] bool areUnique(const database::table & owner, const QStringList & columns) const
    {
        const QSet<QString> names = folded(m_known, columns);
        return folded(m_known, keyColumnsOf(owner)) == names ||
               std::any_of(owner.indexes.begin(), owner.indexes.end(), [&](const database::index & each) {
                   return each.unique && folded(m_known, columnsOf(each.parts)) == names;
               });
    }

    [[nodiscard]] QList<property_draft> relationsOf(const database::table & owner) const
    {
        QList<property_draft> relations;
        for (const database::foreign_key & each : owner.foreignKeys) {
            const std::optional<reference> found = referenceOf(each);
            const bool isSecond =
                found && std::any_of(relations.begin(), relations.end(), [&](const property_draft & other) {
                    return areSameColumns(m_known, other.columns, found->columns);
                });
            // Two relationships over the same columns would have one name in scripts.
            if (found && !isSecond) {
                const auto type = areUnique(owner, found->columns) ? model::relationship::one_to_one
                                                                   : model::relationship::many_to_one;
                relations += property_draft{found->columns, false, relation_draft{type, found->target}};
            }
        }
        return relations;
    }

    [[nodiscard]] table_draft tableOf(const QString & key, const database::table & owner) const
    {
        table_draft draft{key, &owner, {}};
        QSet<QString> done;
        const QStringList keyColumns = keyColumnsOf(owner);
        if (!keyColumns.isEmpty()) {
            draft.properties += property_draft{keyColumns, true, {}};
            done = folded(m_known, keyColumns);
        }
        QList<property_draft> relations = relationsOf(owner);
        QSet<QString> made; // by relationships, which need no property beside them
        for (const property_draft & each : relations) {
            if (each.relation.type == model::relationship::many_to_one) {
                made += folded(m_known, each.columns);
            }
        }
        for (const database::column & each : owner.columns) {
            const QString name = database::foldedName(m_known, each.name);
            if (!done.contains(name) && !made.contains(name)) {
                draft.properties += property_draft{{each.name}, false, {}};
            }
            // A relationship stands where the first of its columns does.
            for (const property_draft & relation : relations) {
                if (database::isSameName(m_known, relation.columns.constFirst(), each.name)) {
                    draft.properties += relation;
                }
            }
        }
        return draft;
    }

    const database::catalogue & m_found;
    const facts & m_known;
    const draft_rules & m_rules;
    QSet<QString> m_referred; ///< tables that foreign keys lead to
};

} // namespace

schema_draft draftOf(const database::catalogue & found, const facts & known, const draft_rules & rules)
{
    return drafting(found, known, rules).run();
}

QString tableKey(const database::catalogue & in, const facts & known, const QString & name)
{
    const QString folded = database::foldedTable(known, name);
    for (const QString & each : {name, folded}) {
        if (in.tables.contains(each)) {
            return each;
        }
    }
    // A name may begin with that of the schema, and be cut; blanks around it are none of it.
    const QString read = database::nameKey(known, name.trimmed(), database::name_place::table);
    return in.tables.contains(read) ? read : folded;
}

bool areSameColumns(const facts & known, const QStringList & a, const QStringList & b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&known](const QString & x, const QString & y) {
        return database::isSameName(known, x, y);
    });
}

const database::column * columnOf(const facts & known, const database::table & table, const QString & name)
{
    const auto find = [&](const auto & isIt) {
        const auto found = std::find_if(table.columns.begin(), table.columns.end(), isIt);
        return found == table.columns.end() ? nullptr : &*found;
    };
    const database::column * const found =
        find([&](const database::column & each) { return database::isSameName(known, each.name, name); });
    if (found) {
        return found;
    }
    // A name may be cut, and blanks around it are none of it.
    const QString read = database::nameKey(known, name.trimmed(), database::name_place::other);
    return find(
        [&](const database::column & each) { return database::foldedName(known, each.name) == read; });
}

QStringList keyColumnsOf(const database::table & table)
{
    return table.key ? columnsOf(table.key->parts) : QStringList();
}

bool isUnique(const facts & known, const database::table & table, const QString & column)
{
    return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const database::index & each) {
        return each.unique && areSameColumns(known, columnsOf(each.parts), {column});
    });
}

bool isIndexed(const facts & known, const database::table & table, const QString & column)
{
    const auto isOfForeignKey = [&](const database::index & of) {
        return known.foreignKeys.makesIndex.value &&
               std::any_of(
                   table.foreignKeys.begin(), table.foreignKeys.end(),
                   [&](const database::foreign_key & each) { return isSameName(known, each.name, of.name); });
    };
    return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const database::index & each) {
        return !each.unique && areSameColumns(known, columnsOf(each.parts), {column}) &&
               !isOfForeignKey(each);
    });
}

} // namespace check
