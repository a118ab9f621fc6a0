// A person's way through the main window, by the mouse alone but for what is typed: open, change by import,
// look at the changes, check, tag, export, look at the findings.

#include "app/window/window_bench.h"
#include "support/modal_driver.h"
#include "support/project_support.h"

#include "app/window/changes/changes_panel.h"
#include "app/window/changes/changes_view.h"
#include "app/window/diagram/diagram_view.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QToolBar>

using support::json;
using support::modal_driver;
using support::textOf;
using support::window_bench;

namespace {

const char * const First = "{'id': 1, 'name': 'gig', 'properties': ["
                           "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                           "{'id': 11, 'name': 'note', 'type': 'QString'},"
                           "{'id': 12, 'name': 'seats', 'type': 'int'}]}";
/// Another name, and a column less.
const char * const Second = "{'id': 1, 'name': 'concert', 'properties': ["
                            "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                            "{'id': 12, 'name': 'seats', 'type': 'int'}]}";

} // namespace

class tst_window_way : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<window_bench>(textOf(json(First)));
        window_bench::run(
            {"settings", m_bench->file(), "--db", "postgresql", "--path", "sql", "--schema", "both"});
        window_bench::run({"tag", m_bench->file(), "-m", "first"});
        QDir().mkpath(m_bench->path("sql"));
        m_bench->write("next.json", textOf(json(Second)));
        m_bench->show();
    }
    void cleanup() { m_bench.reset(); }

    void fromOpeningToTheFindings()
    {
        open();
        changeByImport();
        lookAtChanges();
        lookAtThemInTheDiagram();
        check();
        tag();
        runExport();
        lookAtFindings();
    }

