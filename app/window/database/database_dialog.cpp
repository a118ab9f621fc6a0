#include "app/window/database/database_dialog.h"

#include "app/window/window_dialogs.h"

#include "tools/held_dialog.h"
#include "tools/wait_cursor.h"
#include "zk/visible_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace app {

namespace {

const QSize DialogSize(640, 560);

/// A kind of place that tables are taken from.
struct place_kind
{
    const char * label;
    QLatin1String begin;    ///< of what the request says, before the place
    QLatin1String database; ///< that a script runs on; empty for a database
    const char * example;   ///< of a place; null for a file
    bool hasSchemas;
};

// "ann@localhost/shop" is what a URL says after its scheme.
constexpr place_kind Kinds[] = {
    {QT_TRANSLATE_NOOP("app::database_dialog", "SQLite file"), QLatin1String("sqlite:"), {}, nullptr, false},
    {QT_TRANSLATE_NOOP("app::database_dialog", "PostgreSQL"),
     QLatin1String("postgresql://"),
     {},
     "postgresql://ann@localhost/shop",
     true},
    {QT_TRANSLATE_NOOP("app::database_dialog", "MariaDB"),
     QLatin1String("mariadb://"),
     {},
     "mariadb://ann@localhost/shop",
     false},
    {QT_TRANSLATE_NOOP("app::database_dialog", "MySQL"),
     QLatin1String("mysql://"),
     {},
     "mysql://ann@localhost/shop",
     false},
    {QT_TRANSLATE_NOOP("app::database_dialog", "SQL script for SQLite"), QLatin1String("ddl:"),
     QLatin1String("sqlite"), nullptr, false},
    {QT_TRANSLATE_NOOP("app::database_dialog", "SQL script for PostgreSQL"), QLatin1String("ddl:"),
     QLatin1String("postgresql"), nullptr, false},
    {QT_TRANSLATE_NOOP("app::database_dialog", "SQL script for MariaDB"), QLatin1String("ddl:"),
     QLatin1String("mariadb"), nullptr, false},
};

const place_kind & kindOf(const QComboBox & of)
{
    return Kinds[static_cast<std::size_t>(std::max(of.currentIndex(), 0))];
}

QLineEdit * named(QLineEdit * edit, const char * name)
{
    edit->setObjectName(QLatin1String(name));
    return edit;
}

} // namespace

