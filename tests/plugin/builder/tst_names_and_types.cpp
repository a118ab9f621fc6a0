#include "opened_builder.h"
#include "support/model_builder.h"

#include "plugin/builder/ddl_export_builder_default.h"
#include "plugin/builder/ddl_export_builder_mssqlserver.h"
#include "plugin/builder/ddl_export_builder_mysql.h"
#include "plugin/builder/ddl_export_builder_oracle.h"
#include "plugin/builder/ddl_export_builder_postgresql.h"
#include "plugin/builder/ddl_export_builder_sqlite.h"

#include <QtTest>

using plugin::ddl_export;
using support::entity_builder;
using support::model_builder;

namespace {

/// The types of all databases, row by row: C++ type; generic and SQLite; MySQL; PostgreSQL; Oracle; SQL
/// Server.
const char * const Types = R"(<default type>;TEXT;TEXT;TEXT;CLOB;TEXT
bool;SMALLINT;SMALLINT;BOOLEAN;SMALLINT;TINYINT
zk_bool;SMALLINT;SMALLINT;BOOLEAN;SMALLINT;TINYINT
short;SMALLINT;SMALLINT;SMALLINT;SMALLINT;SMALLINT
int;INTEGER;INTEGER;INTEGER;INTEGER;INT
long;INTEGER;INTEGER;INTEGER;INTEGER;INT
long long;INTEGER;BIGINT;BIGINT;INTEGER;BIGINT
float;FLOAT;FLOAT;FLOAT;FLOAT;FLOAT
double;FLOAT;DOUBLE;FLOAT;FLOAT;FLOAT
long double;FLOAT;DOUBLE;FLOAT;FLOAT;FLOAT
unsigned short;SMALLINT;SMALLINT;SMALLINT;SMALLINT;SMALLINT
unsigned int;INTEGER;INTEGER;INTEGER;INTEGER;INT
unsigned long;INTEGER;INTEGER;INTEGER;INTEGER;INT
unsigned long long;INTEGER;BIGINT;BIGINT;INTEGER;BIGINT
qint8;INTEGER;SMALLINT;SMALLINT;SMALLINT;SMALLINT
quint8;INTEGER;SMALLINT;SMALLINT;SMALLINT;SMALLINT
qint16;INTEGER;INTEGER;INTEGER;INTEGER;INT
quint16;INTEGER;INTEGER;INTEGER;INTEGER;INT
qint32;INTEGER;INTEGER;INTEGER;INTEGER;INT
quint32;INTEGER;INTEGER;INTEGER;INTEGER;INT
qint64;INTEGER;BIGINT;BIGINT;INTEGER;BIGINT
quint64;INTEGER;BIGINT;BIGINT;INTEGER;BIGINT
std::string;TEXT;TEXT;TEXT;CLOB;TEXT
std::wstring;TEXT;TEXT;TEXT;CLOB;TEXT
QString;TEXT;TEXT;TEXT;CLOB;TEXT
QVariant;TEXT;TEXT;TEXT;CLOB;TEXT
QUuid;TEXT;TEXT;TEXT;VARCHAR2(255);TEXT
QDate;DATE;DATE;DATE;DATE;DATE
QTime;TIME;TIME;TIME;DATE;TIME
QDateTime;TIMESTAMP;TIMESTAMP;TIMESTAMP;TIMESTAMP;DATETIME
QByteArray;BLOB;LONGBLOB;BYTEA;BLOB;IMAGE
zk::ZkDateNeutral;TEXT;TEXT;TEXT;VARCHAR2(8);TEXT
zk::ZkTimeNeutral;TEXT;TEXT;TEXT;VARCHAR2(6);TEXT
zk::ZkDateTimeNeutral;TEXT;TEXT;TEXT;VARCHAR2(14);TEXT)";

} // namespace

class tst_names_and_types : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void createsABuilderOfEachDialect_data();
    void createsABuilderOfEachDialect();
    void operationsKeepTheirOrder();
    void hasDefaultTypes_data();
    void hasDefaultTypes();
    void quotesNames();
    void namesTables();
    void namesColumns();
    void namesPrimaryKeys();
    void namesForeignKeys();
    void namesIndexes();
    void cutsNames();
    void resolvesTypes();
    void forcedTypesWin();
    void enumerationsAreNumbers();
    void letsTheUserLeaveTablesOut_data();
    void letsTheUserLeaveTablesOut();
};

