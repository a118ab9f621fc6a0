// What changed between two versions, in the main window: the tab, the versions that are chosen, and what is
// shown before a tag and before an import.

#include "app/window/window_bench.h"
#include "support/modal_driver.h"
#include "support/project_support.h"

#include "app/window/changes/changes_panel.h"
#include "app/window/changes/changes_view.h"
#include "app/window/export/message_list.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTextBlock>

using support::json;
using support::modal_driver;
using support::textOf;
using support::window_bench;

namespace {

const char * const First = "{'id': 1, 'name': 'gig', 'properties': ["
                           "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                           "{'id': 11, 'name': 'note', 'type': 'QString'},"
                           "{'id': 12, 'name': 'seats', 'type': 'int'}]}";
const char * const Second = "{'id': 1, 'name': 'concert', 'properties': ["
                            "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                            "{'id': 11, 'name': 'note', 'type': 'QString'},"
                            "{'id': 12, 'name': 'seats', 'type': 'int'}]}";
/// The third one changes a type, which no statement follows, and drops a column with its values.
const char * const Third = "{'id': 1, 'name': 'concert', 'properties': ["
                           "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                           "{'id': 12, 'name': 'seats', 'type': 'double'}]}";

} // namespace

class tst_window_changes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<window_bench>(textOf(json(First)));
        window_bench::run(
            {"settings", m_bench->file(), "--db", "postgresql", "--path", "sql", "--schema", "both"});
        window_bench::run({"tag", m_bench->file(), "-m", "first"});
        m_bench->import(textOf(json(Second)));
        window_bench::run({"tag", m_bench->file(), "-m", "second"});
        m_bench->import(textOf(json(Third)));
        QDir().mkpath(m_bench->path("sql"));
        m_bench->open();
    }
    void cleanup() { m_bench.reset(); }

    void fromTheNewestVersionToNow()
    {
        goToChanges();
        QCOMPARE(box("m_cboFrom").currentText(), QString("v2: second"));
        QCOMPARE(box("m_cboTo").currentText(), QString("now"));
        QCOMPARE(box("m_cboDatabase").currentText(), QString("PostgreSQL 15"));
        QCOMPARE(summary(*panel().findChild<app::changes_view *>()),
                 QString("2 changes, 1 statement, 1 error, 1 warning, 1 note"));
        QCOMPARE(rows(tree()),
                 (QStringList{
                     "entity concert", "  property seats", "    type: int -> double (no statement)",
                     "      KV401: The column 'seats' of 'concert.seats' is still integer, in a new database "
                     "it is double precision.",
                     "  - property note: QString",
                     "    KV302: The column 'note' of table 'concert' is dropped with its values.",
                     "    KV602: Programs that use 'note' of table 'concert' fail from this statement on."}));
        QCOMPARE(statements(), QString("\nALTER TABLE concert DROP COLUMN note;\n\n"));
    }
    void findingsAreMarked()
    {
        goToChanges();
        const auto kindOf = [this](const char * text) { return app::messageKind(rowWith(text)); };
        QCOMPARE(kindOf("KV302"), app::message_kind::error);
        QCOMPARE(kindOf("KV401"), app::message_kind::warning);
        QCOMPARE(kindOf("KV602"), app::message_kind::note);
        QVERIFY2(rowWith("KV302").data(Qt::ToolTipRole).toString().contains("dropped with its values."),
                 qPrintable(rowWith("KV302").data(Qt::ToolTipRole).toString()));
    }
    void aClickGoesToObjectAndStatement()
    {
        goToChanges();
        click(rowWith("- property note"));
        QCOMPARE(text().textCursor().selectedText(), QString("ALTER TABLE concert DROP COLUMN note;"));
        QCOMPARE(m_bench->tree().selectedEntity(), 1L);
        click(rowWith("type: int"));
        auto * const model = m_bench->tree().findChild<QTreeView *>();
        QCOMPARE(model->currentIndex().data().toString(), QString("seats"));
        // The keyboard stays with the changes.
        QVERIFY(panel().isVisible());
        QVERIFY(tree().hasFocus());
    }
    void aDoubleClickGoesToTheScript()
    {
        m_bench->action("m_actExport_KorvGenericDDLExport")->trigger();
        QTRY_VERIFY(m_bench->scripts().isVisible());
        goToChanges();
        const QModelIndex row = rowWith("KV302");
        click(row);
        QTest::mouseDClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier,
                           tree().visualRect(row).center());
        QVERIFY(m_bench->scripts().isVisible());
        const auto * const script = m_bench->scripts().findChild<QTabWidget *>()->currentWidget();
        QCOMPARE(script->findChild<QPlainTextEdit *>()->textCursor().selectedText(),
                 QString("ALTER TABLE concert DROP COLUMN note;"));
    }
    /// A red bar stands beside the statement that drops a column, and none beside another.
    void whatDestroysDataIsMarked()
    {
        goToChanges();
        const auto isRed = [this](int line) {
            const QTextBlock block = text().document()->findBlockByNumber(line - 1);
            const int y = text().cursorRect(QTextCursor(block)).center().y() + text().viewport()->y();
            const QColor color = text().grab().toImage().pixelColor(text().frameWidth() + 1, y);
            return color.red() > 150 && color.green() < 100;
        };
        QVERIFY(isRed(2));
        QVERIFY(!isRed(1));
        choose(box("m_cboFrom"), "v1: first");
        choose(box("m_cboTo"), "v2: second");
        QVERIFY(!isRed(2));
    }
    void otherVersionsAndDatabases()
    {
        goToChanges();
        choose(box("m_cboFrom"), "v1: first");
        QCOMPARE(rows(tree()).first(3),
                 (QStringList{"entity concert", "  name: gig -> concert",
                              "    KV601: Programs that ask for 'gig' fail from this statement on."}));
        choose(box("m_cboTo"), "v2: second");
        QCOMPARE(statements(), QString("\nALTER TABLE gig RENAME TO concert;\n\n"));
        choose(box("m_cboDatabase"), "MySQL 8.0");
        QCOMPARE(statements(), QString("\nRENAME TABLE `gig` TO `concert`;\n\n"));
        // Backwards there are statements, and no findings.
        choose(box("m_cboTo"), "now");
        choose(box("m_cboFrom"), "now");
        choose(box("m_cboTo"), "v1: first");
        QCOMPARE(panel().findChild<QLabel *>("m_lblNote")->text(),
                 QString("A step backwards is not judged."));
        QVERIFY(rowWith("KV").isValid() == false);
    }
    void versionsLetTwoBeChosen()
    {
        modal_driver driver({[](QWidget * w) {
            auto * const list = w->findChild<QTreeView *>();
            auto * const compare = w->findChild<QPushButton *>("m_btnCompare");
            QVERIFY(compare->isEnabled());
            QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                              list->visualRect(list->model()->index(1, 0)).center());
            QVERIFY(compare->isEnabled());
            QTest::mouseClick(compare, Qt::LeftButton);
        }});
        m_bench->press(Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(driver.isDone());
        QVERIFY(panel().isVisible());
        QCOMPARE(box("m_cboFrom").currentText(), QString("v1: first"));
        QCOMPARE(box("m_cboTo").currentText(), QString("v2: second"));
        QCOMPARE(statements(), QString("\nALTER TABLE gig RENAME TO concert;\n\n"));
        // A new version of the file leaves the choice as it is.
        m_bench->import(textOf(json(Second)));
        m_bench->action("m_actReload")->trigger();
        QCOMPARE(box("m_cboTo").currentText(), QString("v2: second"));
    }
    void longMessagesOfVersionsAreCut()
    {
        window_bench::run({"tag", m_bench->file(), "-m", QString("1234567890").repeated(4)});
        window_bench::run({"tag", m_bench->file(), "-m", QString("1234567890").repeated(4) + "1"});
        window_bench::run({"tag", m_bench->file()});
        m_bench->action("m_actReload")->trigger();
        goToChanges();
        QStringList shown;
        for (int i = 0; i < box("m_cboFrom").count(); ++i) {
            shown << box("m_cboFrom").itemText(i);
        }
        QVERIFY2(shown.contains("v3: 1234567890123456789012345678901234567890"),
                 qPrintable(shown.join('\n')));
        QVERIFY2(shown.contains(QStringLiteral("v4: 1234567890123456789012345678901234567890\u2026")),
                 qPrintable(shown.join('\n')));
        QVERIFY2(shown.contains("v5"), qPrintable(shown.join('\n')));
    }
    /// Another program has tagged: there is nothing left since the newest version.
    void aVersionOfAnotherProgram()
    {
        goToChanges();
        QCOMPARE(box("m_cboFrom").currentText(), QString("v2: second"));
        window_bench::run({"tag", m_bench->file(), "-m", "third"});
        m_bench->press(Qt::Key_F5);
        QCOMPARE(box("m_cboFrom").currentText(), QString("v3: third"));
        QCOMPARE(rows(tree()), QStringList());
        // So it is when the window notices by itself.
        window_bench::run({"tag", m_bench->file(), "-m", "fourth"});
        QTRY_COMPARE(box("m_cboFrom").currentText(), QString("v4: fourth"));
    }
    void tagShowsChangesFirst()
    {
        QStringList shown;
        QString counts;
        modal_driver driver({[&](QWidget * w) {
            auto * const view = w->findChild<app::changes_view *>();
            QVERIFY(view);
            shown = rows(*view->findChild<QTreeView *>());
            counts = summary(*view);
            QTest::keyClicks(w->findChild<QLineEdit *>(), "third");
            QTest::keyClick(w, Qt::Key_Return);
        }});
        m_bench->press(Qt::Key_T, Qt::ControlModifier);
        QVERIFY(driver.isDone());
        QCOMPARE(counts, QString("2 changes, 1 statement, 1 error, 1 warning, 1 note"));
        QVERIFY(shown.contains("    type: int -> double (no statement)"));
        QVERIFY(window_bench::run({"log", m_bench->file()}).contains("third"));
        // What changed since the new version is nothing.
        goToChanges();
        QCOMPARE(box("m_cboFrom").currentText(), QString("v3: third"));
        QCOMPARE(rows(tree()), QStringList());
    }
    void importShowsChangesFirst()
    {
        m_bench->write("next.json", textOf(json(First)));
        const QByteArray before = window_bench::run({"dump", m_bench->file()});
        QStringList shown;
        const auto look = [&shown](QWidget * w) {
            QCOMPARE(w->objectName(), QString("wnd_import_changes"));
            shown = rows(*w->findChild<QTreeView *>("m_treChanges"));
        };
        modal_driver no({modal_driver::file(m_bench->path("next.json")), modal_driver::key(Qt::Key_Return),
                         [&look](QWidget * w) {
                             look(w);
                             modal_driver::press(QDialogButtonBox::Cancel)(w);
                         }});
        m_bench->press(Qt::Key_I, Qt::ControlModifier);
        QVERIFY(no.isDone());
        QCOMPARE(shown, (QStringList{"entity gig", "  name: concert -> gig", "  + property note: QString",
                                     "  property seats", "    type: double -> int"}));
        QCOMPARE(window_bench::run({"dump", m_bench->file()}), before);
        modal_driver yes({modal_driver::file(m_bench->path("next.json")), modal_driver::key(Qt::Key_Return),
                          modal_driver::press(QDialogButtonBox::Ok)});
        m_bench->press(Qt::Key_I, Qt::ControlModifier);
        QVERIFY(yes.isDone());
        QVERIFY(window_bench::run({"dump", m_bench->file()}) != before);
    }
    void withoutAVersion()
    {
        m_bench = std::make_unique<window_bench>(textOf(json(First)));
        m_bench->open();
        goToChanges();
        auto * const problem = panel().findChild<QLabel *>("m_lblProblem");
        QVERIFY(problem->isVisible());
        QCOMPARE(problem->text(),
                 QString("'shop' has no version yet, so there is nothing to compare it with.\n"
                         "\"Actions > Tag project state…\" makes one."));
    }
    /// Looking must not run a script that nobody has allowed.
    void aCustomScriptWaitsForItsPermission()
    {
        m_bench->write("hook.js", "function exportStep() { return 'SELECT 1;'; }\n");
        window_bench::run({"settings", m_bench->file(), "--custom-script", m_bench->path("hook.js")});
        goToChanges();
        QCOMPARE(panel().findChild<QLabel *>("m_lblNote")->text(),
                 QString("Without the custom script of the project, which was not allowed to run yet."));
        QVERIFY(!statements().contains("SELECT 1;"));
        QVERIFY(statements().contains("DROP COLUMN note"));
    }
    void whatCannotBeJudged()
    {
        m_bench->write("korvane-check.json", "{");
        goToChanges();
        auto * const problem = panel().findChild<QLabel *>("m_lblProblem");
        QVERIFY(problem->isVisible());
        QVERIFY2(problem->text().contains("korvane-check.json"), qPrintable(problem->text()));
    }

