#include "app/plugin_choice.h"

#include "app/command.h"

#include "plugin/export_interface.h"
#include "plugin/statement_source.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QRegularExpression>

#include <algorithm>

namespace app {

namespace {

/// tr() for what the window shows as well.
struct texts
{
    Q_DECLARE_TR_FUNCTIONS(app::plugin_choice)
};

/// Whether the value of --plugin is a file rather than a name.
bool isPluginFile(const QString & name)
{
    return name.contains(QLatin1Char('/')) || QLibrary::isLibrary(name);
}

QStringList namesOf(const found_plugins & found)
{
    QStringList names;
    for (const auto & p : found.plugins) {
        names << p->getInterface()->getName();
    }
    return names;
}

const plugin::export_interface * pluginOfOption(const found_plugins & found, const QString & option)
{
    for (const auto & p : found.plugins) {
        if (option.startsWith(QStringLiteral("--") + p->getInterface()->getName() + QLatin1Char('_'))) {
            return p->getInterface();
        }
    }
    return nullptr;
}

/// The options that `plugin` tells of in its command-line help.
QStringList optionsOf(const plugin::export_interface & plugin)
{
    const QRegularExpression option(
        QStringLiteral("(?<![\\w-])--%1_\\w+").arg(QRegularExpression::escape(plugin.getName())),
        QRegularExpression::UseUnicodePropertiesOption);
    QStringList options;
    const QString infos = plugin.getCommandLineInfos();
    auto matches = option.globalMatch(infos); // clazy:exclude=use-static-qregularexpression
    while (matches.hasNext()) {
        options << matches.next().captured();
    }
    options.removeDuplicates();
    return options;
}

/// Why the options of the command line are wrong; empty when they are right.
QString wrongOption(const found_plugins & found, const plugin_request & request)
{
    for (const auto & [option, value] : request.options) {
        const plugin::export_interface * const owner = pluginOfOption(found, option);
        if (!owner) {
            return QStringLiteral("Unknown option %1: no plugin is called %2 (installed: %3)")
                .arg(option, option.section(QLatin1Char('_'), 0, 0).mid(2),
                     namesOf(found).join(QStringLiteral(", ")));
        }
        if (!hasOption(*owner, option)) {
            return QStringLiteral("Unknown option %1; the plugin's options are %2 (see 'korvane plugins')")
                .arg(option, optionsOf(*owner).join(QStringLiteral(", ")));
        }
    }
    return {};
}

QString nothingFound(const found_plugins & found)
{
    return found.problems.isEmpty() ? noPluginText() : found.problems.constFirst();
}

} // namespace

QString noPluginText()
{
    return QStringLiteral("No plugin was found in %1; "
                          "reinstall korvane, or name their folder in KORVANE_PLUGIN_PATH")
        .arg(plugin::pluginFolders().join(QStringLiteral(", ")));
}

found_plugins found_plugins::forRequest(const plugin_request & request)
{
    return isPluginFile(request.name) ? inFile(request.name) : inFolders();
}

found_plugins found_plugins::inFile(const QString & file)
{
    found_plugins found;
    zk::ZkBool why;
    if (std::unique_ptr<plugin::loaded_plugin> loaded = plugin::loaded_plugin::load(file, why)) {
        found.plugins.push_back(std::move(loaded));
    } else {
        found.problems << why.getDesc();
    }
    return found;
}

found_plugins found_plugins::inFolders()
{
    found_plugins found;
    for (const QString & file : plugin::findPluginFiles()) {
        found_plugins one = inFile(file);
        found.problems << one.problems;
        if (one.plugins.empty()) {
            continue;
        }
        const QString name = one.plugins.front()->getInterface()->getName();
        const auto first = std::find_if(found.plugins.begin(), found.plugins.end(), [&name](const auto & p) {
            return p->getInterface()->getName() == name;
        });
        if (first == found.plugins.end()) {
            found.plugins.push_back(std::move(one.plugins.front()));
        } else {
            found.problems << texts::tr("%1: not used, %2 is a plugin of the same name")
                                  .arg(file, (*first)->getFileName());
        }
    }
    return found;
}

bool hasOption(const plugin::export_interface & plugin, const QString & option)
{
    const QRegularExpression mention(
        QStringLiteral("(?<![\\w-])%1(?![\\w-])").arg(QRegularExpression::escape(option)),
        QRegularExpression::UseUnicodePropertiesOption);
    const QString infos = plugin.getCommandLineInfos();
    return infos.contains(mention); // clazy:exclude=use-static-qregularexpression
}

plugin::export_interface * choosePlugin(const found_plugins & found, const plugin_request & request,
                                        int & status, QString & reason)
{
    status = Failed;
    if (found.plugins.empty()) {
        reason = nothingFound(found);
        return nullptr;
    }
    plugin::export_interface * chosen = found.plugins.front()->getInterface();
    if (!request.name.isEmpty() && !isPluginFile(request.name)) {
        const auto named =
            std::find_if(found.plugins.begin(), found.plugins.end(),
                         [&request](const auto & p) { return p->getInterface()->getName() == request.name; });
        if (named == found.plugins.end()) {
            reason = QStringLiteral("No plugin is called '%1' (installed: %2)")
                         .arg(request.name, namesOf(found).join(QStringLiteral(", ")));
            return nullptr;
        }
        chosen = (*named)->getInterface();
    } else if (found.plugins.size() > 1) {
        status = WrongUsage;
        reason = QStringLiteral("There are several plugins, choose one with --plugin: ") +
                 namesOf(found).join(QStringLiteral(", "));
        return nullptr;
    }
    status = WrongUsage;
    reason = wrongOption(found, request);
    return reason.isEmpty() ? chosen : nullptr;
}

plugin::statement_source * chooseStatementSource(const found_plugins & found, const plugin_request & request,
                                                 int & status, QString & reason)
{
    plugin::export_interface * const chosen = choosePlugin(found, request, status, reason);
    auto * const source = qobject_cast<plugin::statement_source *>(chosen);
    if (chosen && !source) {
        status = Failed;
        reason = QStringLiteral("The plugin %1 does not tell the statements of its scripts")
                     .arg(chosen->getName());
    }
    return source;
}

plugin::statement_source * firstStatementSource(const found_plugins & found)
{
    for (const auto & loaded : found.plugins) {
        if (auto * const source = qobject_cast<plugin::statement_source *>(loaded->getInterface())) {
            return source;
        }
    }
    return nullptr;
}

} // namespace app