database_dialog::database_dialog(const QString & folder, QWidget * parent)
    : QDialog(parent), m_sFolder(folder), m_cmbKind(new QComboBox),
      m_txtPlace(named(new QLineEdit, "m_txtPlace")), m_btnBrowse(new QPushButton(tr("&Browse…"))),
      m_txtPassword(named(new QLineEdit, "m_txtPassword")), m_txtSchema(named(new QLineEdit, "m_txtSchema")),
      m_btnRead(new QPushButton(tr("&Connect"))), m_lblState(new QLabel),
      m_chkAll(new QCheckBox(tr("&All tables"))), m_lstTables(new QListWidget),
      m_chkLinks(new QCheckBox(tr("Tables that only &link two others become many-to-many relationships"))),
      m_btnNext(nullptr)
{
    setObjectName(QStringLiteral("wnd_database"));
    setWindowTitle(title());
    auto * const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_btnNext = buttons->button(QDialogButtonBox::Ok);
    m_btnNext->setText(tr("&Next…"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    createTables();
    m_lblState->setObjectName(QStringLiteral("m_lblState"));
    m_lblState->setTextFormat(Qt::PlainText);
    m_lblState->setWordWrap(true);
    m_lblState->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto * const layout = new QVBoxLayout(this);
    layout->addLayout(createPlace());
    layout->addWidget(m_lblState);
    layout->addWidget(m_chkAll);
    layout->addWidget(m_lstTables, 1);
    layout->addWidget(m_chkLinks);
    layout->addWidget(buttons);
    kindChanged();
    resize(DialogSize.boundedTo(screen()->availableSize()));
}

QString database_dialog::title()
{
    return tr("Korvane - Import from database");
}

QFormLayout * database_dialog::createPlace()
{
    m_cmbKind->setObjectName(QStringLiteral("m_cmbKind"));
    for (const place_kind & each : Kinds) {
        m_cmbKind->addItem(tr(each.label));
    }
    m_btnBrowse->setObjectName(QStringLiteral("m_btnBrowse"));
    m_btnRead->setObjectName(QStringLiteral("m_btnConnect"));
    m_btnRead->setToolTip(tr("Reads which tables there are; the database stays as it is"));
    m_txtPassword->setEchoMode(QLineEdit::Password);
    m_txtSchema->setPlaceholderText(QStringLiteral("public"));
    auto * const place = new QHBoxLayout;
    place->addWidget(m_txtPlace, 1);
    place->addWidget(m_btnBrowse);
    auto * const form = new QFormLayout;
    const auto addRow = [form](const QString & text, QWidget * field, auto * row) {
        auto * const label = new QLabel(text);
        label->setBuddy(field);
        form->addRow(label, row);
    };
    addRow(tr("&Kind:"), m_cmbKind, m_cmbKind);
    addRow(tr("&File or URL:"), m_txtPlace, place);
    addRow(tr("&Password:"), m_txtPassword, m_txtPassword);
    addRow(tr("&Schema:"), m_txtSchema, m_txtSchema);
    form->addRow(QString(), m_btnRead);
    connect(m_cmbKind, &QComboBox::currentIndexChanged, this, &database_dialog::kindChanged);
    connect(m_btnBrowse, &QPushButton::clicked, this, &database_dialog::choosePlace);
    connect(m_btnRead, &QPushButton::clicked, this, &database_dialog::read);
    for (const QLineEdit * const each : {m_txtPlace, m_txtPassword, m_txtSchema}) {
        connect(each, &QLineEdit::textChanged, this, &database_dialog::forget);
    }
    return form;
}

void database_dialog::createTables()
{
    m_chkAll->setObjectName(QStringLiteral("m_chkAll"));
    m_lstTables->setObjectName(QStringLiteral("m_lstTables"));
    m_lstTables->setAccessibleName(tr("Tables of the database"));
    m_lstTables->setUniformItemSizes(true);
    m_chkLinks->setObjectName(QStringLiteral("m_chkLinks"));
    m_chkLinks->setChecked(true);
    connect(m_chkAll, &QCheckBox::clicked, this, [this](bool isAll) {
        m_chkAll->setTristate(false);
        const QSignalBlocker quiet(m_lstTables);
        for (int row = 0; row < m_lstTables->count(); ++row) {
            m_lstTables->item(row)->setCheckState(isAll ? Qt::Checked : Qt::Unchecked);
        }
        updateButtons();
    });
    connect(m_lstTables, &QListWidget::itemChanged, this, &database_dialog::updateAll);
}

void database_dialog::kindChanged()
{
    const place_kind & kind = kindOf(*m_cmbKind);
    const bool isFile = kind.example == nullptr;
    m_btnBrowse->setEnabled(isFile);
    m_txtPassword->setEnabled(!isFile);
    m_txtSchema->setEnabled(kind.hasSchemas);
    m_txtPlace->setPlaceholderText(isFile ? QString() : QLatin1String(kind.example));
    forget();
}

void database_dialog::choosePlace()
{
    const tools::held_dialog<QFileDialog> dialog(this, title(), m_sFolder);
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (const QString file = chosenFile(dialog, QStringLiteral("wnd_database_file")); !file.isEmpty()) {
        m_txtPlace->setText(QDir::toNativeSeparators(file));
        read();
    }
}

void database_dialog::forget()
{
    m_held = {};
    m_lblState->clear();
    showTables();
}

schema_request database_dialog::request() const
{
    const place_kind & kind = kindOf(*m_cmbKind);
    const QString text = m_txtPlace->text().trimmed();
    const bool isUrl = kind.example != nullptr && isSchemaSource(text);
    schema_request asked;
    asked.source = isUrl ? text : kind.begin + QDir::fromNativeSeparators(text);
    asked.database = kind.database;
    asked.schema = kind.hasSchemas ? m_txtSchema->text().trimmed() : QString();
    asked.password = kind.example != nullptr ? m_txtPassword->text() : QString();
    return asked;
}

void database_dialog::read()
{
    const schema_request asked = request();
    forget();
    held_schema held;
    QString why = whyNoSchema(asked);
    if (why.isEmpty()) {
        const tools::wait_cursor cursor;
        const zk::ZkBool result = readSchema(asked, held);
        why = result ? QString() : result.getDesc();
    }
    if (!why.isEmpty()) {
        m_lblState->setText(zk::visibleText(why));
        m_txtPlace->setFocus();
        return;
    }
    m_held = std::move(held);
    const QString count = QLocale().toString(static_cast<qlonglong>(m_held.found.tables.size()));
    m_lblState->setText(m_held.found.tables.size() == 1
                            ? tr("%1 can be read: 1 table").arg(zk::visibleText(m_held.name))
                            : tr("%1 can be read: %2 tables").arg(zk::visibleText(m_held.name), count));
    showTables();
    m_lstTables->setFocus();
}

void database_dialog::showTables()
{
    const QSignalBlocker quiet(m_lstTables);
    m_lstTables->clear();
    for (const auto & [key, table] : m_held.found.tables) {
        auto * const item = new QListWidgetItem(zk::visibleText(table.name), m_lstTables);
        item->setData(Qt::UserRole, table.name);
        item->setCheckState(Qt::Checked);
    }
    m_lstTables->setCurrentRow(0);
    updateAll();
}

/// Says of all what each says.
void database_dialog::updateAll()
{
    const qsizetype chosen = tables().size();
    m_chkAll->setCheckState(chosen == 0                     ? Qt::Unchecked
                            : chosen < m_lstTables->count() ? Qt::PartiallyChecked
                                                            : Qt::Checked);
    updateButtons();
}

void database_dialog::updateButtons()
{
    const bool isRead = m_lstTables->count() > 0;
    m_btnRead->setEnabled(!m_txtPlace->text().trimmed().isEmpty());
    m_chkAll->setEnabled(isRead);
    m_lstTables->setEnabled(isRead);
    m_btnNext->setEnabled(!tables().isEmpty());
    // Return does what comes next.
    m_btnRead->setDefault(!isRead);
    m_btnNext->setDefault(isRead);
}

QStringList database_dialog::tables() const
{
    QStringList chosen;
    for (int row = 0; row < m_lstTables->count(); ++row) {
        const QListWidgetItem & item = *m_lstTables->item(row);
        if (item.checkState() == Qt::Checked) {
            chosen << item.data(Qt::UserRole).toString();
        }
    }
    return chosen;
}

bool database_dialog::tellsLinks() const
{
    return m_chkLinks->isChecked();
}

} // namespace app
