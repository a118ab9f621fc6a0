#include "app/explained_script.h"

#include "app/acceptance_file.h"
#include "app/change_words.h"
#include "app/check_run.h"
#include "app/object_origins.h"
#include "app/source.h"

#include "model/project.h"

#include <QDate>
#include <QRegularExpression>

#include <algorithm>
#include <memory>

namespace app {

namespace {

using zk::ZkBool;

/// Loads the versions that are needed to explain one script.
class script_explainer
{
public:
    script_explainer(plugin::statement_source & statements, source & of, const script_name & name,
                     explained_script & explained)
        : m_statements(statements), m_source(of), m_name(name), m_explained(explained)
    {
    }

    ZkBool run(const plugin::friendly_settings & options)
    {
        m_explained.name = m_name;
        ZkBool result = loadStates();
        if (result) {
            result = makeScript(options);
        }
        if (result) {
            result = m_name.kind == script_kind::step ? ZkBool::success() : findOrigins();
        }
        if (result) {
            result = judge(options);
        }
        return result;
    }

private:
    /// The number of the version that the state of the project is called in names of scripts.
    [[nodiscard]] int nextVersion() const { return m_source.newestVersion() + 1; }

    ZkBool loadStates()
    {
        const bool isFull = m_name.kind == script_kind::full;
        if (!isFull && m_source.newestVersion() == 0) {
            return ZkBool::failure(QStringLiteral("%1: has no version, so no script of one; make one with "
                                                  "'korvane tag'")
                                       .arg(m_source.name()));
        }
        const int to = isFull || m_name.to == nextVersion() ? Now : m_name.to;
        ZkBool result = m_source.load(Now, m_states.state);
        if (result) {
            result = m_source.load(to, m_states.after);
        }
        m_states.before = std::make_shared<model::project>(1);
        if (result && m_name.kind == script_kind::step) {
            result = m_source.load(m_name.from, m_states.before);
            m_explained.from = versionWord(m_name.from);
        }
        m_states.fromNumber = m_name.from;
        m_states.toNumber = m_name.to;
        m_explained.to = versionWord(to);
        return result;
    }

    ZkBool makeScript(const plugin::friendly_settings & options)
    {
        m_changes = model::difference(*m_states.before, *m_states.after);
        script_request request;
        request.kind = m_name.kind;
        request.database = m_name.database;
        request.options = options;
        request.history = &m_source;
        step_script script;
        const ZkBool made = makeStepScript(m_statements, m_states, m_changes, request, script);
        m_explained.bytes = script.bytes;
        const change_words words(*m_states.before, *m_states.after);
        for (step_statement & statement : script.statements) {
            explained_statement told{std::move(statement), {}, {}};
            if (m_name.kind == script_kind::step) {
                for (const int cause : told.statement.causes) {
                    told.reasons.push_back(
                        words.reasonOf(m_changes[static_cast<std::size_t>(cause)], m_explained.from));
                }
                if (told.reasons.empty() && !told.statement.isFrame()) {
                    told.reasons.push_back(QStringLiteral("follows from no change of the model"));
                }
            }
            m_explained.statements.push_back(std::move(told));
        }
        return made;
    }

    /// Says since when the objects have been there of which a script makes a schema.
    ZkBool findOrigins()
    {
        object_origins origins;
        const int last = m_name.kind == script_kind::first ? m_name.to : m_source.newestVersion();
        for (int number = 1; number <= last; ++number) {
            std::shared_ptr<model::project> version;
            if (const ZkBool loaded = m_source.load(number, version); !loaded) {
                return loaded;
            }
            origins.add(*version, versionWord(number));
        }
        for (explained_statement & each : m_explained.statements) {
            if (const QString reason = origins.reasonOf(each.statement.place); !reason.isEmpty()) {
                each.reasons.push_back(reason);
            }
        }
        return ZkBool::success();
    }

    ZkBool judge(const plugin::friendly_settings & options)
    {
        check::accepted_findings accepted;
        ZkBool result = readAccepted(m_source, {}, accepted);
        check_request asked;
        asked.databases = QStringList(m_name.database);
        asked.options = options;
        if (m_name.kind != script_kind::full) {
            asked.to = versionNumber(m_explained.to);
            if (m_name.kind == script_kind::step) {
                asked.from = m_name.from;
            }
        }
        if (result) {
            result = checkSource(m_statements, m_source, asked, m_explained.report);
        }
        check::accept(accepted, QDate::currentDate(), m_explained.report);
        for (const check::finding & finding : m_explained.report.findings) {
            addFinding(finding);
        }
        for (explained_statement & each : m_explained.statements) {
            std::stable_sort(
                each.findings.begin(), each.findings.end(),
                [](const check::finding * a, const check::finding * b) { return a->weight > b->weight; });
        }
        return result;
    }

    void addFinding(const check::finding & finding)
    {
        for (explained_statement & each : m_explained.statements) {
            const check::statement_place & place = each.statement.place;
            if (finding.statement && finding.statement->script == place.script &&
                finding.statement->line == place.line) {
                each.findings.push_back(&finding);
                return;
            }
        }
    }

    plugin::statement_source & m_statements;
    source & m_source;
    const script_name & m_name;
    explained_script & m_explained;
    compared_states m_states;
    std::vector<model::model_change> m_changes;
};

} // namespace

ZkBool readScriptName(plugin::statement_source & statements, const QString & name, script_name & read)
{
    static const QRegularExpression form(
        QStringLiteral("_([a-z]+)_db_schema_(?:full|v(\\d{1,9})(?:_to_v(\\d{1,9}))?)\\.sql$"));
    const QRegularExpressionMatch match = form.match(name);
    QList<plugin::statement_database> databases;
    if (const ZkBool listed = statements.listDatabases(databases); !listed) {
        return listed;
    }
    const auto named = std::find_if(databases.cbegin(), databases.cend(), [&match](const auto & each) {
        return each.shortName == match.captured(1);
    });
    if (!match.hasMatch() || named == databases.cend()) {
        return ZkBool::failure(QStringLiteral("%1: is not named as a script of an export, such as "
                                              "shop_postgresql_db_schema_v1_to_v2.sql")
                                   .arg(name));
    }
    read.database = named->key;
    const int first = match.captured(2).toInt();
    const int second = match.captured(3).toInt();
    read.kind = second > 0 ? script_kind::step : first > 0 ? script_kind::first : script_kind::full;
    read.from = second > 0 ? first : 0;
    read.to = second > 0 ? second : first;
    if (read.kind == script_kind::step && read.to <= read.from) {
        return ZkBool::failure(QStringLiteral("%1: %2 to %3 is not a step forwards")
                                   .arg(name, versionWord(read.from), versionWord(read.to)));
    }
    return ZkBool::success();
}

ZkBool explainScript(plugin::statement_source & statements, source & of, const script_name & name,
                     const plugin::friendly_settings & options, explained_script & explained)
{
    return script_explainer(statements, of, name, explained).run(options);
}

} // namespace app
