// What changed, for people: the same outline as text and as Markdown.

#include "app/diff_outline.h"

#include "app/output.h"

#include "model/project.h"

#include <algorithm>

namespace app {

namespace {

/// "no changes", "1 change", "2 changes".
QString countOf(qsizetype number, QLatin1String what)
{
    return number == 0 ? QStringLiteral("no %1s").arg(what) : check::counted(number, what);
}

QString headOf(const diff_report & report)
{
    const QString states = QStringLiteral("%1 to %2").arg(report.states.from, report.states.to);
    QString head = QStringLiteral("%1: %2").arg(
        report.hasTwoSources ? states : report.states.state->getName() + QStringLiteral(", ") + states,
        countOf(std::ssize(report.changes), QLatin1String("change")));
    if (report.script) {
        const std::vector<step_statement> & statements = report.script->statements;
        const auto count = std::count_if(statements.begin(), statements.end(),
                                         [](const step_statement & s) { return !s.isFrame(); });
        head += QStringLiteral(", %1 for %2")
                    .arg(countOf(count, QLatin1String("statement")), report.script->label);
    }
    const check::summary found = check::summaryOf(report.found);
    const auto add = [&head](int number, const QString & what) {
        head += number == 0 ? QString() : QStringLiteral(", ") + what;
    };
    add(found.errors, check::counted(found.errors, check::wordOf(check::severity::error)));
    add(found.warnings, check::counted(found.warnings, check::wordOf(check::severity::warning)));
    add(found.notes, check::counted(found.notes, check::wordOf(check::severity::note)));
    add(found.accepted, QStringLiteral("%1 accepted").arg(found.accepted));
    return head;
}

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
QString codeBlock(const std::vector<const step_statement *> & statements, qsizetype indent)
{
    QString code;
    for (const step_statement * const statement : statements) {
        code += indented(statement->place.text, indent);
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
    for (const outline_line & line : outlineOf(report)) {
        const qsizetype indent = qsizetype(2) * line.depth;
        text += line.depth == 0 ? QStringLiteral("\n") : blanks(indent);
        text += oneLine(line.text) + QLatin1Char('\n');
        for (const step_statement * const statement : line.statements) {
            text += indented(statement->place.text, indent + 4);
        }
        for (const check::finding * const finding : line.findings) {
            text += blanks(indent + 4) + QStringLiteral("! %1\n").arg(oneLine(check::briefText(*finding)));
        }
    }
    return text.toUtf8();
}

QByteArray diffMarkdown(const diff_report & report)
{
    QString text = QStringLiteral("## %1\n").arg(escaped(oneLine(headOf(report))));
    bool isList = false;
    for (const outline_line & line : outlineOf(report)) {
        const qsizetype indent = qsizetype(2) * line.depth;
        const QString shown = escaped(oneLine(line.text));
        if (line.depth == 0) {
            text += QStringLiteral("\n### %1\n").arg(shown);
        } else {
            text += (isList ? QString() : QStringLiteral("\n")) + blanks(indent - 2) +
                    QStringLiteral("- %1\n").arg(shown);
        }
        if (!line.statements.empty()) {
            text += codeBlock(line.statements, indent);
        }
        text += line.findings.empty() ? QString() : QStringLiteral("\n");
        for (const check::finding * const finding : line.findings) {
            text +=
                blanks(indent) + QStringLiteral("- %1\n").arg(escaped(oneLine(check::briefText(*finding))));
        }
        isList = line.depth > 0;
    }
    return text.toUtf8();
}

} // namespace app
