// Project files from anywhere. Bytes that begin like a SQLite database are the file; others say which cells
// of a good one hold what, so that the reader of the tables is reached and not only SQLite's own checks.

#include "fuzz_support.h"

#include "storage/history.h"
#include "zk/zk_serialization.h"
#include "zk/zk_sql_database.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

const char Good[] = R"json({"format": "korvane-project", "formatVersion": 1, "name": "shop", "enumerations": [
 {"id": 1, "name": "state", "values": [{"name": "open", "value": 0}, {"name": "paid", "value": 1}]}], "entities": [
 {"id": 10, "name": "customer", "tableName": "t_customer", "version": 3, "softDeleteColumn": "gone",
 "metaData": {"a": "x", "b": true, "c": 7, "d": 0.5}, "properties": [
 {"id": 100, "name": "id", "type": "long", "identifier": true}, {"id": 102, "name": "s", "enumeration": 1},
 {"id": 103, "name": "m", "type": "double", "forceSqlType": "DECIMAL(1,1)"},
 {"id": 104, "name": "pair", "columnName": "a|b", "type": ["int", "long"]},
 {"id": 101, "name": "tags", "relationship": {"id": 500, "type": "many-to-many", "target": 11, "inverse": 110,
 "extraTable": "ct", "foreignKey": "c", "foreignKeyOwner": "t"}}]},
 {"id": 11, "name": "tag", "version": 1, "properties": [{"id": 110, "name": "customers"},
 {"id": 111, "name": "id", "type": "QString", "identifier": true}]}]})json";

const QByteArray Magic("SQLite format 3", 16);

/// Takes values from the fuzzer's bytes; past their end everything is 0.
class source
{
public:
    explicit source(const QByteArray & bytes) : m_bytes(bytes) {}
    [[nodiscard]] bool isEmpty() const { return m_iAt >= m_bytes.size(); }
    quint8 byte() { return isEmpty() ? 0 : static_cast<quint8>(m_bytes[m_iAt++]); }
    QByteArray some(qsizetype count)
    {
        const QByteArray taken = m_bytes.mid(m_iAt, count);
        m_iAt += taken.size();
        return taken;
    }
    QVariant value()
    {
        switch (byte() % 6) {
        case 0:
            return {};
        case 1:
            return static_cast<qlonglong>(static_cast<qint8>(byte()));
        case 2: {
            quint64 number = 0;
            for (int i = 0; i < 8; ++i) {
                number = number << 8 | byte();
            }
            return static_cast<qlonglong>(number);
        }
        case 3:
            return static_cast<double>(static_cast<qint8>(byte())) / 3;
        case 4:
            return some(byte() % 32);
        default:
            return QString::fromUtf8(some(byte() % 32));
        }
    }

private:
    QByteArray m_bytes;
    qsizetype m_iAt = 0;
};

struct column
{
    QString table;
    QString name;
};

QByteArray goodFile()
{
    const QString name = fuzz::folder() + QStringLiteral("/good.korv");
    model::project project(1);
    const zk::ZkBool read =
        storage::text_form::read(QByteArray(Good), QStringLiteral("good.json"), nullptr, project);
    fuzz::promise(bool(read), "the good project is taken", read.getDesc());
    fuzz::promise(!storage::project_file::write(name, project).isValid(), "the good project is stored");
    int number = 0;
    fuzz::promise(!storage::history::tag(name, QStringLiteral("first"), number).isValid(), "it is tagged");
    QFile file(name);
    fuzz::promise(file.open(QIODevice::ReadOnly), "it is there");
    const QByteArray bytes = file.readAll();
    QFile::remove(name);
    return bytes;
}

QList<column> columnsOf(const QSqlDatabase & database)
{
    QList<column> columns;
    QSqlQuery query(database);
    query.exec(QStringLiteral(
        "SELECT m.name, p.name FROM sqlite_master m, pragma_table_info(m.name) p WHERE m.type = 'table'"));
    while (query.next()) {
        columns.append({query.value(0).toString(), query.value(1).toString()});
    }
    return columns;
}

