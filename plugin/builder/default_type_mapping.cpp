#include "plugin/builder/default_type_mapping.h"

namespace plugin {

namespace {

// Existing databases were built with these types. The irregularities (bool, the small integers, Oracle's
// times) are settled and stay.
// clang-format off
constexpr default_type DefaultTypes[] = {
//   C++ type                   generic, SQLite  MySQL        PostgreSQL   Oracle           SQL Server
    {"<default type>",          "TEXT",          "TEXT",      "TEXT",      "CLOB",          "TEXT"},
    {"bool",                    "SMALLINT",      "SMALLINT",  "BOOLEAN",   "SMALLINT",      "TINYINT"},
    {"zk_bool",                 "SMALLINT",      "SMALLINT",  "BOOLEAN",   "SMALLINT",      "TINYINT"},
    {"short",                   "SMALLINT",      "SMALLINT",  "SMALLINT",  "SMALLINT",      "SMALLINT"},
    {"int",                     "INTEGER",       "INTEGER",   "INTEGER",   "INTEGER",       "INT"},
    {"long",                    "INTEGER",       "INTEGER",   "INTEGER",   "INTEGER",       "INT"},
    {"long long",               "INTEGER",       "BIGINT",    "BIGINT",    "INTEGER",       "BIGINT"},
    {"float",                   "FLOAT",         "FLOAT",     "FLOAT",     "FLOAT",         "FLOAT"},
    {"double",                  "FLOAT",         "DOUBLE",    "FLOAT",     "FLOAT",         "FLOAT"},
    {"long double",             "FLOAT",         "DOUBLE",    "FLOAT",     "FLOAT",         "FLOAT"},
    {"unsigned short",          "SMALLINT",      "SMALLINT",  "SMALLINT",  "SMALLINT",      "SMALLINT"},
    {"unsigned int",            "INTEGER",       "INTEGER",   "INTEGER",   "INTEGER",       "INT"},
    {"unsigned long",           "INTEGER",       "INTEGER",   "INTEGER",   "INTEGER",       "INT"},
    {"unsigned long long",      "INTEGER",       "BIGINT",    "BIGINT",    "INTEGER",       "BIGINT"},
    {"qint8",                   "INTEGER",       "SMALLINT",  "SMALLINT",  "SMALLINT",      "SMALLINT"},
    {"quint8",                  "INTEGER",       "SMALLINT",  "SMALLINT",  "SMALLINT",      "SMALLINT"},
    {"qint16",                  "INTEGER",       "INTEGER",   "INTEGER",   "INTEGER",       "INT"},
    {"quint16",                 "INTEGER",       "INTEGER",   "INTEGER",   "INTEGER",       "INT"},
    {"qint32",                  "INTEGER",       "INTEGER",   "INTEGER",   "INTEGER",       "INT"},
    {"quint32",                 "INTEGER",       "INTEGER",   "INTEGER",   "INTEGER",       "INT"},
    {"qint64",                  "INTEGER",       "BIGINT",    "BIGINT",    "INTEGER",       "BIGINT"},
    {"quint64",                 "INTEGER",       "BIGINT",    "BIGINT",    "INTEGER",       "BIGINT"},
    {"std::string",             "TEXT",          "TEXT",      "TEXT",      "CLOB",          "TEXT"},
    {"std::wstring",            "TEXT",          "TEXT",      "TEXT",      "CLOB",          "TEXT"},
    {"QString",                 "TEXT",          "TEXT",      "TEXT",      "CLOB",          "TEXT"},
    {"QVariant",                "TEXT",          "TEXT",      "TEXT",      "CLOB",          "TEXT"},
    {"QUuid",                   "TEXT",          "TEXT",      "TEXT",      "VARCHAR2(255)", "TEXT"},
    {"QDate",                   "DATE",          "DATE",      "DATE",      "DATE",          "DATE"},
    {"QTime",                   "TIME",          "TIME",      "TIME",      "DATE",          "TIME"},
    {"QDateTime",               "TIMESTAMP",     "TIMESTAMP", "TIMESTAMP", "TIMESTAMP",     "DATETIME"},
    {"QByteArray",              "BLOB",          "LONGBLOB",  "BYTEA",     "BLOB",          "IMAGE"},
    {"zk::ZkDateNeutral",       "TEXT",          "TEXT",      "TEXT",      "VARCHAR2(8)",   "TEXT"},
    {"zk::ZkTimeNeutral",       "TEXT",          "TEXT",      "TEXT",      "VARCHAR2(6)",   "TEXT"},
    {"zk::ZkDateTimeNeutral",   "TEXT",          "TEXT",      "TEXT",      "VARCHAR2(14)",  "TEXT"},
};
// clang-format on

} // namespace

zk::ZkCollection<QString, QString> defaultTypeMapping(const char * default_type::*column)
{
    zk::ZkCollection<QString, QString> list;
    for (const default_type & type : DefaultTypes) {
        list.insert(QString::fromLatin1(type.cppType), QString::fromLatin1(type.*column));
    }
    return list;
}

} // namespace plugin
