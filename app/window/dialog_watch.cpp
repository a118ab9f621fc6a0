#include "app/window/dialog_watch.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMessageBox>

namespace app {

dialog_watch::dialog_watch()
{
    qApp->installEventFilter(this);
}

bool dialog_watch::eventFilter(QObject * watched, QEvent * event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        if (auto * const dialog = qobject_cast<QDialog *>(watched)) {
            // A message box tells its button, any other dialog only whether it was accepted.
            connect(dialog, &QDialog::finished, this, [this](int result) {
                m_bGivenUp = result == QDialog::Rejected || result == QMessageBox::Cancel;
            });
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace app