void tst_names_and_types::createsABuilderOfEachDialect_data()
{
    QTest::addColumn<int>("db");
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("0") << 0 << QByteArray("plugin::ddl_export_builder_default");
    QTest::newRow("1") << 1 << QByteArray("plugin::ddl_export_builder_sqlite");
    QTest::newRow("2") << 2 << QByteArray("plugin::ddl_export_builder_mysql");
    QTest::newRow("3") << 3 << QByteArray("plugin::ddl_export_builder_postgresql");
    QTest::newRow("4") << 4 << QByteArray("plugin::ddl_export_builder_oracle");
    QTest::newRow("5") << 5 << QByteArray("plugin::ddl_export_builder_mssqlserver");
    QTest::newRow("6") << 6 << QByteArray("plugin::ddl_export_builder_default");
    QTest::newRow("-1") << -1 << QByteArray("plugin::ddl_export_builder_default");
}

void tst_names_and_types::createsABuilderOfEachDialect()
{
    QFETCH(int, db);
    const auto builder = plugin::createBuilder(static_cast<ddl_export::database_type>(db), nullptr);
    QVERIFY(builder);
    QTEST(QByteArray(builder->metaObject()->className()), "className");
    QVERIFY(qobject_cast<plugin::ddl_export_builder_default *>(builder.get()));
}

void tst_names_and_types::operationsKeepTheirOrder()
{
    const std::vector<std::size_t> places = opened_builder::placesOfGenerators();
    QCOMPARE(places, support::inARow(places, 17));
}

void tst_names_and_types::hasDefaultTypes_data()
{
    QTest::addColumn<int>("db");
    QTest::addColumn<int>("column");
    QTest::newRow("generic") << 0 << 1;
    QTest::newRow("SQLite") << 1 << 1;
    QTest::newRow("MySQL") << 2 << 2;
    QTest::newRow("PostgreSQL") << 3 << 3;
    QTest::newRow("Oracle") << 4 << 4;
    QTest::newRow("SQL Server") << 5 << 5;
}

void tst_names_and_types::hasDefaultTypes()
{
    QFETCH(int, db);
    QFETCH(int, column);
    const auto builder = plugin::createBuilder(static_cast<ddl_export::database_type>(db), nullptr);
    const auto types = builder->getDefaultListTypeMapping();
    QCOMPARE(types.count(), 34L);
    const QStringList rows = QString::fromLatin1(Types).split(QChar(10));
    for (int i = 0; i < rows.size(); ++i) {
        const QStringList cells = rows.at(i).split(QChar(';'));
        QCOMPARE(cells.size(), 6);
        QCOMPARE(types.getKeyByIndex(i), cells.at(0));
        QCOMPARE(types.getByIndex(i), cells.at(column));
    }
    QVERIFY(types == builder->getDefaultListTypeMapping());
}

void tst_names_and_types::quotesNames()
{
    opened_builder builder(ddl_export::db_default, nullptr);
    QCOMPARE(builder.delimiter(), QString());
    QCOMPARE(builder.maxNameLength(), -1);
    QCOMPARE(builder.sqlName("a"), QString("a"));
    builder.delimiter() = "[]";
    QCOMPARE(builder.sqlName("a"), QString("[]a[]"));
    QCOMPARE(builder.sqlName(""), QString("[][]"));
}

void tst_names_and_types::namesTables()
{
    opened_builder builder(ddl_export::db_default, nullptr);
    model_builder model;
    entity_builder e = model.entity(1, "Customer");
    QCOMPARE(builder.tableName(nullptr, true), QString());
    QCOMPARE(builder.tableName(e.get(), false), QString("Customer"));
    QCOMPARE(builder.tableName(e.get(), true), QString("Customer"));
    builder.delimiter() = "`";
    QCOMPARE(builder.tableName(nullptr, true), QString());
    QCOMPARE(builder.tableName(e.get(), true), QString("`Customer`"));
    e.table("t_customer");
    QCOMPARE(builder.tableName(e.get(), true), QString("`t_customer`"));
    QCOMPARE(builder.tableName(e.get(), false), QString("t_customer"));
    e.table("").get()->setName("");
    QCOMPARE(builder.tableName(e.get(), true), QString());
}

void tst_names_and_types::namesColumns()
{
    opened_builder builder(ddl_export::db_default, nullptr);
    builder.delimiter() = "`";
    model_builder model;
    entity_builder e = model.entity(1, "e");
    const auto plain = e.property(10, "Name", "int").get();
    const auto multi = e.property(11, "m", "int").columns("a|b").get();
    QCOMPARE(builder.columnName(nullptr, -1, true), QString());
    QCOMPARE(builder.columnName(plain, -1, false), QString("Name"));
    QCOMPARE(builder.columnName(plain, 3, true), QString("`Name`"));
    QCOMPARE(builder.columnName(multi, -1, true), QString("`a|b`"));
    QCOMPARE(builder.columnName(multi, 1, true), QString("`b`"));
    QCOMPARE(builder.columnName(multi, 0, false), QString("a"));
    QCOMPARE(builder.columnName(multi, 2, true), QString());
    plain->setName("");
    QCOMPARE(builder.columnName(plain, -1, true), QString());
}

