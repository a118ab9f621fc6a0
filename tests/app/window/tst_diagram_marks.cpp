// The small marks of a diagram: what a column is and holds, what changed, and the boxes that open.

#include "app/diagram/diagram_changes.h"
#include "app/window/diagram/diagram_items.h"
#include "app/window/diagram/diagram_legend.h"
#include "app/window/diagram/diagram_panel.h"
#include "app/window/diagram/diagram_scene.h"
#include "app/window/diagram/diagram_style.h"
#include "app/window/diagram/diagram_view.h"

#include "support/model_builder.h"

#include "model/model_difference.h"

#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

using app::diagram_box;
using app::diagram_change;
using app::diagram_changes;
using app::diagram_contents;
using app::diagram_graph;
using app::diagram_panel;
using app::diagram_row;
using app::diagram_style;
using app::diagram_view;
using model::relationship;
using support::model_builder;

namespace {

diagram_contents contentsOf(const diagram_graph & graph, const QSet<long> & opened = {})
{
    return app::contentsOf(graph, graph.everything(), opened);
}

diagram_changes changesOf(const model_builder & before, const model_builder & after)
{
    return diagram_changes(before.project(), after.project(),
                           model::difference(before.project(), after.project()));
}

/// What changed between two models, marked in the later one.
diagram_contents marked(const model_builder & before, const model_builder & after)
{
    return contentsOf(diagram_graph(after.project(), changesOf(before, after)));
}

/// A row as it is read: "FK owner: long NN UQ IX", with the sign of a change and [what is struck out].
QString told(const diagram_row & row)
{
    QStringList parts{app::changeSign(row.change), app::markText(row.mark),
                      row.former.isEmpty() ? QString() : QStringLiteral("[%1]").arg(row.former),
                      row.type.isEmpty() ? row.text : QStringLiteral("%1: %2").arg(row.text, row.type)};
    for (const QString & trait : app::traitSigns(row.traits)) {
        parts << trait;
    }
    parts.removeAll(QString());
    return parts.join(QLatin1Char(' '));
}

QStringList told(const diagram_box & box)
{
    QStringList lines{QStringList{app::changeSign(box.change),
                                  box.former.isEmpty() ? QString() : QStringLiteral("[%1]").arg(box.former),
                                  box.name}
                          .join(QLatin1Char(' '))
                          .simplified()};
    for (const diagram_row & row : box.rows) {
        lines << told(row);
    }
    return lines;
}

/// A box alone, drawn at its own size.
QImage drawn(const diagram_box & box, const diagram_style & style)
{
    app::diagram_picture picture;
    picture.contents.boxes = {box};
    const QRectF place(QPointF(), app::boxSize(box, style));
    picture.places.boxes = {place};
    app::diagram_scene scene(picture, style);
    QImage image(place.size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    scene.render(&painter, image.rect(), place);
    return image;
}

bool isLike(const QColor & a, const QColor & b, int most)
{
    return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) + qAbs(a.blue() - b.blue()) < most;
}

/// How many pixels of `image` have nearly this colour.
int countOf(const QImage & image, const QColor & color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += isLike(image.pixelColor(x, y), color, 40) ? 1 : 0;
        }
    }
    return count;
}

/// The longest run of pixels in nearly this colour, side by side.
int longestRun(const QImage & image, const QColor & color)
{
    int longest = 0;
    for (int y = 0; y < image.height(); ++y) {
        int run = 0;
        for (int x = 0; x < image.width(); ++x) {
            run = isLike(image.pixelColor(x, y), color, 60) ? run + 1 : 0;
            longest = std::max(longest, run);
        }
    }
    return longest;
}

/// One entity "wide" with `count` properties "p1", "p2", … and an entity "small".
model_builder wide(int count)
{
    model_builder model;
    auto e = model.entity(1, "wide");
    for (int i = 1; i <= count; ++i) {
        e.property(10 + i, QStringLiteral("p%1").arg(i), "int");
    }
    model.entity(2, "small").identifier(5, "id", "long");
    return model;
}

