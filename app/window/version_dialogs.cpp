#include "app/window/version_dialogs.h"

#include "app/shown_text.h"
#include "app/source.h"
#include "app/window/changes/changes_view.h"

#include "tools/table_column.h"
#include "zk/visible_text.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace app {

namespace {

constexpr int MessageLimit = 1000; // characters
constexpr int DialogWidth = 480;
constexpr int ListHeight = 320;
constexpr int NoteLines = 6;
const QSize WithChanges(900, 560);

QLabel * plainLabel(const QString & text)
{
    auto * const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

tag_dialog::tag_dialog(const QString & projectName, int number, QWidget * parent)
    : QDialog(parent), m_txtMessage(new QLineEdit)
{
    setObjectName(QStringLiteral("wnd_tag"));
    setWindowTitle(title());
    m_txtMessage->setObjectName(QStringLiteral("m_txtMessage"));
    m_txtMessage->setAccessibleName(tr("Description"));
    m_txtMessage->setPlaceholderText(tr("for example: first release"));
    m_txtMessage->setMaxLength(MessageLimit);
    auto * const label = new QLabel(tr("&Description:"));
    label->setBuddy(m_txtMessage);

    auto * const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Tag"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto * const layout = new QVBoxLayout(this);
    layout->addWidget(
        plainLabel(tr("This tags the current state of '%1', its model and its settings, as version %2. "
                      "Evolution scripts lead from one version to the next.")
                       .arg(projectName, QString::number(number))));
    layout->addWidget(label);
    layout->addWidget(m_txtMessage);
    layout->addWidget(buttons);
    m_txtMessage->setFocus();
    resize(DialogWidth, sizeHint().height());
}

void tag_dialog::showChanges(const diff_report & report, const QString & note)
{
    auto * const view = new changes_view;
    view->setReport(report);
    auto * const column = static_cast<QVBoxLayout *>(layout());
    constexpr int Place = 1; // below what the dialog is about
    column->insertWidget(Place, view, 1);
    if (!note.isEmpty()) {
        column->insertWidget(Place, plainLabel(note));
    }
    resize(WithChanges.boundedTo(screen()->availableSize()));
}

import_dialog::import_dialog(const QString & title, const QString & question, const diff_report & report,
                             QWidget * parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("wnd_import_changes"));
    setWindowTitle(title);
    auto * const view = new changes_view;
    view->setReport(report);
    auto * const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Import"));
    buttons->button(QDialogButtonBox::Cancel)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto * const layout = new QVBoxLayout(this);
    layout->addWidget(plainLabel(zk::visibleText(question)));
    layout->addWidget(view, 1);
    layout->addWidget(buttons);
    buttons->button(QDialogButtonBox::Cancel)->setFocus();
    resize(WithChanges.boundedTo(screen()->availableSize()));
}

void import_dialog::showNotes(const QStringList & notes)
{
    if (notes.isEmpty()) {
        return;
    }
    auto * const text = new QPlainTextEdit(zk::visibleText(notes.join(QLatin1Char('\n'))));
    text->setObjectName(QStringLiteral("m_txtNotes"));
    text->setAccessibleName(tr("What there is to know"));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setMaximumHeight(text->fontMetrics().lineSpacing() * NoteLines);
    auto * const column = static_cast<QVBoxLayout *>(layout());
    column->insertWidget(column->count() - 1, text);
}

QString tag_dialog::message() const
{
    return m_txtMessage->text().trimmed();
}

QStandardItemModel * versions_dialog::createModel(const QList<storage::history::version> & versions)
{
    using storage::history::version;
    static const tools::table_column<version> columns[] = {
        {QT_TR_NOOP("Version"), [](const version & v) { return QStringLiteral("v%1").arg(v.number); }},
        {QT_TR_NOOP("Tagged"),
         [](const version & v) { return QLocale().toString(v.created.toLocalTime(), QLocale::ShortFormat); }},
        {QT_TR_NOOP("Description"), [](const version & v) { return zk::visibleText(v.message); }},
    };
    auto * const model = new QStandardItemModel(this);
    model->setHorizontalHeaderLabels(tools::titlesOf(columns, [](const char * title) { return tr(title); }));
    for (const version & v : versions) {
        const QString message = zk::visibleText(v.message);
        QList<QStandardItem *> row;
        for (const QString & text : tools::textsOf(columns, v)) {
            auto * const item = new QStandardItem(text);
            item->setEditable(false);
            item->setData(v.number, Qt::UserRole);
            if (!message.isEmpty()) {
                item->setToolTip(plainToolTip(message));
            }
            row << item;
        }
        model->insertRow(0, row);
    }
    return model;
}

QString tag_dialog::title()
{
    return tr("Korvane - Tag project state");
}

QString versions_dialog::title()
{
    return tr("Korvane - Versions");
}

versions_dialog::versions_dialog(const QString & projectName,
                                 const QList<storage::history::version> & versions, QWidget * parent)
    : QDialog(parent), m_lstVersions(new QTreeView), m_btnCompare(new QPushButton(tr("&Compare")))
{
    setObjectName(QStringLiteral("wnd_versions"));
    setWindowTitle(title());
    auto * const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_btnCompare->setObjectName(QStringLiteral("m_btnCompare"));
    m_btnCompare->setToolTip(
        tr("Shows what changed between two selected versions, or since the one that is selected"));
    buttons->addButton(m_btnCompare, QDialogButtonBox::ActionRole);
    connect(m_btnCompare, &QPushButton::clicked, this, &QDialog::accept);
    createList(createModel(versions));
    auto * const layout = new QVBoxLayout(this);
    layout->addWidget(plainLabel(
        versions.isEmpty()
            ? tr("'%1' has no version yet. \"Actions > Tag project state…\" makes one.").arg(projectName)
            : tr("Versions of '%1', the newest first:").arg(projectName)));
    layout->addWidget(m_lstVersions);
    layout->addWidget(buttons);
    m_lstVersions->setFocus();
    resize(DialogWidth, ListHeight);
}

void versions_dialog::createList(QStandardItemModel * model)
{
    m_lstVersions->setObjectName(QStringLiteral("m_lstVersions"));
    m_lstVersions->setAccessibleName(tr("Versions of the project"));
    m_lstVersions->setModel(model);
    m_lstVersions->setRootIsDecorated(false);
    m_lstVersions->setUniformRowHeights(true);
    m_lstVersions->setAllColumnsShowFocus(true);
    m_lstVersions->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_lstVersions->header()->setStretchLastSection(true);
    for (int column = 0; column < model->columnCount(); ++column) {
        m_lstVersions->resizeColumnToContents(column);
    }
    const auto update = [this] {
        const qsizetype count = selected().size();
        m_btnCompare->setEnabled(count == 1 || count == 2);
    };
    connect(m_lstVersions->selectionModel(), &QItemSelectionModel::selectionChanged, this, update);
    m_lstVersions->setCurrentIndex(model->index(0, 0));
    update();
}

/// The numbers of the selected versions, the oldest first.
QList<int> versions_dialog::selected() const
{
    QList<int> numbers;
    const QModelIndexList rows = m_lstVersions->selectionModel()->selectedRows();
    for (const QModelIndex & row : rows) {
        numbers << row.data(Qt::UserRole).toInt();
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

int versions_dialog::from() const
{
    return selected().value(0);
}

int versions_dialog::to() const
{
    const QList<int> numbers = selected();
    return numbers.size() == 2 ? numbers.constLast() : Now;
}

} // namespace app
