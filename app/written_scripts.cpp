#include "app/written_scripts.h"

#include "app/export_options.h"
#include "app/script_difference.h"
#include "app/source.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"
#include "plugin/statement_source.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace app {

namespace {

using plugin::friendly_settings;
using zk::ZkBool;

constexpr QLatin1String PathOption("path");
constexpr QLatin1String SchemaOption("schema");
constexpr QLatin1String RelationshipsOption("relationships");
constexpr QLatin1String CustomScriptOption("custom-script");

/// A script as an export writes it.
struct script_text
{
    QString name;
    QByteArray bytes;
    bool isWhole = true; ///< whether an export comes to its end
};

/// Puts the statements of `list` into scripts.
void addScripts(const plugin::statement_list & list, std::vector<script_text> & scripts)
{
    for (const plugin::statement_record & record : list.records) {
        if (scripts.empty() || scripts.back().name != record.script) {
            scripts.push_back({record.script, {}});
        }
        scripts.back().bytes += record.text.toUtf8() + '\n';
    }
    if (!list.outcome && !scripts.empty()) {
        scripts.back().isWhole = false;
    }
}

class script_comparison
{
public:
    script_comparison(plugin::statement_source & statements, source & of, written_scripts & found)
        : m_statements(statements), m_source(of), m_found(found)
    {
    }

    ZkBool run(bool noCustomScript)
    {
        ZkBool result = m_source.load(Now, m_project);
        if (result) {
            const context::ctx_kept kept(context::ctx_project::getSingleton());
            context::ctx_project::getSingleton().setProject(m_project);
            result = readSettings();
            if (result && !m_found.folder.isEmpty()) {
                result = compareAll(noCustomScript);
            }
        }
        return result;
    }

private:
    ZkBool readSettings()
    {
        QList<plugin::friendly_option> options;
        QList<plugin::statement_database> databases;
        ZkBool listed = m_statements.listOptions(options);
        if (listed) {
            listed = m_statements.listDatabases(databases);
        }
        for (const plugin::friendly_option & option : std::as_const(options)) {
            m_stored.insert(option.name, option.stored);
        }
        m_found.database = m_stored.value(DatabaseOption);
        for (const plugin::statement_database & each : std::as_const(databases)) {
            if (each.key == m_found.database) {
                m_found.label = each.label;
                m_types = each.types;
            }
        }
        const QString path = m_stored.value(PathOption);
        m_found.folder =
            path.isEmpty() ? path : context::ctx_project::getSingleton().getPathFromProjectFile(path);
        return listed;
    }

    ZkBool compareAll(bool noCustomScript)
    {
        const bool isLeftOut = noCustomScript && !m_stored.value(CustomScriptOption).isEmpty();
        std::vector<script_text> scripts;
        const ZkBool made = makeScripts(*m_project, {}, scripts);
        for (const script_text & script : scripts) {
            written_script told{script.name, script_state::unknown, {}};
            if (isLeftOut) {
                told.why = QStringLiteral("the custom script was left out");
            } else if (!script.isWhole) {
                told.why = QStringLiteral("an export does not come to its end");
            } else {
                compare(script, told);
            }
            m_found.scripts.push_back(told);
        }
        return made;
    }

    /// What an export of `project` writes with the stored settings but for `changed`.
    ZkBool makeScripts(model::project & project, const friendly_settings & changed,
                       std::vector<script_text> & scripts)
    {
        const QString schema = m_stored.value(SchemaOption);
        ZkBool result = ZkBool::success();
        if (schema != QLatin1String("evolution")) {
            const plugin::statement_list full = m_statements.fullStatements(project, changed);
            addScripts(full, scripts);
            result = full.outcome;
        }
        if (result && schema != QLatin1String("full") && &project == m_project.get()) {
            const plugin::statement_list history = m_statements.historyStatements(project, changed);
            addScripts(history, scripts);
            result = history.outcome;
        }
        return result;
    }

    void compare(const script_text & wanted, written_script & told)
    {
        QFile file(QDir(m_found.folder).filePath(wanted.name));
        if (!file.exists()) {
            told.state = script_state::missing;
            return;
        }
        if (!file.open(QIODevice::ReadOnly)) {
            told.why = QStringLiteral("it cannot be read (%1)").arg(file.errorString());
            return;
        }
        const QByteArray there = file.readAll();
        told.state = there == wanted.bytes ? script_state::same : script_state::differs;
        if (told.state == script_state::differs) {
            told.why = whatDiffers(wanted, there);
        }
    }

    /// Says with which other setting, or from which other model, an export would have written `there`; else
    /// where it differs.
    QString whatDiffers(const script_text & wanted, const QByteArray & there)
    {
        const QString relationships = m_stored.value(RelationshipsOption);
        const QString others =
            relationships == QLatin1String("yes") ? QStringLiteral("no") : QStringLiteral("yes");
        if (isWrittenWith({{RelationshipsOption, others}}, *m_project, wanted.name, there)) {
            return QStringLiteral("it was written with relationships %1, stored is %2")
                .arg(others, relationships);
        }
        const QString script = m_stored.value(CustomScriptOption);
        if (!script.isEmpty() &&
            isWrittenWith({{CustomScriptOption, QString()}}, *m_project, wanted.name, there)) {
            return QStringLiteral("it was written without the custom script '%1'").arg(script);
        }
        for (int number = m_source.newestVersion(); number > 0; --number) {
            std::shared_ptr<model::project> version;
            if (m_source.load(number, version)) {
                version->setName(m_project->getName());
                if (isWrittenWith({}, *version, wanted.name, there)) {
                    return QStringLiteral("it was written from the model of %1").arg(versionWord(number));
                }
            }
        }
        return scriptDifference(there, wanted.bytes, m_types);
    }

    bool isWrittenWith(const friendly_settings & changed, model::project & project, const QString & name,
                       const QByteArray & there)
    {
        std::vector<script_text> scripts;
        const bool isMade = makeScripts(project, changed, scripts).getValue();
        return isMade && std::any_of(scripts.begin(), scripts.end(), [&](const script_text & each) {
                   return each.name == name && each.bytes == there;
               });
    }

    plugin::statement_source & m_statements;
    source & m_source;
    written_scripts & m_found;
    std::shared_ptr<model::project> m_project;
    friendly_settings m_stored;
    QList<std::pair<QString, QString>> m_types;
};

} // namespace

QLatin1String wordOf(script_state state)
{
    switch (state) {
    case script_state::same:
        return QLatin1String("same");
    case script_state::differs:
        return QLatin1String("differs");
    case script_state::missing:
        return QLatin1String("missing");
    case script_state::unknown:
        break;
    }
    return QLatin1String("unknown");
}

ZkBool compareScripts(plugin::statement_source & statements, source & of, bool noCustomScript,
                      written_scripts & found)
{
    return of.isText() ? ZkBool::success() : script_comparison(statements, of, found).run(noCustomScript);
}

} // namespace app
