// The plug-in as a built module: its metadata, its entry points, the life of its object, and its load trace.

#include "context/ctx_project.h"
#include "model/project.h"
#include "plugin/export_interface.h"
#include "storage/project_file.h"
#include "zk/zk_sql_database.h"

#include <QApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

const QString PluginFile = QStringLiteral(KORVANE_PLUGIN_FILE);
const char Attached[] = "KorvGenericDDLExport.DllMain() ---> DLL_PROCESS_ATTACH";
const char Detached[] = "KorvGenericDDLExport.DllMain() ---> DLL_PROCESS_DETACH";

} // namespace

class tst_plugin_module : public QObject
{
    Q_OBJECT

private:
    /// Standard error of a host process that loads the plug-in.
    QByteArray errorsOfAHost(const QString & loggingRules, QByteArray * output)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("QT_LOGGING_RULES"));
        if (!loggingRules.isEmpty()) {
            environment.insert(QStringLiteral("QT_LOGGING_RULES"), loggingRules);
        }
        environment.insert(QStringLiteral("KORVANE_PLUGIN_PATH"), QFileInfo(PluginFile).path());
        environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(KORVANE_PROGRAM), {QStringLiteral("plugins")});
        if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
            return "the host did not end";
        }
        *output = process.readAllStandardOutput();
        return process.readAllStandardError();
    }

    /// Makes a new, empty project in `file` the current one.
    static void makeCurrent(const QString & file)
    {
        const auto project = std::make_shared<model::project>(1);
        project->setName(QStringLiteral("shop"));
        project->setFileName(file);
        if (storage::project_file::write(file, *project).isValid()) {
            qFatal("cannot write %s", qPrintable(file));
        }
        context::ctx_project::getSingleton().setProject(project);
    }
    static void storeDatabaseType(int type)
    {
        QSqlQuery query(context::ctx_project::getSingleton().getDatabase());
        query.prepare(
            QStringLiteral("INSERT INTO t_plugin_params (plugin_guid, param_key, param_value) "
                           "VALUES ('713A034E-3F7A-422A-BC81-22132DA57110', 'DDL_EXPORT_DATABASE_TYPE', ?)"));
        query.addBindValue(type);
        if (!query.exec()) {
            qFatal("cannot store a setting");
        }
    }
    /// The database type that `plugin` saves to the current project.
    static QVariant savedDatabaseType(plugin::export_interface & plugin)
    {
        if (plugin.saveSettings().isValid()) {
            return {};
        }
        QSqlQuery query(QStringLiteral("SELECT param_value FROM t_plugin_params "
                                       "WHERE param_key = 'DDL_EXPORT_DATABASE_TYPE'"),
                        context::ctx_project::getSingleton().getDatabase());
        return query.next() ? query.value(0) : QVariant();
    }