/// Puts what `bytes` say into cells of the project file `name`, adds rows and takes some away.
void editCells(const QString & name, const QByteArray & bytes)
{
    const QString connection = QStringLiteral("edit");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(name);
        fuzz::promise(database.open(), "the good file opens");
        const QList<column> columns = columnsOf(database);
        QSqlQuery query(database);
        query.exec(QStringLiteral("PRAGMA synchronous = OFF"));
        database.transaction();
        source values(bytes);
        for (int edits = 0; edits < 12 && !values.isEmpty(); ++edits) {
            const column & c = columns[values.byte() % columns.size()];
            const int what = values.byte();
            const QString row =
                QStringLiteral("rowid = (SELECT rowid FROM %1 ORDER BY rowid LIMIT 1 OFFSET %2)")
                    .arg(c.table)
                    .arg(what / 8 % 8);
            if (what % 8 == 0) {
                query.exec(QStringLiteral("DELETE FROM %1 WHERE %2").arg(c.table, row));
            } else if (what % 8 == 1) {
                query.exec(QStringLiteral("INSERT INTO %1 SELECT * FROM %1 WHERE %2").arg(c.table, row));
            } else {
                query.prepare(QStringLiteral("UPDATE %1 SET %2 = ? WHERE %3").arg(c.table, c.name, row));
                query.addBindValue(values.value());
                query.exec();
            }
        }
        query.finish();
        database.commit();
    }
    QSqlDatabase::removeDatabase(connection);
}

void readAll(const QString & name)
{
    const QString shown = QStringLiteral("fuzz.korv");
    model::project project(1);
    if (const QSqlError error = storage::project_file::read(name, project); error.isValid()) {
        fuzz::promiseLine(error.text(), shown);
    } else {
        fuzz::promiseRoundTrip(project);
    }
    QList<storage::history::version> versions;
    if (const QSqlError error = storage::history::list(name, versions); error.isValid()) {
        fuzz::promiseLine(error.text(), shown);
    }
}

/// A tag of the file either fails and leaves it as it was, or stands in it.
void tagIt(const QString & name)
{
    int number = 0;
    const QSqlError error = storage::history::tag(name, QStringLiteral("fuzzed"), number);
    if (error.isValid()) {
        return;
    }
    QList<storage::history::version> versions;
    const QSqlError listed = storage::history::list(name, versions);
    fuzz::promise(!listed.isValid(), "a tagged file lists its versions:", listed.text());
    fuzz::promise(versions.size() == number && versions.constLast().message == QStringLiteral("fuzzed"),
                  "the new version is the newest");
    fuzz::promise(std::is_sorted(versions.cbegin(), versions.cend(),
                                 [](const auto & a, const auto & b) { return a.created < b.created; }),
                  "versions are in the order of their times");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t * data, size_t size)
{
    static int argumentCount = 1;
    static char programName[] = "fuzz_project_file";
    static char * arguments[] = {programName, nullptr};
    static const QCoreApplication application(argumentCount, arguments);
    static const QByteArray good = goodFile();
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString name = fuzz::folder() + QStringLiteral("/fuzz.korv");
    const bool isFile = bytes.startsWith(Magic);
    fuzz::writeFile(name, isFile ? bytes : good);
    if (!isFile) {
        editCells(name, bytes);
    }
    readAll(name);
    if (size % 4 == 0) { // it takes longer than all the rest
        tagIt(name);
    }
    zk::ZkCollection<QString, QString> mapping;
    zk::serialization::fromXml(QString::fromUtf8(bytes), mapping);
    zk::ZkSqlDatabase::clearAllDatabases();
    QFile::remove(name);
    fuzz::promiseNothingElse({});
    return 0;
}
