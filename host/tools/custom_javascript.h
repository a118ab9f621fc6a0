#pragma once

#include "korvane_global.h"
#include "zk/zk_bool.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>

namespace model {
class project;
class entity;
class property;
class enumeration;
} // namespace model

namespace plugin {
class base_interface;
}

namespace tools {

/// How scripts call what they are told of a step.
namespace step_parameter {
inline constexpr QLatin1String PluginName("plugin_name");
inline constexpr QLatin1String CurrentFile("current_file");
inline constexpr QLatin1String OutputLocation("output_location");
inline constexpr QLatin1String DefaultValue("default_value");
inline constexpr QLatin1String Action("action");
} // namespace step_parameter

/// The user's JavaScript file in an engine of its own: it may replace what an export writes, step by step.
///
/// The file is loaded once and defines `exportStep(project, entity, property, enumeration, parameters)`.
class KORVANE_EXPORT custom_javascript
{
public:
    custom_javascript();
    ~custom_javascript();
    custom_javascript(const custom_javascript &) = delete;
    custom_javascript & operator=(const custom_javascript &) = delete;

    /// Longest time in milliseconds that one call into the script may take; 10000 unless set. 0 or less means
    /// no limit.
    void setTimeLimit(int milliseconds);
    [[nodiscard]] int getTimeLimit() const;

    /// Loads `scriptFile` (a relative path is taken from the folder of the current project file) for `owner`,
    /// which receives what the script writes to its console. Fails with file, line and reason when the file
    /// cannot be read, does not run, runs over the time limit, or defines no function `exportStep`.
    zk::ZkBool initEngine(const QString & scriptFile, plugin::base_interface * owner);

    /// Attaches the interactive debugger, which opens a window of its own. The script is run anew for it, as
    /// initEngine() did, so what it has kept so far is lost. Fails when no script is loaded or no display is
    /// there. Steps then wait for the user at times; events are handled meanwhile.
    zk::ZkBool runDebugger();
    /// True from a successful runDebugger() until the debugger is detached or its window is closed.
    [[nodiscard]] bool isDebugging() const;

    /// Calls `exportStep` for one step of an export. The objects may be null; `parameters` are by
    /// the names of step_parameter. On success the text is what the step shall write: the text that the
    /// script returned, or the default value for undefined and null. An exception, another result, or a call
    /// over the time limit is a failure with file, line and reason.
    zk::ZkBool executeScript(model::project * project, model::entity * entity, model::property * property,
                             model::enumeration * enumeration, const QHash<QString, QVariant> & parameters);

private:
    class impl;
    std::shared_ptr<impl> m_pImpl;
};

} // namespace tools
