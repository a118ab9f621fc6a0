#pragma once

#include "plugin/statement_source.h"

#include <QString>

namespace app {

class command_options;
struct plugin_request;

/// The option that names the database.
inline constexpr QLatin1String DatabaseOption("db");
/// The option that says whether relationships become foreign keys.
inline constexpr QLatin1String RelationshipsOption("relationships");
/// What statements of a text form are for, which has no stored settings, when none is named.
inline constexpr QLatin1String DatabaseOfTexts("sqlite");

/// The options of an export by the names that a person remembers, as they stand on a command line. Their
/// values are those of the plug-in; see plugin::statement_source::listOptions().
class export_options
{
public:
    /// Declares those that say what statements are like: relationships and custom script.
    void declareContent(command_options & options);
    /// Declares all of them.
    void declareAll(command_options & options);

    /// Why what was given cannot be meant, as far as that is known without the plug-in; empty when it can.
    [[nodiscard]] QString whyWrong() const;
    /// Why `source` does not take what was given, on one line; empty when it does.
    [[nodiscard]] QString whyRefused(plugin::statement_source & source) const;
    /// Whether none was given.
    [[nodiscard]] bool isEmpty() const { return given().isEmpty(); }
    /// What was given, by name, with the database by the name of its scripts.
    [[nodiscard]] plugin::friendly_settings given() const;
    /// The database as it was given, by its key; empty when it was not.
    [[nodiscard]] const QString & database() const { return m_database; }
    /// Puts what was given into `request`, as the plug-in's own options; the reason when one of those was
    /// given for the same, or has no such value.
    [[nodiscard]] QString addTo(plugin_request & request, plugin::statement_source & source) const;

private:
    [[nodiscard]] QList<std::pair<QLatin1String, const QString *>> all() const;

    QString m_path;
    QString m_database;
    QString m_relationships;
    QString m_schema;
    QString m_customScript;
};

/// What `request` gives by the plug-in's own options, by the friendly names of these; a value that an option
/// does not have is left out.
[[nodiscard]] plugin::friendly_settings friendlyOptions(const plugin_request & request,
                                                        plugin::statement_source & source);

/// What the options of the export take, and what counts for each when it is not given: a line each, to stand
/// in a help text. Nothing when the plug-in cannot tell.
/// @param stored whether those are settings of a project, not the plug-in's own
[[nodiscard]] QString describeOptions(plugin::statement_source & source, bool stored);

} // namespace app