/// The panel, shown and laid out in a grid.
struct fixture
{
    explicit fixture(const model_builder & model)
    {
        panel.setLayoutProgram("/nonexistent/dot");
        panel.resize(900, 900);
        panel.show();
        panel.activateWindow();
        if (!QTest::qWaitForWindowActive(&panel)) {
            qFatal("the window of the test did not become active");
        }
        panel.setProject(model.get());
        await();
        view->showActualSize();
    }
    void await()
    {
        QSignalSpy laidOut(&panel, &diagram_panel::layoutFinished);
        if (!laidOut.wait(20000)) {
            qFatal("nothing was laid out");
        }
    }
    void click(const QPoint & place) const { QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place); }
    [[nodiscard]] QString legend() const
    {
        return panel.findChild<QLabel *>("m_lblLegend")->accessibleName();
    }

    diagram_panel panel;
    diagram_view * view = panel.findChild<diagram_view *>();
};

} // namespace

class tst_diagram_marks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnsTellWhatTheyHold()
    {
        model_builder model;
        const auto state = std::make_shared<model::enumeration>(1);
        state->setName("state");
        auto person = model.entity(1, "person");
        person.identifier(10, "id", "long");
        person.property(11, "mail", "QString").notNull().unique().indexed();
        person.property(12, "code", "QString").unique();
        person.property(13, "born", "QDate").indexed();
        person.property(14, "state", "").enumeration(state);
        person.property(15, "place", "").columns("x|y").types({"double", "float"});
        person.property(16, "cache", "QVariant").transient().notNull().indexed();
        person.relation(17, "boss", 1, relationship::many_to_one, 1).notNull();
        person.relation(18, "friends", 2, relationship::many_to_many, 1);
        QCOMPARE(told(contentsOf(diagram_graph(model.project()), {1}).boxes[0]),
                 (QStringList{"person", "PK id: long", "mail: QString NN UQ IX", "code: QString UQ",
                              "born: QDate IX", "state: state", "place: double|float", "cache: QVariant",
                              "FK boss: long NN", "n:m friends", "show fewer"}));
    }

    void typesWithoutAName()
    {
        model_builder model;
        model.entity(1, "a").property(1, "odd", "int").withoutType();
        QCOMPARE(told(contentsOf(diagram_graph(model.project())).boxes[0]), (QStringList{"a", "odd"}));
    }

    void whoDoesNotSeeThemIsTold()
    {
        model_builder model;
        auto e = model.entity(1, "a");
        e.identifier(1, "id", "long");
        e.property(2, "mail", "QString").notNull().unique().indexed();
        QCOMPARE(contentsOf(diagram_graph(model.project())).boxes[0].told,
                 "a: Table: a; Id: 1, version: 1; Properties: 2. No relationships are shown. "
                 "Shown: id (long, primary key); mail (QString, not null, unique, indexed).");
    }

    void legendsTellTheSigns()
    {
        QCOMPARE(app::toldLegend(false), "PK primary key; FK foreign key; NN not null; UQ unique; IX index; "
                                         "1:n, n:m relationship without a column");
        QCOMPARE(app::toldLegend(true),
                 "PK primary key; FK foreign key; NN not null; UQ unique; IX index; "
                 "1:n, n:m relationship without a column; + added; − dropped; ~ changed; » renamed");
        const diagram_style style = diagram_style::printed(QFont());
        const QString legend = app::diagramLegend(style, true);
        for (const QColor & color : {style.key, style.reference, style.trait, style.collection, style.added,
                                     style.dropped, style.changed, style.renamed}) {
            QVERIFY2(legend.contains("color:" + color.name()), qPrintable(color.name()));
        }
        QVERIFY(!app::diagramLegend(style, false).contains(style.renamed.name()));
    }

    void changesHaveSigns()
    {
        model_builder before;
        auto gig = before.entity(1, "gig").table("t_gig");
        gig.identifier(10, "id", "long");
        gig.property(11, "duration", "int");
        gig.property(12, "note", "QString");
        gig.property(13, "seats", "int");
        gig.property(14, "mail", "QString").columns("e_mail");
        before.entity(2, "draft").identifier(20, "id", "long");
        before.entity(3, "same").identifier(30, "id", "long");
        model_builder after;
        auto concert = after.entity(1, "concert").table("t_gig");
        concert.identifier(10, "id", "long");
        concert.property(11, "length", "int");
        concert.property(13, "seats", "double");
        concert.property(14, "mail", "QString").columns("address");
        concert.property(15, "fee", "double");
        after.entity(3, "same").identifier(30, "id", "long");
        after.entity(4, "sponsor").identifier(40, "id", "long");
        const diagram_contents contents = marked(before, after);
        QCOMPARE(contents.boxes.size(), 4);
        QCOMPARE(told(contents.boxes[0]),
                 (QStringList{"» [gig] concert", "PK id: long", "» [duration] length: int", "~ seats: double",
                              "» [e_mail] mail (address): QString", "+ fee: double", "− note: QString"}));
        QCOMPARE(told(contents.boxes[1]), (QStringList{"same", "PK id: long"}));
        QCOMPARE(told(contents.boxes[2]), (QStringList{"+ sponsor", "PK id: long"}));
        QCOMPARE(told(contents.boxes[3]), (QStringList{"− draft", "PK id: long"}));
        QVERIFY2(contents.boxes[0].tip.contains(
                     "<br>name: gig -&gt; concert<br>length: name: duration -&gt; length"
                     "<br>seats: type: int -&gt; double<br>"),
                 qPrintable(contents.boxes[0].tip));
        QVERIFY(contents.boxes[0].told.startsWith("concert: renamed; Table: t_gig; "));
        QVERIFY2(contents.boxes[0].told.contains("length (int, was duration); seats (double, changed); "),
                 qPrintable(contents.boxes[0].told));
    }

    /// A change of what it holds changes an entity, too: its rows may be hidden.
    void contentsChangeTheirEntity()
    {
        model_builder before;
        before.entity(1, "a").property(10, "p", "int");
        model_builder after;
        after.entity(1, "a").property(10, "p", "int").notNull();
        QCOMPARE(told(marked(before, after).boxes[0]), (QStringList{"~ a", "~ p: int NN"}));
    }

    void tablesAreRenamed()
    {
        model_builder before;
        before.entity(1, "a");
        before.entity(2, "b").table("t_b");
        model_builder after;
        after.entity(1, "a").table("t_a");
        after.entity(2, "b");
        const diagram_contents contents = marked(before, after);
        QCOMPARE(told(contents.boxes[0]), QStringList("» [a] a (t_a)"));
        QCOMPARE(told(contents.boxes[1]), QStringList("» [t_b] b"));
    }

    /// What is moved is dropped where it was and added where it is.
    void whatIsMovedStandsTwice()
    {
        model_builder before;
        before.entity(1, "a").property(10, "p", "int");
        before.entity(2, "b").identifier(20, "id", "long");
        model_builder after;
        after.entity(1, "a");
        auto b = after.entity(2, "b");
        b.identifier(20, "id", "long");
        b.property(10, "p", "int");
        const diagram_contents contents = marked(before, after);
        QCOMPARE(told(contents.boxes[0]), (QStringList{"~ a", "− p: int"}));
        QCOMPARE(told(contents.boxes[1]), (QStringList{"~ b", "PK id: long", "+ p: int"}));
        // It stands once in an entity that is gone.
        model_builder without;
        auto alone = without.entity(2, "b");
        alone.identifier(20, "id", "long");
        alone.property(10, "p", "int");
        QCOMPARE(told(marked(before, without).boxes[1]), (QStringList{"− a", "p: int"}));
    }

    void linesTellTheirChange()
    {
        model_builder before;
        before.entity(1, "a").identifier(10, "id", "long");
        auto b = before.entity(2, "b");
        b.relation(20, "old", 1, relationship::many_to_one, 1);
        b.relation(21, "same", 2, relationship::many_to_one, 1);
        b.relation(22, "loose", 3, relationship::many_to_one, 1);
        before.entity(3, "c").relation(30, "gone", 4, relationship::many_to_one, 1);
        model_builder after;
        after.entity(1, "a").identifier(10, "id", "long");
        auto later = after.entity(2, "b");
        later.relation(21, "same", 2, relationship::many_to_one, 1);
        later.relation(22, "loose", 3, relationship::many_to_one, 1).notNull();
        later.relation(23, "new", 5, relationship::many_to_one, 1);
        QStringList lines;
        for (const app::diagram_line & line : marked(before, after).lines) {
            lines << QStringLiteral("%1 %2").arg(app::changeSign(line.change), line.label).trimmed();
        }
        QCOMPARE(lines, (QStringList{"same", "~ loose", "+ new", "− old", "− gone"}));
    }

    void nothingIsMarkedWithoutAChange()
    {
        const diagram_contents contents = marked(wide(9), wide(9));
        QCOMPARE(contents.boxes.size(), 2);
        for (const diagram_box & box : contents.boxes) {
            QCOMPARE(box.change, diagram_change::none);
        }
    }

    /// Of many rows those are shown that changed; what is hidden and changed is told of.
    void changesAreShownFirst()
    {
        const model_builder before = wide(20);
        model_builder after = wide(20);
        support::entity_builder(after.entity(1)).get()->getPropertyById(25)->setUnique(true);
        diagram_contents contents = marked(before, after);
        QCOMPARE(told(contents.boxes[0]), (QStringList{"~ wide", "p1: int", "p2: int", "p3: int", "p4: int",
                                                       "p5: int", "p6: int", "~ p15: int UQ", "… 13 more"}));
        for (long id = 11; id <= 20; ++id) {
            after.entity(1)->getPropertyById(id)->setUnique(true);
        }
        contents = marked(before, after);
        QCOMPARE(told(contents.boxes[0]).constLast(), "~ … 13 more");
    }

    void coloursAndStruckOutNamesAreDrawn()
    {
        const diagram_style style = diagram_style::printed(QFont());
        diagram_box box;
        box.name = "concert";
        box.rows.resize(1);
        box.rows[0].text = "length";
        const auto changed = [&box](diagram_change change) {
            box.change = box.rows[0].change = change;
            return box;
        };
        const QImage plain = drawn(changed(diagram_change::none), style);
        for (const diagram_change change : {diagram_change::added, diagram_change::dropped,
                                            diagram_change::changed, diagram_change::renamed}) {
            const QImage image = drawn(changed(change), style);
            QVERIFY(countOf(image, style.colorOf(change)) > 40);
            QCOMPARE(countOf(plain, style.colorOf(change)), 0);
            QVERIFY(countOf(image, style.headerOf(change)) > 500);
        }
        // A line through the old name, which is as long as that.
        changed(diagram_change::renamed);
        box.rows[0].former = "duration";
        const int length = qRound(QFontMetricsF(style.text).horizontalAdvance("duration"));
        QVERIFY(longestRun(drawn(box, style), style.quietInk) >= length - 4);
        box.rows[0].former.clear();
        QVERIFY(longestRun(drawn(box, style), style.quietInk) < length - 4);
    }

    void aClickOpensAndCloses()
    {
        fixture f(wide(24));
        const QSignalSpy selected(&f.panel, &diagram_panel::entitySelected);
        const int height = f.view->boxRect(1).height();
        QVERIFY(f.view->restRect(2).isEmpty()); // it shows all that there is
        f.click(f.view->restRect(1).center());
        f.await();
        const int opened = f.view->boxRect(1).height();
        QVERIFY(opened > height * 2);
        QCOMPARE(selected.count(), 0);
        f.click(f.view->restRect(1).center());
        f.await();
        QCOMPARE(f.view->boxRect(1).height(), height);
        // A click above that row chooses, as it ever did.
        f.click(f.view->restRect(1).center() - QPoint(0, f.view->restRect(1).height()));
        QCOMPARE(selected.count(), 1);
        QCOMPARE(f.panel.selectedEntity(), 1L);
    }

    void keysOpenAndClose()
    {
        fixture f(wide(24));
        f.panel.selectEntity(1);
        f.view->setFocus();
        const int height = f.view->boxRect(1).height();
        QTest::keyClick(f.view, Qt::Key_Plus);
        f.await();
        QVERIFY(f.view->boxRect(1).height() > height * 2);
        QVERIFY(f.view->accessibleDescription().contains("p24 (int)"));
        QTest::keyClick(f.view, Qt::Key_Minus);
        f.await();
        QCOMPARE(f.view->boxRect(1).height(), height);
        QVERIFY(f.view->accessibleDescription().endsWith("p7 (int); … 17 more."));
    }

    /// What is open stays open when the model is read again, and not in another one.
    void reloadsLeaveItOpen()
    {
        fixture f(wide(24));
        f.click(f.view->restRect(1).center());
        f.await();
        const int opened = f.view->boxRect(1).height();
        f.panel.setProject(wide(24).get());
        f.await();
        QCOMPARE(f.view->boxRect(1).height(), opened);
        model_builder other("other");
        auto e = other.entity(1, "wide");
        for (int i = 1; i <= 24; ++i) {
            e.property(10 + i, QStringLiteral("p%1").arg(i), "int");
        }
        f.panel.setProject(other.get());
        f.await();
        QVERIFY(f.view->boxRect(1).height() < opened / 2);
    }

    void thePointerShowsWhatOpens()
    {
        const fixture f(wide(24));
        QTest::mouseMove(f.view->viewport(), f.view->restRect(1).center());
        QCOMPARE(f.view->viewport()->cursor().shape(), Qt::PointingHandCursor);
        QTest::mouseMove(f.view->viewport(), f.view->boxRect(2).center());
        QCOMPARE(f.view->viewport()->cursor().shape(), Qt::ArrowCursor);
    }

    void thePanelShowsAndHidesChanges()
    {
        const model_builder before = wide(3);
        model_builder after = wide(4);
        fixture f(after);
        QCOMPARE(f.panel.findChild<QLabel *>("m_lblShown")->text(), "All 2 entities");
        QVERIFY(!f.legend().contains("renamed"));
        f.panel.selectEntity(1);
        f.panel.showChanges(after.project(), changesOf(before, after), "changes from v1 to now");
        f.await();
        QCOMPARE(f.panel.findChild<QLabel *>("m_lblShown")->text(), "All 2 entities; changes from v1 to now");
        QVERIFY(f.legend().endsWith("» renamed"));
        QCOMPARE(f.panel.selectedEntity(), 1L);
        QVERIFY(f.view->accessibleDescription().contains("p4 (int, added)"));
        f.panel.hideChanges("no version");
        f.await();
        QCOMPARE(f.panel.findChild<QLabel *>("m_lblShown")->text(), "All 2 entities; no version");
        QVERIFY(!f.view->accessibleDescription().contains("added"));
        QVERIFY(!f.legend().contains("renamed"));
    }

    /// In a large project the changed entities are what there is to see as long as none is chosen.
    void largeProjectsShowWhatChanged()
    {
        model_builder before;
        model_builder after;
        for (int i = 1; i <= 50; ++i) {
            before.entity(i, QStringLiteral("e%1").arg(i)).identifier(i * 100L, "id", "long");
            after.entity(i, QStringLiteral("e%1").arg(i)).identifier(i * 100L, i == 7 ? "key" : "id", "long");
        }
        fixture f(after);
        QVERIFY(f.view->boxRect(7).isEmpty());
        f.panel.showChanges(after.project(), changesOf(before, after), "changes");
        f.await();
        QVERIFY(!f.view->boxRect(7).isEmpty());
        QVERIFY(f.view->boxRect(8).isEmpty());
        QCOMPARE(f.panel.findChild<QLabel *>("m_lblShown")->text(), "1 of 50 entities; changes");
    }
};

QTEST_MAIN(tst_diagram_marks)
#include "tst_diagram_marks.moc"
