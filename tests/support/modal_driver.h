#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace support {

/// Meets the modal windows that come up, one after the other, like a person: each turn is for one window. A
/// window that nobody expected is closed and counted, so that a test ends and can tell. Of several drivers
/// the newest one acts.
class modal_driver
{
public:
    using turn = std::function<void(QWidget *)>;

    explicit modal_driver(const QList<turn> & turns) : m_turns(turns)
    {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start();
        newest = this;
    }
    ~modal_driver() { newest = m_former; }
    modal_driver(const modal_driver &) = delete;
    modal_driver & operator=(const modal_driver &) = delete;

    // Turns.
    /// Presses the key in the window that has come up.
    static turn key(Qt::Key key)
    {
        return [key](QWidget * w) { QTest::keyClick(w, key); };
    }
    /// Clicks a button of a message box.
    static turn click(QMessageBox::StandardButton button)
    {
        return [button](QWidget * w) {
            auto * const box = qobject_cast<QMessageBox *>(w);
            if (!box || !box->button(button)) {
                qFatal("the window '%s' has no such button", qPrintable(w->windowTitle()));
            }
            QTest::mouseClick(box->button(button), Qt::LeftButton);
        };
    }
    /// Clicks a button of the row below a dialog.
    static turn press(QDialogButtonBox::StandardButton button)
    {
        return [button](QWidget * w) {
            auto * const buttons = w->findChild<QDialogButtonBox *>();
            if (!buttons || !buttons->button(button)) {
                qFatal("the window '%s' has no such button", qPrintable(w->windowTitle()));
            }
            QTest::mouseClick(buttons->button(button), Qt::LeftButton);
        };
    }
    /// Enters a file name into a file dialog and confirms.
    static turn file(const QString & name)
    {
        return [name](QWidget * w) {
            auto * const edit = w->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            if (!edit) {
                qFatal("the window '%s' is no file dialog", qPrintable(w->windowTitle()));
            }
            waitForFolder(*w, *edit);
            // At once: typed letter by letter it brings up proposals, which take the Return key.
            edit->setText(name);
            auto * const buttons = w->findChild<QDialogButtonBox *>();
            for (const auto button : {QDialogButtonBox::Open, QDialogButtonBox::Save}) {
                if (buttons->button(button)) {
                    QTest::mouseClick(buttons->button(button), Qt::LeftButton);
                    return;
                }
            }
        };
    }

    /// Whether every turn was taken, and no window came up without one.
    [[nodiscard]] bool isDone() const { return m_turns.isEmpty() && unexpected.isEmpty(); }

    QStringList titles; ///< of the windows that came up
    QStringList texts;  ///< of the message boxes among them, empty for others
    QStringList unexpected;

private:
    /// The dialog reads its folder in a thread of its own, then chooses what it was told to propose and looks
    /// at its button anew: only after that a name counts.
    static void waitForFolder(const QWidget & dialog, const QLineEdit & edit)
    {
        const auto * const files = dialog.findChild<QFileSystemModel *>();
        QString last;
        int calm = 0; // steps without a change
        for (int step = 0; step < 400 && calm < 8; ++step) {
            QTest::qWait(25);
            // A folder in which the dialog shows nothing is taken for read after two seconds.
            const bool isRead = !files || step > 80 || files->rowCount(files->index(files->rootPath())) > 0;
            calm = isRead && edit.text() == last ? calm + 1 : 0;
            last = edit.text();
        }
    }

    void look()
    {
        QWidget * const window = QApplication::activeModalWidget();
        // A turn may bring up a further window; when that is gone the first one comes to the front again.
        if (newest != this || !window || m_met.contains(window)) {
            return;
        }
        m_met.append(window);
        // Anew, as a timer does not fire within its own event, which a turn may last for.
        m_timer.start();
        titles << window->windowTitle();
        const auto * const box = qobject_cast<QMessageBox *>(window);
        texts << (box ? box->text() : QString());
        if (m_turns.isEmpty()) {
            unexpected << window->windowTitle() + QStringLiteral(": ") + texts.constLast();
            window->close();
        } else {
            m_turns.takeFirst()(window);
        }
    }

    static inline modal_driver * newest = nullptr;
    modal_driver * m_former = newest;
    QList<turn> m_turns;
    QList<QPointer<QWidget>> m_met;
    QTimer m_timer;
};

} // namespace support
