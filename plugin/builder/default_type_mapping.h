#pragma once

#include "zk/zk_collection.h"

#include <QString>

namespace plugin {

/// The SQL types that one C++ type has in the databases; a column of this struct is a default type table.
struct default_type
{
    const char * cppType;
    const char * generic;
    const char * mysql;
    const char * postgresql;
    const char * oracle;
    const char * mssqlserver;
};

/// A new list of all C++ types with the SQL types of `column`, in the order of the table.
[[nodiscard]] zk::ZkCollection<QString, QString> defaultTypeMapping(const char * default_type::*column);

} // namespace plugin
