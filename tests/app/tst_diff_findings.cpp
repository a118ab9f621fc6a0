// What diff tells beside its statements: the findings about them, and the names that a history left.

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"
#include "support/random_models.h"

#include "zk/zk_sql_database.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using support::json;
using support::program_result;
using support::runProgram;
using support::textOf;

namespace {

const char * const Databases[] = {"sqlite", "mysql", "postgresql", "oracle", "mssqlserver"};

const char * const Former = "{'id': 1, 'name': 'customer', 'softDeleteColumn': 'gone', 'properties': ["
                            "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true}]},"
                            "{'id': 3, 'name': 'old', 'properties': []}";
const char * const Later = "{'id': 1, 'name': 'client', 'properties': ["
                           "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true}]}";

const char * const Made =
    "{'id': 1, 'name': 'customer', 'properties': ["
    "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 11, 'name': 'mail', 'type': 'int', 'index': true}]},"
    "{'id': 2, 'name': 'place', 'properties': ["
    "{'id': 20, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 21, 'name': 'owner', 'relationship': {'id': 1, 'type': 'many-to-one', 'target': 1}}]}";
const char * const Renamed =
    "{'id': 1, 'name': 'client', 'properties': ["
    "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 11, 'name': 'mail', 'type': 'int', 'index': true}]},"
    "{'id': 2, 'name': 'site', 'properties': ["
    "{'id': 20, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 21, 'name': 'owner', 'relationship': {'id': 1, 'type': 'many-to-one', 'target': 1}}]}";
const char * const Dropped = "{'id': 1, 'name': 'client', 'properties': ["
                             "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                             "{'id': 11, 'name': 'mail', 'type': 'int'}]},"
                             "{'id': 2, 'name': 'site', 'properties': ["
                             "{'id': 20, 'name': 'id', 'type': 'long', 'identifier': true}]}";

/// A table, and beside it another one whose name it takes over too early; a column is renamed with it.
const char * const Gig = "{'id': 1, 'name': 'gig', 'properties': ["
                         "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                         "{'id': 11, 'name': 'seats', 'type': 'int'}]},"
                         "{'id': 2, 'name': 'hall', 'tableName': 'concert', 'properties': ["
                         "{'id': 20, 'name': 'id', 'type': 'long', 'identifier': true}]}";
const char * const OntoTaken = "{'id': 1, 'name': 'concert', 'properties': ["
                               "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                               "{'id': 11, 'name': 'places', 'type': 'int'}]},"
                               "{'id': 2, 'name': 'hall', 'tableName': 'concert', 'properties': ["
                               "{'id': 20, 'name': 'id', 'type': 'long', 'identifier': true}]}";
const char * const AfterTaken = "{'id': 1, 'name': 'concert', 'properties': ["
                                "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                                "{'id': 11, 'name': 'places', 'type': 'int', 'index': true},"
                                "{'id': 12, 'name': 'fee', 'type': 'double'}]}";

const char * const RenamedAgain = "{'id': 1, 'name': 'festival', 'properties': ["
                                  "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                                  "{'id': 11, 'name': 'rooms', 'type': 'int'}]}";

} // namespace

