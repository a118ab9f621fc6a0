#include "app/window/window_dialogs.h"

#include "app/window/project_session.h"

#include "tools/held_dialog.h"
#include "zk/visible_text.h"

#include <QFileDialog>
#include <QMessageBox>

namespace app {

void warn(QWidget * parent, const QString & title, const QString & text)
{
    const tools::held_dialog<QMessageBox> box(QMessageBox::Warning, title, zk::visibleText(text),
                                              QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.exec();
}

bool isConfirmed(QWidget * parent, const QString & title, const QString & question)
{
    const tools::held_dialog<QMessageBox> box(QMessageBox::Question, title, zk::visibleText(question),
                                              QMessageBox::Yes | QMessageBox::No, parent);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

QString chosenFile(const tools::held_dialog<QFileDialog> & dialog, const QString & name)
{
    dialog->setObjectName(name);
    return dialog.exec() == QDialog::Accepted ? dialog->selectedFiles().value(0) : QString();
}

bool refreshProject(project_session & session, QWidget * parent, const QString & title)
{
    const zk::ZkBool result = session.refresh();
    if (!result) {
        warn(parent, title, result.getDesc());
    }
    return result.getValue() && session.project();
}

} // namespace app
