// The diagram's panel: what of which project it shows, and how it gets on with the rest of a window.

#include "app/window/diagram/diagram_panel.h"
#include "app/window/diagram/diagram_view.h"

#include "support/diagram_models.h"
#include "support/project_support.h"
#include "support/shell_program.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QToolBar>

#include <csignal>

using app::diagram_panel;
using app::diagram_view;
using support::model_builder;
using support::shell_program;

namespace {

const char * const NoDot = "/nonexistent/dot";
const char * const GridNote =
    "Graphviz (dot) is not installed; install Graphviz for a layout. The entities are arranged in a grid";
const char * const Slow = "echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 60";

/// The panel, shown; it lays out in a grid unless another program is set.
struct fixture
{
    fixture()
    {
        panel.setLayoutProgram(NoDot);
        panel.resize(900, 600);
        panel.show();
        panel.activateWindow();
        if (!QTest::qWaitForWindowActive(&panel)) {
            qFatal("the window of the test did not become active");
        }
        laidOut.wait(100); // that there is nothing
        laidOut.clear();
    }
    explicit fixture(const model_builder & model) : fixture() { show(model); }
    void show(const model_builder & model)
    {
        panel.setProject(model.get());
        await();
    }
    void await()
    {
        if (laidOut.isEmpty() && !laidOut.wait(20000)) {
            qFatal("nothing was laid out");
        }
        laidOut.clear();
    }
    template <class W>
    [[nodiscard]] W * child(const char * name) const
    {
        W * const w = panel.findChild<W *>(QString::fromLatin1(name));
        if (!w) {
            qFatal("no child %s", name);
        }
        return w;
    }
    [[nodiscard]] QString shown() const { return child<QLabel>("m_lblShown")->text(); }
    [[nodiscard]] QString note() const
    {
        const QLabel * const label = child<QLabel>("m_lblNote");
        return label->isVisible() ? label->text() : QString();
    }
    [[nodiscard]] diagram_view * view() const { return child<diagram_view>("m_grvDiagram"); }
    [[nodiscard]] bool hasBox(long id) const { return !view()->boxRect(id).isEmpty(); }
    [[nodiscard]] QList<long> boxes(long largest) const
    {
        QList<long> ids;
        for (long id = 1; id <= largest; ++id) {
            if (hasBox(id)) {
                ids << id;
            }
        }
        return ids;
    }
    void clickBox(long id) const
    {
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, view()->boxRect(id).center());
    }
    void trigger(const char * action) const { child<QAction>(action)->trigger(); }
    /// Whether the entity is marked in the picture that is to be seen.
    [[nodiscard]] bool isMarked(long id) const
    {
        const QRect box = view()->boxRect(id);
        const QColor side = view()->viewport()->grab().toImage().pixelColor(box.left(), box.center().y());
        const QColor highlight = view()->diagramStyle().highlight;
        return qAbs(side.red() - highlight.red()) + qAbs(side.blue() - highlight.blue()) < 40;
    }

    diagram_panel panel;
    QSignalSpy laidOut{&panel, &diagram_panel::layoutFinished};
    QSignalSpy selected{&panel, &diagram_panel::entitySelected};
};

} // namespace

