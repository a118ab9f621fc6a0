// The tree panel as a person sees it, and its filter.

#include "tree_fixture.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QHeaderView>
#include <QImage>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QToolButton>

using support::Closed;
using support::manyEntities;
using support::model_builder;
using support::tree_fixture;
using support::treeShop;

namespace {

QImage imageOf(const QTreeView & tree, const QRect & place)
{
    return tree.viewport()->grab(place).toImage();
}

/// The least difference of a pixel to `colour`.
int nearest(const QImage & image, const QColor & colour)
{
    int best = 3 * 255;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            best = std::min(best, std::abs(c.red() - colour.red()) + std::abs(c.green() - colour.green()) +
                                      std::abs(c.blue() - colour.blue()));
        }
    }
    return best;
}

} // namespace

class tst_project_tree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensClosed();
    void withoutProject();
    void countsInWords();
    void filterWaitsForTheEndOfTheWord();
    void clearingIsSeenAtOnce();
    void matchesAreMarked();
    void filterOpensWhatItFound();
    void nothingMatches();
    void longFilterDoesNotGrowThePanel();
    void escapeClears();
    void escapeOfAnEmptyFieldIsTheWindows();
    void escapeOfAnEmptyFieldClosesADialog();
    void downAndReturnEnterTheTree_data();
    void downAndReturnEnterTheTree();
    void enteringKeepsTheSelection();
    void nothingToEnter();
    void tabGoesFromFieldToTree();
    void focusFilterSelectsItsText();
    void accessibility();
    void longNames();
    void columnsShareTheWidth();
    void colours_data();
    void colours();
};

void tst_project_tree::opensClosed()
{
    tree_fixture f;
    QCOMPARE(f.rows(), Closed);
    QVERIFY(f.tree->isVisible());
    QVERIFY(!f.empty->isVisible());
    QCOMPARE(f.counted(), "4 entities");
    QCOMPARE(f.panel->selectedEntity(), 0L);
    QCOMPARE(f.told(), QList<long>());
    QVERIFY(f.tree->uniformRowHeights());
}

void tst_project_tree::withoutProject()
{
    tree_fixture f(nullptr);
    QVERIFY(!f.tree->isVisible());
    QVERIFY(f.empty->isVisible());
    QVERIFY(!f.count->isVisible());
    QCOMPARE(f.empty->text(), "No project is open");
    f.panel->selectEntity(1);
    QCOMPARE(f.panel->selectedEntity(), 0L);
    f.filter->setText("a");
    QTest::keyClick(f.filter, Qt::Key_Return);
    QCOMPARE(f.empty->text(), "No project is open");
    f.filter->clear();
    f.panel->setProject(treeShop());
    QVERIFY(f.tree->isVisible());
    QVERIFY(f.count->isVisible());
    const auto withoutList = std::make_shared<model::project>(1);
    withoutList->setListOfAllEntities(nullptr);
    f.panel->setProject(withoutList);
    QVERIFY(!f.tree->isVisible());
    QCOMPARE(f.empty->text(), "The project has no entities");
    QCOMPARE(f.counted(), "0 entities");
    f.panel->setProject(nullptr);
    QCOMPARE(f.empty->text(), "No project is open");
    QVERIFY(!f.count->isVisible());
    QCOMPARE(f.told(), QList<long>());
}

void tst_project_tree::countsInWords()
{
    tree_fixture f(manyEntities(1));
    QCOMPARE(f.counted(), "1 entity");
    f.type("id");
    QCOMPARE(f.counted(), "1 of 1 entity");
    f.filter->setText("entity_1");
    f.panel->setProject(manyEntities(120));
    QCOMPARE(f.counted(), "32 of 120 entities"); // 1, 10 to 19, 100 to 120
    f.filter->clear();
    QCOMPARE(f.counted(), "120 entities");
}

