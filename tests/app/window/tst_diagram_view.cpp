// The diagram as a person uses it: by mouse and by keys.

#include "app/window/diagram/diagram_view.h"
#include "app/window/diagram/diagram_ways.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

using app::diagram_picture;
using app::diagram_view;

namespace {

/// Boxes of 100 × 60 with ids 1, 2, … at `corners`, each connected with the next one by a straight line from
/// centre to centre.
diagram_picture pictureOf(const QList<QPointF> & corners)
{
    diagram_picture picture;
    for (int i = 0; i < corners.size(); ++i) {
        const QString name = QStringLiteral("e%1").arg(i + 1);
        app::diagram_box box;
        box.id = i + 1;
        box.name = name;
        box.tip = name + " tip";
        box.told = name + " told";
        picture.contents.boxes.append(box);
        picture.places.boxes.append(QRectF(corners[i], QSizeF(100, 60)));
    }
    for (int i = 0; i + 1 < corners.size(); ++i) {
        picture.contents.lines.append(
            {i, i + 1, app::diagram_end::many, app::diagram_end::many, {}, {}, "line"});
        QPainterPath path(picture.places.boxes[i].center());
        path.lineTo(picture.places.boxes[i + 1].center());
        picture.places.routes.append({path, path.pointAtPercent(0.5)});
    }
    return picture;
}

/// 1 2 3
/// 4   5
const QList<QPointF> Five{{0, 0}, {200, 0}, {400, 0}, {0, 200}, {400, 200}};
/// Far apart: at its own size it needs scroll bars.
const QList<QPointF> Far{{0, 0}, {2000, 0}, {0, 1600}, {2000, 1600}};

/// The view between two other fields, shown and active.
struct fixture
{
    explicit fixture(const QList<QPointF> & corners)
    {
        auto * const layout = new QHBoxLayout(&window);
        layout->addWidget(before);
        layout->addWidget(view, 1);
        layout->addWidget(after);
        window.resize(900, 600);
        view->setPicture(pictureOf(corners));
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("the window of the test did not become active");
        }
        before->setFocus();
    }
    void click(const QPoint & place) const { QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place); }
    void clickBox(long id) const { click(view->boxRect(id).center()); }
    /// A place between the boxes of Five.
    [[nodiscard]] QPoint emptyPlace() const
    {
        return (view->boxRect(1).center() + view->boxRect(5).center()) / 2 + QPoint(0, 60);
    }
    void wheel(const QPoint & place, int delta, Qt::KeyboardModifiers modifiers) const
    {
        QWheelEvent event(place, view->viewport()->mapToGlobal(place), {}, QPoint(0, delta), Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &event);
    }
    void key(Qt::Key k, Qt::KeyboardModifiers modifiers = {}) const { QTest::keyClick(view, k, modifiers); }
    /// The colour in the middle of the left side of a box.
    [[nodiscard]] QColor borderOf(long id) const
    {
        const QRect box = view->boxRect(id);
        return view->viewport()->grab().toImage().pixelColor(box.left(), box.center().y());
    }
    /// The colour of the line between two boxes, half-way.
    [[nodiscard]] QColor lineBetween(long from, long to) const
    {
        return view->viewport()->grab().toImage().pixelColor(
            (view->boxRect(from).center() + view->boxRect(to).center()) / 2);
    }

    QWidget window;
    QLineEdit * before = new QLineEdit;
    diagram_view * view = new diagram_view;
    QLineEdit * after = new QLineEdit;
};

bool isLike(const QColor & a, const QColor & b)
{
    return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) + qAbs(a.blue() - b.blue()) < 40;
}

} // namespace

