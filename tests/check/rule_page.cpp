#include "check/rule_page.h"

#include <QFile>

namespace check_pages {

namespace {

class page_reader
{
public:
    explicit page_reader(const QStringList & lines) : m_lines(lines) {}

    page read()
    {
        const QString head = m_lines.value(0);
        m_page.code = head.section(u' ', 1, 1);
        m_page.name = head.section(u' ', 2, 2);
        m_page.title = m_lines.value(2);
        m_page.relationships = !m_lines.join(u'\n').contains(QLatin1String("`--relationships no`"));
        for (m_at = 0; m_at < m_lines.size(); ++m_at) {
            if (m_lines.at(m_at).startsWith(QLatin1String("```"))) {
                readBlock(m_lines.at(m_at).mid(3).split(u' ', Qt::SkipEmptyParts));
            }
        }
        return m_page;
    }

private:
    void readBlock(const QStringList & head)
    {
        QStringList inside;
        for (++m_at; m_at < m_lines.size() && m_lines.at(m_at) != QLatin1String("```"); ++m_at) {
            inside += m_lines.at(m_at);
        }
        const QString kind = head.value(0);
        const QByteArray text = inside.join(u'\n').toUtf8();
        const bool isRemedy = head.value(kind == QLatin1String("js") ? 1 : 2) != QLatin1String("case");
        if (kind == QLatin1String("json") && head.value(1) == QLatin1String("accept")) {
            (head.value(2) == QLatin1String("remedy") ? m_page.remedyAcceptance : m_page.acceptance) = text;
        } else if (kind == QLatin1String("json")) {
            (head.value(2) == QLatin1String("remedy") ? m_page.remedies : m_page.versions)[head.value(1)] =
                text;
        } else if (kind == QLatin1String("js")) {
            (isRemedy ? m_page.remedyScript : m_page.script) = text;
        } else if (kind == QLatin1String("sql")) {
            m_page.statements.push_back({head.value(1), head.value(2), inside});
        } else if (kind == QLatin1String("text") && head.value(1) == QLatin1String("settings")) {
            (head.value(2) == QLatin1String("remedy") ? m_page.remedySettings : m_page.settings) = inside;
        } else if (kind == QLatin1String("text")) {
            readClaims(head.mid(1), inside);
        } else {
            m_page.wrong = "a block of unknown kind: " + head.join(u' ');
        }
    }

    void readClaims(const QStringList & databases, const QStringList & lines)
    {
        QStringList statement;
        for (const QString & line : lines) {
            const QString what = line.section(u':', 0, 0);
            const bool isAnswer = what == QLatin1String("refused") ||
                                  what == QLatin1String("refused with rows") ||
                                  what == QLatin1String("runs") || what == QLatin1String("silent") ||
                                  what == QLatin1String("told");
            if (!isAnswer) {
                statement += line;
                continue;
            }
            const QString answer = line.section(u':', 1).trimmed();
            const bool isRefused = what.startsWith(QLatin1String("refused"));
            m_page.claims.push_back({databases, statement.join(u'\n'), what,
                                     isRefused ? answer.section(u' ', 0, 0) : QString(),
                                     isRefused ? answer.section(u' ', 1) : answer});
            statement.clear();
        }
        if (!statement.isEmpty()) {
            m_page.wrong = "a statement without an answer: " + statement.constFirst();
        }
    }

    QStringList m_lines;
    qsizetype m_at = 0;
    page m_page;
};

} // namespace

page readPage(const QString & file)
{
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly)) {
        page none;
        none.wrong = opened.errorString();
        return none;
    }
    return page_reader(QString::fromUtf8(opened.readAll()).split(u'\n')).read();
}

} // namespace check_pages
