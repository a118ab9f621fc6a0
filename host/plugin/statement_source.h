#pragma once

#include "korvane_global.h"
#include "zk/zk_bool.h"

#include <QLatin1String>
#include <QList>
#include <QMap>
#include <QString>
#include <QtPlugin>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace model {
class project;
}

namespace plugin {

/// The kinds of statements of which a script is made.
enum class statement_action
{
    begin,
    create_table,
    create_extra_table, ///< the link table of a many-to-many relationship
    create_index,
    add_foreign_key,
    drop_table,
    rename_table,
    drop_column,
    add_column,
    rename_column,
    drop_index,
    drop_foreign_key,
    end
};

/// The name by which custom scripts know a kind of statement, such as "RENAME_TABLE".
[[nodiscard]] KORVANE_EXPORT QLatin1String actionName(statement_action action);

/// One statement of a script, as an export writes it: its text and a line feed. A record is what one step of
/// the export says, which is no more than a server runs at once for most, but a run of statements for the
/// columns of a composite key, for Oracle's counted keys, and for whatever a custom script makes of it.
struct statement_record
{
    QString script; ///< name of the file that an export gives the script, without its folder
    int from = 0;   ///< version that the script begins with; 0 when it begins with nothing
    int to = 0;     ///< version that it leads to; 0 for the full schema
    int line = 0;   ///< of the script, on which the text begins; 1 is the first
    int lines = 0;  ///< that the text takes, at least 1
    statement_action action = statement_action::begin;
    QString text; ///< without the line feed; empty for a step that says nothing, which is an empty line
    QString defaultText; ///< what it is without the custom script; the same as `text` when that left it alone
    long entity = 0;     ///< id of the entity that it is about; 0 for none
    long property = 0;
    long relationship = 0;

    [[nodiscard]] bool isReplaced() const { return text != defaultText; }
};

/// The statements of some scripts, in the order in which an export writes them.
struct statement_list
{
    zk::ZkBool outcome; ///< a failure carries the message to show
    /// Those before a failure as well: all that the scripts would hold until then.
    std::vector<statement_record> records;
};

/// Takes a statement as soon as it is made. It may not throw, and may not ask anything of the plug-in.
using statement_receiver = std::function<void(statement_record record)>;

/// A database that statements can be made for.
struct statement_database
{
    int number = 0;    ///< as it is stored and given on the command line
    QString key;       ///< word for a command line, such as "postgresql"; "generic" is for none in particular
    QString label;     ///< name for people
    QString shortName; ///< part of the names of scripts
    /// C++ type to SQL type, in the order in which a person sees it: the list of the project's settings, else
    /// that of the database. The type "<default type>" stands for all others.
    QList<std::pair<QString, QString>> types;
};

struct friendly_value
{
    QString name;   ///< as in "--db NAME"
    QString number; ///< the same as a value of the plug-in's long option
    QString label;  ///< for people
};

/// An option of the export by the name that a person remembers.
struct friendly_option
{
    QString name;                 ///< without dashes, such as "db"
    QString longName;             ///< the option of the plug-in that does the same, with its dashes
    QString about;                ///< what it sets, in a few words
    QString argument;             ///< what stands for the value in a help text, such as "FILE"
    QList<friendly_value> values; ///< all that it takes; empty when any text will do
    QString stored; ///< what counts when it is not given: a name of `values`, or the stored text
};

/// Names of options and what they are set to; see statement_source::listOptions().
using friendly_settings = QMap<QString, QString>;

/// The project that a step leads from and the one that it leads to. Both need their lists of entities;
/// nothing else has to be loaded, and neither has to be the current project. Objects are matched by their
/// ids, and an entity counts as changed when its version is another one.
struct project_step
{
    std::shared_ptr<model::project> previous; ///< null for the first version, which is made as a whole
    std::shared_ptr<model::project> current;
    int from = 0; ///< number of the version `previous`, for the name of the script; 0 for none
    int to = 0;   ///< of `current`; the next one after the newest version for the state of the project
};

/// What an export plug-in can say about the statements of its scripts without writing any, as an interface
/// that a plug-in has or has not: qobject_cast<plugin::statement_source *>() of its object tells.
///
/// Statements are made in the same way as those of an export, custom script and type lists included. What
/// counts are the settings that are stored with the current project, or the plug-in's defaults when there is
/// none or it has no file; the options of a call come before them and last for this call only. Neither the
/// plug-in's settings nor the stored ones change, and no script is written. Whether a custom script may run
/// is asked of the host's guard, as in an export (tools::askScriptGuard); one that is left out is not run,
/// and one that is refused is a failure. What it writes to its console comes as onMessage() of the plug-in,
/// and how far the work is as onProgress(). The current project is the same before and after; connections to
/// databases may be closed, as an export does it.
///
/// All operations belong on the thread of the plug-in, and none throws.
class KORVANE_EXPORT statement_source
{
public:
    statement_source();
    virtual ~statement_source();
    statement_source(const statement_source &) = delete;
    statement_source & operator=(const statement_source &) = delete;

    /// All databases, by number, with their types; a failure, when the stored settings cannot be read, leaves
    /// `databases` empty.
    virtual zk::ZkBool listDatabases(QList<statement_database> & databases) = 0;
    /// The options that the operations below take, and what is stored for each; a failure, when the stored
    /// settings cannot be read, leaves `options` empty.
    virtual zk::ZkBool listOptions(QList<friendly_option> & options) = 0;
    /// Stores `options` with the current project; what they do not name stays. Fails, and stores nothing, for
    /// a name or value that listOptions() does not have, and when there is no project file to store them in.
    virtual zk::ZkBool storeOptions(const friendly_settings & options) = 0;

    // In the operations below `options` are those of listOptions(); "schema" has no say in them, and "path"
    // only in what a custom script is told. A name or value that is none of theirs is a failure that lists
    // the right ones. With a `receiver` each statement goes there, in the same order, and none is listed:
    // those of a large model take much memory, and whoever judges them can begin with the first.

    /// The script that makes the whole schema of `project`.
    [[nodiscard]] virtual statement_list fullStatements(model::project & project,
                                                        const friendly_settings & options,
                                                        const statement_receiver & receiver = {}) = 0;
    /// The scripts of the current project's versions: the first version as a whole, the step to each version,
    /// and the step from the newest one to `project`, which is the current project. Empty without a version.
    /// Versions are restored into files of the temporary folder, which are gone at the end; two are in memory
    /// at most.
    [[nodiscard]] virtual statement_list historyStatements(model::project & project,
                                                           const friendly_settings & options,
                                                           const statement_receiver & receiver = {}) = 0;
    /// The script of one step between any two projects.
    [[nodiscard]] virtual statement_list stepStatements(const project_step & step,
                                                        const friendly_settings & options,
                                                        const statement_receiver & receiver = {}) = 0;
};

} // namespace plugin

Q_DECLARE_INTERFACE(plugin::statement_source, "korvane.statement_source/2")
