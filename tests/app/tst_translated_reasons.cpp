// What goes wrong is told in the language of the window, by the ways on which the window does its work.

#include "support/project_support.h"
#include "support/shop_text.h"

#include "app/export_run.h"
#include "app/plugin_choice.h"
#include "app/project_work.h"
#include "context/ctx_project.h"
#include "model/project.h"
#include "plugin/export_interface.h"
#include "view/main_wnd.h"
#include "zk/sqlite_locks.h"
#include "zk/zk_sql_database.h"

#include "context/ctx_global.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#include <unistd.h>

using support::writeBytes;

namespace {

constexpr uid_t Nobody = 65534;

/// ShopText with `before` replaced.
QByteArray shopWith(const QByteArray & before, const QByteArray & after)
{
    QByteArray text = support::ShopText;
    if (!text.contains(before)) {
        qFatal("the shop has no %s", before.constData());
    }
    return text.replace(before, after);
}

} // namespace

class tst_translated_reasons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void reasons_data();
    void reasons();
    void commandsStayEnglish();

private:
    using maker = QString (tst_translated_reasons::*)();

    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    [[nodiscard]] QString openReason(const QString & name) const;
    [[nodiscard]] QString importReason(const QByteArray & text) const;
    [[nodiscard]] QString exportReason(const QByteArray & script, const QString & mode = "0");
    void change(const QString & statement) const;

    QString missingFile() { return openReason("none.korv"); }
    QString folder()
    {
        QDir(m_folder->path()).mkdir("sub");
        return openReason("sub");
    }
    QString textAsProject()
    {
        writeBytes(path("shop.json"), support::ShopText);
        return openReason("shop.json");
    }
    QString damaged()
    {
        change("UPDATE t_property SET name = x'00' WHERE id = 20");
        return openReason("shop.korv");
    }
    QString foreignTrigger()
    {
        change("CREATE TRIGGER tt AFTER INSERT ON t_entity BEGIN SELECT 1; END");
        return openReason("shop.korv");
    }
    QString locked();
    QString unreadable();
    QString noSuchTarget() { return importReason(shopWith("\"target\": 1 ", "\"target\": 7 ")); }
    QString badName() { return importReason(shopWith("\"name\": \"shop\"", "\"name\": \"a/b\"")); }
    QString wrongField() { return importReason(shopWith("\"identifier\": true", "\"identifier\": 1")); }
    QString wrongRelationshipField()
    {
        return importReason(shopWith("\"id\": 30,", "\"id\": 30, \"foreignkey\": \"x\","));
    }
    QString brokenText() { return importReason("{\n  \"format\" \"korvane-project\"\n}"); }
    QString warning();
    QString noPlugin();
    QString scriptReturnsANumber() { return exportReason("function exportStep() { return 1; }"); }
    QString scriptWithoutFunction() { return exportReason("var a = 1;"); }
    QString scriptThatIsTooLate()
    {
        qputenv("KORVANE_SCRIPT_TIMEOUT_MS", "50");
        const QString reason = exportReason("function exportStep() { for (;;) {} }");
        qunsetenv("KORVANE_SCRIPT_TIMEOUT_MS");
        return reason;
    }
    QString noVersion() { return exportReason(QByteArray(), "1"); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QTranslator m_translator;
};

void tst_translated_reasons::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755)));
    QVERIFY(writeBytes(path("model.json"), support::ShopText));
    QVERIFY(app::importText(path("model.json"), path("shop.korv")).result);
}

void tst_translated_reasons::cleanup()
{
    QCoreApplication::removeTranslator(&m_translator);
    zk::ZkSqlDatabase::clearAllDatabases();
}

QString tst_translated_reasons::openReason(const QString & name) const
{
    std::shared_ptr<model::project> project;
    return app::openProject(path(name), project).getDesc();
}

QString tst_translated_reasons::importReason(const QByteArray & text) const
{
    writeBytes(path("shop.json"), text);
    return app::importText(path("shop.json"), path("new.korv")).result.getDesc();
}

/// Why the plug-in did not export the shop, or wrote nothing.
QString tst_translated_reasons::exportReason(const QByteArray & script, const QString & mode)
{
    const auto store = [this](const QString & key, const QString & value) {
        change("INSERT INTO t_plugin_params (plugin_guid, param_key, param_value) VALUES "
               "('713A034E-3F7A-422A-BC81-22132DA57110', '" +
               key + "', '" + value + "')");
    };
    store("DDL_EXPORT_PATH", m_folder->path());
    store("DDL_EXPORT_DATABASE_SCHEMA", mode);
    if (!script.isEmpty()) {
        writeBytes(path("hook.js"), script);
        store("DDL_EXPORT_CUSTOM_JAVASCRIPT", "hook.js");
    }
    const app::found_plugins found = app::found_plugins::inFile(KORVANE_PLUGIN_FILE);
    std::shared_ptr<model::project> project;
    if (found.plugins.size() != 1 || !app::openProject(path("shop.korv"), project)) {
        return "(no plug-in or no project)";
    }
    view::main_wnd window;
    context::ctx_global::setMainWnd(&window);
    context::ctx_project::getSingleton().setProject(project);
    plugin::export_interface & plugin = *found.plugins.front()->getInterface();
    QString told;
    app::export_listener listener;
    listener.message = [&told](const QString & text, int type) {
        told = type == plugin::ErrorMessage && told.isEmpty() ? text : told;
    };
    const app::export_report report = app::runPlugin(plugin, *project, listener);
    plugin.setCustomScript(nullptr);
    context::ctx_project::getSingleton().setProject(nullptr);
    context::ctx_global::setMainWnd(nullptr);
    return !told.isEmpty() ? told : report.untoldReason + report.reasonForNoFile;
}

