#pragma once

#include "check/finding/values.h"
#include "model/model_difference.h"
#include "plugin/statement_source.h"

#include <QString>
#include <QStringList>

#include <nlohmann/json.hpp>

#include <optional>
#include <vector>

/// Foretells what scripts will do to a database, and says it in words of the model.
namespace check {

enum class severity
{
    note,
    warning,
    error
};

/// What comes of it.
enum class effect
{
    refused, ///< the server will not run the statement
    loss,    ///< it runs, and values or a table are gone
    silent,  ///< the model changed and no statement follows it
    differs, ///< it runs and leaves something else than the model says
    blocks,  ///< locks or rewrites
    advice
};

/// When it comes.
enum class occasion
{
    always,
    rows ///< only when there are rows
};

/// An object of the model: "gig", "gig.length".
using object = model::named_object;

/// A statement as a server runs it, and where it stands.
struct statement_place
{
    QString script; ///< by the name that an export gives it
    int line = 0;   ///< of the script, from 1
    int lines = 1;
    plugin::statement_action action = plugin::statement_action::begin;
    QString text;
    bool isCustom = false; ///< the custom script had a hand in it
    std::vector<object> objects;
};

/// One operation of a JSON Patch (RFC 6902).
struct patch_operation
{
    enum class kind
    {
        test,
        add,
        replace,
        remove,
        move
    };
    kind what = kind::test;
    QString path;
    nlohmann::ordered_json value; ///< of a test, an addition, a replacement
    QString from;                 ///< of a move
};

/// As the patch has it: a list of objects, or null for no operation.
[[nodiscard]] nlohmann::ordered_json jsonOf(const std::vector<patch_operation> & patch);

/// What a person can do about a finding.
struct remedy
{
    QString text;
    /// Statements to run, complete, in the order in which they are run: the first of them before the script,
    /// the others after it, refused statements passed over. Those of later findings take them for done.
    QStringList sql;
    int before = 0;                     ///< how many are run before the script
    std::vector<patch_operation> model; ///< a JSON Patch of the model's text form; may be empty
};

/// A place in a text form.
struct source_place
{
    QString file; ///< as it was given
    int line = 0;
    int column = 0;
};

/// Why a finding was accepted.
struct acceptance
{
    QString why;
    QString until; ///< the last day, as 2027-01-01; empty for no end
};

struct finding
{
    QLatin1String code; ///< of its rule
    QLatin1String name;
    severity weight = severity::note;
    effect what = effect::advice;
    occasion when = occasion::always;
    QString database;    ///< key, as on the command line
    QLatin1String error; ///< the server's own code, for a statement that is refused
    std::optional<statement_place> statement;
    QString message; ///< what will happen
    values words;    ///< what the names in its texts stood for, until it is told
    QString why;
    remedy way;
    std::vector<object> objects;
    QLatin1String fields;    ///< of the objects whose change it is about, see rule_text
    QStringList differences; ///< what the database has otherwise for this reason, as "column t_gig.length"
    std::optional<source_place> location; ///< of the first object in the model's text form
    int consequenceOf = -1; ///< index of the finding without which this would not be; -1 for none
    QString script;         ///< that it belongs to, by name; empty for none
    QString step;           ///< "v2-v3", "full", as acceptance names it
    QString fingerprint;
    std::optional<acceptance> accepted;
};

/// One script on one database.
struct run
{
    QString database;
    QString basis; ///< what the judgement rests on: "run on PostgreSQL 15", "documentation of Oracle"
    QString script;
    QString from; ///< "v2"; empty for a script that begins with nothing
    QString to;   ///< "v3", "now"
    QString step; ///< as acceptance files name it
    int statements = 0;
    int judged = 0; ///< those of them in a form that is known
};

struct report
{
    QString project;
    std::vector<run> runs;
    std::vector<finding> findings;
};

/// How many findings there are of each severity, and how many are accepted, which count nowhere else.
struct summary
{
    int errors = 0;
    int warnings = 0;
    int notes = 0;
    int accepted = 0;
};
[[nodiscard]] summary summaryOf(const report & of);

/// "KV203 error: message", with the word accepted in the place of the severity for what is.
[[nodiscard]] QString briefText(const finding & of);
/// Whether a person has to look at `a` before `b`: the graver one first, what is accepted last.
[[nodiscard]] bool isWorse(const finding & a, const finding & b);

/// The words of reports and acceptance files.
[[nodiscard]] QLatin1String wordOf(severity weight);
[[nodiscard]] QLatin1String wordOf(effect what);
[[nodiscard]] QLatin1String wordOf(occasion when);
/// The severity of that word; none when it is none.
[[nodiscard]] std::optional<severity> severityOf(const QString & word);
/// "1 statement", "2 statements": `what` takes an "s" for several.
[[nodiscard]] QString counted(qsizetype count, QLatin1String what);
/// "1 error, 2 warnings, 0 notes".
[[nodiscard]] QString wordsOf(const summary & of);

/// Of code, database and ids, so it survives a rename and a moved line.
[[nodiscard]] QString fingerprintOf(const finding & of);

} // namespace check
