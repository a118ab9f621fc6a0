// Steps that jump over versions, run on databases that hold what the history made until then: what is refused
// is what the check has foretold of that step, and nothing else; and what they leave is what the chain
// leaves, but for what the check has foretold of either.

#include "check/view/schema_difference.h"
#include "database/server/script_run.h"
#include "database/server/target_database.h"
#include "database/simulation/simulation.h"
#include "database/statement/reader.h"
#include "support/program.h"
#include "support/project_support.h"
#include "support/random_models.h"

#include "zk/zk_sql_database.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <set>

using support::runProgram;

namespace {

constexpr unsigned Histories = 8;

} // namespace

class tst_distant_steps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusedIsWhatWasForetold_data()
    {
        QTest::addColumn<QString>("scripts");
        QTest::newRow("sqlite") << "sqlite";
        QTest::newRow("mariadb") << "mysql";
        QTest::newRow("postgresql") << "postgresql";
    }
    void refusedIsWhatWasForetold()
    {
        QFETCH(QString, scripts);
        m_database = QString::fromLatin1(QTest::currentDataTag());
        QString why;
        m_target = database::server::start(m_database, why);
        if (!m_target) {
            QSKIP(qPrintable(why));
        }
        m_tables = m_same = m_differences = m_statements = m_refusals = 0;
        for (unsigned seed = 1; seed <= Histories; ++seed) {
            m_folder = std::make_unique<QTemporaryDir>();
            const QSqlError error = support::writeHistory(project(), 200 + seed);
            QVERIFY2(!error.isValid(), qPrintable(error.text()));
            zk::ZkSqlDatabase::clearAllDatabases();
            QCOMPARE(runProgram({"export", project(), "-y", "--no-check", "--path", "sql", "--db", scripts,
                                 "--schema", "evolution", "--relationships", "yes"})
                         .status,
                     0);
            runChain();
            for (int from = 1; from <= 2 && !QTest::currentTestFailed(); ++from) {
                runStep(from);
            }
            if (QTest::currentTestFailed()) {
                return;
            }
        }
        QVERIFY2(m_statements > 100, qPrintable(QString::number(m_statements)));
        QVERIFY(m_refusals > 0);
        QVERIFY2(m_same > m_tables / 2, qPrintable(QStringLiteral("%1 of %2").arg(m_same).arg(m_tables)));
        qInfo("%d of %d tables as the chain leaves them, %d differences foretold", m_same, m_tables,
              m_differences);
    }

