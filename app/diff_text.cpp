// What changed, for people: the same outline as text and as Markdown.

#include "app/diff_report.h"

#include "app/change_words.h"
#include "app/output.h"

#include "model/project.h"

#include <algorithm>

namespace app {

namespace {

using model::model_change;
using model::object_kind;

struct outline_line
{
    qsizetype depth = 0; ///< 0 for an entity or enumeration
    QString text;
    std::vector<QString> statements; ///< that follow from it
};

/// "no changes", "1 change", "2 changes".
QString countOf(std::size_t number, const QString & what)
{
    switch (number) {
    case 0:
        return QStringLiteral("no %1s").arg(what);
    case 1:
        return QStringLiteral("1 ") + what;
    default:
        return QStringLiteral("%1 %2s").arg(QString::number(number), what);
    }
}

QString headOf(const diff_report & report)
{
    const QString states = QStringLiteral("%1 to %2").arg(report.states.from, report.states.to);
    QString head = QStringLiteral("%1: %2").arg(
        report.hasTwoSources ? states : report.states.state->getName() + QStringLiteral(", ") + states,
        countOf(report.changes.size(), QStringLiteral("change")));
    if (report.script) {
        const std::vector<step_statement> & statements = report.script->statements;
        const auto count = std::count_if(statements.begin(), statements.end(),
                                         [](const step_statement & s) { return !s.isFrame(); });
        head += QStringLiteral(", %1 for %2")
                    .arg(countOf(static_cast<std::size_t>(count), QStringLiteral("statement")),
                         report.script->label);
    }
    return head;
}

/// The entity or enumeration that a change is told under.
const model::named_object & topOf(const model_change & change)
{
    return change.owners.empty() ? change.object : change.owners.back();
}

/// The property that a change is told under; null for one of an entity or enumeration, or of a property as a
/// whole.
const model::named_object * propertyOf(const model_change & change)
{
    if (change.object.kind == object_kind::relationship) {
        return &change.owners.front();
    }
    const bool isField =
        change.change == model::change_kind::renamed || change.change == model::change_kind::changed;
    return change.object.kind == object_kind::property && isField ? &change.object : nullptr;
}

bool isSameObject(const model::named_object & a, const model::named_object & b)
{
    return a.kind == b.kind && a.id == b.id;
}

/// Puts the changes below the objects that they belong to, and the statements below the changes.
class outline
{
public:
    explicit outline(const diff_report & report) : m_words(*report.states.before, *report.states.after)
    {
        std::vector<std::size_t> lineOfChange;
        for (const model_change & change : report.changes) {
            add(change);
            lineOfChange.push_back(m_lines.size() - 1);
        }
        if (report.script) {
            addStatements(*report.script, lineOfChange);
        }
    }

    [[nodiscard]] const std::vector<outline_line> & lines() const { return m_lines; }

private:
    void add(const model_change & change)
    {
        const model::named_object & top = topOf(change);
        const bool isWhole = change.field.isEmpty() && change.owners.empty();
        if (isWhole || !isSameObject(top, m_top)) {
            m_top = top;
            m_property = {};
            addLine(0, isWhole ? m_words.lineOf(change)
                               : QStringLiteral("%1 %2").arg(model::kindName(top.kind), top.name));
            if (isWhole) {
                return;
            }
        }
        const model::named_object * const property = propertyOf(change);
        if (!property) {
            m_property = change.object;
            addLine(1, m_words.lineOf(change));
            return;
        }
        if (!isSameObject(*property, m_property)) {
            m_property = *property;
            addLine(1, QStringLiteral("property ") + property->name);
        }
        addLine(2, m_words.lineOf(change));
    }
    void addLine(qsizetype depth, const QString & text) { m_lines.push_back({depth, text, {}}); }

