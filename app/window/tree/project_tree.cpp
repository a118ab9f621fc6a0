#include "app/window/tree/project_tree.h"

#include "app/shown_text.h"
#include "app/window/tree/project_tree_filter.h"
#include "app/window/tree/project_tree_model.h"
#include "app/window/tree/project_tree_view.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QStackedWidget>
#include <QVBoxLayout>

/// The linker leaves out what nothing refers to, as the resources of a static library.
static void loadTreeIcons()
{
    Q_INIT_RESOURCE(tree);
}

namespace app {

namespace {

constexpr int FilterDelay = 120;      // milliseconds: more than between two keys of somebody who types
constexpr qsizetype ShownLength = 80; // characters

QString number(int n)
{
    return QLocale().toString(n);
}

} // namespace

project_tree::project_tree(QWidget * parent) : QWidget(parent)
{
    loadTreeIcons();
    setAccessibleName(tr("Model"));
    m_pModel = new project_tree_model(this);
    createFilter();
    createPages();
    auto * const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_txtFilter);
    layout->addWidget(m_lblCount);
    layout->addWidget(m_pages, 1);
    showState();
}

project_tree::~project_tree() = default;

void project_tree::createFilter()
{
    m_txtFilter = new QLineEdit;
    m_txtFilter->setObjectName(QStringLiteral("m_txtFilter"));
    m_txtFilter->setAccessibleName(tr("Filter"));
    m_txtFilter->setPlaceholderText(tr("Filter"));
    m_txtFilter->setToolTip(tr("Show only what has all of these words in its name, type, values, table or "
                               "columns, or in those of its entity"));
    m_txtFilter->setClearButtonEnabled(true);
    m_txtFilter->installEventFilter(this);
    m_lblCount = new QLabel;
    m_lblCount->setObjectName(QStringLiteral("m_lblCount"));
    m_lblCount->setIndent(4); // as the text of the field above
    m_filterTimer.setSingleShot(true);
    m_filterTimer.setInterval(FilterDelay);
    connect(&m_filterTimer, &QTimer::timeout, this, &project_tree::filterNow);
    connect(m_txtFilter, &QLineEdit::textChanged, this, &project_tree::filterSoon);
}

void project_tree::createPages()
{
    m_treModel = new project_tree_view(*m_pModel);
    m_treModel->setObjectName(QStringLiteral("m_treModel"));
    m_treModel->setAccessibleName(tr("Entities, properties and relationships"));
    connect(m_treModel, &project_tree_view::entitySelected, this, &project_tree::entitySelected);
    connect(m_treModel, &project_tree_view::targetWanted, this, [this](long id) {
        goTo({id, 0, false});
        Q_EMIT entitySelected(id);
    });
    m_lblEmpty = new QLabel;
    m_lblEmpty->setObjectName(QStringLiteral("m_lblEmpty"));
    m_lblEmpty->setTextFormat(Qt::PlainText);
    m_lblEmpty->setAlignment(Qt::AlignCenter);
    m_lblEmpty->setWordWrap(true);
    m_lblEmpty->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored); // no reason to grow the panel
    m_pages = new QStackedWidget;
    m_pages->addWidget(m_treModel);
    m_pages->addWidget(m_lblEmpty);
}

void project_tree::setProject(const std::shared_ptr<model::project> & project)
{
    const place top = m_treModel->top();
    m_pModel->setProject(project, m_txtFilter->text());
    showState();
    if (!project) {
        m_treModel->forgetRows();
    } else if (!m_pModel->hasEntity(m_treModel->selected().entity)) {
        m_treModel->setSelected({});
    }
    m_treModel->restoreRows();
    m_treModel->scrollTo(m_pModel->indexOf(top), QTreeView::PositionAtTop);
}

void project_tree::selectEntity(long id)
{
    if (m_filterTimer.isActive()) {
        filterNow();
    }
    if (m_treModel->selected().entity == id) {
        goTo(m_treModel->selected());
    } else {
        goTo({m_pModel->hasEntity(id) ? id : 0, 0, false});
    }
}

void project_tree::selectProperty(long entity, long property)
{
    selectEntity(entity);
    if (const place wanted{entity, property, false}; m_pModel->indexOf(wanted).isValid()) {
        m_treModel->expand(m_pModel->indexOf({entity, 0, false}));
        goTo(wanted);
    }
}

long project_tree::selectedEntity() const
{
    const place selected = m_treModel->selected();
    return m_pModel->indexOf(selected).isValid() ? selected.entity : 0;
}

void project_tree::focusFilter()
{
    m_txtFilter->setFocus(Qt::ShortcutFocusReason);
    m_txtFilter->selectAll();
}

void project_tree::goTo(const place & row)
{
    if (row.entity != 0 && !m_pModel->indexOf(row).isValid()) {
        m_txtFilter->clear();
    }
    m_treModel->setSelected(row);
}

bool project_tree::eventFilter(QObject * watched, QEvent * event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched != m_txtFilter || !isKey) {
        return QWidget::eventFilter(watched, event);
    }
    const auto * const key = static_cast<QKeyEvent *>(event);
    if (event->type() == QEvent::KeyPress) {
        return handleFilterKey(key->key());
    }
    const bool clears = key->key() == Qt::Key_Escape && !m_txtFilter->text().isEmpty();
    if (clears) {
        event->accept(); // before any shortcut of the window
    }
    return clears;
}

bool project_tree::handleFilterKey(int key)
{
    switch (key) {
    case Qt::Key_Escape:
        if (m_txtFilter->text().isEmpty()) {
            return false;
        }
        m_txtFilter->clear();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        filterNow();
        if (m_pModel->rowCount() > 0) {
            m_treModel->enter();
        }
        return true;
    default:
        return false;
    }
}

void project_tree::filterSoon()
{
    if (project_tree_filter::isFilter(m_txtFilter->text())) {
        m_filterTimer.start();
    } else {
        filterNow(); // there is no next word to wait for
    }
}

void project_tree::filterNow()
{
    m_treModel->setMarkedWords(project_tree_filter::wordsOf(m_txtFilter->text()));
    m_filterTimer.stop();
    const bool isReset = m_pModel->setFilter(m_txtFilter->text());
    showState();
    if (isReset) {
        m_treModel->restoreRows();
    }
}

void project_tree::showState()
{
    showCount();
    if (!m_pModel->hasProject()) {
        m_lblEmpty->setText(tr("No project is open"));
    } else if (m_pModel->entityCount() == 0) {
        m_lblEmpty->setText(tr("The project has no entities"));
    } else {
        const QString text = m_txtFilter->text().simplified();
        m_lblEmpty->setText(tr("Nothing matches '%1'").arg(shortened(text, ShownLength)));
    }
    const bool isEmpty = m_pModel->rowCount() == 0;
    m_pages->setCurrentWidget(isEmpty ? static_cast<QWidget *>(m_lblEmpty) : m_treModel);
}

void project_tree::showCount()
{
    const int shown = m_pModel->rowCount();
    const int all = m_pModel->entityCount();
    if (m_pModel->isFiltered()) {
        m_lblCount->setText(all == 1 ? tr("%1 of 1 entity").arg(number(shown))
                                     : tr("%1 of %2 entities").arg(number(shown), number(all)));
    } else {
        m_lblCount->setText(all == 1 ? tr("1 entity") : tr("%1 entities").arg(number(all)));
    }
    m_lblCount->setVisible(m_pModel->hasProject());
}

} // namespace app
