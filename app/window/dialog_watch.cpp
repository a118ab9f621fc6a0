#include "app/window/dialog_watch.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>

namespace app {

dialog_watch::dialog_watch()
{
    qApp->installEventFilter(this);
}

bool dialog_watch::eventFilter(QObject * watched, QEvent * event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        if (auto * const dialog = qobject_cast<QDialog *>(watched)) {
            connect(dialog, &QDialog::finished, this,
                    [this](int result) { m_bGivenUp = result == QDialog::Rejected; });
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace app
