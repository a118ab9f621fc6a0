// Every text of the window is legible, in light and in dark colours: each widget that shows one is drawn, and
// what stands out most from its ground is measured.

#include "app/window/contrast.h"
#include "app/window/window_bench.h"
#include "docs/tools/picture_style.h"
#include "support/modal_driver.h"
#include "support/shop_text.h"

#include "app/window/diagram/diagram_style.h"
#include "app/window/diagram/diagram_view.h"
#include "app/window/export/script_text.h"
#include "app/window/legible_colours.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStyleFactory>
#include <QTabBar>

using support::modal_driver;
using support::window_bench;

namespace {

constexpr double Wanted = 4.5;

/// How far what is drawn stands out from the colour that most of it has.
double contrastIn(const QImage & image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ++counts[image.pixel(x, y)];
        }
    }
    QRgb ground = 0;
    int most = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > most) {
            most = it.value();
            ground = it.key();
        }
    }
    double best = 1;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        best = std::max(best, test::contrast(QColor(it.key()), QColor(ground)));
    }
    return best;
}

} // namespace

class tst_window_contrast : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        // Large letters, whose strokes are drawn in their whole colour.
        QFont font = QApplication::font();
        font.setPointSize(18);
        QApplication::setFont(font);
        m_light = QApplication::palette();
    }
    void everyText_data()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("light") << m_light;
        QTest::newRow("dark") << pictures::darkPalette();
        QTest::newRow("dark, made of one colour") << QPalette(QColor(0x33, 0x33, 0x36));
    }
    void everyText()
    {
        QFETCH(QPalette, palette);
        QApplication::setPalette(palette);
        const app::legible_colours colours;
        m_faults.clear();
        m_seen = m_colours = 0;
        window_bench bench(support::ShopText);
        bench.show();
        bench.window().resize(2400, 1400);
        look(bench.window()); // without a project
        bench.window().openFile(bench.file());
        window_bench::run({"tag", bench.file(), "-m", "first"});
        bench.import(QByteArray(support::ShopText).replace("\"person\"", "\"customer\""));
        bench.action("m_actReload")->trigger();
        bench.action("m_actMarkChanges")->trigger();
        look(bench.window());
        bench.action("m_actGoChanges")->trigger();
        look(bench.window());
        bench.action("m_actCheck_KorvGenericDDLExport")->trigger();
        window_bench::run({"settings", bench.file(), "--path", bench.path(), "--schema", "both"});
        bench.action("m_actExport_KorvGenericDDLExport")->trigger();
        bench.scripts().find();
        look(bench.window());
        for (const char * const dialog :
             {"m_actTag", "m_actVersions", "m_actSettings_KorvGenericDDLExport"}) {
            modal_driver driver({[this](QWidget * w) {
                look(*w);
                QTest::keyClick(w, Qt::Key_Escape);
            }});
            bench.action(dialog)->trigger();
            QVERIFY(driver.isDone());
        }
        QVERIFY2(m_seen > 150, qPrintable(QString::number(m_seen)));
        QVERIFY2(m_colours > 30, qPrintable(QString::number(m_colours)));
        QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join('\n')));
    }
    /// The colours of the theme alone are not enough: else the test above could not fail.
    void themesAlone()
    {
        QApplication::setPalette(m_light);
        QLineEdit edit;
        edit.setPlaceholderText("Placeholder");
        edit.resize(300, 40);
        edit.show();
        const auto isLegible = [&edit] {
            QTest::qWait(50); // a change of colours comes as an event
            return contrastIn(edit.grab(edit.rect().adjusted(4, 4, -4, -4)).toImage()) >= Wanted;
        };
        QVERIFY(!isLegible());
        const app::legible_colours colours;
        QVERIFY(isLegible());
        // Another theme later on is seen to as well.
        QApplication::setPalette(QPalette(QColor(0x33, 0x33, 0x36)));
        QVERIFY(isLegible());
    }

