#include "database/simulation/changes.h"

#include "database/facts/known_types.h"
#include "database/simulation/odd_columns.h"
#include "database/simulation/parts.h"
#include "database/simulation/sizes.h"

#include <QStringBuilder>

#include <algorithm>
#include <span>

namespace database {

namespace {

/// A table while it is being made.
class new_table
{
public:
    new_table(state & at, const create_table & asked, losses & lost) : m_at(at), m_asked(asked), m_lost(lost)
    {
    }

    refusal make()
    {
        if (const refusal why = readNames(); why) {
            return why;
        }
        const bool isTaken = m_at.isTaken(m_made.name);
        const bool sequencesFirst = m_at.known.changes.sequencesNamedFirst.value;
        const auto taken = [this] {
            return refusal{refusal_cause::relation_exists, m_at.holderOf(m_made.name), false};
        };
        if (isTaken && (!sequencesFirst || m_asked.ifNotExists)) {
            return m_asked.ifNotExists ? refusal() : taken();
        }
        if (isEmpty()) {
            return {refusal_cause::table_without_columns, tableObject(m_made.name), false};
        }
        for (const auto step : {&new_table::checkTypes, &new_table::checkKeyNames, &new_table::nameSequences,
                                &new_table::makeColumns}) {
            if (const refusal why = (this->*step)(); why) {
                return why;
            }
        }
        if (isTaken) {
            return taken();
        }
        for (const auto step : {&new_table::makeKey, &new_table::checkKeys, &new_table::checkCounted,
                                &new_table::checkSizes, &new_table::makeReferences}) {
            if (const refusal why = (this->*step)(); why) {
                return why;
            }
        }
        finish();
        return {};
    }

private:
    [[nodiscard]] bool isEmpty() const
    {
        return m_asked.columns.empty() && !m_at.known.changes.emptyTables.value;
    }

    // What cannot be read is refused before anything else is looked at.
    refusal readNames()
    {
        name_reader names(m_at.known, m_lost);
        const QString name = names.createdTable(m_asked.table);
        const refusal ofTable = names.why();
        const bool isSchema =
            ofTable.cause == refusal_cause::schema_missing || ofTable.cause == refusal_cause::database_named;
        if (ofTable && !isSchema) {
            return ofTable;
        }
        if (isEmpty() && !m_asked.key && m_asked.references.empty()) {
            return {refusal_cause::syntax, tableObject(name), false};
        }
        m_made.name = name;
        m_columns = columnsOf(m_at.known, m_made.name, m_asked.columns, m_lost);
        m_types.reserve(m_columns.size());
        m_names.reserve(static_cast<qsizetype>(m_columns.size()));
        name_reader others(m_at.known, m_lost);
        refusal ofCopy;
        for (const column_definition & each : m_columns) {
            const refusal copied = copiedTable(m_at.known, each);
            ofCopy = ofCopy ? ofCopy : copied;
            if (copied) {
                continue;
            }
            m_names += others.newColumn(each.name);
            m_types.push_back(&m_at.types.of(each.type));
            if (hasOtherColumns(each.type)) {
                m_lost.push_back({loss_kind::columns_joined, columnObject(name, m_names.back())});
            }
            const refusal_cause ofType = readType(m_at.known, *m_types.back(), each);
            if (!others.why() && ofType != refusal_cause::none) {
                return {ofType, columnObject(name, m_names.back()), false};
            }
        }
        if (others.why() || isSchema || ofCopy) {
            return others.why() ? others.why() : (isSchema ? ofTable : ofCopy);
        }
        return isKept(m_at.known, name) ? refusal{refusal_cause::name_kept, tableObject(name), false}
                                        : refusal();
    }

    // A key that names a column twice is told before a sequence is.
    refusal checkKeyNames()
    {
        if (!m_asked.key || !m_at.known.changes.sequencesNamedFirst.value) {
            return {};
        }
        QSet<QString> names;
        for (const named_part & part : m_asked.key->parts) {
            const QString name = understood(m_at.known, part.column, name_place::other).name;
            if (names.contains(name)) {
                return {refusal_cause::column_exists, columnObject(m_made.name, name), false};
            }
            names.insert(name);
        }
        return {};
    }

    refusal nameSequences()
    {
        if (!m_at.known.scopes.namesKeysAndSequences.value) {
            return {};
        }
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            if (!m_types[i]->counts()) {
                continue;
            }
            const QString & column = m_names.at(static_cast<qsizetype>(i));
            const QString name = m_at.freeName(m_made.name, column, QLatin1String("seq"));
            if (m_taken.contains(name)) {
                return {refusal_cause::relation_exists, u"sequence " % name, false};
            }
            m_taken.insert(name);
            m_made.sequences.push_back({name, column});
        }
        return {};
    }

