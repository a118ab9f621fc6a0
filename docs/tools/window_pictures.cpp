#include "docs/tools/window_pictures.h"

#include "app/window/window_bench.h"
#include "docs/tools/picture_style.h"
#include "support/modal_driver.h"

#include "context/ctx_project.h"
#include "model/project.h"

#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTabWidget>

#include <array>

using support::modal_driver;

namespace pictures {

namespace {

QByteArray sample()
{
    QFile file(QStringLiteral(KORVANE_SOURCE_DIR "/samples/festival.json"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class window_photographer
{
public:
    window_photographer(const QDir & folder, const QString & scheme) : m_folder(folder), m_sScheme(scheme)
    {
        support::window_bench::run(
            {QStringLiteral("tag"), m_bench.file(), QStringLiteral("-m"), QStringLiteral("first release")});
        m_bench.import(sample().replace("\"t_visitor\"", "\"t_guest\""));
        support::window_bench::run({QStringLiteral("tag"), m_bench.file(), QStringLiteral("-m"),
                                    QStringLiteral("visitors are guests")});
        m_bench.import(sample().replace("\"t_visitor\"", "\"t_guest\"").replace("\"t_scan\"", "\"t_entry\""));
        QDir().mkpath(m_bench.path(QStringLiteral("sql")));
    }

    void welcome()
    {
        m_bench.show();
        take("window_welcome");
        m_bench.closeWindow();
    }
    void diagram()
    {
        m_bench.open();
        settle();
        m_bench.tree().selectEntity(entity(QStringLiteral("artist")));
        m_bench.diagram().selectEntity(m_bench.tree().selectedEntity());
        QTest::keyClick(m_bench.find<QTreeView>(), Qt::Key_Right);
        take("window_diagram");
    }
    void dialogs()
    {
        dialog("m_actVersions", "window_versions");
        dialog("m_actOpen", "window_open");
        dialog("m_actAbout", "window_about");
        dialog("m_actSettings_KorvGenericDDLExport", "window_settings");
        for (QAction * const menu : m_bench.window().menuBar()->actions()) {
            menu->menu()->popup(m_bench.window().mapToGlobal(QPoint(0, 0)));
            QTest::qWait(100);
            const QByteArray name =
                "window_menu_" + menu->text().remove(QLatin1Char('&')).toLower().toLatin1();
            save(*menu->menu(), m_folder, name.constData(), m_sScheme);
            menu->menu()->close();
        }
    }
    /// What an import of another text would change.
    void import()
    {
        QByteArray text = sample();
        text.replace("\"t_visitor\"", "\"t_guest\"").replace("\"t_scan\"", "\"t_entry\"");
        text.replace("\"city\"", "\"town\"").replace("\"type\": \"quint32\"", "\"type\": \"QString\"");
        m_bench.write(QStringLiteral("festival.json"), text);
        const modal_driver driver(
            {modal_driver::file(m_bench.path(QStringLiteral("festival.json"))),
             modal_driver::key(Qt::Key_Return), [this](QWidget * w) {
                 QTest::qWait(200);
                 // The folder of this run has a different name each time.
                 auto * const question = w->findChild<QLabel *>();
                 question->setText(question->text().replace(m_bench.path() + QLatin1Char('/'), QString()));
                 save(*w, m_folder, "window_import", m_sScheme);
                 QTest::keyClick(w, Qt::Key_Escape);
             }});
        m_bench.action("m_actImport")->trigger();
    }
    void scripts()
    {
        setUp({});
        m_bench.action("m_actExport_KorvGenericDDLExport")->trigger();
        take("window_scripts");
    }
    void changes()
    {
        // The versions of its entities are left out, so that the import counts them.
        static const QRegularExpression version(QStringLiteral("\"version\": \\d+, *"));
        QString text = QString::fromUtf8(sample()).remove(version);
        text.replace(QLatin1String("\"t_visitor\""), QLatin1String("\"t_guest\""));
        text.replace(QLatin1String("\"t_scan\""), QLatin1String("\"t_gate\""));
        text.replace(QLatin1String("\"opens\""), QLatin1String("\"doors\""));
        text.replace(QLatin1String("zk::ZkDateNeutral"), QLatin1String("QDateTime"));
        m_bench.import(text.toUtf8());
        m_bench.action("m_actReload")->trigger();
        m_bench.action("m_actGoChanges")->trigger();
        auto * const tree = m_bench.find<QTreeView>("m_treChanges");
        tree->setCurrentIndex(tree->model()
                                  ->match(tree->model()->index(0, 0), Qt::DisplayRole,
                                          QStringLiteral("table: t_scan"), 1,
                                          Qt::MatchStartsWith | Qt::MatchRecursive)
                                  .value(0));
        take("window_changes");
        dialog("m_actTag", "window_tag");
    }
    void findings()
    {
        m_bench.action("m_actCheck_KorvGenericDDLExport")->trigger();
        QTest::qWait(100);
        auto * const list = m_bench.find<QListView>("m_lstMessages");
        const QModelIndex first = list->model()->index(list->model()->rowCount() - 2, 0);
        list->setCurrentIndex(first);
        QTest::keyClick(list, Qt::Key_Return);
        take("window_findings");
    }
    void failure()
    {
        m_bench.write(QStringLiteral("hook.js"), "function exportStep(project, entity) {\n"
                                                 "    if (entity && entity.getName() === 'stage') {\n"
                                                 "        throw new Error('no stage today');\n"
                                                 "    }\n"
                                                 "}\n");
        setUp(m_bench.path(QStringLiteral("hook.js")));
        m_bench.action("m_actExport_KorvGenericDDLExport")->trigger();
        take("window_failure");
    }
    void find()
    {
        QTest::keyClick(m_bench.window().windowHandle(), Qt::Key_F, Qt::ControlModifier);
        auto * const field = m_bench.find<QLineEdit>("m_txtFind");
        field->setText(QStringLiteral("guest"));
        take("window_find");
        auto * const filter = m_bench.find<QLineEdit>("m_txtFilter");
        filter->setText(QStringLiteral("visitor"));
        QTest::qWait(300);
        take("window_filter");
        filter->clear();
        m_bench.find<QWidget>("m_btnCloseFind")->setFocus();
        QTest::mouseClick(m_bench.find<QWidget>("m_btnCloseFind"), Qt::LeftButton);
    }
    void marks()
    {
        static const QRegularExpression version(QStringLiteral("\"version\": \\d+, *"));
        static const QRegularExpression note(QStringLiteral("\\{ \"id\": 18,.*?\\] \\},"),
                                             QRegularExpression::DotMatchesEverythingOption);
        QString text = QString::fromUtf8(sample()).remove(version).remove(note);
        text.replace(QLatin1String("\"t_scan\""), QLatin1String("\"t_entry\""));
        text.replace(QLatin1String("\"t_visitor\""), QLatin1String("\"t_guest\""));
        text.replace(QLatin1String("\"name\": \"length\", \"type\""),
                     QLatin1String("\"name\": \"duration\", \"index\": true, \"type\""));
        text.replace(QLatin1String("\"name\": \"visitor\", \"tableName\""),
                     QLatin1String("\"name\": \"guest\", \"tableName\""));
        text.remove(QLatin1String(",\n        {\"id\": 155, \"name\": \"language\", \"type\": \"QString\"}"));
        text.replace(QLatin1String("\"type\": \"QByteArray\""),
                     QLatin1String("\"type\": \"QUuid\", \"unique\": true"));
        text.replace(
            QLatin1String("{ \"id\": 22,"),
            QLatin1String("{ \"id\": 30, \"name\": \"sponsor\", \"properties\": ["
                          "{\"id\": 300, \"name\": \"id\", \"type\": \"long\", \"identifier\": true},"
                          "{\"id\": 301, \"name\": \"concert\", \"relationship\": {\"id\": 520, "
                          "\"type\": \"many-to-one\", \"target\": 14}}] }, { \"id\": 22,"));
        m_bench.import(text.toUtf8());
        m_bench.action("m_actReload")->trigger();
        m_bench.action("m_actGoDiagram")->trigger();
        m_bench.action("m_actMarkChanges")->trigger();
        const std::array docks{m_bench.find<QWidget>("m_pMessageDock"), m_bench.find<QWidget>("m_pTreeDock")};
        for (QWidget * const dock : docks) {
            dock->hide();
        }
        take("window_marks");
        for (QWidget * const dock : docks) {
            dock->show();
        }
    }
    void lostFile()
    {
        modal_driver driver({[this](QWidget * w) {
            QTest::qWait(100);
            save(*w, m_folder, "window_lost", m_sScheme);
            modal_driver::click(QMessageBox::Ok)(w);
        }});
        QFile::remove(m_bench.file());
        QTest::qWait(1500);
    }

private:
    /// Stores the settings: every script, for PostgreSQL.
    void setUp(const QString & script)
    {
        const modal_driver driver({[&](QWidget * w) {
            w->findChild<QLineEdit *>(QStringLiteral("m_txtFileLocation"))->setText(QStringLiteral("sql"));
            w->findChild<QLineEdit *>(QStringLiteral("m_txtCustomScript"))->setText(script);
            auto * const databases = w->findChild<QComboBox *>(QStringLiteral("m_cboDatabaseType"));
            databases->setCurrentIndex(databases->findText(QStringLiteral("PostgreSQL")));
            w->findChild<QAbstractButton *>(QStringLiteral("m_optSchemaFullAndEvolution"))->click();
            w->findChild<QAbstractButton *>(QStringLiteral("m_chkRelationships"))->setChecked(true);
            QTest::mouseClick(w->findChild<QWidget *>(QStringLiteral("m_btnOk")), Qt::LeftButton);
        }});
        m_bench.action("m_actSettings_KorvGenericDDLExport")->trigger();
    }
    void dialog(const char * action, const char * name)
    {
        const modal_driver driver({[&](QWidget * w) {
            QTest::qWait(200);
            save(*w, m_folder, name, m_sScheme);
            QTest::keyClick(w, Qt::Key_Escape);
        }});
        m_bench.action(action)->trigger();
    }
    [[nodiscard]] long entity(const QString & name) const
    {
        const auto project = context::ctx_project::getSingleton().getProject();
        for (const auto & e : project->getListOfAllEntities()->values()) {
            if (e->getName() == name) {
                return e->getId();
            }
        }
        return 0;
    }
    /// Waits until what is on its way is shown.
    static void settle() { QTest::qWait(700); }
    void take(const char * name)
    {
        settle();
        save(m_bench.window(), m_folder, name, m_sScheme);
    }

    QDir m_folder;
    QString m_sScheme;
    support::window_bench m_bench{sample()};
};

} // namespace

void takeWindow(const QDir & folder, const QString & scheme, bool all)
{
    window_photographer camera(folder, scheme);
    camera.welcome();
    camera.diagram();
    camera.import();
    if (all) {
        camera.dialogs();
    }
    camera.scripts();
    camera.changes();
    camera.findings();
    if (all) {
        camera.find();
    }
    camera.failure();
    camera.marks();
    if (all) {
        camera.lostFile();
    }
}

} // namespace pictures
