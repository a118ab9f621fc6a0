// A database becomes a model: what a database says already stays as a model has it, whatever the model is
// like.

#include "app/import/scripted_schema.h"
#include "check/import/model_merge.h"
#include "database/facts/facts.h"
#include "database/simulation/simulation.h"
#include "database/statement/reader.h"

#include "plugin/ddl_export.h"
#include "support/project_support.h"
#include "support/random_chain.h"

#include <QTest>

namespace {

unsigned chains()
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue("KORVANE_CHAINS", &isNumber);
    return isNumber ? static_cast<unsigned>(number) : 200;
}

/// Whether a database takes all statements of the model's full script.
bool isTaken(plugin::statement_source & statements, model::project & project, const database::facts & known)
{
    const plugin::statement_list list =
        statements.fullStatements(project, {{"db", known.scripts}, {"relationships", "yes"}});
    database::simulation simulated(known);
    for (const plugin::statement_record & record : list.records) {
        for (const database::statement & each :
             database::readStatements(record.text, database::writer::exporter)) {
            if (simulated.run(each).what == database::outcome::refused) {
                return false;
            }
        }
    }
    return true;
}

/// Imports the database that the scripts of `project` make: into that project, or into a new one.
std::shared_ptr<model::project> mergedWithItsDatabase(plugin::statement_source & statements,
                                                      const database::facts & known,
                                                      const std::shared_ptr<model::project> & project,
                                                      bool isInto)
{
    QList<std::pair<QString, QString>> mapping;
    database::catalogue made;
    if (!app::mappingOf(statements, project, known.scripts, mapping) ||
        !app::scriptedSchema(statements, project, known, made)) {
        return nullptr;
    }
    const check::mapped_types types(known, mapping);
    auto former = std::make_shared<model::project>(1);
    former->setName("shop");
    check::schema_import import{made, known, types, std::nullopt, [](const QString &) { return true; },
                                true, {}};
    if (isInto) {
        former = support::projectOf(storage::text_form::write(*project));
        import.meant = made;
        import.ids = {1000, 1000, 1000};
    }
    auto next = std::make_shared<model::project>(1);
    const bool isDone = check::mergeSchema(import, *former, *next).empty() &&
                        storage::text_form::follow(*next, "shop", isInto ? project.get() : nullptr);
    return isDone ? next : nullptr;
}

/// The lines that only one of both texts has.
QByteArray linesThatDiffer(unsigned seed, const QByteArray & before, const QByteArray & after)
{
    QByteArray told = "chain " + QByteArray::number(seed);
    const QByteArrayList former = before.split('\n');
    const QByteArrayList later = after.split('\n');
    for (const QByteArray & each : former) {
        told += later.contains(each) ? QByteArray() : "\n-" + each;
    }
    for (const QByteArray & each : later) {
        told += former.contains(each) ? QByteArray() : "\n+" + each;
    }
    return told;
}

} // namespace

class tst_schema_merge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDatabaseOfTheModelChangesNothing_data()
    {
        QTest::addColumn<QString>("key");
        for (const char * const key : {"sqlite", "mariadb", "postgresql"}) {
            QTest::newRow(key) << key;
        }
    }
    /// Models made by chance, and the databases that their scripts make.
    void aDatabaseOfTheModelChangesNothing()
    {
        QFETCH(const QString, key);
        const database::facts & known = *database::factsOf(key);
        plugin::ddl_export statements;
        int tried = 0;
        int triedNew = 0;
        for (unsigned seed = 1; seed <= chains(); ++seed) {
            const support::random_chain chain(seed);
            const std::shared_ptr<model::project> project = chain.versions().back();
            project->setName("shop");
            // Some chains have what no text may say, or no database takes.
            if (!support::projectOf(storage::text_form::write(*project)) ||
                !isTaken(statements, *project, known)) {
                continue;
            }
            ++tried;
            const auto merged = mergedWithItsDatabase(statements, known, project, true);
            QVERIFY(merged);
            const QByteArray before = storage::text_form::write(*project);
            const QByteArray after = storage::text_form::write(*merged);
            QVERIFY2(after == before, linesThatDiffer(seed, before, after).constData());
            // The model that somebody else would make of that database is like any other.
            const auto made = mergedWithItsDatabase(statements, known, project, false);
            QVERIFY(made);
            if (isTaken(statements, *made, known)) {
                ++triedNew;
                const QByteArray first = storage::text_form::write(*made);
                const QByteArray again =
                    storage::text_form::write(*mergedWithItsDatabase(statements, known, made, true));
                QVERIFY2(again == first, linesThatDiffer(seed, first, again).constData());
            }
        }
        QVERIFY2(tried > 20 && triedNew > 20, qPrintable(QStringLiteral("%1, %2").arg(tried).arg(triedNew)));
    }
};

QTEST_GUILESS_MAIN(tst_schema_merge)
#include "tst_schema_merge.moc"
