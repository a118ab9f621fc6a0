#include "app/window/database/database_controller.h"

#include "app/window/database/database_dialog.h"
#include "app/window/export/message_panel.h"
#include "app/window/project_commands.h"
#include "app/window/project_session.h"
#include "app/window/version_dialogs.h"
#include "app/window/window_dialogs.h"

#include "app/import/database_import.h"
#include "app/plugin_choice.h"
#include "app/project_work.h"

#include "model/file_suffix.h"
#include "plugin/base_interface.h"
#include "tools/held_dialog.h"
#include "tools/wait_cursor.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSet>

namespace app {

database_controller::database_controller(project_session & session, message_panel & messages,
                                         project_commands & projects, const found_plugins & found,
                                         QWidget * window)
    : QObject(window), m_session(session), m_messages(messages), m_projects(projects), m_found(found),
      m_pWindow(window)
{
}

void database_controller::importDatabase()
{
    plugin::statement_source * const statements = firstStatementSource(m_found);
    if (m_session.isHeld()) {
        return;
    }
    if (!statements) {
        warn(m_pWindow, database_dialog::title(), noPluginText());
        return;
    }
    const tools::held_dialog<database_dialog> dialog(m_projects.folderToStartIn(), m_pWindow);
    if (dialog.exec() == QDialog::Accepted) {
        importTables(dialog->held(), dialog->tables(), dialog->tellsLinks(), *statements);
    }
}

void database_controller::importTables(const held_schema & held, const QStringList & tables, bool tellsLinks,
                                       plugin::statement_source & statements)
{
    const QString proposed = QStringLiteral("%1/%2.%3")
                                 .arg(m_projects.folderToStartIn(), QFileInfo(held.name).completeBaseName(),
                                      model::ProjectFileSuffix);
    const QString target = m_projects.chooseTarget(held.name, proposed);
    if (target.isEmpty()) {
        return;
    }
    const QSet<QString> chosen(tables.begin(), tables.end());
    import_choice choice{target, [&chosen](const QString & table) { return chosen.contains(table); },
                         tellsLinks, true};
    const auto run = [&] {
        const tools::wait_cursor cursor;
        const session_hold hold(m_session);
        return importSchema(held, choice, statements);
    };
    database_import_result done = run();
    if (done.result && !isWanted(target, held.name, done)) {
        return;
    }
    if (done.result) {
        choice.isPlan = false;
        done = run();
    }
    if (!done.result) {
        warn(m_pWindow, database_dialog::title(), done.result.getDesc());
        return;
    }
    tell(target, held.name, done);
    m_projects.openFile(target);
}

bool database_controller::isWanted(const QString & target, const QString & source,
                                   const database_import_result & planned) const
{
    const QString file = QDir::toNativeSeparators(target);
    const QString question =
        replacesModel(target)
            ? tr("This changes the model of '%1' to that of %2. Settings and versions are kept.")
                  .arg(file, source)
            : tr("This makes the project '%1' of %2.").arg(file, source);
    const tools::held_dialog<import_dialog> dialog(database_dialog::title(), question,
                                                   planned.plan.value_or(diff_report()), m_pWindow);
    QStringList notes = renameLines(planned.renames, true);
    if (!planned.leftOut.isEmpty()) {
        notes << tr("Without a place in the model, or made otherwise by scripts: %1. The messages list them "
                    "after the import.")
                     .arg(QLocale().toString(planned.leftOut.size()));
    }
    dialog->showNotes(notes);
    return dialog.exec() == QDialog::Accepted;
}

void database_controller::tell(const QString & target, const QString & source,
                               const database_import_result & done)
{
    m_messages.begin(tr("Import of %1").arg(source));
    for (const QString & line : renameLines(done.renames, false)) {
        m_messages.addMessage(line, plugin::WarningMessage);
    }
    for (const database::left_out & each : done.leftOut) {
        m_messages.addMessage(each.table.isEmpty() ? each.what
                                                   : QStringLiteral("%1: %2").arg(each.table, each.what),
                              plugin::ProgressMessage);
    }
    m_messages.end(true, tr("Project '%1' imported into %2 (entities: %3; without a place in the model: %4)")
                             .arg(done.projectName, QDir::toNativeSeparators(target),
                                  QLocale().toString(static_cast<qlonglong>(done.entities)),
                                  QLocale().toString(done.leftOut.size())));
    Q_EMIT messagesWanted();
}

} // namespace app
