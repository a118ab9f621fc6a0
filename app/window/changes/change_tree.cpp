#include "app/window/changes/change_tree.h"

#include "app/diff_outline.h"
#include "app/output.h"
#include "app/shown_text.h"
#include "app/window/export/message_delegate.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QStandardItemModel>

#include <vector>

namespace app {

namespace {

constexpr int MostOpened = 2'000; ///< rows of a tree that is shown with all of them open

enum row_role : int
{
    FirstLineRole = MessageTargetRole + 1,
    LineCountRole
};

QStandardItem * createRow(const QString & text, message_kind kind, const finding_target & target)
{
    auto * const item = new QStandardItem(oneLine(text));
    item->setEditable(false);
    item->setData(static_cast<int>(kind), MessageKindRole);
    item->setData(QVariant::fromValue(target), MessageTargetRole);
    item->setToolTip(plainToolTip(text));
    return item;
}

statement_lines linesOf(const outline_line & line)
{
    if (line.statements.empty()) {
        return {};
    }
    const check::statement_place & first = line.statements.front()->place;
    return {first.line, first.lines};
}

void setLines(QStandardItem & item, const statement_lines & lines)
{
    item.setData(lines.first, FirstLineRole);
    item.setData(lines.count, LineCountRole);
}

} // namespace

change_tree::change_tree(QWidget * parent) : QTreeView(parent), m_pModel(new QStandardItemModel(this))
{
    setObjectName(QStringLiteral("m_treChanges"));
    setAccessibleName(tr("Changes"));
    setModel(m_pModel);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setItemDelegate(new message_delegate(this));
    connect(this, &QAbstractItemView::activated, this, [this](const QModelIndex & row) {
        Q_EMIT rowWanted(row.data(MessageTargetRole).value<finding_target>());
    });
}

void change_tree::setReport(const diff_report & report)
{
    m_pModel->clear();
    std::vector<QStandardItem *> parents; // the last row of each depth
    const std::vector<outline_line> lines = outlineOf(report);
    for (const outline_line & line : lines) {
        const statement_lines statements = linesOf(line);
        finding_target target{QString(), statements.first, line.entity, line.property};
        if (statements.first > 0) {
            target.script = line.statements.front()->place.script;
        }
        const message_kind kind = line.depth == 0 ? message_kind::heading : message_kind::progress;
        QStandardItem * const row = createRow(line.text, kind, target);
        setLines(*row, statements);
        parents.resize(static_cast<std::size_t>(line.depth));
        QStandardItem * const parent = parents.empty() ? m_pModel->invisibleRootItem() : parents.back();
        parent->appendRow(row);
        parents.push_back(row);
        addFindings(*row, line);
    }
    if (lines.size() < MostOpened) {
        expandAll();
    }
}

void change_tree::addFindings(QStandardItem & to, const outline_line & line)
{
    for (const check::finding * const finding : line.findings) {
        QStandardItem * const row = createRow(QStringLiteral("%1: %2").arg(finding->code, finding->message),
                                              kindOf(*finding), targetOf(*finding));
        row->setToolTip(
            plainToolTip(QStringList{finding->message, finding->why, finding->way.text}.join(u'\n')));
        if (finding->statement) {
            setLines(*row, {finding->statement->line, finding->statement->lines});
        }
        to.appendRow(row);
    }
}

void change_tree::currentChanged(const QModelIndex & current, const QModelIndex & previous)
{
    QTreeView::currentChanged(current, previous);
    reach(current);
}

void change_tree::mousePressEvent(QMouseEvent * event)
{
    const QModelIndex before = currentIndex();
    QTreeView::mousePressEvent(event);
    // A click on the row where the keyboard is already leads there as well.
    if (before.isValid() && before == currentIndex()) {
        reach(before);
    }
}

void change_tree::reach(const QModelIndex & row)
{
    if (row.isValid()) {
        Q_EMIT rowReached(row.data(MessageTargetRole).value<finding_target>(),
                          {row.data(FirstLineRole).toInt(), row.data(LineCountRole).toInt()});
    }
}

void change_tree::changeEvent(QEvent * event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        if (auto * const delegate = qobject_cast<message_delegate *>(itemDelegate())) {
            delegate->takeIcons(*style());
        }
    }
}

} // namespace app
