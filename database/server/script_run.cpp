#include "database/server/script_run.h"

#include "database/server/target_database.h"
#include "os/stop_requests.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace database::server {

namespace {

/// What the scripts of a database have beside statements.
struct script_syntax
{
    QLatin1String key;
    bool delimiters;     ///< lines "DELIMITER //"
    bool backslashLines; ///< lines that begin so are commands to the program that reads the script
    bool hashComments;
    bool conditionalComments; ///< that the server runs
    bool looseDashes;         ///< two dashes begin a comment without a blank after them
    bool backticks;
    bool escapes;      ///< a backslash in any text hides what follows; else in texts E'…' only, if at all
    bool dollarQuotes; ///< and E'…'
    bool triggers;     ///< hold statements that end like others
};

// clang-format off
constexpr script_syntax Syntaxes[] = {
    {QLatin1String("sqlite"),     false, false, false, false, true,  true,  false, false, true},
    {QLatin1String("mysql"),      true,  false, true,  true,  false, true,  true,  false, false},
    {QLatin1String("mariadb"),    true,  false, true,  true,  false, true,  true,  false, false},
    {QLatin1String("postgresql"), false, true,  false, false, true,  false, false, true,  false},
};
// clang-format on

const script_syntax & syntaxOf(const QString & key)
{
    const auto * const found = std::find_if(std::begin(Syntaxes), std::end(Syntaxes),
                                            [&key](const script_syntax & each) { return each.key == key; });
    return found == std::end(Syntaxes) ? Syntaxes[0] : *found;
}

/// Cuts a script into statements. What stands between quotation marks of any kind is passed over.
class script_reader
{
public:
    script_reader(const QString & script, const script_syntax & syntax) : m_script(script), m_syntax(syntax)
    {
    }

    QList<script_statement> read()
    {
        while (m_at < m_script.size()) {
            if (m_begin < 0 && (takeClientLine() || takeSpace())) {
                continue;
            }
            if (takeComment()) {
                continue;
            }
            if (m_begin < 0) {
                m_begin = m_at;
            }
            if (isHere(m_delimiter) && !isInBody()) {
                end();
                m_at += m_delimiter.size();
            } else if (!takeQuotation()) {
                takeWord();
            }
        }
        end();
        return m_statements;
    }

private:
    [[nodiscard]] QChar at(qsizetype place) const
    {
        return place < m_script.size() ? m_script[place] : QChar();
    }
    [[nodiscard]] bool isHere(QStringView text) const
    {
        return QStringView(m_script).mid(m_at).startsWith(text, Qt::CaseInsensitive);
    }
    [[nodiscard]] qsizetype endOfLine() const
    {
        const qsizetype found = m_script.indexOf(QLatin1Char('\n'), m_at);
        return found < 0 ? m_script.size() : found + 1;
    }
    void passTo(qsizetype found, qsizetype length) { m_at = found < 0 ? m_script.size() : found + length; }

    bool takeSpace()
    {
        const bool isSpace = at(m_at).isSpace();
        m_at += isSpace ? 1 : 0;
        return isSpace;
    }

    /// Commands to the program that reads the script: "DELIMITER //", "\connect x".
    bool takeClientLine()
    {
        static const QRegularExpression delimiter(QStringLiteral("^DELIMITER[ \\t]+(\\S+)[ \\t\\r]*$"),
                                                  QRegularExpression::CaseInsensitiveOption);
        const qsizetype after = endOfLine();
        const QString line = m_script.mid(m_at, after - m_at).trimmed();
        const QRegularExpressionMatch match =
            m_syntax.delimiters ? delimiter.match(line) : QRegularExpressionMatch();
        const bool isClients =
            match.hasMatch() || (m_syntax.backslashLines && line.startsWith(QLatin1Char('\\')));
        m_delimiter = match.hasMatch() ? match.captured(1) : m_delimiter;
        m_at = isClients ? after : m_at;
        return isClients;
    }

    // What MySQL runs of a comment stays part of a statement.
    bool takeComment()
    {
        if (isHere(u"--") && (m_syntax.looseDashes || at(m_at + 2).isSpace() || at(m_at + 2).isNull())) {
            m_at = endOfLine();
            return true;
        }
        if (m_syntax.hashComments && at(m_at) == QLatin1Char('#')) {
            m_at = endOfLine();
            return true;
        }
        if (isHere(u"/*") &&
            !(m_syntax.conditionalComments && (at(m_at + 2) == QLatin1Char('!') || isHere(u"/*M!")))) {
            passTo(m_script.indexOf(QStringLiteral("*/"), m_at + 2), 2);
            return true;
        }
        return false;
    }