void tst_translated_reasons::change(const QString & statement) const
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "change");
        database.setDatabaseName(path("shop.korv"));
        QVERIFY(database.open());
        const QSqlQuery query(statement, database);
        QVERIFY2(query.isActive(), qPrintable(query.lastError().text()));
    }
    QSqlDatabase::removeDatabase("change");
}

QString tst_translated_reasons::locked()
{
    const auto patience = zk::sqlite::lockPatience();
    zk::sqlite::setLockPatience(std::chrono::milliseconds(100));
    QString reason;
    {
        QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "other");
        other.setDatabaseName(path("shop.korv"));
        reason = other.open() && QSqlQuery("BEGIN EXCLUSIVE", other).isActive() ? openReason("shop.korv")
                                                                                : QString("(not locked)");
    }
    QSqlDatabase::removeDatabase("other");
    zk::sqlite::setLockPatience(patience);
    return reason;
}

/// The reason for a file that this user may not read; the super-user is somebody else for that moment.
QString tst_translated_reasons::unreadable()
{
    QFile::setPermissions(path("shop.korv"), QFile::Permissions());
    const bool isRoot = ::geteuid() == 0;
    if (isRoot && ::seteuid(Nobody) != 0) {
        return "(cannot be somebody else)";
    }
    const QString reason = openReason("shop.korv");
    return isRoot && ::seteuid(0) != 0 ? QString("(somebody else for ever)") : reason;
}

QString tst_translated_reasons::warning()
{
    writeBytes(path("shop.json"),
               shopWith("\"name\": \"person\"", "\"name\": \"person\", \"tableName\": \"country\""));
    const app::import_result done = app::importText(path("shop.json"), path("new.korv"));
    return done.warnings.join('\n');
}

QString tst_translated_reasons::noPlugin()
{
    writeBytes(path("empty.so"), QByteArray());
    return app::found_plugins::inFile(path("empty.so")).problems.join('\n');
}