private:
    void open()
    {
        const modal_driver driver({modal_driver::file(m_bench->file())});
        clickMenu("&File", "m_actOpen");
        QVERIFY(driver.isDone());
        QTRY_COMPARE(m_bench->find<QLabel>("m_lblShown")->text(), QString("1 entity"));
        QVERIFY(m_bench->window().windowTitle().startsWith("shop (shop.korv)"));
    }
    void changeByImport()
    {
        QStringList shown;
        const modal_driver driver({modal_driver::file(m_bench->path("next.json")),
                                   modal_driver::file(m_bench->file()), [&shown](QWidget * w) {
                                       shown = rowsOf(*w->findChild<QTreeView *>("m_treChanges"));
                                       modal_driver::press(QDialogButtonBox::Ok)(w);
                                   }});
        clickMenu("&File", "m_actImport");
        QVERIFY(driver.isDone());
        QCOMPARE(shown, (QStringList{"entity concert", "name: gig -> concert", "- property note: QString"}));
        QVERIFY2(m_bench->told().contains("Project 'shop' imported into "), qPrintable(m_bench->told()));
    }
    void lookAtChanges()
    {
        auto & panel = *m_bench->find<app::changes_panel>();
        clickTab(panel);
        auto & tree = *panel.findChild<QTreeView *>("m_treChanges");
        const QModelIndex dropped = rowWith(tree, "- property note");
        QVERIFY(dropped.isValid());
        click(tree, dropped);
        QCOMPARE(panel.findChild<QPlainTextEdit *>("m_txtStatements")->textCursor().selectedText(),
                 QString("ALTER TABLE concert DROP COLUMN note;"));
        QCOMPARE(m_bench->tree().selectedEntity(), 1L);
    }
    void lookAtThemInTheDiagram()
    {
        clickTab(m_bench->diagram());
        auto * const bar = m_bench->find<QToolBar>("m_toolBarDiagram");
        QTest::mouseClick(bar->widgetForAction(m_bench->action("m_actMarkChanges")), Qt::LeftButton);
        QTRY_COMPARE(m_bench->find<QLabel>("m_lblShown")->text(),
                     QString("1 entity; changes from v1 to now"));
        auto & view = *m_bench->find<app::diagram_view>();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, view.boxRect(1).center());
        QVERIFY2(view.accessibleDescription().startsWith("Selected: concert: renamed; "),
                 qPrintable(view.accessibleDescription()));
        QVERIFY2(view.accessibleDescription().contains("note (QString, dropped)"),
                 qPrintable(view.accessibleDescription()));
    }
    void check()
    {
        clickMenu("&Export", "m_actCheck_KorvGenericDDLExport");
        QVERIFY2(m_bench->told().contains("KV302: "), qPrintable(m_bench->told()));
        QCOMPARE(m_bench->find<QLabel>("m_lblFindings")->text(), QString("1 error, 0 warnings, 3 notes"));
    }
    void tag()
    {
        const modal_driver driver({[](QWidget * w) {
            QVERIFY(!rowsOf(*w->findChild<QTreeView *>("m_treChanges")).isEmpty());
            auto * const message = w->findChild<QLineEdit *>();
            QTest::mouseClick(message, Qt::LeftButton);
            QTest::keyClicks(message, "concerts");
            modal_driver::press(QDialogButtonBox::Ok)(w);
        }});
        clickMenu("&Actions", "m_actTag");
        QVERIFY(driver.isDone());
        QVERIFY(window_bench::run({"log", m_bench->file()}).contains("concerts"));
        QTRY_COMPARE(m_bench->find<QLabel>("m_lblShown")->text(),
                     QString("1 entity; changes from v2 to now"));
    }
    void runExport()
    {
        auto * const bar = m_bench->find<QToolBar>("m_barTools");
        QTest::mouseClick(bar->widgetForAction(m_bench->action("m_actExport_KorvGenericDDLExport")),
                          Qt::LeftButton);
        QTRY_VERIFY(m_bench->scripts().isVisible());
        QVERIFY(m_bench->content("sql/shop_postgresql_db_schema_v1_to_v2.sql")
                    .contains("ALTER TABLE gig RENAME TO concert;"));
    }
    /// From a finding to its object and to the line of the script.
    void lookAtFindings()
    {
        auto & list = *m_bench->find<QListView>("m_lstMessages");
        const QModelIndex found =
            list.model()
                ->match(list.model()->index(0, 0), Qt::DisplayRole, "KV302", 1, Qt::MatchContains)
                .value(0);
        QVERIFY(found.isValid());
        m_bench->tree().selectEntity(0);
        click(list, found);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.visualRect(found).center());
        QCOMPARE(m_bench->tree().selectedEntity(), 1L);
        const auto * const script = m_bench->scripts().findChild<QTabWidget *>()->currentWidget();
        QCOMPARE(script->findChild<QPlainTextEdit *>()->textCursor().selectedText(),
                 QString("ALTER TABLE concert DROP COLUMN note;"));
    }

    void clickMenu(const char * title, const char * name) const
    {
        QMenuBar * const bar = m_bench->window().menuBar();
        for (QAction * const top : bar->actions()) {
            if (top->text() == QLatin1String(title)) {
                QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(top).center());
                QTRY_VERIFY(top->menu()->isVisible());
                QAction * const entry = m_bench->action(name);
                QVERIFY(entry->isEnabled());
                QTest::mouseClick(top->menu(), Qt::LeftButton, Qt::NoModifier,
                                  top->menu()->actionGeometry(entry).center());
                return;
            }
        }
        QFAIL(title);
    }
    void clickTab(const QWidget & page) const
    {
        auto * const tabs = m_bench->find<QTabWidget>("m_tabPages");
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->widget(i) == &page) {
                QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier,
                                  tabs->tabBar()->tabRect(i).center());
            }
        }
        QVERIFY(page.isVisible());
    }
    static void click(QAbstractItemView & view, const QModelIndex & row)
    {
        view.scrollTo(row);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, view.visualRect(row).center());
    }
    static QModelIndex rowWith(const QTreeView & tree, const char * text)
    {
        return tree.model()
            ->match(tree.model()->index(0, 0), Qt::DisplayRole, QString::fromLatin1(text), 1,
                    Qt::MatchStartsWith | Qt::MatchRecursive)
            .value(0);
    }
    /// The rows that can be seen, from top to bottom.
    static QStringList rowsOf(const QTreeView & tree)
    {
        QStringList rows;
        for (QModelIndex row = tree.model()->index(0, 0); row.isValid(); row = tree.indexBelow(row)) {
            rows << row.data().toString();
        }
        return rows;
    }

    std::unique_ptr<window_bench> m_bench;
};

QTEST_MAIN(tst_window_way)
#include "tst_window_way.moc"