private:
    void goToChanges()
    {
        auto * const tabs = m_bench->find<QTabWidget>("m_tabPages");
        QTabBar * const bar = tabs->tabBar();
        const int index = tabs->indexOf(&panel());
        QCOMPARE(tabs->tabText(index), QString("Changes"));
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
        QVERIFY(panel().isVisible());
    }
    [[nodiscard]] app::changes_panel & panel() const { return *m_bench->find<app::changes_panel>(); }
    [[nodiscard]] QTreeView & tree() const { return *panel().findChild<QTreeView *>("m_treChanges"); }
    [[nodiscard]] QPlainTextEdit & text() const
    {
        return *panel().findChild<QPlainTextEdit *>("m_txtStatements");
    }
    [[nodiscard]] QString statements() const { return text().toPlainText(); }
    [[nodiscard]] QComboBox & box(const char * name) const { return *panel().findChild<QComboBox *>(name); }
    static QString summary(const app::changes_view & view)
    {
        return view.findChild<QLabel *>("m_lblSummary")->text();
    }
    /// Chooses an entry by its keyboard, as a person does.
    static void choose(QComboBox & box, const char * entry)
    {
        const int wanted = box.findText(QString::fromLatin1(entry));
        QVERIFY2(wanted >= 0, entry);
        box.setFocus();
        while (box.currentIndex() != wanted) {
            QTest::keyClick(&box, box.currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
        }
    }
    void click(const QModelIndex & row) const
    {
        tree().scrollTo(row);
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier, tree().visualRect(row).center());
    }
    [[nodiscard]] QModelIndex rowWith(const char * text) const
    {
        const QModelIndexList found =
            tree().model()->match(tree().model()->index(0, 0), Qt::DisplayRole, QString::fromLatin1(text), 1,
                                  Qt::MatchStartsWith | Qt::MatchRecursive);
        return found.value(0);
    }
    /// The rows of a tree that are open, two blanks for each depth.
    static QStringList rows(const QTreeView & tree)
    {
        QStringList lines;
        addRows(tree, {}, {}, lines);
        return lines;
    }
    static void addRows(const QTreeView & tree, const QModelIndex & parent, const QString & indent,
                        QStringList & lines)
    {
        for (int row = 0; row < tree.model()->rowCount(parent); ++row) {
            const QModelIndex index = tree.model()->index(row, 0, parent);
            lines << indent + index.data().toString();
            if (tree.isExpanded(index)) {
                addRows(tree, index, indent + "  ", lines);
            }
        }
    }

    std::unique_ptr<window_bench> m_bench;
};

QTEST_MAIN(tst_window_changes)
#include "tst_window_changes.moc"
