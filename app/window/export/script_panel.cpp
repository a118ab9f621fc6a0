#include "app/window/export/script_panel.h"

#include "app/shown_text.h"
#include "app/window/export/find_bar.h"
#include "app/window/export/script_view.h"

#include "zk/visible_text.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <memory>

namespace app {

namespace {

constexpr int EntriesInView = 20;

/// What tells the script from the others of its export: "v1 to v2" of "shop_mysql_db_schema_v1_to_v2.sql".
QString shortName(const QString & file)
{
    static const QRegularExpression form(QStringLiteral("^.+_db_schema_(.+)\\.sql$"));
    const QString name = QFileInfo(file).fileName();
    const QRegularExpressionMatch match = form.match(name);
    return match.hasMatch() ? match.captured(1).replace(QLatin1Char('_'), QLatin1Char(' ')) : name;
}

} // namespace

script_panel::script_panel(QWidget * parent) : QWidget(parent)
{
    m_tabScripts = new QTabWidget;
    m_tabScripts->setObjectName(QStringLiteral("m_tabScripts"));
    m_tabScripts->setAccessibleName(tr("Scripts"));
    m_tabScripts->setDocumentMode(true);
    // The list of names chooses: it shows a hundred scripts as well as three.
    m_tabScripts->tabBar()->hide();
    // The keyboard would stay with what is hidden.
    m_tabScripts->setFocusProxy(nullptr);
    m_tabScripts->setFocusPolicy(Qt::NoFocus);
    m_tabScripts->tabBar()->setFocusPolicy(Qt::NoFocus);
    auto * const empty = new QLabel(tr("The scripts of an export appear here"));
    empty->setObjectName(QStringLiteral("m_lblEmpty"));
    empty->setAlignment(Qt::AlignCenter);
    m_stkContent = new QStackedWidget;
    m_stkContent->addWidget(empty);
    m_stkContent->addWidget(m_tabScripts);

    auto * const layout = new QVBoxLayout(this);
    layout->addLayout(createBar());
    layout->addWidget(m_stkContent, 1);
    createFindBar();
    layout->addWidget(m_findBar);
    connect(m_tabScripts, &QTabWidget::currentChanged, this, &script_panel::showFront);
    connect(m_cboScript, &QComboBox::currentIndexChanged, m_tabScripts, &QTabWidget::setCurrentIndex);
    setScripts({});
}

QBoxLayout * script_panel::createBar()
{
    m_cboScript = new QComboBox;
    m_cboScript->setObjectName(QStringLiteral("m_cboScript"));
    m_cboScript->setAccessibleName(tr("Script"));
    m_cboScript->setMaxVisibleItems(EntriesInView);
    m_cboScript->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_chkWrap = new QCheckBox(tr("Wrap lines"));
    m_chkWrap->setObjectName(QStringLiteral("m_chkWrap"));
    m_chkWrap->setAccessibleName(tr("Wrap long lines"));
    connect(m_chkWrap, &QCheckBox::toggled, this, [this](bool wrapped) {
        for (script_view * const view : m_tabScripts->findChildren<script_view *>()) {
            view->setWrapped(wrapped);
        }
    });
    auto * const label = new QLabel(tr("Script:"));
    label->setBuddy(m_cboScript);

    auto * const bar = new QHBoxLayout;
    bar->addWidget(label);
    bar->addWidget(m_cboScript);
    bar->addStretch();
    bar->addWidget(m_chkWrap);
    m_btnCopyScript = addButton(bar, "m_btnCopyScript", tr("Copy script"), tr("Copy the whole script"));
    m_btnOpenFolder =
        addButton(bar, "m_btnOpenFolder", tr("Open folder"), tr("Open the folder where the script is"));
    connect(m_btnCopyScript, &QPushButton::clicked, this, [this] {
        if (const script_view * const view = front()) {
            QGuiApplication::clipboard()->setText(view->text());
        }
    });
    connect(m_btnOpenFolder, &QPushButton::clicked, this, [this] {
        const QString file = m_lstFiles.value(m_tabScripts->currentIndex());
        Q_EMIT openFolderRequested(QFileInfo(file).absolutePath());
    });
    return bar;
}

QPushButton * script_panel::addButton(QBoxLayout * bar, const char * name, const QString & text,
                                      const QString & tip)
{
    auto * const button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(tip);
    button->setToolTip(tip);
    bar->addWidget(button);
    return button;
}

void script_panel::createFindBar()
{
    m_findBar = new find_bar;
    connect(m_findBar, &find_bar::changed, this, [this] {
        findInFront();
        findAgain(&script_view::findHere);
    });
    connect(m_findBar, &find_bar::nextRequested, this, &script_panel::findNext);
    connect(m_findBar, &find_bar::previousRequested, this, &script_panel::findPrevious);
    connect(m_findBar, &find_bar::closed, this, &script_panel::closeFindBar);
}

void script_panel::setScripts(const QStringList & absoluteFiles)
{
    m_lstFiles = absoluteFiles;
    {
        // Tabs come in front while others go; they are not to be read for that.
        const QSignalBlocker quietTabs(m_tabScripts);
        const QSignalBlocker quietNames(m_cboScript);
        while (m_tabScripts->count() > 0) {
            const std::unique_ptr<QWidget> page(m_tabScripts->widget(0));
            m_tabScripts->removeTab(0);
        }
        m_cboScript->clear();
        for (const QString & file : absoluteFiles) {
            auto * const page = new QWidget;
            (new QVBoxLayout(page))->setContentsMargins(0, 0, 0, 0);
            const QString name = zk::visibleText(shortName(file));
            const QString path = zk::visibleText(QDir::toNativeSeparators(file));
            const int index = m_tabScripts->addTab(page, withoutMnemonic(name));
            const QString tip = plainToolTipLine(path);
            m_tabScripts->setTabToolTip(index, tip);
            m_cboScript->addItem(name);
            m_cboScript->setItemData(index, tip, Qt::ToolTipRole);
        }
        m_tabScripts->setCurrentIndex(0);
    }
    const bool hasScripts = !absoluteFiles.isEmpty();
    m_stkContent->setCurrentIndex(hasScripts ? 1 : 0);
    m_cboScript->setEnabled(hasScripts);
    m_btnOpenFolder->setEnabled(hasScripts);
    if (!hasScripts) {
        m_findBar->hide();
    }
    showFront();
}

bool script_panel::showLine(const QString & fileName, int line)
{
    const auto found =
        std::find_if(m_lstFiles.cbegin(), m_lstFiles.cend(),
                     [&fileName](const QString & file) { return QFileInfo(file).fileName() == fileName; });
    if (found == m_lstFiles.cend()) {
        return false;
    }
    m_tabScripts->setCurrentIndex(static_cast<int>(found - m_lstFiles.cbegin()));
    front()->showLine(line);
    return true;
}

script_view * script_panel::front()
{
    QWidget * const page = m_tabScripts->currentWidget();
    if (!page) {
        return nullptr;
    }
    auto * view = page->findChild<script_view *>();
    if (!view) {
        view = new script_view(m_lstFiles.value(m_tabScripts->currentIndex()));
        view->setWrapped(m_chkWrap->isChecked());
        page->layout()->addWidget(view);
        view->placeInTabOrder(m_btnOpenFolder);
        view->show(); // a layout shows what comes late only when events are handled again
    }
    return view;
}

/// Shows the script in front, if anybody can see it.
void script_panel::showFront()
{
    {
        const QSignalBlocker quiet(m_cboScript);
        m_cboScript->setCurrentIndex(m_tabScripts->currentIndex());
    }
    const script_view * const view = isVisible() ? front() : nullptr;
    m_btnCopyScript->setEnabled(view && view->isWhole());
    if (view && !m_findBar->isHidden()) {
        findInFront();
    }
}

void script_panel::showEvent(QShowEvent * event)
{
    QWidget::showEvent(event);
    showFront();
}

/// Goes `step` tabs on, round the end.
void script_panel::switchBy(int step)
{
    if (const int count = m_tabScripts->count(); count > 0) {
        m_tabScripts->setCurrentIndex((m_tabScripts->currentIndex() + step + count) % count);
    }
}

void script_panel::find()
{
    if (script_view * const view = front()) {
        m_findBar->open(view->selectedText());
        findInFront();
        findAgain(&script_view::findHere);
    }
}

void script_panel::findNext()
{
    findAgain(&script_view::findNext);
}

void script_panel::findPrevious()
{
    findAgain(&script_view::findPrevious);
}

/// Finds what the search field says in the script in front.
void script_panel::findInFront()
{
    if (script_view * const view = front()) {
        view->findAll(m_findBar->text(), m_findBar->sensitivity());
        m_findBar->tell(view->currentMatch(), view->matchCount());
    }
}

/// Goes to another match; a search that was closed is begun again.
void script_panel::findAgain(void (script_view::*go)())
{
    script_view * const view = front();
    if (!view) {
        return;
    }
    if (m_findBar->isHidden()) {
        if (m_findBar->text().isEmpty()) {
            find();
            return;
        }
        m_findBar->show();
        findInFront();
    }
    (view->*go)();
    m_findBar->tell(view->currentMatch(), view->matchCount());
}

void script_panel::closeFindBar()
{
    for (script_view * const view : m_tabScripts->findChildren<script_view *>()) {
        view->findAll({}, Qt::CaseInsensitive);
    }
    if (script_view * const view = front()) {
        view->focusText();
    }
}

void script_panel::keyPressEvent(QKeyEvent * event)
{
    // No shortcuts: they would rival with those of a window around the panel, and neither would work.
    if (event->matches(QKeySequence::Find)) {
        find();
    } else if (event->matches(QKeySequence::FindNext)) {
        findNext();
    } else if (event->matches(QKeySequence::FindPrevious)) {
        findPrevious();
    } else if (event->key() == Qt::Key_Escape && !m_findBar->isHidden()) {
        m_findBar->dismiss();
    } else if (event->key() == Qt::Key_PageUp && event->modifiers() == Qt::ControlModifier) {
        switchBy(-1);
    } else if (event->key() == Qt::Key_PageDown && event->modifiers() == Qt::ControlModifier) {
        switchBy(1);
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace app
