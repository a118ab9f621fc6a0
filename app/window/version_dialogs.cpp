#include "app/window/version_dialogs.h"

#include "app/shown_text.h"

#include "tools/table_column.h"
#include "tools/visible_text.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int MessageLimit = 1000; // characters
constexpr int DialogWidth = 480;
constexpr int ListHeight = 320;

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
        {QT_TR_NOOP("Description"), [](const version & v) { return tools::visibleText(v.message); }},
    };
    auto * const model = new QStandardItemModel(this);
    model->setHorizontalHeaderLabels(tools::titlesOf(columns, [](const char * title) { return tr(title); }));
    for (const version & v : versions) {
        const QString message = tools::visibleText(v.message);
        QList<QStandardItem *> row;
        for (const QString & text : tools::textsOf(columns, v)) {
            auto * const item = new QStandardItem(text);
            item->setEditable(false);
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
    : QDialog(parent)
{
    setObjectName(QStringLiteral("wnd_versions"));
    setWindowTitle(title());
    QStandardItemModel * const model = createModel(versions);
    auto * const list = new QTreeView;
    list->setObjectName(QStringLiteral("m_lstVersions"));
    list->setAccessibleName(tr("Versions of the project"));
    list->setModel(model);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->header()->setStretchLastSection(true);
    for (int column = 0; column < model->columnCount(); ++column) {
        list->resizeColumnToContents(column);
    }
    list->setCurrentIndex(model->index(0, 0));

    auto * const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto * const layout = new QVBoxLayout(this);
    layout->addWidget(plainLabel(
        versions.isEmpty()
            ? tr("'%1' has no version yet. \"Actions > Tag project state…\" makes one.").arg(projectName)
            : tr("Versions of '%1', the newest first:").arg(projectName)));
    layout->addWidget(list);
    layout->addWidget(buttons);
    list->setFocus();
    resize(DialogWidth, ListHeight);
}

} // namespace app
