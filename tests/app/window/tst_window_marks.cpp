// Changes in the diagram of the main window: those between the versions that are chosen under Changes.

#include "app/window/window_bench.h"
#include "support/project_support.h"

#include "app/window/changes/changes_panel.h"
#include "app/window/diagram/diagram_view.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTabWidget>
#include <QToolBar>

using app::diagram_view;
using support::json;
using support::textOf;
using support::window_bench;

namespace {

const char * const First = "{'id': 1, 'name': 'gig', 'properties': ["
                           "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                           "{'id': 12, 'name': 'seats', 'type': 'int'}]},"
                           "{'id': 2, 'name': 'draft', 'properties': ["
                           "{'id': 20, 'name': 'id', 'type': 'long', 'identifier': true}]}";
const char * const Second = "{'id': 1, 'name': 'concert', 'properties': ["
                            "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                            "{'id': 12, 'name': 'seats', 'type': 'int'}]}";
const char * const Third = "{'id': 1, 'name': 'concert', 'properties': ["
                           "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                           "{'id': 12, 'name': 'seats', 'type': 'double'}]}";

} // namespace

class tst_window_marks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<window_bench>(textOf(json(First)));
        window_bench::run({"tag", m_bench->file(), "-m", "first"});
        m_bench->import(textOf(json(Second)));
        window_bench::run({"tag", m_bench->file(), "-m", "second"});
        m_bench->import(textOf(json(Third)));
        m_bench->open();
        QTRY_COMPARE(shown(), QString("1 entity"));
    }
    void cleanup() { m_bench.reset(); }

    void fromTheNewestVersionToNow()
    {
        clickMarks();
        QTRY_COMPARE(shown(), QString("1 entity; changes from v2 to now"));
        QCOMPARE(told(1),
                 QString("Selected: concert: changed; Table: concert; Id: 1, version: 3; Properties: 2; "
                         "seats: type: int -> double. No relationships are shown. "
                         "Shown: id (long, primary key); seats (double, changed)."));
        clickMarks();
        QTRY_COMPARE(shown(), QString("1 entity"));
        QVERIFY2(!told(1).contains("changed"), qPrintable(told(1)));
    }
    /// Other versions under Changes are others in the diagram: what was dropped is there again.
    void theVersionsThatAreChosen()
    {
        clickMarks();
        choose("m_cboFrom", "v1: first");
        QTRY_COMPARE(shown(), QString("All 2 entities; changes from v1 to now"));
        QVERIFY2(told(2).startsWith("Selected: draft: dropped; "), qPrintable(told(2)));
        QVERIFY2(told(1).startsWith("Selected: concert: renamed; "), qPrintable(told(1)));
        QVERIFY2(told(1).contains("name: gig -> concert"), qPrintable(told(1)));
        choose("m_cboTo", "v2: second");
        QTRY_COMPARE(shown(), QString("All 2 entities; changes from v1 to v2"));
        QVERIFY2(told(1).contains("seats (int)"), qPrintable(told(1))); // as that version has it
        // Back to what the tree shows.
        goTo(m_bench->diagram());
        clickMarks();
        QTRY_COMPARE(shown(), QString("1 entity"));
        QVERIFY2(told(1).contains("seats (double)"), qPrintable(told(1)));
    }
    /// Coloured frames: green and red mean what they mean elsewhere, and a signed name says it without them.
    void theyAreSeen()
    {
        clickMarks();
        choose("m_cboFrom", "v1: first");
        QTRY_COMPARE(shown(), QString("All 2 entities; changes from v1 to now"));
        goTo(m_bench->diagram());
        view().showActualSize();
        const QImage image = view().viewport()->grab().toImage();
        const auto headerOf = [&](long id) {
            const QRect box = view().boxRect(id);
            return image.pixelColor(box.left() + 8, box.top() + 4);
        };
        const app::diagram_style style = view().diagramStyle();
        QCOMPARE(headerOf(1).rgb(), style.headerOf(app::diagram_change::renamed).rgb());
        QCOMPARE(headerOf(2).rgb(), style.headerOf(app::diagram_change::dropped).rgb());
    }
    void anotherStateIsMarkedAnew()
    {
        clickMarks();
        QTRY_COMPARE(shown(), QString("1 entity; changes from v2 to now"));
        m_bench->import(textOf(json(First)));
        m_bench->action("m_actReload")->trigger();
        QTRY_COMPARE(shown(), QString("All 2 entities; changes from v2 to now"));
        QVERIFY2(told(2).startsWith("Selected: draft: added; "), qPrintable(told(2)));
    }
    void withoutAVersion()
    {
        m_bench->closeWindow();
        QFile::remove(m_bench->file());
        m_bench->import(textOf(json(First)));
        m_bench->open();
        clickMarks();
        QTRY_COMPARE(shown(), QString("All 2 entities; no version yet to compare it with"));
    }

private:
    void clickMarks() const
    {
        auto * const bar = m_bench->find<QToolBar>("m_toolBarDiagram");
        QTest::mouseClick(bar->widgetForAction(m_bench->action("m_actMarkChanges")), Qt::LeftButton);
    }
    void goTo(QWidget & page) const
    {
        auto * const tabs = m_bench->find<QTabWidget>("m_tabPages");
        QTabBar * const bar = tabs->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(tabs->indexOf(&page)).center());
        QVERIFY(page.isVisible());
    }
    /// Chooses an entry of the tab Changes by its keyboard, as a person does.
    void choose(const char * name, const char * entry) const
    {
        auto & panel = *m_bench->find<app::changes_panel>();
        goTo(panel);
        auto * const box = panel.findChild<QComboBox *>(QString::fromLatin1(name));
        const int wanted = box->findText(QString::fromLatin1(entry));
        QVERIFY2(wanted >= 0, entry);
        box->setFocus();
        while (box->currentIndex() != wanted) {
            QTest::keyClick(box, box->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
        }
    }
    [[nodiscard]] diagram_view & view() const { return *m_bench->find<diagram_view>(); }
    [[nodiscard]] QString shown() const { return m_bench->find<QLabel>("m_lblShown")->text(); }
    /// What is told of an entity's box.
    [[nodiscard]] QString told(long id) const
    {
        m_bench->diagram().selectEntity(id);
        return view().accessibleDescription();
    }

    std::unique_ptr<window_bench> m_bench;
};

QTEST_MAIN(tst_window_marks)
#include "tst_window_marks.moc"
