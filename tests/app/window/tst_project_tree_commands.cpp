// The commands on the rows of the tree, by key, by mouse and by menu.

#include "tree_fixture.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>

using support::tree_fixture;
using support::treeShop;

class tst_project_tree_commands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goesToTheTarget_data();
    void goesToTheTarget();
    void goesToAHiddenTarget();
    void goesFromTheProperty();
    void targetIsTheEntityItself();
    void missingTarget();
    void doubleClickOpens();
    void copiesTheName();
    void contextMenu();
    void contextMenuByKeyboard();
    void expandsAndCollapsesAll();
    void keyboardOnly();
};

void tst_project_tree_commands::goesToTheTarget_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter") << Qt::Key_Enter;
    QTest::newRow("double click") << Qt::Key_unknown;
}

void tst_project_tree_commands::goesToTheTarget()
{
    QFETCH(Qt::Key, key);
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.tree->expand(f.at({1, 3}));
    if (key == Qt::Key_unknown) {
        f.doubleClick({1, 3, 0});
    } else {
        f.click({1, 3, 0});
        QTest::keyClick(f.tree, key);
    }
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({0})));
    QCOMPARE(f.tree->currentIndex(), f.at({0}));
    QCOMPARE(f.told(), (QList<long>{2, 1}));
    QVERIFY(!f.action("m_actGoToTarget")->isEnabled());
}

void tst_project_tree_commands::goesToAHiddenTarget()
{
    tree_fixture f;
    f.type("customer_tag");
    f.click({0, 0, 0});
    f.told();
    QTest::keyClick(f.tree, Qt::Key_Return);
    QCOMPARE(f.filter->text(), "");
    QCOMPARE(f.rows(), (QStringList{"country", "customer", "*tag", "empty"}));
    QCOMPARE(f.told(), QList<long>{3});
}

void tst_project_tree_commands::goesFromTheProperty()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    f.click({1, 1});
    QVERIFY(!f.action("m_actGoToTarget")->isEnabled());
    QTest::keyClick(f.tree, Qt::Key_Return);
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({1, 1})));
    f.click({1, 3});
    QVERIFY(f.action("m_actGoToTarget")->isEnabled());
    QTest::keyClick(f.tree, Qt::Key_Return);
    QCOMPARE(f.told(), (QList<long>{2, 2, 1}));
}

void tst_project_tree_commands::targetIsTheEntityItself()
{
    tree_fixture f;
    f.tree->expand(f.at({2}));
    f.tree->expand(f.at({2, 1}));
    f.doubleClick({2, 1, 0});
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({2})));
    QCOMPARE(f.told(), (QList<long>{3, 3}));
}

void tst_project_tree_commands::missingTarget()
{
    tree_fixture f;
    f.tree->expand(f.at({2}));
    f.tree->expand(f.at({2, 2}));
    f.doubleClick({2, 2, 0});
    QTest::keyClick(f.tree, Qt::Key_Return);
    QVERIFY(!f.action("m_actGoToTarget")->isEnabled());
    QVERIFY(f.tree->selectionModel()->isSelected(f.at({2, 2, 0})));
    QCOMPARE(f.told(), QList<long>{3});
}

void tst_project_tree_commands::doubleClickOpens()
{
    tree_fixture f;
    f.doubleClick({1});
    QVERIFY(f.tree->isExpanded(f.at({1})));
    f.doubleClick({1, 3});
    QVERIFY(f.tree->isExpanded(f.at({1, 3})));
    QCOMPARE(f.panel->selectedEntity(), 2L); // it did not go to the target
}

void tst_project_tree_commands::copiesTheName()
{
    tree_fixture f;
    QClipboard * const clipboard = QApplication::clipboard();
    QVERIFY(!f.action("m_actCopyName")->isEnabled());
    f.click({0}, Qt::NoModifier, 2);
    QTest::keyClick(f.tree, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard->text(), "country");
    f.tree->expand(f.at({1}));
    f.tree->expand(f.at({1, 3}));
    f.click({1, 3}, Qt::NoModifier, 1);
    QTest::keyClick(f.tree, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard->text(), "home");
    f.click({1, 3, 0});
    QTest::keyClick(f.tree, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard->text(), "country");
    f.panel->setProject(nullptr);
    QVERIFY(!f.action("m_actCopyName")->isEnabled());
}