    /// A statement stands below the first change that it follows from.
    void addStatements(const step_script & script, const std::vector<std::size_t> & lineOfChange)
    {
        std::vector<bool> hasStatement(lineOfChange.size(), false);
        outline_line others{0, QStringLiteral("statements that follow from no change of the model"), {}};
        for (const step_statement & statement : script.statements) {
            for (const int cause : statement.causes) {
                hasStatement[static_cast<std::size_t>(cause)] = true;
            }
            outline_line & line =
                statement.causes.empty()
                    ? others
                    : m_lines[lineOfChange[static_cast<std::size_t>(statement.causes.front())]];
            if (!statement.isFrame()) {
                line.statements.push_back(statement.place.text);
            }
        }
        for (std::size_t change = 0; change < lineOfChange.size(); ++change) {
            if (!hasStatement[change]) {
                m_lines[lineOfChange[change]].text += QStringLiteral(" (no statement)");
            }
        }
        if (!others.statements.empty()) {
            m_lines.push_back(others);
        }
    }

    change_words m_words;
    model::named_object m_top;      ///< under which the next change may stand
    model::named_object m_property; ///< likewise
    std::vector<outline_line> m_lines;
};

QString blanks(qsizetype count)
{
    return QString(count, QLatin1Char(' '));
}

/// The lines of `statement`, each after `indent` blanks.
QString indented(const QString & statement, qsizetype indent)
{
    QString lines;
    for (const QString & line : statement.split(QLatin1Char('\n'))) {
        const QString shown = oneLine(line);
        const auto first = std::find_if(line.cbegin(), line.cend(), [](QChar c) { return c != u' '; });
        lines += blanks(indent + (first - line.cbegin())) + shown + QLatin1Char('\n');
    }
    return lines;
}

/// `text` as Markdown that shows it as it is.
QString escaped(const QString & text)
{
    static const QString special = QStringLiteral("\\`*_[]<#|~&");
    QString result;
    for (const QChar c : text) {
        if (special.contains(c)) {
            result += QLatin1Char('\\');
        }
        result += c;
    }
    // At the beginning of an item a sign would begin another one.
    return QStringLiteral("+->").contains(text.left(1)) ? QLatin1Char('\\') + result : result;
}

/// The statements as a block of code of a list entry that is `indent` blanks in.
QString codeBlock(const std::vector<QString> & statements, qsizetype indent)
{
    QString code;
    for (const QString & statement : statements) {
        code += indented(statement, indent);
    }
    QString fence = QStringLiteral("```");
    while (code.contains(fence)) {
        fence += QLatin1Char('`');
    }
    return QStringLiteral("\n%1%2sql\n%3%1%2\n").arg(blanks(indent), fence, code);
}

} // namespace

QByteArray diffText(const diff_report & report)
{
    QString text = oneLine(headOf(report)) + QLatin1Char('\n');
    const outline told(report);
    for (const outline_line & line : told.lines()) {
        text += line.depth == 0 ? QStringLiteral("\n") : blanks(2 * line.depth);
        text += oneLine(line.text) + QLatin1Char('\n');
        for (const QString & statement : line.statements) {
            text += indented(statement, 2 * line.depth + 4);
        }
    }
    return text.toUtf8();
}

QByteArray diffMarkdown(const diff_report & report)
{
    QString text = QStringLiteral("## %1\n").arg(escaped(oneLine(headOf(report))));
    bool isList = false;
    const outline told(report);
    for (const outline_line & line : told.lines()) {
        const QString shown = escaped(oneLine(line.text));
        if (line.depth == 0) {
            text += QStringLiteral("\n### %1\n").arg(shown);
        } else {
            text += (isList ? QString() : QStringLiteral("\n")) + blanks(2 * (line.depth - 1)) +
                    QStringLiteral("- %1\n").arg(shown);
        }
        if (!line.statements.empty()) {
            text += codeBlock(line.statements, 2 * line.depth);
        }
        isList = line.depth > 0;
    }
    return text.toUtf8();
}

} // namespace app
