#pragma once

#include "database/facts/names.h"
#include "database/statement/token.h"

#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

namespace database {

/// Walks over the tokens of one statement. What is asked for and not there is left where it is.
class token_cursor
{
public:
    /// The text and the tokens have to outlive the cursor.
    /// @param quotedTypes whether words of a type may stand in quotation marks
    token_cursor(const QString & text, std::span<const token> tokens, bool quotedTypes)
        : m_text(text), m_tokens(tokens), m_hasQuotedTypes(quotedTypes)
    {
    }

    /// How many tokens are left.
    [[nodiscard]] std::size_t left() const { return m_tokens.size() - m_position; }
    [[nodiscard]] bool isAtEnd() const { return m_position == m_tokens.size(); }
    [[nodiscard]] const token * peek(std::size_t ahead = 0) const
    {
        return ahead < left() ? &m_tokens[m_position + ahead] : nullptr;
    }
    [[nodiscard]] bool isAt(token_kind kind) const { return !isAtEnd() && m_tokens[m_position].kind == kind; }
    /// Whether these words come next, in any case; there is one at least.
    [[nodiscard]] bool isAt(std::initializer_list<std::string_view> words) const
    {
        // Many forms are tried, and the first word rules out most.
        return !isAtEnd() && m_tokens[m_position].isWord(*words.begin()) &&
               (words.size() == 1 || areNext(words));
    }

    bool take(token_kind kind);
    bool take(std::initializer_list<std::string_view> words)
    {
        const bool found = isAt(words);
        m_position += found ? words.size() : 0;
        return found;
    }
    /// A name, quoted or not.
    std::optional<identifier> takeName();
    /// A string in apostrophes.
    std::optional<QString> takeText();
    /// A number in brackets; none when there is no such thing.
    std::optional<int> takeNumberInBrackets();
    /// Everything that is left.
    void takeRest() { m_position = m_tokens.size(); }
    /// The text up to one of the words, or a comma or a bracket that closes more than was opened.
    QString takeUntil(std::span<const std::string_view> words) { return takeUntil(words, false); }
    /// The same of a type.
    QString takeTypeUntil(std::span<const std::string_view> words)
    {
        return takeUntil(words, m_hasQuotedTypes);
    }

private:
    QString takeUntil(std::span<const std::string_view> words, bool withQuoted);
    [[nodiscard]] bool areNext(std::initializer_list<std::string_view> words) const;

    const QString & m_text;
    std::span<const token> m_tokens;
    std::size_t m_position = 0;
    bool m_hasQuotedTypes;
};

} // namespace database
