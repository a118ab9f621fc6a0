#include "app/window/export/message_panel.h"

#include "app/window/export/message_delegate.h"
#include "app/window/export/message_filter.h"
#include "app/window/export/message_list.h"

#include "plugin/base_interface.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedLayout>
#include <QTime>
#include <QVBoxLayout>

#include <algorithm>

namespace app {

namespace {

constexpr int IconSide = 16;
constexpr int UsualCount = 99'999;
/// Stands out from light and dark windows alike, and white is legible on it.
constexpr QColor FailedBar(0xb3, 0x26, 0x1e);

qint64 percent(int done, int total)
{
    return total > 0 ? qint64(done) * 100 / total : 0;
}

QString copyAllText()
{
    return message_panel::tr("Copy all");
}

QString clearText()
{
    return message_panel::tr("Clear");
}

QString outcomeText(bool isFailed)
{
    return isFailed ? message_panel::tr("Failed") : message_panel::tr("Done");
}

QPushButton * newButton(const QString & text, const char * name, const QString & accessibleName)
{
    auto * const button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(accessibleName);
    return button;
}

QString countsText(int messages, int errors)
{
    if (messages == 0 && errors == 0) {
        return message_panel::tr("No messages");
    }
    const QLocale locale;
    const QString first = messages == 1 ? message_panel::tr("1 message")
                                        : message_panel::tr("%1 messages").arg(locale.toString(messages));
    const QString second = errors == 0   ? message_panel::tr("no errors")
                           : errors == 1 ? message_panel::tr("1 error")
                                         : message_panel::tr("%1 errors").arg(locale.toString(errors));
    return message_panel::tr("%1, %2", "messages, errors").arg(first, second);
}

/// The text of `rows` as it is to be pasted, one line or more each.
QString joined(const QModelIndexList & rows)
{
    QStringList lines;
    lines.reserve(rows.size());
    for (const QModelIndex & row : rows) {
        lines.append(row.data(MessageCopyRole).toString());
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

message_panel::message_panel(QWidget * parent)
    : QWidget(parent), m_pList(new message_list(this)), m_pFilter(new message_filter(this))
{
    createList();
    auto * const layout = new QVBoxLayout(this);
    layout->addLayout(createBar());
    layout->addWidget(m_lstMessages);
    createActions();
    connect(m_pList, &QAbstractItemModel::rowsInserted, this, &message_panel::showCounts);
    connect(m_pList, &QAbstractItemModel::modelReset, this, &message_panel::showCounts);
    showCounts();
    showOutcome();
}

void message_panel::createList()
{
    m_lstMessages = new QListView;
    m_lstMessages->setObjectName(QStringLiteral("m_lstMessages"));
    m_lstMessages->setAccessibleName(tr("Messages"));
    m_lstMessages->setUniformItemSizes(true);
    m_lstMessages->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_lstMessages->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_lstMessages->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_lstMessages->setTextElideMode(Qt::ElideRight);
    m_lstMessages->setIconSize(QSize(IconSide, IconSide));
    // By rows, the last one would not lie at the bottom, and what follows the end would jump.
    m_lstMessages->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_pDelegate = new message_delegate(m_lstMessages);
    m_lstMessages->setItemDelegate(m_pDelegate);
    keepPlaceWhileDropping();
    m_lstMessages->setModel(m_pFilter);
    m_lstMessages->installEventFilter(this);
    connect(m_lstMessages, &QListView::activated, this, [this](const QModelIndex & row) {
        if (const QVariant target = row.data(MessageTargetRole); target.isValid()) {
            Q_EMIT targetWanted(target);
        }
    });
    keepEndInView();
}

QBoxLayout * message_panel::createBar()
{
    m_lblCounts = new QLabel;
    m_lblCounts->setObjectName(QStringLiteral("m_lblCounts"));
    // Room for what an export usually tells, or the progress bar would move with every other count.
    m_lblCounts->setMinimumWidth(m_lblCounts->fontMetrics().horizontalAdvance(countsText(UsualCount, 0)));
    m_barProgress = new QProgressBar;
    m_barProgress->setObjectName(QStringLiteral("m_barProgress"));
    m_barProgress->setAccessibleName(tr("Progress"));
    m_lblDone = new QLabel(outcomeText(false));
    m_lblDone->setObjectName(QStringLiteral("m_lblDone"));
    m_outcome = new QStackedLayout; // one place for both, or the row would jump when a run begins
    m_outcome->addWidget(new QWidget);
    m_outcome->addWidget(m_barProgress);
    m_outcome->addWidget(m_lblDone);
    m_chkErrorsOnly = new QCheckBox(tr("Errors only"));
    m_chkErrorsOnly->setObjectName(QStringLiteral("m_chkErrorsOnly"));
    m_chkErrorsOnly->setAccessibleName(tr("Show errors only"));
    QPushButton * const copy = newButton(copyAllText(), "m_btnCopyAll", tr("Copy all messages shown"));
    QPushButton * const clear = newButton(clearText(), "m_btnClear", tr("Clear the messages"));
    connect(m_chkErrorsOnly, &QCheckBox::toggled, m_pFilter, &message_filter::setErrorsOnly);
    connect(copy, &QPushButton::clicked, this, &message_panel::copyAll);
    connect(clear, &QPushButton::clicked, this, &message_panel::clear);

    m_btnCancel = newButton(tr("Cancel"), "m_btnCancel", tr("Cancel the export"));
    m_btnCancel->setToolTip(tr("End the export before its next statement"));
    m_btnCancel->hide();
    connect(m_btnCancel, &QPushButton::clicked, this, [this] {
        m_btnCancel->setEnabled(false);
        Q_EMIT cancelRequested();
    });
    auto * const bar = new QHBoxLayout;
    bar->addWidget(m_lblCounts);
    bar->addLayout(m_outcome, 1);
    bar->addWidget(m_btnCancel);
    bar->addWidget(m_chkErrorsOnly);
    bar->addWidget(copy);
    bar->addWidget(clear);
    return bar;
}

void message_panel::createActions()
{
    m_lstMessages->setContextMenuPolicy(Qt::ActionsContextMenu);
    // The key is only named here. As a shortcut it would rival with the one of a window around the panel.
    QAction * const copy = addListAction("m_actCopy", tr("Copy"), &message_panel::copySelected);
    copy->setText(copy->text() + QLatin1Char('\t') +
                  QKeySequence(QKeySequence::Copy).toString(QKeySequence::NativeText));
    addListAction("m_actCopyAll", copyAllText(), &message_panel::copyAll);
    auto * const errors = new QAction(m_chkErrorsOnly->text(), this);
    errors->setObjectName(QStringLiteral("m_actErrorsOnly"));
    errors->setCheckable(true);
    connect(errors, &QAction::toggled, m_chkErrorsOnly, &QCheckBox::setChecked);
    connect(m_chkErrorsOnly, &QCheckBox::toggled, errors, &QAction::setChecked);
    m_lstMessages->addAction(errors);
    addListAction("m_actClear", clearText(), &message_panel::clear);
}

QAction * message_panel::addListAction(const char * name, const QString & text, void (message_panel::*slot)())
{
    auto * const action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    connect(action, &QAction::triggered, this, slot);
    m_lstMessages->addAction(action);
    return action;
}

/// The end stays in view until the person scrolls up, and again when the person scrolls down to it.
void message_panel::keepEndInView()
{
    QScrollBar * const bar = m_lstMessages->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { m_bFollow = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_bFollow) {
            bar->setValue(maximum);
        }
    });
}

/// Puts the filter on the list so that lines dropped above do not move what the person who scrolled up reads.
void message_panel::keepPlaceWhileDropping()
{
    // Before the filter hears of it: an index that is made later would not move with its row.
    connect(m_pList, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] {
        m_topRow = m_bFollow ? QModelIndex() : m_lstMessages->indexAt(QPoint(0, 0));
        m_iTopOffset = m_lstMessages->visualRect(m_topRow).top();
    });
    m_pFilter->setSourceModel(m_pList);
    connect(m_pList, &QAbstractItemModel::rowsRemoved, this, [this] {
        if (m_topRow.isValid()) {
            m_lstMessages->scrollTo(m_topRow, QAbstractItemView::PositionAtTop);
            QScrollBar * const bar = m_lstMessages->verticalScrollBar();
            bar->setValue(bar->value() - m_iTopOffset);
        }
        m_topRow = QModelIndex();
    });
}

void message_panel::begin(const QString & title)
{
    m_state = run_state::going;
    m_iMessages = 0;
    m_iErrors = 0;
    add(QStringLiteral("%1  %2").arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), title),
        message_kind::heading);
    m_pList->flush();
    setProgress(0, 0);
    showOutcome();
}

