#pragma once

#include <QString>

namespace database {

/// A part of a catalogue.
enum class catalogue_part
{
    none,
    table,
    column,
    index
};

/// Something of a database that a catalogue has no place for, or holds in a form that says too much of it.
struct left_out
{
    QString table; ///< that it belongs to; empty for the database as a whole
    QString what;  ///< in words, such as "default of column state: 'open'"
    /// What stands for it in the catalogue, and should not be taken for what it seems there.
    catalogue_part standIn = catalogue_part::none;
    QString name; ///< of that part
};

} // namespace database
