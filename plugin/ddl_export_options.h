#pragma once

#include <QLatin1String>
#include <QList>
#include <QString>

#include <span>

namespace plugin {

class ddl_export;

/// A value of an option, by the names of both command lines.
struct option_choice
{
    QString number;    ///< of the long option
    QString longLabel; ///< what the number stands for, as the help of the long option says it
    QString friendly;  ///< of the short option
    QString label;     ///< for people, where the names do not say it
};

/// An option of the export: how it is called, what it takes, and the setting behind it.
struct export_option
{
    QLatin1String name;                ///< as a person remembers it
    QLatin1String longName;            ///< of the plug-in's own, with its dashes
    const char * about;                ///< in the source language
    const char * argument;             ///< what stands for the value in a help text; empty when the values do
    QList<option_choice> (*choices)(); ///< all that it takes; null when any text will do
    QString (*get)(const ddl_export & plugin);               ///< as a value of the long option
    void (*set)(ddl_export & plugin, const QString & value); ///< from a value of the long option
};

/// All options, in the order of the help text.
[[nodiscard]] std::span<const export_option> allOptions();

/// The option by its friendly name; null when there is none.
[[nodiscard]] const export_option * findOption(const QString & name);

/// Spelled so: scripts of users name it.
inline constexpr QLatin1String CustomScriptOption("--KorvGenericDDLExport_custom_javacript");

} // namespace plugin
