#include "app/window/welcome_page.h"

#include "app/shown_text.h"

#include "zk/visible_text.h"

#include <QCommandLinkButton>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int ShownFiles = 5;
constexpr int PageWidth = 520;
constexpr double TitleScale = 1.8;

QLabel * heading(const QString & text, double scale)
{
    auto * const label = new QLabel(text);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(true);
    label->setFont(font);
    return label;
}

/// The button draws either text with mnemonics; what it says to others has none.
QCommandLinkButton * commandButton(const QString & name, const QString & text, const QString & about)
{
    auto * const button = new QCommandLinkButton(withoutMnemonic(text), withoutMnemonic(about));
    button->setObjectName(name);
    button->setAccessibleName(text);
    button->setAccessibleDescription(about);
    return button;
}

} // namespace

welcome_page::welcome_page(QWidget * parent) : QWidget(parent), m_pRecent(new QVBoxLayout)
{
    auto * const column = new QVBoxLayout;
    column->addStretch(1);
    column->addWidget(heading(tr("Korvane"), TitleScale));
    column->addWidget(new QLabel(tr("Migration scripts from a class model")));
    column->addSpacing(12);
    addWays(*column);
    column->addLayout(m_pRecent);
    column->addStretch(2);

    auto * const page = new QWidget;
    page->setLayout(column);
    page->setMaximumWidth(PageWidth);
    auto * const row = new QHBoxLayout(this);
    row->addStretch(1);
    row->addWidget(page, 4);
    row->addStretch(1);
}

void welcome_page::addWays(QVBoxLayout & column)
{
    const auto add = [this, &column](const char * name, const QString & text, const QString & about,
                                     void (welcome_page::*wanted)()) {
        auto * const button = commandButton(QLatin1String(name), text, about);
        connect(button, &QAbstractButton::clicked, this, wanted);
        column.addWidget(button);
    };
    add("m_btnOpen", tr("Open a project…"),
        tr("A project file (*.korv). You can drop one on this window as well."),
        &welcome_page::openRequested);
    add("m_btnImport", tr("Import a model…"),
        tr("Creates a project from a model in text form (*.json), or replaces a project's model."),
        &welcome_page::importRequested);
    add("m_btnImportDatabase", tr("Import from a database…"),
        tr("The tables of a SQLite file, of a PostgreSQL, MariaDB or MySQL server, or of a script become the "
           "model."),
        &welcome_page::databaseRequested);
    add("m_btnNew", tr("Begin a new project…"),
        tr("Writes a small model as text, to be edited and imported again, and the project of it."),
        &welcome_page::newRequested);
    add("m_btnSample", tr("Try the sample…"),
        tr("A copy of a project with three versions and changes since."), &welcome_page::sampleRequested);
    add("m_btnManual", tr("Read the manual"),
        tr("Ten minutes from a model to migration scripts, in your browser."),
        &welcome_page::manualRequested);
}

void welcome_page::setRecentFiles(const QStringList & files)
{
    while (QLayoutItem * const item = m_pRecent->takeAt(0)) {
        if (QWidget * const widget = item->widget()) {
            // It may be the very button whose click led here.
            widget->hide();
            widget->deleteLater();
        }
        delete item;
    }
    if (files.isEmpty()) {
        return;
    }
    m_pRecent->addSpacing(8);
    m_pRecent->addWidget(heading(tr("Recent projects"), 1.0));
    for (const QString & file : files.mid(0, ShownFiles)) {
        const QFileInfo info(file);
        auto * const button = commandButton(QStringLiteral("m_btnRecent"), zk::visibleText(info.fileName()),
                                            zk::visibleText(QDir::toNativeSeparators(info.absolutePath())));
        connect(button, &QAbstractButton::clicked, this, [this, file] { Q_EMIT fileRequested(file); });
        m_pRecent->addWidget(button);
    }
}

} // namespace app
