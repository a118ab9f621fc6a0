#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QAbstractButton;
class QDialog;
class QMessageBox;

namespace app {

/// Answers the modal windows that a plug-in opens while no person sees them.
///
/// A question is answered Yes when that was asked for, by the person at the terminal when there is one, and
/// otherwise in the way that changes nothing. Any other dialog is rejected. A message that leaves no choice
/// is printed and confirmed. A main window that a plug-in opens beside its export is closed.
class unattended : public QObject
{
    Q_OBJECT

public:
    /// What to say about a dialog, which has a title, that wants a person.
    using dialog_help = std::function<QString(const QString & title)>;

    unattended(bool answerYes, const dialog_help & help);
    ~unattended() override;

    /// One line about the first window that wanted a person and got none; empty when there was none.
    [[nodiscard]] QString unanswered() const { return m_sUnanswered; }

protected:
    bool eventFilter(QObject * watched, QEvent * event) override;

private:
    void answer(QDialog * dialog);
    void answerMessage(QMessageBox * box);
    [[nodiscard]] QAbstractButton * askAtTerminal(const QMessageBox & box, const QString & text) const;
    void note(const QString & line);

    bool m_bAnswerYes;
    dialog_help m_help;
    QString m_sAnswered;      ///< text of the last question
    bool m_bDeclined = false; ///< a person has answered No
    QString m_sUnanswered;
};

} // namespace app