private:
    void look(QWidget & window)
    {
        QTest::qWait(300);
        const QList<QWidget *> all = window.findChildren<QWidget *>();
        for (QWidget * const widget : all) {
            if (widget->isVisible() && widget->isEnabled() && !widget->size().isEmpty()) {
                lookAt(*widget);
            }
        }
    }
    void lookAt(QWidget & widget)
    {
        if (auto * const view = qobject_cast<QAbstractItemView *>(&widget)) {
            lookAtRows(*view);
        } else if (auto * const script = qobject_cast<app::script_text *>(&widget)) {
            if (script->document()->isEmpty()) {
                return;
            }
            const int width = script->marginWidth();
            measure(widget, QRect(script->frameWidth(), script->frameWidth(), width, 60), "line numbers",
                    script->objectName());
        } else if (auto * const diagram = qobject_cast<app::diagram_view *>(&widget)) {
            lookAtColours(diagram->diagramStyle());
        } else if (showsText(widget)) {
            lookAtParts(widget);
            const int frame = qobject_cast<QLabel *>(&widget) || widget.inherits("QToolButton") ? 0 : 5;
            measure(widget, widget.rect().adjusted(frame, frame, -frame, -frame), "text",
                    widget.objectName());
        }
    }
    /// Texts in colours of their own, which the rest of the label would outshine.
    void lookAtParts(const QWidget & widget)
    {
        const auto * const label = qobject_cast<const QLabel *>(&widget);
        if (!label || label->textFormat() != Qt::RichText) {
            return;
        }
        static const QRegularExpression color(QStringLiteral("color:(#[0-9a-f]{6})"));
        for (auto found = color.globalMatch(label->text()); found.hasNext();) {
            compare(QColor(found.next().captured(1)), widget.palette().color(QPalette::Window),
                    widget.objectName());
        }
    }
    /// What a diagram draws on what.
    void lookAtColours(const app::diagram_style & style)
    {
        using app::diagram_change;
        for (const QColor & color : {style.ink, style.quietInk, style.key, style.reference, style.collection,
                                     style.warning, style.trait}) {
            compare(color, style.body, "box");
        }
        for (const diagram_change change :
             {diagram_change::none, diagram_change::added, diagram_change::dropped, diagram_change::changed,
              diagram_change::renamed}) {
            compare(style.colorOf(change), style.body, "box");
            compare(style.colorOf(change), style.canvas, "diagram");
            compare(style.ink, style.headerOf(change), "name of a box");
        }
        compare(style.ink, style.chosenHeader, "name of the selected box");
    }
    void compare(const QColor & color, const QColor & ground, const QString & name)
    {
        ++m_seen;
        ++m_colours;
        if (const double found = test::contrast(color, ground); found < Wanted) {
            m_faults << QStringLiteral("%1 on %2 in %3: %4")
                            .arg(color.name(), ground.name(), name, QString::number(found, 'f', 2));
        }
    }
    static bool showsText(const QWidget & widget)
    {
        if (const auto * const label = qobject_cast<const QLabel *>(&widget)) {
            return !label->text().isEmpty();
        }
        if (const auto * const button = qobject_cast<const QAbstractButton *>(&widget)) {
            return !button->text().isEmpty() && button->text() != "...";
        }
        if (const auto * const edit = qobject_cast<const QLineEdit *>(&widget)) {
            return !edit->text().isEmpty() || !edit->placeholderText().isEmpty();
        }
        const auto * const box = qobject_cast<const QComboBox *>(&widget);
        return box ? !box->currentText().isEmpty() : false;
    }
    void lookAtRows(QAbstractItemView & view)
    {
        constexpr int Most = 12;
        if (auto * const tree = qobject_cast<QTreeView *>(&view)) {
            tree->setColumnWidth(0, 400); // no text is left out
        }
        const QModelIndex root = view.rootIndex();
        for (int row = 0; row < std::min(Most, view.model()->rowCount(root)); ++row) {
            const QModelIndex index = view.model()->index(row, 0, root);
            view.scrollTo(index);
            if (index.data().toString().isEmpty() || view.visualRect(index).isEmpty()) {
                continue;
            }
            view.clearSelection();
            measure(*view.viewport(), view.visualRect(index), "row",
                    view.objectName() + " " + index.data().toString());
            view.selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
            measure(*view.viewport(), view.visualRect(index), "selected row", view.objectName());
        }
    }
    void measure(QWidget & widget, const QRect & part, const char * what, const QString & name)
    {
        ++m_seen;
        const double found = contrastIn(widget.grab(part & widget.rect()).toImage());
        if (found < Wanted) {
            m_faults << QStringLiteral("%1 of %2 %3 in %4: %5")
                            .arg(QLatin1String(what), QLatin1String(widget.metaObject()->className()), name,
                                 widget.window()->objectName(), QString::number(found, 'f', 2));
        }
    }

    QPalette m_light;
    QStringList m_faults;
    int m_seen = 0;
    int m_colours = 0; ///< of these, colours that were compared by themselves
};

QTEST_MAIN(tst_window_contrast)
#include "tst_window_contrast.moc"