void tst_project_tree_commands::contextMenu()
{
    tree_fixture f;
    f.tree->expand(f.at({1}));
    const QPoint place = f.tree->visualRect(f.at({1, 3})).center();
    QTest::mouseClick(f.tree->viewport(), Qt::RightButton, {}, place);
    QCOMPARE(f.told(), QList<long>{2});
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, f.tree->viewport()->mapToGlobal(place));
    QApplication::sendEvent(f.tree->viewport(), &event);
    auto * const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QStringList texts;
    for (const QAction * const action : menu->actions()) {
        texts << action->text() + QLatin1Char('|') + action->shortcut().toString();
    }
    QCOMPARE(texts, (QStringList{"&Copy name|Ctrl+C", "&Go to target|Return", "|",
                                 "&Expand all|Ctrl+Shift+Right", "C&ollapse all|Ctrl+Shift+Left"}));
    QTest::keyClick(menu, Qt::Key_G);
    QCOMPARE(f.panel->selectedEntity(), 1L);
    QTRY_VERIFY(!f.tree->findChild<QMenu *>()); // each opening makes one
}

void tst_project_tree_commands::contextMenuByKeyboard()
{
    tree_fixture f;
    f.panel->selectEntity(3);
    f.tree->setFocus();
    const QPoint place = f.tree->viewport()->mapToGlobal(f.tree->visualRect(f.at({2})).center());
    QContextMenuEvent event(QContextMenuEvent::Keyboard, f.tree->viewport()->mapFromGlobal(place), place);
    QApplication::sendEvent(f.tree->viewport(), &event);
    auto * const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QTest::keyClick(menu, Qt::Key_E);
    QVERIFY(f.tree->isExpanded(f.at({2})));
}

void tst_project_tree_commands::expandsAndCollapsesAll()
{
    tree_fixture f;
    f.click({2});
    f.told();
    QTest::keyClick(f.tree, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(f.rows().size(), 24);
    f.panel->setProject(treeShop());
    QCOMPARE(f.rows().size(), 24);
    f.type("title");
    f.filter->clear();
    QCOMPARE(f.rows().size(), 24);
    f.tree->setFocus();
    QTest::keyClick(f.tree, Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(f.rows(), (QStringList{"country", "customer", "*tag", "empty"}));
    f.panel->setProject(treeShop());
    QCOMPARE(f.rows(), (QStringList{"country", "customer", "*tag", "empty"}));
    QCOMPARE(f.told(), QList<long>());
}

void tst_project_tree_commands::keyboardOnly()
{
    tree_fixture f;
    f.panel->focusFilter();
    QTest::keyClicks(f.filter, "home");
    QTest::keyClick(f.filter, Qt::Key_Down);
    QTest::keyClick(f.tree, Qt::Key_Down);
    QTest::keyClick(f.tree, Qt::Key_Down);
    QTest::keyClick(f.tree, Qt::Key_Down);
    QTest::keyClick(f.tree, Qt::Key_Down);
    QCOMPARE(f.tree->currentIndex(), f.at({1, 0}));
    QTest::keyClick(f.tree, Qt::Key_Right);
    QTest::keyClick(f.tree, Qt::Key_Right);
    QCOMPARE(f.tree->currentIndex(), f.at({1, 0, 0}));
    QTest::keyClick(f.tree, Qt::Key_Return);
    QCOMPARE(f.tree->currentIndex(), f.at({0}));
    QVERIFY(f.tree->hasFocus());
    QCOMPARE(f.told(), (QList<long>{1, 1, 1, 2, 2, 2, 1}));
    QTest::keyClicks(f.tree, "emp"); // finds rows by their beginning
    QTest::keyClick(f.tree, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(f.tree, Qt::Key_Backtab);
    QVERIFY(f.filter->hasFocus());
}

QTEST_MAIN(tst_project_tree_commands)
#include "tst_project_tree_commands.moc"