class tst_diagram_panel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyAtFirst()
    {
        const fixture f;
        QCOMPARE(f.view()->hint(), "No project is open.");
        QCOMPARE(f.shown(), "");
        QCOMPARE(f.note(), "");
        QCOMPARE(f.panel.selectedEntity(), 0L);
    }

    void tellsThatNothingIsLaidOut()
    {
        diagram_panel panel;
        QSignalSpy spy(&panel, &diagram_panel::layoutFinished);
        panel.setProject(nullptr);
        QCOMPARE(spy.count(), 0); // never before it returns
        QVERIFY(spy.wait());
        QTest::qWait(20);
        QCOMPARE(spy.count(), 1);
    }

    void showsASmallProjectAsAWhole()
    {
        const fixture f(support::smallShop());
        QCOMPARE(f.boxes(9), QList<long>({1, 2, 3, 4}));
        QCOMPARE(f.shown(), "All 4 entities");
        QCOMPARE(f.note(), GridNote);
        QCOMPARE(f.view()->hint(), "");
        QCOMPARE(f.view()->zoom(), 1.0);
        QCOMPARE(f.child<QLabel>("m_lblZoom")->text(), "100 %");
        QVERIFY(!f.child<QComboBox>("m_cboDistance")->isEnabled());
    }

    void laysOutWithDot()
    {
        if (QStandardPaths::findExecutable("dot").isEmpty()) {
            QSKIP("dot is not installed");
        }
        fixture f;
        f.panel.setLayoutProgram("dot");
        f.show(support::smallShop());
        QCOMPARE(f.note(), "");
        QCOMPARE(f.boxes(9), QList<long>({1, 2, 3, 4}));
    }

    void showsProjectsOfAllSizes()
    {
        fixture f;
        f.show(model_builder());
        QCOMPARE(f.view()->hint(), "The project has no entities.");
        QCOMPARE(f.shown(), "All 0 entities");
        f.show(support::chainOf(1));
        QCOMPARE(f.shown(), "1 entity");
        QCOMPARE(f.view()->hint(), "");
        QCOMPARE(f.note(), ""); // nothing that dot could do better
        f.show(support::chainOf(40));
        QCOMPARE(f.boxes(50).size(), 40);
        QCOMPARE(f.shown(), "All 40 entities");
        f.show(support::chainOf(41));
        QCOMPARE(f.boxes(50).size(), 0);
        QCOMPARE(f.shown(), "0 of 41 entities");
        QCOMPARE(f.view()->hint(), "Select an entity in the tree to see it and its neighbours here.");
        QCOMPARE(f.note(), "");
    }

    void showsTheNeighbourhoodInALargeProject()
    {
        fixture f(support::chainOf(10000));
        QVERIFY(f.child<QComboBox>("m_cboDistance")->isEnabled());
        f.panel.selectEntity(500);
        f.await();
        QCOMPARE(f.boxes(10000), QList<long>({499, 500, 501}));
        QCOMPARE(f.shown(), "3 of 10,000 entities: the neighbours of e500");
        QCOMPARE(f.view()->hint(), "");
        QVERIFY(f.isMarked(500));
        QCOMPARE(f.panel.selectedEntity(), 500L);
        QCOMPARE(f.selected.count(), 0);
    }

    void aChosenNeighbourBecomesTheCentre()
    {
        fixture f(support::chainOf(100));
        f.panel.selectEntity(50);
        f.await();
        f.clickBox(51);
        QCOMPARE(f.selected.count(), 1);
        QCOMPARE(f.selected[0][0].toLongLong(), 51);
        f.await();
        QCOMPARE(f.boxes(100), QList<long>({50, 51, 52}));
        QCOMPARE(f.shown(), "3 of 100 entities: the neighbours of e51");
        QVERIFY(f.isMarked(51));
        // By keys as well.
        f.view()->setFocus();
        f.panel.selectEntity(51);
        while (f.view()->cursor() != 52) {
            QTest::keyClick(f.view(), Qt::Key_Tab);
        }
        QTest::keyClick(f.view(), Qt::Key_Return);
        QCOMPARE(f.selected.count(), 2);
        QCOMPARE(f.selected[1][0].toLongLong(), 52);
        f.await();
        QCOMPARE(f.boxes(100), QList<long>({51, 52, 53}));
        QCOMPARE(f.selected.count(), 2); // each choice is told once
    }

    void theNeighbourhoodHasALargestNumber()
    {
        fixture f(support::starOf(99));
        f.panel.selectEntity(1);
        f.await();
        QCOMPARE(f.boxes(100).size(), 60);
        QCOMPARE(f.shown(), "60 of 100 entities: the neighbours of hub; not shown: 40");
        f.panel.selectEntity(7);
        f.await();
        QCOMPARE(f.boxes(100), QList<long>({1, 7}));
        QCOMPARE(f.shown(), "2 of 100 entities: the neighbours of s7");
    }

    void distanceWidensTheNeighbourhood()
    {
        fixture f(support::chainOf(100));
        f.panel.selectEntity(50);
        f.await();
        auto * const box = f.child<QComboBox>("m_cboDistance");
        QCOMPARE(box->currentText(), "1");
        QCOMPARE(box->count(), 3);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down);
        f.await();
        QCOMPARE(f.boxes(100), QList<long>({48, 49, 50, 51, 52}));
        QCOMPARE(f.shown(), "5 of 100 entities: the neighbours of e50 up to distance 2");
        QVERIFY(f.child<QAction>("m_actDistance2")->isChecked());
        f.trigger("m_actDistance3");
        f.await();
        QCOMPARE(f.boxes(100).size(), 7);
        QCOMPARE(box->currentText(), "3");
        f.trigger("m_actDistance1");
        f.await();
        QCOMPARE(f.boxes(100).size(), 3);
        QCOMPARE(f.panel.selectedEntity(), 50L);
        QVERIFY(f.isMarked(50));
    }

    void theDistanceStaysForTheNextEntity()
    {
        fixture f(support::chainOf(100));
        f.trigger("m_actDistance2"); // nothing to lay out yet
        QTest::qWait(20);
        QVERIFY(f.laidOut.isEmpty());
        f.panel.selectEntity(10);
        f.await();
        QCOMPARE(f.boxes(100).size(), 5);
    }

    void selectsBothWaysWithoutEcho()
    {
        fixture f(support::smallShop());
        QVERIFY(!f.isMarked(1));
        f.panel.selectEntity(1);
        QCOMPARE(f.panel.selectedEntity(), 1L);
        QVERIFY(f.isMarked(1));
        QCOMPARE(f.selected.count(), 0);
        // The window answers each choice by selecting the same.
        connect(&f.panel, &diagram_panel::entitySelected, &f.panel, &diagram_panel::selectEntity);
        f.clickBox(3);
        QCOMPARE(f.selected.count(), 1);
        QCOMPARE(f.selected[0][0].toLongLong(), 3);
        QCOMPARE(f.panel.selectedEntity(), 3L);
        QVERIFY(f.isMarked(3));
        QVERIFY(!f.isMarked(1));
        const QPoint beside = f.view()->boxRect(1).topLeft() - QPoint(20, 20);
        QTest::mouseClick(f.view()->viewport(), Qt::LeftButton, {}, beside);
        QCOMPARE(f.selected.count(), 2);
        QCOMPARE(f.selected[1][0].toLongLong(), 0);
        QCOMPARE(f.panel.selectedEntity(), 0L);
        QVERIFY(!f.isMarked(3));
        QTest::qWait(20);
        QVERIFY(f.laidOut.isEmpty()); // in a small project a selection moves nothing
    }

    void knowsOnlyItsEntities()
    {
        fixture f(support::smallShop());
        f.panel.selectEntity(2);
        f.panel.selectEntity(77);
        QCOMPARE(f.panel.selectedEntity(), 0L);
        QVERIFY(!f.isMarked(2));
        f.panel.selectEntity(2);
        f.panel.selectEntity(0);
        QCOMPARE(f.panel.selectedEntity(), 0L);
        QVERIFY(!f.isMarked(2));
    }

    void aClickBesideTheBoxesKeepsTheNeighbourhood()
    {
        fixture f(support::chainOf(100));
        f.panel.selectEntity(50);
        f.await();
        QTest::mouseClick(f.view()->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(f.panel.selectedEntity(), 0L);
        QTest::qWait(20);
        QVERIFY(f.laidOut.isEmpty());
        QCOMPARE(f.boxes(100).size(), 3);
        f.panel.selectEntity(50); // it is still the centre
        QTest::qWait(20);
        QVERIFY(f.laidOut.isEmpty());
        QVERIFY(f.isMarked(50));
    }

    void theFormerDiagramStaysWhileItLaysOut()
    {
        const shell_program slow(Slow);
        fixture f(support::chainOf(100));
        f.panel.selectEntity(50);
        f.await();
        f.panel.setLayoutProgram(slow.path());
        f.panel.selectEntity(51);
        QCOMPARE(f.shown(), "Laying out…");
        QCOMPARE(f.note(), "");
        QCOMPARE(f.boxes(100), QList<long>({49, 50, 51}));
        QVERIFY(f.isMarked(51));
        QVERIFY(!f.isMarked(50));
        QVERIFY(f.laidOut.isEmpty());
        QTRY_VERIFY(!support::bytesOf(slow.file("pid")).isEmpty());
        // Another choice meanwhile.
        f.panel.setLayoutProgram(NoDot);
        f.clickBox(49);
        f.await();
        QCOMPARE(f.boxes(100), QList<long>({48, 49, 50}));
        QVERIFY(isEnded(slow));
        QTest::qWait(20);
        QVERIFY(f.laidOut.isEmpty());
    }

    void aSlowLayoutBecomesAGrid()
    {
        const shell_program slow(Slow);
        fixture f;
        f.panel.setLayoutProgram(slow.path());
        f.panel.setLayoutTimeLimit(400);
        f.panel.setProject(support::smallShop().get());
        QCOMPARE(f.shown(), "Laying out…");
        QCOMPARE(f.view()->hint(), "Laying out…");
        f.await();
        QCOMPARE(f.view()->hint(), "");
        QCOMPARE(f.shown(), "All 4 entities");
        QCOMPARE(f.note(), "Graphviz (dot) took longer than 0.4 s. The entities are arranged in a grid");
        QCOMPARE(f.boxes(9).size(), 4);
    }

    void aProjectMayGoAway()
    {
        fixture f;
        {
            const model_builder model = support::smallShop();
            f.show(model);
        }
        f.clickBox(2);
        f.panel.selectEntity(1);
        QCOMPARE(f.selected.count(), 1);
        QVERIFY(f.isMarked(1));
        QString reason;
        QVERIFY(f.panel.saveSvg(m_folder.filePath("gone.svg"), reason));
    }

    void anotherProjectTakesThePlace()
    {
        fixture f(support::smallShop());
        f.panel.selectEntity(2);
        f.trigger("m_actZoomIn");
        f.panel.setProject(support::chainOf(3).get());
        QVERIFY(!f.hasBox(1)); // at once: what could be clicked now is not in the new project
        QCOMPARE(f.panel.selectedEntity(), 0L);
        f.await();
        QCOMPARE(f.boxes(9), QList<long>({1, 2, 3}));
        QCOMPARE(f.shown(), "All 3 entities");
        QVERIFY(!f.isMarked(2));
        QCOMPARE(f.view()->zoom(), 1.0);
        QCOMPARE(f.selected.count(), 0);
    }

    void anotherLargeProjectHasNoCentreYet()
    {
        fixture f(support::chainOf(100));
        f.panel.selectEntity(50);
        f.await();
        f.show(support::chainOf(80));
        QCOMPARE(f.boxes(100).size(), 0);
        QCOMPARE(f.shown(), "0 of 80 entities");
        QCOMPARE(f.view()->hint(), "Select an entity in the tree to see it and its neighbours here.");
        f.panel.selectEntity(50); // the same number, but not the same entity
        f.await();
        QCOMPARE(f.shown(), "3 of 80 entities: the neighbours of e50");
    }

    void takesNoProjectWhileItLaysOut()
    {
        const shell_program slow(Slow);
        fixture f;
        f.panel.setLayoutProgram(slow.path());
        f.panel.setProject(support::smallShop().get());
        QTRY_VERIFY(!support::bytesOf(slow.file("pid")).isEmpty());
        f.panel.setProject(nullptr);
        QCOMPARE(f.view()->hint(), "No project is open.");
        QCOMPARE(f.shown(), "");
        f.await();
        QVERIFY(isEnded(slow));
        QCOMPARE(f.boxes(9).size(), 0);
        QTest::qWait(20);
        QVERIFY(f.laidOut.isEmpty());
        f.panel.selectEntity(1);
        QCOMPARE(f.panel.selectedEntity(), 0L);
    }

    void goesAwayWhileItLaysOut()
    {
        const shell_program slow(Slow);
        {
            diagram_panel panel;
            panel.setLayoutProgram(slow.path());
            panel.setProject(support::smallShop().get());
            QTRY_VERIFY(!support::bytesOf(slow.file("pid")).isEmpty());
        }
        QVERIFY(isEnded(slow));
    }

    void whoHearsOfAChoiceMayDoAnything()
    {
        fixture f(support::chainOf(100));
        f.panel.selectEntity(50);
        f.await();
        connect(&f.panel, &diagram_panel::entitySelected, &f.panel, [&f] { f.panel.setProject(nullptr); });
        f.clickBox(51);
        f.await();
        QCOMPARE(f.view()->hint(), "No project is open.");
        QCOMPARE(f.panel.selectedEntity(), 0L);
        auto * const panel = new diagram_panel;
        panel->setLayoutProgram(NoDot);
        QSignalSpy spy(panel, &diagram_panel::layoutFinished);
        panel->resize(900, 600);
        panel->show();
        panel->setProject(support::smallShop().get());
        QVERIFY(spy.wait());
        connect(panel, &diagram_panel::entitySelected, panel, [panel] { panel->deleteLater(); });
        auto * const view = panel->findChild<diagram_view *>();
        const QSignalSpy gone(panel, &QObject::destroyed);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->boxRect(1).center());
        QTRY_COMPARE(gone.count(), 1);
    }

    void drawsUnusualNames()
    {
        model_builder model;
        const QString longName = QString(300, 'W') + "end";
        model.entity(1, "漢字 😀 Ωμέγα").property(1, QString(300, 'p'), "int");
        model.entity(2, longName).table("<b>&").relation(2, "lost", 2, model::relationship::many_to_one, 99);
        model.entity(3, "a\nb\x01").relation(3, "<i>", 3, model::relationship::many_to_one, 1);
        fixture f(model);
        QCOMPARE(f.boxes(9), QList<long>({1, 2, 3}));
        QCOMPARE(f.view()->boxRect(2).width(), 341); // not wider than boxes get; both borders count
        f.panel.selectEntity(2);
        QVERIFY(f.view()->accessibleDescription().startsWith("Selected: " + longName));
        for (const char * const label : {"m_lblShown", "m_lblNote"}) {
            QCOMPARE(f.child<QLabel>(label)->textFormat(), Qt::PlainText); // a name is no mark-up
        }
    }

    void zoomsByActions()
    {
        fixture f(support::smallShop());
        const auto zoom = [&f] { return f.child<QLabel>("m_lblZoom")->text(); };
        f.trigger("m_actZoomIn");
        QCOMPARE(zoom(), "125 %");
        f.trigger("m_actActualSize");
        QCOMPARE(zoom(), "100 %");
        f.trigger("m_actZoomOut");
        QCOMPARE(zoom(), "80 %");
        f.trigger("m_actFit");
        QCOMPARE(zoom(), "100 %");
        // And by the keys, wherever the focus is in the window.
        f.child<QToolBar>("m_toolBarDiagram")->widgetForAction(f.child<QAction>("m_actFit"))->setFocus();
        QTest::keyClick(&f.panel, Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(zoom(), "125 %");
        QTest::keyClick(&f.panel, Qt::Key_Equal, Qt::ControlModifier);
        QCOMPARE(zoom(), "156 %");
        QTest::keyClick(f.view(), Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(zoom(), "100 %");
        QTest::keyClick(f.view(), Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(zoom(), "80 %");
        QTest::keyClick(f.view(), Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(zoom(), "100 %");
    }

    void hasActionsForTheWindow()
    {
        fixture f;
        QStringList texts;
        for (const QAction * const action : f.panel.diagramActions()) {
            texts << action->text();
            QCOMPARE(action->isEnabled(), false); // without a diagram
        }
        QCOMPARE(texts, QStringList({"Zoom &in", "Zoom &out", "&Fit", "&Actual size (100 %)", "&Distance",
                                     "Mar&k changes", "&Save diagram…"}));
        f.show(support::smallShop());
        for (const QAction * const action : f.panel.diagramActions()) {
            QCOMPARE(action->isEnabled(), action->text() != "&Distance");
        }
        f.show(support::chainOf(41));
        for (const QAction * const action : f.panel.diagramActions()) {
            QCOMPARE(action->isEnabled(), action->text() == "&Distance" || action->text() == "Mar&k changes");
        }
        f.panel.selectEntity(1);
        f.await();
        for (const QAction * const action : f.panel.diagramActions()) {
            QCOMPARE(action->isEnabled(), true);
        }
        QCOMPARE(f.child<QAction>("m_actDistance")->menu()->actions().size(), 3);
    }

    void itsIconsAreThere()
    {
        fixture f(support::smallShop());
        for (QAction * const action : f.panel.diagramActions()) {
            if (action->menu()) {
                continue;
            }
            QVERIFY2(!action->icon().isNull(), qPrintable(action->text()));
            const QImage image = action->icon().pixmap(20, 20).toImage();
            int ink = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    ink += qAlpha(image.pixel(x, y)) > 200;
                }
            }
            QVERIFY2(ink > 20, qPrintable(action->text()));
        }
        // In the colour of the palette's text.
        const auto darkest = [&f] {
            const QImage image = f.child<QAction>("m_actFit")->icon().pixmap(20, 20).toImage();
            int most = 0;
            QColor color;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    if (const QColor c = image.pixelColor(x, y); c.alpha() > most) {
                        most = c.alpha();
                        color = c;
                    }
                }
            }
            return color.rgb();
        };
        QPalette palette = f.panel.palette();
        for (const QColor color : {QColor(Qt::white), QColor(0x12, 0x34, 0x56)}) {
            palette.setColor(QPalette::ButtonText, color);
            f.panel.setPalette(palette);
            QCOMPARE(QColor(darkest()), color);
        }
    }

    void everythingCanBeReachedByKeys()
    {
        const fixture f(support::chainOf(41));
        const auto * const bar = f.child<QToolBar>("m_toolBarDiagram");
        int buttons = 0;
        for (QAction * const action : f.panel.diagramActions()) {
            if (const QWidget * const button = bar->widgetForAction(action)) {
                ++buttons;
                QVERIFY(button->focusPolicy() & Qt::TabFocus);
                QVERIFY(!button->accessibleName().isEmpty());
                QVERIFY(!button->accessibleName().contains('&'));
                QVERIFY(!action->toolTip().isEmpty());
            }
        }
        QCOMPARE(buttons, 6);
        QCOMPARE(f.child<QComboBox>("m_cboDistance")->accessibleName(),
                 "Distance of the neighbours that are shown");
        QCOMPARE(f.view()->accessibleName(), "Diagram of the project");
        QCOMPARE(f.view()->accessibleDescription(),
                 "Select an entity in the tree to see it and its neighbours here.");
    }

    void anotherFontIsLaidOutAnew()
    {
        fixture f(support::smallShop());
        const int height = f.view()->boxRect(1).height();
        QFont font = f.panel.font();
        font.setPointSizeF(font.pointSizeF() * 2);
        f.panel.setFont(font);
        f.await();
        f.view()->showActualSize();
        QVERIFY(f.view()->boxRect(1).height() > height * 1.5);
    }

private:
    static bool isEnded(const shell_program & program)
    {
        bool ok = false;
        const int process = support::bytesOf(program.file("pid")).trimmed().toInt(&ok);
        return ok && QTest::qWaitFor([process] { return kill(process, 0) != 0; });
    }

    QTemporaryDir m_folder;
};

QTEST_MAIN(tst_diagram_panel)
#include "tst_diagram_panel.moc"
