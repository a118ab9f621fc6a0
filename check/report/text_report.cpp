#include "check/report/report.h"

#include "check/report/remedy_lines.h"

#include "zk/visible_text.h"

#include <algorithm>
#include <map>
#include <utility>

namespace check {

namespace {

constexpr int Width = 100; ///< characters of a line
constexpr int Indent = 4;

/// Where the line ends that begins at `begin`: after as many words as it has room for, and after one at
/// least.
qsizetype endOfLine(QStringView text, qsizetype begin)
{
    constexpr qsizetype Room = Width - Indent;
    if (text.size() - begin <= Room) {
        return text.size();
    }
    const qsizetype last = text.lastIndexOf(u' ', begin + Room);
    const qsizetype end = last > begin ? last : text.indexOf(u' ', begin);
    return end < 0 ? text.size() : end;
}

/// Adds `told` in lines of the report's width.
void addWrapped(QString & to, const QString & told)
{
    const QString text = zk::visibleLine(told);
    const auto areBlanks = [](QChar one, QChar next) { return one == u' ' && next == u' '; };
    const bool isPlain = !text.startsWith(u' ') && !text.endsWith(u' ') &&
                         std::adjacent_find(text.begin(), text.end(), areBlanks) == text.end();
    const QString words = isPlain ? text : text.split(u' ', Qt::SkipEmptyParts).join(u' ');
    for (qsizetype begin = 0; begin < words.size();) {
        const qsizetype end = endOfLine(words, begin);
        to.resize(to.size() + Indent, u' ');
        to += QStringView(words).sliced(begin, end - begin);
        to += u'\n';
        begin = end + 1;
    }
}

/// Findings about one statement, or about none.
struct group
{
    std::vector<const finding *> findings; ///< the worst first
};

/// The line of the statement; 0 for a finding without one.
int lineOf(const finding & of)
{
    return of.statement ? of.statement->line : 0;
}

/// Places of the findings that follow from each.
using consequences = std::map<int, std::vector<const finding *>>;

class text_writer
{
public:
    text_writer(const report & of, const text_style & style) : m_report(of), m_style(style)
    {
        for (const finding & each : of.findings) {
            if (each.consequenceOf >= 0) {
                m_consequences[rootOf(each)].push_back(&each);
            }
        }
    }

    QByteArray write()
    {
        for (const run & each : m_report.runs) {
            writeRun(each);
        }
        writeGroups(findingsOf(QString(), QString()));
        writeLastLine();
        encode();
        return m_bytes;
    }

private:
    /// The finding that all follows from, in the end.
    [[nodiscard]] int rootOf(const finding & of) const
    {
        int at = of.consequenceOf;
        while (m_report.findings.at(static_cast<std::size_t>(at)).consequenceOf >= 0) {
            at = m_report.findings.at(static_cast<std::size_t>(at)).consequenceOf;
        }
        return at;
    }

    /// The groups of one script, the worst first; of an empty name those of no script.
    [[nodiscard]] std::vector<group> findingsOf(const QString & database, const QString & name) const
    {
        // What is about no statement stands in the order in which its remedies are to be run.
        std::map<std::pair<int, std::size_t>, group> byLine;
        for (std::size_t i = 0; i < m_report.findings.size(); ++i) {
            const finding & each = m_report.findings[i];
            const bool isHere = each.script == name && (name.isEmpty() || each.database == database);
            if (isHere && each.consequenceOf < 0) {
                byLine[{lineOf(each), each.statement ? 0 : i + 1}].findings.push_back(&each);
            }
        }
        std::vector<group> groups;
        for (auto & [line, of] : byLine) {
            std::stable_sort(of.findings.begin(), of.findings.end(),
                             [](const finding * a, const finding * b) { return isWorse(*a, *b); });
            groups.push_back(std::move(of));
        }
        std::stable_sort(groups.begin(), groups.end(), [](const group & a, const group & b) {
            return isWorse(*a.findings.front(), *b.findings.front());
        });
        return groups;
    }