void message_panel::addMessage(const QString & text, int type)
{
    ++m_iMessages;
    add(text, type == plugin::ErrorMessage     ? message_kind::error
              : type == plugin::WarningMessage ? message_kind::warning
                                               : message_kind::progress);
}

void message_panel::addFinding(const QString & text, message_kind kind, const QVariant & target)
{
    ++m_iMessages;
    add(text, kind, target);
}

void message_panel::add(const QString & text, message_kind kind, const QVariant & target)
{
    if (kind == message_kind::error) {
        ++m_iErrors;
    }
    m_pList->add(text, kind, target);
}

void message_panel::setProgress(int done, int total)
{
    const int most = std::max(0, total);
    const int value = std::clamp(done, 0, most);
    // The bar draws itself at once whenever it is told something new; a percent is all that can be seen.
    const bool isSeen =
        m_barProgress->maximum() != most || percent(value, most) != percent(m_barProgress->value(), most);
    if (isSeen) {
        m_barProgress->setRange(0, most);
        m_barProgress->setValue(value);
    }
}

void message_panel::setCancellable(bool isCancellable)
{
    m_btnCancel->setEnabled(true);
    m_btnCancel->setVisible(isCancellable);
}

void message_panel::end(bool ok, const QString & text)
{
    setCancellable(false);
    m_state = ok ? run_state::done : run_state::failed;
    const QString line = !text.isEmpty() ? text : outcomeText(!ok);
    add(line, ok ? message_kind::closing : message_kind::error);
    m_pList->flush();
    if (ok || m_barProgress->maximum() == 0) {
        setProgress(1, 1);
    }
    showOutcome();
}

