#pragma once

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <functional>

namespace support {

/// The debugger's window that is open; null when there is none.
inline QMainWindow * debuggerWindow()
{
    for (QWidget * const widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QStringLiteral("wnd_script_debugger") && widget->isVisible()) {
            return qobject_cast<QMainWindow *>(widget);
        }
    }
    return nullptr;
}

/// Uses the script debugger like a person: at each stop it writes down what the window shows and takes the
/// next turn. When the turns are used up it goes on with the last one.
class debugger_driver
{
public:
    using turn = std::function<void(debugger_driver &)>;

    explicit debugger_driver(const QList<turn> & turns) : m_turns(turns)
    {
        m_timer.setInterval(2);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start();
    }

    // Turns.
    static turn command(const char * name)
    {
        return [name](debugger_driver & d) { d.find<QAction>(name)->trigger(); };
    }
    static turn key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        return [key, modifiers](debugger_driver & d) {
            QTest::keyClick(d.find<QPlainTextEdit>("m_txtSource"), static_cast<Qt::Key>(key), modifiers);
        };
    }

    template <class W>
    [[nodiscard]] W * find(const char * name) const
    {
        QMainWindow * const window = debuggerWindow();
        W * const found = window ? window->findChild<W *>(QString::fromLatin1(name)) : nullptr;
        if (!found) {
            qFatal("the debugger has no %s", name);
        }
        return found;
    }
    [[nodiscard]] QString text(const char * name) const { return find<QPlainTextEdit>(name)->toPlainText(); }
    /// The second column of the row whose first one is `label`.
    [[nodiscard]] QString row(const char * tree, const QString & label) const
    {
        const QList<QTreeWidgetItem *> items = find<QTreeWidget>(tree)->findItems(label, Qt::MatchExactly);
        return items.isEmpty() ? QStringLiteral("(no row)") : items.constFirst()->text(1);
    }
    /// What evaluating `expression` in the input line prints.
    QString evaluate(const QString & expression)
    {
        auto * const input = find<QLineEdit>("m_txtInput");
        input->setText(expression);
        QTest::keyClick(input, Qt::Key_Return);
        return text("m_txtOutput").section(QLatin1Char('\n'), -1);
    }

    /// What the window called each place where it held the script.
    QStringList places;

private:
    void look()
    {
        // Whether the script is held shows in the commands; a turn must not begin within another.
        QMainWindow * const window = debuggerWindow();
        if (m_bBusy || !window || !find<QAction>("m_actContinue")->isEnabled() ||
            find<QLabel>("m_lblPlace")->text() == QStringLiteral("The script is running")) {
            return;
        }
        m_bBusy = true;
        places.append(find<QLabel>("m_lblPlace")->text());
        const turn next = m_turns.size() > 1 ? m_turns.takeFirst() : m_turns.constFirst();
        next(*this);
        m_bBusy = false;
    }

    QList<turn> m_turns;
    QTimer m_timer;
    bool m_bBusy = false;
};

} // namespace support
