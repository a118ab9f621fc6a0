// Where boxes and lines of a diagram stand: by dot, or in a grid where dot cannot be had.

#include "app/diagram/diagram_dot.h"
#include "app/diagram/diagram_grid.h"
#include "app/diagram/diagram_layout.h"

#include "support/project_support.h"
#include "support/shell_program.h"

#include <QElapsedTimer>
#include <QLineF>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

#include <csignal>

using app::diagram_layout;
using app::diagram_places;
using app::diagram_request;
using support::shell_program;

namespace {

const QSizeF Size(110, 80);

diagram_request requestOf(int boxes, const QList<std::pair<int, int>> & lines)
{
    diagram_request request;
    for (int i = 0; i < boxes; ++i) {
        request.boxes.append(Size + QSizeF(10 * (i % 3), 16 * (i % 4)));
    }
    for (const auto & [from, to] : lines) {
        request.lines.append({from, to, QSizeF(50, 14)});
    }
    return request;
}

/// A request with everything that is special: a circle, parallel lines, loops, a box alone.
diagram_request specialRequest()
{
    return requestOf(6, {{0, 1}, {1, 2}, {2, 0}, {0, 1}, {1, 0}, {3, 3}, {3, 3}, {3, 0}, {4, 2}});
}

bool isOnBorder(const QRectF & box, const QPointF & point)
{
    const qreal slack = 2.5; // dot knows nothing of the rounding to pixels
    return box.adjusted(-slack, -slack, slack, slack).contains(point) &&
           !box.adjusted(slack, slack, -slack, -slack).contains(point);
}

/// What is wrong with `places` as an answer to `request`; empty when nothing is.
QString faultOf(const diagram_request & request, const diagram_places & places)
{
    if (places.boxes.size() != request.boxes.size() || places.routes.size() != request.lines.size()) {
        return QStringLiteral("not everything has a place");
    }
    for (int i = 0; i < places.boxes.size(); ++i) {
        if (places.boxes[i].size() != request.boxes[i]) {
            return QStringLiteral("box %1 has another size").arg(i);
        }
        for (int k = 0; k < i; ++k) {
            if (places.boxes[i].intersects(places.boxes[k])) {
                return QStringLiteral("boxes %1 and %2 overlap").arg(k).arg(i);
            }
        }
    }
    for (int i = 0; i < places.routes.size(); ++i) {
        const QPainterPath & path = places.routes[i].path;
        if (!isOnBorder(places.boxes[request.lines[i].from], path.pointAtPercent(0))) {
            return QStringLiteral("line %1 does not begin at its box").arg(i);
        }
        if (!isOnBorder(places.boxes[request.lines[i].to], path.pointAtPercent(1))) {
            return QStringLiteral("line %1 does not end at its box").arg(i);
        }
        if (path.length() < 10) {
            return QStringLiteral("line %1 is too short to see").arg(i);
        }
        for (int k = 0; k < i; ++k) {
            if (path == places.routes[k].path || path == places.routes[k].path.toReversed() ||
                places.routes[i].label == places.routes[k].label) {
                return QStringLiteral("lines %1 and %2 lie on each other").arg(k).arg(i);
            }
        }
    }
    return {};
}

/// The places that a layout tells; without any, when it tells nothing or more than once.
diagram_places resultOf(diagram_layout & layout, const diagram_request & request)
{
    QSignalSpy spy(&layout, &diagram_layout::finished);
    layout.start(request);
    if (!spy.isEmpty() || !spy.wait(20000) || spy.count() != 1) {
        return {};
    }
    return spy[0][0].value<diagram_places>();
}

} // namespace

