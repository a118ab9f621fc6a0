// What is selected and open in the tree, and what becomes of it when filter or project change.

#include "tree_fixture.h"

using support::Closed;
using support::manyEntities;
using support::model_builder;
using support::tree_fixture;
using support::treeShop;

class tst_project_tree_selection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void personSelects();
    void programSelects();
    void programSelectsAndScrolls();
    void programKeepsTheRowOfTheEntity();
    void programSelectsWhatTheFilterHides();
    void programSelectsWhileSomebodyTypes();
    void filterHidesTheSelection();
    void filterKeepsWhatWasOpen();
    void closingWhileFiltered();
    void selectionInAClosedRowStaysClosed();
    void reloadKeepsSelectionAndOpenRows();
    void reloadWithoutWhatWasSelected();
    void expandingKeepsTheSelectedRowInView();
    void filterBeginsAtTheTop();
    void reloadKeepsThePlace();
    void reloadWhileFiltering();
    void closedProjectIsForgotten();
};

void tst_project_tree_selection::personSelects()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.tree->expand(f.at({1, 3}));
    f.click({0});
    QCOMPARE(f.told(), QList<long>{1});
    f.click({0});
    QCOMPARE(f.told(), QList<long>()); // it is selected already
    f.click({1, 0});
    QCOMPARE(f.told(), QList<long>{2});
    QCOMPARE(f.panel->selectedEntity(), 2L);
    f.click({1, 3, 0}, Qt::NoModifier, 1);
    QCOMPARE(f.told(), QList<long>{2}); // its own entity, not the target
    QTest::keyClick(f.tree, Qt::Key_End);
    QCOMPARE(f.told(), QList<long>{4});
    f.click({3}, Qt::ControlModifier);
    QCOMPARE(f.told(), QList<long>{0});
    QCOMPARE(f.panel->selectedEntity(), 0L);
    QCOMPARE(f.tree->selectionModel()->selectedRows().size(), 0);
}

void tst_project_tree_selection::programSelects()
{
    tree_fixture f;
    f.panel->selectEntity(2);
    QCOMPARE(f.rows(), (QStringList{"country", "*customer", "tag", "empty"}));
    QCOMPARE(f.tree->currentIndex(), f.at({1}));
    QCOMPARE(f.panel->selectedEntity(), 2L);
    f.panel->selectEntity(3);
    QCOMPARE(f.panel->selectedEntity(), 3L);
    f.panel->selectEntity(0);
    QCOMPARE(f.rows(), Closed);
    QCOMPARE(f.panel->selectedEntity(), 0L);
    f.panel->selectEntity(3);
    f.panel->selectEntity(999);
    QCOMPARE(f.rows(), Closed);
    QCOMPARE(f.panel->selectedEntity(), 0L);
    QCOMPARE(f.told(), QList<long>());
    f.click({0});
    QCOMPARE(f.told(), QList<long>{1}); // the person is heard again
}

void tst_project_tree_selection::programSelectsAndScrolls()
{
    tree_fixture f(manyEntities(500));
    QVERIFY(!f.isInView(f.at({300})));
    f.panel->selectEntity(301);
    QVERIFY(f.isInView(f.at({300})));
    QVERIFY(f.isInView(f.at({297}))); // with what is around it
    QVERIFY(f.isInView(f.at({303})));
    const QModelIndex top = f.tree->indexAt({0, 0});
    f.panel->selectEntity(302);
    QCOMPARE(f.tree->indexAt({0, 0}), top); // it was seen already
    f.tree->scrollToTop();
    f.panel->selectEntity(302);
    QVERIFY(f.isInView(f.at({301})));
}

void tst_project_tree_selection::programKeepsTheRowOfTheEntity()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.click({1, 2});
    f.told();
    f.panel->selectEntity(2);
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({1, 2})));
    f.panel->selectEntity(1);
    f.panel->selectEntity(2);
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({1})));
    QCOMPARE(f.told(), QList<long>());
}