void tst_project_tree::filterWaitsForTheEndOfTheWord()
{
    tree_fixture f;
    const QSignalSpy resets(f.tree->model(), &QAbstractItemModel::modelReset);
    f.filter->setFocus();
    QTest::keyClicks(f.filter, "title");
    QCOMPARE(f.rows(), Closed);
    QCOMPARE(f.counted(), "4 entities");
    QTRY_COMPARE(f.counted(), "1 of 4 entities");
    QCOMPARE(f.rows(), (QStringList{"country", " title"}));
    QCOMPARE(resets.count(), 1);
}

/// The ground behind what was found, and nothing else, has a colour of its own.
void tst_project_tree::matchesAreMarked()
{
    tree_fixture f;
    const auto marked = [&f](const QModelIndex & index) {
        const QRect row = f.tree->visualRect(index);
        const QImage image = f.tree->viewport()->grab(row).toImage();
        int first = -1;
        int count = 0;
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, 1) == QColor(0xff, 0xe6, 0x8f)) {
                first = first < 0 ? x : first;
                ++count;
            }
        }
        return std::pair(first, count);
    };
    f.filter->setText("TRY itle");
    QTRY_COMPARE(f.rows(), (QStringList{"country", " title"}));
    const QFontMetrics metrics = f.tree->fontMetrics();
    QCOMPARE(marked(f.at({0})).second,
             metrics.horizontalAdvance("country") - metrics.horizontalAdvance("coun"));
    QCOMPARE(marked(f.at({0, 0})).second,
             metrics.horizontalAdvance("title") - metrics.horizontalAdvance("t"));
    QVERIFY(marked(f.at({0, 0})).first > metrics.horizontalAdvance("t"));
    QCOMPARE(marked(f.at({0, 0}, 1)).second, 0);
    f.filter->clear();
    QCOMPARE(marked(f.at({0})).second, 0);
}

void tst_project_tree::clearingIsSeenAtOnce()
{
    tree_fixture f;
    f.type("title");
    QVERIFY(f.filter->isClearButtonEnabled());
    auto * const button = f.filter->findChild<QToolButton *>();
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(f.filter->text(), "");
    QCOMPARE(f.rows(), Closed);
    QCOMPARE(f.counted(), "4 entities");
}

void tst_project_tree::filterOpensWhatItFound()
{
    tree_fixture f;
    f.type("customer_tag");
    QCOMPARE(f.rows(), (QStringList{"customer", " tags", "  → tag"}));
    f.type("home");
    QCOMPARE(f.rows(), (QStringList{"country", " people", "  → customer", "customer", " home"}));
    f.type("t_country");
    QCOMPARE(f.rows(), QStringList{"country"});
    f.tree->expand(f.at({0}));
    QCOMPARE(f.rows(), (QStringList{"country", " code", " title", " people"}));
}

void tst_project_tree::nothingMatches()
{
    tree_fixture f;
    f.type("  no<b>such  thing</b>");
    QVERIFY(!f.tree->isVisible());
    QVERIFY(f.empty->isVisible());
    QCOMPARE(f.empty->text(), "Nothing matches 'no<b>such thing</b>'");
    QCOMPARE(f.empty->textFormat(), Qt::PlainText);
    QCOMPARE(f.counted(), "0 of 4 entities");
    f.filter->clear();
    QVERIFY(f.tree->isVisible());
    QVERIFY(!f.empty->isVisible());
}

void tst_project_tree::longFilterDoesNotGrowThePanel()
{
    tree_fixture f;
    f.filter->setText(QString(5000, 'x'));
    QTest::keyClick(f.filter, Qt::Key_Return);
    QCOMPARE(f.empty->text(), "Nothing matches '" + QString(80, 'x') + "…'");
    QVERIFY(f.panel->minimumSizeHint().width() < 150);
}

void tst_project_tree::escapeClears()
{
    tree_fixture f;
    QShortcut shortcut(Qt::Key_Escape, &f.window);
    const QSignalSpy ofTheWindow(&shortcut, &QShortcut::activated);
    f.type("title");
    QTest::keyClick(f.filter, Qt::Key_Escape);
    QCOMPARE(f.filter->text(), "");
    QCOMPARE(f.rows(), Closed);
    QCOMPARE(ofTheWindow.count(), 0);
    QVERIFY(f.filter->hasFocus());
}