class tst_diff_findings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_sProject = m_folder->filePath(QStringLiteral("shop.korv"));
        QVERIFY(support::writeBytes(path("a.json"), textOf(json(Former))));
        QVERIFY(support::writeBytes(path("b.json"), textOf(json(Later))));
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    /// Each finding of check is there, once, below the change that it names; none is made up.
    void theFindingsAreThoseOfCheck()
    {
        int findings = 0;
        int unexplained = 0;
        QStringList files;
        for (unsigned seed = 1; seed <= 12; ++seed) {
            makeHistory(40 + seed);
            const char * const database = Databases[seed % std::size(Databases)];
            const QStringList options{"--db", database, "--relationships", "yes", "--json"};
            const QByteArray output = diff(QStringList{m_sProject, "v1", "v3"} + options).output;
            files << m_folder->filePath(QStringLiteral("found%1.json").arg(seed));
            QVERIFY(support::writeBytes(files.constLast(), output));
            const QJsonObject told = QJsonDocument::fromJson(output).object();
            const QJsonArray expected =
                QJsonDocument::fromJson(
                    runProgram(QStringList{"check", m_sProject, "--from", "v1", "--to", "v3"} + options)
                        .output)
                    .object()["findings"]
                    .toArray();
            const QJsonArray found = told["findings"].toArray();
            QCOMPARE(found.size(), expected.size());
            for (qsizetype i = 0; i < found.size(); ++i) {
                QCOMPARE(found.at(i)["code"], expected.at(i)["code"]);
                QCOMPARE(found.at(i)["message"], expected.at(i)["message"]);
                const QJsonValue statement = found.at(i)["statement"];
                QCOMPARE(statement.isNull(), expected.at(i)["statement"].isNull());
                if (!statement.isNull()) {
                    QCOMPARE(told["statements"].toArray().at(statement.toInt())["text"],
                             expected.at(i)["statement"]["text"]);
                }
                ++findings;
                const bool isExplained = !found.at(i)["causes"].toArray().isEmpty();
                unexplained += isExplained || found.at(i)["code"] == QJsonValue("KV503") ? 0 : 1;
            }
            QVERIFY(QFile::remove(m_sProject));
        }
        QVERIFY2(findings > 60, qPrintable(QString::number(findings)));
        // A relationship that is gone may have left a link table, say, or a target that keeps its own.
        QVERIFY2(10 * unexplained < findings,
                 qPrintable(QStringLiteral("%1 of %2").arg(unexplained).arg(findings)));
        if (!support::hasSchemaValidator()) {
            QSKIP("python3-jsonschema is not installed");
        }
        QCOMPARE(support::schemaErrors("diff.schema.json", files), QByteArray());
    }
    void aFindingInJson()
    {
        const QByteArray output =
            diff({path("a.json"), path("b.json"), "--json", "--db", "postgresql"}).output;
        const QJsonArray findings = QJsonDocument::fromJson(output).object()["findings"].toArray();
        const auto of = [&findings](const char * code) {
            for (const QJsonValue & each : findings) {
                if (each["code"] == QJsonValue(QLatin1String(code))) {
                    return QJsonDocument(each.toObject()).toJson(QJsonDocument::Compact);
                }
            }
            return QByteArray();
        };
        // The first has a statement, the second has none.
        QCOMPARE(of("KV301"),
                 json("{'accepted':false,'causes':[2],'code':'KV301','message':'Table §old§ of §old§ is "
                      "dropped with all its rows.','severity':'error','statement':0}")
                     .replace("\xc2\xa7", "'"));
        QCOMPARE(of("KV404"),
                 json("{'accepted':false,'causes':[1],'code':'KV404','message':'The soft-delete column "
                      "§gone§ of §client§ is not followed.','severity':'warning','statement':null}")
                     .replace("\xc2\xa7", "'"));
    }
    void anAcceptedFinding()
    {
        QVERIFY(
            support::writeBytes(path("korvane-check.json"),
                                json("{'accept': [{'code': 'KV404', 'entity': 1, 'why': 'done by hand'}]}")));
        const QByteArray told = diff({path("a.json"), path("b.json"), "--db", "postgresql"}).output;
        QVERIFY2(told.contains(": 3 changes, 2 statements for PostgreSQL, 1 error, 3 notes, 1 accepted\n"),
                 told.constData());
        QVERIFY2(
            told.contains(
                "\n      ! KV404 accepted: The soft-delete column 'gone' of 'client' is not followed.\n"),
            told.constData());
    }
    /// The script is run for the statements and for the findings, and is told of once.
    void theCustomScriptIsToldOnce()
    {
        tagVersions({Made});
        importText(Renamed);
        QVERIFY(support::writeBytes(path("hook.js"), "function exportStep() {}\n"));
        QCOMPARE(runProgram({"settings", m_sProject, "--custom-script", path("hook.js")}).status, 0);
        const QByteArray told = "Custom script of the project: " + path("hook.js").toUtf8() +
                                " ('--no-custom-script' leaves it out)\n";
        const program_result result = diff({m_sProject, "--db", "postgresql"});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.errors, told);
        QCOMPARE(diff({m_sProject, "--db", "postgresql", "--no-custom-script"}).errors, QByteArray());
    }
    void aStepBackwardsIsNotJudged()
    {
        makeHistory(3);
        const QJsonObject told =
            QJsonDocument::fromJson(diff({m_sProject, "v3", "v1", "--json", "--db", "postgresql"}).output)
                .object();
        QVERIFY(!told["statements"].toArray().isEmpty());
        QCOMPARE(told["findings"], QJsonValue(QJsonArray()));
    }

    /// A rename of a table leaves the names of its indexes and foreign keys; only the history knows them.
    void namesThatTheHistoryLeft_data()
    {
        QTest::addColumn<QStringList>("dropped");
        QTest::newRow("postgresql") << QStringList{"DROP INDEX idx_customer_mail;",
                                                   "ALTER TABLE site DROP CONSTRAINT fk_place_owner;"};
        QTest::newRow("mysql") << QStringList{"DROP INDEX idx_customer_mail ON `client`;",
                                              "ALTER TABLE `site` DROP CONSTRAINT fk_place_owner;"};
        QTest::newRow("oracle") << QStringList{"DROP INDEX idx_customer_mail;",
                                               "ALTER TABLE site DROP CONSTRAINT fk_place_owner;"};
        QTest::newRow("mssqlserver") << QStringList{"DROP INDEX client.idx_customer_mail;",
                                                    "ALTER TABLE site DROP CONSTRAINT fk_place_owner;"};
        QTest::newRow("sqlite") << QStringList{"DROP INDEX idx_customer_mail;"};
        QTest::newRow("generic") << QStringList{"DROP INDEX idx_customer_mail ON client;",
                                                "ALTER TABLE site DROP CONSTRAINT fk_place_owner;"};
    }
    void namesThatTheHistoryLeft()
    {
        QFETCH(QStringList, dropped);
        tagVersions({Made, Renamed, Renamed});
        importText(Dropped);
        const QStringList options{"--db", QTest::currentDataTag(), "--relationships", "yes"};
        const QByteArray far = diff(QStringList{m_sProject, "v2", "now", "--sql"} + options).output;
        QStringList drops;
        for (const QString & line : QString::fromUtf8(far).split(u'\n')) {
            if (line.startsWith(u"DROP INDEX") || line.contains(u"DROP CONSTRAINT fk")) {
                drops << line;
            }
        }
        QCOMPARE(drops, dropped);
        // A check of that step judges the same statements.
        const QJsonArray findings =
            QJsonDocument::fromJson(
                runProgram(QStringList{"check", m_sProject, "--from", "v2", "--json"} + options).output)
                .object()["findings"]
                .toArray();
        for (const QJsonValue & each : findings) {
            QVERIFY2(each["code"] != QJsonValue("KV207") && each["code"] != QJsonValue("KV208"),
                     QJsonDocument(each.toObject()).toJson().constData());
        }
        // The step of neighbours is the one that an export writes, whatever becomes of it.
        const QByteArray near = diff(QStringList{m_sProject, "v3", "now", "--sql"} + options).output;
        QVERIFY2(near.contains("idx_client_mail"), near.constData());
    }
    /// A rename that was refused, or that a script has as a comment alone, leaves tables and columns as they
    /// were called: a step that begins after it speaks of them by these names.
    void namesOfWhatWasNotRenamed_data()
    {
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QStringList>("renames");
        const QStringList plain{"DROP TABLE concert;", "CREATE INDEX idx_concert_places ON gig (seats);"};
        QTest::newRow("postgresql") << plain + QStringList{"ALTER TABLE gig ADD COLUMN fee FLOAT;"}
                                    << QStringList{"ALTER TABLE gig RENAME TO festival;",
                                                   "ALTER TABLE festival RENAME COLUMN seats TO rooms;"};
        QTest::newRow("mysql") << QStringList{"DROP TABLE `concert`;",
                                              "CREATE INDEX idx_concert_places ON `gig` (`seats`);",
                                              "ALTER TABLE `gig` ADD COLUMN `fee` DOUBLE;"}
                               << QStringList{"RENAME TABLE `gig` TO `festival`;",
                                              "ALTER TABLE `festival` CHANGE `seats` `rooms` INTEGER;"};
        QTest::newRow("oracle") << plain + QStringList{"ALTER TABLE gig ADD fee FLOAT;"}
                                << QStringList{"ALTER TABLE gig RENAME TO festival;",
                                               "ALTER TABLE festival RENAME COLUMN seats TO rooms;"};
        QTest::newRow("mssqlserver") << plain + QStringList{"ALTER TABLE gig ADD fee FLOAT;"}
                                     << QStringList{"EXEC sp_rename 'gig', 'festival';",
                                                    "EXEC sp_rename 'festival.seats', 'rooms', 'COLUMN';"};
        QTest::newRow("sqlite") << plain + QStringList{"ALTER TABLE gig ADD COLUMN fee FLOAT;"}
                                << QStringList{"ALTER TABLE gig RENAME TO festival;"};
    }
    void namesOfWhatWasNotRenamed()
    {
        QFETCH(QStringList, renames);
        tagVersions({Gig, OntoTaken, OntoTaken});
        importText(AfterTaken);
        QTEST(linesWith(QRegularExpression("concert|gig")), "statements");
        // What is renamed in the step itself has its new name from there on.
        importText(RenamedAgain);
        QCOMPARE(linesWith(QRegularExpression("^[^-]*(gig|rooms|festival)")), renames);
        // The step of neighbours is the one that an export writes.
        const QByteArray near =
            diff({m_sProject, "v3", "now", "--sql", "--db", QTest::currentDataTag()}).output;
        QVERIFY2(!near.contains("gig") && !near.contains("seats"), near.constData());
    }
    /// A foreign key leads to the table by the name that it has kept.
    void aForeignKeyToWhatWasNotRenamed_data()
    {
        QTest::addColumn<QStringList>("statements");
        QTest::newRow("postgresql") << QStringList{
            "ALTER TABLE seat ADD CONSTRAINT fk_seat_gig FOREIGN KEY (gig) REFERENCES gig (id);"};
        QTest::newRow("mysql") << QStringList{
            "ALTER TABLE `seat` ADD CONSTRAINT fk_seat_gig FOREIGN KEY (`gig`) REFERENCES `gig` (`id`);"};
    }
    void aForeignKeyToWhatWasNotRenamed()
    {
        const QByteArray seat = ",{'id': 3, 'name': 'seat', 'properties': ["
                                "{'id': 30, 'name': 'id', 'type': 'long', 'identifier': true}%]}";
        const auto with = [&seat](const char * model, const char * more) {
            return QByteArray(model) + QByteArray(seat).replace("%", more);
        };
        tagVersions({with(Gig, ""), with(OntoTaken, ""), with(OntoTaken, "")});
        importText(with(OntoTaken,
                        ",{'id': 31, 'name': 'gig', 'relationship': {'id': 9, 'type': 'many-to-one', "
                        "'target': 1}}"));
        const QByteArray script = diff({m_sProject, "v2", "now", "--sql", "--relationships", "yes", "--db",
                                        QTest::currentDataTag()})
                                      .output;
        QTEST(QString::fromUtf8(script).split(u'\n').filter("FOREIGN KEY"), "statements");
    }
    void namesThatACustomScriptWrites()
    {
        tagVersions({Made, Renamed, Renamed});
        importText(Dropped);
        QVERIFY(support::writeBytes(path("hook.js"),
                                    "function exportStep(project, entity, property, enumeration, p) {\n"
                                    "  if (p.action === 'DROP_INDEX') return 'DROP INDEX own_client_mail;';\n"
                                    "}\n"));
        const QByteArray far = diff({m_sProject, "v2", "now", "--sql", "--db", "postgresql",
                                     "--custom-script=" + path("hook.js")})
                                   .output;
        QVERIFY2(far.contains("\nDROP INDEX own_client_mail;\n"), far.constData());
    }

