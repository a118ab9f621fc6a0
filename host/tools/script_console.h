#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QJSEngine;

namespace plugin {
class base_interface;
}

namespace tools {

/// The script's `console`: what it writes becomes messages of the plug-in that runs the script.
///
/// log, info, debug and warn are progress messages (type 1), error is an error message (type 3).
class script_console : public QObject
{
    Q_OBJECT

public:
    explicit script_console(plugin::base_interface * owner);
    ~script_console() override;

    /// Makes this the global `console` of `engine`, which must not outlive it.
    void install(QJSEngine & engine);

    Q_INVOKABLE void write(int type, const QString & text);

private:
    QPointer<plugin::base_interface> m_pOwner;
};

} // namespace tools