class tst_diagram_view : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aClickChooses()
    {
        const fixture f(Five);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        f.clickBox(2);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].toLongLong(), 2);
        f.clickBox(2); // once more says it once more
        QCOMPARE(spy.count(), 2);
        f.clickBox(5);
        QCOMPARE(spy.count(), 3);
        QCOMPARE(spy[2][0].toLongLong(), 5);
        f.click(f.emptyPlace());
        QCOMPARE(spy.count(), 4);
        QCOMPARE(spy[3][0].toLongLong(), 0);
        f.click(f.emptyPlace()); // nothing was chosen any more
        QCOMPARE(spy.count(), 4);
    }

    void aDoubleClickChoosesOnce()
    {
        const fixture f(Five);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        const QPoint place = f.view->boxRect(3).center();
        QTest::mouseClick(f.view->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(f.view->viewport(), Qt::LeftButton, {}, place, 0);
        QVERIFY(spy.count() >= 1);
        for (const QList<QVariant> & call : spy) {
            QCOMPARE(call[0].toLongLong(), 3);
        }
    }

    void otherButtonsChooseNothing()
    {
        const fixture f(Five);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        QTest::mouseClick(f.view->viewport(), Qt::RightButton, {}, f.view->boxRect(1).center());
        QTest::mouseClick(f.view->viewport(), Qt::MiddleButton, {}, f.view->boxRect(1).center());
        QCOMPARE(spy.count(), 0);
    }

    void anotherButtonMeanwhileChangesNothing()
    {
        const fixture f(Five);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        QWidget * const port = f.view->viewport();
        QTest::mousePress(port, Qt::LeftButton, {}, f.view->boxRect(1).center());
        QTest::mousePress(port, Qt::MiddleButton, {}, f.emptyPlace());
        QTest::mouseRelease(port, Qt::MiddleButton, {}, f.emptyPlace());
        QCOMPARE(spy.count(), 0);
        QTest::mouseRelease(port, Qt::LeftButton, {}, f.view->boxRect(1).center());
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].toLongLong(), 1);
        QTest::mouseClick(port, Qt::MiddleButton, {}, f.emptyPlace());
        QTest::mouseClick(port, Qt::RightButton, {}, f.emptyPlace());
        QCOMPARE(spy.count(), 1); // 1 is still chosen
    }

    void fromAfarTextsAreBars()
    {
        const fixture f({{0, 0}});
        const auto picture = [&f](const QString & row, const QString & label, double zoom) {
            diagram_picture result = pictureOf({{0, 0}, {300, 0}});
            result.contents.boxes[0].rows.resize(1);
            result.contents.boxes[0].rows[0].text = row;
            result.contents.lines[0].label = label;
            f.view->setPicture(result);
            f.view->showActualSize();
            while (f.view->zoom() > zoom) {
                f.view->zoomOut();
            }
            return f.view->viewport()->grab().toImage();
        };
        QVERIFY(picture("abba", "baab", 1) != picture("baab", "baab", 1));
        QVERIFY(picture("abba", "abba", 1) != picture("abba", "baab", 1));
        QCOMPARE(picture("abba", "baab", 0.25), picture("baab", "abba", 0.25));
        QVERIFY(picture("abba", "abba", 0.25) != picture("abbaabba", "abba", 0.25)); // as long as the text
    }

    void aReleaseElsewhereChoosesNothing()
    {
        const fixture f(Five);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        QWidget * const port = f.view->viewport();
        QTest::mousePress(port, Qt::LeftButton, {}, f.view->boxRect(1).center());
        QTest::mouseRelease(port, Qt::LeftButton, {}, f.view->boxRect(2).center());
        QTest::mousePress(port, Qt::LeftButton, {}, f.view->boxRect(1).center());
        QTest::mouseRelease(port, Qt::LeftButton, {}, f.emptyPlace());
        QTest::mousePress(port, Qt::LeftButton, {}, f.emptyPlace());
        QTest::mouseRelease(port, Qt::LeftButton, {}, f.view->boxRect(2).center());
        QCOMPARE(spy.count(), 0);
    }

    void choosingFromOutsideSaysNothing()
    {
        const fixture f(Five);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        f.view->choose(4);
        f.view->choose(99);
        f.view->choose(0);
        QCOMPARE(spy.count(), 0);
    }

    void marksTheBoxAndItsLines()
    {
        const fixture f(Five);
        const QColor highlight = f.view->diagramStyle().highlight;
        QVERIFY(!isLike(f.borderOf(2), highlight));
        f.view->choose(2);
        QVERIFY(isLike(f.borderOf(2), highlight));
        QVERIFY(!isLike(f.borderOf(1), highlight));
        QVERIFY(isLike(f.lineBetween(1, 2), highlight));
        QVERIFY(isLike(f.lineBetween(2, 3), highlight));
        QVERIFY(!isLike(f.lineBetween(4, 5), highlight));
        f.clickBox(4);
        QVERIFY(isLike(f.borderOf(4), highlight));
        QVERIFY(isLike(f.lineBetween(4, 5), highlight));
        QVERIFY(!isLike(f.borderOf(2), highlight));
        QVERIFY(!isLike(f.lineBetween(1, 2), highlight));
        f.view->choose(0);
        QVERIFY(!isLike(f.borderOf(4), highlight));
    }

    void chosenLinesLieAboveOthers()
    {
        // 1 - 2 - 3 - 4: the first and the last line cross.
        const fixture f({{0, 0}, {400, 300}, {400, 0}, {0, 300}});
        const auto crossing = [&f] {
            return f.view->viewport()->grab().toImage().pixelColor(
                (f.view->boxRect(1).center() + f.view->boxRect(2).center()) / 2);
        };
        const QColor highlight = f.view->diagramStyle().highlight;
        f.view->choose(1);
        QVERIFY(isLike(crossing(), highlight));
        f.view->choose(4);
        QVERIFY(isLike(crossing(), highlight));
        f.view->choose(0);
        QVERIFY(!isLike(crossing(), highlight));
    }

    void labelsOfChosenLinesStandOut()
    {
        const fixture f({{0, 0}});
        diagram_picture picture = pictureOf(Five);
        picture.contents.lines[0].label = "buyer";
        picture.places.routes[0].label = QPointF(150, 120);
        f.view->setPicture(picture);
        const auto label = [&f] {
            QRect place(0, 0, 60, 20);
            place.moveCenter(f.view->mapFromScene(150, 120));
            return f.view->viewport()->grab(place).toImage();
        };
        const QImage former = label();
        f.view->choose(5);
        QCOMPARE(label(), former);
        f.view->choose(2);
        QVERIFY(label() != former);
    }

    void aNewPictureShowsWhatIsChosen()
    {
        const fixture f(Five);
        f.view->showActualSize();
        f.view->choose(4);
        f.view->setPicture(pictureOf(Far));
        QCOMPARE(f.view->zoom(), 1.0);
        QVERIFY(f.view->viewport()->rect().contains(f.view->boxRect(4)));
    }

    void bringsIntoSightWhatIsChosen()
    {
        const fixture f(Far);
        f.view->showActualSize();
        f.view->choose(1);
        QVERIFY(f.view->viewport()->rect().contains(f.view->boxRect(1)));
        QVERIFY(!f.view->viewport()->rect().intersects(f.view->boxRect(4)));
        f.view->choose(4);
        QVERIFY(f.view->viewport()->rect().contains(f.view->boxRect(4)));
    }

    void dragsTheDiagram()
    {
        const fixture f(Far);
        f.view->showActualSize();
        f.view->centerOn(1050, 830);
        f.view->choose(4);
        f.view->centerOn(1050, 830);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
            const int x = f.view->horizontalScrollBar()->value();
            const int y = f.view->verticalScrollBar()->value();
            QTest::mousePress(f.view->viewport(), button, {}, {200, 200});
            QTest::mouseMove(f.view->viewport(), {150, 230});
            QTest::mouseMove(f.view->viewport(), {100, 260});
            QTest::mouseRelease(f.view->viewport(), button, {}, {100, 260});
            QCOMPARE(f.view->horizontalScrollBar()->value(), x + 100);
            QCOMPARE(f.view->verticalScrollBar()->value(), y - 60);
            QTest::mouseMove(f.view->viewport(), {300, 300}); // without a button
            QCOMPARE(f.view->horizontalScrollBar()->value(), x + 100);
        }
        QCOMPARE(spy.count(), 0); // what was chosen stays so
    }

    void theMiddleButtonDragsFromABoxAsWell()
    {
        const fixture f(Far);
        f.view->showActualSize();
        f.view->centerOn(600, 500);
        const QPoint start = f.view->boxRect(1).center();
        const int x = f.view->horizontalScrollBar()->value();
        QTest::mousePress(f.view->viewport(), Qt::LeftButton, {}, start);
        QTest::mouseMove(f.view->viewport(), start - QPoint(150, 0));
        QTest::mouseRelease(f.view->viewport(), Qt::LeftButton, {}, start - QPoint(150, 0));
        QCOMPARE(f.view->horizontalScrollBar()->value(), x);
        QTest::mousePress(f.view->viewport(), Qt::MiddleButton, {}, start);
        QTest::mouseMove(f.view->viewport(), start - QPoint(150, 0));
        QTest::mouseRelease(f.view->viewport(), Qt::MiddleButton, {}, start - QPoint(150, 0));
        QCOMPARE(f.view->horizontalScrollBar()->value(), x + 150);
    }

    void theWheelZoomsWithControl()
    {
        const fixture f(Far);
        f.view->showActualSize();
        f.view->centerOn(1050, 830);
        const QPoint place(300, 100);
        const QPointF under = f.view->mapToScene(place);
        QSignalSpy spy(f.view, &diagram_view::zoomChanged);
        f.wheel(place, 120, Qt::ControlModifier);
        QCOMPARE(f.view->zoom(), 1.25);
        QVERIFY(spy.count() >= 1);
        QVERIFY(QLineF(f.view->mapToScene(place), under).length() < 2);
        f.wheel(place, -120, Qt::ControlModifier);
        QCOMPARE(f.view->zoom(), 1.0);
        const int y = f.view->verticalScrollBar()->value();
        f.wheel(place, -120, {});
        QCOMPARE(f.view->zoom(), 1.0);
        QVERIFY(f.view->verticalScrollBar()->value() > y);
    }

    void theZoomHasLimits()
    {
        const fixture f(Five);
        for (int i = 0; i < 40; ++i) {
            f.view->zoomIn();
        }
        QCOMPARE(f.view->zoom(), 4.0);
        for (int i = 0; i < 40; ++i) {
            f.view->zoomOut();
        }
        QCOMPARE(f.view->zoom(), 0.1);
        f.view->showActualSize();
        QCOMPARE(f.view->zoom(), 1.0);
        f.view->zoomIn();
        QCOMPARE(f.view->zoom(), 1.25);
        f.view->zoomOut();
        f.view->zoomOut();
        QCOMPARE(f.view->zoom(), 0.8);
    }

    void fitsWhatIsLarge()
    {
        const fixture f(Far);
        QVERIFY(f.view->zoom() < 0.5);
        const QRect all = f.view->viewport()->rect();
        for (long id = 1; id <= 4; ++id) {
            QVERIFY(all.contains(f.view->boxRect(id)));
        }
        QVERIFY(!f.view->horizontalScrollBar()->isVisible());
        QVERIFY(!f.view->verticalScrollBar()->isVisible());
        // As large as it can be.
        QRect boxes = f.view->boxRect(1) | f.view->boxRect(4);
        QVERIFY(boxes.height() > all.height() * 0.9 || boxes.width() > all.width() * 0.9);
    }

    void doesNotMagnifyWhatIsSmall()
    {
        const fixture f({{0, 0}});
        QCOMPARE(f.view->zoom(), 1.0);
        QVERIFY((f.view->boxRect(1).center() - f.view->viewport()->rect().center()).manhattanLength() < 4);
    }

    void fitsAnewUntilAnotherZoomIsChosen()
    {
        fixture f(Far);
        const qreal before = f.view->zoom();
        f.window.resize(600, 400);
        QTRY_VERIFY(f.view->zoom() < before);
        f.view->zoomIn();
        const qreal chosen = f.view->zoom();
        f.window.resize(900, 600);
        QTRY_VERIFY(f.view->width() > 500);
        QCOMPARE(f.view->zoom(), chosen);
        f.view->setPicture(pictureOf(Five));
        QCOMPARE(f.view->zoom(), chosen);
        f.view->fit();
        QCOMPARE(f.view->zoom(), 1.0);
        f.view->setPicture(pictureOf(Far));
        QVERIFY(f.view->zoom() < 0.5);
    }

    void tabMovesFromBoxToBoxAndOut()
    {
        const fixture f(Five);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        QTest::keyClick(f.before, Qt::Key_Tab);
        QVERIFY(f.view->hasFocus());
        QList<long> seen;
        for (int i = 0; i < 5; ++i) {
            seen << f.view->cursor();
            f.key(Qt::Key_Tab);
        }
        QCOMPARE(seen, QList<long>({1, 4, 2, 3, 5})); // column by column
        QVERIFY(f.after->hasFocus());
        QTest::keyClick(f.after, Qt::Key_Backtab);
        QVERIFY(f.view->hasFocus());
        QCOMPARE(f.view->cursor(), 5L); // where it was
        f.key(Qt::Key_Backtab);
        QCOMPARE(f.view->cursor(), 3L);
        QCOMPARE(spy.count(), 0); // nothing was chosen by that
    }

    void backtabEntersAtTheEnd()
    {
        const fixture f(Five);
        f.after->setFocus();
        QTest::keyClick(f.after, Qt::Key_Backtab);
        QVERIFY(f.view->hasFocus());
        QCOMPARE(f.view->cursor(), 5L);
        for (int i = 0; i < 5; ++i) {
            f.key(Qt::Key_Backtab);
        }
        QVERIFY(f.before->hasFocus());
    }

    void tabPassesADiagramWithoutBoxes()
    {
        const fixture f({});
        QTest::keyClick(f.before, Qt::Key_Tab);
        QVERIFY(f.view->hasFocus());
        f.key(Qt::Key_Tab);
        QVERIFY(f.after->hasFocus());
    }

    void arrowsMoveToTheNextBox()
    {
        const fixture f(Five);
        QSignalSpy spy(f.view, &diagram_view::chosen);
        f.view->choose(1);
        f.view->setFocus();
        const QList<std::pair<Qt::Key, long>> steps{
            {Qt::Key_Right, 2}, {Qt::Key_Right, 3}, {Qt::Key_Right, 3}, {Qt::Key_Down, 5},
            {Qt::Key_Left, 4},  {Qt::Key_Up, 1},    {Qt::Key_Up, 1},    {Qt::Key_Left, 1},
            {Qt::Key_Down, 4},  {Qt::Key_Right, 5}};
        for (const auto & [key, id] : steps) {
            f.key(key);
            QCOMPARE(f.view->cursor(), id);
        }
        QCOMPARE(spy.count(), 0);
        f.key(Qt::Key_Return);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].toLongLong(), 5);
        f.key(Qt::Key_Left);
        f.key(Qt::Key_Space);
        QCOMPARE(spy[1][0].toLongLong(), 4);
        f.key(Qt::Key_Up);
        f.key(Qt::Key_Enter);
        QCOMPARE(spy[2][0].toLongLong(), 1);
        QCOMPARE(spy.count(), 3);
    }

    void arrowsBringTheirBoxIntoSight()
    {
        const fixture f(Far);
        f.view->choose(1);
        f.view->showActualSize();
        f.view->setFocus();
        f.view->choose(1);
        f.key(Qt::Key_Right);
        QCOMPARE(f.view->cursor(), 2L);
        QVERIFY(f.view->viewport()->rect().contains(f.view->boxRect(2)));
    }

    void arrowsScrollWhenNoBoxIsChosen()
    {
        const fixture f(Far);
        f.view->showActualSize();
        f.view->centerOn(1050, 830);
        f.view->setFocus();
        const int x = f.view->horizontalScrollBar()->value();
        f.key(Qt::Key_Right);
        QVERIFY(f.view->horizontalScrollBar()->value() > x);
        QCOMPARE(f.view->cursor(), 0L);
        f.key(Qt::Key_Return);
        f.key(Qt::Key_Space);
        QCOMPARE(f.view->cursor(), 0L);
    }

    void findsTheNearestBoxThatWay()
    {
        const QList<QRectF> boxes{
            QRectF(0, 0, 100, 60),     // 0
            QRectF(300, 0, 100, 60),   // 1: straight on, but farther
            QRectF(150, 140, 100, 60), // 2: nearer, but aside
            QRectF(0, 500, 100, 60),   // 3: straight below
            QRectF(20, 160, 100, 60),  // 4: below and nearer
            QRectF(300, 400, 100, 60), // 5: far below, rather to the right
        };
        QCOMPARE(app::boxTowards(boxes, 0, Qt::Key_Right), 1);
        QCOMPARE(app::boxTowards(boxes, 0, Qt::Key_Down), 4);
        QCOMPARE(app::boxTowards(boxes, 0, Qt::Key_Left), -1);
        QCOMPARE(app::boxTowards(boxes, 0, Qt::Key_Up), -1);
        QCOMPARE(app::boxTowards(boxes, 4, Qt::Key_Up), 0);
        QCOMPARE(app::boxTowards(boxes, 4, Qt::Key_Right), 2);
        QCOMPARE(app::boxTowards(boxes, 3, Qt::Key_Up), 4);
        QCOMPARE(app::boxTowards(boxes, 1, Qt::Key_Down), 2); // aside, but much nearer than 5
        QCOMPARE(app::boxTowards(boxes, 5, Qt::Key_Left), 3);
    }

    void escapeChoosesNothing()
    {
        const fixture f(Five);
        f.view->setFocus();
        QSignalSpy spy(f.view, &diagram_view::chosen);
        f.view->choose(3);
        f.key(Qt::Key_Escape);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].toLongLong(), 0);
        QCOMPARE(f.view->cursor(), 0L);
        f.key(Qt::Key_Escape);
        QCOMPARE(spy.count(), 1);
    }

    void homeShowsTheWhole()
    {
        const fixture f(Far);
        const qreal whole = f.view->zoom();
        f.view->showActualSize();
        f.view->setFocus();
        f.key(Qt::Key_Home);
        QCOMPARE(f.view->zoom(), whole);
    }

    void showsWhereTheKeyboardIs()
    {
        const fixture f(Five);
        f.view->choose(1);
        const QImage without = f.view->viewport()->grab().toImage();
        f.view->setFocus();
        const QImage with = f.view->viewport()->grab().toImage();
        const QRect ring = f.view->boxRect(1).adjusted(-8, -8, 8, 8);
        QVERIFY(with.copy(ring) != without.copy(ring));
        QCOMPARE(with.copy(f.view->boxRect(2)), without.copy(f.view->boxRect(2)));
        QVERIFY(isLike(with.pixelColor(0, 50), f.view->palette().color(QPalette::Highlight)));
        QVERIFY(!isLike(without.pixelColor(0, 50), f.view->palette().color(QPalette::Highlight)));
        f.before->setFocus();
        QCOMPARE(f.view->viewport()->grab().toImage(), without);
    }

    void tellsWhoDoesNotSeeIt()
    {
        const fixture f(Five);
        QCOMPARE(f.view->accessibleDescription(), "No entity is selected.");
        f.view->choose(2);
        QCOMPARE(f.view->accessibleDescription(), "Selected: e2 told");
        f.view->setFocus();
        f.key(Qt::Key_Right);
        QCOMPARE(f.view->accessibleDescription(), "e3 told");
        f.key(Qt::Key_Return);
        QCOMPARE(f.view->accessibleDescription(), "Selected: e3 told");
        f.view->setPicture({});
        f.view->setHint("Nothing here");
        QCOMPARE(f.view->accessibleDescription(), "Nothing here");
    }

    void keepsWhatIsChosenInANewPicture()
    {
        const fixture f(Five);
        f.view->choose(4);
        f.view->setPicture(pictureOf({{0, 0}, {0, 100}, {0, 200}, {200, 100}}));
        QVERIFY(isLike(f.borderOf(4), f.view->diagramStyle().highlight));
        QCOMPARE(f.view->cursor(), 4L);
        f.view->setPicture(pictureOf({{0, 0}}));
        QCOMPARE(f.view->cursor(), 0L);
        // Chosen before there was a box for it.
        f.view->choose(5);
        f.view->setPicture(pictureOf(Five));
        QCOMPARE(f.view->cursor(), 5L);
        QVERIFY(isLike(f.borderOf(5), f.view->diagramStyle().highlight));
    }

    void showsAHint()
    {
        const fixture f({});
        const auto inkOf = [&f] {
            const QImage image = f.view->viewport()->grab().toImage();
            int pixels = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    pixels += image.pixel(x, y) != image.pixel(5, 5);
                }
            }
            return pixels;
        };
        QCOMPARE(inkOf(), 0);
        f.view->setHint("Select an entity");
        QVERIFY(inkOf() > 100);
        f.view->setHint("");
        QCOMPARE(inkOf(), 0);
    }

    void followsThePalette()
    {
        const fixture f(Five);
        const auto ground = [&f] { return f.view->viewport()->grab().toImage().pixelColor(3, 3); };
        QPalette palette = f.view->palette();
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::Text, Qt::black);
        f.view->setPalette(palette);
        QVERIFY(ground().lightness() > 230);
        palette.setColor(QPalette::Base, QColor(30, 30, 30));
        palette.setColor(QPalette::Text, Qt::white);
        f.view->setPalette(palette);
        QVERIFY(ground().lightness() < 40);
        const QPoint body = f.view->boxRect(1).center();
        QVERIFY(f.view->viewport()->grab().toImage().pixelColor(body + QPoint(40, 20)).lightness() < 100);
    }

    void boxesAndLinesHaveTips()
    {
        const fixture f(Five);
        const auto tipAt = [&f](const QPointF & place) {
            for (const QGraphicsItem * const item : f.view->scene()->items(place)) {
                if (!item->toolTip().isEmpty()) {
                    return item->toolTip();
                }
            }
            return QString();
        };
        QCOMPARE(tipAt({50, 30}), "e1 tip");
        QCOMPARE(tipAt({150, 32}), "line");
        QCOMPARE(tipAt({150, 50}), "");
    }
};

QTEST_MAIN(tst_diagram_view)
#include "tst_diagram_view.moc"
