// Two commands at once on one project: what both say that they have done is done, as if one had come after
// the other.
//
// KORVANE_COMMAND_PAIRS is how many pairs of each kind are run; without it a few are.

#include "support/project_support.h"
#include "support/rounds.h"

#include "storage/history.h"
#include "tools/bounded_uncompress.h"

#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using support::writeBytes;

namespace {

struct stored_version
{
    QString message;
    QByteArray text;
};

} // namespace

class tst_command_pairs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void pairs_data();
    void pairs();
    void cleanupTestCase() { qInfo("%d pairs, %d commands that failed", m_iPairs, m_iFailed); }

private:
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    void writeModel(const QString & name, const QByteArray & entity, int fillers) const;
    [[nodiscard]] QStringList argumentsOf(const QString & kind, const QString & name) const;
    void runPair(const QStringList & kinds, int round);
    void checkAfter(const QStringList & kinds, int round);
    void checkIds();
    void checkHistory(int round);
    void notePast();

    std::unique_ptr<QTemporaryDir> m_folder;
    QRandomGenerator m_random{20261122};
    QHash<QString, qlonglong> m_idOf; ///< of every entity that was ever stored
    QList<QString> m_messages; ///< of the tags that said that they were made, in any order within a pair
    QList<stored_version> m_history; ///< as it was after the pair before
    int m_iPairs = 0;
    int m_iFailed = 0;
};

void tst_command_pairs::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_idOf.clear();
    m_messages.clear();
    m_history.clear();
    QVERIFY(QDir().mkpath(path("sql")) && QDir().mkpath(path("tmp")) && QDir().mkpath(path("runtime")));
    QVERIFY(QFile::setPermissions(path("runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void tst_command_pairs::pairs_data()
{
    QTest::addColumn<QStringList>("kinds");
    QTest::addColumn<bool>("isNew");
    QTest::newRow("import, import") << QStringList{"import", "import"} << false;
    QTest::newRow("import, tag") << QStringList{"import", "tag"} << false;
    QTest::newRow("tag, tag") << QStringList{"tag", "tag"} << false;
    QTest::newRow("export, import") << QStringList{"export", "import"} << false;
    QTest::newRow("export, tag") << QStringList{"export", "tag"} << false;
    QTest::newRow("dump, import") << QStringList{"dump", "import"} << false;
    QTest::newRow("import, import of a new project") << QStringList{"import", "import"} << true;
    QTest::newRow("import, tag of a new project") << QStringList{"import", "tag"} << true;
    QTest::newRow("three imports of a new project") << QStringList{"import", "import", "import"} << true;
}

/// An entity that no other model has, and the same ones as all others, all without ids.
void tst_command_pairs::writeModel(const QString & name, const QByteArray & entity, int fillers) const
{
    QByteArray entities = "{\"name\": \"" + entity + "\", \"properties\": [{\"name\": \"p_" + entity +
                          "\", \"type\": \"int\"}]}";
    for (int i = 0; i < fillers; ++i) {
        entities += ", {\"name\": \"common" + QByteArray::number(i) + "\"}";
    }
    QVERIFY(writeBytes(path(name), support::textOf(entities)));
}

QStringList tst_command_pairs::argumentsOf(const QString & kind, const QString & name) const
{
    const QString file = path("p.korv");
    if (kind == "import") {
        return {"import", path(name + ".json"), file};
    }
    if (kind == "tag") {
        return {"tag", file, "-m", name};
    }
    if (kind == "export") {
        return {"export", file, "-y", "--KorvGenericDDLExport_path=" + path("sql"),
                "--KorvGenericDDLExport_schema_type=2"};
    }
    return {kind, file};
}

void tst_command_pairs::pairs()
{
    QFETCH(QStringList, kinds);
    QFETCH(bool, isNew);
    const int asked = qEnvironmentVariableIntValue("KORVANE_COMMAND_PAIRS");
    const int rounds = asked > 0 ? asked : support::rounds(20);
    for (int round = 0; round < rounds; ++round) {
        if (isNew) {
            QFile::remove(path("p.korv"));
            m_idOf.clear();
            m_history.clear();
        } else if (round == 0) {
            writeModel("first.json", "first", 20);
            QCOMPARE(support::runKorvane({"import", path("first.json"), path("p.korv")}).status, 0);
            QCOMPARE(support::runKorvane({"tag", path("p.korv"), "-m", "first"}).status, 0);
        }
        m_messages.clear();
        notePast();
        runPair(kinds, round);
        ++m_iPairs;
        if (QTest::currentTestFailed()) {
            qWarning("in round %d", round);
            return;
        }
    }
}

/// What is known of the project before a pair of commands.
void tst_command_pairs::notePast()
{
    if (!QFile::exists(path("p.korv"))) {
        return;
    }
    model::project project(1);
    QVERIFY(!storage::project_file::read(path("p.korv"), project).isValid());
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        m_idOf.insert(entity->getName(), entity->getId());
    }
}

void tst_command_pairs::runPair(const QStringList & kinds, int round)
{
    std::vector<std::unique_ptr<QProcess>> processes;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", path("tmp"));
    // Where there is none, Qt makes one among the temporary files.
    environment.insert("XDG_RUNTIME_DIR", path("runtime"));
    const bool wasThere = QFile::exists(path("p.korv"));
    for (int i = 0; i < kinds.size(); ++i) {
        const QString name = QString("r%1c%2").arg(round).arg(i);
        writeModel(name + ".json", name.toUtf8(), 20);
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->setProcessEnvironment(environment);
        processes.back()->start(KORVANE_PROGRAM, argumentsOf(kinds.at(i), name));
        QThread::usleep(static_cast<unsigned long>(m_random.bounded(15000)));
    }
    QStringList imported;
    for (int i = 0; i < kinds.size(); ++i) {
        QProcess & process = *processes.at(static_cast<size_t>(i));
        QVERIFY(process.waitForFinished(90000));
        const QByteArray errors = process.readAllStandardError();
        const bool isDone = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        const QString name = QString("r%1c%2").arg(round).arg(i);
        if (!isDone) {
            // Only what needs a project may fail, as long as there is none.
            ++m_iFailed;
            QVERIFY2(!wasThere && kinds.at(i) != "import" && errors.contains("does not exist"),
                     errors.constData());
        } else if (kinds.at(i) == "tag") {
            m_messages << name;
        } else if (kinds.at(i) == "import") {
            imported << name;
        }
        QFile::remove(path(name + ".json"));
    }
    checkAfter(imported, round);
}

void tst_command_pairs::checkAfter(const QStringList & imported, int round)
{
    if (!imported.isEmpty()) {
        model::project project(1);
        QVERIFY(!storage::project_file::read(path("p.korv"), project).isValid());
        // One of the imports was the last; which one, nobody knows.
        const QString last = project.getListOfAllEntities()->getByIndex(0)->getName();
        QVERIFY2(imported.contains(last), qPrintable(last));
        QCOMPARE(project.getListOfAllEntities()->count(), 21L);
    }
    checkIds();
    checkHistory(round);
    QCOMPARE(QDir(path("tmp")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList());
    for (const QString & name : QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden)) {
        QVERIFY2(name == "p.korv" || name == "first.json", qPrintable(name));
    }
}

/// Ids are unique, an entity keeps its own, and no entity has one that another ever had.
void tst_command_pairs::checkIds()
{
    model::project project(1);
    const QSqlError error = storage::project_file::read(path("p.korv"), project);
    QVERIFY2(!error.isValid(), qPrintable(error.text()));
    QSet<qlonglong> ids;
    QSet<qlonglong> propertyIds;
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        QVERIFY(!ids.contains(entity->getId()));
        ids.insert(entity->getId());
        if (m_idOf.contains(entity->getName())) {
            QCOMPARE(qlonglong(entity->getId()), m_idOf.value(entity->getName()));
        } else {
            QVERIFY2(!m_idOf.values().contains(entity->getId()), qPrintable(entity->getName()));
        }
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            QVERIFY(!propertyIds.contains(property->getId()));
            propertyIds.insert(property->getId());
        }
    }
}