void message_panel::clear()
{
    m_iMessages = 0;
    m_iErrors = 0;
    m_pList->clear();
    if (m_state != run_state::going) {
        m_state = run_state::none;
        showOutcome();
    }
}

/// Gives the progress bar the look of what became of the run.
void message_panel::showOutcome()
{
    const bool isFailed = m_state == run_state::failed;
    m_outcome->setCurrentIndex(m_state == run_state::none ? 0 : m_state == run_state::done ? 2 : 1);
    m_barProgress->setFormat(isFailed ? outcomeText(true) : QStringLiteral("%p %"));
    QPalette own;
    if (isFailed) {
        own.setColor(QPalette::Highlight, FailedBar);
        own.setColor(QPalette::HighlightedText, Qt::white);
    }
    m_barProgress->setPalette(own);
}

void message_panel::showCounts()
{
    m_lblCounts->setText(countsText(m_iMessages, m_iErrors));
}

void message_panel::copySelected()
{
    QModelIndexList rows = m_lstMessages->selectionModel()->selectedRows();
    if (rows.isEmpty()) {
        return;
    }
    std::sort(rows.begin(), rows.end()); // the selection is in the order of the clicks
    QGuiApplication::clipboard()->setText(joined(rows));
}

void message_panel::copyAll()
{
    m_pList->flush();
    QModelIndexList rows;
    rows.reserve(m_pFilter->rowCount());
    for (int row = 0; row < m_pFilter->rowCount(); ++row) {
        rows.append(m_pFilter->index(row, 0));
    }
    QGuiApplication::clipboard()->setText(joined(rows));
}

bool message_panel::eventFilter(QObject * watched, QEvent * event)
{
    if (watched == m_lstMessages &&
        (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Copy)) {
        // The list by itself copies one row, as it is shown; an action of the window might copy something
        // else.
        if (event->type() == QEvent::KeyPress) {
            copySelected();
        }
        event->accept();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void message_panel::changeEvent(QEvent * event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_barProgress) {
        showOutcome();
    } else if (event->type() == QEvent::StyleChange && m_pDelegate) {
        m_pDelegate->takeIcons(*style());
    }
}

} // namespace app