    void writeRun(const run & of)
    {
        m_text += coloured(zk::visibleLine(of.script), "1") + QStringLiteral("  %1, ").arg(of.basis);
        m_text += of.from.isEmpty() ? QString() : QStringLiteral("%1 to %2, ").arg(of.from, of.to);
        m_text += counted(of.statements, QLatin1String("statement"));
        const int unknown = of.statements - of.judged;
        m_text += unknown == 0 ? QString() : QStringLiteral(", %1 not judged").arg(unknown);
        const std::vector<group> groups = findingsOf(of.database, of.script);
        m_text += groups.empty() ? QStringLiteral(": nothing found\n") : QStringLiteral("\n\n");
        writeGroups(groups);
    }

    void writeGroups(const std::vector<group> & groups)
    {
        for (const group & each : groups) {
            for (const finding * of : each.findings) {
                writeFinding(*of);
            }
            const auto & statement = each.findings.front()->statement;
            if (statement) {
                writeStatement(*statement);
            }
            m_text += u'\n';
            encode();
        }
    }

    /// Takes over what was written until now: a large report is kept in the smaller form alone.
    void encode()
    {
        m_bytes += m_text.toUtf8();
        m_text.resize(0);
    }

    void writeFinding(const finding & of)
    {
        m_text += sign(of) + u' ' + of.code;
        if (of.statement) {
            m_text += QLatin1String(" line ") + QString::number(of.statement->line);
        }
        m_text += u'\n';
        addWrapped(m_text, of.message);
        if (of.accepted) {
            addWrapped(m_text, QStringLiteral("Accepted: ") + of.accepted->why);
            return;
        }
        addWrapped(m_text, QStringLiteral("Why: ") + of.why);
        addWrapped(m_text, QStringLiteral("What to do: ") + of.way.text);
        for (const remedy_lines & each : linesOf(of.way)) {
            m_text += QString(Indent, u' ') + each.heading + QStringLiteral(":\n");
            for (const QString & line : each.lines.join(u'\n').split(u'\n')) {
                m_text += QString(qsizetype{2} * Indent, u' ') + zk::visibleLine(line) + u'\n';
            }
        }
        writeConsequences(of);
    }

    void writeConsequences(const finding & of)
    {
        const auto index = static_cast<int>(&of - m_report.findings.data());
        const auto found = m_consequences.find(index);
        if (found == m_consequences.end()) {
            return;
        }
        QStringList places;
        for (const finding * each : found->second) {
            const QString line = QString::number(lineOf(*each));
            places += each->script == of.script ? line : QStringLiteral("%1 of %2").arg(line, each->script);
        }
        addWrapped(m_text,
                   QStringLiteral("Refused as well because of it: line ") + places.join(QLatin1String(", ")));
    }

    void writeStatement(const statement_place & of)
    {
        constexpr qsizetype Most = 6;
        const QStringList lines = of.text.split(u'\n');
        for (const QString & each : lines.mid(0, Most)) {
            m_text +=
                coloured(QString(Indent, u' ') + QStringLiteral("| ") + zk::visibleLine(each), "2") + u'\n';
        }
        if (lines.size() > Most) {
            m_text += coloured(QString(Indent, u' ') + QStringLiteral("| …"), "2") + u'\n';
        }
    }

    void writeLastLine()
    {
        const summary total = summaryOf(m_report);
        m_text += wordsOf(total);
        m_text += total.accepted == 0 ? QString() : QStringLiteral("; %1 accepted").arg(total.accepted);
        m_text += u'\n';
    }

    [[nodiscard]] QString sign(const finding & of) const
    {
        if (of.accepted) {
            return coloured(QStringLiteral("accepted"), "2");
        }
        const char * const codes[] = {"36", "33", "31;1"};
        return coloured(wordOf(of.weight), codes[static_cast<std::size_t>(of.weight)]);
    }

    [[nodiscard]] QString coloured(const QString & text, const char * code) const
    {
        return m_style.colours ? QStringLiteral("\033[%1m%2\033[0m").arg(QString::fromLatin1(code), text)
                               : text;
    }

    const report & m_report;
    const text_style & m_style;
    consequences m_consequences;
    QString m_text; ///< written last
    QByteArray m_bytes;
};

} // namespace

QByteArray textReport(const report & of, const text_style & style)
{
    return text_writer(of, style).write();
}

} // namespace check
