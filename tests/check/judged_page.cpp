#include "check/judged_page.h"

#include "app/check_run.h"
#include "app/project_work.h"
#include "app/source.h"

#include "check/finding/acceptance.h"
#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "database/facts/facts.h"
#include "model/project.h"
#include "storage/history.h"
#include "storage/text_form.h"
#include "zk/zk_sql_database.h"

#include <QFile>
#include <QSqlError>

namespace check_pages {

namespace {

QString writeFile(const QString & name, const QByteArray & bytes)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? QString()
                                                                                : file.errorString();
}

} // namespace

setting exampleOf(const page & of)
{
    return {of.versions, of.script, of.acceptance, of.relationships, of.settings};
}

setting mendedOf(const page & of)
{
    setting mended{of.versions, of.remedyScript.isEmpty() ? of.script : of.remedyScript,
                   of.remedyAcceptance.isEmpty() ? of.acceptance : of.remedyAcceptance, of.relationships,
                   of.remedySettings.isEmpty() ? of.settings : of.remedySettings};
    for (const auto & [name, text] : of.remedies) {
        mended.versions[name] = text;
    }
    return mended;
}

QString judge::load()
{
    zk::ZkBool why;
    m_plugin = plugin::loaded_plugin::load(KORVANE_PLUGIN_FILE, why);
    m_statements = m_plugin ? dynamic_cast<plugin::statement_source *>(m_plugin->getInterface()) : nullptr;
    return m_statements != nullptr ? QString() : QStringLiteral("no statements: ") + why.getDesc();
}

judged_page::judged_page(const judge & by, const setting & of)
    : m_by(by), m_setting(of), m_file(m_folder.filePath("shop.korv"))
{
    int number = 0;
    for (const auto & [name, text] : of.versions) {
        if (number++ > 0) {
            int tagged = 0;
            m_error += storage::history::tag(m_file, QString(), tagged).text();
        }
        import(text);
    }
    storeSettings();
    if (!of.script.isEmpty()) {
        m_error += writeFile(m_folder.filePath("custom.js"), of.script);
    }
}

judged_page::~judged_page()
{
    zk::ZkSqlDatabase::clearAllDatabases();
}

void judged_page::note(const zk::ZkBool & result)
{
    m_error += result ? QString() : result.getDesc() + u'\n';
}

void judged_page::storeSettings()
{
    if (m_setting.settings.isEmpty()) {
        return;
    }
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    std::shared_ptr<model::project> project;
    note(app::openProject(m_file, project));
    context::ctx_project::getSingleton().setProject(project);
    for (const QString & line : std::as_const(m_setting.settings)) {
        note(m_by.statements().storeOptions({{line.section(u' ', 0, 0), line.section(u' ', 1)}}));
    }
}

void judged_page::import(const QByteArray & text)
{
    const QString model = m_folder.filePath("model.json");
    m_error += writeFile(model, text);
    note(app::importText(model, m_file).result);
}

plugin::friendly_settings judged_page::options(const QString & database) const
{
    plugin::friendly_settings options{{"db", database::factsOf(database)->scripts}};
    if (m_setting.settings.isEmpty()) { // else what is stored counts
        options.insert("relationships", m_setting.relationships ? "yes" : "no");
    }
    if (!m_setting.script.isEmpty()) {
        options.insert("custom-script", m_folder.filePath("custom.js"));
    }
    return options;
}

check::report judged_page::report(const QString & database)
{
    app::source opened;
    note(opened.open(m_file));
    app::check_request asked;
    asked.databases = {database};
    asked.scripts = app::judged_scripts::all;
    asked.options = options(database);
    asked.options.remove("db");
    check::report report;
    note(app::checkSource(m_by.statements(), opened, asked, report));
    check::accepted_findings accepted;
    if (!m_setting.acceptance.isEmpty()) {
        note(check::readAcceptance(m_setting.acceptance, "korvane-check.json", accepted));
    }
    check::accept(accepted, QDate(2026, 11, 22), report);
    return report;
}

std::vector<std::vector<plugin::statement_record>> judged_page::scripts(const QString & database)
{
    app::source opened;
    note(opened.open(m_file));
    if (opened.newestVersion() == 0) {
        return {full(database)};
    }
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    std::vector<std::vector<plugin::statement_record>> scripts;
    std::shared_ptr<model::project> before;
    for (int number = 1; number <= opened.newestVersion() + 1; ++number) {
        std::shared_ptr<model::project> version;
        note(opened.load(number > opened.newestVersion() ? app::Now : number, version));
        version->setName("shop");
        context::ctx_project::getSingleton().setProject(version);
        plugin::statement_list list =
            m_by.statements().stepStatements({before, version, number - 1, number}, options(database));
        note(list.outcome);
        scripts.push_back(std::move(list.records));
        before = version;
    }
    return scripts;
}

std::vector<plugin::statement_record> judged_page::full(const QString & database)
{
    app::source opened;
    note(opened.open(m_file));
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    std::shared_ptr<model::project> now;
    note(opened.load(app::Now, now));
    context::ctx_project::getSingleton().setProject(now);
    plugin::statement_list list = m_by.statements().fullStatements(*now, options(database));
    note(list.outcome);
    return std::move(list.records);
}

QByteArray judged_page::dump()
{
    app::source opened;
    note(opened.open(m_file));
    std::shared_ptr<model::project> now;
    note(opened.load(app::Now, now));
    return storage::text_form::write(*now);
}

} // namespace check_pages
