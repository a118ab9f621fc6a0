// The texts of a diagram, and how boxes and marks are drawn.

#include "app/diagram/diagram_contents.h"
#include "app/window/diagram/diagram_items.h"
#include "app/window/diagram/diagram_marks.h"
#include "app/window/diagram/diagram_scene.h"
#include "app/window/diagram/diagram_style.h"

#include "support/model_builder.h"

#include <QImage>
#include <QPainter>
#include <QTest>

using app::diagram_box;
using app::diagram_change;
using app::diagram_contents;
using app::diagram_end;
using app::diagram_graph;
using app::diagram_mark;
using app::diagram_style;
using model::relationship;
using support::model_builder;

namespace {

diagram_contents contentsOf(const model_builder & model)
{
    const diagram_graph graph(model.project());
    return app::contentsOf(graph, graph.everything());
}

QStringList rowsOf(const diagram_box & box)
{
    QStringList rows;
    for (const app::diagram_row & row : box.rows) {
        rows << row.text;
    }
    return rows;
}

/// An image of the mark where a line arrives from the right at the right side of a box, 40 pixels wide.
QImage markOf(diagram_end end, const QPainterPath & path, const QRectF & box)
{
    QImage image(80, 80, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::black, 2));
    app::drawMark(painter, path, box, end, Qt::yellow);
    return image;
}

bool isInk(const QImage & image, int x, int y)
{
    return qGray(image.pixel(x, y)) < 100;
}

/// The columns of `image` with ink in row `y`.
QList<int> inkInRow(const QImage & image, int y)
{
    QList<int> columns;
    for (int x = 0; x < image.width(); ++x) {
        if (isInk(image, x, y)) {
            columns << x;
        }
    }
    return columns;
}

bool isLight(const QPalette & palette)
{
    return palette.color(QPalette::Base) == QColor(Qt::white);
}

