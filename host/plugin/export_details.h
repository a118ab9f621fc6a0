#pragma once

#include "korvane_global.h"

#include <QList>
#include <QString>
#include <QtPlugin>

namespace plugin {

struct option_value
{
    QString value;
    QString name; ///< what it stands for; empty when the value says it
};

/// An option of the command line.
struct command_option
{
    QString name;               ///< with its dashes and the plug-in's name
    QList<option_value> values; ///< all that it may have
};

/// What an export plug-in may tell its host besides, as an interface that a plug-in has or has not.
class KORVANE_EXPORT export_details
{
public:
    export_details();
    virtual ~export_details();
    export_details(const export_details &) = delete;
    export_details & operator=(const export_details &) = delete;

    /// The options that have a fixed set of values.
    [[nodiscard]] virtual QList<command_option> getCommandLineOptions() const = 0;
    /// What a value outside that set is taken for, as the end of a sentence ("it is taken for ...").
    [[nodiscard]] virtual QString getTakenFor(const QString & option, const QString & value) const = 0;
    /// Why the last export succeeded without a file; empty when there is nothing to tell.
    [[nodiscard]] virtual QString getReasonForNoFile() const = 0;
    /// Whether that is for want of a tagged version of the project.
    [[nodiscard]] virtual bool isVersionMissing() const = 0;
};

} // namespace plugin

Q_DECLARE_INTERFACE(plugin::export_details, "korvane.export_details/1")
