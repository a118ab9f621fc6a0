#pragma once

#include <QList>
#include <QSqlError>
#include <QString>

namespace zk::sqlite {
class connection;
}

/// The tables of a project file, and what marks a SQLite file as one.
namespace storage::project_schema {

/// Flags of a row of t_property.
enum property_flag : long
{
    flag_identifier = 1,
    flag_not_null = 2,
    flag_unique = 4,
    flag_index = 8,
    flag_transient = 16,
    flag_auto_increment_given = 32,
    flag_auto_increment = 64,
    flag_detail = 128,       ///< there is a row in t_property_detail
    flag_relationship = 256, ///< there is a row in t_relationship
    all_flags = 511
};

enum table_contents
{
    of_model,    ///< which an import replaces
    of_settings, ///< of plug-ins
    of_history   ///< the tagged versions
};

struct table
{
    QString name;
    QString columns; ///< the column definitions between the brackets
    table_contents holds;
};

/// All tables. Rows are kept in model order; nothing but their order in the table says it.
[[nodiscard]] const QList<table> & tables();

/// Makes the empty `file` a project file without contents.
[[nodiscard]] QSqlError create(const zk::sqlite::connection & file);

/// Which tables are examined for damage. That takes as long as reading them.
enum class examined
{
    versions, ///< for who reads these: their messages, since their states may be far larger than what is read
    state,    ///< all but the states of versions
    everything ///< for who writes
};

/// Why `file` cannot be used as a project file; invalid when it can.
[[nodiscard]] QSqlError check(const zk::sqlite::connection & file, examined extent);

} // namespace storage::project_schema
