#include "app/unattended.h"

#include "app/output.h"
#include "app/terminal_question.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTextDocumentFragment>
#include <QTimer>

#include <optional>

namespace app {

namespace {

QString plainText(const QString & text)
{
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

QString textOf(const QMessageBox & box)
{
    QString text = plainText(box.text());
    if (!box.informativeText().isEmpty()) {
        text += QLatin1Char(' ') + plainText(box.informativeText());
    }
    return oneLine(text);
}

QAbstractButton * buttonOfRole(const QMessageBox & box, std::initializer_list<QMessageBox::ButtonRole> roles)
{
    const QList<QAbstractButton *> buttons = box.buttons();
    for (const QMessageBox::ButtonRole role : roles) {
        for (QAbstractButton * const button : buttons) {
            if (box.buttonRole(button) == role) {
                return button;
            }
        }
    }
    return nullptr;
}

QAbstractButton * positiveButton(const QMessageBox & box)
{
    return buttonOfRole(box, {QMessageBox::YesRole, QMessageBox::AcceptRole});
}

QAbstractButton * negativeButton(const QMessageBox & box)
{
    if (box.escapeButton()) {
        return box.escapeButton();
    }
    return buttonOfRole(box, {QMessageBox::NoRole, QMessageBox::RejectRole});
}

} // namespace

unattended::unattended(bool answerYes, const dialog_help & help) : m_bAnswerYes(answerYes), m_help(help)
{
    qApp->installEventFilter(this);
}

unattended::~unattended() = default;

bool unattended::eventFilter(QObject * watched, QEvent * event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        if (auto * const dialog = qobject_cast<QDialog *>(watched); dialog && dialog->isModal()) {
            // Only the dialog's own event loop, which begins after it is shown, can be ended with an answer.
            QTimer::singleShot(0, this, [this, shown = QPointer<QDialog>(dialog)] {
                if (shown && shown->isVisible()) {
                    answer(shown);
                }
            });
        } else if (auto * const window = qobject_cast<QMainWindow *>(watched)) {
            // A window to work in, such as a debugger's, which would hold the export for ever.
            QTimer::singleShot(0, window, &QWidget::close);
        }
    }
    return QObject::eventFilter(watched, event);
}

void unattended::answer(QDialog * dialog)
{
    if (qobject_cast<QProgressDialog *>(dialog)) {
        return;
    }
    if (auto * const box = qobject_cast<QMessageBox *>(dialog)) {
        answerMessage(box);
        return;
    }
    const QString title = dialog->windowTitle().isEmpty()
                              ? QString::fromLatin1(dialog->metaObject()->className())
                              : dialog->windowTitle();
    // What it is about was told by the question that led to it.
    const QString cause =
        m_sAnswered.isEmpty() ? QString() : QStringLiteral(" (after the question: %1)").arg(m_sAnswered);
    // Who has said No knows why nothing comes of it.
    note(m_bDeclined ? QStringLiteral("Not exported.") : m_help(title) + cause);
    dialog->reject();
}

void unattended::answerMessage(QMessageBox * box)
{
    const QString text = textOf(*box);
    if (box->buttons().size() < 2) {
        const bool isBad = box->icon() == QMessageBox::Warning || box->icon() == QMessageBox::Critical;
        isBad ? printError(text) : printNotice(text);
        box->accept();
        return;
    }
    QAbstractButton * button = nullptr;
    if (m_bAnswerYes) {
        button = positiveButton(*box);
    } else if (hasTerminal()) {
        button = askAtTerminal(*box, text);
        m_bDeclined = button && button == negativeButton(*box);
    }
    if (!button) {
        note(text + QStringLiteral(" (-y answers Yes)"));
        button = negativeButton(*box);
    }
    m_sAnswered = text;
    if (button) {
        button->click();
    } else {
        box->reject();
    }
}

/// The button that the person chose; null when there was no answer.
QAbstractButton * unattended::askAtTerminal(const QMessageBox & box, const QString & text) const
{
    QAbstractButton * const yes = positiveButton(box);
    QAbstractButton * const no = negativeButton(box);
    const bool defaultIsYes = yes && box.defaultButton() == yes;
    const std::optional<bool> answer = app::askAtTerminal(text, defaultIsYes);
    return !answer ? nullptr : *answer ? yes : no;
}

void unattended::note(const QString & line)
{
    if (m_sUnanswered.isEmpty()) {
        m_sUnanswered = oneLine(line);
    }
}

} // namespace app