void tst_names_and_types::namesPrimaryKeys()
{
    opened_builder builder(ddl_export::db_mysql, nullptr);
    model_builder now;
    model_builder before;
    const auto key = now.entity(1, "a.b").identifier(10, "k", "int").columns("x|y.z").get();
    before.entity(1, "old");
    builder.setProjects(&now.project(), &before.project());
    QCOMPARE(builder.primaryKeyName(key, true), QString("pk_a_b_x_y_z"));
    QCOMPARE(builder.primaryKeyName(key, false), QString("pk_old_x_y_z"));
    QCOMPARE(builder.primaryKeyName(nullptr, true), QString());
    builder.setProjects(nullptr, &before.project());
    QCOMPARE(builder.primaryKeyName(key, true), QString("pk_old_x_y_z"));
    builder.setProjects(&now.project(), nullptr);
    QCOMPARE(builder.primaryKeyName(key, false), QString());
    builder.setProjects(nullptr, nullptr);
    QCOMPARE(builder.primaryKeyName(key, true), QString());
    model_builder other;
    builder.setProjects(&other.project(), &before.project());
    QCOMPARE(builder.primaryKeyName(key, true), QString());
}

void tst_names_and_types::namesForeignKeys()
{
    opened_builder builder(ddl_export::db_mysql, nullptr);
    model_builder model;
    entity_builder e = model.entity(1, "s.person");
    e.relation(10, "c", 100, model::relationship::many_to_one, 1).columns("a|b.c");
    e.relation(11, "d", 101, model::relationship::one_to_many, 1);
    e.relation(12, "e", 102, model::relationship::one_to_one, 1);
    e.relation(13, "f", 103, model::relationship::many_to_many, 1);
    QCOMPARE(builder.foreignKeyName(nullptr), QString());
    QCOMPARE(builder.foreignKeyName(model.relation(1, 10)), QString("fk_s_person_a_b_c"));
    QCOMPARE(builder.foreignKeyName(model.relation(1, 11)), QString());
    QCOMPARE(builder.foreignKeyName(model.relation(1, 12)), QString("fk_s_person_e"));
    QCOMPARE(builder.foreignKeyName(model.relation(1, 13)), QString("fk_s_person_f"));
    QCOMPARE(builder.foreignKeyName(std::make_shared<model::relationship>(1)), QString());
    const auto loose = std::make_shared<model::property>(14, "loose");
    loose->setRelation(std::make_shared<model::relationship>(104));
    QCOMPARE(builder.foreignKeyName(loose->getRelation()), QString());
}

void tst_names_and_types::namesIndexes()
{
    opened_builder builder(ddl_export::db_mysql, nullptr);
    model_builder now;
    model_builder before;
    entity_builder user = now.entity(1, "user");
    user.table("t_user");
    const auto city = user.property(10, "address.city", "QString").indexed().get();
    const auto multi = user.property(11, "m", "int").columns("a|b").indexed().get();
    const auto plain = user.property(12, "p", "int").get();
    before.entity(1, "old");
    builder.setProjects(&now.project(), &before.project());
    QCOMPARE(builder.indexName(city, true, -1), QString("idx_t_user_address_city"));
    QCOMPARE(builder.indexName(city, false, -1), QString("idx_old_address_city"));
    QCOMPARE(builder.indexName(multi, true, 1), QString("idx_t_user_b"));
    QCOMPARE(builder.indexName(multi, true, -1), QString("idx_t_user_a|b"));
    QCOMPARE(builder.indexName(plain, true, -1), QString());
    QCOMPARE(builder.indexName(nullptr, true, -1), QString());
    builder.setProjects(nullptr, &before.project());
    QCOMPARE(builder.indexName(city, true, -1), QString("idx_old_address_city"));
    builder.setProjects(&now.project(), nullptr);
    QCOMPARE(builder.indexName(city, false, -1), QString());
}

void tst_names_and_types::cutsNames()
{
    opened_builder builder(ddl_export::db_default, nullptr);
    model_builder model;
    entity_builder e = model.entity(1, "t_1234567890123456789012345678901234567x");
    const auto key = e.identifier(10, "the_key", "int").get();
    const auto code = e.property(11, "code", "int").indexed().get();
    const auto self = e.relation(12, "self", 100, model::relationship::many_to_one, 1).relation();
    builder.setProjects(&model.project());
    builder.maxNameLength() = 30;
    QCOMPARE(builder.primaryKeyName(key, true), QString("pk_t_1234567890123456789012345"));
    QCOMPARE(builder.indexName(code, true, -1), QString("idx_t_123456789012345678901234"));
    QCOMPARE(builder.foreignKeyName(self), QString("fk_t_1234567890123456789012345"));
    QCOMPARE(builder.tableName(e.get(), true), QString("t_1234567890123456789012345678901234567x"));
    builder.maxNameLength() = 1;
    QCOMPARE(builder.foreignKeyName(self), QString("f"));
    builder.maxNameLength() = 0;
    QCOMPARE(builder.foreignKeyName(self), QString("fk_t_1234567890123456789012345678901234567x_self"));
}