void tst_project_tree_selection::programSelectsWhatTheFilterHides()
{
    tree_fixture f;
    f.type("title");
    f.panel->selectEntity(1);
    QCOMPARE(f.filter->text(), "title"); // it is not hidden
    f.panel->selectEntity(999);
    QCOMPARE(f.filter->text(), "title");
    f.panel->selectEntity(3);
    QCOMPARE(f.filter->text(), "");
    QCOMPARE(f.counted(), "4 entities");
    QCOMPARE(f.rows(), (QStringList{"country", "customer", "*tag", "empty"}));
    QCOMPARE(f.told(), QList<long>());
}

void tst_project_tree_selection::programSelectsWhileSomebodyTypes()
{
    tree_fixture f;
    f.filter->setFocus();
    QTest::keyClicks(f.filter, "title");
    f.panel->selectEntity(3);
    QCOMPARE(f.filter->text(), "");
    QCOMPARE(f.panel->selectedEntity(), 3L);
    QTest::keyClicks(f.filter, "title");
    f.panel->selectEntity(1);
    QCOMPARE(f.rows(), (QStringList{"*country", " title"}));
}

void tst_project_tree_selection::filterHidesTheSelection()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.click({1, 1});
    f.told();
    f.type("title");
    QCOMPARE(f.rows(), (QStringList{"country", " title"}));
    QCOMPARE(f.panel->selectedEntity(), 0L);
    f.type("lon,");
    QCOMPARE(f.panel->selectedEntity(), 0L);
    f.type("mood");
    QCOMPARE(f.rows(), (QStringList{"*customer", " state"})); // the nearest that is shown
    QCOMPARE(f.panel->selectedEntity(), 2L);
    f.filter->clear();
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({1, 1})));
    QCOMPARE(f.told(), QList<long>());
    f.type("title");
    f.click({0, 0});
    f.filter->clear();
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({0, 1})));
    QCOMPARE(f.told(), QList<long>{1});
    f.type("mood");
    f.panel->selectEntity(0); // forgets what is hidden as well
    f.filter->clear();
    QCOMPARE(f.panel->selectedEntity(), 0L);
}

void tst_project_tree_selection::filterKeepsWhatWasOpen()
{
    tree_fixture f;
    f.tree->expand(f.at({2}));
    f.tree->expand(f.at({2, 1}));
    const QStringList before = f.rows();
    QCOMPARE(before,
             (QStringList{"country", "customer", "tag", " owners", " twin", "  → tag", " lost", "empty"}));
    f.type("twin");
    QCOMPARE(f.rows(), (QStringList{"tag", " twin", "  → tag"}));
    f.type("customer_tag"); // opens others
    f.type("title");
    f.filter->clear();
    QCOMPARE(f.rows(), before);
}

void tst_project_tree_selection::closingWhileFiltered()
{
    tree_fixture f;
    f.tree->expand(f.at({2}));
    f.tree->expand(f.at({2, 1}));
    f.type("twin");
    f.tree->collapse(f.at({0, 0}));
    f.filter->clear();
    QCOMPARE(f.rows(), (QStringList{"country", "customer", "tag", " owners", " twin", " lost", "empty"}));
    f.type("twin");
    f.tree->collapse(f.at({0}));
    f.filter->clear();
    QCOMPARE(f.rows(), Closed);
}

void tst_project_tree_selection::selectionInAClosedRowStaysClosed()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.tree->expand(f.at({1, 4}));
    f.tree->setCurrentIndex(f.at({1, 3}));
    f.tree->collapse(f.at({1}));
    f.panel->setProject(treeShop());
    QVERIFY(!f.tree->isExpanded(f.at({1})));
    QCOMPARE(f.panel->selectedEntity(), 2L);
    f.panel->selectEntity(2);
    QVERIFY(!f.tree->isExpanded(f.at({1})));
    f.tree->expand(f.at({1}));
    QVERIFY(f.tree->isExpanded(f.at({1, 4}))); // as it was left
    QVERIFY(!f.tree->isExpanded(f.at({1, 3})));
}

