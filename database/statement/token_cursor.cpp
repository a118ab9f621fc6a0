#include "database/statement/token_cursor.h"

#include <algorithm>

namespace database {

bool token_cursor::areNext(std::initializer_list<std::string_view> words) const
{
    std::size_t ahead = 0;
    return std::all_of(words.begin(), words.end(), [this, &ahead](std::string_view word) {
        const token * const found = peek(ahead++);
        return found != nullptr && found->isWord(word);
    });
}

bool token_cursor::take(token_kind kind)
{
    const bool found = isAt(kind);
    m_position += found ? 1 : 0;
    return found;
}

std::optional<identifier> token_cursor::takeName()
{
    if (!isAt(token_kind::word) && !isAt(token_kind::quoted)) {
        return std::nullopt;
    }
    const token & found = m_tokens[m_position++];
    return identifier{found.text(), found.quote};
}

std::optional<QString> token_cursor::takeText()
{
    if (!isAt(token_kind::text)) {
        return std::nullopt;
    }
    return m_tokens[m_position++].text();
}

std::optional<int> token_cursor::takeNumberInBrackets()
{
    const token * const number = peek(1);
    const token * const close = peek(2);
    if (!isAt(token_kind::open) || number == nullptr || close == nullptr ||
        close->kind != token_kind::close) {
        return std::nullopt;
    }
    bool isNumber = false;
    const int value = number->inside.toInt(&isNumber);
    if (!isNumber) {
        return std::nullopt;
    }
    m_position += 3;
    return value;
}

QString token_cursor::takeUntil(std::span<const std::string_view> words, bool withQuoted)
{
    const std::size_t first = m_position;
    for (int depth = 0; !isAtEnd(); ++m_position) {
        const token & next = *peek();
        const bool isEndWord = std::any_of(words.begin(), words.end(),
                                           [&next](std::string_view word) { return next.isWord(word); });
        if (depth == 0 && (isEndWord || next.kind == token_kind::comma || next.kind == token_kind::close)) {
            break;
        }
        if ((next.kind == token_kind::quoted && !withQuoted) || next.kind == token_kind::unfinished) {
            break;
        }
        depth += next.kind == token_kind::open ? 1 : (next.kind == token_kind::close ? -1 : 0);
    }
    if (m_position == first) {
        return {};
    }
    const qsizetype begin = m_tokens[first].begin;
    return m_text.sliced(begin, m_tokens[m_position - 1].end - begin);
}

} // namespace database
