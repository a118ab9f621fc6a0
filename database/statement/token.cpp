#include "database/statement/token.h"

namespace database {

namespace {

class tokenizer
{
public:
    explicit tokenizer(const QString & text) : m_text(text) {}

    std::vector<token> read()
    {
        while (skipBlanks()) {
            if (!readMark() && !readQuotation()) {
                readWord();
            }
        }
        return std::move(m_tokens);
    }

private:
    [[nodiscard]] QChar at(qsizetype position) const
    {
        return position < m_text.size() ? m_text.at(position) : QChar();
    }
    [[nodiscard]] bool startsWith(QLatin1String mark) const
    {
        return QStringView(m_text).mid(m_position).startsWith(mark);
    }

    void skipTo(QLatin1String mark)
    {
        const auto found = m_text.indexOf(mark, m_position);
        m_position = found < 0 ? m_text.size() : found + mark.size();
    }

    // Gives whether something is left.
    bool skipBlanks()
    {
        while (m_position < m_text.size()) {
            if (m_text.at(m_position).isSpace()) {
                ++m_position;
            } else if (startsWith(QLatin1String("--"))) {
                skipTo(QLatin1String("\n"));
            } else if (startsWith(QLatin1String("/*"))) {
                skipTo(QLatin1String("*/"));
            } else {
                return true;
            }
        }
        return false;
    }

    void add(token_kind kind, const QString & text, qsizetype end, QChar quote = {})
    {
        m_tokens.push_back({kind, text, quote, m_position, end});
        m_position = end;
    }

    bool readMark()
    {
        switch (at(m_position).unicode()) {
        case '(':
            add(token_kind::open, {}, m_position + 1);
            return true;
        case ')':
            add(token_kind::close, {}, m_position + 1);
            return true;
        case ',':
            add(token_kind::comma, {}, m_position + 1);
            return true;
        case ';':
            add(token_kind::semicolon, {}, m_position + 1);
            return true;
        default:
            return readSlash();
        }
    }

    bool readSlash()
    {
        const QChar before = m_position == 0 ? QChar(u'\n') : m_text.at(lastBefore());
        const QChar after = at(m_position + 1);
        if (at(m_position) != u'/' || before != u'\n' ||
            !(after.isNull() || after == u'\n' || after == u'\r')) {
            return false;
        }
        add(token_kind::line_of_slash, {}, m_position + 1);
        return true;
    }

    // Blanks that indent a line are no part of it.
    [[nodiscard]] qsizetype lastBefore() const
    {
        qsizetype position = m_position - 1;
        while (position > 0 && (m_text.at(position) == u'\t' || m_text.at(position) == u' ')) {
            --position;
        }
        return position;
    }

    bool readQuotation()
    {
        const QChar first = at(m_position);
        const QString marks = QStringLiteral("`\"'[");
        if (!marks.contains(first)) {
            return false;
        }
        const QChar last = first == u'[' ? QChar(u']') : first;
        QString inside;
        for (qsizetype position = m_position + 1; position < m_text.size(); ++position) {
            if (m_text.at(position) != last) {
                inside += m_text.at(position);
            } else if (at(position + 1) == last) {
                inside += last;
                ++position;
            } else {
                add(first == u'\'' ? token_kind::text : token_kind::quoted, inside, position + 1, first);
                return true;
            }
        }
        add(token_kind::unfinished, inside, m_text.size(), first);
        return true;
    }

    // A name that a database would want in quotation marks stays one word: who judges it has to see it whole.
    void readWord()
    {
        // A quotation mark in the middle makes no quotation: what stands around it is no name of any
        // database.
        const QString ends = QStringLiteral("(),;`'");
        qsizetype end = m_position;
        while (end < m_text.size() && !m_text.at(end).isSpace() && !ends.contains(m_text.at(end))) {
            ++end;
        }
        add(token_kind::word, m_text.sliced(m_position, end - m_position), end);
    }

    const QString & m_text;
    qsizetype m_position = 0;
    std::vector<token> m_tokens;
};

} // namespace

bool token::isWord(QLatin1String keyword) const
{
    return kind == token_kind::word && text.compare(keyword, Qt::CaseInsensitive) == 0;
}

std::vector<token> tokensOf(const QString & text)
{
    return tokenizer(text).read();
}

} // namespace database
