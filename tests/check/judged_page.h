#pragma once

#include "check/rule_page.h"

#include "check/finding/finding.h"
#include "plugin/export_interface.h"
#include "plugin/plugin_finder.h"
#include "plugin/statement_source.h"

#include <QTemporaryDir>

#include <map>
#include <memory>
#include <vector>

namespace check_pages {

/// What of a page is judged.
struct setting
{
    std::map<QString, QByteArray> versions; ///< texts of the model, the last one is the state
    QByteArray script;                      ///< custom script; empty for none
    QByteArray acceptance;
    bool relationships = true;
    QStringList settings; ///< lines "option value" that are stored once all but the last version is tagged
};

/// The example of a page, and the one that its remedy makes of it.
[[nodiscard]] setting exampleOf(const page & of);
[[nodiscard]] setting mendedOf(const page & of);

/// The plug-in that makes the statements.
class judge
{
public:
    /// Why it could not be loaded; empty when it is there.
    [[nodiscard]] QString load();
    [[nodiscard]] plugin::statement_source & statements() const { return *m_statements; }

private:
    std::unique_ptr<plugin::loaded_plugin> m_plugin;
    plugin::statement_source * m_statements = nullptr;
};

/// A project whose history a page tells, in a folder of its own.
class judged_page
{
public:
    judged_page(const judge & by, const setting & of);
    ~judged_page();

    /// What went wrong; empty for nothing.
    [[nodiscard]] QString error() const { return m_error; }
    /// What is foretold for the whole history.
    [[nodiscard]] check::report report(const QString & database);
    /// The statements of the history, script by script; those of the full script when there is one version.
    [[nodiscard]] std::vector<std::vector<plugin::statement_record>> scripts(const QString & database);
    [[nodiscard]] std::vector<plugin::statement_record> full(const QString & database);
    /// The text form of the state, as a dump writes it.
    [[nodiscard]] QByteArray dump();
    /// Makes the text the state of the project.
    void import(const QByteArray & text);

private:
    [[nodiscard]] plugin::friendly_settings options(const QString & database) const;
    void note(const zk::ZkBool & result);
    void storeSettings();

    const judge & m_by;
    setting m_setting;
    QTemporaryDir m_folder;
    QString m_file;
    QString m_error;
};

} // namespace check_pages