void tst_translated_reasons::reasons_data()
{
    using self = tst_translated_reasons;
    struct reason
    {
        const char * name;
        maker made;
        QString german; // without the name of the folder that they begin with
        QString french;
    };
    const reason all[] = {
        {"missing file", &self::missingFile, "none.korv: existiert nicht; prüfen Sie den Namen",
         "none.korv: n'existe pas\u202f; vérifiez le nom"},
        {"folder", &self::folder, "sub: ist ein Ordner, keine Projektdatei",
         "sub: est un dossier, pas un fichier de projet"},
        {"text in place of a project", &self::textAsProject,
         "shop.json: ist ein Modell in Textform, kein Projekt; importieren Sie es zuerst (korvane import "
         "MODEL.json PROJECT.korv)",
         "shop.json: est un modèle sous forme de texte, pas un projet\u202f; importez-le d'abord (korvane "
         "import MODEL.json PROJECT.korv)"},
        {"damaged project", &self::damaged,
         "shop.korv: ist beschädigt (Tabelle t_property, Zeile 2: Spalte 3 ist kein Text); stellen Sie die "
         "Datei aus einer Kopie wieder her",
         "shop.korv: est endommagé (table t_property, ligne 2\u00a0: la colonne 3 n'est pas un texte)\u202f; "
         "restaurez-le à partir d'une copie"},
        {"trigger", &self::foreignTrigger,
         "shop.korv: enthält einen Trigger ‚tt‘, der nicht in eine Projektdatei gehört; entfernen Sie ihn, "
         "oder stellen Sie die Datei aus einer Sicherung wieder her",
         "shop.korv: contient un déclencheur «\u00a0tt\u00a0», qui n'a pas sa place dans un fichier de "
         "projet\u202f; supprimez-le, ou restaurez le fichier à partir d'une sauvegarde"},
        {"locked file", &self::locked,
         "shop.korv: wird von einem anderen Prozess verwendet (0.1 s darauf gewartet); warten Sie, bis "
         "dieser beendet ist, oder beenden Sie ihn, und versuchen Sie es erneut",
         "shop.korv: est utilisé par un autre processus (attente de 0.1 s)\u202f; attendez qu'il se termine, "
         "ou terminez-le, puis réessayez"},
        {"no permission", &self::unreadable,
         "shop.korv: kann nicht geöffnet werden (Permission denied); prüfen Sie die Rechte der Datei",
         "shop.korv: ne peut pas être ouvert (Permission denied)\u202f; vérifiez ses droits"},
        {"target of a relationship", &self::noSuchTarget,
         "shop.json: entities[1] ‚person‘ / properties[1] ‚country‘: das Beziehungsziel 7 existiert nicht",
         "shop.json: entities[1] «\u00a0person\u00a0» / properties[1] «\u00a0country\u00a0»: la cible 7 de "
         "la relation n'existe pas"},
        {"name of the project", &self::badName,
         "shop.json: Feld ‚name‘: ‚a/b‘ darf weder ‚/‘ noch ‚\\‘ noch Steuerzeichen enthalten",
         "shop.json: le champ «\u00a0name\u00a0»: «\u00a0a/b\u00a0» ne doit contenir ni «\u00a0/\u00a0», ni "
         "«\u00a0\\\u00a0», ni caractère de contrôle"},
        {"kind of a field", &self::wrongField,
         "shop.json: entities[0] ‚country‘ / properties[0] ‚id‘: Feld ‚identifier‘ muss true oder false sein",
         "shop.json: entities[0] «\u00a0country\u00a0» / properties[0] «\u00a0id\u00a0»: le champ "
         "«\u00a0identifier\u00a0» doit être true ou false"},
        {"field of a relationship", &self::wrongRelationshipField,
         "shop.json: entities[1] ‚person‘ / properties[1] ‚country‘: unbekanntes Beziehungsfeld ‚foreignkey‘",
         "shop.json: entities[1] «\u00a0person\u00a0» / properties[1] «\u00a0country\u00a0»: champ de "
         "relation inconnu «\u00a0foreignkey\u00a0»"},
        {"broken text", &self::brokenText,
         "shop.json: Zeile 2, Spalte 28: kein gültiges JSON (syntax error while parsing object separator - "
         "unexpected string literal; expected ':')",
         "shop.json: ligne 2, colonne 28: JSON non valide (syntax error while parsing object separator - "
         "unexpected string literal; expected ':')"},
        {"warning of an import", &self::warning,
         "shop.json: Warnung: entities[1] ‚person‘: die Tabelle ‚country‘ ist auch die Tabelle von "
         "entities[0] ‚country‘; geben Sie einer der beiden Entitäten einen anderen ‚tableName‘",
         "shop.json: avertissement\u00a0: entities[1] «\u00a0person\u00a0»: sa table «\u00a0country\u00a0» "
         "est aussi celle de entities[0] «\u00a0country\u00a0»\u202f; donnez à l'une des deux un autre "
         "«\u00a0tableName\u00a0»"},
        {"plug-in", &self::noPlugin, "empty.so: ist kein Plugin: Die Datei ist leer",
         "empty.so: n'est pas un plugin\u00a0: le fichier est vide"},
        {"what a script returns", &self::scriptReturnsANumber,
         "hook.js:1: exportStep hat für die Aktion DDL_EXPORT_BEGIN eine Zahl zurückgegeben; erwartet wird "
         "eine Zeichenkette, undefined oder null",
         "hook.js:1: exportStep a renvoyé un nombre pour l'action DDL_EXPORT_BEGIN\u202f; une chaîne de "
         "caractères, undefined ou null est attendu"},
        {"script without its function", &self::scriptWithoutFunction,
         "hook.js: das eigene Skript definiert keine Funktion exportStep(project, entity, property, "
         "enumeration, parameters)",
         "hook.js: le script personnalisé ne définit pas de fonction exportStep(project, entity, property, "
         "enumeration, parameters)"},
        {"script without an end", &self::scriptThatIsTooLate,
         "hook.js:1: exportStep endete nicht innerhalb von 50 ms",
         "hook.js:1: exportStep ne s'est pas terminé en 50 ms"},
        {"no version for evolution scripts", &self::noVersion,
         "Es wurde nichts geschrieben: Für Evolutionsskripte muss erst eine Version festgehalten werden",
         "Rien n'a été écrit\u00a0: les scripts d'évolution demandent une version étiquetée"}};
    QTest::addColumn<QString>("language");
    QTest::addColumn<maker>("made");
    QTest::addColumn<QString>("expected");
    for (const reason & r : all) {
        QTest::addRow("German, %s", r.name) << "de" << r.made << r.german;
        QTest::addRow("French, %s", r.name) << "fr" << r.made << r.french;
    }
}

void tst_translated_reasons::reasons()
{
    QFETCH(QString, language);
    QFETCH(maker, made);
    QFETCH(QString, expected);
    QVERIFY(m_translator.load(QStringLiteral(KORVANE_TRANSLATIONS "/korvane_%1.qm").arg(language)));
    QVERIFY(QCoreApplication::installTranslator(&m_translator));
    QString reason = (this->*made)();
    reason.remove(m_folder->path() + '/');
    QCOMPARE(reason, expected);
}

/// The same reason in a command of a person who speaks another language.
void tst_translated_reasons::commandsStayEnglish()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("LC_ALL");
    environment.insert("LANG", "de_DE.UTF-8");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(KORVANE_PROGRAM, {"log", path("none.korv")});
    QVERIFY(process.waitForFinished());
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()),
             path("none.korv") + ": does not exist; check the name\n");
}

QTEST_MAIN(tst_translated_reasons)

#include "tst_translated_reasons.moc"