void tst_project_tree::escapeOfAnEmptyFieldIsTheWindows()
{
    tree_fixture f;
    QShortcut shortcut(Qt::Key_Escape, &f.window);
    const QSignalSpy ofTheWindow(&shortcut, &QShortcut::activated);
    f.filter->setFocus();
    QTest::keyClick(f.filter, Qt::Key_Escape);
    QCOMPARE(ofTheWindow.count(), 1);
}

void tst_project_tree::escapeOfAnEmptyFieldClosesADialog()
{
    QDialog dialog;
    auto * const panel = new app::project_tree(&dialog);
    dialog.show();
    auto * const field = panel->findChild<QLineEdit *>();
    field->setText("title");
    QTest::keyClick(field, Qt::Key_Escape);
    QVERIFY(dialog.isVisible());
    QTest::keyClick(field, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

void tst_project_tree::downAndReturnEnterTheTree_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("down") << Qt::Key_Down;
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter") << Qt::Key_Enter;
}

void tst_project_tree::downAndReturnEnterTheTree()
{
    QFETCH(Qt::Key, key);
    tree_fixture f;
    f.filter->setFocus();
    QTest::keyClicks(f.filter, "tag"); // and nobody waits
    QTest::keyClick(f.filter, key);
    QVERIFY(f.tree->hasFocus());
    QCOMPARE(f.rows(), (QStringList{"*customer", " tags", "tag", " twin"}));
    QCOMPARE(f.told(), QList<long>{2});
    QCOMPARE(f.panel->selectedEntity(), 2L);
}

void tst_project_tree::enteringKeepsTheSelection()
{
    tree_fixture f;
    f.panel->selectEntity(3);
    f.filter->setFocus();
    QTest::keyClick(f.filter, Qt::Key_Down);
    QVERIFY(f.tree->hasFocus());
    QCOMPARE(f.panel->selectedEntity(), 3L);
    QCOMPARE(f.told(), QList<long>());
    QTest::keyClick(f.tree, Qt::Key_Down);
    QCOMPARE(f.told(), QList<long>{4});
}

void tst_project_tree::nothingToEnter()
{
    tree_fixture f;
    f.filter->setFocus();
    QTest::keyClicks(f.filter, "zzz");
    QTest::keyClick(f.filter, Qt::Key_Down);
    QVERIFY(f.filter->hasFocus());
    QCOMPARE(f.empty->text(), "Nothing matches 'zzz'");
    f.filter->clear();
    QVERIFY(f.filter->hasFocus()); // the tree that comes back does not take the keyboard
}

void tst_project_tree::tabGoesFromFieldToTree()
{
    tree_fixture f;
    f.filter->setFocus();
    QTest::keyClick(f.filter, Qt::Key_Tab);
    QVERIFY(f.tree->hasFocus());
    QCOMPARE(f.told(), QList<long>()); // looking is not selecting
    QVERIFY(f.action("m_actCopyName")->isEnabled());
    QTest::keyClick(f.tree, Qt::Key_Backtab);
    QVERIFY(f.filter->hasFocus());
}

void tst_project_tree::focusFilterSelectsItsText()
{
    tree_fixture f;
    f.type("title");
    f.tree->setFocus();
    f.panel->focusFilter();
    QVERIFY(f.filter->hasFocus());
    QCOMPARE(f.filter->selectedText(), "title");
    QTest::keyClick(f.filter, Qt::Key_End);
    f.panel->focusFilter();
    QCOMPARE(f.filter->selectedText(), "title");
}

void tst_project_tree::accessibility()
{
    tree_fixture f;
    QCOMPARE(f.panel->accessibleName(), "Model");
    QCOMPARE(f.filter->accessibleName(), "Filter");
    QCOMPARE(f.filter->placeholderText(), "Filter");
    QCOMPARE(f.tree->accessibleName(), "Entities, properties and relationships");
    f.tree->expand(f.at({0}));
    QAccessibleInterface * const tree = QAccessible::queryAccessibleInterface(f.tree);
    QVERIFY(tree && tree->tableInterface());
    QCOMPARE(tree->tableInterface()->rowCount(), 7);
    QCOMPARE(tree->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), "entity country");
    QCOMPARE(tree->tableInterface()->cellAt(1, 0)->text(QAccessible::Name), "code, primary key, not null");
    QCOMPARE(tree->tableInterface()->cellAt(3, 1)->text(QAccessible::Name), "one-to-many to customer");
}

