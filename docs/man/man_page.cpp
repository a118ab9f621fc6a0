#include "docs/man/man_page.h"

#include <QRegularExpression>

namespace manual {

using app::described_command;
using app::described_option;

namespace {

/// The cells of a row of a table; of a link its text stays, as such a page leads nowhere.
QStringList cellsOf(QString row)
{
    static const QRegularExpression bar(QStringLiteral("(?<!\\\\)\\|"));
    static const QRegularExpression link(QStringLiteral("\\[([^\\]]+)\\]\\([^)]+\\)"));
    QStringList cells = row.replace(link, QStringLiteral("\\1")).split(bar);
    for (QString & cell : cells) {
        cell = cell.replace(QLatin1String("\\|"), QLatin1String("|")).trimmed();
    }
    return cells.mid(1, cells.size() - 2);
}

/// The cells of the row of `text` whose first cell begins with `call` as code, alone or with what it takes.
QStringList rowOf(const QString & text, const QString & call)
{
    const QRegularExpression row(QStringLiteral("^\\| `%1[` ][^\\n]*$").arg(QRegularExpression::escape(call)),
                                 QRegularExpression::MultilineOption);
    return cellsOf(row.match(text).captured());
}

/// What stands between backticks in `text`.
QStringList codesOf(const QString & text)
{
    QStringList codes;
    const QStringList parts = text.split(QLatin1Char('`'));
    for (qsizetype i = 1; i < parts.size(); i += 2) {
        codes << parts[i];
    }
    return codes;
}

/// The section after the anchor `name`, with its heading as one of a page; empty when there is none.
QString sectionOf(const QString & text, const QString & name)
{
    const qsizetype begin = text.indexOf(QStringLiteral("<a id=\"%1\"></a>").arg(name));
    if (begin < 0) {
        return {};
    }
    const QString heading = QStringLiteral("\n## ");
    const qsizetype first = text.indexOf(heading, begin) + 1;
    const qsizetype next = text.indexOf(heading, first);
    QString section = text.mid(first + 1, next < 0 ? -1 : next - first);
    static const QRegularExpression anchorOrLink(
        QStringLiteral("<a id=\"[^\"]*\"></a>|\\[([^\\]]+)\\]\\([^)]+\\)"));
    section = section.replace(anchorOrLink, QStringLiteral("\\1")).trimmed() + QStringLiteral("\n\n");
    const qsizetype end = section.indexOf(QLatin1Char('\n'));
    return section.left(end).toUpper() + section.mid(end);
}

QString paragraph(const char * heading, const QString & text)
{
    return text.isEmpty() ? QString()
                          : QStringLiteral("# %1\n\n%2\n\n").arg(QLatin1String(heading), text.trimmed());
}

/// A word, and below it what it means.
QString definition(const QString & word, const QString & meaning)
{
    return QStringLiteral("%1\n\n> %2\n\n").arg(word, meaning);
}

QString optionsOf(const described_command & command, bool byPlace)
{
    QString text;
    for (const described_option & option : command.options) {
        const QString value =
            option.placeholder.isEmpty() ? QString() : QStringLiteral(" *%1*").arg(option.placeholder);
        if (option.isByPlace() == byPlace) {
            text +=
                definition(QStringLiteral("**%1**%2").arg(option.names.join(QStringLiteral("**, **")), value),
                           option.what);
        }
    }
    return text;
}

/// The part of the help's last lines that begins with `mark`, without it.
QString footerPart(const described_command & command, const QString & mark)
{
    for (const QString & part : command.footer.split(QStringLiteral("\n\n"))) {
        if (part.startsWith(mark)) {
            return part.mid(mark.size());
        }
    }
    return {};
}

/// What the help says besides exit status and examples.
QString footerText(const described_command & command)
{
    QString text;
    for (const QString & part : command.footer.split(QStringLiteral("\n\n"))) {
        if (!part.startsWith(QLatin1String("Exit status: ")) && !part.startsWith(QLatin1String("Example"))) {
            text += part + QStringLiteral("\n\n");
        }
    }
    return text;
}

/// Each line as it is.
QString asCode(const QString & lines)
{
    return lines.isEmpty() ? QString() : QStringLiteral("```\n%1\n```").arg(lines);
}

QString examplesOf(const described_command & command)
{
    return asCode(footerPart(command, QStringLiteral("Examples:\n")) +
                  footerPart(command, QStringLiteral("Example: ")));
}

QString exitStatuses(const described_command & command)
{
    QString list;
    QString text = footerPart(command, QStringLiteral("Exit status: ")).simplified();
    if (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    for (const QString & each : text.split(QStringLiteral("; "))) {
        list += definition(QStringLiteral("**%1**").arg(each.section(QLatin1Char(' '), 0, 0)),
                           each.section(QLatin1Char(' '), 1));
    }
    return list;
}

QString commandList(const QList<described_command> & commands)
{
    QString list;
    for (const described_command & each : commands.mid(1)) {
        list += definition(QStringLiteral("**korvane-%1**(1)").arg(each.name), each.description);
    }
    return list;
}

/// The rows of the table of `text` that explains the environment's variables.
QString environment(const QString & text)
{
    static const QRegularExpression row(QStringLiteral("^\\| `[A-Z_]+` \\|[^\\n]*$"),
                                        QRegularExpression::MultilineOption);
    QString list;
    for (auto found = row.globalMatch(text); found.hasNext();) {
        const QStringList cells = cellsOf(found.next().captured());
        list += definition(QStringLiteral("**%1**").arg(codesOf(cells[0]).constFirst()), cells[1]);
    }
    return list;
}

/// `text`, which begins as a part of a sentence, as a paragraph.
QString sentence(const QString & text)
{
    return text.isEmpty() ? QString() : text[0].toUpper() + text.mid(1) + QStringLiteral(".\n\n");
}

} // namespace

QString manPage(const described_command & command, const QList<described_command> & commands,
                const QString & text)
{
    const QString program = commands.constFirst().name;
    const bool isProgram = command.name == program;
    const QString call = isProgram ? program : program + QLatin1Char(' ') + command.name;
    const QString title = isProgram ? program : program + QLatin1Char('-') + command.name;
    const QStringList row = rowOf(text, isProgram ? call + QStringLiteral(" [PROJECT.korv]") : call);
    const QString help =
        definition(QStringLiteral("**-h**, **--help**"), QStringLiteral("Print the help and exit"));
    QString page = paragraph("NAME", title + QStringLiteral(" - ") + command.description);
    page += paragraph("SYNOPSIS", asCode(codesOf(row.value(0)).join(QLatin1Char('\n'))));
    page += paragraph("DESCRIPTION", sentence(row.value(1)) + footerText(command));
    page += paragraph("COMMANDS", isProgram ? commandList(commands) : QString());
    page += paragraph("ARGUMENTS", optionsOf(command, true));
    page += paragraph("OPTIONS", optionsOf(command, false) + help);
    page += sectionOf(text, command.name);
    page += paragraph("EXIT STATUS", exitStatuses(command));
    page += paragraph("ENVIRONMENT", isProgram ? environment(text) : QString());
    page += paragraph("EXAMPLES", examplesOf(command));
    page += paragraph("SEE ALSO", isProgram ? QStringLiteral("the manual, which the window opens with F1")
                                            : QStringLiteral("**%1**(1)").arg(program));
    return page;
}

} // namespace manual