    refusal checkTypes()
    {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const QString & name = m_names.at(static_cast<qsizetype>(i));
            if (const refusal why = checkColumnType(m_at, m_made, *m_types[i], m_columns[i], name); why) {
                return why;
            }
        }
        return {};
    }

    refusal makeColumns()
    {
        if (const refusal why = checkColumnCount(m_at.known, m_made.name, m_columns.size()); why) {
            return why;
        }
        // This is looked at in all names before anything else is in one.
        const auto blank = std::find_if(m_names.cbegin(), m_names.cend(), [this](const QString & name) {
            return endsInBlank(m_at.known, name);
        });
        if (blank != m_names.cend()) {
            return checkColumnName(m_at, m_made, *blank);
        }
        m_made.columns.reserve(static_cast<qsizetype>(m_columns.size()));
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const QString & name = m_names.at(static_cast<qsizetype>(i));
            if (const refusal why = checkColumnName(m_at, m_made, name); why) {
                return why;
            }
            m_made.columns.push_back(columnOf(m_at.types, *m_types[i], m_columns[i], m_at.shared(name)));
            if (m_columns[i].primaryKey) {
                m_made.key = primary_key{{}, {{m_made.columns.back().name, 0}}};
            }
        }
        const auto counted = std::count_if(m_made.columns.begin(), m_made.columns.end(),
                                           [](const column & each) { return each.counted; });
        const bool isTooMany = m_at.known.types.onlyOneCounted.value && counted > 1;
        return isTooMany ? refusal{refusal_cause::several_counted, tableObject(m_made.name), false}
                         : refusal();
    }

    refusal makeKey()
    {
        if (!m_asked.key) {
            return checkOwnKeys();
        }
        if (m_asked.key->parts.empty()) {
            return {refusal_cause::syntax, tableObject(m_made.name), false};
        }
        name_reader names(m_at.known, m_lost);
        m_made.key = primary_key{};
        int bytes = 0;
        for (const named_part & part : m_asked.key->parts) {
            const QString name = names.lookedFor(part.column);
            const column * const of = m_at.findColumn(m_made, name);
            if (names.why() || of == nullptr) {
                return names.why() ? names.why()
                                   : refusal{refusal_cause::key_column_missing,
                                             columnObject(m_made.name, name), false};
            }
            if (const refusal why = checkPart(*of, part.prefix); why) {
                return why;
            }
            m_made.key->parts.push_back({of->name, indexedPart(m_at.types, of->type, part.prefix)});
            bytes += bytesInKey(m_at.types, of->type, part.prefix);
            if (const refusal why = checkLength(bytes); why) {
                return why;
            }
        }
        return checkPartCount(m_at.known, tableObject(m_made.name), m_made.key->parts.size());
    }

    // A key that a column is by itself.
    refusal checkOwnKeys()
    {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const column & own = m_made.columns.at(static_cast<qsizetype>(i));
            if (!m_columns[i].primaryKey) {
                continue;
            }
            const refusal ofPart = checkPart(own, 0);
            if (const refusal why = ofPart ? ofPart : checkLength(bytesInKey(m_at.types, own.type, 0)); why) {
                return why;
            }
        }
        return {};
    }

    [[nodiscard]] refusal checkLength(int bytes) const
    {
        const int longest = m_at.known.keys.longest.value;
        const bool isTooLong = longest > 0 && bytes > longest;
        return isTooLong ? refusal{refusal_cause::key_too_long, tableObject(m_made.name), false} : refusal();
    }

    [[nodiscard]] refusal checkPart(const column & of, int prefix) const
    {
        if (!m_at.known.keys.prefixes.value) {
            return prefix == 0 ? refusal()
                               : refusal{refusal_cause::syntax, columnObject(m_made.name, of.name), false};
        }
        if (prefix > 0 && !takesPrefix(m_at.types, of.type, prefix)) {
            return {refusal_cause::prefix_not_possible, columnObject(m_made.name, of.name), false};
        }
        const bool isUnbounded = prefix == 0 && isLarge(m_at.types, of.type);
        return isUnbounded ? refusal{refusal_cause::text_key_without_prefix,
                                     columnObject(m_made.name, of.name), false}
                           : refusal();
    }

    refusal checkCounted()
    {
        for (std::size_t i = 0; i < m_columns.size() && m_at.known.types.countedNeedsKey.value; ++i) {
            const column & own = m_made.columns.at(static_cast<qsizetype>(i));
            const QString & name = own.name;
            const bool isIndexed = (m_made.key && m_made.key->parts.front().column == name) || isUnique(i);
            if (own.counted && !isIndexed) {
                return {refusal_cause::counted_not_possible, columnObject(m_made.name, name), false};
            }
        }
        return {};
    }

    refusal checkSizes()
    {
        const known_types & types = m_at.types;
        int hashes = 0;
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const column_definition & each = m_columns[i];
            const QString & name = m_names.at(static_cast<qsizetype>(i));
            if ((each.unique || each.primaryKey) && !hasOrder(types, each.type)) {
                return {refusal_cause::key_type_not_indexable, columnObject(m_made.name, name), false};
            }
            if (each.unique && isUnboundedInKey(types, each.type)) {
                return {refusal_cause::text_key_without_prefix, columnObject(m_made.name, name), false};
            }
            hashes += each.unique && isHashed(types, each.type) ? 1 : 0;
        }
        for (const key_part & part : m_made.key ? m_made.key->parts : std::vector<key_part>()) {
            if (!hasOrder(types, m_at.findColumn(m_made, part.column)->type)) {
                return {refusal_cause::key_type_not_indexable, columnObject(m_made.name, part.column), false};
            }
        }
        const refusal why = checkStorage(types, m_made, hashes);
        return why ? why : checkPage(types, m_made);
    }

    // Unique columns have an index each.
    refusal checkKeys()
    {
        std::size_t unique = 0;
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            unique += isUnique(i) ? 1 : 0;
        }
        return checkIndexCount(m_at.known, m_made, unique);
    }

    [[nodiscard]] bool isUnique(std::size_t column) const
    {
        return m_columns[column].unique || m_types[column]->isUnique();
    }

    refusal makeReferences()
    {
        for (const reference_definition & each : m_asked.references) {
            name_reader names(m_at.known, m_lost);
            foreign_key made;
            made.columns = names.others(each.columns);
            // Where no schema may be named, any name is one that is looked for.
            made.target = m_at.known.names.indexedNameSchema.value ? names.table(each.target)
                                                                   : names.other(each.target);
            made.targetColumns = names.others(each.targetColumns);
            if (names.why() || made.columns.isEmpty() || made.targetColumns.isEmpty()) {
                return names.why() ? names.why()
                                   : refusal{refusal_cause::syntax, tableObject(m_made.name), false};
            }
            for (QString & column : made.columns) {
                const struct column * const own = m_at.findColumn(m_made, column);
                if (own == nullptr) {
                    return {refusal_cause::key_column_missing, columnObject(m_made.name, column), false};
                }
                column = own->name;
            }
            m_made.foreignKeys.push_back(made);
        }
        return {};
    }

    void finish()
    {
        const QStringList ofKey = m_made.key ? columnsOf(m_made.key->parts) : QStringList();
        for (column & each : m_made.columns) {
            each.notNull = each.notNull || (!m_at.known.keys.nullable.value && ofKey.contains(each.name));
        }
        m_taken.insert(m_made.name);
        if (m_made.key && m_asked.key && m_at.known.keys.keepsNames.value) {
            m_made.key->name = understood(m_at.known, m_asked.key->name, name_place::other).name;
        }
        if (m_made.key && m_at.known.scopes.namesKeysAndSequences.value) {
            m_made.key->name = m_at.freeName(m_made.name, {}, QLatin1String("pkey"), m_taken);
            m_taken.insert(m_made.key->name);
        }
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            if (isUnique(i)) {
                m_made.indexes.push_back(
                    uniqueIndex(m_at, m_made, m_names.at(static_cast<qsizetype>(i)), m_taken));
                m_taken.insert(m_made.indexes.back().name);
            }
        }
        m_at.add(std::move(m_made), 0);
    }

    state & m_at;
    const create_table & m_asked;
    losses & m_lost;
    std::span<const column_definition> m_columns;
    std::vector<const understood_type *> m_types; ///< of these
    QStringList m_names;                          ///< of these, as they are stored
    QSet<QString> m_taken;                        ///< names that were made up for the table so far
    table m_made;
};

} // namespace

refusal apply(state & at, const create_table & asked, losses & lost)
{
    return new_table(at, asked, lost).make();
}

} // namespace database
