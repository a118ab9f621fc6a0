// What the forges read: annotations of GitHub's workflows, GitLab's code quality, and Markdown for comments.

#include "check/report/report.h"

#include "check/report/markdown.h"
#include "check/report/remedy_lines.h"

#include <algorithm>

namespace check {

namespace {

using json = nlohmann::ordered_json;

/// Findings that nobody has accepted, the worst first.
std::vector<const finding *> openFindings(const report & of)
{
    std::vector<const finding *> open;
    for (const finding & each : of.findings) {
        if (!each.accepted) {
            open.push_back(&each);
        }
    }
    std::stable_sort(open.begin(), open.end(),
                     [](const finding * a, const finding * b) { return a->weight > b->weight; });
    return open;
}

QString fileOf(const finding & of)
{
    return of.location ? of.location->file : of.script;
}

int lineOf(const finding & of)
{
    return of.location ? of.location->line : (of.statement ? of.statement->line : 1);
}

/// The text of a workflow command; in properties more is escaped.
QString escaped(QString text, bool isProperty)
{
    text.replace(QLatin1Char('%'), QLatin1String("%25"))
        .replace(QLatin1Char('\r'), QLatin1String("%0D"))
        .replace(QLatin1Char('\n'), QLatin1String("%0A"));
    if (isProperty) {
        text.replace(QLatin1Char(':'), QLatin1String("%3A")).replace(QLatin1Char(','), QLatin1String("%2C"));
    }
    return text;
}

/// A cell of a Markdown table: what the text says, whatever its letters mean there.
QString cell(const QString & text)
{
    QString safe;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        // Between letters a low line is no mark.
        const bool isInWord = i > 0 && text.at(i - 1).isLetterOrNumber() && i + 1 < text.size() &&
                              text.at(i + 1).isLetterOrNumber();
        if (c == u'\n' || c == u'\r') {
            safe += u' ';
        } else if (c == u'<' || c == u'&') {
            safe += QLatin1String(c == u'<' ? "&lt;" : "&amp;");
        } else {
            const bool isMark = QStringView(u"\\`*[]~|").contains(c) || (c == u'_' && !isInWord);
            safe += isMark ? QString(u'\\') + c : QString(c);
        }
    }
    return safe;
}

/// The same of code, which is shown as it stands.
QString codeCell(QString text)
{
    return codeSpan(
        text.replace(QLatin1Char('|'), QLatin1String("\\|")).replace(QLatin1Char('\n'), QLatin1Char(' ')));
}

/// What to do, with a line for each statement and each change of the model.
QString remedyCell(const remedy & of)
{
    QString text = cell(of.text);
    for (const remedy_lines & each : linesOf(of)) {
        text += QStringLiteral("<br>%1:").arg(each.heading);
        for (const QString & line : each.lines) {
            text += QStringLiteral("<br>") + codeCell(line);
        }
    }
    return text;
}

} // namespace

QByteArray githubReport(const report & of)
{
    // A step shows ten of each kind and passes over the others without a word.
    constexpr std::size_t Shown = 10;
    constexpr const char * Words[] = {"notice", "warning", "error"};
    std::size_t counts[3] = {};
    QString text;
    for (const finding * const each : openFindings(of)) {
        const auto kind = static_cast<std::size_t>(each->weight);
        if (++counts[kind] < Shown) {
            text += QStringLiteral("::%1 file=%2,line=%3,title=%4::%5\n")
                        .arg(QLatin1String(Words[kind]), escaped(fileOf(*each), true),
                             QString::number(lineOf(*each)),
                             escaped(each->code + QLatin1Char(' ') + each->name, true),
                             escaped(each->message + QLatin1Char('\n') + each->way.text, false));
        }
    }
    for (std::size_t kind = 3; kind-- > 0;) {
        if (counts[kind] >= Shown) {
            text += QStringLiteral("::%1 title=korvane check::%2 more of this severity\n")
                        .arg(QLatin1String(Words[kind]), QString::number(counts[kind] - Shown + 1));
        }
    }
    return text.toUtf8();
}

QByteArray gitlabReport(const report & of)
{
    constexpr const char * Words[] = {"info", "minor", "major"};
    json list = json::array();
    for (const finding * const each : openFindings(of)) {
        list.push_back(
            {{"description", (each->message + QLatin1Char(' ') + each->way.text).toStdString()},
             {"check_name", QString(each->code).toStdString()},
             // Two scripts can have the same finding, which are two issues here.
             {"fingerprint", (each->fingerprint + QLatin1Char('-') + each->step).toStdString()},
             {"severity", Words[static_cast<std::size_t>(each->weight)]},
             {"location", {{"path", fileOf(*each).toStdString()}, {"lines", {{"begin", lineOf(*each)}}}}}});
    }
    return QByteArray::fromStdString(list.dump(2, ' ', false, json::error_handler_t::replace)) + '\n';
}

QByteArray markdownReport(const report & of)
{
    const summary counted = summaryOf(of);
    QString text = QStringLiteral("## korvane check: %1\n\n").arg(cell(of.project));
    for (const run & each : of.runs) {
        text += QStringLiteral("- `%1` (%2): %3 statements\n")
                    .arg(each.script, each.basis, QString::number(each.statements));
    }
    const std::vector<const finding *> open = openFindings(of);
    if (!open.empty()) {
        text += QLatin1String("\n| | rule | where | what | what to do |\n| --- | --- | --- | --- | --- |\n");
    }
    for (const finding * const each : open) {
        text += QStringLiteral("| %1 | %2 | %3:%4 | %5 | %6 |\n")
                    .arg(wordOf(each->weight), each->code, cell(fileOf(*each)),
                         QString::number(lineOf(*each)), cell(each->message), remedyCell(each->way));
    }
    text += QStringLiteral("\nErrors: %1, warnings: %2, notes: %3, accepted: %4\n")
                .arg(counted.errors)
                .arg(counted.warnings)
                .arg(counted.notes)
                .arg(counted.accepted);
    return text.toUtf8();
}

} // namespace check
