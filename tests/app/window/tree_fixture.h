#pragma once

#include "tree_shop.h"

#include "app/window/tree/project_tree.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <QVBoxLayout>

namespace support {

/// A window with the panel in it, as the person sees it.
struct tree_fixture
{
    explicit tree_fixture(const std::shared_ptr<model::project> & project = treeShop())
    {
        panel->setProject(project);
        tree->setIconSize({16, 16});
        auto * const layout = new QVBoxLayout(&window);
        layout->addWidget(panel);
        window.resize(600, 500);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    [[nodiscard]] QModelIndex at(const QList<int> & path, int column = 0) const
    {
        QModelIndex index;
        for (const int row : path) {
            index = tree->model()->index(row, 0, index);
        }
        return index.siblingAtColumn(column);
    }
    /// What can be scrolled to: the names, a blank a level, and "*" before the one that is selected.
    [[nodiscard]] QStringList rows(const QModelIndex & parent = {}, const QString & indent = {}) const
    {
        QStringList result;
        for (int row = 0; row < tree->model()->rowCount(parent); ++row) {
            const QModelIndex index = tree->model()->index(row, 0, parent);
            result << indent + (tree->selectionModel()->isSelected(index) ? QStringLiteral("*") : QString()) +
                          index.data().toString();
            if (tree->isExpanded(index)) {
                result += rows(index, indent + QLatin1Char(' '));
            }
        }
        return result;
    }
    void click(const QList<int> & path, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               int column = 0) const
    {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, modifiers,
                          tree->visualRect(at(path, column)).center());
    }
    void doubleClick(const QList<int> & path) const
    {
        click(path);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(at(path)).center());
    }
    /// Types into the field and waits until the tree follows.
    void type(const QString & text) const
    {
        filter->setFocus();
        filter->selectAll();
        QTest::keyClicks(filter, text);
        QSignalSpy reset(tree->model(), &QAbstractItemModel::modelReset);
        QVERIFY(reset.wait());
    }
    [[nodiscard]] QString counted() const { return count->text(); }
    /// The ids that were told, since the last call.
    QList<long> told()
    {
        QList<long> ids;
        for (const QList<QVariant> & arguments : std::as_const(selected)) {
            ids << arguments.constFirst().value<long>();
        }
        selected.clear();
        return ids;
    }
    [[nodiscard]] QAction * action(const QString & name) const { return tree->findChild<QAction *>(name); }
    [[nodiscard]] bool isInView(const QModelIndex & index) const
    {
        return tree->viewport()->rect().contains(tree->visualRect(index));
    }

    QWidget window;
    app::project_tree * panel = new app::project_tree;
    QLineEdit * filter = panel->findChild<QLineEdit *>("m_txtFilter");
    QLabel * count = panel->findChild<QLabel *>("m_lblCount");
    QLabel * empty = panel->findChild<QLabel *>("m_lblEmpty");
    QTreeView * tree = panel->findChild<QTreeView *>("m_treModel");
    QSignalSpy selected{panel, &app::project_tree::entitySelected};
    QAbstractItemModelTester tester{tree->model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

inline const QStringList Closed = {"country", "customer", "tag", "empty"};

inline std::shared_ptr<model::project> manyEntities(int count)
{
    model_builder b;
    for (long i = 1; i <= count; ++i) {
        b.entity(i, QStringLiteral("entity_%1").arg(i)).identifier(10000 + i, "id", "long");
    }
    return b.get();
}

} // namespace support
