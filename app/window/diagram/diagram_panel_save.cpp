#include "app/window/diagram/diagram_panel.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>

namespace app {

namespace {

const QString Svg = QStringLiteral("svg");
const QString Png = QStringLiteral("png");

QString suffixOf(const QString & file)
{
    return QFileInfo(file).suffix().toLower();
}

/// The project's name as the name of a file.
QString fileNameOf(const QString & project)
{
    QString name = project;
    for (QChar & c : name) {
        if (c.unicode() < 0x20 || QStringLiteral("/\\:*?\"<>|").contains(c)) {
            c = QLatin1Char('_');
        }
    }
    return name.isEmpty() ? QStringLiteral("diagram") : name;
}

QMessageBox * newBox(QMessageBox::Icon icon, const QString & text, QMessageBox::StandardButtons buttons,
                     QWidget * parent)
{
    auto * const box = new QMessageBox(icon, diagram_panel::tr("Korvane - Diagram"), text, buttons, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    return box;
}

} // namespace

void diagram_panel::askForFile()
{
    // Not run() of its own: whatever happens to the project meanwhile may happen.
    auto * const dialog = new QFileDialog(this, tr("Save diagram"), m_sFolder);
    const QString pngFilter = tr("PNG picture (*.png)");
    dialog->setObjectName(QStringLiteral("m_dlgSaveDiagram"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilters({tr("SVG picture (*.svg)"), pngFilter});
    dialog->setDefaultSuffix(Svg);
    dialog->selectFile(fileNameOf(m_sProject) + QLatin1Char('.') + Svg);
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog, pngFilter](const QString & filter) {
        dialog->setDefaultSuffix(filter == pngFilter ? Png : Svg);
    });
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, dialog](const QString & file) { saveChosen(file, dialog->defaultSuffix()); });
    dialog->open();
}

void diagram_panel::saveChosen(const QString & file, const QString & suffix)
{
    m_sFolder = QFileInfo(file).absolutePath();
    if (suffixOf(file) == Svg || suffixOf(file) == Png) {
        savePicture(file);
        return;
    }
    // The dialog takes "shop.v2" for a name with a suffix, and has not asked about the whole name.
    const QString whole = file + QLatin1Char('.') + suffix;
    if (!QFileInfo::exists(whole)) {
        savePicture(whole);
        return;
    }
    QMessageBox * const box = newBox(
        QMessageBox::Question, tr("%1 already exists. Replace it?").arg(QDir::toNativeSeparators(whole)),
        QMessageBox::Yes | QMessageBox::No, this);
    box->setDefaultButton(QMessageBox::No);
    connect(box, &QMessageBox::finished, this, [this, whole](int answer) {
        if (answer == QMessageBox::Yes) {
            savePicture(whole);
        }
    });
    box->open();
}

void diagram_panel::savePicture(const QString & file)
{
    QString reason;
    if (!(suffixOf(file) == Png ? savePng(file, reason) : saveSvg(file, reason))) {
        tellFailure(reason);
        return;
    }
    const QString saved = tr("Saved as %1").arg(QDir::toNativeSeparators(file));
    showNote(reason.isEmpty() ? saved : saved + QStringLiteral(". ") + reason);
}

void diagram_panel::tellFailure(const QString & reason)
{
    newBox(QMessageBox::Warning, reason, QMessageBox::Ok, this)->open();
}

} // namespace app
