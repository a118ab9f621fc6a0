#include "app/window/help_commands.h"

#include "app/plugin_choice.h"
#include "app/window/window_dialogs.h"

#include "context/ctx_global.h"
#include "plugin/export_interface.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QMessageBox>
#include <QUrl>

namespace app {

namespace {

class texts
{
    Q_DECLARE_TR_FUNCTIONS(app::help_commands)
};

} // namespace

void showManual(QWidget * parent)
{
    const QString url = context::ctx_global::getAppHelpManualUrl();
    if (!QDesktopServices::openUrl(QUrl(url))) {
        warn(parent, texts::tr("Korvane - Manual"),
             texts::tr("The manual could not be opened. Open this file in a browser: %1")
                 .arg(QDir::toNativeSeparators(QUrl(url).toLocalFile())));
    }
}

void showFolder(QWidget * parent, const QString & folder)
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder))) {
        warn(parent, texts::tr("Korvane - Scripts"),
             texts::tr("The folder could not be opened: %1").arg(QDir::toNativeSeparators(folder)));
    }
}

void showAbout(QWidget * parent, const found_plugins & found)
{
    QString text = texts::tr("<h3>Korvane %1</h3><p>Trustworthy migration scripts from a class model.</p>"
                             "<p>Runs on Qt %2. MIT license.</p>")
                       .arg(QStringLiteral(KORVANE_VERSION), QString::fromLatin1(qVersion()));
    for (const auto & loaded : found.plugins) {
        const plugin::export_interface & p = *loaded->getInterface();
        text += QStringLiteral("<p><b>%1 %2</b><br/>%3</p>")
                    .arg(p.getName().toHtmlEscaped(), p.getVersion().toHtmlEscaped(),
                         p.getDescription().toHtmlEscaped());
    }
    QMessageBox::about(parent, texts::tr("Korvane - About"), text);
}

} // namespace app
