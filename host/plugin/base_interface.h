#pragma once

#include "korvane_global.h"

#include <QIcon>
#include <QObject>
#include <QSqlError>
#include <QString>

#include <memory>

class QWidget;

namespace tools {
class custom_javascript;
}

namespace plugin {

/// Types of the messages that a plug-in tells.
inline constexpr int ProgressMessage = 1;
inline constexpr int WarningMessage = 2;
inline constexpr int ErrorMessage = 3;
/// For how many milliseconds a message is shown unless its sender knows better.
inline constexpr int MessageTimeout = 10000;

/// What every plug-in is for the host: its identity, its settings and its custom script engine.
class KORVANE_EXPORT base_interface : public QObject
{
    Q_OBJECT

public:
    base_interface();
    ~base_interface() override;

    /// Identity of the plug-in; it keys the plug-in's stored settings.
    [[nodiscard]] virtual QString getGuid() const = 0;
    /// Name by which the plug-in is chosen; its command-line options begin with "--" + this name.
    [[nodiscard]] virtual QString getName() const = 0;
    /// Text of the menu entry.
    [[nodiscard]] virtual QString getShortDesc() const = 0;
    [[nodiscard]] virtual QString getDescription() const = 0;
    [[nodiscard]] virtual QString getVersion() const = 0;
    /// Help text for the plug-in's command-line options, each on a line that begins with a line feed.
    [[nodiscard]] virtual QString getCommandLineInfos() const = 0;
    [[nodiscard]] virtual QIcon getIcon() const = 0;
    [[nodiscard]] virtual QIcon getIconSettings() const = 0;
    [[nodiscard]] virtual bool hasSettings() const = 0;
    /// Lets the user edit the settings in a modal dialog; true when they were accepted.
    virtual bool showSettings() = 0;
    /// Stores the settings in the current project's database; an invalid error means success.
    virtual QSqlError saveSettings() = 0;
    /// Reads the settings from the current project's database; an invalid error means success.
    virtual QSqlError loadSettings() = 0;
    /// Sets the settings in memory to their defaults.
    virtual void clearSettings() = 0;
    /// A preview widget owned by the plug-in; null when it has none.
    virtual QWidget * getPreviewWidget() = 0;
    /// Called before the plug-in is unloaded: releases the custom script engine.
    virtual void terminate();

    /// The plug-in's current custom script engine; empty when it has none.
    [[nodiscard]] std::shared_ptr<tools::custom_javascript> getCustomScript() const
    {
        return m_pCustomScript;
    }
    void setCustomScript(const std::shared_ptr<tools::custom_javascript> & script);

Q_SIGNALS:
    /// A message for the user, of one of the types above; shown for `timeout` milliseconds.
    void onMessage(const QString & msg, int type, int timeout);
    /// Work under way is at `done` of `total` units; a plug-in that does not know its total never says so.
    void onProgress(int done, int total);
    /// The plug-in has written a file for the user, whole; `file` is its absolute name.
    void onFileWritten(const QString & file);

private:
    std::shared_ptr<tools::custom_javascript> m_pCustomScript;
};

} // namespace plugin
