#pragma once

#include "database/facts/facts.h"
#include "database/statement/reader.h"
#include "plugin/statement_source.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <map>

namespace check {

/// What the scripts made so far, by who asked for it: neither the models nor the catalogue tell under which
/// name the index of a property is there.
class made_objects
{
public:
    explicit made_objects(const database::facts & known) : m_known(known) {}

    /// Who asked for an object, and when.
    struct origin
    {
        QString name;   ///< of the object, as the script wrote it
        QString script; ///< that made it
        long entity = 0;
        long property = 0;
        long relationship = 0;
    };

    /// Takes a statement that was done.
    void add(const database::statement & done, const plugin::statement_record & record);

    /// Takes that a table was made, named as the script writes it.
    void addTable(const QString & written, const plugin::statement_record & record);

    /// Takes a statement that was refused: what it would have renamed keeps its name.
    void addRefused(const database::statement & refused, const plugin::statement_record & record);
    /// Takes a rename of a column that the script left out.
    void keepColumn(long property, const QString & name);
    // What tables of entities, and columns of properties, are called still although the model renamed them.
    [[nodiscard]] const std::map<long, QString> & keptTables() const { return m_keptTables; }
    [[nodiscard]] const std::map<long, QString> & keptColumns() const { return m_keptColumns; }

    [[nodiscard]] bool hasTableOf(long entity) const { return m_tables.contains(entity); }
    /// The script that made the table of the entity; empty when none did.
    [[nodiscard]] QString makerOf(long entity) const { return m_tables.value(entity); }
    /// The entity whose key the sequence of that name counts; 0 when no script made it.
    [[nodiscard]] long ownerOfSequence(const QString & name) const;
    [[nodiscard]] bool isLinkTable(const QString & table) const;
    /// The index, foreign key, sequence or trigger of that name; none when no script made it.
    [[nodiscard]] const origin * indexNamed(const QString & name) const;
    [[nodiscard]] const origin * foreignKeyNamed(const QString & name) const;
    [[nodiscard]] const origin * sequenceNamed(const QString & name) const;
    [[nodiscard]] const origin * triggerNamed(const QString & name) const;
    /// The name under which the index of a property, or the foreign key of a relationship, was made last;
    /// empty when it was not.
    [[nodiscard]] QString indexOf(long property) const { return m_indexOf.value(property); }
    [[nodiscard]] QString foreignKeyOf(long relationship) const { return m_foreignKeyOf.value(relationship); }

private:
    [[nodiscard]] QString keyOf(const QString & name) const;
    [[nodiscard]] const origin * named(const QString & name, const QHash<QString, origin> & in) const;

    const database::facts & m_known;
    QHash<long, QString> m_tables;
    QSet<QString> m_links;
    std::map<long, QString> m_keptTables;
    std::map<long, QString> m_keptColumns;
    QHash<QString, origin> m_indexes;
    QHash<QString, origin> m_foreignKeys;
    QHash<QString, origin> m_sequences;
    QHash<QString, origin> m_triggers;
    QHash<long, QString> m_indexOf;
    QHash<long, QString> m_foreignKeyOf;
};

} // namespace check
