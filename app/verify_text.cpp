// What was proven, for people: the same rows and lines as text and as Markdown.

#include "app/verify_reports.h"

#include "app/output.h"

#include "check/report/markdown.h"

#include <QMap>
#include <QStringList>

#include <algorithm>

namespace app {

namespace {

const QStringList Titles = {QStringLiteral("database"),       QStringLiteral("server"),
                            QStringLiteral("full runs"),      QStringLiteral("history runs"),
                            QStringLiteral("history = full"), QStringLiteral("full = foretold"),
                            QStringLiteral("rows kept"),      QStringLiteral("refusals foretold")};

QString ofAll(int some, int all)
{
    return QStringLiteral("%1 of %2").arg(some).arg(all);
}

QString differences(const std::vector<verified_difference> & of)
{
    const auto unexplained = std::count_if(
        of.begin(), of.end(), [](const verified_difference & each) { return each.explainedBy.isEmpty(); });
    if (of.empty()) {
        return QStringLiteral("yes");
    }
    return unexplained == 0 ? QStringLiteral("%1 foretold").arg(of.size())
                            : QStringLiteral("no, %1 not foretold").arg(unexplained);
}

QStringList rowOf(const database_proof & of)
{
    if (!of.missing.isEmpty()) {
        return {of.database, QStringLiteral("not run")};
    }
    const auto alone = std::count_if(of.chainRefused.begin(), of.chainRefused.end(),
                                     [](const verified_refusal & each) { return !each.withRows; });
    const bool hasHistory = of.chainStatements > 0;
    const QString none = QStringLiteral("-");
    return {of.database,
            of.server,
            ofAll(of.fullStatements - static_cast<int>(of.fullRefused.size()), of.fullStatements),
            hasHistory ? ofAll(of.chainStatements - static_cast<int>(alone), of.chainStatements) : none,
            hasHistory ? differences(of.chainDifferences) : none,
            differences(of.modelDifferences),
            hasHistory ? ofAll(of.kept, of.values) : none,
            ofAll(of.foretold, of.refused) +
                (of.falseAlarms == 0 ? QString() : QStringLiteral(", %1 false").arg(of.falseAlarms))};
}

QString reason(const QString & code, const char * without)
{
    return code.isEmpty() ? QString::fromLatin1(without) : QStringLiteral("foretold by ") + code;
}

QString orNothing(const QString & text)
{
    return text.isEmpty() ? QStringLiteral("nothing") : text;
}

QString whenOf(const verified_refusal & of)
{
    return of.withNulls  ? QStringLiteral(" with nulls in rows")
           : of.withRows ? QStringLiteral(" with rows")
                         : QString();
}

void addRefused(const std::vector<verified_refusal> & refused, QStringList & lines)
{
    for (const verified_refusal & each : refused) {
        lines << QStringLiteral("%1 line %2: refused%3, %4 %5 (%6)")
                     .arg(each.place.script, QString::number(each.place.line), whenOf(each), each.code,
                          each.words, reason(each.foretoldBy, "NOT FORETOLD"));
    }
}

/// The tables of which no more differs than the order of columns, as was foretold, by the code that did.
using ordered_tables = QMap<QString, QStringList>;

ordered_tables orderedTables(const std::vector<verified_difference> & differences)
{
    constexpr qsizetype few = 3; // so many lines bury nothing
    ordered_tables tables;
    qsizetype count = 0;
    for (const verified_difference & each : differences) {
        if (!each.ordered.isEmpty() && !each.explainedBy.isEmpty()) {
            QStringList & same = tables[each.explainedBy];
            same += same.contains(each.ordered) ? QStringList() : QStringList(each.ordered);
            ++count;
        }
    }
    return count > few ? tables : ordered_tables();
}

void addOrdered(const ordered_tables & tables, QStringList & lines)
{
    constexpr qsizetype shown = 10;
    for (auto each = tables.begin(); each != tables.end(); ++each) {
        const qsizetype more = each->size() - shown;
        lines << QStringLiteral(
                     "columns stand in another order than in a new database in %1 (%2): %3%4; --json "
                     "tells each")
                     .arg(each->size() == 1 ? QStringLiteral("1 table")
                                            : QStringLiteral("%1 tables").arg(each->size()),
                          reason(each.key(), ""), each->mid(0, shown).join(QStringLiteral(", ")),
                          more > 0 ? QStringLiteral(" and %1 more").arg(more) : QString());
    }
}

/// @param told of which nothing is added here
void addDifferences(const std::vector<verified_difference> & differences, const QString & expected,
                    const ordered_tables & told, QStringList & lines)
{
    for (const verified_difference & each : differences) {
        if (!each.ordered.isEmpty() && told.contains(each.explainedBy)) {
            continue;
        }
        lines << QStringLiteral("%1: %2: %3 %4, found %5 (%6)")
                     .arg(each.version, each.object, expected, orNothing(each.expected),
                          orNothing(each.found), reason(each.explainedBy, "NOT FORETOLD"));
    }
}

/// What is to be told below the table, a line each.
QStringList linesOf(const database_proof & of)
{
    QStringList lines;
    if (!of.missing.isEmpty()) {
        lines << of.missing;
    }
    addRefused(of.fullRefused, lines);
    addRefused(of.chainRefused, lines);
    const ordered_tables ordered = orderedTables(of.chainDifferences);
    addDifferences(of.chainDifferences, QStringLiteral("a new database has"), ordered, lines);
    addOrdered(ordered, lines);
    addDifferences(of.modelDifferences, QStringLiteral("foretold was"), {}, lines);
    for (const lost_value & each : of.lost) {
        lines << QStringLiteral("%1: the value \"%2\" put in after %3 is not there (%4)")
                     .arg(each.object, each.value, each.version, reason(each.explainedBy, "NOT FORETOLD"));
    }
    for (const QString & each : of.emptyTables) {
        lines << QStringLiteral("table %1: no row could be put in, so none is proven to be kept").arg(each);
    }
    return lines;
}

QString conclusion(const verification & of)
{
    return of.isOk() ? QStringLiteral("ok: all that was refused, differs or was lost has been foretold")
                     : QStringLiteral("not ok: see what was NOT FORETOLD above");
}

} // namespace

QByteArray verifyText(const verification & of)
{
    std::vector<QStringList> rows{Titles};
    for (const database_proof & each : of.proofs) {
        rows.push_back(rowOf(each));
    }
    QString text;
    for (const QStringList & row : rows) {
        QString line;
        for (qsizetype column = 0; column < row.size(); ++column) {
            qsizetype width = 0;
            for (const QStringList & other : rows) {
                width = std::max(width, other.value(column).size());
            }
            line += row[column].leftJustified(width + 2);
        }
        text += line.trimmed() + u'\n';
    }
    for (const database_proof & each : of.proofs) {
        const QStringList lines = linesOf(each);
        text += lines.isEmpty() ? QString() : u'\n' + each.database + u'\n';
        for (const QString & line : lines) {
            text += QStringLiteral("  ") + oneLine(line) + u'\n';
        }
    }
    return (text + u'\n' + conclusion(of) + u'\n').toUtf8();
}

QByteArray verifyMarkdown(const verification & of)
{
    const auto row = [](QStringList cells) {
        cells.replaceInStrings(QStringLiteral("|"), QStringLiteral("\\|"));
        while (cells.size() < Titles.size()) {
            cells << QString();
        }
        return QStringLiteral("| %1 |\n").arg(cells.join(QStringLiteral(" | ")));
    };
    QString text = row(Titles) + row(QStringList(Titles.size(), QStringLiteral("---")));
    for (const database_proof & each : of.proofs) {
        text += row(rowOf(each));
    }
    for (const database_proof & each : of.proofs) {
        const QStringList lines = linesOf(each);
        text += lines.isEmpty() ? QString() : QStringLiteral("\n%1:\n\n").arg(each.database);
        for (const QString & line : lines) {
            text += QStringLiteral("- %1\n").arg(check::codeSpan(oneLine(line)));
        }
    }
    return (text + u'\n' + conclusion(of) + u'\n').toUtf8();
}

} // namespace app
