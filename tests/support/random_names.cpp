#include "support/random_names.h"

namespace support {

namespace {

const char * const Nouns[] = {"plant",  "garden", "person",  "invoice", "town",   "bridge", "song",
                              "ticket", "stage",  "visitor", "author",  "copy",   "loan",   "shelf",
                              "train",  "engine", "station", "driver",  "parcel", "depot"};

const char * const Words[] = {"title", "length", "height", "note",    "price",   "weight", "since",
                              "until", "street", "phone",  "colour",  "remark",  "amount", "place",
                              "code",  "mail",   "number", "picture", "comment", "state"};

// They meet each other in names that are made of table and column.
const char * const Short[] = {"a",       "b",         "c",      "a_b",    "b_c",      "a_b_c",   "A",
                              "B",       "x",         "X",      "a_id",   "b_id",     "id",      "ID",
                              "idx_a_b", "idx_a_b_c", "fk_a_b", "a_pkey", "a_id_seq", "a_b_key", "a_id_seq1",
                              "b_pkey",  "x_y",       "y",      "t"};

const char * const Keywords[] = {
    "order",    "group",   "select",     "table",    "user",         "key",       "keys",
    "index",    "rows",    "row",        "rank",     "constraint",   "like",      "left",
    "check",    "default", "references", "primary",  "unique",       "value",     "values",
    "text",     "date",    "timestamp",  "name",     "type",         "limit",     "offset",
    "end",      "begin",   "cross",      "window",   "function",     "system",    "ctid",
    "xmin",     "xmax",    "cmin",       "tableoid", "oid",          "if",        "exists",
    "column",   "foreign", "delete",     "update",   "from",         "to",        "interval",
    "analyze",  "all",     "any",        "verbose",  "ilike",        "similar",   "lateral",
    "sqlite_x", "rowid",   "Select",     "GROUP",    "current_user", "collation", "autoincrement",
    "glob",     "without", "add",        "change",   "rename",       "comment",   "generated",
    "int",      "not",     "null",       "fulltext", "spatial",      "period",    "unlock",
    "true",     "json"};

const char * const Odd[] = {"my-table", "my table", "1st",   "42",    "a.b",   "main.x", "temp.y",
                            "public.y", "shop.z",   "x$y",   "$x",    "a`b",   "a\"b",   "Äpfel",
                            "äpfel",    "ÄPFEL",    "naïve", "naive", "表",    "rôle",   "😀",
                            "a|b",      "1e5",      "0x1f",  "_",     "a-b-c", "end ",   "a#b",
                            "a@b",      "a/b",      "a+b",   "a=b",   "a%b",   "a:b",    "a.b.c"};

const char * const PlainTypes[] = {"INTEGER",      "BIGINT",        "SMALLINT", "VARCHAR(80)", "VARCHAR(255)",
                                   "CHAR(36)",     "DECIMAL(10,2)", "DATE",     "TIMESTAMP",   "TEXT",
                                   "NUMERIC(8,3)", "VARCHAR(300)",  "TIME",     "REAL",        "VARCHAR(20)"};

const char * const WildTypes[] = {"VARCHAR(768)",
                                  "VARCHAR(769)",
                                  "VARCHAR(1000)",
                                  "VARCHAR(4000)",
                                  "VARCHAR(16383)",
                                  "VARCHAR(16384)",
                                  "VARCHAR(20000)",
                                  "VARCHAR(20000000)",
                                  "CHAR(255)",
                                  "CHAR(300)",
                                  "DECIMAL(65,2)",
                                  "DECIMAL(70,2)",
                                  "DECIMAL(12, 4)",
                                  "NUMERIC",
                                  "DECIMAL",
                                  "DOUBLE",
                                  "DOUBLE PRECISION",
                                  "FLOAT(10)",
                                  "FLOAT(60)",
                                  "REAL",
                                  "MEDIUMINT",
                                  "INT UNSIGNED",
                                  "BIGINT UNSIGNED",
                                  "TINYINT",
                                  "TINYINT(1)",
                                  "INT(11)",
                                  "INTEGER(5)",
                                  "INT2",
                                  "INT4",
                                  "INT8",
                                  "BOOL",
                                  "BOOLEAN",
                                  "BIT",
                                  "BIT(8)",
                                  "BIT VARYING(5)",
                                  "SERIAL",
                                  "BIGSERIAL",
                                  "YEAR",
                                  "DATETIME",
                                  "DATETIME(3)",
                                  "TIMESTAMP(3)",
                                  "TIMESTAMPTZ",
                                  "TIMESTAMP WITH TIME ZONE",
                                  "TIME(2)",
                                  "TIME WITH TIME ZONE",
                                  "INTERVAL",
                                  "BYTEA",
                                  "BLOB",
                                  "LONGBLOB",
                                  "MEDIUMBLOB",
                                  "TINYTEXT",
                                  "MEDIUMTEXT",
                                  "LONGTEXT",
                                  "VARBINARY(200)",
                                  "BINARY(16)",
                                  "JSON",
                                  "JSONB",
                                  "UUID",
                                  "XML",
                                  "POINT",
                                  "INET",
                                  "INET6",
                                  "MACADDR",
                                  "CITEXT",
                                  "MONEY",
                                  "CHARACTER VARYING(20)",
                                  "CHARACTER(8)",
                                  "NVARCHAR(20)",
                                  "NCHAR(5)",
                                  "VARCHAR",
                                  "CHAR",
                                  "TEXT(100)",
                                  "BLOB(10)",
                                  "VARCHAR2(30)",
                                  "NUMBER",
                                  "NUMBER(10)",
                                  "CLOB",
                                  "IMAGE",
                                  "NTEXT",
                                  "ENUM('a','b')",
                                  "SET('x')",
                                  "INTEGER[]",
                                  "DATE(3)",
                                  "INTEGER UNSIGNED",
                                  "my_type",
                                  "FLOAT4",
                                  "FLOAT8",
                                  "DEC(5,1)",
                                  "FIXED(5,1)",
                                  "LONG",
                                  "SMALLSERIAL",
                                  "OID",
                                  "NAME",
                                  "HSTORE",
                                  "VARCHAR(MAX)"};

const char * const CppTypes[] = {"int",        "long",
                                 "QString",    "QString",
                                 "bool",       "double",
                                 "QDate",      "quint64",
                                 "qint8",      "QUuid",
                                 "QByteArray", "std::string",
                                 "QTime",      "short",
                                 "float",      "QDateTime",
                                 "long long",  "QVariant",
                                 "quint16",    "money_t",
                                 "unknown",    "zk::ZkDateNeutral"};

QString longName(dice & chance)
{
    static const char * const Starts[] = {"a_rather_long_name_that_goes_on_and_on_for_quite_a_while_",
                                          "größe_des_hauses_am_rande_der_straße_nach_süden_über_"};
    QString name = QString::fromUtf8(chance.of(Starts));
    const int length = 55 + chance.below(16);
    while (name.size() < length) {
        name += QLatin1Char("abä"[chance.below(2)]);
    }
    if (chance.oneIn(4)) {
        name = name.left(length - 1) + QChar(0x00e9);
    }
    return name.left(length);
}

} // namespace

QString plainTable(dice & chance)
{
    return QString::fromLatin1(chance.of(Nouns));
}

QString plainColumn(dice & chance)
{
    return QString::fromLatin1(chance.of(Words));
}

QString wildName(dice & chance)
{
    const int kind = chance.below(20);
    if (kind < 10) {
        return QString::fromLatin1(chance.of(Short));
    }
    if (kind < 14) {
        return plainColumn(chance);
    }
    if (kind < 16) {
        return QString::fromLatin1(chance.of(Keywords));
    }
    return kind < 18 ? longName(chance) : QString::fromUtf8(chance.of(Odd));
}

QString plainSqlType(dice & chance)
{
    return QString::fromLatin1(chance.of(PlainTypes));
}

QString wildSqlType(dice & chance)
{
    return chance.oneIn(3) ? plainSqlType(chance) : QString::fromLatin1(chance.of(WildTypes));
}

QString cppType(dice & chance)
{
    return QString::fromLatin1(chance.of(CppTypes));
}

} // namespace support