private:
    /// Runs the scripts of the history, and keeps what they leave and what a check says of them.
    void runChain()
    {
        QString why;
        QVERIFY2(m_target->reset(why), qPrintable(why));
        QByteArrayList scripts;
        run(scriptsUntil(4), scripts);
        compareWithSimulation(scripts);
        m_chained = m_target->held();
        m_names = namesInDatabase();
        m_toldOfChain = thingsTold({"--all"});
    }
    /// Runs the history until `from` and the step from there on.
    void runStep(int from)
    {
        QString why;
        QVERIFY2(m_target->reset(why), qPrintable(why));
        QByteArrayList scripts;
        run(scriptsUntil(from), scripts);
        const QStringList step{project(), QStringLiteral("v%1").arg(from), "now"};
        const QByteArray script =
            runProgram(QStringList{"diff"} + step + options() + QStringList{"--sql"}).output;
        QVERIFY(!script.isEmpty());
        m_statements += static_cast<int>(script.count(';'));
        QStringList refused;
        QVERIFY2(database::server::runScript(*m_target, QString::fromUtf8(script), &refused, why),
                 qPrintable(why));
        QCOMPARE(linesOf(refused), foretold(from));
        m_refusals += static_cast<int>(refused.size());
        compareWithSimulation(scripts << script);
        compareWithChain(m_target->held(), from);
    }
    /// What the scripts leave is what the simulation foretells, to the letter.
    void compareWithSimulation(const QByteArrayList & scripts)
    {
        database::simulation foretold(m_target->known());
        for (const QByteArray & script : scripts) {
            const auto statements =
                database::readStatements(QString::fromUtf8(script), database::writer::exporter);
            for (const database::statement & each : statements) {
                std::ignore = foretold.run(each);
            }
        }
        const database::catalogue_difference differs =
            database::difference(m_target->held(), foretold.held());
        QCOMPARE(differs.onlyFirst, QStringList());
        QCOMPARE(differs.onlySecond, QStringList());
    }
    /// Each difference between what the step has left and what the chain leaves is told by a check of either.
    void compareWithChain(const database::catalogue & jumped, int from)
    {
        const auto differences = check::compareSchemas(m_chained, jumped);
        told_things told = thingsTold({"--from", QStringLiteral("v%1").arg(from)});
        told.insert(m_toldOfChain.begin(), m_toldOfChain.end());
        std::set<QString> others;
        for (const check::schema_difference & each : differences) {
            others.insert(each.table);
            QVERIFY2(
                isTold(told, each),
                qPrintable(QStringLiteral("from v%1: %2: by the chain '%3', by the step '%4'; told of: %5")
                               .arg(QString::number(from), check::subjectOf(each), each.expected, each.found,
                                    QStringList(told.begin(), told.end()).join(u' '))));
        }
        m_differences += static_cast<int>(differences.size());
        m_tables += static_cast<int>(m_chained.tables.size());
        m_same += static_cast<int>(m_chained.tables.size() - others.size());
    }
    void run(const QStringList & names, QByteArrayList & scripts)
    {
        for (const QString & name : names) {
            QStringList refused;
            QString why;
            scripts << support::bytesOf(name);
            QVERIFY2(
                database::server::runScript(*m_target, QString::fromUtf8(scripts.constLast()), &refused, why),
                qPrintable(why));
        }
    }

    /// Tables, and columns as "table.column", that findings are about, in small letters; "table.*" for a
    /// table that is refused as a whole, of which nothing else is told.
    using told_things = std::set<QString>;

    static bool isTold(const told_things & told, const check::schema_difference & what)
    {
        const QString table = what.table.toLower();
        // What an index or a key is called is told of its table.
        const bool isOfTable = what.columns.isEmpty() || what.kind == check::difference_kind::names;
        return told.contains(table + QStringLiteral(".*")) || isOfTable
                   ? told.contains(table)
                   : std::any_of(what.columns.begin(), what.columns.end(), [&](const QString & column) {
                         return told.contains(table + u'.' + column.toLower());
                     });
    }
    /// How entities and properties are called in the database, by kind and id: a step can leave the name of a
    /// column that one version has in the table that another one has.
    struct database_names
    {
        std::map<qint64, std::set<QString>> tables;  ///< of entities
        std::map<qint64, qint64> entities;           ///< of properties
        std::map<qint64, std::set<QString>> columns; ///< of properties
        std::map<qint64, told_things> links;         ///< of properties: the tables of many-to-many
    };

    [[nodiscard]] database_names namesInDatabase() const
    {
        database_names names;
        for (const char * const version : {"v1", "v2", "v3", "now"}) {
            const QByteArray text = runProgram({"dump", project(), version}).output;
            const QJsonArray entities = QJsonDocument::fromJson(text).object()["entities"].toArray();
            for (const QJsonValue entity : entities) {
                names.tables[entity["id"].toInteger()].insert(nameIn(entity, "tableName"));
                const QJsonArray properties = entity["properties"].toArray();
                for (const QJsonValue property : properties) {
                    const qint64 id = property["id"].toInteger();
                    names.entities[id] = entity["id"].toInteger();
                    const QStringList columns = nameIn(property, "columnName").split(u'|');
                    names.columns[id].insert(columns.begin(), columns.end());
                    const QJsonValue relation = property["relationship"];
                    const QString link = relation["extraTable"].toString().toLower();
                    names.links[id].insert(link);
                    for (const char * const side : {"foreignKey", "foreignKeyOwner"}) {
                        for (const QString & column : relation[QLatin1String(side)].toString().split(u'|')) {
                            names.links[id].insert(link + u'.' + column.toLower());
                        }
                    }
                }
            }
        }
        return names;
    }
    /// Notes what a finding about `object` tells of.
    static void note(const database_names & names, const QJsonValue & object, bool isWholeTable,
                     told_things & told)
    {
        const qint64 id = object["id"].toInteger();
        const bool isEntity = object["kind"] == QJsonValue("entity");
        const auto owner = names.entities.find(id);
        if (!isEntity && (object["kind"] != QJsonValue("property") || owner == names.entities.end())) {
            return;
        }
        for (const QString & table : names.tables.at(isEntity ? id : owner->second)) {
            if (isEntity) {
                told.insert(isWholeTable ? table + QStringLiteral(".*") : table);
                told.insert(table);
                continue;
            }
            for (const QString & column : names.columns.at(id)) {
                told.insert(table + u'.' + column);
            }
        }
        if (!isEntity) {
            told.insert(names.links.at(id).begin(), names.links.at(id).end());
        }
    }
    static QString nameIn(const QJsonValue & object, const char * field)
    {
        const QString name = object[QLatin1String(field)].toString();
        return (name.isEmpty() ? object["name"].toString() : name).toLower();
    }
    /// What a check is about, advice left aside.
    [[nodiscard]] told_things thingsTold(const QStringList & of) const
    {
        told_things told;
        const QByteArray text = runProgram(QStringList{"check", project(), "--json"} + of + options()).output;
        const QJsonArray findings = QJsonDocument::fromJson(text).object()["findings"].toArray();
        for (const QJsonValue each : findings) {
            static const QStringList outcomes{"refused", "differs", "silent"};
            if (!outcomes.contains(each["outcome"].toString())) {
                continue;
            }
            const bool isTable = each["statement"]["action"] == QJsonValue("CREATE_TABLE");
            const QJsonArray objects = each["objects"].toArray();
            for (const QJsonValue object : objects) {
                note(m_names, object, isTable, told);
            }
        }
        return told;
    }
    [[nodiscard]] QString project() const { return m_folder->filePath(QStringLiteral("shop.korv")); }
    [[nodiscard]] QStringList options() const { return {"--db", m_database, "--relationships", "yes"}; }
    /// The scripts that make the version.
    [[nodiscard]] QStringList scriptsUntil(int version) const
    {
        const QDir folder(m_folder->filePath(QStringLiteral("sql")));
        QStringList names = folder.entryList({QStringLiteral("*_v1.sql")});
        for (int from = 1; from < version; ++from) {
            names += folder.entryList({QStringLiteral("*_v%1_to_v%2.sql").arg(from).arg(from + 1)});
        }
        for (QString & name : names) {
            name = folder.filePath(name);
        }
        return names;
    }
    /// The lines of the statements that were refused, which begin with them.
    static std::set<int> linesOf(const QStringList & refused)
    {
        std::set<int> lines;
        for (const QString & each : refused) {
            static const QRegularExpression number(QStringLiteral("\\d+"));
            lines.insert(number.match(each).captured().toInt());
        }
        return lines;
    }
    [[nodiscard]] std::set<int> foretold(int from) const
    {
        const QByteArray told =
            runProgram(QStringList{"check", project(), "--from", QStringLiteral("v%1").arg(from), "--json"} +
                       options())
                .output;
        std::set<int> lines;
        const QJsonArray findings = QJsonDocument::fromJson(told).object()["findings"].toArray();
        for (const QJsonValue each : findings) {
            if (each["outcome"] == QJsonValue("refused") && each["when"] == QJsonValue("always")) {
                lines.insert(each["statement"]["line"].toInt());
            }
        }
        return lines;
    }

    std::unique_ptr<database::server::target_database> m_target;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_database;
    database::catalogue m_chained; ///< what the scripts of the history leave
    database_names m_names;
    told_things m_toldOfChain;
    int m_statements = 0; ///< of the steps
    int m_refusals = 0;   ///< of these
    int m_tables = 0;     ///< of the chains
    int m_same = 0;       ///< of these: as the step leaves them
    int m_differences = 0;
};

QTEST_GUILESS_MAIN(tst_distant_steps)
#include "tst_distant_steps.moc"
