#pragma once

#include "database/facts/names.h"
#include "database/statement/token.h"

#include <initializer_list>
#include <optional>
#include <span>

namespace database {

/// Walks over the tokens of one statement. What is asked for and not there is left where it is.
class token_cursor
{
public:
    /// The text and the tokens have to outlive the cursor.
    token_cursor(const QString & text, std::span<const token> tokens) : m_text(text), m_tokens(tokens) {}

    [[nodiscard]] bool isAtEnd() const { return m_position == m_tokens.size(); }
    [[nodiscard]] const token * peek(std::size_t ahead = 0) const;
    [[nodiscard]] bool isAt(token_kind kind) const;
    /// Whether these words come next, in any case.
    [[nodiscard]] bool isAt(std::initializer_list<const char *> words) const;

    bool take(token_kind kind);
    bool take(std::initializer_list<const char *> words);
    /// A name, quoted or not.
    std::optional<identifier> takeName();
    /// A string in apostrophes.
    std::optional<QString> takeText();
    /// A number in brackets; none when there is no such thing.
    std::optional<int> takeNumberInBrackets();
    /// Everything that is left.
    void takeRest() { m_position = m_tokens.size(); }
    /// The text up to one of the words, or a comma or a bracket that closes more than was opened.
    QString takeUntil(std::span<const char * const> words);

private:
    const QString & m_text;
    std::span<const token> m_tokens;
    std::size_t m_position = 0;
};

} // namespace database
