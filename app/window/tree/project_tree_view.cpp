#include "app/window/tree/project_tree_view.h"

#include "app/shown_text.h"

#include "model/entity.h"
#include "model/relationship.h"
#include "tools/colours.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

namespace app {

namespace {

constexpr qsizetype ShownLength = 300; // characters, more than a column is wide

/// On the highlight an icon's own colours may not be seen: it takes the colour of the text.
QIcon selectedIcon(const QStyleOptionViewItem & option)
{
    const qreal scale = option.widget ? option.widget->devicePixelRatioF() : 1;
    QPixmap pixmap = option.icon.pixmap(option.decorationSize, scale);
    const auto group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), option.palette.color(group, QPalette::HighlightedText));
    painter.end();
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected);
    return icon;
}

} // namespace

/// Draws one line a row, in a quieter colour what is not in the database.
class row_delegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QString displayText(const QVariant & value, const QLocale &) const override
    {
        // Measuring more of it only takes time.
        return shortened(value.toString(), ShownLength).replace(QLatin1Char('\n'), QLatin1Char(' '));
    }

    void setWords(const QStringList & words) { m_words = words; }

    void paint(QPainter * painter, const QStyleOptionViewItem & option,
               const QModelIndex & index) const override
    {
        QStyleOptionViewItem shown = option;
        initStyleOption(&shown, index);
        if (!(shown.state & QStyle::State_Selected)) {
            paintMarks(*painter, shown);
        }
        QStyledItemDelegate::paint(painter, option, index);
    }

protected:
    void initStyleOption(QStyleOptionViewItem * option, const QModelIndex & index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(project_tree_model::quiet_role).toBool()) {
            // Between the two colours the text stays legible in light and dark palettes alike.
            option->palette.setColor(QPalette::Text,
                                     tools::between(option->palette.color(QPalette::Text),
                                                    option->palette.color(QPalette::Base), 0.4));
        }
        if (option->state & QStyle::State_Selected && !option->icon.isNull()) {
            option->icon = selectedIcon(*option);
        }
    }

private:
    /// A ground of another colour behind each place of a word.
    void paintMarks(QPainter & painter, const QStyleOptionViewItem & option) const
    {
        const QStyle & style = option.widget ? *option.widget->style() : *QApplication::style();
        const QRect area = style.subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
        const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
        const QString text = option.text.toCaseFolded();
        if (text.size() != option.text.size()) {
            return; // places in both are not the same
        }
        const bool isDark = option.palette.color(QPalette::Base).lightness() < HalfLightness;
        for (const QString & word : m_words) {
            for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + word.size())) {
                const int left = option.fontMetrics.horizontalAdvance(option.text.left(at));
                const int right = option.fontMetrics.horizontalAdvance(option.text.left(at + word.size()));
                const QRect mark(area.left() + margin + left, area.top(), right - left, area.height());
                painter.fillRect(mark & area, isDark ? QColor(0x5c, 0x4a, 0x00) : QColor(0xff, 0xe6, 0x8f));
            }
        }
    }

    static constexpr int HalfLightness = 128;
    QStringList m_words;
};

project_tree_view::project_tree_view(project_tree_model & model, QWidget * parent)
    : QTreeView(parent), m_model(model), m_pDelegate(new row_delegate(this))
{
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setIndentation(fontMetrics().height()); // less than usual leaves more of a narrow panel to the names
    setItemDelegate(m_pDelegate);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setModel(&model);
    header()->setTextElideMode(Qt::ElideRight);
    createActions();
    connect(header(), &QHeaderView::sectionResized, this, [this](int section) {
        // The last one follows the view by itself.
        m_bSharingWidth = m_bSharingWidth && (m_bResizing || section == project_tree_text::column_count - 1);
    });
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex & i) { rememberOpen(i, true); });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex & i) { rememberOpen(i, false); });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &project_tree_view::rememberSelection);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &project_tree_view::updateActions);
    connect(this, &QWidget::customContextMenuRequested, this, &project_tree_view::showContextMenu);
    connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex & index) {
        if (m_model.placeOf(index).isRelation) {
            goToTarget();
        }
    });
}

void project_tree_view::setMarkedWords(const QStringList & words)
{
    m_pDelegate->setWords(words);
    viewport()->update();
}

project_tree_view::~project_tree_view() = default;

QAction * project_tree_view::createAction(const QString & name, const QString & text,
                                          const QList<QKeySequence> & keys,
                                          void (project_tree_view::*command)())
{
    auto * const action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, command);
    addAction(action);
    return action;
}

void project_tree_view::resizeEvent(QResizeEvent * event)
{
    QTreeView::resizeEvent(event);
    shareWidth();
}

/// All columns are seen, however narrow the view is.
void project_tree_view::shareWidth()
{
    if (m_bSharingWidth) {
        const QScopedValueRollback resizing(m_bResizing, true);
        const QList<int> widths = project_tree_text::widths(viewport()->width());
        for (int column = 0; column < widths.size(); ++column) {
            header()->resizeSection(column, widths[column]);
        }
    }
}

