#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace support {

/// Answers every message box that comes up while it lives, and keeps what the last one said.
class message_box_answerer
{
public:
    explicit message_box_answerer(QMessageBox::StandardButton answer = QMessageBox::Ok)
    {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, answer] {
            auto * const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || !box->button(answer)) {
                return;
            }
            ++asked;
            title = box->windowTitle();
            text = box->text();
            icon = box->icon();
            buttons = box->standardButtons();
            defaultIsYes = box->defaultButton() && box->defaultButton() == box->button(QMessageBox::Yes);
            hadParent = box->parentWidget() != nullptr;
            box->button(answer)->click();
        });
        m_timer.start();
    }

    int asked = 0;
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    bool defaultIsYes = false;
    bool hadParent = true;

private:
    QTimer m_timer;
};

} // namespace support