class tst_diagram_layout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsDotAboutBoxesAndLines()
    {
        diagram_request request;
        request.boxes = {{144, 72}, {100, 50}, {36, 36}};
        request.lines = {{1, 0, QSizeF(40.2, 14)}, {0, 0, QSizeF()}};
        QCOMPARE(
            app::dotText(request),
            "digraph {\n"
            "graph [rankdir=LR, splines=true, nodesep=0.5, ranksep=0.6];\n"
            "node [shape=box, fixedsize=true, label=\"\"];\n"
            "edge [dir=both, arrowsize=1.8];\n"
            "n0 [width=2.0000, height=1.0000];\n"
            "n1 [width=1.3889, height=0.6944];\n"
            "n1 -> n0 [id=e0, label=<<TABLE BORDER=\"0\" CELLBORDER=\"0\" CELLPADDING=\"0\" "
            "CELLSPACING=\"0\" FIXEDSIZE=\"TRUE\" WIDTH=\"41\" HEIGHT=\"14\"><TR><TD></TD></TR></TABLE>>];\n"
            "n0 -> n0 [id=e1];\n"
            "}\n");
    }

    void readsWhatDotAnswers()
    {
        diagram_request request;
        request.boxes = {{20, 10}, {20, 10}, {30, 20}};
        request.lines = {{0, 1, QSizeF(10, 5)}};
        const auto places = app::readDotAnswer(
            request,
            support::json("{'objects': [{'name': 'n1', 'pos': '110,5'}, {'name': 'n0', 'pos': '10,25'}],"
                          " 'edges': [{'id': 'e0', 'lp': '60,30',"
                          " 'pos': 's,20,25 e,100,5 30,25 40,24 80,6 90,5'}]}"));
        QVERIFY(places.has_value());
        QCOMPARE(places->boxes[0], QRectF(0, -30, 20, 10)); // dot counts upwards, from the centre
        QCOMPARE(places->boxes[1], QRectF(100, -10, 20, 10));
        QCOMPARE(places->boxes[2].topLeft(), QPointF(0, 60)); // it was not asked for: below, with a gap
        const QPainterPath & path = places->routes[0].path;
        QCOMPARE(path.elementCount(), 6);
        QCOMPARE(QPointF(path.elementAt(0)), QPointF(20, -25));
        QCOMPARE(QPointF(path.elementAt(1)), QPointF(30, -25));
        QCOMPARE(QPointF(path.elementAt(2)), QPointF(40, -24));
        QCOMPARE(QPointF(path.elementAt(3)), QPointF(80, -6));
        QCOMPARE(QPointF(path.elementAt(4)), QPointF(90, -5));
        QCOMPARE(QPointF(path.elementAt(5)), QPointF(100, -5));
        QCOMPARE(places->routes[0].label, QPointF(60, -30));
        QCOMPARE(places->note, "");
    }

    void refusesOtherAnswers_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("graph 1 2 3\n");
        QTest::newRow("a list") << QByteArray("[]");
        QTest::newRow("empty") << QByteArray("{}");
        QTest::newRow("cut") << support::json("{'objects': [{'name': 'n0', 'pos': '1,2'}, {'name': 'n1'");
        QTest::newRow("one is missing") << support::json("{'objects': [{'name': 'n0', 'pos': '1,2'}]}");
        QTest::newRow("no such box") << support::json("{'objects': [{'name': 'n0', 'pos': '1,2'}, {'name': "
                                                      "'n1', 'pos': '1,90'}, {'name': 'n2', 'pos': '1,2'}]}");
        QTest::newRow("negative box")
            << support::json("{'objects': [{'name': 'n0', 'pos': '1,2'}, {'name': 'n1', 'pos': '1,90'}, "
                             "{'name': 'n-1', 'pos': '1,2'}]}");
        QTest::newRow("no number") << support::json(
            "{'objects': [{'name': 'n0', 'pos': '1,2'}, {'name': 'n1', 'pos': '1,x'}]}");
        QTest::newRow("one number") << support::json(
            "{'objects': [{'name': 'n0', 'pos': '1,2'}, {'name': 'n1', 'pos': '1'}]}");
        QTest::newRow("no end") << support::json(
            "{'objects': [{'name': 'n0', 'pos': '1,2'}, {'name': 'n1', 'pos': '1,inf'}]}");
        QTest::newRow("other type") << support::json("{'objects': [{'name': 'n0', 'pos': '1,2'}, 17]}");
    }
    void refusesOtherAnswers()
    {
        QFETCH(QByteArray, answer);
        QVERIFY(!app::readDotAnswer(requestOf(2, {{0, 1}}), answer));
    }

    void drawsALineItselfThatDotGaveUp_data()
    {
        QTest::addColumn<QByteArray>("edges");
        QTest::newRow("no line") << QByteArray("[]");
        QTest::newRow("no place") << support::json("[{'id': 'e0'}]");
        QTest::newRow("not enough points") << support::json("[{'id': 'e0', 'pos': '1,2 3,4 5,6'}]");
        QTest::newRow("half a curve") << support::json("[{'id': 'e0', 'pos': '1,2 3,4 5,6 7,8 9,9'}]");
        QTest::newRow("no points") << support::json("[{'id': 'e0', 'pos': 'a b c d'}]");
        QTest::newRow("another line") << support::json("[{'id': 'e9', 'pos': '1,2 3,4 5,6 7,8'}]");
    }
    void drawsALineItselfThatDotGaveUp()
    {
        QFETCH(QByteArray, edges);
        diagram_request request = requestOf(2, {{0, 1}});
        request.boxes = {{20, 10}, {20, 10}};
        const auto places = app::readDotAnswer(
            request,
            support::json("{'objects': [{'name': 'n0', 'pos': '10,5'}, {'name': 'n1', 'pos': '210,5'}], "
                          "'edges': ") +
                edges + '}');
        QVERIFY(places.has_value());
        const QPainterPath & path = places->routes[0].path;
        QCOMPARE(path.pointAtPercent(0), QPointF(20, -5));
        QCOMPARE(path.pointAtPercent(1), QPointF(200, -5));
        QCOMPARE(path.length(), 180.0);
    }

    void loopsLeaveTheirBoxStraight()
    {
        diagram_request request;
        request.boxes = {{100, 50}};
        request.lines = {{0, 0, QSizeF()}};
        const auto places = app::readDotAnswer(
            request, support::json("{'objects': [{'name': 'n0', 'pos': '50,25'}], 'edges': [{'id': 'e0', "
                                   "'pos': 's,40,50 e,60,50 34,68 30,90 70,90 66,68'}]}"));
        const QPainterPath & path = places->routes[0].path;
        QCOMPARE(path.pointAtPercent(0), QPointF(39, -50));
        QCOMPARE(QPointF(path.elementAt(1)), QPointF(39, -68));
        QCOMPARE(QPointF(path.elementAt(4)), QPointF(61, -68));
        QCOMPARE(path.pointAtPercent(1), QPointF(61, -50));
        QVERIFY(qAbs(path.boundingRect().top() - -84.5) < 1); // as far as dot's
        // A second one, farther out, has its legs beside those of the first, whichever dot names first.
        request.lines << request.lines[0];
        const auto two = app::readDotAnswer(
            request, support::json("{'objects': [{'name': 'n0', 'pos': '50,25'}], 'edges': [{'id': 'e0', "
                                   "'pos': 's,36,50 e,64,50 30,68 20,120 80,120 70,68'}, {'id': 'e1', "
                                   "'pos': 's,40,50 e,60,50 34,68 30,90 70,90 66,68'}]}"));
        QCOMPARE(two->routes[1].path.pointAtPercent(0), QPointF(39, -50));
        QCOMPARE(two->routes[1].path.pointAtPercent(1), QPointF(61, -50));
        QCOMPARE(two->routes[0].path.pointAtPercent(0), QPointF(25, -50));
        QCOMPARE(two->routes[0].path.pointAtPercent(1), QPointF(75, -50));
    }

    void aGridHasAPlaceForEverything()
    {
        for (const int count : {1, 2, 5, 12, 40, 60}) {
            QList<std::pair<int, int>> lines;
            for (int i = 1; i < count; ++i) {
                lines << std::pair(i, (i * 7) % i);
            }
            const diagram_request request = requestOf(count, lines);
            QCOMPARE(faultOf(request, app::gridLayout(request)), "");
        }
        QCOMPARE(faultOf(specialRequest(), app::gridLayout(specialRequest())), "");
        QCOMPARE(app::gridLayout({}).boxes.size(), 0);
        QCOMPARE(app::gridLayout(specialRequest()).note, "");
    }

    void aGridIsAboutAsWideAsAWindow()
    {
        const diagram_places places = app::gridLayout(requestOf(60, {{0, 1}}));
        QRectF all;
        for (const QRectF & box : places.boxes) {
            all |= box;
        }
        QVERIFY2(all.width() > all.height(), "wider than high");
        QVERIFY2(all.width() < 3 * all.height(), "but no strip");
    }

    void linesOfAGridAreStraight()
    {
        diagram_request request;
        request.boxes = {{100, 50}, {100, 50}};
        request.lines = {{0, 1, QSizeF(20, 10)}};
        const diagram_places places = app::gridLayout(request);
        QCOMPARE(places.boxes[0].topLeft(), QPointF(0, 0));
        QCOMPARE(places.boxes[1].topLeft(), QPointF(210, 36));
        const QPainterPath & path = places.routes[0].path;
        QCOMPARE(path.elementCount(), 2);
        QVERIFY(QLineF(path.pointAtPercent(0), QPointF(100, 33.571)).length() < 0.01);
        QVERIFY(QLineF(path.pointAtPercent(1), QPointF(210, 52.429)).length() < 0.01);
        QCOMPARE(places.routes[0].label, QPointF(155, 43));
    }

    void aLabelKeepsOffBoxesAndLabels()
    {
        const diagram_request request =
            requestOf(9, {{0, 8}, {6, 8}, {0, 2}, {0, 2}, {2, 0}, {2, 6}, {3, 3}, {3, 3}});
        const diagram_places places = app::gridLayout(request);
        QList<QRectF> taken = places.boxes;
        for (int i = 0; i < request.lines.size(); ++i) {
            QRectF label(QPointF(), request.lines[i].label);
            label.moveCenter(places.routes[i].label);
            for (const QRectF & other : std::as_const(taken)) {
                QVERIFY2(!other.intersects(label), qPrintable(QString::number(i)));
            }
            taken << label;
        }
    }

    void aGridHasRoomForItsLabels()
    {
        diagram_request request;
        request.boxes = {{100, 50}, {100, 50}};
        request.lines = {{0, 1, QSizeF(164, 10)}};
        QCOMPARE(app::gridLayout(request).boxes[1].left(), 300.0); // 100 + 164 + twice the marks' 18
        request.lines.clear();
        QCOMPARE(app::gridLayout(request).boxes[1].topLeft(), QPointF(130, 0));
    }

    void boxesAloneStandInRowsBelow()
    {
        diagram_request request = requestOf(2, {{0, 1}});
        request.boxes = {{100, 50}, {100, 50}};
        for (int i = 0; i < 12; ++i) {
            request.boxes << QSizeF(100, 40);
        }
        diagram_places places;
        places.boxes.resize(14);
        places.boxes[0] = QRectF(0, 0, 100, 50);
        places.boxes[1] = QRectF(800, 0, 100, 50);
        places.routes.resize(1);
        app::drawMissingLines(request, places);
        app::placeLoners(request, places);
        QCOMPARE(faultOf(request, places), "");
        for (int i = 2; i < 14; ++i) {
            QVERIFY(places.boxes[i].top() >= 110 && places.boxes[i].right() <= 900);
        }
        QCOMPARE(places.boxes[2].topLeft(), QPointF(0, 110));
        QCOMPARE(places.boxes[3].topLeft(), QPointF(130, 110));
        QCOMPARE(places.boxes[9].topLeft(), QPointF(0, 180)); // as many in a row as the rest is wide
    }

    void dotHasAPlaceForEverything()
    {
        if (QStandardPaths::findExecutable("dot").isEmpty()) {
            QSKIP("dot is not installed");
        }
        diagram_layout layout;
        const diagram_places places = resultOf(layout, specialRequest());
        QCOMPARE(places.note, "");
        QCOMPARE(faultOf(specialRequest(), places), "");
        QCOMPARE(layout.isRunning(), false);
        QVERIFY(places.boxes[5].top() > places.boxes[0].bottom()); // the one alone
        // Labels have a place of their own.
        for (int i = 0; i < places.routes.size(); ++i) {
            QRectF label(QPointF(), QSizeF(50, 14));
            label.moveCenter(places.routes[i].label);
            for (const QRectF & box : places.boxes) {
                QVERIFY2(!box.intersects(label), qPrintable(QString::number(i)));
            }
        }
    }

    void dotTakesTheLargestPiece()
    {
        if (QStandardPaths::findExecutable("dot").isEmpty()) {
            QSKIP("dot is not installed");
        }
        QList<std::pair<int, int>> lines;
        for (int i = 1; i < 60; ++i) {
            lines << std::pair(0, i) << std::pair(i, i / 2);
        }
        diagram_layout layout;
        const diagram_places places = resultOf(layout, requestOf(60, lines));
        QCOMPARE(places.note, "");
        QCOMPARE(faultOf(requestOf(60, lines), places), "");
    }

    void fallsBackOnAGrid_data()
    {
        QTest::addColumn<QByteArray>("program");
        QTest::addColumn<QString>("note");
        QTest::newRow("garbage")
            << QByteArray("cat >/dev/null; echo no graph")
            << "Graphviz (dot) returned a layout that could not be read. The entities are arranged in a grid";
        QTest::newRow("other JSON")
            << QByteArray("cat >/dev/null; echo '{\"objects\": []}'")
            << "Graphviz (dot) returned a layout that could not be read. The entities are arranged in a grid";
        QTest::newRow("nothing")
            << QByteArray("exit 0")
            << "Graphviz (dot) returned a layout that could not be read. The entities are arranged in a grid";
        QTest::newRow("status") << QByteArray("exit 1")
                                << "Graphviz (dot) failed with status 1. The entities are arranged in a grid";
        QTest::newRow("status and reason")
            << QByteArray("echo; echo 'Error: no layout' >&2; echo 'more' >&2; exit 3")
            << "Graphviz (dot) failed with status 3 (Error: no layout). The entities are arranged in a grid";
        QTest::newRow("crash") << QByteArray("kill -9 $$")
                               << "Graphviz (dot) crashed. The entities are arranged in a grid";
        QTest::newRow("endless")
            << QByteArray("exec yes")
            << "Graphviz (dot) returned too much output. The entities are arranged in a grid";
    }
    void fallsBackOnAGrid()
    {
        QFETCH(QByteArray, program);
        const shell_program dot(program);
        diagram_layout layout;
        layout.setProgram(dot.path());
        const diagram_places places = resultOf(layout, specialRequest());
        QTEST(places.note, "note");
        QCOMPARE(faultOf(specialRequest(), places), "");
        QCOMPARE(layout.isRunning(), false);
        QTRY_VERIFY(layout.findChildren<QProcess *>().isEmpty());
    }

    void fallsBackOnAGridWithoutDot()
    {
        diagram_layout layout;
        layout.setProgram("/nonexistent/dot");
        const diagram_places places = resultOf(layout, specialRequest());
        QCOMPARE(places.note, "Graphviz (dot) is not installed; install Graphviz for a layout. The entities "
                              "are arranged in a grid");
        QCOMPARE(faultOf(specialRequest(), places), "");
    }

    void fallsBackOnAGridWhenDotDoesNotStart()
    {
        const shell_program dot("");
        QVERIFY(support::writeBytes(dot.path(), "#!/nonexistent/interpreter\n"));
        diagram_layout layout;
        layout.setProgram(dot.path());
        const diagram_places places = resultOf(layout, specialRequest());
        QVERIFY2(places.note.startsWith("Graphviz (dot) could not be started ("), qPrintable(places.note));
        QVERIFY2(places.note.endsWith("). The entities are arranged in a grid"), qPrintable(places.note));
        QCOMPARE(faultOf(specialRequest(), places), "");
    }

    void fallsBackOnAGridWhenDotTakesTooLong()
    {
        const shell_program dot("echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 60");
        diagram_layout layout;
        layout.setProgram(dot.path());
        QSignalSpy spy(&layout, &diagram_layout::finished);
        layout.start(specialRequest());
        // The limit counts from here: on a busy machine the program may not be there within it.
        QTRY_VERIFY(!support::bytesOf(dot.file("pid")).isEmpty());
        layout.setTimeLimit(500);
        QVERIFY(spy.wait(20000));
        QCOMPARE(spy.count(), 1);
        const diagram_places places = spy[0][0].value<diagram_places>();
        QCOMPARE(places.note, "Graphviz (dot) took longer than 0.5 s. The entities are arranged in a grid");
        QCOMPARE(faultOf(specialRequest(), places), "");
        QVERIFY(isEnded(dot));
    }

    void asksDotForJsonOnly()
    {
        const shell_program dot("echo \"$@ $LC_ALL\" > \"$(dirname \"$0\")/arguments\"\n"
                                "cat > \"$(dirname \"$0\")/input\"");
        diagram_layout layout;
        layout.setProgram(dot.path());
        resultOf(layout, specialRequest());
        QCOMPARE(support::bytesOf(dot.file("arguments")), "-Tjson C\n");
        QCOMPARE(support::bytesOf(dot.file("input")), app::dotText(specialRequest()));
    }

    void needsNoDotWithoutLines()
    {
        const shell_program dot("touch \"$(dirname \"$0\")/started\"");
        diagram_layout layout;
        layout.setProgram(dot.path());
        const diagram_request request = requestOf(5, {});
        const diagram_places places = resultOf(layout, request);
        QCOMPARE(faultOf(request, places), "");
        QCOMPARE(places.note, "");
        QVERIFY(!QFile::exists(dot.file("started")));
        QSignalSpy spy(&layout, &diagram_layout::finished);
        layout.start({});
        QVERIFY(spy.wait());
        QCOMPARE(spy[0][0].value<diagram_places>().boxes.size(), 0);
    }

    void aNewRequestTakesThePlaceOfTheFormer()
    {
        const shell_program slow("echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 60");
        diagram_layout layout;
        QSignalSpy spy(&layout, &diagram_layout::finished);
        layout.setProgram(slow.path());
        layout.start(specialRequest());
        QCOMPARE(layout.isRunning(), true);
        QTRY_VERIFY(!support::bytesOf(slow.file("pid")).isEmpty());
        layout.setProgram("/nonexistent/dot");
        layout.start(requestOf(2, {{0, 1}}));
        QVERIFY(spy.wait());
        QVERIFY(isEnded(slow));
        QTest::qWait(50);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].value<diagram_places>().boxes.size(), 2);
        // The same where the former has an answer that was not told yet.
        layout.start(requestOf(3, {{0, 1}}));
        layout.start(requestOf(4, {{0, 1}}));
        QVERIFY(spy.wait());
        QTest::qWait(50);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy[1][0].value<diagram_places>().boxes.size(), 4);
    }

    void aFailedStartOfAFormerRequestIsNotTold()
    {
        const shell_program bad("");
        QVERIFY(support::writeBytes(bad.path(), "#!/nonexistent/interpreter\n"));
        const shell_program slow("echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 60");
        diagram_layout layout;
        QSignalSpy spy(&layout, &diagram_layout::finished);
        layout.setProgram(bad.path());
        layout.start(specialRequest());
        layout.setProgram(slow.path());
        layout.start(specialRequest());
        QTRY_VERIFY(!support::bytesOf(slow.file("pid")).isEmpty());
        QTest::qWait(50);
        QCOMPARE(spy.count(), 0);
        QCOMPARE(layout.isRunning(), true);
        QCOMPARE(layout.findChildren<QProcess *>().size(), 1); // the former left nothing behind
    }

    void whatIsCancelledIsNotTold()
    {
        const shell_program slow("echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 60");
        diagram_layout layout;
        QSignalSpy spy(&layout, &diagram_layout::finished);
        layout.setProgram(slow.path());
        layout.start(specialRequest());
        QTRY_VERIFY(!support::bytesOf(slow.file("pid")).isEmpty());
        layout.setTimeLimit(300);
        layout.cancel();
        QCOMPARE(layout.isRunning(), false);
        QVERIFY(isEnded(slow));
        layout.setProgram("/nonexistent/dot");
        layout.start(specialRequest());
        layout.cancel();
        QTest::qWait(400);
        QCOMPARE(spy.count(), 0);
        // What was cancelled leaves nothing behind, and the next request works.
        QVERIFY(layout.findChildren<QProcess *>().isEmpty());
        QCOMPARE(faultOf(specialRequest(), resultOf(layout, specialRequest())), "");
    }

    void endsDotWhenItGoesAway()
    {
        const shell_program slow("echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 60");
        {
            diagram_layout layout;
            layout.setProgram(slow.path());
            layout.start(specialRequest());
            QTRY_VERIFY(!support::bytesOf(slow.file("pid")).isEmpty());
        }
        QVERIFY(isEnded(slow));
        // Just started, and replaced: nothing was waited for yet.
        QElapsedTimer time;
        time.start();
        for (int i = 0; i < 3; ++i) {
            diagram_layout layout;
            layout.setProgram(slow.path());
            layout.start(specialRequest());
            layout.start(specialRequest());
        }
        QVERIFY2(time.elapsed() < 20000, "it waits for the program to end by itself");
    }

    void aChildOfDotHoldsNothingUp()
    {
        // The shell waits for the program it started, which keeps the pipes open.
        const shell_program slow("sleep 5 & echo $$ > \"$(dirname \"$0\")/pid\"; wait");
        diagram_layout layout;
        layout.setProgram(slow.path());
        QSignalSpy spy(&layout, &diagram_layout::finished);
        layout.start(specialRequest());
        QTRY_VERIFY(!support::bytesOf(slow.file("pid")).isEmpty());
        layout.setTimeLimit(300);
        QVERIFY(spy.wait(20000));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].value<diagram_places>().note,
                 "Graphviz (dot) took longer than 0.3 s. The entities are arranged in a grid");
        QVERIFY(isEnded(slow));
    }

private:
    /// Whether the process that a program left the number of has ended, or does so soon.
    static bool isEnded(const shell_program & program)
    {
        bool ok = false;
        const int process = support::bytesOf(program.file("pid")).trimmed().toInt(&ok);
        return ok && QTest::qWaitFor([process] { return kill(process, 0) != 0; });
    }
};

QTEST_MAIN(tst_diagram_layout)
#include "tst_diagram_layout.moc"