void tst_names_and_types::resolvesTypes()
{
    opened_builder builder(ddl_export::db_default, nullptr);
    builder.types().clear();
    model_builder model;
    entity_builder e = model.entity(1, "e");
    const auto date = e.property(10, "d", "QDate").get();
    const auto pair = e.property(11, "p", "int").columns("a|b").types({"QDate", "QTime"}).get();
    const auto untyped = e.property(12, "u", "int").withoutType().forced("INT").get();
    QCOMPARE(builder.propertyType(nullptr, -1), QString());
    QCOMPARE(builder.propertyType(untyped, -1), QString());
    QCOMPARE(builder.propertyType(date, -1), QString("TEXT"));
    builder.types().insert("<default type>", "ANY");
    QCOMPARE(builder.propertyType(date, -1), QString("ANY"));
    builder.types().insert("qdate", "WRONG");
    QCOMPARE(builder.propertyType(date, -1), QString("ANY"));
    builder.types().insert("QDate", "");
    QCOMPARE(builder.propertyType(date, -1), QString("ANY"));
    builder.types().removeByKey("QDate");
    builder.types().insert("QDate", "DAY");
    builder.types().insert("QTime", "CLOCK");
    builder.types().insert("QDate|QTime", "BOTH");
    QCOMPARE(builder.propertyType(date, -1), QString("DAY"));
    QCOMPARE(builder.propertyType(pair, 0), QString("DAY"));
    QCOMPARE(builder.propertyType(pair, 1), QString("CLOCK"));
    QCOMPARE(builder.propertyType(pair, -1), QString("BOTH"));
    builder.types().clear();
    builder.types().insert("<default type>", "");
    QCOMPARE(builder.propertyType(date, -1), QString("TEXT"));
}

void tst_names_and_types::forcedTypesWin()
{
    opened_builder builder(ddl_export::db_default, nullptr);
    model_builder model;
    entity_builder e = model.entity(1, "e");
    const auto state = std::make_shared<model::enumeration>(1);
    QCOMPARE(builder.propertyType(e.property(10, "d", "QDate").forced("DECIMAL(12,2)").get(), -1),
             QString("DECIMAL(12,2)"));
    QCOMPARE(builder.propertyType(e.property(11, "s", "int").enumeration(state).forced("CHAR(1)").get(), -1),
             QString("CHAR(1)"));
}

void tst_names_and_types::enumerationsAreNumbers()
{
    model_builder model;
    entity_builder e = model.entity(1, "e");
    const auto state = std::make_shared<model::enumeration>(1);
    state->setName("state");
    const auto p = e.property(10, "s", "int").enumeration(state).get();
    opened_builder generic(ddl_export::db_default, nullptr);
    generic.types().insert("state", "NEVER");
    QCOMPARE(generic.propertyType(p, -1), QString("INTEGER"));
    opened_builder server(ddl_export::db_mssqlserver, nullptr);
    QCOMPARE(server.propertyType(p, 0), QString("INT"));
}

void tst_names_and_types::letsTheUserLeaveTablesOut_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("created");
    QTest::newRow("absent") << QVariant() << true;
    QTest::newRow("false") << QVariant("false") << false;
    QTest::newRow("False") << QVariant("False") << false;
    QTest::newRow("FALSE") << QVariant("FALSE") << false;
    QTest::newRow("0") << QVariant("0") << false;
    QTest::newRow("number 0") << QVariant(0) << false;
    QTest::newRow("boolean") << QVariant(false) << false;
    QTest::newRow("no") << QVariant("no") << true;
    QTest::newRow("off") << QVariant("off") << true;
    QTest::newRow("00") << QVariant("00") << true;
    QTest::newRow("blank") << QVariant(" false") << true;
    QTest::newRow("true") << QVariant(true) << true;
}

void tst_names_and_types::letsTheUserLeaveTablesOut()
{
    QFETCH(QVariant, value);
    opened_builder builder(ddl_export::db_default, nullptr);
    model_builder model;
    entity_builder e = model.entity(1, "e");
    if (value.isValid()) {
        e.createTable(value);
    }
    QTEST(builder.canCreateTable(e.get()), "created");
    QVERIFY(!builder.canCreateTable(nullptr));
}

QTEST_GUILESS_MAIN(tst_names_and_types)
#include "tst_names_and_types.moc"