qreal contrast(const QColor & a, const QColor & b)
{
    const auto luminance = [](const QColor & color) {
        const auto part = [](float value) {
            return value <= 0.03928F ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    };
    const qreal x = luminance(a);
    const qreal y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

} // namespace

class tst_diagram_contents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsAllPropertiesOfFew()
    {
        model_builder model;
        auto e = model.entity(1, "customer");
        e.identifier(1, "id", "long");
        for (int i = 2; i <= 8; ++i) {
            e.property(i, QStringLiteral("p%1").arg(i), "int");
        }
        const diagram_contents contents = contentsOf(model);
        QCOMPARE(contents.boxes.size(), 1);
        QCOMPARE(contents.boxes[0].id, 1L);
        QCOMPARE(contents.boxes[0].name, "customer");
        QCOMPARE(rowsOf(contents.boxes[0]), QStringList({"id", "p2", "p3", "p4", "p5", "p6", "p7", "p8"}));
        QCOMPARE(contents.boxes[0].rows[0].mark, diagram_mark::key);
        QCOMPARE(contents.boxes[0].rows[7].isRest, false);
    }

    void prefersKeysAndRelationshipsOfMany()
    {
        model_builder model;
        auto e = model.entity(1, "customer");
        for (int i = 1; i <= 9; ++i) {
            e.property(i, QStringLiteral("p%1").arg(i), "int");
        }
        e.identifier(10, "id", "long");
        e.relation(11, "self", 11, relationship::many_to_one, 1);
        const diagram_box box = contentsOf(model).boxes[0];
        QCOMPARE(rowsOf(box), QStringList({"p1", "p2", "p3", "p4", "p5", "id", "self", "… 4 more"}));
        QCOMPARE(box.rows[7].isRest, true);
        QCOMPARE(box.rows[5].mark, diagram_mark::key);
        QCOMPARE(box.rows[6].mark, diagram_mark::reference);
    }

    void showsTheFirstOfManyRelationships()
    {
        model_builder model;
        auto e = model.entity(1, "hub");
        e.property(1, "plain", "int");
        for (int i = 2; i <= 1301; ++i) {
            e.relation(i, QStringLiteral("r%1").arg(i), i, relationship::many_to_one, 1);
        }
        QCOMPARE(rowsOf(contentsOf(model).boxes[0]),
                 QStringList({"r2", "r3", "r4", "r5", "r6", "r7", "r8", "… 1,294 more"}));
    }

    void marksWhatIsSpecial()
    {
        model_builder model;
        auto e = model.entity(1, "a");
        e.property(1, "cache", "int").transient();
        e.relation(2, "lost", 2, relationship::many_to_one, 99);
        const diagram_box box = contentsOf(model).boxes[0];
        QCOMPARE(rowsOf(box), QStringList({"cache", "lost → ?"}));
        QCOMPARE(box.rows[0].isTransient, true);
        QCOMPARE(box.rows[0].isTargetMissing, false);
        QCOMPARE(box.rows[1].isTransient, false);
        QCOMPARE(box.rows[1].isTargetMissing, true);
        QCOMPARE(contentsOf(model).lines.size(), 0);
    }

    void tipsTellTheFacts()
    {
        model_builder model;
        auto e = model.entity(15, "visitor <b>").table("t_visitor").version(3);
        e.identifier(1, "id", "long");
        e.relation(2, "lost", 2, relationship::many_to_one, 99);
        model.entity(16, "plain");
        const diagram_contents contents = contentsOf(model);
        QCOMPARE(contents.boxes[0].tip,
                 "<p style='white-space:pre'><b>visitor &lt;b&gt;</b><br>Table: t_visitor<br>"
                 "Id: 15, version: 3<br>Properties: 2<br>The target of lost is missing</p>");
        QCOMPARE(contents.boxes[1].tip, "<p style='white-space:pre'><b>plain</b><br>Table: plain<br>"
                                        "Id: 16, version: 1<br>Properties: 0</p>");
        QCOMPARE(contents.boxes[1].told, "plain: Table: plain; Id: 16, version: 1; Properties: 0. "
                                         "No relationships are shown.");
    }

    void aTipStaysShort()
    {
        model_builder model;
        auto e = model.entity(1, "a");
        for (int i = 1; i <= 5; ++i) {
            e.relation(i, QStringLiteral("r%1").arg(i), i, relationship::many_to_one, 99);
        }
        QVERIFY(contentsOf(model).boxes[0].tip.endsWith("<br>The target of r5 is missing</p>"));
        e.relation(6, "r6", 6, relationship::many_to_one, 99);
        QVERIFY(contentsOf(model).boxes[0].tip.endsWith("<br>Properties: 6<br>Missing targets: 6</p>"));
    }

    void tellsWhoIsConnected()
    {
        model_builder model;
        model.entity(1, "artist");
        auto e = model.entity(2, "concert");
        e.relation(1, "artist", 1, relationship::many_to_one, 1).notNull();
        e.relation(2, "support", 2, relationship::many_to_one, 1);
        e.relation(3, "before", 3, relationship::many_to_one, 2);
        const diagram_contents contents = contentsOf(model);
        QVERIFY(contents.boxes[0].told.endsWith("Properties: 0. Connected with concert."));
        QCOMPARE(contents.boxes[1].told,
                 "concert: Table: concert; Id: 2, version: 1; Properties: 3. Connected with artist, concert. "
                 "Shown: artist (foreign key, not null); support (foreign key); before (foreign key).");
        QCOMPARE(contents.lines.size(), 3);
        QCOMPARE(contents.lines[0].from, 0);
        QCOMPARE(contents.lines[0].to, 1);
        QCOMPARE(contents.lines[0].fromEnd, diagram_end::exactly_one);
        QCOMPARE(contents.lines[0].toEnd, diagram_end::many);
        QCOMPARE(contents.lines[0].label, "artist");
        QCOMPARE(
            contents.lines[0].tip,
            "<p style='white-space:pre'><b>concert.artist</b><br>artist: exactly one for each concert<br>"
            "concert: any number for each artist</p>");
        QCOMPARE(contents.lines[1].label, "support");
        QVERIFY(contents.lines[1].tip.contains("artist: none or one for each concert"));
    }

    void linesTellTheirInverseAndLinkTable()
    {
        model_builder model;
        auto stage = model.entity(1, "stage");
        auto volunteer = model.entity(2, "volunteer");
        stage.relation(1, "crew", 1, relationship::many_to_many, 2).linkTable("t_link", "a", "b", 2);
        volunteer.relation(2, "stages", 2, relationship::many_to_many, 1).linkTable("t_link", "b", "a", 1);
        stage.relation(3, "list", 3, relationship::one_to_many, 2).relation()->setInverseId(4);
        volunteer.relation(4, "place", 4, relationship::many_to_one, 1);
        const diagram_contents contents = contentsOf(model);
        QCOMPARE(contents.lines.size(), 2);
        QCOMPARE(contents.lines[0].label, "crew");
        QCOMPARE(contents.lines[0].linkTable, "t_link");
        QCOMPARE(
            contents.lines[0].tip,
            "<p style='white-space:pre'><b>stage.crew</b><br>stage: any number for each volunteer<br>"
            "volunteer: any number for each stage<br>Inverse: volunteer.stages<br>Link table: t_link</p>");
        QCOMPARE(contents.lines[1].label, "place");
        QCOMPARE(contents.lines[1].linkTable, "");
        QVERIFY(contents.lines[1].tip.contains("<b>volunteer.place</b>"));
        QVERIFY(contents.lines[1].tip.contains("<br>Inverse: stage.list</p>"));
    }

    void tellsOfHiddenNeighbours()
    {
        model_builder model;
        for (int i = 1; i <= 4; ++i) {
            model.entity(i, QStringLiteral("e%1").arg(i));
        }
        for (int i = 1; i <= 3; ++i) {
            support::entity_builder(model.entity(i))
                .relation(10 + i, "next", 10 + i, relationship::many_to_one, i + 1);
        }
        const diagram_graph graph(model.project());
        const diagram_contents contents = app::contentsOf(graph, graph.neighbourhood(1, 1, 60));
        QCOMPARE(contents.boxes.size(), 3);
        QCOMPARE(contents.boxes[0].name, "e2");
        QCOMPARE(contents.boxes[0].hidden, 0);
        QCOMPARE(contents.boxes[2].name, "e3");
        QCOMPARE(contents.boxes[2].hidden, 1);
        QVERIFY(contents.boxes[2].tip.contains("<br>Neighbours that are not shown: 1</p>"));
        QVERIFY(!contents.boxes[0].tip.contains("not shown"));
        // Lines count the boxes of the piece, not the entities of the graph.
        QCOMPARE(contents.lines.size(), 2);
        QCOMPARE(contents.lines[0].from, 0);
        QCOMPARE(contents.lines[0].to, 1);
        QCOMPARE(contents.lines[1].from, 2);
        QCOMPARE(contents.lines[1].to, 0);
    }

    void replacesWhatCannotBeDrawn()
    {
        QCOMPARE(app::drawable("café Ω 漢字 😀"), "café Ω 漢字 😀");
        QCOMPARE(app::drawable("a\nb\tc\u2028d\u00a0e"), "a b c<U+2028>d e");
        QCOMPARE(app::drawable(QString("x%1y").arg(QChar(0x202e))), "x<U+202E>y");
        QCOMPARE(app::drawable(QString("a%1b\x7f%2").arg(QChar(1)).arg(QChar(0xfffe))), "a\ufffd"
                                                                                        "b\ufffd\ufffd");
        QCOMPARE(app::drawable(QString("x") + QChar(0xd800) + QChar('y')), "x\ufffdy");
        QCOMPARE(app::drawable(QString("x") + QChar(0xdc00)), "x\ufffd");
        QCOMPARE(app::drawable(""), "");
        model_builder model;
        auto e = model.entity(1, "a\nb").table("c\nd");
        e.relation(1, "e\nf", 1, relationship::many_to_many, 1).linkTable("g\nh", "", "", 0);
        const diagram_contents contents = contentsOf(model);
        QCOMPARE(contents.boxes[0].name, "a b");
        QCOMPARE(rowsOf(contents.boxes[0]), QStringList("e f"));
        QVERIFY(contents.boxes[0].tip.contains("Table: c d"));
        QCOMPARE(contents.lines[0].label, "e f");
        QCOMPARE(contents.lines[0].linkTable, "g h");
        QVERIFY(!contents.lines[0].tip.contains('\n'));
    }

    void groupsDigits()
    {
        QCOMPARE(app::grouped(7), "7");
        QCOMPARE(app::grouped(10000), "10,000");
    }

    void boxesFitTheirTexts()
    {
        const diagram_style style = diagram_style::printed(QFont());
        diagram_box box;
        box.name = "a";
        const QSizeF smallest = app::boxSize(box, style);
        QCOMPARE(smallest.width(), 110.0);
        box.name = QString(20, 'm');
        const QSizeF wider = app::boxSize(box, style);
        QVERIFY(wider.width() > QFontMetricsF(style.heading).horizontalAdvance(box.name));
        box.name = QString(2000, 'm');
        QCOMPARE(app::boxSize(box, style).width(), 340.0);
        box.name = "a";
        app::diagram_row row;
        row.text = QString(20, 'm');
        box.rows = {row};
        const QSizeF one = app::boxSize(box, style);
        QVERIFY(one.width() > QFontMetricsF(style.text).horizontalAdvance(box.rows[0].text));
        QVERIFY(one.height() >= smallest.height() + style.rowHeight());
        box.rows[0].mark = diagram_mark::key;
        QVERIFY(app::boxSize(box, style).width() > one.width());
        box.rows += box.rows;
        QCOMPARE(app::boxSize(box, style).height(), one.height() + style.rowHeight());
        QCOMPARE(one, QSizeF(one.toSize())); // whole pixels
    }

    void labelsFitTheirTexts()
    {
        const diagram_style style = diagram_style::printed(QFont());
        app::diagram_line line;
        QCOMPARE(app::labelSize(line, style), QSizeF());
        line.label = "customer";
        const QSizeF one = app::labelSize(line, style);
        QVERIFY(one.width() > QFontMetricsF(style.small).horizontalAdvance("customer"));
        QVERIFY(one.height() > 0);
        line.linkTable = "t_customer_and_more";
        const QSizeF two = app::labelSize(line, style);
        QVERIFY(two.height() > one.height());
        QVERIFY(two.width() > QFontMetricsF(style.small).horizontalAdvance(line.linkTable));
        line.label = QString(500, 'x');
        QVERIFY(app::labelSize(line, style).width() < 200);
    }

    void marksTellTheEndsApart()
    {
        // The line goes from the right side of the box, x = 20, at y = 40 to the right.
        const QRectF box(0, 20, 20, 40);
        QPainterPath path(QPointF(20, 40));
        path.lineTo(79, 40);
        const QImage many = markOf(diagram_end::many, path, box);
        QVERIFY(isInk(many, 20, 35) && isInk(many, 20, 44)); // the toes, on the border
        QVERIFY(!isInk(many, 26, 34));
        QCOMPARE(many.pixelColor(33, 40), QColor(Qt::yellow)); // the circle hides the line
        const QImage one = markOf(diagram_end::exactly_one, path, box);
        QCOMPARE(inkInRow(one, 36), QList<int>({24, 25, 29, 30}));
        QVERIFY(!isInk(one, 20, 35));
        const QImage none = markOf(diagram_end::zero_or_one, path, box);
        QCOMPARE(inkInRow(none, 36).mid(0, 2), QList<int>({24, 25}));
        QCOMPARE(none.pixelColor(33, 40), QColor(Qt::yellow));
        QVERIFY(!isInk(none, 20, 35));
    }

    void eachEndHasItsMark()
    {
        app::diagram_picture picture;
        picture.contents.boxes.resize(2);
        picture.places.boxes = {QRectF(0, 0, 110, 60), QRectF(210, 0, 110, 60)};
        picture.contents.lines = {{0, 1, diagram_end::exactly_one, diagram_end::many, {}, {}, {}}};
        QPainterPath path(QPointF(110, 40));
        path.lineTo(210, 40);
        picture.places.routes = {{path, {}}};
        app::diagram_scene scene(picture, diagram_style::printed(QFont()));
        QImage image(320, 60, QImage::Format_RGB32);
        QPainter painter(&image);
        scene.render(&painter, image.rect(), QRectF(0, 0, 320, 60));
        painter.end();
        const auto isDark = [&image](int x, int y) { return qGray(image.pixel(x, y)) < 180; };
        QVERIFY(isDark(115, 37) && isDark(120, 37)); // two bars, and no toes
        QVERIFY(!isDark(112, 37));
        QVERIFY(isDark(206, 36) && isDark(206, 43)); // toes, and no bars
        QVERIFY(!isDark(200, 36));
    }

    void grazingLinesSpreadTheirToes()
    {
        const QRectF box(0, 20, 60, 40);
        QPainterPath path(QPointF(30, 20));
        path.lineTo(70, 12);
        const QImage image = markOf(diagram_end::many, path, box);
        QVERIFY(isInk(image, 19, 20) && isInk(image, 41, 20));
        QVERIFY(!isInk(image, 14, 20) && !isInk(image, 46, 20));
    }

    void toesStandOnTheBoxHoweverTheLineArrives()
    {
        const QRectF box(0, 20, 20, 40);
        // Near the upper right corner, steeply from above: the foot keeps off the corner.
        QPainterPath path(QPointF(20, 22));
        path.lineTo(50, 0);
        const QImage image = markOf(diagram_end::many, path, box);
        int lowest = -1;
        for (int y = 0; y < 80; ++y) {
            if (isInk(image, 20, y)) {
                lowest = y;
            }
        }
        QVERIFY(lowest >= 24 && lowest <= 28);
        // From above onto the upper side: the toes lie beside each other.
        QPainterPath down(QPointF(10, 20));
        down.lineTo(10, 0);
        const QImage above = markOf(diagram_end::many, down, box);
        QVERIFY(isInk(above, 5, 19) && isInk(above, 14, 19));
    }

    void coloursFollowThePalette()
    {
        QPalette light;
        light.setColor(QPalette::Base, Qt::white);
        light.setColor(QPalette::Text, Qt::black);
        QPalette dark;
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        dark.setColor(QPalette::Text, QColor(230, 230, 230));
        for (const QPalette & palette : {light, dark}) {
            const diagram_style style = diagram_style::of(QFont(), palette);
            QVERIFY(contrast(style.ink, style.body) > 7);
            QVERIFY(contrast(style.ink, style.header) > 7);
            QVERIFY(contrast(style.ink, style.chosenHeader) > 4.5);
            for (const QColor & color :
                 {style.key, style.reference, style.collection, style.warning, style.quietInk, style.trait,
                  style.added, style.dropped, style.changed, style.renamed}) {
                QVERIFY2(contrast(color, style.body) > 4.5, qPrintable(color.name()));
                QVERIFY2(contrast(color, style.canvas) > 4.5, qPrintable(color.name()));
                // The legend stands on the ground of windows.
                const QColor window = isLight(palette) ? QColor(0xef, 0xef, 0xef) : QColor(0x33, 0x33, 0x36);
                QVERIFY2(color == style.quietInk || contrast(color, window) > 4.5, qPrintable(color.name()));
            }
            for (const diagram_change change : {diagram_change::added, diagram_change::dropped,
                                                diagram_change::changed, diagram_change::renamed}) {
                QVERIFY(contrast(style.ink, style.headerOf(change)) > 7);
                QVERIFY(style.headerOf(change) != style.header);
            }
            QVERIFY(contrast(style.line, style.canvas) > 3);
            QCOMPARE(style.body.lightness() > 128, isLight(palette));
        }
        // Nor do they change when another window becomes active.
        QPalette inactive = light;
        inactive.setCurrentColorGroup(QPalette::Inactive);
        for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Text, QPalette::Highlight}) {
            inactive.setColor(QPalette::Inactive, role, Qt::magenta);
        }
        const diagram_style active = diagram_style::of(QFont(), light);
        const diagram_style other = diagram_style::of(QFont(), inactive);
        QCOMPARE(other.body, active.body);
        QCOMPARE(other.ink, active.ink);
        QCOMPARE(other.highlight, active.highlight);
        QCOMPARE(diagram_style::printed(QFont()).canvas, QColor(Qt::white));
        QCOMPARE(diagram_style::printed(QFont()).body, QColor(Qt::white));
    }
};

QTEST_MAIN(tst_diagram_contents)
#include "tst_diagram_contents.moc"
