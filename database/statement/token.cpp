#include "database/statement/token.h"

#include <algorithm>
#include <array>

namespace database {

namespace {

constexpr char16_t lower(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

constexpr QChar endOf(QChar quote)
{
    return quote == u'[' ? QChar(u']') : quote;
}

constexpr bool isBlank(char16_t c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

// A quotation mark in the middle makes no quotation: what stands around it is no name of any database.
constexpr bool isMark(char16_t c)
{
    return c == u'(' || c == u')' || c == u',' || c == u';' || c == u'`' || c == u'\'';
}

/// Of the characters of which nearly all texts consist, since each of them is looked at.
template <bool (*Has)(char16_t)>
constexpr std::array<bool, 0x80> Plain = [] {
    std::array<bool, 0x80> has{};
    for (std::size_t c = 0; c < has.size(); ++c) {
        has[c] = Has(static_cast<char16_t>(c));
    }
    return has;
}();

constexpr bool endsPlainWord(char16_t c)
{
    return isBlank(c) || isMark(c);
}

bool isSpace(QChar c)
{
    return c.unicode() < 0x80 ? Plain<isBlank>[c.unicode()] : c.isSpace();
}

bool endsWord(QChar c)
{
    return c.unicode() < 0x80 ? Plain<endsPlainWord>[c.unicode()] : c.isSpace();
}

class tokenizer
{
public:
    tokenizer(QStringView text, std::vector<token> & tokens) : m_text(text), m_tokens(tokens) {}

    void read()
    {
        constexpr qsizetype UsualLength = 5;
        m_tokens.clear();
        m_tokens.reserve(static_cast<std::size_t>(m_text.size() / UsualLength + 1));
        while (skipBlanks()) {
            if (!readMark() && !readQuotation()) {
                readWord();
            }
        }
    }

private:
    [[nodiscard]] QChar at(qsizetype position) const
    {
        return position < m_text.size() ? m_text[position] : QChar();
    }
    [[nodiscard]] bool isAt(char16_t first, char16_t second) const
    {
        return at(m_position) == first && at(m_position + 1) == second;
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
            if (isSpace(m_text[m_position])) {
                ++m_position;
            } else if (isAt(u'-', u'-')) {
                skipTo(QLatin1String("\n"));
            } else if (isAt(u'/', u'*')) {
                skipTo(QLatin1String("*/"));
            } else {
                return true;
            }
        }
        return false;
    }

    void add(token_kind kind, QStringView inside, qsizetype end, QChar quote = {})
    {
        m_tokens.push_back({kind, inside, quote, m_position, end});
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
        case '/':
            return readSlash();
        default:
            return false;
        }
    }

    bool readSlash()
    {
        const QChar before = m_position == 0 ? QChar(u'\n') : m_text[lastBefore()];
        const QChar after = at(m_position + 1);
        if (before != u'\n' || !(after.isNull() || after == u'\n' || after == u'\r')) {
            return false;
        }
        add(token_kind::line_of_slash, {}, m_position + 1);
        return true;
    }

    // Blanks that indent a line are no part of it.
    [[nodiscard]] qsizetype lastBefore() const
    {
        qsizetype position = m_position - 1;
        while (position > 0 && (m_text[position] == u'\t' || m_text[position] == u' ')) {
            --position;
        }
        return position;
    }

    bool readQuotation()
    {
        const QChar first = at(m_position);
        if (first != u'`' && first != u'"' && first != u'\'' && first != u'[') {
            return false;
        }
        const QChar last = endOf(first);
        const qsizetype begin = m_position + 1;
        for (qsizetype position = begin; position < m_text.size(); ++position) {
            if (m_text[position] != last) {
                continue;
            }
            if (at(position + 1) != last) {
                add(first == u'\'' ? token_kind::text : token_kind::quoted,
                    m_text.sliced(begin, position - begin), position + 1, first);
                return true;
            }
            ++position;
        }
        add(token_kind::unfinished, m_text.sliced(begin), m_text.size(), first);
        return true;
    }

    // A name that a database would want in quotation marks stays one word: who judges it has to see it whole.
    void readWord()
    {
        qsizetype end = m_position;
        while (end < m_text.size() && !endsWord(m_text[end])) {
            ++end;
        }
        add(token_kind::word, m_text.sliced(m_position, end - m_position), end);
    }

    QStringView m_text;
    qsizetype m_position = 0;
    std::vector<token> & m_tokens;
};

} // namespace

bool token::hasLettersOf(std::string_view keyword) const
{
    return std::equal(keyword.begin(), keyword.end(), inside.begin(), [](char expected, QChar c) {
        return lower(c.unicode()) == lower(static_cast<unsigned char>(expected));
    });
}

QString token::text() const
{
    QString said = inside.toString();
    if (const QChar mark = endOf(quote); !quote.isNull() && inside.contains(mark)) {
        said.replace(QString(2, mark), QString(mark));
    }
    return said;
}

std::vector<token> tokensOf(QStringView text)
{
    std::vector<token> tokens;
    readTokens(text, tokens);
    return tokens;
}

void readTokens(QStringView text, std::vector<token> & tokens)
{
    tokenizer(text, tokens).read();
}

} // namespace database
