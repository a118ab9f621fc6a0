#pragma once

#include "korvane_global.h"

#include <QHash>
#include <QList>
#include <QMainWindow>
#include <QPointer>
#include <QString>

namespace view {

/// What a plug-in may ask of the host's main window. A command-line run has one that is never shown.
class KORVANE_EXPORT main_wnd : public QMainWindow
{
    Q_OBJECT

public:
    explicit main_wnd(QWidget * parent = nullptr);
    ~main_wnd() override;

    /// The values given on the host's command line for the option `name` ("--Plugin_option"), in order; empty
    /// when the option was not given.
    [[nodiscard]] QList<QString> getAppArg(const QString & name) const { return m_args.value(name); }
    /// Appends one value of the option `name`.
    void addAppArg(const QString & name, const QString & value) { m_args[name].append(value); }

    /// Tells that an export waits for what the user does in the window `holder`; null when it goes on. Other
    /// windows take no input meanwhile.
    void setHolder(QWidget * holder);
    [[nodiscard]] QWidget * holder() const { return m_pHolder; }
    /// The part of this window that can be used while an export waits; null for none.
    void setUsableWhileHeld(QWidget * part) { m_pUsable = part; }
    [[nodiscard]] QWidget * usableWhileHeld() const { return m_pUsable; }

Q_SIGNALS:
    void holderChanged();

private:
    QHash<QString, QList<QString>> m_args;
    QPointer<QWidget> m_pHolder;
    QPointer<QWidget> m_pUsable;
};

} // namespace view