/// The history is the former one and the tags that were made since, in order, and each version loads.
void tst_command_pairs::checkHistory(int round)
{
    QList<storage::history::version> versions;
    QVERIFY(!storage::history::list(path("p.korv"), versions).isValid());
    QList<stored_version> now;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "history");
        database.setDatabaseName(path("p.korv"));
        QVERIFY(database.open());
        QSqlQuery rows("SELECT project_file FROM t_project_historic ORDER BY dt_creation, rowid", database);
        while (rows.next()) {
            const QString file = path("restored.korv");
            QVERIFY(writeBytes(file, tools::boundedUncompress(rows.value(0).toByteArray())));
            now << stored_version{QString(), support::storedText(file)};
            QVERIFY(!now.constLast().text.isEmpty());
            QVERIFY(QFile::remove(file));
        }
        database.close();
    }
    QSqlDatabase::removeDatabase("history");
    QCOMPARE(versions.size(), now.size());
    for (int i = 0; i < versions.size(); ++i) {
        QCOMPARE(versions.at(i).number, i + 1);
        QVERIFY(i == 0 || versions.at(i - 1).created <= versions.at(i).created);
        now[i].message = versions.at(i).message;
    }
    QStringList added;
    for (int i = 0; i < now.size(); ++i) {
        if (i < m_history.size()) {
            QCOMPARE(now.at(i).message, m_history.at(i).message);
            QCOMPARE(now.at(i).text, m_history.at(i).text);
        } else if (now.at(i).message != "first") {
            added << now.at(i).message;
        }
    }
    added.sort();
    m_messages.sort();
    QVERIFY2(added == m_messages, qPrintable(QString("round %1: %2").arg(round).arg(added.join(' '))));
    m_history = now;
}

QTEST_GUILESS_MAIN(tst_command_pairs)
#include "tst_command_pairs.moc"