void tst_project_tree_selection::reloadKeepsSelectionAndOpenRows()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.tree->expand(f.at({1, 4}));
    f.click({1, 4, 0});
    f.told();
    const std::shared_ptr<model::project> other = treeShop();
    other->getEntityById(2)->setName("client");
    f.panel->setProject(other);
    QCOMPARE(f.rows(), (QStringList{"country", "client", " id", " name", " place", " home", " tags",
                                    "  *→ tag", " cache", " state", " bare", "tag", "empty"}));
    QCOMPARE(f.told(), QList<long>());
    f.panel->setProject(other); // it changed in its own place
    QCOMPARE(f.panel->selectedEntity(), 2L);
    QTest::keyClick(f.tree, Qt::Key_Up);
    QCOMPARE(f.tree->currentIndex(), f.at({1, 4}));
}

void tst_project_tree_selection::reloadWithoutWhatWasSelected()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.click({1, 2});
    f.told();
    const std::shared_ptr<model::project> other = treeShop();
    other->getEntityById(2)->getListOfProperty(true, true, false)->removeByKey(23);
    f.panel->setProject(other);
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({1})));
    other->getListOfAllEntities()->removeByKey(2);
    f.panel->setProject(other);
    QCOMPARE(f.rows(), (QStringList{"country", "tag", "empty"}));
    QCOMPARE(f.panel->selectedEntity(), 0L);
    f.panel->setProject(treeShop());
    QCOMPARE(f.panel->selectedEntity(), 0L);
    QCOMPARE(f.told(), QList<long>());
}

void tst_project_tree_selection::expandingKeepsTheSelectedRowInView()
{
    tree_fixture f(manyEntities(500));
    f.panel->selectEntity(300);
    f.tree->setFocus();
    QTest::keyClick(f.tree, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(f.isInView(f.at({299})));
    QTest::keyClick(f.tree, Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(f.isInView(f.at({299})));
}

void tst_project_tree_selection::filterBeginsAtTheTop()
{
    tree_fixture f(manyEntities(500));
    f.tree->scrollToBottom();
    f.type("id");
    QVERIFY(f.isInView(f.at({0})));
    f.tree->scrollToBottom();
    f.panel->selectEntity(250);
    f.type("entity");
    QVERIFY(f.isInView(f.at({249})));
}

void tst_project_tree_selection::reloadKeepsThePlace()
{
    tree_fixture f(manyEntities(500));
    f.click({2});
    f.tree->scrollTo(f.at({200}), QTreeView::PositionAtTop);
    QCOMPARE(f.tree->indexAt({0, 0}).row(), 200);
    f.panel->setProject(manyEntities(400));
    QCOMPARE(f.tree->indexAt({0, 0}).row(), 200);
    f.panel->setProject(manyEntities(100));
    QVERIFY(f.isInView(f.at({2}))); // the place is gone, the selected row is not
}

void tst_project_tree_selection::reloadWhileFiltering()
{
    tree_fixture f;
    f.type("title");
    model_builder b;
    b.entity(8, "subtitle");
    b.entity(9, "other");
    f.panel->setProject(b.get());
    QCOMPARE(f.filter->text(), "title");
    QCOMPARE(f.rows(), QStringList{"subtitle"});
    QCOMPARE(f.counted(), "1 of 2 entities");
    f.panel->setProject(nullptr);
    QCOMPARE(f.filter->text(), "title");
    QTest::keyClicks(f.filter, "x");
    f.panel->setProject(b.get()); // with all of the text
    QCOMPARE(f.empty->text(), "Nothing matches 'titlex'");
}

void tst_project_tree_selection::closedProjectIsForgotten()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.tree->expand(f.at({1, 3}));
    f.click({1, 3});
    f.told();
    f.panel->setProject(nullptr);
    QCOMPARE(f.panel->selectedEntity(), 0L);
    f.panel->setProject(treeShop());
    QCOMPARE(f.rows(), Closed);
    f.tree->expand(f.at({1}));
    QVERIFY(!f.tree->isExpanded(f.at({1, 3})));
    QCOMPARE(f.told(), QList<long>());
}

QTEST_MAIN(tst_project_tree_selection)
#include "tst_project_tree_selection.moc"
