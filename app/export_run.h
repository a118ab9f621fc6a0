#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace model {
class project;
}

namespace plugin {
class export_interface;
}

/// The one way in which an export plug-in is run, whoever watches it.
namespace app {

/// Who is told what an export does while it does it; each may be empty.
struct export_listener
{
    std::function<void(const QString & text, int type)> message; ///< see plugin::ErrorMessage
    std::function<void(int done, int total)> progress;
};

struct export_report
{
    bool ok = false;
    /// Why it failed, on one line, unless a message has said it already; empty after a success.
    QString untoldReason;
    /// Why there is no file after a success, as far as the plug-in tells.
    QString reasonForNoFile;
    bool isVersionMissing = false; ///< whether a tagged version would help
    /// Absolute names of the files that the plug-in has written, in that order, also those before a failure.
    QStringList files;
};

/// Lets `plugin` export `project`, which is the current project.
export_report runPlugin(plugin::export_interface & plugin, model::project & project,
                        const export_listener & listener);

} // namespace app