void tst_project_tree::longNames()
{
    model_builder b;
    b.entity(1, QString(100000, 'n')).property(11, "two\nlines", "int");
    tree_fixture f(b.get());
    auto * const delegate = qobject_cast<QStyledItemDelegate *>(f.tree->itemDelegate());
    QVERIFY(delegate);
    QCOMPARE(delegate->displayText(f.at({0}).data(), QLocale()), QString(300, 'n') + "…");
    QCOMPARE(delegate->displayText(f.at({0, 0}).data(), QLocale()), "two lines");
    QCOMPARE(f.tree->textElideMode(), Qt::ElideRight);
    QVERIFY(!f.tree->wordWrap());
    QVERIFY(f.tree->header()->length() <= f.tree->viewport()->width());
    QTest::keyClick(f.tree, Qt::Key_Down);
    QTest::keyClick(f.tree, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text().size(), 100000);
}

void tst_project_tree::columnsShareTheWidth()
{
    tree_fixture f;
    QHeaderView * const header = f.tree->header();
    for (const int width : {900, 300, 500}) {
        f.window.resize(width, 500);
        QTRY_COMPARE(header->length(), f.tree->viewport()->width());
        QVERIFY(f.tree->viewport()->width() > width * 9 / 10 - 20);
        QVERIFY(header->sectionSize(0) > header->sectionSize(1));
        for (int column = 0; column < 3; ++column) {
            QVERIFY(header->sectionSize(column) * 4 > header->length());
        }
    }
    const int edge = header->sectionViewportPosition(1);
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, {edge - 1, 5});
    QTest::mouseMove(header->viewport(), {edge - 61, 5});
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, {edge - 61, 5});
    const int chosen = header->sectionSize(0);
    QCOMPARE(chosen, edge - 60);
    f.window.resize(800, 500);
    QTRY_COMPARE(header->length(), f.tree->viewport()->width());
    QCOMPARE(header->sectionSize(0), chosen);
}

void tst_project_tree::colours_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("base");
    QTest::newRow("light") << QColor(Qt::black) << QColor(Qt::white);
    QTest::newRow("dark") << QColor(Qt::white) << QColor(Qt::black);
}

/// What is not stored is less conspicuous, and what is selected is seen, in every palette.
void tst_project_tree::colours()
{
    QFETCH(QColor, text);
    QFETCH(QColor, base);
    tree_fixture f;
    f.tree->expand(f.at({1}));
    QPalette palette;
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Highlight, QColor(0, 0, 255));
    palette.setColor(QPalette::HighlightedText, QColor(255, 255, 0));
    f.window.setPalette(palette); // while it is shown
    const auto typeOf = [&f](const QList<int> & path) {
        return imageOf(*f.tree, f.tree->visualRect(f.at(path, 1)));
    };
    const int grey = text.red() == 0 ? 102 : 153;
    QVERIFY(nearest(typeOf({1, 1}), text) < 100);
    QVERIFY(nearest(typeOf({1, 5}), text) > 200);
    QVERIFY(nearest(typeOf({1, 5}), QColor(grey, grey, grey)) < 60);
    f.click({0});
    QRect icon = f.tree->visualRect(f.at({0}));
    icon.setWidth(20);
    QVERIFY(nearest(imageOf(*f.tree, icon), QColor(255, 255, 0)) < 60);
    icon = f.tree->visualRect(f.at({2}));
    icon.setWidth(20);
    QVERIFY(nearest(imageOf(*f.tree, icon), QColor(255, 255, 0)) > 60);
    QVERIFY(nearest(imageOf(*f.tree, icon), QColor(0x2f, 0x7d, 0xd1)) < 60);
}

QTEST_MAIN(tst_project_tree)
#include "tst_project_tree.moc"