private Q_SLOTS:
    void cleanup()
    {
        context::ctx_project::getSingleton().setProject(nullptr);
        zk::ZkSqlDatabase::clearAllDatabases();
    }

    void metadataIsExactlyThis()
    {
        QPluginLoader loader(PluginFile);
        const QJsonObject metaData = loader.metaData();
        QCOMPARE(metaData.value(QStringLiteral("IID")).toString(), QStringLiteral("KorvGenericDDLExport"));
        QCOMPARE(metaData.value(QStringLiteral("className")).toString(), QStringLiteral("ddl_export"));
        QCOMPARE(
            metaData.value(QStringLiteral("MetaData")).toObject(),
            QJsonObject({{QStringLiteral("Keys"), QJsonArray({QStringLiteral("KorvGenericDDLExport")})}}));
        QVERIFY(!loader.isLoaded());
    }

    void entryPointsAreExported()
    {
        QLibrary library(PluginFile);
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        QVERIFY(library.resolve("qt_plugin_query_metadata_v2"));
        using instance_function = QObject * (*)();
        const auto instance = reinterpret_cast<instance_function>(library.resolve("qt_plugin_instance"));
        QVERIFY(instance);
        QObject * const object = instance();
        QVERIFY(object);
        QCOMPARE(instance(), object);
        QCOMPARE(QByteArray(object->metaObject()->className()), QByteArray("plugin::ddl_export"));
        delete object;
        QVERIFY(library.unload());
    }

    void everyLibraryItNeedsIsThere()
    {
        QLibrary library(PluginFile);
        library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        QVERIFY(library.unload());
    }

    void oneObjectUntilItIsDeletedThenAFreshOne()
    {
        QPluginLoader loader(PluginFile);
        QPluginLoader otherLoader(PluginFile);
        QObject * const object = loader.instance();
        QVERIFY2(object, qPrintable(loader.errorString()));
        QCOMPARE(loader.instance(), object);
        QCOMPARE(otherLoader.instance(), object);
        auto * const first = qobject_cast<plugin::export_interface *>(object);
        QVERIFY(first);
        // A setting shows whether an object is fresh: the address may be the same.
        QTemporaryDir dir;
        makeCurrent(dir.filePath(QStringLiteral("oracle.korv")));
        storeDatabaseType(4);
        QVERIFY(!first->loadSettings().isValid());
        makeCurrent(dir.filePath(QStringLiteral("used.korv")));
        QCOMPARE(savedDatabaseType(*first), QVariant(4));
        const QPointer<QObject> guard = object;
        delete object;
        QVERIFY(!guard);
        auto * const second = qobject_cast<plugin::export_interface *>(loader.instance());
        QVERIFY(second);
        makeCurrent(dir.filePath(QStringLiteral("fresh.korv")));
        QCOMPARE(savedDatabaseType(*second), QVariant(1));
        QCOMPARE(otherLoader.instance(), static_cast<QObject *>(second));
        second->terminate();
        delete second;
        QVERIFY(!otherLoader.unload());
        QVERIFY(loader.unload());
        QVERIFY(!loader.isLoaded());
    }

    void unloadDeletesTheObject()
    {
        QPluginLoader loader(PluginFile);
        const QPointer<QObject> object = loader.instance();
        QVERIFY(object);
        QVERIFY(loader.unload());
        QVERIFY(!object);
    }

    void identity()
    {
        QPluginLoader loader(PluginFile);
        auto * const plugin = qobject_cast<plugin::export_interface *>(loader.instance());
        QVERIFY(plugin);
        QCOMPARE(plugin->getName(), QStringLiteral("KorvGenericDDLExport"));
        QCOMPARE(plugin->getGuid(), QStringLiteral("713A034E-3F7A-422A-BC81-22132DA57110"));
        QCOMPARE(plugin->getVersion(), QStringLiteral("1.1.7"));
        QVERIFY(!plugin->parent());
        QVERIFY(!plugin->getIcon().isNull());
        QVERIFY(loader.unload());
    }

    void itsSettingsAreADialog()
    {
        QPluginLoader loader(PluginFile);
        auto * const plugin = qobject_cast<plugin::export_interface *>(loader.instance());
        QVERIFY(plugin);
        QByteArray shown;
        QTimer::singleShot(50, qApp, [&shown] {
            if (QWidget * const dialog = QApplication::activeModalWidget()) {
                shown = dialog->metaObject()->className();
                dialog->close();
            }
        });
        QVERIFY(!plugin->showSettings());
        QCOMPARE(shown, QByteArray("view::ddl_export_settings"));
        QVERIFY(loader.unload());
    }

    void loadTraceIsSilentUnlessAskedFor()
    {
        QByteArray output;
        QCOMPARE(errorsOfAHost(QString(), &output), QByteArray());
        QVERIFY(output.contains("KorvGenericDDLExport 1.1.7"));
    }

    void loadTraceTellsAttachAndDetachOnce()
    {
        QByteArray output;
        const QByteArray errors = errorsOfAHost(QStringLiteral("korvane.ddl_export.debug=true"), &output);
        QCOMPARE(errors.count(Attached), 1);
        QCOMPARE(errors.count(Detached), 1);
        QVERIFY(errors.indexOf(Attached) < errors.indexOf(Detached));
        QCOMPARE(errors.count('\n'), 2);
    }
};

QTEST_MAIN(tst_plugin_module)
#include "tst_plugin_module.moc"