void project_tree_view::createActions()
{
    m_actCopyName = createAction(QStringLiteral("m_actCopyName"), tr("&Copy name"),
                                 QKeySequence::keyBindings(QKeySequence::Copy), &project_tree_view::copyName);
    m_actGoToTarget = createAction(QStringLiteral("m_actGoToTarget"), tr("&Go to target"),
                                   {Qt::Key_Return, Qt::Key_Enter}, &project_tree_view::goToTarget);
    m_actExpandAll =
        createAction(QStringLiteral("m_actExpandAll"), tr("&Expand all"),
                     {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Right)}, &project_tree_view::openAll);
    m_actCollapseAll =
        createAction(QStringLiteral("m_actCollapseAll"), tr("C&ollapse all"),
                     {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Left)}, &project_tree_view::closeAll);
    updateActions();
}

void project_tree_view::updateActions()
{
    const std::shared_ptr<model::relationship> relation = m_model.relationAt(currentIndex());
    m_actCopyName->setEnabled(currentIndex().isValid());
    m_actGoToTarget->setEnabled(relation && relation->getEntityTarget());
}

void project_tree_view::showContextMenu(const QPoint & at)
{
    auto * const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("m_mnuRow"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions({m_actCopyName, m_actGoToTarget});
    menu->addSeparator();
    menu->addActions({m_actExpandAll, m_actCollapseAll});
    menu->popup(viewport()->mapToGlobal(at));
}

void project_tree_view::copyName()
{
    const std::shared_ptr<model::relationship> relation = m_model.relationAt(currentIndex());
    const QModelIndex name = currentIndex().siblingAtColumn(project_tree_text::name_column);
    QApplication::clipboard()->setText(m_model.placeOf(name).isRelation && relation
                                           ? project_tree_text::targetName(*relation)
                                           : name.data().toString());
}

void project_tree_view::goToTarget()
{
    const std::shared_ptr<model::relationship> relation = m_model.relationAt(currentIndex());
    if (const std::shared_ptr<model::entity> target = relation ? relation->getEntityTarget() : nullptr) {
        Q_EMIT targetWanted(target->getId());
    }
}

void project_tree_view::openAll()
{
    expandAll();
    goTo(currentIndex());
}

void project_tree_view::closeAll()
{
    collapseAll();
    goTo(currentIndex());
}

void project_tree_view::setSelected(const place & wanted)
{
    m_selected = wanted;
    const QModelIndex index = m_model.indexOf(wanted);
    selectRow(index);
    goTo(index);
}

project_tree_view::place project_tree_view::top() const
{
    return m_model.placeOf(indexAt(QPoint(0, 0)));
}

void project_tree_view::restoreRows()
{
    openRows();
    scrollToTop();
    setSelected(m_selected);
}

void project_tree_view::forgetRows()
{
    m_selected = {};
    m_lstOpen.clear();
    m_lstOpenProperties.clear();
}

void project_tree_view::enter()
{
    setFocus(Qt::OtherFocusReason);
    if (!selectionModel()->hasSelection()) {
        setCurrentIndex(m_model.index(0, 0));
    }
}

void project_tree_view::rememberSelection()
{
    if (m_bRestoring) {
        return;
    }
    const QModelIndexList rows = selectionModel()->selectedRows();
    m_selected = rows.isEmpty() ? place() : m_model.placeOf(rows.constFirst());
    Q_EMIT entitySelected(m_selected.entity);
}

void project_tree_view::rememberOpen(const QModelIndex & index, bool isOpen)
{
    if (m_bRestoring || m_model.rowCount(index) == 0) {
        return;
    }
    const place row = m_model.placeOf(index);
    QSet<long> & open = row.property == 0 ? m_lstOpen : m_lstOpenProperties[row.entity];
    const long id = row.property == 0 ? row.entity : row.property;
    if (isOpen) {
        open.insert(id);
    } else {
        open.remove(id);
    }
}

void project_tree_view::openRows()
{
    const QScopedValueRollback restoring(m_bRestoring, true);
    for (int row = 0; row < m_model.rowCount(); ++row) {
        const QModelIndex entity = m_model.index(row, 0);
        if (m_model.isMatchBelow(entity) || m_lstOpen.contains(m_model.placeOf(entity).entity)) {
            expand(entity);
        }
        openProperties(entity);
    }
}

void project_tree_view::openProperties(const QModelIndex & entity)
{
    const QSet<long> open = m_lstOpenProperties.value(m_model.placeOf(entity).entity);
    if (open.isEmpty() && !m_model.isMatchBelow(entity)) {
        return;
    }
    for (int row = 0; row < m_model.rowCount(entity); ++row) {
        const QModelIndex property = m_model.index(row, 0, entity);
        if (m_model.isMatchBelow(property) ||
            (!open.isEmpty() && open.contains(m_model.placeOf(property).property))) {
            expand(property);
        }
    }
}

/// Selects as the program does: without a signal, and without opening what is closed above the row.
void project_tree_view::selectRow(const QModelIndex & index)
{
    const QScopedValueRollback restoring(m_bRestoring, true);
    setAutoScroll(false);
    if (index.isValid()) {
        setCurrentIndex(index);
    } else {
        clearSelection();
    }
    setAutoScroll(true);
    updateActions();
}

void project_tree_view::goTo(const QModelIndex & index)
{
    QModelIndex shown = index;
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
        if (!isExpanded(above)) {
            shown = above;
        }
    }
    const bool isSeen = viewport()->rect().contains(visualRect(shown).center());
    scrollTo(shown, isSeen ? EnsureVisible : PositionAtCenter); // nothing for no row
}

} // namespace app