    bool takeQuotation()
    {
        const QChar first = at(m_at);
        if (isHere(u"/*")) { // one that the server runs
            passTo(m_script.indexOf(QStringLiteral("*/"), m_at + 2), 2);
            return true;
        }
        if (m_syntax.dollarQuotes && first == QLatin1Char('$')) {
            return takeDollars();
        }
        const bool isQuote = first == QLatin1Char('\'') || first == QLatin1Char('"') ||
                             (first == QLatin1Char('`') && m_syntax.backticks);
        if (!isQuote) {
            return false;
        }
        const bool hasEscapes = m_syntax.escapes ? first != QLatin1Char('`') : isEscapeText();
        for (++m_at; m_at < m_script.size() && m_script[m_at] != first; ++m_at) {
            m_at += hasEscapes && m_script[m_at] == QLatin1Char('\\') ? 1 : 0;
        }
        ++m_at;
        return true;
    }

    /// Whether the text is one of PostgreSQL with backslashes that mean something: E'…'.
    [[nodiscard]] bool isEscapeText() const
    {
        return m_syntax.dollarQuotes && m_at > 0 && m_script[m_at - 1].toUpper() == QLatin1Char('E') &&
               (m_at < 2 || !m_script[m_at - 2].isLetterOrNumber());
    }

    bool takeDollars()
    {
        static const QRegularExpression tag(QStringLiteral("\\$(?:[A-Za-z_\\x{80}-\\x{ffff}]\\w*)?\\$"));
        const QRegularExpressionMatch match = tag.match(m_script, m_at, QRegularExpression::NormalMatch,
                                                        QRegularExpression::AnchorAtOffsetMatchOption);
        if (match.hasMatch()) {
            const QString mark = match.captured(0);
            passTo(m_script.indexOf(mark, m_at + mark.size()), mark.size());
        }
        return match.hasMatch();
    }

    /// A word, or one character of what is none. SQLite's triggers have statements inside.
    void takeWord()
    {
        const qsizetype begin = m_at;
        while (at(m_at).isLetterOrNumber() || at(m_at) == QLatin1Char('_')) {
            ++m_at;
        }
        if (m_at == begin) {
            ++m_at;
            return;
        }
        const QString word = m_script.mid(begin, m_at - begin).toUpper();
        if (m_syntax.triggers) {
            m_isTrigger = m_isTrigger || (word == QLatin1String("TRIGGER") && isCreation());
            const bool opens = word == QLatin1String("CASE") || word == QLatin1String("BEGIN");
            m_depth += m_isTrigger && opens ? 1 : 0;
            m_depth -= m_isTrigger && word == QLatin1String("END") ? 1 : 0;
        }
    }

    [[nodiscard]] bool isCreation() const
    {
        return m_script.mid(m_begin, 6).compare(QLatin1String("CREATE"), Qt::CaseInsensitive) == 0;
    }
    [[nodiscard]] bool isInBody() const { return m_isTrigger && m_depth > 0; }

    void end()
    {
        const QString text = m_begin < 0 ? QString() : m_script.mid(m_begin, m_at - m_begin).trimmed();
        if (!text.isEmpty()) {
            m_line += static_cast<int>(
                QStringView(m_script).mid(m_counted, m_begin - m_counted).count(QLatin1Char('\n')));
            m_counted = m_begin;
            m_statements.append({text, m_line});
        }
        m_begin = -1;
        m_isTrigger = false;
        m_depth = 0;
    }

    const QString & m_script;
    const script_syntax & m_syntax;
    QString m_delimiter = QStringLiteral(";");
    qsizetype m_at = 0;
    qsizetype m_begin = -1; ///< of the statement; -1 between two
    bool m_isTrigger = false;
    int m_depth = 0;
    qsizetype m_counted = 0; ///< up to which lines are counted
    int m_line = 1;
    QList<script_statement> m_statements;
};

} // namespace

QList<script_statement> statementsOfScript(const QString & script, const QString & key)
{
    return script_reader(script, syntaxOf(key)).read();
}

bool runScript(target_database & target, const QString & script, QStringList * refused, QString & why)
{
    for (const script_statement & each : statementsOfScript(script, target.known().key)) {
        server_error error;
        if (os::stop_requests::isRequested()) {
            why = QStringLiteral("stopped");
            return false;
        }
        if (target.execute(each.text, error)) {
            continue;
        }
        why = QStringLiteral("line %1: %2 refuses the statement: %3")
                  .arg(QString::number(each.line), target.known().label, error.words.simplified());
        if (!refused) {
            return false;
        }
        refused->append(why);
    }
    return true;
}

} // namespace database::server
