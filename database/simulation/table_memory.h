#pragma once

#include "database/catalogue/catalogue.h"

#include <QHash>

namespace database {

/// Tables as CREATE TABLE makes them in one kind of database, by the text of the statement. Nothing but names
/// that are taken has a say in what such a statement makes, so where the same text comes again, as in the
/// full script of the next version, nobody needs to read and judge it again.
class table_memory
{
public:
    struct made_table
    {
        QString written; ///< its name, as the statement has it
        table made;      ///< by the statement alone
    };

    /// Forgets the tables that were neither asked for nor added since the call before. To be called before
    /// each script.
    void beginScript();
    /// The table that the statement makes; none when it is not known. It stays until something is added.
    [[nodiscard]] const made_table * find(const QString & text);
    void add(const QString & text, made_table made);

private:
    struct entry
    {
        made_table what;
        bool isUsed = true; ///< in the script that is run
    };

    QHash<QString, entry> m_tables;
};

} // namespace database