private:
    [[nodiscard]] QString path(const char * name) const
    {
        return m_folder->filePath(QString::fromLatin1(name));
    }
    static program_result diff(const QStringList & arguments)
    {
        return runProgram(QStringList{QStringLiteral("diff")} + arguments);
    }
    /// The lines of the script from version 2 to now that say so.
    [[nodiscard]] QStringList linesWith(const QRegularExpression & what) const
    {
        const QByteArray script =
            diff({m_sProject, "v2", "now", "--sql", "--db", QTest::currentDataTag()}).output;
        return QString::fromUtf8(script).split(u'\n').filter(what);
    }
    /// A project with three versions and another state.
    void makeHistory(unsigned seed)
    {
        const QSqlError error = support::writeHistory(m_sProject, seed);
        QVERIFY2(!error.isValid(), qPrintable(error.text()));
    }
    void importText(const QByteArray & entities)
    {
        QVERIFY(support::writeBytes(path("next.json"), textOf(json(entities.constData()))));
        QCOMPARE(runProgram({"import", path("next.json"), m_sProject}).status, 0);
    }
    void tagVersions(const QList<QByteArray> & versions)
    {
        for (const QByteArray & each : versions) {
            importText(each);
            QCOMPARE(runProgram({"tag", m_sProject}).status, 0);
        }
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sProject;
};

QTEST_GUILESS_MAIN(tst_diff_findings)
#include "tst_diff_findings.moc"
